// SPDX-License-Identifier: MIT
//
// The parser, a state machine over characters, against the grammar of paths, written down here as a
// recogniser that works from the other end: it takes escapes away first and then reads whole steps.
// Every text of up to five characters over those that matter is tried.

#include <ko/Orvid/PathParser.h>

#include <gtest/gtest.h>

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "unit/path/PathLog.h"

namespace orvid_test {
namespace {

constexpr char k_alphabet[] = {'a', '1', '.', '[', ']', '*', '\\'};

/// One character of the text with its backslash taken away.
struct Unit {
    char c;
    bool isLiteral;  ///< stood after a backslash
};

std::vector<Unit> unescaped(const std::string& text) {
    std::vector<Unit> units;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '\\') {
            units.push_back({text[i], false});
        } else if (++i < text.size()) {
            units.push_back({text[i], true});
        } else {
            units.push_back({'\xFF', true});
        }
    }
    return units;
}

/// path  = { [ "." ] key | "[" index "]" }
/// key   = one or more characters, as many as there are; ".", "[" and "]" only as literals
/// index = one or more digits | "*", each of them literal or not
class Recogniser {
public:
    explicit Recogniser(const std::string& text) : m_units(unescaped(text)) {}

    /// The steps in the words of PathLog, or nothing when the text is no path.
    std::optional<Lines> steps() {
        Lines lines;
        while (m_next < m_units.size()) {
            const std::string step = take('[') ? index() : key();
            if (step.empty()) {
                return std::nullopt;
            }
            lines.push_back(step);
        }
        return lines;
    }

private:
    bool take(char separator) {
        const bool isThere =
            m_next < m_units.size() && !m_units[m_next].isLiteral && m_units[m_next].c == separator;
        m_next += isThere ? 1U : 0U;
        return isThere;
    }

    template<class Accepts>
    std::string longest(const Accepts& accepts) {
        std::string text;
        while (m_next < m_units.size() && accepts(m_units[m_next])) {
            text += m_units[m_next++].c;
        }
        return text;
    }

    std::string key() {
        take('.');
        const std::string text = longest([](const Unit& unit) {
            return unit.isLiteral || std::string(".[]").find(unit.c) == std::string::npos;
        });
        return text.empty() ? text : "key " + text;
    }

    std::string index() {
        const std::string digits = longest([](const Unit& unit) { return unit.c == '1'; });
        const bool isStar = digits.empty() && m_next < m_units.size() && m_units[m_next].c == '*';
        m_next += isStar ? 1U : 0U;
        if ((!isStar && digits.empty()) || !take(']')) {
            return std::string();
        }
        return "index " + (isStar ? "4294967295" : digits);
    }

    std::vector<Unit> m_units;
    std::size_t m_next = 0;
};

/// All texts of that length over the alphabet.
std::vector<std::string> textsOf(std::size_t length) {
    std::vector<std::string> texts{std::string()};
    for (std::size_t i = 0; i < length; ++i) {
        std::vector<std::string> longer;
        for (const std::string& text : texts) {
            for (const char c : k_alphabet) {
                longer.push_back(text + c);
            }
        }
        texts.swap(longer);
    }
    return texts;
}

TEST(PathParserGrammar, accepts_exactly_the_paths_of_the_grammar_with_the_same_steps) {
    std::size_t accepted = 0;
    for (std::size_t length = 0; length <= 5; ++length) {
        for (const std::string& text : textsOf(length)) {
            const std::optional<Lines> expected = Recogniser(text).steps();
            const PathLog log = logOf(text);
            ASSERT_EQ(!log.hasErrors(), expected.has_value()) << text;
            if (expected) {
                ASSERT_EQ(log.lines(), *expected) << text;
                ++accepted;
            }
        }
    }
    // Neither side has become one that takes all or nothing.
    EXPECT_GT(accepted, 1000U);
    EXPECT_LT(accepted, 19000U);
}

TEST(PathParserGrammar, reports_nothing_after_the_error_that_a_listener_refuses) {
    for (const std::string& text : textsOf(4)) {
        const Lines all = logOf(text).lines();
        for (std::size_t refused = 0; refused < all.size(); ++refused) {
            std::vector<bool> answers(refused, true);
            answers.push_back(false);
            const std::size_t expected = all[refused].find("Unreadable index") == std::string::npos
                                             ? refused + 1
                                             : refused + 2;
            ASSERT_EQ(logOf(text, answers).lines().size(), expected) << text << " " << refused;
        }
    }
}

}  // namespace
}  // namespace orvid_test
