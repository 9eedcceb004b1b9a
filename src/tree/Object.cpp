// SPDX-License-Identifier: MIT
//
// An object's members and their places.

#include <ko/Orvid/Object.h>

#include "tree/Place.h"

namespace ko::Orvid {

template<class Key, class Value, class Compare>
Object<Key, Value, Compare>::Object(Value* parent) : m_parent(parent) {}

template<class Key, class Value, class Compare>
Object<Key, Value, Compare>::Object(const Object& other, Value* parent)
    : TBase(other), m_parent(parent) {
    if (!this->empty()) {
        this->companion().to(parent);
        tagAll();
    }
}

template<class Key, class Value, class Compare>
Object<Key, Value, Compare>& Object<Key, Value, Compare>::operator=(const Object& other) {
    if (this != &other) {
        Object copy(other, m_parent);
        this->exchange(copy);
    }
    return *this;
}

template<class Key, class Value, class Compare>
Object<Key, Value, Compare>::~Object() = default;

template<class Key, class Value, class Compare>
Object<Key, Value, Compare>::Object(Object&& other, Value* parent) noexcept
    : TBase(std::move(other)), m_parent(parent) {
    moveTo(parent);
}

template<class Key, class Value, class Compare>
Object<Key, Value, Compare>& Object<Key, Value, Compare>::operator=(Object&& other) noexcept {
    if (this != &other) {
        // The former members go last: `other` may lie within them.
        Object taken(std::move(other), m_parent);
        this->exchange(taken);
    }
    return *this;
}

template<class Key, class Value, class Compare>
auto Object<Key, Value, Compare>::insert(const value_type& member) -> std::pair<iterator, bool> {
    const ParentLink& link = this->companion().to(m_parent);
    const std::pair<iterator, bool> result = TBase::insert(member);
    Place::inObject(result.first->second, link, result.first->first);
    return result;
}

template<class Key, class Value, class Compare>
auto Object<Key, Value, Compare>::insert(iterator position, const value_type& member) -> iterator {
    const ParentLink& link = this->companion().to(m_parent);
    const iterator result = TBase::insert(position, member);
    Place::inObject(result->second, link, result->first);
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
    const std::pair<iterator, bool> result =
        findOrAppend(std::move(key), static_cast<Value&&>(value));
    if (!result.second) {
        result.first->second = std::move(value);
    }
    return result;
}

template<class Key, class Value, class Compare>
template<class Text, class... Arguments>
auto Object<Key, Value, Compare>::findOrAppend(Text&& key, Arguments&&... value)
    -> std::pair<iterator, bool> {
    const ParentLink& link = this->companion().to(m_parent);
    const std::pair<iterator, bool> result =
        TBase::findOrAppend(std::forward<Text>(key), std::forward<Arguments>(value)...);
    if (result.second) {
        Place::inObject(result.first->second, link, result.first->first);
    }
    return result;
}

template<class Key, class Value, class Compare>
void Object<Key, Value, Compare>::swap(Object& other) {
    if (this != &other) {
        this->exchange(other);
        tagAll();
    }
}

template<class Key, class Value, class Compare>
void Object<Key, Value, Compare>::setParent(Value* parent) {
    m_parent = parent;
    tagAll();
}

template<class Key, class Value, class Compare>
void Object<Key, Value, Compare>::moveTo(Value* parent) noexcept {
    m_parent = parent;
    this->companion().setParent(parent);
}

template<class Key, class Value, class Compare>
void Object<Key, Value, Compare>::tagAll() noexcept {
    this->companion().setParent(m_parent);
    for (value_type& member : *this) {
        Place::inObject(member.second, *this->companion().newest(), member.first);
    }
    this->companion().forgetFormer();
}

template class Object<std::string, Element, std::less<std::string>>;

}  // namespace ko::Orvid
