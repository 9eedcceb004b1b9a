// SPDX-License-Identifier: MIT
//
// Threads of --lines: they share nothing that one of them changes, neither the numbers of a patch
// nor those that are searched for. Built with the thread sanitizer, the whole command is what these
// tests look at; otherwise they compare outputs.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/Command.h"

namespace {

using orvid_test::CommandResult;
using orvid_test::orvid;
using orvid_test::ScratchFile;

std::string records() {
    std::string text;
    for (int i = 0; i < 3000; ++i) {
        text += "{\"n\": 1.50, \"id\": 10000000000000000000, \"i\": " + std::to_string(i) +
                ", \"list\": [3, 1e2, 0]}\n";
    }
    return text;
}

/// Holds four threads to what one says of the same records.
void expectNoRace(std::vector<std::string> call) {
    static const std::string text = records();
    call.push_back("--lines");
    const CommandResult alone = orvid(call, text);
    EXPECT_EQ(alone.status, 0) << alone.err;
    call.push_back("-j4");
    const CommandResult together = orvid(call, text);
    EXPECT_EQ(together.err, "");
    EXPECT_EQ(together.status, 0);
    EXPECT_TRUE(together.out == alone.out) << call.front();
}

TEST(line_threads, share_the_numbers_of_a_patch) {
    const ScratchFile patch(R"([{"op": "test", "path": "/n", "value": 1.5},)"
                            R"( {"op": "test", "path": "/id", "value": 1e19},)"
                            R"( {"op": "add", "path": "/added", "value": 12345678901234567890.5},)"
                            R"( {"op": "remove", "path": "/list/0"}])");
    expectNoRace({"patch", patch.name()});
}

TEST(line_threads, share_the_value_that_is_searched_for) {
    expectNoRace({"find", "--in=list", "", "100"});
}

TEST(line_threads, share_a_schema_a_merge_and_a_value) {
    const ScratchFile schema(R"({"properties": {"d": {"default": 7.50}}})");
    expectNoRace({"defaults", "--fill", "--schema", schema.name()});
    const ScratchFile merge(R"({"n": 2.50, "list": null})");
    expectNoRace({"merge", merge.name()});
    expectNoRace({"set", "d=0.10"});
    expectNoRace({"print", "--sort-keys"});
}

}  // namespace
