// SPDX-License-Identifier: MIT
//
// Putting a value where nothing is overwritten.

#pragma once

#include <ko/Orvid.h>

#include "edit/LastStep.h"
#include "output/Failure.h"

namespace orvid_tool {

/// Puts the value, which is null afterwards, before the item at the step, or after the last one for
/// `[*]` and the index one past the end, or makes it a new member after the last. Throws
/// PathNotFound where the holder is not there or has no such position, Failure, which completes
/// `location`, where the member is there already. The root is unchanged then. Returns the value in
/// its new place.
ko::Orvid::Element& insertAt(ko::Orvid::Element& root, const LastStep& step,
                             ko::Orvid::Element&& value, const Location& location);

}  // namespace orvid_tool
