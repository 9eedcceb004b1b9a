// SPDX-License-Identifier: MIT
//
// Finding what describes an element. The positions of items do not matter in the schema, and so are
// not asked for: those of copied items would cost a search.

#include "schema/SchemaNode.h"

#include <ko/Orvid/Array.h>

#include <algorithm>
#include <cstddef>

namespace ko::Orvid {

namespace {

using Way = std::vector<const Element*>;

const Element* describeRest(const Element* description, const Way& way, std::size_t first) {
    for (std::size_t i = first; i < way.size() && description != nullptr; ++i) {
        description = childDescription(description, *way[i]);
    }
    return description;
}

bool isKey(const Element& element, std::string_view key) {
    return element.parent()->isObject() && element.memberKey() == key;
}

/// The number of steps to the default that the way leads to or through; 0 where it leads to none.
std::size_t stepsToDefault(const Way& way) {
    constexpr std::size_t stepsToSchema = 2;
    if (way.size() <= stepsToSchema || !isKey(*way[0], Path::k_meta) ||
        !isKey(*way[1], Path::k_schema)) {
        return 0;
    }
    for (std::size_t i = stepsToSchema; i < way.size(); ++i) {
        if (isKey(*way[i], Path::k_default)) {
            return i + 1;
        }
        if (isKey(*way[i], Path::k_metaObjectProperty)) {
            ++i;  // the key, whatever it is
        } else if (!isKey(*way[i], Path::k_metaArrayItem)) {
            return 0;
        }
    }
    return 0;
}

}  // namespace

const Element* childDescription(const Element* description, const Element& child) {
    switch (child.parent()->type()) {
        case etObject:
            return memberDescription(description, child.memberKey());
        case etArray:
            return childOf(description, Path::k_metaArrayItem);
        default:
            return nullptr;
    }
}

std::vector<const Element*> wayTo(const Element& element) {
    Way way;
    for (const Element* step = &element; step->parent() != nullptr; step = step->parent()) {
        way.push_back(step);
    }
    std::reverse(way.begin(), way.end());
    return way;
}

const Element* descriptionOf(const Element& element) {
    const Element& root = *element.root();
    const Element* const schema = childOf(childAt(root, Path::k_meta), Path::k_schema);
    if (schema == nullptr) {
        return nullptr;
    }
    const Way way = wayTo(element);
    const std::size_t inDefault = stepsToDefault(way);
    return inDefault == 0 ? describeRest(schema, way, 0)
                          : describeRest(way[inDefault - 1]->parent(), way, inDefault);
}

bool holdsDefault(const Element& description) {
    std::vector<const Element*> open{&description};
    while (!open.empty()) {
        const Element::TObject* const properties = propertiesOf(*open.back());
        open.pop_back();
        if (properties == nullptr) {
            continue;
        }
        for (const auto& property : *properties) {
            if (defaultOf(property.second) != nullptr) {
                return true;
            }
            open.push_back(&property.second);
        }
    }
    return false;
}

}  // namespace ko::Orvid
