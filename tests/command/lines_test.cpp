// SPDX-License-Identifier: MIT
//
// --lines: one line in, one line out, whatever ends a line; what becomes of lines that fail; and
// that threads change nothing.

#include "support/Command.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using orvid_test::bytesOfFile;
using orvid_test::CommandResult;
using orvid_test::failed;
using orvid_test::orvid;
using orvid_test::printed;
using orvid_test::repeated;
using orvid_test::ScratchFile;
using orvid_test::shell;

const std::string k_in = "(standard input)";

TEST(lines, go_one_in_and_one_out_for_every_verb_that_takes_them) {
    const std::string two = "{\"a\": [1.0, 2]}\n{\"a\": [3]}\n";
    EXPECT_EQ(orvid({"print", "--lines"}, two), printed("{\"a\":[1.0,2]}\n{\"a\":[3]}\n"));
    EXPECT_EQ(orvid({"get", "--lines", "a[0]"}, two), printed("1.0\n3\n"));
    EXPECT_EQ(orvid({"set", "--lines", "a[0]", "0"}, two),
              printed("{\"a\": [0, 2]}\n{\"a\": [0]}\n"));
    EXPECT_EQ(orvid({"insert", "--lines", "a[0]=0"}, two),
              printed("{\"a\": [0, 1.0, 2]}\n{\"a\": [0, 3]}\n"));
    EXPECT_EQ(orvid({"remove", "--lines", "a[0]"}, two), printed("{\"a\": [2]}\n{\"a\": []}\n"));
    EXPECT_EQ(orvid({"find", "--lines", "--in=a", "", "3", "--on-error=null"}, two).out,
              "null\n3\n");
    const ScratchFile merge("{\"a\":null,\"b\":1}");
    EXPECT_EQ(orvid({"merge", merge.name(), "--lines"}, two), printed("{\"b\": 1}\n{\"b\": 1}\n"));
    const ScratchFile patch(R"([{"op":"remove","path":"/a/0"}])");
    EXPECT_EQ(orvid({"patch", patch.name(), "--lines"}, two),
              printed("{\"a\": [2]}\n{\"a\": []}\n"));
    const ScratchFile schema(R"({"properties":{"d":{"default":7}}})");
    EXPECT_EQ(orvid({"defaults", "--fill", "--schema", schema.name(), "--lines"}, two),
              printed("{\"a\": [1.0, 2], \"d\": 7}\n{\"a\": [3], \"d\": 7}\n"));
    EXPECT_EQ(orvid({"check", "--lines"}, two), printed(""));
}

TEST(lines, may_end_in_cr_lf_lack_the_last_newline_and_begin_with_a_byte_order_mark) {
    EXPECT_EQ(orvid({"print", "--lines"}, "\xEF\xBB\xBF[1]\r\n\r\n[2]\r\n3"),
              printed("[1]\n[2]\n3\n"));
    EXPECT_EQ(orvid({"print", "--lines"}, "[1]\n\xEF\xBB\xBF[2]\n").status, 1);
    EXPECT_EQ(orvid({"print", "--lines"}, ""), printed(""));
}

TEST(lines, that_are_edited_keep_what_is_not_changed) {
    const std::string records =
        "\xEF\xBB\xBF{ \"a\" : 1.0, \"b\":[1,2 , 3] , \"c\":\"\\u00e9\" }\n"
        "{\"a\":1E3}  \n"
        "  {\"a\":5 /* x */, \"d\":1,} // c\r\n"
        "{\"a\": 1, \"b\" :\"\xFF\\ud83d\"}\n";
    EXPECT_EQ(orvid({"set", "--lines", "a=2"}, records),
              printed("\xEF\xBB\xBF{ \"a\" : 2, \"b\":[1,2 , 3] , \"c\":\"\\u00e9\" }\n"
                      "{\"a\":2}  \n"
                      "  {\"a\":2 /* x */, \"d\":1,} // c\r\n"
                      "{\"a\": 2, \"b\" :\"\xFF\\ud83d\"}\n"));
    EXPECT_EQ(orvid({"remove", "--lines", "a"}, records),
              printed("\xEF\xBB\xBF{ \"b\":[1,2 , 3] , \"c\":\"\\u00e9\" }\n"
                      "{}  \n"
                      "  {\"d\":1,} // c\r\n"
                      "{\"b\" :\"\xFF\\ud83d\"}\n"));
    EXPECT_EQ(orvid({"set", "--lines", "a=1.0", "e={\"x\":[1]}"}, "{ \"a\" : 1.0 }\n{\"a\":1.0}\n"),
              printed("{ \"a\" : 1.0, \"e\" : { \"x\" : [1] } }\n"
                      "{\"a\":1.0,\"e\":{\"x\":[1]}}\n"));
    EXPECT_EQ(orvid({"set", "--lines", "--compact", "a=2"}, "{ \"a\" : 1.0 } // c\n"),
              printed("{\"a\":2}\n"));
    EXPECT_EQ(orvid({"remove", "--lines", "--strict", "a"}, "{ \"a\" : 1.0 } // c\n").err,
              "orvid: (standard input):1:15: at (root): Comments are not allowed\n");
}

TEST(lines, of_one_document_get_a_hint_at_the_first) {
    const std::string hint =
        "; with --lines every line is a document: for documents of several lines write "
        "split --values before it";
    const auto first = [](const std::string& text) {
        const std::string err = orvid({"get", "--lines", "a"}, text).err;
        return err.substr(0, err.find('\n'));
    };
    const std::string early = ": at (root): The text ends before the document is complete";
    const std::string open = " (the object that begins at column 1 is not closed)";
    EXPECT_EQ(first("{\n \"a\": 1\n}\n"), "orvid: (standard input):1:2" + early + open + hint);
    EXPECT_EQ(first("{\"a\":1}\n{\n"), "orvid: (standard input):2:2" + early + open)
        << "a later line";
    EXPECT_EQ(first("{\"a\" 1}\n").find(hint), std::string::npos) << "another error";
}

TEST(lines, that_get_a_suspicious_new_key_are_edited_without_a_note) {
    const std::string record = R"({"a.b":1,"server":{}})";
    for (const char* const path : {"rate ", " rate", "server.rate:", "a.b"}) {
        EXPECT_NE(orvid({"set", path, "2"}, record).err, "") << "a note for a document: " << path;
        EXPECT_EQ(orvid({"set", "--lines", path, "2"}, record + "\n").err, "") << path;
    }
    EXPECT_NE(orvid({"insert", "rate =2"}, record).err, "") << "a note for a document";
    EXPECT_EQ(orvid({"insert", "--lines", "rate =2"}, record + "\n").err, "");
    EXPECT_EQ(orvid({"set", "--lines", "rate ", "2"}, record + "\n" + record + "\n"),
              printed(repeated("{\"a.b\":1,\"server\":{},\"rate \":2}\n", 2)));
}

TEST(lines, that_were_empty_keep_the_whitespace_around_them) {
    EXPECT_EQ(orvid({"set", "--lines", "a=1"}, "{}\r\n {} \r\n{ /* c */ }\r\n"),
              printed("{\"a\":1}\r\n {\"a\":1} \r\n{ /* c */\"a\": 1}\r\n"));
}

TEST(lines, that_are_edited_stay_one_line_each) {
    const ScratchFile merge(R"({"b": {"c": [1, {}]}, "d": 2})");
    EXPECT_EQ(orvid({"merge", merge.name(), "--lines"}, "{}\n{/* c */}\n7\n"),
              printed("{\"b\":{\"c\":[1,{}]},\"d\":2}\n"
                      "{/* c */\"b\": {\"c\": [1, {}]}, \"d\": 2}\n"
                      "{\"b\":{\"c\":[1,{}]},\"d\":2}\n"));
}

TEST(lines, that_are_blank_are_skipped_and_counted) {
    EXPECT_EQ(
        orvid({"print", "--lines", "--stats"}, "\n1\n \t\r\n2\n\n"),
        (CommandResult{"1\n2\n", "orvid: (standard input): 5 lines, 2 done, 3 blank, 0 failed\n", 0,
                       0}));
}

const std::string k_mixed = "{\"n\":1}\n\n{\"n\" 2}\r\n{\"m\":3}\n{\"n\":4}\n";
const std::string k_error = "orvid: (standard input):3:6: at n: Unexpected '2': expected ':'\n";
const std::string k_missing =
    "orvid: (standard input):4:1: at (root): path \"n\" not found, there is no \"n\"\n";

TEST(on_error, stop_ends_the_run_after_what_was_done) {
    const CommandResult stopped{"1\n", k_error, 1, 0};
    EXPECT_EQ(orvid({"get", "--lines", "n"}, k_mixed), stopped);
    EXPECT_EQ(orvid({"get", "--lines", "n", "--on-error=stop", "-j2"}, k_mixed), stopped);
}

TEST(on_error, skip_writes_nothing_for_the_line) {
    EXPECT_EQ(orvid({"get", "--lines", "n", "--on-error=skip"}, k_mixed),
              (CommandResult{"1\n4\n", k_error + k_missing, 1, 0}));
}

TEST(on_error, passthrough_writes_the_line_as_it_was) {
    EXPECT_EQ(orvid({"get", "--lines", "n", "--on-error=passthrough"}, k_mixed),
              (CommandResult{"1\n{\"n\" 2}\r\n{\"m\":3}\n4\n", k_error + k_missing, 1, 0}));
}

TEST(on_error, null_writes_null) {
    EXPECT_EQ(orvid({"get", "--lines", "n", "--on-error=null"}, k_mixed),
              (CommandResult{"1\nnull\nnull\n4\n", k_error + k_missing, 1, 0}));
    EXPECT_EQ(orvid({"get", "--lines", "n", "--on-error=nil"}, k_mixed).status, 2);
}

TEST(on_error, does_not_hide_a_malformed_path) {
    EXPECT_EQ(orvid({"get", "--lines", "n[", "--on-error=skip"}, "{\"n\":[1]}\n{\"n\":[2]}\n"),
              failed(2, "path \"n[\": it ends where a key or an index is expected\nn[\n  ^"));
}

TEST(max_line, fails_longer_lines_and_only_those) {
    const std::string lines = "[1,2]\n[1,23]\n[3]\n";
    EXPECT_EQ(orvid({"print", "--lines", "--max-line", "5", "--on-error=passthrough"}, lines),
              (CommandResult{lines, "orvid: (standard input):2: the line is longer than 5 bytes\n",
                             1, 0}));
    EXPECT_EQ(orvid({"print", "--lines", "--max-line=0"}, lines).status, 2);
    EXPECT_EQ(orvid({"print", "--lines", "--max-line=4G"}, lines).status, 2);
    EXPECT_EQ(orvid({"print", "--lines", "--max-line=1T"}, lines).status, 2);
}

TEST(max_line, holds_for_lines_that_are_longer_than_what_is_read_at_once) {
    const std::string longLine = "[\"" + repeated("x", 5000000) + "\"]\n";
    const std::string lines = "1\n" + longLine + "2\n" + longLine;
    const std::string error = ": the line is longer than 1048576 bytes\n";
    const std::string errors = "orvid: " + k_in + ":2" + error + "orvid: " + k_in + ":4" + error;
    for (const char* const jobs : {"-j1", "-j3"}) {
        const auto run = [&](const char* onError) {
            return orvid({"print", "--lines", jobs, "--max-line=1M", onError}, lines);
        };
        EXPECT_TRUE(run("--on-error=passthrough") == (CommandResult{lines, errors, 1, 0}));
        EXPECT_EQ(run("--on-error=skip"), (CommandResult{"1\n2\n", errors, 1, 0}));
        EXPECT_EQ(run("--on-error=null"), (CommandResult{"1\nnull\n2\nnull\n", errors, 1, 0}));
        EXPECT_TRUE(orvid({"print", "--lines", jobs}, lines) == printed(lines));
    }
}

/// Lines of many lengths, some of them blank or malformed.
std::string manyLines() {
    std::string lines;
    for (int i = 0; i < 60000; ++i) {
        const std::string number = std::to_string(i);
        lines += "{\"id\": " + number + ".0, \"t\": \"" +
                 repeated("x", static_cast<std::size_t>(i * 7919 % 101)) + "\"}" +
                 (i % 1000 == 7 ? "}\n" : "\n") + (i % 5000 == 0 ? "\n" : "");
    }
    return lines;
}

TEST(jobs, change_neither_output_nor_errors) {
    const std::string lines = manyLines();
    for (const char* const onError : {"--on-error=stop", "--on-error=null"}) {
        const std::vector<std::string> call{"set",    "--lines", "t.u=1",
                                            "id=[1]", "--stats", onError};
        std::vector<std::string> threaded = call;
        threaded.emplace_back("-j4");
        EXPECT_TRUE(orvid(call, lines) == orvid(threaded, lines)) << onError;
        threaded[2] = "u=1";
        std::vector<std::string> single = threaded;
        single.back() = "-j1";
        const CommandResult result = orvid(single, lines);
        EXPECT_TRUE(result == orvid(threaded, lines)) << onError;
        EXPECT_GT(result.out.length(), 400U);
    }
}

TEST(jobs, must_be_a_number_of_threads) {
    EXPECT_EQ(orvid({"print", "--lines", "-j", "0"}, "1").status, 2);
    EXPECT_EQ(orvid({"print", "--lines", "-j", "many"}, "1").status, 2);
}

TEST(lines_in_place, replace_the_file_when_the_run_came_to_its_end) {
    const ScratchFile file("{\"a\":1}\n{\"a\":2.0}\n");
    EXPECT_EQ(orvid({"set", "--lines", "b=0", "-i", file.name(), "-j2"}), printed(""));
    EXPECT_EQ(bytesOfFile(file.name()), "{\"a\":1,\"b\":0}\n{\"a\":2.0,\"b\":0}\n");
    EXPECT_EQ(orvid({"set", "--lines", "b.c=0", "-i", file.name()}).status, 1);
    EXPECT_EQ(bytesOfFile(file.name()), "{\"a\":1,\"b\":0}\n{\"a\":2.0,\"b\":0}\n");
}

TEST(lines, are_written_as_soon_as_they_are_done) {
    EXPECT_EQ(shell(R"(mkfifo "$1.a" "$1.b"
"$0" get --lines n <"$1.a" >"$1.b" &
exec 3>"$1.a" 4<"$1.b"
for n in 1 2 3; do echo "{\"n\": $n}" >&3; read -r answer <&4; echo "answer $answer"; done
exec 3>&-; wait; rm "$1.a" "$1.b")",
                    {ScratchFile("").name()}),
              printed("answer 1\nanswer 2\nanswer 3\n"));
}

TEST(lines, tell_of_a_full_disk) {
    const std::string lines = repeated("[1]\n", 100000);
    for (const char* const jobs : {"-j1", "-j2"}) {
        EXPECT_EQ(shell(R"("$0" print --lines "$1" >/dev/full)", {jobs}, lines),
                  failed(3, "(standard output): No space left on device"));
    }
}

TEST(lines, tell_of_a_folder) {
    EXPECT_EQ(orvid({"print", "--lines", "/"}), failed(3, "/: Is a directory"));
    EXPECT_EQ(orvid({"print", "--lines", "-j2", "/"}), failed(3, "/: Is a directory"));
}

TEST(lines, keep_their_byte_order_mark_whatever_is_selected) {
    const std::string mark = "\xEF\xBB\xBF";
    const std::string records = mark + "{\"a\":1}\n{\"b\":2}\n";
    EXPECT_EQ(orvid({"select", "--lines", "$.a"}, records), printed(mark + "{\"a\":1}\n"));
    EXPECT_EQ(orvid({"select", "--lines", "$.b"}, records), printed(mark + "{\"b\":2}\n"));
    EXPECT_EQ(orvid({"select", "--lines", "--not", "-j2", "$.a"}, records),
              printed(mark + "{\"b\":2}\n"));
}

TEST(lines, keep_the_byte_order_mark_of_the_first_file_alone) {
    const std::string mark = "\xEF\xBB\xBF";
    const ScratchFile first(mark + "{\"a\":1}\n");
    const ScratchFile second(mark + "{\"a\":2}\n");
    const std::string records = mark + "{\"a\":1}\n{\"a\":2}\n";
    EXPECT_EQ(orvid({"select", "--lines", "$.a", first.name(), second.name()}), printed(records));
    EXPECT_EQ(orvid({"remove", "--lines", "--if-present", "b", first.name(), second.name()}),
              printed(records));
    EXPECT_EQ(orvid({"set", "-i", "--lines", "a=3", first.name(), second.name()}), printed(""));
    EXPECT_EQ(bytesOfFile(second.name()), mark + "{\"a\":3}\n");
}

TEST(lines, keep_their_byte_order_mark_whatever_becomes_of_the_first_that_fails) {
    const std::string mark = "\xEF\xBB\xBF";
    const std::string records = mark + "[1\n{}\n";
    const auto out = [&](std::vector<std::string> words, const std::string& onError) {
        words.insert(words.end(), {"--lines", "--on-error=" + onError});
        return orvid(words, records).out;
    };
    for (const auto& call :
         {std::vector<std::string>{"set", "n=1"}, {"select", "$[?$.n]", "--not"}}) {
        const std::string second = call.front() == "set" ? "{\"n\":1}\n" : "{}\n";
        EXPECT_EQ(out(call, "null"), mark + "null\n" + second);
        EXPECT_EQ(out(call, "passthrough"), mark + "[1\n" + second);
        EXPECT_EQ(out(call, "skip"), mark + second);
        EXPECT_EQ(out(call, "stop"), "");
    }
    EXPECT_EQ(out({"type"}, "null"), "null\nobject\n");
    EXPECT_EQ(out({"set", "n=1", "--max-line=2"}, "null"), mark + "null\n{\"n\":1}\n");
    EXPECT_EQ(out({"set", "n=1", "--max-line=1"}, "null"), mark + "null\nnull\n");
}

}  // namespace
