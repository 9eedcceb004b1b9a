// SPDX-License-Identifier: MIT
//
// Tests of Memory, and of Reader when memory fails: this file replaces the global
// operator new of the test program by one that fails at a chosen call. A leak is found by
// AddressSanitizer and by the count of blocks.

#include "text/yajl/Memory.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <new>
#include <vector>

#include "EventLog.h"

#include "support/YajlMessages.h"

namespace {

namespace yajl = orvid_test::yajl;

constexpr std::size_t k_noFailure = std::numeric_limits<std::size_t>::max();

// What operator new does from the moment when `isArmed` is set.
struct Allocations {
    bool isArmed = false;
    bool isLasting = false;             // whether all calls after the failing one fail too
    std::size_t failing = k_noFailure;  // the 0-based call that fails
    std::size_t calls = 0;
    std::size_t blocks = 0;  // not released yet, armed or not
};
Allocations g_allocations;

void* obtain(std::size_t size) noexcept {
    Allocations& state = g_allocations;
    if (state.isArmed) {
        const std::size_t call = state.calls++;
        if (call == state.failing || (state.isLasting && call > state.failing)) {
            return nullptr;
        }
    }
    void* const block = std::malloc(size > 0 ? size : 1);
    state.blocks += block != nullptr ? 1 : 0;
    return block;
}

void giveBack(void* block) noexcept {
    g_allocations.blocks -= block != nullptr ? 1 : 0;
    std::free(block);
}

}  // namespace

void* operator new(std::size_t size) {
    void* const block = obtain(size);
    if (block == nullptr) {
        throw std::bad_alloc();
    }
    return block;
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept { return obtain(size); }
void operator delete(void* block) noexcept { giveBack(block); }
void operator delete(void* block, std::size_t) noexcept { giveBack(block); }
void operator delete(void* block, const std::nothrow_t&) noexcept { giveBack(block); }

namespace yajlTests {
namespace {

using ko::Orvid::yajl::Memory;

void arm(std::size_t failing, bool isLasting) {
    g_allocations.failing = failing;
    g_allocations.isLasting = isLasting;
    g_allocations.calls = 0;
    g_allocations.isArmed = true;
}

// Runs `operation` with the first, the second, ... allocation failing, until it passes with none.
// Returns how many allocations failed.
template<typename Operation>
std::size_t failEach(bool isLasting, Operation operation) {
    for (std::size_t failing = 0;; ++failing) {
        const std::size_t before = g_allocations.blocks;
        bool hasFailed = false;
        arm(failing, isLasting);
        try {
            operation();
        } catch (const std::bad_alloc&) {
            hasFailed = true;
        }
        g_allocations.isArmed = false;
        EXPECT_EQ(g_allocations.blocks, before) << "a leak at allocation " << failing;
        EXPECT_EQ(hasFailed, g_allocations.calls > failing) << failing;
        if (!hasFailed) {
            return failing;
        }
    }
}

// Callbacks that take no memory themselves.
const ReaderCallbacks k_silent = {
    [](void*) { return 1; },
    [](void*, int) { return 1; },
    [](void*, long) { return 1; },
    [](void*, double) { return 1; },
    nullptr,
    [](void*, const unsigned char*, std::size_t) { return 1; },
    [](void*) { return 1; },
    [](void*, const unsigned char*, std::size_t) { return 1; },
    [](void*) { return 1; },
    [](void*) { return 1; },
    [](void*) { return 1; },
};

std::vector<std::string> piecesOf(const std::string& text, std::size_t size) {
    std::vector<std::string> pieces;
    for (std::size_t begin = 0; begin < text.size(); begin += size) {
        pieces.push_back(text.substr(begin, size));
    }
    return pieces;
}

// Deep enough for the state stack to grow, with strings long enough for both buffers to grow, and a
// number that is converted on the heap.
const std::string k_demanding = repeat("{\"k\": [", 500) + "\"" +
                                repeat("a long string \\n with \\u00e4 escapes", 300) + "\", 1." +
                                std::string(500, '0') + ", " + repeat("[", 500) + repeat("]", 500) +
                                repeat("]}", 500);

TEST(Memory, gives_blocks_that_are_aligned_and_keep_their_content) {
    Memory memory;
    for (std::size_t size = 1; size < 300; ++size) {
        void* block = nullptr;
        memory.run([&] { block = Memory::allocate(&memory, size); });
        EXPECT_EQ(reinterpret_cast<std::uintptr_t>(block) % alignof(std::max_align_t), 0U);
        std::memset(block, static_cast<int>(size), size);
        memory.run([&] { block = Memory::reallocate(&memory, block, 3 * size); });
        EXPECT_EQ(std::string(static_cast<char*>(block), size),
                  std::string(size, static_cast<char>(size)));
    }
}

TEST(Memory, allocates_when_nothing_is_reallocated) {
    Memory memory;
    void* block = nullptr;
    memory.run([&] { block = Memory::reallocate(&memory, nullptr, 10); });
    std::memset(block, 1, 10);
    Memory::deallocate(&memory, block);
    Memory::deallocate(&memory, nullptr);
}

TEST(Memory, releases_what_is_left_in_any_order) {
    const std::size_t before = g_allocations.blocks;
    {
        Memory memory;
        void* blocks[5] = {};
        for (void*& block : blocks) {
            memory.run([&] { block = Memory::allocate(&memory, 8); });
        }
        Memory::deallocate(&memory, blocks[4]);
        Memory::deallocate(&memory, blocks[0]);
        Memory::deallocate(&memory, blocks[2]);
        EXPECT_EQ(g_allocations.blocks, before + 2);
    }
    EXPECT_EQ(g_allocations.blocks, before);
}

TEST(Memory, is_usable_after_a_release) {
    const std::size_t before = g_allocations.blocks;
    Memory memory;
    memory.run([&] { Memory::allocate(&memory, 8); });
    memory.release();
    EXPECT_EQ(g_allocations.blocks, before);
    memory.run([&] { Memory::allocate(&memory, 8); });
    EXPECT_EQ(g_allocations.blocks, before + 1);
}

TEST(Memory, throws_for_a_size_that_there_cannot_be) {
    Memory memory;
    for (const std::size_t size :
         {std::numeric_limits<std::size_t>::max(), std::numeric_limits<std::size_t>::max() - 16,
          std::numeric_limits<std::size_t>::max() / 2}) {
        bool hasReturned = false;
        EXPECT_THROW(memory.run([&] {
            Memory::allocate(&memory, size);
            hasReturned = true;
        }),
                     std::bad_alloc);
        EXPECT_FALSE(hasReturned);
    }
}

TEST(Memory, keeps_the_block_that_could_not_grow) {
    Memory memory;
    void* block = nullptr;
    memory.run([&] { block = Memory::allocate(&memory, 4); });
    std::memcpy(block, "abc", 4);
    arm(0, false);
    EXPECT_THROW(memory.run([&] { Memory::reallocate(&memory, block, 1000); }), std::bad_alloc);
    g_allocations.isArmed = false;
    EXPECT_STREQ(static_cast<char*>(block), "abc");
}

TEST(Memory, leaves_the_innermost_of_two_runs) {
    Memory memory;
    bool hasInnerFailed = false;
    bool hasOuterGoneOn = false;
    arm(k_noFailure, false);
    EXPECT_THROW(memory.run([&] {
        g_allocations.failing = g_allocations.calls;
        try {
            memory.run([&] { Memory::allocate(&memory, 8); });
        } catch (const std::bad_alloc&) {
            hasInnerFailed = true;
        }
        Memory::allocate(&memory, 8);
        hasOuterGoneOn = true;
        g_allocations.failing = g_allocations.calls;
        Memory::allocate(&memory, 8);
    }),
                 std::bad_alloc);
    g_allocations.isArmed = false;
    EXPECT_TRUE(hasInnerFailed);
    EXPECT_TRUE(hasOuterGoneOn);
}

TEST(Memory, grows_a_block_in_small_steps_with_few_allocations) {
    const std::size_t before = g_allocations.blocks;
    Memory memory;
    void* block = nullptr;
    arm(k_noFailure, false);
    memory.run([&] {
        for (std::size_t size = 128; size <= 1000000; size += 128) {
            block = Memory::reallocate(&memory, block, size);
        }
    });
    g_allocations.isArmed = false;
    EXPECT_EQ(g_allocations.blocks, before + 1);
    EXPECT_LT(g_allocations.calls, 30U);
    EXPECT_GT(g_allocations.calls, 5U);
}

TEST(MemoryFailure, is_passed_on_by_the_reader_at_every_allocation) {
    for (const std::size_t size : {7U, 255U, 100000U}) {
        const std::vector<std::string> pieces = piecesOf(k_demanding, size);
        for (const bool isLasting : {false, true}) {
            bool isRead = false;
            const std::size_t failures = failEach(isLasting, [&] {
                Reader reader(k_silent, nullptr);
                for (const std::string& piece : pieces) {
                    reader.parse(piece.data(), piece.size());
                }
                isRead = reader.status() == ReadStatus::ok;
            });
            EXPECT_TRUE(isRead);
            EXPECT_GT(failures, 15U);
        }
    }
}

TEST(MemoryFailure, leaves_the_reader_with_its_status_and_returning_error) {
    const std::vector<std::string> pieces = piecesOf(k_demanding, 1000);
    failEach(false, [&] {
        Reader reader(k_silent, nullptr);
        std::uint64_t position = 0;
        for (const std::string& piece : pieces) {
            try {
                reader.parse(piece.data(), piece.size());
            } catch (const std::bad_alloc&) {
                g_allocations.isArmed = false;
                EXPECT_EQ(reader.status(), ReadStatus::insufficientData);
                // A number's copy fails in a callback, which has a place; YAJL's own failure has
                // none.
                const std::uint64_t failed = reader.position();
                EXPECT_GE(failed, position);
                EXPECT_LE(failed, position + piece.size());
                EXPECT_EQ(reader.parse("[]", 2), ReadStatus::error);
                EXPECT_EQ(reader.parse("[]", 2), ReadStatus::error);
                EXPECT_EQ(reader.status(), ReadStatus::error);
                EXPECT_EQ(reader.error(false, "[]", 2).substr(0, 13), "parse error: ");
                EXPECT_EQ(reader.position(), failed);
                throw;
            }
            position = reader.position();
        }
    });
}

TEST(MemoryFailure, is_named_by_the_reader) {
    Reader reader(k_silent, nullptr);
    arm(0, false);
    EXPECT_THROW(reader.parse("[1]", 3), std::bad_alloc);
    g_allocations.isArmed = false;
    EXPECT_EQ(reader.parse("[1]", 3), ReadStatus::error);
    EXPECT_EQ(reader.error(true, "[1]", 3), yajl::k_outOfMemory + "\n");
    EXPECT_EQ(reader.position(), 0U);
}

TEST(MemoryFailure, while_an_error_is_reported_leaves_the_reader_as_it_was) {
    std::size_t reported = 0;
    failEach(false, [&] {
        Reader reader(k_silent, nullptr);
        reader.parse("[1,]", 4);
        try {
            reader.error(true, "[1,]", 4);
        } catch (const std::bad_alloc&) {
            g_allocations.isArmed = false;
            ++reported;
            EXPECT_EQ(reader.error(false, "[1,]", 4), yajl::k_unallowedToken + "\n");
            EXPECT_EQ(reader.status(), ReadStatus::error);
            EXPECT_EQ(reader.parse("[1,]", 4), ReadStatus::error);
            throw;
        }
    });
    EXPECT_EQ(reported, 3U);
}

TEST(MemoryFailure, is_not_brought_nearer_by_telling_an_error_often) {
    Reader reader(k_silent, nullptr);
    reader.parse("[1,]", 4);
    const std::size_t before = g_allocations.blocks;
    for (int i = 0; i < 10; ++i) {
        reader.error(true, "[1,]", 4);
    }
    EXPECT_EQ(g_allocations.blocks, before);
}

}  // namespace
}  // namespace yajlTests
