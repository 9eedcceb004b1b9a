// SPDX-License-Identifier: MIT
//
// Place, the one writer of an element's parent, key and index.
//
// The invariant: an element in an array has that array's parent, an empty key, and its position as
// index (0 right after a copy); an element in an object has that object's parent, its member's key,
// and no index; any other element has no parent. Only the containers call this. The exceptions are
// in Strays.h.

#pragma once

#include <ko/Orvid/Array.h>
#include <ko/Orvid/Element.h>
#include <ko/Orvid/Object.h>

#include <cstddef>
#include <string>

namespace ko::Orvid {

struct Place {
    /// `parent` is the container's field, which children refer to: it can take another parent
    /// without touching them.
    static void inArray(Element& item, Element* const& parent, std::size_t position) noexcept {
        item.m_link = &parent;
        item.m_key = nullptr;
        item.m_index = static_cast<unsigned int>(position);
    }

    /// `key` is that of the member, beside the element.
    static void inObject(Element& member, Element* const& parent, const std::string& key) noexcept {
        member.m_link = &parent;
        member.m_key = &key;
        member.m_index = k_noIndex;
    }

    /// What all items of a copied array report.
    static void withoutPosition(Element& item) noexcept { item.m_index = 0; }

    /// Makes `parent` the parent of a container and so of all its children, in constant time.
    template<class Container>
    static void moveTo(Container& container, Element* parent) noexcept {
        container.m_parent = parent;
    }

    /// Where the children of the container find their parent.
    template<class Container>
    static Element* const& linkOf(const Container& container) noexcept {
        return container.m_parent;
    }

    /// Where the element finds its parent; null when it has none.
    static Element* const* linkOf(const Element& child) noexcept { return child.m_link; }

    // The end of a container that is being destroyed.

    template<class T>
    static Element& lastOf(Array<T>& array) noexcept {
        return array.back();
    }
    template<class T>
    static void removeLast(Array<T>& array) noexcept {
        array.Array<T>::pop_back();
    }
    template<class Key, class Value, class Compare>
    static Element& lastOf(Object<Key, Value, Compare>& object) noexcept {
        return object.lastMember().second;
    }
    template<class Key, class Value, class Compare>
    static void removeLast(Object<Key, Value, Compare>& object) noexcept {
        object.removeLastMember();
    }

    /// An element that finds its parent at `from` finds it at `to` from now on.
    static void relink(Element& child, Element* const* from, Element* const* to) noexcept {
        if (child.m_link == from) {
            child.m_link = to;
        }
    }
};

}  // namespace ko::Orvid
