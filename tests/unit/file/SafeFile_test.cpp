// SPDX-License-Identifier: MIT
//
// Tests of SafeFile: what a replacement keeps, what each failure leaves, and that a process
// that is killed while it writes leaves the old or the new content and nothing else.

#include <ko/Orvid/SafeFile.h>

#include <gtest/gtest.h>
#include <ko/Orvid/FileException.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <exception>
#include <filesystem>
#include <fstream>
#include <future>
#include <iostream>
#include <memory>
#include <optional>
#include <random>
#include <string>
#include <vector>

#include "support/Document.h"
#include "support/FullDisk.h"
#include "support/ScratchFolder.h"

namespace orvid_test {
namespace {

using ko::Orvid::FileException;
using ko::Orvid::readFile;
using ko::Orvid::replaceFile;
using ko::Orvid::SafeFile;
using Names = std::vector<std::string>;

mode_t modeOf(const std::string& name) {
    struct stat status {};
    EXPECT_EQ(stat(name.c_str(), &status), 0);
    return status.st_mode & 07777U;
}

TEST(SafeFile, makes_a_new_file_with_the_mode_that_the_umask_leaves) {
    const ScratchFolder folder;
    const mode_t before = umask(027);
    replaceFile(folder.file("new"), "text");
    umask(before);
    EXPECT_EQ(contentOf(folder.file("new")), "text");
    EXPECT_EQ(modeOf(folder.file("new")), 0640U);
    EXPECT_EQ(folder.names(), Names{"new"});
}

TEST(SafeFile, replaces_the_content_and_keeps_the_mode) {
    const ScratchFolder folder;
    const std::string name = folder.makeFile("a", "a long former text");
    for (const mode_t mode : {0600U, 0644U, 0751U, 0666U}) {
        ASSERT_EQ(chmod(name.c_str(), mode), 0);
        replaceFile(name, "new");
        EXPECT_EQ(contentOf(name), "new");
        EXPECT_EQ(modeOf(name), mode);
    }
    EXPECT_EQ(folder.names(), Names{"a"});
}

TEST(SafeFile, keeps_the_owner_and_the_group) {
    if (geteuid() != 0) {
        GTEST_SKIP() << "only root can give files away";
    }
    const ScratchFolder folder;
    const std::string name = folder.makeFile("a", "old");
    ASSERT_EQ(chown(name.c_str(), 12345, 23456), 0);
    ASSERT_EQ(chmod(name.c_str(), 04750), 0);
    replaceFile(name, "new");
    struct stat status {};
    ASSERT_EQ(stat(name.c_str(), &status), 0);
    EXPECT_EQ(status.st_uid, 12345U);
    EXPECT_EQ(status.st_gid, 23456U);
    EXPECT_EQ(modeOf(name), 04750U);
}

/// Runs `action` in a process of its own and returns its exit status; -1 when a signal ended it.
template<class Action>
int statusOfChild(const Action& action) {
    const pid_t child = fork();
    if (child == 0) {
        _exit(action());
    }
    int status = 0;
    EXPECT_EQ(waitpid(child, &status, 0), child);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

TEST(SafeFile, gives_a_group_that_cannot_stay_no_more_than_all_others) {
    if (geteuid() != 0) {
        GTEST_SKIP() << "only root can set up a file of a foreign group";
    }
    const ScratchFolder folder;
    const std::string name = folder.makeFile("a", "old");
    constexpr uid_t someone = 12345;
    ASSERT_EQ(chown(folder.path().c_str(), someone, someone), 0);
    ASSERT_EQ(chown(name.c_str(), someone, 23456), 0);
    ASSERT_EQ(chmod(name.c_str(), 02664), 0);
    const auto replaceAsSomeone = [&] {
        const bool isSomeone = setgid(someone) == 0 && setuid(someone) == 0;
        replaceFile(name, "new");
        return isSomeone ? 0 : 1;
    };
    EXPECT_EQ(statusOfChild(replaceAsSomeone), 0);
    EXPECT_EQ(contentOf(name), "new");
    EXPECT_EQ(modeOf(name), 0644U);
}

TEST(SafeFile, replaces_what_a_symbolic_link_leads_to) {
    const ScratchFolder folder;
    std::filesystem::create_directory(folder.path() / "real");
    folder.makeFile("real/a", "old");
    std::filesystem::create_symlink("real/a", folder.file("first"));
    std::filesystem::create_symlink(folder.file("first"), folder.file("second"));
    replaceFile(folder.file("second"), "new");
    EXPECT_EQ(contentOf(folder.file("real/a")), "new");
    EXPECT_TRUE(std::filesystem::is_symlink(folder.path() / "first"));
    EXPECT_TRUE(std::filesystem::is_symlink(folder.path() / "second"));
    EXPECT_EQ(folder.names(), (Names{"first", "real", "second"}));
    EXPECT_EQ(SafeFile(folder.file("second")).target(), folder.file("real/a"));
}

TEST(SafeFile, follows_as_many_symbolic_links_as_the_system) {
    const ScratchFolder folder;
    std::string name = folder.makeFile("0", "old");
    constexpr int most = 40;
    for (int i = 1; i <= most + 1; ++i) {
        std::filesystem::create_symlink(name, folder.file(std::to_string(i)));
        name = folder.file(std::to_string(i));
    }
    replaceFile(folder.file(std::to_string(most)), "new");
    EXPECT_EQ(contentOf(folder.file("0")), "new");
    EXPECT_EQ(readFile(folder.file(std::to_string(most))), "new");
    EXPECT_EQ(thrownBy<FileException>([&] { replaceFile(name, "newer"); }).error(), ELOOP);
    EXPECT_EQ(thrownBy<FileException>([&] { readFile(name); }).error(), ELOOP);
    EXPECT_EQ(contentOf(folder.file("0")), "new");
}

TEST(SafeFile, makes_the_file_that_a_symbolic_link_misses) {
    const ScratchFolder folder;
    std::filesystem::create_symlink("missing", folder.file("link"));
    replaceFile(folder.file("link"), "new");
    EXPECT_EQ(contentOf(folder.file("missing")), "new");
    EXPECT_TRUE(std::filesystem::is_symlink(folder.path() / "link"));
}

TEST(SafeFile, is_removed_again_without_a_commit) {
    const ScratchFolder folder;
    const std::string name = folder.makeFile("a", "old");
    {
        SafeFile file(name);
        file.write("new");
        EXPECT_EQ(folder.names().size(), 2U);
        EXPECT_EQ(contentOf(name), "old");
    }
    EXPECT_EQ(folder.names(), Names{"a"});
    EXPECT_EQ(contentOf(name), "old");
}

TEST(SafeFile, gathers_what_is_written_piece_by_piece) {
    const ScratchFolder folder;
    SafeFile file(folder.file("a"));
    file.write("one ");
    file.write("");
    file.write(std::string("t\0wo", 4));
    file.commit();
    EXPECT_EQ(contentOf(folder.file("a")), std::string("one t\0wo", 8));
}

TEST(SafeFile, leaves_the_old_file_when_the_disk_is_full) {
    const ScratchFolder folder;
    const std::string name = folder.makeFile("a", "old");
    std::optional<FileException> error;
    {
        const FullDisk disk(1000);
        try {
            replaceFile(name, std::string(1001, 'x'));
        } catch (const FileException& caught) {
            error = caught;
        }
    }
    ASSERT_TRUE(error);
    EXPECT_EQ(error->error(), EFBIG);
    EXPECT_EQ(error->file(), name);
    EXPECT_EQ(contentOf(name), "old");
    EXPECT_EQ(folder.names(), Names{"a"});
}

/// The errno of the failure to replace the file "a" of the folder, tried by one whom permissions
/// bind: another user where this is root. 0 when it does not fail.
int failureForSomeone(const ScratchFolder& folder) {
    constexpr uid_t someone = 12345;
    const bool isRoot = geteuid() == 0;
    if (isRoot) {
        EXPECT_EQ(chown(folder.path().c_str(), someone, someone), 0);
        EXPECT_EQ(chown(folder.file("a").c_str(), someone, someone), 0);
    }
    return statusOfChild([&] {
        if (isRoot && (setgid(someone) != 0 || setuid(someone) != 0)) {
            return -1;
        }
        try {
            replaceFile(folder.file("a"), "new");
            return 0;
        } catch (const FileException& error) {
            return error.error();
        }
    });
}

TEST(SafeFile, leaves_the_old_file_in_a_folder_that_takes_no_new_ones) {
    const ScratchFolder folder;
    const std::string name = folder.makeFile("a", "old");
    ASSERT_EQ(chmod(folder.path().c_str(), 0555), 0);
    EXPECT_EQ(failureForSomeone(folder), EACCES);
    EXPECT_EQ(contentOf(name), "old");
    EXPECT_EQ(folder.names(), Names{"a"});
}

TEST(SafeFile, leaves_a_file_alone_that_may_not_be_written_to) {
    const ScratchFolder folder;
    const std::string name = folder.makeFile("a", "old");
    ASSERT_EQ(chmod(name.c_str(), 0444), 0);
    EXPECT_EQ(failureForSomeone(folder), EACCES);
    EXPECT_EQ(contentOf(name), "old");
    EXPECT_EQ(folder.names(), Names{"a"});
}

TEST(SafeFile, replaces_a_file_in_a_folder_that_cannot_be_read) {
    const ScratchFolder folder;
    const std::string name = folder.makeFile("a", "old");
    ASSERT_EQ(chmod(folder.path().c_str(), 0333), 0);
    EXPECT_EQ(failureForSomeone(folder), 0);
    EXPECT_EQ(contentOf(name), "new");
}

/// Until the end of the scope no descriptor 0 is open, so that the next file gets it.
class NoStandardInput {
public:
    NoStandardInput() : m_kept(::dup(0)) { ::close(0); }
    NoStandardInput(const NoStandardInput&) = delete;
    NoStandardInput& operator=(const NoStandardInput&) = delete;
    ~NoStandardInput() {
        if (m_kept >= 0) {
            ::dup2(m_kept, 0);
            ::close(m_kept);
        }
    }

private:
    int m_kept;
};

TEST(SafeFile, works_without_a_standard_input) {
    const ScratchFolder folder;
    const std::string name = folder.makeFile("a", "old");
    const NoStandardInput none;
    replaceFile(name, "new");
    EXPECT_EQ(readFile(name), "new");
    EXPECT_EQ(folder.names(), Names{"a"});
    EXPECT_EQ(::close(0), -1) << "a descriptor is left open";
}

TEST(SafeFile, replaces_regular_files_only) {
    const ScratchFolder folder;
    const std::string pipe = folder.file("pipe");
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    for (const std::string& name : {folder.path().string(), pipe, std::string("/dev/null")}) {
        const auto error = thrownBy<FileException>([&] { replaceFile(name, "x"); });
        EXPECT_STREQ(error.what(), ("Cannot write \"" + name + "\": Not a regular file").c_str());
        EXPECT_EQ(error.error(), 0);
    }
    EXPECT_EQ(folder.names(), Names{"pipe"});
}

TEST(SafeFile, names_the_name_and_the_reason_when_it_cannot_be_made) {
    const ScratchFolder folder;
    std::filesystem::create_symlink("loop", folder.file("loop"));
    folder.makeFile("file", "");
    const std::vector<std::pair<std::string, int>> rows = {{"loop", ELOOP},
                                                           {"none/a", ENOENT},
                                                           {"file/a", ENOTDIR},
                                                           {std::string(300, 'x'), ENAMETOOLONG}};
    for (const auto& row : rows) {
        const std::string name = folder.file(row.first);
        const auto error = thrownBy<FileException>([&] { replaceFile(name, "x"); });
        EXPECT_EQ(error.error(), row.second) << name;
        EXPECT_EQ(error.file(), name);
        EXPECT_NE(std::string(error.what()).find(name), std::string::npos);
    }
    EXPECT_EQ(folder.names(), (Names{"file", "loop"}));
}

TEST(SafeFile, replaces_a_file_in_the_current_folder_by_its_bare_name) {
    const ScratchFolder folder;
    folder.makeFile("a", "old");
    const auto replaceThere = [&] {
        const bool isThere = chdir(folder.path().c_str()) == 0;
        replaceFile("a", "new");
        return isThere ? 0 : 1;
    };
    EXPECT_EQ(statusOfChild(replaceThere), 0);
    EXPECT_EQ(contentOf(folder.file("a")), "new");
    EXPECT_EQ(folder.names(), Names{"a"});
}

TEST(SafeFile, is_whole_whenever_the_process_that_writes_it_is_killed) {
    constexpr int runs = 200;
    const ScratchFolder folder;
    const std::string name = folder.file("a");
    const std::string texts[] = {std::string(300000, 'a'), std::string(200000, 'b')};
    std::mt19937 random(7);
    std::uniform_int_distribution<int> anyCount(0, 40);
    int found[] = {0, 0};
    int leftovers = 0;
    replaceFile(name, texts[0]);
    for (int run = 0; run < runs; ++run) {
        const pid_t writer = fork();
        ASSERT_GE(writer, 0);
        if (writer == 0) {
            for (int i = 0;; ++i) {
                replaceFile(name, texts[i % 2]);
            }
        }
        // The reads fill the time until the kill, and each must find a whole text too.
        for (int reads = anyCount(random); reads >= 0; --reads) {
            const std::string content = readFile(name);
            EXPECT_TRUE(content == texts[0] || content == texts[1]) << content.size();
        }
        kill(writer, SIGKILL);
        ASSERT_EQ(waitpid(writer, nullptr, 0), writer);
        const std::string content = readFile(name);
        ASSERT_TRUE(content == texts[0] || content == texts[1]) << content.size() << " bytes";
        ++found[content == texts[0] ? 0 : 1];
        for (const std::string& other : folder.names()) {
            leftovers += other == "a" ? 0 : 1;
            EXPECT_TRUE(other == "a" || other.compare(0, 7, ".orvid-") == 0) << other;
            std::filesystem::remove(other == "a" ? folder.path() / "none" : folder.path() / other);
        }
    }
    std::cout << runs << " kills: one text " << found[0] << " times, the other " << found[1]
              << " times, during a write " << leftovers << " times\n";
    EXPECT_GT(leftovers, 0) << "no kill came during a write, so this run shows nothing";
}

TEST(ReadFile, reads_every_byte) {
    const ScratchFolder folder;
    for (const std::size_t size : {0U, 1U, 65535U, 65536U, 65537U, 300000U}) {
        std::string bytes(size, '\0');
        for (std::size_t i = 0; i < size; ++i) {
            bytes[i] = static_cast<char>(i * 7);
        }
        EXPECT_EQ(readFile(folder.makeFile("a", bytes)), bytes) << size;
    }
}

TEST(ReadFile, reads_files_that_do_not_tell_their_size) {
    EXPECT_FALSE(readFile("/proc/self/status").empty());
    EXPECT_TRUE(readFile("/dev/null").empty());
}

TEST(ReadFile, reads_a_pipe_to_its_end) {
    const ScratchFolder folder;
    const std::string name = folder.file("pipe");
    ASSERT_EQ(::mkfifo(name.c_str(), 0600), 0);
    std::string bytes(200000, 'x');
    bytes.back() = 'y';
    auto written = std::async(std::launch::async,
                              [&] { std::ofstream(name, std::ios_base::binary) << bytes; });
    EXPECT_EQ(readFile(name), bytes);
}

TEST(ReadFile, names_the_name_and_the_reason_when_it_cannot) {
    const ScratchFolder folder;
    const std::string missing = folder.file("missing");
    const auto error = thrownBy<FileException>([&] { readFile(missing); });
    EXPECT_EQ(error.error(), ENOENT);
    EXPECT_EQ(error.file(), missing);
    EXPECT_EQ(error.action(), "read");
    EXPECT_EQ(error.reason(), "No such file or directory");
    EXPECT_STREQ(error.what(),
                 ("Cannot read \"" + missing + "\": No such file or directory").c_str());
    EXPECT_EQ(thrownBy<FileException>([&] { readFile(folder.path()); }).error(), EISDIR);
}

TEST(FileException, is_copied_with_all_that_it_says) {
    const ko::Orvid::Exception cause("because");
    const FileException first("a", "read", "why", 5, &cause);
    const std::unique_ptr<const ko::Exception> copy(first.clone());
    FileException second("b", "write", "x");
    second = first;
    EXPECT_STREQ(copy->what(), "Cannot read \"a\": why");
    EXPECT_STREQ(copy->cause()->what(), "because");
    EXPECT_STREQ(second.what(), copy->what());
    EXPECT_EQ(second.file() + second.action() + second.reason(), "areadwhy");
    EXPECT_EQ(second.error(), 5);
    EXPECT_NE(dynamic_cast<const FileException*>(copy.get()), nullptr);
}

}  // namespace
}  // namespace orvid_test
