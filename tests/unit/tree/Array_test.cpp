// SPDX-License-Identifier: MIT
//
// Tests of Array: the places of its items through every operation, copies of them, and edits whose
// argument lies in the array that is edited.

#include <ko/Orvid/Array.h>

#include <algorithm>
#include <memory>
#include <type_traits>
#include <utility>

#include "support/Document.h"

namespace {

using ko::Orvid::Element;
using orvid_test::compact;
using orvid_test::Document;
using TArray = Element::TArray;
using Indexes = std::vector<unsigned int>;

Indexes indexesOf(const TArray& array) {
    Indexes indexes;
    for (const Element& item : array) {
        indexes.push_back(item.index());
    }
    return indexes;
}

/// The parent that all items name; null when one of them names another.
const Element* parentOf(const TArray& array) {
    const Element* const parent = array.empty() ? nullptr : array.front().parent();
    const bool agree = std::all_of(array.begin(), array.end(),
                                   [=](const Element& item) { return item.parent() == parent; });
    return agree ? parent : nullptr;
}

TEST(Array, is_empty_and_without_parent_when_new) {
    const TArray array;
    EXPECT_TRUE(array.empty());
    EXPECT_EQ(array.parent(), nullptr);
}

TEST(Array, push_back_onto_an_empty_array_gives_index_0_and_the_parent) {
    Document doc("[]");
    doc.root.array().push_back("x");
    EXPECT_EQ(compact(doc.root), R"(["x"])");
    EXPECT_EQ(doc.root.array()[0].index(), 0u);
    EXPECT_EQ(doc.root.array()[0].key(), "[0]");
    EXPECT_EQ(doc.root.array()[0].parent(), &doc.root);
    CHECK_LINKS(doc.root);
}

TEST(Array, push_back_numbers_items_in_their_order) {
    Document doc("[1]");
    doc.root.array().push_back(2);
    doc.root.array().push_back(Element());
    EXPECT_EQ(compact(doc.root), "[1,2,null]");
    EXPECT_EQ(indexesOf(doc.root.array()), (Indexes{0, 1, 2}));
    CHECK_LINKS(doc.root);
}

TEST(Array, push_back_takes_a_deep_copy) {
    Document doc("[]");
    Document item(R"({"a":{"b":[1]}})");
    doc.root.array().push_back(item.root);
    item.root.get("a.b").array().push_back(2);
    EXPECT_EQ(compact(doc.root), R"([{"a": {"b": [1]}}])");
    EXPECT_EQ(doc.root.get("[0].a.b[0]").path(), "[0].a.b[0]");
    CHECK_LINKS(doc.root);
}

TEST(Array, push_back_forgets_the_key_under_which_the_value_stood) {
    Document doc(R"({"from":{"name":1},"to":[]})");
    doc.root.get("to").array().push_back(doc.root.get("from.name"));
    EXPECT_EQ(compact(doc.root), R"({"from": {"name": 1},"to": [1]})");
    EXPECT_EQ(doc.root.get("to[0]").key(), "[0]");
    CHECK_LINKS(doc.root);
}

TEST(Array, push_back_of_the_element_that_holds_the_array_copies_it_as_it_was) {
    Document doc("[1,[2]]");
    doc.root.array().push_back(doc.root);
    EXPECT_EQ(compact(doc.root), "[1,[2],[1,[2]]]");
    CHECK_LINKS_AFTER_COPY(doc.root);
}

TEST(Array, push_back_takes_an_item_of_its_own) {
    Document doc(R"([{"a":1}])");
    for (int i = 0; i < 40; ++i) {
        doc.root.array().push_back(doc.root.array()[0]);
    }
    EXPECT_EQ(doc.root.array().size(), 41u);
    EXPECT_EQ(compact(doc.root.array()[40]), R"({"a": 1})");
    CHECK_LINKS(doc.root);
}

TEST(Array, push_back_takes_a_part_of_an_item_of_its_own) {
    Document doc("[[1,[2,3]]]");
    doc.root.array().push_back(doc.root.get("[0][1]"));
    EXPECT_EQ(compact(doc.root), "[[1,[2,3]],[2,3]]");
    CHECK_LINKS_AFTER_COPY(doc.root);
}

TEST(Array, appendNull_returns_the_new_item) {
    Document doc("[1]");
    Element& item = doc.root.array().appendNull();
    EXPECT_EQ(compact(doc.root), "[1,null]");
    EXPECT_EQ(&doc.root.array()[1], &item);
    CHECK_LINKS(doc.root);
}

TEST(Array, pop_back_then_push_back_reuses_the_index) {
    Document doc("[1,2,3]");
    doc.root.array().pop_back();
    EXPECT_EQ(compact(doc.root), "[1,2]");
    CHECK_LINKS(doc.root);
    doc.root.array().push_back("x");
    EXPECT_EQ(compact(doc.root), R"([1,2,"x"])");
    EXPECT_EQ(doc.root.array().back().index(), 2u);
    CHECK_LINKS(doc.root);
}

TEST(Array, remove_middle_item_renumbers_followers) {
    Document doc("[1,2,3,4]");
    TArray& array = doc.root.array();
    const auto next = array.erase(std::next(array.begin()));
    EXPECT_EQ(compact(doc.root), "[1,3,4]");
    EXPECT_EQ(next->index(), 1u);
    EXPECT_EQ(&*next, &array[1]);
    CHECK_LINKS(doc.root);
}

TEST(Array, remove_first_and_last_item) {
    Document doc("[1,2,3,4]");
    TArray& array = doc.root.array();
    array.erase(array.begin());
    EXPECT_TRUE(array.erase(std::prev(array.end())) == array.end());
    EXPECT_EQ(compact(doc.root), "[2,3]");
    CHECK_LINKS(doc.root);
}

TEST(Array, a_held_item_follows_the_removal_of_those_before_it) {
    Document doc(R"([1,{"a":true},3])");
    const Element& held = doc.root.get("[1].a");
    doc.root.array().erase(doc.root.array().begin());
    EXPECT_EQ(compact(doc.root), R"([{"a": true},3])");
    EXPECT_EQ(held.path(), "[0].a");
    CHECK_LINKS(doc.root);
}

TEST(Array, removeMatches_renumbers_what_stays) {
    Document doc("[1,2,1,3]");
    doc.root.array().removeMatches([](const Element& item) { return item.number().toInt() == 1; });
    EXPECT_EQ(compact(doc.root), "[2,3]");
    CHECK_LINKS(doc.root);
}

TEST(Array, removeMatches_skips_the_item_after_a_removed_one) {
    Document doc("[1,1,2,1]");
    doc.root.array().removeMatches([](const Element& item) { return item.number().toInt() == 1; });
    EXPECT_EQ(compact(doc.root), "[1,2]");
    CHECK_LINKS(doc.root);
}

TEST(Array, a_copy_reports_index_0_for_all_items_until_it_is_updated) {
    const Document doc("[1,2,3]");
    Element owner;
    TArray copy(doc.root.array(), &owner);
    EXPECT_EQ(copy.size(), 3u);
    EXPECT_EQ(indexesOf(copy), (Indexes{0, 0, 0}));
    EXPECT_EQ(copy.parent(), &owner);
    EXPECT_EQ(parentOf(copy), &owner);
    EXPECT_EQ(copy[1].number().toInt(), 2);
    copy.updateVector();
    EXPECT_EQ(indexesOf(copy), (Indexes{0, 1, 2}));
    EXPECT_EQ(parentOf(copy), &owner);
    EXPECT_EQ(indexesOf(doc.root.array()), (Indexes{0, 1, 2}));
    CHECK_LINKS(doc.root);
}

TEST(Array, a_copy_without_a_parent_stands_free) {
    const Document doc("[1]");
    const TArray copy(doc.root.array());
    EXPECT_EQ(copy.parent(), nullptr);
    EXPECT_EQ(copy[0].parent(), nullptr);
    EXPECT_EQ(copy[0].key(), "");
}

TEST(Array, the_containers_in_a_copy_name_the_copied_items_as_parents) {
    const Document doc(R"([[1],{"a":2}])");
    const TArray copy(doc.root.array());
    EXPECT_EQ(copy[0].array().parent(), &copy[0]);
    EXPECT_EQ(copy[0].array()[0].parent(), &copy[0]);
    EXPECT_EQ(copy[1].get("a").parent(), &copy[1]);
    CHECK_LINKS(copy[0]);
    CHECK_LINKS(copy[1]);
}

TEST(Array, assignment_keeps_the_parent_and_reports_index_0) {
    Document doc(R"({"to":["old"]})");
    const Document source("[1,2,3]");
    TArray& array = doc.root.get("to").array();
    EXPECT_EQ(&(array = source.root.array()), &array);
    EXPECT_EQ(compact(doc.root), R"({"to": [1,2,3]})");
    EXPECT_EQ(indexesOf(array), (Indexes{0, 0, 0}));
    EXPECT_EQ(array.parent(), &doc.root.get("to"));
    CHECK_LINKS_AFTER_COPY(doc.root);
    array.setParent(array.parent());
    EXPECT_EQ(indexesOf(array), (Indexes{0, 1, 2}));
    CHECK_LINKS(doc.root);
}

TEST(Array, assignment_reaches_items_by_position_at_once) {
    Document doc("[0]");
    const Document source("[1,2,3]");
    doc.root.array() = source.root.array();
    EXPECT_EQ(doc.root.get("[2]").number().toString(), "3");
    EXPECT_EQ(doc.root.array().at(0).number().toString(), "1");
    EXPECT_THROW(doc.root.array().at(3), std::out_of_range);
}

TEST(Array, assignment_to_itself_keeps_the_very_items) {
    Document doc("[1,2,3]");
    TArray& array = doc.root.array();
    const Element* const second = &array[1];
    const TArray& same = array;
    array = same;
    EXPECT_EQ(compact(doc.root), "[1,2,3]");
    EXPECT_EQ(&array[1], second);
    EXPECT_EQ(indexesOf(array), (Indexes{0, 1, 2}));
    CHECK_LINKS(doc.root);
}

TEST(Array, assignment_of_an_empty_array_removes_all_items) {
    Document doc("[1,[2]]");
    doc.root.array() = Element::k_emptyArray;
    EXPECT_EQ(compact(doc.root), "[]");
    EXPECT_EQ(doc.root.array().parent(), &doc.root);
    CHECK_LINKS(doc.root);
}

TEST(Array, takes_the_array_of_its_own_descendant) {
    Document doc("[[1,[2,3]],4]");
    doc.root.array() = doc.root.get("[0]").array();
    EXPECT_EQ(compact(doc.root), "[1,[2,3]]");
    CHECK_LINKS_AFTER_COPY(doc.root);
    doc.root.array() = doc.root.get("[1]").array();
    EXPECT_EQ(compact(doc.root), "[2,3]");
    CHECK_LINKS_AFTER_COPY(doc.root);
}

TEST(Array, is_taken_by_an_array_within_it) {
    Document doc("[[1],2]");
    doc.root.get("[0]").array() = doc.root.array();
    EXPECT_EQ(compact(doc.root), "[[[1],2],2]");
    CHECK_LINKS_AFTER_COPY(doc.root);
}

TEST(Array, setParent_gives_the_items_that_parent_and_their_positions) {
    const Document doc("[1,2,3]");
    TArray array(doc.root.array());
    Element parent;
    array.setParent(&parent);
    EXPECT_EQ(array.parent(), &parent);
    EXPECT_EQ(parentOf(array), &parent);
    EXPECT_EQ(indexesOf(array), (Indexes{0, 1, 2}));
    array.setParent(nullptr);
    EXPECT_EQ(array.parent(), nullptr);
    EXPECT_EQ(array.back().parent(), nullptr);
}

TEST(Array, swap_gives_only_its_own_new_items_their_place) {
    Document doc(R"({"a":[1],"b":[7,8,9]})");
    Element& left = doc.root.get("a");
    Element& right = doc.root.get("b");
    const Element* const moved = &left.array()[0];
    left.array().swap(right.array());

    EXPECT_EQ(compact(doc.root), R"({"a": [7,8,9],"b": [1]})");
    EXPECT_EQ(&right.array()[0], moved);
    EXPECT_EQ(left.array().parent(), &left);
    EXPECT_EQ(parentOf(left.array()), &left);
    EXPECT_EQ(indexesOf(left.array()), (Indexes{0, 1, 2}));
    EXPECT_EQ(right.array().parent(), &right);
    EXPECT_EQ(parentOf(right.array()), &left);
    EXPECT_EQ(right.array()[0].path(), "a[0]");

    right.array().setParent(&right);
    EXPECT_EQ(right.array()[0].path(), "b[0]");
    CHECK_LINKS(doc.root);
}

TEST(Array, push_back_and_pop_back_tell_no_other_item_its_place) {
    Document doc(R"({"a":[1,2],"b":[]})");
    Element& left = doc.root.get("a");
    Element& right = doc.root.get("b");
    left.array().swap(right.array());
    TArray& array = right.array();
    array.push_back(3);
    EXPECT_EQ(array[0].parent(), &left);
    EXPECT_EQ(array[2].parent(), &right);
    EXPECT_EQ(array[2].index(), 2u);
    array.pop_back();
    EXPECT_EQ(array[0].parent(), &left);
    array.erase(array.begin());
    EXPECT_EQ(compact(doc.root), R"({"a": [],"b": [2]})");
    CHECK_LINKS(doc.root);
}

TEST(Array, the_others_items_keep_the_parent_they_had_when_another_one_is_set) {
    Document doc(R"({"a":[1],"b":[7,8],"c":[9]})");
    Element& left = doc.root.get("a");
    Element& right = doc.root.get("b");
    left.array().swap(right.array());
    Element owner;
    left.array().setParent(&owner);
    EXPECT_EQ(parentOf(left.array()), &owner);
    EXPECT_EQ(parentOf(right.array()), &left);
    left.array().setParent(nullptr);
    right.array().swap(doc.root.get("c").array());
    EXPECT_EQ(parentOf(left.array()), nullptr);
    EXPECT_EQ(parentOf(right.array()), &right);
    EXPECT_EQ(parentOf(doc.root.get("c").array()), &left);
    left.array().setParent(&left);
    doc.root.get("c").array().updateVector();
    CHECK_LINKS(doc.root);
}

TEST(Array, the_others_items_name_their_own_parent_when_it_is_destroyed) {
    Document doc(R"({"a":[1],"b":[7,8]})");
    Element& left = doc.root.get("a");
    Element& right = doc.root.get("b");
    left.array().swap(right.array());
    EXPECT_EQ(parentOf(right.array()), &left);
    left.setNull();
    EXPECT_EQ(parentOf(right.array()), &right);
    EXPECT_EQ(compact(doc.root), R"({"a": null,"b": [1]})");
    CHECK_LINKS(doc.root);
}

TEST(Array, swap_with_itself_changes_nothing) {
    Document doc("[1,2]");
    doc.root.array().swap(doc.root.array());
    EXPECT_EQ(compact(doc.root), "[1,2]");
    CHECK_LINKS(doc.root);
}

TEST(Array, swap_as_an_index_list_gives_no_item_its_place) {
    Document doc(R"({"a":[1],"b":[7]})");
    Element& left = doc.root.get("a");
    Element& right = doc.root.get("b");
    ko::IndexList<Element>& list = left.array();
    list.swap(right.array());
    EXPECT_EQ(compact(doc.root), R"({"a": [7],"b": [1]})");
    EXPECT_EQ(parentOf(left.array()), &right);
    EXPECT_EQ(parentOf(right.array()), &left);
    left.array().updateVector();
    right.array().updateVector();
    CHECK_LINKS(doc.root);
}

TEST(Array, is_destroyed_as_an_index_list_too) {
    const Document doc(R"([1,"a string that is too long to lie in place",[2]])");
    const std::unique_ptr<ko::IndexList<Element>> list = std::make_unique<TArray>(doc.root.array());
    EXPECT_EQ(list->size(), 3u);
    EXPECT_TRUE(std::has_virtual_destructor_v<TArray>);
}

TEST(Array, tags_items_when_used_as_an_index_list) {
    Document doc("[1,2]");
    ko::IndexList<Element>& list = doc.root.array();
    list.push_back("x");
    EXPECT_EQ(compact(doc.root), R"([1,2,"x"])");
    CHECK_LINKS(doc.root);
    list.erase(list.begin());
    EXPECT_EQ(compact(doc.root), R"([2,"x"])");
    CHECK_LINKS(doc.root);
    list.pop_back();
    EXPECT_EQ(compact(doc.root), "[2]");
    CHECK_LINKS(doc.root);
}

TEST(Array, an_element_copied_over_an_item_keeps_that_items_place) {
    Document doc("[1,[2],3]");
    doc.root.array()[1] = Element("x");
    EXPECT_EQ(compact(doc.root), R"([1,"x",3])");
    CHECK_LINKS(doc.root);
    doc.root.array()[1] = doc.root;
    EXPECT_EQ(compact(doc.root), R"([1,[1,"x",3],3])");
    CHECK_LINKS_AFTER_COPY(doc.root);
}

TEST(Array, assignment_of_an_element_keeps_the_array_and_its_parent) {
    Document doc(R"({"a":[1]})");
    const Document source("[[2],3]");
    const TArray* const before = &doc.root.get("a").array();
    doc.root.get("a") = source.root;
    EXPECT_EQ(compact(doc.root), R"({"a": [[2],3]})");
    EXPECT_EQ(&doc.root.get("a").array(), before);
    EXPECT_EQ(before->parent(), &doc.root.get("a"));
    CHECK_LINKS_AFTER_COPY(doc.root);
}

TEST(Array, the_shared_empty_one_has_no_parent) {
    EXPECT_TRUE(Element::k_emptyArray.empty());
    EXPECT_EQ(Element::k_emptyArray.parent(), nullptr);
}

}  // namespace
