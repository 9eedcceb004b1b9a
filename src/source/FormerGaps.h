// SPDX-License-Identifier: MIT
//
// FormerGaps, the gaps that the text has between the children of its containers.

#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "source/Counterparts.h"
#include "source/Frame.h"
#include "source/Gap.h"
#include "source/SourceMap.h"

namespace ko::Orvid {

class FormerGaps {
public:
    FormerGaps(const SourceMap& map, const Counterparts& counterparts)
        : m_map(map), m_counterparts(counterparts) {}

    // Of a container that is written and was in the text. The gap of a number is the one before the
    // sibling at that position; the last is the one before the closing bracket.

    std::string_view textAt(const Frame& frame, std::size_t number) const;
    Gap at(const Frame& frame, std::size_t number) const;

    // Around a value of the text that is not the root.

    Gap before(std::uint32_t value) const;
    Gap after(std::uint32_t value) const;

    /// What begins the line on which the value of the text begins, from the newline before it on;
    /// nothing for the first line.
    std::string lineBreakBefore(std::uint32_t value) const;

private:
    const SourceMap& m_map;
    const Counterparts& m_counterparts;
};

}  // namespace ko::Orvid
