// SPDX-License-Identifier: MIT
//
// An array's items and their places.

#include <ko/Orvid/Array.h>

#include "Place.h"

namespace ko::Orvid {

template<class T>
Array<T>::Array(T* parent) : m_parent(parent) {}

template<class T>
Array<T>::Array(const Array& other, T* parent) : IndexList<T>(), m_parent(parent) {
    for (const T& item : other) {
        Place::inArray(this->emplaceBack(item), parent, 0);
    }
}

template<class T>
Array<T>& Array<T>::operator=(const Array& other) {
    if (this != &other) {
        Array copy(other, m_parent);
        IndexList<T>::swap(copy);
    }
    return *this;
}

template<class T>
Array<T>::~Array() = default;

template<class T>
void Array<T>::push_back(const T& value) {
    const auto position = this->size();
    Place::inArray(this->emplaceBack(value), m_parent, position);
}

template<class T>
T& Array<T>::appendNull() {
    const auto position = this->size();
    T& item = this->emplaceBack();
    Place::inArray(item, m_parent, position);
    return item;
}

template<class T>
void Array<T>::updateVector() {
    IndexList<T>::updateVector();
    tagAll();
}

template<class T>
void Array<T>::swap(Array& other) {
    IndexList<T>::swap(other);
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
void Array<T>::tagAll() {
    std::size_t position = 0;
    for (T& item : *this) {
        Place::inArray(item, m_parent, position++);
    }
}

template class Array<Element>;

}  // namespace ko::Orvid
