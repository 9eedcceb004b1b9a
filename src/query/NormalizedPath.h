// SPDX-License-Identifier: MIT
//
// Normalized paths, the one way in which RFC 9535 writes the path of a node.

#pragma once

#include <string>
#include <string_view>

namespace ko::Orvid {

/// Appends `['name']`, escaped.
void appendNormalized(std::string& path, std::string_view name);
/// Appends `[index]`.
void appendNormalized(std::string& path, unsigned int index);

}  // namespace ko::Orvid
