// SPDX-License-Identifier: MIT
//
// orvid edit, with shell scripts for editors.

#include "support/Command.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using orvid_test::bytesOfFile;
using orvid_test::CommandResult;
using orvid_test::printed;
using orvid_test::ScratchFile;
using orvid_test::shell;

CommandResult editWith(const std::string& editor, const ScratchFile& file,
                       const std::string& options = "") {
    return shell("unset VISUAL; TMPDIR=$(mktemp -d) && export TMPDIR; EDITOR=$2 \"$0\" edit " +
                     options +
                     " \"$1\"; status=$?; ls \"$TMPDIR\" | sed 's/-.*-/-NAME-/; s/NAME.*/NAME/'; "
                     "rm -r \"$TMPDIR\"; exit $status",
                 {file.name(), editor});
}

TEST(edit, replaces_the_file_by_what_the_editor_leaves) {
    const ScratchFile file("{ \"a\": 1 } // kept\n");
    EXPECT_EQ(editWith("sed -i s/1/2/", file), printed(""));
    EXPECT_EQ(bytesOfFile(file.name()), "{ \"a\": 2 } // kept\n");
    EXPECT_EQ(editWith("true", file), printed(""));
    EXPECT_EQ(bytesOfFile(file.name()), "{ \"a\": 2 } // kept\n");
}

TEST(edit, leaves_the_file_and_keeps_the_copy_where_that_is_faulty) {
    const ScratchFile file("{\"a\":1}");
    const CommandResult result = editWith("sed -i s/1/tru/", file);
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.out, "orvid-NAME\n");
    EXPECT_EQ(result.err.find("orvid: " + file.name() + ":1:9: at a: "), 0U) << result;
    EXPECT_NE(result.err.find(" is as it was; what was edited is in "), std::string::npos);
    EXPECT_EQ(bytesOfFile(file.name()), "{\"a\":1}");
    EXPECT_EQ(editWith("echo '// x' >>", file, "--strict").status, 1);
    EXPECT_EQ(bytesOfFile(file.name()), "{\"a\":1}");
}

TEST(edit, leaves_the_file_when_the_editor_fails_or_another_changed_it) {
    const ScratchFile file("{\"a\":1}");
    EXPECT_EQ(editWith("false", file).status, 1);
    EXPECT_EQ(bytesOfFile(file.name()), "{\"a\":1}");
    EXPECT_EQ(editWith("echo '[2]' >'" + file.name() + "'; echo '[1]' >", file).status, 3);
    EXPECT_EQ(bytesOfFile(file.name()), "[2]\n");
}

TEST(edit, asks_at_a_terminal_and_edits_again) {
    const ScratchFile file("{\"a\":1}");
    const CommandResult result = orvid_test::runOnTerminal(
        {"sh", "-c",
         "unset VISUAL; stty -icanon min 0 time 0; EDITOR='sed -i s/1/x/' \"$0\" edit \"$1\"; "
         "echo \"status $?\"",
         ORVID_TOOL, file.name()});
    EXPECT_NE(result.out.find("orvid: edit again? [Y/n] "), std::string::npos) << result;
    EXPECT_NE(result.out.find("status 1"), std::string::npos) << result;
    EXPECT_EQ(bytesOfFile(file.name()), "{\"a\":1}");
}

}  // namespace
