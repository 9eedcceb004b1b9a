// SPDX-License-Identifier: MIT
//
// orvid diff for people and for scripts, and check for scripts.

#include "support/Command.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using orvid_test::CommandResult;
using orvid_test::failed;
using orvid_test::orvid;
using orvid_test::printed;
using orvid_test::ScratchFile;

const std::string k_from = R"({"a":1,"l":[1,2,3],"o":{"x":[0]},"":5,"k\t":0})";
const std::string k_to = R"({"a":2,"l":[1,3,4,{"z":1.0}],"p":{"x":[0]},"":6,"k\t":1})";

TEST(diff_changes, are_a_line_for_what_goes_and_for_what_comes) {
    const ScratchFile from(k_from);
    const ScratchFile to(k_to);
    const CommandResult result = orvid({"diff", "--changes", from.name(), to.name()});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err, "");
    for (const char* const line :
         {"- a\t1\n+ a\t2\n", "- /\t5\n+ /\t6\n", "- l[1]\t2\n", "+ l[3]\t{\"z\":1.0}\n",
          "- o\t{\"x\":[0]}\n", "+ p\t{\"x\":[0]}\n", "- \"k\\t\"\t0\n"}) {
        EXPECT_NE(result.out.find(line), std::string::npos) << line << result;
    }
}

TEST(diff_changes, have_the_paths_of_the_first_document_and_of_the_second) {
    const ScratchFile from("[1,2,3,4,5,{\"a\":[1,2,3]}]");
    EXPECT_EQ(orvid({"diff", "--changes", from.name(), "-"}, "[2,9,4,{\"a\":[3,4]},7]"),
              printed("- [0]\t1\n- [2]\t3\n+ [1]\t9\n- [4]\t5\n+ [3]\t{\"a\":[3,4]}\n"
                      "- [5]\t{\"a\":[1,2,3]}\n+ [4]\t7\n"));
    const ScratchFile nested(R"({"l":[[0],[1],[2,2],[3]]})");
    EXPECT_EQ(orvid({"diff", "--changes", nested.name(), "-"}, R"({"l":[[1],[2,5,2],[3,[]]]})"),
              printed("- l[0]\t[0]\n+ l[1][1]\t5\n+ l[2][1]\t[]\n"));
    EXPECT_EQ(orvid({"diff", "--changes", nested.name(), "-"}, "7"),
              printed("- \t{\"l\":[[0],[1],[2,2],[3]]}\n+ \t7\n"));
}

TEST(diff, accepts_json_text_in_place_of_a_file) {
    const ScratchFile file("[1]");
    EXPECT_EQ(orvid({"diff", "--changes", R"({"a":1})", R"( {"a":2})"}).status, 3);
    EXPECT_EQ(orvid({"diff", "--changes", R"({"a":1})", R"({"a":2})"}),
              printed("- a\t1\n+ a\t2\n"));
    EXPECT_EQ(orvid({"diff", "-c", file.name(), "[1,2]"}),
              printed("[{\"op\":\"add\",\"path\":\"/1\",\"value\":2}]\n"));
    EXPECT_EQ(orvid({"diff", "{}", "[1"}),
              failed(2,
                     "TO:1:3: at (root): The text ends before the document is complete (the array "
                     "that begins at 1:1 is not closed)\n[1\n  ^"));
    EXPECT_EQ(
        orvid({"diff", "--ascii", "[\"\xFF\"]", "[]"}),
        printed("[\n    {\n        \"op\": \"remove\",\n        \"path\": \"/0\"\n    }\n]\n"));
    EXPECT_EQ(orvid({"diff", "--ascii", "[]", "[\"\xFF\"]"}),
              failed(1, "TO: at [0]: holds bytes that are no UTF-8, which --ascii cannot write"));
}

TEST(diff_strict, refuses_what_is_lenient_in_either) {
    const ScratchFile right("[1]");
    const ScratchFile lenient("[1,]");
    EXPECT_EQ(orvid({"diff", right.name(), lenient.name()}), printed("[]\n"));
    EXPECT_EQ(orvid({"diff", "--strict", right.name(), lenient.name()}).status, 1);
    EXPECT_EQ(orvid({"diff", "--strict", lenient.name(), right.name()}).status, 1);
    EXPECT_EQ(orvid({"diff", "--strict", right.name(), right.name()}), printed("[]\n"));
}

TEST(patch_strict, refuses_what_is_lenient_in_the_change) {
    const ScratchFile commented(R"({"a":1} // as it was)");
    EXPECT_EQ(orvid({"merge", "-c", commented.name()}, "{}"), printed("{\"a\":1}\n"));
    EXPECT_EQ(orvid({"merge", "-c", "--strict", commented.name()}, "{}").status, 1);
    const ScratchFile comma("[],");
    EXPECT_EQ(orvid({"patch", "--strict", comma.name()}, "{}").status, 1);
}

TEST(diff_changes, are_red_and_green_where_colour_is_wanted) {
    const ScratchFile from("{\"a\":1}");
    EXPECT_EQ(orvid({"diff", "--changes", "--color=always", from.name(), "-"}, "{\"a\":[]}"),
              printed("\x1B[31m- a\t1\x1B[0m\n\x1B[32m+ a\t[]\x1B[0m\n"));
    EXPECT_EQ(orvid({"diff", "--changes", from.name(), "-"}, "{\"a\":1}"), printed(""));
}

TEST(diff_status, reports_a_difference_where_asked_to) {
    const ScratchFile from("{\"a\":1}");
    const CommandResult different = orvid({"diff", "--exit-code", "-c", from.name(), "-"}, "{}");
    EXPECT_EQ(different.out, "[{\"op\":\"remove\",\"path\":\"/a\"}]\n");
    EXPECT_EQ(different.status, 1);
    EXPECT_EQ(orvid({"diff", "--quiet", from.name(), "-"}, "{}"), (CommandResult{"", "", 1, 0}));
    EXPECT_EQ(orvid({"diff", "-q", from.name(), "-"}, "{ \"a\": 1}"), printed(""));
    EXPECT_EQ(orvid({"diff", "--exit-code", from.name(), "-"}, "{\"a\":1}"), printed("[]\n"));
}

TEST(check_quiet, says_nothing_of_a_malformed_document) {
    EXPECT_EQ(orvid({"check", "--quiet"}, "[1,]"), (CommandResult{"", "", 1, 0}));
    EXPECT_EQ(orvid({"check", "-q"}, "[1]"), printed(""));
    EXPECT_EQ(orvid({"check", "-q", "/no/such/file"}),
              failed(3, "/no/such/file: No such file or directory"));
    EXPECT_EQ(orvid({"check", "-q", "--bogus"}).status, 2);
}

TEST(diff, names_the_file_and_the_string_that_cannot_be_written) {
    const ScratchFile good(R"({"a":[1,"x"]})");
    const ScratchFile bad("{\"a\":[1,\"x\xFF\"]}");
    const std::string reason =
        " at a[1]: holds bytes that are no UTF-8, which --ascii cannot write";
    EXPECT_EQ(orvid({"diff", "--ascii", good.name(), bad.name()}),
              failed(1, bad.name() + ":" + reason));
    EXPECT_EQ(orvid({"diff", "--ascii", "--changes", bad.name(), good.name()}),
              failed(1, bad.name() + ":" + reason));
}

}  // namespace
