// SPDX-License-Identifier: MIT
//
// Taking a child out of a container in JSON text, and putting one in, without a tree: a short cut
// for text of the common kind, which may be long.

#pragma once

#include <ko/Orvid.h>

#include <cstddef>
#include <string_view>
#include <utility>
#include <vector>

#include "call/Call.h"
#include "input/PathSteps.h"
#include "output/Bytes.h"

namespace orvid_tool {

/// Whether a short cut may be taken at all: to a whole text that is to be kept.
bool mayTakeShortCut(const Call& call, std::size_t edits);

/// Hands the text from edit to edit and appends what the last leaves. `edit` takes a text, the
/// number of the edit, and where its result goes; where it answers false, this does.
template<class Edit>
bool editInTurn(std::string_view text, std::size_t edits, const Edit& edit, Bytes& out) {
    Bytes edited;
    for (std::size_t i = 0; i < edits; ++i) {
        Bytes next;
        if (!edit(text, i, next)) {
            return false;
        }
        edited = std::move(next);
        text = edited.view();
    }
    out.swap(edited);
    return true;
}

// Each appends the changed text, all other bytes as they are: what the library would write, byte
// for byte. Where the library has to be asked it answers false, with nothing appended: of text that
// strict reading refuses, where there is no such place or something is there already, and where the
// neighbours are not laid out alike, or are too few to tell how.

/// Takes out what is at the steps.
bool removeChild(std::string_view text, const ValueSteps& steps, Bytes& out);

/// Puts the value before the item at the steps, after the last item, or as a new member after the
/// last one. Of containers it answers false.
bool insertChild(std::string_view text, const ValueSteps& steps, const ko::Orvid::Element& value,
                 Bytes& out);

}  // namespace orvid_tool
