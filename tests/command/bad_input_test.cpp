// SPDX-License-Identifier: MIT
//
// What the command says of texts that are no JSON, of files that cannot be read or written, and of
// words that it does not know: one line, the status, and nothing on standard output.

#include "support/Command.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace {

using namespace std::string_literals;
using orvid_test::CommandResult;
using orvid_test::failed;
using orvid_test::failsWithOneLine;
using orvid_test::orvid;
using orvid_test::printed;
using orvid_test::repeated;
using orvid_test::ScratchFile;
using orvid_test::shell;
using orvid_test::withoutExcerpt;

/// A document that holds every construct of the language.
const std::string k_everything =
    "// line\n{ \"n\": null, \"t\": true, \"f\": false,\r\n"
    "\t\"numbers\": [0, -1, 2.5, 3e4, -5.6E-7, 8e+9], /* block * / */\n"
    "  \"escapes\": \"\\\"\\\\\\/\\b\\f\\n\\r\\t\\u00e4\\ud83d\\ude00\",\n"
    "  \"\": {}, \"empty\": [], \"nested\": {\"a\": [{\"b\": [[1]]}]}, \"\xC3\xA4\": \"\xFF\" }";

struct BadText {
    std::string text;
    std::string line;  // without the name of the input
};

void expectLines(const std::vector<BadText>& rows) {
    for (const BadText& row : rows) {
        EXPECT_EQ(withoutExcerpt(orvid({"print"}, row.text)),
                  failed(1, "(standard input):" + row.line))
            << "of the text: " << row.text;
    }
}

std::string isOpen(const std::string& part, const std::string& begin) {
    return " (the " + part + " that begins at " + begin + " is not closed)";
}

TEST(bad_text, without_a_value_ends_early) {
    const std::string early = ": at (root): The text ends before the document is complete";
    expectLines({{"", "1:1" + early + " (it is empty)"},
                 {"\xEF\xBB\xBF", "1:1" + early + " (it is empty)"},
                 {" ", "1:2" + early + " (it has only whitespace)"},
                 {" \t\r\n\n ", "3:2" + early + " (it has only whitespace)"},
                 {"// note", "1:8" + early + " (it has only comments)"},
                 {"// note\n", "2:1" + early + " (it has only comments)"},
                 {"/* note", "1:8" + early + isOpen("comment", "1:1")},
                 {"/* note */", "1:11" + early + " (it has only comments)"}});
}

TEST(bad_text, without_a_value_shows_no_line_of_it) {
    const std::string early = ": at (root): The text ends before the document is complete";
    for (const char* const verb : {"print", "check", "split", "paths"}) {
        EXPECT_EQ(orvid({verb}, ""), failed(1, "(standard input):1:1" + early + " (it is empty)"));
        EXPECT_EQ(orvid({verb}, "\n"),
                  failed(1, "(standard input):2:1" + early + " (it has only whitespace)"));
        EXPECT_EQ(orvid({verb}, "// c\n"),
                  failed(1, "(standard input):2:1" + early + " (it has only comments)"));
    }
    EXPECT_EQ(orvid({"check", "--lines"}, "1\n// c\n"),
              failed(1, "(standard input):2:5" + early + " (it has only comments)"));
    EXPECT_EQ(orvid({"split"}, std::string(1000000, ' ')),
              failed(1, "(standard input):1:1000001" + early + " (it has only whitespace)"));
}

TEST(bad_text, that_ends_early_says_where_and_in_which_element) {
    const std::string object = isOpen("object", "1:1");
    expectLines(
        {{"{", "1:2: at (root): The text ends before the document is complete" + object},
         {"{\"a\"", "1:5: at a: The text ends before the document is complete" + object},
         {"{\"a\":", "1:6: at a: The text ends before the document is complete" + object},
         {"{\"a\":1", "1:7: at a: The text ends before the document is complete" + object},
         {"{\"a\":1,", "1:8: at (root): The text ends before the document is complete" + object},
         {"[{}, [1]",
          "1:9: at (root): The text ends before the document is complete" + isOpen("array", "1:1")},
         {"{\"a\":[1,\n2",
          "2:2: at a: The text ends before the document is complete" + isOpen("array", "1:6")},
         {"{\"a\":[1,\n{\"b\":[\n",
          "3:1: at a[1].b: The text ends before the document is complete" + isOpen("array", "2:6")},
         {"nul", "1:4: at (root): The text ends before the document is complete"},
         {"\"abc", "1:5: at (root): The text ends before the document is complete" +
                       isOpen("string", "1:1")},
         {"\"abc\\", "1:6: at (root): The text ends before the document is complete" +
                         isOpen("string", "1:1")},
         {"\"\\u12", "1:6: at (root): The text ends before the document is complete" +
                         isOpen("string", "1:1")},
         {"-", "1:2: at (root): The text ends before the document is complete"},
         {"1.", "1:3: at (root): The text ends before the document is complete"},
         {"1e+", "1:4: at (root): The text ends before the document is complete"}});
}

TEST(bad_text, cut_at_any_byte_ends_early) {
    ASSERT_EQ(orvid({"print"}, k_everything).status, 0);
    for (std::size_t length = 0; length < k_everything.length(); ++length) {
        const CommandResult result = orvid({"print"}, k_everything.substr(0, length));
        EXPECT_TRUE(failsWithOneLine(withoutExcerpt(result), 1)) << length << " bytes: " << result;
        EXPECT_NE(result.err.find(": The text ends before the document is complete"),
                  std::string::npos)
            << length << " bytes: " << result;
    }
}

TEST(bad_text, with_a_token_in_the_wrong_place_says_where_and_what_was_expected) {
    const std::string item = "expected ',' or ']'";
    const std::string member = "expected ',' or '}'";
    expectLines({{"{\"a\":[1,2}", "1:10: at a: Unexpected '}': " + item},
                 {"[1 \"a\\\"b\"]", "1:4: at (root): Unexpected '\"': " + item},
                 {"[1 -2.5e3]", "1:4: at (root): Unexpected '-': " + item},
                 {"/* \" */ [1,\n 2 true]", "2:4: at (root): Unexpected 't': " + item},
                 {"[01]", "1:3: at (root): Unexpected '1': " + item +
                              " (no number begins with 0 and a digit)"},
                 {"{\"a\":1 true}", "1:8: at (root): Unexpected 't': " + member},
                 {"{\"a\":\"b\"]", "1:9: at (root): Unexpected ']': " + member},
                 {"{\"a\":1\n \"b\":2}", "2:2: at (root): Unexpected '\"': " + member},
                 {"{1:2}", "1:2: at (root): Unexpected '1': expected a key or '}'"},
                 {"{\"a\" 2}", "1:6: at a: Unexpected '2': expected ':'"},
                 {"{\"a\":}", "1:6: at a: Unexpected '}': expected a value"},
                 {"[,1]", "1:2: at (root): Unexpected ',': expected a value or ']'"},
                 {"]", "1:1: at (root): Unexpected ']': expected a value"},
                 {"}", "1:1: at (root): Unexpected '}': expected a value"}});
}

TEST(bad_text, with_a_character_out_of_place_says_where_that_is) {
    const std::string value = "expected a value";
    const std::string control = "Control character 0x";
    expectLines(
        {{"*", "1:1: at (root): Unexpected '*': " + value},
         {"['a']", "1:2: at (root): Unexpected ''': " + value +
                       " or ']' (keys and texts stand in double quotes)"},
         {"[+1]", "1:2: at (root): Unexpected '+': " + value + " or ']' (no number begins with +)"},
         {"[1,\n\n   NaN]",
          "3:4: at (root): Unexpected 'N': " + value + " or ']' (JSON has no number NaN)"},
         {"[tru]", "1:5: at (root): Unexpected ']': expected true"},
         {"nulL", "1:4: at (root): Unexpected 'L': expected null"},
         {"[\"a\nb\"]", "1:4: at (root): " + control +
                            "0A in a string: it must be escaped, or the string lacks its "
                            "closing quote"},
         {"[\"a\0b\"]"s, "1:4: at (root): " + control + "00 in a string: it must be escaped"},
         {"[\"a\\x\"]", "1:5: at (root): Unexpected 'x': no escape begins so"},
         {"[\"\\u12g4\"]", "1:7: at (root): Unexpected 'g': expected a hexadecimal digit"},
         {"[1.]", "1:4: at (root): Unexpected ']': expected a digit"},
         {"[1e]", "1:4: at (root): Unexpected ']': expected a digit"},
         {"[-]", "1:3: at (root): Unexpected ']': expected a digit"}});
}

TEST(bad_text, with_bytes_that_are_no_text_is_refused_at_the_first_one) {
    expectLines({{"\0[1]"s, "1:1: at (root): Unexpected byte 0x00: expected a value"},
                 {"[1,\0 2]"s, "1:4: at (root): Unexpected byte 0x00: expected a value or ']'"},
                 {"[1]\0"s, "1:4: at (root): Unexpected byte 0x00: the document is complete"},
                 {"\xFF\xFE[\0"s,
                  "1:1: at (root): Unexpected byte 0xFF: expected a value (this is UTF-16: JSON is "
                  "UTF-8)"}});
}

TEST(bad_text, after_the_value_is_refused) {
    const std::string complete = "the document is complete";
    const std::string several =
        " (for values that follow each other there are --lines, split --values and join)";
    expectLines(
        {{"[1] x", "1:5: at (root): Unexpected 'x': " + complete},
         {"[1]\n// note\n/* note */ []", "3:12: at (root): Unexpected '[': " + complete + several},
         {"true false", "1:6: at (root): Unexpected 'f': " + complete},
         {"1 2", "1:3: at (root): Unexpected '2': " + complete},
         {"\"a\"b", "1:4: at (root): Unexpected 'b': " + complete},
         {"{}}", "1:3: at (root): Unexpected '}': " + complete},
         {"[1] /* note",
          "1:12: at (root): The text ends before " + complete + isOpen("comment", "1:5")},
         {"[1] / /", "1:6: at (root): Unexpected byte 0x20: a comment begins with /* or //"}});
}

TEST(bad_text, is_shown_with_a_caret_under_the_place) {
    EXPECT_EQ(orvid({"get", "a"}, "{\n  \"a\": [1 2]\n}\n").err,
              "orvid: (standard input):2:11: at a: Unexpected '2': expected ',' or ']'\n"
              "  \"a\": [1 2]\n"
              "          ^\n");
}

TEST(bad_text, that_ends_on_a_blank_line_shows_no_empty_line) {
    for (const char* const verb : {"print", "check", "split", "join"}) {
        EXPECT_EQ(orvid({verb}, "[1, 2\n").err,
                  "orvid: (standard input):2:1: at (root): The text ends before the document is "
                  "complete (the array that begins at 1:1 is not closed)\n")
            << verb;
    }
    EXPECT_EQ(orvid({"set", "a", "[1,\n  "}, "{}").err.find('^'), std::string::npos);
    EXPECT_NE(orvid({"print"}, "[1,\n2").err.find("\n2\n ^\n"), std::string::npos);
}

TEST(loose_text, may_have_a_byte_order_mark_and_trailing_commas) {
    EXPECT_EQ(orvid({"print", "--compact"}, "\xEF\xBB\xBF[1,]"), printed("[1]\n"));
    EXPECT_EQ(orvid({"get", "a"}, "\xEF\xBB\xBF{\"a\":1,}"), printed("1\n"));
}

TEST(bad_text, shows_the_path_of_the_element_on_one_line) {
    expectLines({{"{\"a\\nb\":{\"x.y\":[0,tru",
                  "1:22: at a\\u000ab.x\\.y: The text ends before the document is complete" +
                      isOpen("array", "1:16")}});
}

TEST(bad_text, that_breaks_off_below_a_million_levels_is_reported_in_a_short_line) {
    const std::string end = repeated("[0]", 40);
    const CommandResult expected = failed(
        1, "(standard input):1:1000001: at " + end + " ... " + end +
               ": The text ends before the document is complete" + isOpen("array", "1:1000000"));
    EXPECT_EQ(withoutExcerpt(orvid({"print"}, repeated("[", 1000000))), expected);
}

TEST(bad_text, shortens_a_long_path_between_characters) {
    // The cuts of the path would fall into the two-byte characters.
    const std::string key = "k" + repeated("\xC3\xA4", 200);
    const std::string head = "k" + repeated("\xC3\xA4", 59);
    const std::string tail = repeated("\xC3\xA4", 60);
    EXPECT_EQ(
        withoutExcerpt(orvid({"print"}, "{\"" + key + "\":")),
        failed(1, "(standard input):1:406: at " + head + " ... " + tail +
                      ": The text ends before the document is complete" + isOpen("object", "1:1")));
}

/// The same sequence in every run.
struct Sequence {
    std::uint32_t next() {
        m_state = m_state * 1664525U + 1013904223U;
        return m_state >> 8U;
    }
    std::uint32_t m_state = 1;
};

void expectValueOrOneLine(const std::string& text) {
    const CommandResult result = orvid({"print"}, text);
    EXPECT_TRUE(failsWithOneLine(withoutExcerpt(result), 1) ||
                (result.status == 0 && result.err.empty()))
        << "of the text: " << text << "\n"
        << result;
}

TEST(bad_text, of_any_bytes_ends_in_a_value_or_one_line) {
    Sequence sequence;
    for (int round = 0; round < 100; ++round) {
        std::string text;
        for (std::uint32_t length = sequence.next() % 40; length > 0; --length) {
            text += static_cast<char>(sequence.next() & 0xFFU);
        }
        expectValueOrOneLine(text);
    }
}

TEST(bad_text, with_one_byte_changed_ends_in_a_value_or_one_line) {
    const std::string bytes = "{}[]\",:\\/*-0e.tn \n\xFF\0"s;
    Sequence sequence;
    for (int round = 0; round < 200; ++round) {
        std::string text = k_everything;
        text[sequence.next() % text.length()] = bytes[sequence.next() % bytes.length()];
        expectValueOrOneLine(text);
    }
}

TEST(bad_file, that_is_missing_is_reported_with_its_name) {
    EXPECT_EQ(orvid({"print", "/no/such/file"}),
              failed(3, "/no/such/file: No such file or directory"));
    EXPECT_EQ(orvid({"get", "a", "/no/such/file"}),
              failed(3, "/no/such/file: No such file or directory"));
    EXPECT_EQ(orvid({"print", "a\nb"}), failed(3, "a\\u000ab: No such file or directory"));
    EXPECT_EQ(orvid({"print", ""}), failed(3, "\"\": No such file or directory"));
    EXPECT_EQ(orvid({"get", "a", ""}), failed(3, "\"\": No such file or directory"));
    EXPECT_EQ(orvid({"set", "a=1", "-i", ""}), failed(3, "\"\": No such file or directory"));
}

TEST(bad_file, that_is_a_folder_is_refused) {
    EXPECT_EQ(orvid({"print", "/"}), failed(3, "/: Is a directory"));
}

TEST(bad_file, that_cannot_be_opened_is_reported_with_the_reason) {
    const ScratchFile place("");
    const std::string loop = place.name() + "-loop";
    std::filesystem::create_symlink(loop, loop);
    EXPECT_EQ(orvid({"paths", loop}), failed(3, loop + ": Too many levels of symbolic links"));
    std::filesystem::remove(loop);
}

TEST(bad_file, that_may_not_be_read_is_reported_with_the_reason) {
    if (geteuid() == 0) {
        GTEST_SKIP() << "NOT RUN: root may read every file";
    }
    const ScratchFile file("[1]");
    std::filesystem::permissions(file.name(), std::filesystem::perms::none);
    EXPECT_EQ(orvid({"print", file.name()}), failed(3, file.name() + ": Permission denied"));
}

TEST(bad_file, with_malformed_text_is_reported_with_its_name) {
    const ScratchFile file("[1,\n 2 3]\n");
    EXPECT_EQ(withoutExcerpt(orvid({"print", file.name()})),
              failed(1, file.name() + ":2:4: at (root): Unexpected '3': expected ',' or ']'"));
}

TEST(bad_file, closed_standard_input_is_reported) {
    EXPECT_EQ(shell(R"("$0" print <&-)"), failed(3, "(standard input): Bad file descriptor"));
}

TEST(bad_output, that_is_full_is_reported) {
    const std::string input = R"({"a":1})";
    const CommandResult full = failed(3, "(standard output): No space left on device");
    EXPECT_EQ(shell(R"("$0" print >/dev/full)", {}, input), full);
    EXPECT_EQ(shell(R"("$0" get a >/dev/full)", {}, input), full);
    EXPECT_EQ(shell(R"("$0" paths >/dev/full)", {}, input), full);
    EXPECT_EQ(shell(R"("$0" print >/dev/full)", {}, "[" + repeated("1,", 100000) + "1]"), full);
}

TEST(bad_output, that_is_closed_is_reported) {
    const ScratchFile file("{\"a\":1}");
    const CommandResult closed = failed(3, "(standard output): Bad file descriptor");
    EXPECT_EQ(shell(R"("$0" print "$1" >&-)", {file.name()}), closed);
    EXPECT_EQ(shell(R"("$0" set a 2 "$1" >&-)", {file.name()}), closed);
}

TEST(bad_words, that_are_too_many_or_empty_are_shown) {
    const auto usage = [](const std::string& text, const std::string& verb) {
        return failed(2, text + "; see orvid " + verb + " --help");
    };
    EXPECT_EQ(orvid({"edit", "a.json", "b", "c"}), usage("words too many: b c", "edit"));
    EXPECT_EQ(orvid({"diff", "a", "b", ""}), usage("a word too many: ''", "diff"));
    EXPECT_EQ(orvid({"schema-path", "-", "-", "-"}), usage("words too many: - -", "schema-path"));
    EXPECT_EQ(orvid({"schema-path", "a", "--", "-x", "[b]"}),
              usage("words too many: -x [b]", "schema-path"));
    EXPECT_EQ(orvid({"print", "--indent", ""}),
              usage("--indent: no number from 0 to 80: ''", "print"));
    EXPECT_EQ(orvid({"unpaths", "--max-gap", ""}),
              usage("--max-gap: no whole number, or too great: ''", "unpaths"));
    EXPECT_EQ(orvid({"print", "--color", ""}),
              usage("--color: none of auto, always and never: ''", "print"));
    EXPECT_EQ(orvid({"get", "a", "--lines", "--max-line", ""}),
              usage("--max-line: no number of bytes: ''", "get"));
    EXPECT_EQ(orvid({"get", "a", "--lines", "--rejects", ""}, "{}\n"),
              failed(3, "\"\": No such file or directory"));
    EXPECT_EQ(orvid({"query", ""}, "{}"),
              failed(2, "query: Expected \"$\" at the beginning, found the end"));
}

TEST(bad_words, are_usage_errors_reported_in_one_line) {
    EXPECT_EQ(orvid({}), failed(2, "a verb is required; see orvid --help"));
    EXPECT_EQ(orvid({"prin", "x.json"}),
              failed(2, "there is no verb \"prin\" (did you mean \"print\"?); see orvid --help"));
    EXPECT_EQ(orvid({""}), failed(2, "there is no verb \"\"; see orvid --help"));
    EXPECT_EQ(orvid({"--compact", "print"}),
              failed(2, "a verb stands before its options; see orvid --help"));
    EXPECT_TRUE(failsWithOneLine(orvid({"show"}), 2));
    EXPECT_TRUE(failsWithOneLine(orvid({""}), 2));
    EXPECT_TRUE(failsWithOneLine(orvid({"--bogus"}), 2));
    EXPECT_EQ(orvid({"schema-path", "a", "b"}),
              failed(2, "a word too many: b; see orvid schema-path --help"));
    EXPECT_EQ(orvid({"print", "--bogus"}),
              failed(2, "there is no option --bogus; see orvid print --help"));
    EXPECT_EQ(orvid({"schema-path", "a", "b\nc"}),
              failed(2, "a word too many: b\\u000ac; see orvid schema-path --help"));
    EXPECT_EQ(orvid({"get"}), failed(2, "PATH is required; see orvid get --help"));
    EXPECT_EQ(orvid({"set", "a"}), failed(2, "VALUE is required; see orvid set --help"));
    EXPECT_EQ(orvid({"remove"}), failed(2, "PATH is required; see orvid remove --help"));
    EXPECT_EQ(orvid({"schema-path"}), failed(2, "PATH is required; see orvid schema-path --help"));
    EXPECT_EQ(orvid({"data-path"}),
              failed(2, "SCHEMAPATH is required; see orvid data-path --help"));
}

TEST(help, of_the_command_names_every_verb) {
    const CommandResult result = orvid({"--help"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err, "");
    EXPECT_NE(result.out.find("Usage: orvid [OPTIONS] VERB\n"), std::string::npos) << result;
    EXPECT_NE(result.out.find("\nVerbs:\n"), std::string::npos) << result;
    for (const char* const verb :
         {"print", "get", "set", "remove", "paths", "schema-path", "data-path"}) {
        EXPECT_NE(result.out.find("\n  "s + verb + " "), std::string::npos) << verb;
        const CommandResult own = orvid({verb, "--help"});
        EXPECT_EQ(own.status, 0);
        EXPECT_EQ(own.err, "");
        EXPECT_NE(own.out.find("Usage: orvid "s + verb), std::string::npos) << own;
    }
    EXPECT_EQ(orvid({"-h"}), result);
}

TEST(help, version_is_one_line) {
    EXPECT_EQ(orvid({"--version"}), printed("orvid " ORVID_VERSION "\n"));
}

TEST(strict, is_a_word_of_every_verb_that_reads) {
    const std::vector<std::vector<std::string>> calls{{"print"},
                                                      {"print", "--compact"},
                                                      {"get", "a"},
                                                      {"find", "--in", "a", "", "1"},
                                                      {"query", "$.a"},
                                                      {"query", "--count", "$.a[*]"},
                                                      {"select", "$.a"},
                                                      {"keys"},
                                                      {"length"},
                                                      {"type"},
                                                      {"paths"},
                                                      {"split", "--in", "a"},
                                                      {"split", "--in", "/a"},
                                                      {"join", "--compact"},
                                                      {"csv"},
                                                      {"set", "b=1"},
                                                      {"remove", "a"}};
    for (std::vector<std::string> call : calls) {
        const std::string good = R"({"a":[1]})";
        const orvid_test::CommandResult result = orvid(call, good);
        EXPECT_EQ(result.status, 0) << testing::PrintToString(call);
        call.emplace_back("--strict");
        EXPECT_EQ(orvid(call, good), result) << testing::PrintToString(call);
        EXPECT_NE(orvid(call, "{\"a\":[1] /* x */}").err.find("Comments are not allowed"),
                  std::string::npos)
            << testing::PrintToString(call);
        EXPECT_NE(orvid(call, "{\"a\":[1,]}").status, 0) << testing::PrintToString(call);
    }
    EXPECT_NE(orvid({"get", "--strict", "a"}, R"({"a":1,"a":2})").err.find("Repeated key \"a\""),
              std::string::npos);
    EXPECT_EQ(
        orvid({"get", "--lines", "--strict", "--on-error=skip", "a"}, "{\"a\":1,}\n{\"a\":2}\n")
            .out,
        "2\n");
}

}  // namespace
