// SPDX-License-Identifier: MIT
//
// The characters that mean something in path text, for all that read it.

#pragma once

#include <array>
#include <cstddef>
#include <string_view>

namespace ko::Orvid {

/// The end of the input, as a character. The byte itself ends a path too.
inline constexpr char k_pathEnd = static_cast<char>(0xFF);

inline bool isDigit(char c) { return c >= '0' && c <= '9'; }

/// For each byte, whether it is something else than a plain character of a key.
inline constexpr std::array<bool, 256> k_endsKey = [] {
    std::array<bool, 256> ends{};
    for (const char c : {'.', '[', ']', '\\', k_pathEnd}) {
        ends[static_cast<unsigned char>(c)] = true;
    }
    return ends;
}();

/// How many characters at the start of `text` go on with a key.
inline std::size_t keyLength(std::string_view text) {
    std::size_t length = 0;
    while (length < text.length() && !k_endsKey[static_cast<unsigned char>(text[length])]) {
        ++length;
    }
    return length;
}

}  // namespace ko::Orvid
