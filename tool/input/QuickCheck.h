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

/// The text of the file, or of standard input for "-", where it is not certainly right as the
/// options say: up to the error, and some bytes of its line after it, or the whole where the error
/// is its end. Nothing where it is right. Of a file that can be read again no more than a piece is
/// held while it is right, of others, such as a pipe, the text, besides eight bytes for each key of
/// the objects that are open at once. Throws Failure where it cannot be opened or read.
std::optional<Bytes> malformedText(const std::string& file, const ko::Orvid::ReadOptions& options);

/// Whether the text is certainly right as the options say. Where it is not, reading it says what is
/// wrong, if anything is. Holds eight bytes for each key of the objects that are open at once.
bool isCertainlyRight(std::string_view text, const ko::Orvid::ReadOptions& options);

}  // namespace orvid_tool
