// SPDX-License-Identifier: MIT
//
// AsciiText: characters beyond ASCII to escapes.

#include "text/AsciiText.h"

#include <algorithm>
#include <optional>

#include "text/codePoints.h"
#include "text/Utf8Sequence.h"

namespace ko::Orvid::text {

namespace {

constexpr char32_t k_replacement = 0xFFFD;

/// Reads one character beyond ASCII and moves `at` after it, or after the bytes of an incomplete
/// one, for which it returns nothing.
std::optional<char32_t> readCharacter(const char*& at, const char* end) {
    const auto character = firstCodePoint({at, static_cast<std::size_t>(end - at)});
    at += character ? character->length : Utf8Sequence::begunLength(at, end);
    return character ? std::optional<char32_t>(character->value) : std::nullopt;
}

void appendUnit(std::string& out, char32_t unit) {
    constexpr const char* k_digits = "0123456789ABCDEF";
    const char escape[] = {'\\',
                           'u',
                           k_digits[unit >> 12 & 0xF],
                           k_digits[unit >> 8 & 0xF],
                           k_digits[unit >> 4 & 0xF],
                           k_digits[unit & 0xF]};
    out.append(escape, sizeof escape);
}

void appendEscape(std::string& out, char32_t character) {
    if (character < 0x10000) {
        appendUnit(out, character);
        return;
    }
    const char32_t offset = character - 0x10000;
    appendUnit(out, 0xD800 + (offset >> 10));
    appendUnit(out, 0xDC00 + (offset & 0x3FF));
}

bool isBeyondAscii(char byte) { return (static_cast<unsigned char>(byte) & 0x80) != 0; }

}  // namespace

bool hasBeyondAscii(const char* text, std::size_t length) {
    return std::any_of(text, text + length, isBeyondAscii);
}

bool appendAscii(std::string& out, const char* text, std::size_t length) {
    const char* const end = text + length;
    bool isValid = true;
    while (text != end) {
        const char* const beyond = std::find_if(text, end, isBeyondAscii);
        out.append(text, beyond);
        text = beyond;
        if (text != end) {
            const std::optional<char32_t> character = readCharacter(text, end);
            isValid = isValid && character;
            appendEscape(out, character.value_or(k_replacement));
        }
    }
    return isValid;
}

}  // namespace ko::Orvid::text
