// SPDX-License-Identifier: MIT
//
// The options that several verbs share. Each function adds one group to a sub-command.

#pragma once

#include "call/Call.h"
#include "call/Words.h"

namespace orvid_tool {

/// FILE...
void addFiles(Words& words, Call& call);
/// --indent, --tab, --compact, --sort-keys, --ascii, --color
void addLayout(Words& words, Call& call);
/// -i
void addInPlace(Words& words, Call& call);
/// --strict
void addStrict(Words& words, Call& call);
/// --raw
void addRaw(Words& words, Call& call);
/// --schema
void addSchema(Words& words, Call& call);
/// --lines, whose help says what the verb does with the lines, and what belongs to it
void addLines(Words& words, Call& call,
              const char* help = "treat every line as a document, write one line for each");
/// The layout, -i, --strict and --lines, for a verb that keeps the text of what it does not change.
void addEditing(Words& words, Call& call);
/// --json-errors
void addErrors(Words& words, Call& call);

/// Looks at what only the options together say, and settles what the options left open. Throws
/// UsageError.
void settleOptions(Call& call);

}  // namespace orvid_tool
