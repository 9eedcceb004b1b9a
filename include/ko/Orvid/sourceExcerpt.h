// SPDX-License-Identifier: MIT
//
// sourceExcerpt shows where a text is malformed, for people. The exceptions themselves keep their
// texts.

#pragma once

#include <ko/export.h>
#include <ko/Orvid/fwd.h>

#include <string>
#include <string_view>

namespace ko::Orvid {

/// The first malformed line of `text`, the whole JSON text that `error` is about, or the path,
/// pointer or query, which is one line whatever it holds, and under it carets that mark the error:
/// two lines of at most 78 characters with a newline after each. Of a longer line it is the part
/// around the error, with "..." where it is cut. Control characters become spaces and bytes that
/// are no UTF-8 question marks, one for each. Empty when the error has no line and column, or the
/// text has no such line. The carets take each character for as wide as a letter. Cost: linear up
/// to that line's end.
KO_API std::string sourceExcerpt(std::string_view text, const ParseException& error);

}  // namespace ko::Orvid
