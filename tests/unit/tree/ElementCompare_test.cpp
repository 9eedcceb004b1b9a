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
    EXPECT_EQ(-forward, Element::compare(b.data(), a.data()));
    EXPECT_GE(1, forward);
    EXPECT_LE(-1, forward);
    return forward;
}

int orderOfTexts(const std::string& a, const std::string& b) {
    return order(Document(a).root, Document(b).root);
}

// --- between types
// ------------------------------------------------------------------------------------

TEST(ElementCompare, types_order_before_all_values) {
    const Element ascending[] = {Element::k_emptyElement, Element(),   Element(true),
                                 Element(-1e300),         Element(""), Document("{}").root,
                                 Document("[]").root};
    const std::size_t count = sizeof ascending / sizeof *ascending;
    for (std::size_t i = 0; i < count; ++i) {
        for (std::size_t j = i + 1; j < count; ++j) {
            EXPECT_EQ(-1, order(ascending[i], ascending[j])) << i << " and " << j;
        }
        EXPECT_EQ(0, order(ascending[i], ascending[i]));
        EXPECT_EQ(0, order(ascending[i], Element(ascending[i])));
    }
}

TEST(ElementCompare, large_values_of_a_smaller_type_stay_below) {
    EXPECT_EQ(-1, order(Element(true), Element(0)));
    EXPECT_EQ(-1, order(Element(1e300), Element("")));
    EXPECT_EQ(-1, order(Element("zzz"), Document("{}").root));
    EXPECT_EQ(-1, orderOfTexts(R"({"z":{"z":[9]}})", "[]"));
}

TEST(ElementCompare, empty_is_below_null_and_equal_to_empty) {
    EXPECT_EQ(-1, order(Element::k_emptyElement, Element()));
    EXPECT_EQ(0, order(Element::k_emptyElement, Element(Element::k_emptyElement)));
}

TEST(ElementCompare, tags_that_are_no_type_order_by_their_number_and_equal_themselves) {
    Element::SData low;
    low.type = static_cast<EType>(-2);
    Element::SData high;
    high.type = static_cast<EType>(42);
    Element::SData same;
    same.type = static_cast<EType>(42);
    EXPECT_EQ(-1, Element::compare(low, Element::k_emptyElement.data()));
    EXPECT_EQ(1, Element::compare(high, Document("[]").root.data()));
    EXPECT_EQ(0, Element::compare(high, same));
    EXPECT_EQ(-1, Element::compare(low, high));
}

// --- within a type
// ------------------------------------------------------------------------------------

TEST(ElementCompare, nulls_are_equal) { EXPECT_EQ(0, order(Element(), Element())); }

TEST(ElementCompare, nulls_compare_their_markers_as_unsigned) {
    Element::SData small;
    small.value.null = 1;
    Element::SData large;
    large.value.null = 0xFFFFFFFFU;
    EXPECT_EQ(-1, Element::compare(small, large));
    EXPECT_EQ(1, Element::compare(large, small));
}

TEST(ElementCompare, false_is_below_true) {
    EXPECT_EQ(-1, order(Element(false), Element(true)));
    EXPECT_EQ(0, order(Element(true), Element(true)));
    EXPECT_EQ(0, order(Element(false), Element(false)));
}

TEST(ElementCompare, numbers_order_by_value) {
    EXPECT_EQ(-1, orderOfTexts("9", "10"));
    EXPECT_EQ(0, orderOfTexts("1e1", "10"));
    EXPECT_EQ(0, orderOfTexts("1.0", "1.00"));
    EXPECT_EQ(1, orderOfTexts("-1", "-2"));
    EXPECT_EQ(1, orderOfTexts("0.5", "-0.5"));
}

TEST(ElementCompare, numbers_follow_the_rules_of_numbers) {
    EXPECT_EQ(-1, order(Element(0), Element(0U)));
    EXPECT_EQ(-1, order(Element(0), Document("0").root));
    EXPECT_EQ(0, order(Element(std::nan("")), Element(1.5)));
}

TEST(ElementCompare, strings_order_byte_by_byte_and_then_by_length) {
    EXPECT_EQ(-1, order(Element("a"), Element("b")));
    EXPECT_EQ(-1, order(Element("B"), Element("a")));
    EXPECT_EQ(-1, order(Element("ab"), Element("abc")));
    EXPECT_EQ(-1, order(Element(""), Element("a")));
    EXPECT_EQ(1, order(Element("b"), Element("abc")));
    EXPECT_EQ(0, order(Element("abc"), Element("abc")));
}

TEST(ElementCompare, strings_order_bytes_as_unsigned) {
    EXPECT_EQ(-1, order(Element("z"), Element("\xC3\xA9")));
    EXPECT_EQ(-1, order(Element("\x7F"), Element("\x80")));
}

TEST(ElementCompare, strings_go_on_behind_null_bytes) {
    EXPECT_EQ(-1, order(Element(std::string("a\0a", 3)), Element(std::string("a\0b", 3))));
    EXPECT_EQ(-1, order(Element("a"), Element(std::string("a\0", 2))));
}

// --- arrays
// -----------------------------------------------------------------------------------------

TEST(ElementCompare, arrays_order_item_by_item_and_then_by_length) {
    EXPECT_EQ(-1, orderOfTexts("[1,2]", "[1,2,0]"));
    EXPECT_EQ(1, orderOfTexts("[1,3]", "[1,2,9]"));
    EXPECT_EQ(-1, orderOfTexts("[]", "[null]"));
    EXPECT_EQ(0, orderOfTexts("[]", "[]"));
    EXPECT_EQ(0, orderOfTexts("[1,[2,\"x\"]]", "[1,[2.0,\"x\"]]"));
    EXPECT_EQ(-1, orderOfTexts("[2,1]", "[10]"));
}

TEST(ElementCompare, arrays_order_nested_values_before_later_items) {
    EXPECT_EQ(-1, orderOfTexts("[[1,[2]],9]", "[[1,[3]],0]"));
    EXPECT_EQ(-1, orderOfTexts("[[1],9]", "[[1,0],0]"));
    EXPECT_EQ(1, orderOfTexts("[[1],9]", "[[1],0]"));
    EXPECT_EQ(-1, orderOfTexts("[null,9]", "[false,0]"));
}

// --- objects
// ----------------------------------------------------------------------------------------

TEST(ElementCompare, objects_order_members_in_insertion_order) {
    EXPECT_EQ(1, orderOfTexts(R"({"b":1,"a":2})", R"({"a":2,"b":1})"));
    EXPECT_EQ(0, orderOfTexts(R"({"b":1,"a":2})", R"({"b":1,"a":2.0})"));
}

TEST(ElementCompare, objects_order_keys_before_values) {
    EXPECT_EQ(-1, orderOfTexts(R"({"a":9})", R"({"b":1})"));
    EXPECT_EQ(-1, orderOfTexts(R"({"a":1})", R"({"a":2})"));
    EXPECT_EQ(-1, orderOfTexts(R"({"a":1,"z":0})", R"({"a":2,"b":0})"));
    EXPECT_EQ(-1, orderOfTexts(R"({"a":[]})", R"({"ab":null})"));
}

TEST(ElementCompare, objects_order_keys_by_unsigned_bytes) {
    EXPECT_EQ(-1, orderOfTexts("{\"z\":1}", "{\"\xC3\xA9\":1}"));
    EXPECT_EQ(-1, orderOfTexts("{\"\":1}", "{\"a\":1}"));
}

TEST(ElementCompare, objects_that_are_a_beginning_of_others_are_smaller) {
    EXPECT_EQ(-1, orderOfTexts("{}", R"({"a":null})"));
    EXPECT_EQ(-1, orderOfTexts(R"({"a":1})", R"({"a":1,"b":null})"));
    EXPECT_EQ(1, orderOfTexts(R"({"b":1})", R"({"a":1,"b":null})"));
}

TEST(ElementCompare, objects_order_nested_values_before_later_members) {
    EXPECT_EQ(-1, orderOfTexts(R"({"a":{"x":1},"b":9})", R"({"a":{"x":2},"b":0})"));
    EXPECT_EQ(1, orderOfTexts(R"({"a":{"x":[1]},"b":9})", R"({"a":{"x":[1]},"b":0})"));
}

// --- what does not count
// ------------------------------------------------------------------------------

TEST(ElementCompare, does_not_look_at_the_place) {
    const Document document(R"({"a":{"x":[1,2]},"b":[0,{"x":[1,2]}],"c":{"x":[1,2]}})");
    EXPECT_EQ(0, order(document.root.get("a"), document.root.get("b[1]")));
    EXPECT_EQ(0, order(document.root.get("a"), document.root.get("c")));
    EXPECT_EQ(0, order(document.root.get("a"), Element(document.root.get("a"))));
}

TEST(ElementCompare, record_equals_itself_even_where_it_cannot_be_compared) {
    Element element;
    element.setNumber(NumberProbe::bigDecimal("1"));
    EXPECT_EQ(0, order(element, element));
    Document document("[0]");
    document.root.get("[0]").setNumber(NumberProbe::bigDecimal("1"));
    EXPECT_EQ(0, order(document.root, document.root));
}

TEST(ElementCompare, changes_neither_side) {
    const Document a(R"({"a":[1,{"b":"x"}]})");
    const Document b(R"({"a":[1,{"b":"y"}]})");
    EXPECT_EQ(-1, order(a.root, b.root));
    EXPECT_EQ(R"({"a": [1,{"b": "x"}]})", orvid_test::compact(a.root));
    EXPECT_EQ(R"({"a": [1,{"b": "y"}]})", orvid_test::compact(b.root));
    CHECK_LINKS(a.root);
    CHECK_LINKS(b.root);
}

// --- numbers that cannot be compared
// --------------------------------------------------------------------

TEST(ElementCompare, lets_the_errors_of_numbers_through) {
    const Document bad(R"({"a":[1e400]})");
    const Document good(R"({"a":[1]})");
    EXPECT_THROW(Element::compare(good.root.data(), bad.root.data()), TextError);
    Element big;
    big.setNumber(NumberProbe::bigDecimal("2"));
    EXPECT_EQ(1, Element::compare(big.data(), Element(1).data()));
    const auto error =
        thrownBy<ko::Orvid::Exception>([&] { Element::compare(Element(1).data(), big.data()); });
    EXPECT_STREQ("Uncomparable type.", error.what());
}

TEST(ElementCompare, of_a_number_of_unknown_kind_is_not_implemented) {
    Element unknown;
    unknown.setNumber(NumberProbe::unknown());
    const auto error =
        thrownBy<ko::RuntimeError>([&] { Element::compare(unknown.data(), Element(1).data()); });
    EXPECT_STREQ("Unknown type, implementation missing", error.what());
}

TEST(ElementCompare, does_not_convert_numbers_behind_the_first_difference) {
    const Document a("[1,1e400]");
    const Document b("[2,1e400]");
    EXPECT_EQ(-1, order(a.root, b.root));
    EXPECT_EQ(Number::ebNone, NumberProbe::heldKind(a.root.get("[1]").number()));
}

}  // namespace
