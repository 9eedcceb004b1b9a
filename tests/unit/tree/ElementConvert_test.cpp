// SPDX-License-Identifier: MIT
//
// Reading values in one step, and paths and texts given as views. What a number converts to is
// tested in NumberConvert_test.cpp.

#include <ko/Orvid/Element.h>

#include <gtest/gtest.h>
#include <ko/Orvid/PathException.h>
#include <ko/Orvid/TypeException.h>

#include <limits>
#include <string>
#include <string_view>

#include "support/Document.h"

namespace {

using ko::Orvid::Element;
using ko::Orvid::EType;
using ko::Orvid::Number;
using ko::Orvid::ParseException;
using ko::Orvid::Path;
using ko::Orvid::PathNotFound;
using ko::Orvid::ValueOutOfRange;
using orvid_test::compact;
using orvid_test::Document;
using orvid_test::thrownBy;
using IntOutOfRange = ValueOutOfRange<Number, int>;
using TypeError = ko::Orvid::TypeException<EType>;

const char* const k_text = R"({"a": {"b": [1, -2.5, "text", true, null, 300]}})";

TEST(ElementConvert, reads_each_type) {
    const Document document(k_text);
    const Element& list = document.root.get("a.b");
    EXPECT_EQ(list.get("[0]").to<int>(), 1);
    EXPECT_EQ(list.get("[1]").to<double>(), -2.5);
    EXPECT_EQ(list.get("[2]").to<std::string>(), "text");
    EXPECT_EQ(list.get("[2]").to<std::string_view>().data(), list.get("[2]").string().data());
    EXPECT_TRUE(list.get("[3]").to<bool>());
    EXPECT_EQ(list.get("[5]").to<Number>().toString(), "300");
}

TEST(ElementConvert, names_the_element_of_another_type) {
    const Document document(k_text);
    const auto error =
        thrownBy<TypeError>([&] { static_cast<void>(document.root.get("a.b[2]").to<int>()); });
    EXPECT_EQ(*error.elementPath(), "a.b[2]");
    EXPECT_EQ(error.requested(), ko::Orvid::etNumber);
    EXPECT_EQ(error.got(), ko::Orvid::etString);
}

TEST(ElementConvert, names_the_element_that_is_out_of_range) {
    const Document document(k_text);
    using Error = ValueOutOfRange<Number, unsigned char>;
    const auto error = thrownBy<Error>(
        [&] { static_cast<void>(document.root.get("a.b[5]").to<unsigned char>()); });
    EXPECT_EQ(*error.elementPath(), "a.b[5]");
    EXPECT_STREQ(error.what(), "Value out of range! Value: 300 Min: 0 Max: 255");
    EXPECT_EQ(error.value().toString(), "300");
    EXPECT_EQ(error.max(), 255);
}

TEST(ElementConvert, falls_back_only_where_there_is_nothing) {
    const Document document(k_text);
    EXPECT_EQ(document.root.toOr<int>("a.b[0]", 7), 1);
    EXPECT_EQ(document.root.toOr<int>("a.c", 7), 7);
    EXPECT_EQ(document.root.toOr<std::string>("a.b[99]", "none"), "none");
    EXPECT_THROW(static_cast<void>(document.root.toOr<int>("a.b[2]", 7)), TypeError);
    EXPECT_THROW(static_cast<void>(document.root.toOr<int>("a.b[1]", 7)), IntOutOfRange);
    EXPECT_THROW(static_cast<void>(document.root.toOr<int>("a..b", 7)), ParseException);
}

TEST(ElementTexts, may_be_views) {
    const std::string_view text = std::string_view("key and more").substr(0, 3);
    EXPECT_EQ(Element(text).string(), "key");
    Element element;
    element.setString(text);
    element.setString(text);
    EXPECT_EQ(element.string(), "key");
    EXPECT_EQ(Path(text).str(), "key");
    EXPECT_EQ(Number(std::string_view("12.50xx").substr(0, 5)).toString(), "12.50");
    Number number;
    number.set(std::string_view("7.0, 8").substr(0, 3));
    EXPECT_EQ(number.toString(), "7.0");
}

TEST(ElementTexts, a_member_is_found_by_a_view) {
    Document document(R"({"key": 1})");
    const std::string_view key = std::string_view("keys").substr(0, 3);
    EXPECT_EQ(document.root.object().find(key)->second.to<int>(), 1);
    EXPECT_EQ(document.root.object().find(key.substr(1)), document.root.object().end());
}

TEST(ElementTexts, paths_may_be_views_literals_and_strings) {
    Document document(k_text);
    const std::string_view view = std::string_view("a.b[0].more").substr(0, 6);
    const std::string string(view);
    const Element* const item = &document.root.get(Path(string));
    EXPECT_EQ(&document.root.get(view), item);
    EXPECT_EQ(&document.root.get(string), item);
    EXPECT_EQ(&document.root.get("a.b[0]"), item);
    EXPECT_EQ(&document.root.get(string.c_str()), item);
    EXPECT_TRUE(document.root.pathExists(view));
    EXPECT_TRUE(document.root.pathExists(view, ko::Orvid::etNumber));
    EXPECT_FALSE(document.root.pathExists(view, ko::Orvid::etString));
    EXPECT_FALSE(document.root.pathExists("a.b[6]"));
    EXPECT_EQ(&document.root.tryGet(view, Element::k_emptyElement), item);
    EXPECT_EQ(&document.root.tryGet("none", Element::k_emptyElement), &Element::k_emptyElement);
    EXPECT_EQ(&document.root.get(""), &document.root);
}

TEST(ElementTexts, paths_that_are_not_plain_work_as_any_other) {
    Document document(R"({"a.b": {"x": 1}, "c": [5]})");
    EXPECT_EQ(document.root.get(R"(a\.b.x)").to<int>(), 1);
    EXPECT_EQ(document.root.get("c[0000000000000]").to<int>(), 5);
    EXPECT_THROW(static_cast<void>(document.root.get("c[*]")), ParseException);
    EXPECT_THROW(static_cast<void>(document.root.get("c[0")), ParseException);
    EXPECT_THROW(static_cast<void>(document.root.get("c.")), ParseException);
    const auto missing =
        thrownBy<PathNotFound>([&] { static_cast<void>(document.root.get("c[1].x")); });
    EXPECT_EQ(missing.key(), "[1]");
    EXPECT_EQ(missing.path(), "c[1].x");
}

/// Any text over the characters that mean something: the short way and the parser agree.
TEST(PlainElement, agrees_with_the_parser_on_every_short_text) {
    const Document document(R"({"a": [{"a": 1}, [2]], "b": {"a": [3]}, "1": 4})");
    const std::string characters = "ab01.[]*\\";
    std::string text;
    std::size_t plain = 0;
    for (std::size_t code = 0; code < std::size_t{59049}; ++code) {
        text.clear();
        for (std::size_t rest = code; rest != 0; rest /= 9) {
            text += characters[rest % 9];
        }
        const Element* const found = Path::plainElement(text, document.root);
        if (found == nullptr) {
            continue;
        }
        ++plain;
        ko::Orvid::ElementGetter getter(Path(text), document.root, true);
        ko::Orvid::PathParser(&getter).parse(std::string_view(text));
        EXPECT_EQ(found, &getter.currentElement()) << text;
    }
    EXPECT_GT(plain, 10U);
}

TEST(PlainElement, leaves_what_is_not_plain_or_not_there) {
    const Document document(R"({"a": [1], "b": {"c": 2}})");
    for (const char* text : {"x", "a[1]", "a.c", "b[0]", "a\\", "\\a", "a]", "[", "[]", "a[*]",
                             "a.", "a..b", "b.c.d", "a[9999999999]"}) {
        EXPECT_EQ(Path::plainElement(text, document.root), nullptr) << text;
    }
    EXPECT_EQ(Path::plainElement("", document.root), &document.root);
    EXPECT_EQ(Path::plainElement(".b.c", document.root), &document.root.get("b.c"));
}

TEST(ElementConvert, reads_and_takes_decimals) {
    const Document document("[900719925474099312345.50, 1e-7]");
    EXPECT_EQ(document.root.get("[0]").to<ko::DecNumber>().toString(), "900719925474099312345.50");
    EXPECT_TRUE(document.root.get("[1]").to<ko::DecNumber>() == ko::DecNumber("0.0000001"));
    Element element = ko::DecNumber("1.50") * ko::DecNumber(3);
    EXPECT_EQ(compact(element), "4.50");
    element = ko::DecNumber(7);
    EXPECT_EQ(element.to<int>(), 7);
    element.setNumber(ko::DecNumber("0.5"));
    EXPECT_EQ(compact(element), "0.5");
    EXPECT_TRUE(element == ko::DecNumber("0.50"));
}

TEST(ElementConvert, refuses_text_that_is_no_number) {
    for (const char* const text : {"abc", "12abc", "1.5abc", "", " 1", "0x10", "1e", "nan(e)"}) {
        const Element element{Number(text)};
        EXPECT_THROW((void)element.to<int>(), ko::Exception) << text;
        EXPECT_THROW((void)element.to<double>(), ko::Exception) << text;
        EXPECT_THROW((void)element.to<double>(), ko::Exception) << text;
        EXPECT_THROW((void)element.to<float>(), ko::Exception) << text;
    }
}

TEST(ElementConvert, names_the_element_whose_number_is_none) {
    Document document(R"({"a":[0]})");
    const Element& element = document.root.get("a[0]");
    document.root.get("a[0]").setNumber("12abc");
    const auto pathFrom = [&](const auto& read) {
        return *thrownBy<ko::Orvid::Exception>(read).elementPath();
    };
    EXPECT_EQ(pathFrom([&] { static_cast<void>(element.to<int>()); }), "a[0]");
    EXPECT_EQ(pathFrom([&] { static_cast<void>(element.to<double>()); }), "a[0]");
    EXPECT_EQ(pathFrom([&] { static_cast<void>(element.to<long double>()); }), "a[0]");
    EXPECT_EQ(pathFrom([&] { static_cast<void>(element.to<ko::DecNumber>()); }), "a[0]");
}

TEST(ElementConvert, reaches_to_the_limits_as_they_are_printed) {
    const Document document("[3.4028235e38, -3.4028235e38, 1.7976931348623158e308, 3.5e38]");
    EXPECT_EQ(document.root.get("[0]").to<float>(), std::numeric_limits<float>::max());
    EXPECT_EQ(document.root.get("[1]").to<float>(), std::numeric_limits<float>::lowest());
    EXPECT_EQ(document.root.get("[2]").to<double>(), std::numeric_limits<double>::max());
    EXPECT_THROW((void)document.root.get("[3]").to<float>(), ko::Orvid::Exception);
}

TEST(ElementConvert, sees_every_digit_of_a_whole_number) {
    const Document document("[1.00000000000000000001, 9007199254740993.0, 1e18, 10e-1]");
    EXPECT_THROW((void)document.root.get("[0]").to<int>(), IntOutOfRange);
    EXPECT_EQ(document.root.get("[1]").to<long long>(), 9007199254740993LL);
    EXPECT_EQ(document.root.get("[2]").to<long long>(), 1000000000000000000LL);
    EXPECT_EQ(document.root.get("[3]").to<int>(), 1);
}

}  // namespace
