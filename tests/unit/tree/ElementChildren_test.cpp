// SPDX-License-Identifier: MIT
//
// An element's children by position and by key, and visit().

#include <ko/Orvid/Element.h>

#include <ko/Orvid/visit.h>

#include <cstddef>
#include <string>
#include <variant>

#include "support/Document.h"

namespace orvid_test {
namespace {

using ko::Orvid::Element;
using ko::Orvid::EType;
using ko::Orvid::Number;
using ko::Orvid::PathNotFound;
using ko::Orvid::TypeException;

TEST(ElementChildren, size_counts_items_and_members) {
    const Document doc(R"({"list": [1, 2, 3], "object": {"a": 1}, "text": "abc"})");
    EXPECT_EQ(doc.root.size(), 3U);
    EXPECT_EQ(doc.root.get("list").size(), 3U);
    EXPECT_EQ(doc.root.get("object").size(), 1U);
    EXPECT_EQ(doc.root.get("text").size(), 0U);
    EXPECT_EQ(Element().size(), 0U);
    EXPECT_EQ(Element::k_emptyElement.size(), 0U);
}

TEST(ElementChildren, at_finds_items_and_members) {
    Document doc(R"({"a.b": [10, 20]})");
    Element& list = doc.root.at("a.b");
    EXPECT_EQ(list.at(1).to<int>(), 20);
    list.at(0) = "x";
    EXPECT_EQ(compact(doc.root), R"({"a.b": ["x",20]})");
    const Element& root = doc.root;
    EXPECT_EQ(&root.at("a.b").at(1), &list.at(1));
    CHECK_LINKS(doc.root);
}

TEST(ElementChildren, at_throws_with_the_path_of_the_element) {
    const Document doc(R"({"o": {"list": [1]}})");
    const auto missingItem = thrownBy<PathNotFound>([&] { doc.root.get("o.list").at(1); });
    EXPECT_EQ(*missingItem.elementPath(), "o.list");
    EXPECT_EQ(missingItem.key(), "[1]");
    EXPECT_EQ(missingItem.path(), "o.list[1]");
    EXPECT_EQ(missingItem.stoppedAt(), ko::Orvid::etArray);
    const auto missingMember = thrownBy<PathNotFound>([&] { doc.root.get("o").at("x"); });
    EXPECT_EQ(*missingMember.elementPath(), "o");
    EXPECT_EQ(missingMember.key(), "x");
    EXPECT_EQ(missingMember.path(), "o.x");
    EXPECT_EQ(thrownBy<PathNotFound>([&] { doc.root.at("a.b"); }).path(), "a\\.b");
    const auto noArray = thrownBy<TypeException<EType>>([&] { doc.root.get("o").at(0); });
    EXPECT_EQ(*noArray.elementPath(), "o");
    EXPECT_EQ(noArray.requested(), ko::Orvid::etArray);
    const auto noObject = thrownBy<TypeException<EType>>([&] { doc.root.get("o.list").at("x"); });
    EXPECT_EQ(*noObject.elementPath(), "o.list");
    EXPECT_EQ(noObject.requested(), ko::Orvid::etObject);
}

TEST(ElementChildren, member_and_item_return_null_for_what_is_not_there) {
    Document doc(R"({"list": [1], "a": null})");
    const Element& root = doc.root;
    EXPECT_EQ(root.member("a"), &root.get("a"));
    EXPECT_EQ(doc.root.member("list")->item(0), &root.get("list[0]"));
    EXPECT_EQ(root.member("b"), nullptr);
    EXPECT_EQ(root.item(0), nullptr);
    EXPECT_EQ(root.get("list").item(1), nullptr);
    EXPECT_EQ(root.get("list").member("a"), nullptr);
    EXPECT_TRUE(root.contains("a"));
    EXPECT_FALSE(root.contains("b"));
    EXPECT_FALSE(root.get("list").contains("a"));
}

TEST(Object, at_finds_a_member_or_throws) {
    Document doc(R"({"o": {"a": 1}})");
    auto& object = doc.root.get("o").object();
    object.at("a") = 2;
    EXPECT_EQ(std::as_const(object).at("a").to<int>(), 2);
    const auto missing = thrownBy<PathNotFound>([&] { object.at("b"); });
    EXPECT_EQ(*missing.elementPath(), "o");
    EXPECT_EQ(missing.key(), "b");
    CHECK_LINKS(doc.root);
}

TEST(Object, brackets_append_a_null_member) {
    Document doc(R"({"a":1})");
    auto& object = doc.root.object();
    object["b"] = "x";
    object["a"] = 2;
    EXPECT_TRUE(object["c"].isNull());
    EXPECT_EQ(compact(doc.root), R"({"a": 2,"b": "x","c": null})");
    CHECK_LINKS(doc.root);
}

TEST(Object, emplace_keeps_a_member_that_is_there) {
    Document doc(R"({"a":1})");
    auto& object = doc.root.object();
    const auto [present, isNew] = object.emplace("a", 2);
    EXPECT_FALSE(isNew);
    EXPECT_EQ(present->second.to<int>(), 1);
    const auto [added, isAdded] = object.emplace("b", "x");
    EXPECT_TRUE(isAdded);
    EXPECT_EQ(added->second.path(), "b");
    EXPECT_TRUE(object.emplace(std::string_view("c"), 3).second);
    EXPECT_FALSE(object.insert_or_assign(std::string_view("c"), Element(4)).second);
    EXPECT_EQ(compact(doc.root), R"({"a": 1,"b": "x","c": 4})");
    CHECK_LINKS(doc.root);
}

TEST(Object, erases_and_finds_by_a_view) {
    Document doc(R"({"a":1,"b":[2],"c":3})");
    auto& object = doc.root.object();
    EXPECT_TRUE(object.contains(std::string_view("b")));
    EXPECT_EQ(object.erase(std::string_view("b")), 1U);
    EXPECT_EQ(object.erase(std::string_view("b")), 0U);
    EXPECT_FALSE(object.contains(std::string_view("b")));
    EXPECT_EQ(compact(doc.root), R"({"a": 1,"c": 3})");
    CHECK_LINKS(doc.root);
    object.clear();
    EXPECT_EQ(compact(doc.root), "{}");
    object["d"] = 4;
    EXPECT_EQ(compact(doc.root), R"({"d": 4})");
    CHECK_LINKS(doc.root);
}

TEST(Object, erase_if_removes_all_matches) {
    Document doc("{}");
    for (int i = 0; i < 1000; ++i) {
        doc.root.object()["k" + std::to_string(i)] = i;
    }
    const auto isOdd = [](const auto& member) { return member.second.template to<int>() % 2 == 1; };
    EXPECT_EQ(erase_if(doc.root.object(), isOdd), 500U);
    EXPECT_EQ(doc.root.size(), 500U);
    EXPECT_TRUE(doc.root.contains("k998"));
    EXPECT_FALSE(doc.root.contains("k999"));
    CHECK_LINKS(doc.root);
    doc.root.object()["k0"] = "x";
    EXPECT_THROW(erase_if(doc.root.object(), isOdd), ko::Orvid::Exception);
    EXPECT_EQ(doc.root.size(), 500U);
    EXPECT_EQ(erase_if(doc.root.object(), [](auto&) { return true; }), 500U);
    CHECK_LINKS(doc.root);
}

/// Says what it was called with.
struct Names {
    std::string operator()(std::monostate) const { return "empty"; }
    std::string operator()(std::nullptr_t) const { return "null"; }
    std::string operator()(bool value) const { return value ? "true" : "false"; }
    std::string operator()(const Number& value) const { return "number " + value.toString(); }
    std::string operator()(const std::string& value) const { return "text " + value; }
    std::string operator()(const Element::TObject& value) const {
        return "object of " + std::to_string(value.size());
    }
    std::string operator()(const Element::TArray& value) const {
        return "array of " + std::to_string(value.size());
    }
};

TEST(visit, calls_the_visitor_with_what_the_element_holds) {
    const Document doc(R"([null, true, 1.5, "x", {"a": 1}, [1, 2]])");
    std::string seen;
    for (const Element& item : doc.root.array()) {
        seen += visit(Names(), item) + ';';
    }
    EXPECT_EQ(seen, "null;true;number 1.5;text x;object of 1;array of 2;");
    EXPECT_EQ(visit(Names(), Element::k_emptyElement), "empty");
}

TEST(visit, hands_out_the_payload_itself) {
    Document doc(R"(["x"])");
    visit(
        [](auto& held) {
            if constexpr (std::is_same_v<decltype(held), Element::TArray&>) {
                held.push_back(1);
            }
        },
        doc.root);
    EXPECT_EQ(compact(doc.root), R"(["x",1])");
    CHECK_LINKS(doc.root);
}

}  // namespace
}  // namespace orvid_test
