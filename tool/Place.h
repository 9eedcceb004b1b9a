// SPDX-License-Identifier: MIT
//
// Places in a text, for error lines.

#pragma once

#include <cstddef>
#include <string>

namespace orvid_tool {

/// ":LINE:COLUMN:" of the byte at `offset` (from 0). Lines and columns count from 1, columns in
/// bytes.
std::string lineAndColumn(const std::string& text, std::size_t offset);

/// The offset of the first byte of the token that reaches to the offset `end` or beyond: a string,
/// a word, a number or a single character; the text's length when there is none. Scans from the
/// start.
std::size_t tokenStart(const std::string& text, std::size_t end);

/// The offset of the first byte from `offset` on that belongs neither to blanks nor to a closed
/// comment; the text's length when there is none.
std::size_t skipBlanks(const std::string& text, std::size_t offset);

}  // namespace orvid_tool
