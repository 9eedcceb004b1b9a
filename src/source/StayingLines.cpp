// SPDX-License-Identifier: MIT
//
// Lines without commas, and with the fewer blank lines left out.

#include "source/StayingLines.h"

#include <algorithm>
#include <cstddef>
#include <string_view>
#include <utility>

namespace ko::Orvid {

void StayingLines::add(const Gap& gap, bool isLast) {
    std::vector<std::string> lines;
    for (const std::string_view line : gap.lines) {
        std::string text = hasComma(line) ? withoutComma(line) : std::string(line);
        if (!isBlankLine(text) || !hasComma(line)) {
            lines.push_back(std::move(text));
        }
    }
    const auto solid = std::find_if(lines.begin(), lines.end(),
                                    [](const std::string& line) { return !isBlankLine(line); });
    const auto blank = static_cast<std::size_t>(solid - lines.begin());
    if (m_isFirst) {
        m_isFirst = false;
    } else if (isLast && solid == lines.end()) {
        dropBlank(m_lines.size());
    } else if (m_isAtBegin && m_lines.size() == m_blank) {
        lines.erase(lines.begin(), solid);
    } else {
        const std::size_t less = std::min(blank, m_blank);
        lines.erase(lines.begin(), lines.begin() + static_cast<std::ptrdiff_t>(less));
    }
    append(std::move(lines));
}

void StayingLines::append(std::vector<std::string> lines) {
    for (std::string& line : lines) {
        m_blank = isBlankLine(line) ? m_blank + 1 : 0;
        m_lines.push_back(std::move(line));
    }
}

void StayingLines::dropBlank(std::size_t most) {
    while (most-- > 0 && m_blank > 0) {
        m_lines.pop_back();
        --m_blank;
    }
}

std::string StayingLines::text() const {
    std::string text;
    for (const std::string& line : m_lines) {
        text += line;
    }
    return text;
}

}  // namespace ko::Orvid
