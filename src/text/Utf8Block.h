// SPDX-License-Identifier: MIT
//
// UTF-8 by blocks whose marks are bits: which bytes begin a character, and how long that is, says
// where the others must be. So characters of any length are looked at together, without a guess
// about each. Only the few first bytes that leave some second bytes out are looked at one by one.

#pragma once

#include <cstddef>
#include <cstdint>

#include "text/Utf8Sequence.h"

namespace ko::Orvid::text {

/// Of the `count` bytes at `at`, which lie within the block at `base`, how many are whole valid
/// characters before one that is cut off. 0 where anything else is wrong.
template<class Block>
[[gnu::always_inline]] inline std::ptrdiff_t wholeUtf8Length(const char* base, const char* at,
                                                             std::ptrdiff_t count) noexcept {
    constexpr std::ptrdiff_t k_bits = Block::k_length;
    const Block block(base);
    const std::uint64_t all = ~std::uint64_t{0} >> (64 - count);
    const auto marked = [&](typename Block::Marks marks) {
        return (std::uint64_t{marks} >> (at - base)) & all;
    };
    static_assert(k_bits + 3 <= 64);
    const std::uint64_t following = marked(block.following());
    const std::uint64_t first = marked(block.high()) & ~following;
    const std::uint64_t ofThree = first & marked(block.above(0xDF));
    const std::uint64_t ofFour = first & marked(block.above(0xEF));
    const std::uint64_t expected = first << 1U | ofThree << 2U | ofFour << 3U;
    if ((expected & all) != following) {
        return 0;
    }
    const bool isCut = (expected & ~all) != 0;
    const std::ptrdiff_t length = isCut ? 63 - __builtin_clzll(first) : count;
    std::uint64_t narrow = (marked(block.narrow()) | ofFour) & (all >> (count - length));
    while (narrow != 0) {
        if (Utf8Sequence::validLength(at + __builtin_ctzll(narrow), at + length) == 0) {
            return 0;
        }
        narrow &= narrow - 1;
    }
    return length;
}

/// After the whole valid characters at `at`, as far as blocks show them. `begin` is before them, or
/// the same, and may be read from.
template<class Block>
const char* utf8BlocksEnd(const char* begin, const char* at, const char* end) noexcept {
    constexpr std::ptrdiff_t k_length = Block::k_length;
    while (end - at >= k_length) {
        const bool isAscii = Block(at).high() == 0;
        const std::ptrdiff_t length = isAscii ? k_length : wholeUtf8Length<Block>(at, at, k_length);
        if (length == 0) {
            return at;
        }
        at += length;
    }
    if (at != end && end - begin >= k_length) {
        at += wholeUtf8Length<Block>(end - k_length, at, end - at);
    }
    return at;
}

}  // namespace ko::Orvid::text
