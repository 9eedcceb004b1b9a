// SPDX-License-Identifier: MIT
//
// Tests of Reader: the events of documents, the four statuses, and that it makes no difference
// where the pieces are cut. Numbers and the texts of failures have files of their own.

#include "text/yajl/Reader.h"

#include <gtest/gtest.h>

#include <array>
#include <new>
#include <vector>

#include "EventLog.h"

#include "support/YajlMessages.h"

namespace yajlTests {
namespace {

namespace yajl = orvid_test::yajl;

TEST(Reader, delivers_every_kind_of_value) {
    EXPECT_EQ(read(R"({"a": null, "b": [true, false], "c": {"d": -1.5e3}, "e": "x"})").words,
              "{ 'a' null 'b' [ true false ] 'c' { 'd' n-1.5e3 } 'e' \"x\" } ");
}

TEST(Reader, decodes_escapes_in_keys_and_strings) {
    EXPECT_EQ(read(R"({"\u0041\n": "\"\\\/\b\f\n\r\t\u00e4\u20AC\ud83d\uDE00"})").words,
              "{ 'A\n' \"\"\\/\b\f\n\r\t\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80\" } ");
}

TEST(Reader, hands_on_the_context_and_the_lengths) {
    static std::size_t length = 0;
    static void* seen = nullptr;
    ReaderCallbacks callbacks = k_textual;
    callbacks.string = [](void* context, const unsigned char*, std::size_t given) {
        length = given;
        seen = context;
        return 1;
    };
    EventLog log;
    Reader reader(callbacks, &log);
    EXPECT_EQ(feed(reader, "[\"" + std::string(300000, 'x') + "\"]"), ReadStatus::ok);
    EXPECT_EQ(length, 300000U);
    EXPECT_EQ(seen, &log);
}

TEST(Reader, starts_with_insufficient_data_at_zero) {
    EventLog log;
    const Reader reader(k_textual, &log);
    EXPECT_EQ(reader.status(), ReadStatus::insufficientData);
    EXPECT_EQ(reader.position(), 0U);
}

TEST(Reader, completes_on_the_last_byte_of_all_but_numbers) {
    for (const std::string text :
         {"{}", "[]", "\"\"", "true", "false", "null", "[1]", "{\"a\":1}"}) {
        EventLog log;
        Reader reader(k_textual, &log);
        EXPECT_EQ(reader.parse(text.data(), text.size() - 1), ReadStatus::insufficientData) << text;
        EXPECT_EQ(reader.parse(&text.back(), 1), ReadStatus::ok) << text;
        EXPECT_EQ(reader.position(), text.size());
    }
}

TEST(Reader, needs_a_byte_after_a_number_at_the_top_level) {
    for (const std::string number : {"0", "-12", "1.5", "2e7"}) {
        EventLog log;
        Reader reader(k_textual, &log);
        EXPECT_EQ(feed(reader, number), ReadStatus::insufficientData);
        EXPECT_EQ(log.words, "");
        EXPECT_EQ(reader.parse("", 0), ReadStatus::insufficientData);
        EXPECT_EQ(feed(reader, " "), ReadStatus::ok);
        EXPECT_EQ(log.words, 'n' + number + ' ');
        EXPECT_EQ(reader.position(), number.size());
    }
}

TEST(Reader, joins_the_digits_of_two_pieces) {
    EventLog log;
    Reader reader(k_textual, &log);
    feed(reader, "12");
    feed(reader, "34");
    EXPECT_EQ(feed(reader, "\n"), ReadStatus::ok);
    EXPECT_EQ(log.words, "n1234 ");
}

TEST(Reader, finds_whitespace_and_comments_insufficient) {
    for (const std::string text :
         {"", " ", " \t\r\n\v\f", "/* nothing */", "// nothing\n", "// nothing", "/* nothing"}) {
        for (const std::size_t size : {k_whole, std::size_t{1}}) {
            const Outcome outcome = read(text, size);
            EXPECT_EQ(outcome.status, ReadStatus::insufficientData) << text;
            EXPECT_EQ(outcome.position, text.size()) << text;
        }
    }
}

TEST(Reader, finds_every_beginning_of_a_document_insufficient) {
    const std::string text = R"( {"a\u0041" : [1, -2.5e+3, "x\n", true], "b": {}, "c": null})";
    for (std::size_t length = 0; length < text.size(); ++length) {
        const Outcome outcome = read(text.substr(0, length));
        EXPECT_EQ(outcome.status, ReadStatus::insufficientData) << length;
        EXPECT_EQ(outcome.position, length);
    }
    EXPECT_EQ(read(text).status, ReadStatus::ok);
}

TEST(Reader, takes_comments_as_whitespace) {
    EXPECT_EQ(read("/* a */[/**/1,// b\n2/***/]").words, "[ n1 n2 ] ");
}

TEST(Reader, looks_at_nothing_after_the_complete_value) {
    for (const std::string rest : {"", " ", "]", "[1", "garbage \x01", "\"", "2", "/"}) {
        EventLog log;
        Reader reader(k_textual, &log);
        EXPECT_EQ(feed(reader, "[1] " + rest), ReadStatus::ok) << rest;
        EXPECT_EQ(reader.position(), 3U);
        EXPECT_EQ(feed(reader, rest), ReadStatus::ok) << rest;
        EXPECT_EQ(log.words, "[ n1 ] ");
        EXPECT_EQ(reader.position(), 3U);
    }
}

TEST(Reader, returns_error_again_and_again) {
    EventLog log;
    Reader reader(k_textual, &log);
    EXPECT_EQ(feed(reader, "[1,]"), ReadStatus::error);
    const std::string message = reader.error(false, "[1,]", 4);
    EXPECT_EQ(message, yajl::k_unallowedToken + "\n");
    for (const std::string more : {"", "2]", "[]"}) {
        EXPECT_EQ(feed(reader, more), ReadStatus::error);
        EXPECT_EQ(reader.error(false, more.data(), more.size()), message);
        EXPECT_EQ(reader.position(), 4U);
    }
    EXPECT_EQ(log.words, "[ n1 ");
}

TEST(Reader, stops_for_a_callback_and_returns_error_later) {
    const std::string text = R"({"a":[null,true,1,"s"]})";
    const std::array<std::uint64_t, 9> ends = {1, 4, 6, 10, 15, 17, 21, 22, 23};
    for (std::size_t event = 0; event < ends.size(); ++event) {
        EventLog log;
        log.special = event;
        log.reaction = Reaction::stop;
        Reader reader(k_textual, &log);
        EXPECT_EQ(feed(reader, text), ReadStatus::clientCanceled) << event;
        EXPECT_EQ(reader.position(), ends.at(event));
        const std::string message = reader.error(false, text.data(), text.size());
        EXPECT_EQ(message, yajl::k_cancelled + "\n");
        EXPECT_EQ(reader.parse("", 0), ReadStatus::error);
        EXPECT_EQ(reader.error(false, "", 0), message);
        EXPECT_EQ(log.count, event + 1);
    }
}

TEST(Reader, passes_on_what_a_callback_throws) {
    const std::string text = R"({"a":[null,true,1,"s"]})";
    const std::array<std::string, 9> words = {"{",  "'a'",   "[", "null", "true",
                                              "n1", "\"s\"", "]", "}"};
    for (std::size_t event = 0; event < words.size(); ++event) {
        EventLog log;
        log.special = event;
        log.reaction = Reaction::fail;
        Reader reader(k_textual, &log);
        try {
            feed(reader, text);
            FAIL() << event;
        } catch (const std::runtime_error& error) {
            EXPECT_EQ(error.what(), words.at(event));
        }
        EXPECT_EQ(reader.status(), ReadStatus::insufficientData);
        EXPECT_EQ(reader.parse("", 0), ReadStatus::error);
        EXPECT_EQ(reader.status(), ReadStatus::error);
        EXPECT_EQ(log.count, event + 1);
    }
}

TEST(Reader, passes_on_any_type_that_is_thrown) {
    ReaderCallbacks callbacks = k_numeric;
    callbacks.null = [](void*) -> int { throw 7; };
    callbacks.integer = [](void*, long) -> int { throw std::bad_alloc(); };
    callbacks.real = [](void*, double) -> int { throw "text"; };
    EXPECT_THROW(read("null", k_whole, callbacks), int);
    EXPECT_THROW(read("1 ", k_whole, callbacks), std::bad_alloc);
    EXPECT_THROW(read("1.0 ", k_whole, callbacks), const char*);
}

TEST(Reader, reads_another_document_inside_a_callback) {
    ReaderCallbacks callbacks = k_textual;
    callbacks.null = [](void* context) {
        EventLog::note(context, read("[1, \"\\n\"]").words);
        return EventLog::note(context, read("[2,]").message);
    };
    EXPECT_EQ(read("[null]", k_whole, callbacks).words,
              "[ [ n1 \"\n\" ]  " + yajl::k_unallowedToken + "\n ] ");
}

TEST(Reader, reports_its_error_inside_a_callback_and_goes_on) {
    static Reader* current = nullptr;
    ReaderCallbacks callbacks = k_textual;
    callbacks.null = [](void* context) {
        return EventLog::note(context, current->error(true, "", 0).substr(0, 13));
    };
    EventLog log;
    Reader reader(callbacks, &log);
    current = &reader;
    EXPECT_EQ(feed(reader, "[null" + repeat(" ,[\"a\\n\"", 500) + repeat("]", 501), 3),
              ReadStatus::ok);
    EXPECT_EQ(log.words.substr(0, 21), "[ unknown error [ \"a\n");
}

TEST(Reader, skips_the_events_of_functions_that_are_null) {
    const ReaderCallbacks none = {};
    const std::string text = R"({"a": [1, 2.5, null, true, "x", 1e999, 99999999999999999999]})";
    EXPECT_EQ(read(text, k_whole, none).status, ReadStatus::ok);
    EXPECT_EQ(read("[1,]", k_whole, none).status, ReadStatus::error);
    EXPECT_EQ(read("[1,", k_whole, none).status, ReadStatus::insufficientData);
}

TEST(Reader, gives_the_same_for_pieces_of_every_size) {
    const std::vector<std::string> texts = {
        R"({"key": [1, -2.5E-3, 0, "a\u00e4\ud83d\ude00\n", true, false, null], "": {"x": []}} )",
        "/* c */ [ // d\n 1 , /* ** / */ \"/*\" ]",
        "[\"" + repeat("0123456789\\n", 100) + "\", " + repeat("[", 300) + repeat("]", 300) + "]",
        "  1234567890123456789012345678901234567890  ",
        "\"text\" behind",
        "[1,]",
        "[1 2]",
        "{1:2}",
        "{\"a\" 1}",
        "{\"a\":1 true}",
        "{\"a\":\"\\x\"}",
        "[\"\\u12G4\"]",
        "[\"a\nb\"]",
        "[tru3]",
        "[-x]",
        "[1.x]",
        "[1e+x]",
        "[@]",
        "[/x]",
        "]",
        "[1, {\"a\": 2",
        "[99999999999999999999, 2]",
        "[1, 2e999, 3]",
        "",
    };
    for (const std::string& text : texts) {
        const Outcome whole = read(text, k_whole, k_numeric);
        for (const std::size_t size : {1U, 2U, 3U, 7U, 255U}) {
            SCOPED_TRACE(text.substr(0, 40) + " by " + std::to_string(size));
            const Outcome pieces = read(text, size, k_numeric);
            EXPECT_EQ(pieces.words, whole.words);
            EXPECT_EQ(pieces.status, whole.status);
            EXPECT_EQ(pieces.message, whole.message);
            if (text != "{\"a\":1 true}") {
                EXPECT_EQ(pieces.position, whole.position);
            }
        }
    }
}

TEST(Reader, takes_empty_pieces_anywhere) {
    EventLog log;
    Reader reader(k_textual, &log);
    const std::string text = R"([12, "a\n", /* c */ true])";
    for (const char& c : text) {
        EXPECT_EQ(reader.parse("", 0), ReadStatus::insufficientData);
        EXPECT_EQ(reader.parse(nullptr, 0), ReadStatus::insufficientData);
        reader.parse(&c, 1);
    }
    EXPECT_EQ(reader.status(), ReadStatus::ok);
    EXPECT_EQ(log.words, "[ n12 \"a\n\" true ] ");
}

TEST(Reader, does_not_check_utf8) {
    const std::vector<std::string> texts = {
        "\xFF", "\x80", "\xC0\x80", "\xED\xA0\x80", "\xF4\x90\x80\x80", "\xC3"};
    for (const std::string& text : texts) {
        EXPECT_EQ(read("[\"" + text + "\"]").words, "[ \"" + text + "\" ] ");
        EXPECT_EQ(read("{\"" + text + "\":1}").words, "{ '" + text + "' n1 } ");
    }
}

TEST(Reader, replaces_the_escapes_of_lone_surrogates) {
    EXPECT_EQ(read(R"(["\uD800"])").words, "[ \"?\" ] ");
    EXPECT_EQ(read(R"(["\uD800x"])").words, "[ \"?x\" ] ");
    EXPECT_EQ(read(R"(["\uDC00"])").words, "[ \"\xED\xB0\x80\" ] ");
}

TEST(Reader, takes_the_escape_of_nul_in_keys_and_strings) {
    const std::string nul(1, '\0');
    EXPECT_EQ(read(R"({"a\u0000b": "\u0000"})").words, "{ 'a" + nul + "b' \"" + nul + "\" } ");
    EXPECT_EQ(read("[\"" + nul + "\"]").status, ReadStatus::error);
}

TEST(Reader, delivers_duplicate_and_empty_keys) {
    EXPECT_EQ(read(R"({"a":1,"a":2,"":3,"":4})").words, "{ 'a' n1 'a' n2 '' n3 '' n4 } ");
}

TEST(Reader, refuses_a_byte_order_mark) {
    const Outcome outcome = read("\xEF\xBB\xBF[]");
    EXPECT_EQ(outcome.status, ReadStatus::error);
    EXPECT_EQ(outcome.message, yajl::k_invalidCharacter + "\n");
}

TEST(Reader, has_no_limit_of_depth) {
    constexpr std::size_t k_depth = 1000000;
    EventLog log;
    Reader reader(k_textual, &log);
    EXPECT_EQ(feed(reader, repeat("[", k_depth)), ReadStatus::insufficientData);
    EXPECT_EQ(log.count, k_depth);
    EXPECT_EQ(feed(reader, repeat("]", k_depth - 1)), ReadStatus::insufficientData);
    EXPECT_EQ(feed(reader, "]"), ReadStatus::ok);
    EXPECT_EQ(log.count, 2 * k_depth);
}

}  // namespace
}  // namespace yajlTests
