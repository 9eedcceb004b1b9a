// SPDX-License-Identifier: MIT
//
// Documents with anything that JSON with comments allows between any two tokens, made of choices:
// whitespace of every kind, comments of both kinds, line breaks of several systems in one text.
// CommentedJson is what people write; this is what is legal. It needs no test framework.

#pragma once

#include <string>

#include "support/CommentedJson.h"

namespace orvid_test {

/// Comments have numbers, as CommentedJson::commentsIn() finds them.
std::string makeScatteredJson(const Choice& choose);

}  // namespace orvid_test
