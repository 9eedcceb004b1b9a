// SPDX-License-Identifier: MIT
//
// Tests of ko::DecNumber's conversions to the arithmetic types: the limits of each, the fraction
// cut off, and the rounding of the floating types, which is checked at the middles between
// neighbours.

#include <ko/DecNumber.h>

#include <gtest/gtest.h>

#include <ko/Exception.h>

#include "DecNumberSupport.h"

#include <algorithm>
#include <cfloat>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <random>
#include <string>

namespace {

using DecNumberSupport::exact;
using DecNumberSupport::messageOf;
using DecNumberSupport::randomDouble;
using DecNumberSupport::repeatable;
using ko::DecNumber;

std::string incremented(std::string digits) {
    std::size_t at = digits.length();
    while (at > 0 && digits[at - 1] == '9') {
        digits[--at] = '0';
    }
    if (at == 0) {
        return "1" + digits;
    }
    ++digits[at - 1];
    return digits;
}

/// `digits`, an integer with an optional '-', one further away from zero.
std::string beyond(const std::string& digits) {
    return digits[0] == '-' ? "-" + incremented(digits.substr(1)) : incremented(digits);
}

template<class Integer>
struct NameOf;
#define KO_NAME(Type)                                \
    template<>                                       \
    struct NameOf<Type> {                            \
        static constexpr const char* k_text = #Type; \
    };
KO_NAME(char)
KO_NAME(unsigned char)
KO_NAME(short)
KO_NAME(unsigned short)
KO_NAME(int)
KO_NAME(unsigned int)
KO_NAME(long)
KO_NAME(unsigned long)
KO_NAME(long long)
KO_NAME(unsigned long long)
#undef KO_NAME

template<class Integer>
class DecNumberToInteger : public testing::Test {
protected:
    using Limits = std::numeric_limits<Integer>;

    static Integer converted(const std::string& text) {
        return static_cast<Integer>(DecNumber(text));
    }
    static std::string failure(const std::string& text) {
        return messageOf([&] { converted(text); });
    }
    static std::string outOfRange(const std::string& shown) {
        return "The number " + shown + " is out of the range of " + NameOf<Integer>::k_text + ".";
    }
    static std::string max() { return std::to_string(Limits::max()); }
    static std::string min() { return std::to_string(Limits::min()); }
};

using Integers = testing::Types<char, unsigned char, short, unsigned short, int, unsigned int, long,
                                unsigned long, long long, unsigned long long>;
struct TestName {
    template<class Integer>
    static std::string GetName(int) {
        std::string name = NameOf<Integer>::k_text;
        std::replace(name.begin(), name.end(), ' ', '_');
        return name;
    }
};
TYPED_TEST_SUITE(DecNumberToInteger, Integers, TestName);

TYPED_TEST(DecNumberToInteger, takes_the_limits_and_nothing_beyond) {
    EXPECT_EQ(this->converted(this->max()), TestFixture::Limits::max());
    EXPECT_EQ(this->converted(this->min()), TestFixture::Limits::min());
    const std::string above = beyond(this->max());
    const std::string below = TestFixture::Limits::is_signed ? beyond(this->min()) : "-1";
    EXPECT_EQ(this->failure(above), this->outOfRange(above));
    EXPECT_EQ(this->failure(below), this->outOfRange(below));
    EXPECT_EQ(this->failure("-99999999999999999999"), this->outOfRange("-99999999999999999999"));
    EXPECT_EQ(this->failure("18446744073709551616"), this->outOfRange("18446744073709551616"));
}

TYPED_TEST(DecNumberToInteger, cuts_the_fraction_off_before_the_range_is_looked_at) {
    EXPECT_EQ(this->converted(this->max() + ".9999999999999999999999999"),
              TestFixture::Limits::max());
    EXPECT_EQ(this->converted((TestFixture::Limits::is_signed ? this->min() : "-0") + ".99999"),
              TestFixture::Limits::min());
    EXPECT_EQ(this->converted("-0.5"), TypeParam{0});
    EXPECT_EQ(this->converted("0.999"), TypeParam{0});
    EXPECT_EQ(this->converted("12.999"), TypeParam{12});
    EXPECT_EQ(this->converted("1299999999999999999999999999e-26"), TypeParam{12});
    EXPECT_EQ(this->converted("1.2e2"), TypeParam{120});
    EXPECT_EQ(this->converted("0"), TypeParam{0});
    EXPECT_EQ(this->failure(beyond(this->max()) + ".0"),
              this->outOfRange(beyond(this->max()) + ".0"));
}

TYPED_TEST(DecNumberToInteger, decides_huge_exponents_without_scaling) {
    EXPECT_EQ(this->failure("1e1000000000000"), this->outOfRange("1e+1000000000000"));
    EXPECT_EQ(this->failure("-1e9223372036854775807"), this->outOfRange("-1e+9223372036854775807"));
    EXPECT_EQ(this->converted("1e-1000000000000"), TypeParam{0});
    EXPECT_EQ(this->converted("-99e-9223372036854775808"), TypeParam{0});
    EXPECT_EQ(this->converted("0e9223372036854775807"), TypeParam{0});
}

TYPED_TEST(DecNumberToInteger, gives_back_random_values_of_the_type) {
    auto random = repeatable<std::mt19937_64>(5);
    for (int round = 0; round < 2000; ++round) {
        const auto value = static_cast<TypeParam>(random() >> random() % 64);
        ASSERT_EQ(this->converted(std::to_string(value)), value);
        ASSERT_EQ(this->converted(std::to_string(value) + "." + std::to_string(random())), value);
        ASSERT_EQ(this->converted(std::to_string(value) + std::string(30, '0') + "e-30"), value);
    }
}

TEST(DecNumber, is_zero_without_a_value) {
    EXPECT_EQ(DecNumber(0), DecNumber());
    EXPECT_EQ(DecNumber().toString(), "0");
    EXPECT_EQ((DecNumber() + DecNumber(7)).toString(), "7");
}

TEST(DecNumber, converts_negative_integers_toward_zero) {
    EXPECT_EQ(static_cast<int>(DecNumber(std::string("-12.999"))), -12);
    EXPECT_EQ(static_cast<char>(DecNumber(std::string("-12.999"))), -12);
    EXPECT_EQ(static_cast<long long>(DecNumber(-12.999)), -12LL);
    EXPECT_EQ(static_cast<unsigned char>(DecNumber(std::string("255.9"))), 255);
}

TEST(DecNumber, shortens_a_long_number_that_is_out_of_range) {
    const DecNumber number(std::string(5000, '7'));
    EXPECT_EQ(
        messageOf([&] { static_cast<void>(static_cast<int>(number)); }),
        "The number " + std::string(60, '7') + "... (5000 bytes) is out of the range of int.");
}

double toDouble(const std::string& text) { return static_cast<double>(DecNumber(text)); }

float toFloat(const std::string& text) { return static_cast<float>(DecNumber(text)); }

/// A number just above (or, when negative, below) `value`, which must have a fraction in its text.
std::string aLittleMore(const std::string& value) { return value + "1"; }

/// A number just nearer to zero than `value`: its last digit other than zero is made smaller by one
/// and nines follow.
std::string aLittleLess(std::string value) {
    const std::size_t at = value.find_last_of("123456789");
    --value[at];
    return value.substr(0, at + 1) + (value.find('.') < at
                                          ? std::string(5, '9')
                                          : std::string(value.find('.') - at - 1, '9') + ".9");
}

template<class Float>
bool hasEvenMantissa(Float value) {
    int exponent = 0;
    const Float mantissa = std::frexp(value, &exponent);
    const int bits = std::min(
        std::numeric_limits<Float>::digits,
        exponent - std::numeric_limits<Float>::min_exponent + std::numeric_limits<Float>::digits);
    return std::fmod(std::ldexp(mantissa, bits), Float{2}) == Float{0};
}

/// Between two neighbours the middle goes to the even one, and anything off the middle to the
/// nearer.
template<class Float, class Read>
void expectRoundedBetween(Float low, Float high, long double middle, Read read) {
    const std::string tie = exact(middle);
    ASSERT_EQ(read(tie), hasEvenMantissa(low) ? low : high) << tie;
    ASSERT_EQ(read(aLittleMore(tie)), high) << tie;
    ASSERT_EQ(read(aLittleLess(tie)), low) << tie;
    ASSERT_EQ(read("-" + aLittleMore(tie)), -high) << tie;
    ASSERT_EQ(read(exact(low)), low) << tie;
}

TEST(DecNumber, rounds_to_the_nearest_double) {
    auto random = repeatable<std::mt19937_64>(6);
    for (int round = 0; round < 1000; ++round) {
        const double low = std::fabs(randomDouble(random));
        const double high = std::nextafter(low, HUGE_VAL);
        if (std::isfinite(high)) {
            const long double middle = (static_cast<long double>(low) + high) / 2;
            expectRoundedBetween(low, high, middle, toDouble);
        }
    }
}

TEST(DecNumber, rounds_to_the_nearest_float) {
    auto random = repeatable<std::mt19937>(7);
    for (int round = 0; round < 1000; ++round) {
        float low = 0;
        const std::uint32_t bits = random() & 0x7FFFFFFFU;
        std::memcpy(&low, &bits, sizeof low);
        const float high = std::nextafter(low, HUGE_VALF);
        if (std::isfinite(low) && std::isfinite(high)) {
            const long double middle = (static_cast<long double>(low) + high) / 2;
            expectRoundedBetween(low, high, middle, toFloat);
        }
    }
}

TEST(DecNumber, rounds_a_product_of_more_bits_only_once) {
    // Rounded to 64 bits first, the product falls on the middle between two doubles.
    EXPECT_EQ(toDouble("6800125354261403e20"), 0x1.05ee69bc7b107p+119);
}

TEST(DecNumber, takes_the_limits_of_the_floating_types_and_nothing_beyond) {
    EXPECT_EQ(toDouble(exact(DBL_MAX)), DBL_MAX);
    EXPECT_EQ(toDouble(exact(-DBL_MAX)), -DBL_MAX);
    EXPECT_EQ(toFloat(exact(FLT_MAX)), FLT_MAX);
    // Half a unit above the largest double is where rounding reaches the infinity.
    const std::string doubleEdge = exact(static_cast<long double>(DBL_MAX) + std::ldexp(1.0L, 970));
    EXPECT_EQ(toDouble(aLittleLess(doubleEdge)), DBL_MAX);
    EXPECT_THROW(toDouble(doubleEdge), ko::RuntimeError);
    EXPECT_THROW(toDouble("-" + doubleEdge), ko::RuntimeError);
    const std::string floatEdge = exact(static_cast<long double>(FLT_MAX) + std::ldexp(1.0L, 103));
    EXPECT_EQ(toFloat(aLittleLess(floatEdge)), FLT_MAX);
    EXPECT_THROW(toFloat(floatEdge), ko::RuntimeError);
    EXPECT_EQ(messageOf([] { toDouble("1e309"); }),
              "The number 1e+309 is out of the range of double.");
    EXPECT_EQ(messageOf([] { toFloat("-1e39"); }),
              "The number -1e+39 is out of the range of float.");
}

TEST(DecNumber, underflows_to_the_nearest_denormal_or_zero) {
    EXPECT_EQ(toDouble("5e-324"), DBL_TRUE_MIN);
    EXPECT_EQ(toDouble("2.5e-324"), DBL_TRUE_MIN);
    EXPECT_EQ(toDouble("2.4e-324"), 0.0);
    EXPECT_EQ(toDouble("-2.5e-324"), -DBL_TRUE_MIN);
    EXPECT_EQ(toFloat("1e-45"), FLT_TRUE_MIN);
    EXPECT_EQ(toFloat("7e-46"), 0.0F);
    EXPECT_EQ(toDouble("1e-1000000000000"), 0.0);
    EXPECT_EQ(toDouble("-1e-9223372036854775808"), 0.0);
    EXPECT_EQ(toFloat("123e-9223372036854775808"), 0.0F);
    EXPECT_EQ(toDouble("0e9223372036854775807"), 0.0);
}

TEST(DecNumber, decides_huge_exponents_of_floating_types_without_scaling) {
    EXPECT_EQ(messageOf([] { toDouble("1e1000000000000"); }),
              "The number 1e+1000000000000 is out of the range of double.");
    EXPECT_EQ(messageOf([] { toFloat("-123e9223372036854775807"); }),
              "The number -1.23e+9223372036854775809 is out of the range of float.");
}

TEST(DecNumber, converts_long_digits_with_a_long_exponent_to_floating_types) {
    const std::string digits = "15" + std::string(100000, '0') + "1";
    EXPECT_EQ(toDouble(digits + "e-100002"), 1.5);
    EXPECT_EQ(toDouble(digits + "e-99702"), 1.5e300);
    EXPECT_EQ(toFloat("0." + std::string(100000, '0') + "15e100001"), 1.5F);
}

}  // namespace
