// SPDX-License-Identifier: MIT
//
// The options that several verbs share. Each function adds one group to a sub-command.

#pragma once

#include <CLI/CLI.hpp>

#include "call/Call.h"

namespace orvid_tool {

/// FILE...
void addFiles(CLI::App& app, SCall& call);
/// --indent, --tab, --compact, --sort-keys, --ascii, --color
void addLayout(CLI::App& app, SCall& call);
/// -i
void addInPlace(CLI::App& app, SCall& call);
/// --raw
void addRaw(CLI::App& app, SCall& call);
/// --schema
void addSchema(CLI::App& app, SCall& call);
/// --lines and what belongs to it
void addLines(CLI::App& app, SCall& call);
/// --json-errors
void addErrors(CLI::App& app, SCall& call);

/// Looks at what only the options together tell, and settles what the options left open. Throws
/// Misuse.
void settleOptions(SCall& call);

}  // namespace orvid_tool
