// SPDX-License-Identifier: MIT
//
// The errors of failed lookups: texts, fields, copies. When they are thrown is tested with the
// lookups.

#include <ko/Orvid/PathException.h>

#include <gtest/gtest.h>
#include <ko/Orvid/Element.h>

#include <memory>
#include <sstream>
#include <string>
#include <type_traits>

#include "support/Document.h"
#include "support/ErrorText.h"

namespace {

using ko::Orvid::Exception;
using ko::Orvid::KeyNotFound;
using ko::Orvid::PathNotFound;
using orvid_test::addressPart;
using orvid_test::Document;
using orvid_test::generated;

static_assert(std::is_base_of_v<Exception, KeyNotFound>);
static_assert(std::is_base_of_v<Exception, PathNotFound>);
static_assert(!std::is_base_of_v<KeyNotFound, PathNotFound>);

TEST(KeyNotFound, prints_the_key) {
    EXPECT_EQ("Key \"a b\" not found!", generated(KeyNotFound(nullptr, "a b")));
    EXPECT_STREQ("Key \"a b\" not found!", KeyNotFound(nullptr, "a b").what());
}

TEST(KeyNotFound, of_an_empty_key_prints_two_adjacent_quotes) {
    EXPECT_EQ("Key \"\" not found!", generated(KeyNotFound(nullptr, "")));
}

TEST(KeyNotFound, prints_special_characters_unescaped) {
    EXPECT_EQ("Key \"a\"\\\n\" not found!", generated(KeyNotFound(nullptr, "a\"\\\n")));
}

TEST(KeyNotFound, keeps_the_key_and_the_path) {
    const Document document(R"({"o":{}})");
    const KeyNotFound error(&document.root.get("o"), "k");
    EXPECT_EQ("k", error.key());
    ASSERT_NE(nullptr, error.elementPath());
    EXPECT_EQ("o", *error.elementPath());
}

TEST(KeyNotFound, prints_the_address_of_its_path_in_place_of_the_path) {
    const Document document(R"({"o":{}})");
    const KeyNotFound error(&document.root.get("o"), "k");
    EXPECT_EQ("Key \"k\" not found!" + addressPart(error), generated(error));
}

TEST(KeyNotFound, of_no_element_has_no_path) {
    EXPECT_EQ(nullptr, KeyNotFound(nullptr, "k").elementPath());
}

TEST(KeyNotFound, does_not_print_its_cause) {
    const Exception cause("because");
    EXPECT_STREQ("Key \"k\" not found!", KeyNotFound(nullptr, "k", &cause).what());
}

TEST(KeyNotFound, clone_prints_the_same_with_the_address_of_its_own_path) {
    const Document document(R"({"o":{}})");
    auto original = std::make_unique<KeyNotFound>(&document.root.get("o"), "k");
    const std::unique_ptr<ko::Exception> clone(
        static_cast<const ko::Exception&>(*original).clone());
    const auto& typed = dynamic_cast<const KeyNotFound&>(*clone);
    EXPECT_NE(original->elementPath(), typed.elementPath());
    original.reset();
    EXPECT_EQ("k", typed.key());
    EXPECT_EQ("o", *typed.elementPath());
    EXPECT_EQ("Key \"k\" not found!" + addressPart(typed), generated(typed));
}

TEST(KeyNotFound, copy_is_independent_of_the_original) {
    const Document document(R"({"o":{}})");
    auto original = std::make_unique<KeyNotFound>(&document.root.get("o"), "k");
    const KeyNotFound copy(*original);
    original.reset();
    EXPECT_EQ("k", copy.key());
    EXPECT_EQ("o", *copy.elementPath());
}

TEST(KeyNotFound, assignment_takes_over_path_and_key) {
    const Document document(R"({"o":{},"p":{}})");
    KeyNotFound target(&document.root.get("o"), "old");
    const std::string* const before = target.elementPath();
    EXPECT_EQ(&target, &(target = KeyNotFound(&document.root.get("p"), "new")));
    EXPECT_EQ("new", target.key());
    EXPECT_EQ("p", *target.elementPath());
    EXPECT_EQ("o", *before);
}

TEST(KeyNotFound, assignment_to_itself_changes_nothing) {
    const Document document(R"({"o":{}})");
    KeyNotFound error(&document.root.get("o"), "k");
    const std::string before = generated(error);
    const KeyNotFound& same = error;
    error = same;
    EXPECT_EQ(before, generated(error));
    EXPECT_EQ("k", error.key());
}

TEST(PathNotFound, prints_the_path_and_the_step) {
    EXPECT_EQ("Path \"a.b[7].c\" not found! Key \"[7]\".",
              generated(PathNotFound(nullptr, "a.b[7].c", "[7]")));
    EXPECT_STREQ("Path \"a.b\" not found! Key \"b\".", PathNotFound(nullptr, "a.b", "b").what());
}

TEST(PathNotFound, of_empty_texts_prints_adjacent_quotes) {
    EXPECT_EQ("Path \"\" not found! Key \"\".", generated(PathNotFound(nullptr, "", "")));
}

TEST(PathNotFound, keeps_path_step_and_element_path) {
    const Document document(R"({"o":[{}]})");
    const PathNotFound error(&document.root.get("o[0]"), "o[0].k", "k");
    EXPECT_EQ("o[0].k", error.path());
    EXPECT_EQ("k", error.key());
    ASSERT_NE(nullptr, error.elementPath());
    EXPECT_EQ("o[0]", *error.elementPath());
}

TEST(PathNotFound, prints_the_address_of_its_path_in_place_of_the_path) {
    const Document document(R"({"o":{}})");
    const PathNotFound error(&document.root.get("o"), "o.k", "k");
    EXPECT_EQ("Path \"o.k\" not found! Key \"k\"." + addressPart(error), generated(error));
}

TEST(PathNotFound, of_no_element_has_no_path) {
    EXPECT_EQ(nullptr, PathNotFound(nullptr, "a", "a").elementPath());
}

TEST(PathNotFound, does_not_print_its_cause) {
    const Exception cause("because");
    EXPECT_STREQ("Path \"a\" not found! Key \"a\".",
                 PathNotFound(nullptr, "a", "a", &cause).what());
}

TEST(PathNotFound, clone_prints_the_same_with_the_address_of_its_own_path) {
    const Document document(R"({"o":{}})");
    auto original = std::make_unique<PathNotFound>(&document.root.get("o"), "o.k", "k");
    const std::unique_ptr<ko::Exception> clone(
        static_cast<const ko::Exception&>(*original).clone());
    const auto& typed = dynamic_cast<const PathNotFound&>(*clone);
    EXPECT_NE(original->elementPath(), typed.elementPath());
    original.reset();
    EXPECT_EQ("o.k", typed.path());
    EXPECT_EQ("k", typed.key());
    EXPECT_EQ("Path \"o.k\" not found! Key \"k\"." + addressPart(typed), generated(typed));
}

TEST(PathNotFound, copy_is_independent_of_the_original) {
    const Document document(R"({"o":{}})");
    auto original = std::make_unique<PathNotFound>(&document.root.get("o"), "o.k", "k");
    const PathNotFound copy(*original);
    original.reset();
    EXPECT_EQ("o.k", copy.path());
    EXPECT_EQ("k", copy.key());
    EXPECT_EQ("o", *copy.elementPath());
}

TEST(PathNotFound, assignment_takes_over_element_path_path_and_step) {
    const Document document(R"({"o":{},"p":{}})");
    PathNotFound target(&document.root.get("o"), "o.old", "old");
    const std::string* const before = target.elementPath();
    EXPECT_EQ(&target, &(target = PathNotFound(&document.root.get("p"), "p.new", "new")));
    EXPECT_EQ("p.new", target.path());
    EXPECT_EQ("new", target.key());
    EXPECT_EQ("p", *target.elementPath());
    EXPECT_EQ("o", *before);
}

TEST(PathNotFound, assignment_to_itself_changes_nothing) {
    const Document document(R"({"o":{}})");
    PathNotFound error(&document.root.get("o"), "o.k", "k");
    const std::string before = generated(error);
    const PathNotFound& same = error;
    error = same;
    EXPECT_EQ(before, generated(error));
}

}  // namespace
