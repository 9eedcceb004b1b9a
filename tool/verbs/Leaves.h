// SPDX-License-Identifier: MIT
//
// Leaves, the values of a tree that are no containers, or empty ones, each with its path on one
// line; and the way from such lines back to a tree.

#pragma once

#include <ko/Orvid.h>

#include <string>
#include <string_view>
#include <vector>

#include "output/Bytes.h"
#include "output/Layout.h"

namespace orvid_tool {

/// The leaves from `root` down, in the order of the document.
std::vector<const ko::Orvid::Element*> leavesOf(const ko::Orvid::Element& root);

/// The path, or where it has a control character or begins with a quote, the path as a JSON string.
std::string pathOnOneLine(const std::string& path);

/// What pathOnOneLine() was made of. Throws Failure for a JSON string that is none.
std::string pathOfLine(std::string_view text);

/// Appends "path<TAB>value<NEWLINE>".
void appendLeaf(const std::string& path, const ko::Orvid::Element& value, const Layout& layout,
                Bytes& out);

}  // namespace orvid_tool
