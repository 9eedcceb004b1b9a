// SPDX-License-Identifier: MIT

#include "text/TextLookup.h"

#include <gtest/gtest.h>

#include <string>

namespace ko::Orvid::text {
namespace {

ValueStep member(const std::string& key) { return {true, key, 0}; }
ValueStep item(unsigned int index) { return {false, "", index}; }

ReadOptions whole() {
    ReadOptions options;
    options.requireWholeDocument = true;
    return options;
}

/// The text of the value; "nothing" where there is none.
std::string found(std::string_view text, const ValueSteps& steps,
                  const ReadOptions& options = whole()) {
    return std::string(lookUp(text, steps, options).value_or("nothing"));
}

TEST(TextLookup, finds_values_of_every_kind_and_at_every_depth) {
    const std::string text =
        R"( {"a":{"b":[null,true,-1.5e3,"t\n",{"c":[ ]}]}, "d" : false, "":0} )";
    const ValueSteps list{member("a"), member("b")};
    const auto at = [&](unsigned int index) {
        ValueSteps steps = list;
        steps.push_back(item(index));
        return steps;
    };
    EXPECT_EQ(found(text, {}), text.substr(1, text.size() - 2));
    EXPECT_EQ(found(text, list), R"([null,true,-1.5e3,"t\n",{"c":[ ]}])");
    EXPECT_EQ(found(text, at(0)), "null");
    EXPECT_EQ(found(text, at(1)), "true");
    EXPECT_EQ(found(text, at(2)), "-1.5e3");
    EXPECT_EQ(found(text, at(3)), R"("t\n")");
    EXPECT_EQ(found(text, at(4)), R"({"c":[ ]})");
    EXPECT_EQ(found(text, at(5)), "nothing");
    EXPECT_EQ(found(text, {member("a"), member("b"), item(4), member("c")}), "[ ]");
    EXPECT_EQ(found(text, {member("d")}), "false");
    EXPECT_EQ(found(text, {member("")}), "0");
}

TEST(TextLookup, finds_a_number_at_the_end_of_the_text) {
    EXPECT_EQ(found("12", {}), "12");
    EXPECT_EQ(found(" 1.5", {}), "1.5");
}

TEST(TextLookup, finds_nothing_where_a_step_and_what_is_there_do_not_go_together) {
    const std::string text = R"({"a":[1,{"b":2}],"b":3})";
    EXPECT_EQ(found(text, {member("x")}), "nothing");
    EXPECT_EQ(found(text, {item(0)}), "nothing");
    EXPECT_EQ(found(text, {member("a"), member("b")}), "nothing");
    EXPECT_EQ(found(text, {member("b"), item(0)}), "nothing");
    EXPECT_EQ(found(text, {member("a"), item(0), member("b")}), "nothing");
    EXPECT_EQ(found(text, {member("a"), item(k_noIndex)}), "nothing");
}

TEST(TextLookup, compares_keys_by_what_their_escapes_stand_for) {
    EXPECT_EQ(found(R"({"a\u0062\n":1})", {member("ab\n")}), "1");
    EXPECT_EQ(found(R"({"a":"\u0062"})", {member("a")}), R"("\u0062")");
}

TEST(TextLookup, takes_the_last_of_repeated_keys_unless_they_are_refused) {
    EXPECT_EQ(found(R"({"a":1,"a":2})", {member("a")}), "2");
    EXPECT_EQ(found(R"({"a":{"b":1},"a":{"c":2}})", {member("a"), member("b")}), "nothing");
    EXPECT_EQ(found(R"({"a":{"b":1},"a":3})", {member("a"), member("b")}), "nothing");
    EXPECT_EQ(found(R"({"a":1,"b":{"c":0,"c":0}})", {member("a")}), "1");
    EXPECT_EQ(found(R"({"a":1,"b":{"c":0,"c":0}})", {member("a")}, ReadOptions::strict()),
              "nothing");
    EXPECT_EQ(found(R"({"a":1,"b":{"a":0}})", {member("a")}, ReadOptions::strict()), "1");
}

TEST(TextLookup, finds_nothing_in_text_that_is_malformed_or_not_over) {
    for (const char* const text :
         {"", " ", "{\"a\":1", "{\"a\":1}}", "{\"a\":1} 2", "{\"a\":01}", "{\"a\":1,}", "nul"}) {
        EXPECT_EQ(found(text, {}), "nothing") << text;
        EXPECT_EQ(found(text, {member("a")}), "nothing") << text;
    }
}

TEST(TextLookup, takes_what_the_options_take) {
    const std::string text = "{\"a\":1, /* b */ \"c\":\"\xFF\",}";
    ReadOptions options = whole();
    EXPECT_EQ(found(text, {member("a")}, options), "nothing");
    options.allowTrailingCommas = true;
    EXPECT_EQ(found(text, {member("a")}, options), "1");
    EXPECT_EQ(found(text, {member("a")}, ReadOptions::jsonc()), "nothing");
}

TEST(TextLookup, needs_no_stack_for_depth) {
    constexpr std::size_t depth = 300000;
    const std::string text =
        "[" + std::string(depth, '[') + std::string(depth, ']') + ",{\"a\":7}]";
    EXPECT_EQ(found(text, {item(1), member("a")}), "7");
}

}  // namespace
}  // namespace ko::Orvid::text
