// SPDX-License-Identifier: MIT
//
// The count of the heap allocations that are made through operator new, by the benchmarks and by
// all the shared libraries of the process. What C libraries take from malloc is not in it.

#pragma once

#include <cstddef>

namespace orvid_bench {

/// How many there were since the program began.
std::size_t allocationCount();

}  // namespace orvid_bench
