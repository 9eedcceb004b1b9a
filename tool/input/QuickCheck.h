// SPDX-License-Identifier: MIT
//
// Looking whether a file is right without keeping more than a piece of it.

#pragma once

#include <ko/Orvid.h>

#include <optional>
#include <string>
#include <string_view>

#include "output/Bytes.h"

namespace orvid_tool {

/// Nothing where the text of the file, or of standard input for "-", is right as the options say.
/// Where that is not certain, the text up to the error and some bytes of its line after it, or the
/// whole text where the error is its end. While the text is right, memory holds one piece of a file
/// that can be read again, but all of another, such as a pipe; and eight bytes for each key of the
/// objects that are open at once. Throws Failure where the file cannot be opened or read.
std::optional<Bytes> malformedText(const std::string& file, const ko::Orvid::ReadOptions& options);

/// Whether the text is certainly right as the options say. Where it is not, reading it says what is
/// wrong, if anything is. Holds eight bytes for each key of the objects that are open at once.
bool isCertainlyRight(std::string_view text, const ko::Orvid::ReadOptions& options);

}  // namespace orvid_tool
