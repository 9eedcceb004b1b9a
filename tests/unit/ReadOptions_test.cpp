// SPDX-License-Identifier: MIT
//
// Tests of ReadOptions: what each option refuses and lets pass, alone and in the strict preset, and
// the message, the place and the element of each fault.

#include <ko/Orvid/ReadOptions.h>

#include <string>

#include "support/Reading.h"

namespace {

using ko::Orvid::ReadOptions;
using ko::Orvid::RepeatedKeys;
using orvid_test::faultOf;
using orvid_test::Reading;
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
const ReadOptions k_whole = with(&ReadOptions::requireWholeDocument, true);
const ReadOptions k_utf8 = with(&ReadOptions::validateUtf8, true);
const ReadOptions k_pairs = with(&ReadOptions::rejectLoneSurrogates, true);

TEST(ReadOptions, are_lenient_unless_told) {
    EXPECT_FALSE(k_lenient.requireWholeDocument);
    EXPECT_FALSE(k_lenient.validateUtf8);
    EXPECT_FALSE(k_lenient.rejectLoneSurrogates);
    EXPECT_TRUE(k_lenient.allowComments);
    EXPECT_TRUE(k_lenient.allowOtherBlanks);
    EXPECT_EQ(RepeatedKeys::replace, k_lenient.repeatedKeys);
    EXPECT_EQ(0U, k_lenient.maxDepth);
    EXPECT_EQ(0U, k_lenient.maxLength);
    EXPECT_EQ(0U, k_lenient.maxLineLength);
    const std::string text = "\v/**/{\"\xFF\":\"\\ud800\",\"a\":[[]],\"a\":1} x";
    const Reading reading = readWhole(k_lenient, text);
    EXPECT_EQ("{\"\xFF\": \"?\",\"a\": 1}", reading.tree);
    EXPECT_EQ("", reading.fault);
    EXPECT_EQ(text.size() - 2, reading.position);
}

TEST(ReadOptions, lenient_faults_keep_their_text_and_have_no_place) {
    EXPECT_EQ(
        "-1,-1--1,-1 @: parse error: unallowed token at this point in JSON text\n"
        "                                   [1, ]\n"
        "                     (right here) ------^\n",
        faultOf(k_lenient, "[1, ]"));
}

TEST(ReadOptions, strict_takes_one_document_with_blanks_and_comments_around_it) {
    for (const char* const text :
         {"42", "-0.5e+1", "\"x\"", "true", "null", " {} \r\n\t", "{} // the end", "{}//\n",
          "/* a */ {} /* b */", "//\n[]", "[1]//", "{}/***/"}) {
        EXPECT_EQ("", faultOf(k_strict, text)) << text;
        EXPECT_EQ(0, readWhole(k_strict, text).state) << text;
    }
    EXPECT_EQ("42", readWhole(k_strict, "42").tree);
    EXPECT_EQ("42", readWhole(k_strict, "42 ").tree);
}

TEST(ReadOptions, whole_documents_may_not_end_early) {
    const std::string early = ": The text ends before the document is complete";
    EXPECT_EQ("1,1-1,1 @" + early, faultOf(k_strict, ""));
    EXPECT_EQ("1,3-1,3 @" + early, faultOf(k_strict, "  "));
    EXPECT_EQ("2,1-2,1 @" + early, faultOf(k_strict, "//\n"));
    EXPECT_EQ("1,7-1,7 @" + early, faultOf(k_strict, "[1, 2 "));
    EXPECT_EQ("1,2-1,2 @" + early, faultOf(k_strict, "-"));
    EXPECT_EQ("1,3-1,3 @" + early, faultOf(k_strict, "4."));
    EXPECT_EQ("1,4-1,4 @" + early, faultOf(k_strict, "tru"));
    EXPECT_EQ("1,4-1,4 @" + early, faultOf(k_strict, "{}/"));
    EXPECT_EQ("1,6-1,6 @" + early, faultOf(k_strict, "{}/**"));
    EXPECT_EQ("2,6-2,6 @a.b" + early, faultOf(k_strict, "{\"a\":\n{\"b\":"));
    EXPECT_EQ("", faultOf(k_utf8, "{\"a\":"));
    EXPECT_EQ(2, readWhole(k_utf8, "{\"a\":").state);
    EXPECT_EQ("null", readWhole(k_utf8, "42").tree);
}

TEST(ReadOptions, whole_documents_may_have_nothing_behind_them) {
    EXPECT_EQ("1,4-1,4 @: Unexpected 'x': the document is complete", faultOf(k_whole, "{} x"));
    EXPECT_EQ("2,2-2,2 @: Unexpected '[': the document is complete", faultOf(k_whole, "1\n []"));
    EXPECT_EQ("1,2-1,2 @: Unexpected '1': the document is complete", faultOf(k_whole, "01"));
    EXPECT_EQ("1,3-1,3 @: Unexpected byte 0x00: the document is complete",
              faultOf(k_whole, std::string("[]\0", 3)));
    EXPECT_EQ("[1]", readWhole(k_whole, "[1]]").tree);
    EXPECT_EQ("", faultOf(k_utf8, "{} x\xFF"));
    EXPECT_EQ("", faultOf(with(&ReadOptions::allowComments, false), "{} //"));
}

TEST(ReadOptions, utf8_is_checked_in_strings_keys_and_comments) {
    EXPECT_EQ("1,3-1,3 @: Invalid UTF-8", faultOf(k_utf8, "[\"\xFF\"]"));
    EXPECT_EQ("1,7-1,7 @a: Invalid UTF-8", faultOf(k_utf8, "{\"a\":\"\x80\"}"));
    EXPECT_EQ("1,3-1,4 @: Invalid UTF-8", faultOf(k_utf8, "{\"\xC0\xAF\":1}"));
    EXPECT_EQ("2,4-2,5 @: Invalid UTF-8", faultOf(k_utf8, "[\n1/*\xE2\x82*/]"));
    EXPECT_EQ("", faultOf(k_utf8, "[\"\xC3\xA9\xE2\x82\xAC\xF0\x9D\x84\x9E\"/*\xC3\xA9*/]"));
    EXPECT_EQ("", faultOf(k_whole, "[\"\xFF\"]/*\xFF*/"));
}

}  // namespace
