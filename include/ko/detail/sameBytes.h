// SPDX-License-Identifier: MIT
//
// ko::detail::sameBytes(), for the many short texts that keys and numbers are.

#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace ko::detail {

template<class Word>
Word wordAt(const char* bytes) noexcept {
    Word word;
    std::memcpy(&word, bytes, sizeof word);
    return word;
}

/// Which bits differ in the words at `at`.
template<class Word>
Word differenceAt(const char* a, const char* b, std::size_t at) noexcept {
    return static_cast<Word>(wordAt<Word>(a + at) ^ wordAt<Word>(b + at));
}

/// Whether both are the same `length` bytes. Up to 24, it is in words that overlap, without a call.
inline bool sameBytes(const char* a, const char* b, std::size_t length) noexcept {
    using Long = std::uint64_t;
    using Short = std::uint32_t;
    if (length > 3 * sizeof(Long)) {
        return std::memcmp(a, b, length) == 0;
    }
    if (length >= sizeof(Long)) {
        const std::size_t middle = length > 2 * sizeof(Long) ? sizeof(Long) : 0;
        return (differenceAt<Long>(a, b, 0) | differenceAt<Long>(a, b, middle) |
                differenceAt<Long>(a, b, length - sizeof(Long))) == 0;
    }
    if (length >= sizeof(Short)) {
        return (differenceAt<Short>(a, b, 0) | differenceAt<Short>(a, b, length - sizeof(Short))) ==
               0;
    }
    for (std::size_t i = 0; i < length; ++i) {
        if (a[i] != b[i]) {
            return false;
        }
    }
    return true;
}

}  // namespace ko::detail
