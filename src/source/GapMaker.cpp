// SPDX-License-Identifier: MIT
//
// Gaps between neighbours that were none before.

#include "source/GapMaker.h"

#include <algorithm>

namespace ko::Orvid {

namespace {

constexpr std::uint32_t k_none = SourceMap::k_none;

bool beginsNewline(std::string_view text) {
    return text.substr(0, 1) == "\n" || text.substr(0, 2) == "\r\n";
}

std::string joined(const std::vector<std::string>& lines) {
    std::string text;
    for (const std::string& line : lines) {
        text += line;
    }
    return text;
}

/// The lines between two neighbours that stay, gathered from the gaps that were between them. What
/// stood between the gaps is gone, and leaves no hole: of the blank lines before and after it only
/// the more are kept, and only those of its own at an end of the container.
class LineCollector {
public:
    /// The lines of the next gap.
    void add(const Gap& gap, bool isLast) {
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

    explicit LineCollector(bool isAtBegin) : m_isAtBegin(isAtBegin) {}

    const std::vector<std::string>& lines() const { return m_lines; }

private:
    void append(std::vector<std::string> lines) {
        for (std::string& line : lines) {
            m_blank = isBlankLine(line) ? m_blank + 1 : 0;
            m_lines.push_back(std::move(line));
        }
    }

    void dropBlank(std::size_t most) {
        while (most-- > 0 && m_blank > 0) {
            m_lines.pop_back();
            --m_blank;
        }
    }

    std::vector<std::string> m_lines;
    std::size_t m_blank = 0;  ///< how many blank lines are at the end
    bool m_isFirst = true;
    const bool m_isAtBegin;
};

}  // namespace

const Habits& GapMaker::habits() {
    if (!m_habits) {
        m_habits = habitsOf(m_map);
    }
    return *m_habits;
}

GapMaker::Sides GapMaker::sidesOf(const Frame& frame) {
    return {frame.written == 0 ? nullptr : &frame.items[frame.written - 1],
            frame.written == frame.items.size() ? nullptr : &frame.items[frame.written]};
}

bool GapMaker::isHere(const Frame& frame, const Item& item) const {
    return item.before != k_none && frame.self.before != k_none &&
           m_counterparts.before(item.before).parent == frame.self.before;
}

bool GapMaker::staysHere(const Frame& frame, const Item& item) const {
    return isHere(frame, item) && frame.stays[positionOf(item)];
}

std::size_t GapMaker::positionOf(const Item& item) const {
    return m_counterparts.before(item.before).position;
}

bool GapMaker::areNeighbours(const Frame& frame, const Sides& sides) const {
    const bool areHere = frame.self.before != k_none &&
                         (sides.left == nullptr || isHere(frame, *sides.left)) &&
                         (sides.right == nullptr || isHere(frame, *sides.right));
    if (!areHere) {
        return false;
    }
    const std::size_t left = sides.left == nullptr ? 0 : positionOf(*sides.left) + 1;
    const std::size_t right =
        sides.right == nullptr ? frame.siblings.size() : positionOf(*sides.right);
    return left == right;
}

std::string GapMaker::gap(const Frame& frame) {
    const Sides sides = sidesOf(frame);
    if (areNeighbours(frame, sides)) {
        const std::size_t number = sides.left == nullptr ? 0 : positionOf(*sides.left) + 1;
        return frame.reindent.apply(siblingGapText(frame, number));
    }
    return madeGap(frame, sides);
}

std::string GapMaker::madeGap(const Frame& frame, const Sides& sides) {
    Text tailText = tail(frame, sides);
    const Text linesText = lines(frame, sides);
    if (frame.items.empty() && !hasComment(tailText) && !hasComment(linesText)) {
        return {};
    }
    Text leadText = lead(frame, sides);
    const bool isOneLine = !hasNewline(linesText) && !hasNewline(leadText);
    placeComma(frame, sides, tailText, leadText, isOneLine);
    const std::string& indent = sides.right == nullptr ? frame.lineIndent : frame.itemIndent;
    Text gap = tailText;
    append(gap, linesText, indent);
    append(gap, leadText, indent);
    if (endsInLineComment(gap)) {
        gap += habits().newline + indent;
    }
    return gap;
}

/// A line comment must end before what follows it.
void GapMaker::append(Text& gap, const Text& part, const std::string& indent) {
    if (!part.empty() && !beginsNewline(part) && endsInLineComment(gap)) {
        gap += habits().newline + indent +
               part.substr(std::min(part.find_first_not_of(" \t"), part.size()));
    } else {
        gap += part;
    }
}

std::string GapMaker::tail(const Frame& frame, const Sides& sides) const {
    if (sides.left != nullptr) {
        return sides.left->before == k_none
                   ? Text()
                   : frame.itemReindent.apply(gapAfter(sides.left->before).tail);
    }
    return frame.self.before == k_none ? Text() : frame.reindent.apply(siblingGap(frame, 0).tail);
}

/// The comments of a container that was empty come first.
std::string GapMaker::lines(const Frame& frame, const Sides& sides) const {
    const bool needsComma = frame.siblings.empty()
                                ? sides.left == nullptr && frame.self.before != k_none
                                : sides.right == nullptr || staysHere(frame, *sides.right);
    if (!needsComma) {
        return {};
    }
    const std::size_t last = sides.right == nullptr || frame.siblings.empty()
                                 ? frame.siblings.size()
                                 : positionOf(*sides.right);
    std::size_t first = last;
    while (first > 0 && !frame.stays[first - 1]) {
        --first;
    }
    LineCollector collector(first == 0);
    for (std::size_t number = first; number <= last; ++number) {
        collector.add(siblingGap(frame, number), number == frame.siblings.size());
    }
    return frame.reindent.apply(joined(collector.lines()));
}

std::string GapMaker::lead(const Frame& frame, const Sides& sides) {
    if (sides.right == nullptr) {
        return closingLead(frame);
    }
    const Item& item = *sides.right;
    const bool isFirst = sides.left == nullptr;
    if (item.before == k_none) {
        return usualBreak(frame, isFirst);
    }
    const Gap own = gapBefore(item.before);
    if (isHere(frame, item) && isFirst == (positionOf(item) == 0)) {
        const Text left = breakLeft(frame, sides);
        return frame.reindent.apply(left.empty() ? Text(own.lead) : leadAfter(left, own.lead));
    }
    const Text usual = usualBreak(frame, isFirst);
    const std::string indent = hasNewline(usual) ? std::string(indentOf(usual)) : frame.itemIndent;
    return leadAfter(usual, reindentOf(frame, item, indent).apply(own.lead));
}

/// The line break before the first on the line of the right neighbour, where those before it on
/// that line are gone: it stays, and so do the lines. Empty where there is none.
std::string GapMaker::breakLeft(const Frame& frame, const Sides& sides) const {
    const bool mayBeLeft =
        sides.left != nullptr && staysHere(frame, *sides.left) && staysHere(frame, *sides.right);
    if (!mayBeLeft || hasNewline(siblingGapText(frame, positionOf(*sides.right)))) {
        return {};
    }
    const std::size_t first = positionOf(*sides.left) + 1;
    for (std::size_t number = positionOf(*sides.right); number-- > first;) {
        if (hasNewline(siblingGapText(frame, number))) {
            return breakOf(siblingGap(frame, number).lead);
        }
    }
    return {};
}

std::string GapMaker::closingLead(const Frame& frame) {
    if (frame.self.before != k_none) {
        const std::size_t last = frame.siblings.size();
        const bool isOwn =
            last > 0 || frame.items.empty() || hasNewline(siblingGapText(frame, last));
        if (isOwn) {
            return frame.reindent.apply(withoutComma(siblingGap(frame, last).lead));
        }
    }
    return lineBreak(frame, false);
}

/// A new comma comes first, but after comments that would belong to what follows on the line.
void GapMaker::placeComma(const Frame& frame, const Sides& sides, Text& tail, Text& lead,
                          bool isOneLine) {
    const bool leads = hasComma(lead);
    const bool follows = hasComma(tail);
    const bool isBetween = sides.left != nullptr && sides.right != nullptr;
    const bool needsComma = isBetween || (sides.left != nullptr && endsWithComma(frame));
    if (leads && (!needsComma || follows || !isBetween)) {
        lead = withoutComma(lead);
    }
    if (follows && !needsComma) {
        tail = withoutComma(tail);
    } else if (needsComma && !follows && !hasComma(lead)) {
        tail.insert(isOneLine && !endsInLineComment(tail) ? tail.size() : 0, ",");
    }
}

/// What is usual before a child: what stands before the neighbours that the text has, or what the
/// document does elsewhere.
std::string GapMaker::usualBreak(const Frame& frame, bool isFirst) {
    const std::size_t count = frame.siblings.size();
    if (count == 0) {
        return isFirst || frame.breaksLines ? lineBreak(frame, true) : habits().comma;
    }
    const Text first = breakOf(siblingGap(frame, 0).lead);
    if (isFirst || (count == 1 && hasNewline(first))) {
        return frame.reindent.apply(first);
    }
    if (count == 1) {
        return habits().comma;
    }
    const std::size_t number = usualGap(frame);
    return frame.reindent.apply(breakOf(siblingGap(frame, number).lead));
}

/// The gap between siblings after which others are made: the nearest; that of an object whose
/// members stand on lines of their own, though some share one, is one of those lines.
std::size_t GapMaker::usualGap(const Frame& frame) const {
    constexpr std::size_t mostLookedAt = 64;
    const std::size_t nearest = std::min(frame.nearest + 1, frame.siblings.size() - 1);
    if (m_map.isObject(frame.self.before)) {
        for (std::size_t i = 0; i <= std::min(nearest, mostLookedAt); ++i) {
            if (hasNewline(siblingGapText(frame, nearest - i))) {
                return nearest - i;
            }
        }
    }
    return nearest;
}

/// Before the first child of a container that has none in the text, where its comments begin if it
/// has some; or before its closing bracket.
std::string GapMaker::lineBreak(const Frame& frame, bool isWithin) {
    if (frame.breaksLines && isWithin && frame.self.before != k_none) {
        for (const std::string_view line : siblingGap(frame, 0).lines) {
            if (hasComment(line)) {
                return frame.reindent.apply(breakOf(line));
            }
        }
    }
    if (frame.breaksLines) {
        return habits().newline + frame.lineIndent + (isWithin ? habits().indent : "");
    }
    const bool isObject = m_counterparts.now(frame.self.now).element->isObject();
    return isObject ? habits().objectPad : habits().arrayPad;
}

bool GapMaker::endsWithComma(const Frame& frame) {
    const std::size_t last = frame.siblings.size();
    return last > 0 ? hasComma(siblingGapText(frame, last))
                    : frame.breaksLines && habits().endsWithComma;
}

std::string GapMaker::colon(const Frame& frame) {
    if (!frame.siblings.empty()) {
        const std::uint32_t sibling =
            frame.siblings[std::min(frame.nearest, frame.siblings.size() - 1)];
        const std::size_t keyEnd =
            m_counterparts.before(sibling).begin + m_counterparts.keyBefore(sibling).size();
        const std::string_view text = m_map.text(keyEnd, m_map[sibling].begin());
        if (!hasComment(text)) {
            return std::string(text);
        }
    }
    return habits().colon;
}

Reindent GapMaker::reindentOf(const Frame& frame, const Item& item,
                              const std::string& indent) const {
    if (item.before == k_none) {
        return {};
    }
    return isHere(frame, item) ? frame.reindent : Reindent{indentBefore(item.before), indent};
}

std::string GapMaker::indentBefore(std::uint32_t value) const {
    while (m_counterparts.before(value).parent != k_none) {
        const OldValue& old = m_counterparts.before(value);
        const std::string_view text = m_map.text(old.gapBegin, old.begin);
        if (hasNewline(text)) {
            return std::string(indentOf(breakOf(text)));
        }
        value = old.parent;
    }
    return {};
}

std::string_view GapMaker::siblingGapText(const Frame& frame, std::size_t number) const {
    const ValueSpan& container = m_map[frame.self.before];
    const std::size_t begin =
        number == 0 ? container.begin() + 1 : m_map[frame.siblings[number - 1]].end();
    const std::size_t end = number == frame.siblings.size()
                                ? container.end() - 1
                                : m_counterparts.before(frame.siblings[number]).begin;
    return m_map.text(begin, end);
}

Gap GapMaker::siblingGap(const Frame& frame, std::size_t number) const {
    const bool isLast = number == frame.siblings.size();
    const GapKind whenFirst = isLast ? GapKind::only : GapKind::open;
    const GapKind otherwise = isLast ? GapKind::close : GapKind::between;
    return gapOf(siblingGapText(frame, number), number == 0 ? whenFirst : otherwise);
}

Gap GapMaker::gapBefore(std::uint32_t value) const {
    const OldValue& old = m_counterparts.before(value);
    return gapOf(m_map.text(old.gapBegin, old.begin),
                 old.position == 0 ? GapKind::open : GapKind::between);
}

Gap GapMaker::gapAfter(std::uint32_t value) const {
    const std::uint32_t parent = m_counterparts.before(value).parent;
    const std::uint32_t next = m_map[value].next();
    const bool isLast = next == m_map[parent].next();
    const std::size_t end = isLast ? m_map[parent].end() - 1 : m_counterparts.before(next).begin;
    return gapOf(m_map.text(m_map[value].end(), end), isLast ? GapKind::close : GapKind::between);
}

bool GapMaker::holdsContainer(const Frame& frame) const {
    return std::any_of(frame.items.begin(), frame.items.end(), [&](const Item& item) {
        const EType type = m_counterparts.now(item.now).element->type();
        return type == etObject || type == etArray;
    });
}

bool GapMaker::breaksLinesIn(const Frame& outer) {
    return outer.siblings.empty() ? outer.breaksLines : isManyLine(m_map, outer.self.before);
}

bool GapMaker::breaksLines(const Frame& frame, const Frame* outer) {
    constexpr std::size_t mostOnLine = 20;
    if (frame.self.before != k_none && hasNewline(siblingGapText(frame, 0))) {
        return true;
    }
    if (outer != nullptr && !outer->siblings.empty() && !m_map.isObject(outer->self.before)) {
        const std::uint32_t sibling = outer->siblings[outer->nearest];
        const EType type = m_counterparts.now(frame.self.now).element->type();
        if (m_map.isContainer(sibling) && m_map.hasChildren(sibling) &&
            m_map.isObject(sibling) == (type == etObject)) {
            return isManyLine(m_map, sibling);
        }
    }
    if (outer != nullptr && !breaksLinesIn(*outer)) {
        return false;
    }
    const bool isObject = m_counterparts.now(frame.self.now).element->isObject();
    const bool isScalarArray =
        !isObject && frame.items.size() <= mostOnLine && !holdsContainer(frame);
    return isScalarArray ? habits().breaksScalarArrays : habits().breaksLines;
}

}  // namespace ko::Orvid
