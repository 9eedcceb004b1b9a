// SPDX-License-Identifier: MIT
//
// Editing one place of a JSON text by an edit of its excerpt: a short cut for text that may be
// long.

#pragma once

#include <ko/Orvid.h>

#include <cstddef>
#include <functional>
#include <string_view>
#include <utility>

#include "call/Call.h"
#include "edit/TextExcerpt.h"
#include "input/CallPath.h"
#include "input/PathSteps.h"
#include "output/Bytes.h"

namespace orvid_tool {

/// Whether the short cut may be taken at all: to a whole text that is to be kept.
bool mayTakeShortCut(const Call& call, std::size_t edits);

/// Changes a tree at the path.
using TreeEdit = std::function<void(ko::Orvid::Element& root, const std::string& path)>;

/// Appends the text with the change made at the steps, all other bytes as they are: what the
/// library would write of the whole, byte for byte. Returns false, with nothing appended, where the
/// library has to be asked: see excerptOf(), and where `change` throws.
bool editExcerpt(std::string_view text, const ValueSteps& steps, PlaceEdit edit,
                 const ko::Orvid::ReadOptions& options, const TreeEdit& change, Bytes& out);
/// The same at a path of the call.
bool editExcerpt(std::string_view text, const CallPath& path, PlaceEdit edit,
                 const ko::Orvid::ReadOptions& options, const TreeEdit& change, Bytes& out);

/// Hands the text from edit to edit, as calls of their own would, and appends what the last leaves.
/// `edit` takes a text, the number of the edit, and where its result goes; where it returns false,
/// this does.
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

}  // namespace orvid_tool
