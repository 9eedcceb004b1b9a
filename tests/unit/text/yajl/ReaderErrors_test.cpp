// SPDX-License-Identifier: MIT
//
// Tests of what Reader says of a failure: the line for every kind of error, the text around it with
// the marker, byte for byte, and the position.

#include "text/yajl/Reader.h"

#include <gtest/gtest.h>

#include <vector>

#include "EventLog.h"

#include "support/YajlMessages.h"

namespace yajlTests {
namespace {

namespace yajl = orvid_test::yajl;

struct Row {
    std::string text;
    std::string message;
    std::size_t position;
};

const std::vector<Row> k_errors = {
    {"]", yajl::k_unallowedToken + "\n", 1},
    {"[1,]", yajl::k_unallowedToken + "\n", 4},
    {"[,", yajl::k_unallowedToken + "\n", 2},
    {"[1 : 2]", yajl::k_afterItem + "\n", 4},
    {"[1 \"abc\"]", yajl::k_afterItem + "\n", 8},
    {"{1}", yajl::k_invalidKey + "\n", 2},
    {"{\"a\":1,}", yajl::k_invalidKey + "\n", 8},
    {"{\"a\" 1 }", yajl::k_noColon + "\n", 6},
    {"{\"a\":1 true}", yajl::k_afterMember + "\n", 7},
    {"{\"a\":1 \"bcd\"}", yajl::k_afterMember + "\n", 9},
    {"[@]", yajl::k_invalidCharacter + "\n", 2},
    {"[/x]", yajl::k_invalidCharacter + "\n", 3},
    {"[tRue]", yajl::k_invalidWord + "\n", 2},
    {"[falsE]", yajl::k_invalidWord + "\n", 5},
    {"[nul ]", yajl::k_invalidWord + "\n", 4},
    {"[\"a\\x\"]", yajl::k_invalidEscape + "\n", 4},
    {"[\"a\\u12g4\"]", yajl::k_invalidHex + "\n", 7},
    {"[\"a\tb\"]", yajl::k_invalidInString + "\n", 3},
    {"[-a]", yajl::k_noDigitAfterMinus + "\n", 2},
    {"[1.a]", yajl::k_noDigitAfterPoint + "\n", 3},
    {"[1ea]", yajl::k_noDigitAfterExponent + "\n", 3},
    {"[1e+]", yajl::k_noDigitAfterExponent + "\n", 4},
};

// The two lines under the message, with the marker under byte `offset` of `text`.
std::string excerpt(const std::string& text, std::size_t offset) {
    const std::size_t begin = offset < 30 ? 0 : offset - 30;
    return std::string(offset < 30 ? 40 - offset : 10, ' ') +
           text.substr(begin, offset + 30 - begin) + "\n" + std::string(21, ' ') +
           "(right here) ------^\n";
}

std::string verboseError(const std::string& text, const ReaderCallbacks& callbacks) {
    EventLog log;
    Reader reader(callbacks, &log);
    EXPECT_EQ(feed(reader, text), ReadStatus::error);
    return reader.error(true, text.data(), text.size());
}

TEST(ReaderErrors, name_every_kind_of_error) {
    for (const Row& row : k_errors) {
        const Outcome outcome = read(row.text);
        EXPECT_EQ(outcome.status, ReadStatus::error) << row.text;
        EXPECT_EQ(outcome.message, row.message) << row.text;
        EXPECT_EQ(outcome.position, row.position) << row.text;
    }
}

TEST(ReaderErrors, set_the_marker_to_the_position) {
    for (const Row& row : k_errors) {
        EXPECT_EQ(verboseError(row.text, k_textual), row.message + excerpt(row.text, row.position));
    }
}

TEST(ReaderErrors, are_unknown_while_there_is_none) {
    EXPECT_EQ(read("[1").message, "unknown error\n");
    EXPECT_EQ(read("[1]").message, "unknown error\n");
}

TEST(ReaderErrors, show_exactly_this_text) {
    EXPECT_EQ(verboseError("{\"a\": 1, \"b\" 2}", k_textual),
              yajl::k_noColon +
                  "\n"
                  "                          {\"a\": 1, \"b\" 2}\n"
                  "                     (right here) ------^\n");
    EXPECT_EQ(verboseError("{\"a\": 99999999999999999999}", k_numeric),
              yajl::k_integerOverflow +
                  "\n"
                  "                                  {\"a\": 99999999999999999999}\n"
                  "                     (right here) ------^\n");
}

TEST(ReaderErrors, show_thirty_bytes_on_either_side) {
    for (const std::size_t before : {0U, 1U, 28U, 29U, 30U, 31U, 100U}) {
        for (const std::size_t after : {0U, 28U, 29U, 30U, 100U}) {
            const std::string spaces = repeat("123456789 ", 20).substr(0, before);
            const std::string start = "[" + std::string(before, ' ');
            const std::string rest = repeat("abcdefghi ", 20).substr(0, after);
            const std::string lexical = start + "\"\x01" + rest;
            EXPECT_EQ(verboseError(lexical, k_textual),
                      yajl::k_invalidInString + "\n" + excerpt(lexical, start.size() + 1));
            const std::string number = start + "1e999 " + rest;
            EXPECT_EQ(verboseError(number, k_numeric),
                      yajl::k_floatOverflow + "\n" + excerpt(number, start.size()));
        }
    }
}

TEST(ReaderErrors, show_line_ends_as_spaces) {
    EXPECT_EQ(verboseError("[\n1,\r\n]\r\n", k_textual),
              yajl::k_unallowedToken + "\n" + excerpt("[ 1,  ]  ", 7));
    EXPECT_EQ(verboseError("[\n1,\r\n1e999\r\n]", k_numeric),
              yajl::k_floatOverflow + "\n" + excerpt("[ 1,  1e999  ]", 6));
}

// As YAJL does it for its own messages, and the reader's own must look the same.
TEST(ReaderErrors, end_the_text_at_a_nul) {
    const std::string nul(1, '\0');
    EXPECT_EQ(verboseError("[@" + nul + "]", k_textual),
              yajl::k_invalidCharacter + "\n" + std::string(38, ' ') + "[@" + std::string(21, ' ') +
                  "(right here) ------^\n");
    EXPECT_EQ(verboseError("[1e999," + nul + "]", k_numeric),
              yajl::k_floatOverflow + "\n" + std::string(39, ' ') + "[1e999," +
                  std::string(21, ' ') + "(right here) ------^\n");
}

TEST(ReaderErrors, show_only_the_last_piece) {
    EventLog log;
    Reader reader(k_textual, &log);
    feed(reader, "[1, 2, ");
    feed(reader, "3,, 4");
    EXPECT_EQ(reader.error(true, "3,, 4", 5), yajl::k_unallowedToken + "\n" + excerpt("3,, 4", 3));
    EXPECT_EQ(reader.position(), 10U);
}

TEST(ReaderErrors, set_the_marker_to_the_beginning_of_a_later_piece) {
    EventLog log;
    Reader reader(k_textual, &log);
    feed(reader, "[1,,");
    feed(reader, "2]");
    EXPECT_EQ(reader.error(true, "2]", 2), yajl::k_unallowedToken + "\n" + excerpt("2]", 0));
    EXPECT_EQ(reader.position(), 4U);
}

TEST(ReaderErrors, show_nothing_of_a_text_that_is_too_short) {
    EventLog log;
    Reader reader(k_numeric, &log);
    feed(reader, "[1,    1e999]");
    // YAJL counts the whitespace from the place of the error, text or no text.
    EXPECT_EQ(reader.error(true, nullptr, 0), yajl::k_floatOverflow + "\n" + std::string(33, ' ') +
                                                  "\n" + std::string(21, ' ') +
                                                  "(right here) ------^\n");
}

TEST(ReaderErrors, show_nothing_of_a_text_that_ends_far_before_the_error) {
    EventLog log;
    Reader reader(k_numeric, &log);
    feed(reader, "[" + std::string(99, ' ') + "1e999]");
    EXPECT_EQ(reader.error(true, "[1]", 3), yajl::k_floatOverflow + "\n" + std::string(10, ' ') +
                                                "\n" + std::string(21, ' ') +
                                                "(right here) ------^\n");
}

}  // namespace
}  // namespace yajlTests
