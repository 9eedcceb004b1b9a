// SPDX-License-Identifier: MIT
//
// The text of a document, as it was or with what changed.

#include "source/Source.h"

#include <ko/Orvid/Object.h>

#include <algorithm>
#include <string_view>
#include <utility>

#include "source/Counterparts.h"
#include "source/isAsRead.h"
#include "source/SourceWriter.h"
#include "text/byteOrderMark.h"
#include "text/LineCounter.h"

namespace ko::Orvid {

Source::Source(std::string text, const ReadOptions& options, std::string file)
    : m_text(std::move(text)), m_file(std::move(file)), m_options(options) {}

std::string Source::textOf(const Element& root, const std::string* leftOut,
                           const MovedPlaces& moved) const {
    const bool isWhole =
        leftOut == nullptr || !root.isObject() || !root.object().contains(*leftOut);
    const bool isNoneElsewhere = std::all_of(moved.begin(), moved.end(), [&](const auto& places) {
        return places.first == places.second || places.second.find(root) == nullptr;
    });
    if (isWhole && isNoneElsewhere && isAsRead(m_map, 0, root)) {
        return m_text;
    }
    const Counterparts counterparts(m_map, root, isWhole ? nullptr : leftOut, moved);
    return SourceWriter(m_map, counterparts).run();
}

std::optional<SourcePlace> Source::placeOf(const Element& element) const {
    const std::uint32_t value = m_map.find(element);
    if (value == SourceMap::k_none) {
        return std::nullopt;
    }
    SourcePlace place;
    static_cast<SourceSpan&>(place) = span(m_map[value].begin(), m_map[value].end());
    if (value != 0) {
        const auto [container, child] = m_map.parentOf(value);
        if (m_map.isObject(container)) {
            place.key = span(child.begin, child.keyEnd);
        }
    }
    return place;
}

SourceSpan Source::span(std::size_t begin, std::size_t end) const {
    const std::size_t mark = text::markLength(m_text);
    const LineAndColumn position =
        LineCounter().position(std::string_view(m_text).substr(mark), begin - mark);
    return {begin, end - begin, static_cast<std::size_t>(position.line),
            static_cast<std::size_t>(position.column)};
}

}  // namespace ko::Orvid
