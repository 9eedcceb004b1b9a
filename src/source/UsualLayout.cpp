// SPDX-License-Identifier: MIT
//
// What siblings do, or what the rest of the document does.

#include "source/UsualLayout.h"

#include <algorithm>

#include "source/ChildCursor.h"
#include "source/Token.h"

namespace ko::Orvid {

namespace {

constexpr std::uint32_t k_none = SourceMap::k_none;

}  // namespace

const Habits& UsualLayout::habits() {
    if (!m_habits) {
        m_habits = habitsOf(m_map);
    }
    return *m_habits;
}

/// Of the nearest sibling that has no comment there.
std::string UsualLayout::colon(const Frame& frame) {
    constexpr std::size_t mostLookedAt = 64;
    const std::size_t count = frame.siblings.size();
    for (std::size_t distance = 0; distance < std::min(count, mostLookedAt); ++distance) {
        for (const std::size_t position : {frame.nearest - distance, frame.nearest + distance}) {
            const std::string_view text = position < count ? colonOf(frame.siblings[position]) : "";
            if (!text.empty() && !hasComment(text)) {
                return std::string(text);
            }
        }
    }
    return habits().colon;
}

std::string_view UsualLayout::colonOf(std::uint32_t member) const {
    const std::size_t keyEnd =
        m_counterparts.before(member).begin + m_counterparts.keyBefore(member).size();
    return m_map.text(keyEnd, m_map[member].begin());
}

std::string UsualLayout::breakBefore(const Frame& frame, bool isFirst) {
    const std::size_t count = frame.siblings.size();
    if (count == 0) {
        return isFirst || frame.breaksLines ? lineBreak(frame, true) : comma(frame);
    }
    const std::string first = breakOf(m_former.at(frame, 0).lead);
    if (isFirst || (count == 1 && hasNewline(first))) {
        return frame.reindent.apply(first);
    }
    if (count == 1) {
        return comma(frame);
    }
    const std::size_t number = gapLike(frame);
    return frame.reindent.apply(breakOf(m_former.at(frame, number).lead));
}

/// The gap between siblings after which others are made: the nearest; that of an object whose
/// members stand on lines of their own, though some share one, is one of those lines.
std::size_t UsualLayout::gapLike(const Frame& frame) const {
    constexpr std::size_t mostLookedAt = 64;
    const std::size_t nearest = std::min(frame.nearest + 1, frame.siblings.size() - 1);
    if (m_map.isObject(frame.self.before)) {
        for (std::size_t i = 0; i <= std::min(nearest, mostLookedAt); ++i) {
            if (hasNewline(m_former.textAt(frame, nearest - i))) {
                return nearest - i;
            }
        }
    }
    return nearest;
}

std::string UsualLayout::comma(const Frame& frame) {
    return isObject(frame) ? habits().memberComma : habits().itemComma;
}

bool UsualLayout::isObject(const Frame& frame) const {
    return m_counterparts.now(frame.self.now).element->isObject();
}

std::string UsualLayout::lineBreak(const Frame& frame, bool isWithin) {
    if (frame.breaksLines && isWithin && frame.self.before != k_none) {
        for (const std::string_view line : m_former.at(frame, 0).lines) {
            if (hasComment(line)) {
                return frame.reindent.apply(breakOf(line));
            }
        }
    }
    if (frame.breaksLines) {
        return habits().newline + frame.lineIndent + (isWithin ? habits().indent : "");
    }
    if (frame.self.before != k_none && hasComment(m_former.textAt(frame, 0))) {
        const std::string own(m_former.at(frame, 0).lead);
        return isWithin && own.empty() ? " " : own;
    }
    if (isWithin) {
        return isObject(frame) ? habits().objectPad : habits().arrayPad;
    }
    return isObject(frame) ? habits().objectEnd : habits().arrayEnd;
}

bool UsualLayout::endsWithComma(const Frame& frame) {
    const std::size_t last = frame.siblings.size();
    return last > 0 ? hasComma(m_former.textAt(frame, last))
                    : frame.breaksLines && habits().endsWithComma;
}

bool UsualLayout::holdsContainer(const Frame& frame) const {
    return std::any_of(frame.items.begin(), frame.items.end(), [&](const Item& item) {
        const EType type = m_counterparts.now(item.now).element->type();
        return type == etObject || type == etArray;
    });
}

bool UsualLayout::breaksLinesIn(const Frame& outer) {
    return outer.siblings.empty() ? outer.breaksLines : isManyLine(m_map, outer.self.before);
}

ContainerKind UsualLayout::kindOf(const Frame& frame) const {
    constexpr std::size_t mostOnLine = 20;
    if (isObject(frame)) {
        return ContainerKind::object;
    }
    return frame.items.size() <= mostOnLine && !holdsContainer(frame) ? ContainerKind::scalars
                                                                      : ContainerKind::array;
}

/// The sibling of the text that a container without siblings of its own is laid out as: for one
/// that was empty the nearest of its kind, and for a new item the one before it. k_none where there
/// is none.
std::uint32_t UsualLayout::modelOf(const Frame& frame, const Frame& outer) {
    if (outer.siblings.empty()) {
        return k_none;
    }
    if (frame.self.before != k_none) {
        return m_filled.nearest(outer.self.before, outer.nearest, kindOf(frame));
    }
    const std::uint32_t sibling = outer.siblings[outer.nearest];
    const bool isModel = !m_map.isObject(outer.self.before) && m_map.isContainer(sibling) &&
                         m_map.hasChildren(sibling) && m_map.isObject(sibling) == isObject(frame);
    return isModel ? sibling : k_none;
}

bool UsualLayout::breaksLines(const Frame& frame, const Frame* outer) {
    if (frame.self.before != k_none && hasNewline(m_former.textAt(frame, 0))) {
        return true;
    }
    const std::uint32_t model = outer == nullptr ? k_none : modelOf(frame, *outer);
    if (model != k_none) {
        return isManyLine(m_map, model);
    }
    if (outer != nullptr && !breaksLinesIn(*outer)) {
        return false;
    }
    return breaksLinesOfItsKind(frame);
}

/// Whether the document does that in most of the containers of its kind, if it is short, or in any.
bool UsualLayout::breaksLinesOfItsKind(const Frame& frame) {
    if (kindOf(frame) == ContainerKind::scalars) {
        return habits().breaksScalarArrays;
    }
    if (isLong(frame) || bringsLines(frame)) {
        return habits().breaksLines;
    }
    if (isObject(frame)) {
        return holdsFilled(frame) ? habits().breaksLines : breaksFlatObject(frame);
    }
    if (isContainer(*m_counterparts.now(frame.items.front().now).element)) {
        return habits().breaksLists;
    }
    return holdsFilled(frame) ? habits().breaksMixedArrays : habits().breaksScalarArrays;
}

bool UsualLayout::breaksFlatObject(const Frame& frame) {
    return m_counterparts.isMember(frame.self.now) ? habits().breaksFlatMembers
                                                   : habits().breaksFlatItems;
}

/// Whether a child of the container has children itself.
bool UsualLayout::holdsFilled(const Frame& frame) const {
    return std::any_of(frame.items.begin(), frame.items.end(), [&](const Item& item) {
        return m_counterparts.now(item.now).next > item.now + 1;
    });
}

/// Whether a value in the container comes from elsewhere with comments, or on many lines.
bool UsualLayout::bringsLines(const Frame& frame) const {
    const std::uint32_t end = m_counterparts.now(frame.self.now).next;
    for (std::uint32_t i = frame.self.now + 1; i < end; ++i) {
        const NewValue& value = m_counterparts.now(i);
        const bool hasComments =
            value.counterpart != k_none && (hasComment(m_former.before(value.counterpart).lead) ||
                                            hasComment(m_former.after(value.counterpart).tail));
        if (hasComments || (value.contents != k_none && hasNewline(m_map.text(value.contents)))) {
            return true;
        }
    }
    return false;
}

/// Whether it takes much of a line, however short the indent is: without whitespace more than 60
/// bytes.
bool UsualLayout::isLong(const Frame& frame) const {
    constexpr std::size_t most = 60;
    const std::uint32_t end = m_counterparts.now(frame.self.now).next;
    std::string text = "{}";
    for (std::uint32_t i = frame.self.now + 1; i < end && text.size() <= most; ++i) {
        const NewValue& value = m_counterparts.now(i);
        text += i == value.parent + 1 ? "" : ",";
        if (m_counterparts.isMember(i)) {
            appendQuoted(text, value.element->memberKey());
            text += ':';
        }
        if (isContainer(*value.element)) {
            text += "{}";
        } else {
            appendScalar(text, *value.element);
        }
    }
    return text.size() > most;
}

}  // namespace ko::Orvid
