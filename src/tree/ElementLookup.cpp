// SPDX-License-Identifier: MIT
//
// Looking elements up, by path and by content.

#include <ko/Orvid/Array.h>
#include <ko/Orvid/Element.h>
#include <ko/Orvid/Exception.h>

#include <utility>

#include "tree/ItemMatch.h"

namespace ko::Orvid {

bool Element::pathExists(const Path& path, EType type) const {
    return Path::pathExists(path, *this, type);
}

Element& Element::get(const Path& path) {
    return path.empty() ? *this : Path::getElement(path, *this);
}

const Element& Element::get(const Path& path) const {
    return path.empty() ? *this : Path::getElement(path, *this);
}

const Element& Element::tryGet(const Path& path, const Element& fallback) const {
    const Element* const found = Path::tryGetElement(path, *this);
    return found == nullptr ? fallback : *found;
}

const Element* Element::find(const Element& value, const Path& itemPath,
                             const Path& arrayPath) const {
    for (const Element& item : get(arrayPath).array()) {
        if (itemMatches(item, itemPath, value)) {
            return &item;
        }
    }
    return nullptr;
}

Element* Element::find(const Element& value, const Path& itemPath, const Path& arrayPath) {
    return const_cast<Element*>(std::as_const(*this).find(value, itemPath, arrayPath));
}

const Element& Element::tryFind(const Element& value, const Element& fallback, const Path& itemPath,
                                const Path& arrayPath) const {
    const Element* const list = Path::tryGetElement(arrayPath, *this, etArray);
    const Element* const found = list == nullptr ? nullptr : list->find(value, itemPath);
    return found == nullptr ? fallback : *found;
}

}  // namespace ko::Orvid
