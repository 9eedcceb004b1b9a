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
    EXPECT_EQ(NumberProbe::heldSigned(number), 0);
}

TEST(Number, limits_are_the_texts_of_the_binary_limits) {
    EXPECT_EQ(Number::k_limits.llMax, "9223372036854775807");
    EXPECT_EQ(Number::k_limits.llMin, "-9223372036854775808");
    EXPECT_EQ(Number::k_limits.ullMax, "18446744073709551615");
    EXPECT_EQ(Number::k_limits.dblMin, "2.22507e-308");
    EXPECT_EQ(Number::k_limits.dblMax, "1.79769e+308");
}

TEST(Number, smallest_unsigned_limit_is_the_largest_value_too) {
    EXPECT_EQ(Number::k_limits.ullMin, "18446744073709551615");
}

// Setters.

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
    EXPECT_EQ(number.toString(), "123");
    number.set("1\0002", 3);
    EXPECT_EQ(number.toString(), std::string("1\0002", 3));
    number.set("12345", 0);
    EXPECT_TRUE(holds(number, Number::ebNone, ""));
}

TEST(Number, set_to_text_does_not_check_it) {
    for (const char* const text : {"007", "+1", "abc", " 1", "1 2", "--", "1.2.3", "0x10"}) {
        const Number number(text);
        EXPECT_EQ(number.toString(), text);
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
    EXPECT_EQ(number.toString(), "\xD9\xA4");
    EXPECT_EQ(number.toWString(), L"\u0664");
}

template<class T>
void expectSigned(T value) {
    Number number("1.5");
    number.set(value);
    EXPECT_TRUE(holds(number, Number::ebLongLong, "")) << value;
    EXPECT_EQ(NumberProbe::heldSigned(number), static_cast<long long>(value));
    EXPECT_TRUE(holds(Number(value), Number::ebLongLong, "")) << value;
}

template<class T>
void expectUnsigned(T value) {
    Number number("1.5");
    number.set(value);
    EXPECT_TRUE(holds(number, Number::ebULongLong, "")) << value;
    EXPECT_EQ(NumberProbe::heldUnsigned(number), static_cast<unsigned long long>(value));
    EXPECT_TRUE(holds(Number(value), Number::ebULongLong, "")) << value;
}

template<class T>
void expectReal(T value) {
    Number number("1");
    number.set(value);
    EXPECT_TRUE(holds(number, Number::ebDouble, "")) << value;
    EXPECT_EQ(NumberProbe::heldReal(number), static_cast<double>(value));
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
    EXPECT_EQ(number.toString(), "-1");
    EXPECT_EQ(Number('a').toString(), "97");
}

TEST(Number, set_to_a_number_takes_over_both_sides_as_they_are) {
    const Number textOnly("1.50");
    const Number binaryOnly(7U);
    const Number both("12");
    EXPECT_EQ(both.type(), Number::ebULongLong);
    Number target(5);
    target.set(textOnly);
    EXPECT_TRUE(holds(target, Number::ebNone, "1.50"));
    target.set(binaryOnly);
    EXPECT_TRUE(holds(target, Number::ebULongLong, ""));
    EXPECT_EQ(NumberProbe::heldUnsigned(target), 7U);
    target.set(both);
    EXPECT_TRUE(holds(target, Number::ebULongLong, "12"));
    EXPECT_EQ(NumberProbe::heldUnsigned(target), 12U);
    EXPECT_TRUE(holds(textOnly, Number::ebNone, "1.50"));
    EXPECT_TRUE(holds(binaryOnly, Number::ebULongLong, ""));
}

TEST(Number, copy_and_assignment_take_over_both_sides_as_they_are) {
    const Number source("1.50");
    const Number copy(source);
    EXPECT_TRUE(holds(copy, Number::ebNone, "1.50"));
    Number target(5);
    EXPECT_EQ(&(target = source), &target);
    EXPECT_TRUE(holds(target, Number::ebNone, "1.50"));
    EXPECT_EQ(source.type(), Number::ebDouble);
    target = source;
    EXPECT_TRUE(holds(target, Number::ebDouble, "1.50"));
    EXPECT_EQ(NumberProbe::heldReal(target), 1.5);
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
    EXPECT_EQ(Number(DecNumber("1.50")).type(), Number::ebDouble);
    EXPECT_EQ(Number(DecNumber("150")).type(), Number::ebULongLong);
    EXPECT_EQ(Number(DecNumber("-150")).type(), Number::ebLongLong);
    EXPECT_EQ(Number(DecNumber("18446744073709551615")).type(), Number::ebULongLong);
}

TEST(Number, of_a_decimal_with_twenty_digits_is_out_of_range) {
    const Number number(DecNumber("12345678901234567890"));
    const auto error = thrownBy<TextError>([&] { number.type(); });
    EXPECT_EQ(error.value(), "12345678901234567890");
    EXPECT_THROW(Number(DecNumber("18446744073709551616")).type(), TextError);
}

// Readers: which side they compute.

TEST(Number, type_computes_the_binary_value_and_keeps_the_text) {
    const Number number("1.50");
    EXPECT_EQ(number.type(), Number::ebDouble);
    EXPECT_TRUE(holds(number, Number::ebDouble, "1.50"));
    EXPECT_EQ(NumberProbe::heldReal(number), 1.5);
}

TEST(Number, typed_read_computes_the_binary_value_and_keeps_the_text) {
    const Number number("0012");
    EXPECT_EQ(number.toInt(), 12);
    EXPECT_TRUE(holds(number, Number::ebULongLong, "0012"));
}

TEST(Number, to_string_computes_the_text_and_keeps_the_binary_value) {
    const Number number(12U);
    EXPECT_EQ(number.toString(), "12");
    EXPECT_TRUE(holds(number, Number::ebULongLong, "12"));
}

TEST(Number, to_wide_string_and_write_at_compute_the_text) {
    const Number first(12U);
    EXPECT_EQ(first.toWString(), L"12");
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
    EXPECT_EQ(number.toString(), "1.50");
    EXPECT_EQ(number.toWString(), L"1.50");
    EXPECT_TRUE(holds(number, Number::ebNone, "1.50"));
}

TEST(Number, to_string_returns_the_string_that_the_number_keeps) {
    const Number number(12);
    EXPECT_EQ(&number.toString(), &number.toString());
    EXPECT_EQ(&number.toString(), &NumberProbe::heldText(number));
}

TEST(Number, to_dec_number_is_the_exact_binary_value) {
    EXPECT_EQ(Number(-7).toDecNumber().compare(DecNumber("-7")), 0);
    EXPECT_EQ(
        Number("18446744073709551615").toDecNumber().compare(DecNumber("18446744073709551615")), 0);
    EXPECT_EQ(Number(0.1).toDecNumber().compare(DecNumber(0.1)), 0);
    EXPECT_EQ(Number("0.1").toDecNumber().compare(DecNumber(0.1)), 0);
    EXPECT_NE(Number("0.1").toDecNumber().compare(DecNumber("0.1")), 0);
}

TEST(Number, to_dec_number_computes_the_binary_value) {
    const Number number("1.50");
    EXPECT_EQ(number.toDecNumber().compare(DecNumber("1.5")), 0);
    EXPECT_TRUE(holds(number, Number::ebDouble, "1.50"));
}

TEST(Number, to_dec_number_of_text_out_of_range_throws) {
    const Number number("1e400");
    EXPECT_THROW(number.toDecNumber(), TextError);
}

// The empty text.

TEST(NumberOfEmptyText, stays_empty_in_to_string) {
    Number number(5);
    number.set("");
    EXPECT_EQ(number.toString(), "");
    EXPECT_EQ(number.toWString(), L"");
    EXPECT_TRUE(holds(number, Number::ebNone, ""));
}

TEST(NumberOfEmptyText, is_unsigned_and_keeps_the_bits_from_before) {
    Number number(5);
    number.set("");
    EXPECT_EQ(number.type(), Number::ebULongLong);
    EXPECT_EQ(number.toUInt(), 5U);
}

TEST(NumberOfEmptyText, gets_the_text_of_those_bits_once_its_kind_is_known) {
    Number number(5);
    number.set("");
    EXPECT_EQ(number.type(), Number::ebULongLong);
    EXPECT_EQ(number.toString(), "5");
}

// Kinds that no operation produces.

TEST(BigDecimalNumber, keeps_kind_and_text_in_all_readers_and_copies) {
    const Number number = NumberProbe::bigDecimal("123456789012345678901234567890.5");
    EXPECT_EQ(number.type(), Number::ebBigDecimal);
    EXPECT_EQ(number.toString(), "123456789012345678901234567890.5");
    EXPECT_EQ(number.toWString(), L"123456789012345678901234567890.5");
    Number copy;
    copy.set(number);
    EXPECT_TRUE(holds(copy, Number::ebBigDecimal, "123456789012345678901234567890.5"));
}

TEST(BigDecimalNumber, has_no_text_but_its_own) {
    EXPECT_EQ(NumberProbe::bigDecimal("").toString(), "");
}

TEST(BigDecimalNumber, is_the_decimal_of_its_text) {
    const std::string text = "123456789012345678901234567890.5";
    EXPECT_EQ(NumberProbe::bigDecimal(text).toDecNumber().compare(DecNumber(text)), 0);
    EXPECT_EQ(NumberProbe::bigDecimal("0.1").toDecNumber().compare(DecNumber("0.1")), 0);
}

TEST(BigDecimalNumber, is_text_only_after_a_setter) {
    Number number = NumberProbe::bigDecimal("1");
    number.set("2");
    EXPECT_TRUE(holds(number, Number::ebNone, "2"));
}

TEST(NumberOfUnknownKind, has_no_text_and_keeps_its_kind) {
    const Number number = NumberProbe::unknown();
    EXPECT_EQ(number.toString(), "");
    EXPECT_EQ(static_cast<int>(number.type()), 7);
}

TEST(NumberOfUnknownKind, has_no_decimal) {
    const Number number = NumberProbe::unknown();
    const auto error = thrownBy<ko::RuntimeError>([&] { number.toDecNumber(); });
    EXPECT_STREQ(error.what(), "Unknown type, implementation missing");
}

// Names of the kinds.

TEST(EBinaryType, values_are_settled) {
    EXPECT_EQ(Number::ebNone, 0);
    EXPECT_EQ(Number::ebLongLong, 1);
    EXPECT_EQ(Number::ebULongLong, 2);
    EXPECT_EQ(Number::ebDouble, 3);
    EXPECT_EQ(Number::ebBigDecimal, 4);
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
        EXPECT_EQ(&(text << kind), &text);
        EXPECT_EQ(text.str(), name);
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
        EXPECT_EQ(&(text << kind), &text);
        EXPECT_EQ(text.str(), name);
    }
}

TEST(EBinaryType, prints_what_is_no_kind_as_unknown) {
    for (const int value :
         {5, 7, -1, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()}) {
        std::ostringstream text;
        text << static_cast<Number::EBinaryType>(value);
        EXPECT_EQ(text.str(), ">>Unknown<<") << value;
        EXPECT_TRUE(text.good());
        std::wostringstream wideText;
        wideText << static_cast<Number::EBinaryType>(value);
        EXPECT_EQ(wideText.str(), L">>Unknown<<") << value;
        EXPECT_TRUE(wideText.good());
    }
}

}  // namespace
