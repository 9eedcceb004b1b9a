// SPDX-License-Identifier: MIT
//
// Looking for an item in its array.

#include "tree/Position.h"

#include <ko/Orvid/Array.h>

#include <algorithm>

namespace ko::Orvid {

unsigned int positionOf(const Element& item) {
    const Element::TArray& items = item.parent()->array();
    const unsigned int reported = item.index();
    if (reported < items.size() && &items[reported] == &item) {
        return reported;
    }
    const auto isItem = [&](const Element& each) { return &each == &item; };
    const auto found = std::find_if(items.begin(), items.end(), isItem);
    return found == items.end() ? reported
                                : static_cast<unsigned int>(std::distance(items.begin(), found));
}

}  // namespace ko::Orvid
