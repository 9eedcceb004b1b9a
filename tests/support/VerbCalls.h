// SPDX-License-Identifier: MIT
//
// A call of each verb of the command, for tests of what all verbs do alike.

#pragma once

#include <algorithm>
#include <string>
#include <vector>

namespace orvid_test {

/// What a verb reads, and from where.
enum class VerbReads {
    document,  ///< whole documents, from files or from standard input
    check,     ///< the same, strictly, for `check`
    stream,    ///< JSON, piece by piece or line by line, from files or from standard input
    table,     ///< no JSON, from files or from standard input
    pair,      ///< two documents, of which the second is a word that is still to come
    file,      ///< one document, which is never standard input
};

struct VerbCall {
    VerbReads reads;
    /// The words up to the files.
    std::vector<std::string> words;
};

/// A call of each verb that reads documents or records, which works on the files that follow.
/// `change` is a file with a patch for those that need one.
inline std::vector<VerbCall> verbCalls(const std::string& change) {
    return {{VerbReads::document, {"print"}},
            {VerbReads::document, {"get", "a"}},
            {VerbReads::document, {"set", "a=1"}},
            {VerbReads::document, {"insert", "a=1"}},
            {VerbReads::document, {"remove", "a"}},
            {VerbReads::document, {"rename", "a", "b"}},
            {VerbReads::document, {"move", "a", "b"}},
            {VerbReads::document, {"copy", "a", "b"}},
            {VerbReads::document, {"find", "a", "1"}},
            {VerbReads::document, {"query", "$.a"}},
            {VerbReads::document, {"select", "$.a"}},
            {VerbReads::document, {"keys", "a"}},
            {VerbReads::document, {"length", "a"}},
            {VerbReads::document, {"type", "a"}},
            {VerbReads::document, {"paths"}},
            {VerbReads::document, {"defaults"}},
            {VerbReads::document, {"patch", change}},
            {VerbReads::document, {"merge", change}},
            {VerbReads::check, {"check"}},
            {VerbReads::stream, {"split"}},
            {VerbReads::stream, {"join"}},
            {VerbReads::stream, {"csv"}},
            {VerbReads::stream, {"unpaths"}},
            {VerbReads::table, {"uncsv"}},
            {VerbReads::pair, {"diff", change}},
            {VerbReads::file, {"edit"}}};
}

/// The words of those that read one of `kinds`.
inline std::vector<std::vector<std::string>> wordsOfVerbs(const std::string& change,
                                                          const std::vector<VerbReads>& kinds) {
    std::vector<std::vector<std::string>> words;
    for (const VerbCall& call : verbCalls(change)) {
        if (std::find(kinds.begin(), kinds.end(), call.reads) != kinds.end()) {
            words.push_back(call.words);
        }
    }
    return words;
}

}  // namespace orvid_test
