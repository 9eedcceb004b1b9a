// SPDX-License-Identifier: MIT
//
// The root of the library's exceptions and the parse error: element context, texts, copies.

#include <ko/Orvid/Exception.h>

#include <gtest/gtest.h>
#include <ko/Orvid/Element.h>
#include <ko/Orvid/TypeException.h>

#include <memory>
#include <optional>
#include <sstream>
#include <string>
#include <type_traits>

#include "support/Document.h"
#include "support/ErrorText.h"
#include "support/GroupingLocale.h"

namespace {

using ko::Orvid::Element;
using ko::Orvid::Exception;
using ko::Orvid::ExpectedToken;
using ko::Orvid::ParseException;
using orvid_test::addressPart;
using orvid_test::Document;
using orvid_test::generated;
using orvid_test::thrownBy;

const Element* const k_noElement = nullptr;

static_assert(std::is_base_of_v<ko::Exception, Exception>);
static_assert(std::is_base_of_v<Exception, ParseException>);
static_assert(std::is_base_of_v<std::exception, Exception>);
static_assert(std::has_virtual_destructor_v<Exception>);

TEST(OrvidException, from_a_cause_has_no_message_and_no_path) {
    const ko::Exception cause("the cause");
    const Exception error(&cause);
    EXPECT_EQ(error.elementPath(), nullptr);
    EXPECT_STREQ(error.what(), " Cause: the cause");
}

TEST(OrvidException, from_no_cause_has_an_empty_text) {
    const Exception error(nullptr);
    EXPECT_EQ(error.elementPath(), nullptr);
    EXPECT_STREQ(error.what(), "");
}

TEST(OrvidException, from_no_element_and_no_cause_has_an_empty_text) {
    const Exception error(nullptr, nullptr);
    EXPECT_EQ(error.elementPath(), nullptr);
    EXPECT_EQ(error.cause(), nullptr);
    EXPECT_STREQ(error.what(), "");
}

TEST(OrvidException, from_a_message_shows_it_and_has_no_path) {
    const Exception error("out of paper");
    EXPECT_EQ(error.elementPath(), nullptr);
    EXPECT_STREQ(error.what(), "out of paper");
    EXPECT_STREQ(Exception("out of paper", nullptr).what(), "out of paper");
}

TEST(OrvidException, hands_its_cause_on_to_the_base) {
    const ko::RuntimeError cause("no printer");
    const Document document(R"({"a":1})");
    const Element& element = document.root.get("a");
    EXPECT_STREQ(Exception("out of paper", &cause).what(), "out of paper Cause: no printer");
    EXPECT_STREQ(Exception("out of paper", &element, &cause).what(),
                 "out of paper Cause: no printer");
    EXPECT_STREQ(Exception(&element, &cause).what(), " Cause: no printer");
}

TEST(OrvidException, stores_the_path_of_the_element_from_the_root) {
    const Document document(R"({"a":{"b":[10,{"c d":true}]}})");
    const Element& element = document.root.get("a.b[1].c d");
    const Exception error(&element);
    ASSERT_NE(error.elementPath(), nullptr);
    EXPECT_EQ(*error.elementPath(), element.path());
    EXPECT_EQ(*error.elementPath(), "a.b[1].c d");
}

TEST(OrvidException, stores_the_empty_path_of_a_root) {
    const Element root;
    const Exception error("message", &root);
    ASSERT_NE(error.elementPath(), nullptr);
    EXPECT_EQ(*error.elementPath(), "");
}

TEST(OrvidException, of_no_element_stores_no_path) {
    const ko::Exception cause("the cause");
    EXPECT_EQ(Exception(k_noElement).elementPath(), nullptr);
    EXPECT_EQ(Exception(k_noElement, &cause).elementPath(), nullptr);
    EXPECT_EQ(Exception("message", k_noElement).elementPath(), nullptr);
}

TEST(OrvidException, does_not_print_its_path) {
    const Document document(R"({"a":1})");
    const Exception error("message", &document.root.get("a"));
    EXPECT_STREQ(error.what(), "message");
    EXPECT_EQ(generated(error), "message");
}

TEST(OrvidException, outlives_the_tree) {
    auto document = std::make_unique<Document>(R"({"a":[0,1]})");
    const Exception error("message", &document->root.get("a[1]"));
    document.reset();
    EXPECT_EQ(*error.elementPath(), "a[1]");
}

TEST(OrvidException, keeps_the_path_that_the_element_had_when_it_was_built) {
    Document document(R"({"a":[0,1]})");
    const Exception error("message", &document.root.get("a[1]"));
    document.root.remove(Element(0U), "", "a");
    EXPECT_EQ(ko::Orvid::Generator().encode(document.root.get("a")), "[\n    1\n]\n");
    EXPECT_EQ(*error.elementPath(), "a[1]");
}

TEST(OrvidException, copy_has_a_path_string_of_its_own) {
    const Document document(R"({"a":1})");
    auto first = std::make_unique<Exception>("message", &document.root.get("a"));
    auto second = std::make_unique<Exception>(*first);
    EXPECT_NE(second->elementPath(), first->elementPath());
    EXPECT_STREQ(second->what(), "message");
    first.reset();
    EXPECT_EQ(*second->elementPath(), "a");
}

TEST(OrvidException, copy_that_ends_first_leaves_the_path_of_the_original) {
    const Document document(R"({"a":1})");
    const Exception original("message", &document.root.get("a"));
    { const Exception copy(original); }
    EXPECT_EQ(*original.elementPath(), "a");
}

TEST(OrvidException, copy_of_one_without_path_has_none) {
    const Exception error("message");
    const Exception copy(error);
    EXPECT_EQ(copy.elementPath(), nullptr);
    EXPECT_STREQ(copy.what(), "message");
}

TEST(OrvidException, clone_is_a_heap_copy_with_a_path_string_of_its_own) {
    const Document document(R"({"a":1})");
    auto original = std::make_unique<Exception>("message", &document.root.get("a"));
    const ko::Exception& base = *original;
    const std::unique_ptr<ko::Exception> clone(base.clone());
    const auto& typed = dynamic_cast<const Exception&>(*clone);
    EXPECT_NE(typed.elementPath(), original->elementPath());
    original.reset();
    EXPECT_STREQ(typed.what(), "message");
    EXPECT_EQ(*typed.elementPath(), "a");
}

TEST(OrvidException, assignment_takes_over_message_cause_and_a_copy_of_the_path) {
    const Document document(R"({"a":1,"b":2})");
    const ko::Exception cause("because");
    Exception target("old", &document.root.get("a"));
    auto source = std::make_unique<Exception>("new", &document.root.get("b"), &cause);
    EXPECT_EQ(&(target = *source), &target);
    EXPECT_NE(target.elementPath(), source->elementPath());
    source.reset();
    EXPECT_EQ(*target.elementPath(), "b");
    EXPECT_STREQ(target.what(), "new Cause: because");
}

TEST(OrvidException, assignment_leaves_the_path_that_was_handed_out_before_readable) {
    const Document document(R"({"a":1,"b":2})");
    Exception target("old", &document.root.get("a"));
    const std::string* const first = target.elementPath();
    target = Exception("new", &document.root.get("b"));
    const std::string* const second = target.elementPath();
    target = Exception("none");
    EXPECT_EQ(*first, "a");
    EXPECT_EQ(*second, "b");
    EXPECT_NE(second, first);
    EXPECT_EQ(target.elementPath(), nullptr);
}

TEST(OrvidException, assignment_gives_a_path_to_one_that_had_none) {
    const Document document(R"({"a":1})");
    Exception target("none");
    target = Exception("new", &document.root.get("a"));
    ASSERT_NE(target.elementPath(), nullptr);
    EXPECT_EQ(*target.elementPath(), "a");
}

TEST(OrvidException, assignment_to_itself_keeps_the_very_path_string) {
    const Document document(R"({"a":1})");
    Exception error("message", &document.root.get("a"));
    const std::string* const path = error.elementPath();
    const Exception& same = error;
    error = same;
    EXPECT_EQ(error.elementPath(), path);
    EXPECT_EQ(*error.elementPath(), "a");
    EXPECT_STREQ(error.what(), "message");
}

TEST(OrvidException, is_caught_as_each_of_its_bases) {
    const auto raise = [] { throw ParseException("message", -1, -1, -1, -1); };
    EXPECT_THROW(raise(), ParseException);
    EXPECT_THROW(raise(), Exception);
    EXPECT_THROW(raise(), ko::Exception);
    EXPECT_THROW(raise(), std::exception);
}

// ParseException.

std::string textOf(int firstLine, int firstColumn, int lastLine, int lastColumn) {
    return generated(ParseException("Message", firstLine, firstColumn, lastLine, lastColumn));
}

TEST(ParseException, prints_the_whole_span_directly_followed_by_the_message) {
    EXPECT_EQ(generated(ParseException("Unreadable index", 1, 4, 1, 7)),
              "Parse error at 1,4-1,7Unreadable index");
}

TEST(ParseException, of_unknown_span_prints_the_message_alone) {
    EXPECT_EQ(generated(ParseException("Unexpected string!", -1, -1, -1, -1)),
              "Unexpected string!");
}

TEST(ParseException, prints_each_number_of_the_span_only_where_it_is_known) {
    EXPECT_EQ(textOf(3, -1, -1, -1), "Parse error at 3Message");
    EXPECT_EQ(textOf(3, 8, -1, -1), "Parse error at 3,8Message");
    EXPECT_EQ(textOf(3, -1, 4, -1), "Parse error at 3-4Message");
    EXPECT_EQ(textOf(3, -1, 4, 5), "Parse error at 3-4,5Message");
    EXPECT_EQ(textOf(3, 8, 4, -1), "Parse error at 3,8-4Message");
}

TEST(ParseException, without_first_line_prints_the_end_without_head_and_dash) {
    EXPECT_EQ(textOf(-1, -1, 2, 5), "2,5Message");
    EXPECT_EQ(textOf(-1, -1, 2, -1), "2Message");
}

TEST(ParseException, without_lines_leaves_the_columns_out) {
    EXPECT_EQ(textOf(-1, 4, -1, 7), "Message");
    EXPECT_EQ(textOf(1, 4, -1, 7), "Parse error at 1,4Message");
}

TEST(ParseException, takes_only_minus_one_for_unknown) {
    EXPECT_EQ(textOf(0, 0, 0, 0), "Parse error at 0,0-0,0Message");
    EXPECT_EQ(textOf(-2, -3, -4, -5), "Parse error at -2,-3--4,-5Message");
}

TEST(ParseException, keeps_what_it_was_given) {
    const ParseException error("Message", 1, 2, 3, 4);
    EXPECT_EQ(error.message(), "Message");
    EXPECT_EQ(error.firstLine(), 1);
    EXPECT_EQ(error.firstColumn(), 2);
    EXPECT_EQ(error.lastLine(), 3);
    EXPECT_EQ(error.lastColumn(), 4);
    EXPECT_EQ(error.elementPath(), nullptr);
}

TEST(ParseException, takes_another_message_and_span_and_keeps_its_element) {
    Document document(R"({"a": 1})");
    ParseException error(&document.root.get("a"), "old", 1, 2, 3, 4);
    error.init("new", 5, 6, 7, 8);
    EXPECT_EQ(error.message(), "new");
    EXPECT_EQ(error.firstLine(), 5);
    EXPECT_EQ(error.firstColumn(), 6);
    EXPECT_EQ(error.lastLine(), 7);
    EXPECT_EQ(error.lastColumn(), 8);
    EXPECT_EQ(*error.elementPath(), "a");
}

TEST(ParseException, has_found_and_expected_nothing_that_is_known_at_first) {
    const ParseException error("Message", 1, 2, 3, 4);
    EXPECT_EQ(error.found(), std::nullopt);
    EXPECT_EQ(error.expected(), ExpectedToken::unknown);
}

TEST(ParseException, keeps_what_was_found_first_and_expected_there) {
    ParseException error("Message", 1, 2, 3, 4);
    error.addFound(std::nullopt);
    error.addFound('\0', ExpectedToken::key);
    error.addFound('b', ExpectedToken::comma);
    error.addFound(std::nullopt);
    EXPECT_EQ(error.found(), '\0');
    EXPECT_EQ(error.expected(), ExpectedToken::key);
    EXPECT_STREQ(error.what(), "Parse error at 1,2-3,4Message");
}

/// What was found and expected.
std::string factsOf(const ParseException& error) {
    return std::string(1, error.found().value_or('-')) +
           std::to_string(static_cast<int>(error.expected()));
}

TEST(ParseException, takes_along_what_was_found_and_expected) {
    ParseException error("Message", 1, 2, 3, 4);
    error.addFound('a', ExpectedToken::key);
    const std::unique_ptr<ko::Exception> clone(error.clone());
    ParseException assigned("Old", 9, 9, 9, 9);
    assigned.addFound('b', ExpectedToken::comma);
    assigned = error;
    ParseException again(error);
    again.init("new", 5, 6, 7, 8);
    EXPECT_EQ(factsOf(error), "a2");
    EXPECT_EQ(factsOf(ParseException(error)), "a2");
    EXPECT_EQ(factsOf(dynamic_cast<const ParseException&>(*clone)), "a2");
    EXPECT_EQ(factsOf(assigned), "a2");
    EXPECT_EQ(factsOf(again), "a2");
    EXPECT_EQ(factsOf(error.withCode(ko::Orvid::ParseErrorCode::syntax)), "a2");
    assigned = ParseException("Message", 1, 2, 3, 4);
    EXPECT_EQ(factsOf(assigned), "-0");
}

TEST(ParseException, prints_the_address_of_its_path_in_place_of_the_path) {
    const Document document(R"({"a":[0,1]})");
    const ParseException error(&document.root.get("a[1]"), "Unexpected string!", -1, -1, -1, -1);
    EXPECT_EQ(*error.elementPath(), "a[1]");
    EXPECT_EQ(generated(error), "Unexpected string!" + addressPart(error));
    EXPECT_EQ(error.what(), generated(error));
}

TEST(ParseException, of_no_element_prints_no_element_part) {
    const ParseException error(k_noElement, "Message", 1, 2, 3, 4);
    EXPECT_EQ(error.elementPath(), nullptr);
    EXPECT_EQ(generated(error), "Parse error at 1,2-3,4Message");
}

TEST(ParseException, does_not_print_its_cause) {
    const Exception cause("because");
    EXPECT_STREQ(ParseException("Message", -1, -1, -1, -1, &cause).what(), "Message");
    EXPECT_STREQ(ParseException(k_noElement, "Message", -1, -1, -1, -1, &cause).what(), "Message");
}

TEST(ParseException, copy_prints_the_same_with_the_address_of_its_own_path) {
    const Document document(R"({"a":1})");
    auto original =
        std::make_unique<ParseException>(&document.root.get("a"), "Message", 1, 2, 3, 4);
    const ParseException copy(*original);
    EXPECT_NE(copy.elementPath(), original->elementPath());
    original.reset();
    EXPECT_EQ(generated(copy), "Parse error at 1,2-3,4Message" + addressPart(copy));
}

TEST(ParseException, clone_is_a_parse_exception_with_the_same_fields) {
    const Document document(R"({"a":1})");
    const ParseException original(&document.root.get("a"), "Message", 1, 2, 3, 4);
    const std::unique_ptr<ko::Exception> clone(static_cast<const ko::Exception&>(original).clone());
    const auto& typed = dynamic_cast<const ParseException&>(*clone);
    EXPECT_EQ(typed.message(), "Message");
    EXPECT_EQ(typed.lastColumn(), 4);
    EXPECT_EQ(*typed.elementPath(), "a");
    EXPECT_EQ(generated(typed), "Parse error at 1,2-3,4Message" + addressPart(typed));
}

TEST(ParseException, assignment_takes_over_every_field) {
    const Document document(R"({"a":1,"b":2})");
    ParseException target(&document.root.get("a"), "Old", 9, 9, 9, 9);
    const std::string* const before = target.elementPath();
    const ParseException source(&document.root.get("b"), "Message", 1, 2, 3, 4);
    EXPECT_EQ(&(target = source), &target);
    EXPECT_EQ(target.message(), "Message");
    EXPECT_EQ(target.firstLine(), 1);
    EXPECT_EQ(target.firstColumn(), 2);
    EXPECT_EQ(target.lastLine(), 3);
    EXPECT_EQ(target.lastColumn(), 4);
    EXPECT_EQ(*target.elementPath(), "b");
    EXPECT_EQ(*before, "a");
}

TEST(ParseException, assignment_to_itself_changes_nothing) {
    const Document document(R"({"a":1})");
    ParseException error(&document.root.get("a"), "Message", 1, 2, 3, 4);
    const std::string before = generated(error);
    const ParseException& same = error;
    error = same;
    EXPECT_EQ(generated(error), before);
}

TEST(ParseException, takes_over_its_own_cause) {
    const std::string message = "A message that is long enough to be on the heap.";
    const ParseException cause(message, 1, 2, 3, 4);
    ParseException error("Another message, which is long enough for that too.", 5, 6, 7, 8, &cause);
    error = dynamic_cast<const ParseException&>(*error.cause());
    EXPECT_EQ(error.what(), "Parse error at 1,2-3,4" + message);
    EXPECT_EQ(error.cause(), nullptr);
}

TEST(ParseException, text_does_not_depend_on_the_locale) {
    const orvid_test::GroupingLocale locale;
    EXPECT_EQ(textOf(1000, 2000, 3000, 4000), "Parse error at 1000,2000-3000,4000Message");
}

// The paths that the library itself puts into exceptions.

TEST(OrvidException, path_of_a_far_item_does_not_depend_on_the_locale) {
    Document document("[]");
    for (int i = 0; i < 1235; ++i) {
        document.root.array().push_back(Element(i));
    }
    const Element& item = document.root.array()[1234];
    const orvid_test::GroupingLocale locale;
    const auto error = thrownBy<ko::Orvid::TypeException<ko::Orvid::EType>>([&] { item.string(); });
    EXPECT_EQ(*error.elementPath(), "[1234]");
    EXPECT_EQ(&document.root.get(*error.elementPath()), &item);
}

/// As a program writes its own error, to the letter of the root class.
class OwnError : public ko::Orvid::Exception {
public:
    OwnError() : Exception("own") {}
    ko::Exception* clone() const override { return new OwnError(*this); }
};

TEST(OrvidException, can_be_derived_from_with_a_clone_of_the_root_type) {
    const OwnError error;
    const std::unique_ptr<ko::Exception> copy(error.clone());
    EXPECT_STREQ(copy->what(), "own");
    EXPECT_NE(dynamic_cast<const OwnError*>(copy.get()), nullptr);
}

}  // namespace
