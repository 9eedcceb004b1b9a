// SPDX-License-Identifier: MIT
//
// What the root was: mostly the root, whose surroundings stay whatever becomes of it, or else a
// value that stood below it, whose comments come along beside them.

#include <ko/Orvid/Array.h>

#include "source/ChildCursor.h"
#include "source/Counterparts.h"

namespace ko::Orvid {

namespace {

constexpr std::uint32_t k_none = SourceMap::k_none;

}  // namespace

/// An array is compared with the one that was the root, so it is looked for before that.
void Counterparts::pairRoot() {
    const Element& root = *m_new[0].element;
    if (m_new[0].counterpart == k_none && root.isArray() && m_old[0].hash != m_new[0].hash) {
        const std::uint32_t array = arrayBefore(root);
        if (array != k_none && array != 0) {
            pair(array, 0);
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

/// The array in the text that has the value of this one, and the same first item; k_none where
/// there is none.
std::uint32_t Counterparts::arrayBefore(const Element& array) const {
    const Element* const first = array.array().empty() ? nullptr : &array.array().front();
    for (std::uint32_t value = 1; first != nullptr && value < m_map.size(); ++value) {
        const std::uint32_t parent = m_old[value].parent;
        if (m_map[value].element() == first && m_old[parent].hash == m_new[0].hash) {
            return parent;
        }
    }
    return k_none;
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
