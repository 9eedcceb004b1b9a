// SPDX-License-Identifier: MIT
//
// CopiedValues, values that a patch removed after it had copied them, beside their copies. What
// lies in a copy as it lay before the patch is found there by comparing, unless the container that
// it lies in has changed.

#pragma once

#include <ko/Orvid/Element.h>

#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace ko::Orvid {

class CopiedValues {
public:
    struct Value {
        const Element* first;   ///< its element before the patch
        const Element* former;  ///< the element of the same place in a tree that is as before it
        const Element* copy;
    };
    using ByFirst = std::unordered_map<const Element*, const Element*>;

    /// `copies` by the first elements; `first` has those of all values, in the order of a walk
    /// over `former`. Linear cost, none where there are no copies.
    CopiedValues(const ByFirst& copies, const std::vector<const Element*>& first,
                 const Element& former);

    /// In the order of a walk over the former tree.
    std::vector<Value>::const_iterator begin() const { return m_values.begin(); }
    std::vector<Value>::const_iterator end() const { return m_values.end(); }

    /// Whether the copy lies in the copy of the container in which its value lay, at the same
    /// index.
    bool liesAsBefore(const Element& copy) const;
    /// Whether the copy is a container that holds other values than it held before the patch,
    /// however deep.
    bool hasChanged(const Element& copy) const { return m_changed.count(&copy) > 0; }

private:
    bool holdsTheSame(const Value& value) const;
    bool isTheSame(const Element& child) const;
    void setChanged(const Element* copy);

    std::vector<Value> m_values;
    ByFirst m_formers;  ///< by the copies
    std::unordered_set<const Element*> m_changed;
};

}  // namespace ko::Orvid
