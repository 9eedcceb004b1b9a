// SPDX-License-Identifier: MIT
//
// Lines, each a document: read in batches, worked on by one thread or several, written in order.

#pragma once

#include "call/Verb.h"

namespace orvid_tool {

class Input;

/// How a run ended.
struct LinesEnd {
    ExitStatus status;
    bool isComplete;  ///< every line was read; otherwise one stopped the run, or reading failed
};

/// What stands at the ends of an input, and is to stand at those of its result.
struct KeptEnds {
    bool mark;       ///< a byte order mark, whatever becomes of the first line
    bool noNewline;  ///< that there is no newline after the last line
};

/// Runs the verb on every line of the input, as the call's LineOptions say, and reports what fails.
/// Output and reports do not depend on the number of threads. Memory is bounded by the threads and
/// the longest line. Throws Failure when the output cannot be written.
LinesEnd runLines(const DocumentVerb& verb, const Call& call, Input& input, KeptEnds kept,
                  const Report& report, Output& out);

}  // namespace orvid_tool
