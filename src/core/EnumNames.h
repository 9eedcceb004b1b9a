// SPDX-License-Identifier: MIT
//
// The names of an enumeration's values, for its operators << on narrow and on wide streams.

#pragma once

#include <cstddef>
#include <ostream>

namespace ko::Orvid {

/// One value's name in both character types.
struct NamedEnum {
    const char* narrow;
    const wchar_t* wide;
};

#define ORVID_ENUM_NAME(text) \
    { text, L##text }

inline std::ostream& operator<<(std::ostream& out, const NamedEnum& name) {
    return out << name.narrow;
}

inline std::wostream& operator<<(std::wostream& out, const NamedEnum& name) {
    return out << name.wide;
}

/// The name at `position` (0-based) of a table of consecutive values; null outside the table.
template<std::size_t count>
const NamedEnum* nameAt(const NamedEnum (&names)[count], long long position) {
    const bool known = position >= 0 && position < static_cast<long long>(count);
    return known ? &names[position] : nullptr;
}

/// Prints the name, or sets `missing` on the stream, writing nothing, when there is none.
template<class Stream>
Stream& printName(Stream& out, const NamedEnum* name, std::ios_base::iostate missing) {
    if (name == nullptr) {
        out.setstate(missing);
    } else {
        out << *name;
    }
    return out;
}

}  // namespace ko::Orvid
