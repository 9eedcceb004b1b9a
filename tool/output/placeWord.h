// SPDX-License-Identifier: MIT
//
// Places as the verbs accept them: what is written of one leads back to it.

#pragma once

#include <ko/Orvid.h>

#include <string>

namespace orvid_tool {

/// The path as a word of a call, with a backslash before it where the word would be taken for a
/// JSON Pointer.
std::string pathWord(const std::string& path);

/// The word that leads to the element: its path, or below an empty key, which a path cannot
/// express, its JSON Pointer. Linear in the depth and the length of the keys.
std::string placeWord(const ko::Orvid::Element& element);

}  // namespace orvid_tool
