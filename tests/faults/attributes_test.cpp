// SPDX-License-Identifier: MIT
//
// Files with an access control list and attributes whose replacement the system interrupts or
// refuses at each of the calls for them: the new file lets nobody in whom the old one kept out.

#include <ko/Orvid/SafeFile.h>

#include <gtest/gtest.h>
#include <ko/Orvid/FileException.h>
#include <sys/stat.h>

#include <cerrno>
#include <string>
#include <vector>

#include "support/AccessLists.h"
#include "support/FailingCalls.h"
#include "support/ScratchFolder.h"

namespace orvid_test {
namespace {

using ko::Orvid::FileException;
using ko::Orvid::replaceFile;

/// What says who may do what with a file, and what else is known of it.
struct Rights {
    mode_t mode;
    std::string list;
    std::string origin;

    bool operator==(const Rights& other) const {
        return mode == other.mode && list == other.list && origin == other.origin;
    }
};

class GuardedFile : public testing::Test {
protected:
    void SetUp() override {
        const std::string list = encodedList({{Holder::owner, 6},
                                              {Holder::user, 6, 12345},
                                              {Holder::group, 0},
                                              {Holder::mask, 6},
                                              {Holder::others, 0}});
        if (!setAttribute(m_name, k_accessList, list) ||
            !setAttribute(m_name, "user.origin", "here")) {
            GTEST_SKIP() << m_folder.path() << " has no access control lists";
        }
        m_rights = rights();
    }

    Rights rights() const {
        struct stat status {};
        EXPECT_EQ(::stat(m_name.c_str(), &status), 0);
        return {status.st_mode, attributeOf(m_name, k_accessList),
                attributeOf(m_name, "user.origin")};
    }

    /// Replaces the file while the calls of that kind fail as listed, and returns whether it was
    /// replaced. Whatever comes of it, the rights are as they were.
    bool isReplaced(Call call, const std::vector<int>& errors) {
        m_folder.makeFile("file", "old");
        failCalls(call, errors);
        bool isReplaced = true;
        try {
            replaceFile(m_name, "new");
        } catch (const FileException& error) {
            EXPECT_EQ(error.error(), errors.back());
            isReplaced = false;
        }
        m_isUsedUp = failNoCalls();
        EXPECT_EQ(contentOf(m_name), isReplaced ? "new" : "old");
        EXPECT_TRUE(rights() == m_rights);
        EXPECT_EQ(m_folder.names(), std::vector<std::string>{"file"});
        return isReplaced;
    }

    /// Whether all the errors of the last replacement came.
    bool m_isUsedUp = false;

private:
    ScratchFolder m_folder;
    std::string m_name = m_folder.makeFile("file", "old");
    Rights m_rights;
};

constexpr Call k_calls[] = {Call::flistxattr, Call::fgetxattr, Call::fsetxattr};

TEST_F(GuardedFile, goes_on_after_signals) {
    for (const Call call : k_calls) {
        EXPECT_TRUE(isReplaced(call, {EINTR, 0, EINTR}));
        EXPECT_TRUE(isReplaced(call, {EINTR, EINTR}));
        EXPECT_TRUE(m_isUsedUp);
    }
}

TEST_F(GuardedFile, stays_where_its_list_or_an_attribute_cannot_be_read_or_given) {
    for (const Call call : {Call::fgetxattr, Call::fsetxattr}) {
        for (const int error : {ENOTSUP, ENOSPC, EDQUOT, EPERM, EACCES, EIO}) {
            EXPECT_FALSE(isReplaced(call, {error})) << error;
            EXPECT_FALSE(isReplaced(call, {0, error})) << error;
            EXPECT_FALSE(isReplaced(call, {EINTR, 0, EINTR, error})) << error;
            EXPECT_TRUE(m_isUsedUp);
        }
    }
}

TEST_F(GuardedFile, stays_where_it_cannot_be_reported_whether_it_has_a_list) {
    for (const int error : {EPERM, EACCES, EIO, ENOMEM}) {
        EXPECT_FALSE(isReplaced(Call::flistxattr, {error})) << error;
        EXPECT_TRUE(m_isUsedUp);
    }
}

TEST_F(GuardedFile, stays_where_another_step_fails) {
    for (const Call call : {Call::fchmod, Call::rename, Call::fsync, Call::write}) {
        EXPECT_FALSE(isReplaced(call, {ENOSPC}));
    }
}

/// The list that the folder gives to new files must go from one that has none.
TEST(UnguardedFile, stays_where_the_list_of_its_folder_cannot_be_removed) {
    const ScratchFolder folder;
    const std::string name = folder.makeFile("file", "old");
    for (const int error : {EPERM, EACCES, EIO, ENOSPC}) {
        failCalls(Call::fremovexattr, {EINTR, error});
        EXPECT_THROW(replaceFile(name, "new"), FileException) << error;
        EXPECT_TRUE(failNoCalls());
        EXPECT_EQ(contentOf(name), "old");
    }
    for (const int error : {EINTR, ENOTSUP, ENOSYS, ENODATA}) {
        failCalls(Call::fremovexattr, {error});
        EXPECT_NO_THROW(replaceFile(name, "new")) << error;
        EXPECT_TRUE(failNoCalls());
    }
    EXPECT_EQ(folder.names(), std::vector<std::string>{"file"});
}

}  // namespace
}  // namespace orvid_test
