// SPDX-License-Identifier: MIT
//
// Lengths as a CallbackParserListener gets them.

#pragma once

#include <ko/Orvid/Exception.h>

#include <cstddef>
#include <limits>

namespace ko::Orvid {

/// The listener's lengths have 32 bits. Throws Exception for one that has more.
inline unsigned int listenerLength(std::size_t length) {
    if (length > std::numeric_limits<unsigned int>::max()) {
        throw Exception("A string or number is longer than 4294967295 bytes!");
    }
    return static_cast<unsigned int>(length);
}

}  // namespace ko::Orvid
