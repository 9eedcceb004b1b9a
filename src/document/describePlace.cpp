// SPDX-License-Identifier: MIT
//
// Errors as sentences after the position that they concern in a document's text.

#include <ko/Orvid/describe.h>

#include <ko/Orvid/Dom.h>
#include <ko/Orvid/Element.h>
#include <ko/Orvid/JsonLines.h>
#include <ko/Orvid/JsonPointer.h>
#include <ko/Orvid/PatchException.h>
#include <ko/Orvid/PathGenerator.h>

#include <optional>
#include <sstream>
#include <vector>

#include "change/PointerStep.h"

namespace ko::Orvid {

namespace {

/// Whether it is an error in a JSON text that has a line of its own: not in a path.
bool isInText(const std::exception& error) {
    const auto* const inText = dynamic_cast<const ParseException*>(&error);
    return inText != nullptr && inText->text().empty() && inText->firstLine() >= 0;
}

/// The element that the error concerns; null where it concerns none of the document, as where a
/// text could not be read, or a patch has put it there.
const Element* elementOf(const std::exception& error, const Dom& dom) {
    const auto* const known = dynamic_cast<const Exception*>(&error);
    if (known == nullptr || known->elementPath() == nullptr || dom.root() == nullptr ||
        isInText(error)) {
        return nullptr;
    }
    if (const auto* const ofPatch = dynamic_cast<const PatchException*>(known)) {
        const std::string* const former = ofPatch->formerPlace();
        return former == nullptr ? nullptr : JsonPointer(*former).find(*dom);
    }
    if (known->elementPointer() != nullptr) {
        return JsonPointer(*known->elementPointer()).find(*dom);
    }
    try {
        return Path::tryGetElement(*known->elementPath(), *dom);
    } catch (const ParseException&) {
        return nullptr;  // path text cannot express every key
    }
}

/// The former place, of which a JSON Pointer does not say what is an item. The steps are those to
/// the element now, except for the indices of items: nothing on the way was put there.
Path formerPath(const JsonPointer& former, const Path& now) {
    const std::vector<PathStep> steps = now.steps();
    if (steps.size() != former.steps().size()) {
        return former.toPath();
    }
    std::ostringstream path;
    PathGenerator generator(path);
    for (std::size_t i = 0; i < steps.size(); ++i) {
        if (steps[i].key) {
            generator.genObjectProperty(*steps[i].key);
        } else {
            generator.genListItem(pointerIndex(former.steps()[i]).value_or(k_noIndex));
        }
    }
    return path.str();
}

/// Nothing where the error is of a patch that has put the element there.
std::optional<Path> pathInRecord(const Exception& error) {
    const auto* const ofPatch = dynamic_cast<const PatchException*>(&error);
    if (ofPatch == nullptr) {
        return *error.elementPath();
    }
    if (ofPatch->formerPlace() == nullptr) {
        return std::nullopt;
    }
    return formerPath(JsonPointer(*ofPatch->formerPlace()), *error.elementPath());
}

std::optional<SourcePlace> placeIn(const JsonLines& lines, const Exception& error) {
    if (error.elementPointer() != nullptr) {
        return std::nullopt;
    }
    try {
        const std::optional<Path> path = pathInRecord(error);
        return path ? lines.placeOf(*path) : std::nullopt;
    } catch (const Exception&) {
        return std::nullopt;  // path text cannot express every key
    }
}

}  // namespace

std::string describe(const std::exception& error, const Dom& dom) {
    const Element* const element = elementOf(error, dom);
    const std::optional<SourcePlace> position =
        element == nullptr ? std::nullopt : dom.placeOf(*element);
    if (!position) {
        return describe(error);
    }
    const std::string file = dom.file().empty() ? "" : dom.file() + ":";
    return file + std::to_string(position->line) + ":" + std::to_string(position->column) + ": " +
           describe(error);
}

std::string describe(const std::exception& error, const JsonLines& lines) {
    const auto* const known = dynamic_cast<const Exception*>(&error);
    const auto* const inText = dynamic_cast<const ParseException*>(&error);
    const bool namesLine = inText != nullptr && inText->firstLine() >= 0;
    if (known == nullptr || known->elementPath() == nullptr || namesLine) {
        return describe(error);
    }
    const std::optional<SourcePlace> position = placeIn(lines, *known);
    return std::to_string(lines.number()) + ":" +
           (position ? std::to_string(position->column) + ":" : "") + " " + describe(error);
}

}  // namespace ko::Orvid
