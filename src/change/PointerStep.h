// SPDX-License-Identifier: MIT
//
// One step of a JSON Pointer: whether it can be an index, and the child that it leads to.

#pragma once

#include <ko/Orvid/Element.h>

#include <optional>
#include <string>
#include <string_view>

namespace ko::Orvid {

/// The step to the position after an array's last item.
constexpr std::string_view k_afterLast = "-";

/// Whether the step is written as an index, however great: 0, or digits that begin with no zero.
bool isPointerIndex(std::string_view step);

/// The 0-based index that the step stands for in an array: nothing for what is not written as one,
/// and for what reaches k_noIndex.
std::optional<unsigned int> pointerIndex(std::string_view step);

/// The child of `parent` at the step; null when there is none.
const Element* childAtStep(const Element& parent, const std::string& step);

}  // namespace ko::Orvid
