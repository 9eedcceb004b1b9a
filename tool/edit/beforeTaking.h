// SPDX-License-Identifier: MIT
//
// Places in an array that an item was taken out of.

#pragma once

#include <ko/Orvid.h>

namespace orvid_tool {

/// What leads, with an item in its array, to what the pointer leads to without it. `item` is where
/// that was.
ko::Orvid::JsonPointer beforeTaking(const ko::Orvid::JsonPointer& pointer,
                                    const ko::Orvid::JsonPointer& item);

}  // namespace orvid_tool
