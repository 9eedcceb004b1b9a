// SPDX-License-Identifier: MIT
//
// Every verb names the file, the line, the column and the path of what is wrong. Excerpts of the
// line are in value_excerpt_test.cpp.

#include "support/Command.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using orvid_test::CommandResult;
using orvid_test::failed;
using orvid_test::orvid;
using orvid_test::printed;
using orvid_test::repeated;
using orvid_test::ScratchFile;

TEST(error_place, of_the_root_is_named) {
    const ScratchFile file("\n {}");
    const std::string place = file.name() + ":2:2: at (root): ";
    const std::string shown = "\n {}\n ^";
    EXPECT_EQ(orvid({"remove", "", file.name()}),
              failed(1, place + "the root cannot be removed" + shown));
    EXPECT_EQ(orvid({"remove", "--query", "$", file.name()}),
              failed(1, place + "The whole document cannot be removed" + shown));
    EXPECT_EQ(orvid({"move", "", "a", file.name()}),
              failed(1, place + "the root cannot be moved" + shown));
}

TEST(error_place, of_an_operation_is_that_in_the_patch) {
    const std::string patch =
        "[\n {\"op\":\"test\",\"path\":\"\",\"value\":{}},\n {\"op\":\"ad\"}]";
    const std::string line =
        ":3:2: at [1]: operation 1 of the patch, \"ad\": it has no "
        "\"path\"\n {\"op\":\"ad\"}]\n ^";
    const ScratchFile document("{}");
    const ScratchFile file(patch);
    EXPECT_EQ(orvid({"patch", file.name(), document.name()}), failed(1, file.name() + line));
    EXPECT_EQ(orvid({"patch", "-", document.name()}, patch), failed(1, "(standard input)" + line));
    EXPECT_EQ(orvid({"patch", patch, document.name()}), failed(1, "PATCH" + line));
    EXPECT_EQ(orvid({"patch", "[5]", document.name()}),
              failed(1, "PATCH:1:2: at [0]: operation 0 of the patch: it is no object\n[5]\n ^"));
    const ScratchFile onOneLine("\xEF\xBB\xBF[{}]");
    EXPECT_EQ(orvid({"patch", onOneLine.name(), document.name()}),
              failed(1, onOneLine.name() +
                            ":1:2: at [0]: operation 0 of the patch: it has no \"op\"\n[{}]\n ^"));
}

TEST(error_place, of_an_operation_is_named_for_each_record) {
    const std::string reason = "operation 0 of the patch, \"ad\": it has no \"path\" ";
    const ScratchFile file("[\n  {\"op\":\"ad\"}]");
    EXPECT_EQ(orvid({"patch", "--lines", "--on-error=skip", file.name(), "-"}, "{}\n\n[]\n"),
              (CommandResult{"",
                             "orvid: (standard input):1: " + reason + "(" + file.name() +
                                 ":2:3)\norvid: (standard input):3: " + reason + "(" + file.name() +
                                 ":2:3)\n",
                             1, 0}));
    EXPECT_EQ(orvid({"patch", "--lines", "[{\"op\":\"ad\"}]"}, "{}\n"),
              failed(1, "(standard input):1: " + reason + "(PATCH:1:2)"));
}

TEST(error_place, of_an_array_to_split_is_that_in_the_stream) {
    const std::string long_text =
        "{\n \"l\": 1,\n \"b\": \"" + repeated("x", 3000000) + "\",\n \"c\": []\n}";
    const std::string shown = "\n \"l\": 1,\n      ^";
    EXPECT_EQ(orvid({"split", "--in", "l"}, long_text),
              failed(1, "(standard input):2:7: at l: a number has no items to split" + shown));
    EXPECT_EQ(orvid({"split", "--in", "/l/x"}, long_text),
              failed(1, "(standard input):2:7: at l: path \"/l/x\" not found: \"l\" is a number" +
                            shown));
    EXPECT_EQ(
        orvid({"split", "--in", "n"}, long_text),
        failed(1,
               "(standard input):1:1: at (root): path \"n\" not found, there is no \"n\"\n{\n^"));
}

TEST(error_place, of_a_text_that_is_no_utf_8_is_shown) {
    const ScratchFile text("a\nb\xFF\n");
    EXPECT_EQ(orvid({"set", "a=text-file:" + text.name()}, "{}"),
              failed(2, text.name() + ":2:2: Invalid UTF-8\nb?\n ^"));
}

TEST(error_place, of_a_path_that_insert_does_not_make_is_named_whole) {
    const std::string at = "(standard input):1:6: at o: path ";
    EXPECT_EQ(orvid({"insert", "o.x.y.z", "1"}, R"({"o":{}})"),
              failed(1, at + "\"o.x.y.z\" not found, there is no \"x\"; set makes what is missing, "
                             "and as one key with a dot it is written 'o.x\\.y\\.z'\n"
                             "{\"o\":{}}\n     ^"));
    EXPECT_EQ(orvid({"insert", "o.a.b", "1"}, R"({"o":{"a.b":2}})"),
              failed(1, at + "\"o.a.b\" not found; for the key \"a.b\" write 'o.a\\.b'\n"
                             "{\"o\":{\"a.b\":2}}\n     ^"));
    EXPECT_EQ(orvid({"insert", "l[-1].x.y", "1"}, R"({"l":[{}]})"),
              failed(1,
                     "(standard input):1:7: at l[0]: path \"l[-1].x.y\" not found, there is no "
                     "\"x\"; set makes what is missing\n{\"l\":[{}]}\n      ^"));
}

TEST(error_place, of_a_malformed_path_is_shown_as_it_was_typed) {
    for (const char* const verb : {"get", "remove", "keys"}) {
        EXPECT_EQ(orvid({verb, "l[-1]..y", "-"}, R"({"l":[{}]})"),
                  failed(2,
                         "path \"l[-1]..y\": this character may not stand here, except after a "
                         "backslash\nl[-1]..y\n      ^"))
            << verb;
    }
    EXPECT_EQ(orvid({"get", "--default", "l[-1].y["}, R"({"l":[{}]})"),
              failed(2,
                     "path \"l[-1].y[\": it ends where a key or an index is expected\nl[-1].y[\n"
                     "        ^"));
    EXPECT_EQ(orvid({"get", "l[-9999999999]"}, R"({"l":[]})"),
              failed(1,
                     "(standard input):1:6: at l: path \"l[-9999999999]\" not found, there is no "
                     "\"[-9999999999]\"\n{\"l\":[]}\n     ^"));
}

TEST(long_words, are_shortened_in_errors) {
    const std::string word = repeated("x", 100000);
    for (const auto& call :
         std::vector<std::vector<std::string>>{{"get", word},
                                               {"set", "s." + word, "1"},
                                               {"insert", "n." + word, "1"},
                                               {word},
                                               {"get", "--" + word, "a"},
                                               {"get", "a", word},
                                               {"query", word},
                                               {"set", "a", "env:" + word},
                                               {"get", "a b" + repeated(" c", 50000)}}) {
        const auto result = orvid(call, "{\"s\":1}");
        EXPECT_NE(result.status, 0);
        EXPECT_LT(result.err.size(), 2000U) << call.front();
        EXPECT_NE(result.err.find(" ... "), std::string::npos) << call.front();
    }
}

TEST(change, is_given_in_the_call) {
    EXPECT_EQ(orvid({"merge", R"({"port":2,"a":null})", "-"}, "{\"a\":1,\"b\":2}\n"),
              printed("{\"b\":2,\"port\":2}\n"));
    EXPECT_EQ(orvid({"patch", R"([{"op":"remove","path":"/a"}])"}, "{\"a\":1,\"b\":2}\n"),
              printed("{\"b\":2}\n"));
    const ScratchFile file(R"({"b":3})");
    EXPECT_EQ(orvid({"merge", "file:" + file.name()}, "{\"b\":2}\n"), printed("{\"b\":3}\n"));
    EXPECT_EQ(orvid({"merge", "{\"a\""}, "{}"),
              failed(2,
                     "PATCH:1:5: at a: The text ends before the document is complete (the object "
                     "that begins at 1:1 is not closed)\n{\"a\"\n"
                     "    ^"));
}

TEST(change, that_is_no_file_says_what_may_stand_there) {
    const std::string hint =
        ": No such file or directory; the change is a file, - for standard input, or JSON text "
        "that begins with { or [";
    EXPECT_EQ(orvid({"merge", "port=2"}, "{}"), failed(3, "port=2" + hint));
    EXPECT_EQ(orvid({"patch", "change"}, "{}"), failed(3, "change" + hint));
    EXPECT_EQ(orvid({"patch", "none.json"}, "{}"),
              failed(3, "none.json: No such file or directory"));
}

TEST(lines, begin_with_a_byte_order_mark_in_the_first_only) {
    const std::string mark = "\xEF\xBB\xBF";
    const std::string bad =
        "orvid: (standard input):2:1: at (root): Unexpected byte 0xEF, as of a byte order mark: "
        "expected a value\n";
    for (const auto& call : std::vector<std::vector<std::string>>{{"check"},
                                                                  {"get", "a"},
                                                                  {"set", "a=2"},
                                                                  {"set", "n={}"},
                                                                  {"insert", "n=1"},
                                                                  {"remove", "a"},
                                                                  {"rename", "a", "b"},
                                                                  {"merge", "{\"a\":2}"},
                                                                  {"set", "-S", "a=2"}}) {
        std::vector<std::string> words = call;
        words.emplace_back("--lines");
        const auto result = orvid(words, mark + "{\"a\":1}\n" + mark + "{\"a\":1}\n");
        EXPECT_EQ(result.status, 1) << call.front();
        EXPECT_EQ(result.err, bad) << call.front();
    }
    EXPECT_EQ(orvid({"set", "--lines", "a=2"}, mark + "{\"a\":1}\n"),
              printed(mark + "{\"a\":2}\n"));
}

TEST(lines, keep_the_byte_order_mark_of_a_first_line_that_is_not_written) {
    const std::string mark = "\xEF\xBB\xBF";
    const std::string records = mark + " \n\n{\"a\": 1}\n";
    EXPECT_EQ(orvid({"set", "--lines", "a=2"}, records), printed(mark + "{\"a\": 2}\n"));
    EXPECT_EQ(orvid({"set", "--lines", "n={}", "-S"}, records), printed("{\"a\":1,\"n\":{}}\n"));
    EXPECT_EQ(orvid({"rename", "--lines", "a", "b"}, records), printed(mark + "{\"b\": 1}\n"));
    EXPECT_EQ(orvid({"get", "--lines", "a"}, records), printed("1\n"));
    EXPECT_EQ(orvid({"remove", "--lines", "a"}, mark), printed(mark));
    EXPECT_EQ(orvid({"remove", "--lines", "a", "--on-error=skip"}, mark + "[]\n{\"a\":1}").out,
              mark + "{}");
    EXPECT_EQ(orvid({"remove", "--lines", "a"}, mark + "[]\n{\"a\":1}\n").out, "");
}

TEST(help, says_what_a_verb_does_with_lines) {
    EXPECT_NE(orvid({"check", "--help"}).out.find("read every line as a document of its own"),
              std::string::npos);
    EXPECT_EQ(orvid({"check", "--help"}).out.find("write one line for each"), std::string::npos);
}

}  // namespace
