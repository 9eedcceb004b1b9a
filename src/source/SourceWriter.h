// SPDX-License-Identifier: MIT
//
// SourceWriter writes a tree into the text that it was read from: what is unchanged is copied, with
// all that stands around it, and only what changed is written anew.

#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "source/Counterparts.h"
#include "source/Frame.h"
#include "source/GapMaker.h"
#include "source/SourceMap.h"

namespace ko::Orvid {

/// Writes one text. Does not recurse. The tree must be JSON.
class SourceWriter {
public:
    SourceWriter(const SourceMap& map, const Counterparts& counterparts)
        : m_map(map), m_counterparts(counterparts), m_gaps(map, counterparts) {}

    std::string run();

private:
    void writeRootLead(const Item& root, const Reindent& reindent);
    void writeEnd(const Item& root, const Reindent& reindent);
    void step();
    void writeItem(const Item& item);
    void writeKey(const Item& item, const std::optional<Frame>& opened, const Reindent& reindent);
    void writeColonComments(const Item& item, const Reindent& reindent, const std::string& indent);
    bool keepsColon(const Item& item, const std::optional<Frame>& opened);
    bool keepsBracketLine(const Item& item, const std::optional<Frame>& opened);
    bool holdsComment(const Frame& frame) const;
    std::string newColon(const Item& item, const std::optional<Frame>& opened);
    bool opensOnLine(const Item& item, const std::optional<Frame>& opened);
    void writeValue(const Item& item, std::optional<Frame>&& opened, const std::string& indent,
                    const Reindent& reindent);
    std::optional<Frame> openedBy(const Item& item);
    void open(const Item& item, Frame&& frame, const std::string& indent, const Reindent& reindent);
    void listItems(Frame& frame) const;
    std::vector<bool> stayingSiblings(const Frame& frame) const;
    bool hasItsKey(const Item& item) const;
    bool isInTextOrder(const Frame& frame) const;
    void copy(std::string_view text, const Reindent& reindent);

    const SourceMap& m_map;
    const Counterparts& m_counterparts;
    GapMaker m_gaps;
    std::vector<Frame> m_open;
    std::string m_out;
};

}  // namespace ko::Orvid
