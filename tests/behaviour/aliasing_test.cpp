// SPDX-License-Identifier: MIT
//
// Edits whose value lies in the edited tree: the element itself, one below it, one above it, one
// that the edit destroys. What the value was before the call counts. Run with the address
// sanitizer, these tests also show that nothing is read after it was freed.

#include <ko/Orvid.h>

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "support/Document.h"

namespace orvid_test {
namespace {

using ko::Orvid::Element;
using ko::Orvid::Path;

/// The element at `from` is the value of an edit at `path`.
struct Row {
    std::string before;
    std::string path;
    std::string from;
    std::string after;
};

using Edit = Element& (Element::*)(const Path&, const Element&);

void expectAfter(const std::vector<Edit>& edits, const std::vector<Row>& rows) {
    for (const Edit edit : edits) {
        for (const Row& row : rows) {
            Document document(row.before);
            Element& target = (document.root.*edit)(row.path, document.root.get(row.from));
            EXPECT_EQ(compact(document.root), row.after) << row.path << " from " << row.from;
            EXPECT_EQ(target.root(), &document.root);
            CHECK_LINKS_AFTER_COPY(document.root);
        }
    }
}

const std::vector<Edit> k_overwriting = {&Element::update, &Element::tryUpdate, &Element::create,
                                         &Element::tryCreate};
const std::vector<Edit> k_making = {&Element::tryUpdate, &Element::create, &Element::tryCreate};

TEST(Aliasing, an_element_takes_its_own_value) {
    expectAfter(k_overwriting, {
                                   {R"({"a": {"b": [1]}})", "a", "a", R"({"a": {"b": [1]}})"},
                                   {R"({"a": [1,{"b": 2}]})", "a", "a", R"({"a": [1,{"b": 2}]})"},
                                   {R"({"a": "text"})", "a", "a", R"({"a": "text"})"},
                                   {R"({"a": 1.50})", "a", "a", R"({"a": 1.50})"},
                                   {R"({"a": null})", "a", "a", R"({"a": null})"},
                                   {R"({"a": 1})", "", "", R"({"a": 1})"},
                                   {"[1,2]", "[1]", "[1]", "[1,2]"},
                               });
}

TEST(Aliasing, an_element_takes_the_value_of_its_descendant) {
    expectAfter(k_overwriting,
                {
                    {R"({"a": {"b": {"c": 1}}})", "a", "a.b", R"({"a": {"c": 1}})"},
                    {R"({"a": {"b": [1,{"c": 2}]}})", "a", "a.b", R"({"a": [1,{"c": 2}]})"},
                    {R"({"a": {"b": "text"}})", "a", "a.b", R"({"a": "text"})"},
                    {R"({"a": {"b": 1.50}})", "a", "a.b", R"({"a": 1.50})"},
                    {R"({"a": {"b": null}})", "a", "a.b", R"({"a": null})"},
                    {R"({"a": {"b": true}})", "a", "a.b", R"({"a": true})"},
                    {"[[1,[2]],3]", "", "[0][1]", "[2]"},
                    {"[[[4]]]", "[0]", "[0][0]", "[[4]]"},
                    {R"({"a": {"a": {"a": {}}}})", "", "a.a", R"({"a": {}})"},
                });
}

TEST(Aliasing, an_element_takes_the_value_of_its_ancestor) {
    expectAfter(k_overwriting,
                {
                    {R"({"a": {"b": 1}})", "a.b", "a", R"({"a": {"b": {"b": 1}}})"},
                    {R"({"a": {"b": 1}})", "a.b", "", R"({"a": {"b": {"a": {"b": 1}}}})"},
                    {R"({"a": {"b": {"c": 1}}})", "a.b", "a", R"({"a": {"b": {"b": {"c": 1}}}})"},
                    {"[[1]]", "[0]", "", "[[[1]]]"},
                    {"[[1]]", "[0][0]", "", "[[[[1]]]]"},
                });
}

TEST(Aliasing, an_element_takes_the_value_of_another_in_the_tree) {
    expectAfter(k_overwriting, {
                                   {R"({"a": [1,{"x": 2}],"b": {"c": 3}})", "b", "a",
                                    R"({"a": [1,{"x": 2}],"b": [1,{"x": 2}]})"},
                                   {R"({"a": {"x": 2},"b": {"c": 3}})", "b", "a",
                                    R"({"a": {"x": 2},"b": {"x": 2}})"},
                                   {R"(["a","b"])", "[0]", "[1]", R"(["b","b"])"},
                                   {"[1,2]", "[0]", "[1]", "[2,2]"},
                               });
}

TEST(Aliasing, a_new_element_takes_the_value_that_was_there_before_it_was_made) {
    expectAfter(k_making,
                {
                    {R"({"a": 1})", "b", "", R"({"a": 1,"b": {"a": 1}})"},
                    {R"({"a": 1})", "b.c.d", "", R"({"a": 1,"b": {"c": {"d": {"a": 1}}}})"},
                    {R"({"a": 1})", "b", "a", R"({"a": 1,"b": 1})"},
                    {"[1]", "[*]", "", "[1,[1]]"},
                    {"[1]", "[*]", "[0]", "[1,1]"},
                    {"[[1]]", "[0][*]", "[0]", "[[1,[1]]]"},
                    {"[[1]]", "[0][*][*]", "", "[[1,[[[1]]]]]"},
                });
}

TEST(Aliasing, an_empty_element_is_the_value_of_what_is_made_below_it) {
    for (const Edit edit : k_making) {
        Element root(Element::k_emptyElement);
        Element& made = (root.*edit)("a[*]", root);
        EXPECT_TRUE(made.isEmpty());
        EXPECT_EQ(made.path(), "a[0]");
        CHECK_LINKS(root);
    }
}

TEST(Aliasing, creating_with_the_very_element_changes_nothing_not_even_what_it_owns) {
    Document document(R"({"a": {"b": [1,2]}})");
    Element& element = document.root.get("a.b");
    const Element* const item = &element.array()[1];
    const std::vector<Edit> edits = {&Element::create, &Element::tryCreate, &Element::update};
    for (const Edit edit : edits) {
        EXPECT_EQ(&(document.root.*edit)("a.b", element), &element);
        EXPECT_EQ(&element.array()[1], item);
        CHECK_LINKS(document.root);
    }
}

TEST(Aliasing, insert_takes_a_member_of_the_object_and_the_object_itself) {
    expectAfter({&Element::insert},
                {
                    {R"({"a": {"x": [1]}})", "a", "a", R"({"a": {"x": [1]}})"},
                    {R"({"a": {"x": [1]}})", "a", "a.x", R"({"a": [1]})"},
                    {R"({"a": {"a": {"a": 1}}})", "a", "a.a", R"({"a": {"a": 1}})"},
                    {R"({"a": "t","b": 1})", "b", "a", R"({"a": "t","b": "t"})"},
                    {R"({"a": 1})", "b", "", R"({"a": 1,"b": {"a": 1}})"},
                    {R"({"a": 1})", "a", "", R"({"a": {"a": 1}})"},
                });
}

TEST(Aliasing, assignment_takes_values_from_above_and_below) {
    Document document(R"({"a": {"b": {"c": [1]}}})");
    Element& root = document.root;
    root.get("a") = root.get("a.b");
    EXPECT_EQ(compact(root), R"({"a": {"c": [1]}})");
    CHECK_LINKS_AFTER_COPY(root);
    root.get("a.c") = root;
    EXPECT_EQ(compact(root), R"({"a": {"c": {"a": {"c": [1]}}}})");
    CHECK_LINKS_AFTER_COPY(root);
    root = root.get("a.c.a.c");
    EXPECT_EQ(compact(root), "[1]");
    CHECK_LINKS_AFTER_COPY(root);
    root = std::as_const(root);
    EXPECT_EQ(compact(root), "[1]");
}

// Containers.

TEST(Aliasing, push_back_takes_an_item_of_the_array_a_part_of_one_and_the_array_itself) {
    Document document(R"([{"x": [1]}])");
    Element& root = document.root;
    root.array().push_back(root.array()[0]);
    EXPECT_EQ(compact(root), R"([{"x": [1]},{"x": [1]}])");
    CHECK_LINKS_AFTER_COPY(root);
    root.array().push_back(root.get("[1].x"));
    EXPECT_EQ(compact(root), R"([{"x": [1]},{"x": [1]},[1]])");
    CHECK_LINKS_AFTER_COPY(root);
    root.array().push_back(root);
    EXPECT_EQ(compact(root), R"([{"x": [1]},{"x": [1]},[1],[{"x": [1]},{"x": [1]},[1]]])");
    CHECK_LINKS_AFTER_COPY(root);
}

TEST(Aliasing, an_object_takes_its_own_members_in_both_forms_of_insert) {
    Document document(R"({"a": {"a": [1]}, "b": 2})");
    Element::TObject& object = document.root.object();
    object.insert(*object.begin());
    EXPECT_EQ(compact(document.root), R"({"a": {"a": [1]},"b": 2})");
    CHECK_LINKS_AFTER_COPY(document.root);
    object.insert(object.end(), *object.begin());
    EXPECT_EQ(compact(document.root), R"({"a": {"a": [1]},"b": 2})");
    object.insert(*document.root.get("a").object().begin());
    EXPECT_EQ(compact(document.root), R"({"a": [1],"b": 2})");
    CHECK_LINKS_AFTER_COPY(document.root);
}

TEST(Aliasing, a_container_is_assigned_one_that_lies_in_it) {
    Document arrays("[[[1],2],3]");
    arrays.root.array() = arrays.root.get("[0]").array();
    EXPECT_EQ(compact(arrays.root), "[[1],2]");
    CHECK_LINKS_AFTER_COPY(arrays.root);
    Document objects(R"({"a": {"b": {"c": 1}}})");
    objects.root.object() = objects.root.get("a").object();
    EXPECT_EQ(compact(objects.root), R"({"b": {"c": 1}})");
    CHECK_LINKS_AFTER_COPY(objects.root);
}

// Removing and finding.

TEST(Aliasing, remove_takes_an_item_that_it_destroys) {
    const std::vector<Row> rows = {
        {"[1,2,1]", "", "[0]", "[2]"},
        {"[1,2,1]", "", "[2]", "[2]"},
        {R"(["x",0,"x",0,"x"])", "", "[0]", "[0,0]"},
        {"[[1],[2],[1]]", "", "[0]", "[[2]]"},
        {R"([{"id": 1},{"id": 2},{"id": 1}])", "id", "[0].id", R"([{"id": 2}])"},
        {R"([{"id": 1},1,{"id": 1}])", "id", "[1]", "[1]"},
    };
    for (const Row& row : rows) {
        Document document(row.before);
        document.root.remove(document.root.get(row.from), row.path);
        EXPECT_EQ(compact(document.root), row.after) << row.from;
        CHECK_LINKS(document.root);
        Document again(row.before);
        again.root.tryRemove(again.root.get(row.from), row.path);
        EXPECT_EQ(compact(again.root), row.after) << row.from;
        CHECK_LINKS(again.root);
    }
}

TEST(Aliasing, remove_of_the_array_itself_removes_nothing) {
    Document document(R"({"l": [1,[1]]})");
    document.root.remove(document.root.get("l"), "", "l");
    EXPECT_EQ(compact(document.root), R"({"l": [1,[1]]})");
    CHECK_LINKS(document.root);
}

TEST(Aliasing, find_finds_the_item_that_it_was_given_or_an_equal_one_before_it) {
    Document document(R"([1,{"a": [2]},3,{"a": [2]}])");
    Element& root = document.root;
    EXPECT_EQ(root.find(root.array()[1]), &root.array()[1]);
    EXPECT_EQ(root.find(root.array()[3]), &root.array()[1]);
    EXPECT_EQ(root.find(root.get("[3].a"), "a"), &root.array()[1]);
    EXPECT_EQ(&root.tryFind(root.array()[2], root), &root.array()[2]);
    EXPECT_EQ(&root.tryFind(root, root.array()[2]), &root.array()[2]);
    EXPECT_EQ(compact(root), R"([1,{"a": [2]},3,{"a": [2]}])");
}

// Setters.

TEST(Aliasing, setters_take_the_payload_of_a_descendant) {
    Document document(R"({"a": {"s": "some text longer than any small buffer", "n": 1.50}})");
    Element& root = document.root;
    Element copy(root.get("a"));
    copy.setString(copy.get("s").string());
    EXPECT_EQ(compact(copy), R"("some text longer than any small buffer")");
    copy = root.get("a");
    const std::string& text = copy.get("s").string();
    copy.setString(text.data() + 5, 4);
    EXPECT_EQ(compact(copy), R"("text")");
    copy = root.get("a");
    copy.setNumber(copy.get("n").number());
    EXPECT_EQ(compact(copy), "1.50");
    copy = root.get("a");
    const std::string& digits = copy.get("n").number().toString();
    copy.setNumber(digits.data(), static_cast<unsigned int>(digits.size()));
    EXPECT_EQ(compact(copy), "1.50");
    root.get("a").setBoolean(root.get("a.n").isNumber());
    EXPECT_EQ(compact(root), R"({"a": true})");
    CHECK_LINKS(root);
}

TEST(Aliasing, setters_take_their_own_payload) {
    Element text("0123456789");
    text.setString(text.string());
    EXPECT_EQ(text.string(), "0123456789");
    text.setString(text.string().data() + 3, 4);
    EXPECT_EQ(text.string(), "3456");
    Element number;
    number.setNumber("12.50", 5);
    number.setNumber(number.number());
    EXPECT_EQ(number.number().toString(), "12.50");
    const std::string& digits = number.number().toString();
    number.setNumber(digits.data(), 2);
    EXPECT_EQ(number.number().toString(), "12");
}

TEST(Aliasing, a_path_may_be_text_of_the_tree_that_it_changes) {
    Document document(R"({"p": "p"})");
    document.root.update(document.root.get("p").string(), Element("q"));
    EXPECT_EQ(compact(document.root), R"({"p": "q"})");
    document.root.create(document.root.get("p").string(), document.root.get("p"));
    EXPECT_EQ(compact(document.root), R"({"p": "q","q": "q"})");
    CHECK_LINKS(document.root);
}

}  // namespace
}  // namespace orvid_test
