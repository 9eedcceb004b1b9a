// SPDX-License-Identifier: MIT
//
// An array's items and their places.

#include <ko/Orvid/Array.h>

#include <utility>

#include "tree/Containment.h"
#include "tree/Place.h"
#include "tree/Strays.h"

namespace ko::Orvid {

template<class T>
Array<T>::Array(T* parent) {
    this->m_link.setParent(parent);
}

template<class T>
Array<T>::Array(const Array& other, T* parent) : IndexList<T>() {
    this->m_link.setParent(parent);
    copyItems(other);
    withoutPositions();
}

template<class T>
void Array<T>::copyItems(const Array& other) {
    SlabArena nodes(sizeof(T) * 2 * other.size());
    const SlabArena::Scope scope(nodes);
    this->reserve(other.size());
    for (const T& item : other) {
        append(item);
    }
}

template<class T>
Array<T>::Array(Array&& other, T* parent) noexcept {
    this->m_link.setParent(parent);
    this->exchange(other);
    tagAll();
}

template<class T>
// NOLINTNEXTLINE(performance-noexcept-move-constructor): a cycle is avoided by a copy
Array<T>& Array<T>::operator=(Array&& other) {
    if (this == &other) {
        return *this;
    }
    if (liesInChild(*this, other)) {
        return *this = std::as_const(other);
    }
    // The former items go last: `other` may lie within them.
    Array taken(std::move(other));
    this->exchange(taken);
    tagAll();
    return *this;
}

template<class T>
Array<T>& Array<T>::operator=(const Array& other) {
    if (this != &other) {
        Array copy(parent());
        copy.copyItems(other);
        this->exchange(copy);
        updateVector();
        tagAll();
        withoutPositions();
    }
    return *this;
}

template<class T>
Array<T>::~Array() {
    Strays::comeHome(this->m_link);
}

template<class T>
template<class... Arguments>
T& Array<T>::append(Arguments&&... arguments) {
    const auto position = this->size();
    T& item = this->emplaceBack(std::forward<Arguments>(arguments)...);
    Place::inArray(item, this->m_link, position);
    return item;
}

template<class T>
void Array<T>::push_back(const T& value) {
    append(value);
}

template<class T>
T& Array<T>::appendNull() {
    return append();
}

template<class T>
T& Array<T>::emplace_back(T&& value) {
    return liesIn(*this, value) ? append(std::as_const(value)) : append(std::move(value));
}

template<class T>
auto Array<T>::insert(const_iterator position, T&& value) -> iterator {
    return liesIn(*this, value) ? this->emplaceAt(position.position(), std::as_const(value))
                                : this->emplaceAt(position.position(), std::move(value));
}

template<class T>
auto Array<T>::insert(size_type position, T&& value) -> iterator {
    this->checked(position, this->size() + 1);
    return insert(const_iterator(this->iteratorAt(position)), std::move(value));
}

template<class T>
void Array<T>::updateVector() {
    IndexList<T>::updateVector();
    tagAll();
}

template<class T>
void Array<T>::swap(Array& other) {
    if (this != &other) {
        IndexList<T>::ItemPlaces::beginExchange(*this, other);
        this->exchange(other);
    }
    tagAll();
}

template<class T>
void Array<T>::removeMatches(const std::function<bool(const T&)>& matches) {
    this->eraseMatches(matches, true);
}

template<class T>
void Array<T>::setParent(T* parent) {
    if (parent != this->parent()) {
        Strays::stayBehind(this->m_link);
    }
    this->m_link.setParent(parent);
    tagAll();
}

template<class T>
void Array<T>::tagAll() noexcept {
    std::size_t position = 0;
    for (T& item : *this) {
        Place::inArray(item, this->m_link, position++);
    }
    Strays::settle(this->m_link);
}

template<class T>
void Array<T>::withoutPositions() noexcept {
    for (T& item : *this) {
        Place::withoutPosition(item);
    }
}

template class Array<Element>;

}  // namespace ko::Orvid
