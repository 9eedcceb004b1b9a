// SPDX-License-Identifier: MIT
//
// The lexical grammar as far as it says where a long token may end. What it does not say is left
// to YAJL.

#include "text/yajl/LongToken.h"

#include <algorithm>

#include "text/ByteRuns.h"

namespace ko::Orvid::yajl {

namespace {

/// In bytes; shorter tokens may be looked at again.
constexpr std::size_t k_long = 64;
/// In bytes; YAJL counts in 32 bits.
constexpr std::size_t k_largestHeld = std::size_t(1) << 30;

using text::isDigit;

bool isHexDigit(char c) { return isDigit(c) || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F'); }

bool isOneOf(std::string_view characters, char c) {
    return characters.find(c) != std::string_view::npos;
}

}  // namespace

LongToken::Place LongToken::betweenTokens(char c) noexcept {
    switch (c) {
        case '"':
            return Place::string;
        case '/':
            return Place::slash;
        case '-':
            return Place::number;
        default:
            // Whitespace, brackets, separators and words.
            return isDigit(c) ? Place::digit : Place::between;
    }
}

LongToken::Place LongToken::inString(char c) noexcept {
    if (c == '\\') {
        return Place::escape;
    }
    const bool ends = c == '"' || static_cast<unsigned char>(c) < ' ';
    return ends ? Place::other : Place::string;
}

LongToken::Place LongToken::inEscape(Place place, char c) noexcept {
    switch (place) {
        case Place::escape:
            if (c == 'u') {
                return Place::hex1;
            }
            return isOneOf("\"\\/bfnrt", c) ? Place::string : Place::other;
        case Place::hex1:
            return isHexDigit(c) ? Place::hex2 : Place::other;
        case Place::hex2:
            return isHexDigit(c) ? Place::hex3 : Place::other;
        case Place::hex3:
            return isHexDigit(c) ? Place::hex4 : Place::other;
        default:
            return isHexDigit(c) ? Place::string : Place::other;
    }
}

/// A zero may stand alone before the point, so one digit does not say whether another may follow.
LongToken::Place LongToken::inNumber(Place place, char c) noexcept {
    if (isDigit(c)) {
        return place == Place::number ? Place::digit : Place::digits;
    }
    return isOneOf("+-.eE", c) ? Place::number : Place::other;
}

LongToken::Place LongToken::inComment(Place place, char c) noexcept {
    switch (place) {
        case Place::slash:
            return c == '/' ? Place::lineComment : c == '*' ? Place::blockComment : Place::other;
        case Place::lineComment:
            return c == '\n' ? Place::between : Place::lineComment;
        case Place::star:
            return c == '/' ? Place::between : c == '*' ? Place::star : Place::blockComment;
        default:
            return c == '*' ? Place::star : Place::blockComment;
    }
}

LongToken::Place LongToken::after(Place place, char c) noexcept {
    switch (place) {
        case Place::between:
            return betweenTokens(c);
        case Place::string:
            return inString(c);
        case Place::escape:
        case Place::hex1:
        case Place::hex2:
        case Place::hex3:
        case Place::hex4:
            return inEscape(place, c);
        case Place::number:
        case Place::digit:
        case Place::digits:
            return inNumber(place, c);
        case Place::slash:
        case Place::lineComment:
        case Place::blockComment:
        case Place::star:
            return inComment(place, c);
        default:
            return Place::other;
    }
}

/// Whether a byte that leads from one place to the other only goes on with the token.
bool LongToken::goesOn(Place before, Place after) noexcept {
    switch (after) {
        case Place::string:
        case Place::escape:
        case Place::hex1:
        case Place::hex2:
        case Place::hex3:
        case Place::hex4:
        case Place::lineComment:
        case Place::blockComment:
        case Place::star:
            return true;
        default:
            return after == Place::digits && before == Place::digits;
    }
}

void LongToken::follow(std::string_view text) noexcept {
    for (const char c : text) {
        m_place = after(m_place, c);
        m_size = m_place == Place::between ? 0 : m_size + 1;
    }
}

bool LongToken::hold(std::string_view piece) {
    if (m_size < k_long || m_held.size() >= std::min(m_size, k_largestHeld)) {
        return false;
    }
    Place place = m_place;
    for (const char c : piece) {
        const Place next = after(place, c);
        if (!goesOn(place, next)) {
            return false;
        }
        place = next;
    }
    m_held.append(piece);
    m_place = place;
    return true;
}

void LongToken::release() noexcept {
    m_size += m_held.size();
    m_held = std::string();
}

}  // namespace ko::Orvid::yajl
