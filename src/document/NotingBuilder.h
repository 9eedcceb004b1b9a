// SPDX-License-Identifier: MIT
//
// NotingBuilder: a TreeBuilder that also notes where in the text each value stands.

#pragma once

#include <string_view>
#include <vector>

#include "document/TreeBuilder.h"
#include "source/ValuePlaces.h"

namespace ko::Orvid {

class NotingBuilder : public TokenSink {
public:
    /// `first` is the offset at which the document begins in the text that the places are for.
    NotingBuilder(TreeBuilder& builder, std::uint64_t first) noexcept
        : m_builder(builder), m_first(first) {}

    void null(TokenPlace place) { note(m_builder.null(place), place); }
    void boolean(bool value, TokenPlace place) { note(m_builder.boolean(value, place), place); }
    void number(std::string_view text, TokenPlace place) {
        note(m_builder.number(text, place), place);
    }
    void string(std::string_view text, TokenPlace place) {
        note(m_builder.string(text, place), place);
    }
    bool key(std::string_view text, TokenPlace place) { return m_builder.key(text, place); }
    void openObject(TokenPlace place) {
        m_open.push_back(note(m_builder.openObject(place), place));
    }
    void closeObject(TokenPlace place) {
        m_builder.closeObject(place);
        close(place);
    }
    void openArray(TokenPlace place) { m_open.push_back(note(m_builder.openArray(place), place)); }
    void closeArray(TokenPlace place) {
        m_builder.closeArray(place);
        close(place);
    }

    ValuePlaces& places() noexcept { return m_places; }

private:
    std::uint32_t note(const Element& element, TokenPlace place) {
        return m_places.add(&element, m_first + place.begin, m_first + place.end);
    }
    void close(TokenPlace place) noexcept {
        m_places[m_open.back()].close(m_first + place.end, m_places.size());
        m_open.pop_back();
    }

    TreeBuilder& m_builder;
    const std::uint64_t m_first;
    ValuePlaces m_places;
    std::vector<std::uint32_t> m_open;  ///< the containers whose end has not come
};

}  // namespace ko::Orvid
