// SPDX-License-Identifier: MIT
//
// Which items of one array stay in another: a longest common subsequence, within bounds.

#pragma once

#include <ko/Orvid/Array.h>

#include <cstddef>
#include <utility>
#include <vector>

#include "change/CommonSubsequence.h"
#include "change/TreeHash.h"

namespace ko::Orvid {

/// The 0-based positions of items that are the same in both arrays, ascending in both. `hashes`
/// knows both arrays. What both have in common at the beginning and at the end is always found;
/// between, as many items as can stay, unless the product of the lengths left exceeds
/// k_mostAligned: then none.
std::vector<std::pair<std::size_t, std::size_t>> alignItems(const Element::TArray& from,
                                                            const Element::TArray& to,
                                                            const TreeHashes& hashes);

}  // namespace ko::Orvid
