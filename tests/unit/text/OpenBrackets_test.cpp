// SPDX-License-Identifier: MIT

#include "text/OpenBrackets.h"

#include <gtest/gtest.h>

#include <cstddef>

namespace ko::Orvid::text {
namespace {

/// A pattern without a period of eight.
bool isObjectAt(std::size_t level) { return level % 3 == 0 || level % 7 == 2; }

void expectLevels(const OpenBrackets& open, std::size_t count) {
    ASSERT_EQ(open.size(), count);
    EXPECT_EQ(open.isEmpty(), count == 0);
    for (std::size_t level = 0; level < count; ++level) {
        ASSERT_EQ(open.isObject(level), isObjectAt(level)) << level << " of " << count;
    }
    if (count > 0) {
        ASSERT_EQ(open.isObject(), isObjectAt(count - 1)) << count;
    }
}

TEST(OpenBrackets, remember_every_level_on_the_way_down_and_up) {
    constexpr std::size_t k_depth = 200;
    OpenBrackets open;
    for (std::size_t level = 0; level < k_depth; ++level) {
        expectLevels(open, level);
        open.push(isObjectAt(level));
    }
    for (std::size_t level = k_depth; level > 0; --level) {
        expectLevels(open, level);
        open.pop();
    }
    expectLevels(open, 0);
}

TEST(OpenBrackets, change_at_every_depth) {
    OpenBrackets open;
    for (std::size_t level = 0; level < 130; ++level) {
        open.push(!isObjectAt(level));
        open.pop();
        open.push(isObjectAt(level));
        expectLevels(open, level + 1);
    }
}

}  // namespace
}  // namespace ko::Orvid::text
