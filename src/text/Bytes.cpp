// SPDX-License-Identifier: MIT
//
// Memory that is new from the system is expensive to touch page by page, so it is asked for in
// greater pieces, and for no more than will be needed soon.

#include "text/Bytes.h"

#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <new>

namespace ko::Orvid::text {

namespace {

constexpr std::size_t k_least = 256;
/// Below it memory rarely comes fresh from the system.
constexpr std::size_t k_much = std::size_t(1) << 17;

/// Has the system make the whole pages of that memory at once. It is a hint: a system that does not
/// know it makes each page when it is touched.
void makePages(char* start, std::size_t count) {
#ifdef MADV_POPULATE_WRITE
    static const auto page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
    const std::size_t before = (page - reinterpret_cast<std::uintptr_t>(start) % page) % page;
    if (count > before) {
        const std::size_t whole = (count - before) / page * page;
        static_cast<void>(madvise(start + before, whole, MADV_POPULATE_WRITE));
    }
#else
    static_cast<void>(start);
    static_cast<void>(count);
#endif
}

}  // namespace

void Bytes::makeRoom(std::size_t count) {
    const std::size_t wanted = m_length + count;
    if (wanted > m_capacity) {
        const std::size_t capacity = std::max({wanted, m_capacity * 2, k_least});
        char* const grown = static_cast<char*>(std::realloc(m_bytes.get(), capacity));
        if (grown == nullptr) {
            throw std::bad_alloc();
        }
        static_cast<void>(m_bytes.release());
        m_bytes.reset(grown);
        m_capacity = capacity;
    }
    if (m_capacity < k_much) {
        m_ready = m_capacity;
        return;
    }
    const std::size_t ready = std::min(m_capacity, wanted + std::max(k_much, m_length / 4));
    makePages(m_bytes.get() + m_ready, ready - m_ready);
    m_ready = ready;
}

}  // namespace ko::Orvid::text
