// SPDX-License-Identifier: MIT
//
// FilledSiblings, the containers with values that stand beside one that had none: it is laid out as
// the nearest of its kind.

#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <unordered_map>
#include <vector>

#include "source/SourceMap.h"

namespace ko::Orvid {

enum class ContainerKind {
    object,
    scalars,  ///< an array that holds no containers
    array     ///< one that does, or holds many scalars
};

class FilledSiblings {
public:
    explicit FilledSiblings(const SourceMap& map) : m_map(map) {}

    /// Of the children of `parent` that are containers of the kind and have children, the last one
    /// up to `position`, or else the first one after it; SourceMap::k_none where there is none. The
    /// first call for a parent is linear in the number of its children, the others logarithmic.
    std::uint32_t nearest(std::uint32_t parent, std::size_t position, ContainerKind kind);

private:
    struct Sibling {
        std::size_t position;
        std::uint32_t value;
    };
    using Kinds = std::array<std::vector<Sibling>, 3>;

    const Kinds& kindsIn(std::uint32_t parent);

    const SourceMap& m_map;
    std::unordered_map<std::uint32_t, Kinds> m_kinds;
};

}  // namespace ko::Orvid
