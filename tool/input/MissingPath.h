// SPDX-License-Identifier: MIT
//
// What is reported for a path that leads nowhere: how far it led, and what may have been meant.

#pragma once

#include <ko/Orvid.h>

#include "output/Failure.h"

namespace orvid_tool {

/// A step of the path leads nowhere in the document at `location`, whose root that is.
Failure missingPath(Location location, const ko::Orvid::Element& root,
                    const ko::Orvid::PathNotFound& error);

/// The value's type as in a sentence: "null", "a boolean", "an array".
const char* typePhrase(const ko::Orvid::Element& value);

}  // namespace orvid_tool
