// SPDX-License-Identifier: MIT
//
// Segments and selectors, and what else a query can be asked.

#include <ko/Orvid/JsonPath.h>

#include <gtest/gtest.h>
#include <ko/Orvid.h>

#include <sstream>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "Selection.h"
#include "support/SmallStack.h"

namespace orvid_test {
namespace {

using ko::Orvid::Element;
using ko::Orvid::Exception;
using ko::Orvid::JsonPath;
using ko::Orvid::JsonPointer;
using ko::Orvid::ParseException;
using ko::Orvid::Path;
using ko::Orvid::QueryOptions;

constexpr Selection k_names[] = {
    {"$", "[1]", "[1]", "$", "the root itself"},
    {"$.a", R"({"a":1})", "1", "$['a']", "a name"},
    {"$.a", R"([{"a":1}])", "", "", "an array has no names"},
    {"$.a.b", R"({"a":null})", "", "", "null has no members"},
    {"$['a']", R"({"a":1})", "1", "$['a']", "single quotes"},
    {R"($["a"])", R"({"a":1})", "1", "$['a']", "double quotes"},
    {"$['']", R"({"":1})", "1", "$['']", "the empty name"},
    {R"($['\''])", R"({"'":1})", "1", R"($['\''])", "an escaped quote"},
    {R"($["'"])", R"({"'":1})", "1", R"($['\''])", "the other quote needs no escape"},
    {R"($['\u0061\u00e4'])", "{\"a\xC3\xA4\":1}", "1", "$['a\xC3\xA4']", "escapes by number"},
    {R"($['\uD83D\uDE00'])", "{\"\xF0\x9F\x98\x80\":1}", "1", "$['\xF0\x9F\x98\x80']",
     "a surrogate pair"},
    {R"($['\u007F\u0800\uFFFD'])", "{\"\x7F\xE0\xA0\x80\xEF\xBF\xBD\":1}", "1",
     "$['\x7F\xE0\xA0\x80\xEF\xBF\xBD']", "UTF-8 of one and three bytes"},
    {R"($['\b\f\n\r\t\/\\'])", R"({"\b\f\n\r\t\/\\":1})", "1", R"($['\b\f\n\r\t/\\'])",
     "short escapes"},
    {R"($['\u0000\u001f'])", R"({"\u0000\u001f":1})", "1", R"($['\u0000\u001f'])",
     "other control characters"},
    {"$.\xE2\x82\xAC_1", "{\"\xE2\x82\xAC_1\":1}", "1", "$['\xE2\x82\xAC_1']",
     "a name of other scripts"},
    {"$ .a\n[ 'b' ]", R"({"a":{"b":1}})", "1", "$['a']['b']", "whitespace between segments"},
};

TEST(JsonPath, selects_members_by_name) {
    for (const Selection& row : k_names) {
        check(row);
    }
}

constexpr Selection k_positions[] = {
    {"$[0]", "[5,6]", "5", "$[0]", "an index"},
    {"$[-1]", "[5,6]", "6", "$[1]", "from the end"},
    {"$[2]", "[5,6]", "", "", "after the end"},
    {"$[-3]", "[5,6]", "", "", "before the beginning"},
    {"$[0]", R"({"0":1})", "", "", "an object has no positions"},
    {"$[9007199254740991]", "[5]", "", "", "the largest index"},
    {"$[1:3]", "[0,1,2,3]", "1 2", "$[1] $[2]", "a slice"},
    {"$[:2]", "[0,1,2,3]", "0 1", "$[0] $[1]", "without a start"},
    {"$[2:]", "[0,1,2,3]", "2 3", "$[2] $[3]", "without an end"},
    {"$[::2]", "[0,1,2,3]", "0 2", "$[0] $[2]", "with a step"},
    {"$[-2:]", "[0,1,2,3]", "2 3", "$[2] $[3]", "a start from the end"},
    {"$[:-2]", "[0,1,2,3]", "0 1", "$[0] $[1]", "an end from the end"},
    {"$[::-1]", "[0,1,2,3]", "3 2 1 0", "$[3] $[2] $[1] $[0]", "backward"},
    {"$[::-2]", "[0,1,2,3]", "3 1", "$[3] $[1]", "backward in steps"},
    {"$[3:1:-1]", "[0,1,2,3]", "3 2", "$[3] $[2]", "backward between bounds"},
    {"$[:0:-1]", "[0,1,2]", "2 1", "$[2] $[1]", "backward to an end"},
    {"$[7:-9:-3]", "[0,1,2,3]", "3 0", "$[3] $[0]", "backward from beyond to beyond"},
    {"$[1:3:0]", "[0,1,2,3]", "", "", "a step of zero selects nothing"},
    {"$[3:1]", "[0,1,2,3]", "", "", "an end before the start"},
    {"$[::9007199254740991]", "[0,1]", "0", "$[0]", "the largest step"},
    {"$[::-9007199254740991]", "[0,1]", "1", "$[1]", "the smallest step"},
    {"$[:]", "[]", "", "", "nothing to slice"},
    {"$[::-1]", "[]", "", "", "nothing to slice backward"},
    {"$[:]", R"({"a":1})", "", "", "an object has no slices"},
    {"$[ 0 : 2 : 1 ]", "[5,6]", "5 6", "$[0] $[1]", "whitespace within"},
};

TEST(JsonPath, selects_items_by_position) {
    for (const Selection& row : k_positions) {
        check(row);
    }
}

constexpr Selection k_several[] = {
    {"$.*", R"({"b":1,"a":[2]})", "1 [2]", "$['b'] $['a']", "members in their order"},
    {"$[*]", "[1,[2]]", "1 [2]", "$[0] $[1]", "items"},
    {"$.*", "5", "", "", "a number has no children"},
    {"$[0,0,'a',*]", "[1,2]", "1 1 1 2", "$[0] $[0] $[0] $[1]",
     "what is selected twice is there twice"},
    {"$['a','b'].c", R"({"a":{"c":1},"b":{"c":2}})", "1 2", "$['a']['c'] $['b']['c']",
     "segments go on from each"},
    {"$..a", R"({"a":{"a":1,"b":[{"a":2}]}})", R"({"a":1,"b":[{"a":2}]} 1 2)",
     "$['a'] $['a']['a'] $['a']['b'][0]['a']", "parents first"},
    {"$..*", "[[1],2]", "[1] 2 1", "$[0] $[1] $[0][0]", "all below, the children first"},
    {"$..[0]", "[[1,2],[3]]", "[1,2] 1 3", "$[0] $[0][0] $[1][0]", "positions at any depth"},
    {"$..['a','b']", R"([{"b":1,"a":2}])", "2 1", "$[0]['a'] $[0]['b']",
     "in the order of the selectors"},
    {"$..*..a", R"({"x":{"y":{"a":1}}})", "1 1", "$['x']['y']['a'] $['x']['y']['a']",
     "found from x and from y"},
    {"$..a", "5", "", "", "nothing below a number"},
};

TEST(JsonPath, selects_several_at_once) {
    for (const Selection& row : k_several) {
        check(row);
    }
}

TEST(JsonPath, root_is_what_is_given) {
    const Document doc(R"({"a":{"b":[1]}})");
    const Element& part = doc.root.get("a");
    EXPECT_EQ(JsonPath("$.b[?@ == $.b[0]]").select(part), Nodes{&part.get("b[0]")});
    EXPECT_EQ(JsonPath::of(part.get("b[0]")), "$['a']['b'][0]");
    EXPECT_EQ(JsonPath::of(part.get("b[0]"), &part), "$['b'][0]");
}

TEST(JsonPath, names_the_true_place_in_a_copied_array) {
    const Document doc("[[1,2],[3,[4,5]]]");
    const Element copy(doc.root);
    EXPECT_EQ(JsonPath::of(*JsonPath("$[1][1][1]").first(copy)), "$[1][1][1]");
}

TEST(JsonPath, keeps_its_text) {
    const JsonPath query("$ .a");
    std::ostringstream out;
    out << query;
    EXPECT_EQ(out.str(), "$ .a");
    EXPECT_EQ(query.str(), "$ .a");
}

TEST(JsonPath, is_still_there_after_a_move) {
    JsonPath query("$.a");
    const JsonPath moved = std::move(query);
    EXPECT_EQ(query.str(), "$.a");  // NOLINT(bugprone-use-after-move): this is the promise
    EXPECT_EQ(query.select(ko::Orvid::parse(R"({"a":1})")).size(), 1U);
    EXPECT_EQ(moved.str(), "$.a");
    static_assert(std::is_nothrow_move_constructible_v<JsonPath>);
}

TEST(JsonPath, is_singular_with_one_name_or_index_in_each_segment) {
    for (const char* const text : {"$", "$.a[0]['b'][-1]", "$ [ 'a' ]"}) {
        EXPECT_TRUE(JsonPath(text).isSingular()) << text;
    }
    for (const char* const text : {"$.*", "$..a", "$['a','b']", "$[0:1]", "$[?@]"}) {
        EXPECT_FALSE(JsonPath(text).isSingular()) << text;
    }
}

TEST(JsonPath, is_made_of_a_path) {
    EXPECT_EQ(JsonPath::fromPath("a\\.b[3].c'd").str(), R"($['a.b'][3]['c\'d'])");
    EXPECT_EQ(JsonPath::fromPath("").str(), "$");
    try {
        JsonPath::fromPath("a[*]");
        ADD_FAILURE() << "nothing was thrown";
    } catch (const Exception& error) {
        EXPECT_STREQ(error.what(),
                     "A path with \"[*]\" names no element, so no query can stand for it");
    }
    EXPECT_THROW(JsonPath::fromPath("a["), ParseException);
}

TEST(JsonPath, is_made_of_a_pointer) {
    EXPECT_EQ(JsonPath::fromPointer(JsonPointer("/a/0/01/")).str(), "$['a'][0]['01']['']");
    EXPECT_THROW(JsonPath::fromPointer(JsonPointer("/a/-")), Exception);
    const Document doc(R"({"0":["x"],"-":{"0":1}})");
    EXPECT_EQ(JsonPath::fromPointer(JsonPointer("/0/0/0"), doc.root).str(), "$['0'][0]['0']");
    EXPECT_EQ(JsonPath::fromPointer(JsonPointer("/-/0"), doc.root).str(), "$['-']['0']");
    EXPECT_EQ(JsonPath::fromPointer(JsonPointer("/x/0"), doc.root).str(), "$['x'][0]");
    EXPECT_THROW(JsonPath::fromPointer(JsonPointer("/0/-"), doc.root), Exception);
}

TEST(JsonPath, becomes_a_path_and_a_pointer) {
    const JsonPath query("$['a.b'][3]['c/d']");
    EXPECT_EQ(query.toPath().str(), "a\\.b[3].c/d");
    EXPECT_EQ(query.toPointer().str(), "/a.b/3/c~1d");
    EXPECT_EQ(JsonPath("$").toPath().str(), "");
    EXPECT_EQ(JsonPath("$['']").toPointer().str(), "/");
    EXPECT_THROW(JsonPath("$['']").toPath(), Exception);
    for (const char* const text : {"$[-1]", "$[4294967295]", "$.*"}) {
        EXPECT_THROW(JsonPath(text).toPath(), Exception) << text;
        EXPECT_THROW(JsonPath(text).toPointer(), Exception) << text;
    }
}

TEST(JsonPath, refuses_more_results_than_wanted) {
    const Document doc("[[1,2,3],[4]]");
    QueryOptions options;
    options.maxResults = 3;
    EXPECT_EQ(JsonPath("$[0][*]", options).select(doc.root).size(), 3u);
    const auto error = thrownBy<Exception>([&] { JsonPath("$[*][*]", options).select(doc.root); });
    EXPECT_STREQ(error.what(), "The query selects more than 3 elements (maxResults)");
    EXPECT_THROW(JsonPath("$..*[*]", options).select(doc.root), Exception)
        << "more on the way than there are in the end";
    EXPECT_THROW(JsonPath("$[?count($..*) > 0]", options).select(doc.root), Exception);
    EXPECT_EQ(JsonPath("$[*][*]", options).first(doc.root), &doc.root.get("[0][0]"));
}

TEST(JsonPath, refuses_more_looks_than_wanted) {
    const Document doc("[1,2,3,4,5,6,7,8,9,10]");
    QueryOptions options;
    options.maxVisits = 100;
    EXPECT_EQ(JsonPath("$[?@ > 5]", options).select(doc.root).size(), 5u);
    const auto error = thrownBy<Exception>(
        [&] { JsonPath("$[*,*,*,*,*,*,*,*,*,*,*]", options).select(doc.root); });
    EXPECT_STREQ(error.what(), "The query looks at elements more than 100 times (maxVisits)");
    EXPECT_THROW(
        JsonPath("$[?count($..*) > 0, ?count($..*) > 0, ?count($..*) > 0, ?count($..*) > 0]",
                 options)
            .select(doc.root),
        Exception);
}

TEST(JsonPath, counts_the_elements_that_comparisons_look_at) {
    constexpr std::size_t depth = 2000;
    QueryOptions options;
    options.maxVisits = 100 * depth;
    const Document nested(std::string(depth, '[') + std::string(depth, ']'));
    EXPECT_EQ(JsonPath("$..[?@ == 1]", options).select(nested.root).size(), 0u);
    const auto error =
        thrownBy<Exception>([&] { JsonPath("$..[?@ == $[0]]", options).select(nested.root); });
    EXPECT_STREQ(error.what(), "The query looks at elements more than 200000 times (maxVisits)");
    const Document members(R"({"a":[{"a":1},{"a":1}],"b":[{"a":1},{"a":1}]})");
    options.maxVisits = 10;
    EXPECT_EQ(JsonPath("$[?@ != 0]", options).select(members.root).size(), 2u);
    EXPECT_THROW(JsonPath("$[?@ == $.b]", options).select(members.root), Exception);
}

TEST(JsonPath, counts_the_length_of_what_it_compares_and_searches) {
    const std::string text(10000, '7');
    const auto document = [&](const std::string& value) {
        return "[" + value + "," + value + ",[" + value + "],[" + value + "]]";
    };
    const Document strings(document('"' + text + '"'));
    const Document numbers(document(text));
    QueryOptions options;
    options.maxVisits = 100;
    for (const char* const query : {"$[?$[0] == $[1]]", "$[?$[0] < $[1]]", "$[?$[2] == $[3]]"}) {
        EXPECT_THROW(JsonPath(query, options).select(strings.root), Exception) << query;
        EXPECT_THROW(JsonPath(query, options).select(numbers.root), Exception) << query;
    }
    for (const char* const query : {"$[?length($[0]) == 1]", "$[?search($[0], 'x')]",
                                    "$[?match($[0], 'x')]", "$[?match('x', $[0])]"}) {
        EXPECT_THROW(JsonPath(query, options).select(strings.root), Exception) << query;
        EXPECT_EQ(JsonPath(query, options).select(numbers.root).size(), 0u) << query;
    }
}

TEST(JsonPath, counts_conditions_and_the_steps_of_their_queries) {
    const Document doc("[[[[1]]],2]");
    const auto repeated = [](const std::string& text, const std::string& part) {
        std::string result = text;
        for (int i = 0; i < 100; ++i) {
            result += part;
        }
        return result + "]";
    };
    QueryOptions options;
    options.maxVisits = 150;
    EXPECT_EQ(JsonPath("$[?@[0] || @ == 2]", options).select(doc.root).size(), 2u);
    EXPECT_THROW(JsonPath(repeated("$[?@ == 1", " || 1 == 2"), options).select(doc.root),
                 Exception);
    EXPECT_THROW(JsonPath(repeated("$[?@", "[0]"), options).select(doc.root), Exception);
}

TEST(JsonPath, bounds_what_grows_with_each_segment_and_filter) {
    constexpr std::size_t depth = 300;
    const Document doc(std::string(depth, '[') + std::string(depth, ']'));
    QueryOptions options;
    options.maxVisits = 1000000;
    options.maxResults = 100000;
    EXPECT_EQ(JsonPath("$..[?@..[?@ > 1]]", options).select(doc.root).size(), 0u);
    const auto messageOf = [&](const char* query) {
        return std::string(
            thrownBy<Exception>([&] { JsonPath(query, options).select(doc.root); }).what());
    };
    EXPECT_EQ(messageOf("$..[?@..[?@..[?@..[?@ > 1]]]]"),
              "The query looks at elements more than 1000000 times (maxVisits)");
    EXPECT_EQ(messageOf("$..*..*..*"), "The query selects more than 100000 elements (maxResults)");
}

TEST(JsonPath, selects_once_what_does_not_depend_on_the_element) {
    std::string zeros = "0";
    for (int i = 1; i < 100; ++i) {
        zeros += ",0";
    }
    const Document doc("[" + zeros + "]");
    QueryOptions options;
    options.maxVisits = 2000;
    for (const char* const query :
         {"$[?count($[?count($[?@ > 1]) > 1]) > 1]", "$[?$..[?$..[?@ > 1]]]"}) {
        EXPECT_EQ(JsonPath(query, options).select(doc.root).size(), 0u) << query;
    }
}

TEST(JsonPath, refuses_what_is_nested_too_deeply) {
    const auto nested = [](std::size_t depth) {
        std::string text = "$";
        for (std::size_t i = 0; i < depth; ++i) {
            text += "[?@";
        }
        return text + std::string(depth, ']');
    };
    EXPECT_EQ(JsonPath(nested(100)).str(), nested(100));
    for (const std::string& text : {nested(101), nested(10000), "$[?" + std::string(10000, '('),
                                    "$[?" + std::string(100000, '!') + "(@)]"}) {
        EXPECT_THROW(JsonPath query(text), ParseException);
    }
    QueryOptions options;
    options.maxNesting = 1000000;
    EXPECT_EQ(JsonPath(nested(400), options).select(Element("x")).size(), 0u);
    EXPECT_THROW(JsonPath(nested(401), options), ParseException);
}

TEST(JsonPath, needs_no_stack_for_the_depth_of_the_document) {
    constexpr std::size_t depth = 100000;
    Document doc(std::string(depth, '[') + std::string(depth, ']'));
    onSmallStack([&doc] { EXPECT_EQ(JsonPath("$..[0]").select(doc.root).size(), depth - 1); });
}

TEST(JsonPath, needs_no_stack_for_the_number_of_segments) {
    constexpr std::size_t depth = 100000;
    Document doc(std::string(depth, '[') + std::string(depth, ']'));
    std::string text = "$";
    for (std::size_t i = 1; i < depth; ++i) {
        text += "[0]";
    }
    onSmallStack([&] {
        EXPECT_EQ(JsonPath(text).select(doc.root).size(), 1u);
        EXPECT_EQ(JsonPath(text + "[*]").select(doc.root).size(), 0u);
        EXPECT_EQ(JsonPath::of(*JsonPath(text).first(doc.root)), text);
    });
}

}  // namespace
}  // namespace orvid_test
