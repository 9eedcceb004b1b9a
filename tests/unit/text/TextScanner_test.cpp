// SPDX-License-Identifier: MIT
//
// The scanner alone: the tokens with their places, whole and in pieces, and what it says of text
// that is cut off or malformed.

#include "text/TextScanner.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <string_view>

#include "text/TextScannerRun.h"

namespace {

using ko::Orvid::ReadOptions;
using ko::Orvid::TextScanner;
using ko::Orvid::TokenSink;
using ko::Orvid::TokenSpan;

/// Writes each token down with its place.
struct Log : TokenSink {
    std::string text;
    std::string refused;

    void add(std::string_view token, TokenSpan span) {
        text += std::to_string(span.begin) + '-' + std::to_string(span.end) + ' ' +
                std::string(token) + '\n';
    }
    void null(TokenSpan span) { add("null", span); }
    void boolean(bool value, TokenSpan span) { add(value ? "true" : "false", span); }
    void number(std::string_view number, TokenSpan span) { add(number, span); }
    void string(std::string_view string, TokenSpan span) {
        add("string " + std::string(string), span);
    }
    bool key(std::string_view key, TokenSpan span) {
        add("key " + std::string(key), span);
        return refused.empty() || key != refused;
    }
    void openObject(TokenSpan span) { add("{", span); }
    void closeObject(TokenSpan span) { add("}", span); }
    void openArray(TokenSpan span) { add("[", span); }
    void closeArray(TokenSpan span) { add("]", span); }
    void comma(TokenSpan span) { add(",", span); }
};

/// The tokens, then the error and where the scanner is.
std::string logOf(std::string_view text, const ReadOptions& options, std::size_t size,
                  const std::string& refused = "") {
    Log log;
    log.refused = refused;
    TextScanner scanner(options);
    for (std::size_t at = 0; at < text.size() && !scanner.error(); at += size) {
        // A copy of its own, so that reading beyond the piece shows.
        const std::string piece(text.substr(at, size));
        scanner.scan(piece, log);
        scanner.leave(piece);
    }
    if (!scanner.error()) {
        scanner.finish(log);
    }
    if (scanner.error()) {
        log.add("error: " + scanner.error()->message,
                {scanner.error()->begin, scanner.error()->begin + scanner.error()->length});
    } else {
        log.text += scanner.isComplete() ? "complete at " : "incomplete at ";
        log.text += std::to_string(scanner.position()) + '\n';
    }
    return log.text;
}

std::string whole(std::string_view text, const ReadOptions& options = ReadOptions::strict()) {
    return logOf(text, options, text.size() + 1);
}

TEST(TextScanner, reports_each_token_with_its_place) {
    EXPECT_EQ(whole(R"({"a": [1, -2.5e3], "\u0062" : "c\n", "d":{}} )"),
              "0-1 {\n1-4 key a\n6-7 [\n7-8 1\n8-9 ,\n10-16 -2.5e3\n16-17 ]\n17-18 ,\n"
              "19-27 key b\n30-35 string c\n\n35-36 ,\n37-40 key d\n41-42 {\n42-43 }\n43-44 }\n"
              "complete at 44\n");
    EXPECT_EQ(whole("[null,true,\n\tfalse]"),
              "0-1 [\n1-5 null\n5-6 ,\n6-10 true\n10-11 ,\n13-18 false\n18-19 ]\ncomplete at 19\n");
}

/// Notes whether the texts of strings and keys lie in the buffer that is read.
struct Placement : TokenSink {
    std::string_view buffer;
    std::string inside;

    void note(std::string_view text) {
        const std::less_equal<const char*> isUpTo;
        const char* const end = text.data() + text.size();
        const bool isInside =
            isUpTo(buffer.data(), text.data()) && isUpTo(end, buffer.data() + buffer.size());
        inside += isInside ? 'i' : 'o';
    }
    void string(std::string_view text, TokenSpan /*span*/) { note(text); }
    bool key(std::string_view text, TokenSpan /*span*/) {
        note(text);
        return true;
    }
};

/// The text is given in two pieces, the second of which has room before it.
std::string placesInPieces(const std::string& text, std::size_t first) {
    constexpr std::size_t k_room = 64;
    TextScanner scanner(ReadOptions::strict());
    Placement places;
    const std::string begin = text.substr(0, first);
    scanner.scan(begin, places);
    scanner.leave(begin);
    std::string buffer = std::string(k_room, ' ') + text.substr(first);
    places.buffer = buffer;
    scanner.scan(buffer.data() + k_room, buffer.size() - k_room, k_room, places);
    scanner.finish(places);
    EXPECT_FALSE(scanner.error()) << text;
    return places.inside;
}

TEST(TextScanner, a_string_in_pieces_is_copied_only_for_its_escapes) {
    EXPECT_EQ(placesInPieces(R"(["one two"])", 5), "i");
    EXPECT_EQ(placesInPieces(R"({"one two":1})", 5), "i");
    EXPECT_EQ(placesInPieces("[\"\xC3\xA4 \xC3\xB6\"]", 3), "i");
    EXPECT_EQ(placesInPieces(R"(["a\tone two"])", 9), "o");
    EXPECT_EQ(placesInPieces(R"(["one\ttwo"])", 4), "o");
    EXPECT_EQ(placesInPieces(R"(["one\ttwo"])", 6), "o");
}

TEST(TextScanner, a_number_is_over_at_the_end_of_the_text) {
    EXPECT_EQ(whole("42"), "0-2 42\ncomplete at 2\n");
    EXPECT_EQ(whole("42 "), "0-2 42\ncomplete at 2\n");
    EXPECT_EQ(whole("-"), "1-2 error: The text ends before the document is complete\n");
    EXPECT_EQ(whole("[42"), "0-1 [\n3-4 error: The text ends before the document is complete\n");
}

TEST(TextScanner, stops_after_the_value_unless_the_document_must_be_whole) {
    EXPECT_EQ(whole("[] x", ReadOptions()), "0-1 [\n1-2 ]\ncomplete at 2\n");
    EXPECT_EQ(whole("1 x", ReadOptions()), "0-1 1\ncomplete at 1\n");
    EXPECT_EQ(whole("[1", ReadOptions()), "0-1 [\nincomplete at 2\n");
    EXPECT_EQ(whole("[] x"), "0-1 [\n1-2 ]\n3-4 error: Unexpected 'x': the document is complete\n");
}

TEST(TextScanner, skips_margins_of_every_length_and_nothing_else) {
    for (const std::string margin : {"\n", "\r\n", " \n", "\n\n", "\n\t"}) {
        for (std::size_t spaces = 0; spaces < 70; ++spaces) {
            for (const std::string last : {"", "\t", "\n", "\v", "\x01", "\x80", "x"}) {
                const std::string text =
                    "[" + margin + std::string(spaces, ' ') + last + "1]" + std::string(70, ' ');
                // By single bytes no block is looked at.
                EXPECT_EQ(whole(text), logOf(text, ReadOptions::strict(), 1)) << text;
                EXPECT_EQ(whole(text, ReadOptions()), logOf(text, ReadOptions(), 1)) << text;
            }
        }
    }
}

TEST(TextScanner, comments_and_other_whitespace_are_no_tokens) {
    EXPECT_EQ(whole("/* a **/[//]\n1/**/,\v2 /*]*/]\f// end", ReadOptions()),
              "8-9 [\n13-14 1\n18-19 ,\n20-21 2\n27-28 ]\ncomplete at 28\n");
    EXPECT_EQ(whole("[\v]"), "0-1 [\n1-2 error: Unexpected byte 0x0B: expected a value or ']'\n");
}

TEST(TextScanner, a_refused_key_is_an_error) {
    EXPECT_EQ(logOf(R"({"a":1,"b":2})", ReadOptions(), 100, "b"),
              "0-1 {\n1-4 key a\n5-6 1\n6-7 ,\n7-10 key b\n7-10 error: Repeated key \"b\"\n");
}

/// Texts in which every kind of token, comment and error can be cut.
const char* const k_texts[] = {
    R"({"key": [1, -2.5e+3, true, false, null, "\ud83d\ude00 \"x\" \u00e9"], "b": {}} )",
    "[ /* one * two ** / */ 1 // three\n , \"\xC3\xA9\xE2\x82\xAC\xF0\x9D\x84\x9E\" ] // four",
    "{\"a\" : 1 , \"b\" : [ ] , }",
    "[12345678901234567890123456789012345678901234567890, \"a string that is longer than blocks\"]",
    "-12.75E-2",
    "nul",
    "truE",
    "[1, 2",
    "{\"a\" 1}",
    "[1,,2]",
    "\"\\ud83d\\u0041\"",
    "\"\\u00g0\"",
    "\"bad \xE2\x82 utf8\"",
    "/* bad \xC0\xAF */ 1",
    "\"cut \xE2\x82",
    "/* cut \xE2\x82",
    "\"control \x01\"",
    "1.x",
    "/x",
    "[[[[]]]]]",
};

TEST(TextScanner, pieces_make_no_difference) {
    ReadOptions few;
    few.validateUtf8 = true;
    few.maxDepth = 3;
    ReadOptions limited = ReadOptions::jsonc();
    limited.maxLength = 40;
    limited.maxLineLength = 30;
    for (const ReadOptions& options :
         {ReadOptions(), ReadOptions::strict(), ReadOptions::jsonc(), few, limited}) {
        for (const std::string_view text : k_texts) {
            const std::string expected = whole(text, options);
            for (std::size_t size = 1; size < text.size(); ++size) {
                EXPECT_EQ(logOf(text, options, size), expected) << text << "\n by " << size;
            }
        }
    }
}

TEST(TextScanner, a_token_of_many_pieces_costs_no_more_than_a_whole_one) {
    const std::string inside(2000000, 'x');
    for (const std::string& text : {'"' + inside + '"', "/*" + inside + "*/1",
                                    "//" + inside + "\n1", std::string(2000000, '1')}) {
        EXPECT_EQ(logOf(text, ReadOptions::jsonc(), 1), whole(text, ReadOptions::jsonc()))
            << text.substr(0, 2);
    }
}

/// Long enough for all ways to look at UTF-8: with and without escapes, short and long.
std::string stringsOfManyScripts() {
    std::string text = "[";
    for (int i = 0; i < 6; ++i) {
        text += "\"plain\",\"caf\xC3\xA9\",\"\\\"\xE4\xBB\x8A\xE6\x97\xA5\\n\\u00e9\",";
        text += "\"\xF0\x9F\x98\x80 and \xD0\xB4\xD0\xBE\xD0\xBC in more than a block\",";
    }
    return text + "0]";
}

TEST(TextScanner, finds_the_first_byte_that_is_no_utf8_wherever_it_is) {
    const std::string valid = stringsOfManyScripts();
    for (const char wrong : {'\x80', '\xC3', '\xED', '\xF4', '\xFF'}) {
        for (std::size_t at = 0; at < valid.size(); ++at) {
            std::string text = valid;
            text[at] = wrong;
            // By single bytes no more than one character is looked at.
            ASSERT_EQ(whole(text), logOf(text, ReadOptions::strict(), 1))
                << testing::PrintToString(text);
        }
    }
}

/// What brings another reader to where the scanner is after the text.
std::string entryAfter(const std::string& text) {
    TextScanner scanner{ReadOptions()};
    TokenSink none;
    scanner.scan(text, none);
    return scanner.entry() + '|' + std::string(scanner.heldBefore(scanner.offset()));
}

TEST(TextScanner, shows_another_reader_where_it_is) {
    EXPECT_EQ(entryAfter(""), "|");
    EXPECT_EQ(entryAfter(" "), "|");
    EXPECT_EQ(entryAfter("12"), "|12");
    EXPECT_EQ(entryAfter("["), "[|");
    EXPECT_EQ(entryAfter("[1"), "[|1");
    EXPECT_EQ(entryAfter("[1 "), "[\"\"|");
    EXPECT_EQ(entryAfter("[1,"), "[\"\",|");
    EXPECT_EQ(entryAfter("{"), "{|");
    EXPECT_EQ(entryAfter("{\"a\""), "{\"\"|");
    EXPECT_EQ(entryAfter("{\"a\":"), "{\"\":|");
    EXPECT_EQ(entryAfter("{\"a\":1, \"b"), "{\"\":\"\",|\"b");
    EXPECT_EQ(entryAfter("{\"a\":[{\"b\":[1,{\"c\":2}, /* d"), "{\"\":[{\"\":[\"\",|/* d");
}

}  // namespace
