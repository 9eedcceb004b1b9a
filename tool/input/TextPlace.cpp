// SPDX-License-Identifier: MIT
//
// Counting lines and columns, and skipping what carries no value.

#include "input/TextPlace.h"

#include <algorithm>

namespace orvid_tool {

namespace {

/// Where the comment that starts at `offset` ends; `offset` itself when none starts or ends there.
std::size_t commentEnd(std::string_view text, std::size_t offset) {
    const bool isLine = text.compare(offset, 2, "//") == 0;
    const bool isBlock = text.compare(offset, 2, "/*") == 0;
    if (!isLine && !isBlock) {
        return offset;
    }
    const char* const mark = isLine ? "\n" : "*/";
    const std::size_t end = text.find(mark, offset + 2);
    if (end == std::string_view::npos) {
        return isLine ? text.length() : offset;
    }
    return end + (isLine ? 1 : 2);
}

}  // namespace

STextPlace placeOf(std::string_view text, std::size_t offset) {
    const std::string_view before = text.substr(0, std::min(offset, text.length()));
    const auto lines = std::count(before.begin(), before.end(), '\n');
    const std::size_t newline = before.rfind('\n');
    const std::size_t start = newline == std::string_view::npos ? 0 : newline + 1;
    return {static_cast<std::size_t>(lines) + 1, before.length() - start + 1};
}

std::size_t skipBlanks(std::string_view text, std::size_t offset) {
    constexpr const char* blanks = " \t\r\n\v\f";
    while (true) {
        const std::size_t word = text.find_first_not_of(blanks, offset);
        if (word == std::string_view::npos) {
            return text.length();
        }
        offset = commentEnd(text, word);
        if (offset == word) {
            return word;
        }
    }
}

}  // namespace orvid_tool
