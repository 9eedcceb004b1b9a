// SPDX-License-Identifier: MIT
//
// LineCounter turns offsets of a text that comes in pieces into lines and columns. It counts the
// newlines of a piece when the next one comes, and otherwise works only when it is asked.

#pragma once

#include <algorithm>
#include <cstdint>
#include <limits>
#include <string_view>

#include "text/ByteRuns.h"

namespace ko::Orvid {

/// A line and a column, both from 1; columns count bytes. What exceeds an int is its greatest
/// value.
struct LineAndColumn {
    int line;
    int column;
};

class LineCounter {
public:
    /// The position of the byte at `offset` (from 0, in the whole text), which lies in `piece`, the
    /// one that is counted next, or before it with no newline between.
    LineAndColumn position(std::string_view piece, std::uint64_t offset) const noexcept {
        if (offset < m_offset) {
            return {clamped(m_line), clamped(offset - m_lineBegin + 1)};
        }
        LineCounter counter = *this;
        counter.count(piece.substr(0, static_cast<std::size_t>(offset - m_offset)));
        return {clamped(counter.m_line), clamped(offset - counter.m_lineBegin + 1)};
    }

    /// Counts the newlines of the next piece.
    void count(std::string_view piece) noexcept {
        const std::uint64_t newlines =
            text::countOf('\n', piece.data(), piece.data() + piece.size());
        if (newlines > 0) {
            m_line += newlines;
            m_lineBegin = m_offset + piece.rfind('\n') + 1;
        }
        m_offset += piece.size();
    }

    /// How many bytes of the line of the next piece's first byte lie before that byte.
    std::uint64_t lineLength() const noexcept { return m_offset - m_lineBegin; }

private:
    static int clamped(std::uint64_t value) noexcept {
        constexpr auto greatest = static_cast<std::uint64_t>(std::numeric_limits<int>::max());
        return static_cast<int>(std::min(value, greatest));
    }

    std::uint64_t m_offset = 0;     ///< bytes counted
    std::uint64_t m_lineBegin = 0;  ///< offset of the line's first byte
    std::uint64_t m_line = 1;
};

}  // namespace ko::Orvid
