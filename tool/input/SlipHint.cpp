// SPDX-License-Identifier: MIT
//
// Looking around the position of an error: the word there, the characters beside it, and for a text
// that ends early what is still open.

#include "input/SlipHint.h"

#include <algorithm>
#include <cctype>
#include <utility>
#include <vector>

#include "input/skipWhitespace.h"
#include "output/Similar.h"
#include "text/whitespace.h"

namespace orvid_tool {

namespace {

using ko::Orvid::ExpectedToken;
using ko::Orvid::ParseErrorCode;

constexpr std::string_view k_letters = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ_$";
constexpr std::string_view k_digits = "0123456789";

bool isIn(std::string_view characters, std::string_view text, std::size_t offset) {
    return offset < text.length() && characters.find(text[offset]) != std::string_view::npos;
}

bool isInWord(std::string_view text, std::size_t offset) {
    return isIn(k_letters, text, offset) || isIn(k_digits, text, offset);
}

/// The word that holds the byte or ends before it; empty where there is none of a usual length.
std::string_view wordAt(std::string_view text, std::size_t offset) {
    constexpr std::size_t longest = 40;
    std::size_t begin = offset;
    while (begin > 0 && offset - begin <= longest && isInWord(text, begin - 1)) {
        --begin;
    }
    std::size_t end = offset;
    while (end - begin <= longest && isInWord(text, end)) {
        ++end;
    }
    const std::string_view word = text.substr(begin, end - begin);
    return word.length() <= longest && isIn(k_letters, text, begin) ? word : std::string_view();
}

std::string lowerCase(std::string_view word) {
    std::string result(word);
    std::transform(result.begin(), result.end(), result.begin(), [](char c) {
        return static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    });
    return result;
}

/// What a word without quotes that is no value was meant to be.
std::string wordHint(std::string_view word, bool isKey) {
    const std::string quoted = " (in double quotes it is a text: \"" + std::string(word) + "\")";
    if (isKey) {
        return " (a key stands in double quotes: \"" + std::string(word) + "\")";
    }
    const std::string name = lowerCase(word);
    if (name == "nan" || name == "inf" || name == "infinity") {
        return " (JSON has no number " + std::string(word) + ")";
    }
    if (name == "none" || name == "nil" || name == "undefined") {
        return " (did you mean null?)";
    }
    const std::string similar = similarTo(name, {"true", "false", "null"});
    return similar.empty() ? quoted : " (did you mean " + similar + "?)";
}

/// Whether the number that ends before the byte is a zero alone.
bool followsZero(std::string_view text, std::size_t offset) {
    return offset > 0 && text[offset - 1] == '0' &&
           (offset == 1 ||
            (!isInWord(text, offset - 2) && text[offset - 2] != '.' && text[offset - 2] != '+'));
}

std::string numberHint(std::string_view text, std::size_t offset, bool isValue) {
    if (followsZero(text, offset)) {
        return isIn(k_digits, text, offset) ? " (no number begins with 0 and a digit)"
               : isIn("xXoObB", text, offset) && isInWord(text, offset + 1)
                   ? " (numbers are decimal)"
                   : "";
    }
    if (isValue && isIn("+", text, offset) && isIn("0123456789.", text, offset + 1)) {
        return " (no number begins with +)";
    }
    return isValue && isIn(".", text, offset) && isIn(k_digits, text, offset + 1)
               ? " (no number begins with a point: write 0 before it)"
               : "";
}

/// What stands for a quote or a comment elsewhere.
std::string markHint(std::string_view text, std::size_t offset) {
    static const std::vector<std::pair<std::string_view, const char*>> marks{
        {"'", " (keys and texts stand in double quotes)"},
        {"`", " (keys and texts stand in double quotes)"},
        {"\xE2\x80\x9C", " (this is no straight quote: \")"},
        {"\xE2\x80\x9D", " (this is no straight quote: \")"},
        {"\xE2\x80\x98", " (this is no straight quote: \")"},
        {"\xE2\x80\x99", " (this is no straight quote: \")"},
        {"\xC2\xA0", " (this is a no-break space)"},
        {"\xE2\x80\x8B", " (this is a space of no width)"},
        {"\xEF\xBC\x9A", " (this is no plain colon: :)"},
        {"#", " (comments begin with // or /*)"},
        {"--", " (comments begin with // or /*)"},
        {"=", " (a colon follows a key)"}};
    for (const auto& [mark, hint] : marks) {
        if (text.substr(offset, mark.length()) == mark) {
            return hint;
        }
    }
    return "";
}

constexpr const char* k_utf16 = " (this is UTF-16: JSON is UTF-8)";

/// Whether the text begins with two characters of ASCII in UTF-16.
bool isEveryOtherZero(std::string_view text) {
    return text.length() >= 4 && (text[0] == '\0') != (text[1] == '\0') &&
           (text[0] == '\0') == (text[2] == '\0') && (text[1] == '\0') == (text[3] == '\0');
}

/// What a text is that begins with bytes which begin no JSON.
std::string formatHint(std::string_view text) {
    static const std::vector<std::pair<std::string_view, const char*>> starts{
        {{"\x1F\x8B", 2}, " (this is compressed by gzip)"},
        {{"\x28\xB5\x2F\xFD", 4}, " (this is compressed by zstd)"},
        {{"PK\x03\x04", 4}, " (this is a zip archive)"},
        {{"\xFF\xFE", 2}, k_utf16},
        {{"\xFE\xFF", 2}, k_utf16}};
    for (const auto& [start, hint] : starts) {
        if (text.substr(0, start.length()) == start) {
            return hint;
        }
    }
    return isEveryOtherZero(text) ? k_utf16 : "";
}

/// The name of a character that messages write as a byte.
std::string spaceHint(char c) {
    switch (c) {
        case ' ':
            return " (a space)";
        case '\t':
            return " (a tab)";
        case '\n':
        case '\r':
            return " (a line break)";
        default:
            return "";
    }
}

/// The offset after the string whose first quote is at `begin`, or npos.
std::size_t afterString(std::string_view text, std::size_t begin) {
    std::size_t at = begin + 1;
    while (at < text.length() && text[at] != '"') {
        at += text[at] == '\\' ? 2U : 1U;
    }
    return at < text.length() ? at + 1 : std::string_view::npos;
}

}  // namespace

std::string severalValuesHint(std::optional<char> found, ExpectedToken expected, bool isOwnLine) {
    const std::string_view beginnings = isOwnLine ? "{[\"0123456789" : "{[";
    return expected == ExpectedToken::nothing && found &&
                   beginnings.find(*found) != std::string_view::npos
               ? " (for values that follow each other there are --lines, split --values and join)"
               : "";
}

bool endsEarly(ParseErrorCode code) {
    return code == ParseErrorCode::textTruncated || code == ParseErrorCode::commentNotClosed;
}

std::string slipHint(std::string_view text, std::size_t offset, std::optional<char> found,
                     ExpectedToken expected) {
    const bool isKey = expected == ExpectedToken::key;
    const bool isValue = expected == ExpectedToken::value;
    if (expected == ExpectedToken::character) {
        return found == '\n' ? ", or the string lacks its closing quote" : "";
    }
    if (offset >= text.length() || !found) {
        return "";
    }
    if (offset <= 1) {
        if (std::string format = formatHint(text); !format.empty()) {
            return format;
        }
    }
    std::string space = spaceHint(text[offset]);
    const bool isNamed = expected != ExpectedToken::escape && expected != ExpectedToken::comment;
    if (!space.empty() && isNamed) {
        return space;
    }
    const std::string_view word = wordAt(text, offset);
    const bool isWordHere = !word.empty() && isIn(k_letters, text, offset);
    if (isWordHere && (isKey || isValue || expected == ExpectedToken::number)) {
        return wordHint(word, isKey);
    }
    if (isWordHere && expected != ExpectedToken::word &&
        isInWord(text, offset - std::min<std::size_t>(offset, 1)) &&
        !similarTo(lowerCase(word), {"true", "false", "null"}).empty()) {
        return wordHint(word, false);
    }
    const std::string number = numberHint(text, offset, isValue);
    return number.empty() && (isKey || isValue || expected == ExpectedToken::colon)
               ? markHint(text, offset)
               : number;
}

std::string nothingHint(std::string_view text) {
    if (skipWhitespace(text, 0) < text.length()) {
        return "";
    }
    const bool isBlank =
        text.find_first_not_of(ko::Orvid::text::k_whitespace) == std::string_view::npos;
    return text.empty() ? " (it is empty)"
           : isBlank    ? " (it has only whitespace)"
                        : " (it has only comments)";
}

std::optional<OpenPart> openPartOf(std::string_view text) {
    std::vector<std::size_t> open;
    std::size_t at = text.find_first_of("\"/[]{}");
    while (at < text.length()) {
        const char c = text[at];
        std::size_t next = at + 1;
        if (c == '[' || c == '{') {
            open.push_back(at);
        } else if (c == ']' || c == '}') {
            open.resize(open.size() - std::min<std::size_t>(open.size(), 1));
        } else if (c == '"') {
            next = afterString(text, at);
        } else if (c == '/' && next < text.length()) {
            const std::size_t end = commentEnd(text, at);
            next = end == at ? std::string_view::npos : end;
        }
        if (next == std::string_view::npos) {
            return OpenPart{c == '"' ? "string" : "comment", at};
        }
        at = text.find_first_of("\"/[]{}", next);
    }
    if (open.empty()) {
        return std::nullopt;
    }
    return OpenPart{text[open.back()] == '[' ? "array" : "object", open.back()};
}

std::string openHint(const OpenPart& part, std::size_t line, std::size_t column) {
    const std::string where = line == 0 ? "column " : std::to_string(line) + ":";
    return std::string(" (the ") + part.name + " that begins at " + where + std::to_string(column) +
           " is not closed)";
}

}  // namespace orvid_tool
