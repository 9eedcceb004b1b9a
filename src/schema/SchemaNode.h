// SPDX-License-Identifier: MIT
//
// Descriptions in the document's own schema: where they stand, and what they hold.

#pragma once

#include <ko/Orvid/Element.h>
#include <ko/Orvid/Object.h>
#include <ko/Orvid/Path.h>

#include <string_view>
#include <vector>

#include "tree/childAt.h"

namespace ko::Orvid {

inline const Element* childOf(const Element* parent, std::string_view key) {
    return parent == nullptr ? nullptr : childAt(*parent, key);
}

/// The default that a description gives, or null.
inline const Element* defaultOf(const Element& description) {
    const Element* const value = childAt(description, Path::k_default);
    return value == nullptr || value->isEmpty() ? nullptr : value;
}

/// The description of a member of what `description` describes, or null.
inline const Element* memberDescription(const Element* description, std::string_view key) {
    return childOf(childOf(description, Path::k_metaObjectProperty), key);
}

/// The descriptions of an object's members, or null.
inline const Element::TObject* propertiesOf(const Element& description) {
    const Element* const properties = childAt(description, Path::k_metaObjectProperty);
    return properties == nullptr || !properties->isObject() ? nullptr : &properties->object();
}

/// The description of `child` where its parent is described so, or null.
const Element* childDescription(const Element* description, const Element& child);

/// The elements from a child of the root down to the element. Linear in the depth.
std::vector<const Element*> wayTo(const Element& element);

/// What describes the element; null where nothing does. What lies in a default is described as the
/// value that the default stands for. Linear in the depth.
const Element* descriptionOf(const Element& element);

/// Whether a default stands below the description, reached through objects alone. Linear in the
/// size of what the description holds; does not recurse.
bool holdsDefault(const Element& description);

}  // namespace ko::Orvid
