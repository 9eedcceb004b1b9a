// SPDX-License-Identifier: MIT
//
// Copies of elements and their assignment, within one tree too. Moving them is in ElementMove.

#include <ko/Orvid/Element.h>

#include <gtest/gtest.h>
#include <ko/Orvid/Array.h>

#include <utility>
#include <vector>

#include "support/Document.h"
#include "support/ElementValues.h"

namespace {

using ko::Orvid::Element;
using orvid_test::compact;
using orvid_test::Document;
using orvid_test::equal;
using orvid_test::isFreeStanding;
using orvid_test::oneOfEachType;

TEST(ElementCopy, of_every_type_is_an_equal_free_standing_value) {
    for (const auto& element : oneOfEachType()) {
        const Element copy(*element);
        EXPECT_EQ(copy.type(), element->type());
        EXPECT_TRUE(equal(*element, copy)) << element->type();
        EXPECT_TRUE(isFreeStanding(copy)) << element->type();
        CHECK_LINKS_AFTER_COPY(copy);
    }
}

TEST(ElementCopy, of_a_child_takes_the_value_and_not_the_place) {
    const Document document(R"({"a":[0,{"b":{"c":[1,2]}}]})");
    const Element copy(document.root.get("a[1].b"));
    EXPECT_EQ(compact(copy), R"({"c": [1,2]})");
    EXPECT_TRUE(isFreeStanding(copy));
    EXPECT_EQ(copy.get("c").path(), "c");
    CHECK_LINKS_AFTER_COPY(copy);
}

TEST(ElementCopy, shares_nothing_with_the_original) {
    Document document(R"({"a":[1,{"b":"x"}],"n":1.50})");
    Element copy(document.root);
    copy.get("a[1].b").setString("changed");
    copy.get("n").setNumber(2);
    copy.get("a").array().push_back(Element(3));
    EXPECT_EQ(compact(document.root), R"({"a": [1,{"b": "x"}],"n": 1.50})");
    EXPECT_EQ(compact(copy), R"({"a": [1,{"b": "changed"},3],"n": 2})");
    CHECK_LINKS(document.root);
    CHECK_LINKS_AFTER_COPY(copy);
}

TEST(ElementCopy, keeps_the_text_of_numbers) {
    const Document document("[1.500,7e01,-0]");
    EXPECT_EQ(compact(Element(document.root)), compact(document.root));
}

TEST(ElementCopy, survives_a_growing_vector) {
    const Document document(R"({"a":[1,{"b":2}]})");
    std::vector<Element> elements;
    for (int i = 0; i < 20; ++i) {
        elements.push_back(document.root);
    }
    for (const Element& element : elements) {
        EXPECT_EQ(compact(element), R"({"a": [1,{"b": 2}]})");
        CHECK_LINKS_AFTER_COPY(element);
    }
}

TEST(ElementCopy, can_be_swapped) {
    Document a(R"({"x":[1]})");
    Document b("[{\"y\":2}]");
    std::swap(a.root, b.root);
    EXPECT_EQ(compact(a.root), R"([{"y": 2}])");
    EXPECT_EQ(compact(b.root), R"({"x": [1]})");
    CHECK_LINKS_AFTER_COPY(a.root);
    CHECK_LINKS_AFTER_COPY(b.root);
}

TEST(ElementAssignment, of_every_type_to_every_type_gives_an_equal_value) {
    for (const auto& source : oneOfEachType()) {
        for (const auto& target : oneOfEachType()) {
            EXPECT_EQ(&(*target = *source), target.get());
            EXPECT_TRUE(equal(*source, *target)) << source->type();
            EXPECT_EQ(target->type(), source->type());
            EXPECT_TRUE(isFreeStanding(*target));
            CHECK_LINKS_AFTER_COPY(*target);
        }
    }
}

TEST(ElementAssignment, leaves_the_target_in_its_place) {
    for (const auto& source : oneOfEachType()) {
        Document document(R"({"k":[0,"old",{"old":1}]})");
        for (const char* const place : {"k[1]", "k[2]", "k"}) {
            Element& target = document.root.get(place);
            Element* const parent = target.parent();
            target = *source;
            EXPECT_EQ(target.path(), place);
            EXPECT_EQ(target.parent(), parent);
            EXPECT_TRUE(equal(*source, target));
            CHECK_LINKS_AFTER_COPY(document.root);
        }
    }
}

TEST(ElementAssignment, takes_values_without_naming_their_type) {
    Document document(R"({"a":1,"b":2,"c":3,"d":4})");
    document.root.get("a") = "text";
    document.root.get("b") = true;
    document.root.get("c") = 2.5;
    document.root.get("d") = Element();
    EXPECT_EQ(compact(document.root), R"({"a": "text","b": true,"c": 2.5,"d": null})");
    CHECK_LINKS(document.root);
}

TEST(ElementAssignment, to_itself_changes_nothing) {
    for (const auto& element : oneOfEachType()) {
        const Element before(*element);
        const Element& same = *element;
        *element = same;
        EXPECT_TRUE(equal(before, *element)) << before.type();
        CHECK_LINKS_AFTER_COPY(*element);
    }
}

TEST(ElementAssignment, of_a_child_to_its_parent_of_the_same_type) {
    Document document(R"({"a":{"b":[1,{"c":2}]},"x":0})");
    document.root = document.root.get("a");
    EXPECT_EQ(compact(document.root), R"({"b": [1,{"c": 2}]})");
    CHECK_LINKS_AFTER_COPY(document.root);
}

TEST(ElementAssignment, of_a_child_to_its_parent_of_another_type) {
    Document document(R"({"a":[{"b":[1,2]},"a text of some length, on the heap"]})");
    document.root = document.root.get("a");
    EXPECT_EQ(compact(document.root), R"([{"b": [1,2]},"a text of some length, on the heap"])");
    CHECK_LINKS_AFTER_COPY(document.root);
    document.root = document.root.get("[1]");
    EXPECT_EQ(document.root.string(), "a text of some length, on the heap");
}

TEST(ElementAssignment, of_a_number_or_a_boolean_to_its_ancestor) {
    Document document(R"([[[1.50,true]]])");
    Element copy(document.root);
    copy = copy.get("[0][0][0]");
    EXPECT_EQ(copy.number().toString(), "1.50");
    document.root = document.root.get("[0][0][1]");
    EXPECT_TRUE(document.root.boolean());
}

TEST(ElementAssignment, of_an_ancestor_to_its_descendant_of_the_same_type) {
    Document document(R"({"a":{"b":{"c":1}}})");
    document.root.get("a.b") = document.root;
    EXPECT_EQ(compact(document.root), R"({"a": {"b": {"a": {"b": {"c": 1}}}}})");
    CHECK_LINKS_AFTER_COPY(document.root);
}

TEST(ElementAssignment, of_an_ancestor_to_its_descendant_of_another_type) {
    Document document(R"([0,{"a":[null]}])");
    document.root.get("[1].a[0]") = document.root;
    EXPECT_EQ(compact(document.root), R"([0,{"a": [[0,{"a": [null]}]]}])");
    CHECK_LINKS_AFTER_COPY(document.root);
    EXPECT_EQ(document.root.get("[1].a[0]").path(), "[1].a[0]");
}

TEST(ElementAssignment, of_a_sibling) {
    Document document(R"({"a":[1,2],"b":{"c":3}})");
    document.root.get("a") = document.root.get("b");
    EXPECT_EQ(compact(document.root), R"({"a": {"c": 3},"b": {"c": 3}})");
    CHECK_LINKS(document.root);
}

}  // namespace
