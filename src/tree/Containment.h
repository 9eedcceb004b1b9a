// SPDX-License-Identifier: MIT
//
// What lies within what: asked wherever a value is moved, since a tree that came to lie within
// itself would have no root and never be freed.

#pragma once

#include <ko/Orvid/Array.h>
#include <ko/Orvid/Element.h>
#include <ko/Orvid/Object.h>

#include "tree/Place.h"
#include "tree/Strays.h"
#include "tree/Tree.h"

namespace ko::Orvid {

/// The link of the container that holds the element, whatever parent the element names; null when
/// there is none.
inline const detail::ParentLink* trueLink(const Element& element) noexcept {
    const detail::ParentLink* const link = Place::linkOf(element);
    return link != nullptr && link->hasNotes() ? Strays::trueLink(element, *link) : link;
}

/// The element whose container holds this one.
inline Element* trueParent(const Element& element) noexcept {
    const detail::ParentLink* const link = trueLink(element);
    return link == nullptr ? nullptr : link->parent();
}

/// Whether `element` is `tree` or lies within it. Linear in the depth.
inline bool isWithin(const Element& element, const Element& tree) noexcept {
    const Element* step = &element;
    while (step != nullptr && step != &tree) {
        step = trueParent(*step);
    }
    return step != nullptr;
}

/// Whether the container is that of `tree` or of an element within it. Linear in the depth.
template<class Container>
bool liesIn(const Container& container, const Element& tree) noexcept {
    return isContainer(tree.data()) && container.parent() != nullptr &&
           isWithin(*container.parent(), tree);
}

/// Whether the container lies within a child of the other. Linear in the depth.
template<class Container>
bool liesInChild(const Container& container, const Container& other) noexcept {
    const Element* step = container.parent();
    while (step != nullptr && trueLink(*step) != &Place::linkOf(other)) {
        step = trueParent(*step);
    }
    return step != nullptr;
}

/// Whether both lie in the same tree. Linear in the depth.
inline bool shareTree(const Element& a, const Element& b) noexcept {
    const Element* root = &a;
    for (const Element* next = root; next != nullptr; next = trueParent(*next)) {
        root = next;
    }
    return isWithin(b, *root);
}

}  // namespace ko::Orvid
