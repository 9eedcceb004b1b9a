// SPDX-License-Identifier: MIT
//
// What the verbs that edit have in common: documents of which all that is unchanged stays as it is,
// comments and layout included.

#pragma once

#include <string_view>

#include "call/Call.h"
#include "input/Document.h"
#include "output/Bytes.h"

namespace orvid_tool {

/// The failure, and where it is a comment that would be lost in a file that is laid out anew, what
/// to do; `otherwise` is the end of the hint.
Failure withCommentsHint(const Call& call, const Failure& failure, const char* otherwise);

/// How such documents are read: JSON with comments and trailing commas, unless the call is strict.
/// Comments that a new layout of the file would lose are refused, unless the call drops them.
ko::Orvid::ReadOptions editOptions(const Call& call);

/// Notes that a path, key or query of the call is to be looked for. One with a `?` in it could lead
/// to half of a surrogate pair, which is read as that: halves are refused also of a line then.
void noteName(Call& call, std::string_view name);
/// The same of all keys and strings of a value that the call puts into documents: half a surrogate
/// pair is not to be taken for what is there already.
void noteNames(Call& call, const ko::Orvid::Element& value);

/// Whether what is unchanged of the document is to be copied from its text. It is not where an
/// option asks for a layout, and need not be for a line that is in the layout of lines already.
bool keepsText(const Call& call, const Document& document);

/// Reads the document's text into its root. Throws Failure.
void readForEdit(const Call& call, Document& document);

/// The same for an edit that writes what it has read at another place as well. Halves of surrogate
/// pairs, which can be kept where they are only, are refused also of a line.
void readForCopying(const Call& call, Document& document);

/// Appends the document as it is after the edit, in which these values were moved. The root may be
/// used up by this. Throws Unwritable and what the library throws.
void appendEdited(const Call& call, Document& document, Bytes& out,
                  const ko::Orvid::MovedPlaces& moved = {});

}  // namespace orvid_tool
