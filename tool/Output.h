// SPDX-License-Identifier: MIT
//
// What the command writes to standard output.

#pragma once

#include <ko/Orvid.h>

#include <string>

namespace orvid_tool {

/// The value as JSON text, one member or item a line, or as a document that leaves its metadata
/// out. Throws Failure, naming the file, for a value that is nested too deeply to be written.
std::string jsonText(const std::string& name, const ko::Orvid::Element& element);
std::string jsonText(const std::string& name, const ko::Orvid::Dom& dom);

/// A line for each leaf below `root`, that is each value that is no container or an empty one: its
/// path, a tab, and its value.
std::string leafLines(const ko::Orvid::Element& root);

/// Writes the text whole. Throws Failure when it cannot be written.
void writeOut(const std::string& text);

}  // namespace orvid_tool
