// SPDX-License-Identifier: MIT
//
// However a text is cut into pieces, the tree and the error are those of the whole text: its
// message, lines, columns, element and offset. And options that refuse nothing change nothing.

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "support/Reading.h"
#include "support/WrongByte.h"

namespace {

using ko::Orvid::ReadOptions;
using ko::Orvid::RepeatedKeys;
using orvid_test::Reading;
using orvid_test::readPieces;
using orvid_test::readSplit;
using orvid_test::readStream;
using orvid_test::readWhole;
using orvid_test::withByteAt;

/// Texts with a token of each kind and an error of each kind, over several lines.
const std::vector<std::string> k_texts = {
    "",
    " \n ",
    "42",
    "-12.5e+10",
    "\"string\"",
    "true",
    "{\"a\": [1, 2.5e-3, \"x\\n\\u00e9\\ud834\\udd1e\", null],\r\n\"b\": {\"c\": false}}\n",
    "// first\n[1, /* * / ** \xC3\xA9 */ 2]// last",
    "[\n\"\xC3\xA9\xE2\x82\xAC\xF0\x9D\x84\x9E\",\n\"\xE2\x82\"]",
    "[1,\n \"\xF0\x9D\x84\"",
    "[1,\n \"\xED\xA0\x80\"]",
    "[1]//\xF0\x9D\n",
    "[1]/*\xC3*/",
    "{\"a\":\n\"\\ud834x\"}",
    "{\"a\":\n\"\\ud834\\udd1e\\ud834\\n\"}",
    "{\"a\":\n\"\\ud834\\u0041\"}",
    "[\"\\udd1e\"]",
    "[\"\\u00eg\"]",
    "[\"\\x\"]",
    "[\"a\nb\"]",
    "[1, 2,\n\n  3 4]",
    "{\"a\": {\"b\": tru}}",
    "{\"a\": nulll}",
    "[01]",
    "[1.]",
    "[-]",
    "[1e+]",
    "{\"key\": 1,\r\n \"k\\\"\\\\\\\"y\": 2, \"k\\\"\\\\\\\"y\": 3}",
    "{\"\":0,\"a\":{\"\":1},\n\"\":2}",
    "{\"a\":1,\n\"\\u0061\" :2} x",
    "{} x",
    "{}\n/x",
    "42\n43",
    "[[[[1]]]]",
    "\v[\f1]",
    "[1, 2",
    "{\"a\": [{\"b\": \"c",
    "{\"a\"",
    "/* never",
    "\xEF\xBB\xBF[]",
    "[1\xC3\xA9]",
    "[1,]",
    "[[1 , /*,*/ ], /* ,] */ {\"a\": 1 , } , ]",
    "[1,,]",
    "{,}",
    "{\"a\" 1}",
    "]",
};

std::vector<ReadOptions> allOptions() {
    std::vector<ReadOptions> options(3);
    options[1] = ReadOptions::jsonc();
    options[2] = ReadOptions::strict();
    options[2].maxDepth = 3;
    options[2].maxLength = 40;
    options[2].maxLineLength = 20;
    options.push_back({});
    options.back().validateUtf8 = true;
    options.back().rejectLoneSurrogates = true;
    options.back().repeatedKeys = RepeatedKeys::reject;
    return options;
}

TEST(ChunkedReading, gives_the_same_tree_and_error_wherever_the_text_is_cut_in_two) {
    for (const ReadOptions& options : allOptions()) {
        for (const std::string& text : k_texts) {
            const Reading whole = readPieces(options, text, text.size() + 1);
            for (std::size_t at = 0; at <= text.size(); ++at) {
                EXPECT_EQ(whole, readSplit(options, text, at)) << text << "\n at " << at;
            }
        }
    }
}

TEST(ChunkedReading, gives_the_same_tree_and_error_in_pieces_of_any_size) {
    for (const ReadOptions& options : allOptions()) {
        for (const std::string& text : k_texts) {
            const Reading whole = readPieces(options, text, text.size() + 1);
            for (const std::size_t size : {1U, 2U, 3U, 7U}) {
                EXPECT_EQ(whole, readPieces(options, text, size)) << text << "\n by " << size;
            }
        }
    }
}

TEST(ChunkedReading, gives_the_same_as_one_strict_parse_of_a_text_or_a_stream) {
    for (const ReadOptions& options : {allOptions()[1], allOptions()[2]}) {
        for (const std::string& text : k_texts) {
            const Reading whole = readWhole(options, text);
            EXPECT_EQ(whole, readStream(options, text)) << text;
            EXPECT_EQ(whole, readPieces(options, text, 1)) << text;
        }
    }
}

/// A text of that length or a little more, with the error of `text` far back.
std::string afterLongText(const std::string& text, std::size_t length) {
    std::string result = "[\n";
    while (result.size() < length) {
        result += "\"" + std::string(1000 + result.size() % 7, 'x') + "\",\n  {\"k\": -12.5e3},\n";
    }
    return result + text;
}

TEST(ChunkedReading, gives_the_same_in_long_texts) {
    const ReadOptions options = ReadOptions::jsonc();
    for (const std::string& short_text : k_texts) {
        const std::string text = afterLongText(short_text, 40000);
        const Reading whole = readWhole(options, text);
        for (const std::size_t size : {1U, 255U, 16383U, 16384U, 16385U, 39999U}) {
            EXPECT_EQ(whole, readPieces(options, text, size)) << short_text << "\n by " << size;
        }
        // A stream is read by 65,536 bytes.
        for (const std::size_t length : {65500U, 131072U}) {
            const std::string longer = afterLongText(short_text, length);
            EXPECT_EQ(readWhole(options, longer), readStream(options, longer)) << short_text;
        }
    }
}

/// Whether the readings come to the same except for what an error says. The options find an error
/// at its first byte, the lenient reading when the token that is out of place is over.
testing::AssertionResult isSameExceptForErrors(const Reading& lenient, const Reading& checked) {
    const bool isEarly = lenient.error.empty() && lenient.state == 2 && !checked.error.empty();
    const bool isMalformed = !lenient.error.empty() && !checked.error.empty();
    if (isEarly || isMalformed ? lenient.tree == checked.tree : lenient == checked) {
        return testing::AssertionSuccess();
    }
    return testing::AssertionFailure() << lenient << "\n" << checked;
}

TEST(ChunkedReading, with_options_that_refuse_nothing_takes_what_lenient_reading_takes) {
    ReadOptions options;
    options.maxDepth = 1000;
    const std::string bytes = std::string(1, '\0') + "\x01 \n\v\f\"\\/*{}[]:,019-+.eEtu\xC3\xFF";
    const std::string text = k_texts[6];
    for (std::size_t at = 0; at <= text.size(); ++at) {
        for (const char byte : bytes) {
            for (const std::string& changed : withByteAt(text, at, byte)) {
                EXPECT_TRUE(
                    isSameExceptForErrors(readWhole({}, changed), readWhole(options, changed)))
                    << changed;
            }
        }
    }
}

TEST(ChunkedReading, with_options_that_refuse_nothing_changes_nothing_of_odd_texts) {
    ReadOptions options;
    options.maxLength = 1000000;
    for (const std::string& text : k_texts) {
        EXPECT_TRUE(isSameExceptForErrors(readWhole({}, text), readWhole(options, text))) << text;
        EXPECT_TRUE(isSameExceptForErrors(readStream({}, text), readStream(options, text))) << text;
    }
}

}  // namespace
