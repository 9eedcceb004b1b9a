// SPDX-License-Identifier: MIT
//
// What people mean by the commonest mistakes in JSON text.

#pragma once

#include <ko/Orvid.h>

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace orvid_tool {

/// The library's message for a text that ends early, for texts of which only parts are read.
inline constexpr std::string_view k_endsEarly = "The text ends before the document is complete";

/// What there is for a text in which another value follows the document: what was `found` after it
/// begins one, an object or an array, or whatever value on a line of its own.
std::string severalValuesHint(std::optional<char> found, ko::Orvid::ExpectedToken expected,
                              bool isOwnLine);

/// Whether the error is that the text ends before its document is complete.
bool endsEarly(ko::Orvid::ParseErrorCode code);

/// What is to be appended to the library's message for the error at `offset` of the text, such as
/// ` (did you mean null?)`; mostly empty.
std::string slipHint(std::string_view text, std::size_t offset, std::optional<char> found,
                     ko::Orvid::ExpectedToken expected);

/// The end of the message for a text that ends before its document begins, such as ` (it is
/// empty)`; empty for any other text.
std::string nothingHint(std::string_view text);

/// What a text leaves open at its end.
struct OpenPart {
    const char* name;    ///< "string", "array" ...
    std::size_t offset;  ///< of its first byte
};

/// The innermost part of the text that its end leaves open; nothing where it has none.
std::optional<OpenPart> openPartOf(std::string_view text);

/// The same as the end of a message, ` (the string that begins at LINE:COLUMN is not closed)`, or
/// `column COLUMN` for line 0.
std::string openHint(const OpenPart& part, std::size_t line, std::size_t column);

}  // namespace orvid_tool
