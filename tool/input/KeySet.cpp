// SPDX-License-Identifier: MIT
//
// A few keys are compared with each other where their hashes meet, many are sorted.

#include "input/KeySet.h"

#include <algorithm>

namespace orvid_tool {

namespace {

constexpr std::size_t k_few = 24;

std::uint64_t hashBit(std::string_view key) {
    unsigned int hash = static_cast<unsigned int>(key.length());
    if (!key.empty()) {
        hash += 5U * static_cast<unsigned char>(key.front()) +
                static_cast<unsigned char>(key.back()) +
                11U * static_cast<unsigned char>(key[key.length() / 2]);
    }
    return std::uint64_t(1) << (hash % 64U);
}

}  // namespace

bool KeySet::add(std::string_view key) {
    const std::uint64_t bit = hashBit(key);
    const bool mayBeThere = (m_seen & bit) != 0 && m_keys.size() - m_start < k_few;
    m_seen |= bit;
    const auto start = m_keys.begin() + static_cast<std::ptrdiff_t>(m_start);
    if (mayBeThere && std::find(start, m_keys.end(), key) != m_keys.end()) {
        return false;
    }
    m_keys.push_back(key);
    return true;
}

bool KeySet::areDifferent() {
    if (m_keys.size() - m_start <= k_few) {
        return true;
    }
    const auto start = m_keys.begin() + static_cast<std::ptrdiff_t>(m_start);
    std::sort(start, m_keys.end());
    return std::adjacent_find(start, m_keys.end()) == m_keys.end();
}

}  // namespace orvid_tool
