// SPDX-License-Identifier: MIT
//
// What is reported for a path that leads nowhere: how far it led, and what may have been meant.

#pragma once

#include <ko/Orvid.h>

#include <string>

#include "input/CallPath.h"
#include "output/Failure.h"

namespace orvid_tool {

/// A step of the path leads nowhere in the document at `location`, whose root that is.
Failure missingPath(Location location, const ko::Orvid::Element& root,
                    const ko::Orvid::PathNotFound& error);

/// The same for a path at which something was to be put: it is named as it was typed, and for an
/// item that there is not, the message says how a new one is written.
Failure missingPlace(Location location, const ko::Orvid::Element& root,
                     const ko::Orvid::PathNotFound& error, const CallPath& path);

/// The same for a verb that makes nothing on the way: of a key that there is not, the message says
/// which verb makes it, and how a key with the dots of the path in it is written.
Failure missingHolder(Location location, const ko::Orvid::Element& root,
                      const ko::Orvid::PathNotFound& error, const CallPath& path);

/// Why the value has no such step of a JSON Pointer.
std::string missingStep(const ko::Orvid::Element& holder, const std::string& step);

/// Whether the value has a length, which some languages have as a member.
bool hasLength(const ko::Orvid::Element& value);
/// Why a value that has a length has no member of that name, and what writes it.
std::string lengthOf(const ko::Orvid::Element& value, const std::string& path);

/// Where what the path leads to is missing, and a key has dots in it that the path has as well: how
/// to write the path, as the end of a message. Otherwise nothing.
std::string dottedKeyHint(const ko::Orvid::Element& root, const std::string& path);

/// The end of a note about a path with an unusual new key: one with whitespace at its beginning or
/// end, or a last one with a colon at its end, or a sign after a key that is there. Empty for any
/// other path. Throws Failure for a malformed path.
std::string unusualKeyHint(const ko::Orvid::Element& root, const std::string& path);

/// The same for a path with a new key `*`, or with a `[*]` before its end where there are items:
/// what sets all members or items.
std::string globHint(const ko::Orvid::Element& root, const std::string& path);

/// The same for a path that seems to be a JSON Pointer without its first slash: its first new key
/// has a slash after the key of a container that is there, beside no other key with a slash.
std::string slashedKeyHint(const ko::Orvid::Element& root, const std::string& path);

}  // namespace orvid_tool
