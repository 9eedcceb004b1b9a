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
    EXPECT_EQ(-forward, signOf(b.compare(a))) << a.toString() << " and " << b.toString();
    return forward;
}

// --- same kind
// --------------------------------------------------------------------------------------

TEST(NumberCompare, signed_with_signed) {
    EXPECT_EQ(-1, order(Number(-2), Number(1)));
    EXPECT_EQ(0, order(Number(7), Number(7)));
    EXPECT_EQ(0, order(Number(0), Number(0)));
    EXPECT_EQ(-1, order(Number(k_minSigned), Number(k_maxSigned)));
    EXPECT_EQ(1, order(Number(k_maxSigned), Number(k_maxSigned - 1)));
}

TEST(NumberCompare, unsigned_with_unsigned) {
    EXPECT_EQ(-1, order(Number(1U), Number(2U)));
    EXPECT_EQ(0, order(Number(0U), Number(0U)));
    EXPECT_EQ(1, order(Number(k_maxUnsigned), Number(0U)));
    EXPECT_EQ(1, order(Number(k_maxUnsigned), Number(k_maxUnsigned - 1)));
}

TEST(NumberCompare, double_with_double) {
    EXPECT_EQ(-1, order(Number(1.5), Number(1.75)));
    EXPECT_EQ(0, order(Number(1.5), Number(1.5)));
    EXPECT_EQ(0, order(Number(0.0), Number(-0.0)));
    EXPECT_EQ(1, order(Number(HUGE_VAL), Number(DBL_MAX)));
    EXPECT_EQ(0, order(Number(HUGE_VAL), Number(HUGE_VAL)));
    EXPECT_EQ(-1, order(Number(-HUGE_VAL), Number(-DBL_MAX)));
}

// --- signed with unsigned
// -----------------------------------------------------------------------------

TEST(NumberCompare, signed_with_unsigned) {
    EXPECT_EQ(-1, order(Number(-1), Number(0U)));
    EXPECT_EQ(-1, order(Number(-1), Number(k_maxUnsigned)));
    EXPECT_EQ(0, order(Number(7), Number(7U)));
    EXPECT_EQ(1, order(Number(8), Number(7U)));
    EXPECT_EQ(-1, order(Number(k_maxSigned), Number(k_maxUnsigned)));
    EXPECT_EQ(0, order(Number(k_maxSigned), Number(static_cast<unsigned long long>(k_maxSigned))));
}

TEST(NumberCompare, signed_zero_is_below_every_unsigned_value_and_below_unsigned_zero) {
    EXPECT_EQ(-1, order(Number(0), Number(0U)));
    EXPECT_EQ(-1, order(Number(0), Number(1U)));
    EXPECT_EQ(-1, order(Number("-0"), Number("0")));
    EXPECT_EQ(-1, order(Number(), Number("0")));
}

// --- integers with doubles
// ----------------------------------------------------------------------------

TEST(NumberCompare, signed_with_double) {
    EXPECT_EQ(-1, order(Number(1), Number(1.5)));
    EXPECT_EQ(1, order(Number(2), Number(1.5)));
    EXPECT_EQ(0, order(Number(-3), Number(-3.0)));
    EXPECT_EQ(0, order(Number(0), Number(0.0)));
    EXPECT_EQ(0, order(Number(0), Number(-0.0)));
    EXPECT_EQ(1, order(Number(k_minSigned), Number(-1e300)));
    EXPECT_EQ(0, order(Number(k_minSigned), Number(-k_2to63)));
    EXPECT_EQ(-1, order(Number(k_maxSigned), Number(HUGE_VAL)));
}

TEST(NumberCompare, signed_with_double_is_exact_where_doubles_are_coarse) {
    EXPECT_EQ(-1, order(Number(k_maxSigned), Number(k_2to63)));
    EXPECT_EQ(1, order(Number(9007199254740993LL), Number(k_2to53)));
    EXPECT_EQ(1, order(Number(-9007199254740991LL), Number(-k_2to53)));
    EXPECT_EQ(-1, order(Number(-9007199254740993LL), Number(-k_2to53)));
}

TEST(NumberCompare, unsigned_with_double) {
    EXPECT_EQ(-1, order(Number(1U), Number(1.5)));
    EXPECT_EQ(1, order(Number(2U), Number(1.5)));
    EXPECT_EQ(0, order(Number(3U), Number(3.0)));
    EXPECT_EQ(0, order(Number(0U), Number(0.0)));
    EXPECT_EQ(0, order(Number(0U), Number(-0.0)));
    EXPECT_EQ(1, order(Number(0U), Number(-DBL_MIN)));
    EXPECT_EQ(1, order(Number(0U), Number(-HUGE_VAL)));
    EXPECT_EQ(-1, order(Number(k_maxUnsigned), Number(HUGE_VAL)));
}

TEST(NumberCompare, unsigned_with_double_rounds_the_integer_to_a_double) {
    EXPECT_EQ(0, order(Number(k_maxUnsigned), Number(k_2to64)));
    EXPECT_EQ(0, order(Number(9007199254740993ULL), Number(k_2to53)));
    EXPECT_EQ(1, order(Number(9007199254740995ULL), Number(k_2to53)));
    EXPECT_EQ(0, order(Number(9007199254740995ULL), Number(k_2to53 + 4)));
    EXPECT_EQ(0, order(Number(9223372036854775809ULL), Number(k_2to63)));
}

TEST(NumberCompare, nan_equals_every_double_and_every_integer) {
    EXPECT_EQ(0, order(Number(k_nan), Number(k_nan)));
    EXPECT_EQ(0, order(Number(k_nan), Number(1.5)));
    EXPECT_EQ(0, order(Number(k_nan), Number(HUGE_VAL)));
    EXPECT_EQ(0, order(Number(k_nan), Number(-7)));
    EXPECT_EQ(0, order(Number(k_nan), Number(7U)));
}

// --- texts
// ------------------------------------------------------------------------------------------

TEST(NumberCompare, texts_are_compared_by_value) {
    EXPECT_EQ(0, order(Number("1.0"), Number("1.00")));
    EXPECT_EQ(0, order(Number("1e3"), Number("1000")));
    EXPECT_EQ(0, order(Number("007"), Number("7")));
    EXPECT_EQ(-1, order(Number("9"), Number("10")));
    EXPECT_EQ(1, order(Number("-9"), Number("-10")));
    EXPECT_EQ(0, order(Number("12"), Number(12)));
}

TEST(NumberCompare, converts_both_numbers_and_keeps_the_values) {
    const Number a("12");
    const Number b("-1.5");
    EXPECT_EQ(1, signOf(a.compare(b)));
    EXPECT_EQ(Number::ebULongLong, NumberProbe::heldKind(a));
    EXPECT_EQ(Number::ebDouble, NumberProbe::heldKind(b));
}

TEST(NumberCompare, number_with_itself_is_equal) {
    const Number number("1.5");
    EXPECT_EQ(0, number.compare(number));
}

TEST(NumberCompare, converts_the_other_number_first) {
    const Number a("1e400");
    const Number b("99999999999999999999");
    const auto error = thrownBy<TextError>([&] { a.compare(b); });
    EXPECT_EQ("99999999999999999999", error.value());
    EXPECT_EQ(Number::ebNone, NumberProbe::heldKind(a));
}

TEST(NumberCompare, text_out_of_range_on_either_side_is_reported) {
    EXPECT_THROW(Number(1).compare(Number("1e400")), TextError);
    EXPECT_THROW(Number("1e400").compare(Number(1)), TextError);
}

// --- the static helpers
// -------------------------------------------------------------------------------

TEST(NumberStaticCompare, signed_with_unsigned) {
    EXPECT_EQ(-1, Number::compare(0LL, 0ULL));
    EXPECT_EQ(-1, Number::compare(-1LL, 0ULL));
    EXPECT_EQ(-1, Number::compare(k_minSigned, k_maxUnsigned));
    EXPECT_EQ(0, Number::compare(1LL, 1ULL));
    EXPECT_EQ(1, Number::compare(1LL, 0ULL));
    EXPECT_EQ(-1, Number::compare(k_maxSigned, k_maxUnsigned));
}

TEST(NumberStaticCompare, integers_with_double) {
    EXPECT_EQ(-1, Number::compare(k_maxSigned, k_2to63));
    EXPECT_EQ(0, Number::compare(-2LL, -2.0));
    EXPECT_EQ(1, Number::compare(-2LL, -2.5));
    EXPECT_EQ(0, Number::compare(5LL, k_nan));
    EXPECT_EQ(1, Number::compare(0ULL, -0.5));
    EXPECT_EQ(0, Number::compare(0ULL, -0.0));
    EXPECT_EQ(0, Number::compare(k_maxUnsigned, k_2to64));
    EXPECT_EQ(-1, Number::compare(5ULL, 5.5));
    EXPECT_EQ(0, Number::compare(5ULL, k_nan));
}

TEST(NumberStaticCompare, with_decimal_text_is_exact) {
    const auto text = [](const char* digits) { return std::string(digits); };
    EXPECT_EQ(0, Number::compare(-5LL, text("-5.0")));
    EXPECT_EQ(-1, Number::compare(k_maxSigned, text("9223372036854775807.1")));
    EXPECT_EQ(1, Number::compare(k_minSigned, text("-9223372036854775809")));
    EXPECT_EQ(0, Number::compare(k_maxUnsigned, text("18446744073709551615")));
    EXPECT_EQ(-1, Number::compare(k_maxUnsigned, text("18446744073709551616")));
    EXPECT_EQ(1, Number::compare(1ULL, text("1e-400")));
    EXPECT_EQ(1, Number::compare(0.1, text("0.1")));
    EXPECT_EQ(0, Number::compare(0.5, text("5e-1")));
    EXPECT_EQ(-1, Number::compare(DBL_MAX, text("1e400")));
    EXPECT_EQ(0, Number::compare(0LL, text("0")));
}

// --- kinds that no operation produces
// -----------------------------------------------------------------

TEST(BigDecimalNumberCompare, may_stand_on_the_left_of_every_kind) {
    const Number number = NumberProbe::bigDecimal("18446744073709551616.5");
    EXPECT_EQ(1, number.compare(Number(-1)));
    EXPECT_EQ(1, number.compare(Number(k_maxSigned)));
    EXPECT_EQ(1, number.compare(Number(k_maxUnsigned)));
    EXPECT_EQ(1, number.compare(Number(k_2to64)));
    EXPECT_EQ(-1, number.compare(Number(1e300)));
    EXPECT_EQ(-1, NumberProbe::bigDecimal("-3").compare(Number(-2)));
    EXPECT_EQ(-1, NumberProbe::bigDecimal("-3").compare(Number(0U)));
    EXPECT_EQ(-1, NumberProbe::bigDecimal("-3").compare(Number(-2.5)));
}

TEST(BigDecimalNumberCompare, equals_the_numbers_of_the_same_value) {
    EXPECT_EQ(0, NumberProbe::bigDecimal("5.00").compare(Number(5)));
    EXPECT_EQ(0, NumberProbe::bigDecimal("5.00").compare(Number(5U)));
    EXPECT_EQ(0, NumberProbe::bigDecimal("0.50").compare(Number(0.5)));
    EXPECT_EQ(0, NumberProbe::bigDecimal("0").compare(Number(0U)));
    EXPECT_EQ(-1, NumberProbe::bigDecimal("0.1").compare(Number(0.1)));
}

TEST(BigDecimalNumberCompare, may_not_stand_on_the_right) {
    const Number number = NumberProbe::bigDecimal("5");
    for (const Number& left : {Number(5), Number(5U), Number(5.0), Number("5"), number}) {
        const auto error = thrownBy<ko::Orvid::Exception>([&] { left.compare(number); });
        EXPECT_STREQ("Uncomparable type.", error.what());
        EXPECT_EQ(nullptr, error.elementPath());
    }
}

TEST(NumberOfUnknownKindCompare, may_not_stand_on_the_right) {
    const Number number = NumberProbe::unknown();
    const auto error = thrownBy<ko::Orvid::Exception>([&] { Number(5).compare(number); });
    EXPECT_STREQ("Uncomparable type.", error.what());
}

TEST(NumberOfUnknownKindCompare, is_not_implemented_on_the_left) {
    const Number number = NumberProbe::unknown();
    for (const Number& right : {Number(5), Number(5U), Number(5.0)}) {
        const auto error = thrownBy<ko::RuntimeError>([&] { number.compare(right); });
        EXPECT_STREQ("Unknown type, implementation missing", error.what());
    }
}

TEST(NumberOfUnknownKindCompare, looks_at_the_right_side_first) {
    const Number number = NumberProbe::unknown();
    EXPECT_THROW(number.compare(number), ko::Orvid::Exception);
    const Number unread("99999999999999999999");
    EXPECT_THROW(unread.compare(number), ko::Orvid::Exception);
    EXPECT_EQ(Number::ebNone, NumberProbe::heldKind(unread));
}

}  // namespace
