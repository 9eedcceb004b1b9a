// SPDX-License-Identifier: MIT
//
// LineLayout, how the containers of a record on one line are laid out, for a new value that is put
// into it. The library goes by what most containers do; here all must do the same.

#pragma once

#include <ko/Orvid.h>

#include <optional>
#include <string>
#include <string_view>

namespace orvid_tool {

class LineLayout {
public:
    /// The layout of the containers in the text, which strict reading accepts. Nothing where they
    /// are not all laid out alike, where the text has several lines, and where there are very many
    /// containers.
    static std::optional<LineLayout> of(std::string_view text);

    /// Appends the value as the library would lay it out where no container stood before. Returns
    /// false for a value that is deep, with a part of it appended.
    bool append(const ko::Orvid::Element& value, std::string& out) const;

private:
    class Survey;

    /// What stands around the children of an object, or of an array.
    struct Gaps {
        std::string pad;    ///< after the opening bracket
        std::string comma;  ///< after a comma
        std::string end;    ///< before the closing bracket
    };

    bool append(const ko::Orvid::Element& value, unsigned int depth, std::string& out) const;
    bool appendMembers(const ko::Orvid::Element& value, unsigned int depth, std::string& out) const;
    bool appendItems(const ko::Orvid::Element& value, unsigned int depth, std::string& out) const;

    std::string m_colon;  ///< with the whitespace around it
    Gaps m_object;
    Gaps m_array;
};

}  // namespace orvid_tool
