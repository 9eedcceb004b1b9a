// SPDX-License-Identifier: MIT
//
// An array's items and their places.

#include <ko/Orvid/Array.h>

#include <utility>

#include "tree/Place.h"

namespace ko::Orvid {

template<class T>
Array<T>::Array(T* parent) : m_parent(parent) {}

template<class T>
Array<T>::Array(const Array& other, T* parent) : IndexList<T>(), m_parent(parent) {
    NodeMemory nodes(sizeof(T) * 2 * other.size());
    const NodeMemory::Scope scope(nodes);
    for (const T& item : other) {
        const ParentLink& link = this->companion().to(parent);
        Place::inArray(this->emplaceBack(item), link, 0);
    }
}

template<class T>
Array<T>::Array(Array&& other, T* parent) noexcept
    : IndexList<T>(std::move(other)), m_parent(parent) {
    moveTo(parent);
}

template<class T>
Array<T>& Array<T>::operator=(Array&& other) noexcept {
    if (this != &other) {
        // The former items go last: `other` may lie within them.
        Array taken(std::move(other), m_parent);
        this->exchange(taken);
    }
    return *this;
}

template<class T>
Array<T>& Array<T>::operator=(const Array& other) {
    if (this != &other) {
        Array copy(other, m_parent);
        this->exchange(copy);
    }
    return *this;
}

template<class T>
Array<T>::~Array() = default;

template<class T>
template<class... Arguments>
T& Array<T>::append(Arguments&&... arguments) {
    const ParentLink& link = this->companion().to(m_parent);
    const auto position = this->size();
    T& item = this->emplaceBack(std::forward<Arguments>(arguments)...);
    Place::inArray(item, link, position);
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
    return append(std::move(value));
}

template<class T>
void Array<T>::updateVector() {
    IndexList<T>::updateVector();
    tagAll();
}

template<class T>
void Array<T>::swap(Array& other) {
    this->exchange(other);
    tagAll();
}

template<class T>
void Array<T>::removeMatches(const std::function<bool(const T&)>& matches) {
    this->eraseMatches(matches);
}

template<class T>
void Array<T>::setParent(T* parent) {
    m_parent = parent;
    tagAll();
}

template<class T>
void Array<T>::moveTo(T* parent) noexcept {
    m_parent = parent;
    this->companion().setParent(parent);
}

template<class T>
void Array<T>::tagAll() noexcept {
    this->companion().setParent(m_parent);
    std::size_t position = 0;
    for (T& item : *this) {
        Place::inArray(item, *this->companion().newest(), position++);
    }
    this->companion().forgetFormer();
}

template class Array<Element>;

}  // namespace ko::Orvid
