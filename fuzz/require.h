// SPDX-License-Identifier: MIT
//
// What a fuzz target says about its input. A promise that does not hold ends the program at once,
// which is how every fuzzer learns of a finding.

#pragma once

#include <cstdio>
#include <cstdlib>
#include <string>

namespace orvid_fuzz {

[[noreturn]] inline void fail(const std::string& promise) {
    std::fprintf(stderr, "broken promise: %s\n", promise.c_str());
    std::abort();
}

inline void require(bool holds, const char* promise) {
    if (!holds) {
        fail(promise);
    }
}

/// For a check that returns what is wrong.
inline void requireNone(const std::string& problem) {
    if (!problem.empty()) {
        fail(problem);
    }
}

/// Whether the action throws an E. Anything else that it throws is a finding.
template<class E, class Action>
bool throws(const Action& action) {
    try {
        action();
    } catch (const E&) {
        return true;
    }
    return false;
}

}  // namespace orvid_fuzz
