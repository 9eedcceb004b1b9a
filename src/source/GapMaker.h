// SPDX-License-Identifier: MIT
//
// GapMaker makes the text between two neighbours in a container that is written: as it was where
// they were neighbours before, and otherwise of what belongs to each, what belongs to neither, and
// what is usual there.

#pragma once

#include <string>

#include "source/Counterparts.h"
#include "source/FormerGaps.h"
#include "source/Frame.h"
#include "source/SourceMap.h"
#include "source/StayingLines.h"
#include "source/UsualLayout.h"

namespace ko::Orvid {

class GapMaker {
public:
    GapMaker(const SourceMap& map, const Counterparts& counterparts)
        : m_counterparts(counterparts), m_former(map, counterparts), m_usual(map, counterparts) {}

    /// The text after the item that was written last, or after the opening bracket, and before the
    /// one that is expected, or before the closing bracket.
    std::string gap(const Frame& frame);
    /// How the text of the item that is expected changes when it is moved. Where it goes has the
    /// indent `indent`.
    Reindent reindentOf(const Frame& frame, const Item& item, const std::string& indent);

    const FormerGaps& former() const { return m_former; }
    UsualLayout& usual() { return m_usual; }

private:
    using Text = std::string;

    /// The neighbours of a gap; null stands for a bracket.
    struct Sides {
        const Item* left;
        const Item* right;
    };

    void keepLineEnd(const Frame& frame, const Sides& sides, Text& next) const;
    static Sides sidesOf(const Frame& frame);
    bool areNeighbours(const Frame& frame, const Sides& sides) const;
    bool stayOrLackLines(const Frame& frame, const Sides& sides, std::size_t number) const;
    Text madeGap(const Frame& frame, const Sides& sides);
    Text tail(const Frame& frame, const Sides& sides) const;
    StayingLines lines(const Frame& frame, const Sides& sides) const;
    StayingLines linesOf(const Frame& frame, std::size_t first, std::size_t last) const;
    Text lead(const Frame& frame, const Sides& sides);
    Text breakLeft(const Frame& frame, const Sides& sides) const;
    Text closingLead(const Frame& frame);
    void placeComma(const Frame& frame, const Sides& sides, Text& tail, Text& lead, bool isOneLine);
    void append(Text& gap, const Text& part, const std::string& indent);

    bool isHere(const Frame& frame, const Item& item) const;
    bool staysHere(const Frame& frame, const Item& item) const;
    std::size_t positionOf(const Item& item) const;

    const Counterparts& m_counterparts;
    const FormerGaps m_former;
    UsualLayout m_usual;
};

}  // namespace ko::Orvid
