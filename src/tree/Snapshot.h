// SPDX-License-Identifier: MIT
//
// Snapshot, the value of an element as it was before an edit that may change or destroy it.

#pragma once

#include <ko/Orvid/Element.h>

#include <optional>

#include "tree/Containment.h"

namespace ko::Orvid {

/// Keeps a copy of `value` when it may lie in the tree of `edited`, and refers to it otherwise.
class Snapshot {
public:
    Snapshot(const Element& value, const Element& edited) : m_value(&value) {
        if (mayShareTree(value, edited)) {
            m_copy.emplace(value);
        }
    }

    const Element& get() const noexcept { return m_copy ? *m_copy : *m_value; }

    /// Copies the value into `target`, unless that is the very element that it was taken from.
    void copyTo(Element& target) const {
        if (&target != m_value) {
            target = get();
        }
    }

private:
    const Element* m_value;
    std::optional<Element> m_copy;
};

}  // namespace ko::Orvid
