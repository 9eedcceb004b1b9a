// SPDX-License-Identifier: MIT
//
// Words of calls that a hint says to type, quoted for a shell.

#pragma once

#include <string>

namespace orvid_tool {

/// The word, in single quotes where it has anything in it that means something to a shell.
std::string shellWord(const std::string& word);

/// The query that selects what the path does, of which `[*]` and the key `*` are all items and all
/// members, as a word; empty for a path that is malformed or no UTF-8.
std::string queryWord(const std::string& path);

/// The call of the verb `query` with it; empty as well.
std::string queryCall(const std::string& path);

/// Whether the text is a query.
bool isQuery(const std::string& text);

}  // namespace orvid_tool
