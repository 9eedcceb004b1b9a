// SPDX-License-Identifier: MIT

#include "text/TextRewriter.h"

#include <gtest/gtest.h>

#include <string>

namespace ko::Orvid::text {
namespace {

ValueStep member(const std::string& key) { return {true, key, 0}; }
ValueStep item(unsigned int index) { return {false, "", index}; }

Layout compact() { return {false, "", false, false, false}; }
Layout indented() { return {true, "  ", true, false, true}; }

/// What is written; "nothing" where that cannot be said.
std::string rewritten(const std::string& text, const Layout& layout,
                      const TextEdit* edit = nullptr) {
    TextRewriter rewriter(layout);
    Bytes out;
    out.append("before ");
    const bool isRewritten = rewriter.rewrite(text, edit, ReadOptions::jsonc(), out);
    EXPECT_EQ(out.view().substr(0, 7), "before ");
    EXPECT_EQ(out.length() > 7, isRewritten);
    return isRewritten ? std::string(out.view().substr(7)) : "nothing";
}

std::string edited(const std::string& text, const ValueSteps& steps, const std::string& value) {
    const TextEdit edit{steps, value};
    return rewritten(text, compact(), &edit);
}

TEST(TextRewriter, writes_each_token_in_the_layout) {
    const std::string text = "{ \"a\":[1.50 , -0,true],/**/ \"b\":{},\"c\":[],\"d\":null,}";
    EXPECT_EQ(rewritten(text, compact()), R"({"a":[1.50,-0,true],"b":{},"c":[],"d":null})");
    EXPECT_EQ(rewritten(text, indented()),
              "{\n  \"a\": [\n    1.50,\n    -0,\n    true\n  ],\n  \"b\": {},\n  \"c\": [],\n"
              "  \"d\": null\n}\n");
}

TEST(TextRewriter, writes_the_escapes_that_must_be) {
    EXPECT_EQ(rewritten(R"(["\/\u0041\"\\\n\u0001","\ud83d\ude00"])", compact()),
              "[\"/A\\\"\\\\\\n\\u0001\",\"\xF0\x9F\x98\x80\"]");
    EXPECT_EQ(rewritten(R"({"k\u0065y\t":1})", compact()), R"({"key\t":1})");
}

TEST(TextRewriter, puts_a_value_in_the_place_of_another) {
    const std::string text = R"({"a":{"b":[1,[2,{"x":0}],3]},"c":"d"})";
    EXPECT_EQ(edited(text, {member("c")}, "[ 5, 6 ]"),
              R"({"a":{"b":[1,[2,{"x":0}],3]},"c":[5,6]})");
    EXPECT_EQ(edited(text, {member("a"), member("b"), item(1)}, "\"v\""),
              R"({"a":{"b":[1,"v",3]},"c":"d"})");
    EXPECT_EQ(edited(text, {member("a")}, "null"), R"({"a":null,"c":"d"})");
}

TEST(TextRewriter, makes_what_is_missing_at_the_end_of_its_container) {
    EXPECT_EQ(edited("{}", {member("a\"")}, "1"), R"({"a\"":1})");
    EXPECT_EQ(edited(R"({"a":{"b":1}})", {member("a"), member("c"), member("d")}, "2"),
              R"({"a":{"b":1,"c":{"d":2}}})");
    EXPECT_EQ(edited("[[1],[]]", {item(1), item(k_noIndex)}, "2"), "[[1],[2]]");
    EXPECT_EQ(edited("[0]", {item(k_noIndex), member("a")}, "2"), R"([0,{"a":2}])");
}

TEST(TextRewriter, cannot_say_where_there_is_no_place) {
    EXPECT_EQ(edited("[1]", {item(1)}, "2"), "nothing");
    EXPECT_EQ(edited("[1]", {member("a")}, "2"), "nothing");
    EXPECT_EQ(edited(R"({"a":1})", {member("a"), member("b")}, "2"), "nothing");
    EXPECT_EQ(edited(R"({"a":1})", {member("b"), item(0)}, "2"), "nothing");
    EXPECT_EQ(edited(R"({"a":1})", {item(k_noIndex)}, "2"), "nothing");
    EXPECT_EQ(edited(R"({"a":1})", {member("a")}, "[2"), "nothing");
}

TEST(TextRewriter, cannot_say_of_malformed_text_and_of_repeated_keys) {
    for (const char* const text : {"", "[1", "[1]]", R"({"a":1,"a":1})", R"({"b":{"a":1,"a":1}})",
                                   R"({"a":1,"\u0061":1})", "[\"\xFF\"]", R"(["\ud800"])"}) {
        EXPECT_EQ(rewritten(text, compact()), "nothing") << text;
    }
    std::string many = "{";
    for (int i = 0; i < 100; ++i) {
        many += "\"" + std::to_string(i) + "\":0,";
    }
    EXPECT_NE(rewritten(many + "\"100\":0}", compact()), "nothing");
    EXPECT_EQ(rewritten(many + "\"7\":0}", compact()), "nothing");
}

TEST(TextRewriter, looks_for_repeated_keys_in_what_is_replaced_too) {
    const ValueSteps a{member("a")};
    EXPECT_EQ(edited(R"({"a":{"b":1,"b":[{}]},"c":3})", a, "2"), "nothing");
    EXPECT_EQ(edited(R"({"a":{"b":1,"c":[{"b":1},{"b":1}]},"b":3})", a, "2"), R"({"a":2,"b":3})");
}

TEST(TextRewriter, goes_a_hundred_levels_deep) {
    const auto nested = [](std::size_t depth) {
        return std::string(depth, '[') + std::string(depth, ']');
    };
    EXPECT_EQ(rewritten(nested(100), compact()), nested(100));
    EXPECT_EQ(rewritten(nested(101), compact()), "nothing");
}

TEST(TextRewriter, stops_at_the_meta_of_the_root_when_asked) {
    TextRewriter rewriter(compact(), true);
    Bytes out;
    EXPECT_FALSE(rewriter.rewrite(R"({"a":1,"meta":2})", nullptr, ReadOptions::jsonc(), out));
    EXPECT_TRUE(rewriter.rewrite(R"({"a":{"meta":2}})", nullptr, ReadOptions::jsonc(), out));
    EXPECT_TRUE(rewriter.rewrite(R"([{"meta":2}])", nullptr, ReadOptions::jsonc(), out));
}

TEST(TextRewriter, serves_one_text_after_the_other_whatever_became_of_the_first) {
    TextRewriter rewriter(indented());
    Bytes out;
    EXPECT_FALSE(rewriter.rewrite(R"([{"a":[1,)", nullptr, ReadOptions::jsonc(), out));
    EXPECT_TRUE(rewriter.rewrite(R"({"a":1})", nullptr, ReadOptions::jsonc(), out));
    EXPECT_EQ(out.view(), "{\n  \"a\": 1\n}\n");
    EXPECT_TRUE(rewriter.rewrite("2", nullptr, ReadOptions::jsonc(), out));
    EXPECT_EQ(out.view(), "{\n  \"a\": 1\n}\n2\n");
}

}  // namespace
}  // namespace ko::Orvid::text
