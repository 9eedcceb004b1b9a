// SPDX-License-Identifier: MIT
//
// The library's locks and safe files with the command's failures.

#include "edit/InPlace.h"

#include <sys/stat.h>

#include <cerrno>
#include <chrono>
#include <cstring>
#include <thread>

namespace orvid_tool {

namespace {

using ko::Orvid::FileException;
using ko::Orvid::FileLock;

Failure translated(const FileException& error) {
    return {ExitStatus::inputOutput, Location{error.file(), 0, 0, {}},
            "cannot " + error.action() + ": " + error.reason()};
}

template<class Action>
void translating(const Action& action) {
    try {
        action();
    } catch (const FileException& error) {
        if (error.error() == ESTALE) {
            throw ChangedMeanwhile(translated(error));
        }
        throw translated(error);
    }
}

}  // namespace

void requireReplaceable(const std::string& file) {
    struct stat status = {};
    if (stat(file.c_str(), &status) != 0 || S_ISREG(status.st_mode)) {
        return;
    }
    const char* const reason =
        S_ISDIR(status.st_mode) ? std::strerror(EISDIR) : "Not a regular file";
    throw Failure(ExitStatus::inputOutput, Location{file, 0, 0, {}}, reason);
}

EditLock::EditLock(const std::string& file) {
    requireReplaceable(file);
    constexpr std::chrono::milliseconds pause(5);
    const auto deadline = std::chrono::steady_clock::now() + FileLock::k_patience;
    while (!take(file)) {
        if (std::chrono::steady_clock::now() >= deadline) {
            throw Failure(ExitStatus::inputOutput, Location{file, 0, 0, {}},
                          "cannot lock: another program is editing the file");
        }
        std::this_thread::sleep_for(pause);
    }
}

/// Tries once, so that signals are kept waiting for no longer than that.
bool EditLock::take(const std::string& file) {
    const SignalPause pause;
    try {
        m_lock.emplace(file, std::chrono::milliseconds(0));
    } catch (const FileException& error) {
        if (error.error() == ETIMEDOUT) {
            return false;
        }
        throw translated(error);
    }
    if (m_lock->isHeld()) {
        m_removed.emplace(m_lock->lockFile());
    }
    return true;
}

InPlace::InPlace(const std::string& file) {
    const SignalPause pause;
    translating([&] { m_file.emplace(file); });
    m_removed.emplace(m_file->temporary());
}

void InPlace::write(std::string_view text) {
    translating([&] { m_file->write(text); });
}

void InPlace::finish(const ko::Orvid::FileStamp& read) {
    translating([&] {
        m_file->expect(read);
        m_file->commit();
    });
}

}  // namespace orvid_tool
