// SPDX-License-Identifier: MIT
//
// Tests of listenerLength() at its limit, which no text in a test reaches.

#include "document/listenerLength.h"

#include <gtest/gtest.h>

#include <cstdint>

namespace {

using ko::Orvid::listenerLength;

TEST(listenerLength, is_any_that_has_32_bits) {
    EXPECT_EQ(listenerLength(0), 0U);
    EXPECT_EQ(listenerLength(255), 255U);
    EXPECT_EQ(listenerLength(4294967295U), 4294967295U);
}

TEST(listenerLength, is_refused_beyond) {
    if (sizeof(std::size_t) == sizeof(std::uint32_t)) {
        GTEST_SKIP() << "no text is that long in 32 bit";
    }
    const std::uint64_t tooLong = 4294967296U;
    EXPECT_THROW(listenerLength(static_cast<std::size_t>(tooLong)), ko::Orvid::Exception);
    EXPECT_THROW(listenerLength(static_cast<std::size_t>(-1)), ko::Orvid::Exception);
}

}  // namespace
