// SPDX-License-Identifier: MIT
//
// Files as people have them, edited by every verb that edits. Beside each file of tests/data/edits
// stands in FILE.calls what must become of it: after "== " a call, and the lines that change.

#include "support/Command.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "support/LineDiff.h"

namespace {

using orvid_test::bytesOfFile;
using orvid_test::CommandResult;
using orvid_test::lineDiff;
using orvid_test::printed;
using orvid_test::ScratchFile;
using orvid_test::shell;

struct Call {
    std::string words;
    std::string diff;
};

std::vector<Call> callsFor(const std::string& file) {
    std::vector<Call> calls;
    std::istringstream lines(bytesOfFile(file + ".calls"));
    for (std::string line; std::getline(lines, line);) {
        if (line.rfind("== ", 0) == 0) {
            calls.push_back({line.substr(3), ""});
        } else {
            calls.back().diff += line + "\n";
        }
    }
    return calls;
}

CommandResult run(const std::string& words, const std::string& option, const std::string& file) {
    return shell("orvid() { \"$0\" \"$@\"; }\n" + words + option + " \"$1\"", {file});
}

class CallsOnFiles : public testing::TestWithParam<const char*> {};

TEST_P(CallsOnFiles, change_the_lines_that_they_must) {
    const std::string file = std::string(ORVID_TEST_DATA) + "/edits/" + GetParam();
    const std::string text = bytesOfFile(file);
    const std::vector<Call> calls = callsFor(file);
    EXPECT_GE(calls.size(), 10U);
    for (const Call& call : calls) {
        const ScratchFile scratch(text);
        EXPECT_EQ(run(call.words, " -i", scratch.name()), printed("")) << call.words;
        const std::string edited = bytesOfFile(scratch.name());
        EXPECT_EQ(lineDiff(text, edited), call.diff) << call.words;
        EXPECT_EQ(run(call.words, "", file), printed(edited)) << call.words;
    }
}

INSTANTIATE_TEST_SUITE_P(CallsOnFiles, CallsOnFiles,
                         testing::Values("package.json", "tsconfig.json", "settings.json",
                                         "composer.json", "terraform.tfstate", "notebook.ipynb",
                                         "eslintrc.json"),
                         [](const auto& tested) {
                             const std::string file = tested.param;
                             return file.substr(0, file.find('.'));
                         });

}  // namespace
