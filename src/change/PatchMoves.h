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

namespace ko::Orvid {

class PatchMoves {
public:
    /// The tree before the patch. Linear cost.
    explicit PatchMoves(const Element& root);

    /// Everything within the value is new.
    void addWithin(const Element& value);
    /// A new element, with a value that was not there before.
    void add(const Element& element) { m_origins[&element] = {}; }
    /// The element where the value that moves began; null for one that is new.
    const Element* originOf(const Element& element) const;
    /// The value with that origin has come into the element.
    void move(const Element* origin, const Element& element);
    /// The value comes into that container, or leaves it: the container is the same nevertheless,
    /// and no item that equals the value is it. Null is no container.
    void edit(const Element* container, const Element& value);
    /// The value with that origin has left its container, which edit() says as well.
    void leave(const Element* origin) { m_left.insert(origin); }
    /// The values of the elements `from` have come into those of the same positions of the array.
    void reorder(const std::vector<const Element*>& from, const Element::TArray& array);

    /// What was moved or equals what was edited, and the containers around it, from the former
    /// tree, which is as the first was, to the one there is now.
    MovedPlaces places(const Element& former, const Element& root);

private:
    struct Origin {
        const Element* element = nullptr;
        bool isKnown = false;
        bool isMoved = false;  ///< known since it was moved itself
    };

    Origin at(const Element& element) const;
    void keep(const Element* element);
    void keepEqualItems(const Element& root);
    void keepFormerEquals(const Element& former, const Element& root);

    std::vector<const Element*> m_first;  ///< all elements before the patch, in the order of a walk
    std::unordered_map<const Element*, Origin> m_origins;  ///< of those that are not their own
    /// What came and left is like, by array: the address of an array stays as it moves.
    std::unordered_map<const Element::TArray*, std::unordered_set<std::size_t>> m_edits;
    std::unordered_set<const Element*> m_left;  ///< origins
};

}  // namespace ko::Orvid
