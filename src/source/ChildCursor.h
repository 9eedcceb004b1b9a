// SPDX-License-Identifier: MIT
//
// ChildCursor, one walk for the children of objects and of arrays.

#pragma once

#include <ko/Orvid/Array.h>
#include <ko/Orvid/Element.h>
#include <ko/Orvid/Object.h>

namespace ko::Orvid {

/// The children of a container, one after the other. The container must not change meanwhile.
class ChildCursor {
public:
    explicit ChildCursor(const Element& container)
        : m_object(container.isObject() ? &container.object() : nullptr),
          m_array(container.isArray() ? &container.array() : nullptr) {
        if (m_object != nullptr) {
            m_member = m_object->begin();
        } else {
            m_item = m_array->begin();
        }
    }

    /// The next child, or null.
    const Element* next() {
        if (m_object != nullptr) {
            return m_member == m_object->end() ? nullptr : &m_member++->second;
        }
        return m_item == m_array->end() ? nullptr : &*m_item++;
    }

private:
    const Element::TObject* m_object;
    const Element::TArray* m_array;
    Element::TObject::const_iterator m_member;
    Element::TArray::const_iterator m_item;
};

inline bool isContainer(const Element& element) { return element.isObject() || element.isArray(); }

}  // namespace ko::Orvid
