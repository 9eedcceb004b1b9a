// SPDX-License-Identifier: MIT
//
// Paths and values among the words of a call.

#pragma once

#include <ko/Orvid.h>

#include <string>
#include <vector>

#include "output/Failure.h"

namespace orvid_tool {

/// Does something with a path that the call gave. A path that is malformed is the call's fault:
/// throws Failure.
template<class Action>
auto withPath(const std::string& path, const Action& action) {
    try {
        return action(ko::Orvid::Path(path));
    } catch (const ko::Orvid::ParseException& error) {
        throw malformedPath(path, error);
    }
}

/// A value for a place.
struct SAssignment {
    std::string path;
    ko::Orvid::Element value;
};

struct SAssignments {
    std::vector<SAssignment> all;
    std::vector<std::string> files;
};

/// Takes words apart that are `PATH JSON FILE...` or `PATH=JSON... FILE...`. It is the second where
/// the first word has a `=` without a backslash before it; the files begin then at the first word
/// without one, or at one that begins with `/`, `./` or `../`. Throws Misuse where a word is
/// missing, Failure for a value that is no JSON.
SAssignments assignmentsOf(const std::vector<std::string>& words);

}  // namespace orvid_tool
