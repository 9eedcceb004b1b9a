// SPDX-License-Identifier: MIT
//
// Tests of Reader's numbers as long and double: which becomes what, the limits of both types, and
// what is said of a number that does not fit.

#include "text/yajl/Reader.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <clocale>
#include <cmath>
#include <limits>

#include "EventLog.h"

#include "support/YajlMessages.h"

namespace yajlTests {
namespace {

namespace yajl = orvid_test::yajl;

const std::string k_longMax = std::to_string(std::numeric_limits<long>::max());
const std::string k_longMin = std::to_string(std::numeric_limits<long>::min());
const std::string k_beyondMax = sizeof(long) == 8 ? "9223372036854775808" : "2147483648";
const std::string k_belowMin = sizeof(long) == 8 ? "-9223372036854775809" : "-2147483649";

double onlyReal(const std::string& number) {
    static double seen = 0;
    ReaderCallbacks callbacks = k_numeric;
    callbacks.real = [](void*, double value) {
        seen = value;
        return 1;
    };
    EXPECT_EQ(read("[" + number + "]", k_whole, callbacks).status, ReadStatus::ok) << number;
    return seen;
}

TEST(ReaderNumbers, are_text_when_the_listener_takes_text) {
    ReaderCallbacks callbacks = k_numeric;
    callbacks.number = k_textual.number;
    EXPECT_EQ(read("[1,-0,1.50,1E+999,99999999999999999999]", k_whole, callbacks).words,
              "[ n1 n-0 n1.50 n1E+999 n99999999999999999999 ] ");
}

TEST(ReaderNumbers, are_real_with_a_point_or_an_exponent) {
    EXPECT_EQ(read("[1,-1,0,-0,1.0,1e0,1E0,-0.0,0.1,12e-1]", k_whole, k_numeric).words,
              "[ i1 i-1 i0 i0 d1 d1 d1 d-0 d0.10000000000000001 d1.2 ] ");
}

TEST(ReaderNumbers, reach_to_the_limits_of_long) {
    EXPECT_EQ(read("[" + k_longMax + "," + k_longMin + "]", k_whole, k_numeric).words,
              "[ i" + k_longMax + " i" + k_longMin + " ] ");
}

TEST(ReaderNumbers, reach_to_the_limits_of_double) {
    EXPECT_EQ(onlyReal("1.7976931348623157e308"), std::numeric_limits<double>::max());
    EXPECT_EQ(onlyReal("-1.7976931348623157e308"), std::numeric_limits<double>::lowest());
    EXPECT_EQ(onlyReal("2.2250738585072014e-308"), std::numeric_limits<double>::min());
    EXPECT_EQ(onlyReal("4.9e-324"), std::numeric_limits<double>::denorm_min());
}

TEST(ReaderNumbers, become_zero_when_too_small) {
    EXPECT_EQ(onlyReal("1e-999"), 0.0);
    EXPECT_TRUE(std::signbit(onlyReal("-1e-999")));
}

TEST(ReaderNumbers, are_rounded_to_the_nearest_double) {
    EXPECT_EQ(onlyReal("9007199254740993.0"), 9007199254740992.0);
    EXPECT_EQ(onlyReal("9007199254740993.00000000000000000001"), 9007199254740994.0);
    EXPECT_EQ(onlyReal("2.2250738585072011e-308"), 0x0.fffffffffffffp-1022);
}

TEST(ReaderNumbers, may_have_any_number_of_digits) {
    for (const std::size_t digits : {61U, 62U, 63U, 64U, 65U, 5000U}) {
        EXPECT_EQ(onlyReal("1." + std::string(digits, '0')), 1.0);
        EXPECT_EQ(onlyReal("0." + std::string(digits, '0') + "1e" + std::to_string(digits + 1)),
                  1.0);
    }
}

TEST(ReaderNumbers, that_overflow_long_are_errors_at_their_first_byte) {
    for (const std::string& number : {k_beyondMax, k_belowMin, "1" + std::string(5000, '0')}) {
        const Outcome outcome = read("[1, " + number + ", 2]", k_whole, k_numeric);
        EXPECT_EQ(outcome.words, "[ i1 ");
        EXPECT_EQ(outcome.status, ReadStatus::error);
        EXPECT_EQ(outcome.message, yajl::k_integerOverflow + "\n");
        EXPECT_EQ(outcome.position, 4U);
    }
}

TEST(ReaderNumbers, that_overflow_double_are_errors_at_their_first_byte) {
    for (const std::string number :
         {"1e309", "-1e309", "1.7976931348623159e308", "1E99999999999"}) {
        const Outcome outcome = read("[1.5, " + number + ", 2]", k_whole, k_numeric);
        EXPECT_EQ(outcome.words, "[ d1.5 ");
        EXPECT_EQ(outcome.status, ReadStatus::error);
        EXPECT_EQ(outcome.message, yajl::k_floatOverflow + "\n");
        EXPECT_EQ(outcome.position, 6U);
    }
}

TEST(ReaderNumbers, that_overflow_at_the_top_level_are_errors_too) {
    const Outcome outcome = read(" 1e999 ", k_whole, k_numeric);
    EXPECT_EQ(outcome.status, ReadStatus::error);
    EXPECT_EQ(outcome.position, 1U);
}

TEST(ReaderNumbers, that_overflow_keep_their_place_when_they_are_cut) {
    EventLog log;
    Reader reader(k_numeric, &log);
    feed(reader, "[1, 999999999");
    EXPECT_EQ(feed(reader, "99999999999, 2]"), ReadStatus::error);
    EXPECT_EQ(reader.position(), 4U);
    EXPECT_EQ(reader.error(true, "99999999999, 2]", 15),
              yajl::k_integerOverflow + "\n" + std::string(40, ' ') + "99999999999, 2]\n" +
                  std::string(21, ' ') + "(right here) ------^\n");
}

TEST(ReaderNumbers, that_overflow_fail_for_good) {
    EventLog log;
    Reader reader(k_numeric, &log);
    feed(reader, "[1e999]");
    EXPECT_EQ(feed(reader, ", 1]"), ReadStatus::error);
    EXPECT_EQ(reader.error(false, ", 1]", 4), yajl::k_floatOverflow + "\n");
    EXPECT_EQ(reader.error(true, ", 1]", 4), yajl::k_floatOverflow + "\n" + std::string(40, ' ') +
                                                 ", 1]\n" + std::string(21, ' ') +
                                                 "(right here) ------^\n");
    EXPECT_EQ(reader.position(), 1U);
    EXPECT_EQ(log.words, "[ ");
}

TEST(ReaderNumbers, do_not_mind_a_stale_error_number) {
    errno = ERANGE;
    const Outcome outcome = read("[" + k_longMax + "," + k_longMin + ",1.5]", k_whole, k_numeric);
    EXPECT_EQ(outcome.status, ReadStatus::ok);
}

TEST(ReaderNumbers, stop_when_their_callback_says_so) {
    for (const std::string number : {"1", "1.5"}) {
        EventLog log;
        log.special = 1;
        log.reaction = Reaction::stop;
        Reader reader(k_numeric, &log);
        EXPECT_EQ(feed(reader, "[" + number + ",2]"), ReadStatus::clientCanceled);
        EXPECT_EQ(reader.position(), 1 + number.size());
    }
}

TEST(ReaderNumbers, have_a_decimal_point_in_every_locale) {
    if (std::setlocale(LC_NUMERIC, "de_DE.UTF-8") == nullptr) {
        GTEST_SKIP() << "no locale with a decimal comma is installed";
    }
    const double value = onlyReal("1.5");
    std::setlocale(LC_NUMERIC, "C");
    EXPECT_EQ(value, 1.5);
}

}  // namespace
}  // namespace yajlTests
