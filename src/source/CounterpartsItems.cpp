// SPDX-License-Identifier: MIT
//
// The match of the items of one array.

#include <algorithm>
#include <iterator>

#include "change/SequenceAlign.h"
#include "source/Counterparts.h"

namespace ko::Orvid {

namespace {

constexpr std::uint32_t k_none = Places::k_none;

using TPositions = std::vector<std::pair<std::size_t, std::size_t>>;

/// Calls `look` with the bounds of what lies between two pairs that follow each other.
template<class Look>
void forEachInterval(const TPositions& pairs, std::size_t fromEnd, std::size_t toEnd,
                     const Look& look) {
    std::size_t from = 0;
    std::size_t to = 0;
    for (const auto& [i, j] : pairs) {
        look(from, i, to, j);
        from = i + 1;
        to = j + 1;
    }
    look(from, fromEnd, to, toEnd);
}

void forgetPaired(std::vector<std::uint32_t>& lost, std::vector<std::uint32_t>& added) {
    lost.erase(std::remove(lost.begin(), lost.end(), k_none), lost.end());
    added.erase(std::remove(added.begin(), added.end(), k_none), added.end());
}

}  // namespace

/// Items that neither moved nor changed. When the addresses say that some were moved past each
/// other, they say nothing: then values were moved between elements, or memory was used again.
Counterparts::TPositions Counterparts::unmovedItems(const TNumbers& before,
                                                    const TNumbers& now) const {
    std::unordered_map<const Element*, std::size_t> byAddress;
    for (std::size_t i = 0; i < before.size(); ++i) {
        byAddress.emplace(m_places[before[i]].element(), i);
    }
    TPositions result;
    for (std::size_t j = 0; j < now.size(); ++j) {
        const auto found = byAddress.find(m_new[now[j]].element);
        if (found != byAddress.end() && m_old[before[found->second]].hash == m_new[now[j]].hash) {
            result.emplace_back(found->second, j);
        }
    }
    return std::is_sorted(result.begin(), result.end()) ? result : TPositions();
}

/// As many items as can keep their order and value, those of `pairs` among them.
Counterparts::TPositions Counterparts::alignItems(const TNumbers& before, const TNumbers& now,
                                                  const TPositions& pairs) const {
    TPositions result;
    std::uint64_t sharedSteps = k_sharedSteps;
    const auto align = [&](std::size_t from, std::size_t fromEnd, std::size_t to,
                           std::size_t toEnd) {
        std::vector<std::size_t> a;
        std::vector<std::size_t> b;
        for (std::size_t i = from; i < fromEnd; ++i) {
            a.push_back(static_cast<std::size_t>(m_old[before[i]].hash));
        }
        for (std::size_t j = to; j < toEnd; ++j) {
            b.push_back(static_cast<std::size_t>(m_new[now[j]].hash));
        }
        for (const auto& [i, j] : alignSequences(a, b, sharedSteps)) {
            result.emplace_back(from + i, to + j);
        }
        if (fromEnd < before.size() && toEnd < now.size()) {
            result.emplace_back(fromEnd, toEnd);
        }
    };
    forEachInterval(pairs, before.size(), now.size(), align);
    return result;
}

void Counterparts::matchItems(const TNumbers& before, const TNumbers& now) {
    const TPositions pairs = alignItems(before, now, unmovedItems(before, now));
    for (const auto& [i, j] : pairs) {
        pair(before[i], now[j]);
    }
    matchByHash(before, now);
    const auto match = [&](std::size_t from, std::size_t fromEnd, std::size_t to,
                           std::size_t toEnd) {
        TNumbers lost;
        TNumbers added;
        std::copy_if(before.begin() + static_cast<std::ptrdiff_t>(from),
                     before.begin() + static_cast<std::ptrdiff_t>(fromEnd),
                     std::back_inserter(lost),
                     [&](std::uint32_t value) { return !isPaired(value); });
        std::copy_if(now.begin() + static_cast<std::ptrdiff_t>(to),
                     now.begin() + static_cast<std::ptrdiff_t>(toEnd), std::back_inserter(added),
                     [&](std::uint32_t element) { return m_new[element].counterpart == k_none; });
        matchChanged(lost, added);
    };
    forEachInterval(pairs, before.size(), now.size(), match);
}

/// Items between the same two neighbours, none of which has its former value.
void Counterparts::matchChanged(TNumbers& lost, TNumbers& added) {
    pairByAddress(lost, added);
    if (lost.size() == added.size()) {
        pairInOrder(lost, added, [](std::uint32_t, std::uint32_t) { return true; });
    } else if (lost.size() <= k_mostCompared / std::max<std::size_t>(added.size(), 1)) {
        pairInOrder(lost, added, [&](std::uint32_t value, std::uint32_t element) {
            return areAlike(value, element);
        });
    }
}

/// Pairs what has the same address, without crossing, and takes it off the lists.
void Counterparts::pairByAddress(TNumbers& lost, TNumbers& added) {
    std::unordered_map<const Element*, std::size_t> positions;
    for (std::size_t position = 0; position < added.size(); ++position) {
        positions.emplace(m_new[added[position]].element, position);
    }
    std::size_t from = 0;
    for (std::uint32_t& value : lost) {
        const auto found = positions.find(m_places[value].element());
        if (found != positions.end() && found->second >= from) {
            pair(value, added[found->second]);
            from = found->second + 1;
            added[found->second] = k_none;
            value = k_none;
        }
    }
    forgetPaired(lost, added);
}

/// Pairs what matches, without crossing, and takes it off the lists.
template<class Matches>
void Counterparts::pairInOrder(TNumbers& lost, TNumbers& added, const Matches& matches) {
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

/// Whether both are containers of one type with at least one child in common: a member by key and
/// value, an item by value.
bool Counterparts::areAlike(std::uint32_t value, std::uint32_t element) const {
    if (!isSameContainer(value, element)) {
        return false;
    }
    std::unordered_map<std::uint64_t, std::uint32_t> known;
    for (const std::uint32_t child : childrenBefore(value)) {
        known.emplace(m_old[child].hash, child);
    }
    const TNumbers children = childrenNow(element);
    return std::any_of(children.begin(), children.end(), [&](std::uint32_t child) {
        const auto found = known.find(m_new[child].hash);
        return found != known.end() && (!isMember(child) || haveSameKey(found->second, child));
    });
}

}  // namespace ko::Orvid
