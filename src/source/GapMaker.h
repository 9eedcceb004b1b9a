// SPDX-License-Identifier: MIT
//
// GapMaker makes the text between two neighbours in a container that is written: as it was where
// they were neighbours before, and otherwise of what belongs to each, what belongs to neither, and
// what is usual there.

#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "source/Counterparts.h"
#include "source/Frame.h"
#include "source/Habits.h"
#include "source/SourceMap.h"

namespace ko::Orvid {

class GapMaker {
public:
    GapMaker(const SourceMap& map, const Counterparts& counterparts)
        : m_map(map), m_counterparts(counterparts) {}

    /// The text after the item that was written last, or after the opening bracket, and before the
    /// one that is expected, or before the closing bracket.
    std::string gap(const Frame& frame);
    /// How the text of the item that is expected changes when it is moved. Where it goes has the
    /// indent `indent`.
    Reindent reindentOf(const Frame& frame, const Item& item, const std::string& indent) const;
    /// The indent of the line on which the value of the text begins.
    std::string indentBefore(std::uint32_t value) const;
    /// The colon after a new key, with the whitespace around it.
    std::string colon(const Frame& frame);
    /// Whether the children of a container that has none in the text get lines of their own.
    /// `outer` is the frame in which it stands; null for the root.
    bool breaksLines(const Frame& frame, const Frame* outer);
    const Habits& habits();

private:
    using Text = std::string;

    /// The neighbours of a gap; null stands for a bracket.
    struct Sides {
        const Item* left;
        const Item* right;
    };

    static Sides sidesOf(const Frame& frame);
    bool areNeighbours(const Frame& frame, const Sides& sides) const;
    Text madeGap(const Frame& frame, const Sides& sides);
    Text tail(const Frame& frame, const Sides& sides) const;
    Text lines(const Frame& frame, const Sides& sides) const;
    Text lead(const Frame& frame, const Sides& sides);
    Text breakLeft(const Frame& frame, const Sides& sides) const;
    Text closingLead(const Frame& frame);
    void placeComma(const Frame& frame, const Sides& sides, Text& tail, Text& lead, bool isOneLine);
    Text usualBreak(const Frame& frame, bool isFirst);
    std::size_t usualGap(const Frame& frame) const;
    Text lineBreak(const Frame& frame, bool isWithin);
    bool endsWithComma(const Frame& frame);
    void append(Text& gap, const Text& part, const std::string& indent);

    bool isHere(const Frame& frame, const Item& item) const;
    bool staysHere(const Frame& frame, const Item& item) const;
    std::size_t positionOf(const Item& item) const;
    Gap siblingGap(const Frame& frame, std::size_t number) const;
    std::string_view siblingGapText(const Frame& frame, std::size_t number) const;
    Gap gapBefore(std::uint32_t value) const;
    Gap gapAfter(std::uint32_t value) const;
    bool breaksLinesIn(const Frame& outer);
    bool holdsContainer(const Frame& frame) const;

    const SourceMap& m_map;
    const Counterparts& m_counterparts;
    std::optional<Habits> m_habits;
};

}  // namespace ko::Orvid
