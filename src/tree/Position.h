// SPDX-License-Identifier: MIT
//
// Where an item really is in its array, whatever index it reports.

#pragma once

#include <ko/Orvid/Element.h>

namespace ko::Orvid {

/// The 0-based position of `item`, whose parent is an array. Constant cost where item.index() is
/// right; otherwise, such as after a copy, linear in the number of items. An item that its parent
/// does not hold, as after a swap of two arrays, has the position that it reports.
unsigned int positionOf(const Element& item);

}  // namespace ko::Orvid
