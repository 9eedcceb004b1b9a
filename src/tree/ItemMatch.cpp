// SPDX-License-Identifier: MIT
//
// Comparing array items by content.

#include "tree/ItemMatch.h"

#include <ko/Orvid/Exception.h>

#include "tree/followPlain.h"
#include "tree/Tree.h"

namespace ko::Orvid {

namespace {

/// Null where a plain path leads nowhere.
const Element* partOf(const Element& item, const Path& path) {
    if (path.str().empty()) {
        return &item;
    }
    const auto followed = followPlain(path.str(), item);
    return followed ? *followed : &item.get(path);
}

}  // namespace

bool itemMatches(const Element& item, const Path& itemPath, const Element& value) {
    try {
        const Element* const part = partOf(item, itemPath);
        return part != nullptr && compareTrees(value.data(), part->data()) == 0;
    } catch (const Exception&) {
        return false;
    }
}

}  // namespace ko::Orvid
