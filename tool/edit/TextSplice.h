// SPDX-License-Identifier: MIT
//
// Replacing one scalar by another in JSON text, without a tree: a short cut for the
// usual edit, of text that may be long.

#pragma once

#include <ko/Orvid.h>

#include <string_view>

#include "input/PathSteps.h"
#include "output/Bytes.h"

namespace orvid_tool {

/// The value to be put.
struct Scalar {
    const ko::Orvid::Element& element;
    std::string_view text;  ///< the same as JSON
};

/// Appends the text with the value at the steps, all other bytes as they are: what the library
/// would make of it. Returns false, with nothing appended, where the library has to be asked: where
/// either value is a container, where there is none at the steps, of text that `options` refuse and
/// of what repeats a key.
bool splice(std::string_view text, const ValueSteps& steps, const Scalar& value,
            const ko::Orvid::ReadOptions& options, Bytes& out);

}  // namespace orvid_tool
