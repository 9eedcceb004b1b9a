// SPDX-License-Identifier: MIT
//
// One pass through the record: what stands around the first two children of each container, and
// before its closing bracket, as the library looks at them.

#include "edit/LineLayout.h"

#include <vector>

#include "output/Layout.h"
#include "text/layoutBounds.h"
#include "text/scanWhole.h"
#include "text/TextScanner.h"
#include "text/whitespace.h"

namespace orvid_tool {

namespace {

using ko::Orvid::Element;
using ko::Orvid::ReadOptions;
using ko::Orvid::TokenSpan;

constexpr unsigned int k_mostDepth = 32;

/// A gap that is the same wherever it was seen.
struct CommonGap {
    std::optional<std::string_view> text;
    bool isCommon = true;

    void note(std::string_view seen) {
        isCommon = isCommon && (!text || *text == seen);
        text = seen;
    }
    std::string textOr(std::string_view otherwise) const {
        return std::string(text.value_or(otherwise));
    }
};

struct CommonGaps {
    CommonGap pad;
    CommonGap comma;
    CommonGap end;

    bool areCommon() const { return pad.isCommon && comma.isCommon && end.isCommon; }
};

/// The text without the whitespace after its value.
std::string_view withoutEnd(std::string_view text) {
    return text.substr(0, text.find_last_not_of(ko::Orvid::text::k_whitespace) + 1);
}

}  // namespace

class LineLayout::Survey : public ko::Orvid::KeySink {
public:
    explicit Survey(std::string_view text) : m_text(text) {}

    std::optional<LineLayout> result() const {
        if (!m_areGapsPlain || m_containers > ko::Orvid::text::k_mostContainers ||
            !m_colon.isCommon || !m_object.areCommon() || !m_array.areCommon()) {
            return std::nullopt;
        }
        LineLayout layout;
        layout.m_colon = m_colon.textOr(": ");
        const std::string_view comma = m_containers > 0 && layout.m_colon == ":" ? "" : " ";
        layout.m_object = gaps(m_object, m_array.pad.textOr(""), m_array.comma.textOr(comma));
        layout.m_array = gaps(m_array, "", m_object.comma.textOr(comma));
        return layout;
    }

    void null(TokenSpan span) { scalar(span); }
    void boolean(bool /*value*/, TokenSpan span) { scalar(span); }
    void number(std::string_view /*text*/, TokenSpan span) { scalar(span); }
    void string(std::string_view /*text*/, TokenSpan span) { scalar(span); }
    bool key(std::string_view /*text*/, TokenSpan span) {
        m_key = span;
        return true;
    }
    void openObject(TokenSpan span) { open(span, true); }
    void closeObject(TokenSpan span) { close(span); }
    void openArray(TokenSpan span) { open(span, false); }
    void closeArray(TokenSpan span) { close(span); }

private:
    struct Level {
        bool isObject;
        std::uint64_t lastEnd;  ///< of the last child, or of the bracket
        std::size_t count = 0;
    };

    static Gaps gaps(const CommonGaps& seen, const std::string& otherPad,
                     const std::string& comma) {
        const std::string pad = seen.pad.textOr(otherPad);
        return {pad, seen.comma.textOr(comma), seen.end.textOr(pad)};
    }

    std::string_view between(std::uint64_t begin, std::uint64_t end) const {
        return m_text.substr(static_cast<std::size_t>(begin),
                             static_cast<std::size_t>(end - begin));
    }
    CommonGaps& gapsOf(const Level& level) { return level.isObject ? m_object : m_array; }

    void scalar(TokenSpan span) {
        begin(span);
        end(span);
    }
    void open(TokenSpan span, bool isObject) {
        begin(span);
        m_open.push_back({isObject, span.end});
    }
    void close(TokenSpan span) {
        const Level& level = m_open.back();
        if (level.count > 0) {
            gapsOf(level).end.note(between(level.lastEnd, span.begin));
        }
        m_open.pop_back();
        end(span);
    }
    void begin(TokenSpan span) {
        if (m_open.empty()) {
            return;
        }
        Level& level = m_open.back();
        const std::string_view gap =
            between(level.lastEnd, level.isObject ? m_key.begin : span.begin);
        if (level.count == 0) {
            noteFirst(level, gap, span);
        } else if (level.count == 1) {
            m_areGapsPlain = m_areGapsPlain && gap.front() == ',';
            gapsOf(level).comma.note(gap.substr(1));
        }
        ++level.count;
    }
    void end(TokenSpan span) {
        if (!m_open.empty()) {
            m_open.back().lastEnd = span.end;
        }
    }
    void noteFirst(const Level& level, std::string_view gap, TokenSpan value) {
        ++m_containers;
        gapsOf(level).pad.note(gap);
        if (level.isObject) {
            m_colon.note(between(m_key.end, value.begin));
        }
    }

    std::string_view m_text;
    std::vector<Level> m_open;
    TokenSpan m_key{};
    std::size_t m_containers = 0;  ///< that have children
    bool m_areGapsPlain = true;    ///< whether no whitespace stands before a comma
    CommonGap m_colon;
    CommonGaps m_object;
    CommonGaps m_array;
};

std::optional<LineLayout> LineLayout::of(std::string_view text) {
    if (withoutEnd(text).find_first_of("\r\n") != std::string_view::npos) {
        return std::nullopt;
    }
    Survey survey(text);
    return ko::Orvid::text::scanWhole(text, ReadOptions::strict(), survey) ? survey.result()
                                                                           : std::nullopt;
}

bool LineLayout::append(const Element& value, std::string& out) const {
    return append(value, 0, out);
}

bool LineLayout::append(const Element& value, unsigned int depth, std::string& out) const {
    const bool isContainer = value.isObject() || value.isArray();
    if (isContainer && value.size() > 0) {
        return depth < k_mostDepth && (value.isObject() ? appendMembers(value, depth, out)
                                                        : appendItems(value, depth, out));
    }
    const std::string line = jsonLine(value, Layout());
    out.append(line, 0, line.length() - 1);
    return true;
}

bool LineLayout::appendMembers(const Element& value, unsigned int depth, std::string& out) const {
    bool isFirst = true;
    for (const auto& [key, member] : value.object()) {
        out.append(isFirst ? "{" + m_object.pad : "," + m_object.comma);
        isFirst = false;
        static_cast<void>(append(Element(key), depth + 1, out));
        if (!append(member, depth + 1, out.append(m_colon))) {
            return false;
        }
    }
    out.append(m_object.end).append("}");
    return true;
}

bool LineLayout::appendItems(const Element& value, unsigned int depth, std::string& out) const {
    bool isFirst = true;
    for (const Element& item : value.array()) {
        out.append(isFirst ? "[" + m_array.pad : "," + m_array.comma);
        isFirst = false;
        if (!append(item, depth + 1, out)) {
            return false;
        }
    }
    out.append(m_array.end).append("]");
    return true;
}

}  // namespace orvid_tool
