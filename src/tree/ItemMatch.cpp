// SPDX-License-Identifier: MIT
//
// Comparing array items by content.

#include "tree/ItemMatch.h"

#include <ko/Orvid/Exception.h>

#include "tree/followPlain.h"
#include "tree/Tree.h"

namespace ko::Orvid {

bool itemMatches(const Element& item, const Path& itemPath, const Element& value) {
    try {
        const auto followed = followPlain(itemPath.str(), item);
        if (followed && *followed == nullptr) {
            return false;
        }
        const Element& part = followed ? **followed : item.get(itemPath);
        return compareTrees(value.data(), part.data()) == 0;
    } catch (const Exception&) {
        return false;
    }
}

}  // namespace ko::Orvid
