// SPDX-License-Identifier: MIT
//
// Path constants, lookup and creation by path, and the path text of an element.

#include <ko/Orvid/Path.h>

#include <ko/Orvid/Element.h>
#include <ko/Orvid/ElementCreator.h>
#include <ko/Orvid/ElementGetter.h>
#include <ko/Orvid/Exception.h>
#include <ko/Orvid/PathGenerator.h>
#include <ko/Orvid/PathParser.h>

#include <optional>
#include <utility>

#include "core/elementPath.h"
#include "core/elementType.h"
#include "path/PathText.h"
#include "tree/Ancestors.h"
#include "tree/followPlain.h"
#include "tree/Snapshot.h"

namespace ko::Orvid {

const std::string Path::k_noName;
const std::string Path::k_meta = "meta";
const std::string Path::k_schema = "schema";
const std::string Path::k_default = "default";
const std::string Path::k_metaObjectProperty = "properties";
const std::string Path::k_metaArrayItem = "items";
const std::string Path::k_escapeChars(PathGenerator::k_special);

const Element* Path::plainElement(std::string_view path, const Element& start) {
    return followPlain(path, start).value_or(nullptr);
}

const Element& Path::getElement(const Path& path, const Element& start) {
    if (const Element* const element = plainElement(path.str(), start)) {
        return *element;
    }
    ElementGetter getter(&path, start, true);
    PathParser(&getter).parse(path.str());
    return getter.currentElement();
}

Element& Path::getElement(const Path& path, Element& start) {
    return const_cast<Element&>(getElement(path, std::as_const(start)));
}

const Element* Path::tryGetElement(const Path& path, const Element& start, EType type) {
    std::optional<const Element*> followed = followPlain(path.str(), start);
    if (!followed) {
        ElementGetter getter(&path, start, false);
        PathParser(&getter).parse(path.str());
        followed = getter.pathExists() ? &getter.currentElement() : nullptr;
    }
    const Element* const found = *followed;
    const bool matches = found != nullptr && (type == etEmpty || found->type() == type);
    return matches ? found : nullptr;
}

Element* Path::tryGetElement(const Path& path, Element& start, EType type) {
    return const_cast<Element*>(tryGetElement(path, std::as_const(start), type));
}

bool Path::pathExists(const Path& path, const Element& start, EType type) {
    return tryGetElement(path, start, type) != nullptr;
}

Element& Path::createElement(Element& start, const Path& path, const Element& value) {
    const Snapshot before(value, start);
    ElementCreator creator(path, start, value, true);
    PathParser(&creator).parse(path.str());
    before.copyTo(creator.currentElement());
    return creator.currentElement();
}

Element& Path::tryCreateElement(Element& start, const Path& path, const Element& value) {
    const Snapshot before(value, start);
    ElementCreator creator(path, start, value, false);
    PathParser(&creator).parse(path.str());
    if (!creator.pathExists()) {
        throw Exception(
            "Error creating element. Parent: \"" + start.path() + "\" path: \"" + path.str() + "\"",
            &start);
    }
    before.copyTo(creator.currentElement());
    return creator.currentElement();
}

std::ostream& Path::elementPath(std::ostream& out, const Element& element,
                                const Element* relativeTo) {
    PathGenerator generator(out);
    walkDown(
        element, relativeTo, [&](const std::string& key) { generator.genObjectProperty(key); },
        [&](unsigned int index) { generator.genListItem(index); });
    return out;
}

std::string pathText(const Element& element) { return element.path(); }

EType elementType(const Element& element) noexcept { return element.type(); }

}  // namespace ko::Orvid

std::ostream& operator<<(std::ostream& out, const ko::Orvid::Path& path) {
    return out << path.str();
}
