// SPDX-License-Identifier: MIT
//
// StayingLines, the lines between two neighbours that stay, gathered from the gaps that were
// between them. What stood between the gaps is gone, and leaves no hole: of the blank lines before
// and after it only the more are kept, and only those of its own at an end of the container. Each
// line keeps the newline that ended it, which in a gap begins what follows.

#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "source/Gap.h"

namespace ko::Orvid {

class StayingLines {
public:
    /// `isAtBegin` says whether the first gap begins with the opening bracket.
    explicit StayingLines(bool isAtBegin) : m_isAtBegin(isAtBegin) {}

    /// The lines of the next gap.
    void add(const Gap& gap, bool isLast);
    /// They begin with a newline each, the first with the one that it had.
    std::string text() const;
    /// What ended the last line, to begin what follows with; empty where there is none.
    std::string end() const;

private:
    struct Line {
        std::string text;  ///< without the newlines before it and after it
        std::string begin;
        std::string end;
    };

    static std::vector<Line> linesOf(const Gap& gap);
    void append(std::vector<Line> lines);
    void dropBlank(std::size_t most);

    std::vector<Line> m_lines;
    std::size_t m_blank = 0;  ///< how many blank lines are at the end
    bool m_isFirst = true;
    bool m_isAtBegin;
};

}  // namespace ko::Orvid
