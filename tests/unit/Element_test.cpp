// SPDX-License-Identifier: MIT
//
// The element as a value in its place: constructors, setters, typed access, copying, assigning,
// root. The payload records are in ElementData, the order in ElementCompare, the operations by path
// elsewhere.

#include <ko/Orvid/Element.h>

#include <gtest/gtest.h>
#include <ko/Orvid/Array.h>
#include <ko/Orvid/Object.h>
#include <ko/Orvid/TypeException.h>

#include <limits>
#include <memory>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "support/Document.h"
#include "support/NumberProbe.h"

namespace {

using ko::Orvid::Element;
using ko::Orvid::EType;
using ko::Orvid::Number;
using ko::Orvid::NumberProbe;
using orvid_test::compact;
using orvid_test::Document;
using orvid_test::thrownBy;
using TypeError = ko::Orvid::TypeException<EType>;

bool equal(const Element& a, const Element& b) { return Element::compare(a.data(), b.data()) == 0; }

/// Whether the element has no place in any tree.
testing::AssertionResult isFreeStanding(const Element& element) {
    if (element.parent() != nullptr || !element.key().empty() || element.root() != &element) {
        return testing::AssertionFailure() << "it has a parent or a key";
    }
    return testing::AssertionSuccess();
}

/// One element of each type, in the order of types.
std::vector<std::unique_ptr<Element>> oneOfEachType() {
    std::vector<std::unique_ptr<Element>> elements;
    elements.push_back(std::make_unique<Element>(Element::k_emptyElement));
    for (const char* const text :
         {"null", "true", "12", "\"text\"", R"({"a":1,"b":[2]})", R"([1,{"a":2}])"}) {
        elements.push_back(std::make_unique<Element>(Document(text).root));
    }
    return elements;
}

// --- constants
// --------------------------------------------------------------------------------------

TEST(ElementConstants, are_empty_values_without_a_place) {
    EXPECT_EQ(0U, Element::k_null);
    EXPECT_EQ(Element::k_null, Element::k_emptyNull);
    EXPECT_FALSE(Element::k_emptyBoolean);
    EXPECT_EQ("", Element::k_emptyString);
    EXPECT_EQ(0U, Element::k_emptyObject.size());
    EXPECT_EQ(nullptr, Element::k_emptyObject.parent());
    EXPECT_EQ(0U, Element::k_emptyArray.size());
    EXPECT_EQ(nullptr, Element::k_emptyArray.parent());
}

TEST(ElementConstants, empty_number_is_a_signed_zero_with_text) {
    EXPECT_EQ(Number::ebLongLong, NumberProbe::heldKind(Element::k_emptyNumber));
    EXPECT_EQ("0", NumberProbe::heldText(Element::k_emptyNumber));
    EXPECT_EQ(0, NumberProbe::heldSigned(Element::k_emptyNumber));
}

TEST(ElementConstants, empty_element_is_of_type_empty) {
    EXPECT_EQ(ko::Orvid::etEmpty, Element::k_emptyElement.type());
    EXPECT_TRUE(Element::k_emptyElement.isEmpty());
    EXPECT_FALSE(Element::k_emptyElement.isNull());
    EXPECT_TRUE(isFreeStanding(Element::k_emptyElement));
}

// --- constructors
// -------------------------------------------------------------------------------------

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
    EXPECT_EQ(ko::Orvid::etNull, element.type());
    EXPECT_EQ(Element::k_null, element.data().value.null);
    EXPECT_TRUE(isFreeStanding(element));
}

TEST(Element, from_a_bool_is_a_boolean) {
    const Element yes(true);
    EXPECT_EQ(ko::Orvid::etBoolean, yes.type());
    EXPECT_TRUE(yes.boolean());
    EXPECT_TRUE(isFreeStanding(yes));
    const Element no = false;
    EXPECT_EQ(ko::Orvid::etBoolean, no.type());
    EXPECT_FALSE(no.boolean());
}

TEST(Element, from_a_literal_is_a_string_and_never_a_boolean) {
    const Element element("x");
    ASSERT_EQ(ko::Orvid::etString, element.type());
    EXPECT_EQ("x", element.string());
    EXPECT_TRUE(isFreeStanding(element));
    const Element implicit = "true";
    EXPECT_EQ(ko::Orvid::etString, implicit.type());
    char buffer[] = "abc";
    EXPECT_EQ("abc", Element(static_cast<char*>(buffer)).string());
}

TEST(Element, from_a_string_keeps_all_its_bytes) {
    const std::string text("a\0\xFF", 3);
    const Element element(text);
    EXPECT_EQ(text, element.string());
    EXPECT_EQ(ko::Orvid::etString, Element(std::string("12")).type());
    EXPECT_EQ("", Element("").string());
}

template<class T>
void expectNumber(T value, Number::EBinaryType kind, const char* text) {
    const Element element(value);
    ASSERT_EQ(ko::Orvid::etNumber, element.type());
    EXPECT_EQ(kind, element.number().type());
    EXPECT_EQ(text, element.number().toString());
    EXPECT_TRUE(isFreeStanding(element));
    Element changed;
    changed.setNumber(value);
    EXPECT_TRUE(equal(element, changed));
    EXPECT_EQ(kind, changed.number().type());
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

TEST(Element, from_a_number_keeps_both_its_sides) {
    const Number number("1.50");
    const Element element(number);
    EXPECT_EQ("1.50", element.number().toString());
    EXPECT_EQ(Number::ebNone, NumberProbe::heldKind(element.number()));
    EXPECT_NE(&number, &element.number());
}

// --- type queries and typed access
// ------------------------------------------------------------------

TEST(Element, answers_for_exactly_its_own_type) {
    for (const auto& element : oneOfEachType()) {
        const EType type = element->type();
        EXPECT_EQ(type == ko::Orvid::etEmpty, element->isEmpty()) << type;
        EXPECT_EQ(type == ko::Orvid::etNull, element->isNull()) << type;
        EXPECT_EQ(type == ko::Orvid::etBoolean, element->isBoolean()) << type;
        EXPECT_EQ(type == ko::Orvid::etNumber, element->isNumber()) << type;
        EXPECT_EQ(type == ko::Orvid::etString, element->isString()) << type;
        EXPECT_EQ(type == ko::Orvid::etObject, element->isObject()) << type;
        EXPECT_EQ(type == ko::Orvid::etArray, element->isArray()) << type;
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
            EXPECT_EQ(wanted, error.requested());
            EXPECT_EQ(element->type(), error.got());
            EXPECT_TRUE(equal(before, *element));
        }
    }
}

template<class Access>
void expectAccess(EType type, Access access) {
    for (const auto& element : oneOfEachType()) {
        const Element& constant = *element;
        if (element->type() == type) {
            EXPECT_EQ(&access(*element), &access(constant)) << type;
            continue;
        }
        const auto error = thrownBy<TypeError>([&] { access(*element); });
        EXPECT_EQ(type, error.requested());
        EXPECT_EQ(element->type(), error.got());
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
            continue;
        }
        EXPECT_THROW(element->boolean(), TypeError);
        EXPECT_THROW(constant.boolean(), TypeError);
    }
}

TEST(Element, typed_access_error_tells_types_and_path) {
    const Document document(R"({"a":["x"]})");
    const auto error = thrownBy<TypeError>([&] { document.root.get("a[0]").object(); });
    EXPECT_STREQ(
        "Json type mismatch! Requestet Json type: etObject Got Json type: etString"
        " Current element: \"a[0]\"",
        error.what());
}

// --- setters
// ------------------------------------------------------------------------------------------

TEST(ElementSetters, replace_the_value_of_every_type_and_leave_the_place) {
    const auto check = [](const char* expected, const auto& set) {
        Document document(R"({"x":[null,true,12,"text",{"a":1},[2]]})");
        const char* const places[] = {"x[0]", "x[1]", "x[2]", "x[3]", "x[4]", "x[5]"};
        for (const char* const place : places) {
            Element& element = document.root.get(place);
            set(element);
            EXPECT_EQ(place, element.path());
            EXPECT_EQ(&document.root.get("x"), element.parent());
            CHECK_LINKS(document.root);
        }
        EXPECT_EQ(expected, compact(document.root));
    };
    check(R"({"x": [null,null,null,null,null,null]})", [](Element& e) { e.setNull(); });
    check(R"({"x": [true,true,true,true,true,true]})", [](Element& e) { e.setBoolean(true); });
    check(R"({"x": [-7,-7,-7,-7,-7,-7]})", [](Element& e) { e.setNumber(-7); });
    check(R"({"x": [1.50,1.50,1.50,1.50,1.50,1.50]})", [](Element& e) { e.setNumber("1.500", 4); });
    check(R"({"x": [2.0,2.0,2.0,2.0,2.0,2.0]})", [](Element& e) { e.setNumber(Number("2.0")); });
    check(R"({"x": ["s","s","s","s","s","s"]})", [](Element& e) { e.setString("s"); });
    check(R"({"x": ["st","st","st","st","st","st"]})",
          [](Element& e) { e.setString("string", 2); });
}

TEST(ElementSetters, leave_key_and_parent_of_a_member) {
    Document document(R"({"k":[1]})");
    Element& member = document.root.get("k");
    member.setString("s");
    EXPECT_EQ("k", member.key());
    EXPECT_EQ(&document.root, member.parent());
    EXPECT_EQ(R"({"k": "s"})", compact(document.root));
    CHECK_LINKS(document.root);
}

TEST(ElementSetters, turn_the_empty_element_into_a_value) {
    Element element(Element::k_emptyElement);
    element.setBoolean(false);
    EXPECT_EQ(ko::Orvid::etBoolean, element.type());
    EXPECT_FALSE(element.boolean());
    element = Element::k_emptyElement;
    element.setNull();
    EXPECT_EQ(ko::Orvid::etNull, element.type());
    EXPECT_EQ(Element::k_null, element.data().value.null);
}

TEST(ElementSetters, keep_the_string_of_a_string) {
    Element element("before");
    const std::string* const payload = &element.string();
    element.setString(std::string("a string that is too long to be held in place"));
    EXPECT_EQ("a string that is too long to be held in place", *payload);
    element.setString("bytes", 4);
    EXPECT_EQ("byte", *payload);
    EXPECT_EQ(payload, &element.string());
}

TEST(ElementSetters, keep_the_number_of_a_number) {
    Element element(1);
    const Number* const payload = &element.number();
    element.setNumber(Number("2.50"));
    EXPECT_EQ("2.50", payload->toString());
    element.setNumber("3.500", 4);
    EXPECT_EQ("3.50", payload->toString());
    element.setNumber(4U);
    EXPECT_EQ("4", payload->toString());
    EXPECT_EQ(payload, &element.number());
}

TEST(ElementSetters, keep_the_boolean_of_a_boolean) {
    Element element(true);
    const bool* const payload = &element.boolean();
    element.setBoolean(false);
    EXPECT_FALSE(*payload);
    EXPECT_EQ(payload, &element.boolean());
}

TEST(ElementSetters, take_exactly_the_bytes_given) {
    Element element;
    element.setString("a\0b\"", 3);
    EXPECT_EQ(std::string("a\0b", 3), element.string());
    element.setString("", 0);
    EXPECT_EQ("", element.string());
    Element number;
    number.setNumber("12345", 2);
    EXPECT_EQ("12", number.number().toString());
    EXPECT_EQ(Number::ebNone, NumberProbe::heldKind(number.number()));
}

TEST(ElementSetters, take_arguments_that_lie_in_the_element_itself) {
    Document document(R"({"s":"a text of some length, on the heap","n":12.50})");
    Element copy(document.root);
    copy.setString(copy.get("s").string());
    EXPECT_EQ("a text of some length, on the heap", copy.string());
    copy.setString(copy.string());
    EXPECT_EQ("a text of some length, on the heap", copy.string());
    copy.setString(copy.string().data() + 2, 4);
    EXPECT_EQ("text", copy.string());
    copy = document.root;
    copy.setNumber(copy.get("n").number());
    EXPECT_EQ("12.50", copy.number().toString());
    copy.setNumber(copy.number());
    EXPECT_EQ("12.50", copy.number().toString());
    copy.setNumber(copy.number().toString().data() + 1, 2);
    EXPECT_EQ("2.", copy.number().toString());
}

// --- root
// -------------------------------------------------------------------------------------------

TEST(Element, root_is_the_topmost_ancestor) {
    Document document(R"({"a":[{"b":[1]}]})");
    EXPECT_EQ(&document.root, document.root.get("a[0].b[0]").root());
    EXPECT_EQ(&document.root, document.root.get("a").root());
    EXPECT_EQ(&document.root, document.root.root());
    const Element& constant = document.root.get("a[0]");
    EXPECT_EQ(&document.root, constant.root());
}

TEST(Element, without_a_parent_is_its_own_root) {
    Element element(1);
    EXPECT_EQ(&element, element.root());
    EXPECT_EQ(&element, std::as_const(element).root());
}

// --- copies
// -------------------------------------------------------------------------------------------

TEST(ElementCopy, of_every_type_is_an_equal_free_standing_value) {
    for (const auto& element : oneOfEachType()) {
        const Element copy(*element);
        EXPECT_EQ(element->type(), copy.type());
        EXPECT_TRUE(equal(*element, copy)) << element->type();
        EXPECT_TRUE(isFreeStanding(copy)) << element->type();
        CHECK_LINKS_AFTER_COPY(copy);
    }
}

TEST(ElementCopy, of_a_child_takes_the_value_and_not_the_place) {
    const Document document(R"({"a":[0,{"b":{"c":[1,2]}}]})");
    const Element copy(document.root.get("a[1].b"));
    EXPECT_EQ(R"({"c": [1,2]})", compact(copy));
    EXPECT_TRUE(isFreeStanding(copy));
    EXPECT_EQ("c", copy.get("c").path());
    CHECK_LINKS_AFTER_COPY(copy);
}

TEST(ElementCopy, shares_nothing_with_the_original) {
    Document document(R"({"a":[1,{"b":"x"}],"n":1.50})");
    Element copy(document.root);
    copy.get("a[1].b").setString("changed");
    copy.get("n").setNumber(2);
    copy.get("a").array().push_back(Element(3));
    EXPECT_EQ(R"({"a": [1,{"b": "x"}],"n": 1.50})", compact(document.root));
    EXPECT_EQ(R"({"a": [1,{"b": "changed"},3],"n": 2})", compact(copy));
    CHECK_LINKS(document.root);
    CHECK_LINKS_AFTER_COPY(copy);
}

TEST(ElementCopy, keeps_the_text_of_numbers) {
    const Document document("[1.500,7e01,-0]");
    EXPECT_EQ(compact(document.root), compact(Element(document.root)));
}

TEST(ElementCopy, survives_a_growing_vector) {
    const Document document(R"({"a":[1,{"b":2}]})");
    std::vector<Element> elements;
    for (int i = 0; i < 20; ++i) {
        elements.push_back(document.root);
    }
    for (const Element& element : elements) {
        EXPECT_EQ(R"({"a": [1,{"b": 2}]})", compact(element));
        CHECK_LINKS_AFTER_COPY(element);
    }
}

TEST(ElementCopy, can_be_swapped) {
    Document a(R"({"x":[1]})");
    Document b("[{\"y\":2}]");
    std::swap(a.root, b.root);
    EXPECT_EQ(R"([{"y": 2}])", compact(a.root));
    EXPECT_EQ(R"({"x": [1]})", compact(b.root));
    CHECK_LINKS_AFTER_COPY(a.root);
    CHECK_LINKS_AFTER_COPY(b.root);
}

// --- assignment
// -----------------------------------------------------------------------------------------

TEST(ElementAssignment, of_every_type_to_every_type_gives_an_equal_value) {
    for (const auto& source : oneOfEachType()) {
        for (const auto& target : oneOfEachType()) {
            EXPECT_EQ(target.get(), &(*target = *source));
            EXPECT_TRUE(equal(*source, *target)) << source->type();
            EXPECT_EQ(source->type(), target->type());
            EXPECT_TRUE(isFreeStanding(*target));
            CHECK_LINKS_AFTER_COPY(*target);
        }
    }
}

TEST(ElementAssignment, leaves_the_target_in_its_place) {
    for (const auto& source : oneOfEachType()) {
        Document document(R"({"k":[0,"old",{"old":1}]})");
        for (const char* const place : {"k[1]", "k[2]", "k"}) {
            Element& target = document.root.get(place);
            Element* const parent = target.parent();
            target = *source;
            EXPECT_EQ(place, target.path());
            EXPECT_EQ(parent, target.parent());
            EXPECT_TRUE(equal(*source, target));
            CHECK_LINKS_AFTER_COPY(document.root);
        }
    }
}

TEST(ElementAssignment, takes_values_without_naming_their_type) {
    Document document(R"({"a":1,"b":2,"c":3,"d":4})");
    document.root.get("a") = "text";
    document.root.get("b") = true;
    document.root.get("c") = 2.5;
    document.root.get("d") = Element();
    EXPECT_EQ(R"({"a": "text","b": true,"c": 2.5,"d": null})", compact(document.root));
    CHECK_LINKS(document.root);
}

TEST(ElementAssignment, to_itself_changes_nothing) {
    for (const auto& element : oneOfEachType()) {
        const Element before(*element);
        const Element& same = *element;
        *element = same;
        EXPECT_TRUE(equal(before, *element)) << before.type();
        CHECK_LINKS_AFTER_COPY(*element);
    }
}

TEST(ElementAssignment, of_a_child_to_its_parent_of_the_same_type) {
    Document document(R"({"a":{"b":[1,{"c":2}]},"x":0})");
    document.root = document.root.get("a");
    EXPECT_EQ(R"({"b": [1,{"c": 2}]})", compact(document.root));
    CHECK_LINKS_AFTER_COPY(document.root);
}

TEST(ElementAssignment, of_a_child_to_its_parent_of_another_type) {
    Document document(R"({"a":[{"b":[1,2]},"a text of some length, on the heap"]})");
    document.root = document.root.get("a");
    EXPECT_EQ(R"([{"b": [1,2]},"a text of some length, on the heap"])", compact(document.root));
    CHECK_LINKS_AFTER_COPY(document.root);
    document.root = document.root.get("[1]");
    EXPECT_EQ("a text of some length, on the heap", document.root.string());
}

TEST(ElementAssignment, of_a_number_or_a_boolean_to_its_ancestor) {
    Document document(R"([[[1.50,true]]])");
    Element copy(document.root);
    copy = copy.get("[0][0][0]");
    EXPECT_EQ("1.50", copy.number().toString());
    document.root = document.root.get("[0][0][1]");
    EXPECT_TRUE(document.root.boolean());
}

TEST(ElementAssignment, of_an_ancestor_to_its_descendant_of_the_same_type) {
    Document document(R"({"a":{"b":{"c":1}}})");
    document.root.get("a.b") = document.root;
    EXPECT_EQ(R"({"a": {"b": {"a": {"b": {"c": 1}}}}})", compact(document.root));
    CHECK_LINKS_AFTER_COPY(document.root);
}

TEST(ElementAssignment, of_an_ancestor_to_its_descendant_of_another_type) {
    Document document(R"([0,{"a":[null]}])");
    document.root.get("[1].a[0]") = document.root;
    EXPECT_EQ(R"([0,{"a": [[0,{"a": [null]}]]}])", compact(document.root));
    CHECK_LINKS_AFTER_COPY(document.root);
    EXPECT_EQ("[1].a[0]", document.root.get("[1].a[0]").path());
}

TEST(ElementAssignment, of_a_sibling) {
    Document document(R"({"a":[1,2],"b":{"c":3}})");
    document.root.get("a") = document.root.get("b");
    EXPECT_EQ(R"({"a": {"c": 3},"b": {"c": 3}})", compact(document.root));
    CHECK_LINKS(document.root);
}

}  // namespace
