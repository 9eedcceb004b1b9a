// SPDX-License-Identifier: MIT
//
// Tests of Object: order and places of its members through every operation, copies of them, and
// edits whose argument lies in the object that is edited.

#include <ko/Orvid/Object.h>

#include <algorithm>
#include <memory>
#include <type_traits>
#include <utility>

#include "support/Document.h"

namespace {

using ko::Orvid::Element;
using ko::Orvid::Path;
using orvid_test::compact;
using orvid_test::Document;
using TObject = Element::TObject;
using Member = TObject::value_type;

/// Whether all members name their own key, no index, and `parent`.
bool allNamed(const TObject& object, const Element* parent) {
    return std::all_of(object.begin(), object.end(), [=](const Member& member) {
        const Element& value = member.second;
        const bool hasKey = parent == nullptr || value.key() == member.first;
        return hasKey && value.index() == Path::k_noIndex && value.parent() == parent;
    });
}

TEST(Object, is_empty_and_without_parent_when_new) {
    const TObject object;
    EXPECT_TRUE(object.empty());
    EXPECT_EQ(object.parent(), nullptr);
}

TEST(Object, insert_gives_key_parent_and_no_index) {
    Document doc("{}");
    const auto [member, isNew] = doc.root.object().insert({"a", 1});
    EXPECT_EQ(compact(doc.root), R"({"a": 1})");
    EXPECT_TRUE(isNew);
    EXPECT_EQ(member->second.key(), "a");
    EXPECT_EQ(member->second.index(), Path::k_noIndex);
    EXPECT_EQ(member->second.parent(), &doc.root);
    CHECK_LINKS(doc.root);
}

TEST(Object, keeps_the_order_of_insertion) {
    Document doc("{}");
    doc.root.object().insert({"b", 1});
    doc.root.object().insert({"a", 2});
    const auto [member, isNew] = doc.root.object().insert({"b", "second"});
    EXPECT_EQ(compact(doc.root), R"({"b": "second","a": 2})");
    EXPECT_FALSE(isNew);
    EXPECT_TRUE(member == doc.root.object().begin());
    CHECK_LINKS(doc.root);
}

TEST(Object, insert_over_a_member_keeps_its_address) {
    Document doc(R"({"a":[1],"b":2})");
    const Element& held = doc.root.get("a");
    doc.root.object().insert({"a", "x"});
    EXPECT_EQ(compact(doc.root), R"({"a": "x","b": 2})");
    EXPECT_EQ(held.string(), "x");
    CHECK_LINKS(doc.root);
}

TEST(Object, insert_takes_a_deep_copy) {
    Document doc("{}");
    Document value("[[1]]");
    doc.root.object().insert({"a", value.root});
    value.root.array().push_back(2);
    EXPECT_EQ(compact(doc.root), R"({"a": [[1]]})");
    CHECK_LINKS_AFTER_COPY(doc.root);
}

TEST(Object, insert_before_a_position_puts_a_new_member_there) {
    Document doc(R"({"a":1,"c":3})");
    TObject& object = doc.root.object();
    const auto position = object.insert(object.find("c"), {"b", 2});
    EXPECT_EQ(compact(doc.root), R"({"a": 1,"b": 2,"c": 3})");
    EXPECT_EQ(position->first, "b");
    CHECK_LINKS(doc.root);
    object.insert(object.begin(), {"z", 0});
    object.insert(object.end(), {"y", 9});
    EXPECT_EQ(compact(doc.root), R"({"z": 0,"a": 1,"b": 2,"c": 3,"y": 9})");
    CHECK_LINKS(doc.root);
}

TEST(Object, insert_before_a_position_leaves_a_present_key_alone) {
    Document doc(R"({"a":1,"b":2})");
    TObject& object = doc.root.object();
    const auto position = object.insert(object.begin(), {"b", "new"});
    EXPECT_EQ(compact(doc.root), R"({"a": 1,"b": 2})");
    EXPECT_TRUE(position == std::next(object.begin()));
    CHECK_LINKS(doc.root);
}

TEST(Object, insert_of_its_own_member_changes_nothing) {
    Document doc(R"({"a":[1],"b":2})");
    TObject& object = doc.root.object();
    const Element* const item = &doc.root.get("a[0]");
    EXPECT_FALSE(object.insert(*object.begin()).second);
    EXPECT_EQ(compact(doc.root), R"({"a": [1],"b": 2})");
    EXPECT_EQ(&doc.root.get("a[0]"), item);
    CHECK_LINKS(doc.root);
}

TEST(Object, insert_takes_a_member_that_lies_in_the_one_it_overwrites) {
    Document doc(R"({"a":{"a":{"a":[1],"b":2}}})");
    TObject& object = doc.root.object();
    object.insert(*doc.root.get("a").object().begin());
    EXPECT_EQ(compact(doc.root), R"({"a": {"a": [1],"b": 2}})");
    CHECK_LINKS_AFTER_COPY(doc.root);
    object.insert(*doc.root.get("a").object().begin());
    EXPECT_EQ(compact(doc.root), R"({"a": [1]})");
    CHECK_LINKS_AFTER_COPY(doc.root);
}

TEST(Object, insert_takes_the_value_of_another_member) {
    Document doc(R"({"a":{"x":[1]},"b":2})");
    TObject& object = doc.root.object();
    object.insert({"b", object.find("a")->second});
    object.insert({"c", doc.root.get("b.x")});
    EXPECT_EQ(compact(doc.root), R"({"a": {"x": [1]},"b": {"x": [1]},"c": [1]})");
    CHECK_LINKS_AFTER_COPY(doc.root);
}

TEST(Object, insert_takes_the_element_that_holds_the_object) {
    Document doc(R"({"a":1})");
    doc.root.object().insert({"a", doc.root});
    EXPECT_EQ(compact(doc.root), R"({"a": {"a": 1}})");
    CHECK_LINKS(doc.root);
    doc.root.object().insert({"b", doc.root});
    EXPECT_EQ(compact(doc.root), R"({"a": {"a": 1},"b": {"a": {"a": 1}}})");
    CHECK_LINKS(doc.root);
}

TEST(Object, resetMember_sets_a_present_member_to_null_in_its_place) {
    Document doc(R"({"a":[1],"b":2})");
    Element& member = doc.root.object().resetMember("a");
    EXPECT_EQ(compact(doc.root), R"({"a": null,"b": 2})");
    EXPECT_EQ(&member, &doc.root.get("a"));
    CHECK_LINKS(doc.root);
}

TEST(Object, resetMember_appends_a_missing_member) {
    Document doc(R"({"b":2})");
    Element& member = doc.root.object().resetMember("a");
    EXPECT_EQ(compact(doc.root), R"({"b": 2,"a": null})");
    EXPECT_EQ(&member, &doc.root.get("a"));
    CHECK_LINKS(doc.root);
}

TEST(Object, resetMember_takes_the_key_of_a_member) {
    Document doc(R"({"a":1})");
    doc.root.object().resetMember(doc.root.object().begin()->first);
    EXPECT_EQ(compact(doc.root), R"({"a": null})");
    CHECK_LINKS(doc.root);
}

TEST(Object, find_distinguishes_keys_byte_by_byte) {
    Document doc(R"({"key":1,"":2})");
    const TObject& object = doc.root.object();
    EXPECT_TRUE(object.find("Key") == object.end());
    EXPECT_TRUE(object.find("ke") == object.end());
    EXPECT_EQ(object.find("key")->second.number().toInt(), 1);
    EXPECT_EQ(object.find("")->second.number().toInt(), 2);
}

TEST(Object, erase_keeps_the_order_of_the_others) {
    Document doc(R"({"a":1,"b":2,"c":3})");
    TObject& object = doc.root.object();
    const auto next = object.erase(object.find("b"));
    EXPECT_EQ(compact(doc.root), R"({"a": 1,"c": 3})");
    EXPECT_EQ(next->first, "c");
    CHECK_LINKS(doc.root);
    EXPECT_EQ(object.erase("a"), 1u);
    EXPECT_EQ(object.erase("b"), 0u);
    EXPECT_EQ(compact(doc.root), R"({"c": 3})");
    CHECK_LINKS(doc.root);
}

TEST(Object, a_copy_names_its_own_keys_no_index_and_the_new_parent) {
    const Document doc(R"({"b":1,"a":[2,{"c":3}]})");
    Element parent;
    const TObject copy(doc.root.object(), &parent);
    EXPECT_EQ(copy.parent(), &parent);
    ASSERT_EQ(copy.size(), 2u);
    EXPECT_EQ(copy.begin()->first, "b");
    for (const Member& member : copy) {
        EXPECT_EQ(member.second.parent(), &parent);
        EXPECT_EQ(member.second.index(), Path::k_noIndex);
    }
    CHECK_LINKS(doc.root);
}

TEST(Object, a_copy_in_an_element_has_all_links_of_its_own) {
    const Document doc(R"({"b":1,"a":{"c":[{"d":3}]}})");
    Element copy(doc.root);
    copy.get("a.c[0].d").setNull();
    EXPECT_EQ(compact(copy), R"({"b": 1,"a": {"c": [{"d": null}]}})");
    EXPECT_EQ(compact(doc.root), R"({"b": 1,"a": {"c": [{"d": 3}]}})");
    EXPECT_EQ(copy.get("a.c[0].d").path(), "a.c[0].d");
    CHECK_LINKS_AFTER_COPY(copy);
    CHECK_LINKS(doc.root);
}

TEST(Object, a_copy_without_a_parent_stands_free) {
    const Document doc(R"({"a":1})");
    const TObject copy(doc.root.object());
    EXPECT_EQ(copy.parent(), nullptr);
    EXPECT_TRUE(allNamed(copy, nullptr));
    EXPECT_EQ(copy.begin()->second.path(), "");
}

TEST(Object, assignment_keeps_the_parent) {
    Document doc(R"({"to":{"old":1,"b":2}})");
    const Document source(R"({"b":{"x":1},"a":2})");
    TObject& object = doc.root.get("to").object();
    EXPECT_EQ(&(object = source.root.object()), &object);
    EXPECT_EQ(compact(doc.root), R"({"to": {"b": {"x": 1},"a": 2}})");
    EXPECT_EQ(object.parent(), &doc.root.get("to"));
    CHECK_LINKS(doc.root);
    CHECK_LINKS(source.root);
}

TEST(Object, assignment_to_itself_keeps_the_very_members) {
    Document doc(R"({"b":1,"a":2})");
    TObject& object = doc.root.object();
    const Member* const first = &*object.begin();
    const TObject& same = object;
    object = same;
    EXPECT_EQ(compact(doc.root), R"({"b": 1,"a": 2})");
    EXPECT_EQ(&*object.begin(), first);
    CHECK_LINKS(doc.root);
}

TEST(Object, takes_the_object_of_its_own_descendant) {
    Document doc(R"({"a":{"b":{"c":1},"d":2}})");
    doc.root.object() = doc.root.get("a").object();
    EXPECT_EQ(compact(doc.root), R"({"b": {"c": 1},"d": 2})");
    CHECK_LINKS(doc.root);
}

TEST(Object, is_taken_by_an_object_within_it) {
    Document doc(R"({"a":{"b":1},"c":2})");
    doc.root.get("a").object() = doc.root.object();
    EXPECT_EQ(compact(doc.root), R"({"a": {"a": {"b": 1},"c": 2},"c": 2})");
    CHECK_LINKS(doc.root);
}

TEST(Object, setParent_gives_all_members_that_parent) {
    const Document doc(R"({"b":1,"a":2})");
    TObject object(doc.root.object());
    Element parent;
    Element::create(parent.data(), ko::Orvid::etObject, &parent);
    object.setParent(&parent);
    EXPECT_EQ(object.parent(), &parent);
    EXPECT_TRUE(allNamed(object, &parent));
    object.setParent(nullptr);
    EXPECT_EQ(object.parent(), nullptr);
    EXPECT_TRUE(allNamed(object, nullptr));
}

TEST(Object, swap_gives_only_its_own_new_members_their_place) {
    Document doc(R"({"x":{"a":1},"y":{"c":3,"b":2}})");
    Element& left = doc.root.get("x");
    Element& right = doc.root.get("y");
    const Element* const moved = &left.get("a");
    left.object().swap(right.object());

    EXPECT_EQ(compact(doc.root), R"({"x": {"c": 3,"b": 2},"y": {"a": 1}})");
    EXPECT_EQ(&right.get("a"), moved);
    EXPECT_EQ(left.object().parent(), &left);
    EXPECT_EQ(right.object().parent(), &right);
    EXPECT_TRUE(allNamed(left.object(), &left));
    EXPECT_TRUE(allNamed(right.object(), &left));
    EXPECT_EQ(right.get("a").path(), "x.a");

    right.object().setParent(&right);
    EXPECT_EQ(right.get("a").path(), "y.a");
    CHECK_LINKS(doc.root);
}

TEST(Object, insert_gives_only_the_member_that_it_meets_its_place) {
    Document doc(R"({"x":{"a":1,"b":2},"y":{}})");
    Element& left = doc.root.get("x");
    Element& right = doc.root.get("y");
    left.object().swap(right.object());
    TObject& object = right.object();
    object.insert({"c", 3});
    EXPECT_EQ(object.find("a")->second.parent(), &left);
    EXPECT_EQ(object.find("c")->second.parent(), &right);
    object.insert({"a", 4});
    EXPECT_EQ(object.find("a")->second.parent(), &right);
    EXPECT_EQ(object.find("b")->second.parent(), &left);
    object.insert(object.begin(), {"b", 5});
    EXPECT_EQ(object.find("b")->second.parent(), &right);
    EXPECT_EQ(compact(doc.root), R"({"x": {},"y": {"a": 4,"b": 2,"c": 3}})");
    CHECK_LINKS(doc.root);
}

TEST(Object, the_others_members_keep_the_parent_they_had_when_another_one_is_set) {
    Document doc(R"({"x":{"a":1},"y":{"b":2,"c":3}})");
    Element& left = doc.root.get("x");
    Element& right = doc.root.get("y");
    left.object().swap(right.object());
    Document owner("{}");
    left.object().setParent(&owner.root);
    EXPECT_TRUE(allNamed(left.object(), &owner.root));
    EXPECT_TRUE(allNamed(right.object(), &left));
    left.object().setParent(&left);
    right.object().setParent(&right);
    CHECK_LINKS(doc.root);
}

TEST(Object, the_others_members_name_their_own_parent_when_it_is_destroyed) {
    Document doc(R"({"x":{"a":1},"y":{"b":2}})");
    Element& right = doc.root.get("y");
    doc.root.get("x").object().swap(right.object());
    EXPECT_TRUE(allNamed(right.object(), &doc.root.get("x")));
    doc.root.get("x").setNull();
    EXPECT_TRUE(allNamed(right.object(), &right));
    EXPECT_EQ(compact(doc.root), R"({"x": null,"y": {"a": 1}})");
    CHECK_LINKS(doc.root);
}

TEST(Object, swap_with_itself_changes_nothing) {
    Document doc(R"({"b":1,"a":2})");
    doc.root.object().swap(doc.root.object());
    EXPECT_EQ(compact(doc.root), R"({"b": 1,"a": 2})");
    CHECK_LINKS(doc.root);
}

TEST(Object, swap_as_a_list_map_gives_no_member_its_place) {
    Document doc(R"({"x":{"a":1},"y":{"b":2}})");
    Element& left = doc.root.get("x");
    Element& right = doc.root.get("y");
    TObject::TBase& map = left.object();
    map.swap(right.object());
    EXPECT_EQ(compact(doc.root), R"({"x": {"b": 2},"y": {"a": 1}})");
    EXPECT_TRUE(allNamed(left.object(), &right));
    EXPECT_TRUE(allNamed(right.object(), &left));
    left.object().setParent(&left);
    right.object().setParent(&right);
    CHECK_LINKS(doc.root);
}

TEST(Object, tags_members_when_used_as_a_list_map) {
    Document doc(R"({"b":2})");
    TObject::TBase& map = doc.root.object();
    map.insert({"c", 3});
    map.insert(map.begin(), {"a", 1});
    EXPECT_EQ(compact(doc.root), R"({"a": 1,"b": 2,"c": 3})");
    CHECK_LINKS(doc.root);
    map.erase("b");
    EXPECT_EQ(compact(doc.root), R"({"a": 1,"c": 3})");
    CHECK_LINKS(doc.root);
}

TEST(Object, is_destroyed_as_a_list_map_too) {
    const Document doc(R"({"a key that is too long to lie in place":{"a":[1]}})");
    const std::unique_ptr<TObject::TBase> map = std::make_unique<TObject>(doc.root.object());
    EXPECT_EQ(map->size(), 1u);
    EXPECT_TRUE(std::has_virtual_destructor_v<TObject>);
}

TEST(Object, an_element_copied_over_a_member_keeps_that_members_place) {
    Document doc(R"({"a":1,"b":{"c":2}})");
    doc.root.get("b") = Element("x");
    EXPECT_EQ(compact(doc.root), R"({"a": 1,"b": "x"})");
    CHECK_LINKS(doc.root);
    doc.root.get("b") = doc.root;
    EXPECT_EQ(compact(doc.root), R"({"a": 1,"b": {"a": 1,"b": "x"}})");
    CHECK_LINKS(doc.root);
}

TEST(Object, the_shared_empty_one_has_no_parent) {
    EXPECT_TRUE(Element::k_emptyObject.empty());
    EXPECT_EQ(Element::k_emptyObject.parent(), nullptr);
}

}  // namespace
