// SPDX-License-Identifier: MIT
//
// describe() tells an error in a whole sentence, for people. The texts of what() are for programs,
// and stay as they are.

#pragma once

#include <ko/export.h>

#include <exception>
#include <string>

namespace ko::Orvid {

/// One or more sentences: what failed, with the path, the step, the expected and the actual type,
/// the limits and the line and column where the error has them; the element that it concerns; and
/// its cause, described in the same way. Works for every kind of exception of this library, and
/// gives the text of any other as a sentence. Lines and columns count from 1, except in paths,
/// pointers and patches, where the sentence says that it counts from 0.
KO_API std::string describe(const std::exception& error);

}  // namespace ko::Orvid
