// SPDX-License-Identifier: MIT
//
// FileIdentity says whether two names or open files stand for one file.

#pragma once

#include <sys/stat.h>

#include <optional>
#include <string>

namespace orvid_tool {

/// Which regular file it is, through symbolic links and by whichever of its names. What is no
/// regular file equals nothing, not even itself: a terminal may well be read and written at once.
class FileIdentity {
public:
    explicit FileIdentity(int descriptor);
    /// Also of a file that is not there, or cannot be asked, which equals nothing.
    explicit FileIdentity(const std::string& file);

    bool operator==(const FileIdentity& other) const;

private:
    void take(bool isKnown, const struct stat& status);

    dev_t m_device = 0;
    std::optional<ino_t> m_inode;
};

}  // namespace orvid_tool
