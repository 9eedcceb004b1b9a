// SPDX-License-Identifier: MIT
//
// Tests of how what is new in a document that keeps its text is laid out: a text, an edit, and the
// whole text after it. What holds of every document is in keeps_layout_test.cpp.

#include <ko/Orvid/Dom.h>

#include <gtest/gtest.h>

#include <cstddef>
#include <string>

#include "support/EditedText.h"

namespace orvid_test {
namespace {

using ko::Orvid::Dom;
using ko::Orvid::Element;

TEST(DomSourceLayout, adds_as_its_neighbours_are) {
    const auto push = [](Element& root) { root.array().push_back(Element(9)); };
    EXPECT_EQ(edited("[1,2]", push), "[1,2,9]");
    EXPECT_EQ(edited("[ 1 , 2 ]", push), "[ 1 , 2, 9 ]");
    EXPECT_EQ(edited("[1]", push), "[1, 9]");
    EXPECT_EQ(edited("[\n\t1 // a\n\t// end\n]", push), "[\n\t1, // a\n\t9\n\t// end\n]");
    EXPECT_EQ(edited("[\r\n  1,\r\n]", push), "[\r\n  1,\r\n  9,\r\n]");
    EXPECT_EQ(edited("[ 1\n, 2\n]", push), "[ 1\n, 2\n, 9\n]");
    EXPECT_EQ(edited("[\n 1, 2,\n 3, 4\n]", push), "[\n 1, 2,\n 3, 4, 9\n]");
    EXPECT_EQ(edited("{\"a\":1}", setting("b", 2)), "{\"a\":1,\"b\":2}");
    EXPECT_EQ(edited("{ \"a\" : 1 }", setting("b", 2)), "{ \"a\" : 1, \"b\" : 2 }");
    EXPECT_EQ(edited("{\n  \"a\": 1, \"b\": 2\n}", setting("c", 3)),
              "{\n  \"a\": 1, \"b\": 2,\n  \"c\": 3\n}");
}

TEST(DomSourceLayout, adds_where_there_are_no_neighbours_as_the_document_is) {
    EXPECT_EQ(edited("{\n\t\"a\": {}\n}\n", setting("a.b", 1)),
              "{\n\t\"a\": {\n\t\t\"b\": 1\n\t}\n}\n");
    EXPECT_EQ(edited("{\n  \"a\": [],\n  \"b\": [1,2],\n}\n", setting("a[*]", 1)),
              "{\n  \"a\": [1],\n  \"b\": [1,2],\n}\n");
    EXPECT_EQ(edited("{\n  \"a\": [],\n}\n", setting("a[*]", 1)),
              "{\n  \"a\": [\n    1,\n  ],\n}\n");
    EXPECT_EQ(edited("{\"a\":{},\"b\":1}", setting("a.c", 1)), "{\"a\":{\"c\":1},\"b\":1}");
    EXPECT_EQ(edited("{\n  // yours\n}\n", setting("a", 1)), "{\n  // yours\n  \"a\": 1\n}\n");
    EXPECT_EQ(edited("{}", setting("a[*]", 1)), "{\n    \"a\": [\n        1\n    ]\n}");
    EXPECT_EQ(edited("[\n  {\"a\": 1}\n]", setting("[*].b", 2)),
              "[\n  {\"a\": 1},\n  {\"b\": 2}\n]");
    EXPECT_EQ(edited("[\n  [2,],\n  [2,],\n  [\n  ]\n]", setting("[2][*]", 1)),
              "[\n  [2,],\n  [2,],\n  [\n    1\n  ]\n]");
    EXPECT_EQ(edited("{\"a\": {\n}, \"b\": 1}", setting("a.c", 1)),
              "{\"a\": {\n    \"c\": 1\n}, \"b\": 1}");
}

TEST(DomSourceLayout, fills_an_empty_container_as_the_nearest_of_its_kind_beside_it) {
    EXPECT_EQ(edited("[\n  {},\n  {\"a\": 1},\n  3\n]", setting("[0].b", 2)),
              "[\n  {\"b\": 2},\n  {\"a\": 1},\n  3\n]");
    EXPECT_EQ(edited("{\n  \"a\": {\"x\": 1},\n  \"b\": { /* b */ },\n  \"c\": {\n  }\n}",
                     setting("b.x", 2)),
              "{\n  \"a\": {\"x\": 1},\n  \"b\": { /* b */ \"x\": 2 },\n  \"c\": {\n  }\n}");
    const std::string several =
        "[\n  { \"x\": 1 },\n  {\n    \"x\": 1\n  },\n  {},\n  [{}],\n  { \"x\": 1 }\n]";
    EXPECT_EQ(edited(several, setting("[2].y", 2)),
              "[\n  { \"x\": 1 },\n  {\n    \"x\": 1\n  },\n  {\n    \"y\": 2\n  },\n"
              "  [{}],\n  { \"x\": 1 }\n]");
    const std::string arrays = "{\n  \"a\": [],\n  \"b\": [\n    {}\n  ],\n  \"c\": [1]\n}";
    EXPECT_EQ(edited(arrays, setting("a[*]", 2)),
              "{\n  \"a\": [2],\n  \"b\": [\n    {}\n  ],\n  \"c\": [1]\n}");
    EXPECT_EQ(edited(arrays, setting("a[*].x", 2)),
              "{\n  \"a\": [\n    {\n      \"x\": 2\n    }\n  ],\n  \"b\": [\n    {}\n  ],\n"
              "  \"c\": [1]\n}");
}

TEST(DomSourceLayout, keeps_whitespace_between_a_comment_and_what_fills_its_container) {
    EXPECT_EQ(edited("{\"a\": { /* c */ }, \"b\": 1}", setting("a.x", 2)),
              "{\"a\": { /* c */ \"x\": 2 }, \"b\": 1}");
    EXPECT_EQ(edited("[ 1, [/* c */] ]", setting("[1][*]", 2)), "[ 1, [/* c */ 2] ]");
}

TEST(DomSourceLayout, keeps_the_ends_of_lines_where_they_are_mixed) {
    const char* const text = "[\n  1, // a\r\n  2, // b\n  3 // c\r\n]";
    EXPECT_EQ(edited(text, removingItem(1)), "[\n  1, // a\r\n  3 // c\r\n]");
    EXPECT_EQ(edited(text, removingItem(2)), "[\n  1, // a\r\n  2 // b\n]");
    EXPECT_EQ(edited(text, setting("[*]", 4)), "[\n  1, // a\r\n  2, // b\n  3, // c\r\n  4\r\n]");
    EXPECT_EQ(edited("[\n\n  1,\r\n  2\n]", removingItem(0)), "[\n\n  2\n]");
}

TEST(DomSourceLayout, learns_the_whitespace_within_brackets_from_each_of_the_two) {
    EXPECT_EQ(edited("[\n  [ 1,  0, 10],\n  [ 0, 20,  3],\n  [10,  0,  1]\n]",
                     [](Element& root) {
                         root.create("[*]", ko::Orvid::makeArray({7, 8}));
                     }),
              "[\n  [ 1,  0, 10],\n  [ 0, 20,  3],\n  [10,  0,  1],\n  [ 7,  8]\n]");
}

TEST(DomSourceLayout, gives_a_new_container_the_whitespace_within_its_siblings) {
    const auto addItem = [](Element& root) {
        root.create("l[*]", Element());
        root.get("l").array().back() = *Dom::parse(R"({"x": 3, "y": 4})");
    };
    const std::string compact = R"("a": {"p":1,"q":2}, "b": {"p":1,"q":2}, "c": {"p":1,"q":2})";
    EXPECT_EQ(
        edited("{\n  " + compact + ",\n  \"l\": [\n    { \"x\" : 1,  \"y\" : 2 }\n  ]\n}", addItem),
        "{\n  " + compact +
            ",\n  \"l\": [\n    { \"x\" : 1,  \"y\" : 2 },\n    { \"x\" : 3,  \"y\" : 4 }\n  ]\n}");
    EXPECT_EQ(edited("{\n  \"l\": [[1,2], [1,2], [1,2]],\n  \"m\": {\n    \"a\": [ 1 ]\n  }\n}",
                     [](Element& root) {
                         root.create("m.b", ko::Orvid::makeArray({7, 8}));
                     }),
              "{\n  \"l\": [[1,2], [1,2], [1,2]],\n  \"m\": {\n    \"a\": [ 1 ],\n    \"b\": [ 7,8 "
              "]\n  }\n}");
}

TEST(DomSourceLayout, learns_the_whitespace_after_a_comma_from_containers_of_the_same_kind) {
    const auto push = [](Element& root) { root.get("list").array().push_back(Element(9)); };
    EXPECT_EQ(edited(R"({"pos": {"x": 1}, "z": 1, "rgb": [1,2,3]})", setting("pos.y", 2)),
              R"({"pos": {"x": 1, "y": 2}, "z": 1, "rgb": [1,2,3]})");
    EXPECT_EQ(edited(R"([[1,2], [3,4], {"w": 1, "h": 2}, {"x": 1}])", setting("[3].y", 2)),
              R"([[1,2], [3,4], {"w": 1, "h": 2}, {"x": 1, "y": 2}])");
    EXPECT_EQ(edited(R"({"rgb": [1,2,3], "list": [1], "z": {"a": 1, "b": 2}})", push),
              R"({"rgb": [1,2,3], "list": [1,9], "z": {"a": 1, "b": 2}})");
    EXPECT_EQ(edited(R"({"list": [1],"z": 1})", push), R"({"list": [1,9],"z": 1})");
    EXPECT_EQ(edited(R"([[1,2],{"x": 1}])", setting("[1].y", 2)), R"([[1,2],{"x": 1,"y": 2}])");
    EXPECT_EQ(edited("[[1,\n   2], {\"x\": 1}]", setting("[1].y", 2)),
              "[[1,\n   2], {\"x\": 1, \"y\": 2}]");
}

TEST(DomSourceLayout, learns_the_whitespace_after_a_comma_with_a_comment_before_it) {
    EXPECT_EQ(edited(R"({"a":1 /*x*/, "b": {"x": 5}})", setting("b.c", 2)),
              R"({"a":1 /*x*/, "b": {"x": 5, "c": 2}})");
    EXPECT_EQ(edited(R"({"a": [1 /*x*/,  2], "b": [3]})", setting("b[*]", 4)),
              R"({"a": [1 /*x*/,  2], "b": [3,  4]})");
}

TEST(DomSourceLayout,
     takes_the_blanks_around_a_colon_from_the_nearest_member_without_comments_there) {
    EXPECT_EQ(edited(R"([{"a": 1}, {"a": 1}, {"a" :1, "b"/**/:/**/2}, {}])", setting("[2].c", 3)),
              R"([{"a": 1}, {"a": 1}, {"a" :1, "b"/**/:/**/2, "c" :3}, {}])");
    EXPECT_EQ(edited(R"([{"a": 1}, {"a"/**/:/**/2}])", setting("[1].c", 3)),
              R"([{"a": 1}, {"a"/**/:/**/2, "c": 3}])");
}

TEST(DomSourceLayout, lays_a_new_value_out_as_the_document_is) {
    const Document value(R"({"x": [1, {"y": []}], "z": {}})");
    EXPECT_EQ(edited("{\r\n  \"a\": 1\r\n}", [&](Element& root) { root.insert("b", value.root); }),
              "{\r\n  \"a\": 1,\r\n  \"b\": {\r\n    \"x\": [\r\n      1,\r\n      {\r\n"
              "        \"y\": []\r\n      }\r\n    ],\r\n    \"z\": {}\r\n  }\r\n}");
    EXPECT_EQ(edited("[ { \"a\":1 }, 2 ]", [&](Element& root) { root.array()[1] = value.root; }),
              "[ { \"a\":1 }, { \"x\":[ 1, { \"y\":[] } ], \"z\":{} } ]");
}

TEST(DomSourceLayout, indents_nothing_in_a_document_without_indents) {
    const Document value(R"({"x": [{"y": 1}]})");
    EXPECT_EQ(edited("{\n\"a\": {\n\"x\": 1\n}\n}", setting("b", value.root)),
              "{\n\"a\": {\n\"x\": 1\n},\n\"b\": {\n\"x\": [\n{\n\"y\": 1\n}\n]\n}\n}");
    EXPECT_EQ(edited("{\n\"a\": {\n\t\"x\": 1\n}\n}", setting("b.c", 1)),
              "{\n\"a\": {\n\t\"x\": 1\n},\n\"b\": {\n\t\"c\": 1\n}\n}");
}

TEST(DomSourceLayout, adds_an_item_between_two_rows_to_the_first) {
    const std::string rows = "[\n  1, 2,\n  3, 4,\n  5\n]";
    const auto inserting = [&](std::size_t index) {
        return edited(rows, [&](Element& root) { root.array().insert(index, 9); });
    };
    EXPECT_EQ(inserting(2), "[\n  1, 2, 9,\n  3, 4,\n  5\n]");
    EXPECT_EQ(inserting(3), "[\n  1, 2,\n  3, 9, 4,\n  5\n]");
    EXPECT_EQ(inserting(4), "[\n  1, 2,\n  3, 4, 9,\n  5\n]");
    EXPECT_EQ(inserting(5), "[\n  1, 2,\n  3, 4,\n  5,\n  9\n]");
}

TEST(DomSourceLayout, begins_lines_with_commas_as_the_document_does) {
    const std::string text =
        "{\n    \"a\": 1 // one\n  , \"b\": {\n        \"c\": 2\n    }\n  , \"s\": [1, 2]\n";
    const Document value(R"({"x": [{}, 2], "y": []})");
    EXPECT_EQ(edited(text + "}", setting("d", value.root)),
              text +
                  "  , \"d\": {\n        \"x\": [\n            {}\n          , 2\n        ]\n"
                  "      , \"y\": []\n    }\n}");
    EXPECT_EQ(edited(text + "}", setting("b.d", 3)),
              "{\n    \"a\": 1 // one\n  , \"b\": {\n        \"c\": 2\n      , \"d\": 3\n    }\n"
              "  , \"s\": [1, 2]\n}");
    EXPECT_EQ(edited(text + "}", patching(R"([{"op": "move", "from": "/a", "path": "/s/1"}])")),
              "{\n    \"b\": {\n        \"c\": 2\n    }\n  , \"s\": [\n        1\n"
              "      , 1 // one\n      , 2\n    ]\n}");
}

TEST(DomSourceLayout, keeps_the_comma_before_a_value_that_moves_with_comments_above_it) {
    EXPECT_EQ(edited("[\n  1\n  // two\n, 2\n, 3\n, 4\n]",
                     patching(R"([{"op": "move", "from": "/1", "path": "/2"}])")),
              "[\n  1\n, 3\n  // two\n, 2\n, 4\n]");
}

TEST(DomSourceLayout, writes_no_comma_at_the_beginning_of_what_becomes_the_first_line) {
    EXPECT_EQ(edited("{\n    \"a\": 1\n    // about b\n  , \"b\": 2\n}",
                     patching(R"([{"op": "remove", "path": "/a"}])")),
              "{\n    // about b\n    \"b\": 2\n}");
    EXPECT_EQ(edited("[\n    1\n    // two\n  , /* 2 */ 2\n]",
                     patching(R"([{"op": "remove", "path": "/0"}])")),
              "[\n    // two\n  /* 2 */ 2\n]");
}

TEST(DomSourceLayout, keeps_commas_at_the_beginnings_of_lines_when_values_move) {
    const std::string text =
        "{\n    // about a\n    \"a\": {\n        \"x\": 1\n      , \"y\": 2\n    }\n"
        "  , \"b\": {\n        \"c\": 2\n    }\n}";
    const std::string rest = "{\n    \"b\": {\n        \"c\": 2\n";
    EXPECT_EQ(
        edited(text, patching(R"([{"op": "move", "from": "/a", "path": "/z"}])")),
        rest + "    }\n    // about a\n  , \"z\": {\n        \"x\": 1\n      , \"y\": 2\n    }\n}");
    EXPECT_EQ(edited(text, patching(R"([{"op": "move", "from": "/a", "path": "/b/z"}])")),
              rest +
                  "        // about a\n      , \"z\": {\n            \"x\": 1\n          , \"y\": "
                  "2\n        }\n    }\n}");
}

TEST(DomSourceLayout, lays_an_object_on_one_line_out_as_arrays_are_where_there_is_none) {
    EXPECT_EQ(edited("[ 1, 2 ]", setting("[*]", Document(R"({"a": 1})").root)),
              "[ 1, 2, { \"a\": 1 } ]");
    EXPECT_EQ(edited("{ \"a\": 1 }", setting("b", Document("[1]").root)),
              "{ \"a\": 1, \"b\": [1] }");
}

TEST(DomSourceLayout, puts_brackets_of_members_on_lines_of_their_own_as_most_are) {
    const std::string text = "{\n  \"n\": 1,\n  \"a\" :\n  {\n    \"x\": 1\n  }\n}\n";
    const std::string member = "{\n  \"n\": 1,\n  \"a\" :\n  {\n    \"x\": 1\n  },\n";
    EXPECT_EQ(edited(text, setting("b.y", 2)), member + "  \"b\":\n  {\n    \"y\": 2\n  }\n}\n");
    EXPECT_EQ(edited(text, setting("b", 2)), member + "  \"b\": 2\n}\n");
    EXPECT_EQ(edited(text, setting("b", ko::Orvid::makeArray({}))), member + "  \"b\": []\n}\n");
    EXPECT_EQ(edited(text, setting("n", Document(R"({"y": 2})").root)),
              "{\n  \"n\":\n  {\n    \"y\": 2\n  },\n  \"a\" :\n  {\n    \"x\": 1\n  }\n}\n");
    EXPECT_EQ(edited(text, setting("a", 2)), "{\n  \"n\": 1,\n  \"a\" : 2\n}\n");
    EXPECT_EQ(edited(text, patching(R"([{"op": "remove", "path": "/a/x"}])")),
              "{\n  \"n\": 1,\n  \"a\" : {}\n}\n");
    EXPECT_EQ(edited("{\n  \"a\":\n  { // own\n    \"x\": 1\n  }\n}\n",
                     patching(R"([{"op": "remove", "path": "/a/x"}])")),
              "{\n  \"a\":\n  { // own\n  }\n}\n");
}

TEST(DomSourceLayout, lays_a_short_container_out_as_most_of_its_kind_are) {
    const std::string rules =
        "{\n  \"rules\": {\n    \"indent\": [\"error\", 2],\n"
        "    \"max-len\": [\"warn\", { \"code\": 100 }]\n  }\n}\n";
    const Document rule(R"(["error", "always", {"strict": true}])");
    EXPECT_EQ(edited(rules, setting("rules.curly", rule.root)),
              "{\n  \"rules\": {\n    \"indent\": [\"error\", 2],\n"
              "    \"max-len\": [\"warn\", { \"code\": 100 }],\n"
              "    \"curly\": [\"error\", \"always\", { \"strict\": true }]\n  }\n}\n");
    const Document list(R"([{"path": "../b"}, {"path": "../c"}])");
    EXPECT_EQ(edited("{\n  \"a\": [{ \"path\": \"../a\" }]\n}\n", setting("b", list.root)),
              "{\n  \"a\": [{ \"path\": \"../a\" }],\n"
              "  \"b\": [{ \"path\": \"../b\" }, { \"path\": \"../c\" }]\n}\n");
    EXPECT_EQ(
        edited("{\n  \"a\": [\n    { \"path\": \"../a\" }\n  ]\n}\n", setting("b", list.root)),
        "{\n  \"a\": [\n    { \"path\": \"../a\" }\n  ],\n"
        "  \"b\": [\n    { \"path\": \"../b\" },\n    { \"path\": \"../c\" }\n  ]\n}\n");
    EXPECT_EQ(edited("{\n  \"a\": { \"x\": 1 },\n  \"b\": {\n    \"x\": {}\n  }\n}\n",
                     setting("c", Document(R"({"y": {}})").root)),
              "{\n  \"a\": { \"x\": 1 },\n  \"b\": {\n    \"x\": {}\n  },\n"
              "  \"c\": {\n    \"y\": {}\n  }\n}\n");
}

TEST(DomSourceLayout, lays_a_new_member_out_as_other_members_and_not_as_rows) {
    EXPECT_EQ(edited("{\n  \"rows\": [\n    { \"x\": 1 }\n  ]\n}\n", setting("limits.rate", 2)),
              "{\n  \"rows\": [\n    { \"x\": 1 }\n  ],\n"
              "  \"limits\": {\n    \"rate\": 2\n  }\n}\n");
}

TEST(DomSourceLayout, gives_lines_to_a_new_container_into_which_comments_come) {
    const char* const text = "{\n  \"a\": { \"x\": 1 },\n  // b\n  \"b\": 2 // too\n}\n";
    EXPECT_EQ(edited(text, patching(R"([{"op": "add", "path": "/c", "value": {}},
                                        {"op": "move", "from": "/b", "path": "/c/b"}])")),
              "{\n  \"a\": { \"x\": 1 },\n  \"c\": {\n    // b\n    \"b\": 2 // too\n  }\n}\n");
}

TEST(DomSourceLayout, gives_lines_to_a_new_array_into_which_lines_come) {
    const auto put = patching(R"([{"op": "add", "path": "/d", "value": []},
                                  {"op": "move", "from": "/c", "path": "/d/0"}])");
    const std::string lists = "{\n  \"a\": [{ \"x\": 1 }],\n  \"b\": [{ \"x\": 1 }],\n";
    EXPECT_EQ(edited(lists + "  \"c\": {\n    \"y\": 2\n  }\n}\n", put),
              lists + "  \"d\": [\n    {\n      \"y\": 2\n    }\n  ]\n}\n");
    EXPECT_EQ(edited(lists + "  \"c\": {\n    // none\n  }\n}\n", put),
              lists + "  \"d\": [\n    {\n      // none\n    }\n  ]\n}\n");
    EXPECT_EQ(edited(lists + "  \"c\": { \"y\": 2 }\n}\n", put),
              lists + "  \"d\": [{ \"y\": 2 }]\n}\n");
}

TEST(DomSourceLayout, gives_lines_to_an_empty_container_into_which_lines_come) {
    const auto put = patching(R"([{"op": "move", "from": "/b", "path": "/e/b"}])");
    const std::string model = "{\n\t\"o\": { \"x\": 1 },\n\t\"e\": {";
    EXPECT_EQ(edited("{\n\t// two\n\t\"b\": [\n\t\t1\n\t],\n" + model.substr(2) + "}\n}", put),
              model + "\n\t\t// two\n\t\t\"b\": [\n\t\t\t1\n\t\t]\n\t}\n}");
    EXPECT_EQ(edited("{\n\t\"b\": [\n\t\t1\n\t],\n" + model.substr(2) + "}\n}", put),
              model + "\n\t\t\"b\": [\n\t\t\t1\n\t\t]\n\t}\n}");
    EXPECT_EQ(edited("{\n\t\"b\": [1],\n" + model.substr(2) + "}\n}", put),
              model + " \"b\": [1] }\n}");
}

TEST(DomSourceLayout, learns_the_indent_from_comments_where_nothing_else_has_one) {
    const auto put = patching(R"([{"op": "add", "path": "/a", "value": {"b": 1}}])");
    EXPECT_EQ(edited("{\n\t// c\n}", put), "{\n\t// c\n\t\"a\": {\n\t\t\"b\": 1\n\t}\n}");
    EXPECT_EQ(edited("{\n  // c\n  // d\n}", put),
              "{\n  // c\n  // d\n  \"a\": {\n    \"b\": 1\n  }\n}");
}

TEST(DomSourceLayout, gives_lines_to_a_container_that_is_too_long_for_one) {
    const std::string text = "{\n  \"a\": { \"x\": 1 }\n}\n";
    const std::string before = "{\n  \"a\": { \"x\": 1 },\n  \"b\": ";
    const std::string fits(52, 'f');
    EXPECT_EQ(edited(text, setting("b.y", fits)), before + "{ \"y\": \"" + fits + "\" }\n}\n");
    EXPECT_EQ(edited(text, setting("b.y", fits + "f")),
              before + "{\n    \"y\": \"" + fits + "f\"\n  }\n}\n");
}

/// Objects in which there is nothing but a comment, with that indent.
std::string commented(std::size_t count, const std::string& indent) {
    std::string text;
    for (std::size_t i = 0; i < count; ++i) {
        text += "{\n" + indent + "// c\n},\n";
    }
    return text;
}

TEST(DomSourceLayout, learns_the_indent_from_comments_in_the_first_few_thousand_objects) {
    const std::string before = "[\n" + commented(4000, "   ") + commented(5000, " ");
    const std::string after = edited(before + "{}\n]", setting("[9000].a", 1));
    EXPECT_TRUE(after == before + "{\n   \"a\": 1\n}\n]") << after.substr(before.size());
}

}  // namespace
}  // namespace orvid_test
