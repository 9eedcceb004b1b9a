// SPDX-License-Identifier: MIT
//
// Path text in a string. PathGenerator writes the same to a stream.

#pragma once

#include <string>
#include <string_view>

namespace ko::Orvid {

/// Appends the key with a backslash before each special character.
void appendEscaped(std::string& text, std::string_view key);

/// Builds path text step by step.
class PathText {
public:
    void genObjectProperty(std::string_view key);
    /// The 0-based index of an item; k_noIndex gives `[*]`.
    void genListItem(unsigned int index);

    std::string take() { return std::move(m_text); }

private:
    std::string m_text;
    bool m_isFirst = true;
};

}  // namespace ko::Orvid
