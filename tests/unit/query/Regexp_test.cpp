// SPDX-License-Identifier: MIT
//
// Regular expressions in filters: which texts are some, and what they match.

#include <ko/Orvid/JsonPath.h>

#include <gtest/gtest.h>
#include <ko/Orvid.h>

#include <string>
#include <vector>

#include "support/Document.h"

namespace orvid_test {
namespace {

using ko::Orvid::Element;
using ko::Orvid::Exception;
using ko::Orvid::JsonPath;
using ko::Orvid::makeArray;
using ko::Orvid::QueryOptions;

bool holds(const char* query, const std::string& text, const std::string& pattern) {
    Document doc(R"([{"text":"","pattern":""}])");
    doc.root.get("[0].text").setString(text);
    doc.root.get("[0].pattern").setString(pattern);
    return JsonPath(query).first(doc.root) != nullptr;
}

bool matches(const std::string& text, const std::string& pattern) {
    return holds("$[?match(@.text, @.pattern)]", text, pattern);
}

bool isFound(const std::string& text, const std::string& pattern) {
    return holds("$[?search(@.text, @.pattern)]", text, pattern);
}

struct Pattern {
    const char* pattern;
    const char* matched;
    const char* other;
};

constexpr Pattern k_patterns[] = {
    {"", "", "a"},
    {"abc", "abc", "abcd"},
    {"a|bc|", "bc", "ab"},
    {"a(b|c)*d", "abcbd", "ad d"},
    {"()", "", "a"},
    {"a?b+c*", "bb", "a"},
    {"a{2}", "aa", "a"},
    {"a{2,}", "aaaa", "a"},
    {"a{1,2}", "aa", "aaa"},
    {"a{0}", "", "a"},
    {".", "\xF0\x9F\x98\x80", "\n"},
    {".", "\xE2\x80\xA8", "\r"},
    {"[.]", ".", "x"},
    {"[a-c]", "b", "d"},
    {"[^a-c]", "\n", "b"},
    {"[-a]", "-", "b"},
    {"[a-]", "-", "b"},
    {"[-]", "-", "b"},
    {"[a^]", "^", "b"},
    {"[$&&|]", "|", "a"},
    {"[\\]\\[\\-]", "[", "\\"},
    {"[\\n]", "\n", "n"},
    {"\\(\\)\\*\\+\\-\\.\\?\\[\\\\\\]\\^\\{\\|\\}", "()*+-.?[\\]^{|}", "x"},
    {"\\n\\r\\t", "\n\r\t", "nrt"},
    {"^a$", "a", "^a$"},
    {"\\p{Lu}", "\xC3\x84", "a"},
    {"\\P{L}", "1", "a"},
    {"[\\p{L}\\p{Nd}_]+", "a1_", "-"},
    {"[^\\p{L}]", "1", "a"},
    {"\\p{Cn}", "\xCD\xB8", "a"},
    {"\\P{Cn}", "a", "\xCD\xB8"},
    {"\\p{C}", "\xCD\xB8", "a"},
    {"\\p{C}", "\n", "a"},
    {"[x\\p{C}]", "\xCD\xB8", "a"},
    {"[x\\p{Cn}\\p{C}]", "x", "a"},
    {"[\\P{C}]", "a", "\n"},
    {"[^\\p{C}]", "a", "\xCD\xB8"},
    {"[^a\\p{C}]", "b", "\n"},
    {"\xC3\xA4-\xC3\xB6", "\xC3\xA4-\xC3\xB6", "\xC3\xA5"},
    {"[\xC3\xA4-\xC3\xB6]", "\xC3\xA5", "a"},
    {"~!@#%&=:;\"'<>,`/_ ", "~!@#%&=:;\"'<>,`/_ ", "x"},
};

TEST(Regexp, matches_one_text_of_each_pattern_and_not_another) {
    for (const Pattern& row : k_patterns) {
        EXPECT_TRUE(matches(row.matched, row.pattern)) << row.pattern;
        EXPECT_FALSE(matches(row.other, row.pattern)) << row.pattern;
    }
}

TEST(Regexp, is_found_anywhere_unless_it_is_tied_down) {
    EXPECT_TRUE(isFound("xaby", "ab"));
    EXPECT_TRUE(isFound("xay", ""));
    EXPECT_FALSE(isFound("xay", "^a"));
    EXPECT_TRUE(isFound("xa", "a$"));
    EXPECT_FALSE(isFound("a\nb", "a$"));
}

TEST(Regexp, refuses_what_the_standard_does_not_have) {
    for (const char* const pattern :
         {"(",       ")",        "(a",      "a)",         "[",          "]",           "[]",
          "[^]",     "{",        "}",       "a{",         "a{}",        "a{1",         "a{,2}",
          "a{1,2",   "a{1;2}",   "a{x}",    "a{2,1}",     "*",          "+a",          "?",
          "(*a)",    "|*",       "a**",     "a*?",        "a{1}{2}",    "a+{2}",       "\\",
          "\\a",     "\\d",      "\\w",     "\\b",        "\\A",        "\\1",         "\\x61",
          "\\u0061", "\\/",      "(?:a)",   "(?i)a",      "\\p",        "\\p{",        "\\p{}",
          "\\pL",    "\\p{X}",   "\\p{Lx}", "\\p{Greek}", "\\p{^L}",    "[a",          "[a-",
          "[b-a]",   "[a--b]",   "[--a]",   "[a-b-c]",    "[a-\\p{L}]", "[[:alpha:]]", "[[]",
          "[\\d]",   "[\\p{X}]", "[\\",     "a{1001}",    "\xFF",       "[\xFF]"}) {
        EXPECT_FALSE(isFound("a", pattern)) << pattern;
        EXPECT_FALSE(isFound(pattern, pattern)) << pattern;
        EXPECT_FALSE(matches("", pattern)) << pattern;
    }
}

TEST(Regexp, takes_linear_time_for_patterns_that_are_slow_elsewhere) {
    EXPECT_FALSE(matches(std::string(5000, 'a') + "b", "(a*)*(a|a)*(a?a?)*c"));
    EXPECT_TRUE(isFound(std::string(5000, 'a'), "(((a+)+)+)+$"));
}

/// How a search ends that may look at elements that often.
std::string endOf(const std::string& query, const Element& root, unsigned long long maxVisits) {
    QueryOptions options;
    options.maxVisits = maxVisits;
    try {
        return JsonPath(query, options).first(root) == nullptr ? "not found" : "found";
    } catch (const Exception& error) {
        return error.what();
    }
}

TEST(Regexp, is_reported_where_the_query_has_a_malformed_one) {
    const auto malformed = [](const char* query) { return JsonPath(query).malformedPatterns(); };
    using Patterns = std::vector<std::string>;
    EXPECT_EQ(malformed(R"($[?match(@, "a.*") || search(@, "")])"), Patterns());
    EXPECT_EQ(malformed(R"($[?match(@, "x(") || @ == "(" || $[?search(@.a, '\\d')]])"),
              (Patterns{"x(", R"(\d)"}));
    EXPECT_EQ(malformed(R"($[?match(@, "a{2000}")])"), Patterns{"a{2000}"});
    EXPECT_EQ(malformed("$[?match(@.t, @.p)]"), Patterns());
}

TEST(Regexp, counts_a_text_that_is_searched_by_the_size_of_the_pattern) {
    const Element texts = makeArray({std::string(3000, 'a') + "x"});
    EXPECT_EQ(endOf(R"($[?search(@, "[a-z]{900}x")])", texts, 50'000),
              "The query looks at elements more than 50000 times (maxVisits)");
    EXPECT_EQ(endOf(R"($[?search(@, "[a-z]{900}x")])", texts, 100'000), "found");
    EXPECT_EQ(endOf(R"($[?search(@, "[a-z]{9}x")])", texts, 5'000), "found");
}

TEST(Regexp, counts_what_patterns_of_the_document_become) {
    const Element patterns = makeArray({R"(\p{L}{50}a)", R"(\p{L}{50}b)"});
    EXPECT_EQ(endOf("$[?match(@, @)]", patterns, 1'000'000),
              "The query looks at elements more than 1000000 times (maxVisits)");
    EXPECT_EQ(endOf("$[?match(@, @)]", patterns, 100'000'000), "not found");
}

TEST(Regexp, compiles_no_more_of_the_query_than_a_bounded_size) {
    std::string query = "$[?";
    for (int number = 0; number < 4; ++number) {
        query += R"(match(@, "\\p{L}{150}x)" + std::to_string(number) + "\") || ";
    }
    query += R"(match(@, "x"))";
    EXPECT_EQ(endOf(query + "]", makeArray({"y"}), 1'000'000),
              "The query looks at elements more than 1000000 times (maxVisits)");
    EXPECT_EQ(endOf(query + "]", makeArray({"x"}), 1'000'000'000), "found");
}

TEST(Regexp, counts_patterns_that_are_too_large_to_be_compiled) {
    const Element patterns = makeArray({R"(\p{L}{1000})"});
    EXPECT_EQ(endOf("$[?match(@, @)]", patterns, 1'000'000),
              "The query looks at elements more than 1000000 times (maxVisits)");
    std::string query = "$[?";
    for (int number = 0; number < 5; ++number) {
        query += R"(match(@, "\\p{L}{1000}x)" + std::to_string(number) + "\") || ";
    }
    query += R"(match(@, "x"))";
    EXPECT_EQ(endOf(query + "]", makeArray({"x"}), 1'000'000),
              "The query looks at elements more than 1000000 times (maxVisits)");
    EXPECT_EQ(endOf(query + "]", makeArray({"x"}), 1'000'000'000), "found");
}

TEST(Regexp, bounds_what_is_nested) {
    const auto nested = [](std::size_t depth) {
        return std::string(depth, '(') + "a" + std::string(depth, ')');
    };
    EXPECT_TRUE(matches("a", nested(200)));
    EXPECT_FALSE(matches("a", nested(201)));
    EXPECT_FALSE(matches("a", nested(1000000)));
}

}  // namespace
}  // namespace orvid_test
