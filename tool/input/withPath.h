// SPDX-License-Identifier: MIT
//
// A path that the call gave, with its errors reported as the call's.

#pragma once

#include <ko/Orvid.h>

#include <string>

#include "output/Failure.h"

namespace orvid_tool {

/// Refuses what the path language reads as something else than it seems: a byte 0xFF, which ends a
/// path, and the index 4294967295, which means [*]; and a backslash at the end. Throws Failure.
void refuseMisleading(const std::string& path);

/// Does something with a path that the call gave. A path that is malformed is the call's error:
/// throws Failure.
template<class Action>
auto withPath(const std::string& path, const Action& action) {
    refuseMisleading(path);
    try {
        return action(ko::Orvid::Path(path));
    } catch (const ko::Orvid::ParseException& error) {
        throw malformedPath(path, error);
    }
}

}  // namespace orvid_tool
