// SPDX-License-Identifier: MIT
//
// An array while many of its items come and go: their order is kept beside the array, in pieces, so
// that an edit at any position does not move all that follow.

#pragma once

#include <ko/Orvid/Array.h>

#include <cstddef>
#include <vector>

namespace ko::Orvid {

/// The array's own order, and the indexes of its items, are meaningless until close(). Positions
/// count from 0 and must be there. Making and closing it is linear in the length.
class OpenArray {
public:
    /// The array must outlive it. Throws std::bad_alloc.
    explicit OpenArray(Element::TArray& array);

    std::size_t size() const noexcept { return m_size; }
    Element& at(std::size_t position) const;
    /// All items in their order. Linear cost.
    std::vector<const Element*> items() const;
    /// Makes room for a null item before `position`, which may be the end, and returns it. Cost:
    /// the square root of the length, about. Throws std::bad_alloc, leaving all as it was.
    Element& insert(std::size_t position);
    /// Takes the item away and hands its value out. The same cost.
    Element take(std::size_t position);
    /// Gives the array its order. Nothing may follow. Throws std::bad_alloc with nothing done.
    void close();

private:
    using Piece = std::vector<Element*>;

    struct Spot {
        std::size_t piece;
        std::size_t position;
    };

    Spot spotOf(std::size_t position) const;
    Element& newItem();
    void split(std::size_t piece);

    Element::TArray& m_array;
    std::vector<Piece> m_pieces;  ///< at least one; none is empty unless it is the only one
    std::vector<Element*> m_unused;
    std::size_t m_size;
};

}  // namespace ko::Orvid
