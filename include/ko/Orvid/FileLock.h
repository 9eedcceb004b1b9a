// SPDX-License-Identifier: MIT
//
// FileLock keeps two programs that edit the same file from losing each other's edits, and FileStamp
// shows whether a file has changed since it was read, whoever changed it.

#pragma once

#include <ko/export.h>

#include <chrono>
#include <cstdint>
#include <string>

namespace ko::Orvid {

/// One state of one file: it changes with every write to the file, with its replacement, and with
/// its mode and owner. Reading one costs one call of the system, comparing two is O(1).
struct KO_API FileStamp {
    std::uint64_t device = 0;
    std::uint64_t inode = 0;
    std::uint64_t size = 0;        ///< in bytes
    std::int64_t seconds = 0;      ///< of the last change of status
    std::int64_t nanoseconds = 0;  ///< and of a second besides

    /// Of the file that the name leads to, through symbolic links. Throws FileException.
    static FileStamp of(const std::string& name);
    /// Of an open file; `name` is for the error.
    static FileStamp of(int descriptor, const std::string& name);

    bool operator==(const FileStamp& other) const noexcept;
    bool operator!=(const FileStamp& other) const noexcept { return !(*this == other); }
};

/// A lock on a file, held while the object lives: for the time from reading the file to replacing
/// it. It is advisory: it keeps out those who lock it as well, as the command `orvid` does with -i,
/// and nobody else; FileStamp shows what others did.
///
/// The lock is on a file of its own in the same folder, named `.orvid-lock-` and digits, which is
/// removed at the end. A process that is killed leaves it there, unlocked; the next one takes it
/// over. All symbolic links to a file share its lock, other hard links do not. Taking it costs a
/// few calls of the system for each attempt; giving it back costs a few too, and all else is O(1).
class KO_API FileLock {
public:
    static constexpr std::chrono::milliseconds k_patience{60000};

    /// Waits for the lock as long as `patience`, asking for it again and again. Throws
    /// FileException when that is over (its error() is ETIMEDOUT), or when the lock cannot be had
    /// for lack of space or descriptors.
    explicit FileLock(const std::string& name, std::chrono::milliseconds patience = k_patience);
    ~FileLock();
    FileLock(const FileLock&) = delete;
    FileLock& operator=(const FileLock&) = delete;

    /// False where there can be no lock: the folder allows no new files, or the file system knows
    /// none.
    bool isHeld() const noexcept { return m_file >= 0; }
    /// The name of the file that is locked.
    const std::string& lockFile() const noexcept { return m_name; }

private:
    bool open();
    bool isStillThere() const;
    void release(bool isRemoved) noexcept;

    std::string m_name;
    int m_file = -1;
};

}  // namespace ko::Orvid
