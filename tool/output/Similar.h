// SPDX-License-Identifier: MIT
//
// What a misspelt word was meant to be.

#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace orvid_tool {

/// The word of `known` that is nearest to `word`, the first of several; empty where none is near:
/// one in three characters may be missing, added, another, or exchanged with its neighbour. Upper
/// and lower case are the same.
std::string similarTo(std::string_view word, const std::vector<std::string>& known);

/// The same as the end of a message, such as ` (did you mean "print"?)`; empty where none is near.
std::string suggestion(std::string_view word, const std::vector<std::string>& known);

}  // namespace orvid_tool
