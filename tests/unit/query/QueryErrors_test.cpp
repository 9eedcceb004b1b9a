// SPDX-License-Identifier: MIT
//
// Malformed queries: where the error is, drawn under the query, and what was expected.

#include <ko/Orvid/JsonPath.h>

#include <gtest/gtest.h>
#include <ko/Orvid/Exception.h>

#include <string>

#include "support/Document.h"

namespace orvid_test {
namespace {

using ko::Orvid::JsonPath;
using ko::Orvid::ParseException;

struct BadQuery {
    const char* query;
    const char* carets;
    const char* message;
};

void check(const BadQuery& row) {
    SCOPED_TRACE(row.query);
    const auto error = thrownBy<ParseException>([&row] { JsonPath query(row.query); });
    const auto first = static_cast<std::size_t>(error.firstColumn());
    const auto last = static_cast<std::size_t>(error.lastColumn());
    EXPECT_EQ(std::string(first, ' ') + std::string(last - first + 1, '^'), row.carets);
    EXPECT_EQ(error.message(), row.message);
    EXPECT_EQ(error.firstLine(), 1);
    EXPECT_EQ(error.lastLine(), 1);
}

constexpr BadQuery k_syntax[] = {
    // clang-format off
    {"",
     "^", R"-(Expected "$" at the beginning, found the end)-"},
    {" $",
     "^", R"-(Expected "$" at the beginning, found " ")-"},
    {"a",
     "^", R"-(Expected "$" at the beginning, found "a")-"},
    {"$ ",
     " ^", R"-(Expected ".", "..", "[" or the end, found " ")-"},
    {"$a",
     " ^", R"-(Expected ".", "..", "[" or the end, found "a")-"},
    {"$.",
     "  ^", R"-(Expected a name or "*" after ".", found the end)-"},
    {"$. a",
     "  ^", R"-(Expected a name or "*" after ".", found " ")-"},
    {"$.1",
     "  ^", R"-(Expected a name or "*" after ".", found "1")-"},
    {"$..",
     "   ^", R"-(Expected a name, "*" or "[" after "..", found the end)-"},
    {"$[",
     "  ^", R"-(Expected a selector: a name in quotes, an index, a slice, "*" or "?" and a filter, found the end)-"},
    {"$[a]",
     "  ^", R"-(Expected a selector: a name in quotes, an index, a slice, "*" or "?" and a filter, found "a")-"},
    {"$[\xC3\xA4]",
     "  ^^", "Expected a selector: a name in quotes, an index, a slice, \"*\" or \"?\" and a filter, found \"\xC3\xA4\""},
    {"$[0",
     "   ^", R"-(Expected "," or "]" after a selector, found the end)-"},
    {"$[0 1]",
     "    ^", R"-(Expected "," or "]" after a selector, found "1")-"},
    {"$[0,]",
     "    ^", R"-(Expected a selector: a name in quotes, an index, a slice, "*" or "?" and a filter, found "]")-"},
    {"$[01]",
     "  ^^", "Expected an integer without leading zeros, and 0 without a sign"},
    {"$[-0]",
     "  ^^", "Expected an integer without leading zeros, and 0 without a sign"},
    {"$[-]",
     "   ^", R"-(Expected a digit, found "]")-"},
    {"$[1:-:2]",
     "     ^", R"-(Expected a digit, found ":")-"},
    {"$[9007199254740992]",
     "  ^^^^^^^^^^^^^^^^", "Expected an integer from -9007199254740991 to 9007199254740991"},
    {"$[1:-10000000000000000000]",
     "    ^^^^^^^^^^^^^^^^^^^^^", "Expected an integer from -9007199254740991 to 9007199254740991"},
    {"$['a",
     "  ^^", "Expected a closing ', found the end"},
    {"$[\"a\\",
     "     ^", "Expected an escape, found the end"},
    {R"($['\"'])",
     "    ^", R"-(Expected one of b f n r t u / \ ' after the backslash, found """)-"},
    {R"($['\u00g0'])",
     "       ^", R"-(Expected four hexadecimal digits after \u, found "g")-"},
    {R"($['\uDC00'])",
     "   ^^^^^^", "Expected the first half of a surrogate pair before this second one"},
    {R"($['\uD800x'])",
     "   ^^^^^^", "Expected the second half of a surrogate pair after this first one"},
    {R"($['\uD800\u0041'])",
     "   ^^^^^^^^^^^^", "Expected the second half of a surrogate pair after this first one"},
    {"$['\n']",
     "   ^", "Expected a character of a string (control characters are written as escapes), found a control character"},
    {"$.\xFF",
     "  ^", "Expected UTF-8, found a byte that is none"},
    // clang-format on
};

TEST(QueryErrors, mark_the_characters_of_an_error_of_syntax) {
    for (const BadQuery& row : k_syntax) {
        check(row);
    }
}

constexpr BadQuery k_filters[] = {
    // clang-format off
    {"$[?]",
     "   ^", R"-(Expected a condition: a query that begins with "@" or "$", a literal, a function, "!" or "(", found "]")-"},
    {"$[?a]",
     "   ^", R"-(Expected a condition: a query that begins with "@" or "$", a literal, a function, "!" or "(", found "a")-"},
    {"$[?(@.a]",
     "       ^", R"-(Expected "&&", "||" or ")", found "]")-"},
    {"$[?@.a & @.b]",
     "       ^", R"-(Expected "," or "]" after a selector, found "&")-"},
    {"$[?@.a = 1]",
     "       ^", R"-(Expected "==" for a comparison, found "=")-"},
    {"$[?@.a == ]",
     "          ^", R"-(Expected a value: a query that begins with "@" or "$", a literal or a function, found "]")-"},
    {"$[?@.a == True]",
     "          ^^^^", R"-(Expected a value: a query that begins with "@" or "$", a literal or a function, found "True")-"},
    {"$[?@.a == 01]",
     "          ^^", "Expected a number without leading zeros"},
    {"$[?@.a == 1.]",
     "            ^", R"-(Expected a digit after the decimal point, found "]")-"},
    {"$[?@.a == 1e]",
     "            ^", R"-(Expected a digit of the exponent, found "]")-"},
    {"$[?!@.a == 1]",
     "        ^^", "Expected parentheses around a comparison that is negated"},
    {"$[?true]",
     "       ^", R"-(Expected a comparison, for a literal is no condition by itself, found "]")-"},
    {"$[?@.* == 1]",
     "   ^^^", "Expected a query for one element, with names and indexes only, in a comparison"},
    {"$[?1 == @..a]",
     "        ^^^^", "Expected a query for one element, with names and indexes only, in a comparison"},
    {"$[?@[ 'a' ] == 1]",
     "   ^^^^^^^^", "Expected no whitespace within the brackets of a query in a comparison"},
    {"$[?match(@, 'a') == true]",
     "   ^^^^^^^^^^^^^", "Expected a value in a comparison, but match() is a condition"},
    {"$[?length(@)]",
     "   ^^^^^^^^^", "Expected a comparison, for length() gives a value and is no condition by itself"},
    {"$[?size(@) > 1]",
     "   ^^^^^", "Expected one of the functions length(), count(), match(), search() and value()"},
    {"$[?count (@) > 1]",
     "   ^^^^^", R"-(Expected a condition: a query that begins with "@" or "$", a literal, a function, "!" or "(", found "count")-"},
    {"$[?count(1) > 1]",
     "         ^", "Expected an argument of count(): a query"},
    {"$[?count() > 1]",
     "         ^", R"-(Expected an argument of count(): a query, found ")")-"},
    {"$[?length(@.*) > 1]",
     "          ^^^", "Expected an argument of length(): a value, or a query for one element, with names and indexes only"},
    {"$[?length(match(@, 'a')) > 1]",
     "          ^^^^^^^^^^^^^", "Expected an argument of length(): a value, but match() is a condition"},
    {"$[?length((@)) > 1]",
     "          ^", R"-(Expected an argument of length(): a value, found "(")-"},
    {"$[?length(@, @) > 1]",
     "           ^", R"-(Expected ")" after the arguments of length(), found ",")-"},
    {"$[?match(@)]",
     "          ^", R"-(Expected "," and another argument of match(), found ")")-"},
    // clang-format on
};

TEST(QueryErrors, mark_the_part_of_a_filter_that_does_not_fit) {
    for (const BadQuery& row : k_filters) {
        check(row);
    }
}

TEST(QueryErrors, end_in_the_middle_of_any_query) {
    const std::string text = R"($['\u0061\uD83D\uDE00'][?!(@.a > 1.5e3) && match(@['b'], "x") ])";
    const JsonPath whole(text);
    for (std::size_t length = 0; length < text.size(); ++length) {
        try {
            const JsonPath query(text.substr(0, length));
        } catch (const ParseException& error) {
            EXPECT_LE(error.firstColumn(), static_cast<int>(length));
            EXPECT_LE(error.firstColumn(), error.lastColumn());
            EXPECT_NE(error.message().find("xpected"), std::string::npos);
        }
    }
}

}  // namespace
}  // namespace orvid_test
