// SPDX-License-Identifier: MIT
//
// LongToken keeps a token that comes in many pieces from YAJL until it can end. YAJL looks at an
// unfinished token from its beginning again with each piece, so that one of n small pieces would
// cost time that grows with the square of n.

#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace ko::Orvid::yajl {

/// Follows the text as far as is needed to know in what token a piece ends, and holds back the
/// pieces that go on with it and can be nothing else: characters and escapes of a string, digits of
/// a number, a comment. They are text without events and without errors.
class LongToken {
public:
    /// A string or number has ended: what follows is after it.
    void begin() noexcept {
        m_state = State::between;
        m_size = 0;
    }

    /// YAJL was given `text`, in which no string and no number ended.
    void follow(std::string_view text) noexcept;

    /// Whether the piece was held back. If not, what is held and then the piece are YAJL's to read.
    /// Throws std::bad_alloc.
    bool hold(std::string_view piece);

    /// What is held; valid until the next change.
    std::string_view held() const noexcept { return m_held; }
    /// YAJL was given what is held, and it is held no more.
    void release() noexcept;

private:
    /// What the last byte belongs to.
    enum class State {
        between,
        string,
        escape,
        hex1,
        hex2,
        hex3,
        hex4,
        number,
        digit,   ///< the first of a row
        digits,  ///< a row that no further digit can end
        slash,
        lineComment,
        blockComment,
        star,
        other,  ///< after what should have ended it, or at an error
    };

    static State after(State state, char c) noexcept;
    static State betweenTokens(char c) noexcept;
    static State inString(char c) noexcept;
    static State inEscape(State state, char c) noexcept;
    static State inNumber(State state, char c) noexcept;
    static State inComment(State state, char c) noexcept;
    static bool goesOn(State before, State after) noexcept;

    State m_state = State::between;
    std::size_t m_size = 0;  ///< bytes of the token that YAJL has seen
    std::string m_held;
};

}  // namespace ko::Orvid::yajl
