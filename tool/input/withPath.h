// SPDX-License-Identifier: MIT
//
// A path that the call gave, with its faults told as the call's.

#pragma once

#include <ko/Orvid.h>

#include <string>

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

}  // namespace orvid_tool
