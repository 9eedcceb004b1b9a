// SPDX-License-Identifier: MIT
//
// The completions, each in its own shell where that is installed.

#include "support/Command.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using orvid_test::CommandResult;
using orvid_test::isInstalled;
using orvid_test::runCommand;
using orvid_test::shell;

const std::string k_folder = ORVID_SOURCE "/completions/";

/// What bash offers for the last of the words.
std::string offeredByBash(const std::string& words) {
    const CommandResult result = shell(
        R"(PATH=$(dirname "$0"):$PATH exec bash -c '. "$1"; COMP_WORDS=($2 ""); )"
        R"([ "${2% }" != "$2" ] || unset "COMP_WORDS[-1]"; )"
        R"(COMP_CWORD=$((${#COMP_WORDS[@]} - 1)); _orvid; printf "%s\n" "${COMPREPLY[@]}"' x "$1" "$2")",
        {k_folder + "orvid.bash", words});
    EXPECT_EQ(result.err, "");
    return "\n" + result.out;
}

TEST(completion, of_bash_offers_verbs_options_and_choices) {
    if (!isInstalled("bash")) {
        GTEST_SKIP() << "bash is not installed";
    }
    EXPECT_EQ(offeredByBash("orvid un"), "\nuncsv\nunpaths\n");
    EXPECT_NE(offeredByBash("orvid ").find("\ndata-path\n"), std::string::npos);
    EXPECT_EQ(offeredByBash("orvid set --in"), "\n--indent\n--in-place\n");
    EXPECT_EQ(offeredByBash("orvid get --on-error s"), "\nstop\nskip\n");
    EXPECT_EQ(offeredByBash("orvid get a " ORVID_SAMPLES "/sett"),
              "\n" ORVID_SAMPLES "/settings.json\n");
}

TEST(completion, of_zsh_is_understood) {
    if (!isInstalled("zsh")) {
        GTEST_SKIP() << "zsh is not installed";
    }
    EXPECT_EQ(runCommand({"zsh", "-n", k_folder + "_orvid"}), orvid_test::printed(""));
    // The subshells of zsh send SIGCONT to their children. That undoes the SIGSTOP by which
    // LeakSanitizer halts its own process at the end, and it waits for ever: here it has to stay
    // out.
    const CommandResult offered = shell(
        R"(export ASAN_OPTIONS="${ASAN_OPTIONS-}:detect_leaks=0"
PATH=$(dirname "$0"):$PATH exec zsh -f -c 'compadd() { shift; print -l -- ${(P)1}; }
_describe() { print -l -- ${(P)2}; }
words=(orvid ""); CURRENT=2; . "$1"; words=(orvid set --); CURRENT=3; . "$1"' x "$1")",
        {k_folder + "_orvid"});
    EXPECT_NE(offered.out.find("unpaths:Write the document"), std::string::npos) << offered;
    EXPECT_NE(offered.out.find("\n--in-place\n"), std::string::npos) << offered;
}

TEST(completion, of_fish_offers_verbs_options_and_choices) {
    if (!isInstalled("fish")) {
        GTEST_SKIP() << "fish is not installed";
    }
    const auto offered = [](const std::string& line) {
        return shell(
                   R"(HOME=$(mktemp -d) && export HOME && PATH=$(dirname "$0"):$PATH && export PATH
fish --no-config -c 'source $argv[1]; complete -C $argv[2]' "$1" "$2"; rm -r "$HOME")",
                   {k_folder + "orvid.fish", line})
            .out;
    };
    EXPECT_EQ(offered("orvid unp").substr(0, 8), "unpaths\t");
    EXPECT_EQ(offered("orvid set --in-"), "--in-place\n");
    EXPECT_EQ(offered("orvid get --on-error "), "null\npassthrough\nskip\nstop\n");
}

}  // namespace
