// SPDX-License-Identifier: MIT
//
// The lists of old and new values with their hashes, and the match of what stands in the same
// container. What was moved to another is in CounterpartsMoved.cpp, what is known to have been
// moved in CounterpartsKnown.cpp.

#include "source/Counterparts.h"

#include <algorithm>
#include <functional>
#include <iterator>

#include "source/ChildCursor.h"
#include "source/Token.h"
#include "source/Trivia.h"

namespace ko::Orvid {

namespace {

constexpr std::uint32_t k_none = SourceMap::k_none;

/// No value may undo what came before: the hashes of arrays of arrays are made of nothing else.
std::uint64_t mixed(std::uint64_t hash, std::uint64_t value) {
    constexpr std::uint64_t factor = 0x9E3779B97F4A7C15U;  // odd, with its bits spread
    hash = ((hash << 27U | hash >> 37U) + value + factor) * factor;
    return hash ^ (hash >> 29U);
}

std::uint64_t hashOfText(EType type, std::string_view text) {
    return mixed(static_cast<std::uint64_t>(type), std::hash<std::string_view>()(text));
}

std::uint64_t hashOfToken(std::string_view token) {
    const EType type = typeOfToken(token.front());
    return type == etString ? hashOfText(type, stringOfToken(token)) : hashOfText(type, token);
}

std::uint64_t hashOfScalar(const Element& scalar) {
    switch (scalar.type()) {
        case etString:
            return hashOfText(etString, scalar.string());
        case etNumber:
            return hashOfText(etNumber, scalar.number().textView());
        case etBoolean:
            return hashOfText(etBoolean, scalar.boolean() ? "true" : "false");
        default:
            return hashOfText(etNull, "null");
    }
}

/// A container whose children are being listed.
struct Level {
    std::uint32_t container;
    ChildCursor children;
};

}  // namespace

Counterparts::Counterparts(const SourceMap& map, const Element& root, const std::string* leftOut,
                           const MovedPlaces& moved)
    : m_map(map) {
    listOld();
    hashOld();
    listNew(root, leftOut);
    hashNew();
    pairKnown(moved);
    pairRoot();
    matchAll();
    matchMoved();
    bringRoot();
    pairReleased();
}

void Counterparts::listOld() {
    m_old.resize(m_map.size());
    m_old[0].begin = m_map[0].begin();
    for (std::uint32_t value = 0; value < m_map.size(); ++value) {
        if (!m_map.isContainer(value) || !m_map.hasChildren(value)) {
            continue;
        }
        std::uint32_t position = 0;
        ChildSpan child = m_map.firstChild(value);
        for (;; child = m_map.nextChild(value, child)) {
            OldValue& old = m_old[child.value];
            old.gapBegin = child.gapBegin;
            old.begin = child.begin;
            old.parent = value;
            old.position = position++;
            if (!m_map.hasNext(value, child)) {
                break;
            }
        }
    }
}

void Counterparts::hashOld() {
    for (std::uint32_t value = m_map.size(); value-- > 0;) {
        m_old[value].hash =
            m_map.isContainer(value) ? hashOldContainer(value) : hashOfToken(m_map.text(value));
    }
}

std::uint64_t Counterparts::hashOldContainer(std::uint32_t value) const {
    const bool isObject = m_map.isObject(value);
    auto hash = static_cast<std::uint64_t>(isObject ? etObject : etArray);
    for (const std::uint32_t child : boundChildren(value)) {
        if (isObject) {
            hash = mixed(hash, hashOfToken(keyBefore(child)));
        }
        hash = mixed(hash, m_old[child].hash);
    }
    return hash;
}

void Counterparts::listNew(const Element& root, const std::string* leftOut) {
    std::vector<Level> open;
    const auto add = [&](const Element& element, std::uint32_t parent) {
        const auto number = static_cast<std::uint32_t>(m_new.size());
        m_new.push_back({&element, 0, parent, number + 1});
        if (isContainer(element)) {
            open.push_back({number, ChildCursor(element)});
        }
    };
    add(root, k_none);
    while (!open.empty()) {
        const std::uint32_t container = open.back().container;
        const Element* const child = open.back().children.next();
        if (child == nullptr) {
            m_new[container].next = static_cast<std::uint32_t>(m_new.size());
            open.pop_back();
        } else if (leftOut == nullptr || container != 0 || !root.isObject() ||
                   child->memberKey() != *leftOut) {
            add(*child, container);
        }
    }
}

void Counterparts::hashNew() {
    for (auto element = static_cast<std::uint32_t>(m_new.size()); element-- > 0;) {
        NewValue& value = m_new[element];
        value.hash =
            isContainer(*value.element) ? hashNewContainer(element) : hashOfScalar(*value.element);
    }
}

/// What a child is known by wherever its container is: its key and its value.
std::uint64_t Counterparts::traceBefore(std::uint32_t value) const {
    return wasMember(value) ? mixed(hashOfToken(keyBefore(value)), m_old[value].hash)
                            : m_old[value].hash;
}

std::uint64_t Counterparts::traceNow(std::uint32_t element) const {
    const NewValue& value = m_new[element];
    return isMember(element) ? mixed(hashOfText(etString, value.element->memberKey()), value.hash)
                             : value.hash;
}

/// Of the keys in their order.
std::uint64_t Counterparts::keysBefore(std::uint32_t object) const {
    std::uint64_t hash = 0;
    for (const std::uint32_t child : boundChildren(object)) {
        hash = mixed(hash, hashOfToken(keyBefore(child)));
    }
    return hash;
}

std::uint64_t Counterparts::keysNow(std::uint32_t object) const {
    std::uint64_t hash = 0;
    for (const std::uint32_t child : childrenNow(object)) {
        hash = mixed(hash, hashOfText(etString, m_new[child].element->memberKey()));
    }
    return hash;
}

std::uint64_t Counterparts::hashNewContainer(std::uint32_t element) const {
    const NewValue& container = m_new[element];
    const bool isObject = container.element->isObject();
    auto hash = static_cast<std::uint64_t>(container.element->type());
    for (std::uint32_t child = element + 1; child < container.next; child = m_new[child].next) {
        if (isObject) {
            hash = mixed(hash, hashOfText(etString, m_new[child].element->memberKey()));
        }
        hash = mixed(hash, m_new[child].hash);
    }
    return hash;
}

std::string_view Counterparts::keyBefore(std::uint32_t value) const {
    const std::size_t begin = m_old[value].begin;
    return m_map.text(begin, skipString(m_map.text(), begin));
}

Counterparts::Numbers Counterparts::childrenBefore(std::uint32_t value) const {
    Numbers children;
    for (std::uint32_t child = value + 1; child < m_map.next(value); child = m_map.next(child)) {
        children.push_back(child);
    }
    return children;
}

Counterparts::Numbers Counterparts::childrenNow(std::uint32_t element) const {
    Numbers children;
    for (std::uint32_t child = element + 1; child < m_new[element].next;
         child = m_new[child].next) {
        children.push_back(child);
    }
    return children;
}

Counterparts::Numbers Counterparts::boundChildren(std::uint32_t value) const {
    Numbers children = childrenBefore(value);
    const auto isReplaced = [&](std::uint32_t child) { return m_map[child].element() == nullptr; };
    if (m_map[value].element() == nullptr ||
        std::none_of(children.begin(), children.end(), isReplaced)) {
        return children;
    }
    std::unordered_map<std::string, std::uint32_t> firstOf;
    std::vector<std::pair<std::uint32_t, std::uint32_t>> order;
    for (const std::uint32_t child : children) {
        const std::uint32_t first =
            firstOf.emplace(stringOfToken(keyBefore(child)), child).first->second;
        if (!isReplaced(child)) {
            order.emplace_back(first, child);
        }
    }
    std::sort(order.begin(), order.end());
    children.clear();
    for (const auto& [first, child] : order) {
        children.push_back(child);
    }
    return children;
}

void Counterparts::pair(std::uint32_t value, std::uint32_t element) {
    if (!isOpen(value) || m_new[element].counterpart != k_none) {
        return;  // it is gone, or was found elsewhere before its container was
    }
    m_old[value].counterpart = element;
    m_new[element].counterpart = value;
    if (isSameContainer(value, element)) {
        pairContents(value, element);
    }
}

/// A value of the same key, or in the same position of an equal container. Where another one is
/// known to have been moved onto a member, that is gone.
void Counterparts::pairMember(std::uint32_t value, std::uint32_t element) {
    if (!isPaired(value) && m_known.count(element) > 0 && wasMember(value)) {
        setGoneWithin(value);
    }
    pair(value, element);
}

void Counterparts::pairContents(std::uint32_t value, std::uint32_t element) {
    if (m_old[value].contents == k_none && m_new[element].contents == k_none) {
        m_old[value].contents = element;
        m_new[element].contents = value;
        m_due.emplace_back(value, element);
    }
}

/// Two containers in one place of which one was empty, objects without a common key, or an array
/// with the items of another: one may have come from elsewhere, and the other gone there.
void Counterparts::releaseContents(std::uint32_t value, std::uint32_t element) {
    m_old[value].contents = k_none;
    m_new[element].contents = k_none;
    m_released.emplace_back(value, element);
}

/// What nobody had a better claim to.
void Counterparts::pairReleased() {
    for (std::size_t i = 0; i < m_released.size(); ++i) {
        const auto [value, element] = m_released[i];
        if (m_old[value].contents == k_none && m_new[element].contents == k_none) {
            m_old[value].contents = element;
            m_new[element].contents = value;
            if (m_map.isObject(value)) {
                matchByHash(boundChildren(value), childrenNow(element));
            } else {
                matchItems(childrenBefore(value), childrenNow(element));
            }
            matchAll();
        }
    }
}

void Counterparts::matchAll() {
    while (!m_due.empty()) {
        const auto [value, element] = m_due.back();
        m_due.pop_back();
        matchChildren(value, element);
    }
}

void Counterparts::matchChildren(std::uint32_t value, std::uint32_t element) {
    const Numbers before = boundChildren(value);
    const Numbers now = childrenNow(element);
    const bool isKnown = m_known.count(element) > 0 && m_old[value].counterpart == element;
    if (m_old[value].hash == m_new[element].hash && before.size() == now.size()) {
        for (std::size_t i = 0; i < now.size(); ++i) {
            pairMember(before[i], now[i]);
        }
        if (isKnownToDiffer(value, element)) {
            matchByHash(before, now);
        }
    } else if (!isKnown && (before.empty() || areFromElsewhere(value, before, now))) {
        releaseContents(value, element);
    } else if (m_map.isObject(value)) {
        matchMembers(before, now);
        const bool isAnyHere = std::any_of(before.begin(), before.end(),
                                           [&](std::uint32_t child) { return isPaired(child); });
        if (isAnyHere || isKnown) {
            matchByHash(m_areAllKnown ? filled(before) : before, now);
        } else {
            releaseContents(value, element);
        }
    } else {
        matchItems(before, now);
    }
}

void Counterparts::matchMembers(const Numbers& before, const Numbers& now) {
    std::unordered_map<std::string, std::uint32_t> byKey;
    for (const std::uint32_t value : before) {
        byKey.emplace(stringOfToken(keyBefore(value)), value);
    }
    for (const std::uint32_t element : now) {
        const auto found = byKey.find(m_new[element].element->memberKey());
        if (found != byKey.end()) {
            pairMember(found->second, element);
        }
    }
}

/// Those that are containers with values. Where all moves are known, no other value was renamed:
/// one that equals a new member does so by chance.
Counterparts::Numbers Counterparts::filled(const Numbers& values) const {
    Numbers result;
    std::copy_if(values.begin(), values.end(), std::back_inserter(result),
                 [this](std::uint32_t value) { return m_map.hasChildren(value); });
    return result;
}

/// What is left over of both and has the same value, in order.
void Counterparts::matchByHash(const Numbers& before, const Numbers& now) {
    std::unordered_map<std::uint64_t, Numbers> left;
    for (auto value = before.rbegin(); value != before.rend(); ++value) {
        if (isOpen(*value)) {
            left[m_old[*value].hash].push_back(*value);
        }
    }
    for (const std::uint32_t element : now) {
        const auto found = left.find(m_new[element].hash);
        const bool isLeft = m_new[element].counterpart == k_none && found != left.end();
        if (isLeft && !found->second.empty()) {
            pair(found->second.back(), element);
            found->second.pop_back();
        }
    }
}

}  // namespace ko::Orvid
