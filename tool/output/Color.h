// SPDX-License-Identifier: MIT
//
// Colour for a terminal, put around the tokens of text that is already JSON.

#pragma once

#include <string>

namespace orvid_tool {

/// The JSON text with colour: keys, strings, numbers, and the words null, true and false each in
/// their own. Taking the escape sequences out gives the text back.
std::string colored(const std::string& json);

}  // namespace orvid_tool
