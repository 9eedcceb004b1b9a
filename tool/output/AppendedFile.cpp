// SPDX-License-Identifier: MIT
//
// Writing to the end of a file with the system's own calls.

#include "output/AppendedFile.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <system_error>
#include <utility>

#include "output/Failure.h"

namespace orvid_tool {

namespace {

/// Devices and pipes cannot be flushed, nor can the folders of some file systems.
int flushed(int descriptor) {
    int result = fsync(descriptor);
    while (result < 0 && errno == EINTR) {
        result = fsync(descriptor);
    }
    return result < 0 && (errno == EINVAL || errno == EROFS) ? 0 : result;
}

/// Whether the last byte of a regular file is there and no newline. Of one that may not be read
/// that cannot be said.
bool endsWithinLine(const std::string& file) {
    std::error_code error;
    if (!std::filesystem::is_regular_file(file, error)) {
        return false;
    }
    std::ifstream in(file, std::ios::binary);
    in.seekg(-1, std::ios::end);
    const int last = in.get();
    return in && last != '\n';
}

}  // namespace

AppendedFile::AppendedFile(std::string file)
    : m_file(std::move(file)),
      m_descriptor(open(m_file.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0666)),
      m_isLineOpen(endsWithinLine(m_file)) {
    if (m_descriptor < 0) {
        throw systemFailure(m_file.empty() ? "\"\"" : m_file);
    }
}

AppendedFile::~AppendedFile() { close(m_descriptor); }

void AppendedFile::write(std::string_view text) {
    if (m_isLineOpen && !text.empty()) {
        append("\n");
        m_isLineOpen = false;
    }
    append(text);
}

void AppendedFile::append(std::string_view text) {
    while (!text.empty()) {
        const ssize_t count = ::write(m_descriptor, text.data(), text.length());
        if (count < 0 && errno != EINTR) {
            throw OutputFailure(systemFailure(m_file));
        }
        text.remove_prefix(count < 0 ? 0 : static_cast<std::size_t>(count));
    }
}

/// A folder that may be written to but not read cannot be opened for this.
void AppendedFile::keepOnDisk() {
    require(flushed(m_descriptor));
    std::error_code error;
    const auto target = std::filesystem::canonical(m_file, error);
    const int folder = open(target.parent_path().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (folder >= 0) {
        const int result = flushed(folder);
        const int reason = errno;
        close(folder);
        errno = reason;
        require(result);
    }
}

void AppendedFile::require(int result) const {
    if (result < 0) {
        throw OutputFailure(systemFailure(m_file));
    }
}

}  // namespace orvid_tool
