// SPDX-License-Identifier: MIT
//
// The replacement of files, by the rules of POSIX: rename() changes what a name stands for at once,
// and nothing is on the disk for certain before fsync() has said so, of the file and of its folder.

#include <ko/Orvid/SafeFile.h>

#include <fcntl.h>
#include <ko/Orvid/FileException.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <random>
#include <utility>

#include "file/FileAttributes.h"
#include "file/SystemCall.h"

namespace ko::Orvid {

namespace {

constexpr const char* k_read = "read";
constexpr const char* k_write = "write";
constexpr const char* k_replace = "replace";

std::string temporaryName(const std::string& target) {
    constexpr std::string_view letters = "abcdefghijklmnopqrstuvwxyz0123456789";
    constexpr int length = 12;
    std::random_device random;
    std::uniform_int_distribution<std::size_t> anyLetter(0, letters.size() - 1);
    std::string name = ".orvid-";
    for (int i = 0; i < length; ++i) {
        name += letters[anyLetter(random)];
    }
    return (std::filesystem::path(target).parent_path() / name).string();
}

}  // namespace

SafeFile::SafeFile(const std::string& name) : m_name(name), m_target(linkTarget(name)) {
    struct stat status {};
    const bool isNew = ::stat(m_target.c_str(), &status) != 0;
    if (isNew && errno != ENOENT) {
        fail(k_write, errno);
    }
    if (!isNew && !S_ISREG(status.st_mode)) {
        throw FileException(name, k_write, "Not a regular file");
    }
    // A rename succeeds even where the file that it replaces is read-only.
    if (!isNew && ::faccessat(AT_FDCWD, m_target.c_str(), W_OK, AT_EACCESS) != 0) {
        fail(k_write, errno);
    }
    if (isNew) {
        makeTemporary(true);
        return;
    }
    const Descriptor former(openFormer());
    makeTemporary(false);
    try {
        keepAttributes(former.get());
    } catch (...) {
        discard();
        throw;
    }
}

/// The file that is replaced, to read what is to be kept of it. Where it may not be read it may be
/// written to.
int SafeFile::openFormer() const {
    constexpr int flags = O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC;
    const auto opened = [&](int access) {
        return untilDone([&] { return ::open(m_target.c_str(), access | flags); });
    };
    int file = opened(O_RDONLY);
    if (file < 0 && errno == EACCES) {
        file = opened(O_WRONLY);
    }
    if (file < 0) {
        fail(k_write, errno);
    }
    return file;
}

SafeFile::~SafeFile() { discard(); }

void SafeFile::makeTemporary(bool isNew) {
    constexpr mode_t forNew = 0666;
    constexpr mode_t untilItsModeIsSet = 0600;
    constexpr int mostTries = 100;
    for (int i = 0; i < mostTries && m_file < 0; ++i) {
        std::string name = temporaryName(m_target);
        m_file = untilDone([&] {
            return ::open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW,
                          isNew ? forNew : untilItsModeIsSet);
        });
        if (m_file >= 0) {
            m_temporary = std::move(name);
        } else if (errno != EEXIST) {
            break;
        }
    }
    if (m_file < 0) {
        fail(k_write, errno);
    }
}

/// The owner comes first, for changing it may clear bits of the mode, and the mode last, for it is
/// too narrow until the access control list is there.
void SafeFile::keepAttributes(int former) {
    constexpr mode_t allBits = 07777;
    constexpr mode_t plainBits = 0777;
    constexpr mode_t groupBits = 070;
    constexpr mode_t otherBits = 07;
    constexpr unsigned int groupShift = 3;
    struct stat status {};
    if (::fstat(former, &status) != 0) {
        fail(k_write, errno);
    }
    if (!S_ISREG(status.st_mode)) {
        throw FileException(m_name, k_write, "Not a regular file");
    }
    const FileAttributes attributes(former, m_name);
    mode_t kept = status.st_mode & allBits;
    bool isGroupKept = true;
    if (::fchown(m_file, status.st_uid, status.st_gid) != 0) {
        kept &= plainBits;
        isGroupKept = ::fchown(m_file, static_cast<uid_t>(-1), status.st_gid) == 0;
    }
    attributes.giveTo(m_file, isGroupKept);
    // Beside a list these bits are what it allows at most, and it has been narrowed itself.
    if (!isGroupKept && !attributes.hasAccessList()) {
        kept = (kept & ~groupBits) | ((kept & otherBits) << groupShift);
    }
    if (::fchmod(m_file, kept) != 0) {
        fail(k_write, errno);
    }
}

void SafeFile::expect(const FileStamp& stamp) { m_expected = stamp; }

void SafeFile::write(std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t written =
            untilDone([&] { return ::write(m_file, bytes.data(), bytes.size()); });
        if (written < 0) {
            fail(k_write, errno);
        }
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
}

void SafeFile::commit() {
    closeTemporary();
    if (m_expected && *m_expected != FileStamp::of(m_target)) {
        throw FileException(m_name, k_replace, "It has changed since it was read", ESTALE);
    }
    // Opened before, since nothing may fail after the renaming but the flushing itself.
    m_file = ::open(folderOf(m_target).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (::rename(m_temporary.c_str(), m_target.c_str()) != 0) {
        fail(k_replace, errno);
    }
    m_temporary.clear();
    flushFolder();
}

void SafeFile::closeTemporary() {
    if (untilDone([&] { return ::fsync(m_file); }) != 0) {
        fail(k_write, errno);
    }
    if (::close(std::exchange(m_file, -1)) != 0 && errno != EINTR) {
        fail(k_write, errno);
    }
}

void SafeFile::discard() noexcept {
    if (m_file >= 0) {
        ::close(std::exchange(m_file, -1));
    }
    if (!m_temporary.empty()) {
        ::unlink(m_temporary.c_str());
        m_temporary.clear();
    }
}

/// A folder that may be written to but not read cannot be opened for this, and some file systems
/// flush no folders.
void SafeFile::flushFolder() {
    const Descriptor folder(std::exchange(m_file, -1));
    if (folder.isOpen() && untilDone([&] { return ::fsync(folder.get()); }) != 0 &&
        errno != EINVAL && errno != EROFS) {
        fail("flush the folder of", errno);
    }
}

void SafeFile::fail(const char* action, int error) const { failWith(m_name, action, error); }

void replaceFile(const std::string& name, std::string_view content) {
    SafeFile file(name);
    file.write(content);
    file.commit();
}

std::string readFile(const std::string& name) {
    FileStamp ignored;
    return readFile(name, ignored);
}

std::string readFile(const std::string& name, FileStamp& stamp) {
    constexpr std::size_t firstRoom = 65536;
    const Descriptor file(untilDone([&] { return ::open(name.c_str(), O_RDONLY | O_CLOEXEC); }));
    if (!file.isOpen()) {
        failWith(name, k_read, errno);
    }
    stamp = FileStamp::of(file.get(), name);
    // Asking for one byte more than the file's size shows its end without a further call.
    std::string content(stamp.size > 0 ? static_cast<std::size_t>(stamp.size) + 1 : firstRoom,
                        '\0');
    std::size_t length = 0;
    for (;;) {
        const ssize_t got = untilDone(
            [&] { return ::read(file.get(), &content[length], content.size() - length); });
        if (got < 0) {
            failWith(name, k_read, errno);
        }
        length += static_cast<std::size_t>(got);
        if (got == 0) {
            break;
        }
        if (length == content.size()) {
            content.resize(content.size() * 2);
        }
    }
    content.resize(length);
    return content;
}

}  // namespace ko::Orvid
