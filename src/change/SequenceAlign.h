// SPDX-License-Identifier: MIT
//
// Which items of one sequence stay in another: a longest common subsequence in linear space, within
// bounds of time.

#pragma once

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace ko::Orvid {

/// The steps of comparing items that alignments may take together, besides k_stepsPerItem for each
/// item.
constexpr std::uint64_t k_sharedSteps = std::uint64_t{1} << 24;
constexpr std::uint64_t k_stepsPerItem = 64;

/// The 0-based positions of items that are the same in both sequences, ascending in both: as many
/// as can stay. That may need this alignment's own steps and, beyond them, some of `sharedSteps`,
/// which is reduced by as many. Where these do not suffice, the result is what both have in common
/// at the beginning and at the end, and items that occur once in each. Uses memory in proportion to
/// the lengths.
std::vector<std::pair<std::size_t, std::size_t>> alignSequences(
    const std::vector<std::size_t>& from, const std::vector<std::size_t>& to,
    std::uint64_t& sharedSteps);

/// A longest subsequence of pairs that ascend in their second numbers, which differ. Those of
/// `pairs` ascend in their first ones already. Of several, one that ends lowest.
std::vector<std::pair<std::size_t, std::size_t>> ascendingPairs(
    const std::vector<std::pair<std::size_t, std::size_t>>& pairs);

}  // namespace ko::Orvid
