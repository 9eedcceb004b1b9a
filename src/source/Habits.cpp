// SPDX-License-Identifier: MIT
//
// Habits by majority.

#include "source/Habits.h"

#include <algorithm>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "source/Gap.h"
#include "text/layoutBounds.h"
#include "text/whitespace.h"

namespace ko::Orvid {

namespace {

using text::k_farthestLine;
using text::k_mostContainers;

/// Texts and how often each was seen.
class Tally {
public:
    void add(std::string_view text) { ++m_seen[std::string(text)]; }
    /// The one that was seen most, or `otherwise`.
    std::string best(const std::string& otherwise) const {
        const auto best =
            std::max_element(m_seen.begin(), m_seen.end(),
                             [](const auto& a, const auto& b) { return a.second < b.second; });
        return best == m_seen.end() ? otherwise : best->first;
    }

private:
    std::map<std::string, std::size_t> m_seen;
};

/// The indent of the line on which the byte at `offset` stands; nothing in a very long line.
std::string_view lineIndent(std::string_view text, std::size_t offset) {
    const std::size_t from = offset - std::min(offset, k_farthestLine);
    const std::size_t newline = text.substr(from, offset - from).rfind('\n');
    if (newline == std::string_view::npos && from > 0) {
        return {};
    }
    const std::size_t begin = newline == std::string_view::npos ? 0 : from + newline + 1;
    return indentOf(text.substr(begin, offset - begin));
}

/// Whether the line on which the byte at `offset` stands begins with a comma.
bool beginsWithComma(std::string_view text, std::size_t offset) {
    const std::size_t from = offset - std::min(offset, k_farthestLine);
    const std::size_t newline = text.substr(from, offset - from).rfind('\n');
    return newline != std::string_view::npos &&
           text[text.find_first_not_of(" \t", from + newline + 1)] == ',';
}

class Survey {
public:
    explicit Survey(const SourceMap& map) : m_map(map) {}

    Habits run() {
        std::size_t seen = 0;
        for (std::uint32_t value = 0; value < m_map.size() && seen < k_mostContainers; ++value) {
            if (m_map.isContainer(value) && m_map.hasChildren(value)) {
                while (!m_open.empty() && value >= m_map.next(m_open.back().container)) {
                    m_open.pop_back();
                }
                look(value);
                m_open.push_back({value, std::nullopt});
                ++seen;
            } else if (m_map.isContainer(value)) {
                lookAtComments(value);
            }
        }
        return result();
    }

private:
    struct Level {
        std::uint32_t container;
        std::optional<std::string> keyIndent;
    };

    void look(std::uint32_t container) {
        const bool isMany = isManyLine(m_map, container);
        const bool isObject = m_map.isObject(container);
        addLines(container, isMany);
        const ChildSpan first = m_map.firstChild(container);
        if (isObject) {
            lookAtColon(first);
        }
        if (isMany) {
            lookAtLines(container);
        } else {
            lookAtLine(container, first);
        }
    }

    void addLines(std::uint32_t container, bool isMany) {
        const bool isFilled = holdsFilled(m_map, container);
        if (m_map.isObject(container)) {
            m_lines.add(isMany);
            if (!isFilled && !m_open.empty()) {
                (m_map.isObject(m_open.back().container) ? m_flatMembers : m_flatItems).add(isMany);
            }
        } else if (holdsContainer(m_map, container)) {
            m_lines.add(isMany);
            m_lists.add(isMany);
        } else {
            m_scalars.add(isMany);
            if (isFilled) {
                m_mixed.add(isMany);
            }
        }
    }

    void lookAtColon(const ChildSpan& member) {
        const std::string_view colon = m_map.text(member.keyEnd, m_map[member.value].begin());
        if (!hasComment(colon) && !hasNewline(colon)) {
            m_colons.add(colon);
        }
    }

    void lookAtLines(std::uint32_t container) {
        m_endComma.add(hasComma(closeGap(m_map, container)));
        if (!m_open.empty() && m_map.isObject(m_open.back().container)) {
            lookAtBracket(container);
        }
        addIndent(container, breakOf(gapOf(openGap(m_map, container), GapKind::open).lead));
        lookAtLineComma(container);
    }

    /// The indent of the line on which the container begins; where that begins with a comma, the
    /// one of its closing bracket.
    std::string_view baseOf(std::uint32_t container) {
        const std::size_t begin = m_map[container].begin();
        const std::string_view indent = lineIndent(m_map.text(), begin);
        if (!beginsWithComma(m_map.text(), begin)) {
            return indent;
        }
        const std::string_view close = gapOf(closeGap(m_map, container), GapKind::close).lead;
        const std::string_view own = indentOf(close);
        if (!hasNewline(close) || own.substr(0, indent.size()) != indent) {
            return indent;
        }
        m_commaBases.add(own.substr(indent.size()));
        return own;
    }

    void lookAtLineComma(std::uint32_t container) {
        const ChildSpan first = m_map.firstChild(container);
        if (!m_map.hasNext(container, first)) {
            return;
        }
        const ChildSpan second = m_map.nextChild(container, first);
        const Gap gap = gapOf(m_map.text(second.gapBegin, second.begin), GapKind::between);
        const std::string lineBreak = breakOf(gap.lead);
        const std::string_view outer = baseOf(container);
        if (hasNewline(lineBreak)) {
            const std::string_view line =
                std::string_view(lineBreak).substr(lineBreak.find('\n') + 1);
            const bool leads = hasComma(line) && line.substr(0, outer.size()) == outer;
            m_leadCommas.add(leads);
            if (leads) {
                m_leadingCommas.add(line.substr(outer.size()));
            }
        }
    }

    /// Comment lines in a container without children. Those that hold none are not counted, since
    /// an excerpt of the document may leave them out.
    void lookAtComments(std::uint32_t container) {
        const std::string_view text = m_map.text(container);
        const std::string_view held = text.substr(1, text.size() - 2);
        if (m_commented == k_mostContainers || !hasComment(held)) {
            return;
        }
        ++m_commented;
        const Gap gap = gapOf(held, GapKind::only);
        const auto comment = std::find_if(gap.lines.begin(), gap.lines.end(), hasComment);
        if (comment != gap.lines.end()) {
            addIndent(container, breakOf(*comment));
        }
    }

    /// That of a line within the container, which begins so.
    void addIndent(std::uint32_t container, const std::string& lineBreak) {
        const std::string_view indent = indentOf(lineBreak);
        const std::string_view outer = baseOf(container);
        if (!hasNewline(lineBreak)) {
            return;
        }
        m_hasFlat = m_hasFlat || indent == outer;
        if (indent.size() > outer.size() && indent.substr(0, outer.size()) == outer) {
            m_indents.add(indent.substr(outer.size()));
        }
    }

    /// Whether the bracket of a member stands on a line of its own, with the indent of the keys.
    void lookAtBracket(std::uint32_t member) {
        const std::string_view before = m_map.text(0, m_map[member].begin());
        const std::size_t colon = before.find_last_not_of(text::k_whitespace);
        const std::string_view gap = before.substr(colon + 1);
        if (before[colon] == ':') {
            m_ownBrackets.add(hasNewline(gap) && indentOf(gap) == keyIndent(m_open.back()));
        }
    }

    /// Read once for each object: many comments may stand before its first key.
    const std::string& keyIndent(Level& object) {
        if (!object.keyIndent) {
            const Gap gap = gapOf(openGap(m_map, object.container), GapKind::open);
            object.keyIndent = std::string(indentOf(breakOf(gap.lead)));
        }
        return *object.keyIndent;
    }

    void lookAtLine(std::uint32_t container, const ChildSpan& first) {
        const std::string_view pad = openGap(m_map, container);
        if (!hasComment(pad)) {
            (m_map.isObject(container) ? m_objectPads : m_arrayPads).add(pad);
        }
        const std::string_view end = closeGap(m_map, container);
        if (isBlankLine(end)) {
            (m_map.isObject(container) ? m_objectEnds : m_arrayEnds).add(end);
        }
        if (m_map.hasNext(container, first)) {
            const ChildSpan second = m_map.nextChild(container, first);
            const std::string_view text = m_map.text(second.gapBegin, second.begin);
            const Gap gap = gapOf(text, GapKind::between);
            if (!hasComment(gap.lead) && !hasNewline(text)) {
                (m_map.isObject(container) ? m_memberCommas : m_itemCommas).add(gap.lead);
            }
        }
    }

    void setLines(Habits& habits) const {
        habits.breaksLines = m_lines.any() ? m_lines.yes > 0 : m_scalars.no == 0;
        const auto breaks = [&](const Votes& lines, bool otherwise) {
            return habits.breaksLines && (lines.any() ? lines.yes >= lines.no : otherwise);
        };
        habits.breaksScalarArrays = breaks(m_scalars, true);
        habits.breaksLists = breaks(m_lists, true);
        habits.breaksFlatMembers = breaks(m_flatMembers, true);
        habits.breaksFlatItems = breaks(m_flatItems, true);
        habits.breaksMixedArrays =
            breaks(m_mixed, habits.breaksScalarArrays || habits.breaksFlatItems);
    }

    Habits result() const {
        Habits habits;
        const std::size_t newline = m_map.text().find('\n');
        if (newline != std::string_view::npos && newline > 0 && m_map.text()[newline - 1] == '\r') {
            habits.newline = "\r\n";
        }
        const bool isKnown = m_lines.any() || m_scalars.any();
        const bool isCompact = isKnown && m_colons.best(": ") == ":";
        habits.indent = m_indents.best(m_hasFlat ? "" : habits.indent);
        habits.colon = m_colons.best(habits.colon);
        const std::string comma = isCompact ? "" : " ";
        habits.memberComma = m_memberCommas.best(m_itemCommas.best(comma));
        habits.itemComma = m_itemCommas.best(m_memberCommas.best(comma));
        habits.objectPad = m_objectPads.best(m_arrayPads.best(""));
        habits.arrayPad = m_arrayPads.best("");
        habits.objectEnd = m_objectEnds.best(habits.objectPad);
        habits.arrayEnd = m_arrayEnds.best(habits.arrayPad);
        setLines(habits);
        habits.opensOnLine = m_ownBrackets.yes > m_ownBrackets.no;
        if (m_leadCommas.yes > m_leadCommas.no) {
            habits.leadingComma = m_leadingCommas.best("");
            habits.commaIndent = m_commaBases.best("");
        }
        habits.endsWithComma = m_endComma.yes > m_endComma.no;
        return habits;
    }

    const SourceMap& m_map;
    Tally m_indents, m_colons, m_memberCommas, m_itemCommas, m_objectPads, m_arrayPads,
        m_objectEnds, m_arrayEnds, m_leadingCommas, m_commaBases;
    Votes m_lines, m_scalars, m_mixed, m_lists, m_flatMembers, m_flatItems, m_ownBrackets,
        m_endComma, m_leadCommas;
    bool m_hasFlat = false;       ///< whether lines in a container have no indent
    std::vector<Level> m_open;    ///< the containers around the one that is looked at
    std::size_t m_commented = 0;  ///< containers without children that hold comments
};

}  // namespace

Habits habitsOf(const SourceMap& map) { return Survey(map).run(); }

std::string_view openGap(const SourceMap& map, std::uint32_t value) {
    const ChildSpan first = map.firstChild(value);
    return map.text(first.gapBegin, first.begin);
}

std::string_view closeGap(const SourceMap& map, std::uint32_t value) {
    std::size_t begin = map[value].begin() + 1;
    for (std::uint32_t child = value + 1; child < map.next(value); child = map.next(child)) {
        begin = map[child].end();
    }
    return map.text(begin, map[value].end() - 1);
}

bool holdsContainer(const SourceMap& map, std::uint32_t array) {
    return map.hasChildren(array) && map.isContainer(array + 1);
}

bool holdsFilled(const SourceMap& map, std::uint32_t container) {
    std::uint32_t child = container + 1;
    while (child < map.next(container) && !map.hasChildren(child)) {
        child = map.next(child);
    }
    return child < map.next(container);
}

bool isManyLine(const SourceMap& map, std::uint32_t container) {
    return hasNewline(openGap(map, container)) || hasNewline(closeGap(map, container));
}

}  // namespace ko::Orvid
