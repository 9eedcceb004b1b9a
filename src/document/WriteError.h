// SPDX-License-Identifier: MIT
//
// What keeps a tree from being JSON, found before any of it is written.

#pragma once

#include <ko/Orvid/fwd.h>

#include <optional>
#include <string>

namespace ko::Orvid {

struct WriteError {
    const char* message;     ///< a sentence without its full stop
    const Element* element;  ///< at which it is
};

/// The first error of the tree, in the order of the text: a value of type etEmpty, the text of a
/// number that is none, and, unless the options allow it, a key or string that is no UTF-8.
/// `leftOut` is a key of the root that is not written. Does not recurse.
std::optional<WriteError> findWriteError(const Element& root, const WriteOptions& options,
                                         const std::string* leftOut = nullptr);

}  // namespace ko::Orvid
