// SPDX-License-Identifier: MIT
//
// The check of all links of a tree. It needs no test framework: the fuzzers use it as well.

#pragma once

#include <ko/Orvid/fwd.h>

#include <string>

namespace orvid_test {

/// How strictly indexes are checked: the copies of array items report 0 until their array is
/// updated.
enum class Indexes { exact, exactOrZero };

/// Checks, in the whole tree below `root`, that each child names its parent, that its key and index
/// are those under which it sits, and that list and index of every container agree. Does not
/// recurse. Returns what is wrong first; nothing when all holds.
std::string brokenLink(const ko::Orvid::Element& root, Indexes indexes = Indexes::exact);

}  // namespace orvid_test
