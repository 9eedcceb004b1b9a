// SPDX-License-Identifier: MIT
//
// The operations on whole trees of payloads. None of them recurses for more than 32 levels:
// documents may be nested deeper than any stack.

#pragma once

#include <ko/Orvid/Element.h>

#include "tree/StringNode.h"

namespace ko::Orvid {

inline bool isContainer(const Element::SData& data) {
    return data.type == etObject || data.type == etArray;
}

/// Releases the payload of anything but a container; the record stays as it is.
inline void releaseLeaf(const Element::SData& data) {
    if (data.type == etNumber) {
        delete data.value.number;
    } else if (data.type == etString) {
        deleteString(data.value.string);
    }
}

/// A payload that is released unless it is handed on: what stands between an allocation and its
/// owner.
class OwnedData {
public:
    OwnedData(EType type, Element* owner) { Element::create(m_data, type, owner); }
    ~OwnedData() { Element::destroy(m_data); }
    OwnedData(const OwnedData&) = delete;
    OwnedData& operator=(const OwnedData&) = delete;

    Element::SData& operator*() noexcept { return m_data; }
    Element::SData release() noexcept {
        const Element::SData data = m_data;
        m_data = Element::SData();
        return data;
    }

private:
    Element::SData m_data;
};

/// Makes `element` an empty container of that type. Throws std::bad_alloc, leaving it unchanged.
inline void becomeContainer(Element& element, EType type) {
    OwnedData container(type, &element);
    Element::destroy(element.data());
    element.data() = container.release();
}

/// The container of `data`, if it is one, belongs to `owner` from now on, in constant time.
void moveTree(Element::SData& data, Element* owner) noexcept;

/// Fills `target`, an empty container, with deep copies of the children of `source`, a container of
/// the same type. Throws std::bad_alloc with some of them copied.
void copyTree(Element::SData& target, const Element::SData& source);

/// The order of two payloads (see Element::compare).
int compareTrees(const Element::SData& a, const Element::SData& b);

/// Frees a container and all that it holds. Needs no memory.
void destroyTree(Element::SData& data) noexcept;

}  // namespace ko::Orvid
