// SPDX-License-Identifier: MIT
//
// Answers, the values that a verb finds in a document, as the call wants them written.

#pragma once

#include <ko/Orvid.h>

#include <string_view>

#include "call/Call.h"
#include "output/Bytes.h"

namespace orvid_tool {

/// Appends the value in the call's layout with a newline after it. With --raw a string goes
/// without quotes and escapes; one that holds a line break keeps them where every line is an
/// answer. Throws Unwritable.
void appendAnswer(const Call& call, const ko::Orvid::Element& value, Bytes& out);

/// The same of a value's text within plain JSON text (see TextLookup.h). Returns false where that
/// is not simple.
bool appendAnswer(const Call& call, std::string_view value, Bytes& out);

}  // namespace orvid_tool
