// SPDX-License-Identifier: MIT
//
// The match of the items of one array.

#include <algorithm>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "change/SequenceAlign.h"
#include "source/ChildCursor.h"
#include "source/Counterparts.h"

namespace ko::Orvid {

namespace {

constexpr std::uint32_t k_none = SourceMap::k_none;

using Positions = std::vector<std::pair<std::size_t, std::size_t>>;

/// Calls `look` with the bounds of what lies between two pairs that follow each other.
template<class Look>
void forEachInterval(const Positions& pairs, std::size_t fromEnd, std::size_t toEnd,
                     const Look& look) {
    std::size_t from = 0;
    std::size_t to = 0;
    for (const auto& [i, j] : pairs) {
        look({from, i, to, j});
        from = i + 1;
        to = j + 1;
    }
    look({from, fromEnd, to, toEnd});
}

std::vector<std::uint32_t> part(const std::vector<std::uint32_t>& numbers, std::size_t from,
                                std::size_t end) {
    return {numbers.begin() + static_cast<std::ptrdiff_t>(from),
            numbers.begin() + static_cast<std::ptrdiff_t>(end)};
}

/// Where it is in the ascending numbers, in which it is.
std::size_t positionIn(const std::vector<std::uint32_t>& numbers, std::uint32_t number) {
    const auto found = std::lower_bound(numbers.begin(), numbers.end(), number);
    return static_cast<std::size_t>(found - numbers.begin());
}

/// The positions of the items that had a child. One that many of them had says nothing of which
/// item it is in.
class ChildOwners {
public:
    void add(std::uint64_t trace, std::size_t item) { m_owners.emplace_back(trace, item); }
    /// Between the last add() and the first forEachOf().
    void sort() { std::sort(m_owners.begin(), m_owners.end()); }

    template<class Visit>
    void forEachOf(std::uint64_t trace, const Visit& visit) const {
        constexpr std::size_t mostOwners = 16;
        const auto first =
            std::lower_bound(m_owners.begin(), m_owners.end(), Owner(trace, std::size_t(0)));
        auto end = first;
        while (end != m_owners.end() && end->first == trace) {
            if (static_cast<std::size_t>(++end - first) > mostOwners) {
                return;
            }
        }
        std::for_each(first, end, [&](const Owner& owner) { visit(owner.second); });
    }

private:
    using Owner = std::pair<std::uint64_t, std::size_t>;

    std::vector<Owner> m_owners;
};

void forgetPaired(std::vector<std::uint32_t>& lost, std::vector<std::uint32_t>& added) {
    lost.erase(std::remove(lost.begin(), lost.end(), k_none), lost.end());
    added.erase(std::remove(added.begin(), added.end(), k_none), added.end());
}

}  // namespace

/// Items that neither moved nor changed. When the addresses say that some were moved past each
/// other, they say nothing: then values were moved between elements, or memory was used again.
Counterparts::Positions Counterparts::unmovedItems(const Numbers& before,
                                                   const Numbers& now) const {
    std::unordered_map<const Element*, std::size_t> byAddress;
    for (std::size_t i = 0; i < before.size(); ++i) {
        byAddress.emplace(m_map[before[i]].element(), i);
    }
    Positions result;
    for (std::size_t j = 0; j < now.size(); ++j) {
        const auto found = byAddress.find(m_new[now[j]].element);
        if (found != byAddress.end() && m_old[before[found->second]].hash == m_new[now[j]].hash) {
            result.emplace_back(found->second, j);
        }
    }
    return std::is_sorted(result.begin(), result.end()) ? result : Positions();
}

/// As many items of the range as can keep their order and value. Of equal items, those at the ends
/// stay where they are: the one between was changed.
void Counterparts::alignRange(const Numbers& before, const Numbers& now, ItemRange range,
                              std::uint64_t& sharedSteps, Positions& result) const {
    const auto isSame = [&](std::size_t i, std::size_t j) {
        return m_old[before[i]].hash == m_new[now[j]].hash;
    };
    for (; !range.isEmpty() && isSame(range.from, range.to); ++range.from, ++range.to) {
        result.emplace_back(range.from, range.to);
    }
    const std::size_t end = range.fromEnd;
    for (; !range.isEmpty() && isSame(range.fromEnd - 1, range.toEnd - 1); --range.toEnd) {
        --range.fromEnd;
    }
    std::vector<std::size_t> a;
    std::vector<std::size_t> b;
    for (std::size_t i = range.from; i < range.fromEnd; ++i) {
        a.push_back(static_cast<std::size_t>(m_old[before[i]].hash));
    }
    for (std::size_t j = range.to; j < range.toEnd; ++j) {
        b.push_back(static_cast<std::size_t>(m_new[now[j]].hash));
    }
    for (const auto& [i, j] : alignSequences(a, b, sharedSteps)) {
        result.emplace_back(range.from + i, range.to + j);
    }
    for (; range.fromEnd < end; ++range.fromEnd, ++range.toEnd) {
        result.emplace_back(range.fromEnd, range.toEnd);
    }
}

/// As many items as can keep their order and value, those of `pairs` among them.
Counterparts::Positions Counterparts::alignItems(const Numbers& before, const Numbers& now,
                                                 const Positions& pairs) const {
    Positions result;
    std::uint64_t sharedSteps = k_sharedSteps;
    forEachInterval(pairs, before.size(), now.size(), [&](const ItemRange& range) {
        alignRange(before, now, range, sharedSteps, result);
        if (range.fromEnd < before.size() && range.toEnd < now.size()) {
            result.emplace_back(range.fromEnd, range.toEnd);
        }
    });
    return result;
}

void Counterparts::matchItems(const Numbers& allBefore, const Numbers& allNow) {
    const Numbers before = unpaired(allBefore);
    const Numbers now = unmatched(allNow);
    const Positions pairs = alignItems(before, now, unmovedItems(before, now));
    for (const auto& [i, j] : pairs) {
        pair(before[i], now[j]);
    }
    Positions stayed = pairedInOrder(allBefore, allNow);
    matchByHash(before, now);
    const Numbers lost = unpaired(before);
    const Numbers added = unmatched(now);
    for (const auto& [value, element] :
         areInPlace(lost, added) ? Pairs() : alikeItems(lost, added)) {
        pair(value, element);
        stayed.emplace_back(positionIn(allBefore, value), positionIn(allNow, element));
    }
    std::sort(stayed.begin(), stayed.end());
    forEachInterval(ascendingPairs(stayed), allBefore.size(), allNow.size(),
                    [&](const ItemRange& range) {
                        matchChanged(unpaired(part(allBefore, range.from, range.fromEnd)),
                                     unmatched(part(allNow, range.to, range.toEnd)));
                    });
}

/// Whether each has its element still, and what was first in it as well: nothing was moved.
bool Counterparts::areInPlace(const Numbers& lost, const Numbers& added) const {
    return std::equal(lost.begin(), lost.end(), added.begin(), added.end(),
                      [this](std::uint32_t value, std::uint32_t element) {
                          return m_map[value].element() == m_new[element].element &&
                                 m_map.hasChildren(value) && element + 1 < m_new[element].next &&
                                 m_map[value + 1].element() == m_new[element + 1].element;
                      });
}

/// Whether the value is an array that has none of its own items left, but mostly those of another
/// one. Where all moves are known, they have been found.
bool Counterparts::areFromElsewhere(std::uint32_t value, const Numbers& before,
                                    const Numbers& now) {
    if (m_map.isObject(value) || m_areAllKnown) {
        return false;
    }
    std::unordered_set<const Element*> own;
    for (const std::uint32_t item : before) {
        own.insert(m_map[item].element());
    }
    if (std::any_of(now.begin(), now.end(),
                    [&](std::uint32_t element) { return own.count(m_new[element].element) > 0; })) {
        return false;
    }
    if (m_itemsByAddress.empty()) {
        listItemsByAddress();
    }
    std::size_t count = 0;
    std::uint32_t array = k_none;
    for (const std::uint32_t element : now) {
        const auto found = m_itemsByAddress.find(m_new[element].element);
        if (found != m_itemsByAddress.end() && m_old[found->second].hash == m_new[element].hash) {
            array = array == k_none ? m_old[found->second].parent : array;
            count += m_old[found->second].parent == array ? 1U : 0U;
        }
    }
    return count > 0 && 2 * count >= now.size();
}

void Counterparts::listItemsByAddress() {
    for (std::uint32_t value = 1; value < m_map.size(); ++value) {
        if (!m_map.isObject(m_old[value].parent) && m_map[value].element() != nullptr) {
            m_itemsByAddress.emplace(m_map[value].element(), value);
        }
    }
}

/// Containers that have more children in common with each other than either has with any other,
/// wherever they are in the array, and at least half of theirs.
Counterparts::Pairs Counterparts::alikeItems(const Numbers& lost, const Numbers& added) const {
    const SharedChildren shared = sharedChildren(lost, added);
    Pairs pairs;
    for (std::size_t j = 0; j < added.size(); ++j) {
        const std::size_t i = shared.ofAdded[j].partner;
        const bool isMutual =
            shared.ofAdded[j].isOnly && shared.ofLost[i].isOnly && shared.ofLost[i].partner == j;
        if (isMutual && shareHalf(lost[i], added[j])) {
            pairs.emplace_back(lost[i], added[j]);
        }
    }
    return pairs;
}

Counterparts::SharedChildren Counterparts::sharedChildren(const Numbers& lost,
                                                          const Numbers& added) const {
    ChildOwners owners;
    for (std::size_t i = 0; i < lost.size(); ++i) {
        for (const std::uint32_t child : childrenBefore(lost[i])) {
            owners.add(traceBefore(child), i);
        }
    }
    owners.sort();
    SharedChildren shared{std::vector<Likest>(lost.size()), std::vector<Likest>(added.size())};
    for (std::size_t j = 0; j < added.size(); ++j) {
        std::unordered_map<std::size_t, std::size_t> counts;
        for (const std::uint32_t child : childrenNow(added[j])) {
            owners.forEachOf(traceNow(child), [&](std::size_t i) {
                counts[i] += isSameContainer(lost[i], added[j]) ? 1U : 0U;
            });
        }
        for (const auto& [i, count] : counts) {
            shared.ofAdded[j].add(i, count);
            shared.ofLost[i].add(j, count);
        }
    }
    return shared;
}

bool Counterparts::shareHalf(std::uint32_t value, std::uint32_t element) const {
    std::vector<std::uint64_t> before;
    for (const std::uint32_t child : childrenBefore(value)) {
        before.push_back(traceBefore(child));
    }
    std::sort(before.begin(), before.end());
    const Numbers now = childrenNow(element);
    const auto count =
        static_cast<std::size_t>(std::count_if(now.begin(), now.end(), [&](std::uint32_t child) {
            return std::binary_search(before.begin(), before.end(), traceNow(child));
        }));
    return 2 * count >= std::max(before.size(), now.size());
}

/// As many items that are known to be the same, from where they were to where they are, as did not
/// move past each other.
Counterparts::Positions Counterparts::pairedInOrder(const Numbers& before,
                                                    const Numbers& now) const {
    std::unordered_map<std::uint32_t, std::size_t> positions;
    for (std::size_t j = 0; j < now.size(); ++j) {
        positions.emplace(now[j], j);
    }
    Positions pairs;
    for (std::size_t i = 0; i < before.size(); ++i) {
        const auto found = positions.find(m_old[before[i]].counterpart);
        if (found != positions.end()) {
            pairs.emplace_back(i, found->second);
        }
    }
    return ascendingPairs(pairs);
}

/// Pairs the items at these positions, and lets `matchRest` look at those between two of them.
template<class MatchRest>
void Counterparts::pairAround(const Numbers& lost, const Numbers& added, const Positions& pairs,
                              const MatchRest& matchRest) {
    for (const auto& [i, j] : pairs) {
        pair(lost[i], added[j]);
    }
    forEachInterval(pairs, lost.size(), added.size(), [&](const ItemRange& range) {
        matchRest(part(lost, range.from, range.fromEnd), part(added, range.to, range.toEnd));
    });
}

/// Items between the same two neighbours, none of which has its former value. What has its address
/// still is such a neighbour as well.
void Counterparts::matchChanged(const Numbers& lost, const Numbers& added) {
    pairAround(lost, added, changedInPlace(lost, added),
               [this](const Numbers& gone, const Numbers& come) { matchReplaced(gone, come); });
}

/// Items between the same two neighbours that have neither their former value nor their address.
/// Those that are alike are neighbours of the rest.
void Counterparts::matchReplaced(const Numbers& lost, const Numbers& added) {
    pairAround(lost, added, alikeInOrder(lost, added), [this](Numbers&& gone, Numbers&& come) {
        matchUnlike(std::move(gone), std::move(come));
    });
}

bool Counterparts::areFew(const Numbers& lost, const Numbers& added) {
    return lost.size() <= k_mostCompared / std::max<std::size_t>(added.size(), 1);
}

/// Pairs that do not cross, none where there is too much to compare.
Counterparts::Positions Counterparts::alikeInOrder(const Numbers& lost,
                                                   const Numbers& added) const {
    Positions pairs;
    if (!areFew(lost, added)) {
        return pairs;
    }
    const AddedChildren children = childrenOf(added);
    std::size_t from = 0;
    for (std::size_t i = 0; i < lost.size() && from < added.size(); ++i) {
        const std::size_t j = firstAlike(lost[i], added, from, children);
        if (j < added.size()) {
            pairs.emplace_back(i, j);
            from = j + 1;
        }
    }
    return pairs;
}

/// Listed once, for each may be compared with many that are lost.
Counterparts::AddedChildren Counterparts::childrenOf(const Numbers& added) const {
    AddedChildren children;
    for (std::size_t j = 0; j < added.size(); ++j) {
        for (const std::uint32_t child : childrenNow(added[j])) {
            children.byTrace[traceNow(child)].push_back(j);
            children.byAddress.emplace(m_new[child].element, j);
        }
    }
    return children;
}

/// The first position, `from` or greater, of a container of the same type that has a child in
/// common with that one: a member by key and value, an item by value, or either by its address,
/// which it keeps when the container moves. The number of the added where there is none.
std::size_t Counterparts::firstAlike(std::uint32_t value, const Numbers& added, std::size_t from,
                                     const AddedChildren& children) const {
    std::size_t first = added.size();
    const auto look = [&](std::size_t position) {
        if (position >= from && position < first && isSameContainer(value, added[position])) {
            first = position;
        }
    };
    for (const std::uint32_t child : childrenBefore(value)) {
        const auto atAddress = children.byAddress.find(m_map[child].element());
        if (atAddress != children.byAddress.end()) {
            look(atAddress->second);
        }
        const auto equals = children.byTrace.find(traceBefore(child));
        if (equals != children.byTrace.end()) {
            const auto next = std::lower_bound(equals->second.begin(), equals->second.end(), from);
            look(next == equals->second.end() ? added.size() : *next);
        }
    }
    return first;
}

void Counterparts::matchUnlike(Numbers lost, Numbers added) {
    if (lost.size() == added.size()) {
        pairInOrder(lost, added, [](std::uint32_t, std::uint32_t) { return true; });
    } else if (lost.size() < added.size() && areFew(lost, added)) {
        pairInOrder(lost, added, [&](std::uint32_t value, std::uint32_t element) {
            return isSameKind(value, element);
        });
    }
}

/// What has the same address, without crossing: as many as can be. Of two that cross, the address
/// is more likely to have been used again for what now stands further back, as an item is that was
/// added at the end.
Counterparts::Positions Counterparts::changedInPlace(const Numbers& lost,
                                                     const Numbers& added) const {
    std::unordered_map<const Element*, std::size_t> positions;
    for (std::size_t j = 0; j < added.size(); ++j) {
        positions.emplace(m_new[added[j]].element, j);
    }
    Positions pairs;
    for (std::size_t i = 0; i < lost.size(); ++i) {
        const auto found = positions.find(m_map[lost[i]].element());
        if (found != positions.end()) {
            pairs.emplace_back(i, found->second);
        }
    }
    return ascendingPairs(pairs);
}

/// Pairs what matches, without crossing, and takes it off the lists.
template<class Matches>
void Counterparts::pairInOrder(Numbers& lost, Numbers& added, const Matches& matches) {
    auto from = added.begin();
    for (std::uint32_t& value : lost) {
        const auto found = std::find_if(
            from, added.end(), [&](std::uint32_t element) { return matches(value, element); });
        if (found != added.end()) {
            pair(value, *found);
            value = k_none;
            *found = k_none;
            from = found + 1;
        }
    }
    forgetPaired(lost, added);
}

/// Whether both are containers of one type, or neither is a container.
bool Counterparts::isSameKind(std::uint32_t value, std::uint32_t element) const {
    return isContainer(*m_new[element].element) ? isSameContainer(value, element)
                                                : !m_map.isContainer(value);
}

}  // namespace ko::Orvid
