// SPDX-License-Identifier: MIT
//
// Parts of the sentences in messages, for places and types.

#pragma once

#include <ko/Orvid.h>

#include <string>

namespace orvid_tool {

/// The place as the subject of a sentence: the path in quotes, "the root", or "it" for a long path.
std::string placePhrase(const std::string& path);

/// The value's type as in a sentence: "null", "a boolean", "an array".
const char* typePhrase(const ko::Orvid::Element& value);

}  // namespace orvid_tool
