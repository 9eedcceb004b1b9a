// SPDX-License-Identifier: MIT
//
// Skipping whitespace and comments.

#include "input/skipWhitespace.h"

namespace orvid_tool {

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

std::size_t skipWhitespace(std::string_view text, std::size_t offset) {
    constexpr const char* whitespace = " \t\r\n\v\f";
    while (true) {
        const std::size_t word = text.find_first_not_of(whitespace, offset);
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
