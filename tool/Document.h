// SPDX-License-Identifier: MIT
//
// Document, a file's text and the tree read from it.

#pragma once

#include <ko/Orvid.h>

#include <string>

namespace orvid_tool {

/// The name under which standard input is given and reported.
inline const char* const k_standardInput = "-";

/// One file, read whole. The tree stays where it is made.
struct Document {
    /// Reads the file, or standard input for "-", which must hold one complete value and, around
    /// it, nothing but blanks and comments. Throws Failure, which names the file and the place.
    explicit Document(const std::string& file);
    Document(const Document&) = delete;
    Document& operator=(const Document&) = delete;

    std::string name;  ///< of the file, as shown in errors
    ko::Orvid::Element root;
};

/// Reads `text` into `root`, as Document does with a file's text; `name` stands for the file in
/// errors.
void readText(const std::string& name, const std::string& text, ko::Orvid::Element& root);

}  // namespace orvid_tool
