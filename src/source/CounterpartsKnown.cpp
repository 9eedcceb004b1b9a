// SPDX-License-Identifier: MIT
//
// What is known to have been moved.

#include <algorithm>
#include <iterator>

#include "source/Counterparts.h"
#include "source/Token.h"

namespace ko::Orvid {

namespace {

constexpr std::uint32_t k_none = SourceMap::k_none;

}  // namespace

/// The value of the text at each of the places that something was moved from, or k_none: one walk
/// down for all of them, for a container may have many children, and many of them may be moved.
Counterparts::Numbers Counterparts::valuesAt(const MovedPlaces& moved) const {
    struct Group {
        std::uint32_t value;
        std::size_t depth;
        Numbers wanted;  ///< at this value or below it
    };
    Numbers values(moved.size(), k_none);
    std::vector<Group> open(1, {0, 0, Numbers(moved.size())});
    for (std::uint32_t i = 0; i < moved.size(); ++i) {
        open.front().wanted[i] = i;
    }
    while (!open.empty()) {
        const Group group = std::move(open.back());
        open.pop_back();
        std::unordered_map<std::string, Numbers> byStep;
        for (const std::uint32_t i : group.wanted) {
            const std::vector<std::string>& steps = moved[i].first.steps();
            if (steps.size() == group.depth) {
                values[i] = group.value;
            } else {
                byStep[steps[group.depth]].push_back(i);
            }
        }
        if (byStep.empty() || !m_map.isContainer(group.value)) {
            continue;
        }
        std::size_t position = 0;
        for (const std::uint32_t child : boundChildren(group.value)) {
            const auto found =
                byStep.find(m_map.isObject(group.value) ? stringOfToken(keyBefore(child))
                                                        : std::to_string(position++));
            if (found != byStep.end()) {
                open.push_back({child, group.depth + 1, std::move(found->second)});
            }
        }
    }
    return values;
}

void Counterparts::pairKnown(const MovedPlaces& moved) {
    if (moved.empty()) {
        return;
    }
    const Numbers values = valuesAt(moved);
    std::unordered_map<const Element*, std::uint32_t> known;
    for (std::size_t i = 0; i < moved.size(); ++i) {
        const Element* const element = moved[i].second.find(*m_new[0].element);
        if (element != nullptr && values[i] != k_none && values[i] != 0) {
            known.emplace(element, values[i]);
        }
    }
    for (std::uint32_t element = 0; element < m_new.size(); ++element) {
        const auto found = known.find(m_new[element].element);
        if (found != known.end()) {
            pairKnown(found->second, element);
        }
    }
}

/// Where a value is moved onto the root, all else that is left of the former one is gone.
void Counterparts::pairKnown(std::uint32_t value, std::uint32_t element) {
    pair(value, element);
    m_known.insert(element);
    for (std::uint32_t gone = 0; element == 0 && gone < m_map.size(); ++gone) {
        if (gone < value || gone >= m_map.next(value)) {
            m_overwritten.insert(gone);
        }
    }
    for (value = m_old[value].parent; value != k_none && m_movedOutOf.insert(value).second;) {
        value = m_old[value].parent;
    }
    for (element = m_new[element].parent;
         element != k_none && m_movedInto.insert(element).second;) {
        element = m_new[element].parent;
    }
}

Counterparts::Numbers Counterparts::unpaired(const Numbers& before) const {
    Numbers left;
    std::copy_if(before.begin(), before.end(), std::back_inserter(left),
                 [this](std::uint32_t value) { return !isPaired(value); });
    return left;
}

Counterparts::Numbers Counterparts::unmatched(const Numbers& now) const {
    Numbers left;
    std::copy_if(now.begin(), now.end(), std::back_inserter(left),
                 [this](std::uint32_t element) { return m_new[element].counterpart == k_none; });
    return left;
}

}  // namespace ko::Orvid
