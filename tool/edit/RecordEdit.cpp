// SPDX-License-Identifier: MIT
//
// The text around a child shows how children are laid out where it is the same on both sides.

#include "edit/RecordEdit.h"

#include <algorithm>
#include <optional>
#include <string>
#include <utility>

#include "edit/ChildSink.h"
#include "edit/LineLayout.h"
#include "output/Layout.h"
#include "text/ByteRuns.h"
#include "text/scanWhole.h"
#include "text/TextLookup.h"

namespace orvid_tool {

namespace {

using ko::Orvid::Element;
using ko::Orvid::ReadOptions;
using ko::Orvid::TokenSpan;
using ko::Orvid::text::isWhitespace;
using ko::Orvid::text::lookUp;

/// Spaces, which here are tabs as well.
constexpr std::string_view k_spaces = " \t";

/// The offset after the spaces that begin there.
std::size_t spacesEnd(std::string_view text, std::size_t offset) {
    return std::min(text.find_first_not_of(k_spaces, offset), text.length());
}

/// The offset of the spaces that end there. A bracket stands before all children.
std::size_t spacesBegin(std::string_view text, std::size_t offset) {
    return text.find_last_not_of(k_spaces, offset - 1) + 1;
}

/// A child in its text, and the spaces around it.
struct Neighborhood {
    std::size_t begin;  ///< with its key
    std::size_t end;
    std::string_view lead;  ///< the spaces before it
    std::string_view tail;  ///< the spaces after it, and after the comma where there is one
    bool hasBefore;         ///< whether another child stands there
    bool hasAfter;
};

bool isEscaped(std::string_view text, std::size_t offset) {
    return (offset - 1 - text.find_last_not_of('\\', offset - 1)) % 2 != 0;
}

/// The offset of the key of the member whose value begins there. Nothing where more than spaces
/// stand beside the colon.
std::optional<std::size_t> keyBegin(std::string_view text, std::size_t value) {
    const std::size_t colon = spacesBegin(text, value) - 1;
    const std::size_t quote = spacesBegin(text, colon) - 1;
    if (text[colon] != ':' || text[quote] != '"') {
        return std::nullopt;
    }
    std::size_t begin = text.rfind('"', quote - 1);
    while (isEscaped(text, begin)) {
        begin = text.rfind('"', begin - 1);
    }
    return begin;
}

/// Nothing where more than spaces stand around the child, or spaces before a comma.
std::optional<Neighborhood> around(std::string_view text, std::size_t begin, std::size_t end) {
    const std::size_t lead = spacesBegin(text, begin);
    const std::size_t after = spacesEnd(text, end);
    const char before = text[lead - 1];
    const char next = text[after];
    Neighborhood child{begin, end, text.substr(lead, begin - lead), {}, before == ',', next == ','};
    const std::size_t tail = child.hasAfter ? after + 1 : end;
    child.tail = text.substr(tail, spacesEnd(text, tail) - tail);
    const bool isFirst = before == '{' || before == '[';
    const bool isLast = next == '}' || next == ']';
    const bool isSpaced =
        (child.hasAfter && after != end) || (child.hasBefore && isWhitespace(text[lead - 2]));
    const bool isPlain = (child.hasBefore || isFirst) && (child.hasAfter || isLast) && !isSpaced;
    const char beyond = text[spacesEnd(text, tail)];
    return isPlain && beyond != '\r' && beyond != '\n' ? std::optional<Neighborhood>(child)
                                                       : std::nullopt;
}

std::optional<Neighborhood> childAt(std::string_view text, const ValueSteps& steps) {
    const std::optional<std::string_view> found =
        steps.empty() ? std::nullopt : lookUp(text, steps, ReadOptions::strict());
    if (!found) {
        return std::nullopt;
    }
    const auto value = static_cast<std::size_t>(found->data() - text.data());
    const std::optional<std::size_t> begin =
        steps.back().isKey ? keyBegin(text, value) : std::optional<std::size_t>(value);
    return begin ? around(text, *begin, value + found->length()) : std::nullopt;
}

/// Whether other children are laid out as this one is, as far as it shows.
bool isLaidOutAlike(const Neighborhood& child) {
    return child.hasBefore && child.hasAfter ? child.lead == child.tail
                                             : child.hasBefore || child.hasAfter;
}

void appendWith(std::string_view text, std::size_t begin, std::size_t end, std::string_view put,
                Bytes& out) {
    static_cast<void>(out.room(text.length() + put.length()));
    out.append(text.substr(0, begin));
    out.append(put);
    out.append(text.substr(end));
}

std::string jsonOf(const Element& value) {
    std::string json = jsonLine(value, Layout());
    json.pop_back();  // the newline
    return json;
}

bool isContainer(const Element& value) { return value.isObject() || value.isArray(); }

/// The value as it is laid out in the record; nothing where the library has to be asked.
std::optional<std::string> laidOut(std::string_view record, const Element& value) {
    if (!isContainer(value)) {
        return jsonOf(value);
    }
    const std::optional<LineLayout> layout = LineLayout::of(record);
    std::string text;
    return layout && layout->append(value, text) ? std::optional<std::string>(std::move(text))
                                                 : std::nullopt;
}

/// Goes through a container, which is the whole text, and finds how its children are laid out.
class ChildrenLayout : public ChildSink<ChildrenLayout> {
public:
    /// `key` is looked for; null in an array.
    ChildrenLayout(std::string_view text, const std::string* key) : m_text(text), m_key(key) {}

    bool hasKey() const { return m_hasKey; }
    std::size_t lastEnd() const { return m_end; }
    /// The comma and the spaces between two children, where all are separated by the same.
    std::optional<std::string_view> gap() const {
        return m_isUniform && count() > 1 ? std::optional<std::string_view>(m_gap) : std::nullopt;
    }
    /// What stands between key and value.
    std::string_view colon() const { return m_colon; }

    bool key(std::string_view text, TokenSpan span) {
        if (isAmongChildren()) {
            m_hasKey = m_hasKey || (m_key != nullptr && text == *m_key);
            m_keySpan = span;
        }
        return true;
    }
    void beginChild(TokenSpan span) {
        if (m_key != nullptr) {
            note(m_colon, between(m_keySpan.end, span.begin), count() > 0);
        }
        if (count() > 0) {
            note(m_gap, between(m_end, m_key != nullptr ? m_keySpan.begin : span.begin),
                 count() > 1);
        }
    }
    void endChild(TokenSpan span) { m_end = static_cast<std::size_t>(span.end); }

private:
    void note(std::string_view& known, std::string_view seen, bool isKnown) {
        m_isUniform = m_isUniform && (!isKnown || known == seen);
        known = seen;
    }
    std::string_view between(std::uint64_t begin, std::uint64_t end) const {
        return m_text.substr(static_cast<std::size_t>(begin),
                             static_cast<std::size_t>(end - begin));
    }

    std::string_view m_text;
    const std::string* m_key;
    bool m_hasKey = false;
    bool m_isUniform = true;
    TokenSpan m_keySpan{};
    std::size_t m_end = 0;
    std::string_view m_gap;
    std::string_view m_colon;
};

bool isOnOneLine(std::string_view text) {
    return text.find_first_of("\r\n") == std::string_view::npos;
}

/// A new last child: a member whose key is not there, or the item `[*]`, which may also be written
/// as the index after the last, if that is `index`.
bool appendChild(std::string_view text, const ValueSteps& steps, const Element& value,
                 unsigned int index, Bytes& out) {
    if (steps.empty()) {
        return false;
    }
    const ko::Orvid::text::ValueStep& last = steps.back();
    const std::optional<std::string_view> holder =
        lookUp(text, {steps.begin(), steps.end() - 1}, ReadOptions::strict());
    if (!holder || holder->front() != (last.isKey ? '{' : '[') || !isOnOneLine(*holder)) {
        return false;
    }
    ChildrenLayout children(*holder, last.isKey ? &last.key : nullptr);
    ko::Orvid::text::scanWhole(*holder, ReadOptions(), children);
    const bool isEnd = last.isKey || last.index == ko::Orvid::k_noIndex ||
                       (last.index == index && index == children.count());
    const std::optional<std::string_view> gap = children.gap();
    if (!isEnd || children.hasKey() || !gap || gap->front() != ',') {
        return false;
    }
    const std::optional<std::string> json = laidOut(text, value);
    if (!json) {
        return false;
    }
    std::string added(*gap);
    if (last.isKey) {
        added.append(jsonOf(Element(last.key))).append(children.colon());
    }
    const std::size_t at =
        static_cast<std::size_t>(holder->data() - text.data()) + children.lastEnd();
    appendWith(text, at, at, added + *json, out);
    return true;
}

}  // namespace

bool removeFromRecord(std::string_view text, const ValueSteps& steps, Bytes& out) {
    const std::optional<Neighborhood> child = childAt(text, steps);
    if (!child || !isLaidOutAlike(*child)) {
        return false;
    }
    if (child->hasAfter) {
        const auto next = static_cast<std::size_t>(child->tail.data() - text.data());
        appendWith(text, child->begin, next + child->tail.length(), "", out);
    } else {
        appendWith(text, child->begin - child->lead.length() - 1, child->end, "", out);
    }
    return true;
}

bool insertIntoRecord(std::string_view text, const ValueSteps& steps, const Element& value,
                      Bytes& out) {
    const bool mayBeThere =
        !steps.empty() && !steps.back().isKey && steps.back().index != ko::Orvid::k_noIndex;
    const std::optional<Neighborhood> child =
        mayBeThere ? childAt(text, steps) : std::optional<Neighborhood>();
    if (!child) {
        return appendChild(text, steps, value,
                           mayBeThere ? steps.back().index : ko::Orvid::k_noIndex, out);
    }
    const std::optional<std::string> json =
        isLaidOutAlike(*child) ? laidOut(text, value) : std::nullopt;
    if (!json) {
        return false;
    }
    const std::string_view gap = child->hasBefore ? child->lead : child->tail;
    appendWith(text, child->begin, child->begin, *json + "," + std::string(gap), out);
    return true;
}

bool appendToRecord(std::string_view text, const ValueSteps& steps, const Element& value,
                    Bytes& out) {
    return appendChild(text, steps, value, ko::Orvid::k_noIndex, out);
}

bool replaceInRecord(std::string_view text, const ValueSteps& steps, const Element& value,
                     Bytes& out) {
    const std::optional<std::string_view> found = isContainer(value) && !steps.empty()
                                                      ? lookUp(text, steps, ReadOptions::strict())
                                                      : std::nullopt;
    if (!found || found->front() == '{' || found->front() == '[') {
        return false;
    }
    const std::optional<std::string> json = laidOut(text, value);
    if (!json) {
        return false;
    }
    const auto begin = static_cast<std::size_t>(found->data() - text.data());
    appendWith(text, begin, begin + found->length(), *json, out);
    return true;
}

bool mayEditRecord(const Call& call, std::size_t edits) {
    return edits <= k_mostPasses && call.lines.isOn && !call.layout.isAsked && isPlain(call.layout);
}

bool editRecord(const Document& document, std::size_t edits, const RecordEdit& edit, Bytes& out) {
    Bytes edited;
    std::string_view text = document.text;
    for (std::size_t i = 0; i + 1 < edits; ++i) {
        Bytes next;
        if (!edit(text, i, next)) {
            return false;
        }
        edited = std::move(next);
        text = edited.view();
    }
    const std::size_t start = out.length();
    if (!edit(text, edits - 1, out)) {
        out.cut(start);
        return false;
    }
    out.append("\n");
    return true;
}

}  // namespace orvid_tool
