// SPDX-License-Identifier: MIT
//
// Tests of FileLock and FileStamp: edits of several processes that are all kept, locks that are
// left behind, and files that change while they are edited.

#include <ko/Orvid/FileLock.h>

#include <gtest/gtest.h>
#include <ko/Orvid/FileException.h>
#include <ko/Orvid/SafeFile.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string>
#include <vector>

#include "support/Document.h"
#include "support/ScratchFolder.h"

namespace orvid_test {
namespace {

using ko::Orvid::FileException;
using ko::Orvid::FileLock;
using ko::Orvid::FileStamp;
using ko::Orvid::readFile;
using ko::Orvid::replaceFile;
using ko::Orvid::SafeFile;
using Names = std::vector<std::string>;

constexpr std::chrono::milliseconds k_noPatience(0);

/// Runs `action` in a process of its own.
template<class Action>
pid_t inChild(const Action& action) {
    const pid_t child = fork();
    if (child == 0) {
        try {
            action();
        } catch (...) {
            _exit(1);
        }
        _exit(0);
    }
    return child;
}

int statusOf(pid_t child) {
    int status = 0;
    EXPECT_EQ(waitpid(child, &status, 0), child);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

/// Where anybody may make files, somebody may make this one.
TEST(FileLock, does_not_wait_for_a_pipe_in_its_place) {
    const ScratchFolder folder;
    const std::string name = folder.makeFile("a", "1");
    const std::string lockFile = FileLock(name).lockFile();
    ASSERT_EQ(mkfifo(lockFile.c_str(), 0600), 0);
    const pid_t child = inChild([&] {
        alarm(20);
        const FileLock lock(name, k_noPatience);
    });
    EXPECT_EQ(statusOf(child), 0);
    EXPECT_EQ(folder.names(), Names{"a"});
}

TEST(FileLock, keeps_all_edits_of_several_writers) {
    constexpr int writers = 3;
    constexpr int edits = 60;
    const ScratchFolder folder;
    const std::string name = folder.makeFile("a", "");
    std::vector<pid_t> children;
    for (int writer = 0; writer < writers; ++writer) {
        children.push_back(inChild([&] {
            for (int i = 0; i < edits; ++i) {
                const FileLock lock(name);
                replaceFile(name, readFile(name) + "x");
            }
        }));
    }
    for (const pid_t child : children) {
        EXPECT_EQ(statusOf(child), 0);
    }
    EXPECT_EQ(contentOf(name).size(), std::size_t{writers} * std::size_t{edits});
    EXPECT_EQ(folder.names(), Names{"a"});
}

TEST(FileLock, is_had_by_one_at_a_time) {
    const ScratchFolder folder;
    const std::string name = folder.makeFile("a", "");
    {
        const FileLock lock(name);
        EXPECT_TRUE(lock.isHeld());
        EXPECT_EQ(folder.names().size(), 2U);
        const auto error = thrownBy<FileException>([&] { FileLock(name, k_noPatience); });
        EXPECT_EQ(error.error(), ETIMEDOUT);
        EXPECT_EQ(error.file(), name);
        EXPECT_EQ(error.action(), "lock");
        const FileLock other(folder.file("b"), k_noPatience);
        EXPECT_TRUE(other.isHeld());
    }
    EXPECT_EQ(folder.names(), Names{"a"});
    EXPECT_TRUE(FileLock(name, k_noPatience).isHeld());
}

TEST(FileLock, is_shared_by_all_symbolic_links) {
    const ScratchFolder folder;
    const std::string name = folder.makeFile("a", "");
    std::filesystem::create_symlink("a", folder.file("link"));
    const FileLock lock(name);
    EXPECT_EQ(thrownBy<FileException>([&] { FileLock(folder.file("link"), k_noPatience); }).error(),
              ETIMEDOUT);
}

TEST(FileLock, of_a_process_that_was_killed_is_taken_over) {
    const ScratchFolder folder;
    const std::string name = folder.makeFile("a", "");
    const pid_t child = inChild([&] {
        const FileLock lock(name);
        raise(SIGKILL);
    });
    EXPECT_EQ(statusOf(child), -1);
    EXPECT_EQ(folder.names().size(), 2U) << "the lock's file";
    {
        const FileLock lock(name, k_noPatience);
        EXPECT_TRUE(lock.isHeld());
    }
    EXPECT_EQ(folder.names(), Names{"a"});
}

TEST(FileLock, is_done_without_where_the_folder_takes_no_files) {
    const FileLock lock("/proc/self/status", k_noPatience);
    EXPECT_FALSE(lock.isHeld());
    const ScratchFolder folder;
    EXPECT_FALSE(FileLock(folder.file("none/a"), k_noPatience).isHeld());
}

TEST(FileLock, follows_no_link_that_stands_in_its_place) {
    const ScratchFolder folder;
    const std::string name = folder.makeFile("a", "");
    const std::string lockFile = FileLock(name, k_noPatience).lockFile();
    std::filesystem::create_symlink("victim", lockFile);
    EXPECT_FALSE(FileLock(name, k_noPatience).isHeld());
    EXPECT_FALSE(std::filesystem::exists(folder.file("victim")));
}

class StampedFile : public testing::Test {
protected:
    void expectChanged() {
        const auto error = thrownBy<FileException>([this] { m_edit->commit(); });
        EXPECT_EQ(error.error(), ESTALE);
        EXPECT_STREQ(
            error.what(),
            ("Cannot replace \"" + m_name + "\": It has changed since it was read").c_str());
        m_edit.reset();
        EXPECT_EQ(m_folder.names(), Names{"a"});
    }

    /// Reads the file, and says so to an edit.
    void read() {
        FileStamp stamp;
        EXPECT_EQ(readFile(m_name, stamp), contentOf(m_name));
        m_edit.emplace(m_name);
        m_edit->expect(stamp);
        m_edit->write("edited");
    }

    ScratchFolder m_folder;
    std::string m_name = m_folder.makeFile("a", "old");
    std::optional<SafeFile> m_edit;
};

TEST_F(StampedFile, is_replaced_when_it_is_still_the_one_that_was_read) {
    read();
    m_edit->commit();
    EXPECT_EQ(contentOf(m_name), "edited");
    EXPECT_TRUE(m_edit->temporary().empty());
}

TEST_F(StampedFile, is_left_when_another_has_replaced_it) {
    read();
    replaceFile(m_name, "new");
    expectChanged();
    EXPECT_EQ(contentOf(m_name), "new");
}

TEST_F(StampedFile, is_left_when_another_has_written_into_it) {
    read();
    std::ofstream(m_name, std::ios_base::app) << "er";
    expectChanged();
    EXPECT_EQ(contentOf(m_name), "older");
}

TEST_F(StampedFile, is_not_made_again_when_another_has_removed_it) {
    read();
    std::filesystem::remove(m_name);
    EXPECT_EQ(thrownBy<FileException>([this] { m_edit->commit(); }).error(), ENOENT);
    m_edit.reset();
    EXPECT_TRUE(m_folder.names().empty());
}

TEST(FileStamp, names_the_file_that_it_cannot_read) {
    EXPECT_EQ(thrownBy<FileException>([] { FileStamp::of("/no/such/file"); }).file(),
              "/no/such/file");
    EXPECT_EQ(thrownBy<FileException>([] { FileStamp::of(-1, "name"); }).error(), EBADF);
}

}  // namespace
}  // namespace orvid_test
