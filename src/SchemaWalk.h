// SPDX-License-Identifier: MIT
//
// Finding a default by walking the schema itself along a data path, without making the text of the
// schema path first.

#pragma once

#include <ko/Orvid/Element.h>

#include <optional>

namespace ko::Orvid {

/// The schema's default for the element at `path` below `element`: null when the schema has none,
/// and nothing when only the text of the whole path can tell: a malformed path, or keys that path
/// text cannot express.
std::optional<const Element*> walkToDefault(const Element& element, const Path& path);

}  // namespace ko::Orvid
