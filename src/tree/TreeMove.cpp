// SPDX-License-Identifier: MIT
//
// Values on the move.

#include "tree/TreeMove.h"

#include <ko/Orvid/Array.h>
#include <ko/Orvid/Object.h>

#include <utility>
#include <vector>

#include "tree/Tree.h"

namespace ko::Orvid {

namespace {

/// The items of a copied array report the index 0 until their array is updated.
void renumberItems(Element& root) {
    std::vector<Element*> open{&root};
    while (!open.empty()) {
        Element& element = *open.back();
        open.pop_back();
        if (element.isArray()) {
            element.array().updateVector();
            for (Element& item : element.array()) {
                open.push_back(&item);
            }
        } else if (element.isObject()) {
            for (auto& member : element.object()) {
                open.push_back(&member.second);
            }
        }
    }
}

}  // namespace

void swapValues(Element& a, Element& b) noexcept {
    std::swap(a.data(), b.data());
    moveTree(a.data(), &a);
    moveTree(b.data(), &b);
}

void copyValue(Element& to, const Element& from) {
    Element copy(from);
    renumberItems(copy);
    swapValues(to, copy);
}

}  // namespace ko::Orvid
