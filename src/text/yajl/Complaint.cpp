// SPDX-License-Identifier: MIT
//
// YAJL shows the text in the second line, and below it an arrow.

#include "text/yajl/Complaint.h"

#include <cstddef>

namespace ko::Orvid::yajl {

namespace {

bool startsWith(std::string_view text, std::string_view start) noexcept {
    return text.substr(0, start.size()) == start;
}

}  // namespace

Complaint complaintOf(std::string_view error) noexcept {
    if (startsWith(error, "lexical error: invalid string")) {
        return Complaint::word;
    }
    if (startsWith(error, "lexical error: invalid char in json text")) {
        return Complaint::character;
    }
    return startsWith(error, "parse error: after") ? Complaint::comma : Complaint::other;
}

char markedCharacter(std::string_view error) noexcept {
    const std::size_t first = error.find('\n');
    const std::size_t second = error.find('\n', first + 1);
    const std::size_t arrow = error.find('^');
    if (first == std::string_view::npos || arrow == std::string_view::npos || second > arrow) {
        return '\0';
    }
    const std::string_view shown = error.substr(first + 1, second - first - 1);
    const std::size_t column = arrow - second - 1;
    return column == 0 || column > shown.size() ? '\0' : shown[column - 1];
}

}  // namespace ko::Orvid::yajl
