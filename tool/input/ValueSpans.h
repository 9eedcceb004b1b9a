// SPDX-License-Identifier: MIT
//
// ValueSpans, a sink of the scanner that notes where the wanted values of a text stand: whole
// values, or the items of one array.

#pragma once

#include <ko/Orvid.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "input/PathSteps.h"
#include "text/TextScanner.h"

namespace orvid_tool {

/// Which values are wanted.
struct Wanted {
    bool areItems = false;    ///< of the array at the steps; otherwise the value there
    bool mayBeOther = false;  ///< what is no array is wanted itself
    ValueSteps steps;         ///< from the root; without `[*]`
    std::string word = {};    ///< the steps as they were typed, for errors; empty where they are as
                              ///< a path writes them
};

class ValueSpans : public ko::Orvid::TokenSink {
public:
    /// Offsets from the beginning of the text to the value's first byte, and after its last.
    using Span = std::pair<std::uint64_t, std::uint64_t>;

    explicit ValueSpans(Wanted wanted) : m_wanted(std::move(wanted)) {}

    /// A new root begins; its offsets count from there.
    void begin(std::uint64_t offset);

    std::vector<Span>& spans() { return m_spans; }
    /// Whether any token of the root has come.
    bool isBegun() const { return m_isBegun; }
    /// The offset of a value that is open, or else `none`.
    std::uint64_t openOr(std::uint64_t none) const { return m_isOpen ? m_begin : none; }
    /// Whether the values of the root are items.
    bool areItems() const { return m_wantedDepth > m_wanted.steps.size(); }
    /// How many values of the root are done.
    std::size_t count() const { return m_count; }
    /// How often the steps led to a value, or on from a key that has led to one.
    std::size_t targets() const { return m_targets; }
    /// Whether they led to one that is neither an array nor wanted itself.
    bool isNoArray() const { return m_isNoArray; }
    /// The way of the steps, as far as it is there, and of what is at its end the type and, of an
    /// object, some keys.
    ko::Orvid::Element way() const;
    /// The offset of what is at its end.
    std::uint64_t reachedAt() const { return m_reachedAt; }

    void null(ko::Orvid::TokenSpan span) { scalar(ko::Orvid::Element(), span); }
    void boolean(bool value, ko::Orvid::TokenSpan span) { scalar(ko::Orvid::Element(value), span); }
    void number(std::string_view /*text*/, ko::Orvid::TokenSpan span) {
        scalar(ko::Orvid::Element(0), span);
    }
    void string(std::string_view /*text*/, ko::Orvid::TokenSpan span) {
        scalar(ko::Orvid::Element(""), span);
    }
    bool key(std::string_view text, ko::Orvid::TokenSpan span);
    void openObject(ko::Orvid::TokenSpan span) { open(false, span); }
    void closeObject(ko::Orvid::TokenSpan span) { close(span); }
    void openArray(ko::Orvid::TokenSpan span) { open(true, span); }
    void closeArray(ko::Orvid::TokenSpan span) { close(span); }

private:
    /// A container on the way.
    struct OnWay {
        bool isArray;
        std::size_t next;  ///< the index of its next item
    };

    void scalar(const ko::Orvid::Element& value, ko::Orvid::TokenSpan span) {
        if (isAtWay()) {
            followScalar(value, span);
        }
        enter(span);
        leave(span);
    }
    void open(bool isArray, ko::Orvid::TokenSpan span);
    void close(ko::Orvid::TokenSpan span);
    void enter(ko::Orvid::TokenSpan span) {
        m_isBegun = true;
        if (m_isInTarget && m_depth == m_wantedDepth) {
            m_begin = m_base + span.begin;
            m_isOpen = true;
        }
    }
    void leave(ko::Orvid::TokenSpan span) {
        if (m_isOpen && m_depth == m_wantedDepth) {
            m_spans.emplace_back(m_begin, m_base + span.end);
            m_isOpen = false;
            ++m_count;
        }
        m_isInTarget = m_isInTarget && m_depth != m_wanted.steps.size();
    }

    bool isAtWay() const { return m_depth == m_way.size(); }
    bool leads();
    void follow(const ko::Orvid::Element& value, ko::Orvid::TokenSpan span);
    void followScalar(const ko::Orvid::Element& value, ko::Orvid::TokenSpan span);
    void reach(const ko::Orvid::Element& value, ko::Orvid::TokenSpan span);
    void target(bool isArray);

    Wanted m_wanted;
    std::vector<Span> m_spans;
    std::uint64_t m_base = 0;
    std::uint64_t m_begin = 0;
    std::size_t m_depth = 0;
    std::size_t m_wantedDepth = 0;
    std::size_t m_count = 0;
    std::size_t m_targets = 0;
    bool m_isBegun = false;
    bool m_isOpen = false;
    bool m_isInTarget = false;
    bool m_isNoArray = false;
    bool m_isStepKey = false;
    std::vector<OnWay> m_way;
    std::size_t m_reached = 0;     ///< how many steps
    ko::Orvid::Element m_atReach;  ///< what is there
    std::uint64_t m_reachedAt = 0;
};

}  // namespace orvid_tool
