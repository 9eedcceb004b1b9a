// SPDX-License-Identifier: MIT
//
// What the options of a call say, except for the words that are a verb's own.

#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "output/Layout.h"

namespace orvid_tool {

/// What becomes of a line that fails.
enum class OnError {
    stop,         ///< it ends the run
    skip,         ///< nothing is written for it
    passthrough,  ///< it is written as it was read
    null,         ///< null is written for it
};

struct LineOptions {
    bool isOn = false;
    bool hasStats = false;
    OnError onError = OnError::stop;
    std::size_t longest = std::size_t(1) << 30;  ///< of a line, in bytes
    unsigned int threads = 1;
    /// A name in the call may be meant by a `?`, as which half of a surrogate pair is read.
    bool namesMark = false;
    std::optional<std::string> rejects;  ///< the file to which lines that fail are appended
};

struct Call {
    std::vector<std::string> files;  ///< none is standard input
    std::optional<std::string> schemaFile;
    std::optional<std::string> changeFile;  ///< of a patch or a merge patch
    bool isInPlace = false;
    bool isEdit = false;         ///< the verb keeps the text of what it does not change
    bool isChoice = false;       ///< the verb writes some of the documents, as they are
    bool dropsComments = false;  ///< with --in-place, and a new layout
    bool isStrict = false;       ///< text is read as ReadOptions::strict() says
    bool isRaw = false;
    bool hasMeta = true;  ///< print writes the root's member meta
    bool hasJsonErrors = false;
    bool isQuiet = false;  ///< check reports no malformed documents
    Layout layout;
    LineOptions lines;
    std::vector<std::string> notes;  ///< on its words, said before the first document is read
};

}  // namespace orvid_tool
