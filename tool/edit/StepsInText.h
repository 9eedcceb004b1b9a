// SPDX-License-Identifier: MIT
//
// What a path of the call leads to in a JSON text, without a tree.

#pragma once

#include <ko/Orvid.h>

#include <optional>
#include <string_view>

#include "input/CallPath.h"
#include "input/PathSteps.h"

namespace orvid_tool {

/// The steps of the path in that text, which begins with no byte order mark. Nothing where the tree
/// has to be asked: for a malformed path, for a pointer with an empty key, and where a container is
/// not there, or of no use, on which the meaning of a step depends. A pass through the text for
/// each negative index, and for each step of a pointer that may be an index.
std::optional<ValueSteps> stepsInText(std::string_view text, const CallPath& path,
                                      const ko::Orvid::ReadOptions& options);

/// The steps of a path that are the same for every text; none for other paths, for malformed ones,
/// and for the empty one.
ValueSteps plainSteps(const CallPath& path);

}  // namespace orvid_tool
