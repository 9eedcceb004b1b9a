// SPDX-License-Identifier: MIT
//
// The order of values: between types, within each type, and through containers.

#include <ko/Orvid/Element.h>

#include <gtest/gtest.h>
#include <ko/Exception.h>
#include <ko/Orvid/Array.h>
#include <ko/Orvid/Exception.h>
#include <ko/Orvid/Object.h>

#include <cmath>
#include <string>

#include "support/Document.h"
#include "support/NumberErrors.h"
#include "support/NumberProbe.h"

namespace {

using ko::Orvid::Element;
using ko::Orvid::EType;
using ko::Orvid::Number;
using ko::Orvid::NumberProbe;
using orvid_test::Document;
using orvid_test::TextError;
using orvid_test::thrownBy;

/// compare(a, b), which must be -1, 0 or 1 and the opposite of compare(b, a).
int order(const Element& a, const Element& b) {
    const int forward = Element::compare(a.data(), b.data());
    EXPECT_EQ(Element::compare(b.data(), a.data()), -forward);
    EXPECT_GE(1, forward);
    EXPECT_LE(-1, forward);
    return forward;
}

int orderOfTexts(const std::string& a, const std::string& b) {
    return order(Document(a).root, Document(b).root);
}

// Between types.

TEST(ElementCompare, types_order_before_all_values) {
    const Element ascending[] = {Element::k_emptyElement, Element(),   Element(true),
                                 Element(-1e300),         Element(""), Document("{}").root,
                                 Document("[]").root};
    const std::size_t count = sizeof ascending / sizeof *ascending;
    for (std::size_t i = 0; i < count; ++i) {
        for (std::size_t j = i + 1; j < count; ++j) {
            EXPECT_EQ(order(ascending[i], ascending[j]), -1) << i << " and " << j;
        }
        EXPECT_EQ(order(ascending[i], ascending[i]), 0);
        EXPECT_EQ(order(ascending[i], Element(ascending[i])), 0);
    }
}

TEST(ElementCompare, large_values_of_a_smaller_type_stay_below) {
    EXPECT_EQ(order(Element(true), Element(0)), -1);
    EXPECT_EQ(order(Element(1e300), Element("")), -1);
    EXPECT_EQ(order(Element("zzz"), Document("{}").root), -1);
    EXPECT_EQ(orderOfTexts(R"({"z":{"z":[9]}})", "[]"), -1);
}

TEST(ElementCompare, empty_is_below_null_and_equal_to_empty) {
    EXPECT_EQ(order(Element::k_emptyElement, Element()), -1);
    EXPECT_EQ(order(Element::k_emptyElement, Element(Element::k_emptyElement)), 0);
}

TEST(ElementCompare, tags_that_are_no_type_order_by_their_number_and_equal_themselves) {
    Element::SData low;
    low.type = static_cast<EType>(-2);
    Element::SData high;
    high.type = static_cast<EType>(42);
    Element::SData same;
    same.type = static_cast<EType>(42);
    EXPECT_EQ(Element::compare(low, Element::k_emptyElement.data()), -1);
    EXPECT_EQ(Element::compare(high, Document("[]").root.data()), 1);
    EXPECT_EQ(Element::compare(high, same), 0);
    EXPECT_EQ(Element::compare(low, high), -1);
}

// Within a type.

TEST(ElementCompare, nulls_are_equal) { EXPECT_EQ(order(Element(), Element()), 0); }

TEST(ElementCompare, nulls_compare_their_markers_as_unsigned) {
    Element::SData small;
    small.value.null = 1;
    Element::SData large;
    large.value.null = 0xFFFFFFFFU;
    EXPECT_EQ(Element::compare(small, large), -1);
    EXPECT_EQ(Element::compare(large, small), 1);
}

TEST(ElementCompare, false_is_below_true) {
    EXPECT_EQ(order(Element(false), Element(true)), -1);
    EXPECT_EQ(order(Element(true), Element(true)), 0);
    EXPECT_EQ(order(Element(false), Element(false)), 0);
}

TEST(ElementCompare, numbers_order_by_value) {
    EXPECT_EQ(orderOfTexts("9", "10"), -1);
    EXPECT_EQ(orderOfTexts("1e1", "10"), 0);
    EXPECT_EQ(orderOfTexts("1.0", "1.00"), 0);
    EXPECT_EQ(orderOfTexts("-1", "-2"), 1);
    EXPECT_EQ(orderOfTexts("0.5", "-0.5"), 1);
}

TEST(ElementCompare, numbers_follow_the_rules_of_numbers) {
    EXPECT_EQ(order(Element(0), Element(0U)), -1);
    EXPECT_EQ(order(Element(0), Document("0").root), -1);
    EXPECT_EQ(order(Element(std::nan("")), Element(1.5)), 0);
}

TEST(ElementCompare, strings_order_byte_by_byte_and_then_by_length) {
    EXPECT_EQ(order(Element("a"), Element("b")), -1);
    EXPECT_EQ(order(Element("B"), Element("a")), -1);
    EXPECT_EQ(order(Element("ab"), Element("abc")), -1);
    EXPECT_EQ(order(Element(""), Element("a")), -1);
    EXPECT_EQ(order(Element("b"), Element("abc")), 1);
    EXPECT_EQ(order(Element("abc"), Element("abc")), 0);
}

TEST(ElementCompare, strings_order_bytes_as_unsigned) {
    EXPECT_EQ(order(Element("z"), Element("\xC3\xA9")), -1);
    EXPECT_EQ(order(Element("\x7F"), Element("\x80")), -1);
}

TEST(ElementCompare, strings_go_on_after_null_bytes) {
    EXPECT_EQ(order(Element(std::string("a\0a", 3)), Element(std::string("a\0b", 3))), -1);
    EXPECT_EQ(order(Element("a"), Element(std::string("a\0", 2))), -1);
}

// Arrays.

TEST(ElementCompare, arrays_order_item_by_item_and_then_by_length) {
    EXPECT_EQ(orderOfTexts("[1,2]", "[1,2,0]"), -1);
    EXPECT_EQ(orderOfTexts("[1,3]", "[1,2,9]"), 1);
    EXPECT_EQ(orderOfTexts("[]", "[null]"), -1);
    EXPECT_EQ(orderOfTexts("[]", "[]"), 0);
    EXPECT_EQ(orderOfTexts("[1,[2,\"x\"]]", "[1,[2.0,\"x\"]]"), 0);
    EXPECT_EQ(orderOfTexts("[2,1]", "[10]"), -1);
}

TEST(ElementCompare, arrays_order_nested_values_before_later_items) {
    EXPECT_EQ(orderOfTexts("[[1,[2]],9]", "[[1,[3]],0]"), -1);
    EXPECT_EQ(orderOfTexts("[[1],9]", "[[1,0],0]"), -1);
    EXPECT_EQ(orderOfTexts("[[1],9]", "[[1],0]"), 1);
    EXPECT_EQ(orderOfTexts("[null,9]", "[false,0]"), -1);
}

// Objects.

TEST(ElementCompare, objects_order_members_in_insertion_order) {
    EXPECT_EQ(orderOfTexts(R"({"b":1,"a":2})", R"({"a":2,"b":1})"), 1);
    EXPECT_EQ(orderOfTexts(R"({"b":1,"a":2})", R"({"b":1,"a":2.0})"), 0);
}

TEST(ElementCompare, objects_order_keys_before_values) {
    EXPECT_EQ(orderOfTexts(R"({"a":9})", R"({"b":1})"), -1);
    EXPECT_EQ(orderOfTexts(R"({"a":1})", R"({"a":2})"), -1);
    EXPECT_EQ(orderOfTexts(R"({"a":1,"z":0})", R"({"a":2,"b":0})"), -1);
    EXPECT_EQ(orderOfTexts(R"({"a":[]})", R"({"ab":null})"), -1);
}

TEST(ElementCompare, objects_order_keys_by_unsigned_bytes) {
    EXPECT_EQ(orderOfTexts("{\"z\":1}", "{\"\xC3\xA9\":1}"), -1);
    EXPECT_EQ(orderOfTexts("{\"\":1}", "{\"a\":1}"), -1);
}

TEST(ElementCompare, objects_that_are_a_beginning_of_others_are_smaller) {
    EXPECT_EQ(orderOfTexts("{}", R"({"a":null})"), -1);
    EXPECT_EQ(orderOfTexts(R"({"a":1})", R"({"a":1,"b":null})"), -1);
    EXPECT_EQ(orderOfTexts(R"({"b":1})", R"({"a":1,"b":null})"), 1);
}

TEST(ElementCompare, objects_order_nested_values_before_later_members) {
    EXPECT_EQ(orderOfTexts(R"({"a":{"x":1},"b":9})", R"({"a":{"x":2},"b":0})"), -1);
    EXPECT_EQ(orderOfTexts(R"({"a":{"x":[1]},"b":9})", R"({"a":{"x":[1]},"b":0})"), 1);
}

// What does not count.

TEST(ElementCompare, does_not_look_at_the_place) {
    const Document document(R"({"a":{"x":[1,2]},"b":[0,{"x":[1,2]}],"c":{"x":[1,2]}})");
    EXPECT_EQ(order(document.root.get("a"), document.root.get("b[1]")), 0);
    EXPECT_EQ(order(document.root.get("a"), document.root.get("c")), 0);
    EXPECT_EQ(order(document.root.get("a"), Element(document.root.get("a"))), 0);
}

TEST(ElementCompare, record_equals_itself_even_where_it_cannot_be_compared) {
    Element element;
    element.setNumber(NumberProbe::bigDecimal("1"));
    EXPECT_EQ(order(element, element), 0);
    Document document("[0]");
    document.root.get("[0]").setNumber(NumberProbe::bigDecimal("1"));
    EXPECT_EQ(order(document.root, document.root), 0);
}

TEST(ElementCompare, changes_neither_side) {
    const Document a(R"({"a":[1,{"b":"x"}]})");
    const Document b(R"({"a":[1,{"b":"y"}]})");
    EXPECT_EQ(order(a.root, b.root), -1);
    EXPECT_EQ(orvid_test::compact(a.root), R"({"a": [1,{"b": "x"}]})");
    EXPECT_EQ(orvid_test::compact(b.root), R"({"a": [1,{"b": "y"}]})");
    CHECK_LINKS(a.root);
    CHECK_LINKS(b.root);
}

// Numbers that cannot be compared.

TEST(ElementCompare, lets_the_errors_of_numbers_through) {
    const Document bad(R"({"a":[1e400]})");
    const Document good(R"({"a":[1]})");
    EXPECT_THROW(Element::compare(good.root.data(), bad.root.data()), TextError);
    Element big;
    big.setNumber(NumberProbe::bigDecimal("2"));
    EXPECT_EQ(Element::compare(big.data(), Element(1).data()), 1);
    const auto error =
        thrownBy<ko::Orvid::Exception>([&] { Element::compare(Element(1).data(), big.data()); });
    EXPECT_STREQ(error.what(), "Uncomparable type.");
}

TEST(ElementCompare, of_a_number_of_unknown_kind_is_not_implemented) {
    Element unknown;
    unknown.setNumber(NumberProbe::unknown());
    const auto error =
        thrownBy<ko::RuntimeError>([&] { Element::compare(unknown.data(), Element(1).data()); });
    EXPECT_STREQ(error.what(), "Unknown type, implementation missing");
}

TEST(ElementCompare, does_not_convert_numbers_after_the_first_difference) {
    const Document a("[1,1e400]");
    const Document b("[2,1e400]");
    EXPECT_EQ(order(a.root, b.root), -1);
    EXPECT_EQ(NumberProbe::heldKind(a.root.get("[1]").number()), Number::ebNone);
}

}  // namespace
