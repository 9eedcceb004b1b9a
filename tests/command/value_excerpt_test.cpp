// SPDX-License-Identifier: MIT
//
// An error that concerns a value of a text shows the line in which the value begins, with a caret
// below its first character, as `check` shows errors of the text itself.

#include "support/Command.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace {

using orvid_test::CommandResult;
using orvid_test::failed;
using orvid_test::orvid;
using orvid_test::repeated;
using orvid_test::ScratchFile;

using Words = std::vector<std::string>;

constexpr const char* k_mark = "\xEF\xBB\xBF";

constexpr const char* k_document =
    "{\n"
    "  \"a\": {\"b\": 1, \"s\": \"x\"},\n"
    "  \"l\": [1, {\"c\": 2}]\n"
    "}\n";

/// Calls that read the document well and find a value that is not what they need.
const std::vector<Words> k_calls{
    {"get", "zz"},
    {"get", "a.zz"},
    {"get", "a.b.c"},
    {"get", "l[9]"},
    {"get", "l[-9]"},
    {"get", "/a/zz"},
    {"get", "--default", "l[1].zz"},
    {"get", "a.b", "--also", "l.x"},
    {"keys", "l"},
    {"keys", "a.b"},
    {"length", "a.b"},
    {"type", "zz"},
    {"set", "a.b.c", "1"},
    {"set", "l[9]=1"},
    {"set", "a.b.c=1", "--indent=2"},
    {"set", "/l/x", "1"},
    {"insert", "a", "1"},
    {"insert", "zz.y", "1"},
    {"remove", "a.zz"},
    {"remove", ""},
    {"remove", "l[5]", "--compact"},
    {"remove", "--query", "$"},
    {"rename", "l[1].zz", "n"},
    {"rename", "l[0]", "n"},
    {"rename", "a", "l"},
    {"move", "a.zz", "n"},
    {"move", "a.s", "l"},
    {"move", "", "n"},
    {"copy", "l[1].d", "n"},
    {"copy", "a.s", "a.b.c"},
    {"find", "", "9", "--in", "l"},
    {"find", "c", "9", "--in", "a"},
    {"split"},
    {"split", "--in", "l[1]"},
    {"split", "--in", "a.zz"},
    {"patch", R"([{"op":"test","path":"/a/b","value":2}])"},
    {"patch", R"([{"op":"remove","path":"/l/5"}])"},
    {"patch", R"([{"op":"remove","path":"/l/1/d"}])", "--compact"},
};

std::string replaced(std::string text, const std::string& from, const std::string& to) {
    for (std::size_t at = text.find(from); at != std::string::npos;
         at = text.find(from, at + to.size())) {
        text.replace(at, from.size(), to);
    }
    return text;
}

/// The document in several spellings, which have the same values in other places.
std::vector<std::string> spellings() {
    const std::string document = k_document;
    const std::string key = "  \"a\"";
    return {document,
            k_mark + document,
            k_mark + replaced(document, "\n", ""),
            replaced(document, "\n", "\r\n"),
            replaced(document, "  ", "\t\t"),
            replaced(document, "\n ", "\r"),
            replaced(document, key, "/* \xC3\xA9\xE2\x82\xAC */" + key),
            replaced(document, "{", "{\"\xF0\x9D\x84\x9E\":\"\xC3\xA9\","),
            "// note\n\n" + document};
}

struct Place {
    std::size_t line;
    std::size_t column;
};

/// The place that an error line of a text from standard input names.
Place placeIn(const std::string& error) {
    const std::string begin = "orvid: (standard input):";
    EXPECT_EQ(error.rfind(begin, 0), 0U) << error;
    const std::size_t colon = error.find(':', begin.size());
    return {std::stoul(error.substr(begin.size())), std::stoul(error.substr(colon + 1))};
}

std::string lineOf(std::string text, std::size_t number) {
    for (; number > 1; --number) {
        text.erase(0, text.find('\n') + 1);
    }
    return text.substr(0, text.find('\n'));
}

/// What a terminal shows of a short line: nothing that it would obey.
std::string shown(std::string line) {
    std::replace_if(
        line.begin(), line.end(), [](char c) { return c == '\t' || c == '\r'; }, ' ');
    return line.substr(0, line.find_last_not_of(' ') + 1);
}

std::size_t charactersIn(const std::string& text) {
    return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), [](char c) {
        return (static_cast<unsigned char>(c) & 0xC0U) != 0x80U;
    }));
}

/// The line that the place is in and, below the character in its column, a caret.
std::string excerptOf(const std::string& document, const Place& place) {
    const bool isMarked = document.rfind(k_mark, 0) == 0;
    const std::string line = lineOf(document.substr(isMarked ? 3 : 0), place.line);
    return shown(line) + "\n" + std::string(charactersIn(line.substr(0, place.column - 1)), ' ') +
           "^\n";
}

/// All lines of the error but the first.
std::string excerptIn(const CommandResult& result) {
    return result.err.substr(result.err.find('\n') + 1);
}

TEST(value_excerpt, is_the_line_that_is_named_with_a_caret_at_the_column_that_is_named) {
    for (const std::string& document : spellings()) {
        for (const Words& call : k_calls) {
            const CommandResult result = orvid(call, document);
            EXPECT_EQ(result.status, 1) << result;
            EXPECT_EQ(result.out, "");
            EXPECT_EQ(excerptIn(result), excerptOf(document, placeIn(result.err)))
                << document << result;
        }
    }
}

TEST(value_excerpt, has_the_place_and_the_form_of_that_in_check) {
    for (const std::string& document : spellings()) {
        const std::string malformed = replaced(document, "\"b\": 1", "\"b\": ?");
        const CommandResult checked = orvid({"check"}, malformed);
        const CommandResult looked = orvid({"get", "a.b.c"}, document);
        EXPECT_EQ(placeIn(looked.err).line, placeIn(checked.err).line) << document;
        EXPECT_EQ(placeIn(looked.err).column, placeIn(checked.err).column) << document;
        EXPECT_EQ(replaced(excerptIn(looked), "\"b\": 1", "\"b\": ?"), excerptIn(checked));
    }
}

TEST(value_excerpt, is_the_same_for_a_file) {
    const ScratchFile file(k_document);
    for (const Words& call : k_calls) {
        Words words = call;
        words.push_back(file.name());
        const std::string error = orvid(call, k_document).err;
        EXPECT_EQ(orvid(words).err, replaced(error, "(standard input)", file.name()));
    }
}

TEST(value_excerpt, marks_the_value_or_the_container_that_lacks_it) {
    EXPECT_EQ(
        orvid({"get", "a.b.c"}, k_document),
        failed(1,
               "(standard input):2:14: at a.b: path \"a.b.c\" not found: \"a.b\" is a number\n"
               "  \"a\": {\"b\": 1, \"s\": \"x\"},\n"
               "             ^"));
    EXPECT_EQ(orvid({"set", "l[9]", "1"}, k_document),
              failed(1,
                     "(standard input):3:8: at l: path \"l[9]\" not found, there is no \"[9]\"; a "
                     "new item is written [*]\n"
                     "  \"l\": [1, {\"c\": 2}]\n"
                     "       ^"));
    EXPECT_EQ(orvid({"remove", "zz"}, k_document),
              failed(1,
                     "(standard input):1:1: at (root): path \"zz\" not found, there is no \"zz\"\n"
                     "{\n"
                     "^"));
}

TEST(value_excerpt, is_not_shown_of_records_as_in_check) {
    const std::string record = replaced(replaced(k_document, "\n", ""), "  ", " ");
    EXPECT_EQ(excerptIn(orvid({"check", "--lines"}, "{}\n[1 2]\n")), "");
    for (const Words& call : k_calls) {
        Words words = call;
        words.erase(std::remove(words.begin(), words.end(), "--indent=2"), words.end());
        words.emplace_back("--lines");
        const CommandResult result = orvid(words, "\n" + record + "\n");
        EXPECT_EQ(result.status, 1) << result;
        EXPECT_EQ(placeIn(result.err).line, 2U) << result;
        EXPECT_EQ(excerptIn(result), "") << result;
    }
}

TEST(value_excerpt, is_not_in_errors_as_json) {
    for (const Words& call : k_calls) {
        Words words = call;
        words.emplace_back("--json-errors");
        const Place place = placeIn(orvid(call, k_document).err);
        const CommandResult result = orvid(words, k_document);
        EXPECT_EQ(result.err.find('\n'), result.err.size() - 1) << result;
        EXPECT_NE(
            result.err.find("\"file\":\"(standard input)\",\"line\":" + std::to_string(place.line) +
                            ",\"column\":" + std::to_string(place.column) + ","),
            std::string::npos)
            << result;
    }
}

TEST(value_excerpt, of_a_very_long_line_is_its_part_around_the_value) {
    const std::string line = "{\"k\":[" + repeated("\"\xC3\xA9\",", 30000) + "1" +
                             repeated(",\"\xE2\x82\xAC\"", 30000) + "]}";
    const std::string malformed = replaced(line, "1", "?");
    const CommandResult checked = orvid({"check"}, malformed);
    const std::string excerpt = replaced(excerptIn(checked), "?", "1");
    EXPECT_EQ(charactersIn(excerpt.substr(0, excerpt.find('\n'))), 78U);
    for (const Words& call : std::vector<Words>{{"get", "k[30000].x"},
                                                {"set", "k[30000].x", "1"},
                                                {"remove", "k[30000].x"},
                                                {"split", "--in", "k[30000]"}}) {
        EXPECT_EQ(excerptIn(orvid(call, line)), excerpt) << call.front();
    }
}

TEST(value_excerpt, of_a_stream_does_not_depend_on_how_the_text_arrives) {
    const std::string command = R"((printf '{"n": 1,'; sleep 0.1; printf ' "l": 5') | "$0" )";
    EXPECT_EQ(orvid_test::shell(command + "split --in n", {}).err,
              "orvid: (standard input):1:7: at n: a number has no items to split\n"
              "{\"n\": 1, \"l\": 5\n"
              "      ^\n");
    EXPECT_EQ(excerptIn(orvid({"csv"}, "{\"a\": 1}\n {\"b\": 1}\n")), " {\"b\": 1}\n ^\n");
}

TEST(value_excerpt, marks_what_cannot_be_written) {
    const std::string document = "{\n \"a\": [1, \"x\xFF\"]\n}\n";
    for (const Words& call : std::vector<Words>{
             {"print"}, {"get", "a"}, {"query", "$.a"}, {"paths"}, {"find", "[1]", "1"}}) {
        Words words = call;
        words.emplace_back("--ascii");
        const bool isFind = call.front() == "find";
        const CommandResult result = orvid(words, isFind ? "[[0,1,\"\xFF\"]]" : document);
        EXPECT_EQ(excerptIn(result),
                  isFind ? "[[0,1,\"?\"]]\n      ^\n" : " \"a\": [1, \"x?\"]\n          ^\n")
            << result;
    }
    EXPECT_EQ(orvid({"get", "--ascii", "a"}, document),
              failed(1,
                     "(standard input):2:11: at a[1]: holds bytes that are no UTF-8, which --ascii "
                     "cannot write\n \"a\": [1, \"x?\"]\n          ^"));
    EXPECT_EQ(orvid({"print", "--ascii", "--lines"}, "[1, \"x\xFF\"]\n"),
              failed(1,
                     "(standard input):1:5: at [1]: holds bytes that are no UTF-8, which --ascii "
                     "cannot write"));
    EXPECT_EQ(orvid({"query", "--array", "--ascii", "$.a"}, document),
              failed(1,
                     "(standard input): holds bytes that are no UTF-8, which --ascii cannot "
                     "write"));
}

}  // namespace
