// SPDX-License-Identifier: MIT
//
// What lies within what: asked wherever a value is moved, since a tree that came to lie within
// itself would have no root and never be freed.
//
// The walk up from the new place of a value updates all strays on its way (see Strays.h).
// So no element ever names as its parent one that lies within it, and every walk by parent() ends
// at a root, through true parents or others.

#pragma once

#include <ko/Orvid/Array.h>
#include <ko/Orvid/Element.h>
#include <ko/Orvid/Object.h>

#include "tree/Place.h"
#include "tree/Strays.h"
#include "tree/Tree.h"

namespace ko::Orvid {

/// The link of the container that holds the element, which finds its parent there from now on; null
/// when there is none.
inline const detail::ParentLink* trueLink(Element& element) noexcept {
    detail::ParentLink* const link = Place::linkOf(element);
    if (link == nullptr || !link->hasNotes()) {
        return link;
    }
    Strays::comeHome(*link);
    return Place::linkOf(element);
}

/// The element whose container holds this one, which names it as its parent from now on.
inline Element* trueParent(Element& element) noexcept {
    const detail::ParentLink* const link = trueLink(element);
    return link == nullptr ? nullptr : link->parent();
}

/// Whether the element finds its parent where it may be another's.
inline bool mayBeStray(const Element& element) noexcept {
    const detail::ParentLink* const link = Place::linkOf(element);
    return link != nullptr && link->hasNotes();
}

/// Whether `element` is `tree` or lies within it. Linear in the depth.
inline bool isWithin(Element& element, const Element& tree) noexcept {
    Element* step = &element;
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
    Element* step = container.parent();
    while (step != nullptr && trueLink(*step) != &Place::linkOf(other)) {
        step = trueParent(*step);
    }
    return step != nullptr;
}

/// The topmost ancestor, or null where one on the way to it may be a stray. Linear in the depth.
inline const Element* surelyRootOf(const Element& element) noexcept {
    const Element* step = &element;
    while (!mayBeStray(*step) && step->parent() != nullptr) {
        step = step->parent();
    }
    return mayBeStray(*step) ? nullptr : step;
}

/// Whether both lie in the same tree, or may do so for all that is known. Changes nothing, not even
/// in strays. Linear in the depth.
inline bool mayShareTree(const Element& a, const Element& b) noexcept {
    const Element* const root = surelyRootOf(a);
    const Element* const other = surelyRootOf(b);
    return root == nullptr || other == nullptr || root == other;
}

}  // namespace ko::Orvid
