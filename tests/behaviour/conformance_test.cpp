// SPDX-License-Identifier: MIT
//
// Strict reading, with repeated keys, against RFC 8259: what is accepted, and where an error is. A
// table says what the grammar says by hand; everything else is judged by a recogniser that was
// written from the grammar and not from the library.

#include <gtest/gtest.h>

#include <cctype>
#include <string>
#include <string_view>
#include <vector>

#include "support/Reading.h"
#include "support/Rfc8259.h"

namespace {

using ko::Orvid::ReadOptions;
using orvid_test::Reading;
using orvid_test::readPieces;
using orvid_test::readWhole;
using orvid_test::Rfc8259;

/// Strict except for what the grammar does not decide: keys may be repeated.
ReadOptions asTheGrammar() {
    ReadOptions options = ReadOptions::strict();
    options.repeatedKeys = ko::Orvid::RepeatedKeys::replace;
    return options;
}

const ReadOptions k_options = asTheGrammar();

std::string readable(std::string_view text) {
    std::string result;
    for (const char c : text) {
        char hex[8];
        std::snprintf(hex, sizeof hex, "\\x%02X", static_cast<unsigned char>(c));
        result += std::isprint(static_cast<unsigned char>(c)) != 0 ? std::string(1, c) : hex;
    }
    return result;
}

/// Whether the library finds the same error as the recogniser, or none, at the same place, whole
/// and byte by byte.
testing::AssertionResult agrees(const std::string& text) {
    const std::optional<std::size_t> expected = Rfc8259::errorIn(text);
    const Reading reading = readWhole(k_options, text);
    if (reading.error.empty() == expected.has_value()) {
        return testing::AssertionFailure() << readable(text) << ": " << reading;
    }
    if (expected && reading.position != *expected) {
        return testing::AssertionFailure()
               << readable(text) << ": expected at " << *expected << ", " << reading;
    }
    const Reading bytewise = readPieces(k_options, text, 1);
    if (!(bytewise == reading)) {
        return testing::AssertionFailure()
               << readable(text) << ": " << reading << ", byte by byte: " << bytewise;
    }
    return testing::AssertionSuccess();
}

/// Each construct of the grammar once: every literal, escape, kind of number, container, empty and
/// not, blank, and UTF-8 of each length.
const std::string k_everything =
    "\t{ \"a\" : [true , false,null ,\r\n0,-1.5E+23, 4e-7,60.0e8],\"\\\"\\\\\\/\\b\\f\\n\\r\\t\":"
    "\"\\u00e9\\uD834\\udd1e \x7F\xC3\xA9\xE2\x82\xAC\xF0\x9D\x84\x9E\",\"\":{},\"b\":[],"
    "\"c\":{\"d\":[[-0]]}}\n";

TEST(Conformance, accepts_what_the_grammar_gives) {
    for (const std::string text : {"null",
                                   "true",
                                   "false",
                                   "0",
                                   "-0",
                                   "1",
                                   "-1",
                                   "10",
                                   "0.0",
                                   "-0.10",
                                   "1e1",
                                   "1E1",
                                   "1e+1",
                                   "1e-1",
                                   "0e0",
                                   "1.25e007",
                                   "123456789012345678901234567890",
                                   "\"\"",
                                   "\"a\"",
                                   "\"/\"",
                                   "\"\\/\"",
                                   "\"\\\"\\\\\\/\\b\\f\\n\\r\\t\"",
                                   "\"\\u0000\"",
                                   "\"\\uABCD\\uabcd\"",
                                   "\"\\ud800\\udc00\"",
                                   "\"\\uDBFF\\uDFFF\"",
                                   "\"\\ud7ff\\ue000\"",
                                   "\" \"",
                                   "\"\x7F\"",
                                   "\"\xC2\x80\"",
                                   "\"\xDF\xBF\"",
                                   "\"\xE0\xA0\x80\"",
                                   "\"\xED\x9F\xBF\"",
                                   "\"\xEE\x80\x80\"",
                                   "\"\xEF\xBF\xBF\"",
                                   "\"\xF0\x90\x80\x80\"",
                                   "\"\xF4\x8F\xBF\xBF\"",
                                   "\"\xEF\xBB\xBF\"",
                                   "[]",
                                   "[ ]",
                                   "[1]",
                                   "[1,2]",
                                   "[[]]",
                                   "[[],[]]",
                                   "{}",
                                   "{ }",
                                   "{\"a\":1}",
                                   "{\"a\":1,\"b\":2}",
                                   "{\"\":{}}",
                                   " \t\n\r1 \t\n\r",
                                   " [ 1 , 2 ] ",
                                   " { \"a\" : 1 , \"b\" : 2 } "}) {
        EXPECT_EQ(Rfc8259::errorIn(text), std::nullopt) << text;
        EXPECT_TRUE(agrees(text));
    }
}

TEST(Conformance, rejects_what_the_grammar_does_not_give) {
    for (const std::string text : {"",
                                   " ",
                                   "nul",
                                   "nulll",
                                   "Null",
                                   "True",
                                   "undefined",
                                   "NaN",
                                   "Infinity",
                                   "-Infinity",
                                   "+1",
                                   "-",
                                   "--1",
                                   "01",
                                   "-01",
                                   "00",
                                   "1.",
                                   ".1",
                                   "-.1",
                                   "1.e1",
                                   "1e",
                                   "1e+",
                                   "1e1.5",
                                   "1 2",
                                   "0x1",
                                   "1_0",
                                   "1f",
                                   "\"",
                                   "\"a",
                                   "a",
                                   "'a'",
                                   "\"\\\"",
                                   "\"\\a\"",
                                   "\"\\x41\"",
                                   "\"\\'\"",
                                   "\"\\U0041\"",
                                   "\"\\u\"",
                                   "\"\\u123\"",
                                   "\"\\u123g\"",
                                   "\"\\ud800\"",
                                   "\"\\udc00\"",
                                   "\"\\ud800x\"",
                                   "\"\\ud800\\n\"",
                                   "\"\\ud800\\ud800\"",
                                   "\"\\ud800\\u0041\"",
                                   "\"\\udc00\\ud800\"",
                                   "\"\\uDBFF\\uE000\"",
                                   "\"\n\"",
                                   "\"\t\"",
                                   "\"\x1F\"",
                                   "\"\x80\"",
                                   "\"\xBF\"",
                                   "\"\xC0\x80\"",
                                   "\"\xC1\xBF\"",
                                   "\"\xC2\"",
                                   "\"\xE0\x9F\xBF\"",
                                   "\"\xED\xA0\x80\"",
                                   "\"\xE2\x82\"",
                                   "\"\xF0\x8F\xBF\xBF\"",
                                   "\"\xF4\x90\x80\x80\"",
                                   "\"\xF5\x80\x80\x80\"",
                                   "\"\xFE\"",
                                   "\"\xFF\"",
                                   "[",
                                   "]",
                                   "[1",
                                   "[1,",
                                   "[1,]",
                                   "[,1]",
                                   "[,]",
                                   "[1 2]",
                                   "[1,,2]",
                                   "[1}",
                                   "[]]",
                                   "[:]",
                                   "{",
                                   "}",
                                   "{\"a\"",
                                   "{\"a\":",
                                   "{\"a\":1",
                                   "{\"a\":1,",
                                   "{\"a\":1,}",
                                   "{,}",
                                   "{a:1}",
                                   "{'a':1}",
                                   "{1:1}",
                                   "{\"a\" 1}",
                                   "{\"a\",1}",
                                   "{\"a\"::1}",
                                   "{\"a\":1 \"b\":2}",
                                   "{\"a\":1;}",
                                   "{\"a\":1]",
                                   "{}}",
                                   "{}{}",
                                   "\v1",
                                   "1\f",
                                   "\xC2\xA0"
                                   "1",
                                   "\xEF\xBB\xBF[]",
                                   "/**/1",
                                   "1//",
                                   "#\n1"}) {
        EXPECT_NE(Rfc8259::errorIn(text), std::nullopt) << text;
        EXPECT_TRUE(agrees(text));
    }
}

TEST(Conformance, agrees_on_every_byte_in_every_place) {
    ASSERT_EQ(Rfc8259::errorIn(k_everything), std::nullopt);
    const std::vector<std::string> places = {
        "@",          "[@]",   "[1@]",    "[1,@1]",      "{@}",       "{\"a\"@:1}",    "{\"a\":@}",
        "{\"a\":1@}", "\"@\"", "\"\\@\"", "\"\\u00@1\"", "\"\xC2@\"", "\"\xE1\x80@\"", "-@",
        "0@",         "1@",    "1.@",     "1.5@",        "1e@",       "1e+@",          "1e1@",
        "t@ue",       "true@", "[]@"};
    for (const std::string& place : places) {
        for (int byte = 0; byte < 256; ++byte) {
            std::string text = place;
            text[text.find('@')] = static_cast<char>(byte);
            EXPECT_TRUE(agrees(text));
        }
    }
}

TEST(Conformance, agrees_on_every_truncation) {
    for (std::size_t length = 0; length <= k_everything.size(); ++length) {
        EXPECT_TRUE(agrees(k_everything.substr(0, length)));
        EXPECT_TRUE(agrees(k_everything.substr(length)));
    }
}

template<std::size_t size>
std::string withNul(const char (&literal)[size]) {
    return std::string(literal, size - 1);
}

TEST(Conformance, agrees_on_every_mutation) {
    const std::string bytes =
        withNul("\0\x01\x1F \n\t\"\\/{}[]:,0179-+.eEtnfu_'\x7F\x80\xBF\xC2\xE2\xF0\xFF");
    for (std::size_t at = 0; at < k_everything.size(); ++at) {
        std::string removed = k_everything;
        EXPECT_TRUE(agrees(removed.erase(at, 1)));
        for (const char byte : bytes) {
            std::string replaced = k_everything;
            replaced[at] = byte;
            EXPECT_TRUE(agrees(replaced));
            std::string inserted = k_everything;
            EXPECT_TRUE(agrees(inserted.insert(at, 1, byte)));
        }
    }
}

/// Calls `visit` with all texts of at most `length` of these characters.
template<class Visit>
void forAllTexts(const std::string& characters, std::size_t length, const std::string& begin,
                 const Visit& visit) {
    visit(begin);
    if (length > 0) {
        for (const char c : characters) {
            forAllTexts(characters, length - 1, begin + c, visit);
        }
    }
}

TEST(Conformance, agrees_on_all_short_texts) {
    const auto check = [](const std::string& text) { EXPECT_TRUE(agrees(text)); };
    forAllTexts("[]{}:,\" 1", 4, "", check);
    forAllTexts("{}:,\"a", 3, "{\"b\":[", check);
    forAllTexts("-+.e01 ", 4, "", check);
    forAllTexts("\\u\"d8c0", 3, "\"\\ud8", check);
    forAllTexts("\\u\"dD89", 3, "\"\\ud834\\ud", check);
}

TEST(Conformance, agrees_on_utf8_at_all_its_boundaries) {
    const std::string tails = "\x7F\x80\x8F\x90\x9F\xA0\xBF\xC0\"";
    for (int first = 0x80; first < 0x100; ++first) {
        const std::string begin = std::string("\"") + static_cast<char>(first);
        for (const char second : tails) {
            EXPECT_TRUE(agrees(begin + second + "\""));
            for (const char third : tails) {
                EXPECT_TRUE(agrees(begin + second + third + "\""));
                if (first >= 0xEF) {
                    EXPECT_TRUE(agrees(begin + second + third + "\x80\""));
                    EXPECT_TRUE(agrees(begin + second + third + "\xC0\""));
                }
            }
        }
    }
}

}  // namespace
