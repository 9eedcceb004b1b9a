// SPDX-License-Identifier: MIT
//
// Whether two trees are the same JSON value, for which the order of members does not count.

#pragma once

#include <ko/Orvid/Element.h>

#include <optional>

namespace ko::Orvid {

/// When two numbers are taken for the same.
enum class NumberRule {
    sameText,   ///< as they are written, letter for letter
    sameValue,  ///< by their exact value, as `==` does
};

/// Linear in the size of the trees, except for a logarithm for each member that stands elsewhere in
/// the other object. The stack that it takes does not depend on their depth. Needs memory for
/// containers that are nested deeply only. Throws nothing but std::bad_alloc.
bool treesEqual(const Element& a, const Element& b, NumberRule rule);

/// The same, except that it gives up and returns std::nullopt where it would cost more than
/// `budget`, from which the cost is taken: one for each element in a container, and for 64 bytes of
/// a text.
std::optional<bool> treesEqualWithin(const Element& a, const Element& b, NumberRule rule,
                                     unsigned long long& budget);

}  // namespace ko::Orvid
