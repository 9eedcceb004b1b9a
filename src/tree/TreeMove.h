// SPDX-License-Identifier: MIT
//
// Moving values between elements without copying them, and copying them with right indexes at once.

#pragma once

#include <ko/Orvid/Element.h>

namespace ko::Orvid {

/// Exchanges the values, in constant time; both places stay. Neither element may lie in the other.
void swapValues(Element& a, Element& b) noexcept;

/// Copies the value, and gives the items of copied arrays their indexes. Throws std::bad_alloc,
/// leaving `to` unchanged.
void copyValue(Element& to, const Element& from);

}  // namespace ko::Orvid
