// SPDX-License-Identifier: MIT
//
// A word that begins with a slash is a pointer, and one that begins with #/ is refused as one.

#include "output/placeWord.h"

namespace orvid_tool {

namespace {

using ko::Orvid::Element;

bool isBelowEmptyKey(const Element& element) {
    for (const Element* at = &element; at->parent() != nullptr; at = at->parent()) {
        if (at->parent()->isObject() && at->memberKey().empty()) {
            return true;
        }
    }
    return false;
}

}  // namespace

std::string pathWord(const std::string& path) {
    const bool isMistakable = path.rfind('/', 0) == 0 || path.rfind("#/", 0) == 0;
    return isMistakable ? "\\" + path : path;
}

std::string placeWord(const Element& element) {
    return isBelowEmptyKey(element) ? ko::Orvid::JsonPointer::of(element).str()
                                    : pathWord(element.path());
}

}  // namespace orvid_tool
