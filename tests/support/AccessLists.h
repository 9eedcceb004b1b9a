// SPDX-License-Identifier: MIT
//
// Access control lists as the system encodes them, so that tests need no program to set them.

#pragma once

#include <sys/xattr.h>

#include <cstdint>
#include <string>
#include <vector>

namespace orvid_test {

/// The attributes that are a file's list, and the one that a folder gives to new files.
constexpr const char* k_accessList = "system.posix_acl_access";
constexpr const char* k_listForNewFiles = "system.posix_acl_default";

enum class Holder : unsigned int { owner = 1, user = 2, group = 4, mask = 0x10, others = 0x20 };

struct AccessEntry {
    Holder holder;
    unsigned int rights;
    std::uint32_t id = 0xFFFFFFFFU;  ///< of a user
};

inline void appendBytes(std::string& bytes, std::uint32_t number, int count) {
    for (int i = 0; i < count; ++i) {
        bytes += static_cast<char>((number >> (8 * i)) & 0xFFU);
    }
}

inline std::string encodedList(const std::vector<AccessEntry>& entries) {
    std::string bytes;
    appendBytes(bytes, 2, 4);
    for (const AccessEntry& entry : entries) {
        appendBytes(bytes, static_cast<std::uint32_t>(entry.holder), 2);
        appendBytes(bytes, entry.rights, 2);
        appendBytes(bytes, entry.id, 4);
    }
    return bytes;
}

/// Returns false, with errno set, where the file system refuses it.
inline bool setAttribute(const std::string& file, const char* attribute, const std::string& value) {
    return ::setxattr(file.c_str(), attribute, value.data(), value.size(), 0) == 0;
}

/// The attribute's value; "(none)" where there is none.
inline std::string attributeOf(const std::string& file, const char* attribute) {
    std::string value(1000, '\0');
    const ssize_t length = ::getxattr(file.c_str(), attribute, value.data(), value.size());
    if (length < 0) {
        return "(none)";
    }
    value.resize(static_cast<std::size_t>(length));
    return value;
}

}  // namespace orvid_test
