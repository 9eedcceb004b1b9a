// SPDX-License-Identifier: MIT
//
// From text to binary value and back: which kind a text has, which texts are refused, what the
// others become, and what the text of a binary value is.

#include <ko/Orvid/Number.h>

#include <gtest/gtest.h>
#include <ko/DecNumber.h>

#include <cfloat>
#include <clocale>
#include <cmath>
#include <iomanip>
#include <limits>
#include <sstream>
#include <string>

#include "support/Document.h"
#include "support/GroupingLocale.h"
#include "support/NumberErrors.h"
#include "support/NumberProbe.h"

namespace {

using ko::Orvid::Number;
using ko::Orvid::NumberProbe;
using orvid_test::TextError;
using orvid_test::thrownBy;

constexpr long long k_lowest = std::numeric_limits<long long>::min();

unsigned long long unsignedOf(const std::string& text) {
    const Number number(text);
    EXPECT_EQ(Number::ebULongLong, number.type()) << text;
    return NumberProbe::heldUnsigned(number);
}

long long signedOf(const std::string& text) {
    const Number number(text);
    EXPECT_EQ(Number::ebLongLong, number.type()) << text;
    return NumberProbe::heldSigned(number);
}

double realOf(const std::string& text) {
    const Number number(text);
    EXPECT_EQ(Number::ebDouble, number.type()) << text;
    return NumberProbe::heldReal(number);
}

/// Text that is refused, and with which limits.
void expectRefused(const std::string& text, const std::string& min, const std::string& max) {
    const Number number(text);
    const auto error = thrownBy<TextError>([&] { number.type(); });
    EXPECT_EQ(text, error.value());
    EXPECT_EQ(min, error.min());
    EXPECT_EQ(max, error.max());
    EXPECT_EQ("Value out of range! Value: " + text + " Min: " + min + " Max: " + max,
              std::string(error.what()));
    EXPECT_EQ(nullptr, error.elementPath());
}

void expectIntegerRefused(const std::string& text) {
    expectRefused(text, "-9223372036854775808", "9223372036854775807");
}

void expectRealRefused(const std::string& text) {
    expectRefused(text, "2.22507e-308", "1.79769e+308");
}

// --- which kind a text has
// ------------------------------------------------------------------------

TEST(NumberText, of_digits_is_unsigned) {
    EXPECT_EQ(12U, unsignedOf("12"));
    EXPECT_EQ(0U, unsignedOf("0"));
    EXPECT_EQ(7U, unsignedOf("007"));
}

TEST(NumberText, with_a_leading_minus_is_signed) {
    EXPECT_EQ(-12, signedOf("-12"));
    EXPECT_EQ(0, signedOf("-0"));
    EXPECT_EQ(-7, signedOf("-007"));
}

TEST(NumberText, with_a_point_or_an_exponent_is_a_double) {
    EXPECT_EQ(1.0, realOf("1.0"));
    EXPECT_EQ(1000.0, realOf("1e3"));
    EXPECT_EQ(1000.0, realOf("1E3"));
    EXPECT_EQ(-0.5, realOf("-0.5"));
    EXPECT_EQ(0.0, realOf("0.0"));
    EXPECT_EQ(0.0, realOf("0e9"));
    EXPECT_TRUE(std::signbit(realOf("-0.0")));
}

TEST(NumberText, counts_a_minus_only_in_front) {
    EXPECT_EQ(1U, unsignedOf("1-2"));
    EXPECT_EQ(5U, unsignedOf("+5"));
}

TEST(NumberText, keeps_its_digits_when_it_is_converted) {
    for (const char* const text : {"007", "-0", "1.500", "1E+03", "100000000000000000.0"}) {
        const Number number(text);
        number.type();
        EXPECT_EQ(text, number.toString());
    }
}

// --- which texts are refused
// ------------------------------------------------------------------------

TEST(NumberText, of_twenty_unsigned_digits_is_refused_unless_it_is_the_largest_value) {
    EXPECT_EQ(std::numeric_limits<unsigned long long>::max(), unsignedOf("18446744073709551615"));
    expectIntegerRefused("10000000000000000000");
    expectIntegerRefused("18446744073709551614");
    expectIntegerRefused("18446744073709551616");
    expectIntegerRefused("99999999999999999999");
}

TEST(NumberText, of_more_than_twenty_unsigned_digits_is_refused) {
    expectIntegerRefused("184467440737095516150");
    expectIntegerRefused("00000000000000000001");
    expectIntegerRefused("000000000000000000000000000");
    expectIntegerRefused(std::string(1000, '9'));
}

TEST(NumberText, of_nineteen_unsigned_digits_is_not_checked) {
    EXPECT_EQ(9999999999999999999ULL, unsignedOf("9999999999999999999"));
    EXPECT_EQ(9223372036854775808ULL, unsignedOf("9223372036854775808"));
    EXPECT_EQ(1U, unsignedOf("0000000000000000001"));
}

TEST(NumberText, of_eighteen_characters_with_a_minus_is_not_checked) {
    EXPECT_EQ(-10000000000000000LL, signedOf("-10000000000000000"));
    EXPECT_EQ(-99999999999999999LL, signedOf("-99999999999999999"));
}

TEST(NumberText, of_nineteen_characters_with_a_minus_is_compared_with_the_lowest_byte_by_byte) {
    expectIntegerRefused("-100000000000000000");
    expectIntegerRefused("-1000000000000000000");
    expectIntegerRefused("-922337203685477580");
    expectIntegerRefused("-9223372036854775807");
    expectIntegerRefused("-000000000000000001");
    EXPECT_EQ(k_lowest, signedOf("-9223372036854775808"));
    EXPECT_EQ(-999999999999999999LL, signedOf("-999999999999999999"));
    EXPECT_EQ(-922337203685477581LL, signedOf("-922337203685477581"));
}

TEST(NumberText, below_the_lowest_value_becomes_the_lowest_value) {
    EXPECT_EQ(k_lowest, signedOf("-9223372036854775809"));
    EXPECT_EQ(k_lowest, signedOf("-99999999999999999999"));
    EXPECT_EQ(k_lowest, signedOf("-92233720368547758080"));
}

TEST(NumberText, beyond_the_largest_double_is_refused) {
    expectRealRefused("1e400");
    expectRealRefused("-1e400");
    expectRealRefused("1e309");
    expectRealRefused("-1.5E+309");
    expectRealRefused("1.7976931348623159e308");
}

TEST(NumberText, up_to_the_largest_double_is_accepted) {
    EXPECT_EQ(DBL_MAX, realOf("1.7976931348623157e308"));
    EXPECT_EQ(-DBL_MAX, realOf("-1.7976931348623157e308"));
}

TEST(NumberText, too_small_for_a_double_becomes_zero) {
    EXPECT_EQ(0.0, realOf("1e-400"));
    EXPECT_EQ(0.0, realOf("-1e-400"));
    EXPECT_TRUE(std::signbit(realOf("-1e-400")));
}

TEST(NumberText, of_a_denormal_double_is_accepted) {
    EXPECT_EQ(std::numeric_limits<double>::denorm_min(), realOf("4.9e-324"));
    EXPECT_EQ(1e-310, realOf("1e-310"));
}

TEST(NumberText, with_a_point_is_a_double_however_long_it_is) {
    EXPECT_EQ(1e20, realOf("100000000000000000000.0"));
    EXPECT_EQ(-1e20, realOf("-100000000000000000000.0"));
    EXPECT_EQ(1.0, realOf("1." + std::string(1000, '0')));
}

TEST(NumberText, is_read_to_the_nearest_double) {
    EXPECT_EQ(0.1, realOf("0.1"));
    EXPECT_EQ(2.2250738585072011e-308, realOf("2.2250738585072011e-308"));
    EXPECT_EQ(9007199254740993.0, realOf("9007199254740993.0"));
    EXPECT_EQ(9007199254740994.0, realOf("9007199254740993.00000000000000000000000000001"));
}

// --- what happens after a refusal
// -----------------------------------------------------------------

TEST(RefusedNumberText, is_reported_once_and_leaves_the_kind_and_the_bits_from_before) {
    Number number(5U);
    number.set("99999999999999999999");
    EXPECT_THROW(number.type(), TextError);
    EXPECT_EQ(Number::ebULongLong, NumberProbe::heldKind(number));
    EXPECT_EQ(Number::ebULongLong, number.type());
    EXPECT_EQ(5U, number.toUInt());
    EXPECT_EQ("99999999999999999999", number.toString());
}

TEST(RefusedNumberText, of_a_signed_number_leaves_the_bits_from_before) {
    Number number(-5);
    number.set("-1000000000000000000");
    EXPECT_THROW(number.toInt(), TextError);
    EXPECT_EQ(Number::ebLongLong, number.type());
    EXPECT_EQ(-5, number.toInt());
}

TEST(RefusedNumberText, of_a_double_leaves_the_bits_from_before) {
    Number number(2.5);
    number.set("1e400");
    EXPECT_THROW(number.toDouble(), TextError);
    EXPECT_EQ(Number::ebDouble, number.type());
    EXPECT_EQ(2.5, number.toDouble());
    EXPECT_EQ("1e400", number.toString());
}

TEST(RefusedNumberText, is_checked_again_after_it_is_set_again) {
    Number number("1e400");
    EXPECT_THROW(number.type(), TextError);
    number.set("1e400");
    EXPECT_THROW(number.type(), TextError);
}

TEST(RefusedNumberText, is_written_without_a_check) {
    const Number number("99999999999999999999");
    EXPECT_EQ("99999999999999999999", number.toString());
    EXPECT_EQ(L"99999999999999999999", number.toWString());
}

TEST(NumberText, can_be_converted_again_by_hand) {
    const Number number("12");
    number.syncToBinary();
    number.syncToBinary();
    EXPECT_EQ(12U, NumberProbe::heldUnsigned(number));
    EXPECT_EQ("12", number.toString());
}

// --- malformed text
// -----------------------------------------------------------------------------------

TEST(MalformedNumberText, that_begins_with_no_digits_is_zero) {
    EXPECT_EQ(0U, unsignedOf("abc"));
    EXPECT_EQ(0, signedOf("-"));
    EXPECT_EQ(0, signedOf("--5"));
    EXPECT_EQ(0.0, realOf("hello"));
    EXPECT_EQ(0.0, realOf("."));
    EXPECT_EQ(0.0, realOf("e5"));
}

TEST(MalformedNumberText, overwrites_the_bits_from_before_with_zero) {
    Number number(5);
    number.set("abc");
    EXPECT_EQ(0U, number.toUInt());
}

TEST(MalformedNumberText, is_read_up_to_where_it_ends_to_be_a_number) {
    EXPECT_EQ(12U, unsignedOf("12x34"));
    EXPECT_EQ(12U, unsignedOf("12 34"));
    EXPECT_EQ(-12, signedOf("-12x"));
    EXPECT_EQ(1.5, realOf("1.5x"));
    EXPECT_EQ(1.25, realOf("1.25.75"));
    EXPECT_EQ(1.0, realOf("1e"));
    EXPECT_EQ(1.0, realOf("1e+"));
    EXPECT_EQ(5.0, realOf("5."));
    EXPECT_EQ(0.5, realOf(".5"));
}

TEST(MalformedNumberText, may_begin_with_blanks) {
    EXPECT_EQ(12U, unsignedOf(" 12"));
    EXPECT_EQ(1.5, realOf("\t 1.5"));
}

TEST(MalformedNumberText, of_blanks_then_minus_is_read_as_unsigned) {
    EXPECT_EQ(std::numeric_limits<unsigned long long>::max(), unsignedOf(" -1"));
}

TEST(MalformedNumberText, ends_at_a_null_byte) {
    EXPECT_EQ(1U, unsignedOf(std::string("1\0002", 3)));
    EXPECT_EQ(1.5, realOf(std::string("1.5\0002", 5)));
}

// --- from binary value to text
// --------------------------------------------------------------------------

TEST(NumberToString, of_integers_has_all_digits) {
    EXPECT_EQ("-5", Number(-5).toString());
    EXPECT_EQ("5", Number(5U).toString());
    EXPECT_EQ("0", Number(0).toString());
    EXPECT_EQ("-9223372036854775808", Number(k_lowest).toString());
    EXPECT_EQ("9223372036854775807", Number(std::numeric_limits<long long>::max()).toString());
    EXPECT_EQ("18446744073709551615",
              Number(std::numeric_limits<unsigned long long>::max()).toString());
}

TEST(NumberToString, of_doubles_has_six_significant_digits) {
    EXPECT_EQ("0.1", Number(0.1).toString());
    EXPECT_EQ("100", Number(100.0).toString());
    EXPECT_EQ("1.23457e+06", Number(1234567.0).toString());
    EXPECT_EQ("123457", Number(123456.7).toString());
    EXPECT_EQ("1e-05", Number(0.00001).toString());
    EXPECT_EQ("0.0001", Number(0.0001).toString());
    EXPECT_EQ("3.14159", Number(3.14159265).toString());
    EXPECT_EQ("-0.5", Number(-0.5).toString());
    EXPECT_EQ("0", Number(0.0).toString());
    EXPECT_EQ("-0", Number(-0.0).toString());
    EXPECT_EQ("1.79769e+308", Number(DBL_MAX).toString());
    EXPECT_EQ("1e+100", Number(1e100).toString());
    EXPECT_EQ("1e+06", Number(999999.9).toString());
}

TEST(NumberToString, of_floats_is_that_of_the_double) {
    EXPECT_EQ("0.1", Number(0.1F).toString());
    EXPECT_EQ("1.67772e+07", Number(16777216.0F).toString());
}

TEST(NumberToString, of_what_is_no_number_is_what_a_stream_prints) {
    EXPECT_EQ("inf", Number(HUGE_VAL).toString());
    EXPECT_EQ("-inf", Number(-HUGE_VAL).toString());
    EXPECT_EQ("nan", Number(std::numeric_limits<double>::quiet_NaN()).toString());
}

TEST(NumberToString, agrees_with_a_stream_that_is_set_to_its_defaults) {
    for (const double value : {1e15, 1.5e-7, 123456.5, 0.000123456789, 9.9999949, 9.9999951, 2.5,
                               1e21, 5e-324, 65432.1, 100000.0, 1000000.0}) {
        std::ostringstream expected;
        expected << value;
        EXPECT_EQ(expected.str(), Number(value).toString());
    }
}

TEST(NumberToString, computed_by_hand_replaces_the_text) {
    const Number number("0.10");
    number.type();
    number.syncToString();
    EXPECT_EQ("0.1", number.toString());
    EXPECT_EQ(Number::ebDouble, number.type());
}

TEST(NumberToString, computed_by_hand_of_an_unconverted_text_leaves_nothing) {
    const Number number("0.10");
    number.syncToString();
    EXPECT_EQ("", number.toString());
}

TEST(NumberToWString, is_the_same_text) {
    EXPECT_EQ(L"-5", Number(-5).toWString());
    EXPECT_EQ(L"1.23457e+06", Number(1234567.0).toWString());
    EXPECT_EQ(L"1.50E+7", Number("1.50E+7").toWString());
}

TEST(NumberWriteAt, inserts_the_text_and_returns_the_stream) {
    std::ostringstream text;
    text << "<";
    EXPECT_EQ(&text, &Number("1.50").writeAt(text));
    text << ">";
    EXPECT_EQ("<1.50>", text.str());
}

TEST(NumberWriteAt, inserts_the_wide_text_and_returns_the_stream) {
    std::wostringstream text;
    text << L"<";
    EXPECT_EQ(&text, &Number(-5).writeAt(text));
    text << L">";
    EXPECT_EQ(L"<-5>", text.str());
}

TEST(NumberWriteAt, does_not_heed_the_number_formats_of_the_stream) {
    std::ostringstream text;
    text << std::hex << std::showpos << std::scientific << std::setprecision(2);
    Number(255).writeAt(text) << " ";
    Number(0.1).writeAt(text);
    EXPECT_EQ("255 0.1", text.str());
}

// --- the program's locale
// ---------------------------------------------------------------------------

TEST(NumberText, of_binary_values_does_not_depend_on_the_global_locale) {
    const orvid_test::GroupingLocale locale;
    EXPECT_EQ("1234567", Number(1234567).toString());
    EXPECT_EQ("1234567", Number(1234567U).toString());
    EXPECT_EQ("0.5", Number(0.5).toString());
    EXPECT_EQ("123456", Number(123456.0).toString());
    EXPECT_EQ(L"123456", Number(123456.0).toWString());
    EXPECT_EQ("1234567.5", Number(ko::DecNumber("1234567.5")).toString());
}

TEST(NumberText, is_written_the_same_on_a_stream_of_another_locale) {
    const orvid_test::GroupingLocale locale;
    std::ostringstream text;
    Number(1234567.5).writeAt(text) << " ";
    Number(1234567).writeAt(text);
    EXPECT_EQ("1.23457e+06 1234567", text.str());
}

TEST(NumberText, is_read_the_same_in_another_global_locale) {
    const orvid_test::GroupingLocale locale;
    EXPECT_EQ(1234567U, unsignedOf("1234567"));
    EXPECT_EQ(-1234567, signedOf("-1234567"));
    EXPECT_EQ(1234.5, realOf("1234.5"));
}

TEST(NumberText, is_read_the_same_where_the_c_library_has_a_decimal_comma) {
    const std::string before = std::setlocale(LC_NUMERIC, nullptr);
    const char* found = nullptr;
    for (const char* const name : {"de_DE.UTF-8", "fr_FR.UTF-8", "de_DE", "fr_FR"}) {
        found = found == nullptr ? std::setlocale(LC_NUMERIC, name) : found;
    }
    if (found == nullptr) {
        GTEST_SKIP() << "no locale with a decimal comma is installed";
    }
    EXPECT_EQ(1.5, realOf("1.5"));
    EXPECT_EQ(1.5, realOf("1.5x"));
    EXPECT_EQ(1.5, realOf(" 1.5"));
    EXPECT_EQ(0.0, realOf("1.5e-400"));
    EXPECT_EQ("0.5", Number(0.5).toString());
    expectRealRefused("1.5e400");
    std::setlocale(LC_NUMERIC, before.c_str());
}

TEST(RefusedNumberText, of_a_new_number_counts_as_zero_once_it_was_reported) {
    const std::string refused = "10000000000000000000";
    const Number numbers[] = {Number(refused), Number(refused.c_str()),
                              Number((refused + "5").c_str(), 20)};
    for (const Number& number : numbers) {
        EXPECT_THROW(number.toULongLong(), TextError);
        EXPECT_EQ(0U, number.toULongLong());
        EXPECT_EQ(refused, number.toString());
    }
}

}  // namespace
