// SPDX-License-Identifier: MIT
//
// An object's members and their places.

#include <ko/Orvid/Object.h>

#include <ko/Orvid/PathException.h>

#include <string>
#include <utility>

#include "path/PathText.h"
#include "tree/Containment.h"
#include "tree/Place.h"
#include "tree/Strays.h"

namespace ko::Orvid {

namespace {

[[noreturn]] void throwNoMember(const Element* object, std::string_view key) {
    std::string path = object == nullptr ? "" : object->path();
    if (!path.empty()) {
        path += '.';
    }
    appendEscaped(path, key);
    throw PathNotFound(object, path, std::string(key));
}

}  // namespace

template<class Key, class Value, class Compare>
Object<Key, Value, Compare>::Object(Value* parent) {
    this->m_link.setParent(parent);
}

template<class Key, class Value, class Compare>
Object<Key, Value, Compare>::Object(const Object& other, Value* parent) : TBase(other) {
    this->m_link.setParent(parent);
    tagAll();
}

template<class Key, class Value, class Compare>
Object<Key, Value, Compare>& Object<Key, Value, Compare>::operator=(const Object& other) {
    if (this != &other) {
        Object copy(other);
        this->exchange(copy);
        tagAll();
    }
    return *this;
}

template<class Key, class Value, class Compare>
Object<Key, Value, Compare>::~Object() {
    Strays::comeHome(this->m_link);
}

template<class Key, class Value, class Compare>
Object<Key, Value, Compare>::Object(Object&& other, Value* parent) noexcept {
    this->m_link.setParent(parent);
    this->exchange(other);
    tagAll();
}

template<class Key, class Value, class Compare>
// NOLINTNEXTLINE(performance-noexcept-move-constructor): a cycle is avoided by a copy
Object<Key, Value, Compare>& Object<Key, Value, Compare>::operator=(Object&& other) {
    if (this == &other) {
        return *this;
    }
    if (liesInChild(*this, other)) {
        return *this = std::as_const(other);
    }
    // The former members go last: `other` may lie within them.
    Object taken(std::move(other));
    this->exchange(taken);
    tagAll();
    return *this;
}

template<class Key, class Value, class Compare>
auto Object<Key, Value, Compare>::insert(const value_type& member) -> std::pair<iterator, bool> {
    const std::pair<iterator, bool> result = TBase::insert(member);
    Place::inObject(result.first->second, this->m_link, result.first->first);
    return result;
}

template<class Key, class Value, class Compare>
auto Object<Key, Value, Compare>::insert(iterator position, const value_type& member) -> iterator {
    const iterator result = TBase::insert(position, member);
    Place::inObject(result->second, this->m_link, result->first);
    return result;
}

template<class Key, class Value, class Compare>
Value& Object<Key, Value, Compare>::resetMember(std::string_view key) {
    const auto [member, isNew] = findOrAppend(key);
    if (!isNew) {
        member->second.setNull();
    }
    return member->second;
}

template<class Key, class Value, class Compare>
auto Object<Key, Value, Compare>::try_emplace(std::string_view key) -> std::pair<iterator, bool> {
    return findOrAppend(key);
}

template<class Key, class Value, class Compare>
auto Object<Key, Value, Compare>::insert_or_assign(Key key, Value&& value)
    -> std::pair<iterator, bool> {
    // Only a new member takes the value over; no std::move, since it is still there otherwise.
    const std::pair<iterator, bool> result = emplace(std::move(key), static_cast<Value&&>(value));
    if (!result.second) {
        result.first->second = std::move(value);
    }
    return result;
}

template<class Key, class Value, class Compare>
auto Object<Key, Value, Compare>::emplace(Key key, Value&& value) -> std::pair<iterator, bool> {
    return liesIn(*this, value) ? findOrAppend(std::move(key), std::as_const(value))
                                : findOrAppend(std::move(key), std::move(value));
}

template<class Key, class Value, class Compare>
Value& Object<Key, Value, Compare>::at(std::string_view key) {
    return const_cast<Value&>(std::as_const(*this).at(key));
}

template<class Key, class Value, class Compare>
const Value& Object<Key, Value, Compare>::at(std::string_view key) const {
    const auto member = this->find(key);
    if (member == this->end()) {
        throwNoMember(parent(), key);
    }
    return member->second;
}

template<class Key, class Value, class Compare>
Value& Object<Key, Value, Compare>::operator[](std::string_view key) {
    return findOrAppend(key).first->second;
}

template<class Key, class Value, class Compare>
template<class Text, class... Arguments>
auto Object<Key, Value, Compare>::findOrAppend(Text&& key, Arguments&&... value)
    -> std::pair<iterator, bool> {
    const std::pair<iterator, bool> result =
        TBase::findOrAppend(std::forward<Text>(key), std::forward<Arguments>(value)...);
    if (result.second) {
        Place::inObject(result.first->second, this->m_link, result.first->first);
    }
    return result;
}

template<class Key, class Value, class Compare>
void Object<Key, Value, Compare>::swap(Object& other) {
    if (this != &other) {
        TBase::ItemPlaces::beginExchange(*this, other);
        this->exchange(other);
        tagAll();
    }
}

template<class Key, class Value, class Compare>
void Object<Key, Value, Compare>::setParent(Value* parent) {
    if (parent != this->parent()) {
        Strays::stayBehind(this->m_link);
    }
    this->m_link.setParent(parent);
    tagAll();
}

template<class Key, class Value, class Compare>
void Object<Key, Value, Compare>::tagAll() noexcept {
    for (value_type& member : *this) {
        Place::inObject(member.second, this->m_link, member.first);
    }
    Strays::settle(this->m_link);
}

template class Object<std::string, Element, std::less<std::string>>;

}  // namespace ko::Orvid
