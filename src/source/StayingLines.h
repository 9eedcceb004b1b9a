// SPDX-License-Identifier: MIT
//
// StayingLines, the lines between two neighbours that stay, gathered from the gaps that were
// between them. What stood between the gaps is gone, and leaves no hole: of the blank lines before
// and after it only the more are kept, and only those of its own at an end of the container.

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
    std::string text() const;

private:
    void append(std::vector<std::string> lines);
    void dropBlank(std::size_t most);

    std::vector<std::string> m_lines;
    std::size_t m_blank = 0;  ///< how many blank lines are at the end
    bool m_isFirst = true;
    const bool m_isAtBegin;
};

}  // namespace ko::Orvid
