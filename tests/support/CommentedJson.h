// SPDX-License-Identifier: MIT
//
// CommentedJson, documents as people write them, made of choices: comments wherever they may stand,
// tabs, CRLF, blank lines, trailing commas, containers on one line and on many. Each comment has a
// number of its own, and it is known to which value it belongs. It needs no test framework: the
// fuzzers use it as well.

#pragma once

#include <cstddef>
#include <functional>
#include <set>
#include <string>
#include <vector>

namespace orvid_test {

/// Returns a number below the given one, which is at least 1.
using Choice = std::function<unsigned(unsigned)>;

/// A value of the document, and the comments that go with it when it is removed, those within it
/// included.
struct CommentedValue {
    std::vector<std::string> pointer;  ///< keys and indexes, from the root
    std::set<int> comments;
};

struct CommentedJson {
    std::string text;
    std::vector<CommentedValue> values;  ///< all but the root
    int comments = 0;                    ///< how many there are, numbered from 0

    /// The numbers of the comments in a text, in its order.
    static std::vector<int> commentsIn(const std::string& text);
};

CommentedJson makeCommentedJson(const Choice& choose);

}  // namespace orvid_test
