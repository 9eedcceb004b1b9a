// SPDX-License-Identifier: MIT
//
// Comparing trees takes no memory, unless they are nested deeply, and holds where there is none.

#include <ko/Orvid.h>

#include <gtest/gtest.h>

#include <cstddef>
#include <new>
#include <string>

#include "support/CountedMemory.h"
#include "support/Document.h"

namespace orvid_test {
namespace {

/// A number in containers, by turns arrays and objects.
std::string nested(std::size_t depth) {
    std::string text = "1.5";
    for (std::size_t i = 0; i < depth; ++i) {
        text = i % 2 == 0 ? "[[]," + text + "]" : R"({"a":"b","c":)" + text + "}";
    }
    return text;
}

TEST(ComparingMemory, is_none_for_trees_of_thirty_levels) {
    const Document document(nested(30));
    const Document same(nested(30));
    const std::size_t before = allocationCount();
    EXPECT_TRUE(document.root == same.root);
    EXPECT_EQ(before, allocationCount());
}

TEST(ComparingMemory, that_is_refused_is_reported_for_deep_trees) {
    const Document document(nested(300));
    const Document same(nested(300));
    refuseAllocation(1, Refusal::forGood);
    EXPECT_THROW(static_cast<void>(document.root == same.root), std::bad_alloc);
    EXPECT_TRUE(refuseNone());
    EXPECT_TRUE(document.root == same.root);
}

}  // namespace
}  // namespace orvid_test
