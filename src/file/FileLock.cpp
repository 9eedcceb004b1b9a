// SPDX-License-Identifier: MIT
//
// Locks by flock(). The file that is locked is removed by its holder, so whoever gets the lock
// looks whether the name still leads to it.

#include <ko/Orvid/FileLock.h>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <thread>
#include <tuple>

#include "file/FileState.h"
#include "file/SystemCall.h"

namespace ko::Orvid {

namespace {

constexpr const char* k_lock = "lock";

FileStamp stampOf(const struct stat& status) {
    FileStamp stamp;
    stamp.device = status.st_dev;
    stamp.inode = status.st_ino;
    stamp.size = static_cast<std::uint64_t>(status.st_size);
    stamp.seconds = status.st_ctim.tv_sec;
    stamp.nanoseconds = status.st_ctim.tv_nsec;
    return stamp;
}

/// The names of two files of a folder may share a lock by accident; that costs some waiting.
std::string lockNameOf(const std::string& target) {
    constexpr std::uint64_t start = 14695981039346656037U;  // FNV-1a
    constexpr std::uint64_t factor = 1099511628211U;
    const std::filesystem::path path = target;
    std::uint64_t hash = start;
    for (const char c : path.filename().string()) {
        hash = (hash ^ static_cast<unsigned char>(c)) * factor;
    }
    return (path.parent_path() / (".orvid-lock-" + std::to_string(hash))).string();
}

/// Errors that say that there can be no lock here, not that there should be one.
bool meansNoLocks(int error) {
    constexpr int errors[] = {EACCES, EPERM,  EROFS,  ENOENT,     ENOTDIR, ELOOP,
                              EINVAL, ENOLCK, ENOSYS, EOPNOTSUPP, EISDIR,  ENAMETOOLONG};
    return std::find(std::begin(errors), std::end(errors), error) != std::end(errors);
}

}  // namespace

FileStamp FileStamp::of(const std::string& name) {
    struct stat status {};
    if (::stat(name.c_str(), &status) != 0) {
        failWith(name, "read", errno);
    }
    return stampOf(status);
}

std::optional<FileState> stateOf(const std::string& name) {
    struct stat status {};
    if (::stat(name.c_str(), &status) == 0) {
        return FileState{stampOf(status), S_ISREG(status.st_mode)};
    }
    if (errno != ENOENT) {
        failWith(name, "read", errno);
    }
    return std::nullopt;
}

FileStamp FileStamp::of(int descriptor, const std::string& name) {
    struct stat status {};
    if (::fstat(descriptor, &status) != 0) {
        failWith(name, "read", errno);
    }
    return stampOf(status);
}

bool FileStamp::operator==(const FileStamp& other) const noexcept {
    return std::tie(device, inode, size, seconds, nanoseconds) ==
           std::tie(other.device, other.inode, other.size, other.seconds, other.nanoseconds);
}

FileLock::FileLock(const std::string& name, std::chrono::milliseconds patience)
    : m_name(lockNameOf(linkTarget(name))) {
    constexpr std::chrono::milliseconds longestPause(20);
    const auto deadline = std::chrono::steady_clock::now() + patience;
    std::chrono::milliseconds pause(1);
    while (open()) {
        if (untilDone([&] { return ::flock(m_file, LOCK_EX | LOCK_NB); }) == 0) {
            if (isStillThere()) {
                return;
            }
            release(false);
            continue;
        }
        const int error = errno;
        release(meansNoLocks(error));
        if (meansNoLocks(error)) {
            return;
        }
        if (error != EWOULDBLOCK) {
            failWith(name, k_lock, error);
        }
        if (std::chrono::steady_clock::now() >= deadline) {
            failWith(name, k_lock, ETIMEDOUT);
        }
        std::this_thread::sleep_for(pause);
        pause = std::min(2 * pause, longestPause);
    }
}

FileLock::~FileLock() { release(true); }

/// Returns false when there can be no lock.
bool FileLock::open() {
    constexpr mode_t mode = 0644;
    m_file = untilDone([&] {
        return ::open(m_name.c_str(), O_RDONLY | O_CREAT | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK,
                      mode);
    });
    if (m_file < 0 && !meansNoLocks(errno)) {
        failWith(m_name, k_lock, errno);
    }
    return m_file >= 0;
}

bool FileLock::isStillThere() const {
    struct stat own {};
    struct stat named {};
    return ::fstat(m_file, &own) == 0 && ::lstat(m_name.c_str(), &named) == 0 &&
           own.st_dev == named.st_dev && own.st_ino == named.st_ino;
}

void FileLock::release(bool isRemoved) noexcept {
    if (m_file < 0) {
        return;
    }
    if (isRemoved) {
        ::unlink(m_name.c_str());
    }
    ::close(m_file);
    m_file = -1;
}

}  // namespace ko::Orvid
