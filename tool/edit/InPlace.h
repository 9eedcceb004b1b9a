// SPDX-License-Identifier: MIT
//
// Editing files in place: the lock that keeps other editors waiting, and the output that becomes
// the new content.

#pragma once

#include <ko/Orvid.h>

#include <optional>
#include <string>
#include <string_view>

#include "edit/SignalCleanup.h"
#include "output/Failure.h"
#include "output/Output.h"

namespace orvid_tool {

/// The file was changed by another program since it was read.
class ChangedMeanwhile : public Failure {
public:
    explicit ChangedMeanwhile(const Failure& failure) : Failure(failure) {}
};

/// Only regular files can be replaced. Throws Failure where the file is there and is something
/// else, which reading might wait for.
void requireReplaceable(const std::string& file);

/// The lock of a file (see ko::Orvid::FileLock), from before it is read to when its replacement is
/// done. Throws Failure, which names the file, when it cannot be replaced or the lock cannot be
/// had.
class EditLock {
public:
    explicit EditLock(const std::string& file);

private:
    bool take(const std::string& file);

    std::optional<ko::Orvid::FileLock> m_lock;
    std::optional<RemovedBySignal> m_removed;
};

/// The file has its old content until finish() and whenever something fails before. Throws Failure,
/// which names the file.
class InPlace : public Output {
public:
    explicit InPlace(const std::string& file);
    void write(std::string_view text) override;
    void flush() override {}
    /// The file gets its new content, unless it is no longer the one that was read: then it throws
    /// ChangedMeanwhile. Nothing may follow.
    void finish(const ko::Orvid::FileStamp& read);

private:
    std::optional<ko::Orvid::SafeFile> m_file;
    std::optional<RemovedBySignal> m_removed;
};

}  // namespace orvid_tool
