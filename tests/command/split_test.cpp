// SPDX-License-Identifier: MIT
//
// orvid split and join: between an array, records, and values that follow each other.

#include "support/Command.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using orvid_test::failed;
using orvid_test::orvid;
using orvid_test::printed;
using orvid_test::ScratchFile;
using orvid_test::shell;

TEST(split, writes_an_item_a_line) {
    EXPECT_EQ(orvid({"split"}, "[ {\"a\" : 1.0}, [ ], \"x\\n\" ]"),
              printed("{\"a\":1.0}\n[]\n\"x\\n\"\n"));
    EXPECT_EQ(orvid({"split", "--in", "l[-1]"}, R"({"l":[[1],[2,3]]})"), printed("2\n3\n"));
    EXPECT_EQ(orvid({"split"}, "[]"), printed(""));
}

TEST(split, refuses_what_has_no_items) {
    EXPECT_EQ(orvid({"split"}, "{}"),
              failed(1, "(standard input):1:1: at (root): an object has no items to split"));
    EXPECT_EQ(orvid({"split", "--in", "a", "--values"}, "{}"),
              failed(2, "--in and --values exclude each other; see orvid split --help"));
}

TEST(split, takes_values_that_follow_each_other) {
    EXPECT_EQ(orvid({"split", "--values"}, "{\n \"a\": 1\n}\n[1,\n2]{}3 \"x\"4// end\n"),
              printed("{\"a\":1}\n[1,2]\n{}\n3\n\"x\"\n4\n"));
    EXPECT_EQ(orvid({"split", "--values"}, ""), printed(""));
}

TEST(split, tells_the_place_of_a_fault_behind_other_values) {
    EXPECT_EQ(orvid({"split", "--values"}, "{}\n[1] {\"a\":\n tru}"),
              failed(1, "(standard input):3:5: at a: Unexpected '}': expected true\n tru}\n    ^"));
    EXPECT_EQ(
        orvid({"split", "--values"}, "{}\n["),
        failed(1,
               "(standard input):2:2: at (root): The text ends before the document is complete"));
}

TEST(join, makes_one_array_of_all_files) {
    const ScratchFile pretty("{\n  \"a\": 1.50\n}\n[\n]\n");
    EXPECT_EQ(orvid({"join", "--compact", "-", pretty.name()}, "1\n\n\"x\"\n"),
              printed("[1,\"x\",{\"a\":1.50},[]]\n"));
    EXPECT_EQ(orvid({"join", "--indent", "1"}, "1 2"), printed("[\n 1,\n 2\n]\n"));
    EXPECT_EQ(orvid({"join"}, " "), printed("[]\n"));
}

TEST(join, is_the_way_back_from_split) {
    const std::string array = R"([{"b":1e5,"a":[]},null,"\u00e9",[[0.10]]])";
    EXPECT_EQ(shell(R"("$0" split | "$0" join --compact)", {}, array),
              printed("[{\"b\":1e5,\"a\":[]},null,\"é\",[[0.10]]]\n"));
}

TEST(join, writes_nothing_when_a_file_is_faulty) {
    EXPECT_EQ(orvid({"join", "-", "/no/such/file"}, "1"),
              failed(3, "/no/such/file: No such file or directory"));
    EXPECT_EQ(orvid({"join"}, "1\n{\"a\"}").out, "");
}

}  // namespace
