// SPDX-License-Identifier: MIT
//
// The members of Path that translate between a path in the data and the path in the schema that
// describes it.

#include <ko/Orvid/Element.h>
#include <ko/Orvid/FromSchemaPathConverter.h>
#include <ko/Orvid/Path.h>
#include <ko/Orvid/PathGenerator.h>
#include <ko/Orvid/PathParser.h>
#include <ko/Orvid/ToSchemaPathConverter.h>

#include "core/TextStream.h"
#include "tree/Ancestors.h"

namespace ko::Orvid {

namespace {

/// Converts path text step by step.
template<class Converter>
Path converted(const Path& path) {
    TextStream text;
    PathGenerator generator(text);
    Converter converter(generator);
    PathParser(&converter).parse(path.str());
    return text.str();
}

}  // namespace

std::ostream& Path::elementSchemaPath(std::ostream& out, const Element& element,
                                      const Element* relativeTo) {
    PathGenerator generator(out);
    ToSchemaPathConverter converter(generator);
    walkDown(
        element, relativeTo, [&](const std::string& key) { converter.cbObjectProperty(key); },
        [&](unsigned int index) { converter.cbArrayItem(index); });
    return out;
}

Path Path::toSchemaPath(const Path& path) { return converted<ToSchemaPathConverter>(path); }

Path Path::fromSchemaPath(const Path& path) { return converted<FromSchemaPathConverter>(path); }

}  // namespace ko::Orvid
