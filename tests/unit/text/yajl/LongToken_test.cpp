// SPDX-License-Identifier: MIT
//
// Long tokens in many pieces: after each piece the reader has reported what a reader says that is
// given the text so far in one, and the cost does not grow with the square of the pieces.

#include "text/yajl/LongToken.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "EventLog.h"

namespace yajlTests {
namespace {

using ko::Orvid::yajl::LongToken;

const std::string k_long(100, 'x');

bool isGoingOn(ReadStatus status) {
    return status == ReadStatus::ok || status == ReadStatus::insufficientData;
}

/// Feeds the text in pieces of `size` bytes, and looks at the outcome after each of them.
void expectSameInPieces(const std::string& text, std::size_t size) {
    EventLog log;
    Reader reader(k_textual, &log);
    for (std::size_t begin = 0; begin < text.size(); begin += size) {
        const std::string piece = text.substr(begin, size);
        const ReadStatus status = reader.parse(piece.data(), piece.size());
        const Outcome whole = read(text.substr(0, begin + size));
        ASSERT_EQ(status, whole.status) << begin;
        ASSERT_EQ(log.words, whole.words) << begin;
        ASSERT_EQ(reader.position(), whole.position) << begin;
        ASSERT_EQ(reader.error(false, nullptr, 0), whole.message) << begin;
        if (!isGoingOn(status)) {
            return;
        }
    }
}

void expectSameInAnyPieces(const std::string& text) {
    SCOPED_TRACE(text);
    for (const std::size_t size : {1U, 2U, 3U, 7U, 64U, 65U, 130U}) {
        SCOPED_TRACE(size);
        expectSameInPieces(text, size);
    }
}

TEST(LongToken, may_be_a_string_with_every_escape) {
    const std::string escapes = R"(\"\\\/\b\f\n\r\t\u00e4\u20AC\uD83D\uDE00)";
    expectSameInAnyPieces("[\"" + k_long + escapes + k_long + escapes + "\", \"next\"]");
    expectSameInAnyPieces("{\"" + repeat(escapes, 5) + "\": \"" + repeat("\xC3\xA4", 80) + "\"}");
    expectSameInAnyPieces("\"" + k_long + "/*'[{,:\x7F\xFF" + k_long + "\"");
}

TEST(LongToken, ends_where_a_string_is_malformed) {
    for (const std::string row : {"\\x", "\\u12G4", "\\u123\"", "\n", "\x1F", "\\", "\\u", "\\u1",
                                  "\\u12", "\\uG", "\\\n"}) {
        expectSameInAnyPieces("[\"" + k_long + row + k_long + "\"]");
    }
    expectSameInAnyPieces("[\"" + k_long + std::string(1, '\0') + k_long + "\"]");
}

TEST(LongToken, may_be_a_number_of_any_form) {
    const std::string digits(100, '7');
    const std::string zeros(100, '0');
    for (const std::string& number :
         {digits, "-" + digits, digits + "." + zeros + digits, "0." + zeros + "1",
          digits + "e-" + zeros + "5", "1.5E+" + digits}) {
        expectSameInAnyPieces("[" + number + ", 1]");
        expectSameInAnyPieces(number + " ");
        expectSameInAnyPieces("[" + number + "]");
    }
}

TEST(LongToken, ends_where_a_number_is_malformed) {
    const std::string digits(100, '7');
    const std::vector<std::string> numbers = {
        "00" + digits, "0" + digits, "-0" + digits,   digits + "." + digits + ".",
        digits + "..", digits + "e", digits + "e+-1", digits + "-",
        digits + "x",  "-x",         digits + ".e1",
    };
    for (const std::string& number : numbers) {
        expectSameInAnyPieces("[" + number + ", 1]");
    }
}

TEST(LongToken, may_be_a_comment) {
    const std::string block = "/* " + k_long + " ** // \" \n * / " + k_long + "**/";
    const std::string line = "// " + k_long + " /* */ \" " + k_long + "\n";
    expectSameInAnyPieces(block + "[1" + line + "," + block + line + "2 /**/]" + block);
    expectSameInAnyPieces("[1" + block + "\"" + k_long + "\"]");
    expectSameInAnyPieces("[1,/" + k_long + "]");
}

TEST(LongToken, follows_other_tokens) {
    expectSameInAnyPieces("{\"a\" : [null, true,false ,-1.5e3, \"\", {}], \"" + k_long + "\":\"" +
                          k_long + k_long + "\"}" + k_long + k_long);
    expectSameInAnyPieces("[nul" + k_long + k_long);
    expectSameInAnyPieces(std::string(200, ' ') + "[" + std::string(200, '\n') + "]");
}

/// If each byte made YAJL begin again, this would take hours.
TEST(LongToken, of_single_bytes_costs_no_more_than_its_length) {
    constexpr std::size_t k_length = 2000000;
    const std::string string = "\"" + repeat("x\\u0041", k_length / 7) + "\"";
    EXPECT_EQ(read(string, 1).words, "\"" + repeat("xA", k_length / 7) + "\" ");
    EXPECT_EQ(read("[1," + string + "]", 1).words,
              "[ n1 \"" + repeat("xA", k_length / 7) + "\" ] ");
    EXPECT_EQ(read("{\"\":" + string + "}", 1).words,
              "{ '' \"" + repeat("xA", k_length / 7) + "\" } ");
    EXPECT_EQ(read("[null]" + string, 1).words, "[ null ] ");
    const std::string number = "[" + std::string(k_length, '7') + "]";
    EXPECT_EQ(read(number, 1).words, "[ n" + std::string(k_length, '7') + " ] ");
    const std::string comment = "[/*" + std::string(k_length, '*') + "*/]";
    EXPECT_EQ(read(comment, 1).words, "[ ] ");
}

TEST(LongToken, holds_only_what_goes_on_with_a_long_token) {
    LongToken token;
    token.follow("\"short");
    EXPECT_FALSE(token.hold("x"));
    token.follow(k_long);
    EXPECT_TRUE(token.hold("abc\\"));
    EXPECT_TRUE(token.hold("u00e4"));
    EXPECT_FALSE(token.hold("the end\""));
    EXPECT_EQ(token.held(), "abc\\u00e4");
    token.release();
    EXPECT_EQ(token.held(), "");
    token.begin();
    EXPECT_FALSE(token.hold("x"));
}

TEST(LongToken, holds_all_that_may_stand_in_it) {
    LongToken string;
    string.follow("\"" + k_long);
    EXPECT_TRUE(string.hold(" !~\xFF\x7F\\u0123\\u4567\\u89ab\\ucdef\\uABCD\\uEF00"));
    LongToken number;
    number.follow(std::string(100, '1'));
    EXPECT_TRUE(number.hold("0123456789"));
    LongToken comment;
    comment.follow("//" + k_long);
    EXPECT_TRUE(comment.hold("\r\t*/"));
    LongToken block;
    block.follow("/*" + k_long);
    EXPECT_TRUE(block.hold("// \n *"));
    EXPECT_FALSE(block.hold("/"));
}

TEST(LongToken, is_one_of_64_bytes) {
    LongToken token;
    token.follow(" \"" + std::string(62, 'x'));
    EXPECT_FALSE(token.hold("x"));
    token.follow("x");
    EXPECT_TRUE(token.hold("x"));
}

TEST(LongToken, holds_no_more_than_has_been_read_of_it) {
    LongToken token;
    token.follow("\"" + k_long);
    EXPECT_TRUE(token.hold(k_long + "x"));
    EXPECT_FALSE(token.hold("x"));
    EXPECT_EQ(token.held(), k_long + "x");
    token.release();
    token.follow("x");
    EXPECT_TRUE(token.hold("x"));
}

}  // namespace
}  // namespace yajlTests
