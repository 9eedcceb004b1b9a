// SPDX-License-Identifier: MIT
//
// NodeList, the elements that a query selects, up to as many as are wanted.

#pragma once

#include <ko/Orvid/Element.h>

#include <cstddef>
#include <vector>

namespace ko::Orvid {

struct NodeList {
    std::vector<const Element*> nodes;
    std::size_t capacity = 0;

    bool isFull() const noexcept { return nodes.size() >= capacity; }
    void add(const Element& node) { nodes.push_back(&node); }
    /// Makes an empty list of it.
    void reset(std::size_t most) noexcept {
        nodes.clear();
        capacity = most;
    }
};

}  // namespace ko::Orvid
