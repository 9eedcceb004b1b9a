// SPDX-License-Identifier: MIT
//
// Moving and swapping values: children keep their addresses, links are right at once, what was
// moved from is null and usable. Copying is in Element_test.cpp.

#include <ko/Orvid/Element.h>

#include <gtest/gtest.h>
#include <ko/Orvid/Array.h>
#include <ko/Orvid/Dom.h>
#include <ko/Orvid/Object.h>

#include <algorithm>
#include <iterator>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "support/Document.h"

namespace {

using ko::Orvid::Dom;
using ko::Orvid::Element;
using ko::Orvid::Number;
using orvid_test::compact;
using orvid_test::Document;

static_assert(std::is_nothrow_move_constructible_v<Element>);
static_assert(std::is_nothrow_move_constructible_v<Element::TArray>);
static_assert(std::is_nothrow_move_constructible_v<Element::TObject>);
static_assert(std::is_nothrow_move_constructible_v<Number>);
static_assert(std::is_nothrow_move_constructible_v<Dom>);

const char* const k_text = R"({"list": [1, [2, 3], {"x": true}], "name": "n"})";

TEST(ElementMove, construction_takes_the_tree_with_its_addresses) {
    Document document(k_text);
    const Element* const inner = &document.root.get("list[1]");
    const std::string before = compact(document.root);

    Element moved(std::move(document.root));

    EXPECT_EQ(compact(moved), before);
    EXPECT_EQ(&moved.get("list[1]"), inner);
    EXPECT_EQ(inner->root(), &moved);
    CHECK_LINKS(moved);
    EXPECT_TRUE(document.root.isNull());
}

TEST(ElementMove, the_source_can_be_used_again) {
    Document document(k_text);
    const Element moved(std::move(document.root));
    document.root = "again";
    EXPECT_EQ(document.root.string(), "again");
    document.root = moved;
    EXPECT_EQ(compact(document.root), compact(moved));
    CHECK_LINKS_AFTER_COPY(document.root);
}

TEST(ElementMove, every_type_moves) {
    for (const char* text : {"null", "true", "12345678901234567890.5e-3", "\"text\"", "[]", "{}"}) {
        Document source(text);
        Element target = 7;
        target = std::move(source.root);
        EXPECT_EQ(compact(target), text);
        EXPECT_TRUE(source.root.isNull()) << text;
        CHECK_LINKS(target);
    }
}

TEST(ElementMove, assignment_keeps_the_place_of_the_target_and_of_the_source) {
    Document document(R"({"a": {"k": [1, 2]}, "b": [0, {"deep": 5}]})");
    document.root.get("b[0]") = std::move(document.root.get("a.k"));
    EXPECT_EQ(compact(document.root), R"({"a": {"k": null},"b": [[1,2],{"deep": 5}]})");
    EXPECT_EQ(document.root.get("b[0][1]").path(), "b[0][1]");
    EXPECT_EQ(document.root.get("a.k").path(), "a.k");
    CHECK_LINKS(document.root);
}

TEST(ElementMove, from_a_part_of_the_target) {
    Document document(R"({"a": {"b": [1, {"c": 2}]}})");
    document.root = std::move(document.root.get("a.b"));
    EXPECT_EQ(compact(document.root), R"([1,{"c": 2}])");
    CHECK_LINKS(document.root);
}

TEST(ElementMove, into_a_part_of_the_source_copies) {
    Document document(R"({"a": {"b": 1}})");
    document.root.get("a.b") = std::move(document.root);
    EXPECT_EQ(compact(document.root), R"({"a": {"b": {"a": {"b": 1}}}})");
    CHECK_LINKS(document.root);
}

TEST(ElementMove, onto_itself_changes_nothing) {
    Document document(k_text);
    Element& same = document.root;
    document.root = std::move(same);
    EXPECT_EQ(compact(document.root), compact(Document(k_text).root));
    CHECK_LINKS(document.root);
}

TEST(ElementMove, vectors_of_elements_grow_without_copies) {
    std::vector<Element> elements(1);
    elements[0] = Document("[1, [2]]").root;
    const Element* const child = &elements[0].get("[1]");
    elements.reserve(elements.capacity() + 100);
    EXPECT_EQ(&elements[0].get("[1]"), child);
    CHECK_LINKS_AFTER_COPY(elements[0]);
}

TEST(ElementMove, a_move_iterator_empties_the_items) {
    Document document("[[1], [2, 3]]");
    Element::TArray& items = document.root.array();
    const std::vector<Element> taken(std::make_move_iterator(items.begin()),
                                     std::make_move_iterator(items.end()));
    ASSERT_EQ(taken.size(), 2U);
    EXPECT_EQ(compact(taken[1]), "[2,3]");
    EXPECT_EQ(compact(document.root), "[null,null]");
    CHECK_LINKS(taken[1]);
    CHECK_LINKS(document.root);
}

TEST(ElementMove, swap_exchanges_values_and_leaves_places) {
    Document document(R"({"a": [1, 2], "b": {"c": [3]}})");
    Element& a = document.root.get("a");
    Element& b = document.root.get("b");
    const Element* const item = &a.get("[1]");
    swap(a, b);
    EXPECT_EQ(compact(document.root), R"({"a": {"c": [3]},"b": [1,2]})");
    EXPECT_EQ(item->path(), "b[1]");
    CHECK_LINKS(document.root);
    a.swap(a);
    EXPECT_EQ(compact(a), R"({"c": [3]})");
}

TEST(ElementMove, swap_with_a_part_puts_the_part_in_place_of_the_whole) {
    for (const bool isPartFirst : {false, true}) {
        Document document(R"({"a": {"b": [1, 2]}})");
        Element& whole = document.root.get("a");
        Element& part = document.root.get("a.b");
        if (isPartFirst) {
            part.swap(whole);
        } else {
            whole.swap(part);
        }
        EXPECT_EQ(compact(document.root), R"({"a": [1,2]})");
        CHECK_LINKS(document.root);
    }
}

TEST(ArrayMove, items_follow_into_another_array) {
    Document source("[1, [2], 3]");
    Document target("[4]");
    const Element* const item = &source.root.get("[1]");
    target.root.array() = std::move(source.root.array());
    EXPECT_EQ(compact(target.root), "[1,[2],3]");
    EXPECT_EQ(item->parent(), &target.root);
    EXPECT_EQ(compact(source.root), "[]");
    CHECK_LINKS(target.root);
    source.root.array().emplace_back(Element(5));
    EXPECT_EQ(compact(source.root), "[5]");
    CHECK_LINKS(source.root);
}

TEST(ArrayMove, a_free_standing_array_is_no_parent) {
    Document source("[1, 2]");
    Element::TArray items(std::move(source.root.array()));
    ASSERT_EQ(items.size(), 2U);
    EXPECT_EQ(items[1].parent(), nullptr);
    EXPECT_EQ(items[1].index(), 1U);
    items.setParent(&source.root);
    EXPECT_EQ(items[1].parent(), &source.root);
}

TEST(ArrayMove, from_within_itself) {
    Document document("[[1, 2, 3, 4, 5], 6]");
    document.root.array() = std::move(document.root.get("[0]").array());
    EXPECT_EQ(compact(document.root), "[1,2,3,4,5]");
    CHECK_LINKS(document.root);
}

TEST(ArrayMove, emplace_back_takes_the_value) {
    Document document("[1]");
    Element value = Document("[2, [3]]").root;
    const Element* const child = &value.get("[1]");
    Element& item = document.root.array().emplace_back(std::move(value));
    EXPECT_EQ(&item.get("[1]"), child);
    EXPECT_TRUE(value.isNull());  // NOLINT(bugprone-use-after-move): what is left is the test
    EXPECT_EQ(compact(document.root), "[1,[2,[3]]]");
    CHECK_LINKS_AFTER_COPY(document.root);
}

TEST(ArrayMove, algorithms_work_on_the_items) {
    Document document("[3, 1, 2]");
    const Element::TArray& items = document.root.array();
    EXPECT_EQ(std::min_element(items.begin(), items.end())->index(), 1U);
    EXPECT_EQ(std::find(items.begin(), items.end(), Element(2))->index(), 2U);
}

TEST(ObjectMove, members_follow_into_another_object) {
    Document source(R"({"a": [1], "b": {"c": 2}})");
    Document target(R"({"x": 0})");
    const Element* const member = &source.root.get("b.c");
    target.root.object() = std::move(source.root.object());
    EXPECT_EQ(compact(target.root), R"({"a": [1],"b": {"c": 2}})");
    EXPECT_EQ(member->path(), "b.c");
    EXPECT_EQ(member->root(), &target.root);
    EXPECT_EQ(compact(source.root), "{}");
    CHECK_LINKS(target.root);
    source.root.object().resetMember("again");
    EXPECT_EQ(compact(source.root), R"({"again": null})");
    CHECK_LINKS(source.root);
}

TEST(ObjectMove, many_members_are_found_afterwards) {
    std::string text = "{";
    for (int i = 0; i < 200; ++i) {
        text += (i == 0 ? "\"k" : ",\"k") + std::to_string(i) + "\":" + std::to_string(i);
    }
    Document source(text + "}");
    Element target(std::move(source.root));
    EXPECT_EQ(target.get("k137").to<int>(), 137);
    EXPECT_EQ(target.object().size(), 200U);
    CHECK_LINKS(target);
}

TEST(ObjectMove, insert_or_assign_keeps_the_place_of_a_present_key) {
    Document document(R"({"a": 1, "b": 2})");
    const auto replaced = document.root.object().insert_or_assign("a", Element("new"));
    const auto added = document.root.object().insert_or_assign("c", Element(3));
    EXPECT_FALSE(replaced.second);
    EXPECT_TRUE(added.second);
    EXPECT_EQ(compact(document.root), R"({"a": "new","b": 2,"c": 3})");
    CHECK_LINKS(document.root);
}

TEST(ObjectMove, structured_bindings_name_key_and_value) {
    Document document(R"({"a": 1, "b": 2})");
    std::string seen;
    for (auto& [key, value] : document.root.object()) {
        seen += key;
        value = value.to<int>() * 10;
    }
    EXPECT_EQ(seen, "ab");
    EXPECT_EQ(compact(document.root), R"({"a": 10,"b": 20})");
    CHECK_LINKS(document.root);
}

// A one-sided exchange leaves items that name their former parent; new ones and moves go right.
TEST(ArrayMove, items_added_after_a_one_sided_swap_name_the_new_parent) {
    Document a("[1]");
    Document b("[2]");
    a.root.array().swap(b.root.array());
    b.root.array().appendNull();
    EXPECT_EQ(b.root.array()[0].parent(), &a.root);
    EXPECT_EQ(b.root.array()[1].parent(), &b.root);
    b.root.array().setParent(&b.root);
    CHECK_LINKS(b.root);
    Element moved(std::move(b.root));
    EXPECT_EQ(compact(moved), "[1,null]");
    CHECK_LINKS(moved);
    CHECK_LINKS(a.root);
}

TEST(DomMove, the_moved_from_document_can_be_used_again) {
    Dom document;
    document.setRoot(*new Element("x"), true);
    document.setMetaKey("info");
    const Dom moved(std::move(document));
    EXPECT_EQ(moved.metaKey(), "info");
    EXPECT_EQ((*moved).string(), "x");
    // NOLINTNEXTLINE(bugprone-use-after-move): what is left is the test
    EXPECT_EQ(document.root(), nullptr);
    EXPECT_EQ(document.metaKey(), "meta");
    EXPECT_FALSE(document.ownsRoot());
}

TEST(ElementMove, assignment_keeps_a_payload_of_the_same_type) {
    Element text("old");
    const std::string& string = text.string();
    text = "new";
    EXPECT_EQ(string, "new");
    EXPECT_EQ(&text.string(), &string);

    Element number(1);
    const Number& held = number.number();
    const std::string& digits = held.toString();
    number = 2.5;
    EXPECT_EQ(digits, "2.5");
    EXPECT_EQ(&number.number(), &held);
}

TEST(ElementMove, assignment_keeps_a_container_of_the_same_type) {
    Document array("[1, [2]]");
    const Element::TArray& items = array.root.array();
    Document otherArray("[3, {\"k\": 4}]");
    const Element* const inner = &otherArray.root.get("[1]");
    array.root = std::move(otherArray.root);
    EXPECT_EQ(&array.root.array(), &items);
    EXPECT_EQ(&array.root.get("[1]"), inner);
    EXPECT_EQ(inner->root(), &array.root);
    EXPECT_EQ(orvid_test::compact(array.root), "[3,{\"k\": 4}]");
    EXPECT_TRUE(otherArray.root.isNull());  // NOLINT(bugprone-use-after-move): what is left
    CHECK_LINKS(array.root);

    Document object("{\"a\": 1}");
    const Element::TObject& members = object.root.object();
    object.root = Document("{\"b\": [2], \"c\": {}}").root;
    object.root = Element(object.root);
    EXPECT_EQ(&object.root.object(), &members);
    EXPECT_EQ(object.root.get("b[0]").root(), &object.root);
    CHECK_LINKS(object.root);
}

TEST(ElementMove, a_part_of_the_same_type_takes_the_place_of_the_whole) {
    Document array("[0, [1, [2, 3]], 4]");
    const Element::TArray& items = array.root.array();
    array.root = std::move(array.root.get("[1]"));
    EXPECT_EQ(orvid_test::compact(array.root), "[1,[2,3]]");
    EXPECT_EQ(&array.root.array(), &items);
    CHECK_LINKS(array.root);
    array.root = std::move(array.root.get("[1]"));
    EXPECT_EQ(orvid_test::compact(array.root), "[2,3]");
    CHECK_LINKS(array.root);

    Document object("{\"a\": {\"b\": {\"c\": 1}}}");
    object.root = std::move(object.root.get("a"));
    EXPECT_EQ(object.root.get("b.c").path(), "b.c");
    CHECK_LINKS(object.root);
}

}  // namespace
