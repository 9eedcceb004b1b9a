// SPDX-License-Identifier: MIT
//
// Writing binary values as text.

#include "number/NumberText.h"

#include <charconv>

#include "number/NumberBinary.h"

namespace ko::Orvid {

namespace {

using Binary = NumberStore::Binary;

/// `format` is what std::to_chars() accepts after the value.
template<class T, class... Format>
std::string_view written(NumberBuffer& buffer, T value, Format... format) noexcept {
    char* const begin = buffer.data();
    const char* const end = std::to_chars(begin, begin + buffer.size(), value, format...).ptr;
    return {begin, static_cast<std::size_t>(end - begin)};
}

template<class... Format>
std::string_view textOf(const Binary& binary, NumberBuffer& buffer, Format... format) noexcept {
    switch (binary.kind) {
        case Number::ebLongLong:
            return written(buffer, signedOf(binary));
        case Number::ebULongLong:
            return written(buffer, unsignedOf(binary));
        case Number::ebDouble:
            return written(buffer, realOf(binary), format...);
        default:
            return {};
    }
}

}  // namespace

std::string_view derivedText(const Binary& binary, NumberBuffer& buffer) noexcept {
    constexpr int significantDigits = 6;  // what a stream prints of a double by default
    return textOf(binary, buffer, std::chars_format::general, significantDigits);
}

std::string_view exactText(const Binary& binary, NumberBuffer& buffer) noexcept {
    return textOf(binary, buffer);
}

}  // namespace ko::Orvid
