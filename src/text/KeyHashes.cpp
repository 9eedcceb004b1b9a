// SPDX-License-Identifier: MIT
//
// What is rare: a bit that two hashes share, and objects with many keys.

#include "text/KeyHashes.h"

#include <algorithm>

namespace ko::Orvid::text {

void KeyHashes::clear() noexcept {
    m_words.clear();
    m_level = {};
}

bool KeyHashes::isAmongFew(std::uint64_t hash) const noexcept {
    const auto start = m_words.begin() + static_cast<std::ptrdiff_t>(m_level.start);
    return m_words.size() - m_level.start < k_few &&
           std::find(start, m_words.end(), hash) != m_words.end();
}

bool KeyHashes::areManyDifferent() noexcept {
    const auto start = m_words.begin() + static_cast<std::ptrdiff_t>(m_level.start);
    std::sort(start, m_words.end());
    return std::adjacent_find(start, m_words.end()) == m_words.end();
}

}  // namespace ko::Orvid::text
