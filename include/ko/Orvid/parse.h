// SPDX-License-Identifier: MIT
//
// parse() makes an element of a JSON text, in one step. docs/reading-and-writing.md says what it
// accepts. DomParser reads texts in pieces, and reads into elements that exist already.

#pragma once

#include <ko/export.h>
#include <ko/Orvid/Element.h>
#include <ko/Orvid/ReadOptions.h>

#include <iosfwd>
#include <string_view>

namespace ko::Orvid {

class JsonPath;

/// The value of a whole document: whatever the options say, the text must hold one complete value
/// and nothing else. Linear in the length of the text, which may lie in any element. Throws
/// ParseException with the line and the columns of the error, and std::bad_alloc.
KO_API Element parse(std::string_view text, const ReadOptions& options = ReadOptions::strict());
/// The same of the whole stream: waits until it ends, and sets eofbit. Throws Exception as well,
/// where the stream cannot be read or fails.
KO_API Element parse(std::istream& in, const ReadOptions& options = ReadOptions::strict());

/// The part of the document that a query looks at, which takes less time and memory: the query
/// selects in it, value for value, what it selects in the whole document. All else may be missing,
/// and items be null; so a result need not have the path that it has in the document. All errors of
/// the text are found, except repeated keys in objects that the query does not look at. Linear in
/// the length of the text.
KO_API Element parseFor(const JsonPath& query, std::string_view text,
                        const ReadOptions& options = ReadOptions::strict());

}  // namespace ko::Orvid
