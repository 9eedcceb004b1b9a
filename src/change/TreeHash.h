// SPDX-License-Identifier: MIT
//
// Hashes of all containers of a tree, worked out in one walk: a quick way to tell trees apart.

#pragma once

#include <ko/Orvid/Element.h>

#include <cstddef>
#include <unordered_map>

namespace ko::Orvid {

/// Knows the hash of every element of the trees that were added. Elements that treesEqual() finds
/// the same by their text have the same hash.
class TreeHashes {
public:
    /// Linear in the size of the tree. Does not recurse.
    void add(const Element& root);

    std::size_t of(const Element& element) const;

private:
    std::unordered_map<const Element*, std::size_t> m_containers;
};

}  // namespace ko::Orvid
