// SPDX-License-Identifier: MIT
//
// orvid paths: which values are leaves, their order, and how the paths of odd keys are written.

#include "support/Command.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using orvid_test::failed;
using orvid_test::orvid;
using orvid_test::printed;
using orvid_test::repeated;
using orvid_test::shell;

TEST(paths, writes_a_line_for_each_leaf_in_the_order_of_the_text) {
    EXPECT_EQ(orvid({"paths"}, R"({"z":{"b":[1,[2.50,null],{"c":"x"}]},"a":true,"m":false})"),
              printed("z.b[0]\t1\n"
                      "z.b[1][0]\t2.50\n"
                      "z.b[1][1]\tnull\n"
                      "z.b[2].c\t\"x\"\n"
                      "a\ttrue\n"
                      "m\tfalse\n"));
}

TEST(paths, counts_empty_containers_as_leaves) {
    EXPECT_EQ(orvid({"paths"}, R"({"a":{},"b":[],"c":[{},[]],"d":1})"),
              printed("a\t{}\nb\t[]\nc[0]\t{}\nc[1]\t[]\nd\t1\n"));
}

TEST(paths, writes_an_empty_path_for_a_root_that_is_a_leaf) {
    EXPECT_EQ(orvid({"paths"}, "1.0"), printed("\t1.0\n"));
    EXPECT_EQ(orvid({"paths"}, "{}"), printed("\t{}\n"));
    EXPECT_EQ(orvid({"paths"}, "[]"), printed("\t[]\n"));
}

TEST(paths, includes_the_member_meta) {
    EXPECT_EQ(orvid({"paths"}, R"({"meta":{"v":1},"a":2})"), printed("meta.v\t1\na\t2\n"));
}

TEST(paths, writes_special_characters_of_keys_after_a_backslash) {
    EXPECT_EQ(orvid({"paths"}, R"({"x.y":1,"[0]":2,"*":3,"a\\b":4,"c d":5,"é":6})"),
              printed("x\\.y\t1\n\\[0\\]\t2\n\\*\t3\na\\\\b\t4\nc d\t5\né\t6\n"));
}

TEST(paths, writes_a_path_with_control_characters_as_a_json_string) {
    EXPECT_EQ(orvid({"paths"}, R"({"tab\t":1,"a":{"line\nfeed":2},"u\u0000v":3,"w\u001f":4})"),
              printed("\"tab\\t\"\t1\n"
                      "\"a.line\\nfeed\"\t2\n"
                      "\"u\\u0000v\"\t3\n"
                      "\"w\\u001F\"\t4\n"));
}

TEST(paths, writes_a_path_that_begins_with_a_quote_as_a_json_string_too) {
    EXPECT_EQ(orvid({"paths"}, R"({"\"q":1,"q\"":2,"a":{"\"":3}})"),
              printed("\"\\\"q\"\t1\nq\"\t2\na.\"\t3\n"));
}

TEST(paths, writes_a_pointer_below_an_empty_key) {
    EXPECT_EQ(orvid({"paths"}, R"({"":1,"a":{"":{"":2,"b":3}},"c":[{"":4}]})"),
              printed("/\t1\n/a//\t2\n/a//b\t3\n/c/0/\t4\n"));
}

TEST(paths, keeps_the_value_on_one_line) {
    EXPECT_EQ(orvid({"paths"}, R"({"a":"line\nfeed\ttab"})"),
              printed("a\t\"line\\nfeed\\ttab\"\n"));
}

TEST(paths, passes_invalid_utf8_unchanged) {
    EXPECT_EQ(orvid({"paths"}, "{\"\xFE\":\"\x80\"}"), printed("\xFE\t\"\x80\"\n"));
}

TEST(paths, reaches_a_leaf_below_any_depth) {
    constexpr std::size_t depth = 100000;
    EXPECT_EQ(orvid({"paths"}, repeated("[", depth) + "7" + repeated("]", depth)),
              printed(repeated("[0]", depth) + "\t7\n"));
}

TEST(paths, can_be_cut_by_tools) {
    EXPECT_EQ(shell(R"("$0" paths | cut -f1 | while read -r p; do "$0" get "$p" "$1"; done)",
                    {ORVID_SAMPLES "/settings.json"},
                    "{\"name\":0,\"servers\":[{\"port\":0}],\"limits\":{\"memory\":0}}"),
              printed("\"billing\"\n9000\n2048\n"));
}

TEST(paths, writes_nothing_of_a_malformed_document) {
    EXPECT_EQ(orvid({"paths"}, "{\"a\":1,\"b\":[2,}"),
              failed(1,
                     "(standard input):1:15: at b: Unexpected '}': expected a value or ']'\n"
                     "{\"a\":1,\"b\":[2,}\n              ^"));
}

}  // namespace
