// SPDX-License-Identifier: MIT
//
// KeyHashes says whether an object repeats a key, without keeping the keys. It is made for short
// objects, which most are: a few hashes are compared with each other where their bits meet, many
// are sorted.

#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <vector>

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
        const std::uint64_t hash = hashOf(key);
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

    static std::uint64_t mixed(std::uint64_t hash, std::uint64_t word) noexcept {
        constexpr std::uint64_t k_odd = 0x9E3779B97F4A7C15U;
        hash = (hash ^ word) * k_odd;
        return hash ^ (hash >> 32U);
    }
    template<class Word>
    static std::uint64_t wordAt(const char* at) noexcept {
        Word word = 0;
        std::memcpy(&word, at, sizeof word);
        return word;
    }
    /// Of at most eight bytes.
    static std::uint64_t shortWord(const char* at, std::size_t length) noexcept {
        constexpr std::size_t k_half = sizeof(std::uint32_t);
        if (length >= k_half) {
            return wordAt<std::uint32_t>(at) | wordAt<std::uint32_t>(at + length - k_half) << 32U;
        }
        std::uint64_t word = 0;
        for (std::size_t i = 0; i < length; ++i) {
            word = word << 8U | static_cast<unsigned char>(at[i]);
        }
        return word;
    }
    static std::uint64_t hashOf(std::string_view key) noexcept {
        constexpr std::size_t k_word = sizeof(std::uint64_t);
        const char* at = key.data();
        std::size_t left = key.size();
        std::uint64_t hash = left;
        for (; left > k_word; left -= k_word, at += k_word) {
            hash = mixed(hash, wordAt<std::uint64_t>(at));
        }
        return mixed(hash, shortWord(at, left));
    }

    bool isAmongFew(std::uint64_t hash) const noexcept;
    bool areManyDifferent() noexcept;

    /// For each open object the level around it, in k_levelWords words, and the hashes of its keys.
    std::vector<std::uint64_t> m_words;
    Level m_level;  ///< of the innermost one
};

}  // namespace ko::Orvid::text
