// SPDX-License-Identifier: MIT
//
// Default values from the document's own schema.

#include <ko/Orvid/Element.h>

#include "schema/SchemaWalk.h"

namespace ko::Orvid {

namespace {

/// Where the schema holds the default for the element at `path` below `element`.
Path defaultPath(const Element& element, std::string_view path) {
    std::string absolute = element.path();
    const bool needsDot = !path.empty() && path.front() != '.' && path.front() != '[';
    if (needsDot) {
        absolute += '.';
    }
    absolute += path;
    return Path::toSchemaPath(absolute).str() + "." + Path::k_default;
}

}  // namespace

const Element& Element::tryDefaultAt(std::string_view path, const Element& fallback) const {
    const auto walked = walkToDefault(*this, path);
    if (!walked) {
        return root()->tryGet(defaultPath(*this, path), fallback);
    }
    return *walked == nullptr ? fallback : **walked;
}

const Element& Element::defaultAt(std::string_view path) const {
    const auto walked = walkToDefault(*this, path);
    return walked && *walked != nullptr ? **walked : root()->get(defaultPath(*this, path));
}

const Element& Element::tryUsingDefaultAt(std::string_view path, const Element& fallback) const {
    if (const auto walked = walkToBoth(*this, path)) {
        const Element* const found = walked->inData != nullptr ? walked->inData : walked->inSchema;
        return found == nullptr ? fallback : *found;
    }
    return tryGet(pathOf(path), tryDefaultAt(path, fallback));
}

const Element& Element::usingDefaultAt(std::string_view path) const {
    const auto walked = walkToBoth(*this, path);
    if (walked && walked->inSchema != nullptr) {
        return walked->inData != nullptr ? *walked->inData : *walked->inSchema;
    }
    return tryGet(pathOf(path), defaultAt(path));
}

}  // namespace ko::Orvid
