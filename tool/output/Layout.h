// SPDX-License-Identifier: MIT
//
// How values become text: the layout of the library, colour on top of it, and failures where a
// value cannot be written.

#pragma once

#include <ko/Orvid.h>

#include <exception>
#include <string>

#include "output/Bytes.h"
#include "output/Failure.h"

namespace orvid_tool {

struct Layout {
    ko::Orvid::WriteOptions options;
    bool isAsked = false;  ///< by an option, other than colour
    bool isIndentAsked = false;
    bool isColored = false;
};

/// Whether members stay in their order, all characters as they are, and nothing is coloured.
bool isPlain(const Layout& layout);

/// A value that cannot be written. what() says why.
class Unwritable : public std::exception {
public:
    /// `element` cannot be written.
    Unwritable(const char* why, const ko::Orvid::Element& element);
    const char* what() const noexcept override { return m_why; }

    /// Whether the element is in the tree of that root.
    bool isBelow(const ko::Orvid::Element& root) const { return &root == m_root; }
    /// The first value in the element that cannot be written, by its path alone.
    const Location& place() const { return m_place; }

private:
    const char* m_why;
    const ko::Orvid::Element* m_root;  ///< of the element's tree, which may be gone
    Location m_place;
};

/// The value with a newline after it. Throws Unwritable.
std::string jsonText(const ko::Orvid::Element& element, const Layout& layout);
/// Appends the document as its Dom says, in the same way. No further copy is made of a text that is
/// not coloured.
void appendText(const ko::Orvid::Dom& dom, const Layout& layout, Bytes& out);

/// The value on one line, in the layout's other respects, with a newline after it. Throws
/// Unwritable.
std::string jsonLine(const ko::Orvid::Element& element, const Layout& layout);

}  // namespace orvid_tool
