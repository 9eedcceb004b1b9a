// SPDX-License-Identifier: MIT
//
// Reading the documents that a fuzzer compares by recursion.

#pragma once

#include <ko/Orvid.h>

#include <cstddef>
#include <string>

#include "require.h"

namespace orvid_fuzz {

/// Reads the text into `root`. Returns whether it is one whole document, not nested too deeply.
inline bool readShallow(ko::Orvid::Element& root, const std::string& text) {
    constexpr std::size_t deepest = 60;
    ko::Orvid::ReadOptions options;
    options.maxDepth = deepest;
    ko::Orvid::DomParser parser(options);
    return !throws<ko::Orvid::ParseException>([&] { parser.parse(root, text + "\n"); }) &&
           parser.state() == 0;
}

}  // namespace orvid_fuzz
