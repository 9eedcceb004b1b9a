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
    m_isGone.resize(m_old.size());
    if (moved.empty()) {
        return;
    }
    ByAddress known;
    setGone(fatesOf(moved, known));
    for (std::uint32_t element = 0; element < m_new.size(); ++element) {
        const auto found = known.find(m_new[element].element);
        if (found != known.end()) {
            pairKnown(found->second, element);
        }
    }
}

/// What the places say has become of the values of the text. Those that are there still are noted
/// in `known`. Of places that contradict each other the first counts.
std::vector<Counterparts::Fate> Counterparts::fatesOf(const MovedPlaces& moved, ByAddress& known) {
    const Numbers values = valuesAt(moved);
    std::vector<Fate> fates(m_old.size());
    for (std::size_t i = 0; i < moved.size(); ++i) {
        const std::uint32_t value = values[i];
        const Element* const element = moved[i].second.find(*m_new[0].element);
        if (value == 0) {
            m_areAllKnown = m_areAllKnown || element == nullptr || element == m_new[0].element;
            fates[0] = element == nullptr ? Fate::gone : fates[0];
        } else if (value != k_none && fates[value] == Fate::unknown) {
            if (element == nullptr) {
                fates[value] = Fate::gone;
            } else if (known.emplace(element, value).second) {
                fates[value] = Fate::there;
                fates[0] = element == m_new[0].element ? Fate::gone : fates[0];
            }
        }
    }
    return fates;
}

/// What held a value that is gone differs from what it was, whatever is in it now.
void Counterparts::setGone(std::vector<Fate> fates) {
    for (std::uint32_t value = 1; value < fates.size(); ++value) {
        if (fates[value] == Fate::unknown) {
            fates[value] = fates[m_old[value].parent];
        } else if (fates[value] == Fate::gone) {
            setMovedOut(value);
        }
        m_isGone[value] = fates[value] == Fate::gone;
    }
}

void Counterparts::setMovedOut(std::uint32_t value) {
    for (value = m_old[value].parent; value != k_none && m_movedOutOf.insert(value).second;) {
        value = m_old[value].parent;
    }
}

/// Another value was moved onto this one, which is gone with all that was not moved out of it.
void Counterparts::setGoneWithin(std::uint32_t value) {
    for (std::uint32_t gone = value; gone < m_map.next(value);) {
        const bool isElsewhere = isPaired(gone);
        m_isGone[gone] = !isElsewhere;
        gone = isElsewhere ? m_map.next(gone) : gone + 1;
    }
}

void Counterparts::pairKnown(std::uint32_t value, std::uint32_t element) {
    pair(value, element);
    m_known.insert(element);
    setMovedOut(value);
    for (element = m_new[element].parent;
         element != k_none && m_movedInto.insert(element).second;) {
        element = m_new[element].parent;
    }
}

Counterparts::Numbers Counterparts::unpaired(const Numbers& before) const {
    Numbers left;
    std::copy_if(before.begin(), before.end(), std::back_inserter(left),
                 [this](std::uint32_t value) { return isOpen(value); });
    return left;
}

Counterparts::Numbers Counterparts::unmatched(const Numbers& now) const {
    Numbers left;
    std::copy_if(now.begin(), now.end(), std::back_inserter(left),
                 [this](std::uint32_t element) { return m_new[element].counterpart == k_none; });
    return left;
}

}  // namespace ko::Orvid
