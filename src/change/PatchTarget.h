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

namespace ko::Orvid {

class PatchTarget {
public:
    /// The root must outlive it. Before anyone else reads the document: closeAll().
    explicit PatchTarget(Element& root) : m_root(root) {}

    Element& root() noexcept { return m_root; }
    /// The element at the pointer; null when there is none.
    Element* find(const JsonPointer& pointer);
    /// The last element on the way to a target that need not exist. The document is closed.
    Element& deepest(const JsonPointer& pointer);

    std::size_t sizeOf(Element& array);
    /// Inserts the value before that position of the array, at most its size; it is null
    /// afterwards.
    void insert(Element& array, std::size_t position, Element& value);
    /// Sets the member; the value is null afterwards.
    void set(Element& object, const std::string& key, Element& value);
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

    Element& m_root;
    std::unordered_map<const Element::TArray*, OpenArray> m_open;
    std::deque<Element> m_discarded;  ///< may hold open arrays
};

}  // namespace ko::Orvid
