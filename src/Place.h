// SPDX-License-Identifier: MIT
//
// Place, the one writer of an element's parent, key and index.
//
// The invariant: an element in an array has that array's parent, an empty key, and its position as
// index (0 right after a copy); an element in an object has that object's parent, its member's key,
// and no index; any other element has no parent. Only the containers call this.

#pragma once

#include <ko/Orvid/Element.h>

#include <cstddef>
#include <string>

namespace ko::Orvid {

struct Place {
    static void inArray(Element& item, Element* parent, std::size_t position) noexcept {
        item.m_parent = parent;
        item.m_key.clear();
        item.m_index = static_cast<unsigned int>(position);
    }

    /// Throws std::bad_alloc, leaving the place as it was.
    static void inObject(Element& member, Element* parent, const std::string& key) {
        member.m_key = key;
        member.m_parent = parent;
        member.m_index = k_noIndex;
    }
};

}  // namespace ko::Orvid
