// SPDX-License-Identifier: MIT
//
// How values become text: the layout of the library, colour on top of it, and failures where a
// value cannot be written.

#pragma once

#include <ko/Orvid.h>

#include <exception>
#include <string>

#include "output/Bytes.h"

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
    explicit Unwritable(const char* why) : m_why(why) {}
    const char* what() const noexcept override { return m_why; }

private:
    const char* m_why;
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
