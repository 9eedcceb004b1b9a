// SPDX-License-Identifier: MIT
//
// Filters: existence, comparisons, logic, functions.

#include <ko/Orvid/JsonPath.h>

#include <gtest/gtest.h>

#include "Selection.h"

namespace orvid_test {
namespace {

constexpr Selection k_tests[] = {
    {"$[?@.a]", R"([{"a":null},{"b":1},[0]])", R"({"a":null})", "$[0]", "null exists"},
    {"$[?!@.a]", R"([{"a":1},{"b":1}])", R"({"b":1})", "$[1]", "negated"},
    {"$[?@.*]", "[[],[1],2]", "[1]", "$[1]", "has children"},
    {"$[?@..a]", R"([[{"a":1}],[{"b":1}]])", R"([{"a":1}])", "$[0]", "somewhere below"},
    {"$[?$.x]", R"({"x":1,"y":2})", "1 2", "$['x'] $['y']", "the same for all"},
    {"$[?$[?@ > 5]]", "[6,1]", "6 1", "$[0] $[1]", "a filter on the whole document"},
    {"$[?@[?@ > 1]]", "[[1],[1,2]]", "[1,2]", "$[1]", "a filter within a filter"},
    {"$[?@.a && @.b || @.c]", R"([{"a":1},{"a":1,"b":1},{"c":1}])", R"({"a":1,"b":1} {"c":1})",
     "$[1] $[2]", "and binds before or"},
    {"$[?@.a && (@.b || @.c)]", R"([{"a":1},{"a":1,"c":1},{"c":1}])", R"({"a":1,"c":1})", "$[1]",
     "parentheses"},
    {"$[?!(@.a || @.b)]", R"([{"a":1},{"c":1}])", R"({"c":1})", "$[1]", "negated parentheses"},
    {"$[?!(!(@.a))]", R"([{"a":1},{"c":1}])", R"({"a":1})", "$[0]", "negated twice"},
    {"$[? ! @.a , ?@.a ]", R"([{"a":1},{"c":1}])", R"({"c":1} {"a":1})", "$[1] $[0]",
     "two filters, and whitespace"},
    {"$[?@]", R"({"a":0,"b":false})", "0 false", "$['a'] $['b']", "every member exists"},
};

TEST(Filter, selects_where_its_condition_is_true) {
    for (const Selection& row : k_tests) {
        check(row);
    }
}

constexpr Selection k_comparisons[] = {
    {"$[?@ == 1]", "[1,1.0,10e-1,\"1\",true]", "1 1.0 10e-1", "$[0] $[1] $[2]", "by value"},
    {"$[?@ == -0]", "[0,-0,0.0,0e5,-0.0]", "0 -0 0.0 0e5 -0.0", "$[0] $[1] $[2] $[3] $[4]",
     "all zeros are one"},
    {"$[?@ == 100000000000000000001]", "[100000000000000000001,100000000000000000002]",
     "100000000000000000001", "$[0]", "more digits than a double has"},
    {"$[?@ < 0.1]", "[0.09999999999999999999999,0.1,0.10,-1e400]",
     "0.09999999999999999999999 -1e400", "$[0] $[3]", "by every digit, and beyond a double"},
    {"$[?@ > 1e399]", "[1e400,1e399,9e398,0.001e403]", "1e400 0.001e403", "$[0] $[3]",
     "large numbers"},
    {"$[?@ >= -1.5]", "[-1.49,-1.5,-1.51]", "-1.49 -1.5", "$[0] $[1]", "negative numbers"},
    {"$[?@ == 1E2]", "[100]", "100", "$[0]", "a capital exponent"},
    {"$[?@ == 'a']", R"(["a","b",["a"]])", R"("a")", "$[0]", "strings"},
    {"$[?@ < 'b']", R"(["a","b","ab","B",1])", R"("a" "ab" "B")", "$[0] $[2] $[3]", "their order"},
    {"$[?@ > '\xEF\xBF\xBD']", "[\"\xF0\x9F\x98\x80\",\"z\"]", "\"\xF0\x9F\x98\x80\"", "$[0]",
     "by code points, not by UTF-16"},
    {"$[?@ == null]", "[null,0,false]", "null", "$[0]", "null"},
    {"$[?@ == true]", "[true,\"true\",1]", "true", "$[0]", "true"},
    {"$[?@ <= false]", "[true,false]", "false", "$[1]", "equal, though there is no order"},
    {"$[?@ < true]", "[true,false]", "", "", "no order among booleans"},
    {"$[?@ < 1]", "[null,\"0\",[0]]", "", "", "no order between types"},
    {"$[?@.a == @.b]", R"([{"a":[1,{"x":1,"y":2}],"b":[1.0,{"y":2,"x":1}]},{"a":[1],"b":[2]}])",
     R"({"a":[1,{"x":1,"y":2}],"b":[1.0,{"y":2,"x":1}]})", "$[0]",
     "containers, in any order of members"},
    {"$[?@.a == @.b]", R"([{"a":1},{"c":1}])", R"({"c":1})", "$[1]", "nothing equals nothing"},
    {"$[?@.a != @.b]", R"([{"a":1},{"c":1}])", R"({"a":1})", "$[0]", "and nothing else"},
    {"$[?@.a <= @.b]", R"([{"a":1},{"c":1}])", R"({"c":1})", "$[1]", "also with an order"},
    {"$[?@.a == null]", R"([{"a":null},{}])", R"({"a":null})", "$[0]", "null is something"},
    {"$[?1 == 1]", "[5]", "5", "$[0]", "literals alone"},
    {"$[?'b' > @]", R"(["a","c"])", R"("a")", "$[0]", "a literal first"},
    {"$.a[?@ == $.b]", R"({"a":[1,2],"b":2})", "2", "$['a'][1]", "with another place"},
    {"$[?@[-1] == 2]", "[[1,2],[2,1]]", "[1,2]", "$[0]", "an index from the end"},
};

TEST(Filter, compares_by_value) {
    for (const Selection& row : k_comparisons) {
        check(row);
    }
}

constexpr Selection k_functions[] = {
    {"$[?length(@) == 2]", "[\"\xC3\xA4\xF0\x9F\x98\x80\",\"abc\",[1,2],{\"a\":1,\"b\":2},2]",
     "\"\xC3\xA4\xF0\x9F\x98\x80\" [1,2] {\"a\":1,\"b\":2}", "$[0] $[2] $[3]",
     "code points, items, members"},
    {"$[?length(@.a) == length(@.b)]", R"([{"a":1},{"a":"x","b":[0]}])",
     R"({"a":1} {"a":"x","b":[0]})", "$[0] $[1]", "nothing has no length"},
    {"$[?length('abc') > 2.5]", "[1]", "1", "$[0]", "a literal, and a fraction"},
    {"$[?count(@.*) >= 2]", R"([[1],[1,2],{"a":1,"b":2},"ab"])", R"([1,2] {"a":1,"b":2})",
     "$[1] $[2]", "elements"},
    {"$[?count(@['a','a']) == 2]", R"([{"a":1}])", R"({"a":1})", "$[0]", "also twice the same"},
    {"$[?count(@.a) == 0]", "[1]", "1", "$[0]", "of a query for one element"},
    {"$[?count($[*]) == 3]", "[1,2,3]", "1 2 3", "$[0] $[1] $[2]", "of the whole document"},
    {"$[?value(@..a) == 1]", R"([{"a":1},{"a":1,"b":{"a":1}},{}])", R"({"a":1})", "$[0]",
     "one alone has a value"},
    {"$[?value(@.*) == value(@.x)]", R"([[1],[],{"x":3}])", R"([] {"x":3})", "$[1] $[2]",
     "nothing equals nothing"},
    {"$[?length(value(@.*)) == 2]", R"([["ab"],["a"]])", R"(["ab"])", "$[0]", "calls within calls"},
    {"$[?match(@, 'a.c')]", R"(["abc","abcd","a\nc",5])", R"("abc")", "$[0]", "the whole string"},
    {"$[?search(@, 'b+')]", R"(["abbc","ac"])", R"("abbc")", "$[0]", "a part of it"},
    {"$[?!search(@, 'b')]", R"(["b","c",5])", R"("c" 5)", "$[1] $[2]", "negated"},
    {"$[?match(@.t, @.p)]", R"([{"t":"x1","p":"x[0-9]"},{"t":"x","p":"["},{"t":"x","p":1}])",
     R"({"t":"x1","p":"x[0-9]"})", "$[0]", "patterns from the document, malformed ones too"},
    {"$[?match(@, '[')]", R"(["["])", "", "", "a malformed pattern matches nothing"},
    {"$[?match('abc', 'a.*') && @ > 1]", "[1,2]", "2", "$[1]", "a literal"},
};

TEST(Filter, calls_functions) {
    for (const Selection& row : k_functions) {
        check(row);
    }
}

TEST(Filter, keeps_few_of_many_patterns) {
    std::string text = "[";
    std::string last;
    for (int i = 0; i < 200; ++i) {
        last = R"({"t":"x)" + std::to_string(i) + R"(","p":"x)" + std::to_string(i) + R"("})";
        text += last + ",";
    }
    const Document doc(text + last + "]");
    EXPECT_EQ(ko::Orvid::JsonPath("$[?match(@.t, @.p)]").select(doc.root).size(), 201u);
}

TEST(Filter, looks_at_elements_that_were_made_of_binary_numbers) {
    const ko::Orvid::Element list = ko::Orvid::makeArray({1, 2.5, -3LL, 18446744073709551615ULL});
    const auto count = [&list](const char* query) {
        return ko::Orvid::JsonPath(query).select(list).size();
    };
    EXPECT_EQ(count("$[?@ == 2.5]"), 1u);
    EXPECT_EQ(count("$[?@ == 18446744073709551615]"), 1u);
    EXPECT_EQ(count("$[?@ < 1]"), 1u);
}

}  // namespace
}  // namespace orvid_test
