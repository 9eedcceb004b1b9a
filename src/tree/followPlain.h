// SPDX-License-Identifier: MIT
//
// Following a plain path through a tree, with its text read where it is.

#pragma once

#include <ko/Orvid/Element.h>

#include <optional>
#include <string_view>

#include "path/PlainSteps.h"
#include "tree/childAt.h"

namespace ko::Orvid {

/// The element below `start` to which a plain path leads, null where it leads nowhere. Nothing for
/// any other path. Needs no memory.
inline std::optional<const Element*> followPlain(std::string_view path, const Element& start) {
    const Element* element = &start;
    const bool isPlain = takePlainSteps(
        path, [&](auto step) { element = element == nullptr ? nullptr : childAt(*element, step); });
    return isPlain ? std::optional(element) : std::nullopt;
}

}  // namespace ko::Orvid
