// SPDX-License-Identifier: MIT
//
// Lines without commas, and with the fewer blank lines left out.

#include "source/StayingLines.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <string_view>
#include <utility>

namespace ko::Orvid {

std::vector<StayingLines::Line> StayingLines::linesOf(const Gap& gap) {
    std::vector<Line> lines;
    for (std::size_t i = 0; i < gap.lines.size(); ++i) {
        const std::string_view line = gap.lines[i];
        std::string text = hasComma(line) ? withoutComma(line) : std::string(line);
        if (!isBlankLine(text) || !hasComma(line)) {
            const std::string_view begin = newlineOf(line);
            const std::string_view next = i + 1 < gap.lines.size() ? gap.lines[i + 1] : gap.lead;
            lines.push_back(
                {text.substr(begin.size()), std::string(begin), std::string(newlineOf(next))});
        }
    }
    return lines;
}

void StayingLines::add(const Gap& gap, bool isLast) {
    std::vector<Line> lines = linesOf(gap);
    const auto solid = std::find_if(lines.begin(), lines.end(),
                                    [](const Line& line) { return !isBlankLine(line.text); });
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

void StayingLines::append(std::vector<Line> lines) {
    for (Line& line : lines) {
        m_blank = isBlankLine(line.text) ? m_blank + 1 : 0;
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
    for (auto line = m_lines.begin(); line != m_lines.end(); ++line) {
        text += line == m_lines.begin() ? line->begin : std::prev(line)->end;
        text += line->text;
    }
    return text;
}

std::string StayingLines::end() const {
    return m_lines.empty() ? std::string() : m_lines.back().end;
}

}  // namespace ko::Orvid
