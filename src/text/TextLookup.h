// SPDX-License-Identifier: MIT
//
// Looking a value up in JSON text in one pass, without a tree.

#pragma once

#include <ko/Orvid/ReadOptions.h>

#include <optional>
#include <string_view>

#include "text/ValueStep.h"

namespace ko::Orvid::text {

/// The text of the value at the steps, if `options`, which must require a whole document, accept
/// the text. std::nullopt means undecided: read the whole text, which may be malformed or have no
/// such value. Of a repeated key the last value counts; where the options refuse it, or may have
/// to, the result is undecided. Memory does not grow with the text, except by a bit for a container
/// that is open; where repeated keys are refused, by eight bytes for each key of the objects that
/// are open and 16 for each of these. Throws std::bad_alloc.
std::optional<std::string_view> lookUp(std::string_view text, const ValueSteps& steps,
                                       const ReadOptions& options);

}  // namespace ko::Orvid::text
