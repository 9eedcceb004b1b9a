// SPDX-License-Identifier: MIT
//
// Gaps located by what stands on both sides of them.

#include "source/FormerGaps.h"

namespace ko::Orvid {

std::string_view FormerGaps::textAt(const Frame& frame, std::size_t number) const {
    const ValueSpan& container = m_map[frame.self.before];
    const std::size_t begin =
        number == 0 ? container.begin() + 1 : m_map[frame.siblings[number - 1]].end();
    const std::size_t end = number == frame.siblings.size()
                                ? container.end() - 1
                                : m_counterparts.before(frame.siblings[number]).begin;
    return m_map.text(begin, end);
}

Gap FormerGaps::at(const Frame& frame, std::size_t number) const {
    const bool isLast = number == frame.siblings.size();
    const GapKind whenFirst = isLast ? GapKind::only : GapKind::open;
    const GapKind otherwise = isLast ? GapKind::close : GapKind::between;
    return gapOf(textAt(frame, number), number == 0 ? whenFirst : otherwise);
}

Gap FormerGaps::before(std::uint32_t value) const {
    const OldValue& old = m_counterparts.before(value);
    return gapOf(m_map.text(old.gapBegin, old.begin),
                 old.position == 0 ? GapKind::open : GapKind::between);
}

Gap FormerGaps::after(std::uint32_t value) const {
    const std::uint32_t parent = m_counterparts.before(value).parent;
    const std::uint32_t next = m_map.next(value);
    const bool isLast = next == m_map.next(parent);
    const std::size_t end = isLast ? m_map[parent].end() - 1 : m_counterparts.before(next).begin;
    return gapOf(m_map.text(m_map[value].end(), end), isLast ? GapKind::close : GapKind::between);
}

std::string FormerGaps::lineBreakBefore(std::uint32_t value) const {
    while (m_counterparts.before(value).parent != SourceMap::k_none) {
        const OldValue& old = m_counterparts.before(value);
        const std::string_view text = m_map.text(old.gapBegin, old.begin);
        if (hasNewline(text)) {
            return breakOf(text);
        }
        value = old.parent;
    }
    return {};
}

}  // namespace ko::Orvid
