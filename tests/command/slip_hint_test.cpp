// SPDX-License-Identifier: MIT
//
// What a message says of the commonest slips, besides what was expected.

#include "support/Command.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace {

using orvid_test::orvid;
using orvid_test::shell;

/// The first line of standard error.
std::string message(const std::string& text) {
    const std::string all = orvid({"print"}, text).err;
    return all.substr(0, all.find('\n'));
}

bool endsWith(const std::string& text, const std::string& end) {
    return text.length() >= end.length() &&
           text.compare(text.length() - end.length(), end.length(), end) == 0;
}

TEST(slip_hint, says_what_was_meant) {
    const std::vector<std::pair<std::string, std::string>> rows{
        {"[True]", "(did you mean true?)"},
        {"[nulll]", "(did you mean null?)"},
        {"{\"a\":None}", "(did you mean null?)"},
        {"[undefined]", "(did you mean null?)"},
        {"[-Infinity]", "(JSON has no number Infinity)"},
        {"[NaN]", "(JSON has no number NaN)"},
        {"[abc]", "(in double quotes it is a text: \"abc\")"},
        {"{a:1}", "(a key stands in double quotes: \"a\")"},
        {"{'a':1}", "(keys and texts stand in double quotes)"},
        {"[\xE2\x80\x9C"
         "a\"]",
         "(this is no straight quote: \")"},
        {"[\xC2\xA0"
         "1]",
         "(this is a no-break space)"},
        {"[\xE2\x80\x8B"
         "1]",
         "(this is a space of no width)"},
        {"{\"a\"\xEF\xBC\x9A"
         "2}",
         "(this is no plain colon: :)"},
        {"[1, # 2\n]", "(comments begin with // or /*)"},
        {"{\"a\"=1}", "(a colon follows a key)"},
        {"[1, -007]", "(no number begins with 0 and a digit)"},
        {"[0x1F]", "(numbers are decimal)"},
        {"[+1]", "(no number begins with +)"},
        {"[.5]", "(no number begins with a point: write 0 before it)"},
        {"[1e ]", "(a space)"},
        {"[-\n]", "(a line break)"},
        {std::string("\xFF\xFE{\0", 4), "(this is UTF-16: JSON is UTF-8)"},
        {std::string("\0[\0]", 4), "(this is UTF-16: JSON is UTF-8)"},
        {std::string("[\0]\0", 4), "(this is UTF-16: JSON is UTF-8)"},
        {"\x1F\x8B\x08", "(this is compressed by gzip)"},
        {"\x28\xB5\x2F\xFD", "(this is compressed by zstd)"},
        {"PK\x03\x04", "(this is a zip archive)"},
        {"[\"a\n\"]", ", or the string lacks its closing quote"},
        {"[1] /* x\n", "(the comment that begins at 1:5 is not closed)"},
        {"{\"a\":\"/* [\",\n\"b", "(the string that begins at 2:1 is not closed)"},
        {"{\"a\":[1,// ]\n{},\n", "(the array that begins at 1:6 is not closed)"}};
    for (const auto& [text, hint] : rows) {
        EXPECT_TRUE(endsWith(message(text), hint)) << message(text) << " lacks " << hint;
    }
}

TEST(slip_hint, names_only_the_column_in_a_record) {
    EXPECT_EQ(
        orvid({"print", "--lines"}, "1\n \"x\n").err,
        "orvid: (standard input):2:4: at (root): The text ends before the document is complete "
        "(the string that begins at column 2 is not closed)\n");
}

TEST(slip_hint, is_absent_where_nothing_is_known) {
    for (const std::string text : {"[1 2]", "[100 1]", "[1.0.1]", "[1+1]", "[tru]", "[\"a\" b]",
                                   "[-]", "[1 x]", "[2010 1]", "*", "[1e05 0]", "tru", "\"a\"x"}) {
        EXPECT_FALSE(endsWith(message(text), ")")) << message(text);
    }
}

TEST(check_stream, ends_at_the_first_error_of_a_text_without_an_end) {
    EXPECT_EQ(shell(R"(yes '{"a" 1}' | "$0" check)", {}).err,
              "orvid: (standard input):1:6: at a: Unexpected '1': expected ':'\n"
              "{\"a\" 1}\n     ^\n");
    EXPECT_EQ(shell(R"("$0" check /dev/zero)", {}).status, 1);
}

TEST(excerpts, do_not_depend_on_how_the_text_arrives) {
    const std::string shown =
        "orvid: (standard input):1:4: at (root): Unexpected '2': expected ',' or ']'\n"
        "[1 2,3, 4 5]\n   ^\n";
    for (const std::string verb : {"check", "print", "split"}) {
        EXPECT_EQ(
            shell(R"((printf '[1 2,'; sleep 0.1; printf '3, 4 5]\n7') | "$0" )" + verb, {}).err,
            shown)
            << verb;
        EXPECT_EQ(orvid({verb}, "[1 2,3, 4 5]\n7").err, shown) << verb;
    }
}

}  // namespace
