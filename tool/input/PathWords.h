// SPDX-License-Identifier: MIT
//
// Paths and values among the words of a call.

#pragma once

#include <ko/Orvid.h>

#include <string>
#include <vector>

#include "input/CallPath.h"
#include "input/withPath.h"

namespace orvid_tool {

/// A value for a path.
struct Assignment {
    CallPath path;
    ko::Orvid::Element value;
};

struct Assignments {
    std::vector<Assignment> all;
    std::vector<std::string> files;
    bool isInputTaken = false;  ///< a value has read standard input
    bool areApart = false;      ///< path and value, which are two words then
};

/// Takes words apart that are `PATH VALUE FILE...` or `PATH=VALUE... FILE...`. It is the second
/// where the first word has a `=` without a backslash before it; the files begin then at the first
/// word without one, or at one that begins with `/`, unless the first does too, `./` or `../`.
/// Values are read as readValueWord() says. Throws UsageError where a word is missing, Failure for
/// a value that is none (see ValueWord.h) or a malformed pointer.
Assignments assignmentsOf(const std::vector<std::string>& words, bool isStrict);

}  // namespace orvid_tool
