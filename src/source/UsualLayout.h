// SPDX-License-Identifier: MIT
//
// UsualLayout, how what is new is laid out: as the children are that its container has in the text,
// or as the rest of the document is.

#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

#include "source/Counterparts.h"
#include "source/FilledSiblings.h"
#include "source/FormerGaps.h"
#include "source/Frame.h"
#include "source/Habits.h"
#include "source/SourceMap.h"

namespace ko::Orvid {

class UsualLayout {
public:
    UsualLayout(const SourceMap& map, const Counterparts& counterparts)
        : m_map(map), m_counterparts(counterparts), m_former(map, counterparts), m_filled(map) {}

    const Habits& habits();
    /// The colon after a new key, with the whitespace around it.
    std::string colon(const Frame& frame);
    /// The same where a bracket follows on a line of its own.
    std::string colonBelow(const Frame& frame, const std::string& colon);
    /// The colon of a member of the text whose value comes to the line of the key.
    std::string colonOnLine(std::uint32_t member);
    /// Whether members of the frame whose values stand on several lines have their brackets on
    /// lines of their own.
    bool opensOnLine(const Frame& frame) { return habits().opensOnLine && breaksLinesIn(frame); }
    /// Whether the children of the container, which has some in the text, have lines of their own.
    bool isManyLine(std::uint32_t container) { return inside(container).isManyLine; }
    /// The one after the key of a member of the text, with all that stands around it.
    std::string_view colonOf(std::uint32_t member) const;
    /// The indent of what begins after the line break; that of its closing bracket where a comma is
    /// between, as the document has it.
    std::string baseOf(const std::string& lineBreak);
    /// That of the line on which the value of the text begins.
    std::string baseBefore(std::uint32_t value) { return baseOf(m_former.lineBreakBefore(value)); }
    /// What stands before a child: what stands before the neighbours that the text has, or what the
    /// document does elsewhere.
    std::string breakBefore(const Frame& frame, bool isFirst);
    /// Before the first child of a container that has none in the text, where its comments begin if
    /// it has some; or before its closing bracket.
    std::string lineBreak(const Frame& frame, bool isWithin);
    /// Whether a comma follows the last child.
    bool endsWithComma(const Frame& frame);
    /// Whether the children of a container that has none in the text get lines of their own.
    /// `outer` is the frame in which it stands; null for the root.
    bool breaksLines(const Frame& frame, const Frame* outer);
    /// Whether they do in a container with children in the text, all on one line: what comes into
    /// it brings lines.
    bool leavesLine(const Frame& frame);

    /// For a container that gets its first children on one line: the container of the text whose
    /// whitespace it takes. k_none where there is none, so that the document's habits hold.
    std::uint32_t lineModel(const Frame& frame, const Frame* outer);

private:
    /// What stands within a container that has children.
    struct Inside {
        bool isManyLine = false;
        std::string_view open;   ///< before the first child
        std::string_view comma;  ///< between the first two; empty if they are not plainly on a line
        std::string_view close;  ///< before the bracket

        bool differsFrom(const Inside& other) const {
            const bool haveCommas = !comma.empty() && !other.comma.empty();
            return open != other.open || close != other.close ||
                   (haveCommas && comma != other.comma);
        }
    };

    const Inside& inside(std::uint32_t container);
    bool isLineLike(const Frame& frame, std::uint32_t value);
    /// The whitespace after a comma on a line: of other containers of its kind where there are
    /// some.
    std::string comma(const Frame& frame);
    bool isObject(const Frame& frame) const;
    std::string breakAfterFirst(std::string_view indent, const std::string& first);
    std::size_t gapLike(const Frame& frame) const;
    bool breaksLinesIn(const Frame& outer);
    bool holdsContainer(const Frame& frame) const;
    bool holdsFilled(const Frame& frame) const;
    bool isLong(const Frame& frame) const;
    bool bringsLineComment(const Frame& frame) const;
    bool bringsLinedItem(const Frame& frame) const;
    bool bringsLines(const Frame& frame) const;
    bool bringsLines(std::uint32_t container) const;
    bool bringsComment(std::uint32_t value) const;
    bool breaksLinesOfItsKind(const Frame& frame);
    bool breaksFlatObject(const Frame& frame);
    ContainerKind kindOf(const Frame& frame) const;
    std::uint32_t modelOf(const Frame& frame, const Frame& outer);

    const SourceMap& m_map;
    const Counterparts& m_counterparts;
    const FormerGaps m_former;
    FilledSiblings m_filled;
    std::optional<Habits> m_habits;
    std::unordered_map<std::uint32_t, Inside> m_insides;  ///< often many are added beside one
};

}  // namespace ko::Orvid
