// SPDX-License-Identifier: MIT
//
// Tests of CallbackParser where something fails: text that is no JSON, a listener that stops,
// throws or swallows errors, and no listener at all.

#include <ko/Orvid/CallbackParser.h>

#include <gtest/gtest.h>

#include <limits>
#include <new>
#include <sstream>
#include <stdexcept>
#include <string>
#include <typeinfo>
#include <vector>

#include "support/Document.h"
#include "support/RecordingListener.h"
#include "support/YajlMessages.h"

namespace {

namespace yajl = orvid_test::yajl;

using ko::Orvid::CallbackParser;
using ko::Orvid::Exception;
using orvid_test::Reaction;
using orvid_test::RecordingListener;
using orvid_test::thrownBy;

constexpr const char* k_marker = "                     (right here) ------^\n";

/// The error's first line, then the text with the byte at which the marker points in column 40.
std::string verbose(const std::string& line, const std::string& excerpt, std::size_t offset) {
    return line + "\n" + std::string(40 - offset, ' ') + excerpt + "\n" + k_marker;
}

/// The message of the exception that the text leads to.
std::string errorOf(const std::string& text) {
    RecordingListener listener;
    CallbackParser parser(&listener);
    const std::string what = thrownBy<Exception>([&] { parser.parse(text); }).what();
    EXPECT_EQ(listener.errors, (std::vector<std::string>{what}));
    EXPECT_EQ(parser.state(), 3);
    return what;
}

TEST(CallbackParserErrors, an_error_is_shown_with_the_text_around_it) {
    EXPECT_EQ(errorOf("[1,]"), verbose(yajl::k_unallowedToken, "[1,]", 4));
}

TEST(CallbackParserErrors, each_kind_of_error_has_its_line) {
    const struct {
        const char* text;
        std::string line;
        std::size_t offset;
    } rows[] = {
        {"nulx", yajl::k_invalidWord, 3},
        {"[x]", yajl::k_invalidCharacter, 2},
        {"]", yajl::k_unallowedToken, 1},
        {"[1 2]", yajl::k_afterItem, 4},
        {"[1}", yajl::k_afterItem, 3},
        {"{1:2}", yajl::k_invalidKey, 2},
        {"{\"a\":1,}", yajl::k_invalidKey, 8},
        {"{\"a\" 1}", yajl::k_noColon, 6},
        {"{\"a\":1 2}", yajl::k_afterMember, 7},
        {"[1.]", yajl::k_noDigitAfterPoint, 3},
        {"-x", yajl::k_noDigitAfterMinus, 1},
        {"1ex", yajl::k_noDigitAfterExponent, 2},
        {"[\"\\x\"]", yajl::k_invalidEscape, 3},
        {"[\"\\u12g4\"]", yajl::k_invalidHex, 6},
        {"[\"\x01\"]", yajl::k_invalidInString, 2},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(errorOf(row.text), verbose(row.line, row.text, row.offset)) << row.text;
    }
}

TEST(CallbackParserErrors, an_error_is_found_wherever_the_text_is_cut) {
    const std::string text = R"({"a":[true,"x",1.5e]})";
    for (std::size_t size = 1; size <= text.size(); ++size) {
        RecordingListener listener;
        CallbackParser parser(&listener);
        const auto error = thrownBy<Exception>([&] {
            for (std::size_t fed = 0; fed < text.size(); fed += size) {
                parser.parse(text.substr(fed, size));
            }
        });
        const std::string what = error.what();
        EXPECT_EQ(what.substr(0, what.find('\n')), yajl::k_noDigitAfterExponent);
        EXPECT_EQ(listener.words, "{ ka [ true sx ") << "in pieces of " << size;
        EXPECT_EQ(parser.position(), 19u) << "in pieces of " << size;
        EXPECT_EQ(parser.state(), 3);
    }
}

TEST(CallbackParserErrors, the_exception_is_a_plain_one_without_element) {
    RecordingListener listener;
    CallbackParser parser(&listener);
    const auto error = thrownBy<Exception>([&] { parser.parse("]"); });
    EXPECT_EQ(typeid(error), typeid(Exception));
    EXPECT_EQ(error.elementPath(), nullptr);
}

TEST(CallbackParserErrors, an_error_is_shown_with_30_bytes_on_both_sides) {
    const std::string before = "[\"" + std::string(50, 'b') + "\", ";
    const std::string after(50, 'a');
    EXPECT_EQ(errorOf(before + "#" + after),
              verbose(yajl::k_invalidCharacter,
                      before.substr(before.size() - 29) + "#" + after.substr(0, 30), 30));
}

TEST(CallbackParserErrors, an_error_is_shown_with_line_ends_as_spaces) {
    EXPECT_EQ(errorOf("[\n1,\r# ]"), verbose(yajl::k_invalidCharacter, "[ 1, # ]", 6));
}

TEST(CallbackParserErrors, an_error_is_shown_with_the_last_piece_only) {
    RecordingListener listener;
    CallbackParser parser(&listener);
    parser.parse("[1, 2, ");
    EXPECT_EQ(parser.state(), 2);
    const std::string what = thrownBy<Exception>([&] { parser.parse("3, #]"); }).what();
    EXPECT_EQ(what, verbose(yajl::k_invalidCharacter, "3, #]", 4));
    EXPECT_EQ(parser.position(), 11u);
}

TEST(CallbackParserErrors, an_error_in_a_stream_is_shown_with_its_255_bytes_only) {
    const std::string firstPiece = "[\"" + std::string(250, 'x') + "\",";
    ASSERT_EQ(firstPiece.size(), 254u);
    std::istringstream in(firstPiece + " 7 8]");
    RecordingListener listener;
    CallbackParser parser(&listener);
    const std::string what = thrownBy<Exception>([&] { parser.parse(in); }).what();
    EXPECT_EQ(what, verbose(yajl::k_afterItem, "7 8]", 3));
    EXPECT_EQ(parser.position(), 258u);
}

TEST(CallbackParserErrors, no_more_of_a_stream_is_read_after_an_error) {
    std::istringstream in("#" + std::string(300, ' '));
    RecordingListener listener;
    CallbackParser parser(&listener);
    EXPECT_THROW(parser.parse(in), Exception);
    EXPECT_EQ(in.rdbuf()->in_avail(), 46);
    EXPECT_TRUE(in.good());
}

TEST(CallbackParserErrors, a_swallowed_error_ends_the_call_quietly) {
    for (const int answer : {1, -1}) {
        RecordingListener listener;
        listener.errorAnswer = answer;
        CallbackParser parser(&listener);
        EXPECT_NO_THROW(parser.parse("[1,]"));
        EXPECT_EQ(listener.words, "[ n1 ");
        EXPECT_EQ(listener.errors.size(), 1u);
        EXPECT_EQ(parser.state(), 3);
    }
}

TEST(CallbackParserErrors, each_call_after_a_swallowed_error_reports_it_again) {
    RecordingListener listener;
    listener.errorAnswer = 1;
    CallbackParser parser(&listener);
    parser.parse("[1,]");
    parser.parse("2]");
    ASSERT_EQ(listener.errors.size(), 2u);
    const std::string line = yajl::k_unallowedToken + "\n";
    EXPECT_EQ(listener.errors[0].substr(0, line.size()), line);
    EXPECT_EQ(listener.errors[1].substr(0, line.size()), line);
    EXPECT_EQ(listener.words, "[ n1 ");
    EXPECT_EQ(parser.state(), 3);
    EXPECT_EQ(parser.position(), 4u);
}

TEST(CallbackParserErrors, a_swallowed_error_in_a_stream_is_reported_for_each_piece) {
    std::istringstream in("#" + std::string(600, ' '));
    RecordingListener listener;
    listener.errorAnswer = 1;
    CallbackParser parser(&listener);
    EXPECT_EQ(&parser.parse(in), &in);
    EXPECT_EQ(listener.errors.size(), 3u);
    EXPECT_EQ(in.rdbuf()->in_avail(), 0);
}

/// Throws when an error is reported to it.
class ThrowingAtErrors : public RecordingListener {
public:
    int cb_error(const char* message) override {
        RecordingListener::cb_error(message);
        throw std::domain_error("thrown by cb_error");
    }
};

TEST(CallbackParserErrors, what_cb_error_throws_passes_unchanged) {
    ThrowingAtErrors listener;
    CallbackParser parser(&listener);
    const auto error = thrownBy<std::domain_error>([&] { parser.parse("]"); });
    EXPECT_STREQ(error.what(), "thrown by cb_error");
    EXPECT_EQ(listener.errors.size(), 1u);
    EXPECT_EQ(parser.state(), 3);
}

// Each event of this document in turn is made to fail.
constexpr const char* k_allEvents = R"({"a":[null,true,false,1,"x"],"b":{}} )";
constexpr std::size_t k_eventCount = 13;
constexpr const char* k_allWords = "{ ka [ null true false n1 sx ] kb { } } ";

/// The first `count` words.
std::string wordsUpTo(std::size_t count) {
    std::size_t end = 0;
    for (const std::string words = k_allWords; count > 0; --count) {
        end = words.find(' ', end) + 1;
    }
    return std::string(k_allWords).substr(0, end);
}

TEST(CallbackParserErrors, any_event_that_returns_0_stops_the_parser) {
    for (std::size_t event = 0; event < k_eventCount; ++event) {
        RecordingListener listener;
        listener.special = event;
        listener.reaction = Reaction::stop;
        CallbackParser parser(&listener);
        const auto error = thrownBy<Exception>([&] { parser.parse(k_allEvents); });
        const std::string line = yajl::k_cancelled + "\n";
        EXPECT_EQ(std::string(error.what()).substr(0, line.size()), line) << event;
        EXPECT_EQ(listener.errors, (std::vector<std::string>{error.what()}));
        EXPECT_EQ(listener.words, wordsUpTo(event + 1));
        EXPECT_EQ(parser.state(), 1) << event;
    }
}

TEST(CallbackParserErrors, a_stop_may_be_swallowed_and_is_an_error_afterwards) {
    RecordingListener listener;
    listener.special = 1;
    listener.reaction = Reaction::stop;
    listener.errorAnswer = 1;
    CallbackParser parser(&listener);
    EXPECT_NO_THROW(parser.parse("[1,2]"));
    EXPECT_EQ(parser.state(), 1);
    parser.parse(",3]");
    EXPECT_EQ(parser.state(), 3);
    ASSERT_EQ(listener.errors.size(), 2u);
    EXPECT_EQ(listener.errors[1].substr(0, 61), listener.errors[0].substr(0, 61));
    EXPECT_EQ(listener.words, "[ n1 ");
}

TEST(CallbackParserErrors, what_any_event_throws_passes_unchanged) {
    for (std::size_t event = 0; event < k_eventCount; ++event) {
        RecordingListener listener;
        listener.special = event;
        listener.reaction = Reaction::fail;
        CallbackParser parser(&listener);
        const auto error = thrownBy<std::runtime_error>([&] { parser.parse(k_allEvents); });
        EXPECT_EQ(typeid(error), typeid(std::runtime_error));
        EXPECT_EQ(wordsUpTo(event) + error.what() + " ", wordsUpTo(event + 1));
        EXPECT_EQ(listener.words, wordsUpTo(event + 1));
        EXPECT_TRUE(listener.errors.empty()) << event;
        EXPECT_EQ(parser.state(), 2) << event;
    }
}

TEST(CallbackParserErrors, an_exception_of_the_listener_keeps_the_state_before_it) {
    RecordingListener listener;
    listener.special = 2;
    listener.reaction = Reaction::fail;
    CallbackParser parser(&listener);
    parser.parse("[1,");
    EXPECT_EQ(parser.state(), 2);
    EXPECT_THROW(parser.parse("2]"), std::runtime_error);
    EXPECT_EQ(parser.state(), 2);
    EXPECT_TRUE(listener.errors.empty());
}

TEST(CallbackParserErrors, an_exception_of_the_listener_ends_the_reading_of_a_stream) {
    std::istringstream in("[1" + std::string(300, ' ') + "]");
    RecordingListener listener;
    listener.special = 0;
    listener.reaction = Reaction::fail;
    CallbackParser parser(&listener);
    EXPECT_THROW(parser.parse(in), std::runtime_error);
    EXPECT_EQ(in.rdbuf()->in_avail(), 48);
}

TEST(CallbackParserErrors, nothing_is_read_after_an_exception_of_the_listener) {
    RecordingListener listener;
    listener.special = 0;
    listener.reaction = Reaction::fail;
    CallbackParser parser(&listener);
    EXPECT_THROW(parser.parse("[1,2]"), std::runtime_error);
    EXPECT_THROW(parser.parse("3]"), Exception);
    EXPECT_EQ(listener.words, "[ ");
    EXPECT_EQ(parser.state(), 3);
}

/// Throws what is no std::exception, or what stands for an exhausted memory.
class ThrowingOddly : public RecordingListener {
public:
    int cb_null() override { throw 42; }
    int cb_boolean(bool) override { throw std::bad_alloc(); }
};

TEST(CallbackParserErrors, whatever_is_thrown_passes_unchanged) {
    ThrowingOddly listener;
    EXPECT_THROW(CallbackParser(&listener).parse("[null]"), int);
    EXPECT_THROW(CallbackParser(&listener).parse("[true]"), std::bad_alloc);
    EXPECT_TRUE(listener.errors.empty());
}

TEST(CallbackParserErrors, a_parser_without_listener_throws_at_the_first_event) {
    for (const char* const text :
         {"null", "true", "1 ", "1.5 ", "\"x\"", "{", "{\"a\"", "{}", "[", "[]"}) {
        CallbackParser parser(nullptr);
        const auto error = thrownBy<Exception>([&] { parser.parse(text); });
        EXPECT_STREQ(error.what(), "No listener attached to CallbackParser!") << text;
        EXPECT_EQ(error.elementPath(), nullptr);
        EXPECT_EQ(parser.state(), 2);
    }
}

TEST(CallbackParserErrors, a_parser_without_listener_reads_whitespace) {
    CallbackParser parser(nullptr);
    EXPECT_NO_THROW(parser.parse(" /* c */ "));
    EXPECT_EQ(parser.state(), 2);
}

TEST(CallbackParserErrors, a_number_beyond_long_is_an_error_only_where_it_is_wanted_by_value) {
    const std::string beyond = std::to_string(std::numeric_limits<long>::max()) + "0";
    RecordingListener byValue;
    byValue.numbersAsText = false;
    CallbackParser parser(&byValue);
    const std::string text = "[1," + beyond + "]";
    const std::string what = thrownBy<Exception>([&] { parser.parse(text); }).what();
    EXPECT_EQ(what, verbose(yajl::k_integerOverflow, text, 3));
    EXPECT_EQ(byValue.words, "[ i1 ");
    EXPECT_EQ(parser.state(), 3);

    RecordingListener byText;
    EXPECT_NO_THROW(CallbackParser(&byText).parse(text));
    EXPECT_EQ(byText.words, "[ n1 n" + beyond + " ] ");
}

TEST(CallbackParserErrors, a_number_beyond_double_is_an_error_only_where_it_is_wanted_by_value) {
    for (const char* const text : {"[1e400]", "[-1.5E999]"}) {
        RecordingListener byValue;
        byValue.numbersAsText = false;
        CallbackParser parser(&byValue);
        const std::string what = thrownBy<Exception>([&] { parser.parse(text); }).what();
        EXPECT_EQ(what, verbose(yajl::k_floatOverflow, text, 1));
        EXPECT_EQ(parser.state(), 3);
    }
}

/// Swallows errors and keeps what it was shown.
struct KeepingListener : RecordingListener {
    int cb_error(const char* message) override {
        shown.push_back(message);
        return 1;
    }

    std::vector<const char*> shown;
};

TEST(CallbackParserErrors, the_messages_of_swallowed_errors_live_as_long_as_the_parser) {
    KeepingListener listener;
    CallbackParser parser(&listener);
    parser.parse("[1,]");
    parser.parse("more");
    ASSERT_EQ(listener.shown.size(), 2U);
    EXPECT_EQ(verbose(yajl::k_unallowedToken, "[1,]", 4), listener.shown[0]);
    EXPECT_EQ(std::string(listener.shown[1]).substr(0, 12), "parse error:");
}

TEST(CallbackParserTrampolines, hand_each_event_to_the_listener) {
    RecordingListener listener;
    CallbackParser parser(&listener);
    const auto* const bytes = reinterpret_cast<const unsigned char*>("text");
    EXPECT_NE(CallbackParser::cb_start_array(&parser), 0);
    EXPECT_NE(CallbackParser::cb_null(&parser), 0);
    EXPECT_NE(CallbackParser::cb_boolean(&parser, 2), 0);
    EXPECT_NE(CallbackParser::cb_integer(&parser, -7), 0);
    EXPECT_NE(CallbackParser::cb_double(&parser, 2.5), 0);
    EXPECT_NE(CallbackParser::cb_number(&parser, "1.50", 4), 0);
    EXPECT_NE(CallbackParser::cb_string(&parser, bytes, 3), 0);
    EXPECT_NE(CallbackParser::cb_start_map(&parser), 0);
    EXPECT_NE(CallbackParser::cb_map_key(&parser, bytes, 4), 0);
    EXPECT_NE(CallbackParser::cb_end_map(&parser), 0);
    EXPECT_NE(CallbackParser::cb_end_array(&parser), 0);
    EXPECT_EQ(listener.words, "[ null true i-7 d2.5 n1.50 stex { ktext } ] ");
}

TEST(CallbackParserTrampolines, throw_where_there_is_no_listener) {
    CallbackParser parser(nullptr);
    const auto error = thrownBy<Exception>([&] { CallbackParser::cb_null(&parser); });
    EXPECT_STREQ(error.what(), "No listener attached to CallbackParser!");
}

TEST(CallbackParserTrampolines, are_set_anew_when_the_listener_has_changed_its_mind) {
    RecordingListener listener;
    listener.numbersAsText = false;
    CallbackParser parser(&listener);
    parser.parse("[7,");
    listener.numbersAsText = true;
    parser.setCallbacks();
    parser.parse("8]");
    EXPECT_EQ(listener.words, "[ i7 n8 ] ");
}

}  // namespace
