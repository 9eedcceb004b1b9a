// SPDX-License-Identifier: MIT
//
// The errors for numbers that do not fit: texts, fields, copies. What is out of range is tested
// with the conversions (NumberText, NumberAccess).

#include <ko/Orvid/ValueOutOfRange.h>

#include <gtest/gtest.h>
#include <ko/Orvid/Number.h>

#include <limits>
#include <memory>
#include <string>
#include <type_traits>

#include "support/Document.h"
#include "support/ErrorText.h"
#include "support/GroupingLocale.h"
#include "support/NumberErrors.h"
#include "support/NumberProbe.h"

namespace {

using ko::Orvid::Number;
using ko::Orvid::NumberProbe;
using ko::Orvid::ValueOutOfRange;
using orvid_test::generated;
using orvid_test::ReadError;
using orvid_test::TextError;
using orvid_test::thrownBy;

static_assert(std::is_base_of_v<ko::Orvid::Exception, TextError>);
static_assert(std::is_base_of_v<ko::Orvid::Exception, ReadError<int>>);

/// The text of the error for the number `text` and the limits of T.
template<class T>
std::string textFor(const std::string& text) {
    using Limits = std::numeric_limits<T>;
    return generated(ReadError<T>(Number(text), Limits::min(), Limits::max()));
}

TEST(ValueOutOfRange, of_text_prints_value_and_limits) {
    const TextError error("99999999999999999999", "-9223372036854775808", "9223372036854775807");
    EXPECT_EQ(generated(error),
              "Value out of range! Value: 99999999999999999999"
              " Min: -9223372036854775808 Max: 9223372036854775807");
    EXPECT_EQ(error.what(), generated(error));
}

TEST(ValueOutOfRange, of_text_keeps_what_it_was_given) {
    const TextError error("value", "min", "max");
    EXPECT_EQ(error.value(), "value");
    EXPECT_EQ(error.min(), "min");
    EXPECT_EQ(error.max(), "max");
    EXPECT_EQ(error.elementPath(), nullptr);
}

TEST(ValueOutOfRange, does_not_print_its_cause) {
    const ko::Exception cause("because");
    EXPECT_EQ(generated(TextError("v", "a", "b", &cause)),
              "Value out of range! Value: v Min: a Max: b");
    EXPECT_EQ(generated(ReadError<int>(Number(3), 1, 2, &cause)),
              "Value out of range! Value: 3 Min: 1 Max: 2");
}

TEST(ValueOutOfRange, prints_integral_limits_as_numbers) {
    EXPECT_EQ(textFor<short>("40000"), "Value out of range! Value: 40000 Min: -32768 Max: 32767");
    EXPECT_EQ(textFor<unsigned short>("-1"), "Value out of range! Value: -1 Min: 0 Max: 65535");
    EXPECT_EQ(textFor<int>("3000000000"),
              "Value out of range! Value: 3000000000 Min: -2147483648 Max: 2147483647");
    EXPECT_EQ(textFor<unsigned int>("-1"), "Value out of range! Value: -1 Min: 0 Max: 4294967295");
    EXPECT_EQ(textFor<long long>("1e30"),
              "Value out of range! Value: 1e30 Min: -9223372036854775808 Max: 9223372036854775807");
    EXPECT_EQ(textFor<unsigned long long>("-1"),
              "Value out of range! Value: -1 Min: 0 Max: 18446744073709551615");
}

TEST(ValueOutOfRange, prints_the_limits_of_long_in_the_width_of_the_platform) {
    if (sizeof(long) == sizeof(int)) {
        EXPECT_EQ(textFor<long>("-1"), textFor<int>("-1"));
        EXPECT_EQ(textFor<unsigned long>("-1"), textFor<unsigned int>("-1"));
    } else {
        EXPECT_EQ(textFor<long>("-1"), textFor<long long>("-1"));
        EXPECT_EQ(textFor<unsigned long>("-1"), textFor<unsigned long long>("-1"));
    }
}

TEST(ValueOutOfRange, prints_limits_of_the_character_types_as_raw_bytes) {
    EXPECT_EQ(textFor<char>("128"), "Value out of range! Value: 128 Min: \x80 Max: \x7F");
    const std::string nul(1, '\0');
    EXPECT_EQ(textFor<unsigned char>("256"),
              "Value out of range! Value: 256 Min: " + nul + " Max: \xFF");
}

TEST(ValueOutOfRange, shows_its_text_up_to_the_first_null_byte_in_what) {
    EXPECT_STREQ(ReadError<unsigned char>(Number("256"), 0, 255).what(),
                 "Value out of range! Value: 256 Min: ");
}

TEST(ValueOutOfRange, prints_floating_limits_with_six_digits) {
    EXPECT_EQ(textFor<float>("0"),
              "Value out of range! Value: 0 Min: 1.17549e-38 Max: 3.40282e+38");
    EXPECT_EQ(textFor<double>("0"),
              "Value out of range! Value: 0 Min: 2.22507e-308 Max: 1.79769e+308");
}

TEST(ValueOutOfRange, prints_a_double_with_six_digits) {
    EXPECT_EQ(generated(ReadError<int>(Number(1234567.5), 1, 2)),
              "Value out of range! Value: 1.23457e+06 Min: 1 Max: 2");
}

TEST(ValueOutOfRange, prints_the_text_of_a_number_as_it_was_read) {
    EXPECT_EQ(generated(ReadError<int>(Number("3.000E+99"), 1, 2)),
              "Value out of range! Value: 3.000E+99 Min: 1 Max: 2");
}

TEST(ValueOutOfRange, keeps_a_copy_of_the_number_with_what_it_held) {
    const Number textOnly("300");
    const ReadError<char> first(textOnly, 0, 1);
    EXPECT_EQ(NumberProbe::heldKind(first.value()), Number::ebNone);
    EXPECT_EQ(NumberProbe::heldText(first.value()), "300");
    const Number binaryOnly(300);
    const ReadError<char> second(binaryOnly, 0, 1);
    EXPECT_EQ(NumberProbe::heldKind(second.value()), Number::ebLongLong);
    EXPECT_EQ(NumberProbe::heldText(second.value()), "");
}

TEST(ValueOutOfRange, of_a_failed_read_holds_what_the_number_held_then) {
    const auto fromText = thrownBy<ReadError<char>>([] { Number("300").toChar(); });
    EXPECT_EQ(NumberProbe::heldKind(fromText.value()), Number::ebULongLong);
    EXPECT_EQ(NumberProbe::heldText(fromText.value()), "300");
    const auto fromBinary = thrownBy<ReadError<char>>([] { Number(300).toChar(); });
    EXPECT_EQ(NumberProbe::heldKind(fromBinary.value()), Number::ebLongLong);
    EXPECT_EQ(NumberProbe::heldText(fromBinary.value()), "");
}

TEST(ValueOutOfRange, outlives_the_number) {
    auto number = std::make_unique<Number>(300);
    const auto error = thrownBy<ReadError<short>>([&] {
        number->set(70000);
        number->toShort();
    });
    number.reset();
    EXPECT_EQ(generated(error), "Value out of range! Value: 70000 Min: -32768 Max: 32767");
}

TEST(ValueOutOfRange, text_does_not_depend_on_the_locale) {
    const orvid_test::GroupingLocale locale;
    EXPECT_EQ(textFor<int>("3000000000"),
              "Value out of range! Value: 3000000000 Min: -2147483648 Max: 2147483647");
    EXPECT_EQ(generated(ReadError<float>(Number(0.5), std::numeric_limits<float>::min(),
                                         std::numeric_limits<float>::max())),
              "Value out of range! Value: 0.5 Min: 1.17549e-38 Max: 3.40282e+38");
}

// Copies, the same for each of the thirteen types.

template<class Error>
class ValueOutOfRangeCopies : public testing::Test {};

using Errors =
    testing::Types<TextError, ReadError<char>, ReadError<unsigned char>, ReadError<short>,
                   ReadError<unsigned short>, ReadError<int>, ReadError<unsigned int>,
                   ReadError<long>, ReadError<unsigned long>, ReadError<long long>,
                   ReadError<unsigned long long>, ReadError<float>, ReadError<double>>;

class ErrorNames {
public:
    template<class Error>
    static std::string GetName(int position) {
        static const char* const names[] = {
            "text",         "char", "unsigned_char", "short",     "unsigned_short",     "int",
            "unsigned_int", "long", "unsigned_long", "long_long", "unsigned_long_long", "float",
            "double"};
        return names[position];
    }
};

TYPED_TEST_SUITE(ValueOutOfRangeCopies, Errors, ErrorNames);

/// An error whose value and limits are the digits `value`, `min` and `max`.
template<class Value, class Limit>
ValueOutOfRange<Value, Limit> makeError(const ValueOutOfRange<Value, Limit>*, char value, char min,
                                        char max) {
    if constexpr (std::is_same_v<Limit, std::string>) {
        return {std::string(1, value), std::string(1, min), std::string(1, max)};
    } else {
        const auto limit = [](char digit) {
            return static_cast<Limit>(sizeof(Limit) == 1 ? digit : digit - '0');
        };
        return {Value(std::string(1, value)), limit(min), limit(max)};
    }
}

template<class Error>
Error makeError(char value, char min, char max) {
    return makeError(static_cast<const Error*>(nullptr), value, min, max);
}

TYPED_TEST(ValueOutOfRangeCopies, clone_has_the_same_type_and_text) {
    auto original = std::make_unique<TypeParam>(makeError<TypeParam>('9', '1', '2'));
    const std::unique_ptr<ko::Exception> clone(
        static_cast<const ko::Exception&>(*original).clone());
    original.reset();
    EXPECT_NE(dynamic_cast<const TypeParam*>(clone.get()), nullptr);
    EXPECT_EQ(generated(*clone), "Value out of range! Value: 9 Min: 1 Max: 2");
}

TYPED_TEST(ValueOutOfRangeCopies, copy_has_the_same_text) {
    auto original = std::make_unique<TypeParam>(makeError<TypeParam>('9', '1', '2'));
    const TypeParam copy(*original);
    original.reset();
    EXPECT_EQ(generated(copy), "Value out of range! Value: 9 Min: 1 Max: 2");
}

TYPED_TEST(ValueOutOfRangeCopies, assignment_takes_over_value_and_limits) {
    auto target = makeError<TypeParam>('9', '1', '2');
    EXPECT_EQ(&(target = makeError<TypeParam>('3', '4', '5')), &target);
    EXPECT_EQ(generated(target), "Value out of range! Value: 3 Min: 4 Max: 5");
}

TYPED_TEST(ValueOutOfRangeCopies, assignment_to_itself_changes_nothing) {
    auto error = makeError<TypeParam>('9', '1', '2');
    const auto& same = error;
    error = same;
    EXPECT_EQ(generated(error), "Value out of range! Value: 9 Min: 1 Max: 2");
}

TYPED_TEST(ValueOutOfRangeCopies, is_caught_as_its_own_type_and_as_its_bases) {
    const auto raise = [] { throw makeError<TypeParam>('9', '1', '2'); };
    EXPECT_THROW(raise(), TypeParam);
    EXPECT_THROW(raise(), ko::Orvid::Exception);
    EXPECT_THROW(raise(), ko::Exception);
}

}  // namespace
