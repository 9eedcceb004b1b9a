// SPDX-License-Identifier: MIT
//
// Values that were copied and removed, as they are in the copies.

#include "change/CopiedValues.h"

#include <ko/Orvid/Array.h>
#include <ko/Orvid/Number.h>
#include <ko/Orvid/Object.h>

#include <algorithm>

#include "change/forEachElement.h"
#include "tree/Tree.h"

namespace ko::Orvid {

namespace {

/// Numbers that are written alike: what is compared later is their text.
bool isSameScalar(const Element& a, const Element& b) {
    const bool areNumbers = a.isNumber() && b.isNumber();
    return areNumbers ? a.number().textView() == b.number().textView() : a == b;
}

}  // namespace

CopiedValues::CopiedValues(const ByFirst& copies, const std::vector<const Element*>& first,
                           const Element& former) {
    if (copies.empty()) {
        return;
    }
    auto next = first.begin();
    forEachElement(former, [&](const Element& element) {
        const auto found = copies.find(*next++);
        if (found != copies.end()) {
            m_values.push_back({found->first, &element, found->second});
            m_formers.emplace(found->second, &element);
        }
    });
    for (const Value& value : m_values) {
        if (isContainer(value.former->data()) && !holdsTheSame(value)) {
            setChanged(value.copy);
        }
    }
}

bool CopiedValues::liesAsBefore(const Element& copy) const {
    const Element* const parent = copy.parent();
    const auto container = m_formers.find(parent);
    if (container == m_formers.end()) {
        return false;
    }
    const Element& former = *m_formers.at(&copy);
    const bool isSamePlace =
        parent->isArray() ? former.index() == copy.index() : former.memberKey() == copy.memberKey();
    return container->second == former.parent() && former.parent()->type() == parent->type() &&
           isSamePlace;
}

/// Of containers in it no more than that they are the same ones.
bool CopiedValues::holdsTheSame(const Value& value) const {
    const Element& copy = *value.copy;
    if (copy.type() != value.former->type() || copy.size() != value.former->size()) {
        return false;
    }
    if (copy.isArray()) {
        const Element::TArray& items = copy.array();
        return std::all_of(items.begin(), items.end(),
                           [this](const Element& item) { return isTheSame(item); });
    }
    const Element::TObject& members = copy.object();
    return std::all_of(members.begin(), members.end(),
                       [this](const auto& member) { return isTheSame(member.second); });
}

bool CopiedValues::isTheSame(const Element& child) const {
    const auto found = m_formers.find(&child);
    if (found == m_formers.end() || !liesAsBefore(child)) {
        return false;
    }
    const Element& former = *found->second;
    return isContainer(former.data()) ? former.type() == child.type() : isSameScalar(former, child);
}

void CopiedValues::setChanged(const Element* copy) {
    while (m_formers.count(copy) > 0 && m_changed.insert(copy).second) {
        copy = copy->parent();
    }
}

}  // namespace ko::Orvid
