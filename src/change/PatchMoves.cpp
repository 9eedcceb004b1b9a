// SPDX-License-Identifier: MIT
//
// Elements and where their values came from.

#include "change/PatchMoves.h"

#include <ko/Orvid/Array.h>
#include <ko/Orvid/Number.h>
#include <ko/Orvid/Object.h>

#include <algorithm>
#include <string_view>
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

/// The same for equal values, and mostly another for others. Constant cost: no more than the first
/// levels of small containers and the beginning of strings are looked at.
std::size_t likeness(const Element& value, int levels = 2) {
    constexpr std::size_t k_few = 8;
    constexpr std::size_t k_shortText = 64;
    const std::size_t size = value.size();
    const auto textHash = [](std::string_view text) {
        return std::hash<std::string_view>()(text.substr(0, k_shortText));
    };
    std::size_t result = size * 8 + static_cast<std::size_t>(value.type());
    if (value.isString()) {
        return result ^ textHash(value.string());
    }
    if (value.isNumber()) {
        const bool isShort = value.number().textView().size() <= k_shortText;
        return isShort ? std::hash<ko::Orvid::Number>()(value.number()) : result;
    }
    if (levels > 0 && size <= k_few && value.isArray()) {
        for (const Element& item : value.array()) {
            result = result * 31 + likeness(item, levels - 1);
        }
    } else if (levels > 0 && size <= k_few && value.isObject()) {
        for (const auto& [key, member] : value.object()) {
            result += textHash(key) ^ likeness(member, levels - 1);
        }
    }
    return result;
}

/// How many steps of places are noted at least. Deep in a document each place has many of them, and
/// all together could take the square of its size.
constexpr std::size_t k_mostSteps = 100000;

class Allowance {
public:
    explicit Allowance(std::size_t steps) : m_steps(steps) {}

    bool isUsedUp() const { return m_steps == 0; }
    void use(const MovedPlaces::value_type& place) {
        m_steps -= std::min(m_steps, place.first.steps().size() + place.second.steps().size());
    }

private:
    std::size_t m_steps;
};

/// An element that has a value from before the patch, and whether that came from elsewhere.
struct Found {
    const Element* element;
    bool isMoved;
};

}  // namespace

PatchMoves::PatchMoves(const Element& root) {
    forEachElement(root, [this](const Element& element) { m_first.push_back(&element); });
}

void PatchMoves::addWithin(const Element& value) {
    forEachElement(value, [this](const Element& element) { add(element); });
}

PatchMoves::Origin PatchMoves::at(const Element& element) const {
    const auto found = m_origins.find(&element);
    return found == m_origins.end() ? Origin{&element} : found->second;
}

void PatchMoves::move(const Element* origin, const Element& element) {
    m_origins[&element] = {origin, true, true};
}

/// The element, and what holds it, is what it was before. Not up to the root, which may be far.
void PatchMoves::keep(const Element* element) {
    constexpr int k_levels = 32;
    for (int level = 0; element != nullptr && level < k_levels; ++level) {
        Origin& origin = m_origins.emplace(element, Origin{element}).first->second;
        if (origin.isKnown) {
            break;
        }
        origin.isKnown = true;
        element = element->parent();
    }
}

void PatchMoves::edit(const Element* container, const Element& value) {
    keep(container);
    if (container != nullptr && container->isArray()) {
        m_edits[&container->array()].insert(likeness(value));
    }
}

void PatchMoves::keepEqualItems(const Element& root) {
    forEachElement(root, [this](const Element& element) {
        const auto found = element.isArray() ? m_edits.find(&element.array()) : m_edits.end();
        if (found == m_edits.end()) {
            return;
        }
        for (const Element& item : element.array()) {
            if (at(item).element == nullptr) {
                found->second.insert(likeness(item));  // it may have changed since it came
            }
        }
        for (const Element& item : element.array()) {
            if (found->second.count(likeness(item)) > 0) {
                keep(&item);
            }
        }
    });
}

/// The same for the value that an item had at first which left its array: it may have changed
/// before.
void PatchMoves::keepFormerEquals(const Element& former, const Element& root) {
    std::unordered_map<const Element*, std::unordered_set<std::size_t>> leftByArray;
    auto first = m_first.begin();
    forEachElement(former, [&](const Element& element) {
        const bool hasLeft = m_left.count(*first++) > 0;
        if (hasLeft && element.parent() != nullptr && element.parent()->isArray()) {
            leftByArray[element.parent()].insert(likeness(element));
        }
    });
    if (leftByArray.empty()) {
        return;
    }
    std::unordered_set<const Element*> equals;
    first = m_first.begin();
    forEachElement(former, [&](const Element& element) {
        const auto left = leftByArray.find(element.parent());
        if (left != leftByArray.end() && left->second.count(likeness(element)) > 0) {
            equals.insert(*first);
        }
        ++first;
    });
    forEachElement(root, [&](const Element& element) {
        if (equals.count(at(element).element) > 0) {
            keep(&element);
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
    keepEqualItems(root);
    keepFormerEquals(former, root);
    std::unordered_map<const Element*, Found> foundByFirst;
    forEachElement(root, [&](const Element& element) {
        const Origin origin = at(element);
        if (origin.isKnown && origin.element != nullptr) {
            foundByFirst.emplace(origin.element, Found{&element, origin.isMoved});
        }
    });
    Allowance forMoved(k_mostSteps + 4 * m_first.size());
    Allowance forKept(k_mostSteps);
    MovedPlaces places;
    auto first = m_first.begin();
    forEachElement(former, [&](const Element& element) {
        const auto found = foundByFirst.find(*first++);
        if (found == foundByFirst.end()) {
            return;
        }
        const auto [now, isMoved] = found->second;
        Allowance& allowance = isMoved ? forMoved : forKept;
        if (!allowance.isUsedUp()) {
            places.emplace_back(JsonPointer::of(element),
                                now == &root ? JsonPointer() : JsonPointer::of(*now, &root));
            allowance.use(places.back());
        }
    });
    return places;
}

}  // namespace ko::Orvid
