// SPDX-License-Identifier: MIT
//
// Path texts and all that the parser reports of each, with every combination of a listener's
// returns, from a stream and from memory. The messages are written out in full.

#include <ko/Orvid/PathParser.h>

#include <gtest/gtest.h>
#include <ko/Orvid/Exception.h>

#include <cstddef>
#include <string>
#include <vector>

#include "unit/path/PathLog.h"

namespace orvid_test {
namespace {

/// A path and the callbacks for it while the listener returns true every time.
struct Row {
    std::string path;
    Lines lines;
};

std::vector<Row> wellFormed() {
    return {
        {"", {}},
        {"a", {"key a"}},
        {".a", {"key a"}},
        {".a.b", {"key a", "key b"}},
        {"a.b[3].c", {"key a", "key b", "index 3", "key c"}},
        {"[0][1]", {"index 0", "index 1"}},
        {"[4].name", {"index 4", "key name"}},
        {"a[1]b", {"key a", "index 1", "key b"}},
        {"a[1]b.c", {"key a", "index 1", "key b", "key c"}},
        {"a[007]", {"key a", "index 7"}},
        {"[4294967294]", {"index 4294967294"}},
        {"[4294967295]", {"index 4294967295"}},
        {"[00000000000000000000000001]", {"index 1"}},
        {"a[*]", {"key a", "index 4294967295"}},
        {"[*][*]x", {"index 4294967295", "index 4294967295", "key x"}},
        {"1.2", {"key 1", "key 2"}},
        {"*", {"key *"}},
        {".*", {"key *"}},
        {"a*b", {"key a*b"}},
        {" .\t", {"key  ", "key \t"}},
        {"\"'{}:,", {"key \"'{}:,"}},
        {"\xC3\xA4.\xE2\x82\xAC", {"key \xC3\xA4", "key \xE2\x82\xAC"}},
        {std::string("a\0b", 3), {std::string("key a\0b", 7)}},
    };
}

std::vector<Row> escaped() {
    return {
        {R"(a\.b)", {"key a.b"}},
        {R"(a\[0\])", {"key a[0]"}},
        {R"(a\\b)", {R"(key a\b)"}},
        {R"(\a)", {"key a"}},
        {R"(\.a)", {"key .a"}},
        {R"(.\.)", {"key ."}},
        {R"(\*)", {"key *"}},
        {R"(a.\1)", {"key a", "key 1"}},
        {R"(a[\*])", {"key a", "index 4294967295"}},
        {R"([\1])", {"index 1"}},
        {R"([\1\2])", {"index 12"}},
        {R"([1\2])", {"index 12"}},
        {R"([1]\.)", {"index 1", "key ."}},
        {R"([1]\[)", {"index 1", "key ["}},
        // A backslash at the very end escapes the end of the input, which reads as the byte 0xFF.
        {R"(a\)", {"key a\xFF"}},
        {R"(\)", {"key \xFF"}},
        {R"(a.b\)", {"key a", "key b\xFF"}},
        {R"(a.\)", {"key a", "key \xFF"}},
        {R"([1]\)", {"index 1", "key \xFF"}},
    };
}

std::vector<Row> endedByByteFF() {
    return {
        {"\xFF", {}},
        {"\xFF]..", {}},
        {"a\xFF"
         "b",
         {"key a"}},
        {"[1]\xFF..", {"index 1"}},
        {"a.\xFF"
         "b",
         {"key a", R"(error Unexpexced EOF in path at "" 1,2 parser state esObjectInit)"}},
        {"[\xFF"
         "1]",
         {R"(error Unexpexced EOF in path at "" 0,1 parser state esArrayInit)"}},
        {"[1\xFF]", {R"(error Unexpexced EOF in path at "1" 1,2 parser state esArray)"}},
        // After a backslash it is a character of a key, and one that no index may hold.
        {"a\\\xFF"
         "b.c",
         {"key a\xFF"
          "b",
          "key c"}},
        {"\\\xFF", {"key \xFF"}},
        {"[\\\xFF]",
         {R"(error Unexpexced EOF in path at "" 0,2 parser state esArrayInit)",
          R"(error Unexpected character ']' in path at "" 0,3 parser state esArrayInit)",
          R"(error Unexpexced EOF in path at "" 0,4 parser state esArrayInit)"}},
        {"[1\\\xFF]",
         {R"(error Unexpexced EOF in path at "1" 1,3 parser state esArray)", "index 1"}},
    };
}

std::vector<Row> endingTooEarly() {
    return {
        {".", {R"(error Unexpexced EOF in path at "" 0,1 parser state esObjectInit)"}},
        {"a.", {"key a", R"(error Unexpexced EOF in path at "" 1,2 parser state esObjectInit)"}},
        {"[1].",
         {"index 1", R"(error Unexpexced EOF in path at "" 3,4 parser state esObjectInit)"}},
        {"a[", {"key a", R"(error Unexpexced EOF in path at "" 1,2 parser state esArrayInit)"}},
        {"a[1", {"key a", R"(error Unexpexced EOF in path at "1" 2,3 parser state esArray)"}},
        {"[*", {R"(error Unexpexced EOF in path at "*" 1,2 parser state esArray)"}},
        {R"([\)",
         {R"(error Unexpexced EOF in path at "" 0,2 parser state esArrayInit)",
          R"(error Unexpexced EOF in path at "" 0,3 parser state esArrayInit)"}},
        {R"([1\)",
         {R"(error Unexpexced EOF in path at "1" 1,3 parser state esArray)",
          R"(error Unexpexced EOF in path at "1" 1,4 parser state esArray)"}},
    };
}

std::vector<Row> malformedBetweenSteps() {
    return {
        {"]", {R"(error Unexpected character ']' in path at "" 0,0 parser state esInit)"}},
        {"]a",
         {R"(error Unexpected character ']' in path at "" 0,0 parser state esInit)", "key a"}},
        {"[1]]",
         {"index 1", R"(error Unexpected character ']' in path at "" 2,3 parser state esInit)"}},
        {"..",
         {R"(error Unexpected character '.' in path at "" 0,1 parser state esObjectInit)",
          R"(error Unexpexced EOF in path at "" 0,2 parser state esObjectInit)"}},
        {"a..b",
         {"key a", R"(error Unexpected character '.' in path at "" 1,2 parser state esObjectInit)",
          "key b"}},
        {"a.[0]",
         {"key a", R"(error Unexpected character '[' in path at "" 1,2 parser state esObjectInit)",
          R"(error Unexpected character ']' in path at "0" 3,4 parser state esObject)", "key 0"}},
        {".]",
         {R"(error Unexpected character ']' in path at "" 0,1 parser state esObjectInit)",
          R"(error Unexpexced EOF in path at "" 0,2 parser state esObjectInit)"}},
        {"a]b",
         {R"(error Unexpected character ']' in path at "a" 0,1 parser state esObject)", "key ab"}},
        {"\xC3\xA4]",
         {"error Unexpected character ']' in path at \"\xC3\xA4\" 0,2 parser state esObject",
          "key \xC3\xA4"}},
    };
}

std::vector<Row> malformedIndexes() {
    return {
        {"a[]",
         {"key a", R"(error Unexpected character ']' in path at "" 1,2 parser state esArrayInit)",
          R"(error Unexpexced EOF in path at "" 1,3 parser state esArrayInit)"}},
        {"a[x]",
         {"key a", R"(error Unexpected character 'x' in path at "" 1,2 parser state esArrayInit)",
          R"(error Unexpected character ']' in path at "" 1,3 parser state esArrayInit)",
          R"(error Unexpexced EOF in path at "" 1,4 parser state esArrayInit)"}},
        {"a[1x2]",
         {"key a", R"(error Unexpected character 'x' in path at "1" 2,3 parser state esArray)",
          "index 12"}},
        {"[ 1]",
         {R"(error Unexpected character ' ' in path at "" 0,1 parser state esArrayInit)",
          "index 1"}},
        {"[1 ]",
         {R"(error Unexpected character ' ' in path at "1" 1,2 parser state esArray)", "index 1"}},
        {"[+1]",
         {R"(error Unexpected character '+' in path at "" 0,1 parser state esArrayInit)",
          "index 1"}},
        {"[-1]",
         {R"(error Unexpected character '-' in path at "" 0,1 parser state esArrayInit)",
          "index 1"}},
        {"[.1]",
         {R"(error Unexpected character '.' in path at "" 0,1 parser state esArrayInit)",
          "index 1"}},
        {"[[1]",
         {R"(error Unexpected character '[' in path at "" 0,1 parser state esArrayInit)",
          "index 1"}},
        {"[0.1]",
         {R"(error Unexpected character '.' in path at "0" 1,2 parser state esArray)", "index 1"}},
        {"[2[1]",
         {R"(error Unexpected character '[' in path at "2" 1,2 parser state esArray)", "index 21"}},
        {"[1*]",
         {R"(error Unexpected character '*' in path at "1" 1,2 parser state esArray)", "index 1"}},
        {R"([1\*])",
         {R"(error Unexpected character '*' in path at "1" 1,3 parser state esArray)", "index 1"}},
        {R"([1\]])",
         {R"(error Unexpected character ']' in path at "1" 1,3 parser state esArray)", "index 1"}},
        {R"([\x1])",
         {R"(error Unexpected character 'x' in path at "" 0,2 parser state esArrayInit)",
          "index 1"}},
        {R"([\\1])",
         {R"(error Unexpected character '\' in path at "" 0,2 parser state esArrayInit)",
          "index 1"}},
        {std::string("[\0001]", 4),
         {std::string("error Unexpected character '") + '\0' +
              R"(' in path at "" 0,1 parser state esArrayInit)",
          "index 1"}},
    };
}

std::vector<Row> unreadableIndexes() {
    return {
        {"a[4294967296]",
         {"key a", R"(error Unreadable index in path at "4294967296" 2,12 parser state esInit)",
          "index 4294967295"}},
        {"[99999999999999999999999999]b",
         {"error Unreadable index in path at \"99999999999999999999999999\" 1,27 parser state "
          "esInit",
          "index 4294967295", "key b"}},
        {"[*1]", {R"(error Unreadable index in path at "*1" 1,3 parser state esInit)", "index 0"}},
        {"[*1].",
         {R"(error Unreadable index in path at "*1" 1,3 parser state esInit)", "index 0",
          R"(error Unexpexced EOF in path at "" 4,5 parser state esObjectInit)"}},
        {R"([*1]\b)",
         {R"(error Unreadable index in path at "*1" 1,3 parser state esInit)", "index 0", "key b"}},
        {R"([*1]\)",
         {R"(error Unreadable index in path at "*1" 1,3 parser state esInit)", "index 0",
          "key \xFF"}},
        {"[*1]\xFF",
         {R"(error Unreadable index in path at "*1" 1,3 parser state esInit)", "index 0"}},
        // `*` stands for no index only where it has been the one character between the brackets.
        {"[*x]",
         {R"(error Unexpected character 'x' in path at "*" 1,2 parser state esArray)",
          R"(error Unreadable index in path at "*" 1,3 parser state esInit)", "index 0"}},
        {"[**]",
         {R"(error Unexpected character '*' in path at "*" 1,2 parser state esArray)",
          R"(error Unreadable index in path at "*" 1,3 parser state esInit)", "index 0"}},
    };
}

std::vector<Row> allRows() {
    std::vector<Row> rows;
    for (const auto& table : {wellFormed(), escaped(), endedByByteFF(), endingTooEarly(),
                              malformedBetweenSteps(), malformedIndexes(), unreadableIndexes()}) {
        rows.insert(rows.end(), table.begin(), table.end());
    }
    return rows;
}

bool startsWith(const std::string& text, const std::string& start) {
    return text.compare(0, start.size(), start) == 0;
}

/// The first false answer is the last callback, except for one: after an unreadable index the item
/// is reported whatever the answer was.
Lines untilRefused(const Lines& lines, const std::vector<bool>& answers) {
    for (std::size_t i = 0; i < lines.size(); ++i) {
        if (!answers[i]) {
            const bool goesOn = startsWith(lines[i], "error Unreadable index");
            const auto count = static_cast<Lines::difference_type>(goesOn ? i + 2 : i + 1);
            return Lines(lines.begin(), lines.begin() + count);
        }
    }
    return lines;
}

TEST(PathParserTable, reports_these_steps_and_errors_while_the_listener_goes_on) {
    for (const Row& row : allRows()) {
        EXPECT_EQ(logOf(row.path).lines(), row.lines) << row.path;
    }
}

TEST(PathParserTable, stops_silently_at_the_first_answer_false_for_every_combination_of_answers) {
    for (const Row& row : allRows()) {
        for (unsigned int bits = 0; bits < 1U << row.lines.size(); ++bits) {
            std::vector<bool> answers;
            for (std::size_t i = 0; i < row.lines.size(); ++i) {
                answers.push_back((bits >> i & 1U) != 0);
            }
            EXPECT_EQ(logOf(row.path, answers).lines(), untilRefused(row.lines, answers))
                << row.path << " with the answers " << bits;
        }
    }
}

/// A listener that leaves errors to its base.
class StepLog : public PathLog {
    bool cbParseError(const std::string& message, const std::string& token, unsigned int start,
                      unsigned int end) override {
        return PathParserListener::cbParseError(message, token, start, end);
    }
};

TEST(PathParserTable,
     throws_the_first_error_of_each_malformed_path_when_the_listener_has_no_own_way) {
    for (const Row& row : allRows()) {
        Lines expected;
        std::string thrown;
        for (const std::string& line : row.lines) {
            if (startsWith(line, "error ")) {
                thrown = line.substr(6);
                break;
            }
            expected.push_back(line);
        }
        StepLog log;
        std::string message;
        try {
            ko::Orvid::PathParser(&log).parse(row.path);
        } catch (const ko::Orvid::ParseException& error) {
            message = error.message();
            const std::string span = " " + std::to_string(error.firstColumn()) + "," +
                                     std::to_string(error.lastColumn()) + " parser state";
            EXPECT_NE(message.find(span), std::string::npos) << message;
            EXPECT_EQ(error.firstLine(), 1);
            EXPECT_EQ(error.lastLine(), 1);
        }
        EXPECT_EQ(message, thrown) << row.path;
        EXPECT_EQ(log.lines(), expected) << row.path;
    }
}

}  // namespace
}  // namespace orvid_test
