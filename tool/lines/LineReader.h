// SPDX-License-Identifier: MIT
//
// LineReader cuts an input into batches of whole lines.

#pragma once

#include <cstddef>

#include "lines/LineBatch.h"

namespace orvid_tool {

class Input;

/// Holds no more than one batch: about a megabyte, or the longest line that is allowed.
class LineReader {
public:
    /// `keepsEnd` says that the result of a last line without a newline is to have none either.
    LineReader(Input& input, std::size_t longest, bool keepsEnd)
        : m_input(input), m_longest(longest), m_keepsEnd(keepsEnd) {}

    /// Fills an empty batch. Returns false when there is nothing more. A last line without a
    /// newline is given one.
    bool next(LineBatch& batch);

private:
    bool fill(LineBatch& batch);
    /// Looks for the last newline; there is none before `from`.
    bool cutLines(Bytes& text, std::size_t from);
    /// What stands from `start` on is for the next batch.
    void keepRest(Bytes& text, std::size_t start);
    bool cutLong(LineBatch& batch);
    bool end(LineBatch& batch);

    Input& m_input;
    std::size_t m_longest;
    bool m_keepsEnd;
    Bytes m_rest;  ///< what was read after the last batch
    bool m_isFirst = true;
    bool m_isInLong = false;  ///< inside a line that is longer than allowed
    bool m_isAtEnd = false;
};

}  // namespace orvid_tool
