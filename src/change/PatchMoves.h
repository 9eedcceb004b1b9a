// SPDX-License-Identifier: MIT
//
// PatchMoves, where the values that a patch moves came from. They are followed by the addresses of
// their elements: a value that is moved gets another element, and the elements within it stay.

#pragma once

#include <ko/Orvid/Element.h>
#include <ko/Orvid/JsonPointer.h>

#include <cstddef>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "change/CopiedValues.h"

namespace ko::Orvid {

class PatchMoves {
public:
    /// Where the value of an element came from.
    struct Origin {
        const Element* element = nullptr;  ///< where it began; null for one that is new
        bool isKnown = false;
        bool isMoved = false;             ///< known since it was moved itself
        const Element* copied = nullptr;  ///< where the value began that a new one is a copy of
        std::size_t copy = 0;             ///< the number of that copy in the patch, from 1
        bool isCopyItself = false;        ///< and not only a value within the one that was copied
    };

    /// The tree before the patch. Linear cost.
    explicit PatchMoves(const Element& root);

    /// Everything within the value is new.
    void addWithin(const Element& value);
    /// The same, where the value is a copy of another one.
    void copyWithin(const Element& source, const Element& copy);
    Origin originOf(const Element& element) const;
    /// A new value with that origin has come into the element.
    void add(const Origin& origin, const Element& element) { m_origins[&element] = origin; }
    /// The value with that origin has come into the element.
    void move(const Origin& origin, const Element& element);
    /// A value will be moved onto the element, whose own is gone then. No array in it is open.
    void overwrite(const Element& element);
    /// The value comes into that container: the container is the same nevertheless, and no item
    /// that equals the value is it. Null is no container.
    void edit(const Element* container, const Element& value);
    /// The same where the value leaves its container, in which it is still.
    void leave(const Element& value);
    /// The values of the elements `from` have come into those of the same positions of the array.
    void reorder(const std::vector<const Element*>& from, const Element::TArray& array);

    /// PatchOptions::moved, from `former`, a tree that is as the one before the patch, to `root`.
    MovedPlaces places(const Element& former, const Element& root);

private:
    /// An element that has a value from before the patch, and whether that came from elsewhere.
    struct Found {
        const Element* element;
        bool isMoved;
    };
    using FoundByFirst = std::unordered_map<const Element*, Found>;

    using Likenesses = std::unordered_set<std::size_t>;

    /// An array in the former tree which items have left.
    struct FormerArray {
        Likenesses left;
        bool isRefilled = false;
        std::unordered_map<std::size_t, const Element*> items;  ///< by likeness, the first of each
    };
    using FormerArrays = std::unordered_map<const Element*, FormerArray>;

    void keep(const Element* element);
    void keepEqualItems(const Element& root);
    void keepFormerEquals(const Element& former, const Element& root);
    std::unordered_set<const Element*> equalItems(const Element& former,
                                                  FormerArrays& arrays) const;
    bool isRefilled(const Element* array, const Likenesses& left) const;
    FoundByFirst known(const Element& former, const Element& root) const;
    void findCopies(const Element& former, const Element& root, FoundByFirst& found) const;
    CopiedValues::ByFirst copiesOfRemoved(const Element& root) const;

    std::vector<const Element*> m_first;  ///< all elements before the patch, in the order of a walk
    std::unordered_map<const Element*, Origin> m_origins;  ///< of those that are not their own
    /// What came and left is like, by array: the address of an array stays as it moves.
    std::unordered_map<const Element::TArray*, Likenesses> m_edits;
    /// What new items are like, by the origin of their array.
    std::unordered_map<const Element*, Likenesses> m_added;
    std::unordered_set<const Element*> m_left;         ///< origins of what left an array
    std::unordered_set<const Element*> m_moved;        ///< origins
    std::unordered_set<const Element*> m_overwritten;  ///< origins
    std::unordered_set<const Element*> m_overwrittenWithin;
    std::size_t m_copies = 0;
};

}  // namespace ko::Orvid
