// SPDX-License-Identifier: MIT
//
// The order of numbers: each pair of binary kinds, the library's own rules for zeros and for what
// is no number, and the kinds that cannot be compared.

#include <ko/Orvid/Number.h>

#include <gtest/gtest.h>
#include <ko/Exception.h>

#include <cfloat>
#include <cmath>
#include <limits>
#include <string>

#include "support/Document.h"
#include "support/NumberErrors.h"
#include "support/NumberProbe.h"

namespace {

using ko::Orvid::Number;
using ko::Orvid::NumberProbe;
using orvid_test::TextError;
using orvid_test::thrownBy;

constexpr long long k_minSigned = std::numeric_limits<long long>::min();
constexpr long long k_maxSigned = std::numeric_limits<long long>::max();
constexpr unsigned long long k_maxUnsigned = std::numeric_limits<unsigned long long>::max();
constexpr double k_nan = std::numeric_limits<double>::quiet_NaN();
constexpr double k_2to53 = 9007199254740992.0;
constexpr double k_2to63 = 9223372036854775808.0;
constexpr double k_2to64 = 18446744073709551616.0;

int signOf(int result) { return (result > 0 ? 1 : 0) - (result < 0 ? 1 : 0); }

/// The sign of a.compare(b), which must be the opposite of that of b.compare(a).
int order(const Number& a, const Number& b) {
    const int forward = signOf(a.compare(b));
    EXPECT_EQ(signOf(b.compare(a)), -forward) << a.toString() << " and " << b.toString();
    return forward;
}

// Same kind.

TEST(NumberCompare, signed_with_signed) {
    EXPECT_EQ(order(Number(-2), Number(1)), -1);
    EXPECT_EQ(order(Number(7), Number(7)), 0);
    EXPECT_EQ(order(Number(0), Number(0)), 0);
    EXPECT_EQ(order(Number(k_minSigned), Number(k_maxSigned)), -1);
    EXPECT_EQ(order(Number(k_maxSigned), Number(k_maxSigned - 1)), 1);
}

TEST(NumberCompare, unsigned_with_unsigned) {
    EXPECT_EQ(order(Number(1U), Number(2U)), -1);
    EXPECT_EQ(order(Number(0U), Number(0U)), 0);
    EXPECT_EQ(order(Number(k_maxUnsigned), Number(0U)), 1);
    EXPECT_EQ(order(Number(k_maxUnsigned), Number(k_maxUnsigned - 1)), 1);
}

TEST(NumberCompare, double_with_double) {
    EXPECT_EQ(order(Number(1.5), Number(1.75)), -1);
    EXPECT_EQ(order(Number(1.5), Number(1.5)), 0);
    EXPECT_EQ(order(Number(0.0), Number(-0.0)), 0);
    EXPECT_EQ(order(Number(HUGE_VAL), Number(DBL_MAX)), 1);
    EXPECT_EQ(order(Number(HUGE_VAL), Number(HUGE_VAL)), 0);
    EXPECT_EQ(order(Number(-HUGE_VAL), Number(-DBL_MAX)), -1);
}

// Signed with unsigned.

TEST(NumberCompare, signed_with_unsigned) {
    EXPECT_EQ(order(Number(-1), Number(0U)), -1);
    EXPECT_EQ(order(Number(-1), Number(k_maxUnsigned)), -1);
    EXPECT_EQ(order(Number(7), Number(7U)), 0);
    EXPECT_EQ(order(Number(8), Number(7U)), 1);
    EXPECT_EQ(order(Number(k_maxSigned), Number(k_maxUnsigned)), -1);
    EXPECT_EQ(order(Number(k_maxSigned), Number(static_cast<unsigned long long>(k_maxSigned))), 0);
}

TEST(NumberCompare, signed_zero_is_below_every_unsigned_value_and_below_unsigned_zero) {
    EXPECT_EQ(order(Number(0), Number(0U)), -1);
    EXPECT_EQ(order(Number(0), Number(1U)), -1);
    EXPECT_EQ(order(Number("-0"), Number("0")), -1);
    EXPECT_EQ(order(Number(), Number("0")), -1);
}

// Integers with doubles.

TEST(NumberCompare, signed_with_double) {
    EXPECT_EQ(order(Number(1), Number(1.5)), -1);
    EXPECT_EQ(order(Number(2), Number(1.5)), 1);
    EXPECT_EQ(order(Number(-3), Number(-3.0)), 0);
    EXPECT_EQ(order(Number(0), Number(0.0)), 0);
    EXPECT_EQ(order(Number(0), Number(-0.0)), 0);
    EXPECT_EQ(order(Number(k_minSigned), Number(-1e300)), 1);
    EXPECT_EQ(order(Number(k_minSigned), Number(-k_2to63)), 0);
    EXPECT_EQ(order(Number(k_maxSigned), Number(HUGE_VAL)), -1);
}

TEST(NumberCompare, signed_with_double_is_exact_where_doubles_are_coarse) {
    EXPECT_EQ(order(Number(k_maxSigned), Number(k_2to63)), -1);
    EXPECT_EQ(order(Number(9007199254740993LL), Number(k_2to53)), 1);
    EXPECT_EQ(order(Number(-9007199254740991LL), Number(-k_2to53)), 1);
    EXPECT_EQ(order(Number(-9007199254740993LL), Number(-k_2to53)), -1);
}

TEST(NumberCompare, unsigned_with_double) {
    EXPECT_EQ(order(Number(1U), Number(1.5)), -1);
    EXPECT_EQ(order(Number(2U), Number(1.5)), 1);
    EXPECT_EQ(order(Number(3U), Number(3.0)), 0);
    EXPECT_EQ(order(Number(0U), Number(0.0)), 0);
    EXPECT_EQ(order(Number(0U), Number(-0.0)), 0);
    EXPECT_EQ(order(Number(0U), Number(-DBL_MIN)), 1);
    EXPECT_EQ(order(Number(0U), Number(-HUGE_VAL)), 1);
    EXPECT_EQ(order(Number(k_maxUnsigned), Number(HUGE_VAL)), -1);
}

TEST(NumberCompare, unsigned_with_double_rounds_the_integer_to_a_double) {
    EXPECT_EQ(order(Number(k_maxUnsigned), Number(k_2to64)), 0);
    EXPECT_EQ(order(Number(9007199254740993ULL), Number(k_2to53)), 0);
    EXPECT_EQ(order(Number(9007199254740995ULL), Number(k_2to53)), 1);
    EXPECT_EQ(order(Number(9007199254740995ULL), Number(k_2to53 + 4)), 0);
    EXPECT_EQ(order(Number(9223372036854775809ULL), Number(k_2to63)), 0);
}

TEST(NumberCompare, nan_equals_every_double_and_every_integer) {
    EXPECT_EQ(order(Number(k_nan), Number(k_nan)), 0);
    EXPECT_EQ(order(Number(k_nan), Number(1.5)), 0);
    EXPECT_EQ(order(Number(k_nan), Number(HUGE_VAL)), 0);
    EXPECT_EQ(order(Number(k_nan), Number(-7)), 0);
    EXPECT_EQ(order(Number(k_nan), Number(7U)), 0);
}

// Texts.

TEST(NumberCompare, texts_are_compared_by_value) {
    EXPECT_EQ(order(Number("1.0"), Number("1.00")), 0);
    EXPECT_EQ(order(Number("1e3"), Number("1000")), 0);
    EXPECT_EQ(order(Number("007"), Number("7")), 0);
    EXPECT_EQ(order(Number("9"), Number("10")), -1);
    EXPECT_EQ(order(Number("-9"), Number("-10")), 1);
    EXPECT_EQ(order(Number("12"), Number(12)), 0);
}

TEST(NumberCompare, converts_both_numbers_and_keeps_the_values) {
    const Number a("12");
    const Number b("-1.5");
    EXPECT_EQ(signOf(a.compare(b)), 1);
    EXPECT_EQ(NumberProbe::heldKind(a), Number::ebULongLong);
    EXPECT_EQ(NumberProbe::heldKind(b), Number::ebDouble);
}

TEST(NumberCompare, number_with_itself_is_equal) {
    const Number number("1.5");
    EXPECT_EQ(number.compare(number), 0);
}

TEST(NumberCompare, converts_the_other_number_first) {
    const Number a("1e400");
    const Number b("99999999999999999999");
    const auto error = thrownBy<TextError>([&] { a.compare(b); });
    EXPECT_EQ(error.value(), "99999999999999999999");
    EXPECT_EQ(NumberProbe::heldKind(a), Number::ebNone);
}

TEST(NumberCompare, text_out_of_range_on_either_side_is_reported) {
    EXPECT_THROW(Number(1).compare(Number("1e400")), TextError);
    EXPECT_THROW(Number("1e400").compare(Number(1)), TextError);
}

// The static helpers.

TEST(NumberStaticCompare, signed_with_unsigned) {
    EXPECT_EQ(Number::compare(0LL, 0ULL), -1);
    EXPECT_EQ(Number::compare(-1LL, 0ULL), -1);
    EXPECT_EQ(Number::compare(k_minSigned, k_maxUnsigned), -1);
    EXPECT_EQ(Number::compare(1LL, 1ULL), 0);
    EXPECT_EQ(Number::compare(1LL, 0ULL), 1);
    EXPECT_EQ(Number::compare(k_maxSigned, k_maxUnsigned), -1);
}

TEST(NumberStaticCompare, integers_with_double) {
    EXPECT_EQ(Number::compare(k_maxSigned, k_2to63), -1);
    EXPECT_EQ(Number::compare(-2LL, -2.0), 0);
    EXPECT_EQ(Number::compare(-2LL, -2.5), 1);
    EXPECT_EQ(Number::compare(5LL, k_nan), 0);
    EXPECT_EQ(Number::compare(0ULL, -0.5), 1);
    EXPECT_EQ(Number::compare(0ULL, -0.0), 0);
    EXPECT_EQ(Number::compare(k_maxUnsigned, k_2to64), 0);
    EXPECT_EQ(Number::compare(5ULL, 5.5), -1);
    EXPECT_EQ(Number::compare(5ULL, k_nan), 0);
}

TEST(NumberStaticCompare, with_decimal_text_is_exact) {
    const auto text = [](const char* digits) { return std::string(digits); };
    EXPECT_EQ(Number::compare(-5LL, text("-5.0")), 0);
    EXPECT_EQ(Number::compare(k_maxSigned, text("9223372036854775807.1")), -1);
    EXPECT_EQ(Number::compare(k_minSigned, text("-9223372036854775809")), 1);
    EXPECT_EQ(Number::compare(k_maxUnsigned, text("18446744073709551615")), 0);
    EXPECT_EQ(Number::compare(k_maxUnsigned, text("18446744073709551616")), -1);
    EXPECT_EQ(Number::compare(1ULL, text("1e-400")), 1);
    EXPECT_EQ(Number::compare(0.1, text("0.1")), 1);
    EXPECT_EQ(Number::compare(0.5, text("5e-1")), 0);
    EXPECT_EQ(Number::compare(DBL_MAX, text("1e400")), -1);
    EXPECT_EQ(Number::compare(0LL, text("0")), 0);
}

// Kinds that no operation produces.

TEST(BigDecimalNumberCompare, may_stand_on_the_left_of_every_kind) {
    const Number number = NumberProbe::bigDecimal("18446744073709551616.5");
    EXPECT_EQ(number.compare(Number(-1)), 1);
    EXPECT_EQ(number.compare(Number(k_maxSigned)), 1);
    EXPECT_EQ(number.compare(Number(k_maxUnsigned)), 1);
    EXPECT_EQ(number.compare(Number(k_2to64)), 1);
    EXPECT_EQ(number.compare(Number(1e300)), -1);
    EXPECT_EQ(NumberProbe::bigDecimal("-3").compare(Number(-2)), -1);
    EXPECT_EQ(NumberProbe::bigDecimal("-3").compare(Number(0U)), -1);
    EXPECT_EQ(NumberProbe::bigDecimal("-3").compare(Number(-2.5)), -1);
}

TEST(BigDecimalNumberCompare, equals_the_numbers_of_the_same_value) {
    EXPECT_EQ(NumberProbe::bigDecimal("5.00").compare(Number(5)), 0);
    EXPECT_EQ(NumberProbe::bigDecimal("5.00").compare(Number(5U)), 0);
    EXPECT_EQ(NumberProbe::bigDecimal("0.50").compare(Number(0.5)), 0);
    EXPECT_EQ(NumberProbe::bigDecimal("0").compare(Number(0U)), 0);
    EXPECT_EQ(NumberProbe::bigDecimal("0.1").compare(Number(0.1)), -1);
}

TEST(BigDecimalNumberCompare, may_not_stand_on_the_right) {
    const Number number = NumberProbe::bigDecimal("5");
    for (const Number& left : {Number(5), Number(5U), Number(5.0), Number("5"), number}) {
        const auto error = thrownBy<ko::Orvid::Exception>([&] { left.compare(number); });
        EXPECT_STREQ(error.what(), "Uncomparable type.");
        EXPECT_EQ(error.elementPath(), nullptr);
    }
}

TEST(NumberOfUnknownKindCompare, may_not_stand_on_the_right) {
    const Number number = NumberProbe::unknown();
    const auto error = thrownBy<ko::Orvid::Exception>([&] { Number(5).compare(number); });
    EXPECT_STREQ(error.what(), "Uncomparable type.");
}

TEST(NumberOfUnknownKindCompare, is_not_implemented_on_the_left) {
    const Number number = NumberProbe::unknown();
    for (const Number& right : {Number(5), Number(5U), Number(5.0)}) {
        const auto error = thrownBy<ko::RuntimeError>([&] { number.compare(right); });
        EXPECT_STREQ(error.what(), "Unknown type, implementation missing");
    }
}

TEST(NumberOfUnknownKindCompare, looks_at_the_right_side_first) {
    const Number number = NumberProbe::unknown();
    EXPECT_THROW(number.compare(number), ko::Orvid::Exception);
    const Number unread("99999999999999999999");
    EXPECT_THROW(unread.compare(number), ko::Orvid::Exception);
    EXPECT_EQ(NumberProbe::heldKind(unread), Number::ebNone);
}

}  // namespace
