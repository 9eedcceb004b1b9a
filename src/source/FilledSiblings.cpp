// SPDX-License-Identifier: MIT
//
// Siblings listed by kind, once for each parent.

#include "source/FilledSiblings.h"

#include <algorithm>
#include <iterator>

#include "source/Habits.h"

namespace ko::Orvid {

namespace {

ContainerKind kindOf(const SourceMap& map, std::uint32_t container) {
    if (map.isObject(container)) {
        return ContainerKind::object;
    }
    return holdsContainer(map, container) ? ContainerKind::array : ContainerKind::scalars;
}

}  // namespace

const FilledSiblings::Kinds& FilledSiblings::kindsIn(std::uint32_t parent) {
    const auto [known, isNew] = m_kinds.try_emplace(parent);
    if (isNew) {
        std::size_t position = 0;
        for (std::uint32_t child = parent + 1; child < m_map.next(parent);
             child = m_map.next(child)) {
            if (m_map.isContainer(child) && m_map.hasChildren(child)) {
                const auto kind = static_cast<std::size_t>(kindOf(m_map, child));
                known->second[kind].push_back({position, child});
            }
            ++position;
        }
    }
    return known->second;
}

std::uint32_t FilledSiblings::nearest(std::uint32_t parent, std::size_t position,
                                      ContainerKind kind) {
    const std::vector<Sibling>& siblings = kindsIn(parent)[static_cast<std::size_t>(kind)];
    if (siblings.empty()) {
        return SourceMap::k_none;
    }
    const auto after = std::upper_bound(
        siblings.begin(), siblings.end(), position,
        [](std::size_t place, const Sibling& sibling) { return place < sibling.position; });
    return after == siblings.begin() ? after->value : std::prev(after)->value;
}

}  // namespace ko::Orvid
