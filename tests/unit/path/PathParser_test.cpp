// SPDX-License-Identifier: MIT
//
// The parser's calls one by one: streams, listeners that throw, the end and error operations, the
// names of the states. What it makes of each path text is in PathParserTable_test.cpp.

#include <ko/Orvid/PathParser.h>

#include <gtest/gtest.h>
#include <ko/Orvid/Exception.h>

#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "support/Document.h"
#include "support/EnumNames.h"
#include "unit/path/PathLog.h"

namespace orvid_test {
namespace {

using ko::Orvid::ParseException;
using ko::Orvid::PathParser;
using ko::Orvid::PathParserListener;

std::string restOf(std::istream& in) {
    std::ostringstream rest;
    if (in.peek() != std::istream::traits_type::eof()) {
        rest << in.rdbuf();
    }
    return rest.str();
}

TEST(PathParser, returns_the_stream_that_it_was_given) {
    PathLog log;
    std::istringstream in("a.b");
    EXPECT_EQ(&PathParser(&log).parse(in), &in);
    EXPECT_EQ(log.lines(), (Lines{"key a", "key b"}));
    EXPECT_TRUE(in.eof());
}

TEST(PathParser, reads_nothing_from_a_stream_that_is_not_good) {
    for (const auto bit : {std::ios_base::failbit, std::ios_base::badbit, std::ios_base::eofbit}) {
        PathLog log;
        std::istringstream in("a.b..");
        in.setstate(bit);
        EXPECT_EQ(&PathParser(&log).parse(in), &in);
        EXPECT_EQ(log.lines(), Lines());
        in.clear();
        EXPECT_EQ(restOf(in), "a.b..");
    }
}

TEST(PathParser, starts_where_the_stream_stands_and_counts_positions_from_there) {
    PathLog log;
    std::istringstream in("skip:a.");
    in.ignore(5);
    PathParser(&log).parse(in);
    EXPECT_EQ(
        log.lines(),
        (Lines{"key a", R"(error Unexpexced EOF in path at "" 1,2 parser state esObjectInit)"}));
}

TEST(PathParser, leaves_what_follows_a_byte_FF_in_the_stream) {
    PathLog log;
    std::istringstream in("a.b\xFFrest");
    PathParser(&log).parse(in);
    EXPECT_EQ(log.lines(), (Lines{"key a", "key b"}));
    EXPECT_TRUE(in.good());
    EXPECT_EQ(restOf(in), "rest");
}

TEST(PathParser, leaves_what_follows_a_refused_step_in_the_stream) {
    PathLog log({true, false});
    std::istringstream in("a[1].b..");
    PathParser(&log).parse(in);
    EXPECT_EQ(log.lines(), (Lines{"key a", "index 1"}));
    EXPECT_EQ(restOf(in), ".b..");
}

TEST(PathParser, leaves_what_follows_a_refused_character_in_the_stream) {
    for (const std::string path : {"[1x2]", "[1\\x2]", "[x2]", "[\\x2]"}) {
        PathLog log({false});
        std::istringstream in(path);
        PathParser(&log).parse(in);
        EXPECT_EQ(log.lines().size(), 1U);
        EXPECT_EQ(restOf(in), "2]") << path;
    }
}

TEST(PathParser, gives_no_end_of_input_error_after_a_refused_key) {
    EXPECT_EQ(logOf("a.b", {false}).lines(), (Lines{"key a"}));
    EXPECT_EQ(logOf("a.", {false}).lines(), (Lines{"key a"}));
    EXPECT_EQ(logOf("a[", {false}).lines(), (Lines{"key a"}));
}

TEST(PathParser, runs_any_number_of_parses_for_one_listener_and_keeps_nothing_between_them) {
    PathLog log;
    PathParser parser(&log);
    parser.parse("[1");
    parser.parse("b\xFF.");
    std::istringstream in("c\\");
    parser.parse(in);
    parser.parse("d.e");
    EXPECT_EQ(log.lines(), (Lines{R"(error Unexpexced EOF in path at "1" 1,2 parser state esArray)",
                                  "key b", "key c\xFF", "key d", "key e"}));
}

/// Notes how far the stream had been read when each step came.
class Watcher : public PathParserListener {
public:
    explicit Watcher(std::istream& in) : m_in(in) {}

    bool cbObjectProperty(const std::string& key) override { return note(key); }
    bool cbArrayItem(unsigned int index) override { return note(std::to_string(index)); }

    Lines lines;

private:
    bool note(const std::string& step) {
        lines.push_back(step + "@" + std::to_string(static_cast<long>(m_in.tellg())));
        return true;
    }

    std::istream& m_in;
};

TEST(PathParser, reports_each_step_as_soon_as_its_end_is_seen) {
    std::istringstream in("ab.c[12]d.e");
    Watcher watcher(in);
    PathParser(&watcher).parse(in);
    // The last key ends with the input, where a stream has no position any more.
    EXPECT_EQ(watcher.lines, (Lines{"ab@3", "c@5", "12@8", "d@10", "e@-1"}));
}

/// Throws from one of its operations.
class Thrower : public PathLog {
public:
    explicit Thrower(const std::string& from) : m_from(from) {}

    bool cbObjectProperty(const std::string& key) override {
        return throwIf("key") && PathLog::cbObjectProperty(key);
    }
    bool cbArrayItem(unsigned int index) override {
        return throwIf("index") && PathLog::cbArrayItem(index);
    }
    bool cbParseError(const std::string& message, const std::string& token, unsigned int start,
                      unsigned int end) override {
        return throwIf("error") && PathLog::cbParseError(message, token, start, end);
    }

private:
    bool throwIf(const std::string& operation) const {
        if (operation == m_from) {
            throw std::domain_error(operation);
        }
        return true;
    }

    std::string m_from;
};

TEST(PathParser, passes_on_unchanged_what_a_listener_throws) {
    for (const std::string from : {"key", "index", "error"}) {
        Thrower thrower(from);
        PathParser parser(&thrower);
        const auto fromText = thrownBy<std::domain_error>([&] { parser.parse("[1]..a.b[2].c"); });
        EXPECT_EQ(fromText.what(), from);
        std::istringstream in("[1]..a.b[2].c");
        const auto fromStream = thrownBy<std::domain_error>([&] { parser.parse(in); });
        EXPECT_EQ(fromStream.what(), from);
    }
    Thrower atTheEnd("key");
    EXPECT_THROW(PathParser(&atTheEnd).parse("a"), std::domain_error);
}

/// Takes all steps and leaves errors to its base.
class Plain : public PathParserListener {
    bool cbObjectProperty(const std::string& /*key*/) override { return true; }
    bool cbArrayItem(unsigned int /*index*/) override { return true; }
};

TEST(PathParserListener, throws_a_parse_error_with_the_columns_of_the_error) {
    Plain listener;
    const auto error = thrownBy<ParseException>([&] { PathParser(&listener).parse("a."); });
    EXPECT_EQ(error.message(), "Unexpexced EOF in path at \"\" 1,2 parser state esObjectInit");
    EXPECT_EQ(error.firstLine(), 1);
    EXPECT_EQ(error.firstColumn(), 1);
    EXPECT_EQ(error.lastLine(), 1);
    EXPECT_EQ(error.lastColumn(), 2);
    EXPECT_EQ(error.elementPath(), nullptr);
    EXPECT_STREQ(error.what(),
                 "Parse error at 1,1-1,2"
                 "Unexpexced EOF in path at \"\" 1,2 parser state esObjectInit");
}

TEST(PathParserListener, throws_a_parse_error_that_has_the_character) {
    Plain listener;
    const auto errorOf = [&](const char* path) {
        return thrownBy<ParseException>([&] { PathParser(&listener).parse(path); });
    };
    EXPECT_EQ(errorOf("a..b").found(), '.');
    EXPECT_EQ(errorOf("a[']").found(), '\'');
    EXPECT_EQ(errorOf("a[\xC3\xA9]").found(), '\xC3');
    EXPECT_EQ(errorOf("a[\\x]").found(), 'x');
    EXPECT_EQ(errorOf("a[1").found(), std::nullopt);
    EXPECT_EQ(errorOf("a[4294967296]").found(), std::nullopt);
    EXPECT_EQ(errorOf("a..b").expected(), ko::Orvid::ExpectedToken::unknown);
}

TEST(PathParserListener, does_not_read_the_token_of_an_error) {
    Plain listener;
    PathParserListener& base = listener;
    const auto error =
        thrownBy<ParseException>([&] { base.cbParseError("message", "token", 3, 14); });
    EXPECT_STREQ(error.what(), "Parse error at 1,3-1,14message");
}

TEST(PathParserState, starts_between_steps_at_zero) {
    const PathParser::SState s;
    EXPECT_EQ(s.state, PathParser::esInit);
    EXPECT_FALSE(s.escaped);
    EXPECT_EQ(s.position, 0U);
    EXPECT_EQ(s.tokenStart, 0U);
}

TEST(PathParser, ends_a_pending_key_without_looking_at_the_answer) {
    PathLog log({false});
    PathParser::SState s;
    s.state = PathParser::esObject;
    s.token << "ab";
    s.tokenStart = 4;
    s.position = 6;
    PathParser(&log).parseEnd(s, -1);
    EXPECT_EQ(log.lines(), (Lines{"key ab"}));
    EXPECT_EQ(s.state, PathParser::esInit);
    EXPECT_EQ(s.tokenStart, 6U);
    EXPECT_EQ(s.token.str(), "");
}

TEST(PathParser, has_taken_a_pending_key_when_the_listener_throws) {
    Thrower thrower("key");
    PathParser::SState s;
    s.state = PathParser::esObject;
    s.token << "ab";
    s.position = 6;
    EXPECT_THROW(PathParser(&thrower).parseEnd(s, -1), std::domain_error);
    EXPECT_EQ(s.state, PathParser::esInit);
    EXPECT_EQ(s.tokenStart, 6U);
    EXPECT_EQ(s.token.str(), "");
}

TEST(PathParserState, has_a_stream_for_its_token) {
    PathParser::SState s;
    std::stringstream& token = s.token;
    token << "a" << 1;
    EXPECT_EQ(s.token.str(), "a1");
    PathLog log({true});
    std::string message = "Message";
    PathParser(&log).parseError(s, message);
    EXPECT_EQ(log.lines(), (Lines{"error Message in path at \"a1\" 0,0 parser state esInit"}));
    EXPECT_EQ(s.token.str(), "a1");
}

TEST(PathParser, ends_silently_between_steps_and_after_a_refused_error) {
    for (const auto state : {PathParser::esInit, PathParser::esError}) {
        PathLog log;
        PathParser::SState s;
        s.state = state;
        PathParser(&log).parseEnd(s, -1);
        EXPECT_EQ(log.lines(), Lines());
        EXPECT_EQ(s.state, state);
    }
}

TEST(PathParser, ends_with_an_error_where_a_step_is_not_complete) {
    for (const auto state :
         {PathParser::esObjectInit, PathParser::esArrayInit, PathParser::esArray}) {
        PathLog log;
        PathParser::SState s;
        s.state = state;
        PathParser(&log).parseEnd(s, -1);
        std::ostringstream expected;
        expected << "error Unexpexced EOF in path at \"\" 0,0 parser state " << state;
        EXPECT_EQ(log.lines(), (Lines{expected.str()}));
    }
}

TEST(PathParser, names_the_character_that_ended_the_path_unless_it_is_the_end_of_the_input) {
    PathLog log;
    PathParser::SState s;
    s.state = PathParser::esArrayInit;
    s.tokenStart = 7;
    s.position = 9;
    PathParser(&log).parseEnd(s, '!');
    EXPECT_EQ(
        log.lines(),
        (Lines{"error Unexpected character '!' in path at \"\" 7,9 parser state esArrayInit"}));
}

TEST(PathParser, goes_into_the_error_state_only_when_the_listener_refuses_to_go_on) {
    PathLog log({true, false});
    PathParser parser(&log);
    PathParser::SState s;
    s.state = PathParser::esArray;
    s.token << "1";
    s.tokenStart = 4294967294U;
    s.position = 4294967295U;
    std::string message = "Own words";
    EXPECT_TRUE(parser.parseError(s, message));
    EXPECT_EQ(s.state, PathParser::esArray);
    EXPECT_FALSE(parser.parseError(s, 'x'));
    EXPECT_EQ(s.state, PathParser::esError);
    EXPECT_EQ(log.lines(),
              (Lines{"error Own words in path at \"1\" 4294967294,4294967295 parser state esArray",
                     "error Unexpected character 'x' in path at \"1\" 4294967294,4294967295 "
                     "parser state esArray"}));
}

TEST(PathParser, prints_the_names_of_its_states_in_narrow_and_wide_text) {
    EXPECT_EQ(PathParser::esInit, 0);
    EXPECT_EQ(PathParser::esError, 5);
    expectNames<PathParser::EState>(
        {"esInit", "esObjectInit", "esObject", "esArrayInit", "esArray", "esError"});
}

TEST(PathParser, sets_badbit_and_writes_nothing_for_a_state_without_a_name) {
    expectNoName(static_cast<PathParser::EState>(6), std::ios_base::badbit);
    expectNoName(static_cast<PathParser::EState>(-1), std::ios_base::badbit);
}

}  // namespace
}  // namespace orvid_test
