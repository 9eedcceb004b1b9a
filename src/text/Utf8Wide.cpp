// SPDX-License-Identifier: MIT
//
// Each byte is looked at together with the one before it. A table for each half of the first byte
// and one for the upper half of the second say which errors the two may be; those that all three
// name are there. What remains is whether a third and a fourth byte stand where they must.

#include "text/Utf8Wide.h"

#if defined(ORVID_WIDE_UTF8)

#include <immintrin.h>

#include <cstddef>

// Without it the intrinsics, which are inline, could not be called.
#define ORVID_AVX2 __attribute__((target("avx2")))

namespace ko::Orvid::text {

namespace {

constexpr std::ptrdiff_t k_length = 32;
constexpr std::ptrdiff_t k_longest = 4;

/// What two bytes can be, a bit for each.
constexpr char k_lacking = 0x01;      ///< a first byte, and not what must follow
constexpr char k_stray = 0x02;        ///< ASCII, and a byte that must follow another
constexpr char k_overlong3 = 0x04;    ///< the first of three bytes for what fits in two
constexpr char k_surrogate = 0x08;    ///< the first of three
constexpr char k_overlong2 = 0x10;    ///< two bytes for ASCII
constexpr char k_beyond = 0x20;       ///< above U+10FFFF
constexpr char k_overlong4 = 0x40;    ///< the first of four bytes for what fits in three
constexpr char k_following = '\x80';  ///< both must follow others, which is right in places

/// Bytes that begin nothing have both marks of what begins four bytes, one of which will apply.
constexpr char k_any = k_lacking | k_stray | k_following;
constexpr char k_above = k_any | k_beyond | k_overlong4;
constexpr char k_second = k_stray | k_following | k_overlong2;

/// The entry of the table for each byte of `halves`, which are below 16.
ORVID_AVX2 inline __m256i entries(__m256i table, __m256i halves) noexcept {
    return _mm256_shuffle_epi8(table, halves);
}

ORVID_AVX2 inline __m256i upperHalves(__m256i bytes) noexcept {
    return _mm256_and_si256(_mm256_srli_epi16(bytes, 4), _mm256_set1_epi8(0x0F));
}

/// The same sixteen entries for both halves of a vector, which have a table each.
ORVID_AVX2 inline __m256i doubled(__m128i table) noexcept {
    return _mm256_broadcastsi128_si256(table);
}

/// The errors that a byte and the one before it are.
ORVID_AVX2 inline __m256i pairErrors(__m256i before, __m256i bytes) noexcept {
    const __m256i firstUpper = doubled(_mm_setr_epi8(
        k_stray, k_stray, k_stray, k_stray, k_stray, k_stray, k_stray, k_stray, k_following,
        k_following, k_following, k_following, k_lacking | k_overlong2, k_lacking,
        k_lacking | k_overlong3 | k_surrogate, k_lacking | k_beyond | k_overlong4));
    const __m256i firstLower = doubled(
        _mm_setr_epi8(k_any | k_overlong2 | k_overlong3 | k_overlong4, k_any | k_overlong2, k_any,
                      k_any, k_any | k_beyond, k_above, k_above, k_above, k_above, k_above, k_above,
                      k_above, k_above, k_above | k_surrogate, k_above, k_above));
    const __m256i secondUpper = doubled(_mm_setr_epi8(
        k_lacking, k_lacking, k_lacking, k_lacking, k_lacking, k_lacking, k_lacking, k_lacking,
        k_second | k_overlong3 | k_overlong4, k_second | k_overlong3 | k_beyond,
        k_second | k_surrogate | k_beyond, k_second | k_surrogate | k_beyond, k_lacking, k_lacking,
        k_lacking, k_lacking));
    const __m256i lower = _mm256_and_si256(before, _mm256_set1_epi8(0x0F));
    return _mm256_and_si256(
        _mm256_and_si256(entries(firstUpper, upperHalves(before)), entries(firstLower, lower)),
        entries(secondUpper, upperHalves(bytes)));
}

/// Not zero where something is wrong in `bytes`, which stand after those of `earlier`. A character
/// that is cut off at the end is not.
ORVID_AVX2 inline __m256i errors(__m256i earlier, __m256i bytes) noexcept {
    // The last half of the ones and the first of the others, so that bytes can be moved over.
    const __m256i middle = _mm256_permute2x128_si256(earlier, bytes, 0x21);
    const __m256i second = _mm256_alignr_epi8(bytes, middle, 14);
    const __m256i third = _mm256_alignr_epi8(bytes, middle, 13);
    // The top bit remains of a first byte of three or four two places before, and of four three
    // places before.
    const __m256i ofThree = _mm256_subs_epu8(second, _mm256_set1_epi8(0xE0 - 0x80));
    const __m256i ofFour = _mm256_subs_epu8(third, _mm256_set1_epi8(0xF0 - 0x80));
    const __m256i expected =
        _mm256_and_si256(_mm256_or_si256(ofThree, ofFour), _mm256_set1_epi8(k_following));
    return _mm256_xor_si256(expected, pairErrors(_mm256_alignr_epi8(bytes, middle, 15), bytes));
}

ORVID_AVX2 inline __m256i load(const char* at) noexcept {
    return _mm256_loadu_si256(reinterpret_cast<const __m256i*>(at));
}

ORVID_AVX2 inline bool isAscii(__m256i bytes) noexcept { return _mm256_movemask_epi8(bytes) == 0; }

/// Before the character that is cut off at `at`, where one is.
const char* wholeEnd(const char* begin, const char* at) noexcept {
    for (std::ptrdiff_t i = 1; i < k_longest && at - i >= begin; ++i) {
        const auto byte = static_cast<unsigned char>(at[-i]);
        if (byte >= 0xC0) {
            const std::ptrdiff_t length = byte < 0xE0 ? 2 : byte < 0xF0 ? 3 : 4;
            return length > i ? at - i : at;
        }
    }
    return at;
}

}  // namespace

ORVID_AVX2 const char* wideUtf8End(const char* at, const char* end) noexcept {
    const char* const begin = at;
    __m256i earlier = _mm256_setzero_si256();
    for (; end - at >= 2 * k_length; at += 2 * k_length) {
        const __m256i first = load(at);
        const __m256i second = load(at + k_length);
        const bool isPlain = isAscii(_mm256_or_si256(_mm256_or_si256(first, second), earlier));
        if (!isPlain) {
            const __m256i wrong = _mm256_or_si256(errors(earlier, first), errors(first, second));
            if (_mm256_testz_si256(wrong, wrong) == 0) {
                break;
            }
        }
        earlier = second;
    }
    return wholeEnd(begin, at);
}

}  // namespace ko::Orvid::text

#else

namespace ko::Orvid::text {

const char* wideUtf8End(const char* at, const char* /*end*/) noexcept { return at; }

}  // namespace ko::Orvid::text

#endif
