// SPDX-License-Identifier: MIT
//
// Typed reads: for each of the twelve types its limits, the values next to them, and the error with
// the type of its own; then the rules that single types have.

#include <ko/Orvid/Number.h>

#include <gtest/gtest.h>
#include <ko/Exception.h>

#include <cfloat>
#include <cmath>
#include <limits>
#include <string>
#include <type_traits>

#include "support/Document.h"
#include "support/GroupingLocale.h"
#include "support/NumberErrors.h"
#include "support/NumberProbe.h"

namespace {

using ko::Orvid::Number;
using ko::Orvid::NumberProbe;
using orvid_test::ReadError;
using orvid_test::TextError;
using orvid_test::thrownBy;

/// The shorthand that reads T.
template<class T>
T shorthand(const Number& number) {
    if constexpr (std::is_same_v<T, char>) {
        return number.toChar();
    } else if constexpr (std::is_same_v<T, unsigned char>) {
        return number.toUChar();
    } else if constexpr (std::is_same_v<T, short>) {
        return number.toShort();
    } else if constexpr (std::is_same_v<T, unsigned short>) {
        return number.toUShort();
    } else if constexpr (std::is_same_v<T, int>) {
        return number.toInt();
    } else if constexpr (std::is_same_v<T, unsigned int>) {
        return number.toUInt();
    } else if constexpr (std::is_same_v<T, long>) {
        return number.toLong();
    } else if constexpr (std::is_same_v<T, unsigned long>) {
        return number.toULong();
    } else if constexpr (std::is_same_v<T, long long>) {
        return number.toLongLong();
    } else if constexpr (std::is_same_v<T, unsigned long long>) {
        return number.toULongLong();
    } else if constexpr (std::is_same_v<T, float>) {
        return number.toFloat();
    } else {
        return number.toDouble();
    }
}

template<class... T>
int matches(const ko::Orvid::Exception& error) {
    return (0 + ... + (dynamic_cast<const ReadError<T>*>(&error) == nullptr ? 0 : 1));
}

/// Whether both ways to read T refuse the number: with T's own error and no other, and the output
/// untouched.
template<class T>
testing::AssertionResult refuses(const Number& number) {
    using Limits = std::numeric_limits<T>;
    T out{77};
    try {
        const T read = number.getValue(out);
        return testing::AssertionFailure() << number.toString() << " was read as " << +read;
    } catch (const ko::Orvid::Exception& error) {
        const auto* const own = dynamic_cast<const ReadError<T>*>(&error);
        const int all = matches<char, unsigned char, short, unsigned short, int, unsigned int, long,
                                unsigned long, long long, unsigned long long, float, double>(error);
        if (own == nullptr || all != 1) {
            return testing::AssertionFailure() << "another error: " << error.what();
        }
        if (own->min() != Limits::min() || own->max() != Limits::max()) {
            return testing::AssertionFailure() << "other limits: " << error.what();
        }
        if (own->value().toString() != number.toString() || own->elementPath() != nullptr) {
            return testing::AssertionFailure() << "another value: " << error.what();
        }
    }
    if (out != T{77}) {
        return testing::AssertionFailure() << "the output was changed to " << +out;
    }
    try {
        shorthand<T>(number);
    } catch (const ReadError<T>&) {
        return testing::AssertionSuccess();
    }
    return testing::AssertionFailure() << "the shorthand reads " << number.toString();
}

/// Whether both ways to read T give `expected`.
template<class T>
testing::AssertionResult reads(const Number& number, T expected) {
    T out{};
    const T& result = number.getValue(out);
    if (&result != &out) {
        return testing::AssertionFailure() << "getValue does not return its argument";
    }
    if (out != expected || shorthand<T>(number) != expected) {
        return testing::AssertionFailure() << number.toString() << " reads as " << +out;
    }
    return testing::AssertionSuccess();
}

template<class T>
constexpr T k_min = std::numeric_limits<T>::min();
template<class T>
constexpr T k_max = std::numeric_limits<T>::max();

/// The decimal text whose last digit is one more; in all our limits there is no carry.
std::string away(std::string text) {
    ++text.back();
    return text;
}

template<class T>
std::string minText() {
    return std::to_string(k_min<T>);
}

template<class T>
std::string maxText() {
    return std::to_string(k_max<T>);
}

// The integral types.

template<class T>
class NumberReadAsInteger : public testing::Test {};

using Integers = testing::Types<char, unsigned char, short, unsigned short, int, unsigned int, long,
                                unsigned long, long long, unsigned long long>;

class TypeNames {
public:
    template<class T>
    static std::string GetName(int) {
        const std::string sign = std::is_unsigned_v<T> ? "unsigned_" : "";
        if constexpr (std::is_floating_point_v<T>) {
            return sizeof(T) == sizeof(float) ? "float" : "double";
        } else if constexpr (sizeof(T) == 1) {
            return sign + "char";
        } else if constexpr (sizeof(T) == 2) {
            return sign + "short";
        } else if constexpr (std::is_same_v<std::make_signed_t<T>, int>) {
            return sign + "int";
        } else {
            return sign + (std::is_same_v<std::make_signed_t<T>, long> ? "long" : "long_long");
        }
    }
};

TYPED_TEST_SUITE(NumberReadAsInteger, Integers, TypeNames);

TYPED_TEST(NumberReadAsInteger, accepts_its_limits_as_text) {
    EXPECT_TRUE(reads<TypeParam>(Number(minText<TypeParam>()), k_min<TypeParam>));
    EXPECT_TRUE(reads<TypeParam>(Number(maxText<TypeParam>()), k_max<TypeParam>));
    EXPECT_TRUE(reads<TypeParam>(Number("1"), 1));
    EXPECT_TRUE(reads<TypeParam>(Number("0"), 0));
}

TYPED_TEST(NumberReadAsInteger, accepts_its_limits_in_its_own_kind) {
    EXPECT_TRUE(reads<TypeParam>(Number(k_min<TypeParam>), k_min<TypeParam>));
    EXPECT_TRUE(reads<TypeParam>(Number(k_max<TypeParam>), k_max<TypeParam>));
}

TYPED_TEST(NumberReadAsInteger, refuses_text_just_outside_its_limits) {
    const std::string above = away(maxText<TypeParam>());
    if (sizeof(TypeParam) < 8 || std::is_signed_v<TypeParam>) {
        EXPECT_TRUE(refuses<TypeParam>(Number(above)));
    } else {
        EXPECT_THROW(shorthand<TypeParam>(Number(above)), TextError);
    }
    if (std::is_unsigned_v<TypeParam>) {
        EXPECT_TRUE(refuses<TypeParam>(Number("-1")));
        EXPECT_TRUE(refuses<TypeParam>(Number("-0")));
    } else if (sizeof(TypeParam) < 8) {
        EXPECT_TRUE(refuses<TypeParam>(Number(away(minText<TypeParam>()))));
    }
}

TYPED_TEST(NumberReadAsInteger, refuses_what_is_far_outside) {
    EXPECT_TRUE(refuses<TypeParam>(Number("1e300")));
    EXPECT_TRUE(refuses<TypeParam>(Number("-1e300")));
    EXPECT_TRUE(refuses<TypeParam>(Number(HUGE_VAL)));
    EXPECT_TRUE(refuses<TypeParam>(Number(-HUGE_VAL)));
}

TYPED_TEST(NumberReadAsInteger, checks_numbers_of_the_signed_kind) {
    constexpr long long highest = k_max<long long>;
    if constexpr (k_max<TypeParam> < highest) {
        constexpr auto max = static_cast<long long>(k_max<TypeParam>);
        EXPECT_TRUE(reads<TypeParam>(Number(max), k_max<TypeParam>));
        EXPECT_TRUE(refuses<TypeParam>(Number(max + 1)));
        EXPECT_TRUE(refuses<TypeParam>(Number(highest)));
    } else {
        EXPECT_TRUE(reads<TypeParam>(Number(highest), static_cast<TypeParam>(highest)));
    }
    if constexpr (std::is_unsigned_v<TypeParam>) {
        EXPECT_TRUE(reads<TypeParam>(Number(1), 1));
        EXPECT_TRUE(refuses<TypeParam>(Number(-1)));
        EXPECT_TRUE(refuses<TypeParam>(Number(k_min<long long>)));
    } else {
        constexpr long long min = +k_min<TypeParam>;
        EXPECT_TRUE(reads<TypeParam>(Number(min), k_min<TypeParam>));
        EXPECT_TRUE(reads<TypeParam>(Number(0), 0));
        if constexpr (sizeof(TypeParam) < 8) {
            EXPECT_TRUE(refuses<TypeParam>(Number(min - 1)));
            EXPECT_TRUE(refuses<TypeParam>(Number(k_min<long long>)));
        }
    }
}

TYPED_TEST(NumberReadAsInteger, checks_numbers_of_the_unsigned_kind) {
    constexpr auto max = static_cast<unsigned long long>(k_max<TypeParam>);
    EXPECT_TRUE(reads<TypeParam>(Number(0U), 0));
    EXPECT_TRUE(reads<TypeParam>(Number(max), k_max<TypeParam>));
    if constexpr (max < k_max<unsigned long long>) {
        EXPECT_TRUE(refuses<TypeParam>(Number(max + 1)));
        EXPECT_TRUE(refuses<TypeParam>(Number(k_max<unsigned long long>)));
    }
}

TYPED_TEST(NumberReadAsInteger, checks_numbers_of_the_double_kind) {
    EXPECT_TRUE(reads<TypeParam>(Number(0.0), 0));
    EXPECT_TRUE(reads<TypeParam>(Number(-0.0), 0));
    EXPECT_TRUE(reads<TypeParam>(Number("1e1"), 10));
    if constexpr (sizeof(TypeParam) < 8) {
        const auto min = static_cast<double>(k_min<TypeParam>);
        const auto max = static_cast<double>(k_max<TypeParam>);
        EXPECT_TRUE(reads<TypeParam>(Number(max), k_max<TypeParam>));
        EXPECT_TRUE(refuses<TypeParam>(Number(max + 0.5)));
        EXPECT_TRUE(refuses<TypeParam>(Number(max + 1)));
        EXPECT_TRUE(reads<TypeParam>(Number(min), k_min<TypeParam>));
        EXPECT_TRUE(refuses<TypeParam>(Number(min - 0.5)));
        EXPECT_TRUE(refuses<TypeParam>(Number(min - 1)));
    }
}

TYPED_TEST(NumberReadAsInteger, cuts_the_fraction_off) {
    EXPECT_TRUE(reads<TypeParam>(Number(1.9), 1));
    EXPECT_TRUE(reads<TypeParam>(Number("1.999"), 1));
    EXPECT_TRUE(reads<TypeParam>(Number(0.999), 0));
    if constexpr (std::is_signed_v<TypeParam>) {
        EXPECT_TRUE(reads<TypeParam>(Number(-1.9), static_cast<TypeParam>(-1)));
        EXPECT_TRUE(reads<TypeParam>(Number(-0.999), 0));
    } else {
        EXPECT_TRUE(refuses<TypeParam>(Number(-0.5)));
    }
}

TYPED_TEST(NumberReadAsInteger, refuses_a_signed_zero_only_when_it_is_unsigned) {
    if constexpr (std::is_unsigned_v<TypeParam>) {
        EXPECT_TRUE(refuses<TypeParam>(Number(0)));
        EXPECT_TRUE(refuses<TypeParam>(Number()));
    } else {
        EXPECT_TRUE(reads<TypeParam>(Number(0), 0));
        EXPECT_TRUE(reads<TypeParam>(Number(), 0));
    }
}

TYPED_TEST(NumberReadAsInteger, checks_big_decimals_exactly) {
    const std::string min = minText<TypeParam>();
    const std::string max = maxText<TypeParam>();
    EXPECT_TRUE(reads<TypeParam>(NumberProbe::bigDecimal(min), k_min<TypeParam>));
    EXPECT_TRUE(reads<TypeParam>(NumberProbe::bigDecimal(max), k_max<TypeParam>));
    EXPECT_TRUE(reads<TypeParam>(NumberProbe::bigDecimal("1.9"), 1));
    EXPECT_TRUE(refuses<TypeParam>(NumberProbe::bigDecimal(away(max))));
    EXPECT_TRUE(refuses<TypeParam>(NumberProbe::bigDecimal(max + ".1")));
    EXPECT_TRUE(refuses<TypeParam>(NumberProbe::bigDecimal("1e1000000")));
    const std::string below = std::is_unsigned_v<TypeParam> ? "-1" : away(min);
    EXPECT_TRUE(refuses<TypeParam>(NumberProbe::bigDecimal(below)));
}

TYPED_TEST(NumberReadAsInteger, of_a_nan_passes_the_check) {
    EXPECT_NO_THROW(shorthand<TypeParam>(Number(std::nan(""))));
}

// The floating types.

template<class T>
class NumberReadAsReal : public testing::Test {};

using Reals = testing::Types<float, double>;
TYPED_TEST_SUITE(NumberReadAsReal, Reals, TypeNames);

TYPED_TEST(NumberReadAsReal, accepts_values_from_its_smallest_positive_to_its_largest) {
    EXPECT_TRUE(reads<TypeParam>(Number(k_min<TypeParam>), k_min<TypeParam>));
    EXPECT_TRUE(reads<TypeParam>(Number(k_max<TypeParam>), k_max<TypeParam>));
    EXPECT_TRUE(reads<TypeParam>(Number(1.5), TypeParam{1.5}));
    EXPECT_TRUE(reads<TypeParam>(Number("1.5"), TypeParam{1.5}));
    EXPECT_TRUE(reads<TypeParam>(Number("2.5e-1"), TypeParam{0.25}));
}

TYPED_TEST(NumberReadAsReal, refuses_zero_of_every_kind) {
    EXPECT_TRUE(refuses<TypeParam>(Number(0)));
    EXPECT_TRUE(refuses<TypeParam>(Number(0U)));
    EXPECT_TRUE(refuses<TypeParam>(Number(0.0)));
    EXPECT_TRUE(refuses<TypeParam>(Number("0")));
    EXPECT_TRUE(refuses<TypeParam>(Number("0.0")));
    EXPECT_TRUE(refuses<TypeParam>(Number("1e-400")));
}

TYPED_TEST(NumberReadAsReal, refuses_every_negative_number) {
    EXPECT_TRUE(refuses<TypeParam>(Number(-1)));
    EXPECT_TRUE(refuses<TypeParam>(Number("-1")));
    EXPECT_TRUE(refuses<TypeParam>(Number(-1.5)));
    EXPECT_TRUE(refuses<TypeParam>(Number("-1.5")));
}

TYPED_TEST(NumberReadAsReal, refuses_what_lies_outside_its_normal_range) {
    const double below = std::nextafter(static_cast<double>(k_min<TypeParam>), 0.0);
    EXPECT_TRUE(refuses<TypeParam>(Number(below)));
    const double above = std::nextafter(static_cast<double>(k_max<TypeParam>), HUGE_VAL);
    EXPECT_TRUE(refuses<TypeParam>(Number(above)));
    EXPECT_TRUE(refuses<TypeParam>(Number(HUGE_VAL)));
    EXPECT_TRUE(refuses<TypeParam>(Number(std::numeric_limits<double>::denorm_min())));
}

TYPED_TEST(NumberReadAsReal, converts_integers_to_the_nearest_value) {
    EXPECT_TRUE(reads<TypeParam>(Number(3), TypeParam{3}));
    EXPECT_TRUE(reads<TypeParam>(Number(3U), TypeParam{3}));
    EXPECT_TRUE(reads<TypeParam>(Number(k_max<long long>), TypeParam{9223372036854775808.0}));
    EXPECT_TRUE(
        reads<TypeParam>(Number(k_max<unsigned long long>), TypeParam{18446744073709551616.0}));
}

TYPED_TEST(NumberReadAsReal, checks_big_decimals_exactly) {
    EXPECT_TRUE(reads<TypeParam>(NumberProbe::bigDecimal("0.25"), TypeParam{0.25}));
    EXPECT_TRUE(refuses<TypeParam>(NumberProbe::bigDecimal("0")));
    EXPECT_TRUE(refuses<TypeParam>(NumberProbe::bigDecimal("-1")));
    EXPECT_TRUE(refuses<TypeParam>(NumberProbe::bigDecimal("1e400")));
    EXPECT_TRUE(refuses<TypeParam>(NumberProbe::bigDecimal("1e-400")));
}

TYPED_TEST(NumberReadAsReal, of_a_nan_is_a_nan) {
    EXPECT_TRUE(std::isnan(shorthand<TypeParam>(Number(std::nan("")))));
}

TEST(NumberToFloat, rounds_to_the_nearest_float) {
    EXPECT_EQ(Number(0.1).toFloat(), 0.1F);
    EXPECT_EQ(Number(16777217).toFloat(), 16777216.0F);
    EXPECT_EQ(NumberProbe::bigDecimal("0.1").toFloat(), 0.1F);
}

TEST(NumberToFloat, refuses_doubles_beyond_its_range) {
    EXPECT_TRUE(refuses<float>(Number(1e300)));
    EXPECT_TRUE(refuses<float>(Number(1e-40)));
}

TEST(NumberToDouble, of_the_largest_signed_value_is_the_next_power_of_two) {
    EXPECT_EQ(Number(9223372036854775807LL).toDouble(), 9.2233720368547758e18);
}

TEST(NumberToDouble, error_names_the_smallest_positive_value_as_minimum) {
    for (const Number& number : {Number(0.0), Number("0"), Number(-1.5)}) {
        const auto error = thrownBy<ReadError<double>>([&] { number.toDouble(); });
        EXPECT_EQ(std::string(error.what()), "Value out of range! Value: " + number.toString() +
                                                 " Min: 2.22507e-308 Max: 1.79769e+308");
    }
}

// Single values and types.

TEST(NumberRead, long_has_the_width_of_the_platform) {
    const Number number("3000000000");
    if constexpr (sizeof(long) == 4) {
        EXPECT_TRUE(refuses<long>(number));
        EXPECT_TRUE(refuses<unsigned long>(Number("4294967296")));
        EXPECT_TRUE(reads<unsigned long>(number, 3000000000UL));
        EXPECT_TRUE(refuses<long>(Number("-2147483649")));
    } else {
        EXPECT_TRUE(reads<long>(number, static_cast<long>(3000000000LL)));
        EXPECT_TRUE(
            reads<unsigned long>(Number("4294967296"), static_cast<unsigned long>(4294967296ULL)));
        EXPECT_TRUE(reads<long>(Number("-2147483649"), static_cast<long>(-2147483649LL)));
    }
}

TEST(NumberRead, of_64_bits_refuses_doubles_from_the_next_power_of_two_on) {
    EXPECT_TRUE(refuses<long long>(Number(9223372036854775808.0)));
    EXPECT_TRUE(reads<long long>(Number(9223372036854774784.0), 9223372036854774784LL));
    EXPECT_TRUE(reads<long long>(Number(-9223372036854775808.0), k_min<long long>));
    EXPECT_TRUE(refuses<long long>(Number(-9223372036854777856.0)));
    EXPECT_TRUE(refuses<unsigned long long>(Number(18446744073709555712.0)));
}

TEST(NumberRead, of_64_bits_unsigned_splits_doubles_at_the_signed_range) {
    EXPECT_TRUE(reads<unsigned long long>(Number(9223372036854775808.0), 9223372036854775808ULL));
    EXPECT_TRUE(reads<unsigned long long>(Number(18446744073709549568.0), 18446744073709549568ULL));
    EXPECT_TRUE(reads<unsigned long long>(Number(9223372036854774784.0), 9223372036854774784ULL));
}

TEST(NumberRead, double_that_the_largest_unsigned_value_rounds_to_reads_as_that_value) {
    EXPECT_TRUE(
        reads<unsigned long long>(Number(18446744073709551616.0), k_max<unsigned long long>));
}

TEST(NumberRead, largest_unsigned_text_fits_unsigned_only) {
    const Number number("18446744073709551615");
    EXPECT_TRUE(reads<unsigned long long>(number, k_max<unsigned long long>));
    EXPECT_TRUE(refuses<long long>(number));
}

TEST(NumberRead, text_below_the_lowest_value_reads_as_the_lowest_value) {
    EXPECT_TRUE(reads<long long>(Number("-9223372036854775809"), k_min<long long>));
}

TEST(NumberRead, int_refusal_shows_value_and_limits) {
    const Number number("3000000000");
    const auto error = thrownBy<ReadError<int>>([&] { number.toInt(); });
    EXPECT_STREQ(error.what(),
                 "Value out of range! Value: 3000000000 Min: -2147483648 Max: 2147483647");
}

TEST(NumberRead, char_refusal_shows_its_limits_as_raw_bytes) {
    const auto error = thrownBy<ReadError<char>>([] { Number(128).toChar(); });
    EXPECT_STREQ(error.what(), "Value out of range! Value: 128 Min: \x80 Max: \x7F");
}

TEST(NumberRead, of_text_that_cannot_be_converted_throws_the_error_of_the_text) {
    int out = 77;
    EXPECT_THROW(Number("1e400").getValue(out), TextError);
    EXPECT_THROW(Number("99999999999999999999").toULongLong(), TextError);
    EXPECT_EQ(out, 77);
}

TEST(NumberRead, of_an_unknown_kind_is_not_implemented) {
    int out = 77;
    const Number number = NumberProbe::unknown();
    const auto error = thrownBy<ko::RuntimeError>([&] { number.getValue(out); });
    EXPECT_STREQ(error.what(), "Unknown type, implementation missing");
    EXPECT_EQ(out, 77);
}

TEST(NumberRead, does_not_change_the_text) {
    const Number number("1.50");
    EXPECT_EQ(number.toInt(), 1);
    EXPECT_EQ(number.toDouble(), 1.5);
    EXPECT_EQ(number.toString(), "1.50");
}

TEST(NumberRead, does_not_depend_on_the_locale) {
    const orvid_test::GroupingLocale locale;
    EXPECT_EQ(Number("1234567").toInt(), 1234567);
    EXPECT_EQ(Number("1234.5").toDouble(), 1234.5);
    EXPECT_EQ(Number("-1234567").toLongLong(), -1234567);
}

}  // namespace
