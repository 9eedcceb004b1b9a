// SPDX-License-Identifier: MIT
//
// Destroying a tree, from the leaves up. The way back up is kept in the containers themselves: what
// a container that is being emptied names as its parent is the element to go on with after it.

#include <ko/Orvid/Array.h>
#include <ko/Orvid/Object.h>

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

    // Remove children up to one that has children, or all and then the container.

    void goOn(Element::TArray& array) noexcept {
        for (std::size_t size = array.size(); size != 0; --size) {
            Element& item = array[size - 1];
            if (hasPayload(item.data())) {
                Place::shorten(array, size);
                return enter(item, m_current);
            }
            release(item.data());
            item.data() = Element::SData();
        }
        Place::shorten(array, 0);
        leave(array);
    }

    void goOn(Element::TObject& object) noexcept {
        for (auto member = object.end(); member != object.begin();) {
            Element& value = (--member)->second;
            if (hasPayload(value.data())) {
                while (&Place::lastOf(object) != &value) {
                    Place::removeLast(object);
                }
                return enter(value, m_current);
            }
            release(value.data());
            value.data() = Element::SData();
        }
        leave(object);
    }

    /// Of no container.
    void release(const Element::SData& data) noexcept {
        if (data.type == etNumber && data.value.number != nullptr) {
            data.value.number->~Number();
            m_freeing.release(data.value.number, sizeof(Number));
        } else if (data.type == etString) {
            deleteString(data.value.string, m_freeing);
        }
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
