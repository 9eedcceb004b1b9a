// SPDX-License-Identifier: MIT
//
// The words of a call that are no options: paths, values and files, also after `--`.

#include "support/Command.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using orvid_test::bytesOfFile;
using orvid_test::failed;
using orvid_test::orvid;
using orvid_test::printed;
using orvid_test::ScratchFile;

const std::string k_document = "{\"port\":1,\"-x\":[2]}";

TEST(operands, after_the_mark_are_words_like_any_others) {
    const ScratchFile file(k_document);
    const std::string& name = file.name();
    EXPECT_EQ(orvid({"remove", "port", "--", name}), printed("{\"-x\":[2]}"));
    EXPECT_EQ(orvid({"set", "port=2", "--", name}), printed("{\"port\":2,\"-x\":[2]}"));
    EXPECT_EQ(orvid({"set", "port", "2", "--", name}), printed("{\"port\":2,\"-x\":[2]}"));
    EXPECT_EQ(orvid({"set", "port", "--", "2", name}), printed("{\"port\":2,\"-x\":[2]}"));
    EXPECT_EQ(orvid({"set", "--query", "$.port", "2", "--", name}),
              printed("{\"port\":2,\"-x\":[2]}"));
    EXPECT_EQ(orvid({"remove", "--query", "$.port", "--", name}), printed("{\"-x\":[2]}"));
    EXPECT_EQ(orvid({"insert", "p=2", "--", name}), printed("{\"port\":1,\"-x\":[2],\"p\":2}"));
    EXPECT_EQ(orvid({"get", "port", "--", name}), printed("1\n"));
    EXPECT_EQ(orvid({"print", "-c", "--", name, name}),
              printed("{\"port\":1,\"-x\":[2]}\n{\"port\":1,\"-x\":[2]}\n"));
}

TEST(operands, after_the_mark_are_no_options) {
    EXPECT_EQ(orvid({"remove", "-c", "--", "-x"}, k_document), printed("{\"port\":1}\n"));
    EXPECT_EQ(orvid({"set", "port=2", "--", "-c"}), failed(3, "-c: No such file or directory"));
    EXPECT_EQ(orvid({"set", "port=2", "--", "[x]"}), failed(3, "[x]: No such file or directory"));
    EXPECT_EQ(orvid({"set", "port=2", "--", "--"}), failed(3, "--: No such file or directory"));
    EXPECT_EQ(orvid({"diff", "a", "b", "--", "-x"}),
              failed(2, "a word too many: -x; see orvid diff --help"));
}

TEST(operands, are_all_edited_after_the_mark) {
    const ScratchFile a(k_document);
    const ScratchFile b(k_document);
    EXPECT_EQ(orvid({"remove", "port", "-i", "--", a.name(), b.name()}), printed(""));
    EXPECT_EQ(bytesOfFile(a.name()), "{\"-x\":[2]}");
    EXPECT_EQ(bytesOfFile(b.name()), "{\"-x\":[2]}");
}

TEST(operands, begin_after_no_mark_that_is_the_value_of_an_option) {
    EXPECT_EQ(orvid({"remove", "--also", "--", "port"}, "{\"--\":1,\"port\":2}"), printed("{}"));
}

TEST(operands, name_standard_input_once_in_every_verb) {
    const std::vector<std::vector<std::string>> calls = {{"print"},
                                                         {"get", ""},
                                                         {"set", "a", "1"},
                                                         {"insert", "a", "1"},
                                                         {"remove", "a"},
                                                         {"move", "a", "b"},
                                                         {"copy", "a", "b"},
                                                         {"rename", "a", "b"},
                                                         {"keys", ""},
                                                         {"length", ""},
                                                         {"type", ""},
                                                         {"split"},
                                                         {"join"},
                                                         {"csv"},
                                                         {"uncsv"},
                                                         {"find", "", "1"},
                                                         {"query", "$"},
                                                         {"select", "$.a"},
                                                         {"paths"},
                                                         {"unpaths"},
                                                         {"defaults"},
                                                         {"patch", "[]"},
                                                         {"merge", "/dev/null"},
                                                         {"check"}};
    for (std::vector<std::string> call : calls) {
        const ScratchFile change("[]");
        if (call[0] == "patch" || call[0] == "merge") {
            call[1] = change.name();
        }
        call.insert(call.end(), {"-", "-"});
        EXPECT_EQ(orvid(call, "{}"), failed(2, "only one FILE can be standard input; see orvid " +
                                                   call[0] + " --help"));
    }
}

TEST(operands, with_a_mark_in_the_key_need_a_backslash) {
    const std::string hint = "; a = in a key is written \\=";
    EXPECT_EQ(orvid({"set", "x=1", "5"}, "{}"), failed(3, "5: No such file or directory" + hint));
    EXPECT_EQ(orvid({"insert", "x=1", "none"}, "{}"), failed(3, "none: No such file or directory"));
    EXPECT_EQ(orvid({"set", "x=y", "66", "-"}, "{}"),
              failed(2, "\"y\" is no JSON; for the text write x=string:y" + hint));
    EXPECT_EQ(orvid({"set", "x=y", "none", "-"}, "{}"),
              failed(2, "\"y\" is no JSON; for the text write x=string:y"));
    EXPECT_EQ(orvid({"set", "/x=y", "66"}, "{}"),
              failed(2, "\"y\" is no JSON; for the text write /x=string:y" + hint));
    EXPECT_EQ(orvid({"set", "-c", "x\\=1", "5"}, "{}"), printed("{\"x=1\":5}\n"));
}

}  // namespace
