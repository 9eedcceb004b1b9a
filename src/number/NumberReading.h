// SPDX-License-Identifier: MIT
//
// From text to arithmetic types and back, in the locale "C" whatever the program's is.

#pragma once

#include <charconv>
#include <cstddef>
#include <string_view>
#include <system_error>

namespace ko::Orvid {

/// Reads all of `text` into `value`; returns false, leaving `value` alone, for anything odd: text
/// around the digits, a value out of range.
template<class T>
bool readWhole(std::string_view text, T& value) {
    const char* const end = text.data() + text.size();
    T result{};
    const auto read = std::from_chars(text.data(), end, result);
    if (read.ec != std::errc() || read.ptr != end) {
        return false;
    }
    value = result;
    return true;
}

/// What strtod() and its like read at the beginning of the text: the nearest value, an infinity
/// where that is beyond the largest one. `isWhole` says whether the text is a decimal number from
/// beginning to end.
template<class Real>
Real readReal(std::string_view text, bool& isWhole);

/// What writeShortest() may need.
constexpr std::size_t k_shortestSize = 64;

/// The shortest text that reads back as the same value; returns its length. `text` has room for
/// k_shortestSize bytes.
template<class Real>
std::size_t writeShortest(char* text, Real value) {
    return static_cast<std::size_t>(std::to_chars(text, text + k_shortestSize, value).ptr - text);
}

}  // namespace ko::Orvid
