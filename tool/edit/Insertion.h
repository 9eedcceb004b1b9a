// SPDX-License-Identifier: MIT
//
// Putting a value where nothing is overwritten.

#pragma once

#include <ko/Orvid.h>

#include "edit/LastStep.h"
#include "output/Failure.h"

namespace orvid_tool {

/// Puts the value before the item at the step; for `[*]` and the index one past the end, after the
/// last item; or as a new member after the last one. `value` is null afterwards. Returns the value
/// in its new place. Throws PathNotFound where the holder does not exist or has no such position,
/// and Failure, which completes `location`, where the member exists already. The root is unchanged
/// then.
ko::Orvid::Element& insertAt(ko::Orvid::Element& root, const LastStep& step,
                             ko::Orvid::Element&& value, const Location& location);

/// Whether the step is the key of a member that is there.
bool isMemberThere(const ko::Orvid::Element& root, const LastStep& step);

}  // namespace orvid_tool
