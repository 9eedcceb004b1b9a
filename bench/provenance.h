// SPDX-License-Identifier: MIT
//
// Where figures come from: build and machine. Figures from a build that is not for speed are no
// results.

#pragma once

#include <string>
#include <utility>
#include <vector>

namespace orvid_bench {

/// Names and texts: compiler, flags, CPU, allocator, the peers' versions. The commit is given by
/// the script that starts the program, in the environment variable ORVID_BENCH_COMMIT.
std::vector<std::pair<std::string, std::string>> provenance();

/// The file that malloc comes from.
std::string allocator();
bool isMimalloc();

/// Why this build's figures must not be kept: assertions, sanitizers, no optimisation. Empty when
/// they may.
std::string obstacle();

}  // namespace orvid_bench
