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
    static void inArray(Element& item, const ParentLink& parent, std::size_t position) noexcept {
        item.m_link = &parent;
        item.m_key = nullptr;
        item.m_index = static_cast<unsigned int>(position);
    }

    /// `key` is that of the member, beside the element.
    static void inObject(Element& member, const ParentLink& parent,
                         const std::string& key) noexcept {
        member.m_link = &parent;
        member.m_key = &key;
        member.m_index = k_noIndex;
    }

    /// What all items of a copied array report.
    static void withoutPosition(Element& item) noexcept { item.m_index = 0; }

    /// Makes `parent` the parent of a container and so of all its children, in constant time.
    template<class Container>
    static void moveTo(Container& container, Element* parent) noexcept {
        container.moveTo(parent);
    }
};

}  // namespace ko::Orvid
