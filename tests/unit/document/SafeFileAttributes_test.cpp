// SPDX-License-Identifier: MIT
//
// Tests of what SafeFile carries over besides the mode: access control lists and extended
// attributes, on each file system that is at hand. A list is set as the system encodes it, so that
// no program is needed for it.

#include <ko/Orvid/SafeFile.h>

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "support/ScratchFolder.h"

namespace orvid_test {
namespace {

using ko::Orvid::replaceFile;

constexpr const char* k_access = "system.posix_acl_access";
constexpr const char* k_forNewFiles = "system.posix_acl_default";

enum Kind : unsigned int { owner = 1, user = 2, group = 4, mask = 0x10, others = 0x20 };

struct Entry {
    Kind kind;
    unsigned int rights;
    std::uint32_t id = 0xFFFFFFFFU;
};

void appendBytes(std::string& bytes, std::uint32_t number, int count) {
    for (int i = 0; i < count; ++i) {
        bytes += static_cast<char>((number >> (8 * i)) & 0xFFU);
    }
}

/// The list as the system encodes it.
std::string encoded(const std::vector<Entry>& entries) {
    std::string bytes;
    appendBytes(bytes, 2, 4);
    for (const Entry& entry : entries) {
        appendBytes(bytes, entry.kind, 2);
        appendBytes(bytes, entry.rights, 2);
        appendBytes(bytes, entry.id, 4);
    }
    return bytes;
}

bool set(const std::string& file, const char* attribute, const std::string& value) {
    return ::setxattr(file.c_str(), attribute, value.data(), value.size(), 0) == 0;
}

/// The attribute's value; "(none)" where there is none.
std::string get(const std::string& file, const char* attribute) {
    std::string value(1000, '\0');
    const ssize_t length = ::getxattr(file.c_str(), attribute, value.data(), value.size());
    if (length < 0) {
        return "(none)";
    }
    value.resize(static_cast<std::size_t>(length));
    return value;
}

mode_t modeOf(const std::string& name) {
    struct stat status {};
    EXPECT_EQ(stat(name.c_str(), &status), 0);
    return status.st_mode & 07777U;
}

class SafeFileAttributes : public testing::TestWithParam<const char*> {
protected:
    void SetUp() override {
        std::error_code error;
        if (!std::filesystem::is_directory(GetParam(), error) || ::access(GetParam(), W_OK) != 0) {
            GTEST_SKIP() << "there is no folder " << GetParam();
        }
        m_folder.emplace(GetParam());
        m_name = m_folder->makeFile("a", "old");
    }

    /// Sets it or skips the test.
    bool canSet(const std::string& file, const char* attribute, const std::string& value) {
        const bool isSet = set(file, attribute, value);
        EXPECT_TRUE(isSet || errno == ENOTSUP || errno == EPERM) << errno;
        return isSet;
    }

    std::optional<ScratchFolder> m_folder;
    std::string m_name;
};

TEST_P(SafeFileAttributes, a_file_for_one_more_user_does_not_become_the_groups) {
    const std::string list =
        encoded({{owner, 6}, {user, 6, 12345}, {group, 0}, {mask, 6}, {others, 0}});
    if (!canSet(m_name, k_access, list)) {
        GTEST_SKIP() << GetParam() << " has no access control lists";
    }
    ASSERT_EQ(modeOf(m_name), 0660U) << "the mask shows as the group's bits";
    replaceFile(m_name, "new");
    EXPECT_EQ(contentOf(m_name), "new");
    EXPECT_EQ(get(m_name, k_access), list);
    EXPECT_EQ(modeOf(m_name), 0660U);
    EXPECT_EQ(m_folder->names(), std::vector<std::string>{"a"});
}

TEST_P(SafeFileAttributes, a_list_that_the_folder_gives_to_new_files_is_not_given_to_old_ones) {
    const std::string list =
        encoded({{owner, 7}, {user, 7, 12345}, {group, 7}, {mask, 7}, {others, 7}});
    if (!canSet(m_folder->path().string(), k_forNewFiles, list)) {
        GTEST_SKIP() << GetParam() << " has no access control lists";
    }
    ASSERT_EQ(::chmod(m_name.c_str(), 0644), 0);
    replaceFile(m_name, "new");
    EXPECT_EQ(get(m_name, k_access), "(none)");
    EXPECT_EQ(modeOf(m_name), 0644U);
    replaceFile(m_folder->file("b"), "a new file");
    EXPECT_NE(get(m_folder->file("b"), k_access), "(none)");
}

TEST_P(SafeFileAttributes, the_users_attributes_stay) {
    if (!canSet(m_name, "user.origin", "somewhere")) {
        GTEST_SKIP() << GetParam() << " has no attributes of users";
    }
    const std::string large(700, 'x');
    ASSERT_TRUE(set(m_name, "user.large", large));
    ASSERT_TRUE(set(m_name, "user.empty", ""));
    replaceFile(m_name, "new");
    EXPECT_EQ(get(m_name, "user.origin"), "somewhere");
    EXPECT_EQ(get(m_name, "user.large"), large);
    EXPECT_EQ(get(m_name, "user.empty"), "");
}

INSTANTIATE_TEST_SUITE_P(folders, SafeFileAttributes,
                         testing::Values("/tmp", "/dev/shm", "/var/tmp"));

}  // namespace
}  // namespace orvid_test
