// SPDX-License-Identifier: MIT
//
// Converting a number exactly or not at all. getValue(), which has other rules, is tested in
// NumberAccess_test.cpp.

#include <ko/Orvid/Number.h>

#include <gtest/gtest.h>
#include <ko/Exception.h>

#include <cmath>
#include <cstddef>
#include <functional>
#include <limits>
#include <optional>
#include <string>
#include <utility>

namespace {

using ko::Orvid::Number;

/// The number as T, or nothing; `out` must stay as it was where it is no T.
template<class T>
std::optional<T> as(const Number& number) {
    T out = 42;
    if (number.convertTo(out)) {
        return out;
    }
    EXPECT_EQ(out, T(42)) << number.toString();
    return std::nullopt;
}

/// Of `length` digits, all different ones.
std::string digitsOf(std::size_t length) {
    return std::string("907856341279865430").substr(0, length);
}

TEST(NumberConvert, integers_of_all_lengths_are_read_digit_by_digit) {
    for (std::size_t length = 1; length <= digitsOf(99).size(); ++length) {
        const std::string digits = digitsOf(length);
        EXPECT_EQ(as<long long>(Number(digits)), std::stoll(digits)) << digits;
        EXPECT_EQ(as<long long>(Number("-" + digits)), -std::stoll(digits)) << digits;
        EXPECT_EQ(std::hash<Number>()(Number(digits)), std::hash<Number>()(Number(digits + ".0")));
    }
}

TEST(NumberConvert, no_other_character_counts_as_a_digit) {
    for (std::size_t length = 1; length <= digitsOf(99).size(); ++length) {
        for (std::size_t at = 0; at < length; ++at) {
            for (const char other : {'/', ':', ' ', '\0', '\x7F', '\x80', '\xB5', '\xFF'}) {
                std::string text = digitsOf(length);
                text[at] = other;
                long long value = 0;
                EXPECT_THROW(Number(text).convertTo(value), ko::RuntimeError) << text;
            }
        }
    }
}

TEST(NumberConvert, integers_reach_from_the_smallest_to_the_largest_value) {
    EXPECT_EQ(as<short>(Number("-32768")), std::numeric_limits<short>::min());
    EXPECT_EQ(as<short>(Number("32767")), std::numeric_limits<short>::max());
    EXPECT_EQ(as<short>(Number("-32769")), std::nullopt);
    EXPECT_EQ(as<short>(Number("32768")), std::nullopt);
    EXPECT_EQ(as<unsigned short>(Number("65535")), 65535);
    EXPECT_EQ(as<unsigned short>(Number("65536")), std::nullopt);
    EXPECT_EQ(as<unsigned short>(Number("-1")), std::nullopt);
    EXPECT_EQ(as<unsigned int>(Number("0")), 0U);
    EXPECT_EQ(as<unsigned int>(Number("-0")), 0U);
    EXPECT_EQ(as<long long>(Number("-9223372036854775808")), std::numeric_limits<long long>::min());
    EXPECT_EQ(as<long long>(Number("-9223372036854775809")), std::nullopt);
    EXPECT_EQ(as<long long>(Number("9223372036854775807")), std::numeric_limits<long long>::max());
    EXPECT_EQ(as<long long>(Number("9223372036854775808")), std::nullopt);
    EXPECT_EQ(as<unsigned long long>(Number("18446744073709551615")),
              std::numeric_limits<unsigned long long>::max());
    EXPECT_EQ(as<unsigned long long>(Number("18446744073709551616")), std::nullopt);
}

/// From a signed number, which the text of a positive one never is.
template<class T>
void expectLimitsOfSigned() {
    // NOLINTNEXTLINE(bugprone-signed-char-misuse,cert-str34-c): the number, not the character
    const auto lowest = static_cast<long long>(std::numeric_limits<T>::min());
    const auto highest = static_cast<long long>(std::numeric_limits<T>::max());
    EXPECT_EQ(as<T>(Number(lowest)), std::numeric_limits<T>::min());
    EXPECT_EQ(as<T>(Number(highest)), std::numeric_limits<T>::max());
    EXPECT_EQ(as<T>(Number(lowest - 1)), std::nullopt);
    EXPECT_EQ(as<T>(Number(highest + 1)), std::nullopt);
}

TEST(NumberConvert, signed_numbers_reach_from_the_smallest_to_the_largest_value) {
    expectLimitsOfSigned<char>();
    expectLimitsOfSigned<unsigned char>();
    expectLimitsOfSigned<short>();
    expectLimitsOfSigned<unsigned short>();
    expectLimitsOfSigned<int>();
    expectLimitsOfSigned<unsigned int>();
    EXPECT_EQ(as<unsigned long long>(Number(-1)), std::nullopt);
}

TEST(NumberConvert, whole_numbers_may_be_spelled_in_any_way) {
    EXPECT_EQ(as<int>(Number("1.0")), 1);
    EXPECT_EQ(as<int>(Number("1e2")), 100);
    EXPECT_EQ(as<int>(Number("-12.5e1")), -125);
    EXPECT_EQ(as<int>(Number("2147483648.0")), std::nullopt);
    EXPECT_EQ(as<int>(Number("-2147483648.0")), std::numeric_limits<int>::min());
    EXPECT_EQ(as<long long>(Number("9007199254740993.0")), 9007199254740993LL);
    EXPECT_EQ(as<unsigned long long>(Number("1844674407370955161.5e1")),
              std::numeric_limits<unsigned long long>::max());
}

TEST(NumberConvert, a_fraction_is_no_integer) {
    EXPECT_EQ(as<int>(Number("1.5")), std::nullopt);
    EXPECT_EQ(as<int>(Number("-0.1")), std::nullopt);
    EXPECT_EQ(as<int>(Number("1e-1")), std::nullopt);
    EXPECT_EQ(as<int>(Number(0.5)), std::nullopt);
    EXPECT_EQ(as<long long>(Number("9007199254740993.5")), std::nullopt);
}

TEST(NumberConvert, floating_types_take_zero_and_negative_numbers) {
    EXPECT_EQ(as<double>(Number("0")), 0.0);
    EXPECT_EQ(as<double>(Number("-1.5")), -1.5);
    EXPECT_EQ(as<double>(Number("0.1")), 0.1);
    EXPECT_EQ(as<float>(Number("-0.1")), -0.1F);
    EXPECT_EQ(as<double>(Number("65.613616999999977")), 65.613616999999977);
    EXPECT_EQ(as<double>(Number("18446744073709551616")), 18446744073709551616.0);
    EXPECT_EQ(as<double>(Number(-3LL)), -3.0);
    EXPECT_EQ(as<double>(Number(3ULL)), 3.0);
}

template<class T>
bool isNegativeZero(const Number& number) {
    const std::optional<T> value = as<T>(number);
    return value && *value == 0 && std::signbit(*value);
}

TEST(NumberConvert, floating_types_keep_the_sign_of_zero) {
    for (const char* const text : {"-0", "-0.0", "-0e5", "-0.000000000000000000"}) {
        const Number number(text);
        EXPECT_TRUE(isNegativeZero<double>(number)) << text;
        EXPECT_TRUE(isNegativeZero<float>(number)) << text;
        EXPECT_TRUE(isNegativeZero<long double>(number)) << text;
        EXPECT_TRUE(isNegativeZero<double>(number)) << text << ", asked again";
    }
    EXPECT_TRUE(isNegativeZero<double>(Number("-1e-999")));
    EXPECT_TRUE(isNegativeZero<double>(Number(-0.0)));
    EXPECT_TRUE(isNegativeZero<double>(Number(Number::exact(-0.0).toString())));
    EXPECT_TRUE(isNegativeZero<float>(Number(Number::exact(-0.0F).toString())));
    for (const Number& number : {Number("0"), Number("0.0"), Number(), Number(0), Number(0U)}) {
        EXPECT_EQ(as<double>(number), 0.0);
        EXPECT_FALSE(isNegativeZero<double>(number)) << number.toString();
    }
}

TEST(NumberConvert, floating_types_end_at_their_largest_value) {
    EXPECT_EQ(as<double>(Number("1.7976931348623157e308")), std::numeric_limits<double>::max());
    EXPECT_EQ(as<double>(Number("-1.7976931348623157e308")), std::numeric_limits<double>::lowest());
    EXPECT_EQ(as<double>(Number("1e309")), std::nullopt);
    EXPECT_EQ(as<double>(Number("-1e999999999")), std::nullopt);
    EXPECT_EQ(as<float>(Number("1e39")), std::nullopt);
    EXPECT_EQ(as<float>(Number("3.5e38")), std::nullopt);
    EXPECT_EQ(as<double>(Number("1e-999999999")), 0.0);
    EXPECT_EQ(as<double>(Number(std::string(400, '1'))), std::nullopt);
}

TEST(NumberConvert, infinities_are_nothing_that_a_type_holds) {
    EXPECT_EQ(as<double>(Number(std::numeric_limits<double>::infinity())), std::nullopt);
    EXPECT_EQ(as<int>(Number(std::nan(""))), std::nullopt);
    EXPECT_EQ(as<int>(Number(1e300)), std::nullopt);
}

template<class T>
void expectRefused(const char* text) {
    const Number number(text);
    T out = 42;
    for (int time = 0; time < 2; ++time) {
        EXPECT_THROW(static_cast<void>(number.convertTo(out)), ko::RuntimeError)
            << "\"" << text << "\", time " << time;
        EXPECT_EQ(out, T(42));
    }
}

TEST(NumberConvert, text_that_is_no_number_is_refused_each_time) {
    for (const char* const text : {"", "abc", "12abc", "1.5abc", "-", "1e", " 1", "0x10", "inf"}) {
        expectRefused<char>(text);
        expectRefused<int>(text);
        expectRefused<unsigned long long>(text);
        expectRefused<float>(text);
        expectRefused<double>(text);
        expectRefused<long double>(text);
    }
}

TEST(NumberConvert, binary_values_are_checked_too) {
    EXPECT_EQ(as<int>(Number(1LL << 40)), std::nullopt);
    EXPECT_EQ(as<unsigned char>(Number(255)), 255);
    EXPECT_EQ(as<unsigned char>(Number(256)), std::nullopt);
    EXPECT_EQ(as<int>(Number(-7.0)), -7);
    EXPECT_EQ(as<unsigned long long>(Number(0x1p64)), std::nullopt);
    EXPECT_EQ(as<unsigned long long>(Number(0x1p63)), 0x8000000000000000ULL);
    EXPECT_EQ(as<long long>(Number(0x1p63)), std::nullopt);
    EXPECT_EQ(as<long long>(Number(-0x1p63)), std::numeric_limits<long long>::min());
}

TEST(NumberConvert, is_not_misled_by_a_text_that_was_refused_before) {
    const Number number("99999999999999999999");
    EXPECT_ANY_THROW(number.type());
    EXPECT_EQ(as<int>(number), std::nullopt);
    EXPECT_EQ(as<double>(number), 1e20);
}

TEST(NumberConvert, does_not_make_a_text_refused_later) {
    const Number number("1e400");
    EXPECT_EQ(as<double>(number), std::nullopt);
    EXPECT_ANY_THROW(number.type());
}

TEST(NumberMove, takes_text_and_value_and_leaves_zero) {
    const std::string longText = "123456789012345678901234567890.5";
    for (const std::string& text : {std::string("1.50"), longText}) {
        Number source{text};
        const Number moved(std::move(source));
        EXPECT_EQ(moved.toString(), text);
        // NOLINTNEXTLINE(bugprone-use-after-move): what is left is the test
        EXPECT_EQ(source.toString(), "0");
        Number target = 5;
        source = Number(text);
        target = std::move(source);
        EXPECT_EQ(target.toString(), text);
        EXPECT_EQ(source.toInt(), 0);  // NOLINT(bugprone-use-after-move): what is left is the test
        Number& same = target;
        target = std::move(same);
        EXPECT_EQ(target.toString(), text);
    }
}

TEST(NumberTextView, is_the_text_without_a_copy_on_the_heap) {
    EXPECT_EQ(Number("1.500").textView(), "1.500");
    EXPECT_EQ(Number(-7).textView(), "-7");
    const Number number("2.50");
    EXPECT_EQ(number.toString(), number.textView());
}

}  // namespace
