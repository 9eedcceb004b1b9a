// SPDX-License-Identifier: MIT
//
// The match of the items of one array.

#include <algorithm>
#include <unordered_map>
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
    const Positions stayed = pairedInOrder(allBefore, allNow);
    matchByHash(before, now);
    forEachInterval(stayed, allBefore.size(), allNow.size(), [&](const ItemRange& range) {
        matchChanged(unpaired(part(allBefore, range.from, range.fromEnd)),
                     unmatched(part(allNow, range.to, range.toEnd)));
    });
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
