// SPDX-License-Identifier: MIT
//
// The error for an element of another type: text, fields, copies.

#include <ko/Orvid/TypeException.h>

#include <gtest/gtest.h>
#include <ko/Orvid/Element.h>

#include <memory>
#include <string>
#include <type_traits>

#include "support/Document.h"
#include "support/ErrorText.h"

namespace {

using ko::Orvid::Element;
using ko::Orvid::EType;
using orvid_test::Document;
using orvid_test::generated;
using orvid_test::thrownBy;
using TypeError = ko::Orvid::TypeException<EType>;

static_assert(std::is_base_of_v<ko::Orvid::Exception, TypeError>);

TEST(TypeException, prints_both_types_and_the_path_itself) {
    const Document document(R"({"a":["x"]})");
    const TypeError error(&document.root.get("a[0]"), ko::Orvid::etObject, ko::Orvid::etString);
    EXPECT_EQ(generated(error),
              "Json type mismatch! Requestet Json type: etObject Got Json type: etString"
              " Current element: \"a[0]\"");
    EXPECT_EQ(error.what(), generated(error));
}

TEST(TypeException, of_a_root_prints_an_empty_path) {
    const Element root;
    const TypeError error(&root, ko::Orvid::etArray, ko::Orvid::etNull);
    EXPECT_EQ(generated(error),
              "Json type mismatch! Requestet Json type: etArray Got Json type: etNull"
              " Current element: \"\"");
}

TEST(TypeException, of_no_element_prints_no_element_part) {
    const TypeError error(nullptr, ko::Orvid::etEmpty, ko::Orvid::etNumber);
    EXPECT_EQ(error.elementPath(), nullptr);
    EXPECT_EQ(generated(error),
              "Json type mismatch! Requestet Json type: etEmpty Got Json type: etNumber");
}

TEST(TypeException, prints_values_that_are_no_type_as_invalid) {
    const TypeError error(nullptr, static_cast<EType>(6), static_cast<EType>(-2));
    EXPECT_EQ(generated(error),
              "Json type mismatch! Requestet Json type: >>INVALID<< Got Json type: >>INVALID<<");
}

TEST(TypeException, is_what_a_typed_access_to_another_type_throws) {
    const Document document(R"({"a":["x"]})");
    const auto error = thrownBy<TypeError>([&] { document.root.get("a[0]").object(); });
    EXPECT_EQ(error.requested(), ko::Orvid::etObject);
    EXPECT_EQ(error.got(), ko::Orvid::etString);
    ASSERT_NE(error.elementPath(), nullptr);
    EXPECT_EQ(*error.elementPath(), "a[0]");
}

TEST(TypeException, outlives_the_tree) {
    auto document = std::make_unique<Document>(R"({"a":["x"]})");
    const auto error = thrownBy<TypeError>([&] { document->root.get("a[0]").object(); });
    document.reset();
    EXPECT_EQ(generated(error),
              "Json type mismatch! Requestet Json type: etObject Got Json type: etString"
              " Current element: \"a[0]\"");
}

TEST(TypeException, clone_prints_the_same_from_a_path_of_its_own) {
    const Document document(R"({"a":1})");
    auto original = std::make_unique<TypeError>(&document.root.get("a"), ko::Orvid::etArray,
                                                ko::Orvid::etNumber);
    const std::string before = generated(*original);
    const std::unique_ptr<ko::Exception> clone(
        static_cast<const ko::Exception&>(*original).clone());
    const auto& typed = dynamic_cast<const TypeError&>(*clone);
    EXPECT_NE(typed.elementPath(), original->elementPath());
    original.reset();
    EXPECT_EQ(generated(typed), before);
    EXPECT_EQ(typed.requested(), ko::Orvid::etArray);
    EXPECT_EQ(typed.got(), ko::Orvid::etNumber);
}

TEST(TypeException, copy_is_independent_of_the_original) {
    const Document document(R"({"a":1})");
    auto original = std::make_unique<TypeError>(&document.root.get("a"), ko::Orvid::etArray,
                                                ko::Orvid::etNumber);
    const std::string before = generated(*original);
    const TypeError copy(*original);
    original.reset();
    EXPECT_EQ(generated(copy), before);
}

TEST(TypeException, assignment_takes_over_path_and_types) {
    const Document document(R"({"a":1,"b":"x"})");
    TypeError target(&document.root.get("a"), ko::Orvid::etArray, ko::Orvid::etNumber);
    const std::string* const before = target.elementPath();
    const TypeError source(&document.root.get("b"), ko::Orvid::etObject, ko::Orvid::etString);
    EXPECT_EQ(&(target = source), &target);
    EXPECT_EQ(target.requested(), ko::Orvid::etObject);
    EXPECT_EQ(target.got(), ko::Orvid::etString);
    EXPECT_EQ(generated(target), generated(source));
    EXPECT_EQ(*before, "a");
}

TEST(TypeException, assignment_to_itself_changes_nothing) {
    const Document document(R"({"a":1})");
    TypeError error(&document.root.get("a"), ko::Orvid::etArray, ko::Orvid::etNumber);
    const std::string before = generated(error);
    const TypeError& same = error;
    error = same;
    EXPECT_EQ(generated(error), before);
}

}  // namespace
