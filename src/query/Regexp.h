// SPDX-License-Identifier: MIT
//
// Regexp, a regular expression of RFC 9485, which any pattern from anywhere may be: matching takes
// linear time. The text is checked and translated by regexpSyntax.h; RE2 runs it, in Regexp.cpp
// alone.

#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

namespace re2 {
class RE2;
}

namespace ko::Orvid {

class Regexp {
public:
    /// A pattern that is none, or more than RE2 bears, matches nothing.
    explicit Regexp(std::string_view pattern);
    Regexp(Regexp&&) noexcept;
    Regexp& operator=(Regexp&&) noexcept;
    ~Regexp();

    bool isValid() const noexcept { return m_expression != nullptr; }
    /// How many instructions the pattern has become; 0 where it matches nothing. Repetitions and
    /// classes of characters make many of a few bytes. Where its automaton grows too large, each of
    /// them may be looked at for each byte of a text.
    std::size_t size() const noexcept;
    /// How many instructions were made of it: size(), or more where it was too large.
    std::size_t effort() const noexcept { return m_effort; }
    /// Whether the whole text matches.
    bool matches(std::string_view text) const;
    /// Whether a part of the text matches.
    bool isFoundIn(std::string_view text) const;

private:
    std::unique_ptr<const re2::RE2> m_expression;
    std::size_t m_effort = 0;
};

}  // namespace ko::Orvid
