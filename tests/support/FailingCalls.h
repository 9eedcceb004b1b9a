// SPDX-License-Identifier: MIT
//
// Calls of the operating system that fail on purpose, in a test program that is linked with
// FailingCalls.cpp: what disks, signals and quotas do to a program, but seldom when it is tested.

#pragma once

#include <vector>

namespace orvid_test {

enum class Call {
    close,
    faccessat,
    fchmod,
    fchown,
    fgetxattr,
    flistxattr,
    fremovexattr,
    fsetxattr,
    fsync,
    rename,
    write
};

/// In place of an error: a write takes only half of its bytes.
constexpr int k_half = -1;

/// The next calls of that kind fail with these errors, one after the other; 0 lets one pass. A
/// close that fails closes all the same. For one thread at a time.
void failCalls(Call call, const std::vector<int>& errors);
/// Lets all calls pass from now on. Returns whether all errors were used up.
bool failNoCalls();

}  // namespace orvid_test
