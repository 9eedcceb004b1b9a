// SPDX-License-Identifier: MIT
//
// Tests of texts that are not what they seem: paths that the language takes for others, and names
// that a terminal would obey.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/Command.h"
#include "support/ScratchFolder.h"

namespace {

using orvid_test::failed;
using orvid_test::orvid;
using orvid_test::printed;
using orvid_test::ScratchFolder;
using orvid_test::withoutExcerpt;

TEST(misleading, the_index_of_the_star_is_refused) {
    const std::string document = "{\"a\":[1],\"4294967295\":2}";
    for (const char* const path :
         {"a[4294967295]", "a[04294967295]", "a[4294\\967295]", "[4294967295].b"}) {
        EXPECT_EQ(orvid({"set", path, "1"}, document),
                  failed(2, "path \"" + std::string(path) + "\": there is no index 4294967295"));
    }
    EXPECT_EQ(orvid({"set", "--compact", "a[*]", "2"}, document),
              printed("{\"a\":[1,2],\"4294967295\":2}\n"));
    EXPECT_EQ(orvid({"get", "4294967295"}, document), printed("2\n"));
    EXPECT_EQ(orvid({"get", "a[4294967294]"}, document).status, 1);
    EXPECT_EQ(orvid({"get", "\\[4294967295]"}, document).status, 2);
}

TEST(misleading, a_byte_that_ends_a_path_is_refused) {
    const std::string document = R"([{"a": 1, "ab": 2}])";
    const std::string path =
        "a\xFF"
        "b";
    for (const char* const verb : {"get", "remove", "find"}) {
        std::vector<std::string> call = {verb, path};
        if (std::string(verb) == "find") {
            call.push_back("1");
        }
        EXPECT_EQ(orvid(call, document),
                  failed(2, "path \"a\\xffb\": a byte 0xFF needs a backslash before it"));
    }
    EXPECT_EQ(orvid({"set", path, "1"}, document).status, 2);
    const std::string escaped =
        "a\\\xFF"
        "b";
    EXPECT_EQ(orvid({"get", escaped}, document).status, 1);
}

TEST(misleading, an_element_below_an_empty_key_is_not_called_the_root) {
    const auto failedAt = [](const std::string& text) {
        return failed(1, "(standard input):" + text);
    };
    EXPECT_EQ(orvid({"length", "/"}, "{\"\":5}").err.substr(0, 36),
              "orvid: (standard input):1:5: at /: a");
    EXPECT_EQ(orvid({"check"}, R"({"":{"a":1,"a":2}})").err.substr(0, 35),
              "orvid: (standard input):1:12: at /:");
    EXPECT_EQ(withoutExcerpt(orvid({"get", "//b"}, R"({"b":1,"":{"a":2}})")),
              failedAt("1:11: at /: path \"//b\" not found, there is no \"b\""));
    EXPECT_EQ(withoutExcerpt(orvid({"get", "//a/c"}, R"({"a":1,"":{"a":2}})")),
              failedAt("1:16: at //a: path \"//a/c\" not found: \"//a\" is a number"));
}

TEST(misleading, names_do_not_steer_the_terminal) {
    const ScratchFolder folder;
    const std::string name =
        folder.makeFile("\x1B[2J\x7F\xC2\x9B\xE2\x80\xAE\xFFx", "{\"\xC2\x9B\":1}");
    const std::string shown = folder.path().string() + "/\\u001b[2J\\u007f\\u009b\\u202e\\xffx";
    EXPECT_EQ(withoutExcerpt(orvid({"get", "b", name})),
              failed(1, shown + ":1:1: at (root): path \"b\" not found, there is no \"b\""));
    EXPECT_EQ(orvid({"get", "\xC2\x9B.b", name}).err.find('\xC2'), std::string::npos);
    EXPECT_EQ(orvid({"print", "--lines", "--stats", name}).err,
              "orvid: " + shown + ": 1 line, 1 done, 0 blank, 0 failed\n");
}

TEST(misleading, errors_as_json_are_utf8) {
    const ScratchFolder folder;
    const std::string name = folder.makeFile("\xFFx", "[");
    EXPECT_EQ(orvid({"print", "--json-errors", name}).err.find('\xFF'), std::string::npos);
    const std::string err = orvid({"print", "--json-errors", name}).err;
    EXPECT_NE(err.find("/\xEF\xBF\xBDx\""), std::string::npos) << err;
    EXPECT_EQ(orvid({"check"}, err).status, 0) << err;
}

TEST(misleading, excerpts_do_not_steer_the_terminal) {
    const std::string err = orvid({"check"}, "[\"\xC2\x9B\xE2\x80\xAE\", x]").err;
    EXPECT_EQ(err.find('\xC2'), std::string::npos) << err;
    EXPECT_EQ(err.find('\xE2'), std::string::npos) << err;
    EXPECT_NE(err.find("[\"  \", x]\n"), std::string::npos) << err;
}

}  // namespace
