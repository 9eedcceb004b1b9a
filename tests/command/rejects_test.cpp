// SPDX-License-Identifier: MIT
//
// What becomes of lines that fail when a file of records is edited, and of a file's other names.

#include "support/Command.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <string>
#include <vector>

#include "support/ScratchFolder.h"

namespace {

using orvid_test::bytesOfFile;
using orvid_test::failed;
using orvid_test::orvid;
using orvid_test::repeated;
using orvid_test::ScratchFile;
using orvid_test::ScratchFolder;
using orvid_test::shell;

TEST(rejects, are_needed_where_lines_would_be_lost) {
    const ScratchFile file("[1]\nbad\n");
    for (const char* const what : {"--on-error=skip", "--on-error=null"}) {
        EXPECT_EQ(orvid({"print", "-i", "--lines", what, file.name()}),
                  failed(2,
                         "the lines that fail would be lost: --rejects FILE keeps them; see orvid "
                         "print --help"));
    }
    EXPECT_EQ(bytesOfFile(file.name()), "[1]\nbad\n");
    EXPECT_EQ(orvid({"print", "-i", "--lines", "--on-error=passthrough", file.name()}).status, 1);
}

TEST(rejects, go_after_what_their_file_holds) {
    const ScratchFile file("[1]\nbad\r\n\n{\"a\"\n[ 2 ]");
    const ScratchFile rejects("older\n");
    for (const char* const jobs : {"-j1", "-j3"}) {
        const std::string before = bytesOfFile(rejects.name());
        const orvid_test::CommandResult result = orvid({"print", "--lines", jobs, "--on-error=skip",
                                                        "--rejects", rejects.name(), file.name()});
        EXPECT_EQ(result.out, "[1]\n[2]\n");
        EXPECT_EQ(result.status, 1);
        EXPECT_EQ(bytesOfFile(rejects.name()), before + "bad\r\n{\"a\"\n");
    }
}

TEST(rejects, begin_on_a_line_of_their_own) {
    const ScratchFile rejects("older");
    const auto print = [&](const std::string& lines) {
        orvid({"print", "--lines", "--on-error=skip", "--rejects", rejects.name()}, lines);
        return bytesOfFile(rejects.name());
    };
    EXPECT_EQ(print("[1]\n"), "older");
    EXPECT_EQ(print("bad\n[1]\nworse\n"), "older\nbad\nworse\n");
    EXPECT_EQ(print("bad\n"), "older\nbad\nworse\nbad\n");
}

TEST(rejects, take_all_of_a_line_that_is_too_long) {
    const std::string line = repeated("a", 3000000);
    const ScratchFile rejects("");
    EXPECT_EQ(
        orvid({"print", "--lines", "--max-line=10", "--on-error=skip", "--rejects", rejects.name()},
              line + "\n[1]\n")
            .out,
        "[1]\n");
    EXPECT_EQ(bytesOfFile(rejects.name()), line + "\n");
}

TEST(rejects, must_be_writable) {
    EXPECT_EQ(orvid({"print", "--lines", "--rejects", "/no/such/file"}, "1\n"),
              failed(3, "/no/such/file: No such file or directory"));
    EXPECT_EQ(orvid({"print", "--rejects", "x"}, "1").status, 2);
}

/// Under several names. Where it were read as well it would have no end.
TEST(rejects, are_refused_where_they_would_go_to_a_file_of_the_call) {
    const ScratchFolder folder;
    const std::string file = folder.makeFile("a", "[1]\nbad\n");
    const std::string link = folder.file("link");
    const std::string hard = folder.file("hard");
    std::filesystem::create_symlink("a", link);
    std::filesystem::create_hard_link(file, hard);
    const std::string refusal = ": --rejects cannot append to the file that is read\n";
    for (const std::string& name : {file, link, hard, folder.path().string() + "/./a"}) {
        for (const std::string option : {"", "-i"}) {
            const orvid_test::CommandResult result =
                shell("timeout 20 \"$0\" print --lines $3 --on-error=skip --rejects \"$1\" \"$2\"",
                      {name, file, option});
            EXPECT_EQ(result.status, 2) << name << option;
            EXPECT_EQ(result.out, "") << name << option;
            EXPECT_EQ(result.err, "orvid: " + file + refusal);
        }
    }
    EXPECT_EQ(shell("timeout 20 \"$0\" print --lines --rejects \"$1\" <\"$1\"", {file}),
              failed(2, "(standard input)" + refusal.substr(0, refusal.length() - 1)));
    EXPECT_EQ(bytesOfFile(file), "[1]\nbad\n");
    EXPECT_EQ(folder.names(), (std::vector<std::string>{"a", "hard", "link"}));
}

TEST(rejects, are_refused_where_their_file_is_made_by_the_call_and_then_read) {
    const ScratchFolder folder;
    const std::string file = folder.makeFile("a", "bad\n");
    const orvid_test::CommandResult result =
        shell("cd \"$1\" && timeout 20 \"$0\" print --lines --on-error=skip --rejects new a new",
              {folder.path().string()});
    EXPECT_EQ(result.status, 2);
    EXPECT_NE(result.err.find("orvid: new: --rejects cannot append to the file that is read\n"),
              std::string::npos);
    EXPECT_EQ(bytesOfFile(folder.file("new")), "bad\n");
}

TEST(rejects, are_refused_in_the_file_of_another_output) {
    const ScratchFolder folder;
    folder.makeFile("a", "[1]\nbad\n");
    for (const char* const output : {">other", "2>other", ">>other"}) {
        folder.makeFile("other", "");
        const orvid_test::CommandResult result = shell(
            std::string("cd \"$1\" && \"$0\" print --lines --on-error=skip --rejects other a ") +
                output,
            {folder.path().string()});
        EXPECT_EQ(result.status, 2) << output;
        EXPECT_EQ(bytesOfFile(folder.file("other")).find("bad"), std::string::npos) << output;
    }
}

/// What else the call reads is no place for them either: the next call would read them.
TEST(rejects, are_refused_in_the_file_of_a_schema_or_a_change) {
    const ScratchFile records("[1]\nbad\n");
    const ScratchFolder folder;
    const std::string file = folder.makeFile("file", "[]");
    const std::string link = folder.file("link");
    std::filesystem::create_hard_link(file, link);
    const std::vector<std::vector<std::string>> calls = {{"patch", file},
                                                         {"merge", file},
                                                         {"get", "--schema", file, "a"},
                                                         {"defaults", "--fill", "--schema", file}};
    for (std::vector<std::string> call : calls) {
        call.insert(call.end(),
                    {"--lines", "--on-error=skip", "--rejects", link, "--", records.name()});
        EXPECT_EQ(orvid(call),
                  failed(2, file + ": --rejects cannot append to the file that is read"))
            << call.front();
        EXPECT_EQ(bytesOfFile(file), "[]") << call.front();
    }
    const ScratchFile rejects("");
    EXPECT_EQ(orvid({"patch", file, "--lines", "--on-error=skip", "--rejects", rejects.name(),
                     records.name()})
                  .out,
              "[1]\n");
    EXPECT_EQ(bytesOfFile(rejects.name()), "bad\n");
}

TEST(rejects, may_go_where_no_file_is) {
    EXPECT_EQ(
        shell("\"$0\" print --lines --on-error=skip --rejects /dev/null - /dev/null 2>/dev/null",
              {}, "[1]\nbad\n")
            .out,
        "[1]\n");
}

TEST(lines, of_a_file_are_not_written_to_that_file) {
    const ScratchFolder folder;
    const std::string file = folder.makeFile("a", "[1]\n[2]\n");
    for (const char* const call :
         {"\"$0\" print --lines \"$1\" >>\"$1\"", "\"$0\" print --lines <\"$1\" >>\"$1\""}) {
        const orvid_test::CommandResult result =
            shell("ulimit -f 100; " + std::string(call), {file});
        EXPECT_EQ(result.status, 2) << call;
        EXPECT_NE(result.err.find(": the file is read, and cannot be the output as well\n"),
                  std::string::npos);
    }
    EXPECT_EQ(bytesOfFile(file), "[1]\n[2]\n");
}

TEST(hard_links, are_warned_of) {
    const ScratchFile file("{\"a\":1}");
    const std::string other = file.name() + "-other";
    ASSERT_EQ(link(file.name().c_str(), other.c_str()), 0);
    EXPECT_EQ(orvid({"set", "-i", "a", "2", file.name()}),
              (orvid_test::CommandResult{"",
                                         "orvid: " + file.name() +
                                             ": has 2 names (hard links); the others keep the old "
                                             "content\n",
                                         0, 0}));
    EXPECT_EQ(bytesOfFile(file.name()), "{\"a\":2}");
    EXPECT_EQ(bytesOfFile(other), "{\"a\":1}");
    EXPECT_EQ(unlink(other.c_str()), 0);
    // A folder has several names always, and they are none of these.
    EXPECT_EQ(orvid({"set", "-i", "a", "2", "/"}), failed(3, "/: Is a directory"));
}

}  // namespace
