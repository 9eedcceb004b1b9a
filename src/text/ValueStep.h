// SPDX-License-Identifier: MIT
//
// The steps that lead to a value in a text.

#pragma once

#include <ko/Orvid/types.h>

#include <string>
#include <vector>

namespace ko::Orvid::text {

/// To a member, or to an item of an array.
struct ValueStep {
    bool isKey = false;
    std::string key;         ///< escapes resolved
    unsigned int index = 0;  ///< from 0; k_noIndex is a new item after the last
};

using ValueSteps = std::vector<ValueStep>;

}  // namespace ko::Orvid::text
