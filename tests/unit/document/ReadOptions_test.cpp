// SPDX-License-Identifier: MIT
//
// Tests of ReadOptions: what each option refuses and lets pass, alone and in the strict preset, and
// the message, the place and the element of each error.

#include <ko/Orvid/ReadOptions.h>

#include <istream>
#include <streambuf>
#include <string>

#include "support/Reading.h"
#include "support/YajlMessages.h"

namespace {

using ko::Orvid::ReadOptions;
using ko::Orvid::RepeatedKeys;
using orvid_test::errorOf;
using orvid_test::Reading;
using orvid_test::readPieces;
using orvid_test::readStream;
using orvid_test::readWhole;

/// The options that differ from the lenient ones in one field.
template<class Value>
ReadOptions with(Value ReadOptions::*field, Value value) {
    ReadOptions options;
    options.*field = value;
    return options;
}

const ReadOptions k_lenient;
const ReadOptions k_strict = ReadOptions::strict();
const ReadOptions k_jsonc = ReadOptions::jsonc();
const ReadOptions k_whole = with(&ReadOptions::requireWholeDocument, true);
const ReadOptions k_utf8 = with(&ReadOptions::validateUtf8, true);
const ReadOptions k_pairs = with(&ReadOptions::rejectLoneSurrogates, true);

TEST(ReadOptions, are_lenient_unless_asked) {
    EXPECT_FALSE(k_lenient.requireWholeDocument);
    EXPECT_FALSE(k_lenient.validateUtf8);
    EXPECT_FALSE(k_lenient.rejectLoneSurrogates);
    EXPECT_TRUE(k_lenient.allowComments);
    EXPECT_FALSE(k_lenient.allowTrailingCommas);
    EXPECT_TRUE(k_lenient.allowOtherWhitespace);
    EXPECT_EQ(k_lenient.repeatedKeys, RepeatedKeys::replace);
    EXPECT_EQ(k_lenient.maxDepth, 0U);
    EXPECT_EQ(k_lenient.maxLength, 0U);
    EXPECT_EQ(k_lenient.maxLineLength, 0U);
    const std::string text = "\v/**/{\"\xFF\":\"\\ud800\",\"a\":[[]],\"a\":1} x";
    const Reading reading = readWhole(k_lenient, text);
    EXPECT_EQ(reading.tree, "{\"\xFF\": \"?\",\"a\": 1}");
    EXPECT_EQ(reading.error, "");
    EXPECT_EQ(reading.position, text.size() - 2);
}

TEST(ReadOptions, lenient_errors_keep_their_text_and_have_no_place) {
    EXPECT_EQ(errorOf(k_lenient, "[1, ]"), "-1,-1--1,-1 @: " + orvid_test::yajl::k_unallowedToken +
                                               "\n"
                                               "                                   [1, ]\n"
                                               "                     (right here) ------^\n");
}

TEST(ReadOptions, strict_takes_one_document_with_whitespace_around_it) {
    for (const char* const text : {"42", "-0.5e+1", "\"x\"", "true", "null", " {} \r\n\t"}) {
        EXPECT_EQ(errorOf(k_strict, text), "") << text;
        EXPECT_EQ(readWhole(k_strict, text).state, 0) << text;
    }
    EXPECT_EQ(readWhole(k_strict, "42").tree, "42");
    EXPECT_EQ(readWhole(k_strict, "42 ").tree, "42");
}

TEST(ReadOptions, jsonc_takes_comments_and_trailing_commas_besides) {
    for (const char* const text : {"42", " {} \r\n\t", "{} // the end", "{}//\n",
                                   "/* a */ {} /* b */", "//\n[]", "[1]//", "{}/***/"}) {
        EXPECT_EQ(errorOf(k_jsonc, text), "") << text;
        EXPECT_EQ(readWhole(k_jsonc, text).state, 0) << text;
    }
    EXPECT_EQ(readWhole(k_jsonc, "[1, 2,]").tree, "[1,2]");
    EXPECT_EQ(readWhole(k_jsonc, R"({"a":[[1,],[],/*,]*/],"b":{"c":{},// ,}
            },})")
                  .tree,
              R"({"a": [[1],[]],"b": {"c": {}}})");
    EXPECT_EQ(errorOf(k_jsonc, R"({"a":1,"a":2,})"), "1,8-1,10 @: Repeated key \"a\"");
}

TEST(ReadOptions, strict_refuses_comments_and_trailing_commas) {
    EXPECT_EQ(errorOf(k_strict, "{} // the end"), "1,4-1,4 @: Comments are not allowed");
    EXPECT_EQ(errorOf(k_strict, "/**/{}"), "1,1-1,1 @: Comments are not allowed");
    EXPECT_EQ(errorOf(k_strict, "[1,\n]"),
              "2,1-2,1 @: Unexpected ']' after a comma: trailing commas are not allowed");
    EXPECT_EQ(errorOf(k_strict, R"({"a":{"b":1,}})"),
              "1,13-1,13 @a: Unexpected '}' after a comma: trailing commas are not allowed");
    EXPECT_EQ(errorOf(k_whole, "[1,]"),
              "1,4-1,4 @: Unexpected ']' after a comma: trailing commas are not allowed");
}

TEST(ReadOptions, a_trailing_comma_follows_a_value_and_comes_once) {
    EXPECT_EQ(errorOf(k_jsonc, "[,]"), "1,2-1,2 @: Unexpected ',': expected a value or ']'");
    EXPECT_EQ(errorOf(k_jsonc, "{,}"), "1,2-1,2 @: Unexpected ',': expected a key or '}'");
    EXPECT_EQ(errorOf(k_jsonc, "[1,,]"), "1,4-1,4 @: Unexpected ',': expected a value or ']'");
    EXPECT_EQ(errorOf(k_jsonc, "[1, }"), "1,5-1,5 @: Unexpected '}': expected a value or ']'");
    EXPECT_EQ(errorOf(k_jsonc, "1,"), "1,2-1,2 @: Unexpected ',': the document is complete");
    EXPECT_EQ(errorOf(k_jsonc, "[1,"), "1,4-1,4 @: The text ends before the document is complete");
    const ReadOptions only = with(&ReadOptions::allowTrailingCommas, true);
    EXPECT_EQ(readWhole(only, "[1,]").tree, "[1]");
    EXPECT_EQ(readWhole(only, "[1 , ").tree, "[1]");
}

TEST(ReadOptions, trailing_commas_may_be_cut_off_from_their_bracket) {
    const std::string text = "{\"a\" : [ 1 , 2 , /**/ ] , \"b\" : [ [ ] , ] , \"c\":1 , }";
    for (std::size_t size = 1; size < text.size(); ++size) {
        EXPECT_EQ(readPieces(k_jsonc, text, size).tree, R"({"a": [1,2],"b": [[]],"c": 1})") << size;
        EXPECT_EQ(readPieces(k_jsonc, text, size).error, "") << size;
    }
}

TEST(ReadOptions, whole_documents_may_not_end_early) {
    const std::string early = ": The text ends before the document is complete";
    EXPECT_EQ(errorOf(k_strict, ""), "1,1-1,1 @" + early);
    EXPECT_EQ(errorOf(k_strict, "  "), "1,3-1,3 @" + early);
    EXPECT_EQ(errorOf(k_jsonc, "//\n"), "2,1-2,1 @" + early);
    EXPECT_EQ(errorOf(k_strict, "[1, 2 "), "1,7-1,7 @" + early);
    EXPECT_EQ(errorOf(k_strict, "-"), "1,2-1,2 @" + early);
    EXPECT_EQ(errorOf(k_strict, "4."), "1,3-1,3 @" + early);
    EXPECT_EQ(errorOf(k_strict, "tru"), "1,4-1,4 @" + early);
    EXPECT_EQ(errorOf(k_jsonc, "{}/"), "1,4-1,4 @" + early);
    EXPECT_EQ(errorOf(k_jsonc, "{}/**"), "1,6-1,6 @" + early);
    EXPECT_EQ(errorOf(k_strict, "{\"a\":\n{\"b\":"), "2,6-2,6 @a.b" + early);
    EXPECT_EQ(errorOf(k_utf8, "{\"a\":"), "");
    EXPECT_EQ(readWhole(k_utf8, "{\"a\":").state, 2);
    EXPECT_EQ(readWhole(k_utf8, "42").tree, "null");
}

TEST(ReadOptions, whole_documents_may_have_nothing_after_them) {
    EXPECT_EQ(errorOf(k_whole, "{} x"), "1,4-1,4 @: Unexpected 'x': the document is complete");
    EXPECT_EQ(errorOf(k_whole, "1\n []"), "2,2-2,2 @: Unexpected '[': the document is complete");
    EXPECT_EQ(errorOf(k_whole, "01"), "1,2-1,2 @: Unexpected '1': the document is complete");
    EXPECT_EQ(errorOf(k_whole, std::string("[]\0", 3)),
              "1,3-1,3 @: Unexpected byte 0x00: the document is complete");
    EXPECT_EQ(readWhole(k_whole, "[1]]").tree, "[1]");
    EXPECT_EQ(errorOf(k_utf8, "{} x\xFF"), "");
    EXPECT_EQ(errorOf(with(&ReadOptions::allowComments, false), "{} //"), "");
}

TEST(ReadOptions, utf8_is_checked_in_strings_keys_and_comments) {
    EXPECT_EQ(errorOf(k_utf8, "[\"\xFF\"]"), "1,3-1,3 @: Invalid UTF-8");
    EXPECT_EQ(errorOf(k_utf8, "{\"a\":\"\x80\"}"), "1,7-1,7 @a: Invalid UTF-8");
    EXPECT_EQ(errorOf(k_utf8, "{\"\xC0\xAF\":1}"), "1,3-1,4 @: Invalid UTF-8");
    EXPECT_EQ(errorOf(k_utf8, "[\n1/*\xE2\x82*/]"), "2,4-2,5 @: Invalid UTF-8");
    EXPECT_EQ(errorOf(k_utf8, "[\"\xC3\xA9\xE2\x82\xAC\xF0\x9D\x84\x9E\"/*\xC3\xA9*/]"), "");
    EXPECT_EQ(errorOf(k_whole, "[\"\xFF\"]/*\xFF*/"), "");
}

TEST(ReadOptions, utf8_of_comments_is_checked_to_the_byte) {
    EXPECT_EQ(errorOf(k_utf8, "/* \xFF */ 1"), "1,4-1,4 @: Invalid UTF-8");
    EXPECT_EQ(errorOf(k_utf8, "// \x80\n1"), "1,4-1,4 @: Invalid UTF-8");
    EXPECT_EQ(errorOf(k_utf8, "/*\xE2\x82*/1"), "1,3-1,4 @: Invalid UTF-8");
    EXPECT_EQ(errorOf(k_utf8, "//\xF0\x9F\x98\n1"), "1,3-1,5 @: Invalid UTF-8");
    EXPECT_EQ(errorOf(k_utf8, "/*\xE2\x82\xAC\xF0\x9F\x98\x80*/ 1 // \xC3\xA4\n"), "");
    EXPECT_EQ(errorOf(k_lenient, "/*\xFF*/ 1"), "");
    ReadOptions whole = k_utf8;
    whole.requireWholeDocument = true;
    EXPECT_EQ(errorOf(whole, "1 //\xC3"), "1,5-1,5 @: Invalid UTF-8");
    EXPECT_EQ(errorOf(whole, "1 //"), "");
}

TEST(ReadOptions, a_byte_order_mark_is_named_at_the_beginning_only) {
    const std::string wanted = ": expected a value";
    EXPECT_EQ(errorOf(k_whole, "\xEF\xBB\xBF[1]"),
              "1,1-1,1 @: Unexpected byte 0xEF, as of a byte order mark" + wanted);
    EXPECT_EQ(errorOf(k_whole, " \xEF\xBB\xBF[1]"), "1,2-1,2 @: Unexpected byte 0xEF" + wanted);
    EXPECT_EQ(errorOf(k_whole, "\xFE\xFF[1]"), "1,1-1,1 @: Unexpected byte 0xFE" + wanted);
}

TEST(ReadOptions, limits_count_from_the_beginning_of_the_text_in_pieces_too) {
    const ReadOptions five = with(&ReadOptions::maxLength, std::uint64_t(5));
    const ReadOptions line = with(&ReadOptions::maxLineLength, std::uint64_t(4));
    for (std::size_t size = 1; size < 8; ++size) {
        EXPECT_EQ(readPieces(five, "[1,2] ", size).error,
                  "1,6-1,6 @: The text is longer than 5 bytes");
        EXPECT_EQ(readPieces(line, "[1,2\n,3,4]", size).error,
                  "2,5-2,5 @: The line is longer than 4 bytes");
        EXPECT_EQ(readPieces(line, "[1,2\n,3,4\n]", size).error, "");
    }
}

TEST(ReadOptions, half_a_surrogate_pair_is_an_error_or_is_read_as_something_else) {
    const std::string half = ": The escape of half a surrogate pair";
    EXPECT_EQ(errorOf(k_pairs, R"(["\ud800"])"), "1,3-1,8 @" + half);
    EXPECT_EQ(errorOf(k_pairs, R"([ "\udfff"])"), "1,4-1,9 @" + half);
    EXPECT_EQ(errorOf(k_pairs, R"(["a\udbffA"])"), "1,4-1,9 @" + half);
    EXPECT_EQ(errorOf(k_pairs, R"(["\ud800\n"])"), "1,3-1,8 @" + half);
    EXPECT_EQ(errorOf(k_pairs, R"(["\ud800\u0041"])"), "1,3-1,8 @" + half);
    EXPECT_EQ(errorOf(k_pairs, R"(["\ud800\ud800\udc00"])"), "1,3-1,8 @" + half);
    EXPECT_EQ(errorOf(k_pairs, R"(["\ud800\udc00\udc00"])"), "1,15-1,20 @" + half);
    EXPECT_EQ(errorOf(k_pairs, R"({"\ud800":1})"), "1,3-1,8 @" + half);
    EXPECT_EQ(errorOf(k_pairs, R"(["\ud834\udd1e\uD834\uDD1E\ud7ff\ue000"])"), "");
    EXPECT_EQ(readWhole(k_utf8, R"(["\ud800"])").tree, "[\"?\"]");
}

TEST(ReadOptions, comments_are_whitespace_or_errors) {
    const ReadOptions none = with(&ReadOptions::allowComments, false);
    EXPECT_EQ(errorOf(none, "[/**/1]"), "1,2-1,2 @: Comments are not allowed");
    EXPECT_EQ(errorOf(none, "[\n// x\n1]"), "2,1-2,1 @: Comments are not allowed");
    EXPECT_EQ(errorOf(none, "[1//\n]"), "1,3-1,3 @: Comments are not allowed");
    EXPECT_EQ(errorOf(none, "[\"/* // */\"]"), "");
    ReadOptions jsonc = k_jsonc;
    EXPECT_EQ(readWhole(jsonc, "/**/[/* ] **/1//]\n]//").tree, "[1]");
    EXPECT_EQ(errorOf(jsonc, "/1"), "1,2-1,2 @: Unexpected '1': a comment begins with /* or //");
    jsonc.allowComments = false;
    EXPECT_EQ(errorOf(jsonc, "[1]//"), "1,4-1,4 @: Comments are not allowed");
}

TEST(ReadOptions, vertical_tab_and_form_feed_are_whitespace_or_errors) {
    const ReadOptions none = with(&ReadOptions::allowOtherWhitespace, false);
    EXPECT_EQ(errorOf(none, "[\v1]"), "1,2-1,2 @: Unexpected byte 0x0B: expected a value or ']'");
    EXPECT_EQ(errorOf(none, "[1\f]"), "1,3-1,3 @: Unexpected byte 0x0C: expected ',' or ']'");
    EXPECT_EQ(errorOf(none, "[ \t\r\n1]"), "");
    EXPECT_EQ(errorOf(k_whole, "\v[\f1]\v\f"), "");
}

TEST(ReadOptions, repeated_keys_replace_or_are_errors) {
    const ReadOptions reject = with(&ReadOptions::repeatedKeys, RepeatedKeys::reject);
    const Reading reading = readWhole(reject, "{\"a\": {\"b\":1,\n  \"c\":2, \"b\":3}}");
    EXPECT_EQ(reading.error, "2,10-2,12 @a: Repeated key \"b\"");
    EXPECT_EQ(reading.tree, R"({"a": {"b": 1,"c": 2}})");
    EXPECT_EQ(reading.position, 23U);
    EXPECT_EQ(errorOf(reject, R"({"a":1,"\u0061":2})"), "1,8-1,15 @: Repeated key \"a\"");
    EXPECT_EQ(errorOf(reject, R"({"":1,"":2})"), "1,7-1,8 @: Repeated key \"\"");
    EXPECT_EQ(errorOf(reject, R"({"a":{"a":{"b":1}},"b":[{"a":1},{"a":1}]})"), "");
    EXPECT_EQ(readWhole(k_whole, R"({"a":1,"a":3})").tree, R"({"a": 3})");
}

TEST(ReadOptions, a_long_repeated_key_is_not_named) {
    const auto twice = [](const std::string& key) {
        return "{\"" + key + "\":1,\"" + key + "\":2}";
    };
    const std::string longest(100, 'k');
    EXPECT_EQ(errorOf(k_strict, twice(longest)), "1,107-1,208 @: Repeated key \"" + longest + "\"");
    EXPECT_EQ(errorOf(k_strict, twice(longest + "k")), "1,108-1,210 @: Repeated key");
    const std::string withNul("a\0b", 3);
    EXPECT_EQ(errorOf(k_strict, twice("a\\u0000b")),
              "1,15-1,24 @: Repeated key \"" + withNul + "\"");
}

TEST(ReadOptions, the_first_error_is_reported) {
    EXPECT_EQ(errorOf(k_strict, R"({"a":1,"a":x})"), "1,8-1,10 @: Repeated key \"a\"");
    EXPECT_EQ(errorOf(k_strict, R"({"a":x,"a":1})"),
              "1,6-1,6 @a: Unexpected 'x': expected a value");
}

TEST(ReadOptions, depth_is_limited_in_containers) {
    const ReadOptions two = with(&ReadOptions::maxDepth, std::size_t(2));
    EXPECT_EQ(errorOf(two, "[[],{},["), "");
    EXPECT_EQ(readWhole(two, "[[1],{\"a\":1}]").tree, "[[1],{\"a\": 1}]");
    EXPECT_EQ(errorOf(two, "[[[1]]]"), "1,3-1,3 @[0]: Nested deeper than 2 levels");
    EXPECT_EQ(errorOf(two, R"({"b":{"c":{}}})"), "1,11-1,11 @b.c: Nested deeper than 2 levels");
    EXPECT_EQ(errorOf(with(&ReadOptions::maxDepth, std::size_t(1)), "{}"), "");
    const std::string deep(100000, '[');
    EXPECT_EQ(errorOf(with(&ReadOptions::maxDepth, std::size_t(4)), deep),
              "1,5-1,5 @[0][0][0]: Nested deeper than 4 levels");
    EXPECT_EQ(errorOf(with(&ReadOptions::maxDepth, std::size_t(100000)), deep), "");
}

TEST(ReadOptions, length_is_limited_in_bytes) {
    ReadOptions five = with(&ReadOptions::maxLength, std::uint64_t(5));
    EXPECT_EQ(errorOf(five, "[1,2]"), "");
    EXPECT_EQ(errorOf(five, "[1,2] "), "1,6-1,6 @: The text is longer than 5 bytes");
    EXPECT_EQ(errorOf(five, "[\n1,23]"), "2,4-2,4 @: The text is longer than 5 bytes");
    EXPECT_EQ(readStream(five, "[\n1,23]").error, "2,4-2,4 @: The text is longer than 5 bytes");
    EXPECT_EQ(errorOf(five, "[x      ]"), "1,2-1,2 @: Unexpected 'x': expected a value or ']'");
    five.requireWholeDocument = true;
    EXPECT_EQ(errorOf(five, "[1,2]\n"), "1,6-1,6 @: The text is longer than 5 bytes");
    EXPECT_EQ(readStream(five, "12345678").error, "1,6-1,6 @: The text is longer than 5 bytes");
}

TEST(ReadOptions, the_length_of_a_line_is_limited_in_bytes) {
    const ReadOptions four = with(&ReadOptions::maxLineLength, std::uint64_t(4));
    EXPECT_EQ(errorOf(four, "[1,\n2, 3\n,  4\n\n]  \n"), "");
    EXPECT_EQ(errorOf(four, "[1,2,\n3]"), "1,5-1,5 @: The line is longer than 4 bytes");
    EXPECT_EQ(errorOf(four, "[1,2\n,3,4]"), "2,5-2,5 @: The line is longer than 4 bytes");
    EXPECT_EQ(errorOf(four, "[1,2\r\n]"), "1,5-1,5 @: The line is longer than 4 bytes");
    EXPECT_EQ(errorOf(four, "[\"\xC3\xA9\"]"), "1,5-1,5 @: The line is longer than 4 bytes");
}

TEST(ReadOptions, limits_stop_a_stream_that_never_ends) {
    struct Endless : std::streambuf {
        int_type underflow() override {
            m_piece.assign(1000, ' ');
            setg(m_piece.data(), m_piece.data(), m_piece.data() + m_piece.size());
            return traits_type::to_int_type(' ');
        }
        std::string m_piece;
    };
    Endless spaces;
    std::istream in(&spaces);
    ReadOptions options = k_strict;
    options.maxLength = 100000;
    ko::Orvid::Element root;
    const auto problem = orvid_test::thrownBy<ko::Orvid::ParseException>(
        [&] { ko::Orvid::DomParser(options).parse(root, in); });
    EXPECT_EQ(problem.message(), "The text is longer than 100000 bytes");
    EXPECT_EQ(problem.firstColumn(), 100001);
}

TEST(ReadOptions, errors_after_a_long_token_have_their_place) {
    const std::string text = "[\"" + std::string(1000000, 'x') + "\",\n  1, x]";
    const std::string problem = readWhole(k_strict, text).error;
    EXPECT_EQ(problem.substr(0, 11), "2,6-2,6 @: ");
    EXPECT_EQ(readStream(k_strict, text).error, problem);
    EXPECT_EQ(readPieces(k_strict, text, 100000).error, problem);
}

TEST(ReadOptions, columns_count_bytes_and_lines_end_at_newlines) {
    const std::string x = " @: Unexpected 'x': expected a value";
    EXPECT_EQ(errorOf(k_strict, "[1,x"), "1,4-1,4" + x);
    EXPECT_EQ(errorOf(k_strict, "[1,\nx"), "2,1-2,1" + x);
    EXPECT_EQ(errorOf(k_strict, "[1,\r\n\r\n x"), "3,2-3,2" + x);
    EXPECT_EQ(errorOf(k_strict, "[1,\rx"), "1,5-1,5" + x);
    EXPECT_EQ(errorOf(k_strict, "[\"\xC3\xA9\xE2\x82\xAC\",x"), "1,10-1,10" + x);
    EXPECT_EQ(errorOf(k_jsonc, "[1,/*\n\n*/ x"),
              "3,4-3,4 @: Unexpected 'x': expected a value or ']'");
    EXPECT_EQ(errorOf(k_jsonc, "[1,//\nx"), "2,1-2,1 @: Unexpected 'x': expected a value or ']'");
}

TEST(ReadOptions, errors_of_syntax_have_their_place_with_any_option) {
    const auto check = [](const std::string& expected, const std::string& text) {
        EXPECT_EQ(errorOf(k_strict, text), expected) << text;
        EXPECT_EQ(errorOf(k_pairs, text), expected) << text;
    };
    check("1,1-1,1 @: Unexpected 'x': expected a value", "x");
    check("1,1-1,1 @: Unexpected byte 0xEF, as of a byte order mark: expected a value",
          "\xEF\xBB\xBF{}");
    check("1,2-1,2 @: Unexpected ',': expected a value or ']'", "[,]");
    check("1,5-1,5 @: Unexpected ']' after a comma: trailing commas are not allowed", "[1, ]");
    check("1,2-1,2 @: Unexpected ']': expected a key or '}'", "{]");
    check("1,8-1,8 @: Unexpected '}' after a comma: trailing commas are not allowed", "{\"a\":1,}");
    check("1,5-1,5 @a: Unexpected '1': expected ':'", "{\"a\"1}");
    check("1,7-1,7 @: Unexpected ']': expected ',' or '}'", "{\"a\":1]");
    check("1,4-1,4 @: Unexpected '2': expected ',' or ']'", "[1 2]");
    check("1,5-1,5 @: Unexpected ']': expected true", "[tru]");
    check("1,4-1,4 @: Unexpected ']': expected null", "[nu]");
    check("1,4-1,4 @: Unexpected ']': expected a digit", "[1.]");
    check("1,3-1,3 @: Unexpected byte 0x20: expected a digit", "[- 1]");
    check("1,4-1,4 @: Unexpected 'x': no escape begins so", "[\"\\x\"]");
    check("1,4-1,4 @: Unexpected byte 0x00: no escape begins so", std::string("[\"\\\0\"]", 6));
    check("1,8-1,8 @: Unexpected 'g': expected a hexadecimal digit", "[\"\\u00eg\"]");
    check("1,3-1,3 @: Control character 0x0A in a string: it must be escaped", "[\"\n\"]");
}

}  // namespace
