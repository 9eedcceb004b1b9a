// SPDX-License-Identifier: MIT
//
// What the slabs of trees cost: few requests while a tree is made, and nothing once it has gone,
// whatever of it was moved elsewhere before.

#include <ko/detail/SlabArena.h>
#include <ko/Orvid.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <new>
#include <string>
#include <utility>
#include <vector>

#include "support/CountedMemory.h"

namespace orvid_test {
namespace {

using ko::SlabArena;
using ko::Orvid::DomParser;
using ko::Orvid::Element;

std::string numbers(int count) {
    std::string text = "[0";
    for (int i = 1; i < count; ++i) {
        text += ',' + std::to_string(i);
    }
    return text + ']';
}

TEST(SlabArena, slabs_go_with_the_last_of_their_blocks) {
    const std::size_t before = liveBlocks();
    void* first = nullptr;
    void* last = nullptr;
    {
        SlabArena memory;
        const SlabArena::Scope scope(memory);
        first = SlabArena::allocate(40);
        last = SlabArena::allocate(40);
        EXPECT_EQ(liveBlocks(), before + 1);
    }
    SlabArena::release(first, 40);
    EXPECT_EQ(liveBlocks(), before + 1);
    SlabArena::release(last, 40);
    EXPECT_EQ(liveBlocks(), before);
}

TEST(SlabArena, a_slab_without_blocks_goes_with_its_owner) {
    const std::size_t before = liveBlocks();
    {
        SlabArena memory;
        const SlabArena::Scope scope(memory);
        SlabArena::release(SlabArena::allocate(40), 40);
        EXPECT_EQ(liveBlocks(), before + 1);
    }
    EXPECT_EQ(liveBlocks(), before);
}

TEST(SlabArena, a_scope_within_another_cuts_from_the_same_slab) {
    SlabArena memory;
    SlabArena inner;
    const SlabArena::Scope scope(memory);
    SlabArena::release(SlabArena::allocate(40), 40);
    const std::size_t before = liveBlocks();
    const SlabArena::Scope within(inner);
    SlabArena::release(SlabArena::allocate(40), 40);
    EXPECT_EQ(liveBlocks(), before);
}

TEST(SlabArena, a_slab_that_cannot_be_had_leaves_the_present_one_in_use) {
    SlabArena memory;
    const SlabArena::Scope scope(memory);
    std::vector<void*> blocks;
    blocks.reserve(100);
    refuseAllocation(2, Refusal::once);
    EXPECT_THROW(
        {
            while (blocks.size() < 100) {
                blocks.push_back(SlabArena::allocate(200));
            }
        },
        std::bad_alloc);
    EXPECT_TRUE(refuseNone());
    EXPECT_FALSE(blocks.empty());
    blocks.push_back(SlabArena::allocate(8));
    SlabArena::release(blocks.back(), 8);
    blocks.pop_back();
    for (void* const block : blocks) {
        SlabArena::release(block, 200);
    }
}

TEST(SlabArena, reading_and_copying_ask_for_slabs_and_not_for_nodes) {
    const std::string text = numbers(1000);
    Element root;
    std::size_t before = allocationCount();
    DomParser().parse(root, text);
    EXPECT_LT(allocationCount() - before, 100u);
    before = allocationCount();
    const Element copy(root);
    EXPECT_LT(allocationCount() - before, 100u);
    Element assigned;
    DomParser().parse(assigned, std::string("[]"));
    before = allocationCount();
    assigned = root;
    EXPECT_LT(allocationCount() - before, 100u);
}

/// Two slabs, its item's and its text's, of the size that they have at the end of such a tree.
std::size_t mostKept(std::size_t treeBytes) {
    return 2 * std::clamp(treeBytes / SlabArena::k_part, SlabArena::k_usualSlab,
                          SlabArena::k_largestSlab);
}

TEST(SlabArena, an_element_that_leaves_its_tree_keeps_no_more_than_its_slabs) {
    for (const int count : {2000, 10000, 200000}) {
        const std::string text = numbers(count);
        const std::size_t before = liveBytes();
        Element kept;
        std::size_t tree = 0;
        {
            Element root;
            DomParser().parse(root, text);
            tree = liveBytes() - before;
            kept = std::move(root.array()[static_cast<unsigned int>(count) - 500]);
        }
        EXPECT_EQ(kept.number().toString(), std::to_string(count - 500));
        EXPECT_GT(tree, 3 * mostKept(tree)) << count;
        EXPECT_LE(liveBytes() - before, mostKept(tree)) << count;
        kept.setNull();
        EXPECT_EQ(liveBytes(), before);
    }
}

TEST(SlabArena, a_small_document_takes_small_slabs) {
    const std::size_t before = liveBytes();
    Element root;
    DomParser().parse(root, std::string(R"({"a":1})"));
    EXPECT_LT(liveBytes() - before, 500u);
    const std::size_t read = liveBytes();
    const Element copy(root);
    EXPECT_LT(liveBytes() - read, 500u);
}

TEST(SlabArena, slabs_are_never_more_than_twice_what_is_in_them) {
    constexpr std::size_t k_block = 56 + 8;
    for (std::size_t count = 1; count < 2000; count += 1 + count / 7) {
        const std::size_t before = liveBytes();
        SlabArena memory;
        const SlabArena::Scope scope(memory);
        std::vector<void*> blocks(count);
        for (void*& block : blocks) {
            block = SlabArena::allocate(56);
        }
        EXPECT_LE(liveBytes() - before, 2 * k_block * count + 24 * count + 400) << count;
        for (void* const block : blocks) {
            SlabArena::release(block, 56);
        }
    }
}

}  // namespace
}  // namespace orvid_test
