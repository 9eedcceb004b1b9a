// SPDX-License-Identifier: MIT
//
// The search for values that stand in another container now.

#include <algorithm>
#include <tuple>

#include "source/ChildCursor.h"
#include "source/Counterparts.h"
#include "source/Token.h"

namespace ko::Orvid {

namespace {

constexpr std::uint32_t k_none = SourceMap::k_none;
/// How many lost values of the same hash are looked at for one element.
constexpr std::size_t k_mostCandidates = 16;

}  // namespace

/// Whether it is not known what became of the value, or of its children.
bool Counterparts::isLost(std::uint32_t value) const {
    const bool isUnknown =
        !isPaired(value) || (hadContents(value) && m_old[value].contents == k_none);
    return isUnknown && m_map[value].element() != nullptr && !m_isGone[value];
}

/// Whether it is not known what the element was, or where its children were.
bool Counterparts::isAdded(std::uint32_t element) const {
    const NewValue& value = m_new[element];
    return value.counterpart == k_none || (isContainer(*value.element) && value.contents == k_none);
}

/// Whether neither is known: the value and the element, or the children of both.
bool Counterparts::mayBecome(std::uint32_t value, std::uint32_t element) const {
    const bool areLeft = !isPaired(value) && m_new[element].counterpart == k_none;
    return !m_isGone[value] && m_old[value].contents == k_none &&
           m_new[element].contents == k_none &&
           (areLeft || (hadContents(value) && isSameContainer(value, element)));
}

/// The same where no address shows it. What held a container and now has the values of that one is
/// what it was: its children were replaced.
bool Counterparts::mayBecomeByValue(std::uint32_t value, std::uint32_t element) const {
    const std::uint32_t before = m_new[element].counterpart;
    const bool wasWithin = wasContainer(element) && before < value && value < m_map.next(before);
    return !wasWithin && mayBecome(value, element);
}

/// Whether the value is a container in which a value or a comment stands.
bool Counterparts::hadContents(std::uint32_t value) const {
    return m_map.isContainer(value) &&
           (m_map.hasChildren(value) || m_map.text(value).find('/') != std::string_view::npos);
}

void Counterparts::matchMoved() {
    for (std::uint32_t value = 0; value < m_map.size(); ++value) {
        if (isLost(value)) {
            m_lostByAddress.emplace(m_map[value].element(), value);
            m_lostByHash[m_old[value].hash].push_back(value);
        }
    }
    if (m_lostByAddress.empty()) {
        return;
    }
    const Numbers added = addedBySize();
    for (const std::uint32_t element : added) {
        ++m_addedByHash[m_new[element].hash];
    }
    listLostChildren();
    for (const std::uint32_t element : added) {
        const std::uint32_t value = isAdded(element) ? movedFrom(element) : k_none;
        if (value != k_none) {
            pair(value, element);
            if (isSameContainer(value, element)) {
                pairContents(value, element);
            }
            setMovedOut(value);
            matchAll();
        }
    }
}

/// The largest first, so that nothing is taken out of a container that moved as a whole.
Counterparts::Numbers Counterparts::addedBySize() const {
    Numbers added;
    for (std::uint32_t element = 0; element < m_new.size(); ++element) {
        if (isAdded(element)) {
            added.push_back(element);
        }
    }
    std::stable_sort(added.begin(), added.end(), [this](std::uint32_t a, std::uint32_t b) {
        return m_new[a].next - a > m_new[b].next - b;
    });
    return added;
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
        return mayHaveChanged(element) ? changedOnItsWay(element) : k_none;
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
        if (!isLost(value)) {
            continue;
        }
        if (m_old[m_old[value].parent].contents == k_none) {
            Numbers& owners = m_ownersByChild[traceBefore(value)];
            const std::uint32_t owner = m_old[value].parent;
            if (owners.size() < k_mostCandidates &&
                std::find(owners.begin(), owners.end(), owner) == owners.end()) {
                owners.push_back(owner);
            }
        }
        if (m_map.isObject(value) && m_map.hasChildren(value)) {
            m_lostByKeys[keysBefore(value)].push_back(value);
        }
    }
    for (std::uint32_t element = 0; element < m_new.size(); ++element) {
        if (isAdded(element) && m_new[element].element->isObject()) {
            ++m_addedByKeys[keysNow(element)];
        }
    }
}

/// Whether it may be a container that was moved and changed. Where it is known what was moved, one
/// that stood there before was not.
bool Counterparts::mayHaveChanged(std::uint32_t element) const {
    return isContainer(*m_new[element].element) && !(m_areAllKnown && wasContainer(element));
}

/// The lost container that was changed as well: the one that shares most children, or else, of an
/// object, the only one of the same keys: the items of one array have the same keys anyway.
std::uint32_t Counterparts::changedOnItsWay(std::uint32_t element) const {
    const std::uint32_t owner = sharingMost(element);
    if (owner != k_none || !m_new[element].element->isObject()) {
        return owner;
    }
    const std::uint64_t keys = keysNow(element);
    const auto found = m_lostByKeys.find(keys);
    const bool isOnly = found != m_lostByKeys.end() && found->second.size() == 1 &&
                        m_addedByKeys.at(keys) == 1 &&
                        mayBecomeByValue(found->second.front(), element) &&
                        !areOfOneArray(found->second.front(), element);
    return isOnly ? found->second.front() : k_none;
}

/// Whether both are items of the same array, whose items were compared with each other.
bool Counterparts::areOfOneArray(std::uint32_t value, std::uint32_t element) const {
    const std::uint32_t parent = m_old[value].parent;
    return parent != k_none && !m_map.isObject(parent) &&
           m_old[parent].contents == m_new[element].parent;
}

bool Counterparts::hadMoreChildren(std::uint32_t value, std::size_t count) const {
    std::uint32_t child = value + 1;
    while (count > 0 && child < m_map.next(value)) {
        child = m_map.next(child);
        --count;
    }
    return child < m_map.next(value);
}

/// Of the lost containers, none of which is there unchanged, the one that has most of the children,
/// at least half of what either has; of several, one that had no more, and the first.
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
    const auto rank = [&](std::uint32_t owner, std::size_t count) {
        return std::make_tuple(count, !hadMoreChildren(owner, children.size()), k_none - owner);
    };
    for (const auto& [owner, count] : shared) {
        const bool isBetter = best == k_none || rank(owner, count) > rank(best, shared[best]);
        if (isBetter && 2 * count >= children.size() && mayBecomeByValue(owner, element) &&
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
    const bool isOwner = owner != k_none && 2 * known >= children.size() &&
                         mayBecome(owner, element) && isSameContainer(owner, element);
    return isOwner ? owner : k_none;
}

/// Small values are everywhere: they must have kept their key, or be the only ones of their kind.
bool Counterparts::mayHaveMoved(std::uint32_t value, std::uint32_t element) const {
    if (!mayBecomeByValue(value, element) || m_old[value].hash != m_new[element].hash) {
        return false;
    }
    if (m_map.hasChildren(value)) {
        return true;
    }
    if (hadContents(value) && !mayBringComments(value, element)) {
        return false;
    }
    if (wasMember(value) && isMember(element) && haveSameKey(value, element)) {
        return true;
    }
    return isTelling(value) && m_lostByHash.at(m_old[value].hash).size() == 1 &&
           m_addedByHash.at(m_new[element].hash) == 1;
}

/// Whether there are few values that it equals by chance. Where it is known what was moved, it was
/// not: then a value that equals it elsewhere is another one.
bool Counterparts::isTelling(std::uint32_t value) const {
    if (m_areAllKnown) {
        return false;
    }
    const EType type = typeOfToken(m_map.text(value).front());
    return type == etNumber || (type == etString && m_map.text(value).size() > 2) ||
           hadContents(value);
}

/// Whether a container in which only comments stand may have come there. They do not leave one that
/// is still there. Where the element stood as a container before, all that was in it was removed,
/// and this one as well: what is moved onto another leaves the same tree.
bool Counterparts::mayBringComments(std::uint32_t value, std::uint32_t element) const {
    return !wasContainer(element) && !isStillContainer(value);
}

/// Whether a container of the same kind stands where the value stood.
bool Counterparts::isStillContainer(std::uint32_t value) const {
    return isPaired(value) && isSameContainer(value, m_old[value].counterpart);
}

/// Whether a container of the same kind stood where the element stands.
bool Counterparts::wasContainer(std::uint32_t element) const {
    const std::uint32_t value = m_new[element].counterpart;
    return value != k_none && isSameContainer(value, element);
}

bool Counterparts::haveSameKey(std::uint32_t value, std::uint32_t element) const {
    return tokenSays(keyBefore(value), std::string_view(m_new[element].element->memberKey()));
}

bool Counterparts::isSameContainer(std::uint32_t value, std::uint32_t element) const {
    return m_map.isContainer(value) &&
           typeOfToken(m_map.text(value).front()) == m_new[element].element->type();
}

}  // namespace ko::Orvid
