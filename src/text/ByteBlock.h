// SPDX-License-Identifier: MIT
//
// Several bytes of text at once, with a mark for each that is of a kind. There is one block for
// each kind of processor: PlainBlock needs nothing but words, and the others do the same with
// vectors. ByteRuns.h chooses one of them and says what it is for.

#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <type_traits>

#if defined(__SSE2__)
#include <emmintrin.h>
#elif defined(__ARM_NEON) && defined(__aarch64__)
#include <arm_neon.h>
#endif

namespace ko::Orvid::text {

/// The bytes of a machine word. A mark is the top bit of its byte.
class PlainBlock {
public:
    using Marks = std::size_t;
    static constexpr std::ptrdiff_t k_length = sizeof(Marks);
    static constexpr bool k_marksAreBits = false;

    explicit PlainBlock(const char* at) noexcept { std::memcpy(&m_bytes, at, sizeof m_bytes); }
    /// Of two halves, in either order: for what is asked of all bytes.
    PlainBlock(const char* half, const char* other) noexcept
        : m_bytes(halfAt(half) << (4U * sizeof(Marks)) | halfAt(other)) {}

    /// A quote, a backslash or a control character: what may not stand in a string as it is.
    Marks special() const noexcept { return equal('"') | equal('\\') | below(0x20); }
    /// None of space, tab, newline and carriage return.
    Marks notWhitespace() const noexcept {
        return ~(equal(' ') | equal('\t') | equal('\n') | equal('\r')) & k_tops;
    }
    Marks notDigit() const noexcept { return (~below('9' + 1) | below('0')) & k_tops; }
    /// Above ASCII.
    Marks high() const noexcept { return m_bytes & k_tops; }
    Marks equal(char c) const noexcept { return notEqual(c) ^ k_tops; }
    Marks notEqual(char c) const noexcept {
        const Marks different = m_bytes ^ (k_ones * static_cast<unsigned char>(c));
        return (((different & ~k_tops) + ~k_tops) | different) & k_tops;
    }

    /// How many bytes come before the first marked one; there must be one.
    static std::ptrdiff_t first(Marks marks) noexcept {
#if __BYTE_ORDER__ == __ORDER_BIG_ENDIAN__
        return __builtin_clzll(marks) / 8 - (8 - k_length);
#else
        return __builtin_ctzll(marks) / 8;
#endif
    }
    /// How many bytes of the blocks that are added are `c`.
    class Count {
    public:
        void add(const PlainBlock& block, char c) noexcept {
            // The topmost byte of the product is the sum of the bytes of one factor.
            m_total += ((block.equal(c) >> 7U) * k_ones) >> (8U * (sizeof(Marks) - 1));
        }
        std::uint64_t total() const noexcept { return m_total; }

    private:
        std::uint64_t m_total = 0;
    };

private:
    static constexpr Marks k_ones = ~Marks(0) / 255;
    static constexpr Marks k_tops = k_ones * 0x80;

    static Marks halfAt(const char* at) noexcept {
        std::conditional_t<sizeof(Marks) == 8, std::uint32_t, std::uint16_t> half = 0;
        std::memcpy(&half, at, sizeof half);
        return half;
    }
    Marks below(unsigned int limit) const noexcept {
        return ~(((m_bytes & ~k_tops) + k_ones * (0x80 - limit)) | m_bytes) & k_tops;
    }

    Marks m_bytes;
};

/// Whether the first of the marks comes before the first of `stops`, which marks other bytes of the
/// same block.
template<class Marks>
bool isMarkedBefore(Marks stops, Marks marks) noexcept {
#if __BYTE_ORDER__ == __ORDER_BIG_ENDIAN__
    return marks > stops;
#else
    return (marks & ((stops & (~stops + 1)) - 1)) != 0;
#endif
}

#if defined(__SSE2__)

/// Sixteen bytes. A mark is a bit.
class Sse2Block {
public:
    using Marks = unsigned int;
    static constexpr std::ptrdiff_t k_length = 16;
    static constexpr bool k_marksAreBits = true;

    explicit Sse2Block(const char* at) noexcept
        : m_bytes(_mm_loadu_si128(reinterpret_cast<const __m128i*>(at))) {}
    /// Of two halves.
    Sse2Block(const char* half, const char* other) noexcept
        : m_bytes(_mm_unpacklo_epi64(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(half)),
                                     _mm_loadl_epi64(reinterpret_cast<const __m128i*>(other)))) {}

    Marks special() const noexcept {
        const __m128i control = _mm_cmpeq_epi8(_mm_min_epu8(m_bytes, _mm_set1_epi8(0x1F)), m_bytes);
        return bits(_mm_or_si128(control, _mm_or_si128(compare('"'), compare('\\'))));
    }
    Marks notWhitespace() const noexcept {
        const __m128i lines = _mm_or_si128(compare('\n'), compare('\r'));
        return bits(_mm_or_si128(_mm_or_si128(compare(' '), compare('\t')), lines)) ^ k_all;
    }
    Marks notDigit() const noexcept {
        const __m128i digits = _mm_sub_epi8(m_bytes, _mm_set1_epi8('0'));
        return bits(_mm_cmpeq_epi8(_mm_min_epu8(digits, _mm_set1_epi8(9)), digits)) ^ k_all;
    }
    Marks high() const noexcept { return bits(m_bytes); }
    /// In UTF-8 not the first byte of its character.
    Marks following() const noexcept {
        return bits(_mm_cmplt_epi8(m_bytes, _mm_set1_epi8(static_cast<char>(0xC0))));
    }
    /// ASCII as well, or greater than `limit`, which is above ASCII.
    Marks above(unsigned char limit) const noexcept {
        return bits(_mm_cmpgt_epi8(m_bytes, _mm_set1_epi8(static_cast<char>(limit))));
    }
    /// A first byte in UTF-8 of two or three that not every second byte may follow, or none at all.
    Marks narrow() const noexcept {
        const __m128i isThree = _mm_or_si128(compare('\xE0'), compare('\xED'));
        const __m128i even = _mm_and_si128(m_bytes, _mm_set1_epi8(static_cast<char>(0xFE)));
        const __m128i isNone = _mm_cmpeq_epi8(even, _mm_set1_epi8(static_cast<char>(0xC0)));
        return bits(_mm_or_si128(isThree, isNone));
    }
    Marks equal(char c) const noexcept { return bits(compare(c)); }
    Marks notEqual(char c) const noexcept { return equal(c) ^ k_all; }

    static std::ptrdiff_t first(Marks marks) noexcept { return __builtin_ctz(marks); }
    /// How many bytes of the blocks that are added are `c`.
    class Count {
    public:
        void add(const Sse2Block& block, char c) noexcept {
            const __m128i ones = _mm_and_si128(block.compare(c), _mm_set1_epi8(1));
            m_halves = _mm_add_epi64(m_halves, _mm_sad_epu8(ones, _mm_setzero_si128()));
        }
        std::uint64_t total() const noexcept {
            std::uint64_t halves[2];
            std::memcpy(halves, &m_halves, sizeof halves);
            return halves[0] + halves[1];
        }

    private:
        __m128i m_halves = _mm_setzero_si128();
    };

private:
    static constexpr Marks k_all = 0xFFFF;

    __m128i compare(char c) const noexcept { return _mm_cmpeq_epi8(m_bytes, _mm_set1_epi8(c)); }
    static Marks bits(__m128i marks) noexcept {
        return static_cast<Marks>(_mm_movemask_epi8(marks));
    }

    __m128i m_bytes;
};

/// Two of them. Most strings, numbers and margins lie in one look at it, which leaves no loop whose
/// last round the processor must guess.
class Sse2Pair {
public:
    using Marks = std::uint32_t;
    static constexpr std::ptrdiff_t k_length = 2 * Sse2Block::k_length;
    static constexpr bool k_marksAreBits = true;

    explicit Sse2Pair(const char* at) noexcept : m_first(at), m_second(at + Sse2Block::k_length) {}

    Marks special() const noexcept { return both(m_first.special(), m_second.special()); }
    Marks notWhitespace() const noexcept {
        return both(m_first.notWhitespace(), m_second.notWhitespace());
    }
    Marks notDigit() const noexcept { return both(m_first.notDigit(), m_second.notDigit()); }
    Marks high() const noexcept { return both(m_first.high(), m_second.high()); }
    Marks following() const noexcept { return both(m_first.following(), m_second.following()); }
    Marks above(unsigned char limit) const noexcept {
        return both(m_first.above(limit), m_second.above(limit));
    }
    Marks narrow() const noexcept { return both(m_first.narrow(), m_second.narrow()); }
    Marks equal(char c) const noexcept { return both(m_first.equal(c), m_second.equal(c)); }
    Marks notEqual(char c) const noexcept { return ~equal(c); }

    static std::ptrdiff_t first(Marks marks) noexcept { return __builtin_ctz(marks); }
    class Count {
    public:
        void add(const Sse2Pair& pair, char c) noexcept {
            m_count.add(pair.m_first, c);
            m_count.add(pair.m_second, c);
        }
        std::uint64_t total() const noexcept { return m_count.total(); }

    private:
        Sse2Block::Count m_count;
    };

private:
    static Marks both(Marks first, Marks second) noexcept {
        return first | second << Sse2Block::k_length;
    }

    Sse2Block m_first;
    Sse2Block m_second;
};

#elif defined(__ARM_NEON) && defined(__aarch64__)

/// Sixteen bytes. A mark is four bits, since NEON has no shorter way from bytes to bits.
class NeonBlock {
public:
    using Marks = std::uint64_t;
    static constexpr std::ptrdiff_t k_length = 16;
    static constexpr bool k_marksAreBits = false;

    explicit NeonBlock(const char* at) noexcept
        : m_bytes(vld1q_u8(reinterpret_cast<const std::uint8_t*>(at))) {}
    /// Of two halves.
    NeonBlock(const char* half, const char* other) noexcept
        : m_bytes(vcombine_u8(vld1_u8(reinterpret_cast<const std::uint8_t*>(half)),
                              vld1_u8(reinterpret_cast<const std::uint8_t*>(other)))) {}

    Marks special() const noexcept {
        const uint8x16_t control = vcltq_u8(m_bytes, vdupq_n_u8(0x20));
        return bits(vorrq_u8(control, vorrq_u8(compare('"'), compare('\\'))));
    }
    Marks notWhitespace() const noexcept {
        const uint8x16_t lines = vorrq_u8(compare('\n'), compare('\r'));
        return ~bits(vorrq_u8(vorrq_u8(compare(' '), compare('\t')), lines));
    }
    Marks notDigit() const noexcept {
        return bits(vcgtq_u8(vsubq_u8(m_bytes, vdupq_n_u8('0')), vdupq_n_u8(9)));
    }
    Marks high() const noexcept { return bits(vcgeq_u8(m_bytes, vdupq_n_u8(0x80))); }
    Marks equal(char c) const noexcept { return bits(compare(c)); }
    Marks notEqual(char c) const noexcept { return ~equal(c); }

    static std::ptrdiff_t first(Marks marks) noexcept { return __builtin_ctzll(marks) / 4; }
    /// How many bytes of the blocks that are added are `c`.
    class Count {
    public:
        void add(const NeonBlock& block, char c) noexcept {
            m_total += vaddvq_u8(vandq_u8(block.compare(c), vdupq_n_u8(1)));
        }
        std::uint64_t total() const noexcept { return m_total; }

    private:
        std::uint64_t m_total = 0;
    };

private:
    uint8x16_t compare(char c) const noexcept {
        return vceqq_u8(m_bytes, vdupq_n_u8(static_cast<std::uint8_t>(c)));
    }
    static Marks bits(uint8x16_t marks) noexcept {
        const uint8x8_t halves = vshrn_n_u16(vreinterpretq_u16_u8(marks), 4);
        return vget_lane_u64(vreinterpret_u64_u8(halves), 0);
    }

    uint8x16_t m_bytes;
};

#endif

}  // namespace ko::Orvid::text
