// SPDX-License-Identifier: MIT
//
// Tests of what becomes of comments when values move in a document that keeps its text: a text, an
// edit, and the whole text after it. What holds of every document is in
// keeps_moved_comments_test.cpp.

#include <ko/Orvid/Dom.h>

#include <gtest/gtest.h>
#include <ko/Orvid/JsonPatch.h>
#include <ko/Orvid/JsonPath.h>
#include <ko/Orvid/MergePatch.h>

#include <string>
#include <utility>

#include "support/EditedText.h"

namespace orvid_test {
namespace {

using ko::Orvid::Dom;
using ko::Orvid::Element;
using ko::Orvid::JsonPointer;

std::string patchedKnowing(const char* text, const char* patch) {
    Dom dom = Dom::parse(text);
    ko::Orvid::MovedPlaces moved;
    ko::Orvid::PatchOptions options;
    options.moved = &moved;
    applyPatch(*dom, *Dom::parse(patch), options);
    return dom.text(moved);
}

TEST(DomSourceMoved, takes_comments_along_when_items_are_sorted) {
    EXPECT_EQ(edited("[\n  // three\n  3,\n  1, // one\n  2\n]",
                     [](Element& root) {
                         auto& items = root.array();
                         std::swap(items[0], items[1]);
                         std::swap(items[1], items[2]);
                     }),
              "[\n  1, // one\n  2,\n  // three\n  3\n]");
}

TEST(DomSourceMoved, takes_comments_along_when_a_member_is_renamed) {
    const char* const text = "{\n  // a\n  \"a\": [1, /* x */ 2], // too\n  \"b\": 0\n}";
    EXPECT_EQ(edited(text,
                     [](Element& root) {
                         Element moved = std::move(root.object().find("a")->second);
                         root.object().erase("a");
                         root.object().resetMember("c") = std::move(moved);
                     }),
              "{\n  \"b\": 0,\n  // a\n  \"c\": [1, /* x */ 2] // too\n}");
    EXPECT_EQ(edited(text, patching(R"([{"op": "move", "from": "/a", "path": "/c"}])")),
              "{\n  \"b\": 0,\n  // a\n  \"c\": [1, /* x */ 2] // too\n}");
}

TEST(DomSourceMoved, takes_comments_along_when_a_value_moves_elsewhere) {
    const char* const text =
        "{\n  // a\n  \"a\": {\n    // x\n    \"x\": 1\n  }, // too\n  \"b\": {\n"
        "    \"c\": 0\n  }\n}";
    EXPECT_EQ(edited(text, patching(R"([{"op": "move", "from": "/a", "path": "/b/a"}])")),
              "{\n  \"b\": {\n    \"c\": 0,\n    // a\n    \"a\": {\n      // x\n"
              "      \"x\": 1\n    } // too\n  }\n}");
    EXPECT_EQ(edited(text,
                     [](Element& root) {
                         Element moved = std::move(root.object().find("a")->second);
                         root.object().erase("a");
                         moved.get("x").setNumber(2);
                         moved.insert("y", 3);
                         root.get("b").object().resetMember("d") = std::move(moved);
                     }),
              "{\n  \"b\": {\n    \"c\": 0,\n    \"d\": {\n      \"x\": 2,\n"
              "      \"y\": 3\n    }\n  }\n}");
}

TEST(DomSourceMoved, takes_comments_along_in_a_container_that_holds_nothing_else) {
    const char* const text = "{\n  \"a\": { /* c */ },\n  \"b\": {\"x\": 1},\n  \"d\": 2\n}";
    EXPECT_EQ(edited(text, patching(R"([{"op": "move", "from": "/a", "path": "/z"}])")),
              "{\n  \"b\": {\"x\": 1},\n  \"d\": 2,\n  \"z\": { /* c */ }\n}");
    EXPECT_EQ(edited(text, patching(R"([{"op": "move", "from": "/a", "path": "/d"}])")),
              "{\n  \"b\": {\"x\": 1},\n  \"d\": { /* c */ }\n}");
    EXPECT_EQ(patchedKnowing(text, R"([{"op": "move", "from": "/a", "path": "/b"}])"),
              "{\n  \"b\": { /* c */ },\n  \"d\": 2\n}");
}

TEST(DomSourceMoved, leaves_the_comments_of_an_object_that_loses_its_values_while_another_goes) {
    const char* const text =
        "{\n  \"x\": { /* c */ },\n  \"y\": { // own\n    // free\n\n    \"k\": 1 // d\n  }\n}\n";
    const char* const expected = "{\n  \"y\": { // own\n    // free\n  }\n}\n";
    EXPECT_EQ(edited(text, patching(R"([{"op": "remove", "path": "/x"},
                                        {"op": "remove", "path": "/y/k"}])")),
              expected);
    EXPECT_EQ(
        edited("{\"x\": [ /* c */ ], \"y\": [1]}", patching(R"([{"op": "remove", "path": "/x"},
                                        {"op": "remove", "path": "/y/0"}])")),
        "{\"y\": []}");
}

TEST(DomSourceMoved, takes_comments_along_with_values_that_are_known_to_have_moved) {
    const char* const text =
        "{\n  \"a\": true, // a\n  \"t\": true, // t\n  \"b\": {\"c\": true}\n}\n";
    const auto knowing = [&](const char* patch) { return patchedKnowing(text, patch); };
    EXPECT_EQ(
        knowing(R"([{"op": "move", "from": "/a", "path": "/b/x"}])"),
        "{\n  \"t\": true, // t\n  \"b\": {\n    \"c\": true,\n    \"x\": true // a\n  }\n}\n");
    EXPECT_EQ(knowing(R"([{"op": "move", "from": "/a", "path": "/b/x"},
                          {"op": "move", "from": "/b", "path": "/n"},
                          {"op": "move", "from": "/n/x", "path": "/y"}])"),
              "{\n  \"t\": true, // t\n  \"n\": {\"c\": true},\n  \"y\": true // a\n}\n");
    EXPECT_EQ(knowing(R"([{"op": "move", "from": "/a", "path": "/t"}])"),
              "{\n  \"t\": true, // a\n  \"b\": {\"c\": true}\n}\n");
    EXPECT_EQ(knowing(R"([{"op": "move", "from": "/a", "path": "/b/x"},
                          {"op": "remove", "path": "/b/x"}])"),
              "{\n  \"t\": true, // t\n  \"b\": {\"c\": true}\n}\n");
    EXPECT_EQ(patchedKnowing("[true /* a */, true /* b */]",
                             R"([{"op": "move", "from": "/0", "path": "/1"}])"),
              "[true /* b */, true /* a */]");
}

TEST(DomSourceMoved, gives_no_new_value_the_comments_of_one_that_another_was_moved_onto) {
    const char* const text = "{\"a\": 1 /* a */, \"b\": 2 /* b */, \"c\": [5 /* c */]}";
    EXPECT_EQ(patchedKnowing(text, R"([{"op": "move", "from": "/b", "path": "/a"},
                                       {"op": "add", "path": "/d", "value": 1}])"),
              "{\"a\": 2 /* b */, \"c\": [5 /* c */], \"d\": 1}");
    EXPECT_EQ(patchedKnowing(text, R"([{"op": "move", "from": "/b", "path": "/a"},
                                       {"op": "add", "path": "/c/-", "value": 1}])"),
              "{\"a\": 2 /* b */, \"c\": [5 /* c */, 1]}");
    EXPECT_EQ(patchedKnowing(text, R"([{"op": "move", "from": "/b", "path": "/c"},
                                       {"op": "add", "path": "/d", "value": [5]}])"),
              "{\"a\": 1 /* a */, \"c\": 2 /* b */, \"d\": [5]}");
    EXPECT_EQ(patchedKnowing("{\"a\": 1 /* a */, \"b\": 1 /* b */}",
                             R"([{"op": "move", "from": "/b", "path": "/a"},
                                 {"op": "add", "path": "/b", "value": 1}])"),
              "{\"a\": 1 /* b */, \"b\": 1}");
}

const char* const k_port =
    "{ \"port\": 8080, // main port\n  \"limits\": {\"rate\": 1}, \"l\": [7 /* l */] }";

TEST(DomSourceMoved, gives_lines_to_a_container_on_one_line_into_which_a_line_comment_comes) {
    const std::string rest = "  \"n\": [/* a */ 1, /* b */ 2 /* c */]\n}\n";
    const std::string text = "{\n  \"z\": 7, // seven\n  // about y\n  \"y\": 8,\n" + rest;
    EXPECT_EQ(edited(text, patching(R"([{"op": "move", "from": "/z", "path": "/n/-"}])")),
              "{\n  // about y\n  \"y\": 8,\n  \"n\": [\n    /* a */ 1,\n"
              "    /* b */ 2, /* c */\n    7 // seven\n  ]\n}\n");
    EXPECT_EQ(edited(text, patching(R"([{"op": "move", "from": "/y", "path": "/n/0"}])")),
              "{\n  \"z\": 7, // seven\n  \"n\": [\n    // about y\n    8,\n    /* a */ 1,\n"
              "    /* b */ 2 /* c */\n  ]\n}\n");
    EXPECT_EQ(edited("[\n  [1, // one\n  2],\n  [[3]]\n]",
                     patching(R"([{"op": "move", "from": "/0/0", "path": "/1/0/0"}])")),
              "[\n  [2],\n  [[\n    1, // one\n    3\n  ]]\n]");
    EXPECT_EQ(edited("{\n  \"a\": 1, /* a */\n  \"b\": [2]\n}",
                     patching(R"([{"op": "move", "from": "/a", "path": "/b/0"}])")),
              "{\n  \"b\": [1, /* a */ 2]\n}");
}

TEST(DomSourceMoved, gives_lines_to_a_container_on_one_line_into_which_lines_come) {
    const char* const text = "{\n  \"a\": {\n    \"x\": [1]\n  },\n  \"b\": [[2, {}], 3]\n}";
    EXPECT_EQ(edited(text, patching(R"([{"op": "move", "from": "/a", "path": "/b/1"}])")),
              "{\n  \"b\": [\n    [2, {}],\n    {\n      \"x\": [1]\n    },\n    3\n  ]\n}");
    EXPECT_EQ(edited(text, patching(R"([{"op": "move", "from": "/a", "path": "/b/0/1"}])")),
              "{\n  \"b\": [[\n    2,\n    {\n      \"x\": [1]\n    },\n    {}\n  ], 3]\n}");
    EXPECT_EQ(edited("[{\"m\": [1,\n 2]}, {\"k\": 1}]",
                     patching(R"([{"op": "move", "from": "/0/m", "path": "/1/m"}])")),
              "[{}, {\"k\": 1, \"m\": [1,\n 2]}]");
}

TEST(DomSourceMoved, makes_no_blank_line_longer_when_a_value_moves_to_and_fro) {
    const char* const text =
        "{\n    \"b\": {\n        \"v\": [\n    \n            \n\n            1\n        ],\n"
        "        \"c\": 2\n    }\n}";
    const std::string out =
        edited(text, patching(R"([{"op": "move", "from": "/b/v", "path": "/v"}])"));
    EXPECT_EQ(out,
              "{\n    \"b\": {\n        \"c\": 2\n    },\n"
              "    \"v\": [\n\n        \n\n        1\n    ]\n}");
    EXPECT_EQ(edited(out, patching(R"([{"op": "move", "from": "/v", "path": "/b/v"}])")),
              "{\n    \"b\": {\n        \"c\": 2,\n"
              "        \"v\": [\n\n            \n\n            1\n        ]\n    }\n}");
}

TEST(DomSourceMoved, gives_lines_to_a_new_array_into_which_a_line_comment_comes) {
    const char* const text = "{\n  \"z\": 7, // seven\n  \"y\": 8, /* eight */\n  \"n\": [1, 2]\n}";
    EXPECT_EQ(edited(text, patching(R"([{"op": "add", "path": "/m", "value": [1]},
                                        {"op": "move", "from": "/z", "path": "/m/0"}])")),
              "{\n  \"y\": 8, /* eight */\n  \"n\": [1, 2],\n  \"m\": [\n    7, // seven\n"
              "    1\n  ]\n}");
    EXPECT_EQ(edited(text, patching(R"([{"op": "add", "path": "/m", "value": [1]},
                                        {"op": "move", "from": "/y", "path": "/m/0"}])")),
              "{\n  \"z\": 7, // seven\n  \"n\": [1, 2],\n  \"m\": [8, /* eight */ 1]\n}");
}

TEST(DomSourceMoved, gives_comments_of_a_removed_scalar_to_no_equal_one_elsewhere) {
    const char* const expected =
        "{ \"limits\": {\"rate\": 1, \"burst\": 8080}, \"l\": [7 /* l */] }";
    EXPECT_EQ(patchedKnowing(k_port, R"([{"op": "remove", "path": "/port"},
        {"op": "add", "path": "/limits/burst", "value": 8080}])"),
              expected);
    EXPECT_EQ(patchedKnowing(k_port, R"([{"op": "add", "path": "/limits/burst", "value": 8080},
        {"op": "remove", "path": "/port"}])"),
              expected);
    EXPECT_EQ(patchedKnowing(k_port, R"([{"op": "remove", "path": "/l/0"},
        {"op": "add", "path": "/limits/burst", "value": 7}])"),
              "{ \"port\": 8080, // main port\n  \"limits\": {\"rate\": 1, \"burst\": 7}, "
              "\"l\": [] }");
    EXPECT_EQ(patchedKnowing("{\"a\": 8080 /* a */, \"b\": 0}", R"([{"op": "remove", "path": "/a"},
        {"op": "add", "path": "/c", "value": 8080}])"),
              "{\"b\": 0, \"c\": 8080}");
    Dom merged = Dom::parse(k_port);
    mergePatch(*merged, *Dom::parse(R"({"port": null, "limits": {"burst": 8080}})"));
    EXPECT_EQ(merged.text({{JsonPointer(), JsonPointer()}}), expected);
}

TEST(DomSourceMoved, takes_comments_along_with_what_a_patch_moves_by_removing_and_adding) {
    EXPECT_EQ(patchedKnowing("{\"a\": 1 /* a */, \"b\": {}}", R"([{"op": "remove", "path": "/a"},
        {"op": "add", "path": "/b/a", "value": 1}])"),
              "{\"b\": {\"a\": 1 /* a */}}");
    EXPECT_EQ(patchedKnowing("{\"a\": {\"x\": 1 /* x */} /* a */, \"b\": {}}",
                             R"([{"op": "remove", "path": "/a"},
        {"op": "add", "path": "/b/c", "value": {"x": 1}}])"),
              "{\"b\": {\"c\": {\"x\": 1 /* x */} /* a */}}");
}

TEST(DomSourceMoved, leaves_its_comments_to_a_container_that_a_merge_fills) {
    const auto merged = [](const char* text, const char* patch) {
        Dom dom = Dom::parse(text);
        mergePatch(*dom, *Dom::parse(patch));
        return dom.text({{JsonPointer(), JsonPointer()}});
    };
    EXPECT_EQ(merged("{\"c\": {/* own */}, \"d\": {/* in */ \"a\": 1 /* gone */}}",
                     R"({"c": {"a": 5}, "d": null})"),
              "{\"c\": {/* own */ \"a\": 5}}");
    EXPECT_EQ(merged("{\"c\": {\"z\": 1}, \"d\": {\"a\": null /* gone */}}",
                     R"({"c": {"a": 5, "z": null}, "d": null})"),
              "{\"c\": {\"a\": 5}}");
}

TEST(DomSourceMoved, gives_no_comments_to_what_a_patch_adds_and_moves_to_the_root) {
    const auto atRoot = [](const char* text, const char* value) {
        const std::string patch = R"([{"op": "add", "path": "/z", "value": )" + std::string(value) +
                                  R"(}, {"op": "move", "from": "/z", "path": ""}])";
        return patchedKnowing(text, patch.c_str());
    };
    EXPECT_EQ(atRoot("{\"x\": 1 /* one */, \"y\": 2}", "1"), "1");
    EXPECT_EQ(atRoot("{\"x\": 1 /* one */, \"y\": 2}", R"({"x": 1})"), "{\"x\": 1}");
}

TEST(DomSourceMoved, takes_comments_along_with_a_copy_of_what_is_removed) {
    EXPECT_EQ(patchedKnowing("{\"a\": 1 /* a */, \"b\": {}}",
                             R"([{"op": "copy", "from": "/a", "path": "/b/x"},
                                 {"op": "copy", "from": "/a", "path": "/b/y"},
                                 {"op": "add", "path": "/b/z", "value": 1},
                                 {"op": "remove", "path": "/a"}])"),
              "{\"b\": {\"x\": 1 /* a */, \"y\": 1, \"z\": 1}}");
    EXPECT_EQ(patchedKnowing("{\"a\": [1 /* 0 */, 1 /* 1 */] /* a */, \"b\": {}}",
                             R"([{"op": "copy", "from": "/a", "path": "/b/x"},
                                 {"op": "remove", "path": "/a/1"}])"),
              "{\"a\": [1 /* 0 */] /* a */, \"b\": {\"x\": [1, 1 /* 1 */]}}");
}

TEST(DomSourceMoved, removes_comments_of_what_was_moved_and_then_removed_or_overwritten) {
    const char* const text = "{\"a\": 1 /* a */, \"b\": 2 /* b */, \"c\": [5 /* c */]}";
    const char* const operations[] = {
        R"([{"op": "move", "from": "/a", "path": "/d"}, {"op": "remove", "path": "/d"},
            {"op": "add", "path": "/e", "value": 1}])",
        R"([{"op": "move", "from": "/a", "path": "/e"}, {"op": "remove", "path": "/e"},
            {"op": "add", "path": "/e", "value": 1}])",
        R"([{"op": "move", "from": "/a", "path": "/c/0"}, {"op": "add", "path": "/d", "value": 0},
            {"op": "remove", "path": "/c/0"}, {"op": "move", "from": "/d", "path": "/e"},
            {"op": "replace", "path": "/e", "value": 1}])",
        R"([{"op": "move", "from": "/a", "path": "/d"}, {"op": "add", "path": "/e", "value": 1},
            {"op": "move", "from": "/e", "path": "/d"}, {"op": "move", "from": "/d", "path": "/e"}])",
    };
    for (const char* const each : operations) {
        EXPECT_EQ(patchedKnowing(text, each), "{\"b\": 2 /* b */, \"c\": [5 /* c */], \"e\": 1}");
    }
    EXPECT_EQ(patchedKnowing(text, R"([{"op": "move", "from": "/a", "path": "/b"},
                                       {"op": "move", "from": "/c", "path": "/b"},
                                       {"op": "add", "path": "/a", "value": 1},
                                       {"op": "add", "path": "/c", "value": 2}])"),
              "{\"b\": [5 /* c */], \"a\": 1, \"c\": 2}");
}

TEST(DomSourceMoved, leaves_the_text_as_it_is_where_what_was_moved_and_removed_is_put_back) {
    const char* const text = "{\"a\": 1 /* a */, \"b\": 2}";
    EXPECT_EQ(patchedKnowing(text, R"([{"op": "move", "from": "/b", "path": "/c"},
        {"op": "remove", "path": "/c"}, {"op": "add", "path": "/b", "value": 2}])"),
              text);
}

TEST(DomSourceMoved, writes_the_colon_of_a_member_from_elsewhere_as_its_new_siblings_have_it) {
    const char* const text = R"({"x" : {"a":1, "b" /* b */ :2}, "y" : {"c"  :  3}})";
    EXPECT_EQ(edited(text, patching(R"([{"op": "move", "from": "/x/a", "path": "/y/a"}])")),
              R"({"x" : {"b" /* b */ :2}, "y" : {"c"  :  3, "a"  :  1}})");
    EXPECT_EQ(edited(text, patching(R"([{"op": "move", "from": "/x/b", "path": "/y/b"}])")),
              R"({"x" : {"a":1}, "y" : {"c"  :  3, "b" /* b */ :2}})");
    EXPECT_EQ(edited(text, patching(R"([{"op": "move", "from": "/x/a", "path": "/x/d"}])")),
              R"({"x" : {"b" /* b */ :2, "d":1}, "y" : {"c"  :  3}})");
    EXPECT_EQ(edited(text, patching(R"([{"op": "move", "from": "/x", "path": "/y/x"}])")),
              R"({"y" : {"c"  :  3, "x"  :  {"a":1, "b" /* b */ :2}}})");
}

TEST(DomSourceMoved, has_no_use_for_places_that_lead_nowhere) {
    const Dom dom = Dom::parse("{\"a\": 1 /* a */, \"b\": [2]}");
    const auto place = [](const char* text) { return JsonPointer(text); };
    EXPECT_EQ(dom.text({{place("/x"), place("/a")},
                        {place("/b/0"), place("/b/1")},
                        {place(""), place("/b")},
                        {place("/a/1"), place("/b/-")}}),
              "{\"a\": 1 /* a */, \"b\": [2]}");
    EXPECT_EQ(
        Dom::parse("[1, /* a */ 1]").text({{place("/1"), place("/0")}, {place("/0"), place("/0")}}),
        "[/* a */ 1, 1]");
}

TEST(DomSourceMoved, writes_comments_between_members_that_leave_together_once) {
    EXPECT_EQ(edited("{\n  \"a\": 1,\n\n  // free\n\n  \"b\": 2,\n  \"c\": 3,\n  \"d\": 4\n}\n",
                     patching(R"([{"op": "move", "from": "/a", "path": "/x"},
                                  {"op": "move", "from": "/b", "path": "/y"}])")),
              "{\n  // free\n\n  \"c\": 3,\n  \"d\": 4,\n  \"x\": 1,\n  \"y\": 2\n}\n");
}

TEST(DomSourceMoved, leaves_comments_in_a_container_that_is_filled_while_an_empty_one_comes) {
    EXPECT_EQ(edited("{\"a\": { /* c */ }, \"b\": 0}",
                     patching(R"([{"op": "add", "path": "/a/x", "value": 1},
                                  {"op": "add", "path": "/d", "value": {}}])")),
              "{\"a\": { /* c */ \"x\": 1 }, \"b\": 0, \"d\": {}}");
}

TEST(DomSourceMoved, takes_comments_of_a_moved_container_from_nowhere_else) {
    const char* const text = "{\"k\": {\"x\": 1}, \"a\": {\"e\": { /* c */ }, \"f\": 2}, \"q\": 3}";
    EXPECT_EQ(edited(text, patching(R"([{"op": "remove", "path": "/k/x"},
                                        {"op": "move", "from": "/a", "path": "/q"}])")),
              "{\"k\": {}, \"q\": {\"e\": { /* c */ }, \"f\": 2}}");
    EXPECT_EQ(edited("{\"a\": [[1, {\"e\": { /* c */ }}]]}",
                     patching(R"([{"op": "add", "path": "/e", "value": {}},
                                  {"op": "move", "from": "/a", "path": "/q"}])")),
              "{\"e\": {}, \"q\": [[1, {\"e\": { /* c */ }}]]}");
}

TEST(DomSourceMoved, leaves_removed_comments_out_of_what_held_them) {
    EXPECT_EQ(edited("{\"a\": { /* c */ }}", patching(R"([{"op": "remove", "path": "/a"}])")),
              "{}");
    EXPECT_EQ(edited("{\"a\": [{ /* c */ }]}", patching(R"([{"op": "remove", "path": "/a"}])")),
              "{}");
    EXPECT_EQ(edited("{\"k\": {\"a\": [[{ /* c */ }]]}, \"z\": 1}",
                     patching(R"([{"op": "remove", "path": "/k/a"}])")),
              "{\"k\": {}, \"z\": 1}");
}

TEST(DomSourceMoved, removes_comments_of_a_value_that_is_moved_onto_an_equal_one) {
    const char* const move = R"([{"op": "move", "from": "/a", "path": "/b"}])";
    for (const char* const text :
         {"{\"a\": { /* c */ }, \"b\": {}}", "{/* c */ \"a\": {}, \"b\": {}}",
          "{\"b\": {}, \"a\": {} /* c */}"}) {
        EXPECT_EQ(edited(text, patching(move)), "{\"b\": {}}");
        EXPECT_EQ(edited(text, removing("a")), "{\"b\": {}}");
    }
    EXPECT_EQ(edited("{\"a\": [1 /* c */], \"b\": [1 /* d */]}", patching(move)),
              "{\"b\": [1 /* d */]}");
    EXPECT_EQ(edited("{\"a\": { /* c */ }, \"b\": {}}",
                     [](Element& root) { root.get("a").swap(root.get("b")); }),
              "{\"a\": { /* c */ }, \"b\": {}}");
}

TEST(DomSourceMoved, takes_comments_along_where_another_value_stays) {
    EXPECT_EQ(edited("{\"a\": { /* c */ }, \"z\": 1}",
                     [](Element& root) { root.object()["m"] = std::move(root.object()["a"]); }),
              "{\"a\": null, \"z\": 1, \"m\": { /* c */ }}");
}

TEST(DomSourceMoved, keeps_comments_within_a_container_that_changes_and_moves) {
    const char* const text =
        "[\n  {\n    // x\n    \"x\": 1,\n    \"y\": 2,\n    \"z\": 3\n  },\n  0\n]";
    EXPECT_EQ(edited(text,
                     [](Element& root) {
                         root.array()[0].get("y").setNumber(5);
                         std::swap(root.array()[0], root.array()[1]);
                     }),
              "[\n  0,\n  {\n    // x\n    \"x\": 1,\n    \"y\": 5,\n    \"z\": 3\n  }\n]");
}

TEST(DomSourceMoved, keeps_comments_within_an_item_that_changes_while_others_come) {
    const auto edit = [](Element& root) {
        root.array()[0].object().erase("b");
        root.array()[0].get("a").setNumber(2);
        root.array().push_back(Element(7));
        root.array().push_back(Element(8));
    };
    EXPECT_EQ(edited("[ // own\n  { // in\n    \"a\": 1,\n    \"b\": 2\n  } // at\n]", edit),
              "[ // own\n  { // in\n    \"a\": 2\n  }, // at\n  7,\n  8\n]");
    const char* const text = "[\n  [ // in\n    { \"a\": 1.0 }\n  ] // at\n]";
    EXPECT_EQ(edited(text, patching(R"([{"op": "move", "from": "/0/0/a", "path": "/-"}])")),
              "[\n  [ // in\n    {}\n  ], // at\n  1.0\n]");
    EXPECT_EQ(edited("[1 /* a */]", patching(R"([{"op": "replace", "path": "/0", "value": 2},
                                                {"op": "add", "path": "/-", "value": 3}])")),
              "[2 /* a */, 3]");
}

TEST(DomSourceMoved, finds_changed_items_wherever_they_are_by_what_they_share) {
    const char* const people =
        "[\n  // 1\n  {\"n\": \"c\", \"v\": 1, \"w\": 5}, // c\n"
        "  {\"n\": \"b\", \"v\": 2, \"w\": 6}, // b\n"
        "  {\"n\": \"a\", \"v\": 3, \"w\": 7} // a\n]";
    const char* const sorted =
        "[\n  {\"n\": \"a\", \"v\": 8, \"w\": 7}, // a\n"
        "  {\"n\": \"b\", \"v\": 2, \"w\": 6}, // b\n"
        "  // 1\n  {\"n\": \"c\", \"v\": 9, \"w\": 5} // c\n]";
    EXPECT_EQ(edited(people,
                     [](Element& root) {
                         root.get("[0].v").set(9);
                         root.get("[2].v").set(8);
                         std::swap(root.get("[0]"), root.get("[2]"));
                     }),
              sorted);
    EXPECT_EQ(edited(people, [&](Element& root) { root = *Dom::parse(sorted); }), sorted);
}

TEST(DomSourceMoved, takes_comments_along_when_arrays_change_places) {
    const char* const text =
        "{\"a\": [1, // 1\n  2 // 2\n], \"b\": [3, // 3\n  4, // 4\n  5 // 5\n]}";
    EXPECT_EQ(edited(text, [](Element& root) { std::swap(root.get("a"), root.get("b")); }),
              "{\"a\": [3, // 3\n  4, // 4\n  5 // 5\n], \"b\": [1, // 1\n  2 // 2\n]}");
    EXPECT_EQ(edited(text,
                     [](Element& root) {
                         root.get("a") = std::move(root.get("b"));
                         root.object().erase(std::string("b"));
                     }),
              "{\"a\": [3, // 3\n  4, // 4\n  5 // 5\n]}");
}

TEST(DomSourceMoved, writes_no_comment_twice_where_a_copy_is_within_what_moved) {
    EXPECT_EQ(edited(R"({"c": [[/*k*/ 1]]})",
                     [](Element& root) {
                         const Element copy = root.get("c");
                         root.get("c[0]").array().push_back(copy);
                         Element moved = std::move(root.get("c"));
                         root.object().erase(std::string("c"));
                         root.object().resetMember("d") = std::move(moved);
                     }),
              R"({"d": [[/*k*/ 1, [[1]]]]})");
}

TEST(DomSourceMoved, keeps_comments_of_an_item_by_any_of_its_equal_members) {
    EXPECT_EQ(edited("[\n  {\"a\": true, \"b\": true}, // one\n  {\"x\": 1, \"y\": 2} // two\n]",
                     [](Element& root) {
                         root = *Dom::parse(R"([{"q": 1}, {"b": true, "c": 3}, {"y": 2, "r": 5}])");
                     }),
              "[\n  {\"q\": 1},\n  {\"b\": true, \"c\": 3}, // one\n"
              "  {\"y\": 2, \"r\": 5} // two\n]");
}

TEST(DomSourceMoved, keeps_comments_with_the_rest_of_equal_items_when_one_is_replaced) {
    EXPECT_EQ(
        edited("[2, 2 /* b */]", patching(R"([{"op": "replace", "path": "/0", "value": 7}])")),
        "[7, 2 /* b */]");
    EXPECT_EQ(edited("[2 /* a */, 2, 2 /* c */]",
                     patching(R"([{"op": "replace", "path": "/1", "value": 7}])")),
              "[2 /* a */, 7, 2 /* c */]");
}

TEST(DomSourceMoved, keeps_what_stands_in_the_root_when_its_only_member_gives_way_to_its_contents) {
    const char* const text = "{ // at\n  // head\n\n  \"x\": {\"q\": \"abc\"}\n\n  // tail\n}";
    const char* const expected = "{ // at\n  // head\n\n  \"q\": \"abc\"\n\n  // tail\n}";
    EXPECT_EQ(edited(text, patching(R"([{"op": "move", "from": "/x/q", "path": "/q"},
                                        {"op": "remove", "path": "/x"}])")),
              expected);
    EXPECT_EQ(edited(text,
                     [](Element& root) {
                         root.object().erase("x");
                         root.create("q", "abc");
                     }),
              expected);
}

TEST(DomSourceMoved, takes_comments_along_in_what_becomes_the_root) {
    EXPECT_EQ(edited("{ // at\n  \"x\": { // in\n    \"q\": 1\n  }\n}",
                     [](Element& root) {
                         Element inner = std::move(root.get("x"));
                         root = std::move(inner);
                     }),
              "{ // in\n  \"q\": 1\n}");
}

TEST(DomSourceMoved, takes_comments_along_with_what_is_known_to_become_the_root) {
    const struct {
        const char* text;
        const char* from;
        const char* expected;
    } cases[] = {
        {"[1 /* a */, 1 /* b */]", "/1", "1 /* b */"},
        {"[/* a */ 1 /* z */, 1]", "/0", "/* a */ 1 /* z */"},
        {"// head\n[\n  // a\n  1, // z\n  2 // y\n] // end\n", "/0",
         "// head\n// a\n1 // z\n// end\n"},
        {"// head\r\n[\r\n  1,\r\n  // b\r\n\r\n  // a\r\n  1 // z\r\n]\r\n// end", "/1",
         "// head\r\n// a\r\n1 // z\r\n// end"},
        {"[1 // z\n]", "/0", "1 // z"},
        {"/* head */ [\n  // a\n  1\n]", "/0", "/* head */\n// a\n1"},
        {"{\"a\" /* k */ : /* l */ 1, \"b\": 1}", "/a", "/* k */ /* l */ 1"},
        {"{\n  \"a\": // k\n    1 /* z */\n}\n", "/a", "// k\n1 /* z */\n"},
        {"\xEF\xBB\xBF[\n  // a\n  true\n]\n", "/0", "\xEF\xBB\xBF// a\ntrue\n"},
        {"{\n  // a\n  \"a\": {\n    // x\n    \"x\": 1\n  }, // z\n  \"b\": {\"x\": 1}\n}\n", "/a",
         "// a\n{\n  // x\n  \"x\": 1\n} // z\n"},
    };
    for (const auto& moved : cases) {
        EXPECT_EQ(patchedKnowing(moved.text, (R"([{"op": "move", "from": ")" +
                                              std::string(moved.from) + R"(", "path": ""}])")
                                                 .c_str()),
                  moved.expected);
    }
}

TEST(DomSourceMoved, takes_comments_along_with_what_is_assigned_to_the_root) {
    const auto assigning = [](const char* place) {
        return [place](Element& root) {
            Element moved = std::move(JsonPointer(place).get(root));
            root = std::move(moved);
        };
    };
    EXPECT_EQ(edited("// head\n[1001 /* a */, 7 /* b */] // end", assigning("/0")),
              "// head\n1001 /* a */ // end");
    EXPECT_EQ(edited("{\n  // a\n  \"a\": {\"x\": 1}, // z\n  \"b\": 2 // y\n}\n", assigning("/a")),
              "// a\n{\"x\": 1} // z\n");
    EXPECT_EQ(edited("{\n  // a\n  \"a\": [1, 2], // z\n  \"b\": 2 // y\n}\n", assigning("/a")),
              "// a\n[1, 2] // z\n");
    EXPECT_EQ(edited("{\n  // a\n  \"a\": {\"a\": 1, \"b\": 2}, // z\n  \"b\": 2 // y\n}\n",
                     assigning("/a")),
              "// a\n{\"a\": 1, \"b\": 2} // z\n");
}

TEST(DomSourceMoved, distinguishes_arrays_that_hold_nothing_but_arrays) {
    EXPECT_EQ(edited("[[[]/*1*/]/*0*/,[[[]/*4*/]/*3*/]/*2*/]",
                     [](Element& root) {
                         Element moved = std::move(root.array()[1].array()[0]);
                         root = std::move(moved);
                     }),
              "[[]/*4*/]/*3*/");
}

TEST(DomSourceMoved, gives_a_new_root_no_comments_of_what_it_may_not_be) {
    const auto becoming = [](const Element& value) {
        return [value](Element& root) { root = value; };
    };
    EXPECT_EQ(edited("[1 /* a */, 1 /* b */] // end", becoming(1)), "1 // end");
    EXPECT_EQ(edited("{\"a\": true /* a */} // end", becoming(true)), "true // end");
    EXPECT_EQ(edited("1 // end", becoming(2)), "2 // end");
    EXPECT_EQ(edited("{\"a\": {/* in */} /* a */} // end", removing("a")), "{} // end");
}

TEST(DomSourceMoved,
     leaves_comments_after_the_opening_bracket_first_when_all_children_are_replaced) {
    EXPECT_EQ(edited("{\n  // head\n\n  // x\n  \"x\": 1\n\n  // tail\n}",
                     [](Element& root) {
                         root.object().erase("x");
                         root.create("y", 2);
                     }),
              "{\n  // head\n\n  \"y\": 2\n\n  // tail\n}");
}

TEST(DomSourceMoved, gives_comments_of_a_removed_item_to_none_that_is_added_past_a_changed_one) {
    const char* const numbers = "[\n  1, // one\n  2, // two\n  3 // three\n]";
    const char* const patch = R"([{"op": "remove", "path": "/1"},
        {"op": "replace", "path": "/1", "value": 13}, {"op": "add", "path": "/-", "value": 9}])";
    const char* const expected = "[\n  1, // one\n  13, // three\n  9\n]";
    EXPECT_EQ(patchedKnowing(numbers, patch), expected);
    EXPECT_EQ(edited(numbers,
                     [](Element& root) {
                         ko::Orvid::JsonPath("$[1]").remove(root);
                         root.array()[1].set(13);
                         root.create("[*]", 9);
                     }),
              expected);
}

TEST(DomSourceMoved, gives_comments_of_a_removed_item_to_none_that_was_there_and_changed) {
    const auto becoming = [](const char* text) {
        return [text](Element& root) { root = ko::Orvid::parse(text); };
    };
    EXPECT_EQ(edited("[\n  1, // one\n  {\"k\": 1, \"l\": 2} // object\n]",
                     becoming(R"([{"k": 1, "l": 3}, 4])")),
              "[\n  {\"k\": 1, \"l\": 3}, // object\n  4\n]");
    EXPECT_EQ(edited("[[7] /* a */, [8, 9] /* b */, 5 /* c */]", becoming("[[8], 6, [1]]")),
              "[[8] /* b */, 6 /* c */, [1]]");
}

TEST(DomSourceMoved, gives_comments_of_a_removed_object_to_none_that_is_added_past_a_changed_one) {
    const char* const objects =
        "[\n  {\"n\": 1}, // one\n  {\"n\": 2}, // two\n  {\"n\": 3} // three\n]";
    const char* const patch = R"([{"op": "remove", "path": "/1"},
        {"op": "replace", "path": "/1/n", "value": 13},
        {"op": "add", "path": "/-", "value": {"n": 9}}])";
    const char* const expected =
        "[\n  {\"n\": 1}, // one\n  {\"n\": 13}, // three\n  {\"n\": 9}\n]";
    EXPECT_EQ(patchedKnowing(objects, patch), expected);
    EXPECT_EQ(edited(objects,
                     [](Element& root) {
                         root.array().erase(root.array().begin() + 1);
                         root.array()[1].create("n", 13);
                         root.create("[*].n", 9);
                     }),
              expected);
}

}  // namespace
}  // namespace orvid_test
