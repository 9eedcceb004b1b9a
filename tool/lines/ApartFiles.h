// SPDX-License-Identifier: MIT
//
// Keeps a run over lines from reading what it writes, which would have no end, and from writing two
// outputs over each other.

#pragma once

#include "call/Call.h"

namespace orvid_tool {

class AppendedFile;
class Input;

/// To be asked before anything is read or written. Throws Failure where a file that is read is also
/// standard output, or where the file of --rejects is read or is another output of the call.
void requireApart(const Call& call);

/// The same of files that are open, for one may have been made since. Throws Failure.
void requireApart(const AppendedFile& rejects, const Input& input);

}  // namespace orvid_tool
