// SPDX-License-Identifier: MIT
//
// One step down a tree: the child that it leads to, its text, and the error where it leads nowhere.

#pragma once

#include <ko/Orvid/Element.h>

#include <string>
#include <string_view>

namespace ko::Orvid {

/// The member of `parent` under `key`, or null when there is none or `parent` is no object.
const Element* childAt(const Element& parent, std::string_view key);
/// The item of `parent` at the 0-based `index`, or null when there is none or it is no array.
const Element* childAt(const Element& parent, unsigned int index);

inline Element* childAt(Element& parent, const std::string& key) {
    return const_cast<Element*>(childAt(static_cast<const Element&>(parent), key));
}
inline Element* childAt(Element& parent, unsigned int index) {
    return const_cast<Element*>(childAt(static_cast<const Element&>(parent), index));
}

/// The text of an array step: `[7]`, with the number for k_noIndex too.
std::string indexText(unsigned int index);

/// A step that leads nowhere: throws PathNotFound, or clears `pathExists` and returns false.
bool stepFails(const Element& current, const std::string& path, const std::string& step,
               bool throws, bool& pathExists);

}  // namespace ko::Orvid
