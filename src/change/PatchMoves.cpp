// SPDX-License-Identifier: MIT
//
// Elements and where their values came from.

#include "change/PatchMoves.h"

#include <ko/Orvid/Array.h>
#include <ko/Orvid/Number.h>
#include <ko/Orvid/Object.h>

#include <algorithm>
#include <iterator>
#include <string>
#include <string_view>
#include <utility>

#include "change/forEachElement.h"

namespace ko::Orvid {

namespace {

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

/// A place that leads nowhere in the document.
JsonPointer nowhereIn(const Element& root) {
    std::string step = "-";
    while (root.isObject() && root.object().contains(step)) {
        step += '-';
    }
    JsonPointer nowhere;
    nowhere.push_back(step);
    return nowhere;
}

/// Places of values: a list that is cut where they have more steps than are allowed.
class PlaceList {
public:
    PlaceList(const Element& root, std::size_t steps)
        : m_root(root), m_nowhere(nowhereIn(root)), m_steps(steps) {}

    /// `now` is null for a value that is gone.
    void add(const Element& before, const Element* now) {
        m_isCut = m_isCut || m_steps == 0;
        if (m_isCut) {
            return;
        }
        m_places.emplace_back(JsonPointer::of(before), now == nullptr ? m_nowhere : placeOf(*now));
        const auto& [from, to] = m_places.back();
        m_steps -= std::min(m_steps, from.steps().size() + to.steps().size());
    }
    /// Whether more were added than are in it.
    bool isCut() const { return m_isCut; }
    void appendTo(MovedPlaces& places) {
        std::move(m_places.begin(), m_places.end(), std::back_inserter(places));
    }

private:
    JsonPointer placeOf(const Element& element) const {
        return &element == &m_root ? JsonPointer() : JsonPointer::of(element, &m_root);
    }

    const Element& m_root;
    const JsonPointer m_nowhere;
    std::size_t m_steps;
    bool m_isCut = false;
    MovedPlaces m_places;
};

}  // namespace

PatchMoves::PatchMoves(const Element& root) {
    forEachElement(root, [this](const Element& element) { m_first.push_back(&element); });
}

void PatchMoves::addWithin(const Element& value) {
    forEachElement(value, [this](const Element& element) { add({}, element); });
}

void PatchMoves::copyWithin(const Element& source, const Element& copy) {
    std::vector<const Element*> copied;
    forEachElement(source, [&](const Element& element) {
        const Origin origin = originOf(element);
        copied.push_back(origin.element == nullptr ? origin.copied : origin.element);
    });
    ++m_copies;
    auto from = copied.begin();
    forEachElement(copy, [&](const Element& element) {
        m_origins[&element] = {nullptr, false, false, *from++, m_copies, &element == &copy};
    });
}

PatchMoves::Origin PatchMoves::originOf(const Element& element) const {
    const auto found = m_origins.find(&element);
    return found == m_origins.end() ? Origin{&element} : found->second;
}

void PatchMoves::move(const Origin& origin, const Element& element) {
    m_origins[&element] = {origin.element, true, true, origin.copied, origin.copy, true};
    m_moved.insert(origin.element);
}

void PatchMoves::overwrite(const Element& element) {
    m_overwritten.insert(originOf(element).element);
    forEachElement(element, [this](const Element& within) {
        m_overwrittenWithin.insert(originOf(within).element);
    });
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

void PatchMoves::leave(const Element& value) {
    edit(value.parent(), value);
    if (value.parent() != nullptr && value.parent()->isArray()) {
        m_left.insert(originOf(value).element);
    }
}

void PatchMoves::keepEqualItems(const Element& root) {
    if (m_edits.empty()) {
        return;
    }
    forEachElement(root, [this](const Element& element) {
        const auto found = element.isArray() ? m_edits.find(&element.array()) : m_edits.end();
        if (found == m_edits.end()) {
            return;
        }
        Likenesses& added = m_added[originOf(element).element];
        for (const Element& item : element.array()) {
            if (originOf(item).element == nullptr) {
                added.insert(likeness(item));  // it may have changed since it came
            }
        }
        found->second.insert(added.begin(), added.end());
        for (const Element& item : element.array()) {
            if (found->second.count(likeness(item)) > 0) {
                keep(&item);
            }
        }
    });
}

/// The same for the value that an item had at first which left its array: it may have changed
/// before. Where a new item is like it, any items that are alike are kept: the new one may be taken
/// for it, and then they would be taken for each other.
void PatchMoves::keepFormerEquals(const Element& former, const Element& root) {
    if (m_left.empty()) {
        return;
    }
    FormerArrays arrays;
    auto first = m_first.begin();
    forEachElement(former, [&](const Element& element) {
        const bool hasLeft = m_left.count(*first++) > 0;
        if (hasLeft && element.parent() != nullptr && element.parent()->isArray()) {
            arrays[element.parent()].left.insert(likeness(element));
        }
    });
    if (arrays.empty()) {
        return;
    }
    const std::unordered_set<const Element*> equals = equalItems(former, arrays);
    forEachElement(root, [&](const Element& element) {
        if (equals.count(originOf(element).element) > 0) {
            keep(&element);
        }
    });
}

/// By their first elements.
std::unordered_set<const Element*> PatchMoves::equalItems(const Element& former,
                                                          FormerArrays& arrays) const {
    std::unordered_set<const Element*> equals;
    auto first = m_first.begin();
    forEachElement(former, [&](const Element& element) {
        const Element* const origin = *first++;
        const auto array = arrays.find(&element);
        if (array != arrays.end()) {
            array->second.isRefilled = isRefilled(origin, array->second.left);
        }
        const auto holder = arrays.find(element.parent());
        if (holder == arrays.end()) {
            return;
        }
        const std::size_t value = likeness(element);
        if (holder->second.left.count(value) > 0) {
            equals.insert(origin);
        } else if (holder->second.isRefilled) {
            const auto [earlier, isFirst] = holder->second.items.emplace(value, origin);
            if (!isFirst) {
                equals.insert({earlier->second, origin});
            }
        }
    });
    return equals;
}

/// Whether an item that was added to the array is like one that left it.
bool PatchMoves::isRefilled(const Element* array, const Likenesses& left) const {
    const auto added = m_added.find(array);
    return added != m_added.end() &&
           std::any_of(added->second.begin(), added->second.end(),
                       [&](std::size_t value) { return left.count(value) > 0; });
}

void PatchMoves::reorder(const std::vector<const Element*>& from, const Element::TArray& array) {
    std::vector<Origin> origins;
    origins.reserve(from.size());
    for (const Element* const element : from) {
        origins.push_back(originOf(*element));
    }
    auto origin = origins.begin();
    for (const Element& item : array) {
        m_origins[&item] = *origin++;
    }
}

PatchMoves::FoundByFirst PatchMoves::known(const Element& former, const Element& root) const {
    FoundByFirst found;
    forEachElement(root, [&](const Element& element) {
        const Origin origin = originOf(element);
        if (origin.isKnown && origin.element != nullptr) {
            found.emplace(origin.element, Found{&element, origin.isMoved});
        }
    });
    findCopies(former, root, found);
    return found;
}

/// The first copy of a value that was removed is that value. What lies in a container as it did
/// before is listed only where that has changed, and so after what was moved.
void PatchMoves::findCopies(const Element& former, const Element& root, FoundByFirst& found) const {
    const CopiedValues copied(copiesOfRemoved(root), m_first, former);
    for (const CopiedValues::Value& value : copied) {
        const Origin ofCopy = originOf(*value.copy);
        const bool isMoved = ofCopy.isCopyItself || ofCopy.isKnown ||
                             m_moved.count(value.first) > 0 || !copied.liesAsBefore(*value.copy);
        if (isMoved || copied.hasChanged(*value.copy->parent())) {
            found.emplace(value.first, Found{value.copy, isMoved});
        }
    }
}

/// The first copy of each value that is no more, unless another was moved onto it.
CopiedValues::ByFirst PatchMoves::copiesOfRemoved(const Element& root) const {
    CopiedValues::ByFirst copies;
    if (m_copies == 0) {
        return copies;
    }
    std::unordered_set<const Element*> others = m_overwrittenWithin;
    others.insert(nullptr);
    forEachElement(root, [&](const Element& element) { others.insert(originOf(element).element); });
    forEachElement(root, [&](const Element& element) {
        const Origin origin = originOf(element);
        if (others.count(origin.copied) == 0) {
            const Element*& first = copies.emplace(origin.copied, &element).first->second;
            first = originOf(*first).copy <= origin.copy ? first : &element;
        }
    });
    return copies;
}

/// Values that are gone, and the root, are listed only after a complete list of what was moved: the
/// root says that it is complete.
MovedPlaces PatchMoves::places(const Element& former, const Element& root) {
    keepEqualItems(root);
    keepFormerEquals(former, root);
    const FoundByFirst foundByFirst = known(former, root);
    PlaceList moved(root, k_mostSteps + 4 * m_first.size());
    PlaceList kept(root, k_mostSteps);
    PlaceList gone(root, k_mostSteps);
    auto first = m_first.begin();
    forEachElement(former, [&](const Element& element) {
        const Element* const origin = *first++;
        const auto found = foundByFirst.find(origin);
        if (origin == m_first.front()) {
            return;
        }
        if (found != foundByFirst.end()) {
            (found->second.isMoved ? moved : kept).add(element, found->second.element);
        } else if (m_moved.count(origin) > 0 || m_overwritten.count(origin) > 0) {
            gone.add(element, nullptr);
        }
    });
    MovedPlaces places;
    moved.appendTo(places);
    kept.appendTo(places);
    if (!moved.isCut()) {
        gone.appendTo(places);
        const bool isSameRoot = originOf(root).element == m_first.front();
        places.emplace_back(JsonPointer(), isSameRoot ? JsonPointer() : nowhereIn(root));
    }
    return places;
}

}  // namespace ko::Orvid
