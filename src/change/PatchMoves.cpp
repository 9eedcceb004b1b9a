// SPDX-License-Identifier: MIT
//
// Elements and where their values came from.

#include "change/PatchMoves.h"

#include <ko/Orvid/Array.h>
#include <ko/Orvid/Object.h>

#include <utility>

namespace ko::Orvid {

namespace {

/// Visits an element and all below it, trees of one shape in one order.
template<class Visit>
void forEachElement(const Element& root, const Visit& visit) {
    std::vector<const Element*> open{&root};
    while (!open.empty()) {
        const Element& element = *open.back();
        open.pop_back();
        visit(element);
        if (element.isArray()) {
            for (const Element& item : element.array()) {
                open.push_back(&item);
            }
        } else if (element.isObject()) {
            for (const auto& member : element.object()) {
                open.push_back(&member.second);
            }
        }
    }
}

}  // namespace

PatchMoves::PatchMoves(const Element& root) {
    forEachElement(root, [this](const Element& element) { m_first.push_back(&element); });
}

void PatchMoves::addWithin(const Element& value) {
    forEachElement(value, [this](const Element& element) { add(element); });
}

PatchMoves::Origin PatchMoves::at(const Element& element) const {
    const auto found = m_origins.find(&element);
    return found == m_origins.end() ? Origin{&element, false} : found->second;
}

void PatchMoves::move(const Element* origin, const Element& element) {
    m_origins[&element] = {origin, true};
    keep(element.parent());
}

void PatchMoves::keep(const Element* container) {
    for (; container != nullptr; container = container->parent()) {
        Origin& origin = m_origins.emplace(container, Origin{container, false}).first->second;
        if (origin.isKnown) {
            break;
        }
        origin.isKnown = true;
    }
}

void PatchMoves::mixUp(const Element* container, const Element& value) {
    if (container != nullptr && container->isArray()) {
        m_hashes[&container->array()].insert(std::hash<Element>()(value));
    }
}

void PatchMoves::keepMixedUp(const Element& root) {
    forEachElement(root, [this](const Element& element) {
        const auto found = element.isArray() ? m_hashes.find(&element.array()) : m_hashes.end();
        if (found == m_hashes.end()) {
            return;
        }
        for (const Element& item : element.array()) {
            if (found->second.count(std::hash<Element>()(item)) > 0) {
                keep(&item);
            }
        }
    });
}

const Element* PatchMoves::originOf(const Element& element) const { return at(element).element; }

void PatchMoves::reorder(const std::vector<const Element*>& from, const Element::TArray& array) {
    std::vector<Origin> origins;
    origins.reserve(from.size());
    for (const Element* const element : from) {
        origins.push_back(at(*element));
    }
    auto origin = origins.begin();
    for (const Element& item : array) {
        m_origins[&item] = *origin++;
    }
}

MovedPlaces PatchMoves::places(const Element& former, const Element& root) {
    keepMixedUp(root);
    std::unordered_map<const Element*, const Element*> nowByFirst;
    forEachElement(root, [&](const Element& element) {
        const Origin origin = at(element);
        if (origin.isKnown && origin.element != nullptr) {
            nowByFirst.emplace(origin.element, &element);
        }
    });
    MovedPlaces places;
    auto first = m_first.begin();
    forEachElement(former, [&](const Element& element) {
        const auto now = nowByFirst.find(*first++);
        if (now != nowByFirst.end()) {
            const bool isRoot = now->second == &root;
            places.emplace_back(JsonPointer::of(element),
                                isRoot ? JsonPointer() : JsonPointer::of(*now->second, &root));
        }
    });
    return places;
}

}  // namespace ko::Orvid
