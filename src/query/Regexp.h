// SPDX-License-Identifier: MIT
//
// Regexp, a regular expression of RFC 9485, which any pattern from anywhere may be: matching takes
// linear time. The text is checked and translated by regexpSyntax.h; RE2 runs it, in Regexp.cpp
// alone.

#pragma once

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
    /// Whether the whole text matches.
    bool matches(std::string_view text) const;
    /// Whether a part of the text matches.
    bool isFoundIn(std::string_view text) const;

private:
    std::unique_ptr<const re2::RE2> m_expression;
};

}  // namespace ko::Orvid
