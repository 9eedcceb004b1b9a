// SPDX-License-Identifier: MIT
//
// YAJL alone, the measure of what a tree costs on top of the characters: a pass through a text with
// callbacks that do nothing, and the writing of tokens that cost nothing to walk.

#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "summary.h"

namespace orvid_bench {

/// Reads the text to its end and keeps nothing. UTF-8 is not checked, as the library has it set.
/// Throws std::runtime_error for a text that is no JSON.
void passOver(const std::string& text);

/// What YAJL sees in the text.
Summary summaryOfPass(const std::string& text);

/// A document as the flat list of the calls that write it.
class TokenList {
public:
    explicit TokenList(const std::string& text);

    /// Writes the tokens with yajl_gen into its own buffer, indented by four spaces; returns the
    /// length.
    std::size_t write() const;
    std::string text() const;

private:
    enum class Kind { null, boolean, number, string, startMap, endMap, startArray, endArray };
    struct Token {
        Kind kind;
        bool value;         ///< of a boolean
        std::size_t begin;  ///< of a number or string, in m_bytes
        std::size_t length;
    };
    struct Recorder;

    template<class Use>
    auto generate(const Use& use) const;

    std::vector<Token> m_tokens;
    std::string m_bytes;
};

}  // namespace orvid_bench
