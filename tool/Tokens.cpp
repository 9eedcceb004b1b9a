// SPDX-License-Identifier: MIT
//
// The grammar of JSON's tokens. The newline behind the text ends each of them.

#include "Tokens.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>

namespace orvid_tool {

namespace {

bool isDigit(char c) { return c >= '0' && c <= '9'; }

bool isHexDigit(char c) { return isDigit(c) || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F'); }

constexpr std::uint64_t repeated(unsigned char c) { return 0x0101010101010101U * c; }

/// The highest bit of each byte that is 0; bytes behind the first of these may be marked wrongly.
constexpr std::uint64_t zeroBytes(std::uint64_t bytes) {
    return (bytes - repeated(1)) & ~bytes & repeated(0x80);
}

/// The same of bytes that end a string, begin an escape, or may not stand in a string.
constexpr std::uint64_t specialBytes(std::uint64_t bytes) {
    return zeroBytes(bytes ^ repeated('"')) | zeroBytes(bytes ^ repeated('\\')) |
           ((bytes - repeated(0x20)) & ~bytes & repeated(0x80));
}

bool isSpecial(char c) { return c == '"' || c == '\\' || static_cast<unsigned char>(c) < 0x20; }

}  // namespace

void Tokens::passPlain() {
    std::uint64_t bytes = 0;
    while (m_end - m_place >= static_cast<std::ptrdiff_t>(sizeof bytes)) {
        std::memcpy(&bytes, m_place, sizeof bytes);
        if (specialBytes(bytes) != 0) {
            break;
        }
        m_place += sizeof bytes;
    }
    while (!isSpecial(*m_place)) {
        ++m_place;
    }
}

bool Tokens::passString(bool& hasEscape) {
    ++m_place;
    while (true) {
        passPlain();
        if (*m_place == '"') {
            ++m_place;
            return true;
        }
        if (*m_place != '\\') {
            return false;
        }
        hasEscape = true;
        ++m_place;
        if (!passEscape()) {
            return false;
        }
    }
}

bool Tokens::passEscape() {
    if (*m_place != 'u') {
        return std::strchr("\"\\/bfnrt", *m_place++) != nullptr && m_place[-1] != '\0';
    }
    ++m_place;
    for (int i = 0; i < 4; ++i) {
        if (!isHexDigit(*m_place)) {
            return false;
        }
        ++m_place;
    }
    return true;
}

bool Tokens::passDigits() {
    const char* const start = m_place;
    while (isDigit(*m_place)) {
        ++m_place;
    }
    return m_place != start;
}

bool Tokens::passNumber() {
    pass('-');
    if (!pass('0') && !passDigits()) {
        return false;
    }
    if (pass('.') && !passDigits()) {
        return false;
    }
    if (*m_place == 'e' || *m_place == 'E') {
        ++m_place;
        if (!pass('-')) {
            pass('+');
        }
        return passDigits();
    }
    return true;
}

bool Tokens::passWord() {
    constexpr std::array<std::string_view, 3> words{"null", "true", "false"};
    const std::string_view left(m_place, static_cast<std::size_t>(m_end - m_place));
    const auto* const word =
        std::find_if(words.begin(), words.end(), [left](std::string_view candidate) {
            return left.substr(0, candidate.length()) == candidate;
        });
    if (word == words.end()) {
        return false;
    }
    m_place += word->length();
    return true;
}

}  // namespace orvid_tool
