// SPDX-License-Identifier: MIT
//
// Errors as sentences after the position that they concern in a document's text.

#include <ko/Orvid/describe.h>

#include <ko/Orvid/Dom.h>
#include <ko/Orvid/Element.h>

#include <optional>

namespace ko::Orvid {

namespace {

/// The element that the error concerns; null where it concerns none of the document.
const Element* elementOf(const std::exception& error, const Dom& dom) {
    const auto* const known = dynamic_cast<const Exception*>(&error);
    if (known == nullptr || known->elementPath() == nullptr || dom.root() == nullptr) {
        return nullptr;
    }
    try {
        return Path::tryGetElement(*known->elementPath(), *dom);
    } catch (const ParseException&) {
        return nullptr;  // path text cannot express every key
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

}  // namespace ko::Orvid
