// SPDX-License-Identifier: MIT
//
// Tests of alignSequences(): as much stays as can, against the table of all pairs, and the steps it
// takes, which are counted.

#include "change/SequenceAlign.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace orvid_test {
namespace {

using ko::Orvid::alignSequences;
using Sequence = std::vector<std::size_t>;
using Positions = std::vector<std::pair<std::size_t, std::size_t>>;

/// The length of a longest common subsequence.
std::size_t mostInCommon(const Sequence& a, const Sequence& b) {
    std::vector<std::size_t> row(b.size() + 1, 0);
    for (const std::size_t item : a) {
        std::size_t diagonal = 0;
        for (std::size_t j = 0; j < b.size(); ++j) {
            const std::size_t above = std::exchange(diagonal, row[j + 1]);
            row[j + 1] = item == b[j] ? above + 1 : std::max(row[j], row[j + 1]);
        }
    }
    return row.back();
}

void checkPositions(const Sequence& from, const Sequence& to, const Positions& positions) {
    for (std::size_t i = 0; i < positions.size(); ++i) {
        ASSERT_LT(positions[i].first, from.size());
        ASSERT_LT(positions[i].second, to.size());
        ASSERT_EQ(from[positions[i].first], to[positions[i].second]);
        ASSERT_TRUE(i == 0 || (positions[i - 1].first < positions[i].first &&
                               positions[i - 1].second < positions[i].second));
    }
}

Positions aligned(const Sequence& from, const Sequence& to,
                  std::uint64_t sharedSteps = ko::Orvid::k_sharedSteps) {
    Positions positions = alignSequences(from, to, sharedSteps);
    checkPositions(from, to, positions);
    return positions;
}

Sequence randomItems(std::mt19937& random, std::size_t most, std::size_t kinds) {
    Sequence items(random() % (most + 1));
    std::generate(items.begin(), items.end(), [&] { return random() % kinds; });
    return items;
}

/// The numbers from `first` on.
Sequence counted(std::size_t count, std::size_t first = 0) {
    Sequence items(count);
    std::generate(items.begin(), items.end(), [&first] { return first++; });
    return items;
}

TEST(SequenceAlign, keeps_as_much_as_can_stay) {
    std::mt19937 random(3);
    for (int round = 0; round < 20000; ++round) {
        const std::size_t most = 1 + random() % 24;
        const std::size_t kinds = 1 + random() % 6;
        const Sequence from = randomItems(random, most, kinds);
        const Sequence to = randomItems(random, most, kinds);
        ASSERT_EQ(aligned(from, to).size(), mostInCommon(from, to)) << round;
    }
}

TEST(SequenceAlign, keeps_nothing_of_empty_or_foreign_sequences) {
    EXPECT_TRUE(aligned({}, {}).empty());
    EXPECT_TRUE(aligned({1, 2}, {}).empty());
    EXPECT_TRUE(aligned({1, 2}, {3, 4}).empty());
}

TEST(SequenceAlign, finds_two_deletions_in_any_length_in_few_steps) {
    constexpr std::size_t length = 200000;
    const Sequence from = counted(length);
    Sequence to = from;
    to.erase(std::next(to.begin(), 150000));
    to.erase(std::next(to.begin(), 10));
    std::uint64_t steps = 0;  // none but its own
    EXPECT_EQ(alignSequences(from, to, steps).size(), length - 2);
}

/// A sequence of two kinds whose equal parts no cut at single items can find.
TEST(SequenceAlign, takes_no_more_than_its_own_and_the_shared_steps) {
    std::mt19937 random(5);
    Sequence sequences[2];
    for (Sequence& sequence : sequences) {
        sequence.resize(2500);
        std::generate(sequence.begin(), sequence.end(), [&] { return random() % 40; });
    }
    std::uint64_t enough = std::uint64_t{1} << 32;
    const std::size_t most = alignSequences(sequences[0], sequences[1], enough).size();
    const std::uint64_t used = (std::uint64_t{1} << 32) - enough;
    EXPECT_GT(used, 1000U);
    std::uint64_t tooFew = used / 2;
    const Positions positions = alignSequences(sequences[0], sequences[1], tooFew);
    checkPositions(sequences[0], sequences[1], positions);
    EXPECT_EQ(tooFew, 0U);
    EXPECT_LT(positions.size(), most);
}

TEST(SequenceAlign, falls_back_to_both_ends_and_items_that_occur_once) {
    // Head and tail agree, 5000 and 5001 occur once, all others between are the same item.
    std::mt19937 random(9);
    const auto filled = [&random](Sequence middle, std::size_t unique) {
        Sequence items{1, 2, 3};
        for (std::size_t half = 0; half < 2; ++half) {
            for (int i = 0; i < 3000; ++i) {
                items.push_back(10 + random() % 50);
            }
            items.push_back(unique + half);
        }
        items.insert(items.end(), middle.begin(), middle.end());
        items.insert(items.end(), {4, 5});
        return items;
    };
    const Sequence from = filled({}, 5000);
    const Sequence to = filled({7}, 5000);
    const Positions positions = aligned(from, to, 0);
    std::size_t unique = 0;
    for (const auto& position : positions) {
        unique += from[position.first] >= 5000 ? 1U : 0U;
    }
    EXPECT_EQ(unique, 2U);
    EXPECT_GE(positions.size(), 7U);
}

TEST(SequenceAlign, finds_a_longest_ascending_part_of_a_shuffled_sequence_without_steps) {
    std::mt19937 random(11);
    const Sequence from = counted(4000);
    Sequence to = from;
    std::shuffle(to.begin(), to.end(), random);
    EXPECT_EQ(aligned(from, to, 0).size(), mostInCommon(from, to));
}

}  // namespace
}  // namespace orvid_test
