// SPDX-License-Identifier: MIT
//
// Where runs of bytes of one kind end in JSON text: sixteen bytes at once where every processor of
// the kind can, byte for byte where they cannot and near the end of the text.

#pragma once

#include <cstddef>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace orvid_tool {

inline bool isBlank(char c) { return c == ' ' || c == '\n' || c == '\r' || c == '\t'; }
inline bool isDigit(char c) { return c >= '0' && c <= '9'; }
/// Ends a string, begins an escape, or may not stand in a string.
inline bool isSpecial(char c) {
    return c == '"' || c == '\\' || static_cast<unsigned char>(c) < 0x20;
}

#ifdef __SSE2__

/// Sixteen bytes of text.
class ByteBlock {
public:
    static constexpr std::ptrdiff_t k_length = 16;

    explicit ByteBlock(const char* place)
        : m_bytes(_mm_loadu_si128(reinterpret_cast<const __m128i*>(place))) {}

    // A bit for each byte that is not blank, no digit, not ASCII, special.
    unsigned int notBlank() const {
        const __m128i lines = _mm_or_si128(equal('\n'), equal('\r'));
        return ~bits(_mm_or_si128(_mm_or_si128(equal(' '), equal('\t')), lines)) & k_all;
    }
    unsigned int notDigit() const {
        const __m128i digits = _mm_sub_epi8(m_bytes, _mm_set1_epi8('0'));
        return ~bits(_mm_cmpeq_epi8(_mm_min_epu8(digits, _mm_set1_epi8(9)), digits)) & k_all;
    }
    unsigned int notAscii() const { return bits(m_bytes); }
    unsigned int special() const {
        const __m128i control = _mm_cmpeq_epi8(_mm_min_epu8(m_bytes, _mm_set1_epi8(0x1F)), m_bytes);
        return bits(_mm_or_si128(control, _mm_or_si128(equal('"'), equal('\\'))));
    }

private:
    static constexpr unsigned int k_all = 0xFFFF;

    __m128i equal(char c) const { return _mm_cmpeq_epi8(m_bytes, _mm_set1_epi8(c)); }
    static unsigned int bits(__m128i marks) {
        return static_cast<unsigned int>(_mm_movemask_epi8(marks));
    }

    __m128i m_bytes;
};

#endif

/// The first byte that `isStop` holds of, which is `end` at the latest. `stopsIn` says the same of
/// a whole block.
template<class StopsIn, class IsStop>
const char* runEnd(const char* place, const char* end, const StopsIn& stopsIn,
                   const IsStop& isStop) {
#ifdef __SSE2__
    while (end - place >= ByteBlock::k_length) {
        if (const unsigned int stops = stopsIn(ByteBlock(place))) {
            return place + __builtin_ctz(stops);
        }
        place += ByteBlock::k_length;
    }
#else
    static_cast<void>(stopsIn);
#endif
    while (place != end && !isStop(*place)) {
        ++place;
    }
    return place;
}

inline const char* blanksEnd(const char* place, const char* end) {
    return runEnd(
        place, end, [](const auto& block) { return block.notBlank(); },
        [](char c) { return !isBlank(c); });
}

inline const char* digitsEnd(const char* place, const char* end) {
    return runEnd(
        place, end, [](const auto& block) { return block.notDigit(); },
        [](char c) { return !isDigit(c); });
}

/// The first byte that is not ASCII.
inline const unsigned char* asciiEnd(const unsigned char* place, const unsigned char* end) {
    const char* const stop = runEnd(
        reinterpret_cast<const char*>(place), reinterpret_cast<const char*>(end),
        [](const auto& block) { return block.notAscii(); },
        [](char c) { return static_cast<unsigned char>(c) >= 0x80; });
    return reinterpret_cast<const unsigned char*>(stop);
}

/// The part of a string that needs no second look.
inline const char* plainEnd(const char* place, const char* end) {
    return runEnd(
        place, end, [](const auto& block) { return block.special(); }, &isSpecial);
}

}  // namespace orvid_tool
