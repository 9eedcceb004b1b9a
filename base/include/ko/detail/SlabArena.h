// SPDX-License-Identifier: MIT
//
// ko::SlabArena, memory for the many small objects that a tree is made of. What is made together,
// when a tree is read or copied, is cut from slabs: neighbours in the tree are neighbours in
// memory, and cost little to make and to free. bench/performance.md says what it gives.

#pragma once

#include <ko/export.h>

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <new>

namespace ko {

/// Slabs for the blocks of one job. A slab is freed with the last of its blocks, wherever and in
/// whatever thread that happens, also long after this object has gone. A block that stays alone
/// keeps its slab: of k_usualSlab bytes at most, or, where there was much more, one part in k_part
/// of what was there, up to k_largestSlab. Used by one thread at a time.
class KO_API SlabArena {
    struct Slab;
    /// What stands at the beginning of a page.
    struct Page {
        Slab* slab;
        std::atomic<bool> isMarked{false};
    };

    static constexpr std::size_t k_grain = 16;
    static constexpr std::size_t k_page = 2048;  ///< in bytes

public:
    static constexpr std::size_t k_usualSlab = 16384;    ///< in bytes
    static constexpr std::size_t k_largestSlab = 65536;  ///< in bytes
    /// A larger slab is one part in so many of all before it.
    static constexpr std::size_t k_part = 8;

    /// `expected` is what the blocks may come to, in bytes, for a first slab of that size, or of
    /// k_largestFirst.
    explicit SlabArena(std::size_t expected = 0) noexcept : m_expected(expected) {}
    ~SlabArena();
    SlabArena(const SlabArena&) = delete;
    SlabArena& operator=(const SlabArena&) = delete;

    /// Sets the expected total in bytes. No effect after the first block.
    void expect(std::size_t expected) noexcept { m_expected = expected; }

    /// While one lives, what its thread allocates is cut from the slabs. May be nested; the
    /// outermost one counts, so that a job is one though it has parts.
    class KO_API Scope {
    public:
        explicit Scope(SlabArena& memory) noexcept;
        ~Scope();
        Scope(const Scope&) = delete;
        Scope& operator=(const Scope&) = delete;

    private:
        SlabArena* const m_outer;
    };

    /// A page of small blocks of which none is marked, or no page. An object that marks its block
    /// (see mark()) before it owns anything owns nothing here: it can be freed without a look.
    class QuietPage {
    public:
        QuietPage() = default;
        /// The one in which the block, which may be null, lies; no page where there is none.
        static QuietPage of(const void* block) noexcept;

        explicit operator bool() const noexcept { return m_address != k_none; }
        /// Whether the block, which may be null, lies in it.
        bool has(const void* block) const noexcept {
            return (addressOf(block) & k_pageBits) == m_address;
        }

    private:
        /// The bits that the address of a small block shares with that of its page.
        static constexpr std::uintptr_t k_pageBits = ~std::uintptr_t{k_page - 1} | (k_grain - 1);
        static constexpr std::uintptr_t k_none = 1;  ///< which no page has as its address

        std::uintptr_t m_address = k_none;
    };

    /// While one lives, what its thread frees is counted slab by slab, so that a whole tree is
    /// freed at little cost, though the slabs may go only with this. May be nested; the outermost
    /// one counts.
    class KO_API Freeing {
    public:
        Freeing() noexcept;
        ~Freeing();
        Freeing(const Freeing&) = delete;
        Freeing& operator=(const Freeing&) = delete;

        /// As SlabArena::release(), for a loop; null is no block.
        void release(void* block, std::size_t size) noexcept;
        /// As SlabArena::releaseCell().
        void releaseCell(void* cell) noexcept;
        /// `block` and others of its page, so many in all.
        void releaseInPage(const void* block, std::size_t count) noexcept;

    private:
        friend class SlabArena;

        void count(SlabArena::Slab* slab, std::size_t blocks = 1) noexcept;
        /// Blocks of a slab other than the last one.
        void drop(SlabArena::Slab* slab, std::size_t blocks) noexcept;
        void flush() noexcept;

        SlabArena::Slab* m_slab = nullptr;  ///< of the blocks that were freed last
        std::size_t m_count = 0;            ///< of these
        Freeing* m_outer;                   ///< the outermost one
    };

    /// A block of `size` bytes, aligned for everything up to k_alignment: from the slabs of the
    /// outermost Scope of this thread, or else on its own. Throws std::bad_alloc.
    static void* allocate(std::size_t size);
    /// The same, and marks it.
    static void* allocateMarked(std::size_t size);
    /// Frees a block that allocate() gave out for that size, in any thread. Null is no block.
    static void release(void* block, std::size_t size) noexcept;

    /// What allocate() cuts from in this thread; null outside of any Scope.
    static SlabArena* current() noexcept;
    /// As allocate() in a Scope of this memory, for a loop. At most k_largestCut bytes.
    void* cut(std::size_t size);

    /// Notes that the object in the block may own something. In any thread.
    static void mark(const void* block) noexcept {
        if (addressOf(block) % k_grain == 0) {
            pageOf(block)->isMarked.store(true, std::memory_order_relaxed);
        }
    }

    // Cells, for objects that may come from plain `new` as well: the address says which it was.

    /// A block of k_cell bytes; null where none is left just now, so that it must be `new`.
    void* cutCell() noexcept;
    /// Whether an object of k_cell bytes lies in a cell.
    static bool isCell(const void* object) noexcept { return addressOf(object) % k_grain != 0; }
    static void releaseCell(void* cell) noexcept;

    static constexpr std::size_t k_alignment = 8;
    static constexpr std::size_t k_cell = 32;  ///< in bytes
    /// Where `new` gives no address that a cell may have.
    static constexpr bool k_hasCells = __STDCPP_DEFAULT_NEW_ALIGNMENT__ >= 16;
    /// A larger block could leave much of a slab unused.
    static constexpr std::size_t k_largestCut = 256;  ///< in bytes

private:
    struct Header;

    static constexpr std::size_t k_largestFirst = 4096;                      ///< slab, in bytes
    static constexpr std::size_t k_smallestShown = std::size_t{128} * 1024;  ///< in bytes
    /// glibc learns nothing from a larger block.
    static constexpr std::size_t k_largestShown =
        sizeof(void*) >= 8 ? std::size_t{31} << 20U : std::size_t{480} << 10U;  ///< in bytes

    static constexpr std::size_t k_header = 8;  ///< in bytes
    /// Whether a sanitizer learns which bytes of a slab may be used.
#if defined(__SANITIZE_ADDRESS__)
    static constexpr bool k_isWatched = true;
#elif defined(__has_feature)
    static constexpr bool k_isWatched = __has_feature(address_sanitizer);
#else
    static constexpr bool k_isWatched = false;
#endif

    static std::uintptr_t addressOf(const void* where) noexcept {
        return reinterpret_cast<std::uintptr_t>(where);
    }
    static constexpr std::size_t roundedUp(std::size_t size) noexcept {
        return (size + k_grain - 1) / k_grain * k_grain;
    }
    /// Of a block without a header.
    static Page* pageOf(const void* block) noexcept {
        const char* const page = static_cast<const char*>(block) - addressOf(block) % k_page;
        return reinterpret_cast<Page*>(const_cast<char*>(page));
    }
    static Slab* slabOf(const void* block) noexcept { return pageOf(block)->slab; }
    static void drop(Slab* slab) noexcept;

    std::size_t strideOf(std::size_t size) const noexcept;
    void* cutAnywhere(std::size_t size);
    bool openCells() noexcept;
    void closeCells() noexcept;
    void advance(std::size_t size);
    bool turnPage() noexcept;
    std::size_t nextSize() const noexcept;
    void noteOther(std::size_t size) noexcept;
    void show() noexcept;
    void open(std::size_t least);
    void close() noexcept;

    std::size_t m_expected;
    std::size_t m_total = 0;                 ///< bytes of all slabs so far
    std::size_t m_others = 0;                ///< bytes of the larger blocks beside the slabs
    std::size_t m_toShow = k_smallestShown;  ///< the sum that the heap learns of next
    Slab* m_slab = nullptr;                  ///< the one that is being cut up
    char* m_next = nullptr;     ///< what is left of the part of it that is being cut up
    char* m_end = nullptr;      ///< of that part
    char* m_slabEnd = nullptr;  ///< of the slab
    std::size_t m_header = 0;   ///< bytes before each block in that part
    std::size_t m_cuts = 0;     ///< how many blocks the slab has given out
    char* m_cell = nullptr;     ///< the next one
    char* m_cellEnd = nullptr;  ///< of the page of cells
};

inline SlabArena::QuietPage SlabArena::QuietPage::of(const void* block) noexcept {
    QuietPage result;
    if (!k_isWatched && block != nullptr && addressOf(block) % k_grain == 0) {
        const Page* const page = pageOf(block);
        if (!page->isMarked.load(std::memory_order_relaxed)) {
            result.m_address = addressOf(page);
        }
    }
    return result;
}

inline void SlabArena::Freeing::count(Slab* slab, std::size_t blocks) noexcept {
    if (m_slab == slab) {
        m_count += blocks;
    } else {
        drop(slab, blocks);
    }
}

inline void SlabArena::Freeing::releaseInPage(const void* block, std::size_t count) noexcept {
    m_outer->count(slabOf(block), count);
}

inline void SlabArena::Freeing::release(void* block, std::size_t size) noexcept {
    if (k_isWatched || block == nullptr || addressOf(block) % k_grain != 0) {
        SlabArena::release(block, size);
    } else {
        m_outer->count(slabOf(block));
    }
}

inline void SlabArena::Freeing::releaseCell(void* cell) noexcept {
    if (k_isWatched) {
        SlabArena::releaseCell(cell);
    } else {
        m_outer->count(slabOf(cell));
    }
}

inline void* SlabArena::cut(std::size_t size) {
    const std::size_t stride = roundedUp(size);
    if (k_isWatched || m_header != 0 || static_cast<std::size_t>(m_end - m_next) < stride) {
        return cutAnywhere(size);
    }
    char* const block = m_next;
    m_next += stride;
    ++m_cuts;
    return block;
}

/// For the nodes of a std::list. All are equal.
template<class T>
struct NodeAllocator {
    using value_type = T;

    static_assert(alignof(T) <= SlabArena::k_alignment);

    NodeAllocator() = default;
    template<class Other>
    NodeAllocator(const NodeAllocator<Other>& /*other*/) noexcept {}

    T* allocate(std::size_t count) {
        return static_cast<T*>(SlabArena::allocate(count * sizeof(T)));
    }
    void deallocate(T* block, std::size_t count) noexcept {
        SlabArena::release(block, count * sizeof(T));
    }

    friend bool operator==(const NodeAllocator& /*a*/, const NodeAllocator& /*b*/) { return true; }
    friend bool operator!=(const NodeAllocator& /*a*/, const NodeAllocator& /*b*/) { return false; }
};

/// A base of what `new` makes in node memory, in a page that is marked.
struct InSlabArena {
    // NOLINTNEXTLINE(cert-dcl54-cpp,misc-new-delete-overloads): the delete that knows the size fits
    static void* operator new(std::size_t size) { return SlabArena::allocateMarked(size); }
    static void* operator new(std::size_t size, const std::nothrow_t& /*none*/) noexcept {
        try {
            return SlabArena::allocateMarked(size);
        } catch (const std::bad_alloc&) {
            return nullptr;
        }
    }
    static void* operator new(std::size_t /*size*/, void* where) noexcept { return where; }
    static void operator delete(void* block, std::size_t size) noexcept {
        SlabArena::release(block, size);
    }
    static void operator delete(void* /*block*/, void* /*where*/) noexcept {}
};

}  // namespace ko
