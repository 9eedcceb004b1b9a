// SPDX-License-Identifier: MIT
//
// Slabs and the blocks in them. A block can be freed without knowing where it came from, since its
// address says: k_header bytes after a multiple of k_grain it follows a header, which names the
// slab or none; on a multiple of k_grain it lies in a page, whose head, at the multiple of k_page
// below, names the slab. So most blocks of a slab need no header. Only what lies before its first
// page, which is all of a small slab, is given out with headers. Pages of cells are taken from the
// end of a slab. A cell lies k_header bytes after a multiple of k_grain, where `new` gives nothing
// of that size.

#include <ko/detail/SlabArena.h>

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <new>

#include "Poison.h"

namespace ko {

namespace {

constexpr std::size_t k_smallestSlab = 128;  // in bytes

// In every call of allocate() and release(), so it must not cost a call itself.
[[gnu::tls_model("initial-exec")]] thread_local SlabArena* t_current = nullptr;
[[gnu::tls_model("initial-exec")]] thread_local SlabArena::Freeing* t_freeing = nullptr;

constexpr std::size_t k_alignmentOfNew = __STDCPP_DEFAULT_NEW_ALIGNMENT__;
constexpr std::size_t k_alignmentOfSlabs = 16;

/// How far it is up to the next multiple of `step`, a power of two.
std::size_t distanceTo(std::size_t step, const char* from) noexcept {
    return (step - reinterpret_cast<std::uintptr_t>(from) % step) % step;
}

void* obtain(std::size_t size) {
    if constexpr (k_alignmentOfNew >= k_alignmentOfSlabs) {
        return ::operator new(size);
    } else {
        return ::operator new (size, std::align_val_t{k_alignmentOfSlabs});
    }
}

void giveBack(void* bytes) noexcept {
    if constexpr (k_alignmentOfNew >= k_alignmentOfSlabs) {
        ::operator delete(bytes);
    } else {
        ::operator delete (bytes, std::align_val_t{k_alignmentOfSlabs});
    }
}

/// The heap of glibc gives what is free at its end back to the system, unless it has once freed a
/// block of half that size; with each tree of the same size it would all be asked for again, page
/// by page. So it is shown such a block, which is never touched.
void showSize(std::size_t size) noexcept {
    void* volatile block = std::malloc(size);  // volatile, since nothing else needs it
    std::free(block);
}

}  // namespace

/// What stands before the blocks of a slab.
struct alignas(16) SlabArena::Slab {
    /// While a slab is being cut up, its blocks are too many, so that it stays whatever is freed.
    static constexpr std::size_t k_open = std::numeric_limits<std::size_t>::max() / 2;

    std::atomic<std::size_t> blocks{k_open};

    void drop(std::size_t count) noexcept {
        if (blocks.fetch_sub(count, std::memory_order_acq_rel) == count) {
            giveBack(this);
        }
    }
};

/// What stands before a block that has a header.
struct alignas(8) SlabArena::Header {
    Slab* slab;  ///< null for a block on its own

    /// A block on its own, for the tree of that arena, or for none. Kept out of line: inlined, its
    /// calls would make the usual path save registers.
    [[gnu::noinline]] static void* allocate(std::size_t size, SlabArena* arena) {
        char* const bytes = static_cast<char*>(obtain(k_header + size));
        new (bytes) Header{nullptr};
        if (arena != nullptr) {
            arena->noteOther(size);
        }
        return bytes + k_header;
    }
};

SlabArena::~SlabArena() {
    closeCells();
    close();
}

SlabArena::Scope::Scope(SlabArena& memory) noexcept : m_outer(t_current) {
    if (m_outer == nullptr) {
        t_current = &memory;
    }
}

SlabArena::Scope::~Scope() { t_current = m_outer; }

SlabArena::Freeing::Freeing() noexcept : m_outer(t_freeing == nullptr ? this : t_freeing) {
    t_freeing = m_outer;
}

SlabArena::Freeing::~Freeing() {
    if (m_outer == this) {
        t_freeing = nullptr;
        flush();
    }
}

void SlabArena::Freeing::drop(Slab* slab, std::size_t blocks) noexcept {
    flush();
    m_slab = slab;
    m_count = blocks;
}

void SlabArena::Freeing::flush() noexcept {
    if (m_slab != nullptr) {
        m_slab->drop(m_count);
    }
    m_slab = nullptr;
    m_count = 0;
}

void* SlabArena::allocate(std::size_t size) {
    SlabArena* const current = t_current;
    return current != nullptr && size <= k_largestCut ? current->cut(size)
                                                      : Header::allocate(size, current);
}

void* SlabArena::allocateMarked(std::size_t size) {
    void* const block = allocate(size);
    mark(block);
    return block;
}

void SlabArena::release(void* block, std::size_t size) noexcept {
    if (block == nullptr) {
        return;
    }
    char* bytes = static_cast<char*>(block);
    Slab* slab = nullptr;
    if (addressOf(block) % k_grain == 0) {
        slab = slabOf(block);
    } else {
        bytes -= k_header;
        slab = reinterpret_cast<Header*>(bytes)->slab;
        if (slab == nullptr) {
            return giveBack(bytes);
        }
    }
    poison(block, size);
    drop(slab);
}

/// One block of the slab is free.
inline void SlabArena::drop(Slab* slab) noexcept {
    if (Freeing* const freeing = t_freeing) {
        freeing->count(slab);
    } else {
        slab->drop(1);
    }
}

SlabArena* SlabArena::current() noexcept { return t_current; }

void* SlabArena::cutCell() noexcept {
    if (m_cell == m_cellEnd && !openCells()) {
        return nullptr;
    }
    char* const cell = m_cell;
    m_cell += k_cell;
    unpoison(cell, k_cell);
    return cell;
}

void SlabArena::releaseCell(void* cell) noexcept {
    poison(cell, k_cell);
    drop(slabOf(cell));
}

/// Takes the last page of the slab, of which each cell is a block that is given out.
bool SlabArena::openCells() noexcept {
    if (m_slabEnd == m_end) {
        return false;
    }
    char* const page = m_slabEnd - 1 - addressOf(m_slabEnd - 1) % k_page;
    const auto room = static_cast<std::size_t>(m_slabEnd - page);
    const std::size_t count = (room - std::min(room, k_grain + k_header)) / k_cell;
    m_slabEnd = page;
    if (count == 0) {
        return false;
    }
    unpoison(page, sizeof(Page));
    new (page) Page{m_slab};
    m_cuts += count;
    m_cell = page + k_grain + k_header;
    m_cellEnd = m_cell + count * k_cell;
    return true;
}

/// Those that are left over go.
void SlabArena::closeCells() noexcept {
    const auto left = static_cast<std::size_t>(m_cellEnd - m_cell) / k_cell;
    if (left != 0) {
        slabOf(m_cell)->drop(left);
    }
}

/// How much of the present part a block takes, with its header.
inline std::size_t SlabArena::strideOf(std::size_t size) const noexcept {
    return roundedUp(m_header + size);
}

void* SlabArena::cutAnywhere(std::size_t size) {
    if (static_cast<std::size_t>(m_end - m_next) < strideOf(size)) {
        advance(size);
    }
    char* const begin = m_next;
    unpoison(begin, m_header + size);
    m_next += strideOf(size);
    ++m_cuts;
    if (m_header != 0) {
        new (begin) Header{m_slab};
    }
    return begin + m_header;
}

/// Finds room for the block. Throws std::bad_alloc, with everything as it was.
void SlabArena::advance(std::size_t size) {
    if (!turnPage() || static_cast<std::size_t>(m_end - m_next) < strideOf(size)) {
        open(size);
    }
    if (static_cast<std::size_t>(m_end - m_next) < strideOf(size)) {
        turnPage();
    }
}

/// Goes on with the next page of the slab. Returns whether there is one.
bool SlabArena::turnPage() noexcept {
    if (m_end == m_slabEnd) {
        return false;
    }
    unpoison(m_end, sizeof(Page));
    new (m_end) Page{m_slab};
    m_next = m_end + k_grain;
    const auto left = static_cast<std::size_t>(m_slabEnd - m_end);
    m_end += std::min(k_page, left);
    m_header = 0;
    return true;
}

/// How large the next slab is to be. At first each is as large as all before it, so that at most
/// half of them is left over: a small tree wastes little. Further on they grow with the tree, of
/// which a block that stays then keeps a small part.
std::size_t SlabArena::nextSize() const noexcept {
    if (m_total == 0) {
        return std::clamp(m_expected, k_smallestSlab, k_largestFirst);
    }
    if (m_total <= k_usualSlab) {
        return std::max(m_total, k_smallestSlab);
    }
    return std::clamp(m_total / k_part, k_usualSlab, k_largestSlab);
}

/// Counts a block that is too large for a slab and belongs to the same tree.
void SlabArena::noteOther(std::size_t size) noexcept {
    m_others += size;
    if (m_total + m_others >= m_toShow) {
        show();
    }
}

/// Shows the heap twice the sum: half of it for the texts of strings, which are not counted here.
/// The next time is when the sum has doubled.
void SlabArena::show() noexcept {
    const std::size_t sum = m_total + m_others;
    showSize(std::min(2 * sum, k_largestShown));
    m_toShow = 2 * sum;
}

/// Throws std::bad_alloc, with everything as it was.
void SlabArena::open(std::size_t least) {
    const std::size_t size = roundedUp(std::max(nextSize(), sizeof(Slab) + k_header + least));
    char* const bytes = static_cast<char*>(obtain(size));
    close();
    m_slab = new (bytes) Slab;
    m_next = bytes + sizeof(Slab);
    m_slabEnd = bytes + size;
    // So any block fits either before the first page or into it.
    const bool hasPages = size >= 2 * k_page;
    m_end = hasPages ? m_next + distanceTo(k_page, m_next) : m_slabEnd;
    m_header = k_header;
    m_cuts = 0;
    poison(m_next, size - sizeof(Slab));
    m_total += size;
    if (m_total + m_others >= m_toShow) {
        show();
    }
}

void SlabArena::close() noexcept {
    if (m_slab != nullptr) {
        m_slab->drop(Slab::k_open - m_cuts);
    }
}

}  // namespace ko
