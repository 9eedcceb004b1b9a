// SPDX-License-Identifier: MIT
//
// Looking a value up in JSON text without a tree. It is a short cut: it answers for text of the
// common kind and leaves all other, faulty text above all, to the library.

#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "input/PathSteps.h"

namespace orvid_tool {

/// The text of the value at the steps, if the whole of `text` is plain JSON: no comments, no
/// escapes in keys, no more than a hundred containers deep. A newline stands after the text.
/// Nothing says nothing: neither that the text is faulty nor that there is no such value.
std::optional<std::string_view> lookUp(std::string_view text, const std::vector<SStep>& steps);

/// The same, but only if the library's strict reading takes the text too: if it is UTF-8 and has
/// neither repeated keys nor escapes of surrogates.
std::optional<std::string_view> lookUpStrictly(std::string_view text,
                                               const std::vector<SStep>& steps);

}  // namespace orvid_tool
