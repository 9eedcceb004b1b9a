// SPDX-License-Identifier: MIT
//
// Looking elements up, by path and by content.

#include <ko/Orvid/Array.h>
#include <ko/Orvid/Element.h>
#include <ko/Orvid/Exception.h>

#include <utility>

#include "tree/followPlain.h"
#include "tree/ItemMatch.h"

namespace ko::Orvid {

const Element* Element::elementAt(PathView path) const {
    const auto followed = followPlain(path.text(), *this);
    return followed ? *followed : Path::tryGetElement(path.path(), *this);
}

bool Element::pathExists(PathView path, EType type) const {
    const Element* const found = elementAt(path);
    return found != nullptr && (type == etEmpty || found->type() == type);
}

const Element& Element::get(PathView path) const {
    const Element* const found = Path::plainElement(path.text(), *this);
    return found != nullptr ? *found : Path::getElement(path.path(), *this);
}

Element& Element::get(PathView path) {
    return const_cast<Element&>(std::as_const(*this).get(path));
}

const Element& Element::tryGet(PathView path, const Element& fallback) const {
    const Element* const found = elementAt(path);
    return found == nullptr ? fallback : *found;
}

std::string Element::toOr(PathView path, const char* fallback) const {
    return toOr<std::string>(path, fallback);
}

Element Element::getOr(PathView path, Element fallback) const {
    const Element* const found = elementAt(path);
    if (found == nullptr) {
        return fallback;
    }
    return *found;
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

const Element* Element::find(const detail::Converted& value, const Path& itemPath,
                             const Path& arrayPath) const {
    return find(value.element, itemPath, arrayPath);
}

Element* Element::find(const detail::Converted& value, const Path& itemPath,
                       const Path& arrayPath) {
    return find(value.element, itemPath, arrayPath);
}

const Element& Element::tryFind(const Element& value, const Element& fallback, const Path& itemPath,
                                const Path& arrayPath) const {
    const Element* const list = Path::tryGetElement(arrayPath, *this, etArray);
    const Element* const found = list == nullptr ? nullptr : list->find(value, itemPath);
    return found == nullptr ? fallback : *found;
}

}  // namespace ko::Orvid
