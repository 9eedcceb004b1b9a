// SPDX-License-Identifier: MIT
//
// Habits, how a document is laid out, for what is new in it and has no neighbours to go by.

#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "source/SourceMap.h"

namespace ko::Orvid {

/// How often something was seen one way and the other.
struct Votes {
    std::size_t yes = 0;
    std::size_t no = 0;

    void add(bool vote) noexcept { ++(vote ? yes : no); }
    bool any() const noexcept { return yes + no > 0; }
};

/// The defaults are those of a document that shows no habit: four spaces for each level. One with
/// values on lines, and no indent before any, has none.
struct Habits {
    std::string newline = "\n";
    std::string indent = "    ";    ///< for each level
    std::string colon = ": ";       ///< with the whitespace around it
    std::string memberComma = " ";  ///< the whitespace after the comma of an object on a line
    std::string itemComma = " ";    ///< and after that of an array
    std::string objectPad;          ///< after the opening brace of an object on one line
    std::string arrayPad;
    std::string objectEnd;  ///< before the closing one
    std::string arrayEnd;
    bool breaksLines = true;         ///< members and items stand on lines of their own
    bool breaksScalarArrays = true;  ///< also the items of arrays that begin with a scalar
    bool breaksMixedArrays = true;   ///< those of such arrays in which a container is filled
    bool breaksLists = true;         ///< those of arrays that begin with a container
    bool breaksFlatMembers = true;   ///< those of members that are objects without a filled one
    bool breaksFlatItems = true;     ///< those of such items
    bool opensOnLine = false;        ///< the bracket of a member on lines stands below its key
    bool endsWithComma = false;      ///< the last of them has a comma
    std::string leadingComma;        ///< of all lines but the first, after the bracket's indent;
                                     ///< empty where commas end lines
    std::string commaIndent;         ///< of a bracket that closes what begins after a leading one
};

/// The habits of a document, by its first few thousand containers.
Habits habitsOf(const SourceMap& map);

/// The text of a gap of the container `value`: the first, and the last.
std::string_view openGap(const SourceMap& map, std::uint32_t value);
std::string_view closeGap(const SourceMap& map, std::uint32_t value);

/// Whether the array begins with a container.
bool holdsContainer(const SourceMap& map, std::uint32_t array);

/// Whether a child of the container is a container that has children.
bool holdsFilled(const SourceMap& map, std::uint32_t container);

/// Whether children of the container, which has some, begin on lines of their own, or its bracket
/// closes on one.
bool isManyLine(const SourceMap& map, std::uint32_t container);

}  // namespace ko::Orvid
