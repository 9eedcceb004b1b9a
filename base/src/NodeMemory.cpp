// SPDX-License-Identifier: MIT
//
// Slabs and the blocks in them. Every block follows a header that names its slab, so that it can be
// freed without knowing where it came from.

#include <ko/detail/NodeMemory.h>

#include <algorithm>
#include <atomic>
#include <limits>
#include <new>

#include "Poison.h"

namespace ko {

namespace {

constexpr std::size_t k_smallestSlab = 128;  // in bytes
/// A larger block could leave much of a slab unused.
constexpr std::size_t k_largestCut = 256;  // in bytes

thread_local NodeMemory* t_current = nullptr;

constexpr std::size_t roundedUp(std::size_t size) {
    return (size + NodeMemory::k_alignment - 1) / NodeMemory::k_alignment * NodeMemory::k_alignment;
}

}  // namespace

/// What stands before the blocks of a slab.
struct alignas(NodeMemory::k_alignment) NodeMemory::Slab {
    /// While a slab is being cut up, its blocks are too many, so that it stays whatever is freed.
    static constexpr std::size_t k_open = std::numeric_limits<std::size_t>::max() / 2;

    std::atomic<std::size_t> blocks{k_open};

    void drop(std::size_t count) noexcept {
        if (blocks.fetch_sub(count, std::memory_order_acq_rel) == count) {
            ::operator delete(this);
        }
    }
};

/// What stands before a block.
struct alignas(NodeMemory::k_alignment) NodeMemory::Block {
    Slab* slab;  ///< null for a block on its own
};

NodeMemory::Scope::Scope(NodeMemory& memory) noexcept : m_outer(t_current) {
    if (m_outer == nullptr) {
        t_current = &memory;
    }
}

NodeMemory::Scope::~Scope() { t_current = m_outer; }

void* NodeMemory::allocate(std::size_t size) {
    NodeMemory* const current = t_current;
    if (current != nullptr && size <= k_largestCut) {
        return current->cut(sizeof(Block) + roundedUp(size)) + 1;
    }
    return new (::operator new(sizeof(Block) + size)) Block{nullptr} + 1;
}

void NodeMemory::release(void* block, std::size_t size) noexcept {
    if (block == nullptr) {
        return;
    }
    Block* const header = static_cast<Block*>(block) - 1;
    if (header->slab == nullptr) {
        ::operator delete(header);
        return;
    }
    Slab* const slab = header->slab;
    poison(header, sizeof(Block) + roundedUp(size));
    slab->drop(1);
}

NodeMemory::Block* NodeMemory::cut(std::size_t size) {
    if (static_cast<std::size_t>(m_end - m_next) < size) {
        open(size);
    }
    unpoison(m_next, size);
    Block* const block = new (m_next) Block{m_slab};
    m_next += size;
    ++m_cuts;
    return block;
}

/// Each slab is as large as all before it, so that at most half of them is left over: a small tree
/// wastes little. Throws std::bad_alloc, with everything as it was.
void NodeMemory::open(std::size_t least) {
    const std::size_t wanted = std::clamp(m_total == 0 ? m_expected : m_total,
                                          std::size_t(k_smallestSlab), std::size_t(k_largestSlab));
    const std::size_t size = std::max(wanted, sizeof(Slab) + least);
    char* const bytes = static_cast<char*>(::operator new(size));
    close();
    m_slab = new (bytes) Slab;
    m_next = bytes + sizeof(Slab);
    m_end = bytes + size;
    m_cuts = 0;
    m_total += size;
    poison(m_next, size - sizeof(Slab));
}

void NodeMemory::close() noexcept {
    if (m_slab != nullptr) {
        m_slab->drop(Slab::k_open - m_cuts);
    }
}

}  // namespace ko
