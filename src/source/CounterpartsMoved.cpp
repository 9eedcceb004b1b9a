// SPDX-License-Identifier: MIT
//
// The search for values that stand in another container now.

#include <algorithm>

#include "source/ChildCursor.h"
#include "source/Counterparts.h"
#include "source/Token.h"

namespace ko::Orvid {

namespace {

constexpr std::uint32_t k_none = SourceMap::k_none;
/// How many lost values of the same hash are looked at for one element.
constexpr std::size_t k_mostCandidates = 16;

}  // namespace

void Counterparts::matchMoved() {
    for (std::uint32_t value = 0; value < m_map.size(); ++value) {
        if (!isPaired(value) && m_map[value].element() != nullptr) {
            m_lostByAddress.emplace(m_map[value].element(), value);
            m_lostByHash[m_old[value].hash].push_back(value);
        }
    }
    if (m_lostByAddress.empty()) {
        return;
    }
    for (const NewValue& value : m_new) {
        if (value.counterpart == k_none) {
            ++m_addedByHash[value.hash];
        }
    }
    listLostChildren();
    for (std::uint32_t element = 0; element < m_new.size(); ++element) {
        if (m_new[element].counterpart == k_none) {
            const std::uint32_t value = movedFrom(element);
            if (value != k_none) {
                pair(value, element);
                matchAll();
            }
        }
    }
}

std::uint32_t Counterparts::movedFrom(std::uint32_t element) const {
    const std::uint32_t owner = ownerOfChildren(element);
    if (owner != k_none) {
        return owner;
    }
    const auto atAddress = m_lostByAddress.find(m_new[element].element);
    if (atAddress != m_lostByAddress.end() && mayHaveMoved(atAddress->second, element)) {
        return atAddress->second;
    }
    const auto found = m_lostByHash.find(m_new[element].hash);
    if (found == m_lostByHash.end()) {
        return isContainer(*m_new[element].element) ? changedOnItsWay(element) : k_none;
    }
    const Numbers& lost = found->second;
    const auto end =
        lost.begin() + static_cast<std::ptrdiff_t>(std::min(lost.size(), k_mostCandidates));
    const auto moved = std::find_if(
        lost.begin(), end, [&](std::uint32_t value) { return mayHaveMoved(value, element); });
    return moved == end ? k_none : *moved;
}

void Counterparts::listLostChildren() {
    for (std::uint32_t value = 1; value < m_map.size(); ++value) {
        const bool isLost = !isPaired(value) && m_map[value].element() != nullptr;
        if (!isLost) {
            continue;
        }
        if (!isPaired(m_old[value].parent)) {
            Numbers& owners = m_ownersByChild[traceBefore(value)];
            if (owners.size() < k_mostCandidates) {
                owners.push_back(m_old[value].parent);
            }
        }
        if (m_map.isObject(value) && m_map.hasChildren(value)) {
            m_lostByKeys[keysBefore(value)].push_back(value);
        }
    }
    for (std::uint32_t element = 0; element < m_new.size(); ++element) {
        if (m_new[element].counterpart == k_none && m_new[element].element->isObject()) {
            ++m_addedByKeys[keysNow(element)];
        }
    }
}

/// The lost container that was changed as well: the one that shares most children, or else, of an
/// object, the only one of the same keys.
std::uint32_t Counterparts::changedOnItsWay(std::uint32_t element) const {
    const std::uint32_t owner = sharingMost(element);
    if (owner != k_none || !m_new[element].element->isObject()) {
        return owner;
    }
    const std::uint64_t keys = keysNow(element);
    const auto found = m_lostByKeys.find(keys);
    const bool isOnly = found != m_lostByKeys.end() && found->second.size() == 1 &&
                        m_addedByKeys.at(keys) == 1 && !isPaired(found->second.front());
    return isOnly ? found->second.front() : k_none;
}

bool Counterparts::hadMoreChildren(std::uint32_t value, std::size_t count) const {
    std::uint32_t child = value + 1;
    while (count > 0 && child < m_map[value].next()) {
        child = m_map[child].next();
        --count;
    }
    return child < m_map[value].next();
}

/// Of the lost containers, none of which is there unchanged, the one that has most of the children,
/// at least half of what either has.
std::uint32_t Counterparts::sharingMost(std::uint32_t element) const {
    const Numbers children = childrenNow(element);
    std::unordered_map<std::uint32_t, std::size_t> shared;
    for (const std::uint32_t child : children) {
        const auto owners = m_ownersByChild.find(traceNow(child));
        for (const std::uint32_t owner :
             owners == m_ownersByChild.end() ? Numbers() : owners->second) {
            ++shared[owner];
        }
    }
    std::uint32_t best = k_none;
    for (const auto& [owner, count] : shared) {
        const bool isBetter =
            best == k_none || count > shared[best] || (count == shared[best] && owner < best);
        if (isBetter && 2 * count >= children.size() && !isPaired(owner) &&
            isSameContainer(owner, element) && m_addedByHash.count(m_old[owner].hash) == 0 &&
            !hadMoreChildren(owner, 2 * count)) {
            best = owner;
        }
    }
    return best;
}

/// The lost container that held the children of this one at the same addresses, at least half of
/// them unchanged.
std::uint32_t Counterparts::ownerOfChildren(std::uint32_t element) const {
    std::uint32_t owner = k_none;
    std::size_t known = 0;
    const Numbers children = childrenNow(element);
    for (const std::uint32_t child : children) {
        const auto found = m_lostByAddress.find(m_new[child].element);
        if (found == m_lostByAddress.end() || m_old[found->second].hash != m_new[child].hash) {
            continue;
        }
        owner = owner == k_none ? m_old[found->second].parent : owner;
        known += m_old[found->second].parent == owner ? 1U : 0U;
    }
    const bool isOwner = owner != k_none && 2 * known >= children.size() && !isPaired(owner) &&
                         isSameContainer(owner, element);
    return isOwner ? owner : k_none;
}

/// Small values are everywhere: they must have kept their key, or be the only ones of their kind.
bool Counterparts::mayHaveMoved(std::uint32_t value, std::uint32_t element) const {
    if (isPaired(value) || m_old[value].hash != m_new[element].hash) {
        return false;
    }
    if (m_map.isContainer(value) && m_map.hasChildren(value)) {
        return true;
    }
    if (wasMember(value) && isMember(element) && haveSameKey(value, element)) {
        return true;
    }
    const EType type = typeOfToken(m_map.text(value).front());
    const bool isTelling = type == etNumber || (type == etString && m_map.text(value).size() > 2);
    return isTelling && m_lostByHash.at(m_old[value].hash).size() == 1 &&
           m_addedByHash.at(m_new[element].hash) == 1;
}

bool Counterparts::haveSameKey(std::uint32_t value, std::uint32_t element) const {
    return tokenSays(keyBefore(value), std::string_view(m_new[element].element->memberKey()));
}

bool Counterparts::isSameContainer(std::uint32_t value, std::uint32_t element) const {
    return m_map.isContainer(value) &&
           typeOfToken(m_map.text(value).front()) == m_new[element].element->type();
}

}  // namespace ko::Orvid
