// SPDX-License-Identifier: MIT
//
// The spelling of strings, which a tree does not hold: "\u00e9" and "é" are the same there.

#pragma once

#include <ko/Orvid.h>

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "call/Call.h"
#include "input/Document.h"
#include "output/Bytes.h"

namespace orvid_tool {

/// The path that leads to the element; nothing where none does, as below an empty key.
std::optional<std::string> pathTo(const ko::Orvid::Element& root,
                                  const ko::Orvid::Element& element);

/// The text of the value at the path, which leads there, in a document that keeps its text, where
/// it has escapes in it; otherwise nothing.
std::string_view escapedText(const Call& call, Document& document, const std::string& path);

/// Spells the value at the path in the edited text, which begins there in `out`, as `source` does.
void spellAs(std::string_view source, const Call& call, const std::string& path, std::size_t start,
             Bytes& out);

}  // namespace orvid_tool
