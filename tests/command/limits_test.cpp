// SPDX-License-Identifier: MIT
//
// The limits that keep memory, time and output in proportion to the input, as options of the
// command.

#include "support/Command.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using orvid_test::bytesOfFile;
using orvid_test::failed;
using orvid_test::orvid;
using orvid_test::printed;
using orvid_test::ScratchFile;
using orvid_test::withoutExcerpt;

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

TEST(limits, patch_refuses_copies_beyond_max_growth_and_leaves_the_file) {
    const ScratchFile file(R"({"a":["text"]})");
    const std::string bomb = R"([{"op":"copy","from":"/a","path":"/a/-"},)"
                             R"({"op":"copy","from":"/a","path":"/a/-"}])";
    EXPECT_EQ(withoutExcerpt(orvid({"patch", "--max-growth", "395", "-", "-i", file.name()}, bomb)),
              failed(1, file.name() +
                            ":1:6: at a: operation 1 of the patch, \"copy\" of \"/a\": the patch "
                            "copies more than maxGrowth allows"));
    EXPECT_EQ(bytesOfFile(file.name()), R"({"a":["text"]})");
    EXPECT_EQ(orvid({"patch", "--max-growth", "396", "--compact", "-", file.name()}, bomb),
              printed(R"({"a":["text",["text"],["text",["text"]]]})"
                      "\n"));
}

TEST(limits, defaults_refuses_more_than_max_elements_and_names_the_place) {
    const std::string document =
        R"({"meta":{"schema":{"properties":{"b":{"properties":{"c":{"default":[1,2]}}}}}},"b":{}})";
    EXPECT_EQ(withoutExcerpt(orvid({"defaults", "--max-elements", "3"}, document)),
              failed(1,
                     "(standard input):1:84: at b: the schema's defaults add more than 3 elements; "
                     "--max-elements sets another limit"));
    EXPECT_EQ(orvid({"defaults", "--max-elements", "4"}, document), printed("b.c\t[1,2]\n"));
    EXPECT_EQ(orvid({"defaults", "--max-elements", "0"}, document), printed("b.c\t[1,2]\n"));
}

}  // namespace
