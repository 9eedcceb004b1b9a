// SPDX-License-Identifier: MIT
//
// Tests of CallbackParser on texts that are JSON, or its beginning: events, pieces, streams, the
// two forms of numbers, state() and position(). Errors and listeners that fail are in
// CallbackParserErrors_test.cpp.

#include <ko/Orvid/CallbackParser.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <sstream>
#include <streambuf>
#include <string>
#include <type_traits>

#include "support/RecordingListener.h"

namespace {

using ko::Orvid::CallbackParser;
using ko::Orvid::CallbackParserListener;
using orvid_test::RecordingListener;

/// All that a text comes to.
struct Outcome {
    std::string words;
    int state;
};

bool operator==(const Outcome& a, const Outcome& b) {
    return a.words == b.words && a.state == b.state;
}

std::ostream& operator<<(std::ostream& out, const Outcome& outcome) {
    return out << outcome.words << "state " << outcome.state;
}

/// Feeds the text in pieces of `size` bytes; 0 is all at once.
Outcome parsed(const std::string& text, std::size_t size = 0) {
    RecordingListener listener;
    CallbackParser parser(&listener);
    const std::size_t step = size == 0 ? std::max<std::size_t>(text.size(), 1) : size;
    for (std::size_t fed = 0; fed < text.size(); fed += step) {
        parser.parse(text.substr(fed, step));
    }
    return {listener.words, parser.state()};
}

TEST(CallbackParser, has_read_nothing_when_new) {
    RecordingListener listener;
    const CallbackParser parser(&listener);
    EXPECT_EQ(2, parser.state());
    EXPECT_EQ(0u, parser.position());
    EXPECT_EQ("", listener.words);
}

TEST(CallbackParser, delivers_an_array_in_order) {
    EXPECT_EQ((Outcome{"[ n1 n2 ] ", 0}), parsed("[1,2]"));
}

TEST(CallbackParser, delivers_every_kind_of_value) {
    EXPECT_EQ((Outcome{"{ ka null kb true kc false kd n-1.50e+3 ke sx kf [ ] kg { } } ", 0}),
              parsed(R"({"a":null,"b":true,"c":false,"d":-1.50e+3,"e":"x","f":[],"g":{}})"));
}

TEST(CallbackParser, completes_a_literal_a_string_and_a_container_with_their_last_byte) {
    EXPECT_EQ((Outcome{"null ", 0}), parsed("null"));
    EXPECT_EQ((Outcome{"true ", 0}), parsed("true"));
    EXPECT_EQ((Outcome{"false ", 0}), parsed("false"));
    EXPECT_EQ((Outcome{"s ", 0}), parsed("\"\""));
    EXPECT_EQ((Outcome{"{ } ", 0}), parsed("{}"));
    EXPECT_EQ((Outcome{"[ ] ", 0}), parsed("[]"));
}

TEST(CallbackParser, delivers_a_top_level_number_only_when_a_byte_follows) {
    EXPECT_EQ((Outcome{"", 2}), parsed("123"));
    EXPECT_EQ((Outcome{"n123 ", 0}), parsed("123 "));
    EXPECT_EQ((Outcome{"n42 ", 0}), parsed("42\n"));
    EXPECT_EQ((Outcome{"n42 ", 0}), parsed("42x"));
    EXPECT_EQ((Outcome{"n42 ", 0}), parsed("42]"));
}

TEST(CallbackParser, is_not_told_the_end_of_a_number_by_an_empty_piece) {
    RecordingListener listener;
    CallbackParser parser(&listener);
    parser.parse("42");
    parser.parse("");
    EXPECT_EQ("", listener.words);
    EXPECT_EQ(2, parser.state());
    parser.parse("3 ");
    EXPECT_EQ("n423 ", listener.words);
    EXPECT_EQ(0, parser.state());
}

TEST(CallbackParser, takes_text_that_stops_early_as_no_error) {
    EXPECT_EQ((Outcome{"[ n1 ", 2}), parsed("[1, 2"));
    EXPECT_EQ((Outcome{"{ ka [ ", 2}), parsed(R"({"a": [1)"));
    EXPECT_EQ((Outcome{"", 2}), parsed("tru"));
    EXPECT_EQ((Outcome{"", 2}), parsed("\"abc"));
    EXPECT_EQ((Outcome{"[ ", 2}), parsed("[\"\\u12"));
    EXPECT_EQ((Outcome{"", 2}), parsed(" \n\t\r"));
    EXPECT_EQ((Outcome{"", 2}), parsed("-"));
}

TEST(CallbackParser, takes_an_empty_text_as_no_error) {
    RecordingListener listener;
    CallbackParser parser(&listener);
    parser.parse("");
    parser.parse(nullptr, 0);
    parser.parse(std::string());
    EXPECT_EQ("", listener.words);
    EXPECT_EQ(2, parser.state());
}

TEST(CallbackParser, passes_over_comments_of_both_forms) {
    EXPECT_EQ((Outcome{"[ n1 n2 ] ", 0}), parsed("[1, /* c */ 2]"));
    EXPECT_EQ((Outcome{"[ n1 n2 ] ", 0}), parsed("// a\n[1, // b ] \n2/**/]"));
    EXPECT_EQ((Outcome{"[ n1 ] ", 0}), parsed("/* [ ** / */[1]"));
    EXPECT_EQ((Outcome{"", 2}), parsed("/* only a comment */ // and another\n"));
    EXPECT_EQ((Outcome{"[ s/*x*/ ] ", 0}), parsed(R"(["/*x*/"])"));
}

TEST(CallbackParser, looks_at_nothing_behind_the_complete_value) {
    EXPECT_EQ((Outcome{"[ ] ", 0}), parsed("[] garbage ]}\x01"));
    EXPECT_EQ((Outcome{"{ } ", 0}), parsed("{}[1,2]"));
    EXPECT_EQ((Outcome{"null ", 0}), parsed("nullnull"));
}

TEST(CallbackParser, looks_at_no_later_piece_once_the_value_is_complete) {
    RecordingListener listener;
    CallbackParser parser(&listener);
    parser.parse("[1]");
    for (const char* const more : {"", " ", "[2]", "garbage", "]"}) {
        parser.parse(more);
        EXPECT_EQ(0, parser.state()) << more;
    }
    EXPECT_EQ("[ n1 ] ", listener.words);
    EXPECT_EQ(3u, parser.position());
}

TEST(CallbackParser, resolves_escapes_in_strings_and_keys) {
    EXPECT_EQ((Outcome{"{ k\"\\/\b\f\n\r\t s\xC3\xA9\xE2\x82\xAC\xF0\x9D\x84\x9E } ", 0}),
              parsed(R"({"\"\\\/\b\f\n\r\t":"\u00e9\u20AC\uD834\udd1e"})"));
}

TEST(CallbackParser, keeps_a_nul_in_strings_and_keys) {
    const std::string nul(1, '\0');
    EXPECT_EQ((Outcome{"{ ka" + nul + "b s" + nul + " } ", 0}), parsed(R"({"a\u0000b":"\u0000"})"));
}

TEST(CallbackParser, delivers_bytes_that_are_no_utf8_as_they_are) {
    EXPECT_EQ((Outcome{"{ k\xFF s\x80\xC0\xAF\xED\xA0\x80 } ", 0}),
              parsed("{\"\xFF\":\"\x80\xC0\xAF\xED\xA0\x80\"}"));
}

TEST(CallbackParser, delivers_repeated_keys_each_time) {
    EXPECT_EQ((Outcome{"{ ka n1 ka n2 } ", 0}), parsed(R"({"a":1,"a":2})"));
}

TEST(CallbackParser, delivers_numbers_letter_for_letter) {
    EXPECT_EQ((Outcome{"[ n-0 n1.50 n1E400 n123456789012345678901234567890 n0.1e-7 ] ", 0}),
              parsed("[-0,1.50,1E400,123456789012345678901234567890,0.1e-7]"));
}

TEST(CallbackParser, reads_the_same_wherever_the_text_is_cut) {
    const std::string text =
        " {\"a\\u00e9\": [ -1.5e+10 , true, false, null, \"x\\\"y\" ] /* c */, // d\n \"\": {} } ";
    const Outcome whole = parsed(text);
    EXPECT_EQ((Outcome{"{ ka\xC3\xA9 [ n-1.5e+10 true false null sx\"y ] k { } } ", 0}), whole);
    for (std::size_t size = 1; size < text.size(); ++size) {
        EXPECT_EQ(whole, parsed(text, size)) << "in pieces of " << size;
    }
    for (std::size_t cut = 0; cut <= text.size(); ++cut) {
        RecordingListener listener;
        CallbackParser parser(&listener);
        parser.parse(text.data(), static_cast<unsigned int>(cut));
        parser.parse(text.substr(cut));
        EXPECT_EQ(whole, (Outcome{listener.words, parser.state()})) << "cut at " << cut;
    }
}

TEST(CallbackParser, goes_on_with_the_same_document_in_a_second_call) {
    RecordingListener listener;
    CallbackParser parser(&listener);
    parser.parse("[1");
    EXPECT_EQ("[ ", listener.words);
    EXPECT_EQ(2, parser.state());
    parser.parse(",2]");
    EXPECT_EQ("[ n1 n2 ] ", listener.words);
    EXPECT_EQ(0, parser.state());
}

TEST(CallbackParser, reads_only_the_length_that_it_is_given) {
    RecordingListener listener;
    CallbackParser parser(&listener);
    parser.parse("[1]garbage", 2);
    EXPECT_EQ("[ ", listener.words);
    EXPECT_EQ(2, parser.state());
}

TEST(CallbackParser, counts_its_position_over_all_pieces) {
    RecordingListener listener;
    CallbackParser parser(&listener);
    parser.parse("  [1");
    EXPECT_EQ(4u, parser.position());
    parser.parse(" ,2");
    EXPECT_EQ(7u, parser.position());
    parser.parse("]  ");
    EXPECT_EQ(8u, parser.position());
}

TEST(CallbackParser, takes_any_answer_but_0_as_to_go_on) {
    for (const int answer : {1, 2, -1, std::numeric_limits<int>::max()}) {
        RecordingListener listener;
        listener.goOn = answer;
        CallbackParser parser(&listener);
        parser.parse("[1,{\"a\":null}]");
        EXPECT_EQ("[ n1 { ka null } ] ", listener.words) << answer;
        EXPECT_EQ(0, parser.state()) << answer;
    }
}

TEST(CallbackParser, delivers_numbers_by_value_to_a_listener_that_wants_no_text) {
    RecordingListener listener;
    listener.numbersAsText = false;
    CallbackParser parser(&listener);
    parser.parse("[7,7.5,-3,1e2,0,-0.0,5E-1]");
    EXPECT_EQ("[ i7 d7.5 i-3 d100 i0 d-0 d0.5 ] ", listener.words);
    EXPECT_EQ(0, parser.state());
}

TEST(CallbackParser, delivers_the_whole_range_of_long_by_value) {
    RecordingListener listener;
    listener.numbersAsText = false;
    CallbackParser parser(&listener);
    const std::string largest = std::to_string(std::numeric_limits<long>::max());
    const std::string smallest = std::to_string(std::numeric_limits<long>::min());
    parser.parse("[" + largest + "," + smallest + "]");
    EXPECT_EQ("[ i" + largest + " i" + smallest + " ] ", listener.words);
}

TEST(CallbackParser, asks_once_for_the_form_of_numbers_and_when_it_is_made) {
    RecordingListener listener;
    CallbackParser parser(&listener);
    EXPECT_EQ(1, listener.timesAsked);
    listener.numbersAsText = false;
    parser.parse("[1,2.5]");
    EXPECT_EQ("[ n1 n2.5 ] ", listener.words);
    EXPECT_EQ(1, listener.timesAsked);
}

/// Says nothing about numbers.
class SilentListener : public CallbackParserListener {
public:
    int cb_null() override { return 1; }
    int cb_boolean(bool) override { return 1; }
    int cb_number(const char* text, unsigned int length) override {
        number.assign(text, length);
        return 1;
    }
    int cb_string(const char*, unsigned int) override { return 1; }
    int cb_start_map() override { return 1; }
    int cb_map_key(const char*, unsigned int) override { return 1; }
    int cb_end_map() override { return 1; }
    int cb_start_array() override { return 1; }
    int cb_end_array() override { return 1; }
    int cb_error(const char*) override { return 0; }
    int cb_integer(long) override { return 0; }
    int cb_double(double) override { return 0; }

    std::string number;
};

TEST(CallbackParser, delivers_numbers_as_text_unless_told_otherwise) {
    SilentListener listener;
    EXPECT_TRUE(listener.use_number_callback());
    CallbackParser parser(&listener);
    parser.parse("[1.50]");
    EXPECT_EQ("1.50", listener.number);
}

TEST(CallbackParser, reads_a_stream_to_its_end) {
    std::istringstream in(R"({"a":[1,2]} )");
    RecordingListener listener;
    CallbackParser parser(&listener);
    EXPECT_EQ(&in, &parser.parse(in));
    EXPECT_EQ("{ ka [ n1 n2 ] } ", listener.words);
    EXPECT_EQ(0, parser.state());
}

TEST(CallbackParser, reads_a_stream_of_many_pieces) {
    std::string text = "[";
    for (int i = 0; i < 1000; ++i) {
        text += std::to_string(i) + (i < 999 ? "," : "]");
    }
    std::istringstream in(text);
    RecordingListener listener;
    CallbackParser parser(&listener);
    parser.parse(in);
    EXPECT_EQ(parsed(text), (Outcome{listener.words, parser.state()}));
    EXPECT_EQ(text.size(), parser.position());
}

TEST(CallbackParser, consumes_what_a_stream_has_behind_the_value) {
    std::istringstream in("[1] [2]");
    RecordingListener listener;
    CallbackParser parser(&listener);
    parser.parse(in);
    EXPECT_EQ("[ n1 ] ", listener.words);
    EXPECT_EQ(0, in.rdbuf()->in_avail());
}

TEST(CallbackParser, does_not_touch_a_stream_that_is_not_good) {
    for (const auto bit : {std::ios_base::badbit, std::ios_base::failbit, std::ios_base::eofbit}) {
        std::istringstream in("[1]");
        in.setstate(bit);
        RecordingListener listener;
        CallbackParser parser(&listener);
        EXPECT_EQ(&in, &parser.parse(in));
        EXPECT_EQ(bit, in.rdstate());
        EXPECT_EQ(3, in.rdbuf()->in_avail());
        EXPECT_EQ("", listener.words);
        EXPECT_EQ(2, parser.state());
    }
}

/// Makes available what it is given, and never waits; it records the sizes of the reads.
class Terminal : public std::streambuf {
public:
    void type(const std::string& text) {
        m_text = text;
        setg(m_text.data(), m_text.data(), m_text.data() + m_text.size());
    }

    std::string reads;

protected:
    std::streamsize showmanyc() override { return 0; }
    std::streamsize xsgetn(char* to, std::streamsize count) override {
        reads += std::to_string(count) + ' ';
        return std::streambuf::xsgetn(to, count);
    }

private:
    std::string m_text;
};

TEST(CallbackParser, does_not_wait_for_a_stream_that_has_nothing_yet) {
    Terminal terminal;
    std::istream in(&terminal);
    RecordingListener listener;
    CallbackParser parser(&listener);
    parser.parse(in);
    EXPECT_EQ("", listener.words);
    EXPECT_EQ(2, parser.state());
    EXPECT_TRUE(in.good());

    terminal.type("[1,");
    parser.parse(in);
    EXPECT_EQ("[ n1 ", listener.words);
    terminal.type("2]");
    parser.parse(in);
    EXPECT_EQ("[ n1 n2 ] ", listener.words);
    EXPECT_EQ(0, parser.state());
    EXPECT_TRUE(in.good());
}

TEST(CallbackParser, reads_a_stream_in_pieces_of_at_most_255_bytes) {
    Terminal terminal;
    std::istream in(&terminal);
    terminal.type("[\"" + std::string(600, 'x') + "\"]");
    RecordingListener listener;
    CallbackParser parser(&listener);
    parser.parse(in);
    EXPECT_EQ("255 255 94 ", terminal.reads);
    EXPECT_EQ("[ s" + std::string(600, 'x') + " ] ", listener.words);
}

/// If each piece made the token be read again from its beginning, this would take hours.
TEST(CallbackParser, reads_a_long_token_of_a_stream_in_pieces_of_255_bytes_too) {
    Terminal terminal;
    std::istream in(&terminal);
    const std::string token(3000000, 'x');
    terminal.type("[\"" + token + "\"" + std::string(4000000, ' ') + ", 1 " +
                  std::string(1000, ' ') + "]");
    RecordingListener listener;
    CallbackParser parser(&listener);
    parser.parse(in);
    EXPECT_EQ("[ s" + token + " n1 ] ", listener.words);
    EXPECT_EQ(std::string::npos, terminal.reads.find("256"));
    const auto pieces = std::count(terminal.reads.begin(), terminal.reads.end(), ' ');
    EXPECT_GE(pieces, 7000000 / 255);
}

TEST(CallbackParser, may_not_be_copied_but_derived_from) {
    EXPECT_FALSE(std::is_copy_constructible_v<CallbackParser>);
    EXPECT_FALSE(std::is_copy_assignable_v<CallbackParser>);
    EXPECT_TRUE(std::has_virtual_destructor_v<CallbackParser>);
    EXPECT_TRUE(std::has_virtual_destructor_v<CallbackParserListener>);
}

}  // namespace
