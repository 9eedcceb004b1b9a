// SPDX-License-Identifier: MIT
//
// A JSON Patch in words for people: what stands where it changes something, before and after.

#pragma once

#include <ko/Orvid.h>

#include <string>

#include "output/Layout.h"

namespace orvid_tool {

/// A line `- PATH<TAB>VALUE` for each value that is removed, with its path in `from`, and a line
/// `+ PATH<TAB>VALUE` for each one that is added, with its path in `to`. A value that is replaced
/// has both. They are in the order of the patch, which makePatch() made of the two. Throws
/// Unwritable.
std::string changesText(const ko::Orvid::Element& from, const ko::Orvid::Element& to,
                        const ko::Orvid::Element& patch, const Layout& layout);

}  // namespace orvid_tool
