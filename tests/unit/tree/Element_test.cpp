// SPDX-License-Identifier: MIT
//
// The element as a value in its place: its constants, constructors, typed access and root. How it
// is set, copied and assigned, its payload records, its order and the operations by path are
// elsewhere.

#include <ko/Orvid/Element.h>

#include <gtest/gtest.h>
#include <ko/Orvid/Array.h>
#include <ko/Orvid/Object.h>
#include <ko/Orvid/TypeException.h>

#include <string>
#include <type_traits>
#include <utility>

#include "support/Document.h"
#include "support/ElementValues.h"
#include "support/NumberProbe.h"

namespace {

using ko::Orvid::Element;
using ko::Orvid::EType;
using ko::Orvid::Number;
using ko::Orvid::NumberProbe;
using orvid_test::Document;
using orvid_test::equal;
using orvid_test::isFreeStanding;
using orvid_test::oneOfEachType;
using orvid_test::thrownBy;
using TypeError = ko::Orvid::TypeException<EType>;

TEST(ElementConstants, are_empty_values_without_a_place) {
    EXPECT_EQ(Element::k_null, 0U);
    EXPECT_EQ(Element::k_emptyNull, Element::k_null);
    EXPECT_FALSE(Element::k_emptyBoolean);
    EXPECT_EQ(Element::k_emptyString, "");
    EXPECT_EQ(Element::k_emptyObject.size(), 0U);
    EXPECT_EQ(Element::k_emptyObject.parent(), nullptr);
    EXPECT_EQ(Element::k_emptyArray.size(), 0U);
    EXPECT_EQ(Element::k_emptyArray.parent(), nullptr);
}

TEST(ElementConstants, empty_number_is_a_signed_zero_with_text) {
    EXPECT_EQ(NumberProbe::heldKind(Element::k_emptyNumber), Number::ebLongLong);
    EXPECT_EQ(NumberProbe::heldText(Element::k_emptyNumber), "0");
    EXPECT_EQ(NumberProbe::heldSigned(Element::k_emptyNumber), 0);
}

TEST(ElementConstants, empty_element_is_of_type_empty) {
    EXPECT_EQ(Element::k_emptyElement.type(), ko::Orvid::etEmpty);
    EXPECT_TRUE(Element::k_emptyElement.isEmpty());
    EXPECT_FALSE(Element::k_emptyElement.isNull());
    EXPECT_TRUE(isFreeStanding(Element::k_emptyElement));
}

static_assert(!std::is_polymorphic_v<Element>);
static_assert(std::is_nothrow_default_constructible_v<Element>);

// A pointer is a string when it points to characters, and else nothing at all.
static_assert(std::is_constructible_v<Element, const char*>);
static_assert(std::is_constructible_v<Element, char*>);
static_assert(!std::is_constructible_v<Element, void*>);
static_assert(!std::is_constructible_v<Element, const void*>);
static_assert(!std::is_constructible_v<Element, int*>);
static_assert(!std::is_constructible_v<Element, const unsigned char*>);
static_assert(!std::is_constructible_v<Element, const wchar_t*>);
static_assert(!std::is_constructible_v<Element, Element*>);
static_assert(!std::is_constructible_v<Element, const Element*>);
static_assert(!std::is_constructible_v<Element, Number*>);
static_assert(!std::is_constructible_v<Element, std::string*>);
static_assert(!std::is_constructible_v<Element, void (*)()>);
static_assert(!std::is_constructible_v<Element, int Element::*>);
static_assert(!std::is_assignable_v<Element&, void*>);
static_assert(!std::is_assignable_v<Element&, const Element*>);

// An enumerator is no number.
static_assert(!std::is_constructible_v<Element, EType>);

TEST(Element, by_default_is_a_free_standing_null) {
    const Element element;
    EXPECT_EQ(element.type(), ko::Orvid::etNull);
    EXPECT_EQ(element.data().value.null, Element::k_null);
    EXPECT_TRUE(isFreeStanding(element));
}

TEST(Element, from_a_bool_is_a_boolean) {
    const Element yes(true);
    EXPECT_EQ(yes.type(), ko::Orvid::etBoolean);
    EXPECT_TRUE(yes.boolean());
    EXPECT_TRUE(isFreeStanding(yes));
    const Element no = false;
    EXPECT_EQ(no.type(), ko::Orvid::etBoolean);
    EXPECT_FALSE(no.boolean());
}

TEST(Element, from_a_literal_is_a_string_and_never_a_boolean) {
    const Element element("x");
    ASSERT_EQ(element.type(), ko::Orvid::etString);
    EXPECT_EQ(element.string(), "x");
    EXPECT_TRUE(isFreeStanding(element));
    const Element implicit = "true";
    EXPECT_EQ(implicit.type(), ko::Orvid::etString);
    char buffer[] = "abc";
    EXPECT_EQ(Element(static_cast<char*>(buffer)).string(), "abc");
}

TEST(Element, from_a_string_keeps_all_its_bytes) {
    const std::string text("a\0\xFF", 3);
    const Element element(text);
    EXPECT_EQ(element.string(), text);
    EXPECT_EQ(Element(std::string("12")).type(), ko::Orvid::etString);
    EXPECT_EQ(Element("").string(), "");
}

template<class T>
void expectNumber(T value, Number::EBinaryType kind, const char* text) {
    const Element element(value);
    ASSERT_EQ(element.type(), ko::Orvid::etNumber);
    EXPECT_EQ(element.number().type(), kind);
    EXPECT_EQ(element.number().toString(), text);
    EXPECT_TRUE(isFreeStanding(element));
    Element changed;
    changed.setNumber(value);
    EXPECT_TRUE(equal(element, changed));
    EXPECT_EQ(changed.number().type(), kind);
}

TEST(Element, from_each_arithmetic_type_is_a_number_of_its_kind) {
    expectNumber(static_cast<char>('a'), Number::ebLongLong, "97");
    expectNumber(static_cast<short>(-2), Number::ebLongLong, "-2");
    expectNumber(-3, Number::ebLongLong, "-3");
    expectNumber(-4L, Number::ebLongLong, "-4");
    expectNumber(-5LL, Number::ebLongLong, "-5");
    expectNumber(static_cast<unsigned char>(200), Number::ebULongLong, "200");
    expectNumber(static_cast<unsigned short>(6), Number::ebULongLong, "6");
    expectNumber(7U, Number::ebULongLong, "7");
    expectNumber(8UL, Number::ebULongLong, "8");
    expectNumber(9ULL, Number::ebULongLong, "9");
    expectNumber(0.5F, Number::ebDouble, "0.5");
    expectNumber(0.25, Number::ebDouble, "0.25");
    expectNumber(0, Number::ebLongLong, "0");
}

TEST(Element, from_other_arithmetic_types_is_the_number_they_are_promoted_to) {
    expectNumber(static_cast<signed char>(-128), Number::ebLongLong, "-128");
    expectNumber(L'a', Number::ebLongLong, "97");
    expectNumber(u'\uFFFF', Number::ebLongLong, "65535");
    expectNumber(U'\U0010FFFF', Number::ebULongLong, "1114111");
    expectNumber(-0.5L, Number::ebDouble, "-0.5");
    EXPECT_EQ(Number(static_cast<signed char>(-1)).type(), Number::ebLongLong);
}

TEST(Element, from_a_number_keeps_both_its_sides) {
    const Number number("1.50");
    const Element element(number);
    EXPECT_EQ(element.number().toString(), "1.50");
    EXPECT_EQ(NumberProbe::heldKind(element.number()), Number::ebNone);
    EXPECT_NE(&element.number(), &number);
}

TEST(Element, answers_for_exactly_its_own_type) {
    for (const auto& element : oneOfEachType()) {
        const EType type = element->type();
        EXPECT_EQ(element->isEmpty(), type == ko::Orvid::etEmpty) << type;
        EXPECT_EQ(element->isNull(), type == ko::Orvid::etNull) << type;
        EXPECT_EQ(element->isBoolean(), type == ko::Orvid::etBoolean) << type;
        EXPECT_EQ(element->isNumber(), type == ko::Orvid::etNumber) << type;
        EXPECT_EQ(element->isString(), type == ko::Orvid::etString) << type;
        EXPECT_EQ(element->isObject(), type == ko::Orvid::etObject) << type;
        EXPECT_EQ(element->isArray(), type == ko::Orvid::etArray) << type;
    }
}

TEST(Element, ensure_type_throws_for_every_type_but_its_own) {
    for (const auto& element : oneOfEachType()) {
        for (int value = ko::Orvid::etEmpty; value <= ko::Orvid::etArray; ++value) {
            const auto wanted = static_cast<EType>(value);
            if (wanted == element->type()) {
                EXPECT_NO_THROW(element->ensureType(wanted));
                continue;
            }
            const Element before(*element);
            const auto error = thrownBy<TypeError>([&] { element->ensureType(wanted); });
            EXPECT_EQ(error.requested(), wanted);
            EXPECT_EQ(error.got(), element->type());
            EXPECT_TRUE(equal(before, *element));
        }
    }
}

template<class Access>
void expectAccess(EType type, Access access) {
    for (const auto& element : oneOfEachType()) {
        const Element& constant = *element;
        if (element->type() == type) {
            EXPECT_EQ(&access(constant), &access(*element)) << type;
            continue;
        }
        const auto error = thrownBy<TypeError>([&] { access(*element); });
        EXPECT_EQ(error.requested(), type);
        EXPECT_EQ(error.got(), element->type());
        EXPECT_THROW(access(constant), TypeError);
    }
}

TEST(Element, typed_access_hands_out_the_payload_or_throws) {
    expectAccess(
        ko::Orvid::etNumber, [](auto& element) -> auto& { return element.number(); });
    expectAccess(
        ko::Orvid::etString, [](auto& element) -> auto& { return element.string(); });
    expectAccess(
        ko::Orvid::etObject, [](auto& element) -> auto& { return element.object(); });
    expectAccess(
        ko::Orvid::etArray, [](auto& element) -> auto& { return element.array(); });
}

TEST(Element, boolean_access_hands_out_the_value_or_throws) {
    for (const auto& element : oneOfEachType()) {
        const Element& constant = *element;
        if (element->isBoolean()) {
            element->boolean() = false;
            EXPECT_FALSE(constant.boolean());
            EXPECT_EQ(&constant.boolean(), &element->boolean());
            continue;
        }
        EXPECT_THROW(element->boolean(), TypeError);
        EXPECT_THROW(constant.boolean(), TypeError);
    }
}

TEST(Element, typed_access_error_names_types_and_path) {
    const Document document(R"({"a":["x"]})");
    const auto error = thrownBy<TypeError>([&] { document.root.get("a[0]").object(); });
    EXPECT_STREQ(error.what(),
                 "Json type mismatch! Requestet Json type: etObject Got Json type: etString"
                 " Current element: \"a[0]\"");
}

TEST(Element, root_is_the_topmost_ancestor) {
    Document document(R"({"a":[{"b":[1]}]})");
    EXPECT_EQ(document.root.get("a[0].b[0]").root(), &document.root);
    EXPECT_EQ(document.root.get("a").root(), &document.root);
    EXPECT_EQ(document.root.root(), &document.root);
    const Element& constant = document.root.get("a[0]");
    EXPECT_EQ(constant.root(), &document.root);
}

TEST(Element, without_a_parent_is_its_own_root) {
    Element element(1);
    EXPECT_EQ(element.root(), &element);
    EXPECT_EQ(std::as_const(element).root(), &element);
}

}  // namespace
