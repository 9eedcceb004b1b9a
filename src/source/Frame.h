// SPDX-License-Identifier: MIT
//
// Frame, a container that is being written into its text.

#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "source/Gap.h"

namespace ko::Orvid {

/// A child that is to be written: a value of the text, an element of the tree, or, mostly, both.
/// SourceMap::k_none stands for neither. A value without an element is one whose key is repeated.
struct Item {
    std::uint32_t before;
    std::uint32_t now;
};

struct Frame {
    Item self;                            ///< `before` is what its children were in, or k_none
    std::vector<Item> items;              ///< as they are written
    std::vector<std::uint32_t> siblings;  ///< the children that the text has, in its order
    std::vector<bool> stays;              ///< which of these kept their order here
    bool isReplaced;                      ///< whether it has items, and none of these stays
    bool breaksLines;                     ///< where no siblings say whether
    bool leavesLine;                      ///< whether it was on one line, but gets lines
    std::uint32_t lineModel;              ///< whose whitespace it has on one line, or k_none
    std::string lineIndent;               ///< of the line on which the container begins
    Reindent reindent;                    ///< of what is copied from the container's own text

    std::size_t written = 0;  ///< how many items
    std::size_t nearest = 0;  ///< the position in the text of the last that stayed
    std::string itemIndent;   ///< of the line on which the last item begins
    Reindent itemReindent{};  ///< of what is copied with that item
};

}  // namespace ko::Orvid
