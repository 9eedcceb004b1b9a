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
    EXPECT_EQ(parser.state(), 2);
    EXPECT_EQ(parser.position(), 0u);
    EXPECT_EQ(listener.words, "");
}

TEST(CallbackParser, delivers_an_array_in_order) {
    EXPECT_EQ(parsed("[1,2]"), (Outcome{"[ n1 n2 ] ", 0}));
}

TEST(CallbackParser, delivers_every_kind_of_value) {
    EXPECT_EQ(parsed(R"({"a":null,"b":true,"c":false,"d":-1.50e+3,"e":"x","f":[],"g":{}})"),
              (Outcome{"{ ka null kb true kc false kd n-1.50e+3 ke sx kf [ ] kg { } } ", 0}));
}

TEST(CallbackParser, completes_a_literal_a_string_and_a_container_with_their_last_byte) {
    EXPECT_EQ(parsed("null"), (Outcome{"null ", 0}));
    EXPECT_EQ(parsed("true"), (Outcome{"true ", 0}));
    EXPECT_EQ(parsed("false"), (Outcome{"false ", 0}));
    EXPECT_EQ(parsed("\"\""), (Outcome{"s ", 0}));
    EXPECT_EQ(parsed("{}"), (Outcome{"{ } ", 0}));
    EXPECT_EQ(parsed("[]"), (Outcome{"[ ] ", 0}));
}

TEST(CallbackParser, delivers_a_top_level_number_only_when_a_byte_follows) {
    EXPECT_EQ(parsed("123"), (Outcome{"", 2}));
    EXPECT_EQ(parsed("123 "), (Outcome{"n123 ", 0}));
    EXPECT_EQ(parsed("42\n"), (Outcome{"n42 ", 0}));
    EXPECT_EQ(parsed("42x"), (Outcome{"n42 ", 0}));
    EXPECT_EQ(parsed("42]"), (Outcome{"n42 ", 0}));
}

TEST(CallbackParser, is_not_given_the_end_of_a_number_by_an_empty_piece) {
    RecordingListener listener;
    CallbackParser parser(&listener);
    parser.parse("42");
    parser.parse("");
    EXPECT_EQ(listener.words, "");
    EXPECT_EQ(parser.state(), 2);
    parser.parse("3 ");
    EXPECT_EQ(listener.words, "n423 ");
    EXPECT_EQ(parser.state(), 0);
}

TEST(CallbackParser, takes_text_that_stops_early_as_no_error) {
    EXPECT_EQ(parsed("[1, 2"), (Outcome{"[ n1 ", 2}));
    EXPECT_EQ(parsed(R"({"a": [1)"), (Outcome{"{ ka [ ", 2}));
    EXPECT_EQ(parsed("tru"), (Outcome{"", 2}));
    EXPECT_EQ(parsed("\"abc"), (Outcome{"", 2}));
    EXPECT_EQ(parsed("[\"\\u12"), (Outcome{"[ ", 2}));
    EXPECT_EQ(parsed(" \n\t\r"), (Outcome{"", 2}));
    EXPECT_EQ(parsed("-"), (Outcome{"", 2}));
}

TEST(CallbackParser, takes_an_empty_text_as_no_error) {
    RecordingListener listener;
    CallbackParser parser(&listener);
    parser.parse("");
    parser.parse(nullptr, 0);
    parser.parse(std::string());
    EXPECT_EQ(listener.words, "");
    EXPECT_EQ(parser.state(), 2);
}

TEST(CallbackParser, skips_comments_of_both_forms) {
    EXPECT_EQ(parsed("[1, /* c */ 2]"), (Outcome{"[ n1 n2 ] ", 0}));
    EXPECT_EQ((Outcome{"[ n1 n2 ] ", 0}), parsed("// a\n[1, // b ] \n2/**/]"));
    EXPECT_EQ(parsed("/* [ ** / */[1]"), (Outcome{"[ n1 ] ", 0}));
    EXPECT_EQ((Outcome{"", 2}), parsed("/* only a comment */ // and another\n"));
    EXPECT_EQ(parsed(R"(["/*x*/"])"), (Outcome{"[ s/*x*/ ] ", 0}));
}

TEST(CallbackParser, looks_at_nothing_after_the_complete_value) {
    EXPECT_EQ(parsed("[] garbage ]}\x01"), (Outcome{"[ ] ", 0}));
    EXPECT_EQ(parsed("{}[1,2]"), (Outcome{"{ } ", 0}));
    EXPECT_EQ(parsed("nullnull"), (Outcome{"null ", 0}));
}

TEST(CallbackParser, looks_at_no_later_piece_once_the_value_is_complete) {
    RecordingListener listener;
    CallbackParser parser(&listener);
    parser.parse("[1]");
    for (const char* const more : {"", " ", "[2]", "garbage", "]"}) {
        parser.parse(more);
        EXPECT_EQ(parser.state(), 0) << more;
    }
    EXPECT_EQ(listener.words, "[ n1 ] ");
    EXPECT_EQ(parser.position(), 3u);
}

TEST(CallbackParser, resolves_escapes_in_strings_and_keys) {
    EXPECT_EQ(parsed(R"({"\"\\\/\b\f\n\r\t":"\u00e9\u20AC\uD834\udd1e"})"),
              (Outcome{"{ k\"\\/\b\f\n\r\t s\xC3\xA9\xE2\x82\xAC\xF0\x9D\x84\x9E } ", 0}));
}

TEST(CallbackParser, keeps_a_nul_in_strings_and_keys) {
    const std::string nul(1, '\0');
    EXPECT_EQ(parsed(R"({"a\u0000b":"\u0000"})"), (Outcome{"{ ka" + nul + "b s" + nul + " } ", 0}));
}

TEST(CallbackParser, delivers_bytes_that_are_no_utf8_as_they_are) {
    EXPECT_EQ(parsed("{\"\xFF\":\"\x80\xC0\xAF\xED\xA0\x80\"}"),
              (Outcome{"{ k\xFF s\x80\xC0\xAF\xED\xA0\x80 } ", 0}));
}

TEST(CallbackParser, delivers_repeated_keys_each_time) {
    EXPECT_EQ(parsed(R"({"a":1,"a":2})"), (Outcome{"{ ka n1 ka n2 } ", 0}));
}

TEST(CallbackParser, delivers_numbers_letter_for_letter) {
    EXPECT_EQ(parsed("[-0,1.50,1E400,123456789012345678901234567890,0.1e-7]"),
              (Outcome{"[ n-0 n1.50 n1E400 n123456789012345678901234567890 n0.1e-7 ] ", 0}));
}

TEST(CallbackParser, reads_the_same_wherever_the_text_is_cut) {
    const std::string text =
        " {\"a\\u00e9\": [ -1.5e+10 , true, false, null, \"x\\\"y\" ] /* c */, // d\n \"\": {} } ";
    const Outcome whole = parsed(text);
    EXPECT_EQ(whole, (Outcome{"{ ka\xC3\xA9 [ n-1.5e+10 true false null sx\"y ] k { } } ", 0}));
    for (std::size_t size = 1; size < text.size(); ++size) {
        EXPECT_EQ(parsed(text, size), whole) << "in pieces of " << size;
    }
    for (std::size_t cut = 0; cut <= text.size(); ++cut) {
        RecordingListener listener;
        CallbackParser parser(&listener);
        parser.parse(text.data(), static_cast<unsigned int>(cut));
        parser.parse(text.substr(cut));
        EXPECT_EQ((Outcome{listener.words, parser.state()}), whole) << "cut at " << cut;
    }
}

TEST(CallbackParser, goes_on_with_the_same_document_in_a_second_call) {
    RecordingListener listener;
    CallbackParser parser(&listener);
    parser.parse("[1");
    EXPECT_EQ(listener.words, "[ ");
    EXPECT_EQ(parser.state(), 2);
    parser.parse(",2]");
    EXPECT_EQ(listener.words, "[ n1 n2 ] ");
    EXPECT_EQ(parser.state(), 0);
}

TEST(CallbackParser, reads_only_the_length_that_it_is_given) {
    RecordingListener listener;
    CallbackParser parser(&listener);
    parser.parse("[1]garbage", 2);
    EXPECT_EQ(listener.words, "[ ");
    EXPECT_EQ(parser.state(), 2);
}

TEST(CallbackParser, counts_its_position_over_all_pieces) {
    RecordingListener listener;
    CallbackParser parser(&listener);
    parser.parse("  [1");
    EXPECT_EQ(parser.position(), 4u);
    parser.parse(" ,2");
    EXPECT_EQ(parser.position(), 7u);
    parser.parse("]  ");
    EXPECT_EQ(parser.position(), 8u);
}

TEST(CallbackParser, takes_any_answer_but_0_as_to_go_on) {
    for (const int answer : {1, 2, -1, std::numeric_limits<int>::max()}) {
        RecordingListener listener;
        listener.goOn = answer;
        CallbackParser parser(&listener);
        parser.parse("[1,{\"a\":null}]");
        EXPECT_EQ(listener.words, "[ n1 { ka null } ] ") << answer;
        EXPECT_EQ(parser.state(), 0) << answer;
    }
}

TEST(CallbackParser, delivers_numbers_by_value_to_a_listener_that_wants_no_text) {
    RecordingListener listener;
    listener.numbersAsText = false;
    CallbackParser parser(&listener);
    parser.parse("[7,7.5,-3,1e2,0,-0.0,5E-1]");
    EXPECT_EQ(listener.words, "[ i7 d7.5 i-3 d100 i0 d-0 d0.5 ] ");
    EXPECT_EQ(parser.state(), 0);
}

TEST(CallbackParser, delivers_the_whole_range_of_long_by_value) {
    RecordingListener listener;
    listener.numbersAsText = false;
    CallbackParser parser(&listener);
    const std::string largest = std::to_string(std::numeric_limits<long>::max());
    const std::string smallest = std::to_string(std::numeric_limits<long>::min());
    parser.parse("[" + largest + "," + smallest + "]");
    EXPECT_EQ(listener.words, "[ i" + largest + " i" + smallest + " ] ");
}

TEST(CallbackParser, asks_once_for_the_form_of_numbers_and_when_it_is_made) {
    RecordingListener listener;
    CallbackParser parser(&listener);
    EXPECT_EQ(listener.timesAsked, 1);
    listener.numbersAsText = false;
    parser.parse("[1,2.5]");
    EXPECT_EQ(listener.words, "[ n1 n2.5 ] ");
    EXPECT_EQ(listener.timesAsked, 1);
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

TEST(CallbackParser, delivers_numbers_as_text_unless_asked_otherwise) {
    SilentListener listener;
    EXPECT_TRUE(listener.use_number_callback());
    CallbackParser parser(&listener);
    parser.parse("[1.50]");
    EXPECT_EQ(listener.number, "1.50");
}

TEST(CallbackParser, reads_a_stream_to_its_end) {
    std::istringstream in(R"({"a":[1,2]} )");
    RecordingListener listener;
    CallbackParser parser(&listener);
    EXPECT_EQ(&parser.parse(in), &in);
    EXPECT_EQ(listener.words, "{ ka [ n1 n2 ] } ");
    EXPECT_EQ(parser.state(), 0);
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
    EXPECT_EQ((Outcome{listener.words, parser.state()}), parsed(text));
    EXPECT_EQ(parser.position(), text.size());
}

TEST(CallbackParser, consumes_what_a_stream_has_after_the_value) {
    std::istringstream in("[1] [2]");
    RecordingListener listener;
    CallbackParser parser(&listener);
    parser.parse(in);
    EXPECT_EQ(listener.words, "[ n1 ] ");
    EXPECT_EQ(in.rdbuf()->in_avail(), 0);
}

TEST(CallbackParser, does_not_touch_a_stream_that_is_not_good) {
    for (const auto bit : {std::ios_base::badbit, std::ios_base::failbit, std::ios_base::eofbit}) {
        std::istringstream in("[1]");
        in.setstate(bit);
        RecordingListener listener;
        CallbackParser parser(&listener);
        EXPECT_EQ(&parser.parse(in), &in);
        EXPECT_EQ(in.rdstate(), bit);
        EXPECT_EQ(in.rdbuf()->in_avail(), 3);
        EXPECT_EQ(listener.words, "");
        EXPECT_EQ(parser.state(), 2);
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
    EXPECT_EQ(listener.words, "");
    EXPECT_EQ(parser.state(), 2);
    EXPECT_TRUE(in.good());

    terminal.type("[1,");
    parser.parse(in);
    EXPECT_EQ(listener.words, "[ n1 ");
    terminal.type("2]");
    parser.parse(in);
    EXPECT_EQ(listener.words, "[ n1 n2 ] ");
    EXPECT_EQ(parser.state(), 0);
    EXPECT_TRUE(in.good());
}

TEST(CallbackParser, reads_a_stream_in_pieces_of_at_most_255_bytes) {
    Terminal terminal;
    std::istream in(&terminal);
    terminal.type("[\"" + std::string(600, 'x') + "\"]");
    RecordingListener listener;
    CallbackParser parser(&listener);
    parser.parse(in);
    EXPECT_EQ(terminal.reads, "255 255 94 ");
    EXPECT_EQ(listener.words, "[ s" + std::string(600, 'x') + " ] ");
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
    EXPECT_EQ(listener.words, "[ s" + token + " n1 ] ");
    EXPECT_EQ(terminal.reads.find("256"), std::string::npos);
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
