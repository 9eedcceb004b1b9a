// SPDX-License-Identifier: MIT
//
// Writing JSON text anew, with a value put at a path, without a tree: a short cut for text of the
// common kind.

#pragma once

#include <ko/Orvid.h>

#include <string_view>

#include "output/Bytes.h"
#include "text/TextRewriter.h"

namespace orvid_tool {

struct TextLayout {
    std::string_view indent;   ///< for each level; empty is the compact layout
    bool stopsAtMeta = false;  ///< the root's member meta is not to be written
};

/// Appends the text in that layout, the edit made unless it is null, and a newline: what the
/// library would write of the tree, byte for byte. Returns false, and appends nothing, where it
/// cannot say: of text that `options` refuse, that repeats a key or has no such path, and
/// of a member meta that is to be left out.
bool rewrite(std::string_view text, const TextLayout& layout, const ko::Orvid::text::TextEdit* edit,
             const ko::Orvid::ReadOptions& options, Bytes& out);

}  // namespace orvid_tool
