// SPDX-License-Identifier: MIT
//
// The value types and their names, and how the stream operators are found from a namespace that has
// one of its own.

#include <ko/Orvid/types.h>

#include <gtest/gtest.h>
#include <ko/Orvid/Element.h>
#include <ko/Orvid/Number.h>
#include <ko/Orvid/Path.h>

#include <limits>
#include <sstream>
#include <string>
#include <type_traits>
#include <utility>

namespace elsewhere {

struct Thing {};

// Hides the global operators from everything in this namespace.
std::ostream& operator<<(std::ostream& out, const Thing&) { return out << "thing"; }
std::wostream& operator<<(std::wostream& out, const Thing&) { return out << L"thing"; }
std::istream& operator>>(std::istream& in, Thing&) { return in; }

template<class T>
std::string narrow(const T& value) {
    std::ostringstream text;
    text << Thing() << ' ' << value;
    return text.str();
}

template<class T>
std::wstring wide(const T& value) {
    std::wostringstream text;
    text << Thing() << L' ' << value;
    return text.str();
}

void read(const std::string& text, ko::Orvid::Element& element) {
    std::istringstream in(text);
    in >> element;
}

}  // namespace elsewhere

namespace {

using ko::Orvid::EType;
using ko::Orvid::Number;

const std::pair<EType, const char*> k_narrowNames[] = {
    {ko::Orvid::etEmpty, "etEmpty"},     {ko::Orvid::etNull, "etNull"},
    {ko::Orvid::etBoolean, "etBoolean"}, {ko::Orvid::etNumber, "etNumber"},
    {ko::Orvid::etString, "etString"},   {ko::Orvid::etObject, "etObject"},
    {ko::Orvid::etArray, "etArray"}};
const std::pair<EType, const wchar_t*> k_wideNames[] = {
    {ko::Orvid::etEmpty, L"etEmpty"},     {ko::Orvid::etNull, L"etNull"},
    {ko::Orvid::etBoolean, L"etBoolean"}, {ko::Orvid::etNumber, L"etNumber"},
    {ko::Orvid::etString, L"etString"},   {ko::Orvid::etObject, L"etObject"},
    {ko::Orvid::etArray, L"etArray"}};
const int k_noTypes[] = {
    6, 7, 42, -2, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()};

TEST(EType, values_give_the_order_of_types) {
    EXPECT_EQ(ko::Orvid::etEmpty, -1);
    EXPECT_EQ(ko::Orvid::etNull, 0);
    EXPECT_EQ(ko::Orvid::etBoolean, 1);
    EXPECT_EQ(ko::Orvid::etNumber, 2);
    EXPECT_EQ(ko::Orvid::etString, 3);
    EXPECT_EQ(ko::Orvid::etObject, 4);
    EXPECT_EQ(ko::Orvid::etArray, 5);
}

TEST(EType, is_held_in_a_signed_integer_of_32_bits) {
    using Underlying = std::underlying_type_t<EType>;
    EXPECT_EQ(sizeof(EType), 4U);
    EXPECT_TRUE(std::is_signed_v<Underlying>);
}

TEST(EType, prints_the_name_of_each_type) {
    for (const auto& [type, name] : k_narrowNames) {
        std::ostringstream text;
        text << type;
        EXPECT_EQ(text.str(), name);
    }
}

TEST(EType, prints_the_name_of_each_type_on_a_wide_stream) {
    for (const auto& [type, name] : k_wideNames) {
        std::wostringstream text;
        text << type;
        EXPECT_EQ(text.str(), name);
    }
}

TEST(EType, prints_what_is_no_type_as_invalid) {
    for (const int value : k_noTypes) {
        std::ostringstream text;
        text << static_cast<EType>(value);
        EXPECT_EQ(text.str(), ">>INVALID<<") << value;
        EXPECT_TRUE(text.good());
    }
}

TEST(EType, prints_what_is_no_type_as_invalid_on_a_wide_stream) {
    for (const int value : k_noTypes) {
        std::wostringstream text;
        text << static_cast<EType>(value);
        EXPECT_EQ(text.str(), L">>INVALID<<") << value;
        EXPECT_TRUE(text.good());
    }
}

TEST(EType, operator_returns_the_stream) {
    std::ostringstream text;
    EXPECT_EQ(&(text << ko::Orvid::etNull), &text);
    std::wostringstream wideText;
    EXPECT_EQ(&(wideText << ko::Orvid::etNull), &wideText);
}

TEST(EType, operators_stand_in_the_global_namespace) {
    std::ostringstream text;
    ::operator<<(text, ko::Orvid::etArray);
    EXPECT_EQ(text.str(), "etArray");
    std::wostringstream wideText;
    ::operator<<(wideText, ko::Orvid::etArray);
    EXPECT_EQ(wideText.str(), L"etArray");
}

TEST(EType, name_is_printed_by_the_test_framework) {
    EXPECT_EQ(testing::PrintToString(ko::Orvid::etArray), "etArray");
}

TEST(KNoIndex, has_all_bits_set) {
    EXPECT_EQ(ko::Orvid::k_noIndex, 0xFFFFFFFFU);
    EXPECT_EQ(ko::Orvid::Path::k_noIndex, ko::Orvid::k_noIndex);
}

// Lookup of the operators from another namespace.

TEST(StreamOperators, of_types_are_found_from_a_namespace_with_an_operator_of_its_own) {
    EXPECT_EQ(elsewhere::narrow(ko::Orvid::etString), "thing etString");
    EXPECT_EQ(elsewhere::wide(ko::Orvid::etString), L"thing etString");
}

TEST(StreamOperators, of_number_kinds_are_found_from_a_namespace_with_an_operator_of_its_own) {
    EXPECT_EQ(elsewhere::narrow(Number::ebDouble), "thing ebDouble");
    EXPECT_EQ(elsewhere::wide(Number::ebDouble), L"thing ebDouble");
}

TEST(StreamOperators, of_elements_are_found_from_a_namespace_with_an_operator_of_its_own) {
    EXPECT_EQ(elsewhere::narrow(ko::Orvid::Element("text")), "thing \"text\"\n");
    ko::Orvid::Element element;
    elsewhere::read("\"text\"\n", element);
    EXPECT_EQ(element.string(), "text");
}

TEST(StreamOperators, of_paths_are_found_from_a_namespace_with_an_operator_of_its_own) {
    EXPECT_EQ(elsewhere::narrow(ko::Orvid::Path("a.b[3]")), "thing a.b[3]");
}

TEST(StreamOperators, are_what_the_test_framework_prints_with) {
    EXPECT_EQ(testing::PrintToString(ko::Orvid::Path("a.b[3]")), "a.b[3]");
    EXPECT_EQ(testing::PrintToString(Number::ebLongLong), "ebLongLong");
    EXPECT_EQ(testing::PrintToString(ko::Orvid::Element(12)), "12\n");
}

}  // namespace
