// SPDX-License-Identifier: MIT
//
// Which texts are small integers, and their values.

#include "number/SmallInteger.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using ko::Orvid::SmallInteger;

/// The value as text, with the sign that was read; empty for any other text.
std::string valueOf(const std::string& text) {
    SmallInteger integer;
    if (!integer.read(text)) {
        return {};
    }
    EXPECT_EQ(integer.value() < 0, integer.isNegative && integer.magnitude != 0);
    return (integer.isNegative ? "-" : "") + std::to_string(integer.magnitude);
}

TEST(SmallInteger, is_up_to_18_bytes_of_digits_and_a_minus) {
    for (const char* const text :
         {"0", "-0", "7", "-7", "10", "1234567890", "999999999999999999", "-99999999999999999"}) {
        EXPECT_EQ(valueOf(text), text);
    }
    EXPECT_EQ(valueOf("007"), "7");
}

TEST(SmallInteger, is_nothing_else) {
    for (const char* const text : {"", "-", "--1", "+1", " 1", "1 ", "1.0", "1e3", "1-", "a", "1:",
                                   "1/", "\xB1", "1000000000000000000", "-123456789012345678"}) {
        EXPECT_EQ(valueOf(text), "") << text;
    }
}

}  // namespace
