// SPDX-License-Identifier: MIT
//
// Tests of JsonPointer: the examples of RFC 6901, malformed text, the way to and from paths, and
// elements found and named.

#include <ko/Orvid/JsonPointer.h>

#include <gtest/gtest.h>
#include <ko/Orvid/Exception.h>
#include <ko/Orvid/Object.h>
#include <ko/Orvid/PathException.h>

#include <functional>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "support/Document.h"

namespace orvid_test {
namespace {

using ko::Orvid::Element;
using ko::Orvid::JsonPointer;
using ko::Orvid::ParseException;
using ko::Orvid::Path;
using ko::Orvid::PathNotFound;

/// The document and the values of RFC 6901, section 5.
const char* const k_rfcDocument =
    R"({"foo": ["bar", "baz"], "": 0, "a/b": 1, "c%d": 2, "e^f": 3,
        "g|h": 4, "i\\j": 5, "k\"l": 6, " ": 7, "m~n": 8})";
const std::vector<std::pair<std::string, std::string>> k_rfcValues = {
    {"/foo", R"(["bar","baz"])"},
    {"/foo/0", R"("bar")"},
    {"/", "0"},
    {"/a~1b", "1"},
    {"/c%d", "2"},
    {"/e^f", "3"},
    {"/g|h", "4"},
    {"/i\\j", "5"},
    {"/k\"l", "6"},
    {"/ ", "7"},
    {"/m~0n", "8"},
};

TEST(JsonPointer, finds_the_values_of_the_rfcs_examples) {
    const Document document(k_rfcDocument);
    for (const auto& [pointer, value] : k_rfcValues) {
        EXPECT_EQ(compact(JsonPointer(pointer).get(document.root)), value) << pointer;
    }
    EXPECT_EQ(&JsonPointer("").get(document.root), &document.root);
}

/// Calls `visit` with every element of the tree.
void forEach(const Element& element, const std::function<void(const Element&)>& visit) {
    visit(element);
    if (element.isObject()) {
        for (const auto& member : element.object()) {
            forEach(member.second, visit);
        }
    } else if (element.isArray()) {
        for (const Element& item : element.array()) {
            forEach(item, visit);
        }
    }
}

TEST(JsonPointer, of_each_element_leads_back_to_it) {
    const Document document(
        R"({"": {"": [1, {"~1": [[2]], "/": 3}]}, "-": 4, "0": {"01": 5}, "~": 6})");
    forEach(document.root, [&](const Element& element) {
        const JsonPointer pointer = JsonPointer::of(element);
        EXPECT_EQ(pointer.find(document.root), &element) << pointer;
        EXPECT_EQ(JsonPointer(pointer.str()), pointer) << pointer;
    });
    EXPECT_EQ(JsonPointer::of(document.root.object().find("~")->second).str(), "/~0");
}

TEST(JsonPointer, of_an_element_begins_below_an_ancestor_where_asked) {
    const Document document(R"({"a": [0, {"b": 1}]})");
    const Element& one = document.root.get("a[1].b");
    EXPECT_EQ(JsonPointer::of(one).str(), "/a/1/b");
    EXPECT_EQ(JsonPointer::of(one, &document.root.get("a")).str(), "/1/b");
    EXPECT_EQ(JsonPointer::of(one, &one).str(), "/a/1/b");
}

TEST(JsonPointer, reads_and_writes_the_same_text) {
    for (const char* const text : {"", "/", "//", "/~0~1", "/a/-/0", "/~01", "/\xFF/b"}) {
        EXPECT_EQ(JsonPointer(text).str(), text);
        std::ostringstream out;
        out << JsonPointer(text);
        EXPECT_EQ(out.str(), text);
    }
    EXPECT_EQ(JsonPointer("/~01").steps(), std::vector<std::string>{"~1"});
    EXPECT_TRUE(JsonPointer("").empty());
    EXPECT_FALSE(JsonPointer("/").empty());
}

TEST(JsonPointer, refuses_text_that_is_no_pointer_with_the_columns_of_the_error) {
    const std::vector<std::pair<std::string, std::pair<int, int>>> rows = {
        {"a", {0, 0}}, {"#/a", {0, 0}}, {"/~", {1, 2}}, {"/ab~2", {3, 4}}, {"/a~/b", {2, 3}}};
    for (const auto& row : rows) {
        const std::string& text = row.first;
        const auto& columns = row.second;
        const auto error = thrownBy<ParseException>([&] { JsonPointer{text}; });
        EXPECT_EQ(error.firstLine(), 1) << text;
        EXPECT_EQ(error.firstColumn(), columns.first) << text;
        EXPECT_EQ(error.lastLine(), 1) << text;
        EXPECT_EQ(error.lastColumn(), columns.second) << text;
    }
    EXPECT_EQ(thrownBy<ParseException>([] { JsonPointer("/~"); }).message(),
              "In a JSON Pointer \"~\" must be followed by 0 or 1");
    EXPECT_EQ(thrownBy<ParseException>([] { JsonPointer("a"); }).message(),
              "A JSON Pointer must be empty or begin with \"/\"");
}

TEST(JsonPointer, takes_only_plain_numbers_for_indexes) {
    const Document array("[10, 11]");
    EXPECT_EQ(compact(JsonPointer("/1").get(array.root)), "11");
    for (const char* const text : {"/2", "/01", "/-", "/+1", "/-1", "/1.0", "/", "/1e0",
                                   "/4294967295", "/4294967296", "/18446744073709551617"}) {
        EXPECT_EQ(JsonPointer(text).find(array.root), nullptr) << text;
    }
    const Document object(R"({"01": 1, "-": 2, "4294967296": 3})");
    EXPECT_EQ(compact(JsonPointer("/01").get(object.root)), "1");
    EXPECT_EQ(compact(JsonPointer("/-").get(object.root)), "2");
    EXPECT_EQ(compact(JsonPointer("/4294967296").get(object.root)), "3");
}

TEST(JsonPointer, says_where_it_stopped_when_it_leads_nowhere) {
    Document document(R"({"a": [{"b": 1}]})");
    const auto error =
        thrownBy<PathNotFound>([&] { JsonPointer("/a/0/x~1y/z").get(document.root); });
    EXPECT_EQ(error.path(), "/a/0/x~1y/z");
    EXPECT_EQ(error.key(), "x/y");
    EXPECT_EQ(*error.elementPath(), "a[0]");
    EXPECT_EQ(JsonPointer("/a/0/x").find(document.root), nullptr);
    EXPECT_EQ(JsonPointer("/a/0/b/c").find(document.root), nullptr);
}

TEST(JsonPointer, hands_out_an_element_that_can_be_changed) {
    Document document(R"({"a": [1]})");
    JsonPointer("/a/0").get(document.root).setString("x");
    EXPECT_EQ(compact(document.root), R"({"a": ["x"]})");
    CHECK_LINKS(document.root);
}

const std::vector<std::pair<std::string, std::string>> k_pathsBothWays = {
    {"", ""},
    {"/a/b/3/c", "a.b[3].c"},
    {"/0/1", "[0][1]"},
    {"/a/-/b", "a[*].b"},
    {"/a.b/[c]", R"(a\.b.\[c\])"},
    {"/a~1b/~0", "a/b.~"},
    {"/a*/\\", R"(a\*.\\)"},
    {"/01/1x", "01.1x"},
    {"/\xFFz", "\\\xFFz"},
    {"/z\xFF", "z\\\xFF"},
};

TEST(JsonPointer, becomes_a_path_and_is_made_from_one) {
    for (const auto& [pointer, path] : k_pathsBothWays) {
        EXPECT_EQ(JsonPointer(pointer).toPath().str(), path) << pointer;
        EXPECT_EQ(JsonPointer::fromPath(path).str(), pointer) << path;
    }
    EXPECT_EQ(JsonPointer::fromPath("a[007]").str(), "/a/7");
    EXPECT_EQ(JsonPointer::fromPath(".a").str(), "/a");
    EXPECT_THROW(JsonPointer::fromPath("a..b"), ParseException);
}

TEST(JsonPointer, becomes_the_path_that_the_document_means) {
    const Document document(R"({"0": [{"1": 2}], "-": 3})");
    EXPECT_EQ(JsonPointer("/0/0/1").toPath(document.root).str(), "0[0].1");
    EXPECT_EQ(JsonPointer("/0/0/1").toPath().str(), "[0][0][1]");
    EXPECT_EQ(JsonPointer("/-").toPath(document.root).str(), "-");
    EXPECT_EQ(JsonPointer("/0/-").toPath(document.root).str(), "0[*]");
    EXPECT_EQ(JsonPointer("/0/7/7").toPath(document.root).str(), "0[7][7]");
    EXPECT_EQ(JsonPointer("/0/x/7").toPath(document.root).str(), "0.x[7]");
    EXPECT_EQ(compact(document.root.get(JsonPointer("/0/0/1").toPath(document.root))), "2");
}

TEST(JsonPointer, is_refused_as_a_path_for_an_empty_key) {
    EXPECT_THROW(JsonPointer("/").toPath(), ko::Orvid::Exception);
    EXPECT_THROW(JsonPointer("/a//b").toPath(), ko::Orvid::Exception);
    const Document document(R"({"": 1})");
    EXPECT_THROW(JsonPointer("/").toPath(document.root), ko::Orvid::Exception);
}

TEST(JsonPointer, is_built_step_by_step_and_knows_what_lies_below) {
    JsonPointer pointer;
    pointer.push_back("a/b");
    pointer.push_back("0");
    EXPECT_EQ(pointer.str(), "/a~1b/0");
    EXPECT_TRUE(JsonPointer("/a~1b").contains(pointer));
    EXPECT_TRUE(pointer.contains(pointer));
    EXPECT_FALSE(pointer.contains(JsonPointer("/a~1b")));
    EXPECT_FALSE(JsonPointer("/a").contains(JsonPointer("/ab")));
    pointer.pop_back();
    EXPECT_EQ(pointer, JsonPointer("/a~1b"));
    EXPECT_NE(pointer, JsonPointer());
}

}  // namespace
}  // namespace orvid_test
