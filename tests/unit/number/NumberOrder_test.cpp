// SPDX-License-Identifier: MIT
//
// The exact value of numbers: `==` to `>=`, order(), std::hash and decimal(), for numbers in all
// ways of writing and for what is no number. compare(), which has other rules, is tested in
// NumberCompare_test.cpp.

#include <ko/Orvid/Number.h>

#include <gtest/gtest.h>
#include <ko/DecNumber.h>
#include <ko/Exception.h>

#include <cmath>
#include <functional>
#include <limits>
#include <set>
#include <string>
#include <unordered_set>
#include <vector>

#include "support/Order.h"

namespace {

using ko::Orvid::Number;
using orvid_test::expectOrder;
using orvid_test::orderOfPositions;

constexpr double k_infinity = std::numeric_limits<double>::infinity();
constexpr double k_nan = std::numeric_limits<double>::quiet_NaN();

const std::string k_zeros(100, '0');

/// From the smallest to the largest; the numbers of a line have one value.
const std::vector<std::vector<Number>> k_values = {
    {Number(-k_infinity), "-inf"},
    {"-1e9999999999999999999999"},
    {"-1e9999999999999999999998"},
    {"-1e9223372036854775808"},
    {"-10e9223372036854775806", "-1e9223372036854775807"},
    {"-1e999999999", "-10e999999998", "-1E+0999999999"},
    {"-900719925474099312346"},
    {"-900719925474099312345", "-9007199254740993123450e-1"},
    {Number(std::numeric_limits<long long>::min()), "-9223372036854775808"},
    {"-1.1", Number(-1.1), Number::exact(-1.1F)},
    {Number(-1), "-1", "-1.0", "-10e-1", "-0.1e1", "-001"},
    {"-1e-9999999999999999999999"},
    {"0", "-0", "0.0", "0e5", "-0.0e-99999999999999999999", "+0", Number(), Number(0), Number(0U),
     Number(0.0), Number(-0.0), Number("." + k_zeros), Number(k_zeros)},
    {"1e-9999999999999999999999"},
    {"1e-9223372036854775809", "10e-9223372036854775810", "0.1e-9223372036854775808"},
    {"1e-9223372036854775808", "0.001e-9223372036854775805"},
    {"1e-1000", Number("0." + std::string(999, '0') + "1"), "10e-1001"},
    {Number(std::numeric_limits<double>::denorm_min()), "5e-324"},
    {"0.1", ".1", "1e-1", Number(0.1), Number::exact(0.1), Number::exact(0.1F), "0.10000000000"},
    {"0.1000000000000000055511151231257827021181583404541015625"},
    {Number(0.1F), "0.10000000149011612"},
    {Number(1), Number(1U), "1", "1.", "1.0", "1e0", "10e-1", Number("1." + k_zeros), Number(1.0)},
    {"1.00000000000000000001"},
    {"9007199254740992", Number(9007199254740992.0)},
    {"9007199254740993", Number(9007199254740993LL), "9007199254740993.0"},
    {"10000000000000000000", Number(10000000000000000000ULL), "1e19"},
    {"18446744073709551615", Number(18446744073709551615ULL)},
    {"18446744073709551616", Number(0x1p64)},
    {"900719925474099312345"},
    {"900719925474099312346"},
    {"1e400", Number("1" + std::string(400, '0'))},
    {"1e999999999"},
    {"1.0000000000000000000000001e999999999"},
    {"1e9223372036854775807", "10e9223372036854775806"},
    {"1e9223372036854775808", "0.1e9223372036854775809"},
    {"1e9999999999999999999999", "0.1e10000000000000000000000"},
    {Number(k_infinity), "inf"},
    {Number(k_nan), Number(-k_nan), "nan"},
    {""},
    {"12abc"},
    {"abc"}};

TEST(NumberOrder, is_total_exact_and_the_same_each_time) {
    for (int time = 0; time < 2; ++time) {
        for (std::size_t i = 0; i < k_values.size(); ++i) {
            for (std::size_t j = 0; j < k_values.size(); ++j) {
                for (const Number& a : k_values[i]) {
                    for (const Number& b : k_values[j]) {
                        SCOPED_TRACE(a.toString() + " and " + b.toString());
                        expectOrder(a, b, orderOfPositions(i, j));
                    }
                }
            }
        }
    }
}

TEST(NumberOrder, does_not_depend_on_what_was_asked_before) {
    for (const auto& before : k_values) {
        for (const Number& number : before) {
            const Number untouched(number);
            (void)number.toString();
            EXPECT_EQ(number.order(untouched), 0) << number.toString();
            try {
                (void)number.type();
            } catch (const ko::Orvid::Exception&) {
                EXPECT_EQ(number.order(untouched), 0) << number.toString();
            }
            EXPECT_EQ(number.order(untouched), 0) << number.toString();
            number.syncToString();
            EXPECT_EQ(number.order(untouched), 0) << number.toString();
        }
    }
}

TEST(NumberOrder, hashes_tell_values_apart) {
    std::unordered_set<std::size_t> hashes;
    for (const auto& value : k_values) {
        hashes.insert(std::hash<Number>()(value.front()));
    }
    EXPECT_EQ(hashes.size(), k_values.size());
}

TEST(NumberOrder, leaves_one_of_several_zeros_in_a_set) {
    EXPECT_EQ((std::set<Number>{"0", "-0", "0.0", Number(0), Number(0.0)}.size()), 1U);
    EXPECT_EQ((std::unordered_set<Number>{"0", "-0", "0e5", Number(0U), Number()}.size()), 1U);
}

TEST(NumberOrder, takes_a_literal_on_either_side) {
    EXPECT_TRUE(Number("0") == 0);
    EXPECT_TRUE(0.0 == Number("-0"));
    EXPECT_TRUE(Number("0.5") < 1U);
    EXPECT_FALSE(Number("900719925474099312345") == 0U);
    EXPECT_FALSE(Number("900719925474099312345") == 0U);
}

TEST(NumberDecimal, is_the_exact_value) {
    EXPECT_EQ(Number("0.1").decimal().compare(ko::DecNumber("0.1")), 0);
    EXPECT_EQ(Number(0.1).decimal().compare(ko::DecNumber("0.1")), 0);
    EXPECT_EQ(Number(-7).decimal().compare(ko::DecNumber(-7LL)), 0);
    EXPECT_EQ(
        Number("900719925474099312345").decimal().compare(ko::DecNumber("900719925474099312345")),
        0);
    EXPECT_THROW((void)Number("12abc").decimal(), ko::RuntimeError);
    EXPECT_THROW((void)Number(k_nan).decimal(), ko::RuntimeError);
}

TEST(NumberHash, is_the_same_after_a_typed_read) {
    const std::hash<Number> hash;
    for (const auto& value : k_values) {
        for (const Number& number : value) {
            const Number read(number);
            try {
                (void)read.type();
            } catch (const ko::Orvid::Exception&) {
                EXPECT_FALSE(read.toString().empty());
            }
            EXPECT_EQ(hash(read), hash(number)) << number.toString();
        }
    }
}

TEST(NumberHash, is_that_of_the_value_however_long_and_however_spelled) {
    const std::hash<Number> hash;
    for (const char* const text :
         {"0", "7", "-7", "10", "-1200", "99999999999999999", "-99999999999999999",
          "100000000000000000", "999999999999999999", "-999999999999999999", "1234567890123456789",
          "-12345678901234567890123"}) {
        const std::string number = text;
        for (const std::string& other : {number + ".0", number + "e0", number + "0e-1"}) {
            EXPECT_EQ(hash(Number(number)), hash(Number(other))) << other;
        }
        EXPECT_NE(hash(Number(number)), hash(Number(number + "1"))) << number;
        EXPECT_NE(hash(Number(number)), hash(Number(number + ".5"))) << number;
    }
    EXPECT_EQ(hash(Number(-1200)), hash(Number("-12e2")));
    EXPECT_EQ(hash(Number(1200U)), hash(Number("12e2")));
    EXPECT_EQ(hash(Number(999999999999999999LL)), hash(Number("999999999999999999.0")));
    EXPECT_EQ(hash(Number(-1000000000000000001LL)), hash(Number("-1000000000000000001")));
    EXPECT_EQ(hash(Number(0.5)), hash(Number("5e-1")));
}

TEST(NumberIsWhole, goes_by_the_value) {
    for (const char* const text : {"0", "-0.0", "1", "1.0", "10e-1", "-1e999999999", "0e-5",
                                   "1e99999999999999999999", "120e-1"}) {
        EXPECT_TRUE(Number(text).isWhole()) << text;
    }
    for (const char* const text : {"0.5", "1e-1", "-1.00000000000000000000001", "12e-1", "1e-999",
                                   "1e-99999999999999999999", "abc", "", "inf"}) {
        EXPECT_FALSE(Number(text).isWhole()) << text;
    }
    EXPECT_TRUE(Number(4.0).isWhole());
    EXPECT_FALSE(Number(4.5).isWhole());
    EXPECT_FALSE(Number(k_infinity).isWhole());
}

}  // namespace
