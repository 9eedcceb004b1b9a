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
    EXPECT_EQ(generated(KeyNotFound(nullptr, "a b")), "Key \"a b\" not found!");
    EXPECT_STREQ(KeyNotFound(nullptr, "a b").what(), "Key \"a b\" not found!");
}

TEST(KeyNotFound, of_an_empty_key_prints_two_adjacent_quotes) {
    EXPECT_EQ(generated(KeyNotFound(nullptr, "")), "Key \"\" not found!");
}

TEST(KeyNotFound, prints_special_characters_unescaped) {
    EXPECT_EQ(generated(KeyNotFound(nullptr, "a\"\\\n")), "Key \"a\"\\\n\" not found!");
}

TEST(KeyNotFound, keeps_the_key_and_the_path) {
    const Document document(R"({"o":{}})");
    const KeyNotFound error(&document.root.get("o"), "k");
    EXPECT_EQ(error.key(), "k");
    ASSERT_NE(error.elementPath(), nullptr);
    EXPECT_EQ(*error.elementPath(), "o");
}

TEST(KeyNotFound, prints_the_address_of_its_path_in_place_of_the_path) {
    const Document document(R"({"o":{}})");
    const KeyNotFound error(&document.root.get("o"), "k");
    EXPECT_EQ(generated(error), "Key \"k\" not found!" + addressPart(error));
}

TEST(KeyNotFound, of_no_element_has_no_path) {
    EXPECT_EQ(KeyNotFound(nullptr, "k").elementPath(), nullptr);
}

TEST(KeyNotFound, does_not_print_its_cause) {
    const Exception cause("because");
    EXPECT_STREQ(KeyNotFound(nullptr, "k", &cause).what(), "Key \"k\" not found!");
}

TEST(KeyNotFound, clone_prints_the_same_with_the_address_of_its_own_path) {
    const Document document(R"({"o":{}})");
    auto original = std::make_unique<KeyNotFound>(&document.root.get("o"), "k");
    const std::unique_ptr<ko::Exception> clone(
        static_cast<const ko::Exception&>(*original).clone());
    const auto& typed = dynamic_cast<const KeyNotFound&>(*clone);
    EXPECT_NE(typed.elementPath(), original->elementPath());
    original.reset();
    EXPECT_EQ(typed.key(), "k");
    EXPECT_EQ(*typed.elementPath(), "o");
    EXPECT_EQ(generated(typed), "Key \"k\" not found!" + addressPart(typed));
}

TEST(KeyNotFound, copy_is_independent_of_the_original) {
    const Document document(R"({"o":{}})");
    auto original = std::make_unique<KeyNotFound>(&document.root.get("o"), "k");
    const KeyNotFound copy(*original);
    original.reset();
    EXPECT_EQ(copy.key(), "k");
    EXPECT_EQ(*copy.elementPath(), "o");
}

TEST(KeyNotFound, assignment_takes_over_path_and_key) {
    const Document document(R"({"o":{},"p":{}})");
    KeyNotFound target(&document.root.get("o"), "old");
    const std::string* const before = target.elementPath();
    EXPECT_EQ(&(target = KeyNotFound(&document.root.get("p"), "new")), &target);
    EXPECT_EQ(target.key(), "new");
    EXPECT_EQ(*target.elementPath(), "p");
    EXPECT_EQ(*before, "o");
}

TEST(KeyNotFound, assignment_to_itself_changes_nothing) {
    const Document document(R"({"o":{}})");
    KeyNotFound error(&document.root.get("o"), "k");
    const std::string before = generated(error);
    const KeyNotFound& same = error;
    error = same;
    EXPECT_EQ(generated(error), before);
    EXPECT_EQ(error.key(), "k");
}

TEST(PathNotFound, prints_the_path_and_the_step) {
    EXPECT_EQ(generated(PathNotFound(nullptr, "a.b[7].c", "[7]")),
              "Path \"a.b[7].c\" not found! Key \"[7]\".");
    EXPECT_STREQ(PathNotFound(nullptr, "a.b", "b").what(), "Path \"a.b\" not found! Key \"b\".");
}

TEST(PathNotFound, of_empty_texts_prints_adjacent_quotes) {
    EXPECT_EQ(generated(PathNotFound(nullptr, "", "")), "Path \"\" not found! Key \"\".");
}

TEST(PathNotFound, keeps_path_step_and_element_path) {
    const Document document(R"({"o":[{}]})");
    const PathNotFound error(&document.root.get("o[0]"), "o[0].k", "k");
    EXPECT_EQ(error.path(), "o[0].k");
    EXPECT_EQ(error.key(), "k");
    ASSERT_NE(error.elementPath(), nullptr);
    EXPECT_EQ(*error.elementPath(), "o[0]");
}

TEST(PathNotFound, prints_the_address_of_its_path_in_place_of_the_path) {
    const Document document(R"({"o":{}})");
    const PathNotFound error(&document.root.get("o"), "o.k", "k");
    EXPECT_EQ(generated(error), "Path \"o.k\" not found! Key \"k\"." + addressPart(error));
}

TEST(PathNotFound, of_no_element_has_no_path) {
    EXPECT_EQ(PathNotFound(nullptr, "a", "a").elementPath(), nullptr);
}

TEST(PathNotFound, does_not_print_its_cause) {
    const Exception cause("because");
    EXPECT_STREQ(PathNotFound(nullptr, "a", "a", &cause).what(),
                 "Path \"a\" not found! Key \"a\".");
}

TEST(PathNotFound, clone_prints_the_same_with_the_address_of_its_own_path) {
    const Document document(R"({"o":{}})");
    auto original = std::make_unique<PathNotFound>(&document.root.get("o"), "o.k", "k");
    const std::unique_ptr<ko::Exception> clone(
        static_cast<const ko::Exception&>(*original).clone());
    const auto& typed = dynamic_cast<const PathNotFound&>(*clone);
    EXPECT_NE(typed.elementPath(), original->elementPath());
    original.reset();
    EXPECT_EQ(typed.path(), "o.k");
    EXPECT_EQ(typed.key(), "k");
    EXPECT_EQ(generated(typed), "Path \"o.k\" not found! Key \"k\"." + addressPart(typed));
}

TEST(PathNotFound, copy_is_independent_of_the_original) {
    const Document document(R"({"o":{}})");
    auto original = std::make_unique<PathNotFound>(&document.root.get("o"), "o.k", "k");
    const PathNotFound copy(*original);
    original.reset();
    EXPECT_EQ(copy.path(), "o.k");
    EXPECT_EQ(copy.key(), "k");
    EXPECT_EQ(*copy.elementPath(), "o");
}

TEST(PathNotFound, assignment_takes_over_element_path_path_and_step) {
    const Document document(R"({"o":{},"p":{}})");
    PathNotFound target(&document.root.get("o"), "o.old", "old");
    const std::string* const before = target.elementPath();
    EXPECT_EQ(&(target = PathNotFound(&document.root.get("p"), "p.new", "new")), &target);
    EXPECT_EQ(target.path(), "p.new");
    EXPECT_EQ(target.key(), "new");
    EXPECT_EQ(*target.elementPath(), "p");
    EXPECT_EQ(*before, "o");
}

TEST(PathNotFound, assignment_to_itself_changes_nothing) {
    const Document document(R"({"o":{}})");
    PathNotFound error(&document.root.get("o"), "o.k", "k");
    const std::string before = generated(error);
    const PathNotFound& same = error;
    error = same;
    EXPECT_EQ(generated(error), before);
}

}  // namespace
