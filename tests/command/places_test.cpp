// SPDX-License-Identifier: MIT
//
// What the verbs write of a place leads back to it, whatever the keys are.

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "support/Command.h"

namespace {

using orvid_test::CommandResult;
using orvid_test::failed;
using orvid_test::orvid;
using orvid_test::printed;
using orvid_test::ScratchFile;
using orvid_test::withoutExcerpt;

/// Each value that is no container is the number of its line in what paths prints, from 1.
const std::string k_odd =
    R"({"/x":1,"#/a":2,"$":3,"$.x":4,"[0]":5,"[-1]":6,"a.b":7,"c\\":8,"\"q\"":9,"t\ty":10,)"
    R"("*":11,"":{"k":12,"":[13],"n\nl":14},"o":{"/y":15,"":16,"[*]":17},"l":[18,{"/z":19}]})";

std::vector<std::string> firstColumns(const std::string& text) {
    std::vector<std::string> result;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        result.push_back(line.substr(0, line.find('\t')));
    }
    return result;
}

TEST(places, of_paths_lead_back) {
    const std::vector<std::string> words = firstColumns(orvid({"paths"}, k_odd).out);
    ASSERT_EQ(words.size(), 19U);
    for (std::size_t i = 0; i < words.size(); ++i) {
        EXPECT_EQ(orvid({"get", "--", words[i]}, k_odd), printed(std::to_string(i + 1) + "\n"))
            << words[i];
    }
}

TEST(places, of_pointers_lead_back) {
    const std::vector<std::string> words =
        firstColumns(orvid({"query", "--pointers", "$..[?@ > 0]"}, k_odd).out);
    ASSERT_EQ(words.size(), 19U);
    for (const std::string& word : words) {
        EXPECT_EQ(orvid({"type", "--in", word}, k_odd), printed("number\n")) << word;
    }
}

TEST(places, of_paths_make_the_document_again) {
    EXPECT_EQ(orvid({"unpaths", "--compact"}, orvid({"paths"}, k_odd).out),
              printed(orvid({"print", "--compact"}, k_odd).out));
}

TEST(places, of_changes_lead_back) {
    const ScratchFile from("{}");
    const ScratchFile to(R"({"/x":1,"":{"k":2},"a":3,"#/a":4})");
    EXPECT_EQ(orvid({"diff", "--changes", from.name(), to.name()}),
              printed("+ \\/x\t1\n+ /\t{\"k\":2}\n+ a\t3\n+ \\#/a\t4\n"));
    EXPECT_EQ(orvid({"get", "\\/x", to.name()}), printed("1\n"));
    EXPECT_EQ(orvid({"get", "-c", "/", to.name()}), printed("{\"k\":2}\n"));
}

TEST(places, of_items_that_are_found_lead_back) {
    const std::string text = R"({"/l":[{"a":1}],"":[{"a":1}]})";
    EXPECT_EQ(orvid({"find", "--in", "\\/l", "--path", "a", "1"}, text), printed("\\/l[0]\n"));
    EXPECT_EQ(orvid({"find", "--in", "/", "--path", "a", "1"}, text), printed("//0\n"));
    EXPECT_EQ(orvid({"get", "-c", "//0"}, text), printed("{\"a\":1}\n"));
}

TEST(places, of_errors_lead_back) {
    EXPECT_EQ(orvid({"check", "--json-errors"}, R"({"/x": [tru]})").out, "");
    EXPECT_NE(orvid({"check"}, R"({"/x": [tru]})").err.find("at \\/x: "), std::string::npos);
    EXPECT_NE(orvid({"check", "--json-errors"}, R"({"/x": [tru]})").err.find(R"("path":"\\/x")"),
              std::string::npos);
}

TEST(places, are_taken_as_json_strings) {
    EXPECT_EQ(orvid({"set", "-c", R"("t\ty")", "2"}, R"({"t\ty":1})"), printed("{\"t\\ty\":2}\n"));
    EXPECT_EQ(orvid({"get", "\"a"}, R"({"\"a":1})"), printed("1\n"));
}

TEST(pointers, into_arrays_have_indices) {
    EXPECT_EQ(withoutExcerpt(orvid({"set", "/00", "1"}, "[1]")),
              failed(1,
                     "(standard input):1:1: at (root): path \"/00\" not found: \"00\" is no index "
                     "of an array"));
    EXPECT_EQ(withoutExcerpt(orvid({"set", "/1", "5"}, "[1]")),
              failed(1,
                     "(standard input):1:1: at (root): path \"/1\" not found, there is no item "
                     "1; the pointer to a new item ends in /-"));
}

TEST(places, are_named_as_they_were_typed) {
    EXPECT_EQ(orvid({"set", "/a/0", "1"}, "{}"),
              failed(1,
                     "(standard input): at a: path \"/a/0\" not found, there is no item 0; the "
                     "pointer to a new item ends in /-; this call made \"a\""));
    EXPECT_EQ(orvid({"set", "b=2", "/a/0/c=1"}, R"({"a":1})").status, 3);
    EXPECT_EQ(withoutExcerpt(orvid({"set", "/a/0", "1"}, R"({"a":1})")),
              failed(1, "(standard input):1:6: at a: path \"/a/0\" not found: \"a\" is a number"));
    EXPECT_EQ(withoutExcerpt(orvid({"insert", "/a/b", "1"}, "{}")),
              failed(1,
                     "(standard input):1:1: at (root): path \"/a/b\" not found, there is no \"a\"; "
                     "set makes what is missing"));
    EXPECT_EQ(
        withoutExcerpt(orvid({"set", "a[-1].b.c", "1"}, R"({"a":[{"b":2}]})")),
        failed(1,
               "(standard input):1:12: at a[0].b: path \"a[-1].b.c\" not found: \"a[0].b\" is "
               "a number"));
    EXPECT_EQ(withoutExcerpt(orvid({"get", "a[-1].b"}, R"({"a":[{}]})")),
              failed(1,
                     "(standard input):1:7: at a[0]: path \"a[-1].b\" not found, there is no "
                     "\"b\""));
    EXPECT_EQ(
        withoutExcerpt(orvid({"copy", "a", "/l/7"}, R"({"a":1,"l":[]})")),
        failed(1,
               "(standard input):1:12: at l: path \"/l/7\" not found, there is no item 7; the "
               "pointer to a new item ends in /-"));
}

TEST(pointers, with_an_empty_key_append_items) {
    EXPECT_EQ(orvid({"set", "//x/-", "2"}, R"({"":{"x":[1]}})"), printed(R"({"":{"x":[1,2]}})"));
    EXPECT_EQ(orvid({"set", "-c", "//y/-", "2"}, R"({"":{}})"), printed("{\"\":{\"y\":[2]}}\n"));
    EXPECT_EQ(orvid({"set", "-c", "//x/-", "2"}, R"({"":{"x":{"a":1}}})"),
              printed("{\"\":{\"x\":{\"a\":1,\"-\":2}}}\n"));
}

TEST(pointers, choose_items_of_find) {
    const std::string text = R"({"x":[{"a":{"b":1}},{"a":{"b":[2]}},{"":3}]})";
    EXPECT_EQ(orvid({"find", "--in", "/x", "--path", "/a/b", "1"}, text), printed("x[0]\n"));
    EXPECT_EQ(orvid({"find", "--in", "/x", "--path", "a.b[-1]", "2"}, text), printed("x[1]\n"));
    EXPECT_EQ(orvid({"find", "--in", "/x", "--path", "/", "3"}, text), printed("x[2]\n"));
}

TEST(pointers, are_no_schema_paths) {
    EXPECT_EQ(
        orvid({"schema-path", "/servers/0/port"}),
        failed(2,
               "a path is expected here, not a JSON Pointer; write 'servers[0].port'; see orvid "
               "schema-path --help"));
    EXPECT_EQ(orvid({"data-path", "//a"}),
              failed(2, "a path is expected here, not a JSON Pointer; see orvid data-path --help"));
}

TEST(pointers, are_written_without_the_sign_of_a_fragment) {
    const CommandResult refused = failed(
        2, "path \"#/a\": a JSON Pointer has no #, write /a; a key that begins so is written \\#/");
    EXPECT_EQ(orvid({"get", "#/a"}, R"({"a":1})"), refused);
    EXPECT_EQ(orvid({"set", "#/a", "1"}, "{}"), refused);
    EXPECT_EQ(orvid({"set", "-c", "\\#/a", "1"}, "{}"), printed("{\"#/a\":1}\n"));
}

TEST(paths_of_calls, do_not_end_in_a_backslash) {
    for (const std::string path : {"a\\", "a.b\\"}) {
        const CommandResult refused =
            failed(2, "path \"" + path +
                          "\": it ends in a backslash, which belongs to the character after it; "
                          "the character \\ itself is written \\\\");
        EXPECT_EQ(orvid({"get", path}, R"({"a":1})"), refused);
        EXPECT_EQ(orvid({"set", path, "1"}, R"({"a":1})"), refused);
        EXPECT_EQ(orvid({"remove", path}, R"({"a":1})"), refused);
    }
    EXPECT_EQ(orvid({"get", "a\\\\"}, R"({"a\\":1})"), printed("1\n"));
}

TEST(places, quote_a_step_of_a_pointer_that_looks_like_an_index_as_it_was_typed) {
    const std::string document = R"({"a":[1,2],"o":{}})";
    for (const std::string step : {"[1", "[1]", "[*]", "01"}) {
        const auto missingIn = [&](const std::string& path) {
            return failed(1, "(standard input):1:6: at a: path \"" + path + "\" not found: \"" +
                                 step + "\" is no index of an array");
        };
        const std::string path = "/a/" + step;
        EXPECT_EQ(withoutExcerpt(orvid({"get", path}, document)), missingIn(path));
        const std::string below = path + "/y";
        EXPECT_EQ(withoutExcerpt(orvid({"set", below, "1"}, document)), missingIn(below));
        EXPECT_EQ(withoutExcerpt(orvid({"insert", below, "1"}, document)), missingIn(below));
        EXPECT_EQ(withoutExcerpt(orvid({"copy", "o", below}, document)), missingIn(below));
        EXPECT_EQ(withoutExcerpt(orvid({"move", "o", below}, document)), missingIn(below));
    }
    EXPECT_EQ(
        withoutExcerpt(orvid({"get", "/o/[1"}, document)),
        failed(1, "(standard input):1:16: at o: path \"/o/[1\" not found, there is no \"[1\""));
    EXPECT_EQ(withoutExcerpt(orvid({"set", "/a/7/y", "1"}, document)),
              failed(1,
                     "(standard input):1:6: at a: path \"/a/7/y\" not found, there is no item 7; "
                     "the pointer to a new item ends in /-"));
    EXPECT_EQ(
        withoutExcerpt(orvid({"get", "a.\\[1"}, document)),
        failed(1, "(standard input):1:6: at a: path \"a.\\[1\" not found: \"a\" is an array"));
}

}  // namespace
