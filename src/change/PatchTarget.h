// SPDX-License-Identifier: MIT
//
// The document that a patch works on. Arrays that it edits stay open, so that neither runs of
// removals nor edits here and there move the items after them each time.

#pragma once

#include <ko/Orvid/JsonPointer.h>

#include <cstddef>
#include <deque>
#include <string>
#include <unordered_map>

#include "change/OpenArray.h"
#include "change/PatchMoves.h"

namespace ko::Orvid {

class PatchTarget {
public:
    /// The root must outlive it, and so must `moves`, which may be null. Before anyone else reads
    /// the document: closeAll().
    explicit PatchTarget(Element& root, PatchMoves* moves = nullptr)
        : m_root(root), m_moves(moves) {}

    Element& root() noexcept { return m_root; }
    /// The element at the pointer; null when there is none.
    Element* find(const JsonPointer& pointer);
    /// The last element on the way to a target that need not exist. The document is closed.
    Element& deepest(const JsonPointer& pointer);

    std::size_t sizeOf(Element& array);
    /// Inserts the value before that position of the array, at most its size; it is null
    /// afterwards. Returns its item.
    Element& insert(Element& array, std::size_t position, Element& value);
    /// Sets the member, and returns it; the value is null afterwards.
    Element& set(Element& object, const std::string& key, Element& value);
    /// Gives the element the value, which is null afterwards.
    void replace(Element& element, Element& value);
    /// Takes the child at a step that is there, and hands its value out.
    Element take(Element& parent, const std::string& step);
    /// Destroys a value that was taken.
    void discard(Element& value);

    /// Gives every array in that element its order.
    void closeWithin(Element& element);
    void closeAll();

private:
    Element* childOf(Element& parent, const std::string& step);
    OpenArray* openOf(const Element& array);
    OpenArray& open(Element& array);
    void close(const Element::TArray& array, OpenArray& open);

    Element& m_root;
    PatchMoves* m_moves;
    std::unordered_map<const Element::TArray*, OpenArray> m_open;
    std::deque<Element> m_discarded;  ///< may hold open arrays
};

}  // namespace ko::Orvid
