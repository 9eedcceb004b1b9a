// SPDX-License-Identifier: MIT
//
// A sink that copies the tokens that matter.
//
// Of each of the first containers, as many as the library looks at for the habits of a document, it
// keeps the first two children, all containers, and both ends. Of a container on the way it keeps
// the children before the place that new ones may be laid out after. A container beyond the first,
// or any that is not on the way where habits do not matter, is kept as its two ends and a zero.

#include "edit/TextExcerpt.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "edit/LastChildren.h"
#include "input/skipWhitespace.h"
#include "text/byteOrderMark.h"
#include "text/KeyHashes.h"
#include "text/layoutBounds.h"
#include "text/scanWhole.h"

namespace orvid_tool {

namespace {

using ko::Orvid::ReadOptions;
using ko::Orvid::TokenSpan;
using ko::Orvid::text::k_farthestLine;
using ko::Orvid::text::k_farthestSibling;
using ko::Orvid::text::k_mostContainers;

/// The members before a new one up to the farthest that is looked at, and one more.
constexpr std::size_t k_mostMembers = k_farthestSibling + 2;

std::size_t offset(std::uint64_t location) { return static_cast<std::size_t>(location); }

/// A container that is being copied.
struct Level {
    Level(bool isArrayOpen, bool isWay, const Child& child)
        : isArray(isArrayOpen),
          isOnWay(isWay),
          self(child),
          lastEnd(child.value + 1),
          held(!isWay        ? 0
               : isArrayOpen ? 1
                             : k_mostMembers) {}

    bool isArray;
    bool isOnWay;
    bool isPlace = false;  ///< whether it is what the edit is about
    bool breaksLines = false;
    bool isCut = false;       ///< whether only the ends of a container in it are kept
    bool fillsEmpty = false;  ///< whether one that was empty is laid out as others in it are
    Child self;               ///< as a child of the container around it
    std::size_t bracket = 0;  ///< in the excerpt
    std::size_t lastEnd;      ///< offset after its last child so far, or after its bracket
    std::size_t count = 0;    ///< of its children so far
    std::size_t kept = 0;     ///< of these, those in the excerpt
    std::size_t colon = 0;    ///< offset before the colon of the last, where it is a member
    std::size_t value = 0;    ///< offset of the last
    LastChildren held;
};

/// Whether what stands between two tokens holds a line break outside comments, as the library looks
/// for one; that after a line comment is one.
bool breaksLine(std::string_view gap) {
    std::size_t at = gap.find_first_of("/\n");
    while (at != std::string_view::npos && gap[at] == '/') {
        const bool isBlock = gap.substr(at, 2) == "/*";
        at = isBlock ? gap.find("*/", at + 2) : gap.find('\n', at);
        at = gap.find_first_of("/\n", isBlock && at != std::string_view::npos ? at + 2 : at);
    }
    return at != std::string_view::npos;
}

/// How the first line of the text ends, in which the library looks for line breaks.
bool hasCarriageReturn(std::string_view text) {
    const std::size_t newline = text.find('\n');
    return newline != std::string_view::npos && newline > 0 && text[newline - 1] == '\r';
}

/// Whether the line on which the byte stands begins too far before it to be looked for. `mark` is
/// the length of what stands before the text.
bool isFarInLine(std::string_view text, std::size_t at, std::size_t mark) {
    const std::size_t from = at - std::min(at, k_farthestLine);
    return at + mark > k_farthestLine &&
           text.substr(from, at - from).find('\n') == std::string_view::npos;
}

class Excerpter : public ko::Orvid::KeySink {
public:
    Excerpter(std::string_view text, std::string_view mark, const ValueSteps& steps, PlaceEdit edit,
              ExcerptRest rest)
        : m_text(text),
          m_mark(mark),
          m_steps(steps),
          m_edit(edit),
          m_showsHabits(rest == ExcerptRest::habits),
          m_mostContainers(m_showsHabits ? k_mostContainers : 0) {}

    /// What has come together when the text is over.
    std::optional<TextExcerpt> take() {
        if (m_isRefused || m_phase != Phase::done || !m_areKeysDifferent) {
            return std::nullopt;
        }
        append(m_rootEnd, m_text.size());
        if (m_showsHabits && hasCarriageReturn(m_text) != hasCarriageReturn(m_result.text)) {
            return std::nullopt;
        }
        m_result.needsHabits = m_needsHabits;
        const std::size_t mark = m_mark.size();
        m_result.text.insert(0, m_mark);
        m_result.own = {m_result.own.begin + mark, m_result.own.end + mark};
        m_result.source = {m_result.source.begin + mark, m_result.source.end + mark};
        return std::move(m_result);
    }

    void null(TokenSpan location) { scalar(location); }
    void boolean(bool /*value*/, TokenSpan location) { scalar(location); }
    void number(std::string_view /*text*/, TokenSpan location) { scalar(location); }
    void string(std::string_view /*text*/, TokenSpan location) { scalar(location); }
    bool key(std::string_view text, TokenSpan location) {
        if (m_skipped == 0) {
            m_key = location;
            m_isMember = m_open.back().isOnWay && nextStep().isKey && text == nextStep().key;
        } else {
            noteFirst(location);
        }
        return m_keys.add(text);
    }
    void openObject(TokenSpan location) {
        m_keys.open();
        open(location, false);
    }
    void closeObject(TokenSpan location) {
        m_areKeysDifferent = m_keys.close() && m_areKeysDifferent;
        close(location);
    }
    void openArray(TokenSpan location) { open(location, true); }
    void closeArray(TokenSpan location) { close(location); }

private:
    enum class Phase {
        before,  ///< the place is still to come
        after,   ///< what follows the place is next
        done
    };

    // Tokens.

    void scalar(TokenSpan location) {
        if (m_skipped > 0) {
            noteFirst(location);
            noteLast(location);
        } else if (m_open.empty()) {
            m_isRefused = true;
        } else {
            begin(location);
            m_isRefused = m_isRefused || (m_isOnWay && !isLastStep());
            m_child.end = offset(location.end);
            takeChild();
        }
    }

    void open(TokenSpan location, bool isArray) {
        if (m_skipped > 0) {
            noteFirst(location);
            ++m_skipped;
        } else if (m_open.empty()) {
            m_child = {0, offset(location.begin), offset(location.begin), 0, 0, 0, false};
            append(0, m_child.begin);
            push(isArray, true);
        } else {
            begin(location);
            openChild(location, isArray);
        }
    }

    void close(TokenSpan location) {
        if (m_skipped > 1) {
            --m_skipped;
            noteLast(location);
        } else if (m_skipped == 1) {
            m_skipped = 0;
            m_child.end = offset(location.end);
            takeChild();
        } else {
            closeLevel(location);
        }
    }

    // What is kept of a container that is skipped.

    void noteFirst(TokenSpan location) {
        if (m_skipped == 1 && !m_isWhole && m_child.firstBegin == 0) {
            m_child.firstBegin = offset(location.begin);
        }
    }
    void noteLast(TokenSpan location) {
        if (m_skipped == 1 && !m_isWhole) {
            m_child.lastEnd = offset(location.end);
        }
    }

    // Children of the container that is being copied.

    /// The step to a child of the last container on the way.
    const ValueStep& nextStep() const { return m_steps[m_way - 1]; }
    bool isLastStep() const { return m_way == m_steps.size(); }
    bool isPlace() const { return m_isOnWay && isLastStep(); }

    void begin(TokenSpan location) {
        Level& level = m_open.back();
        const std::size_t value = offset(location.begin);
        m_child = {level.lastEnd, level.isArray ? value : offset(m_key.begin), value, 0, 0, 0,
                   false};
        m_child.breaksLine = breaksLine(part(m_child.gap, m_child.begin));
        level.colon = level.isArray ? value : offset(m_key.end);
        level.value = value;
        m_isOnWay = level.isOnWay && m_phase == Phase::before && isNext(level);
        m_isNeeded = m_isOnWay || m_phase == Phase::after || level.count < 2;
        if (level.count++ == 0) {
            ++m_containers;
            level.breaksLines = m_child.breaksLine;
        }
    }
    bool isNext(const Level& level) const {
        return level.isArray ? !nextStep().isKey && nextStep().index == level.count : m_isMember;
    }

    /// The child is known from its begin to its end.
    void takeChild() {
        Level& level = m_open.back();
        level.lastEnd = m_child.end;
        if (!m_isNeeded) {
            level.held.add(m_child);
            return;
        }
        beginKept();
        append(m_child);
        if (isPlace()) {
            leavePlace();
        }
    }

    /// Appends what stands before the child, which is kept.
    void beginKept() {
        Level& level = m_open.back();
        // An item before the child may be put on the line of those that are held.
        flush(level, m_child.breaksLine && !(isPlace() && m_edit == PlaceEdit::insert));
        if (m_isOnWay) {
            m_result.steps.push_back(nextStep());
            m_result.steps.back().index = static_cast<unsigned int>(level.kept);
        }
        if (isPlace()) {
            m_isRefused = m_isRefused || (m_edit == PlaceEdit::insert && !level.isArray);
            beginRange(m_child.gap);
        }
        append(m_child.gap, m_child.begin);
        if (m_phase == Phase::after || isPlace()) {
            noteGap(part(m_child.gap, m_child.begin));
        }
        if (m_phase == Phase::after || (isPlace() && m_edit == PlaceEdit::insert)) {
            endRange(m_child.begin);
        }
        ++level.kept;
    }
    /// Comments at the place may be moved to lines of their own.
    void noteGap(std::string_view gap) {
        m_needsHabits = m_needsHabits || gap.find('/') != std::string_view::npos;
    }
    /// A container that becomes another value may not be taken for what it was.
    void leavePlace() {
        const bool isContainer =
            m_text[m_open.back().value] == '{' || m_text[m_open.back().value] == '[';
        const bool isOther = m_edit == PlaceEdit::set || m_edit == PlaceEdit::replace;
        m_needsHabits = m_needsHabits || (isOther && isContainer);
        m_open.back().fillsEmpty = isOther && isContainer && isEmpty(m_open.back().value);
        if (m_phase == Phase::before) {
            m_phase = Phase::after;
        }
    }

    void flush(Level& level, bool breaksLineNext) {
        level.held.forEach(breaksLineNext, [&](const Child& child) {
            append(child.gap, child.begin);
            append(child);
            ++level.kept;
        });
        level.held.clear();
    }

    // Containers.

    void openChild(TokenSpan location, bool isArray) {
        const bool leadsOn = m_isOnWay && !isLastStep();
        const bool isReplaced = isPlace() && m_edit == PlaceEdit::set;
        const bool mayGo = !m_isNeeded && isEmptyAt(offset(location.end));
        m_isWhole = isReplaced || mayGo;
        if (m_isWhole || (!leadsOn && m_containers >= m_mostContainers)) {
            m_skipped = 1;
            m_open.back().isCut = m_open.back().isCut || !m_isWhole;
            return;
        }
        m_isNeeded = true;
        beginKept();
        append(m_child.begin, m_child.value);
        const bool isPlaceOpen = isPlace();
        push(isArray, leadsOn);
        m_open.back().isPlace = isPlaceOpen;
    }

    /// Whether the container that is open there closes on the same line, with nothing in it.
    bool isEmptyAt(std::size_t at) const {
        const std::size_t next = m_text.find_first_not_of(" \t", at);
        return next != std::string_view::npos && (m_text[next] == '}' || m_text[next] == ']');
    }

    /// Whether the container that begins there holds no value.
    bool isEmpty(std::size_t at) const {
        const char next = m_text[skipWhitespace(m_text, at + 1)];
        return next == '}' || next == ']';
    }

    void push(bool isArray, bool isOnWay) {
        m_open.emplace_back(isArray, isOnWay, m_child);
        m_open.back().bracket = m_result.text.size();
        append(m_child.value, m_child.value + 1);
        m_way += isOnWay ? 1 : 0;
    }

    void closeLevel(TokenSpan location) {
        Level& level = m_open.back();
        const std::size_t end = offset(location.begin);
        const bool isFilled = level.isOnWay && m_phase == Phase::before && level.count == 0;
        if (level.isOnWay && m_phase == Phase::before) {
            beginNew(level);
        } else if (m_phase != Phase::after) {
            // What opens on the closing line has the indent of the child that begins the line.
            flush(level, breaksLine(part(level.lastEnd, end)));
        }
        append(level.lastEnd, end);
        noteSiblings(level);
        if (m_phase == Phase::after || m_isNew) {
            noteGap(part(level.lastEnd, end));
            m_isNew = false;
            endRange(end);
        }
        append(end, end + 1);
        checkLine(level, part(level.lastEnd, end));
        m_way -= level.isOnWay ? 1 : 0;
        m_isRefused = m_isRefused || (m_showsHabits && level.fillsEmpty && level.isCut);
        const bool wasPlace = level.isPlace;
        m_open.pop_back();
        if (m_open.empty()) {
            m_rootEnd = end + 1;
            return;
        }
        m_open.back().lastEnd = end + 1;
        m_open.back().fillsEmpty = m_open.back().fillsEmpty || isFilled;
        if (wasPlace) {
            leavePlace();
        }
    }

    /// What the edit is about comes after all children of the container.
    void beginNew(Level& level) {
        constexpr std::size_t mostGaps = 1000;
        const ValueStep& step = nextStep();
        const bool isStar = !step.isKey && step.index == ko::Orvid::k_noIndex;
        const bool isFar = level.isArray && !isStar && step.index > level.count + mostGaps;
        m_isRefused =
            m_isRefused || m_edit == PlaceEdit::remove || step.isKey == level.isArray || isFar;
        flush(level, false);
        for (std::size_t i = m_way - 1; i < m_steps.size(); ++i) {
            m_result.steps.push_back(m_steps[i]);
        }
        if (level.isArray && !isStar) {
            m_result.steps[m_way - 1].index -= static_cast<unsigned int>(level.count - level.kept);
        }
        m_isNew = true;
        m_needsHabits =
            m_needsHabits || m_way < m_steps.size() ||
            part(level.colon, level.value).find_first_of("/\n") != std::string_view::npos;
        beginRange(level.lastEnd);
    }
    /// What is new goes by two siblings. The bracket of a container that is left empty may come to
    /// the line of its key.
    void noteSiblings(const Level& level) {
        const bool mayBeNew = m_isNew || m_edit == PlaceEdit::insert;
        if (mayBeNew && level.isOnWay && m_way == m_steps.size() && level.count < 2) {
            m_needsHabits = true;
        }
        const bool isBelow =
            part(level.self.begin, level.self.value).find('\n') != std::string_view::npos;
        m_isRefused = m_isRefused || (m_edit == PlaceEdit::remove && level.isOnWay && isBelow &&
                                      m_way == m_steps.size() && level.count == 1);
    }

    /// The library looks for the indent of the line on which a container of many lines begins.
    void checkLine(const Level& level, std::string_view closingGap) {
        const bool isManyLine = level.breaksLines || breaksLine(closingGap);
        const std::size_t mark = m_mark.size();
        if (m_showsHabits && isManyLine &&
            isFarInLine(m_text, level.self.value, mark) !=
                isFarInLine(m_result.text, level.bracket, mark)) {
            m_isRefused = true;
        }
    }

    // The excerpt.

    std::string_view part(std::size_t from, std::size_t to) const {
        return m_text.substr(from, to - from);
    }
    void append(std::size_t from, std::size_t to) { m_result.text += part(from, to); }
    void append(const Child& child) {
        if (child.firstBegin == 0) {
            append(child.begin, child.end);
            return;
        }
        append(child.begin, child.firstBegin);
        m_result.text += m_text[child.value] == '{' ? "\"\":0" : "0";
        append(child.lastEnd, child.end);
    }
    void beginRange(std::size_t at) {
        m_result.own.begin = m_result.text.size();
        m_result.source.begin = at;
    }
    void endRange(std::size_t at) {
        m_result.own.end = m_result.text.size();
        m_result.source.end = at;
        m_phase = Phase::done;
    }

    const std::string_view m_text;
    const std::string_view m_mark;  ///< of the byte order, before the text
    const ValueSteps& m_steps;
    const PlaceEdit m_edit;
    const bool m_showsHabits;
    const std::size_t m_mostContainers;  ///< that habits are shown of
    TextExcerpt m_result;
    Phase m_phase = Phase::before;
    bool m_needsHabits = false;
    bool m_isNew = false;  ///< whether the place is the one that is closing
    bool m_isRefused = false;

    std::vector<Level> m_open;
    std::size_t m_way = 0;         ///< how many of them lie on the way
    std::size_t m_containers = 0;  ///< that have children, and are kept
    std::size_t m_skipped = 0;     ///< how many containers are open that are not copied
    bool m_isWhole = false;        ///< whether these are taken as they are, as a scalar is
    std::size_t m_rootEnd = 0;

    TokenSpan m_key{0, 0};    ///< that was read last in a container that is copied
    bool m_isMember = false;  ///< whether that key is the next step
    Child m_child{};          ///< the newest
    bool m_isOnWay = false;   ///< whether it lies on the way
    bool m_isNeeded = false;  ///< whether it must be in the excerpt

    ko::Orvid::text::KeyHashes m_keys;
    bool m_areKeysDifferent = true;
};

}  // namespace

std::optional<TextExcerpt> excerptOf(std::string_view text, const ValueSteps& steps, PlaceEdit edit,
                                     ExcerptRest rest, const ReadOptions& options) {
    if (steps.empty()) {
        return std::nullopt;
    }
    const std::size_t mark = ko::Orvid::text::markLength(text);
    const std::string_view document = text.substr(mark);
    Excerpter excerpter(document, text.substr(0, mark), steps, edit, rest);
    return ko::Orvid::text::scanWhole(document, options, excerpter) ? excerpter.take()
                                                                    : std::nullopt;
}

}  // namespace orvid_tool
