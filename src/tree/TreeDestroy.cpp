// SPDX-License-Identifier: MIT
//
// Destroying a tree, from the leaves up. The way back up is kept in the containers themselves: what
// a container that is being emptied names as its parent is the element to go on with after it.

#include <ko/Orvid/Array.h>
#include <ko/Orvid/Object.h>

#include <cstddef>
#include <utility>

#include "tree/Place.h"
#include "tree/Tree.h"

namespace ko::Orvid {

namespace {

/// Whether this is a container, and one that was not lost when memory ran out.
bool hasPayload(const Element::SData& data) noexcept {
    return (data.type == etArray && data.value.array != nullptr) ||
           (data.type == etObject && data.value.object != nullptr);
}

class Demolition {
public:
    explicit Demolition(SlabArena::Freeing& freeing) : m_freeing(freeing) {}

    void run(Element& root) noexcept {
        enter(root, nullptr);
        while (m_current != nullptr) {
            if (m_current->type() == etArray) {
                goOn(*m_current->data().value.array);
            } else {
                goOn(*m_current->data().value.object);
            }
        }
    }

private:
    /// `element` is a container whose payload is there.
    void enter(Element& element, Element* after) noexcept {
        if (element.type() == etArray) {
            Place::moveTo(*element.data().value.array, after);
        } else {
            Place::moveTo(*element.data().value.object, after);
        }
        m_current = &element;
    }

    // A container that holds scalars only goes with its siblings, without being entered.

    template<class Container>
    void goOn(Container& container) noexcept {
        if (Element* const child = releaseChildren(container, true)) {
            enter(*child, m_current);
        } else {
            leave(container);
        }
    }

    /// Releases what is in the children, from the last one on, and returns the container that stops
    /// it, or null. Where the container `isEntered`, that one becomes its last child.
    Element* releaseChildren(Element::TArray& array, bool isEntered) noexcept {
        const bool isLoose = Place::isLoose(array);
        for (std::size_t size = array.size(); size != 0;) {
            const auto items = Place::stretchAt(array, size - 1);
            for (; size != items.begin; --size) {
                Element* const item = items.first + (size - 1 - items.begin);
                if (!release(item->data(), isEntered)) {
                    Place::shorten(array, size);
                    return item;
                }
                if (isLoose) {
                    item->data() = Element::SData();
                }
            }
        }
        Place::shorten(array, 0);
        return nullptr;
    }

    Element* releaseChildren(Element::TObject& object, bool isEntered) noexcept {
        for (auto member = object.end(); member != object.begin();) {
            Element& value = (--member)->second;
            if (release(value.data(), isEntered)) {
                value.data() = Element::SData();
            } else {
                while (isEntered && &Place::lastOf(object) != &value) {
                    Place::removeLast(object);
                }
                return &value;
            }
        }
        return nullptr;
    }

    /// Releases the payload, unless it is a container: of these, only those that hold scalars go,
    /// and that only with `takesContainers`. Returns whether it is gone; the record stays as it is.
    bool release(const Element::SData& data, bool takesContainers) noexcept {
        if (data.type == etNumber) {
            if (data.value.number != nullptr) {
                data.value.number->~Number();
                m_freeing.release(data.value.number, sizeof(Number));
            }
        } else if (data.type == etString) {
            deleteString(data.value.string, m_freeing);
        } else if (hasPayload(data)) {
            return takesContainers && (data.type == etArray ? releaseFlat(*data.value.array)
                                                            : releaseFlat(*data.value.object));
        }
        return true;
    }

    template<class Container>
    bool releaseFlat(Container& container) noexcept {
        if (releaseChildren(container, false) != nullptr) {
            return false;
        }
        delete &container;
        return true;
    }

    template<class Container>
    void leave(Container& container) noexcept {
        Element* const after = container.parent();
        delete &container;
        m_current->data() = Element::SData();
        m_current = after;
    }

    SlabArena::Freeing& m_freeing;
    Element* m_current = nullptr;
};

}  // namespace

void destroyTree(Element::SData& data) noexcept {
    if (hasPayload(data)) {
        SlabArena::Freeing freeing;
        Element root;
        std::swap(root.data(), data);
        Demolition(freeing).run(root);
    }
}

}  // namespace ko::Orvid
