// SPDX-License-Identifier: MIT
//
// The way from the root of a tree, or from an ancestor, down to an element.

#pragma once

#include <ko/Orvid/Element.h>

#include <vector>

#include "tree/Position.h"

namespace ko::Orvid {

/// Calls `object(key)` or `array(position)` for each step from `relativeTo`, where that is a proper
/// ancestor, or else from the root, down to the element.
template<class ObjectStep, class ArrayStep>
void walkDown(const Element& element, const Element* relativeTo, const ObjectStep& object,
              const ArrayStep& array) {
    std::vector<const Element*> way;
    for (const Element* step = &element; step->parent() != nullptr; step = step->parent()) {
        way.push_back(step);
        if (step->parent() == relativeTo) {
            break;
        }
    }
    for (auto step = way.rbegin(); step != way.rend(); ++step) {
        const EType parentType = (*step)->parent()->type();
        if (parentType == etObject) {
            object((*step)->memberKey());
        } else if (parentType == etArray) {
            array(positionOf(**step));
        }
    }
}

}  // namespace ko::Orvid
