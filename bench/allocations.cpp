// SPDX-License-Identifier: MIT
//
// The program's own operator new. The forms that are not here end in one of these.

#include "allocations.h"

#include <cstdlib>
#include <new>

namespace {

std::size_t g_count = 0;

}  // namespace

namespace orvid_bench {

std::size_t allocationCount() { return g_count; }

}  // namespace orvid_bench

void* operator new(std::size_t size) {
    ++g_count;
    if (void* const block = std::malloc(size != 0 ? size : 1)) {
        return block;
    }
    throw std::bad_alloc();
}

void operator delete(void* block) noexcept { std::free(block); }

void operator delete(void* block, std::size_t /*size*/) noexcept { std::free(block); }
