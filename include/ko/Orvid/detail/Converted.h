// SPDX-License-Identifier: MIT
//
// Values of any type that converts, where an operation takes an Element. Part of Element.h.

#pragma once

#include <ko/Orvid/detail/ElementValue.h>
#include <ko/Orvid/Element.h>

namespace ko::Orvid::detail {

class Converted {
public:
    template<class T, IfConverted<T> = 0>
    Converted(const T& value) : element(Element::from(value)) {}

    Element element;
};

}  // namespace ko::Orvid::detail
