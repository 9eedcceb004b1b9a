// SPDX-License-Identifier: MIT
//
// orvid split and join: between an array, records, and values that follow each other.

#include "support/Command.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using orvid_test::CommandResult;
using orvid_test::failed;
using orvid_test::orvid;
using orvid_test::printed;
using orvid_test::ScratchFile;
using orvid_test::shell;
using orvid_test::withoutExcerpt;

TEST(split, writes_an_item_a_line) {
    EXPECT_EQ(orvid({"split"}, "[ {\"a\" : 1.0}, [ ], \"x\\n\" ]"),
              printed("{\"a\":1.0}\n[]\n\"x\\n\"\n"));
    EXPECT_EQ(orvid({"split", "--in", "l[-1]"}, R"({"l":[[1],[2,3]]})"), printed("2\n3\n"));
    EXPECT_EQ(orvid({"split"}, "[]"), printed(""));
}

TEST(split, writes_what_a_pointer_of_keys_names_while_it_reads) {
    EXPECT_EQ(orvid({"split", "--in", "/a~1b/c"}, R"({"a/b":{"c":[1,2,tru]}})"),
              (CommandResult{"1\n2\n",
                             "orvid: (standard input):1:21: at a/b.c: Unexpected ']': expected "
                             "true\n{\"a/b\":{\"c\":[1,2,tru]}}\n                    ^\n",
                             1, 0}));
    EXPECT_EQ(orvid({"split", "--in", "/l/1"}, R"({"l":[[1],[2,3]]})"), printed("2\n3\n"));
    EXPECT_EQ(orvid({"split", "--in", "/l/1"}, R"({"l":{"1":[4]}})"), printed("4\n"));
    EXPECT_EQ(orvid({"split", "--in", "/"}, R"({"":[5]})"), printed("5\n"));
}

TEST(split, refuses_what_has_no_items) {
    EXPECT_EQ(
        orvid({"split"}, "{}"),
        failed(1,
               "(standard input):1:1: at (root): an object has no items to split; --in PATH names "
               "an array within\n{}\n^"));
    EXPECT_EQ(orvid({"split", "--in", "a", "--values"}, "{}"),
              failed(2, "--in and --values exclude each other; see orvid split --help"));
}

TEST(split, takes_values_that_follow_each_other) {
    EXPECT_EQ(orvid({"split", "--values"}, "{\n \"a\": 1\n}\n[1,\n2]{}3 \"x\"4// end\n"),
              printed("{\"a\":1}\n[1,2]\n{}\n3\n\"x\"\n4\n"));
    EXPECT_EQ(orvid({"split", "--values"}, ""), printed(""));
}

TEST(split, names_the_place_of_an_error_after_other_values) {
    EXPECT_EQ(orvid({"split", "--values"}, "{}\n[1] {\"a\":\n tru}"),
              (CommandResult{"{}\n[1]\n",
                             "orvid: (standard input):3:5: at a: Unexpected '}': expected true\n"
                             " tru}\n    ^\n",
                             1, 0}));
    EXPECT_EQ(orvid({"split", "--values"}, "{} [\n"),
              (CommandResult{"{}\n",
                             "orvid: (standard input):2:1: at (root): The text ends before the "
                             "document is complete (the array that begins at 1:4 is not closed)\n",
                             1, 0}));
    EXPECT_EQ(orvid({"split", "--values"}, "1 2 \"x"),
              (CommandResult{"1\n2\n",
                             "orvid: (standard input):1:7: at (root): The text ends before the "
                             "document is complete (the string that begins at 1:5 is not "
                             "closed)\n1 2 \"x\n      ^\n",
                             1, 0}));
    EXPECT_EQ(orvid({"split", "--values"}, "1 /* 2"),
              (CommandResult{"1\n",
                             "orvid: (standard input):1:7: at (root): The text ends before the "
                             "document is complete (the comment that begins at 1:3 is not "
                             "closed)\n1 /* 2\n      ^\n",
                             1, 0}));
}

TEST(split, names_the_place_of_an_error_in_an_item) {
    EXPECT_EQ(orvid({"split", "--in", "s"}, "{\"s\":[{\"a\":1},\n {\"b\": [1, tru]}]}"),
              (CommandResult{"{\"a\":1}\n",
                             "orvid: (standard input):2:15: at s[1].b: Unexpected ']': expected "
                             "true\n {\"b\": [1, tru]}]}\n              ^\n",
                             1, 0}));
    EXPECT_EQ(orvid({"split"}, "[1,2] x"),
              (CommandResult{"1\n2\n",
                             "orvid: (standard input):1:7: at (root): Unexpected 'x': the document "
                             "is complete\n[1,2] x\n      ^\n",
                             1, 0}));
    EXPECT_EQ(orvid({"split", "--strict"}, "[{\"a\":1},\n {\"a\":1, \"a\":2}]"),
              (CommandResult{"{\"a\":1}\n",
                             "orvid: (standard input):2:10: at [1]: Repeated key \"a\"\n"
                             " {\"a\":1, \"a\":2}]\n         ^\n",
                             1, 0}));
}

TEST(split, reports_a_way_that_leads_nowhere_or_twice) {
    EXPECT_EQ(withoutExcerpt(orvid({"split", "--in", "servrs"}, R"({"servers":[1]})")),
              failed(1,
                     "(standard input):1:1: at (root): path \"servrs\" not found, there is no "
                     "\"servrs\" (did you mean \"servers\"?)"));
    EXPECT_EQ(withoutExcerpt(orvid({"split", "--in", "a.b.c"}, R"({"a":{"b":1}})")),
              failed(1,
                     "(standard input):1:11: at a.b: path \"a.b.c\" not found: \"a.b\" is a "
                     "number"));
    EXPECT_EQ(
        withoutExcerpt(orvid({"split", "--in", "a[2]"}, R"({"a":[[],[]]})")),
        failed(1, "(standard input):1:6: at a: path \"a[2]\" not found, there is no \"[2]\""));
    EXPECT_EQ(
        withoutExcerpt(orvid({"split", "--in", "a"}, R"({"a":[1],"a":[2]})")),
        (CommandResult{"1\n",
                       "orvid: (standard input):1:6: at a: a key on the way is there twice, so "
                       "this may be the wrong value\n",
                       1, 0}));
    for (const char* const last : {"5", "{}", "{\"c\":1}", "{\"b\":[2]}", "[]"}) {
        const std::string text = std::string(R"({"a":{"b":[1]},"a":)") + last + "}";
        for (const std::vector<std::string>& call : std::vector<std::vector<std::string>>{
                 {"split", "--in", "a.b"}, {"split", "--strict", "--in", "a.b"}}) {
            EXPECT_EQ(
                withoutExcerpt(orvid(call, text)),
                (CommandResult{"1\n",
                               "orvid: (standard input):1:11: at a.b: a key on the way is there "
                               "twice, so this may be the wrong value\n",
                               1, 0}))
                << text;
        }
    }
    EXPECT_EQ(orvid({"split", "--in", "a.b"}, R"({"a":{"c":1},"a":{"b":[1]}})"), printed("1\n"));
    EXPECT_EQ(orvid({"split", "--in", "a[1].b"},
                    R"({"b":[0],"a":[{"b":[1]},{"a":{"b":[2]},"b":[3,[4]]}]})"),
              printed("3\n[4]\n"));
}

TEST(split, takes_the_items_of_each_line) {
    EXPECT_EQ(
        orvid({"split", "--lines", "--in", "s", "--on-error=skip"},
              "{\"s\":[1,[2]]}\n{\"s\":[]}\n{}\n{\"s\":[3]}\n"),
        (CommandResult{"1\n[2]\n3\n",
                       "orvid: (standard input):3:1: at (root): path \"s\" not found, there is "
                       "no \"s\"\n",
                       1, 0}));
}

TEST(join, makes_one_array_of_all_files) {
    const ScratchFile pretty("{\n  \"a\": 1.50\n}\n[\n]\n");
    EXPECT_EQ(orvid({"join", "--compact", "-", pretty.name()}, "1\n\n\"x\"\n"),
              printed("[1,\"x\",{\"a\":1.50},[]]\n"));
    EXPECT_EQ(orvid({"join", "--indent", "1"}, "1 2"), printed("[\n 1,\n 2\n]\n"));
    EXPECT_EQ(orvid({"join"}, " "), printed("[]\n"));
}

TEST(join, is_the_way_back_from_split) {
    const std::string array = R"([{"b":1e5,"a":[]},null,"\u00e9",[[0.10]]])";
    EXPECT_EQ(shell(R"("$0" split | "$0" join --compact)", {}, array),
              printed("[{\"b\":1e5,\"a\":[]},null,\"é\",[[0.10]]]\n"));
}

TEST(join_lines, write_an_error_on_a_line_of_its_own) {
    const std::string records = "1\n2 2\n3\n";
    const std::string error =
        "orvid: (standard input):2:3: at (root): Unexpected '2': the document is complete\n";
    EXPECT_EQ(shell(R"("$0" join --lines -c 2>&1)", {}, records).out, "[1\n" + error + "\n");
    EXPECT_EQ(shell(R"("$0" join --lines -c --on-error=skip 2>&1)", {}, records).out,
              "[1,3\n" + error + "]\n");
    EXPECT_EQ(shell(R"("$0" join --lines -c --on-error=skip 2>&1)", {}, records + "2 2\n").out,
              "[1,3\n" + error + "orvid: (standard input):4" + error.substr(25) + "]\n");
    EXPECT_EQ(shell(R"("$0" join --lines -c --on-error=skip)", {}, records),
              (CommandResult{"[1,3]\n", error, 1, 0}));
}

TEST(join_lines, makes_an_array_of_records) {
    const std::string records = "{\"a\": 1.0}\n\n[2 ]\n3";
    EXPECT_EQ(orvid({"join", "--lines"}, records),
              printed("[\n    {\"a\":1.0},\n    [2],\n    3\n]\n"));
    EXPECT_EQ(orvid({"join", "--lines", "--indent=1", "-j", "3"}, records),
              printed("[\n {\"a\":1.0},\n [2],\n 3\n]\n"));
    EXPECT_EQ(orvid({"join", "--lines", "-c"}, records), printed("[{\"a\":1.0},[2],3]\n"));
    EXPECT_EQ(orvid({"join", "--lines"}, "\n"), printed("[]\n"));
    const ScratchFile file(records);
    EXPECT_EQ(orvid({"join", "--lines", "-c", file.name(), file.name()}),
              printed("[{\"a\":1.0},[2],3,{\"a\":1.0},[2],3]\n"));
}

TEST(join_lines, does_with_a_malformed_record_what_is_asked_for) {
    const std::string records = "1\n{x\n3\n";
    const std::string error =
        "orvid: (standard input):2:2: at (root): Unexpected 'x': expected a key or '}' (a key "
        "stands "
        "in double quotes: \"x\")\n";
    EXPECT_EQ(orvid({"join", "--lines", "-c"}, records), (CommandResult{"[1\n", error, 1, 0}));
    EXPECT_EQ(orvid({"join", "--lines", "-c", "--on-error=skip"}, records),
              (CommandResult{"[1,3]\n", error, 1, 0}));
    EXPECT_EQ(orvid({"join", "--lines", "-c", "--on-error=null"}, records),
              (CommandResult{"[1,null,3]\n", error, 1, 0}));
    EXPECT_EQ(orvid({"join", "--lines", "-c"}, "1 2\n").status, 1);
}

TEST(join, does_not_part_what_is_one_word) {
    for (const std::string word : {"01", "truefalse", "1-2", "nullx"}) {
        EXPECT_EQ(orvid({"join"}, word).status, 1) << word;
    }
    EXPECT_EQ(orvid({"join"}, "01").err,
              "orvid: (standard input):1:2: at (root): Unexpected '1': expected whitespace between "
              "values (no number begins with 0 and a digit)\n01\n ^\n");
    EXPECT_EQ(shell(R"((printf true; sleep 0.1; printf false) | "$0" join)", {}).status, 1);
    EXPECT_EQ(orvid({"join", "-c"}, "1\"a\"[]{}null/*c*/2//x\n3"),
              printed("[1,\"a\",[],{},null,2,3]\n"));
}

TEST(join, leaves_the_array_open_after_an_error_but_not_the_line) {
    EXPECT_EQ(orvid({"join", "-c", "-", "/no/such/file"}, "1"),
              (CommandResult{"[1\n", "orvid: /no/such/file: No such file or directory\n", 3, 0}));
    EXPECT_EQ(orvid({"join", "-c"}, "1\n{\"a\"}").out, "[1\n");
    EXPECT_EQ(orvid({"join"}, "1\n{\"a\"}").out, "[\n    1\n");
    EXPECT_EQ(orvid({"join", "--lines"}, "1\n{\"a\"}").out, "[\n    1\n");
    EXPECT_EQ(orvid({"join"}, "x").out, "");
    EXPECT_EQ(orvid({"join", "--lines"}, "x").out, "");
    EXPECT_EQ(orvid({"join", "/no/such/file"}).out, "");
}

TEST(join, lays_out_each_value_as_it_is_reported) {
    EXPECT_EQ(orvid({"join", "--tab", "-S", "--ascii"}, R"({"b":[1],"a":"é"} [])"),
              printed("[\n\t{\n\t\t\"a\": \"\\u00E9\",\n\t\t\"b\": [\n\t\t\t1\n\t\t]\n\t},"
                      "\n\t[]\n]\n"));
    EXPECT_EQ(orvid({"join", "--strict", "-c"}, "1 // one").err,
              "orvid: (standard input):1:3: at (root): Comments are not allowed\n1 // one\n  ^\n");
}

}  // namespace
