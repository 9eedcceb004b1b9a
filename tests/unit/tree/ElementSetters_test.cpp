// SPDX-License-Identifier: MIT
//
// The setters of the element: the value changes, the place stays, and so does a payload of the
// right type.

#include <ko/Orvid/Element.h>

#include <gtest/gtest.h>

#include <string>

#include "support/Document.h"
#include "support/NumberProbe.h"

namespace {

using ko::Orvid::Element;
using ko::Orvid::Number;
using ko::Orvid::NumberProbe;
using orvid_test::compact;
using orvid_test::Document;

TEST(ElementSetters, replace_the_value_of_every_type_and_leave_the_place) {
    const auto check = [](const char* expected, const auto& set) {
        Document document(R"({"x":[null,true,12,"text",{"a":1},[2]]})");
        const char* const places[] = {"x[0]", "x[1]", "x[2]", "x[3]", "x[4]", "x[5]"};
        for (const char* const place : places) {
            Element& element = document.root.get(place);
            set(element);
            EXPECT_EQ(element.path(), place);
            EXPECT_EQ(element.parent(), &document.root.get("x"));
            CHECK_LINKS(document.root);
        }
        EXPECT_EQ(compact(document.root), expected);
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
    EXPECT_EQ(member.key(), "k");
    EXPECT_EQ(member.parent(), &document.root);
    EXPECT_EQ(compact(document.root), R"({"k": "s"})");
    CHECK_LINKS(document.root);
}

TEST(ElementSetters, turn_the_empty_element_into_a_value) {
    Element element(Element::k_emptyElement);
    element.setBoolean(false);
    EXPECT_EQ(element.type(), ko::Orvid::etBoolean);
    EXPECT_FALSE(element.boolean());
    element = Element::k_emptyElement;
    element.setNull();
    EXPECT_EQ(element.type(), ko::Orvid::etNull);
    EXPECT_EQ(element.data().value.null, Element::k_null);
}

TEST(ElementSetters, keep_the_string_of_a_string) {
    Element element("before");
    const std::string* const payload = &element.string();
    element.setString(std::string("a string that is too long to be held in place"));
    EXPECT_EQ(*payload, "a string that is too long to be held in place");
    element.setString("bytes", 4);
    EXPECT_EQ(*payload, "byte");
    EXPECT_EQ(&element.string(), payload);
}

TEST(ElementSetters, keep_the_number_of_a_number) {
    Element element(1);
    const Number* const payload = &element.number();
    element.setNumber(Number("2.50"));
    EXPECT_EQ(payload->toString(), "2.50");
    element.setNumber("3.500", 4);
    EXPECT_EQ(payload->toString(), "3.50");
    element.setNumber(4U);
    EXPECT_EQ(payload->toString(), "4");
    EXPECT_EQ(&element.number(), payload);
}

TEST(ElementSetters, keep_the_boolean_of_a_boolean) {
    Element element(true);
    const bool* const payload = &element.boolean();
    element.setBoolean(false);
    EXPECT_FALSE(*payload);
    EXPECT_EQ(&element.boolean(), payload);
}

TEST(ElementSetters, take_exactly_the_bytes_given) {
    Element element;
    element.setString("a\0b\"", 3);
    EXPECT_EQ(element.string(), std::string("a\0b", 3));
    element.setString("", 0);
    EXPECT_EQ(element.string(), "");
    Element number;
    number.setNumber("12345", 2);
    EXPECT_EQ(number.number().toString(), "12");
    EXPECT_EQ(NumberProbe::heldKind(number.number()), Number::ebNone);
}

TEST(ElementSetters, take_arguments_that_lie_in_the_element_itself) {
    Document document(R"({"s":"a text of some length, on the heap","n":12.50})");
    Element copy(document.root);
    copy.setString(copy.get("s").string());
    EXPECT_EQ(copy.string(), "a text of some length, on the heap");
    copy.setString(copy.string());
    EXPECT_EQ(copy.string(), "a text of some length, on the heap");
    copy.setString(copy.string().data() + 2, 4);
    EXPECT_EQ(copy.string(), "text");
    copy = document.root;
    copy.setNumber(copy.get("n").number());
    EXPECT_EQ(copy.number().toString(), "12.50");
    copy.setNumber(copy.number());
    EXPECT_EQ(copy.number().toString(), "12.50");
    copy.setNumber(copy.number().toString().data() + 1, 2);
    EXPECT_EQ(copy.number().toString(), "2.");
}

}  // namespace
