// SPDX-License-Identifier: MIT
//
// Places in a text, for error lines.

#pragma once

#include <cstddef>
#include <string_view>

namespace orvid_tool {

/// Both count from 1, columns in bytes.
struct STextPlace {
    std::size_t line;
    std::size_t column;
};

/// The place of the byte at `offset` (from 0).
STextPlace placeOf(std::string_view text, std::size_t offset);

/// The offset of the first byte from `offset` on that belongs neither to whitespace nor to a closed
/// comment; the text's length when there is none.
std::size_t skipBlanks(std::string_view text, std::size_t offset);

}  // namespace orvid_tool
