// SPDX-License-Identifier: MIT
//
// UTF-8 by vectors that not every processor has, which is asked while the program runs.

#pragma once

#if defined(__x86_64__) && !defined(ORVID_NO_SIMD)
#define ORVID_WIDE_UTF8
#endif

namespace ko::Orvid::text {

/// Whether this program and its processor have them.
inline bool hasWideUtf8() noexcept {
#if defined(ORVID_WIDE_UTF8)
    return __builtin_cpu_supports("avx2") != 0;
#else
    return false;
#endif
}

/// After the whole valid characters at `at`, as far as whole vectors show them: less than a few
/// vectors before the first byte that is malformed or cut off, or before the end. Only where
/// hasWideUtf8().
const char* wideUtf8End(const char* at, const char* end) noexcept;

}  // namespace ko::Orvid::text
