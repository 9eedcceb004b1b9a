// SPDX-License-Identifier: MIT
//
// Whether two trees are the same JSON value, for which the order of members does not count. The
// order of values, for which it does, is compareTrees() in Tree.h.

#pragma once

#include <ko/Orvid/Element.h>

namespace ko::Orvid {

/// When two numbers are taken for the same.
enum class ENumberRule {
    sameText,   ///< letter for letter
    sameValue,  ///< by Number::compare(); numbers that it refuses, by their exact decimal value
};

/// Linear in the size of the trees, but for a logarithm for each member. Does not recurse. Works
/// out no binary value in the numbers.
bool treesEqual(const Element& a, const Element& b, ENumberRule rule);

}  // namespace ko::Orvid
