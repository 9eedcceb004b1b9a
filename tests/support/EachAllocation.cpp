// SPDX-License-Identifier: MIT
//
// The loop over the requests for memory.

#include "support/EachAllocation.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <new>
#include <string>

#include "support/CountedMemory.h"
#include "support/Document.h"

namespace orvid_test {
namespace {

/// The trees, and what the operation returned.
std::string stateOf(const Trees& trees, const std::string& answer) {
    return compact(trees.root) + "\n" + compact(trees.other) + "\n" + answer;
}

/// One try. Returns whether a request was refused.
bool tryOperation(const Operation& operation, std::size_t number, Refusal refusal,
                  const std::string& before, const std::string& after) {
    Trees trees;
    std::string answer;
    bool isThrown = false;
    refuseAllocation(number, refusal);
    try {
        answer = operation.run(trees);
    } catch (const std::bad_alloc&) {
        isThrown = true;
    }
    const bool isRefused = refuseNone();
    CHECK_LINKS_AFTER_COPY(trees.root);
    CHECK_LINKS_AFTER_COPY(trees.other);
    if (!isThrown) {
        EXPECT_EQ(stateOf(trees, answer), after) << "although memory was refused";
    } else if (operation.leaves == Leaves::everything) {
        EXPECT_EQ(stateOf(trees, ""), before);
        EXPECT_EQ(stateOf(trees, operation.run(trees)), after) << "when it is done again";
    }
    return isRefused;
}

}  // namespace

void failEachAllocation(const Operation& operation) {
    std::string before;
    std::string after;
    {
        Trees trees;
        before = stateOf(trees, "");
        const std::string answer = operation.run(trees);
        after = stateOf(trees, answer);
    }
    for (const Refusal refusal : {Refusal::once, Refusal::forGood}) {
        std::size_t number = 1;
        for (bool isRefused = true; isRefused && !testing::Test::HasFailure(); ++number) {
            SCOPED_TRACE("request " + std::to_string(number) + " is refused");
            const std::size_t blocks = liveBlocks();
            isRefused = tryOperation(operation, number, refusal, before, after);
            EXPECT_EQ(liveBlocks(), blocks) << "leaked";
            ASSERT_LT(number, 10000U) << "no end of requests";
        }
    }
}

}  // namespace orvid_test
