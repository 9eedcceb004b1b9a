// SPDX-License-Identifier: MIT
//
// Tests of ko::DecNumber: how it is made, compared and written. What it computes on a big-number
// library is compared with schoolbook arithmetic on digit strings and with printf's exact output.

#include <ko/DecNumber.h>

#include <gtest/gtest.h>

#include <ko/Exception.h>

#include "DecNumberSupport.h"

#include <algorithm>
#include <cfloat>
#include <cmath>
#include <limits>
#include <memory>
#include <random>
#include <sstream>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace {

using DecNumberSupport::exact;
using DecNumberSupport::messageOf;
using DecNumberSupport::randomDouble;
using DecNumberSupport::repeatable;
using ko::DecNumber;

std::string written(const DecNumber& number) {
    std::ostringstream out;
    number.writeTo(out);
    return out.str();
}

std::string rewritten(const std::string& text) { return written(DecNumber(text)); }

int signOf(int value) { return (value > 0) - (value < 0); }

int compared(const std::string& left, const std::string& right) {
    return signOf(DecNumber(left).compare(DecNumber(right)));
}

std::string readError(const std::string& text) {
    return messageOf([&] { DecNumber number(text); });
}

TEST(DecNumber, reads_every_form_it_documents) {
    const std::vector<std::pair<std::string, std::string>> samples = {
        {"0", "0"},           {"-0", "0"},
        {"+0", "0"},          {"000", "0"},
        {"0.000", "0"},       {"7", "7"},
        {"007", "7"},         {"-007", "-7"},
        {"+7", "7"},          {"5.", "5"},
        {"-5.", "-5"},        {".5", "0.5"},
        {"-.5", "-0.5"},      {"+.5", "0.5"},
        {"00.50", "0.50"},    {"1e2", "100"},
        {"1E2", "100"},       {"1e+2", "100"},
        {"1e-2", "0.01"},     {"1e002", "100"},
        {"1.5e1", "15"},      {"1.25e1", "12.5"},
        {"5.e1", "50"},       {".5e1", "5"},
        {"-1.5e-1", "-0.15"}, {"1e0", "1"},
        {"1e-0", "1"},        {"12345678901234567890123", "12345678901234567890123"},
    };
    for (const auto& [text, expected] : samples) {
        EXPECT_EQ(rewritten(text), expected) << text;
    }
}

TEST(DecNumber, rejects_text_that_is_no_decimal_number_and_shows_it) {
    const std::vector<std::string> samples = {
        "",   " ",    "abc",  "1e",  "1e+",  "1e-",      "--1",       "+-1",      "-",
        "+",  ".",    "-.",   "e5",  ".e5",  "1..2",     "1.2.3",     "1e5.0",    "1e5e5",
        " 1", "1 ",   "1\n",  "1,5", "0x10", "1_000",    "nan",       "inf",      "-inf",
        "1f", "1 e5", "1e 5", "1-",  "1+1",  "\xC2\xA0", "1\xC2\xA0", "\xD9\xA1",
    };
    for (const std::string& text : samples) {
        EXPECT_THROW(DecNumber number(text), ko::RuntimeError) << '"' << text << '"';
    }
    EXPECT_EQ(readError(""), "Not a decimal number: \"\"");
    EXPECT_EQ(readError("abc"), "Not a decimal number: \"abc\"");
    EXPECT_EQ(readError("1\n"), "Not a decimal number: \"1\\x0A\"");
    EXPECT_EQ(readError("1\x1F \x7F"), "Not a decimal number: \"1\\x1F \\x7F\"");
}

TEST(DecNumber, rejects_an_embedded_nul) {
    EXPECT_EQ(readError(std::string("1\0x", 3)), "Not a decimal number: \"1\\x00x\"");
    EXPECT_EQ(readError(std::string("12\0", 3)), "Not a decimal number: \"12\\x00\"");
    EXPECT_EQ(readError(std::string("1e5\0", 4)), "Not a decimal number: \"1e5\\x00\"");
}

TEST(DecNumber, shortens_a_long_text_in_its_message) {
    const std::string sixty(60, 'x');
    EXPECT_EQ(readError(sixty), "Not a decimal number: \"" + sixty + "\"");
    EXPECT_EQ(readError(sixty + "y"), "Not a decimal number: \"" + sixty + "... (61 bytes)\"");
    EXPECT_EQ(readError(std::string(1000000, 'x')),
              "Not a decimal number: \"" + sixty + "... (1000000 bytes)\"");
}

TEST(DecNumber, shortens_a_long_text_between_two_characters) {
    const std::string text = std::string(59, 'x') + "\xC3\xA4 and so on";
    EXPECT_EQ(readError(text),
              "Not a decimal number: \"" + std::string(59, 'x') + "... (71 bytes)\"");
}

TEST(DecNumber, reads_exponents_up_to_64_bits) {
    EXPECT_EQ(rewritten("1e9223372036854775807"), "1e+9223372036854775807");
    EXPECT_EQ(rewritten("1e-9223372036854775808"), "1e-9223372036854775808");
    EXPECT_EQ(rewritten("12e9223372036854775807"), "1.2e+9223372036854775808");
    EXPECT_EQ(rewritten("1.2e9223372036854775808"), "1.2e+9223372036854775808");
    EXPECT_EQ(rewritten("12e-9223372036854775808"), "1.2e-9223372036854775807");
    EXPECT_EQ(rewritten("1.2e-9223372036854775807"), "1.2e-9223372036854775807");
    EXPECT_EQ(rewritten("1e" + std::string(1000, '0') + "9223372036854775807"),
              "1e+9223372036854775807");
}

TEST(DecNumber, rejects_an_exponent_beyond_64_bits) {
    EXPECT_EQ(readError("1e9223372036854775808"),
              "The exponent does not fit 64 bits: \"1e9223372036854775808\"");
    for (const char* text :
         {"1e-9223372036854775809", "1.0e-9223372036854775808", "0.1e-9223372036854775808",
          "1.5e9223372036854775809", "1e18446744073709551615", "1e18446744073709551616",
          "1e-18446744073709551615", "1.5e-18446744073709551615", "1.5e-18446744073709551616",
          "-1e99999999999999999999999999", "1e-99999999999999999999999999"}) {
        EXPECT_THROW(DecNumber number{std::string(text)}, ko::RuntimeError) << text;
    }
    EXPECT_THROW(DecNumber number("1e" + std::string(100000, '9')), ko::RuntimeError);
}

TEST(DecNumber, takes_zero_with_any_exponent) {
    EXPECT_EQ(rewritten("0e99999999999999999999999999"), "0");
    EXPECT_EQ(rewritten("-0.00e-99999999999999999999999999"), "0");
    EXPECT_EQ(compared("0e9223372036854775807", "0e-99999999999999999999"), 0);
}

TEST(DecNumber, reads_very_long_text_exactly) {
    std::string digits;
    for (int i = 0; i < 200000; ++i) {
        digits += static_cast<char>('1' + i % 97 * (i % 89) % 9);
    }
    EXPECT_EQ(rewritten(digits), digits);
    EXPECT_EQ(rewritten("-" + digits + "." + digits), "-" + digits + "." + digits);
    const std::string zeros(200000, '0');
    EXPECT_EQ(rewritten(zeros + "1" + zeros), "1" + zeros);
    EXPECT_EQ(compared("1" + zeros, "1e200000"), 0);
    EXPECT_EQ(compared("0." + zeros + "1", "1e-200001"), 0);
    EXPECT_EQ(compared("1." + zeros, "1"), 0);
    EXPECT_EQ(compared("1." + zeros + "1", "1"), 1);
}

TEST(DecNumber, is_built_exactly_from_integers) {
    using Signed = std::numeric_limits<long long>;
    for (const long long value : {0LL, 1LL, -1LL, 9LL, 10LL, -10LL, 99LL, 100LL, 4294967295LL,
                                  4294967296LL, -4294967296LL, 2147483648LL, 999999999999999999LL,
                                  1000000000000000000LL, Signed::max(), Signed::min()}) {
        EXPECT_EQ(written(DecNumber(value)), std::to_string(value));
        EXPECT_EQ(DecNumber(value).compare(DecNumber(std::to_string(value))), 0);
    }
    for (const unsigned long long value :
         {0ULL, 4294967296ULL, 9223372036854775808ULL, 10000000000000000000ULL,
          std::numeric_limits<unsigned long long>::max()}) {
        EXPECT_EQ(written(DecNumber(value)), std::to_string(value));
        EXPECT_EQ(DecNumber(value).compare(DecNumber(std::to_string(value))), 0);
    }
}

TEST(DecNumber, is_built_exactly_from_doubles) {
    EXPECT_EQ(written(DecNumber(0.0)), "0");
    EXPECT_EQ(written(DecNumber(-0.0)), "0");
    EXPECT_EQ(written(DecNumber(1.5)), "1.5");
    EXPECT_EQ(written(DecNumber(-0.375)), "-0.375");
    EXPECT_EQ(written(DecNumber(3.0)), "3");
    EXPECT_EQ(written(DecNumber(9007199254740992.0)), "9007199254740992");
    EXPECT_EQ(written(DecNumber(1e22)), "10000000000000000000000");
    EXPECT_EQ(written(DecNumber(0.1)), "0.1000000000000000055511151231257827021181583404541015625");
    for (const double value : {DBL_MAX, -DBL_MAX, DBL_MIN, DBL_TRUE_MIN, -DBL_TRUE_MIN,
                               DBL_MIN - DBL_TRUE_MIN, DBL_EPSILON, 1 + DBL_EPSILON, 1e308}) {
        EXPECT_EQ(DecNumber(value).compare(DecNumber(exact(value))), 0) << value;
    }
}

TEST(DecNumber, is_not_built_from_nan_and_infinities) {
    using Limits = std::numeric_limits<double>;
    EXPECT_EQ(messageOf([] { DecNumber number(Limits::quiet_NaN()); }), "Not a finite number: nan");
    EXPECT_EQ(messageOf([] { DecNumber number(Limits::infinity()); }), "Not a finite number: inf");
    EXPECT_EQ(messageOf([] { DecNumber number(-Limits::infinity()); }),
              "Not a finite number: -inf");
}

TEST(DecNumber, copies_are_independent) {
    auto original = std::make_unique<DecNumber>(std::string("1.25"));
    DecNumber copy(*original);
    DecNumber assigned(7LL);
    assigned = *original;
    *original = DecNumber(8LL);
    EXPECT_EQ(written(*original), "8");
    original.reset();
    EXPECT_EQ(written(copy), "1.25");
    EXPECT_EQ(written(assigned), "1.25");
    const DecNumber& same = copy;
    copy = same;
    EXPECT_EQ(written(copy), "1.25");
}

/// Groups of equal numbers, in ascending order.
std::vector<std::vector<std::string>> ascending() {
    const std::string nines(400, '9');
    const std::string zeros(400, '0');
    return {
        {"-1e9223372036854775807", "-0.1e9223372036854775808"},
        {"-1e1000000000", "-10e999999999", "-0.001e1000000003"},
        {"-18446744073709551616"},
        {"-100.01"},
        {"-100", "-1e2", "-100.000"},
        {"-99.999"},
        {"-1", "-1.0", "-10e-1"},
        {"-0.5", "-.5", "-5e-1"},
        {"-1e-1000000000"},
        {"0", "-0", "0.000", "0e9223372036854775807", "-0e-9223372036854775808"},
        {"1e-9223372036854775808", "0.1e-9223372036854775807"},
        {"12e-9223372036854775808"},
        {"1e-1000000000", "0.1e-999999999"},
        {"0.0999"},
        {"0.1", "0.10", "1e-1", "100e-3"},
        {"0.1000000000000000055511151231257827021181583404541015625"},
        {"0." + nines},
        {"1", "1.0", "10e-1", "1e0", "0.1e1", "1." + zeros, "1" + zeros + "e-400"},
        {"1." + zeros + "1"},
        {"9.99"},
        {"10", "1e1", "10.0"},
        {"11"},
        {"1.2e1", "12", "12.0"},
        {"9007199254740992"},
        {"9007199254740993"},
        {"18446744073709551615"},
        {"18446744073709551616", "1.8446744073709551616e19"},
        {nines},
        {"1" + zeros, "1e400"},
        {"1" + zeros + ".1"},
        {"1e1000000000", "10e999999999"},
        {"1.1e1000000000"},
        {"1e9223372036854775807", "0.1e9223372036854775808"},
        {"12e9223372036854775807", "1.2e9223372036854775808", "1.20e9223372036854775808"},
        {"123e9223372036854775807"},
    };
}

TEST(DecNumber, compares_all_pairs_of_a_table_in_its_order) {
    const std::vector<std::vector<std::string>> groups = ascending();
    for (std::size_t left = 0; left < groups.size(); ++left) {
        for (std::size_t right = 0; right < groups.size(); ++right) {
            const int expected = (left > right) - (left < right);
            for (const std::string& leftText : groups[left]) {
                for (const std::string& rightText : groups[right]) {
                    EXPECT_EQ(compared(leftText, rightText), expected)
                        << leftText << " against " << rightText;
                }
            }
        }
    }
}

TEST(DecNumber, compares_huge_exponents_without_scaling) {
    // Scaling would need a billion digits and more, which no machine of the tests has the memory
    // for.
    EXPECT_EQ(compared("1e1000000000000", "1e-1000000000000"), 1);
    EXPECT_EQ(compared("1e9223372036854775807", "1e-9223372036854775808"), 1);
    EXPECT_EQ(compared("1e-9223372036854775808", "1e9223372036854775807"), -1);
    EXPECT_EQ(compared("-1e9223372036854775807", "-1e-9223372036854775808"), -1);
    EXPECT_EQ(compared("1e9223372036854775807", "1"), 1);
    EXPECT_EQ(compared("-1e9223372036854775807", "1e9223372036854775807"), -1);
    EXPECT_EQ(compared("-1e-9223372036854775808", "-1"), 1);
}

/// A decimal as a child writes it: sign, digits, power of ten of the last digit.
struct Schoolbook {
    bool isNegative;
    std::string digits;
    int exponent;

    std::string text(std::mt19937& random) const {
        const std::string sign = isNegative ? "-" : "";
        const auto fraction = static_cast<int>(random() % (digits.length() + 1));
        std::string body = digits;
        body.insert(body.length() - static_cast<std::size_t>(fraction), ".");
        return sign + (fraction == 0 ? digits : body) + "e" + std::to_string(exponent + fraction);
    }

    bool isZero() const { return digits.find_first_not_of('0') == std::string::npos; }
};

int comparedBySchoolbook(const Schoolbook& left, const Schoolbook& right) {
    const auto signedness = [](const Schoolbook& number) {
        return number.isZero() ? 0 : number.isNegative ? -1 : 1;
    };
    if (signedness(left) != signedness(right)) {
        return signedness(left) < signedness(right) ? -1 : 1;
    }
    const int scale = std::min(left.exponent, right.exponent);
    std::string a = left.digits + std::string(static_cast<std::size_t>(left.exponent - scale), '0');
    std::string b =
        right.digits + std::string(static_cast<std::size_t>(right.exponent - scale), '0');
    const std::size_t width = std::max(a.length(), b.length());
    a.insert(0, width - a.length(), '0');
    b.insert(0, width - b.length(), '0');
    return signedness(left) * signOf(a.compare(b));
}

Schoolbook randomNumber(std::mt19937& random) {
    Schoolbook number{random() % 2 == 0, "", static_cast<int>(random() % 60) - 30};
    const std::size_t length = random() % 40 + 1;
    const bool isSparse = random() % 2 == 0;
    for (std::size_t i = 0; i < length; ++i) {
        number.digits +=
            static_cast<char>('0' + (isSparse && random() % 4 != 0 ? 0 : random() % 10));
    }
    return number;
}

/// A number of the same magnitude, so that the last digits have to decide.
Schoolbook neighbour(const Schoolbook& number, std::mt19937& random) {
    Schoolbook near = number;
    const std::size_t zeros = random() % 12;
    near.digits.append(zeros, '0');
    near.exponent -= static_cast<int>(zeros);
    char& last = near.digits[near.digits.length() - 1 -
                             random() % std::min<std::size_t>(3, near.digits.length())];
    last = static_cast<char>('0' + random() % 10);
    return near;
}

TEST(DecNumber, compares_random_numbers_as_schoolbook_arithmetic_does) {
    auto random = repeatable<std::mt19937>(1);
    int equal = 0;
    for (int round = 0; round < 20000; ++round) {
        const Schoolbook left = randomNumber(random);
        const Schoolbook right = round % 2 == 0 ? randomNumber(random) : neighbour(left, random);
        const std::string one = left.text(random);
        const std::string other = right.text(random);
        const int expected = comparedBySchoolbook(left, right);
        equal += expected == 0;
        ASSERT_EQ(compared(one, other), expected) << one << " against " << other;
        ASSERT_EQ(compared(other, one), -expected) << other << " against " << one;
    }
    EXPECT_GT(equal, 100);
}

TEST(DecNumber, compares_random_doubles_as_the_processor_does) {
    auto random = repeatable<std::mt19937_64>(2);
    for (int round = 0; round < 3000; ++round) {
        const double left = randomDouble(random);
        const double right = round % 2 == 0 ? randomDouble(random)
                                            : std::nextafter(left, round % 4 == 1 ? HUGE_VAL : 0.0);
        if (std::isfinite(right)) {
            ASSERT_EQ(signOf(DecNumber(left).compare(DecNumber(right))),
                      (left > right) - (left < right))
                << exact(left) << " against " << exact(right);
        }
    }
}

TEST(DecNumber, takes_random_doubles_as_exactly_as_printf_writes_them) {
    auto random = repeatable<std::mt19937_64>(3);
    for (int round = 0; round < 500; ++round) {
        const double value = randomDouble(random);
        ASSERT_EQ(DecNumber(value).compare(DecNumber(exact(value))), 0) << exact(value);
        ASSERT_EQ(static_cast<double>(DecNumber(value)), value);
    }
}

TEST(DecNumber, writes_plain_or_with_an_exponent_by_one_rule) {
    const std::vector<std::pair<std::string, std::string>> samples = {
        {"12", "12"},
        {"-5", "-5"},
        {"100", "100"},
        {"1.50", "1.50"},
        {"1.0", "1.0"},
        {"10e-1", "1.0"},
        {"0.1", "0.1"},
        {"-0.00001", "-0.00001"},
        {"0.000001", "0.000001"},
        {"0.00000123", "0.00000123"},
        {"0.0000001", "1e-7"},
        {"-0.000000123", "-1.23e-7"},
        {"1e18", "1000000000000000000"},
        {"12e17", "1200000000000000000"},
        {"1e19", "1e+19"},
        {"-12e18", "-1.2e+19"},
        {"120e17", "1.20e+19"},
        {"12345678901234567890e1", "1.2345678901234567890e+20"},
        {"12345678901234567890123.5", "12345678901234567890123.5"},
        {"1e1000000000", "1e+1000000000"},
        {"-1.5e-1000000000", "-1.5e-1000000000"},
    };
    for (const auto& [text, expected] : samples) {
        EXPECT_EQ(rewritten(text), expected) << text;
    }
}

TEST(DecNumber, writes_an_integer_of_any_length_as_it_was_read) {
    for (const std::size_t length : {18U, 19U, 20U, 30U, 1000U}) {
        const std::string nines(length, '9');
        EXPECT_EQ(rewritten(nines), nines);
        EXPECT_EQ(rewritten("-" + nines), "-" + nines);
        EXPECT_EQ(rewritten("1" + std::string(length, '0')), "1" + std::string(length, '0'));
    }
}

bool isJsonNumber(const std::string& text) {
    std::size_t at = text.compare(0, 1, "-") == 0 ? 1 : 0;
    const auto digits = [&] {
        const std::size_t start = at;
        while (at < text.length() && text[at] >= '0' && text[at] <= '9') {
            ++at;
        }
        return at - start;
    };
    const std::size_t whole = at;
    const std::size_t length = digits();
    if (length == 0 || (length > 1 && text[whole] == '0')) {
        return false;
    }
    if (at < text.length() && text[at] == '.' && (++at, digits() == 0)) {
        return false;
    }
    if (at < text.length() && text[at] == 'e') {
        ++at;
        at += at < text.length() && (text[at] == '+' || text[at] == '-');
        return digits() > 0 && at == text.length();
    }
    return at == text.length();
}

TEST(DecNumber, writes_a_json_number_that_reads_back_equal) {
    std::vector<std::string> texts;
    for (const std::vector<std::string>& group : ascending()) {
        texts.insert(texts.end(), group.begin(), group.end());
    }
    auto random = repeatable<std::mt19937>(4);
    for (int round = 0; round < 5000; ++round) {
        texts.push_back(randomNumber(random).text(random));
    }
    for (const std::string& text : texts) {
        const DecNumber number(text);
        const std::string again = written(number);
        ASSERT_TRUE(isJsonNumber(again)) << text << " gave " << again;
        ASSERT_EQ(number.compare(DecNumber(again)), 0) << text << " gave " << again;
        ASSERT_EQ(rewritten(again), again) << text;
        ASSERT_LE(again.length(), text.length() + 30) << text << " gave " << again;
    }
}

TEST(DecNumber, writes_the_same_whatever_the_state_of_the_stream) {
    std::ostringstream out;
    out << std::hex << std::showpos << std::showpoint;
    out.width(20);
    out.fill('*');
    EXPECT_EQ(&DecNumber(255LL).writeTo(out), &out);
    DecNumber(std::string("1e300")).writeTo(out);
    EXPECT_EQ(out.str(), "2551e+300");
}

TEST(DecNumber, is_made_of_every_integer_type) {
    EXPECT_EQ(written(DecNumber(5)), "5");
    EXPECT_EQ(written(DecNumber(-5)), "-5");
    EXPECT_EQ(written(DecNumber(5U)), "5");
    EXPECT_EQ(written(DecNumber(short{-3})), "-3");
    EXPECT_EQ(written(DecNumber(std::numeric_limits<unsigned short>::max())), "65535");
    EXPECT_EQ(written(DecNumber(-2147483648L)), "-2147483648");
    EXPECT_EQ(written(DecNumber(4294967295UL)), "4294967295");
    EXPECT_EQ(written(DecNumber('A')), "65");
    EXPECT_EQ(written(DecNumber(std::size_t{7})), "7");
    EXPECT_EQ(written(DecNumber(0.5F)), "0.5");
    static_assert(!std::is_constructible_v<DecNumber, bool>);
}

TEST(DecNumber, is_written_by_an_operator_and_as_a_string) {
    std::ostringstream out;
    out << DecNumber("1.50") << ' ' << DecNumber("-1e100");
    EXPECT_EQ(out.str(), "1.50 -1e+100");
    EXPECT_EQ(DecNumber("007").toString(), "7");
}

}  // namespace
