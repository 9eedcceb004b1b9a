// SPDX-License-Identifier: MIT
//
// The heap as a test program sees it that is linked with CountedMemory.cpp: how much of it is in
// use, and a request that is refused on purpose. Everything that is made by operator new counts,
// YAJL's memory with it; what GMP and the C library take by malloc does not.

#pragma once

#include <cstddef>

namespace orvid_test {

/// Which requests are refused: the chosen one, or all from the chosen one on.
enum class Refusal { once, forGood };

/// Refuses the request of that number, counted from 1 from now on. For one thread at a time.
void refuseAllocation(std::size_t number, Refusal refusal);
/// Refuses none from now on. Returns whether one was refused.
bool refuseNone();

/// Blocks that were made and not yet released.
std::size_t liveBlocks();
/// Their bytes, with what malloc rounds up.
std::size_t liveBytes();
/// Requests since the program began.
std::size_t allocationCount();

/// The most bytes in use at any time since its construction, beyond those in use then.
class Peak {
public:
    Peak();
    std::size_t bytes() const;

private:
    std::size_t m_before;
};

}  // namespace orvid_test
