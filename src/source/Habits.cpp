// SPDX-License-Identifier: MIT
//
// Habits by majority.

#include "source/Habits.h"

#include <algorithm>
#include <map>

#include "source/Gap.h"

namespace ko::Orvid {

namespace {

constexpr std::uint32_t k_mostContainers = 4000;
/// How far the begin of a line is looked for, in bytes.
constexpr std::size_t k_farthestLine = 1000;

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

class Survey {
public:
    explicit Survey(const Places& places) : m_places(places) {}

    Habits run() {
        std::uint32_t seen = 0;
        for (std::uint32_t value = 0; value < m_places.size() && seen < k_mostContainers; ++value) {
            if (m_places.isContainer(value) && m_places.hasChildren(value)) {
                look(value);
                ++seen;
            }
        }
        return result();
    }

private:
    void look(std::uint32_t container) {
        const bool isMany = isManyLine(m_places, container);
        const bool isObject = m_places.isObject(container);
        if (isObject || holdsContainer(container)) {
            m_lines.add(isMany);
        } else {
            m_scalarLines.add(isMany);
        }
        const ChildPlace first = m_places.firstChild(container);
        if (isObject) {
            lookAtColon(first);
        }
        if (isMany) {
            lookAtLines(container);
        } else {
            lookAtLine(container, first);
        }
    }

    bool holdsContainer(std::uint32_t array) const {
        return m_places[array].next() > array + 1 && m_places.isContainer(array + 1);
    }

    void lookAtColon(const ChildPlace& member) {
        const std::string_view colon = m_places.text(member.keyEnd, m_places[member.value].begin());
        if (!hasComment(colon) && !hasNewline(colon)) {
            m_colons.add(colon);
        }
    }

    void lookAtLines(std::uint32_t container) {
        m_endComma.add(hasComma(closeGap(m_places, container)));
        const Gap gap = gapOf(openGap(m_places, container), GapKind::open);
        const std::string lineBreak = breakOf(gap.lead);
        const std::string_view indent = indentOf(lineBreak);
        const std::string_view outer = lineIndent(m_places.text(), m_places[container].begin());
        if (hasNewline(lineBreak) && indent.size() > outer.size() &&
            indent.substr(0, outer.size()) == outer) {
            m_indents.add(indent.substr(outer.size()));
        }
    }

    void lookAtLine(std::uint32_t container, const ChildPlace& first) {
        const std::string_view pad = openGap(m_places, container);
        if (!hasComment(pad)) {
            (m_places.isObject(container) ? m_objectPads : m_arrayPads).add(pad);
        }
        if (m_places.hasNext(container, first)) {
            const ChildPlace second = m_places.nextChild(container, first);
            const std::string_view text = m_places.text(second.gapBegin, second.begin);
            const Gap gap = gapOf(text, GapKind::between);
            if (!hasComment(text)) {
                m_commas.add(gap.lead);
            }
        }
    }

    Habits result() const {
        Habits habits;
        const std::size_t newline = m_places.text().find('\n');
        if (newline != std::string_view::npos && newline > 0 &&
            m_places.text()[newline - 1] == '\r') {
            habits.newline = "\r\n";
        }
        const bool isKnown = m_lines.any() || m_scalarLines.any();
        const bool isCompact = isKnown && m_colons.best(": ") == ":";
        habits.indent = m_indents.best(habits.indent);
        habits.colon = m_colons.best(habits.colon);
        habits.comma = m_commas.best(isCompact ? "" : " ");
        habits.objectPad = m_objectPads.best("");
        habits.arrayPad = m_arrayPads.best("");
        habits.breaksLines = m_lines.any() ? m_lines.yes > 0 : m_scalarLines.no == 0;
        habits.breaksScalarArrays =
            habits.breaksLines && (!m_scalarLines.any() || m_scalarLines.yes >= m_scalarLines.no);
        habits.endsWithComma = m_endComma.yes > m_endComma.no;
        return habits;
    }

    const Places& m_places;
    Tally m_indents, m_colons, m_commas, m_objectPads, m_arrayPads;
    Votes m_lines, m_scalarLines, m_endComma;
};

}  // namespace

Habits habitsOf(const Places& places) { return Survey(places).run(); }

std::string_view openGap(const Places& places, std::uint32_t value) {
    const ChildPlace first = places.firstChild(value);
    return places.text(first.gapBegin, first.begin);
}

std::string_view closeGap(const Places& places, std::uint32_t value) {
    std::size_t begin = places[value].begin() + 1;
    for (std::uint32_t child = value + 1; child < places[value].next();
         child = places[child].next()) {
        begin = places[child].end();
    }
    return places.text(begin, places[value].end() - 1);
}

bool isManyLine(const Places& places, std::uint32_t container) {
    return hasNewline(openGap(places, container)) || hasNewline(closeGap(places, container));
}

}  // namespace ko::Orvid
