// SPDX-License-Identifier: MIT
//
// Lines and columns for failures that concern a value of a document, not an error in its text.

#pragma once

#include "input/Document.h"
#include "output/Failure.h"

namespace orvid_tool {

/// The failure with the line and the column at which the value of its path begins in the document's
/// text and, except in a record, with that line and a caret. The failure stays as it is where it
/// has a position already, and where none is known: for a value that was not read from the text,
/// and in a record that was changed before. The tree may be used up by this, and the text is read
/// once more unless the document keeps it.
Failure located(const Failure& failure, Document& document);

/// The failure of a value that was not read from the text, of a document that keeps it: says so.
Failure ofMade(const Failure& failure);

}  // namespace orvid_tool
