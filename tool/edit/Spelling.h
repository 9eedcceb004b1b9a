// SPDX-License-Identifier: MIT
//
// The spelling of strings, which a tree does not hold: "\u00e9" and "é" are the same there.

#pragma once

#include <ko/Orvid.h>

#include <cstddef>
#include <string_view>

#include "call/Call.h"
#include "input/Document.h"
#include "output/Bytes.h"

namespace orvid_tool {

/// The text of the value at the pointer, which leads there, in a document that keeps its text,
/// where it has escapes in it; otherwise nothing.
std::string_view escapedText(const Call& call, Document& document,
                             const ko::Orvid::JsonPointer& pointer);

/// Spells the value at the pointer in the edited text, which begins at `start` of `out`, as
/// `source` does.
void spellAs(std::string_view source, const Call& call, const ko::Orvid::JsonPointer& pointer,
             std::size_t start, Bytes& out);

}  // namespace orvid_tool
