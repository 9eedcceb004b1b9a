// SPDX-License-Identifier: MIT
//
// What the verbs that edit have in common: documents of which all that is unchanged stays as it is,
// comments and layout included.

#pragma once

#include "call/Call.h"
#include "input/Document.h"
#include "output/Bytes.h"

namespace orvid_tool {

/// Whether the call keeps the text of its documents. It does not where an option asks for a layout,
/// and not with --lines, where each document is to be one line.
bool keepsText(const SCall& call);

/// Reads the document's text into its root: JSON with comments and trailing commas, unless the call
/// is strict; with --lines as readTree() does. Throws Failure.
void readForEdit(const SCall& call, Document& document);

/// Appends the document as it is after the edit. The root may be used up by this. Throws Unwritable
/// and what the library throws.
void appendEdited(const SCall& call, Document& document, Bytes& out);

}  // namespace orvid_tool
