// SPDX-License-Identifier: MIT
//
// What a first word that names no verb was meant to be.

#pragma once

#include <string>
#include <vector>

namespace orvid_tool {

/// The end of the message for a word that is none of `verbs`, such as ` (did you mean "print"?)`:
/// the verb of a similar name, the one that does what other programs call by that word, or the one
/// for a path, a query or a file. Empty where nothing is near.
std::string verbHint(const std::string& word, const std::vector<std::string>& verbs);

}  // namespace orvid_tool
