// SPDX-License-Identifier: MIT
//
// The walk that writes a tree into its text.

#include "source/SourceWriter.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "source/ChildCursor.h"
#include "source/isAsRead.h"
#include "source/Token.h"
#include "source/Trivia.h"
#include "text/byteOrderMark.h"

namespace ko::Orvid {

namespace {

constexpr std::uint32_t k_none = SourceMap::k_none;

/// As many of the numbers as ascend, which are all different. Of several choices it is the one with
/// the greater numbers: what was moved was moved towards the end rather than to the front. From the
/// last, in O(n log n).
std::vector<std::size_t> longestAscent(const std::vector<std::size_t>& numbers) {
    std::vector<std::size_t> begins;  // of the best ascents of each length: indexes in `numbers`
    std::vector<std::size_t> next(numbers.size());
    for (std::size_t i = numbers.size(); i-- > 0;) {
        const auto longer = std::lower_bound(
            begins.begin(), begins.end(), numbers[i],
            [&](std::size_t begin, std::size_t number) { return numbers[begin] > number; });
        next[i] = longer == begins.begin() ? i : *std::prev(longer);
        if (longer == begins.end()) {
            begins.push_back(i);
        } else {
            *longer = i;
        }
    }
    std::vector<std::size_t> ascent;
    for (std::size_t i = begins.size(), at = begins.empty() ? 0 : begins.back(); i > 0; --i) {
        ascent.push_back(numbers[at]);
        at = next[at];
    }
    return ascent;
}

/// A child that was in the same container.
struct Sibling {
    std::size_t position;
    bool hasItsKey;
};

/// What is between the same two of `fixed` now and before can stay along with these.
std::vector<std::size_t> fitting(const std::vector<Sibling>& siblings,
                                 const std::vector<std::size_t>& fixed) {
    std::vector<std::size_t> result;
    auto next = fixed.begin();
    for (const Sibling& sibling : siblings) {
        const bool isNext = next != fixed.end() && sibling.position == *next;
        const bool isAfter = next == fixed.begin() || sibling.position > *std::prev(next);
        const bool isBefore = next == fixed.end() || sibling.position < *next;
        if (isNext || (!sibling.hasItsKey && isAfter && isBefore)) {
            result.push_back(sibling.position);
        }
        next += isNext ? 1 : 0;
    }
    return result;
}

std::vector<std::size_t> stayingPositions(const std::vector<Sibling>& siblings) {
    std::vector<std::size_t> named;
    for (const Sibling& sibling : siblings) {
        if (sibling.hasItsKey) {
            named.push_back(sibling.position);
        }
    }
    const std::vector<std::size_t> fixed = longestAscent(named);
    return fixed.size() == siblings.size() ? fixed : longestAscent(fitting(siblings, fixed));
}

}  // namespace

std::string SourceWriter::run() {
    const std::string_view text = m_map.text();
    m_out.reserve(text.size() + text.size() / 8);
    m_out = text.substr(0, m_map[0].begin());
    const Item root{m_counterparts.now(0).counterpart, 0};
    const Reindent reindent{m_gaps.usual().baseBefore(root.before), {}};
    writeRootLead(root, reindent);
    writeValue(root, openedBy(root), {}, reindent);
    while (!m_open.empty()) {
        step();
    }
    writeEnd(root, reindent);
    return std::move(m_out);
}

/// The comments before a value that became the root: comment lines stay such.
void SourceWriter::writeRootLead(const Item& root, const Reindent& reindent) {
    if (root.before == 0) {
        return;
    }
    const std::string_view own = m_gaps.former().before(root.before).lead;
    if (!hasNewline(own)) {
        m_out += leadAfter({}, own);
    } else if (hasComment(own)) {
        const std::string lead = withoutComma(reindent.apply(own));
        m_out.erase(m_out.find_last_not_of(" \t") + 1);
        const bool isAtLineBegin = m_out.size() == text::markLength(m_out) || m_out.back() == '\n';
        m_out += lead.substr(isAtLineBegin ? newlineOf(lead).size() : 0);
    }
    if (m_counterparts.wasMember(root.before)) {
        writeColonComments(root, reindent, {});
    }
}

/// What follows the root, after the comments of a value that became it.
void SourceWriter::writeEnd(const Item& root, const Reindent& reindent) {
    std::string_view end = m_map.text().substr(m_map[0].end());
    const std::string_view tail =
        root.before == 0 ? std::string_view() : m_gaps.former().after(root.before).tail;
    if (hasComment(tail)) {
        m_out += withoutComma(reindent.apply(tail));
        if (endsInLineComment(tail) && hasComment(end) && newlineOf(end).empty()) {
            m_out += m_gaps.usual().habits().newline;
            end.remove_prefix(end.find_first_not_of(" \t"));
        }
    }
    m_out += end;
}

void SourceWriter::step() {
    Frame& frame = m_open.back();
    const std::string gap = m_gaps.gap(frame);
    m_out += gap;
    if (frame.written == frame.items.size()) {
        m_out += m_counterparts.now(frame.self.now).element->isObject() ? '}' : ']';
        m_open.pop_back();
        return;
    }
    if (hasNewline(gap)) {
        frame.itemIndent = m_gaps.usual().baseOf(breakOf(gap));
    }
    const Item item = frame.items[frame.written++];
    frame.itemReindent = m_gaps.reindentOf(frame, item, frame.itemIndent);
    if (item.before != k_none && m_counterparts.before(item.before).parent == frame.self.before) {
        frame.nearest = m_counterparts.before(item.before).position;
    }
    writeItem(item);
}

void SourceWriter::writeItem(const Item& item) {
    const Frame& frame = m_open.back();
    const Reindent reindent = frame.itemReindent;
    const std::string indent = frame.itemIndent;
    if (item.now == k_none) {
        copy(m_map.text(m_counterparts.before(item.before).begin, m_map[item.before].end()),
             reindent);
        return;
    }
    std::optional<Frame> opened = openedBy(item);
    writeKey(item, opened, reindent);
    writeValue(item, std::move(opened), indent, reindent);
}

void SourceWriter::writeKey(const Item& item, const std::optional<Frame>& opened,
                            const Reindent& reindent) {
    const bool wasMember = item.before != k_none && m_counterparts.wasMember(item.before);
    if (!m_counterparts.isMember(item.now)) {
        if (wasMember) {
            writeColonComments(item, reindent, m_open.back().itemIndent);
        }
        return;
    }
    const std::string& key = m_counterparts.now(item.now).element->memberKey();
    if (wasMember && tokenSays(m_counterparts.keyBefore(item.before), std::string_view(key))) {
        m_out += m_counterparts.keyBefore(item.before);
    } else {
        appendQuoted(m_out, key);
    }
    if (wasMember && keepsColon(item, opened)) {
        copy(m_gaps.usual().colonOf(item.before), reindent);
    } else {
        m_out += newColon(item, opened);
    }
}

/// The colon of a member that has none of its own, or whose bracket comes to another line.
std::string SourceWriter::newColon(const Item& item, const std::optional<Frame>& opened) {
    const Frame& frame = m_open.back();
    const bool isHere = item.before != k_none && frame.self.before != k_none &&
                        m_counterparts.before(item.before).parent == frame.self.before;
    const std::string onLine =
        isHere ? m_gaps.usual().colonOnLine(item.before) : m_gaps.usual().colon(frame);
    return opensOnLine(item, opened) ? m_gaps.usual().colonBelow(frame, onLine) : onLine;
}

/// Whether the value of a new member begins on a line of its own.
bool SourceWriter::opensOnLine(const Item& item, const std::optional<Frame>& opened) {
    const NewValue& now = m_counterparts.now(item.now);
    if (now.next == item.now + 1 || !m_gaps.usual().opensOnLine(m_open.back())) {
        return false;
    }
    const bool hadValues = now.contents != k_none && m_map.hasChildren(now.contents);
    return (opened && opened->breaksLines) ||
           (hadValues && m_gaps.usual().isManyLine(now.contents));
}

/// Whether what stands around the colon of a member stays: of one that comes from elsewhere, the
/// comments.
bool SourceWriter::keepsColon(const Item& item, const std::optional<Frame>& opened) {
    return hasComment(m_gaps.usual().colonOf(item.before)) ||
           (m_counterparts.before(item.before).parent == m_open.back().self.before &&
            keepsBracketLine(item, opened));
}

/// Whether a bracket after the colon stays on its line, or none was or is there. Where brackets
/// have lines of their own, one that is new gets one as well, and one that goes takes it along.
bool SourceWriter::keepsBracketLine(const Item& item, const std::optional<Frame>& opened) {
    const NewValue& now = m_counterparts.now(item.now);
    const bool isNoBracket = !isContainer(*now.element) && !m_map.isContainer(item.before);
    const bool isFilled = now.next > item.now + 1;
    const bool isSame =
        now.contents == item.before &&
        !(opened && (isFilled ? opened->siblings.empty() || opened->leavesLine
                              : !opened->siblings.empty() && !holdsComment(*opened)));
    if (isNoBracket || isSame || !m_gaps.usual().opensOnLine(m_open.back())) {
        return true;
    }
    const bool wasBelow =
        m_map.isContainer(item.before) && hasNewline(m_gaps.usual().colonOf(item.before));
    return wasBelow == opensOnLine(item, opened);
}

/// Whether comments stand between the values that the container had.
bool SourceWriter::holdsComment(const Frame& frame) const {
    std::size_t number = 0;
    while (number <= frame.siblings.size() && !hasComment(m_gaps.former().textAt(frame, number))) {
        ++number;
    }
    return number <= frame.siblings.size();
}

/// A member that becomes an item, or the root, has no colon, but may have comments around it.
void SourceWriter::writeColonComments(const Item& item, const Reindent& reindent,
                                      const std::string& indent) {
    TriviaReader reader(m_gaps.usual().colonOf(item.before));
    for (Piece piece = reader.next(); piece.kind != PieceKind::end; piece = reader.next()) {
        if (isComment(piece.kind)) {
            copy(piece.text, reindent);
            m_out += piece.kind == PieceKind::lineComment ? m_gaps.usual().habits().newline + indent
                                                          : " ";
        }
    }
}

void SourceWriter::writeValue(const Item& item, std::optional<Frame>&& opened,
                              const std::string& indent, const Reindent& reindent) {
    const Element& now = *m_counterparts.now(item.now).element;
    if (opened) {
        open(item, std::move(*opened), indent, reindent);
    } else if (isContainer(now)) {
        copy(m_map.text(item.before), reindent);
    } else if (item.before != k_none && tokenSays(m_map.text(item.before), now)) {
        m_out += m_map.text(item.before);
    } else {
        appendScalar(m_out, now);
    }
}

/// The frame of the value, indents left aside, if it is a container that is not copied whole.
std::optional<Frame> SourceWriter::openedBy(const Item& item) {
    const NewValue& now = m_counterparts.now(item.now);
    const bool isCopied = item.before != k_none && item.before != 0 &&
                          item.before == now.contents &&
                          m_counterparts.before(item.before).hash == now.hash &&
                          !m_counterparts.isKnownToDiffer(item.before, item.now) &&
                          isAsRead(m_map, item.before, *now.element);
    if (!isContainer(*now.element) || isCopied) {
        return std::nullopt;
    }
    Frame frame{};
    frame.self = {now.contents, item.now};
    listItems(frame);
    const Frame* const outer = m_open.empty() ? nullptr : &m_open.back();
    const bool isFilled = frame.siblings.empty() && !frame.items.empty();
    frame.leavesLine = !frame.siblings.empty() && m_gaps.usual().leavesLine(frame);
    frame.breaksLines = frame.leavesLine || (isFilled && m_gaps.usual().breaksLines(frame, outer));
    frame.lineModel = isFilled ? m_gaps.usual().lineModel(frame, outer) : k_none;
    return frame;
}

void SourceWriter::open(const Item& item, Frame&& frame, const std::string& indent,
                        const Reindent& reindent) {
    const std::uint32_t contents = frame.self.before;
    frame.lineIndent = indent;
    frame.itemIndent = indent;
    if (contents != k_none) {
        frame.reindent = contents == item.before
                             ? reindent
                             : Reindent{m_gaps.usual().baseBefore(contents), indent};
    }
    if (frame.leavesLine) {
        frame.reindent.to = indent + m_gaps.usual().habits().indent;
    }
    m_out += m_counterparts.now(item.now).element->isObject() ? '{' : '[';
    m_open.push_back(std::move(frame));
}

void SourceWriter::listItems(Frame& frame) const {
    for (const std::uint32_t child : m_counterparts.childrenNow(frame.self.now)) {
        frame.items.push_back({m_counterparts.now(child).counterpart, child});
    }
    if (frame.self.before == k_none) {
        return;
    }
    frame.siblings = m_counterparts.childrenBefore(frame.self.before);
    frame.stays = stayingSiblings(frame);
    if (isInTextOrder(frame)) {
        frame.items.clear();
        for (const std::uint32_t sibling : frame.siblings) {
            frame.items.push_back({sibling, m_counterparts.before(sibling).counterpart});
        }
        frame.stays.assign(frame.siblings.size(), true);
    }
    frame.isReplaced = !frame.items.empty() &&
                       std::find(frame.stays.begin(), frame.stays.end(), true) == frame.stays.end();
}

/// As many of the siblings that are still here as keep their order: first of the items and of those
/// that have their key, then of the members that were renamed.
std::vector<bool> SourceWriter::stayingSiblings(const Frame& frame) const {
    std::vector<Sibling> siblings;
    for (const Item& item : frame.items) {
        if (item.before != k_none &&
            m_counterparts.before(item.before).parent == frame.self.before) {
            siblings.push_back({m_counterparts.before(item.before).position, hasItsKey(item)});
        }
    }
    std::vector<bool> stays(frame.siblings.size());
    for (const std::size_t position : stayingPositions(siblings)) {
        stays[position] = true;
    }
    return stays;
}

bool SourceWriter::hasItsKey(const Item& item) const {
    return !m_counterparts.wasMember(item.before) || !m_counterparts.isMember(item.now) ||
           tokenSays(m_counterparts.keyBefore(item.before),
                     std::string_view(m_counterparts.now(item.now).element->memberKey()));
}

/// Whether keys are repeated in the text, but all that changed is values: then the members that
/// are replaced can stay as well.
bool SourceWriter::isInTextOrder(const Frame& frame) const {
    if (std::none_of(frame.siblings.begin(), frame.siblings.end(),
                     [&](std::uint32_t sibling) { return m_map[sibling].element() == nullptr; })) {
        return false;
    }
    std::vector<std::uint32_t> now;
    for (const Item& item : frame.items) {
        if (item.before == k_none || !hasItsKey(item)) {
            return false;
        }
        now.push_back(item.before);
    }
    return now == m_counterparts.boundChildren(frame.self.before);
}

void SourceWriter::copy(std::string_view text, const Reindent& reindent) {
    if (reindent.isNone()) {
        m_out += text;
    } else {
        m_out += reindent.apply(text);
    }
}

}  // namespace ko::Orvid
