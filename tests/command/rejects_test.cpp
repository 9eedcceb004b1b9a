// SPDX-License-Identifier: MIT
//
// What becomes of lines that fail when a file of records is edited, and of a file's other names.

#include "support/Command.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <string>

namespace {

using orvid_test::bytesOfFile;
using orvid_test::failed;
using orvid_test::orvid;
using orvid_test::repeated;
using orvid_test::ScratchFile;

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
}

}  // namespace
