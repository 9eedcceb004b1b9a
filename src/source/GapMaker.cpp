// SPDX-License-Identifier: MIT
//
// Gaps between neighbours that were none before.

#include "source/GapMaker.h"

#include <algorithm>
#include <string_view>

namespace ko::Orvid {

namespace {

constexpr std::uint32_t k_none = SourceMap::k_none;

bool beginsNewline(std::string_view text) { return !newlineOf(text).empty(); }

/// Ends what is before the text with that newline, where it has one.
void endWith(std::string_view newline, std::string& text) {
    if (beginsNewline(text) && !newline.empty()) {
        text.replace(0, newlineOf(text).size(), newline);
    }
}

}  // namespace

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
    const bool areHere = frame.self.before != k_none && !frame.leavesLine &&
                         (sides.left == nullptr || isHere(frame, *sides.left)) &&
                         (sides.right == nullptr || isHere(frame, *sides.right));
    if (!areHere) {
        return false;
    }
    const std::size_t left = sides.left == nullptr ? 0 : positionOf(*sides.left) + 1;
    const std::size_t right =
        sides.right == nullptr ? frame.siblings.size() : positionOf(*sides.right);
    return left == right && stayOrLackLines(frame, sides, left);
}

/// Whether the whole gap goes with the neighbours. Comments that belong to neither of them stay
/// where the two have left.
bool GapMaker::stayOrLackLines(const Frame& frame, const Sides& sides, std::size_t number) const {
    const auto stays = [&](const Item* item) { return item == nullptr || staysHere(frame, *item); };
    if (stays(sides.left) && stays(sides.right)) {
        return true;
    }
    const Gap gap = m_former.at(frame, number);
    return std::none_of(gap.lines.begin(), gap.lines.end(), hasComment);
}

std::string GapMaker::gap(const Frame& frame) {
    const Sides sides = sidesOf(frame);
    if (areNeighbours(frame, sides)) {
        const std::size_t number = sides.left == nullptr ? 0 : positionOf(*sides.left) + 1;
        return frame.reindent.apply(m_former.textAt(frame, number));
    }
    return madeGap(frame, sides);
}

std::string GapMaker::madeGap(const Frame& frame, const Sides& sides) {
    Text tailText = tail(frame, sides);
    const StayingLines staying = lines(frame, sides);
    Text linesText = frame.reindent.apply(staying.text());
    if (frame.items.empty() && !hasComment(tailText) && !hasComment(linesText)) {
        return {};
    }
    Text leadText = lead(frame, sides);
    endWith(staying.end(), leadText);
    keepLineEnd(frame, sides, linesText.empty() ? leadText : linesText);
    const bool isOneLine = !hasNewline(linesText) && !hasNewline(leadText);
    placeComma(frame, sides, tailText, leadText, isOneLine);
    const std::string& indent = sides.right == nullptr ? frame.lineIndent : frame.itemIndent;
    Text gap = tailText;
    append(gap, linesText, indent);
    append(gap, leadText, indent);
    if (endsInLineComment(gap)) {
        gap += m_usual.habits().newline + indent;
    }
    return gap;
}

/// The line on which the left neighbour ends keeps its own newline, though what follows it comes
/// from where another one stands.
void GapMaker::keepLineEnd(const Frame& frame, const Sides& sides, Text& next) const {
    const bool isLeftHere =
        sides.left == nullptr ? frame.self.before != k_none : staysHere(frame, *sides.left);
    if (!isLeftHere) {
        return;
    }
    const std::size_t number = sides.left == nullptr ? 0 : positionOf(*sides.left) + 1;
    const std::string_view former =
        m_former.textAt(frame, number).substr(m_former.at(frame, number).tail.size());
    endWith(newlineOf(former), next);
}

/// A line comment must end before what follows it.
void GapMaker::append(Text& gap, const Text& part, const std::string& indent) {
    if (!part.empty() && !beginsNewline(part) && endsInLineComment(gap)) {
        gap += m_usual.habits().newline + indent +
               part.substr(std::min(part.find_first_not_of(" \t"), part.size()));
    } else {
        gap += part;
    }
}

std::string GapMaker::tail(const Frame& frame, const Sides& sides) const {
    if (sides.left != nullptr) {
        return sides.left->before == k_none
                   ? Text()
                   : frame.itemReindent.apply(m_former.after(sides.left->before).tail);
    }
    return frame.self.before == k_none ? Text() : frame.reindent.apply(m_former.at(frame, 0).tail);
}

/// The comments of a container that was empty come first, and so do those after the opening bracket
/// where all children are replaced.
StayingLines GapMaker::lines(const Frame& frame, const Sides& sides) const {
    if (frame.siblings.empty()) {
        const bool comeFirst = sides.left == nullptr && frame.self.before != k_none;
        return comeFirst ? linesOf(frame, 0, 0) : StayingLines(false);
    }
    if (frame.isReplaced && sides.left == nullptr) {
        return linesOf(frame, 0, 0);
    }
    if (sides.right != nullptr && !staysHere(frame, *sides.right)) {
        return StayingLines(false);
    }
    const std::size_t last =
        sides.right == nullptr ? frame.siblings.size() : positionOf(*sides.right);
    std::size_t first = last;
    while (first > (frame.isReplaced ? 1 : 0) && !frame.stays[first - 1]) {
        --first;
    }
    return linesOf(frame, first, last);
}

/// Those of the gaps with these numbers.
StayingLines GapMaker::linesOf(const Frame& frame, std::size_t first, std::size_t last) const {
    StayingLines staying(first == 0);
    for (std::size_t number = first; number <= last; ++number) {
        staying.add(m_former.at(frame, number), number == frame.siblings.size());
    }
    return staying;
}

std::string GapMaker::lead(const Frame& frame, const Sides& sides) {
    if (sides.right == nullptr) {
        return closingLead(frame);
    }
    const Item& item = *sides.right;
    const bool isFirst = sides.left == nullptr;
    if (item.before == k_none) {
        return m_usual.breakBefore(frame, isFirst);
    }
    const Gap own = m_former.before(item.before);
    if (!frame.leavesLine && isHere(frame, item) && isFirst == (positionOf(item) == 0)) {
        const Text left = breakLeft(frame, sides);
        return frame.reindent.apply(left.empty() ? Text(own.lead) : leadAfter(left, own.lead));
    }
    const Text usual = m_usual.breakBefore(frame, isFirst);
    const std::string indent = hasNewline(usual) ? m_usual.baseOf(usual) : frame.itemIndent;
    return leadAfter(usual, reindentOf(frame, item, indent).apply(own.lead));
}

/// The line break before the first on the line of the right neighbour, where those before it on
/// that line are gone: it stays, and so do the lines. Empty where there is none.
std::string GapMaker::breakLeft(const Frame& frame, const Sides& sides) const {
    const bool mayBeLeft =
        sides.left != nullptr && staysHere(frame, *sides.left) && staysHere(frame, *sides.right);
    if (!mayBeLeft || hasNewline(m_former.textAt(frame, positionOf(*sides.right)))) {
        return {};
    }
    const std::size_t first = positionOf(*sides.left) + 1;
    for (std::size_t number = positionOf(*sides.right); number-- > first;) {
        if (hasNewline(m_former.textAt(frame, number))) {
            return breakOf(m_former.at(frame, number).lead);
        }
    }
    return {};
}

std::string GapMaker::closingLead(const Frame& frame) {
    if (frame.self.before != k_none && !frame.leavesLine) {
        const std::size_t last = frame.siblings.size();
        const bool isOwn =
            last > 0 || frame.items.empty() || hasNewline(m_former.textAt(frame, last));
        if (isOwn) {
            return frame.reindent.apply(withoutComma(m_former.at(frame, last).lead));
        }
    }
    return m_usual.lineBreak(frame, false);
}

/// A new comma comes first, but after comments that would belong to what follows on the line.
void GapMaker::placeComma(const Frame& frame, const Sides& sides, Text& tail, Text& lead,
                          bool isOneLine) {
    const bool leads = hasComma(lead);
    if (leads && frame.leavesLine) {
        tail = withoutComma(tail);
    }
    const bool follows = hasComma(tail);
    const bool isBetween = sides.left != nullptr && sides.right != nullptr;
    const bool needsComma = isBetween || (sides.left != nullptr && m_usual.endsWithComma(frame));
    if (leads && (!needsComma || follows || !isBetween)) {
        lead = withoutComma(lead);
    }
    if (follows && !needsComma) {
        tail = withoutComma(tail);
    } else if (needsComma && !follows && !hasComma(lead)) {
        tail.insert(isOneLine && !endsInLineComment(tail) ? tail.size() : 0, ",");
    }
}

Reindent GapMaker::reindentOf(const Frame& frame, const Item& item, const std::string& indent) {
    if (item.before == k_none) {
        return {};
    }
    return isHere(frame, item) ? frame.reindent : Reindent{m_usual.baseBefore(item.before), indent};
}

}  // namespace ko::Orvid
