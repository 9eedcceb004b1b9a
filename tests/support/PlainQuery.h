// SPDX-License-Identifier: MIT
//
// A second reading of RFC 9535, slow and plain: the grammar word for word, a function for each
// production, values copied, everything recursive. What the library makes of a query is compared
// with it. It needs no test framework: the fuzzers use it as well.

#pragma once

#include <ko/Orvid.h>

#include <optional>
#include <string>
#include <vector>

namespace orvid_test {

struct PlainResult {
    /// What is selected; nothing for a text that is no query.
    std::optional<std::vector<const ko::Orvid::Element*>> nodes;
    /// Whether the query has regular expressions, which are all taken to match, or has cost too
    /// much: then the nodes mean nothing.
    bool isUnknown = false;
};

/// The document and the text must be shallow.
PlainResult plainSelect(const std::string& text, const ko::Orvid::Element& root);

}  // namespace orvid_test
