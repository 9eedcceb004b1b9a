// SPDX-License-Identifier: MIT
//
// Editing single places of a JSON text by edits of its excerpts: a short cut for text that may be
// long.

#pragma once

#include <ko/Orvid.h>

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

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

/// An edit of one place.
struct ExcerptEdit {
    PlaceEdit kind;
    bool putsContainer;  ///< whether the value that it puts there has to be laid out
    TreeEdit change;     ///< the same, made to a tree
};

/// A range of a text that is to become another text.
struct TextChange {
    TextExcerpt::Range range;
    std::string text;
};

/// What the edit at the steps changes in the text: all other bytes stay as they are, and the whole
/// is what the library would write, byte for byte. Nothing where the library has to be asked: see
/// excerptOf(), and where the change throws.
std::optional<TextChange> editExcerpt(std::string_view text, const ValueSteps& steps,
                                      const ExcerptEdit& edit,
                                      const ko::Orvid::ReadOptions& options);
/// The same at a path of the call.
std::optional<TextChange> editExcerpt(std::string_view text, const CallPath& path,
                                      const ExcerptEdit& edit,
                                      const ko::Orvid::ReadOptions& options);

/// Gives the change of the edit of that number in the text.
using TextEdits =
    std::function<std::optional<TextChange>(std::string_view text, std::size_t number)>;

/// Appends the text with the changes made, each in what the one before it leaves, as calls of their
/// own would make them. Returns false where one of them is nothing. Takes the memory of one text.
bool editInTurn(std::string_view text, std::size_t edits, const TextEdits& changeOf, Bytes& out);

}  // namespace orvid_tool
