// SPDX-License-Identifier: MIT
//
// What only shows on a terminal: colour, the progress line, and a reader that goes away.

#include "support/Command.h"

#include <gtest/gtest.h>

#include <csignal>
#include <string>

namespace {

using orvid_test::CommandResult;
using orvid_test::repeated;
using orvid_test::ScratchFile;
using orvid_test::shell;

/// Runs a shell's line with a terminal for all three, and returns what that shows; the line's "$0"
/// is the command and "$1" the argument.
std::string onTerminal(const std::string& script, const std::string& argument) {
    const CommandResult result =
        orvid_test::runOnTerminal({"env", "TERM=xterm", "sh", "-c", script, ORVID_TOOL, argument});
    EXPECT_EQ(result.status, 0) << result;
    return result.out;
}

TEST(terminal, shows_colour) {
    const ScratchFile file("[1]");
    EXPECT_EQ(onTerminal(R"(unset NO_COLOR; "$0" print --compact "$1")", file.name()),
              "[\x1B[36m1\x1B[0m]\r\n");
}

TEST(terminal, shows_no_colour_when_asked_not_to) {
    const ScratchFile file("[1]");
    for (const char* const script :
         {R"(NO_COLOR=1 "$0" print --compact "$1")", R"("$0" print --compact --color=never "$1")",
          R"(TERM=dumb "$0" print --compact "$1")", R"("$0" print --compact "$1" | cat)"}) {
        EXPECT_EQ(onTerminal(script, file.name()), "[1]\r\n") << script;
    }
}

TEST(terminal, is_not_steered_by_keys_and_strings) {
    const ScratchFile file("{\"a\xE2\x80\xAE\":\"\xC2\x9B\xD8\x9C\xC3\xA9\"}");
    const std::string shown = R"({"a\u202e":"\u009b\u061c)"
                              "\xC3\xA9\"}\r\n";
    EXPECT_EQ(onTerminal(R"("$0" print --compact --color=never "$1")", file.name()), shown);
    EXPECT_EQ(onTerminal(R"("$0" select '$' "$1"; echo)", file.name()), shown);
    EXPECT_EQ(onTerminal(R"("$0" keys "$1")", file.name()), "a\\u202e\r\n");
    EXPECT_EQ(shell(R"("$0" keys "$1")", {file.name()}).out, "a\xE2\x80\xAE\n");
}

TEST(terminal, shows_progress_after_a_second_and_takes_it_away) {
    const std::string shown = onTerminal(
        R"((echo '[1]'; sleep 1.5; echo '[2]') | "$0" print --lines 2>&1 >"$1"; cat "$1")",
        ScratchFile("").name());
    EXPECT_NE(shown.find("orvid: (standard input): 0.0 MB read, 1 s"), std::string::npos) << shown;
    const std::string end = "\r\x1B[K[1]\r\n[2]\r\n";
    EXPECT_EQ(shown.substr(shown.length() - std::min(shown.length(), end.length())), end);
}

TEST(terminal, shows_no_progress_for_short_work_or_into_a_file) {
    const ScratchFile file("[1]");
    EXPECT_EQ(onTerminal(R"("$0" print --compact --color=never "$1")", file.name()), "[1]\r\n");
    EXPECT_EQ(
        onTerminal(R"((sleep 1.3; echo '[1]') | "$0" print --lines --color=never 2>"$1"; cat "$1")",
                   ScratchFile("").name()),
        "[1]\r\n");
}

TEST(terminal, shows_no_progress_over_an_editor_or_what_is_typed) {
    EXPECT_EQ(onTerminal(R"(unset VISUAL; EDITOR='sleep 1.4; :' "$0" edit "$1")",
                         ScratchFile("[1]").name()),
              "");
    EXPECT_EQ(onTerminal(R"(stty -echo -icanon min 0 time 14; "$0" check -q; echo "$?")", ""),
              "orvid: reading what is typed here; Ctrl-D ends it\r\n1\r\n");
}

TEST(terminal, a_reader_that_goes_away_ends_the_command_quietly) {
    const std::string lines = repeated("[1]\n", 500000);
    for (const char* const call : {"print --lines", "print --lines -j2"}) {
        const CommandResult result =
            shell(std::string(R"({ "$0" )") + call + R"(; echo "status $?" >&2; } | head -n 1)", {},
                  lines);
        EXPECT_EQ(result.out, "[1]\n");
        EXPECT_EQ(result.err, "status " + std::to_string(128 + SIGPIPE) + "\n");
    }
}

}  // namespace
