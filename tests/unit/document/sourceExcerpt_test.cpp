// SPDX-License-Identifier: MIT
//
// Tests of sourceExcerpt: the line, the carets under the error, and how long lines are cut.

#include <ko/Orvid/sourceExcerpt.h>

#include <string>

#include "support/Document.h"

namespace {

using ko::Orvid::DomParser;
using ko::Orvid::Element;
using ko::Orvid::ParseException;
using ko::Orvid::ReadOptions;
using ko::Orvid::sourceExcerpt;

/// The excerpt of a text that is malformed when it is read strictly.
std::string excerptOf(const std::string& text) {
    Element root;
    return sourceExcerpt(text, orvid_test::thrownBy<ParseException>(
                                   [&] { DomParser(ReadOptions::strict()).parse(root, text); }));
}

/// The excerpt for an error given by its columns in the first line.
std::string excerptAt(const std::string& text, int first, int last) {
    return sourceExcerpt(text, ParseException("", 1, first, 1, last));
}

std::size_t charactersOf(const std::string& line) {
    std::size_t count = 0;
    for (const char c : line) {
        count += (static_cast<unsigned char>(c) & 0xC0U) != 0x80U ? 1U : 0U;
    }
    return count;
}

TEST(SourceExcerpt, puts_a_caret_under_the_error) {
    EXPECT_EQ(excerptOf("[1, x]"), "[1, x]\n    ^\n");
    EXPECT_EQ(excerptOf("x"), "x\n^\n");
}

TEST(SourceExcerpt, shows_the_line_alone) {
    EXPECT_EQ(excerptOf("[1,\n  2,]\n,3]"), "  2,]\n    ^\n");
    EXPECT_EQ(excerptOf("[1,\r\n  2,]\r\n"), "  2,]\n    ^\n");
    EXPECT_EQ(excerptOf("[1,\n]"), "]\n^\n");
}

TEST(SourceExcerpt, marks_every_character_of_the_error) {
    EXPECT_EQ(excerptOf(R"({"a":1,"a":2})"), "{\"a\":1,\"a\":2}\n       ^^^\n");
    EXPECT_EQ(excerptOf(R"(["\ud800"])"), "[\"\\ud800\"]\n  ^^^^^^\n");
}

TEST(SourceExcerpt, marks_one_character_where_the_last_column_is_not_after_the_first) {
    EXPECT_EQ(excerptAt("[1, x]", 5, 5), "[1, x]\n    ^\n");
    EXPECT_EQ(excerptAt("[1, x]", 5, 2), "[1, x]\n    ^\n");
    EXPECT_EQ(excerptAt("[1, x]", 5, -1), "[1, x]\n    ^\n");
}

TEST(SourceExcerpt, marks_the_place_after_the_last_character_of_a_text_that_ends_early) {
    EXPECT_EQ(excerptOf("[1, 2"), "[1, 2\n     ^\n");
    EXPECT_EQ(excerptOf(""), "\n^\n");
    EXPECT_EQ(excerptOf("[\n"), "\n^\n");
}

TEST(SourceExcerpt, counts_a_carriage_return_that_ends_no_line) {
    EXPECT_EQ(excerptOf("[1,\r"), "[1,\n    ^\n");
    EXPECT_EQ(excerptOf("[1,\r x\r"), "[1,  x\n     ^\n");
    EXPECT_EQ(excerptOf("\r[\r2 3]\r\n"), " [ 2 3]\n     ^\n");
    EXPECT_EQ(excerptAt("\r\n[]", 1, 1), "\n^\n");
}

TEST(SourceExcerpt, counts_characters_and_not_bytes) {
    EXPECT_EQ(excerptOf("[\"\xC3\xA9\xE2\x82\xAC\", x]"),
              "[\"\xC3\xA9\xE2\x82\xAC\", x]\n       ^\n");
    EXPECT_EQ(excerptAt("\xE2\x82\xAC", 2, 3), "\xE2\x82\xAC\n^\n");
}

TEST(SourceExcerpt, shows_nothing_that_upsets_a_terminal) {
    EXPECT_EQ(excerptOf("[\"a\xFF\"]"), "[\"a?\"]\n   ^\n");
    EXPECT_EQ(excerptOf("[\"\xE2\x82\"]"), "[\"??\"]\n  ^^\n");
    EXPECT_EQ(excerptOf("[\"a\x1B"
                        "b\"]"),
              "[\"a b\"]\n   ^\n");
    EXPECT_EQ(excerptOf("\t\t[\tx]"), "  [ x]\n    ^\n");
    EXPECT_EQ(excerptAt(std::string("a\0b", 3), 2, 2), "a b\n ^\n");
    EXPECT_EQ(excerptAt("a\x7F"
                        "b",
                        2, 2),
              "a b\n ^\n");
}

TEST(SourceExcerpt, cuts_a_long_line_around_the_error) {
    const std::string long_begin(100, 'a');
    const std::string long_end(100, 'b');
    EXPECT_EQ(excerptAt(long_begin + "x" + long_end, 101, 101), "..." + std::string(30, 'a') + "x" +
                                                                    std::string(41, 'b') + "...\n" +
                                                                    std::string(33, ' ') + "^\n");
    EXPECT_EQ(excerptAt("aaaxx" + long_end, 4, 5), "aaaxx" + std::string(70, 'b') + "...\n   ^^\n");
    EXPECT_EQ(excerptAt(long_begin + "xyz", 101, 101),
              "..." + std::string(30, 'a') + "xyz\n" + std::string(33, ' ') + "^\n");
}

TEST(SourceExcerpt, leaves_a_line_whole_that_just_fits) {
    const std::string line(78, 'a');
    EXPECT_EQ(excerptAt(line, 78, 78), line + "\n" + std::string(77, ' ') + "^\n");
    const std::string longer(79, 'a');
    EXPECT_EQ(excerptAt(longer, 79, 79),
              "..." + std::string(31, 'a') + "\n" + std::string(33, ' ') + "^\n");
}

TEST(SourceExcerpt, is_never_wider_than_a_terminal) {
    for (std::size_t length = 1; length < 400; length += 3) {
        std::string line;
        for (std::size_t i = 0; i < length; ++i) {
            line += i % 2 == 0 ? "\xF0\x9D\x84\x9E" : "\xFF";
        }
        for (std::size_t at = 1; at <= line.size() + 1; at += 7) {
            const std::string text = excerptAt(line, static_cast<int>(at), 2000);
            const std::size_t newline = text.find('\n');
            EXPECT_LE(charactersOf(text.substr(0, newline)), 78U);
            EXPECT_LE(text.size() - newline - 2, 78U);
            EXPECT_NE(text.find('^'), std::string::npos);
        }
    }
}

TEST(SourceExcerpt, is_empty_where_there_is_no_such_place) {
    EXPECT_EQ(sourceExcerpt("[]", ParseException("", -1, -1, -1, -1)), "");
    EXPECT_EQ(sourceExcerpt("[]", ParseException("", 2, 1, 2, 1)), "");
    EXPECT_EQ(sourceExcerpt("[]", ParseException("", 1, -1, 1, -1)), "");
    EXPECT_EQ(excerptAt("[]", 900, 901), "[]\n  ^\n");
}

TEST(SourceExcerpt, marks_the_rest_of_the_line_for_an_error_of_several_lines) {
    EXPECT_EQ(sourceExcerpt("[ab\ncd]", ParseException("", 1, 2, 2, 1)), "[ab\n ^^\n");
}

/// The excerpt of a text of which no T can be made.
template<class T>
std::string excerptOfWord(const std::string& text) {
    return sourceExcerpt(text, orvid_test::thrownBy<ParseException>([&] { T{text}; }));
}

TEST(SourceExcerpt, puts_a_caret_under_the_error_of_a_query_a_pointer_or_a_path) {
    EXPECT_EQ(excerptOfWord<ko::Orvid::JsonPath>("$.a[?]"), "$.a[?]\n     ^\n");
    EXPECT_EQ(excerptOfWord<ko::Orvid::JsonPath>("x"), "x\n^\n");
    EXPECT_EQ(excerptOfWord<ko::Orvid::JsonPath>("$."), "$.\n  ^\n");
    EXPECT_EQ(excerptOfWord<ko::Orvid::JsonPointer>("/a/~2"), "/a/~2\n   ^^\n");
    const auto error =
        orvid_test::thrownBy<ParseException>([] { return ko::Orvid::Path("a[x").steps(); });
    EXPECT_EQ(sourceExcerpt("a[x", error), "a[x\n ^^\n");
}

TEST(SourceExcerpt, shows_a_query_of_several_lines_as_one) {
    EXPECT_EQ(excerptOfWord<ko::Orvid::JsonPath>("$[?@.a ==\n\nx]"),
              "$[?@.a ==  x]\n           ^\n");
}

}  // namespace
