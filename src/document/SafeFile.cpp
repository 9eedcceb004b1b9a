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
#include <system_error>
#include <utility>

namespace ko::Orvid {

namespace {

constexpr const char* k_read = "read";
constexpr const char* k_write = "write";
constexpr const char* k_replace = "replace";

[[noreturn]] void failAt(const std::string& name, const char* action, int error) {
    throw FileException(name, action, std::generic_category().message(error), error);
}

/// Calls `attempt` again as long as a signal interrupts it.
template<class Attempt>
auto untilDone(const Attempt& attempt) {
    auto result = attempt();
    while (result < 0 && errno == EINTR) {
        result = attempt();
    }
    return result;
}

/// Where the chain of symbolic links ends; that file need not exist.
std::string linkTarget(const std::string& name) {
    constexpr int mostLinks = 40;  // as the system itself
    std::filesystem::path target = name;
    std::error_code error;
    for (int i = 0; i <= mostLinks; ++i) {
        if (!std::filesystem::is_symlink(std::filesystem::symlink_status(target, error))) {
            return target.string();
        }
        const std::filesystem::path next = std::filesystem::read_symlink(target, error);
        if (error) {
            failAt(name, k_write, error.value());
        }
        target = target.parent_path() / next;
    }
    failAt(name, k_write, ELOOP);
}

std::string folderOf(const std::string& file) {
    const std::string folder = std::filesystem::path(file).parent_path().string();
    return folder.empty() ? "." : folder;
}

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

class Descriptor {
public:
    explicit Descriptor(int file) : m_file(file) {}
    ~Descriptor() {
        if (m_file >= 0) {
            ::close(m_file);
        }
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    int get() const noexcept { return m_file; }

private:
    int m_file;
};

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
    // A rename asks no leave of the file that it replaces.
    if (!isNew && ::faccessat(AT_FDCWD, m_target.c_str(), W_OK, AT_EACCESS) != 0) {
        fail(k_write, errno);
    }
    makeTemporary(isNew);
    if (!isNew) {
        keepOwnerAndMode(status.st_uid, status.st_gid, status.st_mode);
    }
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

/// The owner comes first, for changing it may clear bits of the mode.
void SafeFile::keepOwnerAndMode(unsigned int owner, unsigned int group, unsigned int mode) {
    constexpr unsigned int allBits = 07777;
    constexpr unsigned int plainBits = 0777;
    constexpr unsigned int groupBits = 070;
    constexpr unsigned int otherBits = 07;
    constexpr unsigned int groupShift = 3;
    unsigned int kept = mode & allBits;
    if (::fchown(m_file, owner, group) != 0) {
        kept &= plainBits;
        if (::fchown(m_file, static_cast<uid_t>(-1), group) != 0) {
            kept = (kept & ~groupBits) | ((kept & otherBits) << groupShift);
        }
    }
    if (::fchmod(m_file, kept) != 0) {
        const int error = errno;
        discard();
        fail(k_write, error);
    }
}

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
    const Descriptor folder(::open(folderOf(m_target).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (folder.get() < 0) {
        return;
    }
    if (untilDone([&] { return ::fsync(folder.get()); }) != 0 && errno != EINVAL &&
        errno != EROFS) {
        fail("flush the folder of", errno);
    }
}

void SafeFile::fail(const char* action, int error) const { failAt(m_name, action, error); }

void replaceFile(const std::string& name, std::string_view content) {
    SafeFile file(name);
    file.write(content);
    file.commit();
}

std::string readFile(const std::string& name) {
    constexpr std::size_t firstRoom = 65536;
    const Descriptor file(untilDone([&] { return ::open(name.c_str(), O_RDONLY | O_CLOEXEC); }));
    struct stat status {};
    if (file.get() < 0 || ::fstat(file.get(), &status) != 0) {
        failAt(name, k_read, errno);
    }
    // One byte more than the file is said to have tells its end without another round.
    const bool isRegular = S_ISREG(status.st_mode) && status.st_size > 0;
    std::string content(isRegular ? static_cast<std::size_t>(status.st_size) + 1 : firstRoom, '\0');
    std::size_t length = 0;
    for (;;) {
        const ssize_t got = untilDone(
            [&] { return ::read(file.get(), &content[length], content.size() - length); });
        if (got < 0) {
            failAt(name, k_read, errno);
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
