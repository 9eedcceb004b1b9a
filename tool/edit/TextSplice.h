// SPDX-License-Identifier: MIT
//
// Putting one scalar in the place of another in JSON text, without a tree: a short cut for text of
// the common kind, which may be long.

#pragma once

#include <ko/Orvid.h>

#include <string_view>
#include <vector>

#include "input/PathSteps.h"
#include "output/Bytes.h"

namespace orvid_tool {

/// Appends the text with the value at the steps, all other bytes as they are. Answers false, with
/// nothing appended, where the library has to be asked: where either value is a container, where
/// there is none at the steps, and of text that strict reading refuses.
bool splice(std::string_view text, const ValueSteps& steps, const ko::Orvid::Element& value,
            Bytes& out);

}  // namespace orvid_tool
