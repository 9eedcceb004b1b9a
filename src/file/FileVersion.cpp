// SPDX-License-Identifier: MIT
//
// Saving by comparison: first of stamps, which cost nothing, then of contents.

#include "file/FileVersion.h"

#include <fcntl.h>
#include <ko/Orvid/FileException.h>
#include <ko/Orvid/SafeFile.h>

#include <cerrno>
#include <filesystem>
#include <optional>
#include <system_error>

#include "file/FileState.h"
#include "file/SystemCall.h"

namespace ko::Orvid {

namespace {

/// From the root folder, as long as the present one is known.
std::string fullName(const std::string& file) {
    if (!file.empty() && file.front() == '/') {
        return file;
    }
    std::error_code error;
    const std::filesystem::path path = std::filesystem::absolute(file, error);
    return error ? file : path.string();
}

/// Without `.`, `..` and repeated slashes. Making it costs as much as reading a small file does.
std::filesystem::path normalized(const std::string& fullName) {
    return std::filesystem::path(fullName).lexically_normal();
}

}  // namespace

FileVersion::FileVersion(const std::string& file, const FileStamp& stamp)
    : m_name(fullName(file)), m_stamp(stamp) {}

bool FileVersion::isOf(const std::string& file) const {
    const std::string name = fullName(file);
    if (name == m_name || normalized(name) == normalized(m_name)) {
        return true;
    }
    std::error_code error;
    if (!std::filesystem::exists(file, error)) {
        return false;
    }
    const FileStamp present = FileStamp::of(file);
    const std::lock_guard<std::mutex> lock(m_mutex);
    return present.device == m_stamp.device && present.inode == m_stamp.inode;
}

void FileVersion::replace(const std::string& file, std::string_view content,
                          std::string_view read) {
    const std::lock_guard<std::mutex> lock(m_mutex);
    const std::optional<FileState> present = stateOf(file);
    // Reading what is no file may wait for ever. SafeFile refuses it.
    if (present && present->isRegular && !needsChange(file, present->stamp, content, read)) {
        return;
    }
    SafeFile written(file);
    if (present) {
        written.expect(m_stamp);
    }
    written.write(content);
    commit(written, file);
}

/// Where commit() throws although the file was replaced, the file is known all the same.
void FileVersion::commit(SafeFile& written, const std::string& file) {
    const Descriptor opened(::open(written.temporary().c_str(), O_RDONLY | O_CLOEXEC));
    try {
        written.commit();
    } catch (...) {
        if (written.temporary().empty()) {
            noteReplaced(opened.get(), file);
        }
        throw;
    }
    noteReplaced(opened.get(), file);
}

/// Notes what was written, not what another program may have put in its place by now.
void FileVersion::noteReplaced(int written, const std::string& file) {
    m_stamp = written >= 0 ? FileStamp::of(written, file) : FileStamp::of(file);
    m_isAsRead = false;
}

/// Brings the stamp up to the present state of a file that has not changed.
bool FileVersion::needsChange(const std::string& file, FileStamp present, std::string_view content,
                              std::string_view read) {
    const bool hasChanged = present != m_stamp;
    if (!hasChanged && present.size != content.size()) {
        return true;
    }
    const std::string held = readFile(file, present);
    if (held == content) {
        m_stamp = present;
        return false;
    }
    if (hasChanged && !(m_isAsRead && held == read)) {
        throw FileException(file, "replace", "It has changed since it was read", ESTALE);
    }
    m_stamp = present;
    return true;
}

}  // namespace ko::Orvid
