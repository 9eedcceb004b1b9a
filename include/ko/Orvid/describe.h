// SPDX-License-Identifier: MIT
//
// describe() explains an error in a whole sentence, for people. The texts of what() are for
// programs, and stay as they are.

#pragma once

#include <ko/export.h>
#include <ko/Orvid/fwd.h>

#include <exception>
#include <string>

namespace ko::Orvid {

/// One or more sentences: what failed, with the path, the step, the expected and the actual type,
/// the limits and the line and column where the error has them; the element that it concerns; and
/// its cause, described in the same way. Works for every kind of exception of this library, and
/// gives the text of any other as it is. Lines and columns count from 1, except in paths,
/// pointers and patches, where the sentence says that it counts from 0. Linear in the length of the
/// sentences.
KO_API std::string describe(const std::exception& error);

/// The same of an error that concerns an element of a document, after the place where the element
/// stands in the text that the document was read from: `settings.json:3:14: ` with line and column
/// counted from 1, or `3:14: ` where the text came from no file. For an error that concerns a
/// member or item that is missing, it is the place of the object or array without it. Without a
/// place for an element that was not in the text, and for a document that was not read. `dom` must
/// be the document that the error is about, as it was when the error was thrown: the error holds
/// only the path of its element, so another document gives the place of what stands at that path
/// there. For an operation of a patch it is the place that the element had before the patch.
/// Costs Dom::placeOf() besides.
KO_API std::string describe(const std::exception& error, const Dom& dom);

/// The same of an error that concerns an element of the record that `lines` has read last, after
/// the place in the stream: `17:9: `. A ParseException of `lines` names its line itself. Costs
/// JsonLines::placeOf() besides.
KO_API std::string describe(const std::exception& error, const JsonLines& lines);

}  // namespace ko::Orvid
