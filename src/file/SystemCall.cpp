// SPDX-License-Identifier: MIT
//
// Errors and names of files.

#include "file/SystemCall.h"

#include <ko/Orvid/FileException.h>

#include <filesystem>
#include <system_error>

namespace ko::Orvid {

void failWith(const std::string& name, const char* action, int error) {
    throw FileException(name, action, std::generic_category().message(error), error);
}

std::string linkTarget(const std::string& name) {
    constexpr int mostLinks = 40;  // as the system itself
    constexpr const char* write = "write";
    std::filesystem::path target = name;
    std::error_code error;
    for (int i = 0; i <= mostLinks; ++i) {
        if (!std::filesystem::is_symlink(std::filesystem::symlink_status(target, error))) {
            return target.string();
        }
        const std::filesystem::path next = std::filesystem::read_symlink(target, error);
        if (error) {
            failWith(name, write, error.value());
        }
        target = target.parent_path() / next;
    }
    failWith(name, write, ELOOP);
}

std::string folderOf(const std::string& file) {
    const std::string folder = std::filesystem::path(file).parent_path().string();
    return folder.empty() ? "." : folder;
}

}  // namespace ko::Orvid
