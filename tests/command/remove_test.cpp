// SPDX-License-Identifier: MIT
//
// orvid remove: the document that is left, compared whole, and what cannot be removed.

#include "support/Command.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using orvid_test::bytesOfFile;
using orvid_test::failed;
using orvid_test::orvid;
using orvid_test::printed;
using orvid_test::ScratchFile;
using orvid_test::shell;
using orvid_test::withoutExcerpt;

const std::string k_document = R"({"b":[1,2,3],"a":{"c":1.50},"x.y":null})";

TEST(remove, takes_a_member_out_and_keeps_the_order_of_the_others) {
    EXPECT_EQ(orvid({"remove", "a"}, k_document), printed(R"({"b":[1,2,3],"x.y":null})"));
}

TEST(remove, takes_the_first_a_middle_and_the_last_item_out) {
    EXPECT_EQ(orvid({"remove", "[0]"}, "[1,2,3]"), printed("[2,3]"));
    EXPECT_EQ(orvid({"remove", "[1]"}, "[1,2,3]"), printed("[1,3]"));
    EXPECT_EQ(orvid({"remove", "[2]"}, "[1,2,3]"), printed("[1,2]"));
}

TEST(remove, leaves_an_empty_container_behind) {
    EXPECT_EQ(orvid({"remove", "a.c"}, k_document), printed(R"({"b":[1,2,3],"a":{},"x.y":null})"));
    EXPECT_EQ(orvid({"remove", "[0]"}, "[1]"), printed("[]"));
}

TEST(remove, takes_a_key_with_special_characters_after_a_backslash) {
    EXPECT_EQ(orvid({"remove", R"(x\.y)"}, R"({"x":{"y":1},"x.y":2})"),
              printed(R"({"x":{"y":1}})"));
}

TEST(remove, keeps_the_member_meta_unless_that_is_removed) {
    const std::string text = R"({"meta":{"v":1},"a":1})";
    EXPECT_EQ(orvid({"remove", "a"}, text), printed(R"({"meta":{"v":1}})"));
    EXPECT_EQ(orvid({"remove", "meta"}, text), printed(R"({"a":1})"));
}

TEST(remove, reads_the_file_named_and_leaves_it_as_it_is) {
    const ScratchFile file("[1,2]");
    EXPECT_EQ(orvid({"remove", "[0]", file.name()}), printed("[2]"));
    EXPECT_EQ(bytesOfFile(file.name()), "[1,2]");
}

TEST(remove, works_in_a_pipeline) {
    EXPECT_EQ(shell(R"(echo '[1,2,3]' | "$0" remove '[0]' | "$0" remove '[0]')"), printed("[3]\n"));
}

TEST(remove, names_the_missing_step) {
    EXPECT_EQ(
        withoutExcerpt(orvid({"remove", "b[3]"}, k_document)),
        failed(1, "(standard input):1:6: at b: path \"b[3]\" not found, there is no \"[3]\""));
    EXPECT_EQ(withoutExcerpt(orvid({"remove", "a.z"}, k_document)),
              failed(1, "(standard input):1:18: at a: path \"a.z\" not found, there is no \"z\""));
}

TEST(remove, refuses_the_root) {
    EXPECT_EQ(withoutExcerpt(orvid({"remove", ""}, k_document)),
              failed(1, "(standard input):1:1: at (root): the root cannot be removed"));
}

TEST(remove, refuses_a_malformed_path_and_a_star_as_usage_errors) {
    EXPECT_EQ(orvid({"remove", "b[*]"}, k_document),
              failed(2,
                     "path \"b[*]\": [*] names no item that could be looked up; for all items: "
                     "orvid remove --query "
                     "'$.b[*]'"));
    EXPECT_EQ(orvid({"remove", "b[-]"}, k_document),
              failed(2,
                     "path \"b[-]\": this character may not stand here, except after a backslash\n"
                     "b[-]\n  ^"));
}

}  // namespace
