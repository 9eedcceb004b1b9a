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
#include <utility>
#include <vector>

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
    EXPECT_EQ(number.type(), Number::ebULongLong) << text;
    return NumberProbe::heldUnsigned(number);
}

long long signedOf(const std::string& text) {
    const Number number(text);
    EXPECT_EQ(number.type(), Number::ebLongLong) << text;
    return NumberProbe::heldSigned(number);
}

double realOf(const std::string& text) {
    const Number number(text);
    EXPECT_EQ(number.type(), Number::ebDouble) << text;
    return NumberProbe::heldReal(number);
}

/// Text that is refused, and with which limits.
void expectRefused(const std::string& text, const std::string& min, const std::string& max) {
    const Number number(text);
    const auto error = thrownBy<TextError>([&] { number.type(); });
    EXPECT_EQ(error.value(), text);
    EXPECT_EQ(error.min(), min);
    EXPECT_EQ(error.max(), max);
    EXPECT_EQ(std::string(error.what()),
              "Value out of range! Value: " + text + " Min: " + min + " Max: " + max);
    EXPECT_EQ(error.elementPath(), nullptr);
}

void expectIntegerRefused(const std::string& text) {
    expectRefused(text, "-9223372036854775808", "9223372036854775807");
}

void expectRealRefused(const std::string& text) {
    expectRefused(text, "2.22507e-308", "1.79769e+308");
}

// Which kind a text has.

TEST(NumberText, of_digits_is_unsigned) {
    EXPECT_EQ(unsignedOf("12"), 12U);
    EXPECT_EQ(unsignedOf("0"), 0U);
    EXPECT_EQ(unsignedOf("007"), 7U);
}

TEST(NumberText, with_a_leading_minus_is_signed) {
    EXPECT_EQ(signedOf("-12"), -12);
    EXPECT_EQ(signedOf("-0"), 0);
    EXPECT_EQ(signedOf("-007"), -7);
}

TEST(NumberText, with_a_point_or_an_exponent_is_a_double) {
    EXPECT_EQ(realOf("1.0"), 1.0);
    EXPECT_EQ(realOf("1e3"), 1000.0);
    EXPECT_EQ(realOf("1E3"), 1000.0);
    EXPECT_EQ(realOf("-0.5"), -0.5);
    EXPECT_EQ(realOf("0.0"), 0.0);
    EXPECT_EQ(realOf("0e9"), 0.0);
    EXPECT_TRUE(std::signbit(realOf("-0.0")));
}

TEST(NumberText, counts_a_minus_only_in_front) {
    EXPECT_EQ(unsignedOf("1-2"), 1U);
    EXPECT_EQ(unsignedOf("+5"), 5U);
}

TEST(NumberText, keeps_its_digits_when_it_is_converted) {
    for (const char* const text : {"007", "-0", "1.500", "1E+03", "100000000000000000.0"}) {
        const Number number(text);
        number.type();
        EXPECT_EQ(number.toString(), text);
    }
}

// Which texts are refused.

TEST(NumberText, of_twenty_unsigned_digits_is_refused_unless_it_is_the_largest_value) {
    EXPECT_EQ(unsignedOf("18446744073709551615"), std::numeric_limits<unsigned long long>::max());
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
    EXPECT_EQ(unsignedOf("9999999999999999999"), 9999999999999999999ULL);
    EXPECT_EQ(unsignedOf("9223372036854775808"), 9223372036854775808ULL);
    EXPECT_EQ(unsignedOf("0000000000000000001"), 1U);
}

TEST(NumberText, of_eighteen_characters_with_a_minus_is_not_checked) {
    EXPECT_EQ(signedOf("-10000000000000000"), -10000000000000000LL);
    EXPECT_EQ(signedOf("-99999999999999999"), -99999999999999999LL);
}

TEST(NumberText, of_nineteen_characters_with_a_minus_is_compared_with_the_lowest_byte_by_byte) {
    expectIntegerRefused("-100000000000000000");
    expectIntegerRefused("-1000000000000000000");
    expectIntegerRefused("-922337203685477580");
    expectIntegerRefused("-9223372036854775807");
    expectIntegerRefused("-000000000000000001");
    EXPECT_EQ(signedOf("-9223372036854775808"), k_lowest);
    EXPECT_EQ(signedOf("-999999999999999999"), -999999999999999999LL);
    EXPECT_EQ(signedOf("-922337203685477581"), -922337203685477581LL);
}

TEST(NumberText, below_the_lowest_value_becomes_the_lowest_value) {
    EXPECT_EQ(signedOf("-9223372036854775809"), k_lowest);
    EXPECT_EQ(signedOf("-99999999999999999999"), k_lowest);
    EXPECT_EQ(signedOf("-92233720368547758080"), k_lowest);
}

TEST(NumberText, beyond_the_largest_double_is_refused) {
    expectRealRefused("1e400");
    expectRealRefused("-1e400");
    expectRealRefused("1e309");
    expectRealRefused("-1.5E+309");
    expectRealRefused("1.7976931348623159e308");
}

TEST(NumberText, up_to_the_largest_double_is_accepted) {
    EXPECT_EQ(realOf("1.7976931348623157e308"), DBL_MAX);
    EXPECT_EQ(realOf("-1.7976931348623157e308"), -DBL_MAX);
}

TEST(NumberText, too_small_for_a_double_becomes_zero) {
    EXPECT_EQ(realOf("1e-400"), 0.0);
    EXPECT_EQ(realOf("-1e-400"), 0.0);
    EXPECT_TRUE(std::signbit(realOf("-1e-400")));
}

TEST(NumberText, of_a_denormal_double_is_accepted) {
    EXPECT_EQ(realOf("4.9e-324"), std::numeric_limits<double>::denorm_min());
    EXPECT_EQ(realOf("1e-310"), 1e-310);
}

TEST(NumberText, with_a_point_is_a_double_however_long_it_is) {
    EXPECT_EQ(realOf("100000000000000000000.0"), 1e20);
    EXPECT_EQ(realOf("-100000000000000000000.0"), -1e20);
    EXPECT_EQ(realOf("1." + std::string(1000, '0')), 1.0);
}

TEST(NumberText, is_read_to_the_nearest_double) {
    EXPECT_EQ(realOf("0.1"), 0.1);
    EXPECT_EQ(realOf("2.2250738585072011e-308"), 2.2250738585072011e-308);
    EXPECT_EQ(realOf("9007199254740993.0"), 9007199254740993.0);
    EXPECT_EQ(realOf("9007199254740993.00000000000000000000000000001"), 9007199254740994.0);
}

// What happens after a refusal.

TEST(RefusedNumberText, is_reported_once_and_leaves_the_kind_and_the_bits_from_before) {
    Number number(5U);
    number.set("99999999999999999999");
    EXPECT_THROW(number.type(), TextError);
    EXPECT_EQ(NumberProbe::heldKind(number), Number::ebULongLong);
    EXPECT_EQ(number.type(), Number::ebULongLong);
    EXPECT_EQ(number.toUInt(), 5U);
    EXPECT_EQ(number.toString(), "99999999999999999999");
}

TEST(RefusedNumberText, of_a_signed_number_leaves_the_bits_from_before) {
    Number number(-5);
    number.set("-1000000000000000000");
    EXPECT_THROW(number.toInt(), TextError);
    EXPECT_EQ(number.type(), Number::ebLongLong);
    EXPECT_EQ(number.toInt(), -5);
}

TEST(RefusedNumberText, of_a_double_leaves_the_bits_from_before) {
    Number number(2.5);
    number.set("1e400");
    EXPECT_THROW(number.toDouble(), TextError);
    EXPECT_EQ(number.type(), Number::ebDouble);
    EXPECT_EQ(number.toDouble(), 2.5);
    EXPECT_EQ(number.toString(), "1e400");
}

TEST(RefusedNumberText, is_checked_again_after_it_is_set_again) {
    Number number("1e400");
    EXPECT_THROW(number.type(), TextError);
    number.set("1e400");
    EXPECT_THROW(number.type(), TextError);
}

TEST(RefusedNumberText, is_written_without_a_check) {
    const Number number("99999999999999999999");
    EXPECT_EQ(number.toString(), "99999999999999999999");
    EXPECT_EQ(number.toWString(), L"99999999999999999999");
}

TEST(NumberText, can_be_converted_again_by_hand) {
    const Number number("12");
    number.syncToBinary();
    number.syncToBinary();
    EXPECT_EQ(NumberProbe::heldUnsigned(number), 12U);
    EXPECT_EQ(number.toString(), "12");
}

// Malformed text.

TEST(MalformedNumberText, that_begins_with_no_digits_is_zero) {
    EXPECT_EQ(unsignedOf("abc"), 0U);
    EXPECT_EQ(signedOf("-"), 0);
    EXPECT_EQ(signedOf("--5"), 0);
    EXPECT_EQ(realOf("hello"), 0.0);
    EXPECT_EQ(realOf("."), 0.0);
    EXPECT_EQ(realOf("e5"), 0.0);
}

TEST(MalformedNumberText, overwrites_the_bits_from_before_with_zero) {
    Number number(5);
    number.set("abc");
    EXPECT_EQ(number.toUInt(), 0U);
}

TEST(MalformedNumberText, is_read_up_to_where_it_ends_to_be_a_number) {
    EXPECT_EQ(unsignedOf("12x34"), 12U);
    EXPECT_EQ(unsignedOf("12 34"), 12U);
    EXPECT_EQ(signedOf("-12x"), -12);
    EXPECT_EQ(realOf("1.5x"), 1.5);
    EXPECT_EQ(realOf("1.25.75"), 1.25);
    EXPECT_EQ(realOf("1e"), 1.0);
    EXPECT_EQ(realOf("1e+"), 1.0);
    EXPECT_EQ(realOf("5."), 5.0);
    EXPECT_EQ(realOf(".5"), 0.5);
}

TEST(MalformedNumberText, may_begin_with_whitespace) {
    EXPECT_EQ(unsignedOf(" 12"), 12U);
    EXPECT_EQ(realOf("\t 1.5"), 1.5);
}

TEST(MalformedNumberText, of_whitespace_then_minus_is_read_as_unsigned) {
    EXPECT_EQ(unsignedOf(" -1"), std::numeric_limits<unsigned long long>::max());
}

TEST(MalformedNumberText, ends_at_a_null_byte) {
    EXPECT_EQ(unsignedOf(std::string("1\0002", 3)), 1U);
    EXPECT_EQ(realOf(std::string("1.5\0002", 5)), 1.5);
}

// From binary value to text.

TEST(NumberToString, of_integers_has_all_digits) {
    EXPECT_EQ(Number(-5).toString(), "-5");
    EXPECT_EQ(Number(5U).toString(), "5");
    EXPECT_EQ(Number(0).toString(), "0");
    EXPECT_EQ(Number(k_lowest).toString(), "-9223372036854775808");
    EXPECT_EQ(Number(std::numeric_limits<long long>::max()).toString(), "9223372036854775807");
    EXPECT_EQ(Number(std::numeric_limits<unsigned long long>::max()).toString(),
              "18446744073709551615");
}

TEST(NumberToString, of_doubles_has_six_significant_digits) {
    EXPECT_EQ(Number(0.1).toString(), "0.1");
    EXPECT_EQ(Number(100.0).toString(), "100");
    EXPECT_EQ(Number(1234567.0).toString(), "1.23457e+06");
    EXPECT_EQ(Number(123456.7).toString(), "123457");
    EXPECT_EQ(Number(0.00001).toString(), "1e-05");
    EXPECT_EQ(Number(0.0001).toString(), "0.0001");
    EXPECT_EQ(Number(3.14159265).toString(), "3.14159");
    EXPECT_EQ(Number(-0.5).toString(), "-0.5");
    EXPECT_EQ(Number(0.0).toString(), "0");
    EXPECT_EQ(Number(-0.0).toString(), "-0");
    EXPECT_EQ(Number(DBL_MAX).toString(), "1.79769e+308");
    EXPECT_EQ(Number(1e100).toString(), "1e+100");
    EXPECT_EQ(Number(999999.9).toString(), "1e+06");
}

TEST(NumberToString, of_floats_is_that_of_the_double) {
    EXPECT_EQ(Number(0.1F).toString(), "0.1");
    EXPECT_EQ(Number(16777216.0F).toString(), "1.67772e+07");
}

TEST(NumberToString, of_what_is_no_number_is_what_a_stream_prints) {
    EXPECT_EQ(Number(HUGE_VAL).toString(), "inf");
    EXPECT_EQ(Number(-HUGE_VAL).toString(), "-inf");
    EXPECT_EQ(Number(std::numeric_limits<double>::quiet_NaN()).toString(), "nan");
}

TEST(NumberToString, agrees_with_a_stream_that_is_set_to_its_defaults) {
    for (const double value : {1e15, 1.5e-7, 123456.5, 0.000123456789, 9.9999949, 9.9999951, 2.5,
                               1e21, 5e-324, 65432.1, 100000.0, 1000000.0}) {
        std::ostringstream expected;
        expected << value;
        EXPECT_EQ(Number(value).toString(), expected.str());
    }
}

TEST(NumberToString, computed_by_hand_replaces_the_text) {
    const Number number("0.10");
    number.type();
    number.syncToString();
    EXPECT_EQ(number.toString(), "0.1");
    EXPECT_EQ(number.type(), Number::ebDouble);
}

TEST(NumberToString, computed_by_hand_replaces_a_long_text) {
    const std::vector<std::pair<std::string, std::string>> texts = {
        {"18446744073709551615", "18446744073709551615"},
        {"-9223372036854775808", "-9223372036854775808"},
        {"0000009999999999999", "9999999999999"},
        {"1.234567890123456", "1.23457"},
        {"-237320580168e-57", "-2.37321e-46"},
        {"1234567.8901234567890123456789", "1.23457e+06"}};
    for (const auto& [text, expected] : texts) {
        const Number number(text);
        const Number shown(text);
        number.type();
        shown.toString();
        shown.type();
        number.syncToString();
        shown.syncToString();
        EXPECT_EQ(number.toString(), expected);
        EXPECT_EQ(shown.toString(), expected);
    }
}

TEST(NumberToString, computed_by_hand_is_copied) {
    for (const std::string text : {"0.10", "-237320580168e-57", "1234567.8901234567890123456789"}) {
        const Number number(text);
        number.type();
        number.syncToString();
        const Number copy(number);
        Number assigned("7");
        Number shown("a text of some other number");
        shown.toString();
        assigned = number;
        shown = number;
        for (const Number* const each : {&copy, &std::as_const(assigned), &std::as_const(shown)}) {
            EXPECT_EQ(each->toString(), number.toString());
            EXPECT_EQ(each->type(), Number::ebDouble);
            EXPECT_EQ(*each, Number(text));
        }
    }
}

TEST(NumberToString, computed_by_hand_of_an_unconverted_text_leaves_nothing) {
    const Number number("0.10");
    number.syncToString();
    EXPECT_EQ(number.toString(), "");
}

TEST(NumberToWString, is_the_same_text) {
    EXPECT_EQ(Number(-5).toWString(), L"-5");
    EXPECT_EQ(Number(1234567.0).toWString(), L"1.23457e+06");
    EXPECT_EQ(Number("1.50E+7").toWString(), L"1.50E+7");
}

TEST(NumberWriteAt, inserts_the_text_and_returns_the_stream) {
    std::ostringstream text;
    text << "<";
    EXPECT_EQ(&Number("1.50").writeAt(text), &text);
    text << ">";
    EXPECT_EQ(text.str(), "<1.50>");
}

TEST(NumberWriteAt, inserts_the_wide_text_and_returns_the_stream) {
    std::wostringstream text;
    text << L"<";
    EXPECT_EQ(&Number(-5).writeAt(text), &text);
    text << L">";
    EXPECT_EQ(text.str(), L"<-5>");
}

TEST(NumberWriteAt, does_not_heed_the_number_formats_of_the_stream) {
    std::ostringstream text;
    text << std::hex << std::showpos << std::scientific << std::setprecision(2);
    Number(255).writeAt(text) << " ";
    Number(0.1).writeAt(text);
    EXPECT_EQ(text.str(), "255 0.1");
}

// The program's locale.

TEST(NumberText, of_binary_values_does_not_depend_on_the_global_locale) {
    const orvid_test::GroupingLocale locale;
    EXPECT_EQ(Number(1234567).toString(), "1234567");
    EXPECT_EQ(Number(1234567U).toString(), "1234567");
    EXPECT_EQ(Number(0.5).toString(), "0.5");
    EXPECT_EQ(Number(123456.0).toString(), "123456");
    EXPECT_EQ(Number(123456.0).toWString(), L"123456");
    EXPECT_EQ(Number(ko::DecNumber("1234567.5")).toString(), "1234567.5");
}

TEST(NumberText, is_written_the_same_on_a_stream_of_another_locale) {
    const orvid_test::GroupingLocale locale;
    std::ostringstream text;
    Number(1234567.5).writeAt(text) << " ";
    Number(1234567).writeAt(text);
    EXPECT_EQ(text.str(), "1.23457e+06 1234567");
}

TEST(NumberText, is_read_the_same_in_another_global_locale) {
    const orvid_test::GroupingLocale locale;
    EXPECT_EQ(unsignedOf("1234567"), 1234567U);
    EXPECT_EQ(signedOf("-1234567"), -1234567);
    EXPECT_EQ(realOf("1234.5"), 1234.5);
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
    EXPECT_EQ(realOf("1.5"), 1.5);
    EXPECT_EQ(realOf("1.5x"), 1.5);
    EXPECT_EQ(realOf(" 1.5"), 1.5);
    EXPECT_EQ(realOf("1.5e-400"), 0.0);
    EXPECT_EQ(Number(0.5).toString(), "0.5");
    expectRealRefused("1.5e400");
    std::setlocale(LC_NUMERIC, before.c_str());
}

TEST(RefusedNumberText, of_a_new_number_counts_as_zero_once_it_was_reported) {
    const std::string refused = "10000000000000000000";
    const Number numbers[] = {Number(refused), Number(refused.c_str()),
                              Number((refused + "5").c_str(), 20)};
    for (const Number& number : numbers) {
        EXPECT_THROW(number.toULongLong(), TextError);
        EXPECT_EQ(number.toULongLong(), 0U);
        EXPECT_EQ(number.toString(), refused);
    }
}

}  // namespace
