// SPDX-License-Identifier: MIT
//
// Editing by path. Values given by the caller may lie in the tree that is edited, so each operation
// takes them as they were before it changes anything.

#include <ko/Orvid/Array.h>
#include <ko/Orvid/Element.h>
#include <ko/Orvid/Exception.h>
#include <ko/Orvid/Object.h>

#include <utility>

#include "tree/ItemMatch.h"
#include "tree/Snapshot.h"

namespace ko::Orvid {

void Element::remove(const Element& value, const Path& itemPath, const Path& arrayPath) {
    TArray& items = get(arrayPath).array();
    const Snapshot before(value, *this);
    items.removeMatches(
        [&](const Element& item) { return itemMatches(item, itemPath, before.get()); });
}

void Element::tryRemove(const Element& value, const Path& itemPath, const Path& arrayPath) {
    try {
        remove(value, itemPath, arrayPath);
    } catch (const Exception&) {
        return;  // that there is nothing to remove is an accepted outcome here
    }
}

Element& Element::create(const Path& path, const Element& value) {
    return Path::createElement(*this, path, value);
}

// Converted values are moved into place, so that items know theirs.
Element& Element::create(const Path& path, detail::Converted value) {
    return create(path, k_emptyElement) = std::move(value.element);
}

Element& Element::tryCreate(const Path& path, const Element& value) {
    return Path::tryCreateElement(*this, path, value);
}

Element& Element::update(const Path& path, const Element& value) {
    Element& element = get(path);
    element = value;
    return element;
}

Element& Element::update(const Path& path, detail::Converted value) {
    return get(path) = std::move(value.element);
}

// The two differ in name only: an element that is there keeps its value until the new one is
// copied.
Element& Element::tryUpdate(const Path& path, const Element& value) {
    return tryCreate(path, value);
}

Element& Element::tryUpdate(const Path& path, detail::Converted value) {
    return tryCreate(path, k_emptyElement) = std::move(value.element);
}

Element& Element::insert(const Path& key, const Element& value) {
    return object().insert({key.str(), value}).first->second;
}

Element& Element::insert(const Path& key, detail::Converted value) {
    return insert(key, Element()) = std::move(value.element);
}

}  // namespace ko::Orvid
