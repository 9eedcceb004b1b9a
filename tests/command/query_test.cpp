// SPDX-License-Identifier: MIT
//
// query, and the edits by query of set and remove.

#include "support/Command.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace {

using orvid_test::bytesOfFile;
using orvid_test::CommandResult;
using orvid_test::failed;
using orvid_test::orvid;
using orvid_test::printed;
using orvid_test::ScratchFile;
using orvid_test::withoutExcerpt;

const std::string k_text =
    R"({"l":[{"n":"a b","v":1.50},{"n":"c","v":2,"x":[1,{"v":3}]}],"":{"~\n":null}})";

TEST(query, writes_a_compact_line_for_each_result) {
    EXPECT_EQ(orvid({"query", "$..v"}, k_text), printed("1.50\n2\n3\n"));
    EXPECT_EQ(orvid({"query", "$.l[?@.v > 1.5]"}, k_text),
              printed(R"({"n":"c","v":2,"x":[1,{"v":3}]})"
                      "\n"));
    EXPECT_EQ(orvid({"query", "$..none"}, k_text), printed(""));
    EXPECT_EQ(orvid({"query", "$", "--indent", "1"}, "[1]"), printed("[\n 1\n]\n"));
}

TEST(query, writes_strings_raw) {
    EXPECT_EQ(orvid({"query", "$..n"}, k_text), printed("\"a b\"\n\"c\"\n"));
    EXPECT_EQ(orvid({"query", "--raw", "$..n"}, k_text), printed("a b\nc\n"));
}

TEST(query, writes_places) {
    EXPECT_EQ(orvid({"query", "--paths", "$..v"}, k_text),
              printed("$['l'][0]['v']\n$['l'][1]['v']\n$['l'][1]['x'][1]['v']\n"));
    EXPECT_EQ(orvid({"query", "--pointers", "$[''].*"}, k_text), printed("\"//~0\\n\"\n"));
    EXPECT_EQ(orvid({"query", "--paths", "$[''].*"}, k_text), printed("$['']['~\\n']\n"));
    EXPECT_EQ(orvid({"query", "--array", "--pointers", "$[''].*"}, k_text),
              printed("[\"//~0\\n\"]\n"));
}

TEST(query, counts_takes_the_first_and_makes_an_array) {
    EXPECT_EQ(orvid({"query", "--count", "$..v"}, k_text), printed("3\n"));
    EXPECT_EQ(orvid({"query", "--first", "$..v"}, k_text), printed("1.50\n"));
    EXPECT_EQ(orvid({"query", "--first", "$.none"}, k_text), printed(""));
    EXPECT_EQ(orvid({"query", "--array", "$..v"}, k_text), printed("[1.50,2,3]\n"));
    EXPECT_EQ(orvid({"query", "--array", "$.none"}, k_text), printed("[]\n"));
    EXPECT_EQ(orvid({"query", "--array", "--first", "$..v"}, k_text), printed("[1.50]\n"));
    EXPECT_EQ(orvid({"query", "--count", "--paths", "$"}, k_text),
              failed(2,
                     "--paths, --pointers and --count exclude each other; "
                     "see orvid query --help"));
}

TEST(query, ends_with_1_for_nothing_only_when_asked) {
    EXPECT_EQ(orvid({"query", "$.none"}, k_text).status, 0);
    EXPECT_EQ(orvid({"query", "--exit-status", "$.none"}, k_text).status, 1);
    EXPECT_EQ(orvid({"query", "--exit-status", "$.l"}, k_text).status, 0);
    const ScratchFile some(R"({"a":1})");
    const ScratchFile none("{}");
    EXPECT_EQ(orvid({"query", "--exit-status", "$.a", some.name(), none.name()}).status, 0);
    EXPECT_EQ(orvid({"query", "--exit-status", "--lines", "$.a"}, "{}\n{\"a\":1}\n{}\n").status, 0);
    EXPECT_EQ(orvid({"query", "--exit-status", "--lines", "$.a"}, "{}\n{}\n").status, 1);
}

TEST(query, goes_through_lines_on_several_threads) {
    std::string lines;
    std::string values;
    for (int i = 0; i < 3000; ++i) {
        lines += R"({"a":[)" + std::to_string(i) + R"(,"x"]})" + "\n";
        values += std::to_string(i) + "\n\"x\"\n";
    }
    EXPECT_EQ(orvid({"query", "--lines", "-j", "3", "$.a[*]"}, lines), printed(values));
    EXPECT_EQ(orvid({"query", "--lines", "--array", "$.a"}, "{\"a\":1}\n{}\n"),
              printed("[1]\n[]\n"));
}

TEST(query, shows_where_a_query_is_wrong) {
    const CommandResult result = orvid({"query", "$.a[?@.b = 1]"}, "{}");
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err,
              "orvid: query: Expected \"==\" for a comparison, found \"=\"\n"
              "$.a[?@.b = 1]\n"
              "         ^\n");
    EXPECT_EQ(orvid({"query", "$.a\n."}, "{}").err,
              "orvid: query: Expected a name or \"*\" after \".\", found the end\n"
              "$.a .\n"
              "     ^\n");
    EXPECT_EQ(orvid({"query", "--json-errors", "$.a[?@.b = 1]"}, "{}").err,
              "{\"status\":2,\"column\":10,\"message\":\"query: Expected \\\"==\\\" for a "
              "comparison, found \\\"=\\\"\"}\n");
    EXPECT_EQ(orvid({"query"}, "{}"), failed(2, "QUERY is required; see orvid query --help"));
}

TEST(query, finds_the_same_one_value_in_text_and_tree) {
    for (const char* const text :
         {"{\"a\" : [ 1.50, {\"b\": [ 2 ]} ]}", "{\"a\":[0,{\"b\":\"x\\ty\"}]}\n",
          "{\"a\":[0,{\"b\":1,\"b\":{}}]}", "{\"a\":[0,{\"b\":null}], // one\n\"c\":{}}"}) {
        for (const char* const query :
             {"$.a[1].b", "$.a[0]", "$", "$['a'][-1]", "$.a[2]", "$.a.b"}) {
            EXPECT_EQ(orvid({"query", query}, text), orvid({"query", query, "--ascii"}, text))
                << query << " " << text;
            EXPECT_EQ(orvid({"query", query, "--exit-status"}, text).status,
                      orvid({"query", query, "--exit-status", "--count"}, text).status);
        }
    }
    EXPECT_EQ(orvid({"query", "--lines", "--raw", "$.a"}, "{\"a\":\"x\"}\n{}\n{\"a\":[ 1 ]}\n"),
              printed("x\n[1]\n"));
}

TEST(query, reports_errors_wherever_they_are) {
    EXPECT_EQ(orvid({"query", "$.a", "--count"}, "{\"a\":1,\n\"b\":tru}"),
              orvid({"query", "$.a", "--paths"}, "{\"a\":1,\n\"b\":tru}"));
    EXPECT_EQ(orvid({"query", "$.a"}, "{\"a\":1} 2"),
              failed(1,
                     "(standard input):1:9: at (root): Unexpected '2': the document is complete\n"
                     "{\"a\":1} 2\n        ^"));
    EXPECT_EQ(orvid({"query", "$.a"}, "{\"a\":1, // one\n\"a\":2}"), printed("2\n"));
}

TEST(select, writes_records_as_they_are) {
    const std::string records =
        "{\"a\": 1.0}\r\n {\"a\":null, \"b\":[2]}\n\n{\"a\":false}\n{\"a\":[]}\n{}";
    EXPECT_EQ(orvid({"select", "--lines", "$.a"}, records),
              printed("{\"a\": 1.0}\r\n{\"a\":[]}\n"));
    EXPECT_EQ(orvid({"select", "--lines", "--not", "$.a"}, records),
              printed(" {\"a\":null, \"b\":[2]}\n{\"a\":false}\n{}\n"));
    EXPECT_EQ(orvid({"select", "--lines", "-j", "2", "$.b[?@ > 1]"}, records),
              printed(" {\"a\":null, \"b\":[2]}\n"));
    EXPECT_EQ(orvid({"select", "--lines", "$[?@ == 1]"}, records), printed("{\"a\": 1.0}\r\n"));
}

TEST(select, writes_whole_documents_and_reports_errors) {
    const ScratchFile some("{ \"a\": 1 }\n");
    const ScratchFile other("{}\n");
    EXPECT_EQ(orvid({"select", "$.a", some.name(), other.name()}), printed("{ \"a\": 1 }\n"));
    EXPECT_EQ(
        orvid({"select", "--lines", "$.a", "--on-error", "skip"}, "{\"a\":1}\n{\"b\":tru}\n").out,
        "{\"a\":1}\n");
    EXPECT_EQ(orvid({"select", "$."}, "{}").status, 2);
}

TEST(query, selects_flat_records_whatever_their_other_members_are) {
    const std::string records =
        "{\"ok\":false,\"id\":5}\n{\"a\":null,\"id\":7}\n{\"id\":1}\n{\"x\":9}\n";
    EXPECT_EQ(orvid({"select", "--lines", "$[?$.id > 1]"}, records),
              printed("{\"ok\":false,\"id\":5}\n{\"a\":null,\"id\":7}\n"));
    EXPECT_EQ(orvid({"select", "--lines", "$[?$.ok == false]"}, records),
              printed("{\"ok\":false,\"id\":5}\n"));
    EXPECT_EQ(orvid({"select", "--lines", "$.ok"}, records), printed(""));
}

TEST(set_query, sets_all_that_is_selected) {
    EXPECT_EQ(orvid({"set", "--compact", "--query", "$..v", "[0]"}, R"({"v":1,"a":{"v":2}})"),
              printed("{\"v\":[0],\"a\":{\"v\":[0]}}\n"));
    const ScratchFile file(R"([1,2,3])");
    EXPECT_EQ(orvid({"set", "--compact", "--query", "$[?@ > 1]", "null", "-i", file.name()}),
              printed(""));
    EXPECT_EQ(bytesOfFile(file.name()), "[1,null,null]\n");
    EXPECT_EQ(orvid({"set", "--query", "$"}, "1"),
              failed(2, "VALUE is required; see orvid set --help"));
    EXPECT_EQ(orvid({"set", "--query", "$.", "1"}, "1").status, 2);
}

TEST(set_query, notes_that_nothing_is_selected) {
    const std::string note =
        "orvid: the query selects nothing, so nothing is set: --query makes nothing new\n";
    const CommandResult none = orvid({"set", "--compact", "--query", "$.none", "0"}, "[1]");
    EXPECT_EQ(none.out, "[1]\n");
    EXPECT_EQ(none.err, note);
    EXPECT_EQ(none.status, 0);
    EXPECT_EQ(orvid({"set", "--lines", "--query", "$.a", "0"}, "{}\n{\"b\":1}\n").err, note);
    EXPECT_EQ(orvid({"set", "--lines", "--query", "$.a", "0"}, "{}\n{\"a\":1}\n{}\n").err, "");
    EXPECT_EQ(orvid({"set", "--lines", "--query", "$.a", "0"}, "").err, "");
    const ScratchFile with(R"({"a":1})");
    const ScratchFile without("{}");
    EXPECT_EQ(orvid({"set", "--query", "$.a", "0", without.name(), without.name()}).err, note);
    EXPECT_EQ(orvid({"set", "--query", "$.a", "0", without.name(), with.name()}).err, "");
    EXPECT_EQ(orvid({"set", "--query", "$.a", "0"}, "{").err.find(note), std::string::npos);
}

TEST(set_query, keeps_comments_and_layout) {
    EXPECT_EQ(orvid({"set", "--query", "$..v", "0"}, "[{ \"v\": 1 }, // one\n {\"v\" : 2}]\n"),
              printed("[{ \"v\": 0 }, // one\n {\"v\" : 0}]\n"));
    EXPECT_EQ(orvid({"remove", "--query", "$[?@.v > 1]"}, "[{ \"v\": 1 }, // one\n {\"v\" : 2}]\n"),
              printed("[{ \"v\": 1 } // one\n]\n"));
}

TEST(remove_query, removes_all_that_is_selected) {
    EXPECT_EQ(orvid({"remove", "--compact", "--query", "$..v"}, R"({"v":1,"a":[{"v":2}]})"),
              printed("{\"a\":[{}]}\n"));
    EXPECT_EQ(orvid({"remove", "--lines", "--query", "$[?@ < 0]"}, "[1,-1]\n[2]\n"),
              printed("[1]\n[2]\n"));
    EXPECT_EQ(withoutExcerpt(orvid({"remove", "--query", "$"}, "1")),
              failed(1, "(standard input):1:1: at (root): The whole document cannot be removed"));
    const CommandResult none = orvid({"remove", "--query", "$.none"}, "[1]");
    EXPECT_EQ(none.out, "[1]");
    EXPECT_EQ(none.err, "orvid: the query selects nothing, so nothing is removed\n");
    EXPECT_EQ(none.status, 0);
    EXPECT_EQ(orvid({"remove", "--query", "$.a", "--also", "b"}, "{}"),
              failed(2, "--also goes with PATH only; see orvid remove --help"));
    EXPECT_EQ(orvid({"remove"}, "{}"), failed(2, "PATH is required; see orvid remove --help"));
}

TEST(query, refuses_options_that_do_not_go_together) {
    EXPECT_EQ(orvid({"query", "--array", "--raw", "$"}, "1"),
              failed(2, "--raw and --array exclude each other; see orvid query --help"));
    EXPECT_EQ(orvid({"query", "--array", "--count", "$"}, "1"),
              failed(2, "--count and --array exclude each other; see orvid query --help"));
    EXPECT_EQ(orvid({"query", "--pointers", "--raw", "$"}, "1"),
              failed(2,
                     "--raw is for values: --paths, --pointers and --count exclude it; see orvid "
                     "query --help"));
}

TEST(query, reports_the_column_of_its_error_to_programs) {
    EXPECT_EQ(orvid({"query", "--json-errors", "$.["}, "1").err,
              "{\"status\":2,\"column\":3,\"message\":\"query: Expected a name or \\\"*\\\" after "
              "\\\".\\\", found \\\"[\\\"\"}\n");
    EXPECT_NE(orvid({"get", "--json-errors", "a.."}, R"({"a":1})").err.find("\"column\":3,"),
              std::string::npos);
}

TEST(query, says_that_a_regular_expression_of_its_own_matches_nothing) {
    const std::string start = "orvid: the query has ";
    const std::string end = ", which is no regular expression of RFC 9485 and matches nothing";
    const auto notes = [](std::vector<std::string> call, const std::string& input) {
        const CommandResult result = orvid(std::move(call), input);
        EXPECT_EQ(result.status, 0) << result;
        return result.err;
    };
    const std::string digits = start + R"("\d")" + end + R"(; \d is written [0-9])" + "\n";
    EXPECT_EQ(notes({"query", "$[?match(@, 'x(')]"}, R"(["x("])"), start + "\"x(\"" + end + "\n");
    EXPECT_EQ(notes({"query", "--lines", R"($[?search(@, '\\d')])"}, "[\"1\"]\n[\"2\"]\n"), digits);
    EXPECT_EQ(notes({"select", R"($[?search(@, '\\d')])"}, R"(["1"])"), digits);
    EXPECT_EQ(notes({"set", "--query", R"($[?search(@, '\\d')])", "1"}, "[]"), digits);
    EXPECT_EQ(notes({"remove", "--query", R"($[?search(@, '\\d')])"}, "[]"), digits);
    EXPECT_EQ(notes({"query", "$[?match(@.a, 'x(') || search(@.b, 'x(')]"}, "[]"),
              start + "\"x(\"" + end + "\n");
    EXPECT_EQ(notes({"query", "$[?match(@.t, @.p)]"}, R"([{"t":"x(","p":"x("}])"), "");
}

TEST(query, that_asks_for_a_length_as_for_a_member_gets_a_note) {
    const auto notes = [](const std::string& query, const std::string& input) {
        return orvid({"query", query}, input).err;
    };
    const std::string start = "orvid: the query selects nothing: ";
    EXPECT_EQ(notes("$.l.length", R"({"l":[1,2]})"),
              start + "\"l\" is an array; its length: orvid length l\n");
    EXPECT_EQ(notes("$.l[1]['a b'].length", R"({"l":[0,{"a b":"x"}]})"),
              start + "\"l[1].a b\" is a string; its length: orvid length 'l[1].a b'\n");
    EXPECT_EQ(notes("$.length", "[]"), start + "the root is an array; its length: orvid length\n");
    EXPECT_EQ(notes("$.l.length", R"({"l":{"length":1}})"), "");
    EXPECT_EQ(notes("$.l.length", R"({"l":{}})"), "");
    const std::string inFilter =
        start +
        "there is no member \"length\", and the length of an array or a string is "
        "length(@.a)\n";
    EXPECT_EQ(notes("$[?@.l.length > 1]", R"([{"l":[1,2]}])"), inFilter);
    EXPECT_EQ(notes("$[?@.l.length>1]", R"([{"l":[1,2]}])"), inFilter);
    EXPECT_EQ(notes("$[?@.length > 1]", R"([{"length":1}])"), "");
    EXPECT_EQ(notes("$[?@.lengths > 1]", "[]"), "");
    EXPECT_EQ(notes("$[?length(@.l) > 2]", R"([{"l":[1,2]}])"), "");
}

TEST(query, is_written_on_one_line_in_the_hint_that_it_lacks_its_dollar) {
    EXPECT_EQ(orvid({"query", "a\n.b"}, "{}").err,
              "orvid: query: Expected \"$\" at the beginning, found \"a\"; write '$.a .b'\n"
              "a .b\n"
              "^\n");
}

}  // namespace
