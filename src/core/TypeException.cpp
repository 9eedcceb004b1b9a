// SPDX-License-Identifier: MIT
//
// The text of type errors.

#include <ko/Orvid/TypeException.h>

#include "core/TextStream.h"

namespace ko::Orvid {

template<class Type>
TypeException<Type>::TypeException(const Element* element, Type requested, Type got)
    : Exception(element), m_requested(requested), m_got(got) {}

template<class Type>
TypeException<Type>::TypeException(const TypeException&) = default;

template<class Type>
TypeException<Type>& TypeException<Type>::operator=(const TypeException&) = default;

template<class Type>
TypeException<Type>::~TypeException() = default;

template<class Type>
ko::Exception* TypeException<Type>::clone() const {
    return new TypeException(*this);
}

template<class Type>
void TypeException<Type>::generateWhat(std::string& out) const {
    TextStream text;
    text << "Json type mismatch! Requestet Json type: " << m_requested
         << " Got Json type: " << m_got;
    if (elementPath() != nullptr) {
        text << " Current element: \"" << *elementPath() << "\"";
    }
    out = text.str();
}

template class TypeException<EType>;

}  // namespace ko::Orvid
