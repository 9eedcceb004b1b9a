// SPDX-License-Identifier: MIT
//
// Comparing array items by content.

#include "tree/ItemMatch.h"

#include <ko/Orvid/Exception.h>

namespace ko::Orvid {

bool itemMatches(const Element& item, const Path& itemPath, const Element& value) {
    try {
        const Element& part = itemPath.empty() ? item : item.get(itemPath);
        return Element::compare(value.data(), part.data()) == 0;
    } catch (const Exception&) {
        return false;
    }
}

}  // namespace ko::Orvid
