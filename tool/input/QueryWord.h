// SPDX-License-Identifier: MIT
//
// A query among the words of a call.

#pragma once

#include <ko/Orvid.h>

#include <string>
#include <vector>

#include "input/Document.h"

namespace orvid_tool {

/// The query of that text. Throws Failure, which shows the query with carets under the error, for
/// text that is none.
ko::Orvid::JsonPath queryOf(const std::string& text);

/// What is to be said of regular expressions in the query that match nothing, as they are
/// malformed.
std::vector<std::string> patternNotes(const ko::Orvid::JsonPath& query);

/// What is to be said of a query that selects nothing in the document, where it asks for the length
/// of an array or a string as for a member; otherwise nothing. The text may be read once more.
std::string lengthNote(const ko::Orvid::JsonPath& query, const Document& document);

/// Whether the query filters the values in the root, which is mostly meant to be the record.
bool filtersValuesInRoot(const std::string& text);

/// readTree() of the document's text into its root, but no more than the query looks at.
void readFor(const ko::Orvid::JsonPath& query, Document& document,
             const ko::Orvid::ReadOptions& options = wholeOptions());

}  // namespace orvid_tool
