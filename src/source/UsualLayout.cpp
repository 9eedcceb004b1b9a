// SPDX-License-Identifier: MIT
//
// What siblings do, or what the rest of the document does.

#include "source/UsualLayout.h"

#include <algorithm>

#include "source/ChildCursor.h"
#include "source/Token.h"
#include "text/layoutBounds.h"

namespace ko::Orvid {

namespace {

using text::k_farthestSibling;

constexpr std::uint32_t k_none = SourceMap::k_none;

}  // namespace

const Habits& UsualLayout::habits() {
    if (!m_habits) {
        m_habits = habitsOf(m_map);
    }
    return *m_habits;
}

/// Of the nearest sibling that has no comment there, nor the line break before a bracket.
std::string UsualLayout::colon(const Frame& frame) {
    const std::size_t count = frame.siblings.size();
    for (std::size_t distance = 0; distance < std::min(count, k_farthestSibling); ++distance) {
        for (const std::size_t position : {frame.nearest - distance, frame.nearest + distance}) {
            const std::string_view text = position < count ? colonOf(frame.siblings[position]) : "";
            const bool isBracketLeft =
                hasNewline(text) && m_map.isContainer(frame.siblings[position]);
            if (!text.empty() && !hasComment(text) && !isBracketLeft) {
                return std::string(text);
            }
        }
    }
    if (count == 0 && frame.lineModel != k_none && m_map.isObject(frame.lineModel)) {
        const ChildSpan member = m_map.firstChild(frame.lineModel);
        const std::string_view text = m_map.text(member.keyEnd, m_map[member.value].begin());
        return hasComment(text) ? habits().colon : std::string(text);
    }
    return habits().colon;
}

std::string UsualLayout::colonBelow(const Frame& frame, const std::string& colon) {
    return colon.substr(0, colon.find(':') + 1) + habits().newline + frame.itemIndent;
}

std::string UsualLayout::colonOnLine(std::uint32_t member) {
    const std::string own(colonOf(member));
    const std::string& usual = habits().colon;
    return own.substr(0, own.find(':')) + usual.substr(usual.find(':'));
}

std::string_view UsualLayout::colonOf(std::uint32_t member) const {
    const std::size_t keyEnd =
        m_counterparts.before(member).begin + m_counterparts.keyBefore(member).size();
    return m_map.text(keyEnd, m_map[member].begin());
}

std::string UsualLayout::baseOf(const std::string& lineBreak) {
    const std::string indent(indentOf(lineBreak));
    return hasComma(lineBreak) ? indent + habits().commaIndent : indent;
}

std::string UsualLayout::breakBefore(const Frame& frame, bool isFirst) {
    const std::size_t count = frame.siblings.size();
    if (count == 0 || frame.leavesLine) {
        return isFirst             ? lineBreak(frame, true)
               : frame.breaksLines ? breakAfterFirst(frame.lineIndent, lineBreak(frame, true))
                                   : comma(frame);
    }
    const std::string first = breakOf(m_former.at(frame, 0).lead);
    if (isFirst) {
        return frame.reindent.apply(first);
    }
    if (count == 1) {
        const std::string close = frame.reindent.apply(breakOf(m_former.at(frame, 1).lead));
        return !hasNewline(first)
                   ? comma(frame)
                   : breakAfterFirst(hasNewline(close) ? indentOf(close) : frame.lineIndent,
                                     frame.reindent.apply(first));
    }
    const std::size_t number = gapLike(frame);
    return frame.reindent.apply(breakOf(m_former.at(frame, number).lead));
}

/// Before another child than the first, which has that before it, of a container whose bracket
/// closes at the indent.
std::string UsualLayout::breakAfterFirst(std::string_view indent, const std::string& first) {
    const std::string& comma = habits().leadingComma;
    return comma.empty() ? first : habits().newline + std::string(indent) + comma;
}

/// The gap between siblings after which others are made: the nearest. That of an object whose
/// members stand on lines of their own, though some share one, is one of those lines. Between two
/// rows of an array it is one in the first row.
std::size_t UsualLayout::gapLike(const Frame& frame) const {
    const std::size_t nearest = std::min(frame.nearest + 1, frame.siblings.size() - 1);
    if (m_map.isObject(frame.self.before)) {
        for (std::size_t i = 0; i <= std::min(nearest, k_farthestSibling); ++i) {
            if (hasNewline(m_former.textAt(frame, nearest - i))) {
                return nearest - i;
            }
        }
    } else if (frame.nearest > 0 && nearest > frame.nearest) {
        const std::string_view gap = m_former.textAt(frame, nearest);
        const bool isInRow = !hasNewline(m_former.textAt(frame, frame.nearest));
        return isInRow && hasNewline(gap) && !hasLineComment(gap) ? frame.nearest : nearest;
    }
    return nearest;
}

std::string UsualLayout::comma(const Frame& frame) {
    if (frame.lineModel != k_none && !inside(frame.lineModel).comma.empty()) {
        return std::string(inside(frame.lineModel).comma.substr(1));
    }
    return isObject(frame) ? habits().memberComma : habits().itemComma;
}

bool UsualLayout::isObject(const Frame& frame) const {
    return m_counterparts.now(frame.self.now).element->isObject();
}

std::string UsualLayout::lineBreak(const Frame& frame, bool isWithin) {
    if (frame.breaksLines && isWithin && frame.siblings.empty() && frame.self.before != k_none) {
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
    if (frame.lineModel != k_none) {
        const Inside& model = inside(frame.lineModel);
        return std::string(isWithin ? model.open : model.close);
    }
    if (isWithin) {
        return isObject(frame) ? habits().objectPad : habits().arrayPad;
    }
    return isObject(frame) ? habits().objectEnd : habits().arrayEnd;
}

bool UsualLayout::endsWithComma(const Frame& frame) {
    const std::size_t last = frame.siblings.size();
    return (last > 0 && hasComma(m_former.textAt(frame, last))) ||
           (frame.breaksLines && habits().endsWithComma);
}

bool UsualLayout::holdsContainer(const Frame& frame) const {
    return std::any_of(frame.items.begin(), frame.items.end(), [&](const Item& item) {
        const EType type = m_counterparts.now(item.now).element->type();
        return type == etObject || type == etArray;
    });
}

bool UsualLayout::breaksLinesIn(const Frame& outer) {
    return outer.siblings.empty() || outer.leavesLine ? outer.breaksLines
                                                      : inside(outer.self.before).isManyLine;
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

/// What stands within the container, which has children.
const UsualLayout::Inside& UsualLayout::inside(std::uint32_t container) {
    const auto [found, isNew] = m_insides.try_emplace(container);
    Inside& result = found->second;
    if (!isNew) {
        return result;
    }
    result.open = openGap(m_map, container);
    result.close = closeGap(m_map, container);
    result.isManyLine = hasNewline(result.open) || hasNewline(result.close);
    const ChildSpan first = m_map.firstChild(container);
    if (m_map.hasNext(container, first)) {
        const ChildSpan second = m_map.nextChild(container, first);
        const std::string_view gap = m_map.text(second.gapBegin, second.begin);
        const bool isPlain = gap.front() == ',' && !hasComment(gap) && !hasNewline(gap);
        result.comma = isPlain ? gap : "";
    }
    return result;
}

/// Whether the value is a container of the frame's type with children, all on one line, and has no
/// comment after its opening or before its closing bracket.
bool UsualLayout::isLineLike(const Frame& frame, std::uint32_t value) {
    if (!m_map.isContainer(value) || !m_map.hasChildren(value) ||
        m_map.isObject(value) != isObject(frame)) {
        return false;
    }
    const Inside& found = inside(value);
    return !found.isManyLine && !hasComment(found.open) && !hasComment(found.close);
}

/// The model of its line breaks, or else the nearest sibling, if that is on one line and of its
/// type. Where the siblings beside that one differ from it, as in aligned columns, the habits are
/// the better model.
std::uint32_t UsualLayout::lineModel(const Frame& frame, const Frame* outer) {
    if (frame.breaksLines || outer == nullptr || outer->siblings.empty()) {
        return k_none;
    }
    const std::uint32_t model = modelOf(frame, *outer);
    const std::uint32_t like = model == k_none ? outer->siblings[outer->nearest] : model;
    if (!isLineLike(frame, like)) {
        return k_none;
    }
    for (const std::size_t beside : {outer->nearest - 1, outer->nearest + 1}) {
        const bool isThere = beside < outer->siblings.size();
        if (isThere && isLineLike(frame, outer->siblings[beside]) &&
            inside(like).differsFrom(inside(outer->siblings[beside]))) {
            return k_none;
        }
    }
    return like;
}

bool UsualLayout::breaksLines(const Frame& frame, const Frame* outer) {
    if (bringsLineComment(frame) ||
        (frame.self.before != k_none && hasNewline(m_former.textAt(frame, 0)))) {
        return true;
    }
    const std::uint32_t model = outer == nullptr ? k_none : modelOf(frame, *outer);
    if (model != k_none && (inside(model).isManyLine || !bringsLines(frame))) {
        return inside(model).isManyLine;
    }
    if (outer != nullptr && !breaksLinesIn(*outer)) {
        return false;
    }
    return breaksLinesOfItsKind(frame);
}

bool UsualLayout::leavesLine(const Frame& frame) {
    const bool mayLeave =
        bringsLineComment(frame) || (bringsLinedItem(frame) && habits().breaksLines);
    return mayLeave && m_map.text(frame.self.before).find('\n') == std::string_view::npos;
}

/// Whether an item comes from elsewhere with a comment that ends its line.
bool UsualLayout::bringsLineComment(const Frame& frame) const {
    return std::any_of(frame.items.begin(), frame.items.end(), [&](const Item& item) {
        const std::uint32_t value = item.before;
        return value != k_none && m_counterparts.before(value).parent != frame.self.before &&
               (hasLineComment(m_former.before(value).lead) ||
                hasLineComment(m_former.after(value).tail) ||
                (m_counterparts.wasMember(value) && hasLineComment(colonOf(value))));
    });
}

/// Whether an item is a container of several lines that comes from elsewhere.
bool UsualLayout::bringsLinedItem(const Frame& frame) const {
    const std::uint32_t self = frame.self.before;
    return std::any_of(frame.items.begin(), frame.items.end(), [&](const Item& item) {
        const std::uint32_t contents =
            item.now == k_none ? k_none : m_counterparts.now(item.now).contents;
        return contents != k_none && (contents < self || contents >= m_map.next(self)) &&
               m_map.text(contents).find('\n') != std::string_view::npos;
    });
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
        if ((value.counterpart != k_none && bringsComment(value.counterpart)) ||
            (value.contents != k_none && bringsLines(value.contents))) {
            return true;
        }
    }
    return false;
}

/// Whether comments around the value come along.
bool UsualLayout::bringsComment(std::uint32_t value) const {
    return hasComment(m_former.before(value).lead) || hasComment(m_former.after(value).tail) ||
           (m_counterparts.wasMember(value) && hasComment(colonOf(value)));
}

/// Whether lines within the container come along, or, where nothing else is in it, comments.
bool UsualLayout::bringsLines(std::uint32_t container) const {
    const std::string_view text = m_map.text(container);
    const char* const odd = m_map.hasChildren(container) ? "\n" : "/\n";
    return text.find_first_of(odd) != std::string_view::npos;
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
