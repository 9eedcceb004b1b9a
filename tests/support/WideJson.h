// SPDX-License-Identifier: MIT
//
// Documents with containers of many children, made of choices, for what looks at some of them only.
// It needs no test framework.

#pragma once

#include <string>

#include "support/CommentedJson.h"

namespace orvid_test {

/// An object with an array in it, both with many children, some of them on lines of their own.
std::string makeWideJson(const Choice& choose);

/// An object with members k0, k1 and so on, or an array: children in rows, with comments of one
/// line and of several before and after some commas.
std::string makeRows(const Choice& choose, bool isObject);

}  // namespace orvid_test
