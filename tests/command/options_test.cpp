// SPDX-License-Identifier: MIT
//
// The options that verbs share: layouts, colour, raw strings, editing in place, several files,
// errors as JSON.

#include "support/Command.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

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
using orvid_test::shell;
using orvid_test::withoutExcerpt;

const std::string k_document = R"({"b":[1.50,{}],"a":"é\n"})";

TEST(indent, is_the_number_of_spaces_for_a_level) {
    EXPECT_EQ(orvid({"print", "--indent", "1"}, k_document),
              printed("{\n \"b\": [\n  1.50,\n  {}\n ],\n \"a\": \"é\\n\"\n}\n"));
    EXPECT_EQ(orvid({"print", "--indent=0"}, k_document),
              printed("{\"b\":[1.50,{}],\"a\":\"é\\n\"}\n"));
    EXPECT_EQ(orvid({"print", "--indent", "81"}, k_document).status, 2);
    EXPECT_EQ(orvid({"print", "--indent", "x"}, k_document).status, 2);
}

TEST(tab, indents_by_a_tab_for_a_level) {
    EXPECT_EQ(orvid({"set", "b", "[1]", "--tab"}, R"({"b":0})"),
              printed("{\n\t\"b\": [\n\t\t1\n\t]\n}\n"));
}

TEST(compact, writes_one_line) {
    EXPECT_EQ(orvid({"print", "--compact"}, k_document),
              printed("{\"b\":[1.50,{}],\"a\":\"é\\n\"}\n"));
}

TEST(sort_keys, orders_members_at_all_levels_when_writing) {
    EXPECT_EQ(
        orvid({"print", "--compact", "--sort-keys"}, R"({"b":{"d":1,"c":2},"a":[{"z":0,"y":0}]})"),
        printed("{\"a\":[{\"y\":0,\"z\":0}],\"b\":{\"c\":2,\"d\":1}}\n"));
}

TEST(ascii, escapes_all_other_characters) {
    EXPECT_EQ(orvid({"get", "--ascii", "a"}, R"({"a":"é😀"})"),
              printed("\"\\u00E9\\uD83D\\uDE00\"\n"));
    EXPECT_EQ(
        orvid({"print", "--ascii"}, "\"\xFF\""),
        failed(
            1,
            "(standard input):1:1: at (root): holds bytes that are no UTF-8, which --ascii cannot "
            "write\n\"?\"\n^"));
}

TEST(color, is_put_around_tokens_when_asked_for) {
    EXPECT_EQ(orvid({"print", "--compact", "--color=always"}, R"({"k":["s",-1,true]})"),
              printed("{\x1B[34;1m\"k\"\x1B[0m:[\x1B[32m\"s\"\x1B[0m,\x1B[36m-1\x1B[0m,\x1B[35mtrue"
                      "\x1B[0m]}\n"));
    EXPECT_EQ(orvid({"print", "--color", "blue"}, k_document).status, 2);
}

TEST(color, is_absent_where_output_is_no_terminal) {
    EXPECT_EQ(orvid({"print", "--compact", "--color=auto"}, "[1]"), printed("[1]\n"));
    EXPECT_EQ(orvid({"print", "--compact", "--color=never"}, "[1]"), printed("[1]\n"));
}

TEST(raw, writes_strings_without_quotes_and_escapes) {
    EXPECT_EQ(orvid({"get", "--raw", "a"}, k_document), printed("é\n\n"));
    EXPECT_EQ(orvid({"get", "--raw", "b[0]"}, k_document), printed("1.50\n"));
    EXPECT_EQ(orvid({"find", "--raw", "", "\"x\""}, R"(["x"])"), printed("x\n"));
}

TEST(raw, keeps_a_line_to_each_line) {
    EXPECT_EQ(orvid({"get", "--raw", "--lines", "a"}, "{\"a\":\"x\"}\n{\"a\":\"y\\nz\"}\n"),
              printed("x\n\"y\\nz\"\n"));
}

TEST(several_files, are_each_a_document) {
    const ScratchFile first("{\"a\":1}");
    const ScratchFile second("{\"a\":[2]}");
    EXPECT_EQ(orvid({"get", "--compact", "a", first.name(), "-", second.name()}, "{\"a\":0}"),
              printed("1\n0\n[2]\n"));
}

TEST(several_files, are_worked_on_when_one_of_them_fails) {
    const ScratchFile good("{\"a\":1}");
    const ScratchFile bad("{\"a\" 1}");
    const CommandResult result = orvid({"get", "a", bad.name(), "/no/such/file", good.name()});
    EXPECT_EQ(result.out, "1\n");
    EXPECT_EQ(result.status, 3);
    EXPECT_EQ(result.err, "orvid: " + bad.name() +
                              ":1:6: at a: Unexpected '1': expected ':'\n{\"a\" 1}\n     ^\n"
                              "orvid: /no/such/file: No such file or directory\n");
}

TEST(in_place, gives_each_file_its_result_and_prints_nothing) {
    const ScratchFile first("{\"a\":1}");
    const ScratchFile second("{\"b\":1.0}");
    EXPECT_EQ(orvid({"set", "a=2", "--compact", "-i", first.name(), second.name()}), printed(""));
    EXPECT_EQ(bytesOfFile(first.name()), "{\"a\":2}\n");
    EXPECT_EQ(bytesOfFile(second.name()), "{\"b\":1.0,\"a\":2}\n");
}

TEST(in_place, keeps_the_mode_and_follows_a_link) {
    const ScratchFile file("[1]");
    ASSERT_EQ(chmod(file.name().c_str(), 0640), 0);
    const std::string link = file.name() + "-link";
    ASSERT_EQ(symlink(file.name().c_str(), link.c_str()), 0);
    EXPECT_EQ(orvid({"print", "--compact", "--in-place", link}), printed(""));
    struct stat status = {};
    ASSERT_EQ(stat(file.name().c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777U, 0640U);
    EXPECT_EQ(bytesOfFile(file.name()), "[1]\n");
    EXPECT_EQ(unlink(link.c_str()), 0);
}

TEST(in_place, leaves_a_file_alone_when_any_edit_fails) {
    const ScratchFile file("{\"a\": 1}");
    EXPECT_EQ(withoutExcerpt(orvid({"set", "b=1", "a.c=2", "-i", file.name()})),
              failed(1, file.name() + ":1:7: at a: path \"a.c\" not found: \"a\" is a number"));
    EXPECT_EQ(bytesOfFile(file.name()), "{\"a\": 1}");
}

TEST(in_place, keeps_the_member_meta_when_printing) {
    const ScratchFile file("{\"meta\":1,\"a\":2}");
    EXPECT_EQ(orvid({"print", "-i", "--compact", file.name()}), printed(""));
    EXPECT_EQ(bytesOfFile(file.name()), "{\"meta\":1,\"a\":2}\n");
}

TEST(in_place, needs_a_file) {
    EXPECT_EQ(orvid({"print", "-i"}), failed(2, "--in-place needs a file; see orvid print --help"));
    EXPECT_EQ(orvid({"print", "-i", "-"}),
              failed(2, "--in-place needs a file; see orvid print --help"));
}

TEST(in_place, reports_a_folder_that_cannot_be_written) {
    EXPECT_EQ(orvid({"print", "-i", "/proc/version"}).status == 0, false);
    EXPECT_EQ(orvid({"set", "a=1", "-i", "/no/such/file"}),
              failed(3, "/no/such/file: No such file or directory"));
}

TEST(options_of_lines, need_lines) {
    for (const std::string option : {"--jobs=2", "--on-error=skip", "--max-line=5", "--stats"}) {
        const std::string name = option.substr(0, option.find('='));
        EXPECT_EQ(orvid({"print", option}, "1"),
                  failed(2, name + " requires --lines; see orvid print --help"));
        EXPECT_EQ(orvid({"print", option, "--lines"}, "1").status, 0);
    }
}

TEST(options, that_need_no_value_take_none) {
    for (const std::string word : {"--compact=no", "--lines=3", "-c=1", "--tab="}) {
        const std::string name = word.substr(0, word.find('='));
        EXPECT_EQ(
            orvid({"print", word}, "1"),
            failed(2, "no value goes with " + name + ": write it alone; see orvid print --help"));
    }
}

TEST(options, that_need_a_value_do_not_take_the_next_word_for_it) {
    EXPECT_EQ(orvid({"split", "--in=", "x.json"}, "[]"),
              failed(2, "a value is required after --in=; see orvid split --help"));
    EXPECT_EQ(orvid({"print", "--indent"}, "1"),
              failed(2, "a value is required after --indent; see orvid print --help"));
    EXPECT_EQ(orvid({"print", "--lines", "-j=4"}, "1"),
              failed(2, "write -j 4, without =; see orvid print --help"));
    EXPECT_EQ(orvid({"print", "-x"}, "1"),
              failed(2, "there is no option -x; see orvid print --help"));
}

TEST(json_errors, are_objects_on_a_line) {
    EXPECT_EQ(orvid({"print", "--json-errors"}, "[1,\n2 3]"),
              (CommandResult{"",
                             "{\"status\":1,\"file\":\"(standard input)\",\"line\":2,\"column\":3,"
                             "\"path\":\"\",\"message\":\"Unexpected '3': "
                             "expected ',' or ']'\"}\n",
                             1, 0}));
    EXPECT_EQ(orvid({"get", "--json-errors"}),
              (CommandResult{"",
                             "{\"status\":2,\"message\":\"PATH is required; see orvid get "
                             "--help\"}\n",
                             2, 0}));
}

TEST(options, that_contradict_each_other_are_usage_errors) {
    const std::string layouts =
        "--indent, --tab and --compact exclude each other; see orvid print --help";
    EXPECT_EQ(orvid({"print", "--compact", "--indent", "2"}, "1"), failed(2, layouts));
    EXPECT_EQ(orvid({"print", "--tab", "--compact"}, "1"), failed(2, layouts));
    EXPECT_EQ(orvid({"print", "--compact", "--indent=0", "--lines"}, "[ ]"), printed("[]\n"));
    EXPECT_EQ(orvid({"print", "--lines", "--indent", "2"}, "1"),
              failed(2,
                     "--lines writes a value on one line: --indent and --tab do not go with it; "
                     "see orvid print --help"));
    EXPECT_EQ(orvid({"get", "--raw", "--ascii", ""}, "1"),
              failed(2,
                     "--raw writes strings as they are: --ascii does not go with it; see orvid "
                     "get --help"));
}

TEST(schema, stands_in_for_documents_that_carry_none) {
    const ScratchFile schema(R"({"properties":{"a":{"default":1.50}}})");
    EXPECT_EQ(orvid({"get", "--default", "--schema", schema.name(), "a"}, "{}"), printed("1.50\n"));
    EXPECT_EQ(orvid({"get", "--default", "--schema", schema.name(), "a"},
                    R"({"meta":{"schema":{"properties":{"a":{"default":2}}}}})"),
              printed("2\n"));
    EXPECT_EQ(orvid({"get", "--default", "--schema", "/no/such/file", "a"}, "{}"),
              failed(3, "/no/such/file: No such file or directory"));
}

TEST(standard_descriptors, that_are_closed_do_not_get_into_the_way_of_files) {
    const ScratchFile file("{\"a\":1}");
    EXPECT_EQ(shell(R"("$0" set a=2 --compact -i "$1" <&- >&- 2>&-)", {file.name()}), printed(""));
    EXPECT_EQ(bytesOfFile(file.name()), "{\"a\":2}\n");
    EXPECT_EQ(shell(R"("$0" set a. 2 -i "$1" <&- >&- 2>&-; echo $?)", {file.name()}),
              printed("2\n"));
    EXPECT_EQ(bytesOfFile(file.name()), "{\"a\":2}\n");
}

TEST(options, show_what_they_take) {
    EXPECT_NE(orvid({"get", "--help"}).out.find("--default[=VALUE] "), std::string::npos);
    for (const std::string text : {"x", "-1", "1.5", "99999999999999999999"}) {
        EXPECT_EQ(orvid({"unpaths", "--max-gap", text}),
                  failed(2, "--max-gap: no whole number, or too great: " + text +
                                "; see orvid unpaths --help"));
    }
}

TEST(options, say_which_numbers_and_words_they_take) {
    const std::vector<std::pair<std::string, std::string>> calls = {
        {"--indent=81", "--indent: no number from 0 to 80: 81"},
        {"--indent=x", "--indent: no number from 0 to 80: x"},
        {"--indent=-1", "--indent: no number from 0 to 80: -1"},
        {"--jobs=0", "--jobs: no number from 1 to 1024: 0"},
        {"--jobs=99999999999999999999", "--jobs: no number from 1 to 1024: 99999999999999999999"},
        {"--max-line=0", "--max-line: no number from 1 to 2147483647: 0"},
        {"--max-line=3T", "--max-line: no number of bytes: 3T"},
        {"--color=red", "--color: none of auto, always and never: red"},
        {"--on-error=go", "--on-error: none of stop, skip, passthrough and null: go"}};
    for (const auto& [word, message] : calls) {
        EXPECT_EQ(orvid({"print", "--lines", word}, "1"),
                  failed(2, message + "; see orvid print --help"));
    }
    EXPECT_EQ(orvid({"print", "--lines", "--jobs=1024", "--max-line=1"}, "1").status, 0);
    EXPECT_EQ(orvid({"print", "--indent=80"}, "[1]").status, 0);
}

}  // namespace
