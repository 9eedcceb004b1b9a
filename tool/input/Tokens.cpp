// SPDX-License-Identifier: MIT
//
// The grammar of JSON's tokens. The newline after the text ends each of them.

#include "input/Tokens.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace orvid_tool {

namespace {

bool isHexDigit(char c) { return isDigit(c) || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F'); }

}  // namespace

bool Tokens::passString(bool& hasEscape) {
    ++m_place;
    while (true) {
        m_place = plainEnd(m_place, m_end);
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
    m_place = digitsEnd(m_place, m_end);
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
