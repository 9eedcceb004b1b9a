// SPDX-License-Identifier: MIT
//
// Destroying a tree. Children are spliced out of their container into a list of what is to be
// destroyed, so that an element that is destroyed never holds any container with children.

#include <ko/Orvid/Array.h>
#include <ko/Orvid/Object.h>

#include <algorithm>
#include <cstddef>

#include "tree/Tree.h"

namespace ko::Orvid {

namespace {

/// Up to here looking at all children first costs less than splicing them.
constexpr std::size_t k_largestLook = 16;

const Element& elementOf(const Element& item) { return item; }

const Element& elementOf(const Element::TObject::value_type& member) { return member.second; }

template<class Container>
bool holdsFewScalars(const Container& container) {
    return container.size() <= k_largestLook &&
           std::none_of(container.begin(), container.end(),
                        [](const auto& child) { return isContainer(elementOf(child).data()); });
}

class Demolition {
public:
    /// Frees the container itself and keeps its children for run().
    void take(Element::SData& data) noexcept {
        if (data.type == etArray) {
            takeContainer(data.value.array, m_items);
        } else if (data.type == etObject) {
            takeContainer(data.value.object, m_members);
        }
    }

    void run() noexcept {
        while (!m_items.empty() || !m_members.empty()) {
            while (!m_items.empty()) {
                const auto item = m_items.begin();
                take(item->data());
                m_items.erase(item);
            }
            if (!m_members.empty()) {
                const auto member = m_members.begin();
                take(member->second.data());
                m_members.erase(member);
            }
        }
    }

private:
    template<class Container, class List>
    static void takeContainer(Container*& container, List& list) noexcept {
        if (container != nullptr) {
            if (!holdsFewScalars(*container)) {
                container->giveAll(list);
            }
            delete container;
            container = nullptr;
        }
    }

    Element::TArray::TList m_items;
    Element::TObject::TList m_members;
};

}  // namespace

void destroyTree(Element::SData& data) noexcept {
    Demolition demolition;
    demolition.take(data);
    demolition.run();
}

}  // namespace ko::Orvid
