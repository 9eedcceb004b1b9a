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
#include <limits>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

#include "query/Evaluation.h"
#include "tree/Containment.h"
#include "tree/Snapshot.h"

namespace ko::Orvid {

namespace {

/// What a query selects, each element once, in the order of the results. The steps up from there
/// count as looks at elements, like those of the selection; none is made twice.
class Matches {
public:
    Matches(const CompiledQuery& compiled, Element& root)
        : m_root(root), m_visits(compiled.options.maxVisits) {
        constexpr std::size_t all = std::numeric_limits<std::size_t>::max();
        for (const Element* const found : evaluate(compiled, root, all, m_visits)) {
            if (m_set.insert(found).second) {
                m_order.push_back(const_cast<Element*>(found));
            }
        }
    }

    const std::vector<Element*>& all() const { return m_order; }
    bool contains(const Element* element) const { return m_set.count(element) > 0; }

    /// Those that lie in no other.
    std::vector<Element*> outermost() {
        Known<bool> isMatched{{&m_root, contains(&m_root)}};
        const auto below = [this](const Element& element, bool isAboveMatched) {
            return isAboveMatched || contains(&element);
        };
        std::vector<Element*> result;
        for (Element* const element : m_order) {
            if (element == &m_root || !derived(isMatched, *trueParent(*element), below)) {
                result.push_back(element);
            }
        }
        return result;
    }

    /// All, those that lie deeper first.
    std::vector<Element*> deepestFirst() {
        Known<std::size_t> depths{{&m_root, 0}};
        const auto below = [](const Element& /*element*/, std::size_t above) { return above + 1; };
        std::vector<std::pair<std::size_t, Element*>> byDepth;
        for (Element* const element : m_order) {
            byDepth.emplace_back(derived(depths, *element, below), element);
        }
        std::stable_sort(byDepth.begin(), byDepth.end(),
                         [](const auto& a, const auto& b) { return a.first > b.first; });
        std::vector<Element*> result;
        result.reserve(byDepth.size());
        for (const auto& [depth, element] : byDepth) {
            result.push_back(element);
        }
        return result;
    }

private:
    /// What is known of some elements, among them the root.
    template<class Value>
    using Known = std::unordered_map<const Element*, Value>;

    /// What is known of the element, where `below` derives it from what is known of its parent.
    template<class Value, class Below>
    Value derived(Known<Value>& known, Element& element, const Below& below) {
        std::vector<Element*> way;
        Element* step = &element;
        for (; known.count(step) == 0; step = trueParent(*step)) {
            m_visits.take(1);
            way.push_back(step);
        }
        Value value = known.at(step);
        for (auto child = way.rbegin(); child != way.rend(); ++child) {
            value = below(**child, value);
            known.emplace(*child, value);
        }
        return value;
    }

    Element& m_root;
    Visits m_visits;
    std::unordered_set<const Element*> m_set;
    std::vector<Element*> m_order;
};

/// Those that hold items among the elements, each once.
std::vector<Element*> parentArrays(const std::vector<Element*>& elements) {
    std::vector<Element*> arrays;
    for (Element* const element : elements) {
        Element* const parent = trueParent(*element);
        if (parent->isArray()) {
            arrays.push_back(parent);
        }
    }
    std::sort(arrays.begin(), arrays.end(), std::less<>());
    arrays.erase(std::unique(arrays.begin(), arrays.end()), arrays.end());
    return arrays;
}

}  // namespace

std::size_t JsonPath::remove(Element& root) const {
    Matches matches(*m_compiled, root);
    if (matches.contains(&root)) {
        throw Exception("The whole document cannot be removed", &root);
    }
    const std::vector<Element*> removed = matches.outermost();
    const std::vector<Element*> arrays = parentArrays(removed);
    for (Element* const element : removed) {
        Element& parent = *trueParent(*element);
        if (parent.isObject()) {
            parent.object().erase(parent.object().find(element->memberKey()));
        }
    }
    for (Element* const array : arrays) {
        erase_if(array->array(), [&](const Element& item) { return matches.contains(&item); });
    }
    return matches.all().size();
}

std::size_t JsonPath::update(Element& root, const Element& value) const {
    Matches matches(*m_compiled, root);
    const Snapshot before(value, root);
    for (Element* const element : matches.outermost()) {
        before.copyTo(*element);
    }
    return matches.all().size();
}

std::size_t JsonPath::updateEach(Element& root, const std::function<void(Element&)>& change) const {
    Matches matches(*m_compiled, root);
    for (Element* const element : matches.deepestFirst()) {
        change(*element);
    }
    return matches.all().size();
}

}  // namespace ko::Orvid
