// SPDX-License-Identifier: MIT
//
// Runs an operation again and again, on new trees each time, while its first, second, third...
// request for memory is refused, until it passes. Each time nothing may leak, all links must hold,
// and what the operation promises must be there.

#pragma once

#include <gtest/gtest.h>
#include <ko/Orvid.h>

#include <cstddef>
#include <functional>
#include <new>
#include <ostream>
#include <string>
#include <vector>

#include "support/CountedMemory.h"
#include "support/Document.h"

namespace orvid_test {

/// Two trees to work on.
struct Trees {
    static constexpr const char* k_text =
        R"({"meta":{"schema":{"properties":{"a":{"properties":{"long name, not held in place":)"
        R"({"default":"a default that is not held in place"}}}}}},)"
        R"("a":{"list":[{"id":1,"name":"the first one of the list"},{"id":2,"name":"second"},)"
        R"({"id":2},[1,2,[3]]]},)"
        R"("s":"a string that is longer than what fits in place","n":1234567890123456789.012345,)"
        R"("long name, not held in place":{"x":{"y":{"long name, not held in place":[7]}}},)"
        R"("t":true,"z":null})";
    static constexpr const char* k_other =
        R"({"o":[{"k":"another string that is longer than what fits in place"},[[1],2.5]]})";

    Trees() {
        ko::Orvid::DomParser().parse(root, k_text, length(k_text));
        ko::Orvid::DomParser().parse(other, k_other, length(k_other));
    }

    static unsigned int length(const std::string& text) {
        return static_cast<unsigned int>(text.size());
    }

    ko::Orvid::Element root;
    ko::Orvid::Element other;
};

/// What a refused request leaves.
enum class Leaves {
    everything,  ///< nothing has changed, and the operation can be done again
    wholeTrees,  ///< something may have changed, but all links hold
};

struct Operation {
    std::string name;
    Leaves leaves;
    std::function<std::string(Trees&)> run;  ///< answers its result as text
};

inline std::ostream& operator<<(std::ostream& out, const Operation& operation) {
    return out << operation.name;
}

/// The trees, and what the operation answered.
inline std::string stateOf(const Trees& trees, const std::string& answer) {
    return compact(trees.root) + "\n" + compact(trees.other) + "\n" + answer;
}

/// One try. Answers whether a request was refused.
inline bool tryOperation(const Operation& operation, std::size_t number, Refusal refusal,
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

inline void failEachAllocation(const Operation& operation) {
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
