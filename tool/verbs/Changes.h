// SPDX-License-Identifier: MIT
//
// A JSON Patch in words for people: what stands where it changes something, before and after.

#pragma once

#include <ko/Orvid.h>

#include <string>

#include "output/Layout.h"

namespace orvid_tool {

/// A line `- PATH<TAB>VALUE` for what goes, with its path in `from`, and `+ PATH<TAB>VALUE` for
/// what comes, with its path in `to`, in the order of the patch, which makePatch() made of the two.
/// A value that is replaced has both. Throws Unwritable.
std::string changesText(const ko::Orvid::Element& from, const ko::Orvid::Element& to,
                        const ko::Orvid::Element& patch, const Layout& layout);

}  // namespace orvid_tool
