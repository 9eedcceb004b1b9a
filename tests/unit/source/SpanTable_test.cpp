// SPDX-License-Identifier: MIT

#include "source/SpanTable.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <utility>

#include <ko/Orvid/Element.h>

namespace {

using ko::Orvid::Element;
using ko::Orvid::SpanTable;
using ko::Orvid::ValueSpan;

/// Values of one byte each, one after the other, with no elements.
SpanTable tableOf(std::uint32_t size) {
    SpanTable table;
    for (std::uint32_t value = 0; value < size; ++value) {
        table.add(value, value + 1).setElement(nullptr);
    }
    return table;
}

TEST(SpanTable, is_empty_at_first_and_after_it_was_cleared) {
    EXPECT_EQ(SpanTable().size(), 0U);
    SpanTable table = tableOf(33);
    table.clear();
    EXPECT_EQ(table.size(), 0U);
    table.add(5, 6);
    EXPECT_EQ(table.size(), 1U);
    EXPECT_EQ(table[0].begin(), 5U);
}

TEST(SpanTable, keeps_each_row_while_its_blocks_are_filled) {
    for (const std::uint32_t size : {1U, 31U, 32U, 33U, 1023U, 1024U, 1025U, 2049U, 5000U}) {
        const SpanTable table = tableOf(size);
        ASSERT_EQ(table.size(), size);
        for (std::uint32_t value = 0; value < size; ++value) {
            ASSERT_EQ(table[value].begin(), value);
            ASSERT_EQ(table[value].end(), value + 1U);
            ASSERT_EQ(table.next(value), value + 1U);
        }
    }
}

TEST(SpanTable, closed_container_counts_what_lies_in_it) {
    SpanTable table = tableOf(40);
    table.close(35, 70);
    EXPECT_EQ(table.next(35), 40U);
    EXPECT_EQ(table[35].begin(), 35U);
    EXPECT_EQ(table[35].end(), 70U);
    table.add(80, 90);
    EXPECT_EQ(table.next(35), 40U);
    table.close(0, 100);
    EXPECT_EQ(table.next(0), 41U);
    EXPECT_EQ(table[0].end(), 100U);
    EXPECT_EQ(table.next(1), 2U);
}

TEST(SpanTable, offsets_have_48_bits) {
    if constexpr (sizeof(std::size_t) < sizeof(std::uint64_t)) {
        GTEST_SKIP() << "no text is so long here";
    }
    constexpr std::uint64_t k_last = (std::uint64_t{1} << 48U) - 1;
    for (const std::uint64_t end : {std::uint64_t{0xFFFF}, std::uint64_t{0x10000},
                                    std::uint64_t{0xFFFFFFFF}, std::uint64_t{1} << 32U, k_last}) {
        SpanTable table;
        table.add(end - 1, end);
        EXPECT_EQ(table[0].begin(), end - 1);
        EXPECT_EQ(table[0].end(), end);
        EXPECT_EQ(table[0].count(), 1U);
        table.add(0, 0xABCDEF);
        table.close(0, k_last);
        EXPECT_EQ(table[0].begin(), end - 1);
        EXPECT_EQ(table[0].end(), k_last);
        EXPECT_EQ(table[0].count(), 2U);
        table.close(0, end);
        EXPECT_EQ(table[0].end(), end);
    }
}

TEST(SpanTable, remembers_the_element_of_a_value) {
    const Element first;
    const Element second;
    SpanTable table;
    table.add(0, 4).setElement(&first);
    EXPECT_EQ(table[0].element(), &first);
    table[0].setElement(&second);
    EXPECT_EQ(table[0].element(), &second);
    EXPECT_EQ(table[0].end(), 4U);
}

TEST(SpanTable, row_takes_24_bytes_at_most) { EXPECT_LE(sizeof(ValueSpan), 24U); }

}  // namespace
