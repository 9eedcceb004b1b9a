// SPDX-License-Identifier: MIT
//
// Files whose replacement the system refuses at each of its steps: the content is the old one until
// the last step, and no temporary file stays.

#include <ko/Orvid/SafeFile.h>

#include <gtest/gtest.h>
#include <ko/Orvid/Dom.h>
#include <ko/Orvid/FileException.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <string>
#include <vector>

#include "support/Document.h"
#include "support/FailingCalls.h"
#include "support/ScratchFolder.h"

namespace orvid_test {
namespace {

using ko::Orvid::FileException;
using ko::Orvid::replaceFile;

class ReplacedFile : public testing::Test {
protected:
    ReplacedFile() : m_name(m_folder.makeFile("file", "old")) {}
    ~ReplacedFile() override { EXPECT_TRUE(failNoCalls()) << "an error was not used"; }

    /// Replaces the content by "new content" while these errors come, which must not show.
    void replacesInSpiteOf(Call call, const std::vector<int>& errors) {
        failCalls(call, errors);
        replaceFile(m_name, "new content");
        expectContent("new content");
    }

    /// The same where the last error ends it.
    void failsBy(Call call, const std::vector<int>& errors, const std::string& action,
                 const std::string& content = "old") {
        failCalls(call, errors);
        const auto error = thrownBy<FileException>([&] { replaceFile(m_name, "new content"); });
        EXPECT_EQ(error.error(), errors.back());
        EXPECT_EQ(error.action(), action);
        EXPECT_EQ(error.file(), m_name);
        expectContent(content);
    }

    void expectContent(const std::string& content) {
        EXPECT_EQ(contentOf(m_name), content);
        EXPECT_EQ(m_folder.names(), std::vector<std::string>{"file"});
    }

    /// The bits of the new file's mode when the old one had these.
    unsigned int newModeOf(unsigned int mode) {
        EXPECT_EQ(::chmod(m_name.c_str(), mode), 0);
        replaceFile(m_name, "new content");
        return status().st_mode & 07777U;
    }

    struct stat status() const {
        struct stat result {};
        EXPECT_EQ(::stat(m_name.c_str(), &result), 0);
        return result;
    }

private:
    ScratchFolder m_folder;
    std::string m_name;
};

TEST_F(ReplacedFile, goes_on_after_signals_and_writes_in_part) {
    replacesInSpiteOf(Call::write, {EINTR, k_half, EINTR, EINTR, k_half, k_half});
    replacesInSpiteOf(Call::fsync, {EINTR, EINTR, 0, EINTR, EINTR});
    replacesInSpiteOf(Call::close, {0, EINTR});
}

TEST_F(ReplacedFile, stays_as_it_was_when_writing_fails) {
    failsBy(Call::write, {ENOSPC}, "write");
    failsBy(Call::write, {k_half, EINTR, EIO}, "write");
}

TEST_F(ReplacedFile, stays_as_it_was_when_flushing_or_closing_fails) {
    failsBy(Call::fsync, {EIO}, "write");
    failsBy(Call::fsync, {EINTR, EDQUOT}, "write");
    // The first call closes the former file, which was only read.
    failsBy(Call::close, {0, EIO}, "write");
}

TEST_F(ReplacedFile, stays_as_it_was_when_it_cannot_be_renamed) {
    failsBy(Call::rename, {EBUSY}, "replace");
}

TEST_F(ReplacedFile, has_the_new_content_when_only_its_folder_cannot_be_flushed) {
    failsBy(Call::fsync, {0, EIO}, "flush the folder of", "new content");
}

TEST(SavedDocument, is_saved_again_where_only_its_folder_could_not_be_flushed) {
    const ScratchFolder folder;
    const std::string name = folder.makeFile("a.json", "{\"a\": 1}");
    ko::Orvid::Dom dom = ko::Orvid::Dom::load(name);
    (*dom).create("a", 2);
    failCalls(Call::fsync, {0, EIO});
    const auto error = thrownBy<FileException>([&] { dom.save(name); });
    EXPECT_EQ(error.action(), "flush the folder of");
    EXPECT_EQ(contentOf(name), "{\"a\": 2}");
    EXPECT_TRUE(failNoCalls());
    (*dom).create("a", 3);
    dom.save(name);
    EXPECT_EQ(contentOf(name), "{\"a\": 3}");
}

TEST_F(ReplacedFile, needs_no_file_system_that_flushes_folders) {
    replacesInSpiteOf(Call::fsync, {0, EINVAL});
    replacesInSpiteOf(Call::fsync, {0, EROFS});
}

TEST_F(ReplacedFile, stays_as_it_was_where_it_may_not_be_written_to) {
    failsBy(Call::faccessat, {EACCES}, "write");
}

TEST_F(ReplacedFile, stays_as_it_was_when_the_mode_cannot_be_kept) {
    failsBy(Call::fchmod, {EPERM}, "write");
}

TEST_F(ReplacedFile, keeps_its_mode_with_its_owner) {
    EXPECT_EQ(newModeOf(0640), 0640U);
    EXPECT_EQ(newModeOf(0604), 0604U);
    EXPECT_EQ(newModeOf(04755), 04755U);
}

TEST_F(ReplacedFile, loses_the_bits_that_lend_rights_with_its_owner) {
    failCalls(Call::fchown, {EPERM});
    EXPECT_EQ(newModeOf(06754), 0754U);
}

TEST_F(ReplacedFile, belongs_to_the_writer_where_its_owner_cannot_be_kept) {
    failCalls(Call::fchown, {EPERM});
    newModeOf(0600);
    EXPECT_EQ(status().st_uid, ::geteuid());
}

TEST_F(ReplacedFile, gives_another_group_no_more_than_all_others) {
    failCalls(Call::fchown, {EPERM, EPERM});
    EXPECT_EQ(newModeOf(02674), 0644U);
    failCalls(Call::fchown, {EPERM, EPERM});
    EXPECT_EQ(newModeOf(0601), 0611U);
}

}  // namespace
}  // namespace orvid_test
