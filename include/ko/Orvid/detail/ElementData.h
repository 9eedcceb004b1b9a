// SPDX-License-Identifier: MIT
//
// What an element holds, as a record of its type and its payload.

#pragma once

#include <ko/Orvid/fwd.h>
#include <ko/Orvid/types.h>

#include <functional>
#include <string>

namespace ko::Orvid::detail {

/// The type, and `value`'s member of that type. Pointers are owned.
struct ElementData {
    EType type = etNull;
    union UValue {
        Object<std::string, Element, std::less<std::string>>* object = nullptr;
        Array<Element>* array;
        std::string* string;
        Number* number;
        bool boolean;
        unsigned int null;
    } value;
};

}  // namespace ko::Orvid::detail
