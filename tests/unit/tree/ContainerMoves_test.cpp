// SPDX-License-Identifier: MIT
//
// Moves and swaps that would put a container into itself, and those through the list and the map
// below arrays and objects: never a cycle, and never a child that names a parent that is gone.

#include <ko/Orvid/Array.h>
#include <ko/Orvid/Object.h>

#include <memory>
#include <type_traits>
#include <utility>

#include "support/Document.h"

namespace {

using ko::Orvid::Element;
using ko::Orvid::Exception;
using orvid_test::compact;
using orvid_test::Document;
using TArray = Element::TArray;
using TObject = Element::TObject;
using ElementList = ko::IndexList<Element>;
using ElementMap = ko::ListMap<std::string, Element, std::less<std::string>>;

static_assert(!std::is_move_assignable_v<ElementList>);
static_assert(!std::is_move_constructible_v<ElementList>);

TEST(ContainerMoves, emplace_back_of_an_ancestor_appends_a_copy) {
    Document doc(R"({"a": [1, [2]]})");
    TArray& inner = doc.root.get("a[1]").array();
    const Element& added = inner.emplace_back(std::move(doc.root));
    EXPECT_EQ(compact(doc.root), R"({"a": [1,[2,{"a": [1,[2]]}]]})");
    EXPECT_EQ(added.path(), "a[1][1]");
    CHECK_LINKS_AFTER_COPY(doc.root);
    Document list("[]");
    list.root.array().emplace_back(std::move(list.root));
    EXPECT_EQ(compact(list.root), "[[]]");
    CHECK_LINKS(list.root);
}

TEST(ContainerMoves, insert_of_an_ancestor_inserts_a_copy) {
    Document doc("[1,[2]]");
    TArray& inner = doc.root.array()[1].array();
    inner.insert(inner.begin(), std::move(doc.root));
    inner.insert(0, std::move(doc.root.array()[1]));
    EXPECT_EQ(compact(doc.root), "[1,[[[1,[2]],2],[1,[2]],2]]");
    CHECK_LINKS_AFTER_COPY(doc.root);
}

TEST(ContainerMoves, insert_or_assign_of_an_ancestor_sets_a_copy) {
    Document doc(R"({"a": {"b": 1}})");
    TObject& inner = doc.root.get("a").object();
    inner.insert_or_assign("c", std::move(doc.root));
    EXPECT_EQ(compact(doc.root), R"({"a": {"b": 1,"c": {"a": {"b": 1}}}})");
    CHECK_LINKS(doc.root);
    inner.insert_or_assign("b", std::move(doc.root));
    EXPECT_EQ(doc.root.get("a.b.a.b").to<int>(), 1);
    CHECK_LINKS(doc.root);
    inner.emplace("d", std::move(doc.root.get("a")));
    EXPECT_EQ(doc.root.get("a.d.b.a.b").to<int>(), 1);
    CHECK_LINKS(doc.root);
}

TEST(ContainerMoves, a_container_assigned_from_one_that_it_lies_in_gets_copies) {
    Document doc("[1,[2,[3]]]");
    TArray& inner = doc.root.get("[1][1]").array();
    inner = std::move(doc.root.array());
    EXPECT_EQ(compact(doc.root), "[1,[2,[1,[2,[3]]]]]");
    CHECK_LINKS_AFTER_COPY(doc.root);
    Document objects(R"({"a": {"b": {}}})");
    objects.root.get("a.b").object() = std::move(objects.root.object());
    EXPECT_EQ(compact(objects.root), R"({"a": {"b": {"a": {"b": {}}}}})");
    CHECK_LINKS(objects.root);
}

TEST(ContainerMoves, a_container_is_assigned_from_one_in_it) {
    Document doc("[1,[2,[3]]]");
    const Element* const two = &doc.root.get("[1][0]");
    doc.root.array() = std::move(doc.root.get("[1]").array());
    EXPECT_EQ(compact(doc.root), "[2,[3]]");
    EXPECT_EQ(two, &doc.root.array()[0]);
    CHECK_LINKS(doc.root);
}

TEST(ContainerMoves, swap_with_a_container_around_it_is_refused) {
    Document doc(R"([{"a": [1, {}]}])");
    TArray& outer = doc.root.array();
    TArray& inner = doc.root.get("[0].a").array();
    EXPECT_THROW(inner.swap(outer), Exception);
    EXPECT_THROW(outer.swap(inner), Exception);
    EXPECT_THROW(static_cast<ElementList&>(inner).swap(outer), Exception);
    EXPECT_THROW(static_cast<ElementList&>(outer).swap(inner), Exception);
    TObject& object = doc.root.get("[0]").object();
    TObject& deeper = doc.root.get("[0].a[1]").object();
    EXPECT_THROW(object.swap(deeper), Exception);
    EXPECT_THROW(static_cast<ElementMap&>(deeper).swap(object), Exception);
    EXPECT_EQ(compact(doc.root), R"([{"a": [1,{}]}])");
    CHECK_LINKS(doc.root);
}

TEST(ContainerMoves, children_learn_of_their_parent_when_the_one_they_name_is_gone) {
    Document doc(R"({"a": [1, 2], "b": [3]})");
    TArray& left = doc.root.get("a").array();
    static_cast<ElementList&>(left).swap(doc.root.get("b").array());
    EXPECT_EQ(left[0].path(), "b[0]");
    doc.root.object().erase("b");
    EXPECT_EQ(left[0].parent(), &doc.root.get("a"));
    EXPECT_EQ(left[0].path(), "a[0]");
    EXPECT_EQ(compact(doc.root), R"({"a": [3]})");
    CHECK_LINKS(doc.root);
}

TEST(ContainerMoves, members_learn_of_their_parent_when_the_one_they_name_is_gone) {
    Document doc(R"({"a": {"x": 1}, "b": {"y": 2}})");
    TObject& left = doc.root.get("a").object();
    left.swap(doc.root.get("b").object());
    EXPECT_EQ(doc.root.get("b.x").path(), "a.x");
    doc.root.object().erase("a");
    EXPECT_EQ(doc.root.get("b.x").path(), "b.x");
    CHECK_LINKS(doc.root);
}

TEST(ContainerMoves, a_list_of_its_own_keeps_no_link_to_an_array_that_is_gone) {
    ElementList list;
    list.push_back(1);
    {
        Document doc("[[2],3]");
        doc.root.array().IndexList::swap(list);
        EXPECT_EQ(compact(doc.root), "[1]");
        EXPECT_EQ(list[1].parent(), &doc.root);
        doc.root.array().updateVector();
        CHECK_LINKS(doc.root);
    }
    EXPECT_EQ(list[1].parent(), nullptr);
    EXPECT_EQ(list[1].path(), "");
    EXPECT_EQ(compact(list[0]), "[2]");
}

TEST(ContainerMoves, children_that_were_handed_on_twice_find_home) {
    Document doc(R"({"a": [1], "b": [2], "c": [3]})");
    TArray& a = doc.root.get("a").array();
    TArray& b = doc.root.get("b").array();
    TArray& c = doc.root.get("c").array();
    static_cast<ElementList&>(a).swap(b);
    static_cast<ElementList&>(b).swap(c);
    EXPECT_EQ(c[0].path(), "a[0]");
    doc.root.object().erase("a");
    EXPECT_EQ(c[0].path(), "c[0]");
    EXPECT_EQ(b[0].path(), "c[0]");
    c.setParent(c.parent());
    b.updateVector();
    CHECK_LINKS(doc.root);
}

TEST(ContainerMoves, no_cycle_is_made_through_children_that_name_another_parent) {
    Document doc(R"({"a": [[1]], "b": []})");
    TArray& a = doc.root.get("a").array();
    TArray& b = doc.root.get("b").array();
    static_cast<ElementList&>(a).swap(b);
    TArray& inner = b[0].array();
    EXPECT_EQ(inner.parent()->parent(), &doc.root.get("a"));
    inner.emplace_back(std::move(doc.root.get("b")));
    EXPECT_EQ(inner.parent()->parent(), &doc.root.get("b"));
    EXPECT_EQ(compact(doc.root), R"({"a": [],"b": [[1,[[1]]]]})");
    EXPECT_THROW(inner.swap(b), Exception);
    inner[0] = std::move(doc.root.get("b"));
    EXPECT_EQ(compact(doc.root), R"({"a": [],"b": [[[[1,[[1]]]],[[1]]]]})");
    b.updateVector();
    CHECK_LINKS_AFTER_COPY(doc.root);
}

TEST(ContainerMoves, the_value_of_a_former_parent_is_swapped_into_its_former_child) {
    Document doc(R"({"x": [[]], "y": []})");
    Element& x = doc.root.get("x");
    Element& child = x.array()[0];
    x.array().swap(doc.root.get("y").array());
    EXPECT_EQ(child.parent(), &x);
    child.swap(x);
    EXPECT_EQ(child.path(), "y[0]");
    EXPECT_EQ(child.root(), &doc.root);
    EXPECT_EQ(compact(doc.root), R"({"x": [],"y": [[]]})");
    CHECK_LINKS(doc.root);
}

TEST(ContainerMoves, an_ancestor_of_a_former_parent_is_moved_into_its_former_child) {
    Document doc(R"({"p": {"x": [[], {}]}, "y": []})");
    doc.root.get("p.x").array().swap(doc.root.get("y").array());
    Element& child = doc.root.get("y[0]");
    const Element& added = child.array().emplace_back(std::move(doc.root.get("p")));
    EXPECT_EQ(added.get("x").path(), "y[0][0].x");
    EXPECT_EQ(child.parent(), &doc.root.get("y"));
    doc.root.get("y[1]").object().emplace("q", std::move(child));
    EXPECT_EQ(compact(doc.root), R"({"p": null,"y": [null,{"q": [{"x": []}]}]})");
    CHECK_LINKS(doc.root);
}

TEST(ContainerMoves, a_container_of_a_former_parent_is_swapped_into_its_former_child) {
    Document doc(R"({"p": [{"x": {"c": {"d": []}}}], "y": {}})");
    doc.root.get("p[0].x").object().swap(doc.root.get("y").object());
    Element& child = doc.root.get("y.c");
    child.get("d").array().swap(doc.root.get("p").array());
    EXPECT_EQ(compact(doc.root), R"({"p": [],"y": {"c": {"d": [{"x": {}}]}}})");
    EXPECT_EQ(child.path(), "y.c");
    EXPECT_EQ(doc.root.get("y.c.d[0].x").path(), "y.c.d[0].x");
    CHECK_LINKS(doc.root);
}

TEST(ContainerMoves, an_emptied_former_parent_is_moved_into_its_former_child) {
    Document doc(R"({"x": {"c": {}}, "y": {}})");
    doc.root.get("x").object().swap(doc.root.get("y").object());
    doc.root.get("y.c").object().emplace("d", std::move(doc.root.get("x")));
    EXPECT_EQ(doc.root.get("y.c.d").path(), "y.c.d");
    EXPECT_EQ(compact(doc.root), R"({"x": null,"y": {"c": {"d": {}}}})");
    CHECK_LINKS(doc.root);
}

TEST(ContainerMoves, a_value_from_below_a_child_that_names_another_parent_is_kept) {
    Document doc(R"({"x": [[7]], "y": []})");
    doc.root.get("x").array().swap(doc.root.get("y").array());
    doc.root.create("y", doc.root.get("y[0]"));
    EXPECT_EQ(compact(doc.root), R"({"x": [],"y": [7]})");
    CHECK_LINKS_AFTER_COPY(doc.root);
}

TEST(ContainerMoves, a_map_assigned_to_an_object_gives_its_members_their_place) {
    Document doc(R"({"a": {"x": 1}})");
    const Document source(R"({"y": [2]})");
    ElementMap& map = doc.root.get("a").object();
    map = static_cast<const ElementMap&>(source.root.object());
    EXPECT_EQ(compact(doc.root), R"({"a": {"y": [2]}})");
    EXPECT_EQ(doc.root.get("a.y[0]").path(), "a.y[0]");
    CHECK_LINKS_AFTER_COPY(doc.root);
}

/// Counts how often it is reported that positions have changed.
class Watched : public TArray {
public:
    using TArray::operator=;
    void updateVector() override {
        ++updates;
        TArray::updateVector();
    }
    int updates = 0;
};

TEST(ContainerMoves, assignment_of_an_array_updates_the_target_and_leaves_index_0) {
    const Document source("[1,2,3]");
    Element target;
    auto owned = std::make_unique<Watched>();
    Watched& watched = *owned;
    target.data().type = ko::Orvid::etArray;
    target.data().value.array = owned.release();
    watched.setParent(&target);
    watched = source.root.array();
    EXPECT_EQ(watched.updates, 1);
    EXPECT_EQ(watched[2].index(), 0U);
    EXPECT_EQ(watched[2].path(), "[2]");
    Element::copy(target.data(), source.root.data(), &target);
    EXPECT_EQ(watched.updates, 2);
    EXPECT_EQ(compact(target), "[1,2,3]");
    CHECK_LINKS_AFTER_COPY(target);
}

}  // namespace
