// SPDX-License-Identifier: MIT
//
// What one look at a file shows: its stamp, and whether it can be read without waiting.

#pragma once

#include <ko/Orvid/FileLock.h>

#include <optional>
#include <string>

namespace ko::Orvid {

struct FileState {
    FileStamp stamp;
    bool isRegular;  ///< no folder, pipe or device
};

/// Of the file that the name leads to, through symbolic links; nothing where there is none. Throws
/// FileException.
std::optional<FileState> stateOf(const std::string& name);

}  // namespace ko::Orvid
