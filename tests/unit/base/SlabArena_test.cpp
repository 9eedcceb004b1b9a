// SPDX-License-Identifier: MIT
//
// Blocks for the nodes of trees. What they cost, and when their slabs go, is in
// tests/allocation/slab_arena_test.cpp.

#include <ko/detail/SlabArena.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <list>
#include <memory>
#include <new>
#include <random>
#include <utility>
#include <vector>

namespace {

using ko::SlabArena;

struct Block {
    unsigned char* bytes;
    std::size_t size;
    unsigned char fill;
};

Block makeBlock(std::size_t size, unsigned char fill) {
    auto* const bytes = static_cast<unsigned char*>(SlabArena::allocate(size));
    std::memset(bytes, fill, size);
    return {bytes, size, fill};
}

bool isIntact(const Block& block) {
    return std::all_of(block.bytes, block.bytes + block.size,
                       [&](unsigned char byte) { return byte == block.fill; });
}

/// Of all sizes around those of nodes, and some that are larger than a slab.
std::vector<Block> makeBlocks() {
    std::vector<Block> blocks;
    for (std::size_t i = 0; i < 500; ++i) {
        const std::size_t size = i % 50 == 49 ? 5000 : 1 + i % 300;
        blocks.push_back(makeBlock(size, static_cast<unsigned char>(i)));
    }
    return blocks;
}

void expectBlocksOfTheirOwn(std::vector<Block> blocks) {
    for (const Block& block : blocks) {
        EXPECT_TRUE(isIntact(block));
        EXPECT_EQ(reinterpret_cast<std::uintptr_t>(block.bytes) % SlabArena::k_alignment, 0u);
    }
    std::shuffle(blocks.begin(), blocks.end(), std::mt19937(7));
    while (!blocks.empty()) {
        SlabArena::release(blocks.back().bytes, blocks.back().size);
        blocks.pop_back();
        EXPECT_TRUE(std::all_of(blocks.begin(), blocks.end(), isIntact));
    }
}

TEST(SlabArena, gives_blocks_of_their_own_without_a_scope) { expectBlocksOfTheirOwn(makeBlocks()); }

TEST(SlabArena, gives_blocks_that_outlive_scope_and_slabs) {
    std::vector<Block> blocks;
    {
        SlabArena memory;
        const SlabArena::Scope scope(memory);
        blocks = makeBlocks();
    }
    expectBlocksOfTheirOwn(blocks);
}

TEST(SlabArena, takes_any_block_for_the_first) {
    for (std::size_t size = 1; size <= 600; ++size) {
        SlabArena memory(size);
        const SlabArena::Scope scope(memory);
        expectBlocksOfTheirOwn({makeBlock(size, 1), makeBlock(8, 2), makeBlock(size, 3)});
    }
}

TEST(SlabArena, goes_on_where_an_earlier_scope_ended) {
    SlabArena memory;
    std::vector<Block> blocks;
    for (std::size_t i = 0; i < 10; ++i) {
        const SlabArena::Scope scope(memory);
        blocks.push_back(makeBlock(40, static_cast<unsigned char>(i)));
    }
    expectBlocksOfTheirOwn(blocks);
}

TEST(SlabArena, may_be_left_unused) {
    SlabArena memory;
    const SlabArena::Scope scope(memory);
    SlabArena::release(nullptr, 8);
}

TEST(SlabArena, gives_cells_of_their_own_beside_blocks) {
    std::vector<unsigned char*> cells;
    std::vector<Block> blocks;
    {
        SlabArena memory(4096);
        for (std::size_t i = 0; i < 1000; ++i) {
            blocks.push_back(
                {static_cast<unsigned char*>(memory.cut(80)), 80, static_cast<unsigned char>(i)});
            std::memset(blocks.back().bytes, blocks.back().fill, 80);
            if (void* const cell = memory.cutCell()) {
                std::memset(cell, 1, SlabArena::k_cell);
                cells.push_back(static_cast<unsigned char*>(cell));
            }
        }
    }
    EXPECT_GT(cells.size(), 500u);
    for (unsigned char* const cell : cells) {
        EXPECT_TRUE(SlabArena::isCell(cell));
        EXPECT_TRUE(isIntact({cell, SlabArena::k_cell, 1}));
        SlabArena::releaseCell(cell);
    }
    expectBlocksOfTheirOwn(blocks);
}

TEST(SlabArena, has_no_cells_before_there_is_a_slab) {
    SlabArena memory;
    EXPECT_EQ(memory.cutCell(), nullptr);
}

TEST(SlabArena, knows_the_memory_of_the_outermost_scope) {
    EXPECT_EQ(SlabArena::current(), nullptr);
    SlabArena outer;
    SlabArena inner;
    const SlabArena::Scope scope(outer);
    const SlabArena::Scope within(inner);
    EXPECT_EQ(SlabArena::current(), &outer);
}

struct Base : ko::InSlabArena {
    virtual ~Base() = default;
    int number = 1;
};

struct Derived : Base {
    double numbers[8] = {2};
};

TEST(SlabArena, serves_new_and_delete_through_a_base) {
    SlabArena memory;
    const SlabArena::Scope scope(memory);
    const std::unique_ptr<Base> derived = std::make_unique<Derived>();
    EXPECT_EQ(derived->number, 1);
    alignas(Base) unsigned char where[sizeof(Base)];
    Base* const placed = new (where) Base;
    EXPECT_EQ(placed, static_cast<void*>(where));
    placed->~Base();
}

/// Without the address sanitizer, which must learn of each block that is freed, and so without
/// quiet pages.
constexpr bool k_hasQuietPages =
#if defined(__SANITIZE_ADDRESS__)
    false;
#elif defined(__has_feature)
    !__has_feature(address_sanitizer);
#else
    true;
#endif

struct Page {
    SlabArena::QuietPage page;
    std::vector<void*> blocks;
};

/// The blocks that lie in quiet pages, page by page, and those that lie in none.
std::pair<std::vector<Page>, std::vector<void*>> byPage(const std::vector<void*>& blocks) {
    std::pair<std::vector<Page>, std::vector<void*>> result;
    for (void* const block : blocks) {
        const auto page = SlabArena::QuietPage::of(block);
        if (!page) {
            result.second.push_back(block);
        } else if (result.first.empty() || !result.first.back().page.has(block)) {
            result.first.push_back({page, {block}});
        } else {
            result.first.back().blocks.push_back(block);
        }
    }
    return result;
}

std::vector<void*> cutBlocks(std::size_t count) {
    SlabArena memory(4096);
    std::vector<void*> blocks(count);
    std::generate(blocks.begin(), blocks.end(), [&] { return memory.cut(32); });
    return blocks;
}

TEST(SlabArena, frees_the_blocks_of_quiet_pages_together) {
    const auto [pages, others] = byPage(cutBlocks(5000));
    EXPECT_EQ(pages.size() > 50, k_hasQuietPages);
    SlabArena::Freeing freeing;
    for (const Page& each : pages) {
        EXPECT_GT(each.blocks.size(), 1u);
        freeing.releaseInPage(each.blocks.back(), each.blocks.size());
    }
    for (void* const block : others) {
        freeing.release(block, 32);
    }
}

TEST(SlabArena, a_mark_concerns_the_page_of_its_block) {
    const std::vector<void*> blocks = cutBlocks(5000);
    const std::vector<Page> quiet = byPage(blocks).first;
    if (k_hasQuietPages) {
        const std::vector<void*>& marked = quiet.at(1).blocks;
        SlabArena::mark(marked.back());
        for (void* const block : marked) {
            EXPECT_FALSE(SlabArena::QuietPage::of(block));
        }
        EXPECT_EQ(byPage(blocks).first.size(), quiet.size() - 1);
    }
    for (void* const block : blocks) {
        SlabArena::release(block, 32);
    }
}

TEST(SlabArena, what_new_makes_lies_in_no_quiet_page) {
    SlabArena memory(4096);
    const SlabArena::Scope scope(memory);
    for (int i = 0; i != 500; ++i) {
        const auto made = std::make_unique<Base>();
        EXPECT_FALSE(SlabArena::QuietPage::of(made.get()));
        const std::unique_ptr<Base> without(new (std::nothrow) Base);
        EXPECT_FALSE(SlabArena::QuietPage::of(without.get()));
    }
}

TEST(SlabArena, a_block_of_its_own_and_none_lie_in_no_quiet_page) {
    const Block block = makeBlock(32, 1);
    SlabArena::mark(block.bytes);
    EXPECT_TRUE(isIntact(block));
    EXPECT_FALSE(SlabArena::QuietPage::of(block.bytes));
    EXPECT_FALSE(SlabArena::QuietPage::of(nullptr));
    EXPECT_FALSE(SlabArena::QuietPage().has(nullptr));
    SlabArena::release(block.bytes, block.size);
}

TEST(SlabArena, serves_lists_that_exchange_nodes) {
    using List = std::list<int, ko::NodeAllocator<int>>;
    List read;
    {
        SlabArena memory;
        const SlabArena::Scope scope(memory);
        read = {1, 2, 3};
    }
    List made{4, 5};
    made.splice(made.begin(), read, std::next(read.begin()));
    EXPECT_EQ(made, (List{2, 4, 5}));
    EXPECT_EQ(read, (List{1, 3}));
}

}  // namespace
