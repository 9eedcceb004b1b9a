// SPDX-License-Identifier: MIT
//
// The operators of ko::DecNumber: order, sums, differences and products.

#include <ko/DecNumber.h>

#include <gtest/gtest.h>

#include "DecNumberSupport.h"

#include <string>

namespace {

using DecNumberSupport::messageOf;
using ko::DecNumber;

TEST(DecNumberArithmetic, has_operators_of_order) {
    const DecNumber small("1.0");
    const DecNumber same("10e-1");
    const DecNumber large("1.00000000000000000000000000001");
    EXPECT_TRUE(small == same);
    EXPECT_FALSE(small != same);
    EXPECT_TRUE(small != large);
    EXPECT_TRUE(small < large);
    EXPECT_FALSE(small < same);
    EXPECT_TRUE(small <= same);
    EXPECT_TRUE(large > small);
    EXPECT_TRUE(large >= small);
    EXPECT_FALSE(small >= large);
}

TEST(DecNumberArithmetic, adds_subtracts_and_multiplies_exactly) {
    const auto d = [](const char* text) { return DecNumber(std::string(text)); };
    EXPECT_EQ((d("0.1") + d("0.2")).toString(), "0.3");
    EXPECT_EQ((d("0.5") + d("0.50")).toString(), "1.00");
    EXPECT_EQ((d("99999999999999999999") + d("1")).toString(), "100000000000000000000");
    EXPECT_EQ((d("1") - d("1e-30")).toString(), "0.999999999999999999999999999999");
    EXPECT_EQ((d("-5") + d("5")).toString(), "0");
    EXPECT_EQ((d("0.5") - d("0.5")).toString(), "0");
    EXPECT_EQ((d("1.5") * d("2.0")).toString(), "3.00");
    EXPECT_EQ((d("-1e50") * d("1e-50")).toString(), "-1");
    EXPECT_EQ(
        (d("123456789012345678901234567890") * d("-987654321098765432109876543210")).toString(),
        "-121932631137021795226185032733622923332237463801111263526900");
    EXPECT_EQ((-d("1.50")).toString(), "-1.50");
    EXPECT_EQ((-d("0")).toString(), "0");
}

TEST(DecNumberArithmetic, adds_zero_and_multiplies_by_it_whatever_the_exponents) {
    const DecNumber huge("1e9000000000000000000");
    EXPECT_TRUE(huge + DecNumber(0) == huge);
    EXPECT_TRUE(DecNumber(0) - huge == -huge);
    EXPECT_TRUE(huge * DecNumber(0) == DecNumber(0));
    EXPECT_TRUE(huge - huge == DecNumber(0));
    EXPECT_TRUE(huge + huge == DecNumber("2e9000000000000000000"));
}

TEST(DecNumberArithmetic, refuses_sums_and_products_that_no_memory_holds) {
    const DecNumber huge("1e9000000000000000000");
    EXPECT_EQ(messageOf([&] { (void)(huge + DecNumber(1)); }),
              "The sum of 1e+9000000000000000000 and 1 has too many digits.");
    EXPECT_EQ(messageOf([&] { (void)(huge * huge); }),
              "The product of 1e+9000000000000000000 and 1e+9000000000000000000 has an exponent "
              "beyond 64 bits.");
}

TEST(DecNumberArithmetic, computes_as_integers_do) {
    for (int a = -12; a <= 12; ++a) {
        for (int b = -12; b <= 12; ++b) {
            EXPECT_TRUE(DecNumber(a) + DecNumber(b) == DecNumber(a + b));
            EXPECT_TRUE(DecNumber(a) - DecNumber(b) == DecNumber(a - b));
            EXPECT_TRUE(DecNumber(a) * DecNumber(b) == DecNumber(a * b));
            EXPECT_EQ(DecNumber(a) < DecNumber(b), a < b);
        }
    }
}

}  // namespace
