// SPDX-License-Identifier: MIT
//
// The text around a child says how children are laid out where that is the same on both sides.

#include "edit/TextChildren.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string>

#include "output/Layout.h"
#include "text/ByteRuns.h"
#include "text/TextLookup.h"
#include "text/TextScannerRun.h"

namespace orvid_tool {

namespace {

using ko::Orvid::Element;
using ko::Orvid::ReadOptions;
using ko::Orvid::TokenSpan;
using ko::Orvid::text::isWhitespace;
using ko::Orvid::text::lookUp;

/// The offset after the whitespace that begins there.
std::size_t whitespaceEnd(std::string_view text, std::size_t offset) {
    while (offset < text.length() && isWhitespace(text[offset])) {
        ++offset;
    }
    return offset;
}

/// The offset of the whitespace that ends there. A bracket stands before all children.
std::size_t blanksBegin(std::string_view text, std::size_t offset) {
    while (isWhitespace(text[offset - 1])) {
        --offset;
    }
    return offset;
}

bool breaksLine(std::string_view blanks) { return blanks.find('\n') != std::string_view::npos; }

/// Whether the whitespace is more than an indent: what becomes of blank lines and of whitespace at
/// a line's end, the library knows.
bool isMoreThanIndent(std::string_view blanks) {
    blanks.remove_prefix(blanks.substr(0, 2) == "\r\n" ? 1 : 0);
    return breaksLine(blanks) && (blanks.front() != '\n' || breaksLine(blanks.substr(1)));
}

/// A child in its text, and what stands around it.
struct Child {
    std::size_t begin;  ///< with its key
    std::size_t end;
    std::string_view lead;  ///< the whitespace before it
    std::string_view tail;  ///< the whitespace behind it, after the comma where there is one
    bool hasBefore;         ///< whether another child stands there
    bool hasAfter;
};

/// Whether an odd number of backslashes stands before the offset.
bool isEscaped(std::string_view text, std::size_t offset) {
    return (offset - 1 - text.find_last_not_of('\\', offset - 1)) % 2 != 0;
}

/// The key of the value that begins there.
std::size_t keyBegin(std::string_view text, std::size_t value) {
    const std::size_t colon = blanksBegin(text, value) - 1;
    const std::size_t quote = blanksBegin(text, colon) - 1;
    std::size_t begin = text.rfind('"', quote - 1);
    while (isEscaped(text, begin)) {
        begin = text.rfind('"', begin - 1);
    }
    return begin;
}

/// Nothing where there is none, or whitespace stands before a comma.
std::optional<Child> childAt(std::string_view text, const ValueSteps& steps) {
    const std::optional<std::string_view> found =
        steps.empty() ? std::nullopt : lookUp(text, steps, ReadOptions::strict());
    if (!found) {
        return std::nullopt;
    }
    const auto value = static_cast<std::size_t>(found->data() - text.data());
    Child child{};
    child.begin = steps.back().isKey ? keyBegin(text, value) : value;
    child.end = value + found->length();
    const std::size_t lead = blanksBegin(text, child.begin);
    const std::size_t after = whitespaceEnd(text, child.end);
    child.hasBefore = text[lead - 1] == ',';
    child.hasAfter = text[after] == ',';
    const std::size_t tail = child.hasAfter ? after + 1 : child.end;
    child.lead = text.substr(lead, child.begin - lead);
    child.tail = text.substr(tail, whitespaceEnd(text, tail) - tail);
    const bool isSpaced =
        (child.hasAfter && after != child.end) || (child.hasBefore && isWhitespace(text[lead - 2]));
    const bool isOdd = isSpaced || isMoreThanIndent(child.lead) || isMoreThanIndent(child.tail);
    return isOdd ? std::nullopt : std::optional<Child>(child);
}

/// Whether children after this one are laid out as this one is.
bool isLaidOutAlike(const Child& child) {
    return child.hasBefore && child.hasAfter ? child.lead == child.tail
                                             : breaksLine(child.lead) == breaksLine(child.tail);
}

void appendWithout(std::string_view text, std::size_t begin, std::size_t end, Bytes& out) {
    static_cast<void>(out.room(text.length()));
    out.append(text.substr(0, begin));
    out.append(text.substr(end));
}

void appendWith(std::string_view text, std::size_t at, std::string_view added, Bytes& out) {
    static_cast<void>(out.room(text.length() + added.length()));
    out.append(text.substr(0, at));
    out.append(added);
    out.append(text.substr(at));
}

std::string jsonOf(const Element& value) {
    std::string json = jsonLine(value, Layout());
    json.pop_back();
    return json;
}

/// Notes the last two children of a container, which is all of the text.
class LastChildren : public ko::Orvid::TokenSink {
public:
    struct ChildSpan {
        std::size_t begin;
        std::size_t keyEnd;  ///< of a member
        std::size_t value;
        std::size_t end;
    };

    explicit LastChildren(const std::string* key) : m_key(key) {}

    std::size_t count() const { return m_count; }
    bool hasKey() const { return m_hasKey; }
    const ChildSpan& last() const { return m_last; }
    const ChildSpan& before() const { return m_before; }

    void null(TokenSpan span) { scalar(span); }
    void boolean(bool /*value*/, TokenSpan span) { scalar(span); }
    void number(std::string_view /*text*/, TokenSpan span) { scalar(span); }
    void string(std::string_view /*text*/, TokenSpan span) { scalar(span); }
    bool key(std::string_view text, TokenSpan span) {
        if (m_depth == 1) {
            m_hasKey = m_hasKey || (m_key != nullptr && text == *m_key);
            m_keySpan = span;
        }
        return true;
    }
    void openObject(TokenSpan span) { open(span); }
    void closeObject(TokenSpan span) { close(span); }
    void openArray(TokenSpan span) { open(span); }
    void closeArray(TokenSpan span) { close(span); }

private:
    void scalar(TokenSpan span) {
        begin(span);
        end(span);
    }
    void open(TokenSpan span) {
        begin(span);
        ++m_depth;
    }
    void close(TokenSpan span) {
        --m_depth;
        end(span);
    }
    void begin(TokenSpan span) {
        if (m_depth == 1) {
            m_before = m_last;
            const bool isMember = m_key != nullptr;
            m_last = {offset(isMember ? m_keySpan.begin : span.begin), offset(m_keySpan.end),
                      offset(span.begin), 0};
            ++m_count;
        }
    }
    void end(TokenSpan span) {
        if (m_depth == 1) {
            m_last.end = offset(span.end);
        }
    }
    static std::size_t offset(std::uint64_t offset) { return static_cast<std::size_t>(offset); }

    const std::string* m_key;  ///< that is looked for; null in an array
    std::size_t m_depth = 0;
    std::size_t m_count = 0;
    bool m_hasKey = false;
    TokenSpan m_keySpan{};
    ChildSpan m_before{};
    ChildSpan m_last{};
};

/// A new last child, laid out as the last two are.
bool appendChild(std::string_view text, ValueSteps steps, const Element& value, Bytes& out) {
    const ValueStep last = steps.back();
    steps.pop_back();
    const std::optional<std::string_view> holder = lookUp(text, steps, ReadOptions::strict());
    if (!holder || holder->front() != (last.isKey ? '{' : '[')) {
        return false;
    }
    LastChildren children(last.isKey ? &last.key : nullptr);
    ko::Orvid::TextScanner scanner((ReadOptions()));
    scanner.scan(*holder, children);
    const bool isEnd =
        last.isKey || last.index == ko::Orvid::k_noIndex || last.index == children.count();
    if (children.count() < 2 || children.hasKey() || !isEnd) {
        return false;
    }
    const LastChildren::ChildSpan& model = children.last();
    const std::string_view gap =
        holder->substr(children.before().end, model.begin - children.before().end);
    const std::string_view tail = holder->substr(model.end, holder->length() - 1 - model.end);
    if (gap.front() != ',' || isMoreThanIndent(gap.substr(1)) || isMoreThanIndent(tail) ||
        breaksLine(gap) != breaksLine(*holder)) {
        return false;
    }
    std::string added(gap);
    if (last.isKey) {
        added += jsonOf(Element(last.key));
        added += holder->substr(model.keyEnd, model.value - model.keyEnd);
    }
    const auto start = static_cast<std::size_t>(holder->data() - text.data());
    appendWith(text, start + model.end, added + jsonOf(value), out);
    return true;
}

}  // namespace

bool mayTakeShortCut(const Call& call, std::size_t edits) {
    // Each edit is a pass through the text; the tree takes them all in one.
    constexpr std::size_t mostPasses = 3;
    return edits <= mostPasses && !call.lines.isOn && !call.layout.isAsked && isPlain(call.layout);
}

bool removeChild(std::string_view text, const ValueSteps& steps, Bytes& out) {
    const std::optional<Child> child = childAt(text, steps);
    if (!child || !isLaidOutAlike(*child) || (!child->hasBefore && !child->hasAfter)) {
        return false;
    }
    if (child->hasAfter) {
        const auto next = static_cast<std::size_t>(child->tail.data() - text.data());
        appendWithout(text, child->begin, next + child->tail.length(), out);
    } else {
        appendWithout(text, child->begin - child->lead.length() - 1, child->end, out);
    }
    return true;
}

bool insertChild(std::string_view text, const ValueSteps& steps, const Element& value, Bytes& out) {
    if (steps.empty() || value.isObject() || value.isArray()) {
        return false;
    }
    if (steps.back().isKey || steps.back().index == ko::Orvid::k_noIndex) {
        return appendChild(text, steps, value, out);
    }
    const std::optional<Child> child = childAt(text, steps);
    if (!child) {
        return appendChild(text, steps, value, out);
    }
    if (!isLaidOutAlike(*child) || (!child->hasBefore && !child->hasAfter)) {
        return false;
    }
    const std::string_view gap = child->hasBefore ? child->lead : child->tail;
    appendWith(text, child->begin, jsonOf(value) + "," + std::string(gap), out);
    return true;
}

}  // namespace orvid_tool
