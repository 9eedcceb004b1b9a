// SPDX-License-Identifier: MIT
//
// Which numbers of one sequence stay in another: a longest common subsequence, within bounds.

#pragma once

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace ko::Orvid {

/// The greatest product of the lengths, common beginning and end left aside, that is worked on. It
/// takes four bytes for each unit.
constexpr std::size_t k_mostAligned = std::size_t{1} << 22;

/// The 0-based positions of numbers that are the same in both, ascending in both. What both have in
/// common at the beginning and at the end is always found; between, as many as can stay, unless the
/// product of the lengths left exceeds k_mostAligned: then none.
std::vector<std::pair<std::size_t, std::size_t>> commonSubsequence(
    const std::vector<std::uint64_t>& from, const std::vector<std::uint64_t>& to);

}  // namespace ko::Orvid
