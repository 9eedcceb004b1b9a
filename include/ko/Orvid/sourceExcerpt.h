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

/// The line of `text` in which the error is, and under it a line with carets that mark the error,
/// each with a newline at its end. `text` is what `error` is about: a whole JSON text, or a path,
/// pointer or query, which counts as one line whatever it holds. Of a line of more than 78
/// characters only the part around the error is shown, with "..." where it is cut. Each control
/// character becomes a space, and each byte that is no UTF-8 a question mark. Empty when the error
/// has no line and column, or the text has no such line. The carets assume that each character is
/// as wide as a letter. Cost: linear up to that line's end.
KO_API std::string sourceExcerpt(std::string_view text, const ParseException& error);

}  // namespace ko::Orvid
