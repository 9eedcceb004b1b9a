// SPDX-License-Identifier: MIT
//
// The kinds of bytes in JSON text, and where runs of one kind end: a block at once, and byte for
// byte near the end of the text.

#pragma once

#include <cstddef>
#include <cstdint>

#include "text/ByteBlock.h"

namespace ko::Orvid::text {

#if defined(ORVID_NO_SIMD)
using Block = PlainBlock;
using WideBlock = PlainBlock;
#elif defined(__SSE2__)
using Block = Sse2Block;
using WideBlock = Sse2Pair;
#elif defined(__ARM_NEON) && defined(__aarch64__)
using Block = NeonBlock;
using WideBlock = NeonBlock;
#else
using Block = PlainBlock;
using WideBlock = PlainBlock;
#endif

inline bool isWhitespace(char c) noexcept {
    return c == ' ' || c == '\n' || c == '\r' || c == '\t';
}
inline bool isDigit(char c) noexcept { return c >= '0' && c <= '9'; }
inline bool isControl(char c) noexcept { return static_cast<unsigned char>(c) < 0x20; }
/// Above ASCII.
inline bool isHigh(char c) noexcept { return static_cast<unsigned char>(c) >= 0x80; }
/// Ends a string, begins an escape, or may not stand in a string.
inline bool isSpecial(char c) noexcept { return c == '"' || c == '\\' || isControl(c); }

/// The first byte that `isStop` holds for, or `end`. `stopsIn` gives the same for a whole block.
template<class AnyBlock, class StopsIn, class IsStop>
const char* runEnd(const char* at, const char* end, const StopsIn& stopsIn,
                   const IsStop& isStop) noexcept {
    while (end - at >= AnyBlock::k_length) {
        if (const auto stops = stopsIn(AnyBlock(at))) {
            return at + AnyBlock::first(stops);
        }
        at += AnyBlock::k_length;
    }
    if (AnyBlock::k_length > PlainBlock::k_length && end - at >= PlainBlock::k_length) {
        if (const auto stops = stopsIn(PlainBlock(at))) {
            return at + PlainBlock::first(stops);
        }
        at += PlainBlock::k_length;
    }
    while (at != end && !isStop(*at)) {
        ++at;
    }
    return at;
}

template<class AnyBlock = Block>
const char* whitespaceEnd(const char* at, const char* end) noexcept {
    return runEnd<AnyBlock>(
        at, end, [](const auto& block) { return block.notWhitespace(); },
        [](char c) { return !isWhitespace(c); });
}

template<class AnyBlock = Block>
const char* digitsEnd(const char* at, const char* end) noexcept {
    return runEnd<AnyBlock>(
        at, end, [](const auto& block) { return block.notDigit(); },
        [](char c) { return !isDigit(c); });
}

/// The part of a string that stands for itself. `hasHigh` is set where a byte of it, or one not far
/// after it, is above ASCII.
template<class AnyBlock = Block>
const char* plainEnd(const char* at, const char* end, bool& hasHigh) noexcept {
    std::uint64_t high = 0;
    const char* const stop = runEnd<AnyBlock>(
        at, end,
        [&](const auto& block) {
            high |= block.high();
            return block.special();
        },
        [&](char c) {
            high |= isHigh(c) ? 1U : 0U;
            return isSpecial(c);
        });
    hasHigh = high != 0;
    return stop;
}

template<class AnyBlock = Block>
const char* plainEnd(const char* at, const char* end) noexcept {
    bool hasHigh = false;
    return plainEnd<AnyBlock>(at, end, hasHigh);
}

template<class AnyBlock = Block>
const char* asciiEnd(const char* at, const char* end) noexcept {
    return runEnd<AnyBlock>(
        at, end, [](const auto& block) { return block.high(); }, [](char c) { return isHigh(c); });
}

/// How many bytes are `c`.
template<class AnyBlock = Block>
std::uint64_t countOf(char c, const char* at, const char* end) noexcept {
    typename AnyBlock::Count count;
    for (; end - at >= AnyBlock::k_length; at += AnyBlock::k_length) {
        count.add(AnyBlock(at), c);
    }
    std::uint64_t total = count.total();
    for (; at != end; ++at) {
        total += *at == c ? 1 : 0;
    }
    return total;
}

}  // namespace ko::Orvid::text
