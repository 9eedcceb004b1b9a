// SPDX-License-Identifier: MIT
//
// The limits that keep memory, time and output in proportion to the input, as options of the
// command.

#include "support/Command.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using orvid_test::orvid;
using orvid_test::printed;
using orvid_test::ScratchFile;

TEST(limits, diff_replaces_what_takes_less_text_than_its_changes) {
    const ScratchFile from("[1,2,3]");
    const ScratchFile to("[4,5,6]");
    const std::string replaced = R"([{"op":"replace","path":"","value":[4,5,6]}])";
    EXPECT_EQ(orvid({"diff", "--compact", "--fine-up-to", "0", from.name(), to.name()}),
              printed(replaced + "\n"));
    EXPECT_EQ(orvid({"diff", "--compact", from.name(), to.name()}),
              printed(R"([{"op":"replace","path":"/0","value":4},)"
                      R"({"op":"replace","path":"/1","value":5},)"
                      R"({"op":"replace","path":"/2","value":6}])"
                      "\n"));
}

}  // namespace
