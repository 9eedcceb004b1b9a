// SPDX-License-Identifier: MIT
//
// What is reported for a path that leads nowhere: how far it led, and what may have been meant.

#pragma once

#include <ko/Orvid.h>

#include <string>

#include "output/Failure.h"

namespace orvid_tool {

/// A step of the path leads nowhere in the document at `location`, whose root that is.
/// For an item that there is not, the message ends with that hint.
Failure missingPath(Location location, const ko::Orvid::Element& root,
                    const ko::Orvid::PathNotFound& error, const std::string& itemHint = "");

/// Where what the path leads to is missing, and a key has dots in it that the path has as well: how
/// to write the path, as the end of a message. Otherwise nothing.
std::string dottedKeyHint(const ko::Orvid::Element& root, const std::string& path);

/// What is said of a path that has a new key with whitespace at its beginning or end, or that ends
/// in a new key with a colon at its end, as the end of a note; empty for any other path. Throws
/// Failure for a malformed path.
std::string unusualKeyHint(const ko::Orvid::Element& root, const std::string& path);

}  // namespace orvid_tool
