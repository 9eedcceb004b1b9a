// SPDX-License-Identifier: MIT
//
// TextExcerpt, the part of a JSON text that an edit of one place concerns, as a short text of its
// own. The library edits the short one as it would edit the long one: it has the same children
// around the place, the same beginning and end of each container that the place lies in, and the
// same habits. Everything else has been left out.

#pragma once

#include <ko/Orvid.h>

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "input/PathSteps.h"

namespace orvid_tool {

enum class PlaceEdit {
    remove,  ///< the value goes, whatever it is
    insert,  ///< a value comes before the item there, or is new
    set,     ///< the value becomes another; what it was matters to the layout
    replace  ///< the same where the other is a scalar, to which what a container held is nothing
};

/// What an excerpt has of the text that does not lie around the place.
enum class ExcerptRest {
    none,   ///< the habits are not to be seen
    habits  ///< what the library learns the habits of a document from
};

struct TextExcerpt {
    /// A range that the edit may change: from the value, or bracket, before the place to the key,
    /// value or bracket after it. All other bytes stay.
    struct Range {
        std::size_t begin;
        std::size_t end;
    };

    std::string text;
    ValueSteps steps;  ///< lead to the place in it
    Range own;         ///< in it
    Range source;      ///< the same in the long text
    /// Whether the edit looks at habits even where it puts a scalar, or nothing: where there are
    /// too few siblings to go by, or comments at the place. Another value has to be laid out.
    bool needsHabits;
};

/// The excerpt for an edit at the steps. Nothing where an excerpt does not determine the edit: for
/// the root, where a step is a key and there is an array or the other way round, where there is
/// nothing to remove, where a member that is to be inserted exists, and in some layouts of lines of
/// more than 1000 bytes. Nothing either for text that `options` refuse, which must refuse repeated
/// keys. One pass through the text. The excerpt grows with the depth of the place and not with the
/// text, except for habits with its first few thousand containers.
std::optional<TextExcerpt> excerptOf(std::string_view text, const ValueSteps& steps, PlaceEdit edit,
                                     ExcerptRest rest, const ko::Orvid::ReadOptions& options);

}  // namespace orvid_tool
