// SPDX-License-Identifier: MIT
//
// Hints for frequent errors, from what the messages show: the character in error, and what was
// expected in its place. YAJL shows the text, and below it an arrow after that character.

#include "document/syntaxHint.h"

#include <cstddef>
#include <string_view>

namespace ko::Orvid {

namespace {

bool startsWith(std::string_view text, std::string_view start) {
    return text.substr(0, start.size()) == start;
}

bool contains(std::string_view text, std::string_view part) {
    return text.find(part) != std::string_view::npos;
}

bool isDigit(char c) { return c >= '0' && c <= '9'; }

bool isLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }

/// The character before the arrow of the third line; NUL where there is none.
char characterAtArrow(std::string_view message) {
    const std::size_t first = message.find('\n');
    const std::size_t second = message.find('\n', first + 1);
    const std::size_t arrow = message.find('^');
    if (first == std::string_view::npos || arrow == std::string_view::npos || second > arrow) {
        return '\0';
    }
    const std::string_view shown = message.substr(first + 1, second - first - 1);
    const std::size_t column = arrow - second - 1;
    return column == 0 || column > shown.size() ? '\0' : shown[column - 1];
}

/// The character in error, and what kind of error it is.
struct SyntaxError {
    char character = '\0';
    bool isForKey = false;
    bool isForComma = false;
    bool isInWord = false;
};

SyntaxError errorOf(const std::string& message) {
    constexpr std::string_view k_unexpected = "Unexpected '";
    SyntaxError error;
    if (startsWith(message, k_unexpected) && message.size() > k_unexpected.size() + 1) {
        const bool isShown = message[k_unexpected.size() + 1] == '\'';
        const bool isForValue = contains(message, ": expected a value");
        error.isForKey = contains(message, ": expected a key");
        error.isForComma = contains(message, ": expected ','");
        error.isInWord = contains(message, ": expected true") ||
                         contains(message, ": expected false") ||
                         contains(message, ": expected null");
        const bool isKnown = isForValue || error.isForKey || error.isForComma;
        error.character = isShown && isKnown ? message[k_unexpected.size()] : '\0';
    } else if (startsWith(message, "lexical error: invalid string")) {
        error.isInWord = true;
    } else if (startsWith(message, "lexical error: invalid char in json text")) {
        error.character = characterAtArrow(message);
    } else if (startsWith(message, "parse error: after")) {
        error.isForComma = true;
        error.character = characterAtArrow(message);
    }
    return error;
}

}  // namespace

std::string syntaxHint(const std::string& message) {
    const SyntaxError error = errorOf(message);
    if (error.character == '\'' || (error.isForKey && isLetter(error.character))) {
        return "Strings and keys stand in double quotes.";
    }
    if (error.isForComma) {
        return isDigit(error.character)
                   ? "A comma is missing, or a number begins with a 0 that is too much."
                   : "";
    }
    if (error.isInWord || isLetter(error.character)) {
        return "The only words of JSON are true, false and null, in small letters; all other text "
               "stands in double quotes.";
    }
    if (error.character == '+' || error.character == '.') {
        return "A number begins with a digit, or with \"-\" and a digit.";
    }
    return "";
}

}  // namespace ko::Orvid
