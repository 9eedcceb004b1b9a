// SPDX-License-Identifier: MIT
//
// How the tests run programs: what is not installed is distinguished from what fails.

#include "support/Command.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <system_error>

namespace {

using orvid_test::CommandResult;
using orvid_test::isInstalled;
using orvid_test::runCommand;
using orvid_test::runOnTerminal;
using orvid_test::shell;

TEST(running, gives_a_status_of_127_like_any_other) {
    EXPECT_EQ(runCommand({"sh", "-c", "exit 127"}), (CommandResult{"", "", 127, 0}));
    EXPECT_EQ(shell("orvid-no-such-program").status, 127);
}

TEST(running, throws_for_a_program_that_cannot_be_started) {
    try {
        runCommand({"orvid-no-such-program"});
        FAIL() << "nothing was thrown";
    } catch (const std::system_error& error) {
        EXPECT_EQ(error.code(), std::error_code(ENOENT, std::generic_category()));
    }
    EXPECT_THROW(runCommand({"/dev/null"}), std::system_error);
}

TEST(running, says_whether_a_program_is_installed) {
    EXPECT_TRUE(isInstalled("sh"));
    EXPECT_TRUE(isInstalled(ORVID_TOOL));
    EXPECT_FALSE(isInstalled("orvid-no-such-program"));
}

TEST(running, gives_a_terminal) {
    EXPECT_EQ(runOnTerminal({"sh", "-c", "test -t 0 && test -t 1 && test -t 2 && echo $1; exit 3",
                             "", "all three"}),
              (CommandResult{"all three\r\n", "", 3, 0}));
    EXPECT_EQ(runOnTerminal({"orvid-no-such-program"}).status, 127);
}

}  // namespace
