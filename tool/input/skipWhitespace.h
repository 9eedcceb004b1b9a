// SPDX-License-Identifier: MIT
//
// What of a text carries no value.

#pragma once

#include <cstddef>
#include <string_view>

namespace orvid_tool {

/// Where the comment that starts at `offset` ends; `offset` itself when none starts or ends there.
std::size_t commentEnd(std::string_view text, std::size_t offset);

/// The offset of the first byte from `offset` on that belongs neither to whitespace nor to a closed
/// comment; the text's length when there is none.
std::size_t skipWhitespace(std::string_view text, std::size_t offset);

}  // namespace orvid_tool
