// SPDX-License-Identifier: MIT
//
// The listener that makes what is missing on its way, driven step by step.

#include <ko/Orvid/ElementCreator.h>

#include <gtest/gtest.h>
#include <ko/Orvid/Exception.h>
#include <ko/Orvid/PathException.h>

#include <string>

#include "support/Document.h"

namespace orvid_test {
namespace {

using ko::Orvid::Element;
using ko::Orvid::ElementCreator;
using ko::Orvid::ParseException;
using ko::Orvid::Path;
using ko::Orvid::PathNotFound;

const Element k_value(7);

TEST(ElementCreator, starts_at_the_start_element_and_does_not_touch_the_value) {
    Document document(R"({"a": 1})");
    ElementCreator creator("a", document.root, k_value, true);
    EXPECT_TRUE(creator.pathExists());
    EXPECT_EQ(&creator.currentElement(), &document.root);
    EXPECT_EQ(&creator.value(), &k_value);
    EXPECT_TRUE(creator.cbObjectProperty("a"));
    EXPECT_EQ(&creator.currentElement(), &document.root.get("a"));
    EXPECT_EQ(compact(document.root), R"({"a": 1})");
}

TEST(ElementCreator, adds_a_missing_member_as_an_empty_element) {
    Document document(R"({"a": 1})");
    ElementCreator creator("", document.root, k_value, true);
    EXPECT_TRUE(creator.cbObjectProperty("b.c"));
    EXPECT_TRUE(creator.currentElement().isEmpty());
    EXPECT_EQ(creator.currentElement().path(), R"(b\.c)");
    EXPECT_EQ(document.root.object().size(), 2U);
    CHECK_LINKS(document.root);
}

TEST(ElementCreator, makes_the_container_that_the_step_needs_of_an_empty_element) {
    Element root(Element::k_emptyElement);
    ElementCreator creator("", root, k_value, true);
    EXPECT_TRUE(creator.cbObjectProperty("a"));
    EXPECT_TRUE(root.isObject());
    EXPECT_TRUE(creator.cbArrayItem(Path::k_noIndex));
    EXPECT_TRUE(root.get("a").isArray());
    EXPECT_TRUE(creator.cbArrayItem(Path::k_noIndex));
    EXPECT_TRUE(creator.cbObjectProperty("b"));
    EXPECT_EQ(creator.currentElement().path(), "a[0][0].b");
    EXPECT_TRUE(creator.currentElement().isEmpty());
    CHECK_LINKS(root);
}

TEST(ElementCreator, moves_to_an_item_that_is_there) {
    Document document(R"([1, 2])");
    ElementCreator creator("", document.root, k_value, true);
    EXPECT_TRUE(creator.cbArrayItem(1));
    EXPECT_EQ(&creator.currentElement(), &document.root.array()[1]);
    EXPECT_EQ(document.root.array().size(), 2U);
}

TEST(ElementCreator, grows_an_array_by_one_item_for_a_step_without_index) {
    Document document(R"([1, 2])");
    ElementCreator creator("", document.root, k_value, true);
    EXPECT_TRUE(creator.cbArrayItem(Path::k_noIndex));
    EXPECT_EQ(&creator.currentElement(), &document.root.array().back());
    EXPECT_TRUE(creator.currentElement().isEmpty());
    EXPECT_EQ(document.root.array().size(), 3U);
    CHECK_LINKS(document.root);
}

TEST(ElementCreator, never_pads_an_array) {
    Document document(R"([1, 2])");
    for (const unsigned int index : {2U, 3U, 4294967294U}) {
        ElementCreator creator("p", document.root, k_value, true);
        const auto error = thrownBy<PathNotFound>([&] { creator.cbArrayItem(index); });
        EXPECT_EQ(error.key(), "[" + std::to_string(index) + "]");
        EXPECT_EQ(error.path(), "p");
        EXPECT_EQ(*error.elementPath(), "");
    }
    EXPECT_EQ(compact(document.root), "[1,2]");
}

TEST(ElementCreator, never_converts_a_value_that_is_not_empty) {
    const std::string text = R"({"n": null,"b": true,"i": 1,"s": "x","o": {},"a": []})";
    for (const std::string key : {"n", "b", "i", "s", "a"}) {
        Document document(text);
        ElementCreator throwing("p", document.root.get(key), k_value, true);
        const auto error = thrownBy<PathNotFound>([&] { throwing.cbObjectProperty("k"); });
        EXPECT_EQ(*error.elementPath(), key);
        EXPECT_EQ(error.key(), "k");
        ElementCreator quiet("p", document.root.get(key), k_value, false);
        EXPECT_FALSE(quiet.cbObjectProperty("k"));
        EXPECT_FALSE(quiet.pathExists());
        EXPECT_EQ(compact(document.root), text);
    }
    for (const std::string key : {"n", "b", "i", "s", "o"}) {
        Document document(text);
        ElementCreator throwing("p", document.root.get(key), k_value, true);
        const auto error = thrownBy<PathNotFound>([&] { throwing.cbArrayItem(Path::k_noIndex); });
        EXPECT_EQ(*error.elementPath(), key);
        EXPECT_EQ(error.key(), "[4294967295]");
        ElementCreator quiet("p", document.root.get(key), k_value, false);
        EXPECT_FALSE(quiet.cbArrayItem(0));
        EXPECT_FALSE(quiet.pathExists());
        EXPECT_EQ(compact(document.root), text);
    }
}

TEST(ElementCreator,
     goes_on_from_the_unmoved_element_after_a_failure_but_never_sets_the_flag_again) {
    Element root(Element::k_emptyElement);
    ElementCreator creator("", root, k_value, false);
    EXPECT_FALSE(creator.cbArrayItem(0));
    EXPECT_TRUE(root.isArray());
    EXPECT_EQ(&creator.currentElement(), &root);
    EXPECT_TRUE(creator.cbArrayItem(Path::k_noIndex));
    EXPECT_TRUE(creator.cbObjectProperty("a"));
    EXPECT_FALSE(creator.pathExists());
    EXPECT_EQ(creator.currentElement().path(), "[0].a");
    CHECK_LINKS(root);
}

TEST(ElementCreator, keeps_the_parse_error_of_its_base) {
    Element element;
    ElementCreator creator("", element, k_value, false);
    EXPECT_THROW(creator.cbParseError("fault", "", 0, 0), ParseException);
}

}  // namespace
}  // namespace orvid_test
