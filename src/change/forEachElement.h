// SPDX-License-Identifier: MIT
//
// forEachElement(), a walk over an element and all below it.

#pragma once

#include <ko/Orvid/Array.h>
#include <ko/Orvid/Element.h>
#include <ko/Orvid/Object.h>

#include <vector>

namespace ko::Orvid {

/// Visits an element and all below it, trees of one shape in one order: what contains others comes
/// before them.
template<class Visit>
void forEachElement(const Element& root, const Visit& visit) {
    std::vector<const Element*> open{&root};
    while (!open.empty()) {
        const Element& element = *open.back();
        open.pop_back();
        visit(element);
        if (element.isArray()) {
            for (const Element& item : element.array()) {
                open.push_back(&item);
            }
        } else if (element.isObject()) {
            for (const auto& member : element.object()) {
                open.push_back(&member.second);
            }
        }
    }
}

}  // namespace ko::Orvid
