// SPDX-License-Identifier: MIT
//
// Everything that a pair of values can be asked about its order.

#pragma once

#include <gtest/gtest.h>

#include <cstddef>
#include <functional>

namespace orvid_test {

/// -1, 0 or 1 for the places of two values in a table that is in order.
inline int orderOfPositions(std::size_t a, std::size_t b) { return int{a > b} - int{a < b}; }

/// order(), every operator and, of equal values, the hash agree with `expected`: -1, 0 or 1.
template<class Value>
void expectOrder(const Value& a, const Value& b, int expected) {
    EXPECT_EQ(a.order(b), expected);
    EXPECT_EQ(a == b, expected == 0);
    EXPECT_EQ(a != b, expected != 0);
    EXPECT_EQ(a < b, expected < 0);
    EXPECT_EQ(a > b, expected > 0);
    EXPECT_EQ(a <= b, expected <= 0);
    EXPECT_EQ(a >= b, expected >= 0);
    if (expected == 0) {
        EXPECT_EQ(std::hash<Value>()(a), std::hash<Value>()(b));
    }
}

}  // namespace orvid_test
