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

const Element& Element::tryGetDefault(PathView path, const Element& fallback) const {
    const auto walked = walkToDefault(*this, path.text());
    if (!walked) {
        return root()->tryGet(defaultPath(*this, path.text()), fallback);
    }
    return *walked == nullptr ? fallback : **walked;
}

const Element& Element::getDefault(PathView path) const {
    const auto walked = walkToDefault(*this, path.text());
    return walked && *walked != nullptr ? **walked : root()->get(defaultPath(*this, path.text()));
}

const Element& Element::tryGetUsingDefault(PathView path, const Element& fallback) const {
    if (const auto walked = walkToBoth(*this, path.text())) {
        const Element* const found = walked->inData != nullptr ? walked->inData : walked->inSchema;
        return found == nullptr ? fallback : *found;
    }
    return tryGet(path, tryGetDefault(path, fallback));
}

const Element& Element::getUsingDefault(PathView path) const {
    const auto walked = walkToBoth(*this, path.text());
    if (walked && walked->inSchema != nullptr) {
        return walked->inData != nullptr ? *walked->inData : *walked->inSchema;
    }
    return tryGet(path, getDefault(path));
}

}  // namespace ko::Orvid
