// SPDX-License-Identifier: MIT
//
// Text that is shown to people: which characters a terminal would obey instead of showing them.

#pragma once

#include <algorithm>
#include <iterator>

namespace ko::Orvid::text {

/// Whether a terminal obeys the character: control characters, also those from U+0080 on, and those
/// that turn the direction of text, by which one text can look like another.
inline bool steersTerminal(char32_t codePoint) {
    constexpr struct {
        char32_t first;
        char32_t last;
    } ranges[] = {{0, 0x1F},        {0x7F, 0x9F},     {0x61C, 0x61C},
                  {0x200E, 0x200F}, {0x2028, 0x202E}, {0x2066, 0x2069}};
    return std::any_of(std::begin(ranges), std::end(ranges), [codePoint](const auto& range) {
        return codePoint >= range.first && codePoint <= range.last;
    });
}

}  // namespace ko::Orvid::text
