// SPDX-License-Identifier: MIT
//
// The program's own operator new and delete. The forms that are not here end in one of these.

#include "support/CountedMemory.h"

#include <malloc.h>

#include <algorithm>
#include <cstdlib>
#include <limits>
#include <new>

namespace {

constexpr std::size_t k_never = std::numeric_limits<std::size_t>::max();

std::size_t g_untilRefusal = k_never;
orvid_test::Refusal g_refusal = orvid_test::Refusal::once;
bool g_hasRefused = false;
std::size_t g_blocks = 0;
std::size_t g_bytes = 0;
std::size_t g_peak = 0;
std::size_t g_requests = 0;

bool isRefused() {
    if (g_untilRefusal == k_never) {
        return false;
    }
    if (g_untilRefusal > 1) {
        --g_untilRefusal;
        return false;
    }
    g_hasRefused = true;
    if (g_refusal == orvid_test::Refusal::once) {
        g_untilRefusal = k_never;
    }
    return true;
}

void* allocate(std::size_t size) {
    ++g_requests;
    void* const block = isRefused() ? nullptr : std::malloc(size != 0 ? size : 1);
    if (block != nullptr) {
        ++g_blocks;
        g_bytes += malloc_usable_size(block);
        g_peak = std::max(g_peak, g_bytes);
    }
    return block;
}

void release(void* block) {
    if (block != nullptr) {
        --g_blocks;
        g_bytes -= malloc_usable_size(block);
        std::free(block);
    }
}

}  // namespace

namespace orvid_test {

void refuseAllocation(std::size_t number, Refusal refusal) {
    g_untilRefusal = number;
    g_refusal = refusal;
    g_hasRefused = false;
}

bool refuseNone() {
    g_untilRefusal = k_never;
    return g_hasRefused;
}

std::size_t liveBlocks() { return g_blocks; }

std::size_t liveBytes() { return g_bytes; }

std::size_t allocationCount() { return g_requests; }

Peak::Peak() : m_before(g_bytes) { g_peak = g_bytes; }

std::size_t Peak::bytes() const { return g_peak - m_before; }

}  // namespace orvid_test

void* operator new(std::size_t size) {
    if (void* const block = allocate(size)) {
        return block;
    }
    throw std::bad_alloc();
}

void* operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
    return allocate(size);
}

void operator delete(void* block) noexcept { release(block); }

void operator delete(void* block, std::size_t /*size*/) noexcept { release(block); }

void operator delete(void* block, const std::nothrow_t& /*tag*/) noexcept { release(block); }
