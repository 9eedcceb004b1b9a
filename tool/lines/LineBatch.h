// SPDX-License-Identifier: MIT
//
// LineBatch, some lines on their way through a run: the reader fills in their text, a worker the
// results, the writer takes those.

#pragma once

#include <cstddef>
#include <optional>
#include <utility>
#include <vector>

#include "output/Bytes.h"
#include "output/Failure.h"

namespace orvid_tool {

/// How many lines there were, and of which kinds.
struct LineCounts {
    std::size_t lines = 0;
    std::size_t blank = 0;
    std::size_t failed = 0;

    LineCounts& operator+=(const LineCounts& other) {
        lines += other.lines;
        blank += other.blank;
        failed += other.failed;
        return *this;
    }
};

struct LineBatch {
    enum Kind {
        whole,  ///< lines, each with its newline
        head,   ///< the beginning of a line that is longer than allowed
        part,   ///< more of such a line
    };

    Kind kind = whole;
    bool isFirst = false;  ///< of the input
    Bytes text;
    bool isOpen = false;  ///< the newline of its last line is neither in the input nor wanted
    std::optional<Failure> readFailure;  ///< the input could not be read after the text

    Bytes out;
    Bytes rejects;  ///< the lines that failed
    LineCounts counts;
    std::vector<Failure> failures;  ///< their lines count from 1 in this batch
    bool isStopped = false;         ///< the last failure ends the run

    /// Empties it for other lines. The memory of its texts stays.
    void clear() {
        LineBatch empty;
        empty.text.swap(text);
        empty.out.swap(out);
        empty.rejects.swap(rejects);
        empty.text.cut(0);
        empty.out.cut(0);
        empty.rejects.cut(0);
        *this = std::move(empty);
    }
};

}  // namespace orvid_tool
