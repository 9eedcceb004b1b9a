// SPDX-License-Identifier: MIT
//
// Descriptions in the document's own schema: where they stand, and what they hold.

#pragma once

#include <ko/Orvid/Element.h>
#include <ko/Orvid/Object.h>
#include <ko/Orvid/Path.h>

#include <string>
#include <string_view>

#include "tree/Ancestors.h"
#include "tree/PathStep.h"

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

/// What describes the element; null where nothing does. Linear in the depth.
inline const Element* descriptionOf(const Element& element) {
    const Element* found = childOf(childAt(*element.root(), Path::k_meta), Path::k_schema);
    if (found != nullptr) {
        walkDown(
            element, nullptr,
            [&](const std::string& key) { found = memberDescription(found, key); },
            [&](unsigned int) { found = childOf(found, Path::k_metaArrayItem); });
    }
    return found;
}

}  // namespace ko::Orvid
