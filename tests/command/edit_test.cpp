// SPDX-License-Identifier: MIT
//
// orvid edit, with shell scripts for editors.

#include "support/Command.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <string>
#include <vector>

#include "support/ScratchFolder.h"

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

TEST(edit, leaves_the_file_and_keeps_the_copy_where_that_is_malformed) {
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

TEST(edit, keeps_no_copy_that_holds_nothing_new) {
    const ScratchFile file("{\"a\":1}");
    for (const char* const editor : {"false", "rm"}) {
        const CommandResult result = editWith(editor, file);
        EXPECT_EQ(result.status, 1) << editor;
        EXPECT_EQ(result.out, "") << editor;
        EXPECT_EQ(result.err.find("what was edited is in"), std::string::npos) << result;
    }
    EXPECT_EQ(editWith("rm", file).err,
              "orvid: the editor removed the copy that it was given\norvid: " + file.name() +
                  " is as it was\n");
    // What was written before the editor failed is not lost.
    EXPECT_EQ(editWith("sh -c 'echo 2 >>\"$0\"; exit 1'", file).out, "orvid-NAME\n");
}

TEST(edit, takes_a_name_of_the_greatest_length) {
    const orvid_test::ScratchFolder folder;
    const std::string file = folder.makeFile(std::string(250, 'n') + ".json", "1");
    EXPECT_EQ(shell("VISUAL='sed -i s/1/2/' \"$0\" edit \"$1\"", {file}), printed(""));
    EXPECT_EQ(bytesOfFile(file), "2");
}

TEST(edit, wants_a_regular_file) {
    const orvid_test::ScratchFolder folder;
    const std::string pipe = folder.file("pipe");
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    const std::string call = "EDITOR=true timeout 20 \"$0\" edit \"$1\"";
    EXPECT_EQ(shell(call, {pipe}), orvid_test::failed(3, pipe + ": Not a regular file"));
    EXPECT_EQ(shell(call, {folder.path().string()}),
              orvid_test::failed(3, folder.path().string() + ": Is a directory"));
    EXPECT_EQ(
        shell(call, {"-"}),
        orvid_test::failed(2, "an editor needs a file, not standard input; see orvid edit --help"));
    EXPECT_EQ(shell("timeout 20 \"$0\" set -i a 1 \"$1\"", {pipe}),
              orvid_test::failed(3, pipe + ": Not a regular file"));
    EXPECT_EQ(folder.names(), std::vector<std::string>{"pipe"});
}

/// Ctrl-C goes to all that run at a terminal, and the editor knows what to make of it.
TEST(edit, leaves_the_keys_that_interrupt_to_the_editor) {
    const ScratchFile file("{\"a\":1}");
    const ScratchFile editor("kill -INT $TOOL; kill -QUIT $TOOL; sed -i s/1/2/ \"$1\"");
    EXPECT_EQ(shell("TOOL=$$ VISUAL= EDITOR=\"sh $2\" exec \"$0\" edit \"$1\"",
                    {file.name(), editor.name()}),
              printed(""));
    EXPECT_EQ(bytesOfFile(file.name()), "{\"a\":2}");
}

TEST(edit, asks_at_a_terminal_and_edits_again) {
    const ScratchFile file("{\"a\":1}");
    const orvid_test::ScratchFolder copies;
    const CommandResult result =
        orvid_test::runOnTerminal({"sh", "-c",
                                   "unset VISUAL; TMPDIR=$2; export TMPDIR; stty -icanon min 0 "
                                   "time 0; EDITOR='sed -i s/1/x/' \"$0\" edit \"$1\"; "
                                   "echo \"status $?\"",
                                   ORVID_TOOL, file.name(), copies.path().string()});
    EXPECT_NE(result.out.find("orvid: edit again? [Y/n] "), std::string::npos) << result;
    EXPECT_NE(result.out.find("status 1"), std::string::npos) << result;
    EXPECT_EQ(bytesOfFile(file.name()), "{\"a\":1}");
}

}  // namespace
