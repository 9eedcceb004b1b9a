// SPDX-License-Identifier: MIT
//
// Memory: a list of blocks from ::operator new, each after a header with its links and its
// capacity.

#include "text/yajl/Memory.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace ko::Orvid::yajl {

// Its size is a multiple of its alignment, so what follows it is aligned for everything.
struct alignas(std::max_align_t) Memory::Block {
    Block* previous;
    Block* next;
    std::size_t capacity;

    static Block* of(void* pointer) { return static_cast<Block*>(pointer) - 1; }
};

void Memory::release() noexcept {
    while (m_first != nullptr) {
        ::operator delete(std::exchange(m_first, m_first->next));
    }
}

void* Memory::allocate(void* memory, std::size_t size) {
    Memory& self = *static_cast<Memory*>(memory);
    constexpr std::size_t k_maxSize = PTRDIFF_MAX - sizeof(Block);
    void* const raw =
        size <= k_maxSize ? ::operator new(sizeof(Block) + size, std::nothrow) : nullptr;
    if (raw == nullptr) {
        std::longjmp(*self.m_exit, 1);  // NOLINT(cert-err52-cpp): the header says why
    }
    Block* const block = new (raw) Block{nullptr, self.m_first, size};
    if (block->next != nullptr) {
        block->next->previous = block;
    }
    self.m_first = block;
    return block + 1;
}

void* Memory::reallocate(void* memory, void* pointer, std::size_t size) {
    if (pointer == nullptr) {
        return allocate(memory, size);
    }
    const std::size_t capacity = Block::of(pointer)->capacity;
    if (size <= capacity) {
        return pointer;
    }
    // No capacity is above PTRDIFF_MAX, so the sum cannot overflow.
    void* const grown = allocate(memory, std::max(size, capacity + capacity / 2));
    std::memcpy(grown, pointer, capacity);
    deallocate(memory, pointer);
    return grown;
}

void Memory::deallocate(void* memory, void* pointer) {
    if (pointer == nullptr) {
        return;
    }
    Block* const block = Block::of(pointer);
    Block*& link =
        block->previous != nullptr ? block->previous->next : static_cast<Memory*>(memory)->m_first;
    link = block->next;
    if (block->next != nullptr) {
        block->next->previous = block->previous;
    }
    ::operator delete(block);
}

}  // namespace ko::Orvid::yajl
