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

LongToken::State LongToken::betweenTokens(char c) noexcept {
    switch (c) {
        case '"':
            return State::string;
        case '/':
            return State::slash;
        case '-':
            return State::number;
        default:
            // Whitespace, brackets, separators and words.
            return isDigit(c) ? State::digit : State::between;
    }
}

LongToken::State LongToken::inString(char c) noexcept {
    if (c == '\\') {
        return State::escape;
    }
    const bool ends = c == '"' || static_cast<unsigned char>(c) < ' ';
    return ends ? State::other : State::string;
}

LongToken::State LongToken::inEscape(State state, char c) noexcept {
    switch (state) {
        case State::escape:
            if (c == 'u') {
                return State::hex1;
            }
            return isOneOf("\"\\/bfnrt", c) ? State::string : State::other;
        case State::hex1:
            return isHexDigit(c) ? State::hex2 : State::other;
        case State::hex2:
            return isHexDigit(c) ? State::hex3 : State::other;
        case State::hex3:
            return isHexDigit(c) ? State::hex4 : State::other;
        default:
            return isHexDigit(c) ? State::string : State::other;
    }
}

/// A zero may stand alone before the point, so one digit does not say whether another may follow.
LongToken::State LongToken::inNumber(State state, char c) noexcept {
    if (isDigit(c)) {
        return state == State::number ? State::digit : State::digits;
    }
    return isOneOf("+-.eE", c) ? State::number : State::other;
}

LongToken::State LongToken::inComment(State state, char c) noexcept {
    switch (state) {
        case State::slash:
            return c == '/' ? State::lineComment : c == '*' ? State::blockComment : State::other;
        case State::lineComment:
            return c == '\n' ? State::between : State::lineComment;
        case State::star:
            return c == '/' ? State::between : c == '*' ? State::star : State::blockComment;
        default:
            return c == '*' ? State::star : State::blockComment;
    }
}

LongToken::State LongToken::after(State state, char c) noexcept {
    switch (state) {
        case State::between:
            return betweenTokens(c);
        case State::string:
            return inString(c);
        case State::escape:
        case State::hex1:
        case State::hex2:
        case State::hex3:
        case State::hex4:
            return inEscape(state, c);
        case State::number:
        case State::digit:
        case State::digits:
            return inNumber(state, c);
        case State::slash:
        case State::lineComment:
        case State::blockComment:
        case State::star:
            return inComment(state, c);
        default:
            return State::other;
    }
}

/// Whether a byte that leads from one state to the other only goes on with the token.
bool LongToken::goesOn(State before, State after) noexcept {
    switch (after) {
        case State::string:
        case State::escape:
        case State::hex1:
        case State::hex2:
        case State::hex3:
        case State::hex4:
        case State::lineComment:
        case State::blockComment:
        case State::star:
            return true;
        default:
            return after == State::digits && before == State::digits;
    }
}

void LongToken::follow(std::string_view text) noexcept {
    for (const char c : text) {
        m_state = after(m_state, c);
        m_size = m_state == State::between ? 0 : m_size + 1;
    }
}

bool LongToken::hold(std::string_view piece) {
    if (m_size < k_long || m_held.size() >= std::min(m_size, k_largestHeld)) {
        return false;
    }
    State state = m_state;
    for (const char c : piece) {
        const State next = after(state, c);
        if (!goesOn(state, next)) {
            return false;
        }
        state = next;
    }
    m_held.append(piece);
    m_state = state;
    return true;
}

void LongToken::release() noexcept {
    m_size += m_held.size();
    m_held = std::string();
}

}  // namespace ko::Orvid::yajl
