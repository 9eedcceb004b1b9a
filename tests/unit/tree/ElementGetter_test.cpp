// SPDX-License-Identifier: MIT
//
// The listener that looks an element up, driven step by step.

#include <ko/Orvid/ElementGetter.h>

#include <gtest/gtest.h>
#include <ko/Orvid/Exception.h>
#include <ko/Orvid/PathException.h>

#include <string>

#include "support/Document.h"

namespace orvid_test {
namespace {

using ko::Orvid::Element;
using ko::Orvid::ElementGetter;
using ko::Orvid::ParseException;
using ko::Orvid::Path;
using ko::Orvid::PathNotFound;

TEST(ElementGetter, starts_at_the_start_element_and_moves_down_with_each_step) {
    const Document document(R"({"a": [10, {"b": 20}]})");
    ElementGetter getter("", document.root, true);
    EXPECT_TRUE(getter.pathExists());
    EXPECT_EQ(&getter.currentElement(), &document.root);
    EXPECT_TRUE(getter.cbObjectProperty("a"));
    EXPECT_EQ(getter.currentElement().path(), "a");
    EXPECT_TRUE(getter.cbArrayItem(1));
    EXPECT_EQ(getter.currentElement().path(), "a[1]");
    EXPECT_TRUE(getter.cbObjectProperty("b"));
    EXPECT_EQ(getter.currentElement().number().toInt(), 20);
    EXPECT_TRUE(getter.pathExists());
}

TEST(ElementGetter, takes_keys_as_they_are) {
    const Document document(R"({"a.b": 1, "": 2, "[0]": 3})");
    for (const std::string key : {"a.b", "", "[0]"}) {
        ElementGetter getter("", document.root, true);
        EXPECT_TRUE(getter.cbObjectProperty(key));
        EXPECT_EQ(getter.currentElement().key(), key);
    }
}

TEST(ElementGetter, clears_the_flag_and_stays_where_it_is_when_it_may_not_throw) {
    const Document document(R"({"a": 5, "l": [1]})");
    ElementGetter getter("a.b", document.root, false);
    EXPECT_FALSE(getter.cbObjectProperty("b"));
    EXPECT_FALSE(getter.pathExists());
    EXPECT_EQ(&getter.currentElement(), &document.root);
}

TEST(ElementGetter, fails_for_each_step_that_leads_nowhere) {
    const Document document(R"({"a": 5, "l": [1]})");
    const Element& list = document.root.get("l");
    const Element& number = document.root.get("a");
    for (const Element* element : {&list, &number}) {
        ElementGetter getter("", *element, false);
        EXPECT_FALSE(getter.cbObjectProperty("a"));
        EXPECT_FALSE(getter.pathExists());
    }
    for (const Element* element : {&std::as_const(document.root), &number}) {
        ElementGetter getter("", *element, false);
        EXPECT_FALSE(getter.cbArrayItem(0));
        EXPECT_FALSE(getter.pathExists());
    }
    ElementGetter pastTheEnd("", list, false);
    EXPECT_FALSE(pastTheEnd.cbArrayItem(1));
    EXPECT_FALSE(pastTheEnd.pathExists());
    ElementGetter farPastTheEnd("", list, false);
    EXPECT_FALSE(farPastTheEnd.cbArrayItem(4294967294U));
    EXPECT_FALSE(farPastTheEnd.pathExists());
}

TEST(ElementGetter,
     goes_on_from_the_unmoved_element_after_a_failure_but_never_sets_the_flag_again) {
    const Document document(R"({"a": {"b": 1}})");
    ElementGetter getter("x.a.b", document.root, false);
    EXPECT_FALSE(getter.cbObjectProperty("x"));
    EXPECT_TRUE(getter.cbObjectProperty("a"));
    EXPECT_TRUE(getter.cbObjectProperty("b"));
    EXPECT_EQ(getter.currentElement().path(), "a.b");
    EXPECT_FALSE(getter.pathExists());
}

TEST(ElementGetter, throws_naming_the_element_the_path_and_the_step) {
    const Document document(R"({"a": {"l": [1, 2]}})");
    ElementGetter getter("the.path", document.root.get("a"), true);
    const auto noKey = thrownBy<PathNotFound>([&] { getter.cbObjectProperty("x.y"); });
    EXPECT_EQ(*noKey.elementPath(), "a");
    EXPECT_EQ(noKey.path(), "the.path");
    EXPECT_EQ(noKey.key(), "x.y");
    getter.cbObjectProperty("l");
    const auto noItem = thrownBy<PathNotFound>([&] { getter.cbArrayItem(7); });
    EXPECT_EQ(*noItem.elementPath(), "a.l");
    EXPECT_EQ(noItem.path(), "the.path");
    EXPECT_EQ(noItem.key(), "[7]");
    EXPECT_EQ(getter.currentElement().path(), "a.l");
}

TEST(ElementGetter, never_accepts_an_array_step_without_index) {
    const Document document(R"([1])");
    const Element number(1);
    for (const Element* start : {&document.root, &number}) {
        for (const bool throws : {true, false}) {
            ElementGetter getter("[*]", *start, throws);
            const auto error =
                thrownBy<ParseException>([&] { getter.cbArrayItem(Path::k_noIndex); });
            EXPECT_STREQ(error.what(), "Index must be set!");
            EXPECT_EQ(error.firstLine(), -1);
            EXPECT_EQ(error.firstColumn(), -1);
            EXPECT_EQ(error.lastLine(), -1);
            EXPECT_EQ(error.lastColumn(), -1);
            EXPECT_EQ(error.elementPath(), nullptr);
            EXPECT_TRUE(getter.pathExists());
        }
    }
}

TEST(ElementGetter, keeps_the_parse_error_of_its_base) {
    const Element element;
    ElementGetter getter("", element, false);
    EXPECT_THROW(getter.cbParseError("fault", "", 0, 0), ParseException);
}

}  // namespace
}  // namespace orvid_test
