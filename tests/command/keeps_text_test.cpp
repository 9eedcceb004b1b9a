// SPDX-License-Identifier: MIT
//
// The verbs that edit leave all of a document as it is but what they change: comments, layout,
// spelling. An option that asks for a layout gets one.

#include "support/Command.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <string>
#include <vector>

namespace {

using orvid_test::bytesOfFile;
using orvid_test::CommandResult;
using orvid_test::orvid;
using orvid_test::printed;
using orvid_test::ScratchFile;

const std::string k_document =
    "{ // own\r\n"
    "\t\"a\": 1.0, // tail\r\n"
    "\r\n"
    "\t/* b */ \"b\": [\"\\u00e9\", {\"c\": []},],\r\n"
    "}";

std::string replaced(std::string text, const std::string& part, const std::string& with) {
    return text.replace(text.find(part), part.length(), with);
}

/// What is written to standard output, and what the file holds after -i, are the same.
void expectEdit(const std::vector<std::string>& call, const std::string& expected,
                const std::string& document = k_document) {
    const ScratchFile file(document);
    std::vector<std::string> words = call;
    words.push_back(file.name());
    EXPECT_EQ(orvid(words), printed(expected));
    EXPECT_EQ(bytesOfFile(file.name()), document);
    words.emplace_back("-i");
    EXPECT_EQ(orvid(words), printed(""));
    EXPECT_EQ(bytesOfFile(file.name()), expected);
}

TEST(keeps_text, when_values_are_set) {
    expectEdit({"set", "a", "2"}, replaced(k_document, "1.0", "2"));
    expectEdit({"set", "a=2", "b[0]=\"x\""},
               replaced(replaced(k_document, "1.0", "2"), "\"\\u00e9\"", "\"x\""));
    expectEdit({"set", "b[1].c[*]", "{\"d\": 1}"}, replaced(k_document, "[]", "[{\"d\": 1}]"));
    expectEdit({"set", "d", "[]"}, replaced(k_document, "],\r\n}", "],\r\n\t\"d\": [],\r\n}"));
}

TEST(keeps_text, when_items_and_members_are_inserted) {
    expectEdit({"insert", "b[0]", "0"}, replaced(k_document, "[\"", "[0, \""));
    expectEdit({"insert", "d", "0"}, replaced(k_document, "],\r\n}", "],\r\n\t\"d\": 0,\r\n}"));
}

TEST(keeps_text, gives_no_comment_of_a_removed_value_to_an_equal_one) {
    const std::string before = "{ \"port\": 8080, // main port\n  \"limits\": {\"rate\": 1} }";
    const std::string after = "{ \"limits\": {\"rate\": 1, \"burst\": 8080} }";
    expectEdit({"merge", R"({"port": null, "limits": {"burst": 8080}})"}, after, before);
    expectEdit({"patch", R"([{"op": "remove", "path": "/port"},
                             {"op": "add", "path": "/limits/burst", "value": 8080}])"},
               after, before);
}

TEST(keeps_text, refuses_a_layout_in_place_that_loses_comments) {
    const ScratchFile file("{\"a\": 1} // end\n");
    for (const std::string layout : {"-c", "-S", "--indent=2", "--ascii"}) {
        for (const std::string lines : {"-i", "--lines"}) {
            if (lines == "-i" || layout != "--indent=2") {
                const CommandResult result =
                    orvid({"set", "-i", lines, layout, "a=2", file.name()});
                EXPECT_EQ(result.status, 1) << layout;
                EXPECT_NE(result.err.find("at (root): the comments would be lost, as the file is "
                                          "written anew; --drop-comments allows it, and without "
                                          "an option for the layout they stay\n"),
                          std::string::npos)
                    << result;
            }
        }
    }
    EXPECT_EQ(orvid({"remove", "-i", "-c", "a", file.name()}).status, 1);
    EXPECT_EQ(bytesOfFile(file.name()), "{\"a\": 1} // end\n");
    EXPECT_EQ(orvid({"set", "-c", "a=2", file.name()}), printed("{\"a\":2}\n"));
    EXPECT_EQ(orvid({"set", "-i", "-c", "--drop-comments", "a=2", file.name()}), printed(""));
    EXPECT_EQ(bytesOfFile(file.name()), "{\"a\":2}\n");
}

TEST(keeps_text, when_values_are_removed) {
    expectEdit({"remove", "b[0]"}, replaced(k_document, "\"\\u00e9\", ", ""));
    expectEdit({"remove", "a"}, "{ // own\r\n\t/* b */ \"b\": [\"\\u00e9\", {\"c\": []},],\r\n}");
    expectEdit({"remove", "a", "--also", "b"}, "{ // own\r\n}");
}

TEST(keeps_text, when_changes_come_from_a_file) {
    const ScratchFile patch(R"([{"op": "replace", "path": "/a", "value": 3}])");
    expectEdit({"patch", patch.name()}, replaced(k_document, "1.0", "3"));
    const ScratchFile merge(R"({"b": null, "a": "x"})");
    expectEdit({"merge", merge.name()}, "{ // own\r\n\t\"a\": \"x\", // tail\r\n}");
}

TEST(keeps_text, when_defaults_are_filled_in) {
    const std::string document =
        "{\n  \"meta\": { \"schema\": { \"properties\": { \"d\": { \"default\": 7 } } } },\n"
        "  // one\n  \"a\": 1\n}\n";
    expectEdit({"defaults", "--fill"}, replaced(document, "1\n}", "1,\n  \"d\": 7\n}"), document);
}

TEST(keeps_text, and_a_mark_at_its_beginning) {
    expectEdit({"set", "[0]", "2"}, "\xEF\xBB\xBF[ 2 ]\n", "\xEF\xBB\xBF[ 1 ]\n");
}

TEST(keeps_text, and_the_file_alone_when_nothing_changes) {
    const ScratchFile file(k_document);
    struct stat before {};
    struct stat after {};
    ASSERT_EQ(stat(file.name().c_str(), &before), 0);
    for (const char* const value : {"1.0", "1"}) {
        EXPECT_EQ(orvid({"set", "a", value, "-i", file.name()}), printed(""));
    }
    EXPECT_EQ(orvid({"set", "b[0]", "\"\xC3\xA9\"", "-i", file.name()}), printed(""));
    ASSERT_EQ(stat(file.name().c_str(), &after), 0);
    EXPECT_EQ(after.st_ino, before.st_ino);
    EXPECT_EQ(bytesOfFile(file.name()), k_document);
}

TEST(keeps_text, unless_a_layout_is_asked_for) {
    EXPECT_EQ(orvid({"set", "a", "2", "--compact"}, k_document),
              printed("{\"a\":2,\"b\":[\"\xC3\xA9\",{\"c\":[]}]}\n"));
    EXPECT_EQ(orvid({"remove", "b", "--indent=1"}, k_document), printed("{\n \"a\": 1.0\n}\n"));
    EXPECT_EQ(orvid({"remove", "b[1]", "--ascii"}, "{\"b\":[\"\xC3\xA9\",1]}"),
              printed("{\n    \"b\": [\n        \"\\u00E9\"\n    ]\n}\n"));
    EXPECT_EQ(orvid({"set", "c", "2", "--sort-keys", "--indent=0"}, "{\"d\":1, \"c\":1}"),
              printed("{\"c\":2,\"d\":1}\n"));
}

TEST(keeps_text, with_colour_around_its_tokens) {
    EXPECT_EQ(orvid({"set", "a", "2", "--color=always"}, "{\"a\" :1 /* \"x\" */}//"),
              printed("{\x1B[34;1m\"a\"\x1B[0m :\x1B[36m2\x1B[0m /* \"x\" */}//"));
}

TEST(keeps_text, but_not_in_a_strict_call) {
    const CommandResult result = orvid({"set", "--strict", "a", "2"}, k_document);
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err.substr(0, 70),
              "orvid: (standard input):1:3: at (root): Comments are not allowed\n{ // ");
    EXPECT_EQ(orvid({"set", "--strict", "a", "2"}, "{\"a\": 1}"), printed("{\"a\": 2}"));
}

TEST(keeps_text, of_scalars_with_and_without_the_short_cut) {
    for (const std::string text :
         {R"({"a":1,"b":[{}]})", R"({"a":1,"a":2})", "{\"a\":\"\xFF\"}", R"({"a":"\ud800"})",
          R"({"\u0061":1})", "{\"a\":1}}", "{\"a\":01}", "[1]", "{}"}) {
        const CommandResult direct = orvid({"set", "a", "\"x\""}, text);
        const CommandResult roundabout = orvid({"set", "a", "\"x\""}, "// roundabout\n" + text);
        EXPECT_EQ(roundabout.status, direct.status) << text;
        EXPECT_EQ(roundabout.out, direct.out.empty() ? "" : "// roundabout\n" + direct.out);
    }
}

TEST(keeps_text, of_records_when_a_scalar_takes_the_place_of_another) {
    EXPECT_EQ(
        orvid({"set", "--lines", "b[0]", "7"},
              "{\"a\": 1, \"b\": [1, 2]}\n\n{\"b\":[\"x\"] /* b */, \"a\" : 1e2}\n{\"b\":[7.0]}\n"),
        printed("{\"a\": 1, \"b\": [7, 2]}\n{\"b\":[7] /* b */, \"a\" : 1e2}\n"
                "{\"b\":[7.0]}\n"));
}

TEST(keeps_text, with_every_token_that_is_equal_already) {
    const std::string before = "// comment\n{ \"v\" : ";
    for (const char* const token : {"1", "1.0", "10e-1", "\"\\u0061\"", "\"a\"", "true", "null"}) {
        const std::string document = before + token + ", } // end";
        for (const char* const value : {"1", "\"a\"", "true", "null"}) {
            const bool isEqual = orvid({"get", "v"}, document).out == std::string(value) + "\n" ||
                                 (value[0] == '1' && token[0] == '1');
            EXPECT_EQ(orvid({"set", "v", value}, document),
                      printed(isEqual ? document : before + value + ", } // end"));
        }
    }
    EXPECT_EQ(orvid({"set", "v", "0"}, before + "-0}"), printed(before + "0}"));
    EXPECT_EQ(orvid({"set", "v", "1.50"}, before + "1.5}"), printed(before + "1.50}"));
}

TEST(keeps_text, after_a_mark_when_there_are_comments) {
    EXPECT_EQ(orvid({"set", "a", "2"}, "\xEF\xBB\xBF// one\n{\"a\": 1,}"),
              printed("\xEF\xBB\xBF// one\n{\"a\": 2,}"));
}

}  // namespace
