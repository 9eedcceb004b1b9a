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
        moveTree(element.data(), after);
        m_current = &element;
    }

    /// Removes children up to one that has children, or all and then the container.
    template<class Container>
    void goOn(Container& container) noexcept {
        while (!container.empty()) {
            Element& child = Place::lastOf(container);
            if (hasPayload(child.data())) {
                return enter(child, m_current);
            }
            Place::removeLast(container);
        }
        Element* const after = container.parent();
        delete &container;
        m_current->data() = Element::SData();
        m_current = after;
    }

    Element* m_current = nullptr;
};

}  // namespace

void destroyTree(Element::SData& data) noexcept {
    if (hasPayload(data)) {
        Element root;
        std::swap(root.data(), data);
        Demolition().run(root);
    }
}

}  // namespace ko::Orvid
