// SPDX-License-Identifier: MIT
//
// AsciiText: a decoder of UTF-8 by the table of well-formed sequences in the Unicode standard, and
// the escapes for what it finds.

#include "text/AsciiText.h"

#include <algorithm>

namespace ko::Orvid::text {

namespace {

constexpr char32_t k_replacement = 0xFFFD;

/// What a first byte beyond ASCII asks for. Its second byte is the only one with limits of its own:
/// they keep out overlong forms, surrogates and what is beyond U+10FFFF.
struct Lead {
    unsigned int followers;  // 0: no first byte of a character
    unsigned char low;       // of the second byte
    unsigned char high;
};

Lead leadOf(unsigned char byte) {
    if (byte >= 0xC2 && byte <= 0xDF) {
        return {1, 0x80, 0xBF};
    }
    if (byte >= 0xE0 && byte <= 0xEF) {
        return {2, static_cast<unsigned char>(byte == 0xE0 ? 0xA0 : 0x80),
                static_cast<unsigned char>(byte == 0xED ? 0x9F : 0xBF)};
    }
    if (byte >= 0xF0 && byte <= 0xF4) {
        return {3, static_cast<unsigned char>(byte == 0xF0 ? 0x90 : 0x80),
                static_cast<unsigned char>(byte == 0xF4 ? 0x8F : 0xBF)};
    }
    return {0, 0, 0};
}

/// Reads one character beyond ASCII and moves `at` after it, or after the bytes of an incomplete
/// one, for which it returns false.
bool readCharacter(const char*& at, const char* end, char32_t& character) {
    const auto first = static_cast<unsigned char>(*at++);
    Lead lead = leadOf(first);
    if (lead.followers == 0) {
        return false;
    }
    character = first & (0x3Fu >> lead.followers);
    for (; lead.followers > 0; --lead.followers) {
        const unsigned char next = at == end ? 0 : static_cast<unsigned char>(*at);
        if (next < lead.low || next > lead.high) {
            return false;
        }
        character = character << 6 | (next & 0x3Fu);
        lead.low = 0x80;
        lead.high = 0xBF;
        ++at;
    }
    return true;
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
            char32_t character = 0;
            const bool isRead = readCharacter(text, end, character);
            isValid = isValid && isRead;
            appendEscape(out, isRead ? character : k_replacement);
        }
    }
    return isValid;
}

}  // namespace ko::Orvid::text
