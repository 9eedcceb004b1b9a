// SPDX-License-Identifier: MIT
//
// Extended attributes by the calls of Linux.

#include "file/FileAttributes.h"

#include <sys/xattr.h>

#include <algorithm>
#include <cstddef>
#include <string_view>

#include "file/SystemCall.h"

namespace ko::Orvid {

namespace {

constexpr const char* k_accessList = "system.posix_acl_access";
constexpr const char* k_keepAttributes = "keep the extended attributes of";
constexpr const char* k_keepAccessList = "keep the access control list of";

bool startsWith(std::string_view text, std::string_view start) {
    return text.substr(0, start.size()) == start;
}

/// They hold for the content that they were given to.
bool belongsToContent(std::string_view attribute) {
    constexpr std::string_view names[] = {"security.capability", "security.ima", "security.evm"};
    return std::find(std::begin(names), std::end(names), attribute) != std::end(names);
}

/// The others are the system's own, which sets them by its own rules where it does not let us.
bool matters(std::string_view attribute) {
    return startsWith(attribute, "user.") || startsWith(attribute, "system.");
}

/// Of a file system. What may not be seen may be there.
bool meansNoAttributes(int error) { return error == ENOTSUP || error == ENOSYS; }

bool meansNone(int error) { return meansNoAttributes(error) || error == ENODATA || error == EPERM; }

int setValue(int file, const char* attribute, const std::string& value) {
    return untilDone([&] { return ::fsetxattr(file, attribute, value.data(), value.size(), 0); });
}

/// Calls `get` with more and more room until the result fits. Returns nothing, with errno set, when
/// it fails.
template<class Get>
std::pair<bool, std::string> whole(const Get& get) {
    constexpr std::size_t firstRoom = 256;
    std::string bytes(firstRoom, '\0');
    for (;;) {
        const ssize_t length = untilDone([&] { return get(bytes.data(), bytes.size()); });
        if (length >= 0) {
            bytes.resize(static_cast<std::size_t>(length));
            return {true, bytes};
        }
        if (errno != ERANGE) {
            return {false, ""};
        }
        bytes.resize(2 * bytes.size());
    }
}

/// The entries of a list as the system encodes it: 16 bits of kind, 16 of rights, 32 of a number,
/// the lowest byte first, after 32 bits of version.
class AccessList {
public:
    explicit AccessList(std::string bytes) : m_bytes(std::move(bytes)) {}

    /// Allows the owning group no more than all others.
    std::string withGroupAsOthers() {
        constexpr unsigned char group = 0x04;
        constexpr unsigned char others = 0x20;
        const char* const allowed = rightsOf(others);
        char* const changed = rightsOf(group);
        if (allowed != nullptr && changed != nullptr) {
            *changed = static_cast<char>(*changed & *allowed);
        }
        return m_bytes;
    }

private:
    char* rightsOf(unsigned char kind) {
        constexpr std::size_t version = 4;
        constexpr std::size_t entry = 8;
        constexpr std::size_t rights = 2;
        for (std::size_t i = version; i + entry <= m_bytes.size(); i += entry) {
            if (m_bytes[i] == static_cast<char>(kind) && m_bytes[i + 1] == 0) {
                return &m_bytes[i + rights];
            }
        }
        return nullptr;
    }

    std::string m_bytes;
};

}  // namespace

FileAttributes::FileAttributes(int file, std::string name) : m_name(std::move(name)) {
    const auto [isListed, names] =
        whole([&](char* room, std::size_t size) { return ::flistxattr(file, room, size); });
    if (!isListed && !meansNoAttributes(errno)) {
        failWith(m_name, k_keepAttributes, errno);
    }
    std::string_view rest = names;
    while (!rest.empty()) {
        const std::string attribute(rest.substr(0, rest.find('\0')));
        rest.remove_prefix(attribute.size() + 1);
        if (attribute == k_accessList) {
            m_accessList = valueOf(file, attribute);
        } else if (!belongsToContent(attribute)) {
            m_others.emplace_back(attribute, valueOf(file, attribute));
        }
    }
}

std::string FileAttributes::valueOf(int file, const std::string& attribute) const {
    const auto [isRead, value] = whole([&](char* room, std::size_t size) {
        return ::fgetxattr(file, attribute.c_str(), room, size);
    });
    if (!isRead && (matters(attribute) || !meansNone(errno))) {
        failWith(m_name, k_keepAttributes, errno);
    }
    return value;
}

void FileAttributes::giveTo(int file, bool isGroupKept) const {
    for (const auto& [attribute, value] : m_others) {
        set(file, attribute, value);
    }
    if (m_accessList.empty()) {
        // A list inherited from the folder would take effect with the file's own mode.
        const int result = untilDone([&] { return ::fremovexattr(file, k_accessList); });
        if (result != 0 && errno != ENODATA && !meansNoAttributes(errno)) {
            failWith(m_name, k_keepAccessList, errno);
        }
        return;
    }
    const std::string list =
        isGroupKept ? m_accessList : AccessList(m_accessList).withGroupAsOthers();
    if (setValue(file, k_accessList, list) != 0) {
        failWith(m_name, k_keepAccessList, errno);
    }
}

void FileAttributes::set(int file, const std::string& attribute, const std::string& value) const {
    if (setValue(file, attribute.c_str(), value) != 0 && matters(attribute)) {
        failWith(m_name, k_keepAttributes, errno);
    }
}

}  // namespace ko::Orvid
