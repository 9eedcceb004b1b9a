// SPDX-License-Identifier: MIT
//
// Which side of a number each operation sets, forgets, computes and copies. How text and binary
// value are computed from each other is in NumberText, the order in NumberCompare, typed reads in
// NumberAccess.

#include <ko/Orvid/Number.h>

#include <gtest/gtest.h>
#include <ko/DecNumber.h>
#include <ko/Exception.h>

#include <limits>
#include <sstream>
#include <string>
#include <type_traits>
#include <utility>

#include "support/Document.h"
#include "support/NumberErrors.h"
#include "support/NumberProbe.h"

namespace {

using ko::DecNumber;
using ko::Orvid::Number;
using ko::Orvid::NumberProbe;
using orvid_test::TextError;
using orvid_test::thrownBy;

/// Both sides of a number as it holds them, nothing computed.
testing::AssertionResult holds(const Number& number, Number::EBinaryType kind,
                               const std::string& text) {
    const auto heldKind = NumberProbe::heldKind(number);
    const std::string& heldText = NumberProbe::heldText(number);
    if (heldKind == kind && heldText == text) {
        return testing::AssertionSuccess();
    }
    return testing::AssertionFailure() << "holds " << heldKind << " and \"" << heldText << "\"";
}

static_assert(!std::is_polymorphic_v<Number>);
static_assert(std::is_copy_constructible_v<Number>);
static_assert(!std::is_constructible_v<Number, bool>);
static_assert(!std::is_constructible_v<Number, void*>);
static_assert(!std::is_constructible_v<Number, Number*>);

TEST(Number, by_default_is_a_signed_zero_with_text) {
    const Number number;
    EXPECT_TRUE(holds(number, Number::ebLongLong, "0"));
    EXPECT_EQ(0, NumberProbe::heldSigned(number));
}

TEST(Number, limits_are_the_texts_of_the_binary_limits) {
    EXPECT_EQ("9223372036854775807", Number::k_limits.llMax);
    EXPECT_EQ("-9223372036854775808", Number::k_limits.llMin);
    EXPECT_EQ("18446744073709551615", Number::k_limits.ullMax);
    EXPECT_EQ("2.22507e-308", Number::k_limits.dblMin);
    EXPECT_EQ("1.79769e+308", Number::k_limits.dblMax);
}

TEST(Number, smallest_unsigned_limit_is_the_largest_value_too) {
    EXPECT_EQ("18446744073709551615", Number::k_limits.ullMin);
}

// --- setters
// --------------------------------------------------------------------------------------

TEST(Number, set_to_text_forgets_the_binary_value) {
    Number number(5);
    number.set(std::string("1.50"));
    EXPECT_TRUE(holds(number, Number::ebNone, "1.50"));
    number.set(5);
    number.set("2.50");
    EXPECT_TRUE(holds(number, Number::ebNone, "2.50"));
    number.set(5);
    number.set("3.5000", 4);
    EXPECT_TRUE(holds(number, Number::ebNone, "3.50"));
}

TEST(Number, set_to_text_of_a_length_takes_exactly_that_many_bytes) {
    Number number;
    number.set("12345", 3);
    EXPECT_EQ("123", number.toString());
    number.set("1\0002", 3);
    EXPECT_EQ(std::string("1\0002", 3), number.toString());
    number.set("12345", 0);
    EXPECT_TRUE(holds(number, Number::ebNone, ""));
}

TEST(Number, set_to_text_does_not_check_it) {
    for (const char* const text : {"007", "+1", "abc", " 1", "1 2", "--", "1.2.3", "0x10"}) {
        const Number number(text);
        EXPECT_EQ(text, number.toString());
    }
}

TEST(Number, set_to_wide_text_stores_it_narrow) {
    Number number(5);
    number.set(std::wstring(L"1.50"));
    EXPECT_TRUE(holds(number, Number::ebNone, "1.50"));
    number.set(5);
    number.set(L"2.50");
    EXPECT_TRUE(holds(number, Number::ebNone, "2.50"));
    number.set(5);
    number.set(L"3.5000", 4);
    EXPECT_TRUE(holds(number, Number::ebNone, "3.50"));
}

TEST(Number, set_to_wide_text_encodes_it_as_utf8) {
    Number number;
    number.set(L"\u0664");
    EXPECT_EQ("\xD9\xA4", number.toString());
    EXPECT_EQ(L"\u0664", number.toWString());
}

template<class T>
void expectSigned(T value) {
    Number number("1.5");
    number.set(value);
    EXPECT_TRUE(holds(number, Number::ebLongLong, "")) << value;
    EXPECT_EQ(static_cast<long long>(value), NumberProbe::heldSigned(number));
    EXPECT_TRUE(holds(Number(value), Number::ebLongLong, "")) << value;
}

template<class T>
void expectUnsigned(T value) {
    Number number("1.5");
    number.set(value);
    EXPECT_TRUE(holds(number, Number::ebULongLong, "")) << value;
    EXPECT_EQ(static_cast<unsigned long long>(value), NumberProbe::heldUnsigned(number));
    EXPECT_TRUE(holds(Number(value), Number::ebULongLong, "")) << value;
}

template<class T>
void expectReal(T value) {
    Number number("1");
    number.set(value);
    EXPECT_TRUE(holds(number, Number::ebDouble, "")) << value;
    EXPECT_EQ(static_cast<double>(value), NumberProbe::heldReal(number));
    EXPECT_TRUE(holds(Number(value), Number::ebDouble, "")) << value;
}

template<class T, class Expect>
void expectLimits(Expect expect) {
    expect(std::numeric_limits<T>::min());
    expect(std::numeric_limits<T>::max());
    expect(T{0});
    expect(T{1});
}

TEST(Number, set_to_a_signed_type_extends_the_sign_and_forgets_the_text) {
    expectLimits<char>([](auto value) { expectSigned(value); });
    expectLimits<short>([](auto value) { expectSigned(value); });
    expectLimits<int>([](auto value) { expectSigned(value); });
    expectLimits<long>([](auto value) { expectSigned(value); });
    expectLimits<long long>([](auto value) { expectSigned(value); });
}

TEST(Number, set_to_an_unsigned_type_extends_with_zeros_and_forgets_the_text) {
    expectLimits<unsigned char>([](auto value) { expectUnsigned(value); });
    expectLimits<unsigned short>([](auto value) { expectUnsigned(value); });
    expectLimits<unsigned int>([](auto value) { expectUnsigned(value); });
    expectLimits<unsigned long>([](auto value) { expectUnsigned(value); });
    expectLimits<unsigned long long>([](auto value) { expectUnsigned(value); });
}

TEST(Number, set_to_a_floating_type_forgets_the_text) {
    expectLimits<float>([](auto value) { expectReal(value); });
    expectLimits<double>([](auto value) { expectReal(value); });
}

TEST(Number, char_is_a_signed_type) {
    Number number;
    number.set('\xFF');
    EXPECT_EQ("-1", number.toString());
    EXPECT_EQ("97", Number('a').toString());
}

TEST(Number, set_to_a_number_takes_over_both_sides_as_they_are) {
    const Number textOnly("1.50");
    const Number binaryOnly(7U);
    const Number both("12");
    EXPECT_EQ(Number::ebULongLong, both.type());
    Number target(5);
    target.set(textOnly);
    EXPECT_TRUE(holds(target, Number::ebNone, "1.50"));
    target.set(binaryOnly);
    EXPECT_TRUE(holds(target, Number::ebULongLong, ""));
    EXPECT_EQ(7U, NumberProbe::heldUnsigned(target));
    target.set(both);
    EXPECT_TRUE(holds(target, Number::ebULongLong, "12"));
    EXPECT_EQ(12U, NumberProbe::heldUnsigned(target));
    EXPECT_TRUE(holds(textOnly, Number::ebNone, "1.50"));
    EXPECT_TRUE(holds(binaryOnly, Number::ebULongLong, ""));
}

TEST(Number, copy_and_assignment_take_over_both_sides_as_they_are) {
    const Number source("1.50");
    const Number copy(source);
    EXPECT_TRUE(holds(copy, Number::ebNone, "1.50"));
    Number target(5);
    EXPECT_EQ(&target, &(target = source));
    EXPECT_TRUE(holds(target, Number::ebNone, "1.50"));
    EXPECT_EQ(Number::ebDouble, source.type());
    target = source;
    EXPECT_TRUE(holds(target, Number::ebDouble, "1.50"));
    EXPECT_EQ(1.5, NumberProbe::heldReal(target));
    EXPECT_TRUE(holds(copy, Number::ebNone, "1.50"));
}

TEST(Number, set_to_itself_changes_nothing) {
    Number number("1.50");
    const Number& same = number;
    number.set(same);
    EXPECT_TRUE(holds(number, Number::ebNone, "1.50"));
    number = same;
    EXPECT_TRUE(holds(number, Number::ebNone, "1.50"));
}

TEST(Number, set_to_its_own_text_makes_it_text_only) {
    Number number(1234567);
    number.set(number.toString());
    EXPECT_TRUE(holds(number, Number::ebNone, "1234567"));
    number.set(number.toString().c_str() + 2);
    EXPECT_TRUE(holds(number, Number::ebNone, "34567"));
    number.set(number.toString().c_str() + 1, 3);
    EXPECT_TRUE(holds(number, Number::ebNone, "456"));
}

TEST(Number, set_to_a_decimal_takes_its_text) {
    Number number(5);
    number.set(DecNumber("1.50"));
    EXPECT_TRUE(holds(number, Number::ebNone, "1.50"));
    EXPECT_TRUE(holds(Number(DecNumber(-7LL)), Number::ebNone, "-7"));
}

TEST(Number, of_a_decimal_is_classified_by_its_text) {
    EXPECT_EQ(Number::ebDouble, Number(DecNumber("1.50")).type());
    EXPECT_EQ(Number::ebULongLong, Number(DecNumber("150")).type());
    EXPECT_EQ(Number::ebLongLong, Number(DecNumber("-150")).type());
    EXPECT_EQ(Number::ebULongLong, Number(DecNumber("18446744073709551615")).type());
}

TEST(Number, of_a_decimal_with_twenty_digits_is_out_of_range) {
    const Number number(DecNumber("12345678901234567890"));
    const auto error = thrownBy<TextError>([&] { number.type(); });
    EXPECT_EQ("12345678901234567890", error.value());
    EXPECT_THROW(Number(DecNumber("18446744073709551616")).type(), TextError);
}

// --- readers: which side they compute
// -----------------------------------------------------------------

TEST(Number, type_computes_the_binary_value_and_keeps_the_text) {
    const Number number("1.50");
    EXPECT_EQ(Number::ebDouble, number.type());
    EXPECT_TRUE(holds(number, Number::ebDouble, "1.50"));
    EXPECT_EQ(1.5, NumberProbe::heldReal(number));
}

TEST(Number, typed_read_computes_the_binary_value_and_keeps_the_text) {
    const Number number("0012");
    EXPECT_EQ(12, number.toInt());
    EXPECT_TRUE(holds(number, Number::ebULongLong, "0012"));
}

TEST(Number, to_string_computes_the_text_and_keeps_the_binary_value) {
    const Number number(12U);
    EXPECT_EQ("12", number.toString());
    EXPECT_TRUE(holds(number, Number::ebULongLong, "12"));
}

TEST(Number, to_wide_string_and_write_at_compute_the_text) {
    const Number first(12U);
    EXPECT_EQ(L"12", first.toWString());
    EXPECT_TRUE(holds(first, Number::ebULongLong, "12"));
    const Number second(-3);
    std::ostringstream text;
    second.writeAt(text);
    EXPECT_TRUE(holds(second, Number::ebLongLong, "-3"));
    const Number third(0.5);
    std::wostringstream wideText;
    third.writeAt(wideText);
    EXPECT_TRUE(holds(third, Number::ebDouble, "0.5"));
}

TEST(Number, to_string_of_a_text_does_not_compute_the_binary_value) {
    const Number number("1.50");
    EXPECT_EQ("1.50", number.toString());
    EXPECT_EQ(L"1.50", number.toWString());
    EXPECT_TRUE(holds(number, Number::ebNone, "1.50"));
}

TEST(Number, to_string_returns_the_string_that_the_number_keeps) {
    const Number number(12);
    EXPECT_EQ(&number.toString(), &number.toString());
    EXPECT_EQ(&NumberProbe::heldText(number), &number.toString());
}

TEST(Number, to_dec_number_is_the_exact_binary_value) {
    EXPECT_EQ(0, Number(-7).toDecNumber().compare(DecNumber("-7")));
    EXPECT_EQ(
        0, Number("18446744073709551615").toDecNumber().compare(DecNumber("18446744073709551615")));
    EXPECT_EQ(0, Number(0.1).toDecNumber().compare(DecNumber(0.1)));
    EXPECT_EQ(0, Number("0.1").toDecNumber().compare(DecNumber(0.1)));
    EXPECT_NE(0, Number("0.1").toDecNumber().compare(DecNumber("0.1")));
}

TEST(Number, to_dec_number_computes_the_binary_value) {
    const Number number("1.50");
    EXPECT_EQ(0, number.toDecNumber().compare(DecNumber("1.5")));
    EXPECT_TRUE(holds(number, Number::ebDouble, "1.50"));
}

TEST(Number, to_dec_number_of_text_out_of_range_throws) {
    const Number number("1e400");
    EXPECT_THROW(number.toDecNumber(), TextError);
}

// --- the empty text
// ---------------------------------------------------------------------------------

TEST(NumberOfEmptyText, stays_empty_in_to_string) {
    Number number(5);
    number.set("");
    EXPECT_EQ("", number.toString());
    EXPECT_EQ(L"", number.toWString());
    EXPECT_TRUE(holds(number, Number::ebNone, ""));
}

TEST(NumberOfEmptyText, is_unsigned_and_keeps_the_bits_from_before) {
    Number number(5);
    number.set("");
    EXPECT_EQ(Number::ebULongLong, number.type());
    EXPECT_EQ(5U, number.toUInt());
}

TEST(NumberOfEmptyText, gets_the_text_of_those_bits_once_its_kind_is_known) {
    Number number(5);
    number.set("");
    EXPECT_EQ(Number::ebULongLong, number.type());
    EXPECT_EQ("5", number.toString());
}

// --- kinds that no operation produces
// -----------------------------------------------------------------

TEST(BigDecimalNumber, keeps_kind_and_text_in_all_readers_and_copies) {
    const Number number = NumberProbe::bigDecimal("123456789012345678901234567890.5");
    EXPECT_EQ(Number::ebBigDecimal, number.type());
    EXPECT_EQ("123456789012345678901234567890.5", number.toString());
    EXPECT_EQ(L"123456789012345678901234567890.5", number.toWString());
    Number copy;
    copy.set(number);
    EXPECT_TRUE(holds(copy, Number::ebBigDecimal, "123456789012345678901234567890.5"));
}

TEST(BigDecimalNumber, has_no_text_but_its_own) {
    EXPECT_EQ("", NumberProbe::bigDecimal("").toString());
}

TEST(BigDecimalNumber, is_the_decimal_of_its_text) {
    const std::string text = "123456789012345678901234567890.5";
    EXPECT_EQ(0, NumberProbe::bigDecimal(text).toDecNumber().compare(DecNumber(text)));
    EXPECT_EQ(0, NumberProbe::bigDecimal("0.1").toDecNumber().compare(DecNumber("0.1")));
}

TEST(BigDecimalNumber, is_text_only_after_a_setter) {
    Number number = NumberProbe::bigDecimal("1");
    number.set("2");
    EXPECT_TRUE(holds(number, Number::ebNone, "2"));
}

TEST(NumberOfUnknownKind, has_no_text_and_keeps_its_kind) {
    const Number number = NumberProbe::unknown();
    EXPECT_EQ("", number.toString());
    EXPECT_EQ(7, static_cast<int>(number.type()));
}

TEST(NumberOfUnknownKind, has_no_decimal) {
    const Number number = NumberProbe::unknown();
    const auto error = thrownBy<ko::RuntimeError>([&] { number.toDecNumber(); });
    EXPECT_STREQ("Unknown type, implementation missing", error.what());
}

// --- names of the kinds
// -------------------------------------------------------------------------------

TEST(EBinaryType, values_are_settled) {
    EXPECT_EQ(0, Number::ebNone);
    EXPECT_EQ(1, Number::ebLongLong);
    EXPECT_EQ(2, Number::ebULongLong);
    EXPECT_EQ(3, Number::ebDouble);
    EXPECT_EQ(4, Number::ebBigDecimal);
}

TEST(EBinaryType, prints_the_name_of_each_kind) {
    const std::pair<Number::EBinaryType, const char*> names[] = {
        {Number::ebNone, "ebNone"},
        {Number::ebLongLong, "ebLongLong"},
        {Number::ebULongLong, "ebULongLong"},
        {Number::ebDouble, "ebDouble"},
        {Number::ebBigDecimal, "ebBigDecimal"}};
    for (const auto& [kind, name] : names) {
        std::ostringstream text;
        EXPECT_EQ(&text, &(text << kind));
        EXPECT_EQ(name, text.str());
    }
}

TEST(EBinaryType, prints_the_name_of_each_kind_on_a_wide_stream) {
    const std::pair<Number::EBinaryType, const wchar_t*> names[] = {
        {Number::ebNone, L"ebNone"},
        {Number::ebLongLong, L"ebLongLong"},
        {Number::ebULongLong, L"ebULongLong"},
        {Number::ebDouble, L"ebDouble"},
        {Number::ebBigDecimal, L"ebBigDecimal"}};
    for (const auto& [kind, name] : names) {
        std::wostringstream text;
        EXPECT_EQ(&text, &(text << kind));
        EXPECT_EQ(name, text.str());
    }
}

TEST(EBinaryType, prints_what_is_no_kind_as_unknown) {
    for (const int value :
         {5, 7, -1, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()}) {
        std::ostringstream text;
        text << static_cast<Number::EBinaryType>(value);
        EXPECT_EQ(">>Unknown<<", text.str()) << value;
        EXPECT_TRUE(text.good());
        std::wostringstream wideText;
        wideText << static_cast<Number::EBinaryType>(value);
        EXPECT_EQ(L">>Unknown<<", wideText.str()) << value;
        EXPECT_TRUE(wideText.good());
    }
}

}  // namespace
