// SPDX-License-Identifier: MIT
//
// KeyHashes says whether an object repeats a key, without keeping the keys. It is made for short
// objects, which most are: a few hashes are compared with each other where their bits meet, many
// are sorted.

#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "core/HashMix.h"

namespace ko::Orvid::text {

class KeyHashes {
public:
    /// An object begins, in the one that is open.
    void open() {
        if (m_words.capacity() == 0) {
            m_words.reserve(k_usual);
        }
        m_words.push_back(m_level.start);
        m_words.push_back(m_level.seen);
        m_level = {m_words.size(), 0};
    }
    /// A key of the object that is open. Returns false where its hash is there already: it is most
    /// likely the same key. Beyond a few keys only close() looks.
    bool add(std::string_view key) {
        const auto hash = hashOfText<std::uint64_t>(key);
        const std::uint64_t bit = std::uint64_t(1) << (hash % 64U);
        if ((m_level.seen & bit) != 0 && isAmongFew(hash)) {
            return false;
        }
        m_level.seen |= bit;
        m_words.push_back(hash);
        return true;
    }
    /// The object ends. Returns whether its keys are all different: true is certain. Linear cost,
    /// except for many keys n log n.
    bool close() {
        const bool areDifferent = m_words.size() - m_level.start <= k_few || areManyDifferent();
        const std::size_t outer = m_level.start - k_levelWords;
        m_level = {static_cast<std::size_t>(m_words[outer]), m_words[outer + 1]};
        m_words.resize(outer);
        return areDifferent;
    }
    /// Forgets all objects.
    void clear() noexcept;

private:
    static constexpr std::size_t k_few = 64;
    /// The words that a record of a few objects needs, so that they are asked for once.
    static constexpr std::size_t k_usual = 48;
    static constexpr std::size_t k_levelWords = 2;

    /// An object that is open.
    struct Level {
        std::size_t start = 0;   ///< of its hashes
        std::uint64_t seen = 0;  ///< a bit for each hash
    };

    bool isAmongFew(std::uint64_t hash) const noexcept;
    bool areManyDifferent() noexcept;

    /// For each open object the level around it, in k_levelWords words, and the hashes of its keys.
    std::vector<std::uint64_t> m_words;
    Level m_level;  ///< of the innermost one
};

}  // namespace ko::Orvid::text
