// SPDX-License-Identifier: MIT
//
// isAsRead() says whether a value of the text may be copied whole.

#pragma once

#include "source/SourceMap.h"

namespace ko::Orvid {

/// Whether the element says what the text says there, member by member in the text's order: then
/// the text may stand for it. False, too, where keys are repeated. Linear, does not recurse.
bool isAsRead(const SourceMap& map, std::uint32_t value, const Element& element);

}  // namespace ko::Orvid
