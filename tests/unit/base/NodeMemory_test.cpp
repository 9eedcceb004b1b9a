// SPDX-License-Identifier: MIT
//
// Blocks for the nodes of trees. What they cost, and when their slabs go, is in
// tests/allocation/node_memory_test.cpp.

#include <ko/detail/NodeMemory.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <list>
#include <memory>
#include <random>
#include <vector>

namespace {

using ko::NodeMemory;

struct Block {
    unsigned char* bytes;
    std::size_t size;
    unsigned char fill;
};

Block makeBlock(std::size_t size, unsigned char fill) {
    auto* const bytes = static_cast<unsigned char*>(NodeMemory::allocate(size));
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
        EXPECT_EQ(0u, reinterpret_cast<std::uintptr_t>(block.bytes) % NodeMemory::k_alignment);
    }
    std::shuffle(blocks.begin(), blocks.end(), std::mt19937(7));
    while (!blocks.empty()) {
        NodeMemory::release(blocks.back().bytes, blocks.back().size);
        blocks.pop_back();
        EXPECT_TRUE(std::all_of(blocks.begin(), blocks.end(), isIntact));
    }
}

TEST(NodeMemory, gives_blocks_of_their_own_without_a_scope) {
    expectBlocksOfTheirOwn(makeBlocks());
}

TEST(NodeMemory, gives_blocks_that_outlive_scope_and_slabs) {
    std::vector<Block> blocks;
    {
        NodeMemory memory;
        const NodeMemory::Scope scope(memory);
        blocks = makeBlocks();
    }
    expectBlocksOfTheirOwn(blocks);
}

TEST(NodeMemory, takes_any_block_for_the_first) {
    for (std::size_t size = 1; size <= 600; ++size) {
        NodeMemory memory(size);
        const NodeMemory::Scope scope(memory);
        expectBlocksOfTheirOwn({makeBlock(size, 1), makeBlock(8, 2), makeBlock(size, 3)});
    }
}

TEST(NodeMemory, goes_on_where_an_earlier_scope_ended) {
    NodeMemory memory;
    std::vector<Block> blocks;
    for (std::size_t i = 0; i < 10; ++i) {
        const NodeMemory::Scope scope(memory);
        blocks.push_back(makeBlock(40, static_cast<unsigned char>(i)));
    }
    expectBlocksOfTheirOwn(blocks);
}

TEST(NodeMemory, may_be_left_unused) {
    NodeMemory memory;
    const NodeMemory::Scope scope(memory);
    NodeMemory::release(nullptr, 8);
}

TEST(NodeMemory, gives_cells_of_their_own_beside_blocks) {
    std::vector<unsigned char*> cells;
    std::vector<Block> blocks;
    {
        NodeMemory memory(4096);
        for (std::size_t i = 0; i < 1000; ++i) {
            blocks.push_back(
                {static_cast<unsigned char*>(memory.cut(80)), 80, static_cast<unsigned char>(i)});
            std::memset(blocks.back().bytes, blocks.back().fill, 80);
            if (void* const cell = memory.cutCell()) {
                std::memset(cell, 1, NodeMemory::k_cell);
                cells.push_back(static_cast<unsigned char*>(cell));
            }
        }
    }
    EXPECT_GT(cells.size(), 500u);
    for (unsigned char* const cell : cells) {
        EXPECT_TRUE(NodeMemory::isCell(cell));
        EXPECT_TRUE(isIntact({cell, NodeMemory::k_cell, 1}));
        NodeMemory::releaseCell(cell);
    }
    expectBlocksOfTheirOwn(blocks);
}

TEST(NodeMemory, has_no_cells_before_there_is_a_slab) {
    NodeMemory memory;
    EXPECT_EQ(nullptr, memory.cutCell());
}

TEST(NodeMemory, knows_the_memory_of_the_outermost_scope) {
    EXPECT_EQ(nullptr, NodeMemory::current());
    NodeMemory outer;
    NodeMemory inner;
    const NodeMemory::Scope scope(outer);
    const NodeMemory::Scope within(inner);
    EXPECT_EQ(&outer, NodeMemory::current());
}

struct Base : ko::InNodeMemory {
    virtual ~Base() = default;
    int number = 1;
};

struct Derived : Base {
    double numbers[8] = {2};
};

TEST(NodeMemory, serves_new_and_delete_through_a_base) {
    NodeMemory memory;
    const NodeMemory::Scope scope(memory);
    const std::unique_ptr<Base> derived = std::make_unique<Derived>();
    EXPECT_EQ(1, derived->number);
    alignas(Base) unsigned char where[sizeof(Base)];
    Base* const placed = new (where) Base;
    EXPECT_EQ(static_cast<void*>(where), placed);
    placed->~Base();
}

TEST(NodeMemory, serves_lists_that_exchange_nodes) {
    using List = std::list<int, ko::NodeAllocator<int>>;
    List read;
    {
        NodeMemory memory;
        const NodeMemory::Scope scope(memory);
        read = {1, 2, 3};
    }
    List made{4, 5};
    made.splice(made.begin(), read, std::next(read.begin()));
    EXPECT_EQ((List{2, 4, 5}), made);
    EXPECT_EQ((List{1, 3}), read);
}

}  // namespace
