// SPDX-License-Identifier: MIT
//
// The weight of a tree: an estimate of its memory that does not depend on the platform, for limits.

#pragma once

#include <ko/Orvid/Element.h>

#include <cstdint>

namespace ko::Orvid {

/// What each element weighs, besides its text.
constexpr std::uint64_t k_elementWeight = 64;

/// k_elementWeight for each element, and a byte for each of the bytes of its key, its string or its
/// number. Ends early, with more than `enough`, when that is exceeded. Does not recurse.
std::uint64_t weightOf(const Element& root, std::uint64_t enough);

}  // namespace ko::Orvid
