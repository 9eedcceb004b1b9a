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
#include <cstdint>
#include <string>

namespace ko::Orvid {

struct Place {
    /// `link` is the container's.
    static void inArray(Element& item, const detail::ParentLink& link,
                        std::size_t position) noexcept {
        item.m_link = &link;
        item.m_step = stepOf(position);
    }

    /// `key` is that of the member, beside the element.
    static void inObject(Element& member, const detail::ParentLink& link,
                         const std::string& key) noexcept {
        member.m_link = &link;
        member.m_step = reinterpret_cast<std::uintptr_t>(&key);
    }

    /// What all items of a copied array report.
    static void withoutPosition(Element& item) noexcept { item.m_step = stepOf(0); }

    /// Makes `parent` the parent of a container and so of all its children, in constant time.
    template<class Container>
    static void moveTo(Container& container, Element* parent) noexcept {
        container.parentLink().setParent(parent);
    }
    template<class Container>
    static detail::ParentLink& linkOf(Container& container) noexcept {
        return container.parentLink();
    }

    /// Where the children of the container find their parent.
    template<class Container>
    static const detail::ParentLink& linkOf(const Container& container) noexcept {
        return container.parentLink();
    }

    /// Where the element finds its parent; null when it has none.
    static const detail::ParentLink* linkOf(const Element& child) noexcept { return child.m_link; }
    /// The same to be changed: no container is a constant.
    static detail::ParentLink* linkOf(Element& child) noexcept {
        return const_cast<detail::ParentLink*>(child.m_link);
    }

    /// The items that lie beside the one at the position.
    template<class T>
    static auto stretchAt(const Array<T>& array, std::size_t position) noexcept {
        return array.stretchAt(position);
    }
    /// Whether the items have left their runs.
    template<class T>
    static bool isLoose(const Array<T>& array) noexcept {
        return array.isLoose();
    }

    // The end of a container that is being filled.

    /// Appends a null item.
    template<class T>
    static T& append(Array<T>& array) {
        const std::size_t position = array.size();
        T& item = array.emplaceBack();
        inArray(item, array.parentLink(), position);
        return item;
    }
    /// The same, with the position that all items of a copied array report.
    template<class T>
    static T& appendWithoutPosition(Array<T>& array) {
        T& item = array.emplaceBack();
        relink(item, &array.parentLink());
        withoutPosition(item);
        return item;
    }
    /// Appends a member with a key that is not there yet and a null value.
    template<class Key, class Value, class Compare, class Text>
    static auto& append(Object<Key, Value, Compare>& object, const Text& key) {
        auto& member = object.appendNew(key);
        inObject(member.second, object.parentLink(), member.first);
        return member;
    }

    // The end of a container that is being destroyed.

    /// Forgets the items from `size` on, which own nothing. Those of a loose array are null.
    template<class T>
    static void shorten(Array<T>& array, std::size_t size) noexcept {
        array.shorten(size);
    }
    template<class Key, class Value, class Compare>
    static Element& firstOf(Object<Key, Value, Compare>& object) noexcept {
        return object.firstMember().second;
    }
    template<class Key, class Value, class Compare>
    static void removeFirst(Object<Key, Value, Compare>& object) noexcept {
        object.removeFirstMember();
    }

    /// The element finds its parent there from now on; its key or index stays.
    static void relink(Element& child, const detail::ParentLink* link) noexcept {
        child.m_link = link;
    }

private:
    static std::uintptr_t stepOf(std::size_t position) noexcept { return 2 * position + 1; }
};

}  // namespace ko::Orvid
