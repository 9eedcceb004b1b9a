// SPDX-License-Identifier: MIT
//
// A walk over the pattern that writes the translation as it goes. What is no letter or digit is
// written by number, so that nothing of RE2's larger language comes in; only `^` and `$` keep the
// meaning that they have there.

#include "query/RegexpSyntax.h"
#include "text/codePoints.h"

#include <cstddef>

namespace ko::Orvid {

namespace {

constexpr std::string_view k_digits = "0123456789";
/// What an escape may stand for; `n`, `r` and `t` besides.
constexpr std::string_view k_escaped = "()*+-.?[\\]^{|}";
constexpr std::string_view k_controls = "nrt";
/// What stands for itself only after a backslash.
constexpr std::string_view k_special = "()*+.?[\\]{|}";
constexpr std::string_view k_specialInClass = "-[\\]";
constexpr std::string_view k_quantifiers = "*+?{";
/// The categories of Unicode, each with its parts.
constexpr std::string_view k_categories[] = {"Llmotu", "Mcen",  "Ndlo", "Pcdefios",
                                             "Zlps",   "Sckmo", "Ccfno"};
/// RE2 does not count what is not assigned (Cn) in C. These are the characters without C and
/// without Cn.
constexpr std::string_view k_withoutC = "\\p{L}\\p{M}\\p{N}\\p{P}\\p{Z}\\p{S}";
constexpr std::string_view k_assigned =
    "\\p{L}\\p{M}\\p{N}\\p{P}\\p{Z}\\p{S}\\p{Cc}\\p{Cf}\\p{Co}\\p{Cs}";

bool isOneOf(std::string_view set, char c) { return set.find(c) != std::string_view::npos; }

bool isCategory(std::string_view name) {
    for (const std::string_view category : k_categories) {
        if (!name.empty() && name[0] == category[0]) {
            return name.size() == 1 || (name.size() == 2 && isOneOf(category.substr(1), name[1]));
        }
    }
    return false;
}

std::string bracketed(std::string_view opening, std::string_view items) {
    std::string text(opening);
    text += items;
    return text += ']';
}

void appendCharacter(std::string& text, char32_t c) {
    constexpr std::string_view hexadecimal = "0123456789abcdef";
    constexpr unsigned int bits = 4;
    constexpr unsigned int most = 20;
    text += "\\x{";
    for (unsigned int shift = most + bits; shift > 0;) {
        shift -= bits;
        text += hexadecimal[c >> shift & 0xFU];
    }
    text += '}';
}

/// A pattern that is consumed from the front.
class Rest {
public:
    explicit Rest(std::string_view text) : m_text(text) {}

    bool empty() const { return m_text.empty(); }
    bool startsWith(char c) const { return !empty() && m_text.front() == c; }
    char front() const { return m_text.front(); }
    char at(std::size_t position) const {
        return position < m_text.size() ? m_text[position] : '\0';
    }
    std::string_view take(std::size_t length) {
        const std::string_view taken = m_text.substr(0, length);
        m_text.remove_prefix(taken.size());
        return taken;
    }
    /// Up to and with the next `end`; empty when there is none.
    std::string_view takeThrough(char end) {
        const std::size_t position = m_text.find(end);
        return position == std::string_view::npos ? std::string_view() : take(position + 1);
    }

    /// A character that is none of the special ones, or an escape of one.
    std::optional<std::string> takeCharacter(std::string_view special) {
        std::string written;
        if (front() == '\\') {
            const char c = at(1);
            if (c == '\0' || !(isOneOf(k_escaped, c) || isOneOf(k_controls, c))) {
                return std::nullopt;
            }
            return std::string(take(2));
        }
        const std::optional<text::CodePoint> next = text::firstCodePoint(m_text);
        if (!next || isOneOf(special, front())) {
            return std::nullopt;
        }
        take(next->length);
        appendCharacter(written, next->value);
        return written;
    }

    bool startsWithCategory() const {
        return startsWith('\\') && (at(1) == 'p' || at(1) == 'P') && at(2) == '{';
    }
    /// With braces, backslash and all; empty when there is no such category.
    std::string_view takeCategory() {
        constexpr std::size_t before = 3;
        const std::string_view written = takeThrough('}');
        const bool isKnown = written.size() > before &&
                             isCategory(written.substr(before, written.size() - before - 1));
        return isKnown ? written : std::string_view();
    }

private:
    std::string_view m_text;
};

/// What belongs to the category and all characters without it, for those that RE2 knows otherwise.
std::string_view othersThan(std::string_view category) {
    const std::string_view name = category.substr(2);
    return name == "{C}" ? k_withoutC : name == "{Cn}" ? k_assigned : std::string_view();
}

bool isPositive(std::string_view category) { return category[1] == 'p'; }

/// What stands between brackets.
class CharacterClass {
public:
    /// Takes the class, the opening bracket of which comes next. Empty for a malformed one.
    static std::string take(Rest& rest) {
        CharacterClass result(rest);
        rest.take(1);
        result.m_isNegated = rest.startsWith('^');
        rest.take(result.m_isNegated ? 1 : 0);
        const bool isWhole = result.takeItems() && rest.startsWith(']');
        rest.take(isWhole ? 1 : 0);
        return isWhole ? result.text() : std::string();
    }

private:
    explicit CharacterClass(Rest& rest) : m_rest(rest) {}

    /// A hyphen may be the first item and the last.
    bool takeItems() {
        bool isFirst = true;
        while (!m_rest.empty() && (isFirst || m_rest.front() != ']')) {
            if (m_rest.front() == '-') {
                m_rest.take(1);
                m_items += "\\-";
                if (!isFirst) {
                    return true;
                }
            } else if (!takeItem()) {
                return false;
            }
            isFirst = false;
        }
        return true;
    }

    bool takeItem() {
        if (m_rest.startsWithCategory()) {
            return takeCategory();
        }
        if (!takeCharacter()) {
            return false;
        }
        if (!m_rest.startsWith('-') || m_rest.at(1) == ']') {
            return true;
        }
        m_items += m_rest.take(1);
        return !m_rest.empty() && takeCharacter();
    }

    bool takeCharacter() {
        const std::optional<std::string> character = m_rest.takeCharacter(k_specialInClass);
        m_items += character.value_or("");
        return character.has_value();
    }

    bool takeCategory() {
        const std::string_view category = m_rest.takeCategory();
        if (category.empty()) {
            return false;
        }
        const std::string_view others = othersThan(category);
        if (others.empty()) {
            m_items += category;
        } else if (isPositive(category)) {
            m_without = m_without.size() < others.size() && !m_without.empty() ? m_without : others;
        } else {
            m_items += others;
        }
        return true;
    }

    /// RE2 has no intersection, so what is not assigned gets through a negated class that names
    /// other items too.
    std::string text() const {
        if (m_without.empty()) {
            return bracketed(m_isNegated ? "[^" : "[", m_items);
        }
        if (m_isNegated) {
            return m_items.empty() ? bracketed("[", m_without)
                                   : bracketed("[^", m_items + "\\p{C}");
        }
        const std::string rest = bracketed("[^", m_without);
        return m_items.empty() ? rest : "(?:" + bracketed("[", m_items) + "|" + rest + ")";
    }

    Rest& m_rest;
    std::string m_items;
    std::string_view m_without;  ///< everything but these is in the class too
    bool m_isNegated = false;
};

class Translation {
public:
    explicit Translation(std::string_view pattern) : m_rest(pattern) {}

    std::optional<std::string> run() {
        while (!m_rest.empty()) {
            if (!takePart()) {
                return std::nullopt;
            }
        }
        return m_open == 0 ? std::optional(m_text) : std::nullopt;
    }

private:
    /// Returns whether the pattern is sound so far.
    bool takePart() {
        switch (m_rest.front()) {
            case '(':
                m_rest.take(1);
                m_text += "(?:";
                return ++m_open <= k_deepestGroup;
            case '|':
                m_text += m_rest.take(1);
                return true;
            case ')':
                return m_open-- > 0 && append(m_rest.take(1)) && takeQuantifier();
            default:
                return takeAtom() && takeQuantifier();
        }
    }

    bool takeAtom() {
        switch (m_rest.front()) {
            case '.':
                m_rest.take(1);
                return append("[^\\n\\r]");
            case '^':
            case '$':
                return append(m_rest.take(1));
            case '[':
                return append(CharacterClass::take(m_rest));
            default:
                return m_rest.startsWithCategory()
                           ? appendCategory(m_rest.takeCategory())
                           : append(m_rest.takeCharacter(k_special).value_or(""));
        }
    }

    bool append(std::string_view text) {
        m_text += text;
        return !text.empty();
    }

    bool appendCategory(std::string_view category) {
        const std::string_view others =
            category.empty() ? std::string_view() : othersThan(category);
        return others.empty() ? append(category)
                              : append(bracketed(isPositive(category) ? "[^" : "[", others));
    }

    /// RE2 would read a second one as a modifier of the first.
    bool takeQuantifier() {
        if (m_rest.empty() || !isOneOf(k_quantifiers, m_rest.front())) {
            return true;
        }
        const bool isTaken = m_rest.front() == '{' ? takeRange() : append(m_rest.take(1));
        return isTaken && (m_rest.empty() || !isOneOf(k_quantifiers, m_rest.front()));
    }

    /// `{2}`, `{2,}` or `{2,3}`.
    bool takeRange() {
        const std::string_view range = m_rest.takeThrough('}');
        const std::size_t comma = range.find_first_not_of(k_digits, 1);
        if (range.empty() || comma == 1) {
            return false;
        }
        const bool isExact = range[comma] == '}';
        const std::size_t end = isExact ? comma : range.find_first_not_of(k_digits, comma + 1);
        return (isExact || range[comma] == ',') && end == range.size() - 1 && append(range);
    }

    Rest m_rest;
    std::string m_text;
    unsigned int m_open = 0;
};

}  // namespace

std::optional<std::string> translateRegexp(std::string_view pattern) {
    return Translation(pattern).run();
}

}  // namespace ko::Orvid
