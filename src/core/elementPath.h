// SPDX-License-Identifier: MIT
//
// The path of an element for the exceptions, which need not know elements: they ask for it when
// they are built, since they may outlive the tree.

#pragma once

#include <ko/Orvid/fwd.h>

#include <string>

namespace ko::Orvid {

/// The path of `element` from its root, as Element::path(nullptr) writes it, at the same cost.
std::string pathText(const Element& element);
/// The text of the JSON Pointer of `element` where an empty key lies on the way to it from its
/// root; empty otherwise. Linear in the depth and the length of the keys.
std::string pointerBelowEmptyKey(const Element& element);

}  // namespace ko::Orvid
