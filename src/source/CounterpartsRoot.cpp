// SPDX-License-Identifier: MIT
//
// What the root was: mostly the root, whose surroundings stay whatever becomes of it, or else a
// value that stood below it, whose comments come along beside them.

#include <algorithm>

#include "source/ChildCursor.h"
#include "source/Counterparts.h"

namespace ko::Orvid {

namespace {

constexpr std::uint32_t k_none = SourceMap::k_none;

}  // namespace

/// A container is compared with the one that was the root, so it is looked for before that.
void Counterparts::pairRoot() {
    if (m_new[0].counterpart == k_none && m_old[0].hash != m_new[0].hash) {
        const std::uint32_t container = containerMovedToRoot();
        if (container != k_none) {
            pair(container, 0);
        }
    }
    m_old[0].counterpart = 0;
    if (m_new[0].counterpart == k_none) {
        m_new[0].counterpart = 0;
        if (isSameContainer(0, 0)) {
            pairContents(0, 0);
        }
    }
}

/// The container below the former root that has the value of this one, and its children, which keep
/// their addresses when it moves; k_none where there is none.
std::uint32_t Counterparts::containerMovedToRoot() const {
    const Element* const first = m_new.size() > 1 ? m_new[1].element : nullptr;
    for (std::uint32_t value = 1; first != nullptr && value < m_map.size(); ++value) {
        if (m_map[value].element() == first) {
            const std::uint32_t parent = m_old[value].parent;
            return parent != 0 && hasChildrenOf(parent, 0) ? parent : k_none;
        }
    }
    return k_none;
}

/// Whether the element has the value of that one, and its children at their addresses.
bool Counterparts::hasChildrenOf(std::uint32_t value, std::uint32_t element) const {
    const Numbers before = boundChildren(value);
    const Numbers now = childrenNow(element);
    return m_old[value].hash == m_new[element].hash &&
           std::equal(before.begin(), before.end(), now.begin(), now.end(),
                      [&](std::uint32_t child, std::uint32_t here) {
                          return m_map[child].element() == m_new[here].element;
                      });
}

/// Of a root that holds what another container held, or is a scalar that is left over.
void Counterparts::bringRoot() {
    const std::uint32_t value = m_new[0].counterpart == 0 ? movedToRoot() : k_none;
    if (value != k_none && value != 0 && !isPaired(value)) {
        m_old[value].counterpart = 0;
        m_new[0].counterpart = value;
    }
}

std::uint32_t Counterparts::movedToRoot() const {
    if (isContainer(*m_new[0].element)) {
        return m_new[0].contents;
    }
    const auto lost = m_lostByHash.find(m_new[0].hash);
    const bool isOnly = m_map.isContainer(0) && lost != m_lostByHash.end() &&
                        lost->second.size() == 1 && isTelling(lost->second.front());
    return isOnly ? lost->second.front() : k_none;
}

}  // namespace ko::Orvid
