// SPDX-License-Identifier: MIT
//
// Tests of what SafeFile carries over besides the mode: access control lists and extended
// attributes, on each file system that is at hand.

#include <ko/Orvid/SafeFile.h>

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "support/AccessLists.h"
#include "support/ScratchFolder.h"

namespace orvid_test {
namespace {

using ko::Orvid::replaceFile;

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
        const bool isSet = setAttribute(file, attribute, value);
        EXPECT_TRUE(isSet || errno == ENOTSUP || errno == EPERM) << errno;
        return isSet;
    }

    std::optional<ScratchFolder> m_folder;
    std::string m_name;
};

TEST_P(SafeFileAttributes, a_file_for_one_more_user_does_not_become_the_groups) {
    const std::string list = encodedList({{Holder::owner, 6},
                                          {Holder::user, 6, 12345},
                                          {Holder::group, 0},
                                          {Holder::mask, 6},
                                          {Holder::others, 0}});
    if (!canSet(m_name, k_accessList, list)) {
        GTEST_SKIP() << GetParam() << " has no access control lists";
    }
    ASSERT_EQ(modeOf(m_name), 0660U) << "the mask shows as the group's bits";
    replaceFile(m_name, "new");
    EXPECT_EQ(contentOf(m_name), "new");
    EXPECT_EQ(attributeOf(m_name, k_accessList), list);
    EXPECT_EQ(modeOf(m_name), 0660U);
    EXPECT_EQ(m_folder->names(), std::vector<std::string>{"a"});
}

TEST_P(SafeFileAttributes, a_list_that_the_folder_gives_to_new_files_is_not_given_to_old_ones) {
    const std::string list = encodedList({{Holder::owner, 7},
                                          {Holder::user, 7, 12345},
                                          {Holder::group, 7},
                                          {Holder::mask, 7},
                                          {Holder::others, 7}});
    if (!canSet(m_folder->path().string(), k_listForNewFiles, list)) {
        GTEST_SKIP() << GetParam() << " has no access control lists";
    }
    ASSERT_EQ(::chmod(m_name.c_str(), 0644), 0);
    replaceFile(m_name, "new");
    EXPECT_EQ(attributeOf(m_name, k_accessList), "(none)");
    EXPECT_EQ(modeOf(m_name), 0644U);
    replaceFile(m_folder->file("b"), "a new file");
    EXPECT_NE(attributeOf(m_folder->file("b"), k_accessList), "(none)");
}

TEST_P(SafeFileAttributes, the_users_attributes_stay) {
    if (!canSet(m_name, "user.origin", "somewhere")) {
        GTEST_SKIP() << GetParam() << " has no attributes of users";
    }
    const std::string large(700, 'x');
    ASSERT_TRUE(setAttribute(m_name, "user.large", large));
    ASSERT_TRUE(setAttribute(m_name, "user.empty", ""));
    replaceFile(m_name, "new");
    EXPECT_EQ(attributeOf(m_name, "user.origin"), "somewhere");
    EXPECT_EQ(attributeOf(m_name, "user.large"), large);
    EXPECT_EQ(attributeOf(m_name, "user.empty"), "");
}

INSTANTIATE_TEST_SUITE_P(folders, SafeFileAttributes,
                         testing::Values("/tmp", "/dev/shm", "/var/tmp"));

}  // namespace
}  // namespace orvid_test
