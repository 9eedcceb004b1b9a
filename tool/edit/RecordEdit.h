// SPDX-License-Identifier: MIT
//
// Taking a child out of a container of a record, and putting one in, without a tree: a short cut
// for records of the common kind, of which there are many.

#pragma once

#include <ko/Orvid.h>

#include <cstddef>
#include <functional>
#include <string_view>

#include "call/Call.h"
#include "input/Document.h"
#include "input/PathSteps.h"
#include "output/Bytes.h"

namespace orvid_tool {

// Each appends the changed text, all other bytes as they are: what the library would write, byte
// for byte. Where the library has to be asked it returns false, with nothing appended: of text that
// strict reading refuses, where there is no such place, and where the neighbours are laid out on
// several lines or unlike each other, or are too few to show how.

/// Takes out the value at the steps.
bool removeFromRecord(std::string_view text, const ValueSteps& steps, Bytes& out);

/// Puts the value before the item at the steps, after the last item, or as a new member after the
/// last one. A container is laid out as those of the record are, which must all be alike.
bool insertIntoRecord(std::string_view text, const ValueSteps& steps,
                      const ko::Orvid::Element& value, Bytes& out);

/// Puts the value after the last child, in the same layout, as the item `[*]` or as a member whose
/// key is not there. Returns false for other steps.
bool appendToRecord(std::string_view text, const ValueSteps& steps, const ko::Orvid::Element& value,
                    Bytes& out);

/// Puts a container in the place of the scalar at the steps. Returns false for a scalar to be put,
/// and where a container stands.
bool replaceInRecord(std::string_view text, const ValueSteps& steps,
                     const ko::Orvid::Element& value, Bytes& out);

/// The most edits for which a pass each is faster than the tree.
constexpr std::size_t k_mostPasses = 3;

/// Makes the edit of that number to the text and appends the result; false leaves `out` as it was.
using RecordEdit = std::function<bool(std::string_view text, std::size_t number, Bytes& out)>;

/// Whether so many single places of a record may be edited in its text: it is to keep what is not
/// changed, and each edit is a pass through it, where the tree takes them all in one.
bool mayEditRecord(const Call& call, std::size_t edits);

/// Appends the record with the edits made, each in what the one before it leaves, and a line break.
/// Returns false where one of them does, with nothing appended.
bool editRecord(const Document& document, std::size_t edits, const RecordEdit& edit, Bytes& out);

}  // namespace orvid_tool
