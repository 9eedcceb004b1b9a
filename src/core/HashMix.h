// SPDX-License-Identifier: MIT
//
// The parts that the hashes of values are made of. Without a secret: tables whose keys come from a
// document use KeyedHash.

#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace ko::Orvid {

/// Spreads every bit: 2^64 divided by the golden ratio.
constexpr auto k_multiplier = static_cast<std::size_t>(0x9E3779B97F4A7C15ULL);

/// Different for different values, with the same `hash` before.
inline std::size_t mixed(std::size_t hash, std::size_t value) noexcept {
    hash = (hash ^ value) * k_multiplier;
    return hash ^ hash >> (sizeof hash * 4);
}

/// All 64 bits, also where std::size_t has fewer.
inline std::size_t mixedWhole(std::size_t hash, std::uint64_t value) noexcept {
    hash = mixed(hash, static_cast<std::size_t>(value));
    if constexpr (sizeof hash < sizeof value) {
        hash = mixed(hash, static_cast<std::size_t>(value >> 32U));
    }
    return hash;
}

/// The bytes as one number, of at most eight; different for different bytes of the same length.
inline std::uint64_t shortWord(const char* bytes, std::size_t length) noexcept {
    std::uint32_t first = 0;
    if (length >= sizeof first) {
        std::uint32_t last = 0;
        std::memcpy(&first, bytes, sizeof first);
        std::memcpy(&last, bytes + length - sizeof last, sizeof last);
        return std::uint64_t{last} << 32U | first;
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
inline std::size_t hashOfText(std::string_view text) noexcept {
    const char* next = text.data();
    std::size_t left = text.size();
    std::size_t hash = left * k_multiplier;  // a length must not make up for a byte
    for (std::uint64_t word = 0; left > sizeof word; left -= sizeof word, next += sizeof word) {
        std::memcpy(&word, next, sizeof word);
        // Once more, or what the top byte changes could be undone by the next word.
        hash = mixedWhole(hash, word) * k_multiplier;
    }
    return mixedWhole(hash, shortWord(next, left));
}

}  // namespace ko::Orvid
