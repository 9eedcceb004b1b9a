// SPDX-License-Identifier: MIT
//
// An object's members and their places.

#include <ko/Orvid/Object.h>

#include "Place.h"

namespace ko::Orvid {

template<class Key, class Value, class Compare>
Object<Key, Value, Compare>::Object(Value* parent) : m_parent(parent) {}

template<class Key, class Value, class Compare>
Object<Key, Value, Compare>::Object(const Object& other, Value* parent)
    : TBase(other), m_parent(parent) {
    tagAll();
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
auto Object<Key, Value, Compare>::insert(const value_type& member) -> std::pair<iterator, bool> {
    const std::pair<iterator, bool> result = TBase::insert(member);
    tagOrErase(result.first, result.second);
    return result;
}

template<class Key, class Value, class Compare>
auto Object<Key, Value, Compare>::insert(iterator position, const value_type& member) -> iterator {
    const auto before = this->size();
    const iterator result = TBase::insert(position, member);
    tagOrErase(result, this->size() != before);
    return result;
}

template<class Key, class Value, class Compare>
Value& Object<Key, Value, Compare>::resetMember(Key key) {
    const iterator present = this->find(key);
    if (present != this->end()) {
        present->second.setNull();
        return present->second;
    }
    const iterator added = this->append(std::move(key));
    tagOrErase(added, true);
    return added->second;
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
void Object<Key, Value, Compare>::tagOrErase(iterator member, bool isNew) {
    try {
        Place::inObject(member->second, m_parent, member->first);
    } catch (...) {
        if (isNew) {
            this->erase(member);
        }
        throw;
    }
}

template<class Key, class Value, class Compare>
void Object<Key, Value, Compare>::tagAll() {
    for (value_type& member : *this) {
        Place::inObject(member.second, m_parent, member.first);
    }
}

template class Object<std::string, Element, std::less<std::string>>;

}  // namespace ko::Orvid
