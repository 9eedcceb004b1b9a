// SPDX-License-Identifier: MIT
//
// Keys, numbers and commas of a piece.

#include <algorithm>

#include "document/DomReading.h"

namespace ko::Orvid {

void EventNotes::begin(std::uint64_t offset) noexcept {
    m_begin = offset;
    m_keys.clear();
    m_trailing.clear();
    m_afterHeld.reset();
}

void EventNotes::noteToken(TokenSpan span) noexcept {
    if (m_comma && *m_comma < m_begin) {
        m_afterHeld = span.begin;
    }
    m_comma.reset();
}

void EventNotes::noteEnd() {
    if (m_comma && *m_comma >= m_begin) {
        m_trailing.push_back(*m_comma);
    }
    m_comma.reset();
}

std::string_view EventNotes::withoutTrailingCommas(std::string_view piece) {
    m_text = piece;
    const auto drop = [this](std::uint64_t comma) {
        m_text[static_cast<std::size_t>(comma - m_begin)] = ' ';
    };
    std::for_each(m_trailing.begin(), m_trailing.end(), drop);
    if (m_comma && *m_comma >= m_begin) {
        drop(*m_comma);
    }
    if (m_afterHeld) {
        m_text.insert(static_cast<std::size_t>(*m_afterHeld - m_begin), 1, ',');
        ++m_added;
    }
    return m_text;
}

}  // namespace ko::Orvid
