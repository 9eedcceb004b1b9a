// SPDX-License-Identifier: MIT
//
// A query among the words of a call.

#pragma once

#include <ko/Orvid.h>

#include <atomic>
#include <cstddef>
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

/// Whether a query has selected anything in the documents of an edit, whichever threads edit them.
class Selected {
public:
    /// Adds that so many values were selected in a document.
    void add(std::size_t count);
    /// Whether there were documents, and nothing was selected in any.
    bool isNothing() const { return m_hasDocuments && !m_isAnything; }

private:
    std::atomic<bool> m_hasDocuments{false};
    std::atomic<bool> m_isAnything{false};
};

/// Whether the query filters the values in the root, which is mostly meant to be the record.
bool filtersValuesInRoot(const std::string& text);

/// readTree() of the document's text into its root, but no more than the query looks at.
void readFor(const ko::Orvid::JsonPath& query, Document& document,
             const ko::Orvid::ReadOptions& options = wholeOptions());

}  // namespace orvid_tool
