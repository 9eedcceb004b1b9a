// SPDX-License-Identifier: MIT
//
// orvid keys, length and type: what they write, and how path and files are distinguished.

#include "support/Command.h"
#include "support/ScratchFolder.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using orvid_test::CommandResult;
using orvid_test::failed;
using orvid_test::orvid;
using orvid_test::printed;
using orvid_test::ScratchFile;
using orvid_test::ScratchFolder;
using orvid_test::shell;
using orvid_test::withoutExcerpt;

const std::string k_document =
    R"({"b":[1,{"x":null,"w":0}],"a":{"c":"h\u00e9"},"x.y":true,"/":1.5})";

TEST(keys, are_plain_text_in_their_order) {
    EXPECT_EQ(orvid({"keys"}, k_document), printed("b\na\nx.y\n/\n"));
    EXPECT_EQ(orvid({"keys", "b[1]"}, k_document), printed("x\nw\n"));
    EXPECT_EQ(orvid({"keys"}, "{}"), printed(""));
}

TEST(keys, stay_on_their_line) {
    EXPECT_EQ(orvid({"keys"}, R"({"a\nb":1,"\"":2,"é":3})"), printed("\"a\\nb\"\n\"\\\"\"\né\n"));
}

TEST(keys, of_a_record_are_an_array) {
    EXPECT_EQ(orvid({"keys", "--lines"}, "{\"b\":1,\"a\":2}\n{}\n"),
              printed("[\"b\",\"a\"]\n[]\n"));
}

TEST(keys, are_those_of_an_object_only) {
    EXPECT_EQ(withoutExcerpt(orvid({"keys", "b"}, k_document)),
              failed(1, "(standard input):1:6: at b: an array has no keys"));
    EXPECT_EQ(withoutExcerpt(orvid({"keys", "a.c"}, k_document)),
              failed(1, "(standard input):1:36: at a.c: a string has no keys"));
}

TEST(length, counts_items_members_and_characters) {
    EXPECT_EQ(orvid({"length"}, k_document), printed("4\n"));
    EXPECT_EQ(orvid({"length", "b"}, k_document), printed("2\n"));
    EXPECT_EQ(orvid({"length", "a.c"}, k_document), printed("2\n"));
    EXPECT_EQ(orvid({"length", "--lines"}, "[]\n\"\xF0\x9F\x98\x80\"\n"), printed("0\n1\n"));
    EXPECT_EQ(withoutExcerpt(orvid({"length", R"(x\.y)"}, k_document)),
              failed(1, "(standard input):1:53: at x\\.y: a boolean has no length"));
}

TEST(type, names_the_type) {
    EXPECT_EQ(orvid({"type", "--lines"}, "{}\n[]\n\"\"\n0\nfalse\nnull\n"),
              printed("object\narray\nstring\nnumber\nboolean\nnull\n"));
    EXPECT_EQ(orvid({"type", "b[1].x"}, k_document), printed("null\n"));
}

TEST(look_paths, may_be_pointers_and_count_from_the_end) {
    EXPECT_EQ(orvid({"type", "/b/1"}, k_document), printed("object\n"));
    EXPECT_EQ(orvid({"type", "/~1"}, k_document), printed("number\n"));
    EXPECT_EQ(orvid({"type", R"(\/)"}, k_document), printed("number\n"));
    EXPECT_EQ(orvid({"keys", "b[-1]"}, k_document), printed("x\nw\n"));
    EXPECT_EQ(orvid({"type", "[-1][-2]"}, "[[1],[2,[]]]"), printed("number\n"));
    EXPECT_EQ(
        withoutExcerpt(orvid({"type", "b[-3]"}, k_document)),
        failed(1, "(standard input):1:6: at b: path \"b[-3]\" not found, there is no \"[-3]\""));
    EXPECT_EQ(orvid({"type", "//x"}, R"({"":{"x":0}})"), printed("number\n"));
    EXPECT_EQ(orvid({"type", "/a~2"}, k_document).status, 2);
}

TEST(look_words, are_a_path_and_files) {
    const ScratchFile first("[1]");
    const ScratchFile second("{\"a\":[]}");
    EXPECT_EQ(orvid({"type", first.name()}), printed("array\n"));
    EXPECT_EQ(orvid({"type", "-"}, "1"), printed("number\n"));
    EXPECT_EQ(orvid({"type", "", first.name(), second.name()}), printed("array\nobject\n"));
    EXPECT_EQ(orvid({"type", "a", second.name()}), printed("array\n"));
    EXPECT_EQ(orvid({"type", "--in", "", first.name(), second.name()}), printed("array\nobject\n"));
    EXPECT_EQ(orvid({"type", "./no-such"}), failed(3, "./no-such: No such file or directory"));
}

TEST(look_words, tell_of_a_file_that_has_the_name_of_a_path) {
    const ScratchFolder folder;
    folder.makeFile("b", "[1]");
    const std::string json = folder.makeFile("f.json", R"({"b":{},"c":2})");
    const std::string inFolder = "cd " + folder.path().string() + "; ";
    EXPECT_EQ(shell(inFolder + R"("$0" type b)", {}, R"({"b":1})"),
              (CommandResult{"array\n",
                             "orvid: \"b\" is read, the file of that name; for the path of "
                             "standard input write --in b\n",
                             0, 0}));
    EXPECT_EQ(shell(inFolder + R"("$0" type --in b)", {}, R"({"b":1})"), printed("number\n"));
    for (const char* const call :
         {R"("$0" type b </dev/null)", R"("$0" type ./b)", R"("$0" type f.json)"}) {
        EXPECT_EQ(shell(inFolder + call).err, "") << call;
    }
    EXPECT_EQ(shell(inFolder + R"("$0" type b f.json)"), printed("object\n"));
}

TEST(look_words, tell_of_a_file_that_was_taken_for_a_path) {
    const ScratchFolder folder;
    const std::string first = folder.makeFile("first", "[1]");
    const std::string second = folder.makeFile("second", "{}");
    const std::string inFolder = "cd " + folder.path().string() + "; ";
    EXPECT_EQ(
        withoutExcerpt(shell(inFolder + R"("$0" length first second)")),
        failed(1,
               "second:1:1: at (root): path \"first\" not found, there is no \"first\"; it is "
               "a file too: for the roots of all files write --in ''"));
    EXPECT_EQ(withoutExcerpt(shell(inFolder + R"("$0" length third second)")),
              failed(1, "second:1:1: at (root): path \"third\" not found, there is no \"third\""));
}

}  // namespace
