// SPDX-License-Identifier: MIT
//
// The mark that some programs write before UTF-8 text.

#pragma once

#include <cstddef>
#include <string_view>

namespace ko::Orvid::text {

constexpr std::string_view k_byteOrderMark = "\xEF\xBB\xBF";

/// How many bytes the mark at the beginning of the text takes: 3, or 0 where there is none.
inline std::size_t markLength(std::string_view text) noexcept {
    const bool isMarked = text.substr(0, k_byteOrderMark.size()) == k_byteOrderMark;
    return isMarked ? k_byteOrderMark.size() : 0;
}

}  // namespace ko::Orvid::text
