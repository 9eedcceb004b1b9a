// SPDX-License-Identifier: MIT
//
// A few hashes are compared with each other where their bits meet, many are sorted.

#include "text/KeyHashes.h"

#include <algorithm>
#include <cstring>

namespace ko::Orvid::text {

namespace {

constexpr std::size_t k_few = 64;
constexpr std::size_t k_wordLength = sizeof(std::uint64_t);

std::uint64_t mixed(std::uint64_t hash, std::uint64_t word) noexcept {
    constexpr std::uint64_t k_odd = 0x9E3779B97F4A7C15U;
    hash = (hash ^ word) * k_odd;
    return hash ^ (hash >> 32U);
}

/// Of at most eight bytes.
std::uint64_t shortWord(const char* at, std::size_t length) noexcept {
    std::uint64_t word = 0;
    if (length >= sizeof(std::uint32_t)) {
        std::uint32_t first = 0;
        std::uint32_t last = 0;
        std::memcpy(&first, at, sizeof first);
        std::memcpy(&last, at + length - sizeof last, sizeof last);
        return first | static_cast<std::uint64_t>(last) << 32U;
    }
    for (std::size_t i = 0; i < length; ++i) {
        word = word << 8U | static_cast<unsigned char>(at[i]);
    }
    return word;
}

std::uint64_t hashOf(std::string_view key) noexcept {
    const char* at = key.data();
    std::uint64_t hash = key.size();
    std::size_t left = key.size();
    for (; left > k_wordLength; left -= k_wordLength, at += k_wordLength) {
        std::uint64_t word = 0;
        std::memcpy(&word, at, sizeof word);
        hash = mixed(hash, word);
    }
    return mixed(hash, shortWord(at, left));
}

}  // namespace

void KeyHashes::open() {
    m_outer.push_back(m_level);
    m_level = {m_hashes.size(), {}};
}

bool KeyHashes::add(std::string_view key) {
    const std::uint64_t hash = hashOf(key);
    std::uint64_t& seen = m_level.seen[hash / 64U % 4U];
    const std::uint64_t bit = std::uint64_t(1) << (hash % 64U);
    const bool mayBeThere = (seen & bit) != 0 && m_hashes.size() - m_level.start < k_few;
    seen |= bit;
    if (mayBeThere) {
        const auto start = m_hashes.begin() + static_cast<std::ptrdiff_t>(m_level.start);
        if (std::find(start, m_hashes.end(), hash) != m_hashes.end()) {
            return false;
        }
    }
    m_hashes.push_back(hash);
    return true;
}

bool KeyHashes::close() {
    const auto start = m_hashes.begin() + static_cast<std::ptrdiff_t>(m_level.start);
    bool areDifferent = true;
    if (m_hashes.size() - m_level.start > k_few) {
        std::sort(start, m_hashes.end());
        areDifferent = std::adjacent_find(start, m_hashes.end()) == m_hashes.end();
    }
    m_hashes.resize(m_level.start);
    m_level = m_outer.back();
    m_outer.pop_back();
    return areDifferent;
}

void KeyHashes::clear() noexcept {
    m_hashes.clear();
    m_outer.clear();
    m_level = {};
}

}  // namespace ko::Orvid::text
