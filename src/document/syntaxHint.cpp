// SPDX-License-Identifier: MIT
//
// Hints for frequent errors, from the character in error and what was expected in its place.

#include "document/syntaxHint.h"

#include <ko/Orvid/Exception.h>

#include "text/yajl/Complaint.h"

namespace ko::Orvid {

namespace {

constexpr const char* k_quotes = "Strings and keys stand in double quotes.";
constexpr const char* k_comma = "A comma is missing, or a number begins with a 0 that is too much.";
constexpr const char* k_words =
    "The only words of JSON are true, false and null, in small letters; all other text stands in "
    "double quotes.";
constexpr const char* k_number = "A number begins with a digit, or with \"-\" and a digit.";

bool isDigit(char c) { return c >= '0' && c <= '9'; }

bool isLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }

/// Other bytes, as those of another encoding, show no typing mistake.
bool isVisible(char c) { return c > ' ' && c < '\x7F'; }

const char* hintFor(char found, ExpectedToken expected) {
    switch (expected) {
        case ExpectedToken::word:
            return k_words;
        case ExpectedToken::comma:
            return found == '\'' ? k_quotes : isDigit(found) ? k_comma : "";
        case ExpectedToken::key:
            if (isLetter(found)) {
                return k_quotes;
            }
            [[fallthrough]];
        case ExpectedToken::value:
            return found == '\''                  ? k_quotes
                   : isLetter(found)              ? k_words
                   : found == '+' || found == '.' ? k_number
                                                  : "";
        default:
            return "";
    }
}

/// Lenient reading has nothing but YAJL's text.
const char* hintFor(const std::string& yajlText) {
    switch (yajl::complaintOf(yajlText)) {
        case yajl::Complaint::word:
            return k_words;
        case yajl::Complaint::character:
            return hintFor(yajl::markedCharacter(yajlText), ExpectedToken::value);
        case yajl::Complaint::comma:
            return hintFor(yajl::markedCharacter(yajlText), ExpectedToken::comma);
        default:
            return "";
    }
}

}  // namespace

std::string syntaxHint(const ParseException& error) {
    if (!error.found()) {
        return hintFor(error.message());
    }
    return isVisible(*error.found()) ? hintFor(*error.found(), error.expected()) : "";
}

}  // namespace ko::Orvid
