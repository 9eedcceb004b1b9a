// SPDX-License-Identifier: MIT
//
// Creating, overwriting and inserting by path. Removing is in ElementRemove_test.cpp; values that
// lie in the edited tree and edits that fail half-way are in tests/behaviour.

#include <ko/Orvid/Element.h>

#include <gtest/gtest.h>
#include <ko/Orvid/Array.h>
#include <ko/Orvid/Object.h>
#include <ko/Orvid/PathException.h>
#include <ko/Orvid/TypeException.h>

#include <string>
#include <typeinfo>
#include <vector>

#include "support/Document.h"

namespace orvid_test {
namespace {

using ko::Orvid::Element;
using ko::Orvid::etArray;
using ko::Orvid::etObject;
using ko::Orvid::EType;
using ko::Orvid::Exception;
using ko::Orvid::ParseException;
using ko::Orvid::Path;
using ko::Orvid::PathNotFound;
using ko::Orvid::TypeException;

/// An edit that puts the value 9 at a path.
struct Row {
    std::string before;
    std::string path;
    std::string after;
    std::string made;  ///< path of the element that the edit returns
};

std::vector<Row> edits() {
    return {
        {"{}", "a", R"({"a": 9})", "a"},
        {"{}", ".a", R"({"a": 9})", "a"},
        {"{}", "a.b.c", R"({"a": {"b": {"c": 9}}})", "a.b.c"},
        {"{}", "a[*]", R"({"a": [9]})", "a[0]"},
        {"{}", "a.b[*].c", R"({"a": {"b": [{"c": 9}]}})", "a.b[0].c"},
        {"{}", "a[*][*]b", R"({"a": [[{"b": 9}]]})", "a[0][0].b"},
        {"{}", R"(a\.b)", R"({"a.b": 9})", R"(a\.b)"},
        {"{}", R"(\[0\].*)", R"({"[0]": {"*": 9}})", R"(\[0\].\*)"},
        {R"({"a": 1,"b": 2})", "a", R"({"a": 9,"b": 2})", "a"},
        {R"({"a": {"x": 1},"b": 2})", "a", R"({"a": 9,"b": 2})", "a"},
        {R"({"a": {"x": 1}})", "a.y", R"({"a": {"x": 1,"y": 9}})", "a.y"},
        {R"({"a": {"b": [{"c": 1}]}})", "a.b[*].c", R"({"a": {"b": [{"c": 1},{"c": 9}]}})",
         "a.b[1].c"},
        {R"({"a": {"b": [{"c": 1}]}})", "a.b[0].d", R"({"a": {"b": [{"c": 1,"d": 9}]}})",
         "a.b[0].d"},
        {"[1,2]", "[1]", "[1,9]", "[1]"},
        {"[1,2]", "[*]", "[1,2,9]", "[2]"},
        {"[]", "[*]", "[9]", "[0]"},
        {"[[1],[2]]", "[1][*]", "[[1],[2,9]]", "[1][1]"},
        {R"({"a": 1})", "", "9", ""},
        {"null", "", "9", ""},
    };
}

using Edit = Element& (Element::*)(const Path&, const Element&);

TEST(ElementEdit, creates_what_is_missing_and_overwrites_what_is_there) {
    for (const Edit edit : {&Element::create, &Element::tryCreate, &Element::tryUpdate}) {
        for (const Row& row : edits()) {
            Document document(row.before);
            Element& made = (document.root.*edit)(row.path, Element(9));
            EXPECT_EQ(compact(document.root), row.after) << row.path;
            EXPECT_EQ(made.path(), row.made);
            EXPECT_EQ(&made, &document.root.get(row.made));
            CHECK_LINKS(document.root);
        }
    }
}

/// An edit with a step that cannot be made.
struct FailingRow {
    std::string before;
    std::string path;
    std::string element;  ///< where the walk stops
    std::string step;     ///< which step it misses
    std::string after;
};

std::vector<FailingRow> failingEdits() {
    return {
        {"{}", "a[0]", "a", "[0]", R"({"a": []})"},
        {"{}", "a.b[*].c[0].d", "a.b[0].c", "[0]", R"({"a": {"b": [{"c": []}]}})"},
        {R"({"x": "t"})", "x.y", "x", "y", R"({"x": "t"})"},
        {R"({"x": 1})", "x.y", "x", "y", R"({"x": 1})"},
        {R"({"x": true})", "x.y.z", "x", "y", R"({"x": true})"},
        {R"({"x": null})", "x.y", "x", "y", R"({"x": null})"},
        {R"({"x": null})", "x[*]", "x", "[4294967295]", R"({"x": null})"},
        {R"({"x": {}})", "x[*]", "x", "[4294967295]", R"({"x": {}})"},
        {R"({"x": []})", "x.y", "x", "y", R"({"x": []})"},
        {R"({"x": []})", "x[0]", "x", "[0]", R"({"x": []})"},
        {R"({"x": [1,2,3]})", "x[3]", "x", "[3]", R"({"x": [1,2,3]})"},
        {R"({"x": [1]})", "x[*][0]", "x[1]", "[0]", R"({"x": [1,[]]})"},
        {"null", "a", "", "a", "null"},
        {"5", "[*].a", "", "[4294967295]", "5"},
    };
}

TEST(ElementEdit, create_throws_where_a_step_cannot_be_made_and_keeps_what_was_made) {
    for (const FailingRow& row : failingEdits()) {
        Document document(row.before);
        const auto error =
            thrownBy<PathNotFound>([&] { document.root.create(row.path, Element(9)); });
        EXPECT_EQ(*error.elementPath(), row.element) << row.path;
        EXPECT_EQ(error.path(), row.path);
        EXPECT_EQ(error.key(), row.step) << row.path;
        EXPECT_EQ(compact(document.root), row.after) << row.path;
        CHECK_LINKS(document.root);
    }
}

TEST(ElementEdit, tryCreate_and_tryUpdate_throw_one_error_and_keep_what_was_made) {
    for (const Edit edit : {&Element::tryCreate, &Element::tryUpdate}) {
        for (const FailingRow& row : failingEdits()) {
            Document document(row.before);
            try {
                (document.root.*edit)(row.path, Element(9));
                ADD_FAILURE() << row.path;
            } catch (const Exception& error) {
                EXPECT_EQ(typeid(error), typeid(Exception));
                EXPECT_EQ(error.what(),
                          R"(Error creating element. Parent: "" path: ")" + row.path + '"');
                EXPECT_EQ(*error.elementPath(), "");
            }
            EXPECT_EQ(compact(document.root), row.after) << row.path;
            CHECK_LINKS(document.root);
        }
    }
}

TEST(ElementEdit, tryCreate_names_the_absolute_path_of_the_element_it_started_from) {
    Document document(R"({"a.b": [{"s": "x"}]})");
    Element& start = document.root.get(R"(a\.b[0])");
    const auto error = thrownBy<Exception>([&] { start.tryCreate("s[1].k", Element(1)); });
    EXPECT_STREQ(error.what(), R"(Error creating element. Parent: "a\.b[0]" path: "s[1].k")");
    EXPECT_EQ(*error.elementPath(), R"(a\.b[0])");
}

TEST(ElementEdit, throws_the_parse_error_of_a_malformed_path_in_every_form) {
    for (const Edit edit : {&Element::create, &Element::tryCreate, &Element::tryUpdate}) {
        Document document("{}");
        const auto error =
            thrownBy<ParseException>([&] { (document.root.*edit)("a.b..c", Element(1)); });
        EXPECT_EQ(error.message(),
                  "Unexpected character '.' in path at \"\" 3,4 parser state esObjectInit");
        EXPECT_EQ(error.firstColumn(), 3);
        EXPECT_EQ(error.lastColumn(), 4);
        // The members that came before the error were made, and nothing was put into the last.
        EXPECT_TRUE(document.root.get("a.b").isEmpty());
        CHECK_LINKS(document.root);
    }
}

TEST(ElementEdit, create_makes_containers_of_empty_elements_that_lie_in_the_tree) {
    Element root(Element::k_emptyElement);
    root.create("a", Element::k_emptyElement);
    root.create("l", Element::k_emptyElement);
    root.create("a.b", Element(1));
    root.create("l[*]", Element(2));
    EXPECT_EQ(compact(root), R"({"a": {"b": 1},"l": [2]})");
    CHECK_LINKS(root);
}

TEST(ElementEdit, copies_values_deeply_and_leaves_them_alone) {
    const Document value(R"({"k": [1, {"x": null}], "s": "t"})");
    for (const Edit edit : {&Element::create, &Element::tryCreate, &Element::tryUpdate}) {
        Document document(R"({"o": {"former": 1}})");
        (document.root.*edit)("o", value.root);
        (document.root.*edit)("n.m", value.root);
        const std::string text = compact(value.root);
        EXPECT_EQ(compact(document.root), R"({"o": )" + text + R"(,"n": {"m": )" + text + "}}");
        document.root.get("o.k") = Element(0);
        EXPECT_EQ(compact(value.root), R"({"k": [1,{"x": null}],"s": "t"})");
        CHECK_LINKS_AFTER_COPY(document.root);
    }
}

TEST(ElementEdit, keeps_the_place_of_the_element_that_it_overwrites) {
    Document document(R"({"a": 1, "l": [1, 2, 3], "z": 0})");
    Element& member = document.root.get("a");
    Element& item = document.root.get("l[1]");
    EXPECT_EQ(&document.root.create("a", Element("x")), &member);
    EXPECT_EQ(&document.root.update("l[1]", Element(true)), &item);
    EXPECT_EQ(&document.root.tryUpdate("a", Element(false)), &member);
    EXPECT_EQ(member.path(), "a");
    EXPECT_EQ(item.path(), "l[1]");
    EXPECT_EQ(compact(document.root), R"({"a": false,"l": [1,true,3],"z": 0})");
    CHECK_LINKS(document.root);
}

TEST(ElementEdit, goes_from_the_element_on_which_it_is_called) {
    Document document(R"({"a": {"b": {}}})");
    document.root.get("a.b").create("c.d", Element(1));
    document.root.get("a").tryCreate("e[*]", Element(2));
    document.root.get("a").update("b.c", Element(3));
    document.root.get("a.e").tryUpdate("[*].f", Element(4));
    EXPECT_EQ(compact(document.root), R"({"a": {"b": {"c": 3},"e": [2,{"f": 4}]}})");
    CHECK_LINKS(document.root);
}

TEST(ElementEdit, finds_what_it_made_under_the_keys_it_was_given) {
    Document document("{}");
    const std::string key("\0a.b\\", 5);
    Element& made = document.root.create(std::string("\0a\\.b\\\\", 7), Element(1));
    EXPECT_EQ(made.key(), key);
    EXPECT_TRUE(document.root.object().contains(key));
    EXPECT_EQ(&document.root.get(made.path()), &made);
}

// Update.

TEST(ElementUpdate, overwrites_only_what_is_there) {
    Document document(R"({"a": {"b": 1}, "l": [1, 2]})");
    Element& root = document.root;
    EXPECT_EQ(&root.update("a.b", Element("x")), &root.get("a.b"));
    EXPECT_EQ(&root.update("l[0]", Document("[7]").root), &root.get("l[0]"));
    EXPECT_EQ(compact(root), R"({"a": {"b": "x"},"l": [[7],2]})");
    CHECK_LINKS_AFTER_COPY(root);
}

TEST(ElementUpdate, throws_where_the_path_leads_nowhere_and_changes_nothing) {
    const std::string text = R"({"a": {"b": 1},"l": [1,2]})";
    Document document(text);
    Element& root = document.root;
    const auto noKey = thrownBy<PathNotFound>([&] { root.update("a.c", Element(1)); });
    EXPECT_EQ(*noKey.elementPath(), "a");
    EXPECT_EQ(noKey.path(), "a.c");
    EXPECT_EQ(noKey.key(), "c");
    const auto noItem = thrownBy<PathNotFound>([&] { root.update("l[2]", Element(1)); });
    EXPECT_EQ(*noItem.elementPath(), "l");
    EXPECT_EQ(noItem.key(), "[2]");
    EXPECT_THROW(root.update("a.b.c", Element(1)), PathNotFound);
    const auto star = thrownBy<ParseException>([&] { root.update("l[*]", Element(1)); });
    EXPECT_STREQ(star.what(), "Index must be set!");
    EXPECT_THROW(root.update("l[", Element(1)), ParseException);
    EXPECT_EQ(compact(root), text);
    CHECK_LINKS(root);
}

TEST(ElementUpdate, of_an_empty_path_overwrites_the_element_itself) {
    Document document(R"({"a": 1})");
    EXPECT_EQ(&document.root.update("", Element(2)), &document.root);
    EXPECT_EQ(compact(document.root), "2");
}

TEST(ElementUpdate, with_an_empty_element_makes_the_element_empty) {
    Document document(R"({"a": "x","b": 1})");
    EXPECT_TRUE(document.root.update("a", Element::k_emptyElement).isEmpty());
    EXPECT_TRUE(document.root.tryUpdate("b", Element::k_emptyElement).isEmpty());
    EXPECT_EQ(document.root.object().size(), 2U);
    CHECK_LINKS(document.root);
}

// Insert.

TEST(ElementInsert, takes_the_key_word_for_word) {
    for (const std::string& key :
         {std::string("a.b"), std::string("[0]"), std::string("a[*"), std::string(".."),
          std::string(), std::string("\\"), std::string("a\0\xFF", 3)}) {
        Document document("{}");
        Element& made = document.root.insert(key, Element(1));
        EXPECT_EQ(made.key(), key);
        EXPECT_EQ(document.root.object().size(), 1U);
        EXPECT_EQ(&document.root.object().find(key)->second, &made);
        CHECK_LINKS(document.root);
    }
    Document document("{}");
    document.root.insert("a.b", Element(1));
    EXPECT_EQ(compact(document.root), R"({"a.b": 1})");
}

TEST(ElementInsert, appends_a_new_member_and_overwrites_one_in_its_place) {
    Document document(R"({"b": 1,"a": 2})");
    const Element& former = document.root.get("b");
    EXPECT_EQ(&document.root.insert("b", Element("x")), &former);
    document.root.insert("c", Document("[1]").root);
    EXPECT_EQ(compact(document.root), R"({"b": "x","a": 2,"c": [1]})");
    CHECK_LINKS_AFTER_COPY(document.root);
}

TEST(ElementInsert, throws_a_type_error_on_anything_but_an_object) {
    for (const std::string text : {"[1]", "null", "1", "\"x\"", "true"}) {
        Document document(text);
        const auto error =
            thrownBy<TypeException<EType>>([&] { document.root.insert("a", Element(1)); });
        EXPECT_EQ(error.requested(), etObject);
        EXPECT_EQ(error.got(), document.root.type());
        EXPECT_EQ(compact(document.root), text);
    }
    Document document(R"({"l": []})");
    const auto error =
        thrownBy<TypeException<EType>>([&] { document.root.get("l").insert("a", Element(1)); });
    EXPECT_STREQ(error.what(),
                 "Json type mismatch! Requestet Json type: etObject Got Json type: etArray "
                 "Current element: \"l\"");
    Element empty(Element::k_emptyElement);
    EXPECT_THROW(empty.insert("a", Element(1)), TypeException<EType>);
    EXPECT_TRUE(empty.isEmpty());
}

}  // namespace
}  // namespace orvid_test
