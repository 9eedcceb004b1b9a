// SPDX-License-Identifier: MIT
//
// Looking whether a file is right without keeping more than a piece of it.

#pragma once

#include <ko/Orvid.h>

#include <string>

namespace orvid_tool {

/// Whether the file, or standard input for "-", is right as the options say, so far as can be said
/// in one pass: true is certain, false means that it has to be read again, by those who can say
/// what is wrong. What cannot be read again, such as a pipe, is not touched. Memory is that of one
/// piece, and eight bytes for each key of the objects that are open at once. Throws Failure where
/// the file cannot be opened or read.
bool isSurelyRight(const std::string& file, const ko::Orvid::ReadOptions& options);

}  // namespace orvid_tool
