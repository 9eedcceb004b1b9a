// SPDX-License-Identifier: MIT
//
// Notes on paths at which something new is made, though something else may have been meant.

#pragma once

#include <ko/Orvid.h>

#include <string>
#include <string_view>

#include "input/CallPath.h"

namespace orvid_tool {

/// Whether a step of the path may begin or end with whitespace, as in `port = 80`, or the last one
/// end in a colon, as in `port:=80`, or in a sign, as in `port+=1`, or the path be meant for all
/// members or items, as `a.*=1` and `a[*].b=1`.
bool mayNeedNote(const CallPath& path);

/// Whether the path may be a pointer without its first slash, as far as the document's text says.
bool mayLackItsSlash(const CallPath& path, std::string_view text);

/// What is said of such a path where it is new; empty for any other path. `path` is what `typed`
/// is in the document.
std::string newPathHint(const ko::Orvid::Element& root, const CallPath& typed,
                        const std::string& path);

/// The note with that hint.
std::string newPathNote(const std::string& path, const std::string& hint);

}  // namespace orvid_tool
