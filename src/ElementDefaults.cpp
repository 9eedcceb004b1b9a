// SPDX-License-Identifier: MIT
//
// Default values from the document's own schema.

#include <ko/Orvid/Element.h>

#include "SchemaWalk.h"

namespace ko::Orvid {

namespace {

/// Where the schema holds the default for the element at `path` below `element`.
Path defaultPath(const Element& element, const Path& path) {
    std::string absolute = element.path();
    const bool needsDot = !path.empty() && path.str().front() != '.' && path.str().front() != '[';
    if (needsDot) {
        absolute += '.';
    }
    absolute += path.str();
    return Path::toSchemaPath(absolute).str() + "." + Path::k_default;
}

}  // namespace

const Element& Element::tryGetDefault(const Path& path, const Element& fallback) const {
    const auto walked = walkToDefault(*this, path);
    if (!walked) {
        return root()->tryGet(defaultPath(*this, path), fallback);
    }
    return *walked == nullptr ? fallback : **walked;
}

const Element& Element::getDefault(const Path& path) const {
    const auto walked = walkToDefault(*this, path);
    return walked && *walked != nullptr ? **walked : root()->get(defaultPath(*this, path));
}

const Element& Element::tryGetUsingDefault(const Path& path, const Element& fallback) const {
    return tryGet(path, tryGetDefault(path, fallback));
}

const Element& Element::getUsingDefault(const Path& path) const {
    return tryGet(path, getDefault(path));
}

}  // namespace ko::Orvid
