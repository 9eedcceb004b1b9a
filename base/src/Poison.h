// SPDX-License-Identifier: MIT
//
// Says to the address sanitizer, where there is one, which bytes of a larger block may be used.

#pragma once

#include <cstddef>

#if defined(__has_include) && __has_include(<sanitizer/asan_interface.h>)
#include <sanitizer/asan_interface.h>
#else
#define ASAN_POISON_MEMORY_REGION(address, size) \
    (static_cast<void>(address), static_cast<void>(size))
#define ASAN_UNPOISON_MEMORY_REGION(address, size) \
    (static_cast<void>(address), static_cast<void>(size))
#endif

namespace ko {

inline void poison(const void* bytes, std::size_t size) noexcept {
    ASAN_POISON_MEMORY_REGION(bytes, size);
}

inline void unpoison(const void* bytes, std::size_t size) noexcept {
    ASAN_UNPOISON_MEMORY_REGION(bytes, size);
}

}  // namespace ko
