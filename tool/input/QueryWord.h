// SPDX-License-Identifier: MIT
//
// A query among the words of a call.

#pragma once

#include <ko/Orvid.h>

#include <string>

#include "input/Document.h"

namespace orvid_tool {

/// The query of that text. Throws Failure, which shows the query with carets under the error, for
/// text that is none.
ko::Orvid::JsonPath queryOf(const std::string& text);

/// Whether the query filters the values in the root, which is mostly meant to be the record.
bool filtersValuesInRoot(const std::string& text);

/// readTree() of the document's text into its root, but no more than the query looks at.
void readFor(const ko::Orvid::JsonPath& query, Document& document,
             const ko::Orvid::ReadOptions& options = wholeOptions());

}  // namespace orvid_tool
