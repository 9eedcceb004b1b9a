// SPDX-License-Identifier: MIT
//
// parseFor(): what is read for a query, and that the query selects the same there as in the whole.

#include <ko/Orvid/parse.h>

#include <gtest/gtest.h>
#include <ko/Orvid.h>

#include <string>

#include "support/Document.h"
#include "support/Links.h"

namespace orvid_test {
namespace {

using ko::Orvid::Element;
using ko::Orvid::JsonPath;
using ko::Orvid::ParseException;
using ko::Orvid::ReadOptions;

std::string compact(const Element& element) {
    return serialize(element, ko::Orvid::WriteOptions::compact());
}

std::string selected(const JsonPath& query, const Element& root) {
    std::string text;
    for (const Element* const element : query.select(root)) {
        text += compact(*element) + " ";
    }
    return text;
}

ReadOptions lenient() {
    ReadOptions options;
    options.requireWholeDocument = true;
    return options;
}

struct Reading {
    const char* query;
    const char* document;
    const char* kept;
};

const Reading k_readings[] = {
    {"$", R"({"a":[1,{"b":2}]})", R"({"a":[1,{"b":2}]})"},
    {"$", "1.50", "1.50"},
    {"$.a", R"({"b":[1,{"a":0}],"a":[1,{"b":2}],"c":{}})", R"({"a":[1,{"b":2}]})"},
    {"$.a", R"(["a",{"a":1}])", "null"},
    {"$.a.b", R"({"a":{"c":0,"b":1.0,"d":{"b":[]}},"b":3})", R"({"a":{"b":1.0}})"},
    {"$.a.b", R"({"a":7,"b":{"a":1}})", "null"},
    {"$.a[*].b", R"({"a":[{"b":1},2,[3],{"c":4},{"c":5,"b":6}],"x":[]})",
     R"({"a":[{"b":1},{"b":6}]})"},
    {"$[1].a", R"([{"a":1},{"b":0,"a":{"c":2}},{"a":3}])", R"([null,{"a":{"c":2}},null])"},
    {"$[1]", "[[1,2],[3,{}],4]", "[null,[3,{}],null]"},
    {"$[1].a", "[0,[1],2]", "[null,null,null]"},
    {"$[-2].a", R"([{"a":1},{"a":2,"b":3},4])", R"([{"a":1},{"a":2},null])"},
    {"$[1:].a", R"([{"a":1},{"b":3}])", R"([{"a":1},null])"},
    {"$..id", R"({"id":{"id":1,"x":2},"y":[[3],{"z":0,"id":4}],"e":{},"n":null})",
     R"({"id":{"id":1,"x":2},"y":[{"id":4}]})"},
    {"$..a..b", R"({"b":1,"a":{"b":2,"c":[{"b":3}]},"d":{"b":4}})",
     R"({"a":{"b":2,"c":[{"b":3}]}})"},
    {"$..[0]", "[[1,2],3,{\"a\":[4]}]", "[[1,2],null,{\"a\":[4]}]"},
    {"$..[?@.p]", R"({"a":[1,2],"b":{"p":0,"q":[3]}})", R"({"a":[1,2],"b":{"p":0,"q":[3]}})"},
    {"$[?@.n > 1].t", R"([{"n":2,"t":"x","u":0},{"n":1,"t":"y"},{"t":"z"},3])",
     R"([{"n":2,"t":"x"},{"n":1,"t":"y"},{"t":"z"}])"},
    {"$[?@.n > 1].t", R"([{"n":[2,3],"t":"x"}])", R"([{"n":[],"t":"x"}])"},
    {"$[?@.a == @.b].c", R"([{"a":[1],"b":[1],"c":2,"d":3}])", R"([{"a":[1],"b":[1],"c":2}])"},
    {"$[?value(@.a) == @.b].c", R"([{"a":[],"b":[2],"c":6,"d":3}])", R"([{"a":[],"b":[2],"c":6}])"},
    {"$[?@.b == value(@.a)].c", R"([{"a":{"k":1},"b":{"k":1},"c":6}])",
     R"([{"a":{"k":1},"b":{"k":1},"c":6}])"},
    {"$[?@.a].c", R"([{"a":{"x":1},"c":2,"d":3}])", R"([{"a":{},"c":2}])"},
    {"$[?!@.a].c", R"([{"b":{"x":1},"c":2},{"a":null}])", R"([{"c":2},{"a":null}])"},
    {"$[?@.a[0].b == 1].c", R"([{"a":[{"b":1,"x":2},{"b":3}],"c":4}])",
     R"([{"a":[{"b":1},null],"c":4}])"},
    {"$[?count(@.a[*]) == 2].c", R"([{"a":[{"b":1},[2]],"c":4}])", R"([{"a":[{},[]],"c":4}])"},
    {"$[?length(@.a) == 2].c", R"([{"a":[{"b":1},[2]],"c":4}])", R"([{"a":[{"b":1},[2]],"c":4}])"},
    {"$[?value(@..b) == 1].c", R"([{"a":{"b":1,"d":[]},"c":4}])", R"([{"a":{"b":1},"c":4}])"},
    {"$[?match(@.a, 'x') || search(@.b, $.p)].c", R"({"p":"y","q":{"a":"x","b":"y","c":3,"d":4}})",
     R"({"p":"y","q":{"a":"x","b":"y","c":3}})"},
    {"$.l[?@.a > $.limit].c", R"({"limit":2,"l":[{"a":3,"b":0,"c":1}],"m":5})",
     R"({"limit":2,"l":[{"a":3,"c":1}]})"},
    {"$[?@[?@.x == $.y[0]]].c", R"({"y":[1,2],"a":{"b":{"x":1,"z":0},"c":3}})",
     R"({"y":[1,2],"a":{"b":{"x":1},"c":3}})"},
    {"$['a','b'].c", R"({"a":{"c":1,"d":2},"b":[{"c":3}],"e":4})", R"({"a":{"c":1}})"},
};

TEST(parseFor, keeps_what_the_query_looks_at) {
    for (const Reading& test : k_readings) {
        SCOPED_TRACE(test.query + std::string(" ") + test.document);
        const JsonPath query(test.query);
        Element part = parseFor(query, test.document);
        CHECK_LINKS(part);
        EXPECT_EQ(compact(part), test.kept);
        EXPECT_EQ(selected(query, part), selected(query, ko::Orvid::parse(test.document)));
    }
}

TEST(parseFor, keeps_the_value_that_a_repeated_key_has_in_the_end) {
    const ReadOptions options = lenient();
    for (const char* const text : {R"({"a":{"x":1},"a":2})", R"({"a":1,"b":{"x":2},"a":{"x":3}})",
                                   R"({"a":{"x":1},"a":{"y":2}})", R"([{"x":{"x":1,"x":2}}])"}) {
        for (const char* const path : {"$.*.x", "$..x", "$.a.x", "$[*]"}) {
            const JsonPath query(path);
            EXPECT_EQ(selected(query, parseFor(query, text, options)),
                      selected(query, parse(text, options)))
                << path << " " << text;
        }
    }
}

TEST(parseFor, refuses_repeated_keys_where_it_looks) {
    const JsonPath query("$.a.x");
    EXPECT_THROW(parseFor(query, R"({"a":{"x":1,"x":2}})"), ParseException);
    EXPECT_THROW(parseFor(query, R"({"a":1,"a":2})"), ParseException);
    EXPECT_EQ(compact(parseFor(query, R"({"b":{"x":1,"x":2}})")), "null");
}

TEST(parseFor, finds_every_error_that_parse_finds) {
    const JsonPath query("$.a");
    for (const char* const text : {"", "{", R"({"b":[1,})", R"({"b":1} 2)", R"({"b":tru})",
                                   R"({"b":"\x"})", R"({"b":[[1]})", "{\"b\":\"\xff\"}", "01"}) {
        const auto error = thrownBy<ParseException>([&] { parseFor(query, text); });
        const auto same = thrownBy<ParseException>([&] { ko::Orvid::parse(text); });
        EXPECT_EQ(error.message(), same.message()) << text;
        EXPECT_EQ(error.firstColumn(), same.firstColumn()) << text;
    }
}

TEST(parseFor, reads_all_for_a_query_with_many_selectors) {
    std::string query = "$['a'";
    for (int i = 0; i < 100; ++i) {
        query += ",'b" + std::to_string(i) + "'";
    }
    const std::string text = R"({"a":1,"c":[2]})";
    EXPECT_EQ(compact(parseFor(JsonPath(query + "]"), text)), text);
}

TEST(parseFor, reads_all_below_where_a_query_may_stand_at_too_many_places) {
    std::string query = "$..a";
    for (int i = 0; i < 9; ++i) {
        query += ".*";
    }
    const JsonPath path(query + ".x");
    constexpr std::size_t depth = 1000;
    std::string text;
    unsigned int random = 1;
    for (std::size_t i = 0; i < depth; ++i) {
        random = random * 1103515245U + 12345U;
        text += (random & 0x10000U) != 0 ? "{\"a\":" : "{\"b\":";
    }
    text += R"({"x":1,"c":2})" + std::string(depth, '}');
    const Element part = parseFor(path, text);
    EXPECT_EQ(selected(path, part), selected(path, ko::Orvid::parse(text)));
    EXPECT_NE(JsonPath("$..c").first(part), nullptr);
}

TEST(parseFor, needs_no_stack_for_the_depth_of_the_document) {
    constexpr std::size_t depth = 100000;
    const std::string text = "{\"b\":" + std::string(depth, '[') + std::string(depth, ']') +
                             ",\"a\":" + std::string(depth, '[') + "{\"a\":7}" +
                             std::string(depth, ']') + "}";
    ReadOptions options = ReadOptions::strict();
    options.maxDepth = 0;
    const JsonPath query("$..a");
    const Element part = parseFor(query, text, options);
    EXPECT_EQ(part.object().size(), 1u);
    EXPECT_EQ(query.select(part).size(), 2u);
}

}  // namespace
}  // namespace orvid_test
