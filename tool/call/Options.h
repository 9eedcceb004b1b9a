// SPDX-License-Identifier: MIT
//
// The options that several verbs share. Each function adds one group to a sub-command.

#pragma once

#include "call/Call.h"
#include "call/Words.h"

namespace orvid_tool {

/// FILE...
void addFiles(Words& words, SCall& call);
/// --indent, --tab, --compact, --sort-keys, --ascii, --color
void addLayout(Words& words, SCall& call);
/// -i
void addInPlace(Words& words, SCall& call);
/// --strict
void addStrict(Words& words, SCall& call);
/// --raw
void addRaw(Words& words, SCall& call);
/// --schema
void addSchema(Words& words, SCall& call);
/// --lines and what belongs to it
void addLines(Words& words, SCall& call);
/// --json-errors
void addErrors(Words& words, SCall& call);

/// Looks at what only the options together say, and settles what the options left open. Throws
/// UsageError.
void settleOptions(SCall& call);

}  // namespace orvid_tool
