// SPDX-License-Identifier: MIT
//
// orvid print: the layout it writes, what it keeps of a document, and what large real documents
// become.

#include "support/Command.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
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
using orvid_test::withoutExcerpt;

/// The number tokens of a JSON text without comments, in their order.
std::vector<std::string> numberTokens(const std::string& text) {
    std::vector<std::string> tokens;
    std::size_t i = 0;
    while (i < text.length()) {
        if (text[i] == '"') {
            for (++i; i < text.length() && text[i] != '"'; ++i) {
                i += text[i] == '\\' ? 1U : 0U;
            }
            ++i;
        } else if (text[i] == '-' || (text[i] >= '0' && text[i] <= '9')) {
            const std::size_t end =
                std::min(text.find_first_not_of("+-.0123456789eE", i), text.length());
            tokens.push_back(text.substr(i, end - i));
            i = end;
        } else {
            ++i;
        }
    }
    return tokens;
}

std::vector<std::string> jsonFilesIn(const std::string& folder) {
    std::vector<std::string> files;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        if (entry.path().extension() == ".json") {
            files.push_back(entry.path().string());
        }
    }
    std::sort(files.begin(), files.end());
    return files;
}

/// Prints the file and the result again, which must not change anything more.
std::string printedTwice(const std::string& file, const std::vector<std::string>& options) {
    std::vector<std::string> words{"print"};
    words.insert(words.end(), options.begin(), options.end());
    std::vector<std::string> wordsAndFile = words;
    wordsAndFile.push_back(file);
    const CommandResult first = orvid(wordsAndFile);
    EXPECT_EQ(first.status, 0) << first;
    EXPECT_EQ(first.err, "");
    EXPECT_EQ(orvid(words, first.out), first);
    return first.out;
}

void expectPrintKeepsNumbersAndItsOwnOutput(const std::string& file) {
    SCOPED_TRACE(file);
    printedTwice(file, {});
    EXPECT_TRUE(numberTokens(printedTwice(file, {"--meta"})) == numberTokens(bytesOfFile(file)));
}

void expectPrintKeepsFolder(const std::string& folder) {
    const std::vector<std::string> files = jsonFilesIn(folder);
    EXPECT_FALSE(files.empty()) << folder << " holds no .json file";
    for (const std::string& file : files) {
        expectPrintKeepsNumbersAndItsOwnOutput(file);
    }
}

TEST(print_files, tokens_of_the_checking_function_are_the_numbers_outside_strings) {
    EXPECT_EQ(numberTokens(R"({"1\"2":-1.50e+3,"a":[0,"\\",7]} 8)"),
              (std::vector<std::string>{"-1.50e+3", "0", "7", "8"}));
}

TEST(print_files, iso_codes_keep_their_numbers_and_print_of_print_is_print) {
    const std::string folder = "/usr/share/iso-codes/json";
    if (!std::filesystem::is_directory(folder)) {
        GTEST_SKIP() << "NOT RUN: the package iso-codes is not installed";
    }
    expectPrintKeepsFolder(folder);
}

TEST(print_files, corpus_keeps_its_numbers_and_print_of_print_is_print) {
    const char* const folder = std::getenv("ORVID_CORPUS");
    if (folder == nullptr) {
        GTEST_SKIP() << "NOT RUN: ORVID_CORPUS names no folder of .json files";
    }
    expectPrintKeepsFolder(folder);
}

TEST(print_files, sample_keeps_its_numbers_and_print_of_print_is_print) {
    expectPrintKeepsFolder(ORVID_SAMPLES);
}

TEST(print, writes_a_member_or_item_a_line_indented_by_four_spaces) {
    EXPECT_EQ(orvid({"print"}, R"({"z":[1,{"b":true,"a":null}],"y":"t","x":[[false]]})"),
              printed(R"({
    "z": [
        1,
        {
            "b": true,
            "a": null
        }
    ],
    "y": "t",
    "x": [
        [
            false
        ]
    ]
}
)"));
}

TEST(print, closes_empty_containers_where_they_open) {
    EXPECT_EQ(orvid({"print"}, R"([{},[ ],[{}]])"),
              printed("[\n    {},\n    [],\n    [\n        {}\n    ]\n]\n"));
    EXPECT_EQ(orvid({"print", "--sort-keys", "--indent=1"}, R"([{},[]])"),
              printed("[\n {},\n []\n]\n"));
}

TEST(print, keeps_every_number_letter_for_letter) {
    EXPECT_EQ(orvid({"print"},
                    "[0,-0,0.0,-0.10,1e5,1E+05,1e-0,1e999999,0.1e-400,"
                    "123456789012345678901234567890.1234567890,-9223372036854775809]"),
              printed(R"([
    0,
    -0,
    0.0,
    -0.10,
    1e5,
    1E+05,
    1e-0,
    1e999999,
    0.1e-400,
    123456789012345678901234567890.1234567890,
    -9223372036854775809
]
)"));
}

TEST(print, prints_a_lone_value_of_each_kind_without_a_newline_after_it) {
    for (const char* const value : {"12", "-0.50", "1e3", "null", "true", "false", "\"text\""}) {
        EXPECT_EQ(orvid({"print"}, value), printed(std::string(value) + "\n"));
    }
}

TEST(print, keeps_the_first_place_and_the_last_value_of_a_repeated_key) {
    EXPECT_EQ(orvid({"print"}, R"({"a":1,"b":2,"a":{"c":3}})"), printed(R"({
    "a": {
        "c": 3
    },
    "b": 2
}
)"));
}

TEST(print, writes_resolved_escapes_and_escapes_what_must_be_escaped) {
    EXPECT_EQ(orvid({"print"}, R"("\u00e4\ud83d\ude00\/\"\\\b\f\n\r\t\u0001\u007f")"),
              printed("\"\xC3\xA4\xF0\x9F\x98\x80/\\\"\\\\\\b\\f\\n\\r\\t\\u0001\x7F\"\n"));
}

TEST(print, keeps_an_escaped_nul_in_keys_and_strings) {
    EXPECT_EQ(orvid({"print"}, R"({"a\u0000b":"\u0000"})"), printed("{\n"
                                                                    R"(    "a\u0000b": "\u0000")"
                                                                    "\n}\n"));
}

TEST(print, passes_invalid_utf8_unchanged) {
    EXPECT_EQ(orvid({"print"}, "{\"\xFF\xFE\":\"\xC0\x80 \xED\xA0\x80 \xF8\"}"),
              printed("{\n    \"\xFF\xFE\": \"\xC0\x80 \xED\xA0\x80 \xF8\"\n}\n"));
}

TEST(print, skips_comments_and_whitespace_around_and_inside_the_value) {
    EXPECT_EQ(orvid({"print"},
                    "// one\n\t /* two\n */ [ /* three */ 1, // four\r\n 2 ]\r\n\v\f"
                    " // five\n /* six */ // seven"),
              printed("[\n    1,\n    2\n]\n"));
}

TEST(print, leaves_out_the_member_meta_of_the_root_only_when_asked_to) {
    EXPECT_EQ(orvid({"print", "--no-meta"}, R"({"a":{"meta":1},"meta":{"b":2},"c":3})"),
              printed(R"({
    "a": {
        "meta": 1
    },
    "c": 3
}
)"));
}

TEST(print, writes_the_member_meta_with_and_without_its_option) {
    const ScratchFile file(R"({"meta":[1],"c":3})");
    const CommandResult whole = printed(R"({
    "meta": [
        1
    ],
    "c": 3
}
)");
    EXPECT_EQ(orvid({"print", file.name()}), whole);
    EXPECT_EQ(orvid({"print", "--no-meta", "--meta", file.name()}), whole);
    EXPECT_EQ(orvid({"print", "--meta", file.name()}), whole);
    EXPECT_EQ(orvid({"print", file.name(), "--meta"}), whole);
    EXPECT_EQ(orvid({"print", "--meta", "--meta", file.name()}), whole);
    EXPECT_EQ(orvid({"print", "--meta"}, R"({"meta":[1],"c":3})"), whole);
}

TEST(print, reads_the_file_named_and_standard_input_for_a_dash_or_no_file) {
    const ScratchFile file("[\"of the file\"]");
    const std::string input = "[\"of the input\"]";
    EXPECT_EQ(orvid({"print", file.name()}, input), printed("[\n    \"of the file\"\n]\n"));
    EXPECT_EQ(orvid({"print", "-"}, input), printed("[\n    \"of the input\"\n]\n"));
    EXPECT_EQ(orvid({"print"}, input), printed("[\n    \"of the input\"\n]\n"));
}

TEST(print, takes_a_word_after_two_dashes_for_a_file) {
    EXPECT_EQ(orvid({"print", "--", "--meta"}), failed(3, "--meta: No such file or directory"));
}

TEST(print, works_in_a_pipeline_with_itself) {
    const ScratchFile file("{\"a b\":[1.50]}");
    EXPECT_EQ(shell(R"("$0" print <"$1" | "$0" print - | "$0" get 'a b[0]')", {file.name()}),
              printed("1.50\n"));
}

TEST(print, passes_a_long_text_through_pipes) {
    const std::string items = repeated("    123456789.0123456789,\n", 200000);
    const std::string text = "[\n" + items + "    0\n]\n";
    EXPECT_EQ(orvid({"print"}, text), printed(text));
}

TEST(print, writes_containers_nested_at_any_depth) {
    for (const std::size_t depth : {std::size_t(127), std::size_t(128), std::size_t(1000)}) {
        const CommandResult result = orvid({"print"}, repeated("[", depth) + repeated("]", depth));
        EXPECT_EQ(result.status, 0) << result;
        EXPECT_EQ(std::count(result.out.begin(), result.out.end(), '['), std::ptrdiff_t(depth));
        EXPECT_EQ(std::count(result.out.begin(), result.out.end(), ']'), std::ptrdiff_t(depth));
    }
}

TEST(print_in_place, refuses_comments_unless_they_may_go) {
    const std::string text = "{\"a\": \"//\",\n} // end\n";
    const ScratchFile file(text);
    EXPECT_EQ(withoutExcerpt(orvid({"print", "-i", file.name()})),
              failed(1, file.name() +
                            ":2:3: at (root): the comments would be lost, as the file is written "
                            "anew; --drop-comments allows it, and the verbs that edit keep them"));
    EXPECT_EQ(bytesOfFile(file.name()), text);
    EXPECT_EQ(orvid({"print", "-c", file.name()}), printed("{\"a\":\"//\"}\n"));
    EXPECT_EQ(orvid({"print", "-ci", "--drop-comments", file.name()}), printed(""));
    EXPECT_EQ(bytesOfFile(file.name()), "{\"a\":\"//\"}\n");
    EXPECT_EQ(orvid({"print", "-i", "--indent=1", file.name()}), printed(""));
}

TEST(print_in_place, refuses_comments_of_lines) {
    const std::string lines = "[1]\n[/**/2]\n";
    const ScratchFile file(lines);
    EXPECT_EQ(orvid({"print", "-i", "--lines", file.name()}).status, 1);
    EXPECT_EQ(bytesOfFile(file.name()), lines);
    EXPECT_EQ(orvid({"print", "-i", "--lines", "--drop-comments", file.name()}), printed(""));
    EXPECT_EQ(bytesOfFile(file.name()), "[1]\n[2]\n");
}

}  // namespace
