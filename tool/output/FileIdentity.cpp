// SPDX-License-Identifier: MIT
//
// Files are the same when their device and inode are.

#include "output/FileIdentity.h"

namespace orvid_tool {

FileIdentity::FileIdentity(int descriptor) {
    struct stat status = {};
    take(fstat(descriptor, &status) == 0, status);
}

FileIdentity::FileIdentity(const std::string& file) {
    struct stat status = {};
    take(stat(file.c_str(), &status) == 0, status);
}

void FileIdentity::take(bool isKnown, const struct stat& status) {
    if (isKnown && S_ISREG(status.st_mode)) {
        m_device = status.st_dev;
        m_inode = status.st_ino;
    }
}

bool FileIdentity::operator==(const FileIdentity& other) const {
    return m_inode.has_value() && m_device == other.m_device && m_inode == other.m_inode;
}

}  // namespace orvid_tool
