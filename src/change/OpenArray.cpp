// SPDX-License-Identifier: MIT
//
// An array's items in pieces of some hundred.

#include "change/OpenArray.h"

#include <iterator>
#include <utility>

#include "tree/TreeMove.h"

namespace ko::Orvid {

namespace {

constexpr std::size_t k_longestPiece = 1024;

template<class T>
auto placeIn(std::vector<T>& list, std::size_t position) {
    return std::next(list.begin(), static_cast<std::ptrdiff_t>(position));
}

}  // namespace

OpenArray::OpenArray(Element::TArray& array) : m_array(array), m_pieces(1), m_size(array.size()) {
    for (Element& item : array) {
        if (m_pieces.back().size() == k_longestPiece / 2) {
            m_pieces.emplace_back();
        }
        m_pieces.back().push_back(&item);
    }
}

OpenArray::Spot OpenArray::spotOf(std::size_t position) const {
    std::size_t piece = 0;
    while (piece + 1 < m_pieces.size() && position >= m_pieces[piece].size()) {
        position -= m_pieces[piece++].size();
    }
    return {piece, position};
}

Element& OpenArray::at(std::size_t position) const {
    const Spot spot = spotOf(position);
    return *m_pieces[spot.piece][spot.position];
}

std::vector<const Element*> OpenArray::items() const {
    std::vector<const Element*> items;
    items.reserve(m_size);
    for (const Piece& piece : m_pieces) {
        items.insert(items.end(), piece.begin(), piece.end());
    }
    return items;
}

Element& OpenArray::newItem() {
    if (m_unused.empty()) {
        // Whatever fails later, the item can be used again.
        m_unused.reserve(m_array.size() + 1);
        m_unused.push_back(&m_array.appendNull());
    }
    return *m_unused.back();
}

Element& OpenArray::insert(std::size_t position) {
    Element& item = newItem();
    Spot spot = spotOf(position);
    if (m_pieces[spot.piece].size() == k_longestPiece) {
        split(spot.piece);
        spot = spotOf(position);
    }
    Piece& piece = m_pieces[spot.piece];
    piece.insert(placeIn(piece, spot.position), &item);
    m_unused.pop_back();
    ++m_size;
    return item;
}

void OpenArray::split(std::size_t piece) {
    const auto middle = placeIn(m_pieces[piece], k_longestPiece / 2);
    Piece second(middle, m_pieces[piece].end());
    m_pieces.insert(placeIn(m_pieces, piece + 1), std::move(second));
    m_pieces[piece].resize(k_longestPiece / 2);
}

Element OpenArray::take(std::size_t position) {
    const Spot spot = spotOf(position);
    Piece& piece = m_pieces[spot.piece];
    Element& item = *piece[spot.position];
    m_unused.push_back(&item);
    piece.erase(placeIn(piece, spot.position));
    if (piece.empty() && m_pieces.size() > 1) {
        m_pieces.erase(placeIn(m_pieces, spot.piece));
    }
    --m_size;
    Element taken;
    swapValues(taken, item);
    return taken;
}

void OpenArray::close() {
    std::vector<Element> values;
    values.reserve(m_size);
    for (const Piece& piece : m_pieces) {
        for (Element* const item : piece) {
            swapValues(values.emplace_back(), *item);
        }
    }
    while (m_array.size() > m_size) {
        m_array.pop_back();
    }
    auto value = values.begin();
    for (Element& item : m_array) {
        swapValues(item, *value++);
    }
}

}  // namespace ko::Orvid
