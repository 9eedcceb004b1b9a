// SPDX-License-Identifier: MIT
//
// Escapes of half a surrogate pair: every verb keeps them as they are written or refuses them.

#include "support/Command.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using orvid_test::CommandResult;
using orvid_test::failed;
using orvid_test::orvid;
using orvid_test::printed;
using orvid_test::ScratchFile;
using orvid_test::withoutExcerpt;

const std::vector<std::string> k_halves{R"(\ud800)", R"(\ud800\u0041)", R"(\udc00)",
                                        R"(\ud800x\udc00)"};

CommandResult refused(const std::string& at) {
    return failed(1, "(standard input):" + at + ": The escape of half a surrogate pair");
}

TEST(surrogate_halves, are_refused_where_the_text_is_not_kept) {
    const std::vector<std::vector<std::string>> calls{
        {"print"},         {"print", "-c"},       {"print", "--lines"},
        {"get", "a"},      {"get", "b"},          {"get", "--lines", "b"},
        {"query", "$.b"},  {"query", "$..a"},     {"paths"},
        {"keys"},          {"length", "a"},       {"csv"},
        {"join"},          {"split", "--values"}, {"defaults"},
        {"find", "", "1"}, {"diff", "-", "-"},    {"set", "--lines", "-cS", "b", "3"}};
    for (const std::string& half : k_halves) {
        const ScratchFile other("{}");
        for (std::vector<std::string> call : calls) {
            if (call.front() == "diff") {
                call.back() = other.name();
            }
            EXPECT_EQ(withoutExcerpt(orvid(call, "{\"a\":\"" + half + "\",\"b\":2}\n")),
                      refused("1:7: at a"))
                << testing::PrintToString(call) << " on " << half;
        }
    }
}

TEST(surrogate_halves, are_refused_in_keys) {
    EXPECT_EQ(withoutExcerpt(orvid({"print"}, R"({"\ud800":1,"\ud801":2,"?":3})")),
              refused("1:3: at (root)"));
    EXPECT_EQ(withoutExcerpt(orvid({"remove", "[0]"}, R"([1,{"\udc00":2}])")),
              refused("1:6: at [1]"));
}

TEST(surrogate_halves, are_refused_where_a_line_may_copy_them) {
    const ScratchFile copy(R"([{"op":"copy","from":"/a","path":"/c"}])");
    for (const std::vector<std::string>& call :
         std::vector<std::vector<std::string>>{{"copy", "--lines", "a", "c"},
                                               {"patch", "--lines", copy.name()},
                                               {"defaults", "--fill", "--lines"}}) {
        EXPECT_EQ(orvid(call, "{\"a\":\"\\ud800\", \"b\":2}\n"), refused("1:7: at a"));
        EXPECT_EQ(orvid(call, "{\"a\":\"\\ud83d\\ude00\", \"b\":2}\n").status, 0);
    }
}

TEST(surrogate_halves, stay_in_lines_that_are_edited_or_selected) {
    for (const std::string& half : k_halves) {
        const std::string line = "{\"a\":[\"" + half + "\"],\"b\":2}\n";
        EXPECT_EQ(orvid({"set", "--lines", "b", "3"}, line),
                  printed("{\"a\":[\"" + half + "\"],\"b\":3}\n"));
        EXPECT_EQ(orvid({"move", "--lines", "a", "c"}, line),
                  printed("{\"b\":2,\"c\":[\"" + half + "\"]}\n"));
        EXPECT_EQ(orvid({"select", "--lines", "$.b"}, line), printed(line));
        EXPECT_EQ(orvid({"select", "$.b"}, line), printed(line));
    }
}

}  // namespace
