// SPDX-License-Identifier: MIT
//
// Writing JSON text anew, with a value put at a path, without a tree. Like TextLookup it is a short
// cut for text of the common kind.

#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "input/PathSteps.h"
#include "output/Bytes.h"

namespace orvid_tool {

/// A value that is to be put at a place.
struct STextEdit {
    std::vector<SStep> steps;  ///< at least one
    std::string value;         ///< compact JSON text with a newline after it
};

struct STextLayout {
    std::string indent;      ///< for each level; empty is the compact layout
    bool dropsMeta = false;  ///< the root's member meta is not written
};

/// Appends the text in that layout, the edit made unless it is null, and a newline: what the
/// library would write of the tree, byte for byte. Answers false, and may have appended something,
/// where it cannot say: of text that is no plain JSON, repeats a key, or has no place for the
/// value, and where a member meta is to be left out. A newline stands after the text.
bool rewrite(std::string_view text, const STextLayout& layout, const STextEdit* edit, Bytes& out);

}  // namespace orvid_tool
