// SPDX-License-Identifier: MIT
//
// Queries that edit. What is selected may lie in each other; only outermost elements are removed
// or overwritten, so that none is touched after it is gone.

#include <ko/Orvid/JsonPath.h>

#include <ko/Orvid/Array.h>
#include <ko/Orvid/Exception.h>
#include <ko/Orvid/Object.h>

#include <algorithm>
#include <cstddef>
#include <functional>
#include <unordered_set>
#include <utility>
#include <vector>

#include "tree/ValueBefore.h"

namespace ko::Orvid {

namespace {

/// What a query selects, each element once, in the order of the results.
class Matches {
public:
    explicit Matches(const std::vector<Element*>& selected) {
        for (Element* const element : selected) {
            if (m_set.insert(element).second) {
                m_order.push_back(element);
            }
        }
    }

    const std::vector<Element*>& all() const { return m_order; }
    bool contains(const Element* element) const { return m_set.count(element) > 0; }

    /// Those that lie in no other.
    std::vector<Element*> outermost() const {
        std::vector<Element*> result;
        std::unordered_set<const Element*> free;  // looked at already, with nothing selected above
        for (Element* const element : m_order) {
            if (!liesInAnother(*element, free)) {
                result.push_back(element);
            }
        }
        return result;
    }

private:
    bool liesInAnother(const Element& element, std::unordered_set<const Element*>& free) const {
        std::vector<const Element*> way;
        for (const Element* above = element.parent(); above != nullptr; above = above->parent()) {
            if (contains(above)) {
                return true;
            }
            if (free.count(above) > 0) {
                break;
            }
            way.push_back(above);
        }
        free.insert(way.begin(), way.end());
        return false;
    }

    std::unordered_set<const Element*> m_set;
    std::vector<Element*> m_order;
};

void removeItems(Element& parent, const Matches& matches) {
    const auto isMatch = [&matches](const Element& item) { return matches.contains(&item); };
    Element::TArray& items = parent.array();
    // Each pass leaves at most half of a row of neighbours.
    while (std::any_of(items.begin(), items.end(), isMatch)) {
        items.removeMatches(isMatch);
    }
}

/// Each once.
std::vector<Element*> parentArrays(const std::vector<Element*>& elements) {
    std::vector<Element*> arrays;
    for (Element* const element : elements) {
        if (element->parent()->isArray()) {
            arrays.push_back(element->parent());
        }
    }
    std::sort(arrays.begin(), arrays.end(), std::less<>());
    arrays.erase(std::unique(arrays.begin(), arrays.end()), arrays.end());
    return arrays;
}

std::size_t depthOf(const Element& element) {
    std::size_t depth = 0;
    for (const Element* above = element.parent(); above != nullptr; above = above->parent()) {
        ++depth;
    }
    return depth;
}

}  // namespace

std::size_t JsonPath::remove(Element& root) const {
    const Matches matches(select(root));
    if (matches.contains(&root)) {
        throw Exception("The whole document cannot be removed", &root);
    }
    const std::vector<Element*> removed = matches.outermost();
    const std::vector<Element*> arrays = parentArrays(removed);
    for (Element* const element : removed) {
        if (element->parent()->isObject()) {
            Element::TObject& members = element->parent()->object();
            members.erase(members.find(element->memberKey()));
        }
    }
    for (Element* const array : arrays) {
        removeItems(*array, matches);
    }
    return matches.all().size();
}

std::size_t JsonPath::update(Element& root, const Element& value) const {
    const Matches matches(select(root));
    const ValueBefore before(value, root);
    for (Element* const element : matches.outermost()) {
        before.copyTo(*element);
    }
    return matches.all().size();
}

std::size_t JsonPath::updateEach(Element& root, const std::function<void(Element&)>& change) const {
    const Matches matches(select(root));
    std::vector<std::pair<std::size_t, Element*>> byDepth;
    for (Element* const element : matches.all()) {
        byDepth.emplace_back(depthOf(*element), element);
    }
    std::stable_sort(byDepth.begin(), byDepth.end(),
                     [](const auto& a, const auto& b) { return a.first > b.first; });
    for (const auto& [depth, element] : byDepth) {
        change(*element);
    }
    return matches.all().size();
}

}  // namespace ko::Orvid
