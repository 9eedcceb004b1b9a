// SPDX-License-Identifier: MIT
//
// Edits that throw half-way: what they had made stays, what was there is as it was, all links hold,
// and the tree can be edited on.

#include <ko/Orvid.h>

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "support/Document.h"

namespace orvid_test {
namespace {

using ko::Orvid::Element;
using ko::Orvid::EType;
using ko::Orvid::Exception;
using ko::Orvid::ParseException;
using ko::Orvid::Path;
using ko::Orvid::PathNotFound;
using ko::Orvid::TypeException;

using Edit = Element& (Element::*)(const Path&, const Element&);

const std::vector<Edit> k_making = {&Element::create, &Element::tryCreate, &Element::tryUpdate};

struct Row {
    std::string before;
    std::string path;
    std::string after;
};

/// Edits the tree at a path on which one step cannot be made, and then at others.
void failAndGoOn(const Row& row, Edit edit) {
    Document document(row.before);
    Element& root = document.root;
    EXPECT_THROW((root.*edit)(row.path, Document("[1,2]").root), Exception) << row.path;
    EXPECT_EQ(compact(root), row.after) << row.path;
    CHECK_LINKS(root);
    root.create("later.l[*]", Element("x"));
    root.remove(Element("x"), "", "later.l");
    EXPECT_EQ(compact(root.get("later")), R"({"l": []})");
    CHECK_LINKS(root);
}

TEST(FailedEdit, keeps_what_the_steps_before_the_failing_one_made) {
    const std::vector<Row> rows = {
        {"{}", "a.b.c[0].d", R"({"a": {"b": {"c": []}}})"},
        {"{}", "a[*].b[*][1].c", R"({"a": [{"b": [[]]}]})"},
        {R"({"a": {"b": [{"c": "x"}]}})", "a.b[0].c.d", R"({"a": {"b": [{"c": "x"}]}})"},
        {R"({"a": [1,2]})", "a[*][*].x[3]", R"({"a": [1,2,[{"x": []}]]})"},
        {R"({"a": [1,2]})", "a[2]", R"({"a": [1,2]})"},
        {R"({"a": {"b": null}})", "a.b.c", R"({"a": {"b": null}})"},
        {R"({"a": {"b": null}})", "a.c.d.e[7]", R"({"a": {"b": null,"c": {"d": {"e": []}}}})"},
    };
    for (const Edit edit : k_making) {
        for (const Row& row : rows) {
            failAndGoOn(row, edit);
        }
    }
}

TEST(FailedEdit, keeps_the_empty_elements_made_before_an_error_in_the_path_text) {
    for (const Edit edit : k_making) {
        for (const std::string path : {"a.b..", "a.b[", "a.b[x]", "a.b.]"}) {
            Document document("{}");
            EXPECT_THROW((document.root.*edit)(path, Element(1)), ParseException) << path;
            const Element& last = document.root.get("a.b");
            EXPECT_TRUE(last.isEmpty()) << path;
            CHECK_LINKS(document.root);
            document.root.create("a.b.c", Element(1));
            EXPECT_EQ(compact(document.root), R"({"a": {"b": {"c": 1}}})");
            CHECK_LINKS(document.root);
        }
    }
}

TEST(FailedEdit, with_an_unreadable_index_fails_before_the_array_is_made) {
    for (const Edit edit : k_making) {
        Document document("{}");
        EXPECT_THROW((document.root.*edit)("a[4294967296]", Element(1)), ParseException);
        EXPECT_TRUE(document.root.get("a").isEmpty());
        CHECK_LINKS(document.root);
    }
}

TEST(FailedEdit, of_a_value_from_the_tree_leaves_the_value_alone) {
    for (const Edit edit : k_making) {
        Document document(R"({"v": {"x": [1]}})");
        Element& root = document.root;
        EXPECT_THROW((root.*edit)("v.y[0]", root.get("v")), Exception);
        EXPECT_EQ(compact(root), R"({"v": {"x": [1],"y": []}})");
        EXPECT_THROW((root.*edit)("v.x[0].z", root), Exception);
        EXPECT_EQ(compact(root), R"({"v": {"x": [1],"y": []}})");
        CHECK_LINKS(root);
    }
}

TEST(FailedEdit, says_where_it_stopped_although_the_tree_has_grown) {
    Document document(R"({"a.b": [0]})");
    const auto error =
        thrownBy<PathNotFound>([&] { document.root.create(R"(a\.b[*].c[5].d)", Element(1)); });
    EXPECT_EQ(*error.elementPath(), R"(a\.b[1].c)");
    EXPECT_EQ(error.key(), "[5]");
    CHECK_LINKS(document.root);
}

TEST(FailedEdit, changes_nothing_when_it_makes_nothing) {
    const std::string text = R"({"a": {"b": [1,{"c": "x"}]},"n": 1})";
    using Action = std::function<void(Element&)>;
    const std::vector<Action> actions = {
        [](Element& root) { root.update("a.b[2]", Element(1)); },
        [](Element& root) { root.update("a.x.y", root); },
        [](Element& root) { root.update("a.b[*]", Element(1)); },
        [](Element& root) { root.update("a..", Element(1)); },
        [](Element& root) { root.remove(Element(1), "", "a.x"); },
        [](Element& root) { root.remove(root.get("n"), "", "n"); },
        [](Element& root) { root.remove(Element(1), "", "a.b[*]"); },
        [](Element& root) { root.find(Element(1), "", "a"); },
        [](Element& root) { root.get("a.b").insert("k", root); },
        [](Element& root) { root.get("n").create("k", Element(1)); },
        [](Element& root) { root.get("n").tryCreate("[*]", Element(1)); },
        [](Element& root) { root.get("n").tryUpdate("k.l", Element(1)); },
        [](Element& root) { root.get("a.b[1].c").array(); },
    };
    for (const Action& action : actions) {
        Document document(text);
        EXPECT_THROW(action(document.root), Exception);
        EXPECT_EQ(compact(document.root), text);
        CHECK_LINKS(document.root);
    }
}

TEST(FailedEdit, of_one_array_item_does_not_end_the_removal_of_the_others) {
    Document document(R"([{"id": 1},{"no": 1},"x",{"id": 2},{"id": 1},{"no": 2}])");
    document.root.remove(Element(1), "id");
    EXPECT_EQ(compact(document.root), R"([{"no": 1},"x",{"id": 2},{"no": 2}])");
    CHECK_LINKS(document.root);
}

}  // namespace
}  // namespace orvid_test
