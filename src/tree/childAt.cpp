// SPDX-License-Identifier: MIT
//
// One step down a tree, by key or by index.

#include "tree/childAt.h"

#include <ko/Orvid/Array.h>
#include <ko/Orvid/Object.h>
#include <ko/Orvid/PathException.h>

namespace ko::Orvid {

const Element* childAt(const Element& parent, std::string_view key) {
    if (!parent.isObject()) {
        return nullptr;
    }
    const Element::TObject& members = *parent.data().value.object;
    const auto member = members.find(key);
    return member == members.end() ? nullptr : &member->second;
}

const Element* childAt(const Element& parent, unsigned int index) {
    if (!parent.isArray()) {
        return nullptr;
    }
    const Element::TArray& items = *parent.data().value.array;
    return index < items.size() ? &items[index] : nullptr;
}

std::string indexText(unsigned int index) { return "[" + std::to_string(index) + "]"; }

bool stepFails(const Element& current, const std::string& path, const std::string& step,
               bool throws, bool& pathExists) {
    if (throws) {
        throw PathNotFound(&current, path, step);
    }
    pathExists = false;
    return false;
}

}  // namespace ko::Orvid
