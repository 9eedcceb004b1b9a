// SPDX-License-Identifier: MIT
//
// insert, find, unpaths, defaults, diff, patch, merge and check, and several edits in one call.

#include "support/Command.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>
#include <string>
#include <vector>

#include "support/VerbCalls.h"

namespace {

using orvid_test::bytesOfFile;
using orvid_test::CommandResult;
using orvid_test::failed;
using orvid_test::orvid;
using orvid_test::printed;
using orvid_test::repeated;
using orvid_test::ScratchFile;
using orvid_test::shell;
using orvid_test::withoutExcerpt;

const std::string k_settings = ORVID_SAMPLES "/settings.json";

TEST(set_several, makes_all_edits_in_their_order) {
    EXPECT_EQ(shell(R"("$0" set --compact a.b=1 c[*]='"x"' a.b=2 'c[*]=[]')", {}, R"({"c":[]})"),
              printed("{\"c\":[\"x\",[]],\"a\":{\"b\":2}}\n"));
}

TEST(set_several, takes_a_file_after_the_edits_and_an_equals_sign_in_a_key) {
    const ScratchFile file("{}");
    EXPECT_EQ(orvid({"set", "--compact", "a=1", R"(b\=c=2)", file.name()}),
              printed("{\"a\":1,\"b=c\":2}\n"));
    EXPECT_EQ(orvid({"set", "a=1", "/no/x=1"}), failed(3, "/no/x=1: No such file or directory"));
    EXPECT_EQ(orvid({"set", "a=1", "./x=1"}), failed(3, "./x=1: No such file or directory"));
}

TEST(set_several, splits_at_the_first_equals_sign) {
    EXPECT_EQ(orvid({"set", "--compact", R"(a="b=c")"}, "{}"), printed("{\"a\":\"b=c\"}\n"));
    EXPECT_EQ(orvid({"set", "a="}, "{}"),
              failed(2, "\"\" is no JSON; for the text write a=string:"));
}

TEST(insert, puts_an_item_before_another_and_after_the_last) {
    EXPECT_EQ(orvid({"insert", "--compact", "[0]", "[]"}, "[1,2]"), printed("[[],1,2]\n"));
    EXPECT_EQ(orvid({"insert", "--compact", "[1]", "1.5"}, "[1,2]"), printed("[1,1.5,2]\n"));
    EXPECT_EQ(orvid({"insert", "--compact", "[2]", "3"}, "[1,2]"), printed("[1,2,3]\n"));
    EXPECT_EQ(orvid({"insert", "--compact", "a[*]", "3"}, R"({"a":[]})"), printed("{\"a\":[3]}\n"));
    EXPECT_EQ(
        withoutExcerpt(orvid({"insert", "[3]", "3"}, "[1,2]")),
        failed(1,
               "(standard input):1:1: at (root): path \"[3]\" not found, there is no \"[3]\"; "
               "a new item is written [*]"));
}

TEST(insert, adds_members_but_overwrites_none) {
    EXPECT_EQ(orvid({"insert", "--compact", R"(a.x\.y)", "1"}, R"({"a":{},"b":0})"),
              printed("{\"a\":{\"x.y\":1},\"b\":0}\n"));
    EXPECT_EQ(withoutExcerpt(orvid({"insert", "b", "1"}, R"({"a":{},"b":0})")),
              failed(1, "(standard input):1:1: at (root): there is \"b\" already"));
    EXPECT_EQ(withoutExcerpt(orvid({"insert", "c.d", "1"}, "{}")),
              failed(1,
                     "(standard input):1:1: at (root): path \"c.d\" not found, there is no \"c\"; "
                     "set makes what is missing, and as one key with a dot it is written 'c\\.d'"));
    EXPECT_EQ(withoutExcerpt(orvid({"insert", "a.b", "1"}, R"({"a":[]})")),
              failed(1, "(standard input):1:6: at a: path \"a.b\" not found: \"a\" is an array"));
    EXPECT_EQ(orvid({"insert", "", "1"}, "{}"),
              failed(2,
                     "the empty path is the whole document: a place in it is expected; see orvid "
                     "insert --help"));
}

TEST(remove_several, removes_in_their_order_all_or_none) {
    EXPECT_EQ(orvid({"remove", "--compact", "[0]", "--also", "[0]", "--also=[1]"}, "[1,2,3,4]"),
              printed("[3]\n"));
    EXPECT_EQ(
        withoutExcerpt(orvid({"remove", "[0]", "--also", "[5]"}, "[1,2]")),
        failed(1, "(standard input):1:1: at (root): path \"[5]\" not found, there is no \"[5]\""));
}

TEST(find, writes_the_first_item_with_the_value) {
    const std::string text = R"({"l":[{"id":1},{"id":2.0,"n":"a"},{"id":2,"n":"b"}],"o":{}})";
    EXPECT_EQ(orvid({"find", "--compact", "--in", "l", "id", "2"}, text),
              printed("{\"id\":2.0,\"n\":\"a\"}\n"));
    EXPECT_EQ(orvid({"find", "--path", "--in", "l", "n", "\"b\""}, text), printed("l[2]\n"));
    EXPECT_EQ(withoutExcerpt(orvid({"find", "--in", "l", "id", "3"}, text)),
              failed(1, "(standard input):1:6: at l: no item has that value"));
    EXPECT_EQ(withoutExcerpt(orvid({"find", "--in", "o", "id", "3"}, text)),
              failed(1, "(standard input):1:57: at o: an object has no items to find"));
    EXPECT_EQ(withoutExcerpt(orvid({"find", "id", "3"}, text)),
              failed(1,
                     "(standard input):1:1: at (root): an object has no items to find; --in PATH "
                     "names an array within"));
    EXPECT_EQ(
        withoutExcerpt(orvid({"find", "--in", "x", "id", "3"}, text)),
        failed(1, "(standard input):1:1: at (root): path \"x\" not found, there is no \"x\""));
    EXPECT_EQ(orvid({"find", "", "[2]", "--path"}, "[1,[2]]"), printed("[1]\n"));
}

TEST(find, says_which_word_is_missing_before_a_file) {
    const ScratchFile file("[1]");
    EXPECT_EQ(
        orvid({"find", "id", file.name()}),
        failed(2, "VALUE is missing before the file \"" + file.name() +
                      "\"; for that text write string:" + file.name() + "; see orvid find --help"));
    EXPECT_EQ(orvid({"find", "", file.name(), file.name()}).err.find("VALUE is missing"),
              std::string::npos);
    EXPECT_EQ(orvid({"find", "", "1", file.name()}), printed("1\n"));
}

TEST(find, compares_numbers_exactly_and_members_in_any_order) {
    const std::string ids = "[5,0,10000000000000000000]";
    EXPECT_EQ(orvid({"find", "--path", "", "10000000000000000000"}, ids), printed("[2]\n"));
    EXPECT_EQ(withoutExcerpt(orvid({"find", "", "10000000000000000001"}, ids)),
              failed(1, "(standard input):1:1: at (root): no item has that value"));
    EXPECT_EQ(orvid({"find", "--path", "", "-0.0"}, ids), printed("[1]\n"));
    EXPECT_EQ(orvid({"find", "--path", "", R"({"a":1,"b":2})"}, R"([{"b":2,"a":1.0}])"),
              printed("[0]\n"));
}

TEST(find, answers_a_line_whatever_the_lines_before_and_the_threads) {
    std::string text;
    std::string expected;
    for (int i = 0; i < 300; ++i) {
        text += "[1, 10000000000000000000, 0]\n[0]\n[1e19]\n";
        expected += "10000000000000000000\nnull\n1e19\n";
    }
    for (const char* const jobs : {"-j1", "-j4"}) {
        EXPECT_EQ(
            orvid({"find", "--lines", jobs, "--on-error=null", "", "10000000000000000000"}, text)
                .out,
            expected);
    }
}

TEST(paths_pointers, tell_empty_keys_too) {
    EXPECT_EQ(orvid({"paths", "--json-pointer"}, R"({"":[{"a/b~c":1}],"t\t":{}})"),
              printed("//0/a~1b~0c\t1\n\"/t\\t\"\t{}\n"));
    EXPECT_EQ(orvid({"paths", "--ascii"}, R"({"é":"é"})"), printed("é\t\"\\u00E9\"\n"));
}

TEST(unpaths, is_the_way_back) {
    const std::string print = orvid({"print", "--meta", k_settings}).out;
    EXPECT_EQ(shell(R"("$0" paths "$1" | "$0" unpaths)", {k_settings}), printed(print));
    EXPECT_EQ(
        shell(R"("$0" paths --json-pointer "$1" | "$0" unpaths --json-pointer)", {k_settings}),
        printed(print));
    const std::string odd = R"({"tab\t":[[],{}],"\"q":{"x.y[0]":1e5},"\\":[null,[0]]})";
    EXPECT_EQ(shell(R"("$0" paths | "$0" unpaths --compact)", {}, odd), printed(odd + "\n"));
    EXPECT_EQ(orvid({"unpaths"}, "\t1.0\n"), printed("1.0\n"));
    const std::string empty = R"({"":{"":1},"a":[[{"":[]}]]})";
    EXPECT_EQ(
        shell(R"("$0" paths --json-pointer | "$0" unpaths --json-pointer --compact)", {}, empty),
        printed(empty + "\n"));
}

TEST(unpaths, skips_a_byte_order_mark) {
    EXPECT_EQ(orvid({"unpaths", "-c"},
                    "\xEF\xBB\xBF"
                    "a\t1\n")
                  .out,
              "{\"a\":1}\n");
    EXPECT_EQ(withoutExcerpt(orvid({"unpaths"},
                                   "\xEF\xBB\xBF"
                                   "zz\n"))
                  .err,
              "orvid: (standard input):1:3: there is no tab after the path\n");
}

TEST(unpaths, skips_blank_lines) {
    EXPECT_EQ(orvid({"unpaths", "--compact"}, "\n \t\r\na\t1\n\t\n  \nb\t2"),
              printed("{\"a\":1,\"b\":2}\n"));
}

TEST(unpaths, fills_gaps_with_null_but_no_large_ones) {
    EXPECT_EQ(orvid({"unpaths", "--compact"}, "a[1].b\t1\r\n\na[3]\t2"),
              printed("{\"a\":[null,{\"b\":1},null,2]}\n"));
    EXPECT_EQ(orvid({"unpaths"}, "[0]\t1\n[4000000000]\t1\n"),
              failed(1,
                     "(standard input):2:1: [4000000000] is too far after the item before it\n"
                     "[4000000000] 1\n^"));
}

TEST(unpaths, names_the_line_that_does_not_fit) {
    EXPECT_EQ(orvid({"unpaths"}, "a\t1\nb 2\n"),
              failed(1, "(standard input):2:4: there is no tab after the path\nb 2\n   ^"));
    EXPECT_EQ(orvid({"unpaths"}, "a\t1\na\t2\n"),
              failed(1, "(standard input):2:1: at a: path \"a\" has a value already\na 2\n^"));
    EXPECT_EQ(
        orvid({"unpaths"}, "a\t1\na.b\t2\n"),
        failed(1,
               "(standard input):2:1: at a: \"a\" is no object, so it cannot have a member \"b\"\n"
               "a.b 2\n^"));
    EXPECT_EQ(
        orvid({"unpaths"}, "a.b\t1\na[0]\t2\n"),
        failed(1,
               "(standard input):2:1: at a: \"a\" is no array, so it cannot have an item [0]\n"
               "a[0] 2\n^"));
    EXPECT_EQ(orvid({"unpaths"}, "a\ttru\n"),
              failed(1,
                     "(standard input):1:6: at a: The text ends before the document is complete\n"
                     "a tru\n     ^"));
    EXPECT_EQ(orvid({"unpaths"}, "\"a.b\"\t{\"c\":[1,tru]}\nb\t[}\n"),
              failed(1,
                     "(standard input):1:18: at a.b.c: Unexpected ']': expected true\n"
                     "\"a.b\" {\"c\":[1,tru]}\n                 ^"));
    EXPECT_EQ(orvid({"unpaths", "--json-pointer"}, "/a\t[}\n"),
              failed(1,
                     "(standard input):1:5: Unexpected '}': expected a value or ']'\n"
                     "/a [}\n    ^"));
    EXPECT_EQ(orvid({"unpaths"}, "\n"),
              failed(1, "(standard input):1:1: at (root): there is no line with a path"));
}

TEST(defaults, are_reported_without_changing_the_document) {
    EXPECT_EQ(orvid({"defaults", k_settings}),
              printed("limits.cpu\t1\nservers[0].retries\t3\nservers[1].port\t8080\n"
                      "servers[1].retries\t3\ndebug\tfalse\nowner\tnull\ntimeout\t2.50\n"
                      "log\\.level\t\"info\"\ntags\t[]\n"));
}

TEST(defaults, are_filled_in_and_then_nothing_lacks) {
    EXPECT_EQ(shell(R"("$0" defaults --fill "$1" | "$0" defaults)", {k_settings}), printed(""));
    const ScratchFile schema(R"({"meta":{"schema":{"properties":{"b":{"default":[1]}}}}})");
    const ScratchFile file(R"({"meta":{"x":1},"a":2})");
    EXPECT_EQ(
        orvid({"defaults", "--fill", "--schema", schema.name(), "-i", "--compact", file.name()}),
        printed(""));
    EXPECT_EQ(bytesOfFile(file.name()), "{\"meta\":{\"x\":1},\"a\":2,\"b\":[1]}\n");
    EXPECT_EQ(orvid({"defaults", "--lines"}).status, 2);
}

TEST(defaults, of_what_has_no_schema_are_none_and_a_note_says_so) {
    const std::string input = "orvid: (standard input): ";
    const std::string lack =
        input + "there is no meta.schema, so no defaults; --schema FILE names a schema\n";
    EXPECT_EQ(orvid({"defaults"}, "{}"), (CommandResult{"", lack, 0, 0}));
    EXPECT_EQ(orvid({"defaults", "--fill"}, "{}"), (CommandResult{"{}", lack, 0, 0}));
    EXPECT_EQ(orvid({"defaults"}, R"({"meta":{"schema":{}}})"), printed(""));
    const ScratchFile schema(R"({"properties":{"b":{"default":1}}})");
    const std::vector<std::string> given{"defaults", "--schema", schema.name()};
    EXPECT_EQ(orvid(given, R"({"b":2})"), printed(""));
    EXPECT_EQ(orvid(given, "[{}]"), printed(""));
    EXPECT_EQ(orvid({"defaults"}, "[{}]"), (CommandResult{"", lack, 0, 0}));
    EXPECT_EQ(orvid(given, "5"),
              (CommandResult{
                  "", input + "the root is a number, and only objects and arrays have defaults\n",
                  0, 0}));
}

TEST(defaults, of_a_file_that_describes_nothing_are_none_and_a_note_says_so) {
    const std::string why = " has neither properties nor items, so it gives no defaults\n";
    for (const char* const text :
         {R"({"a":1})", "[]", "5", R"({"$ref":"#/definitions/a"})", R"({"default":{"a":1}})"}) {
        const ScratchFile file(text);
        const std::string note = "orvid: the schema in " + file.name() + why;
        EXPECT_EQ(orvid({"defaults", "--schema", file.name()}, "{}"),
                  (CommandResult{"", note, 0, 0}));
        EXPECT_EQ(orvid({"defaults", "--fill", "--lines", "--schema", file.name()}, "{}\n{}\n"),
                  (CommandResult{"{}\n{}\n", note, 0, 0}));
    }
    const ScratchFile document(R"({"meta":{"schema":{}},"properties":{}})");
    EXPECT_EQ(orvid({"defaults", "--schema", document.name()}, "{}").err,
              "orvid: the schema in " + document.name() + why);
    const ScratchFile schema(R"({"meta":{"schema":{"items":{}}}})");
    EXPECT_EQ(orvid({"defaults", "--schema", schema.name()}, "{}"), printed(""));
}

TEST(defaults, of_a_root_that_is_an_array_are_those_of_its_items) {
    const ScratchFile schema(
        R"({"items":{"properties":{"a":{"default":5},"in":{"properties":{"c":{"default":[]}}}}}})");
    const std::string document = "[{\"a\": 1}, // first\n {\"b\": 2}, 3]\n";
    const std::vector<std::string> listing{"defaults", "--schema", schema.name()};
    EXPECT_EQ(orvid(listing, document),
              printed("[0].in\t{\"c\":[]}\n[1].a\t5\n[1].in\t{\"c\":[]}\n"));
    EXPECT_EQ(orvid({"get", "--default", "--schema", schema.name(), "[1].a"}, document),
              printed("5\n"));
    EXPECT_EQ(orvid({"defaults", "--fill", "--schema", schema.name()}, document),
              printed("[{\"a\": 1, \"in\": {\"c\": []}}, // first\n {\"b\": 2, \"a\": 5, \"in\": "
                      "{\"c\": []}}, 3]\n"));
    EXPECT_EQ(orvid({"defaults", "--fill", "--lines", "--schema", schema.name()}, "[{\"in\":1}]\n"),
              printed("[{\"in\":1,\"a\":5}]\n"));
    EXPECT_EQ(
        orvid({"defaults", "--max-elements", "1", "--schema", schema.name()}, document).err,
        "orvid: (standard input):2:2: at [1]: the schema's defaults add more than 1 elements; "
        "--max-elements sets another limit\n {\"b\": 2}, 3]\n ^\n");
}

TEST(defaults, of_records_are_noted_as_missing_where_no_record_has_a_schema) {
    const std::string with = R"({"meta":{"schema":{}}})";
    EXPECT_EQ(orvid({"defaults", "--fill", "--lines", "-j2"}, "{}\n{}\n"),
              (CommandResult{"{}\n{}\n",
                             "orvid: no record has a schema: meta.schema is missing; --schema FILE "
                             "names one\n",
                             0, 0}));
    EXPECT_EQ(orvid({"defaults", "--fill", "--lines"}, "{}\n" + with + "\n"),
              printed("{}\n" + with + "\n"));
}

TEST(diff, makes_the_patch_that_patch_applies) {
    const ScratchFile from(R"({"a":[1,2,3],"b":{"c":1.0}})");
    const ScratchFile to(R"({"a":[1,3],"b":{"c":1.00,"d":null}})");
    EXPECT_EQ(
        shell(R"("$0" diff "$1" "$2" | "$0" patch --compact - "$1")", {from.name(), to.name()}),
        printed(R"({"a":[1,3],"b":{"c":1.00,"d":null}})"
                "\n"));
    EXPECT_EQ(orvid({"diff", from.name(), "-"}, bytesOfFile(from.name())), printed("[]\n"));
    EXPECT_EQ(orvid({"diff", "-", "-"}).status, 2);
    EXPECT_EQ(orvid({"diff", from.name()}), failed(2, "TO is required; see orvid diff --help"));
}

TEST(patch, ends_with_2_for_another_file_and_with_1_for_a_malformed_patch) {
    const ScratchFile another(R"({"op":"remove","path":"/a"})");
    EXPECT_EQ(orvid({"patch", another.name()}, R"({"a":1})"),
              failed(2, another.name() +
                            ":1:1: at (root): the patch must be an array of operations; this is an "
                            "object\n{\"op\":\"remove\",\"path\":\"/a\"}\n^"));
    for (const char* const text :
         {R"([{"op":"remove")", R"([1])", R"([{"path":"/a"}])", R"([{"op":"remove"}])",
          R"([{"op":"cut","path":"/a"}])", R"([{"op":"remove","path":"a"}])",
          R"([{"op":"remove","path":"/b"}])", R"([{"op":"test","path":"/a","value":2}])"}) {
        const ScratchFile patch(text);
        const CommandResult result = orvid({"patch", patch.name()}, R"({"a":1})");
        EXPECT_EQ(result.status, 1) << text;
        EXPECT_EQ(result.out, "") << text;
    }
}

TEST(patch, names_the_operation_that_failed_and_changes_nothing) {
    const ScratchFile file("{\"a\":1}");
    const CommandResult result =
        orvid({"patch", "-", "-i", file.name()},
              R"([{"op":"remove","path":"/a"},{"op":"test","path":"/b","value":1}])");
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.err.rfind("orvid: " + file.name() +
                                   ":1:1: at (root): operation 1 of the patch, "
                                   "\"test\" of \"/b\": ",
                               0),
              0U)
        << result;
    EXPECT_EQ(bytesOfFile(file.name()), "{\"a\":1}");
    const std::string wrong =
        ":1:1: at (root): the patch must be an array of operations; this is an object\n";
    EXPECT_EQ(orvid({"patch", "-", file.name()}, "{}"),
              failed(2, "(standard input)" + wrong + "{}\n^"));
    EXPECT_EQ(orvid({"patch", file.name(), "no-such-file"}),
              failed(2, file.name() + wrong + "{\"a\":1}\n^"));
    EXPECT_EQ(orvid({"patch", "-"}).status, 2);
}

TEST(patch, names_the_step_that_is_missing_and_what_is_there_instead) {
    const ScratchFile document(R"({"name":1,"l":[1,2],"o":{"x":"y"}})");
    const auto reason = [&](const std::string& operations) {
        const std::string err = orvid({"patch", "[" + operations + "]", document.name()}).err;
        const std::string start = "\": ";
        const std::size_t at = err.find(start);
        return at == std::string::npos
                   ? err
                   : err.substr(at + start.length(), err.find('\n') - at - start.length());
    };
    EXPECT_EQ(reason(R"({"op":"remove","path":"/nme"})"),
              "there is no \"nme\" (did you mean \"name\"?)");
    EXPECT_EQ(reason(R"({"op":"replace","path":"/l/2","value":0})"), "there is no item 2");
    EXPECT_EQ(reason(R"({"op":"remove","path":"/l/-"})"), "\"-\" is the place after the last item");
    EXPECT_EQ(reason(R"({"op":"add","path":"/l/x/y","value":0})"), "\"x\" is no index of an array");
    EXPECT_EQ(reason(R"({"op":"add","path":"/name/y","value":0})"), "\"name\" is a number");
    EXPECT_EQ(reason(R"({"op":"copy","from":"/l/9","path":"/l/0"})"), "there is no item 9");
    EXPECT_EQ(reason(R"({"op":"add","path":"/l/9","value":0})"), "it is no index from 0 to 2");
    EXPECT_EQ(reason(R"({"op":"remove","path":"/o"},{"op":"test","path":"/o/x","value":0})"),
              "there is no \"o\"; operations before it changed the root");
    EXPECT_EQ(reason(R"({"op":"add","path":"/n","value":{"a":1}},{"op":"remove","path":"/n/a/b"})"),
              "\"n.a\" is a number; an operation before it put \"n.a\" there");
    EXPECT_EQ(reason(R"({"op":"test","path":"/o/x","value":0})"),
              "the value there is another: \"y\"");
    EXPECT_EQ(reason(R"({"op":"test","path":"/o","value":0})"),
              "the value there is another: an object");
    const std::string longText = "\"" + repeated("x", 200) + "\"";
    EXPECT_EQ(reason(R"({"op":"add","path":"/t","value":)" + longText +
                     R"(},{"op":"test","path":"/t","value":0})"),
              "the value there is another: a string; an operation before it put \"t\" there");
}

TEST(patch, names_its_own_file_for_an_operation_that_is_malformed) {
    const ScratchFile document(R"({"a":1,"b":2})");
    const auto said = [&](const std::string& operation) {
        const ScratchFile patch("[{\"op\":\"remove\",\"path\":\"/a\"},\n " + operation + "]");
        const std::string err = orvid({"patch", patch.name(), document.name()}).err;
        const std::string start = "orvid: " + patch.name() + ":2:2: at [1]: operation 1 of the ";
        const std::string shown = " " + operation + "]\n ^\n";
        const std::size_t end = err.length() - std::min(shown.length(), err.length());
        return err.rfind(start, 0) == 0 && err.substr(end) == shown
                   ? err.substr(start.length(), end - start.length())
                   : err;
    };
    EXPECT_EQ(said(R"({"op":"cut","path":"/b"})"),
              "patch, \"cut\" of \"/b\": there is no such operation\n");
    EXPECT_EQ(said(R"({"op":"delete","path":"/b"})"),
              "patch, \"delete\" of \"/b\": there is no such operation\n");
    EXPECT_EQ(said(R"({"op":"Remov","path":"/b"})"),
              "patch, \"Remov\" of \"/b\": there is no such operation (did you mean "
              "\"remove\"?)\n");
    EXPECT_EQ(said(R"({"op":"add","path":"/c"})"),
              "patch, \"add\" of \"/c\": it has no \"value\"\n");
    EXPECT_EQ(said(R"({"op":"add","path":5,"value":1})"),
              "patch, \"add\": its \"path\" is no string\n");
    EXPECT_EQ(said(R"({"op":1,"path":"/b"})"), "patch: its \"op\" is no string\n");
    EXPECT_EQ(
        said(R"({"op":"remove","path":"b"})"),
        "patch, \"remove\" of \"b\": A JSON Pointer must be empty or begin with \"/\" (did you "
        "mean \"/b\"?)\n");
    EXPECT_NE(said(R"({"op":"remove","path":"l[0].x"})").find("(did you mean \"/l/0/x\"?)"),
              std::string::npos);
    EXPECT_NE(said(R"({"op":"remove","path":"l/0"})").find("(did you mean \"/l/0\"?)"),
              std::string::npos);
    EXPECT_EQ(said(R"({"op":"remove","path":"l["})"),
              "patch, \"remove\" of \"l[\": A JSON Pointer must be empty or begin with \"/\"\n");
    EXPECT_EQ(orvid({"patch", "-", document.name()}, "[7]"),
              failed(1,
                     "(standard input):1:2: at [0]: operation 0 of the patch: it is no object\n"
                     "[7]\n ^"));
}

TEST(merge, removes_for_null_and_keeps_the_order) {
    const ScratchFile patch(R"({"a":null,"c":{"d":[1]}})");
    EXPECT_EQ(orvid({"merge", "--compact", patch.name()}, R"({"b":1.0,"a":2,"c":3})"),
              printed("{\"b\":1.0,\"c\":{\"d\":[1]}}\n"));
}

TEST(check, says_nothing_of_a_good_document) {
    EXPECT_EQ(orvid({"check", k_settings, "-"}, "// note\n[1]"), printed(""));
}

TEST(check, shows_the_line_with_a_caret) {
    EXPECT_EQ(orvid({"check"}, "{\"port\": 80,\n \"port\": 81}"),
              (CommandResult{"",
                             "orvid: (standard input):2:2: at (root): Repeated key \"port\"\n"
                             " \"port\": 81}\n ^^^^^^\n",
                             1, 0}));
}

TEST(check, is_strict_where_other_verbs_are_not) {
    for (const char* const text : {"\"\xFF\"", R"({"a":1,"a":2})", "\v1"}) {
        EXPECT_EQ(orvid({"check"}, text).status, 1) << text;
        EXPECT_EQ(orvid({"print"}, text).status, 0) << text;
    }
    EXPECT_EQ(orvid({"check", "--no-comments"}, "[1] // note\n").status, 1);
}

TEST(check, names_the_line_among_lines) {
    const CommandResult result =
        orvid({"check", "--lines", "--on-error=skip"}, "1\n[1,2\n{\"a\":1,\"a\":2}\n");
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.err.rfind("orvid: (standard input):2:", 0), 0U) << result;
    EXPECT_NE(result.err.find("\norvid: (standard input):3:8: at (root): Repeated key \"a\"\n"),
              std::string::npos)
        << result;
}

/// In the order of the help.
std::vector<std::string> verbsOfHelp() {
    std::istringstream help(orvid({"--help"}).out);
    std::string line;
    while (std::getline(help, line) && line != "Verbs:") {
    }
    std::vector<std::string> verbs;
    while (std::getline(help, line) && line.rfind("  ", 0) == 0) {
        verbs.push_back(line.substr(2, line.find(' ', 2) - 2));
    }
    return verbs;
}

TEST(help, of_each_verb_has_examples) {
    for (const std::string& verb : verbsOfHelp()) {
        const CommandResult result = orvid({verb, "--help"});
        EXPECT_EQ(result.status, 0);
        EXPECT_NE(result.out.find("Examples:\n  orvid " + verb), std::string::npos) << result;
    }
    EXPECT_EQ(shell(R"("$0" --help >/dev/full)"),
              failed(3, "(standard output): No space left on device"));
}

/// What all verbs do alike is tested with these calls.
TEST(help, names_the_verbs_of_which_the_tests_have_a_call) {
    std::vector<std::string> called{"schema-path", "data-path"};  // which read no file
    for (const orvid_test::VerbCall& call : orvid_test::verbCalls("FILE")) {
        called.push_back(call.words.front());
    }
    std::vector<std::string> verbs = verbsOfHelp();
    std::sort(called.begin(), called.end());
    std::sort(verbs.begin(), verbs.end());
    EXPECT_EQ(called, verbs);
}

}  // namespace
