// SPDX-License-Identifier: MIT
//
// The grammar of RFC 9485: which texts are regular expressions there, and what they are in RE2's
// language.

#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace ko::Orvid {

/// The expression in RE2's language; nothing for a text that is no expression of RFC 9485. Groups
/// nest to k_deepestGroup at most. Linear in the length.
std::optional<std::string> translateRegexp(std::string_view pattern);

constexpr unsigned int k_deepestGroup = 200;

}  // namespace ko::Orvid
