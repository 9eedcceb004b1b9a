// SPDX-License-Identifier: MIT
//
// The test by which find and remove choose array items.

#pragma once

#include <ko/Orvid/Element.h>

namespace ko::Orvid {

/// Whether the element at `itemPath` below `item` equals `value`. An item that raises an Exception
/// while it is looked into does not match.
bool itemMatches(const Element& item, const Path& itemPath, const Element& value);

}  // namespace ko::Orvid
