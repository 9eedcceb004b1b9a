// SPDX-License-Identifier: MIT
//
// The parts that the hashes of values are made of, of so many bits as Word has. Without a secret:
// tables whose keys come from a document use KeyedHash.

#pragma once

#include <ko/detail/sameBytes.h>

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <type_traits>

namespace ko::Orvid {

/// Spreads every bit: 2^64 divided by the golden ratio.
constexpr std::uint64_t k_multiplier = 0x9E3779B97F4A7C15U;

/// Different for different values, with the same `hash` before.
template<class Word = std::size_t>
Word mixed(Word hash, Word value) noexcept {
    static_assert(std::is_unsigned_v<Word> && sizeof(Word) >= sizeof(std::uint32_t));
    hash = (hash ^ value) * static_cast<Word>(k_multiplier);
    return hash ^ hash >> (sizeof hash * 4);
}

/// All 64 bits, also where Word has fewer.
template<class Word = std::size_t>
Word mixedWhole(Word hash, std::uint64_t value) noexcept {
    hash = mixed(hash, static_cast<Word>(value));
    if constexpr (sizeof hash < sizeof value) {
        hash = mixed(hash, static_cast<Word>(value >> 32U));
    }
    return hash;
}

/// The bytes as one number, of at most eight; different for different bytes of the same length.
inline std::uint64_t shortWord(const char* bytes, std::size_t length) noexcept {
    constexpr std::size_t half = sizeof(std::uint32_t);
    if (length >= half) {
        const std::uint64_t last = ko::detail::wordAt<std::uint32_t>(bytes + length - half);
        return last << 32U | ko::detail::wordAt<std::uint32_t>(bytes);
    }
    if (length == 0) {
        return 0;
    }
    // The first byte, the middle one and the last, which are all there are.
    const auto byteAt = [bytes](std::size_t at) {
        return std::uint32_t{static_cast<unsigned char>(bytes[at])};
    };
    return byteAt(0) | byteAt(length / 2) << 8U | byteAt(length - 1) << 16U;
}

/// The hash of a text, a word at a time. One more mixed() is to follow, which spreads its last
/// bytes over all bits.
template<class Word = std::size_t>
Word hashOfText(std::string_view text) noexcept {
    constexpr std::size_t word = sizeof(std::uint64_t);
    constexpr auto multiplier = static_cast<Word>(k_multiplier);
    const char* next = text.data();
    std::size_t left = text.size();
    Word hash = left * multiplier;  // a length must not make up for a byte
    for (; left > word; left -= word, next += word) {
        // Once more, or what the top byte changes could be undone by the next word.
        hash = mixedWhole(hash, ko::detail::wordAt<std::uint64_t>(next)) * multiplier;
    }
    return mixedWhole(hash, shortWord(next, left));
}

}  // namespace ko::Orvid
