// SPDX-License-Identifier: MIT
//
// A DomParser builds the tree from its scanner; a subclass gets the events of YAJL's reader. Tree,
// state, position, open element, stream and the whole of every error are the same.

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "support/BothReaders.h"
#include "support/WrongByte.h"

namespace {

using ko::Orvid::ReadOptions;
using orvid_test::readersDiffer;
using orvid_test::withByteAt;

/// Pieces of `size` bytes.
std::vector<std::string> cut(const std::string& text, std::size_t size) {
    std::vector<std::string> pieces;
    for (std::size_t at = 0; at < text.size(); at += size) {
        pieces.push_back(text.substr(at, size));
    }
    return pieces;
}

const std::vector<std::string>& texts() {
    static const std::vector<std::string> all{
        "",
        "  ",
        "42",
        "-",
        "01",
        "1.",
        "1e+",
        "-x",
        "tru",
        "trux",
        "{} x",
        "[1,]",
        "[1 2]",
        "{\"a\" 1}",
        "{\"a\":1 \"b\":2}",
        "{\"a\":1,}",
        "{1:2}",
        "[}",
        "]",
        ":",
        "[1}",
        "{\"a\":]",
        "{\"a\":1,\"a\":[2],\"a\":{\"b\":3}}",
        "[[1,2],[3],{\"a\":[{}]}]",
        "/* c */[1,//\n2]/",
        "/x",
        "[1/",
        "/* never",
        "\"\\ud800\"",
        "[\"\\ud800\\u0041\",\"\\udc00\",\"\\ud800x\",\"\\ud800\\n\"]",
        "[\"\\x\"]",
        "[\"\\u00g\"]",
        "[\"a\nb\"]",
        "[\"\xFF\",\"\xE2\x82\"]",
        "\xEF\xBB\xBF[]",
        std::string("[1,\0]", 5),
        std::string("\"a\0b\"", 5),
        "{\"a\\u0000b\":\"\\u0000\"}",
        "\v[\f1]",
        "[" + std::string(70, '1') + "x]",
        "[\"" + std::string(300, 's') + "\", x" + std::string(300, ' ') + "]",
        std::string(40, '[') + "1" + std::string(40, ']'),
        "{\"a\":" + std::string(30, '[') + "}",
    };
    return all;
}

std::vector<ReadOptions> someOptions() {
    std::vector<ReadOptions> options{ReadOptions(), ReadOptions::strict(), ReadOptions::jsonc()};
    ReadOptions few;
    few.validateUtf8 = true;
    few.maxDepth = 3;
    options.push_back(few);
    return options;
}

TEST(BothReaders, agree_on_odd_texts_however_they_are_cut) {
    for (const ReadOptions& options : someOptions()) {
        for (const std::string& text : texts()) {
            for (const std::size_t size : {1U, 2U, 3U, 7U, 1000U}) {
                EXPECT_EQ(readersDiffer(options, cut(text, size), "],1 }"), "")
                    << text << "\n by " << size;
            }
        }
    }
}

/// With the address sanitizer an exception takes milliseconds, so that only some places are tried.
#if defined(__SANITIZE_ADDRESS__)
constexpr std::size_t k_offsetStep = 9;
#elif defined(__has_feature)
constexpr std::size_t k_offsetStep = __has_feature(address_sanitizer) ? 9 : 1;
#else
constexpr std::size_t k_offsetStep = 1;
#endif

/// `size` members, of which every seventh has the key of an early one.
std::string wideObject(std::size_t size, const std::string& value) {
    std::string text = "{";
    for (std::size_t i = 0; i < size; ++i) {
        text += (i == 0 ? "\"" : ",\"") + std::to_string(i % 7 == 6 ? i / 3 : i) + "\":" + value;
    }
    return text + "}";
}

TEST(BothReaders, agree_on_wide_objects_with_repeated_keys) {
    for (const std::size_t size : {60U, 64U, 70U, 200U}) {
        const std::string text = wideObject(size, "[1]");
        for (const std::size_t piece : {100000U, 300U}) {
            EXPECT_EQ(readersDiffer(ReadOptions(), cut(text, piece), "1"), "") << size;
            EXPECT_EQ(readersDiffer(ReadOptions::strict(), cut(text, piece), "1"), "") << size;
        }
    }
    const std::string nested = wideObject(67, wideObject(66, "1"));
    EXPECT_EQ(readersDiffer(ReadOptions(), {nested}, ""), "");
}

TEST(BothReaders, agree_wherever_a_byte_is_wrong) {
    const std::string text = "{\"k\": [1, -2.5e3, true], \"\\u0062\" :/*c*/ \"d\", \"n\" :null }";
    const std::string bytes = std::string(1, '\0') + " \n\v\"\\/*{}[]:,0-.eu\xC3";
    for (std::size_t at = 0; at <= text.size(); at += k_offsetStep) {
        for (const char byte : bytes) {
            for (const std::string& changed : withByteAt(text, at, byte)) {
                EXPECT_EQ(readersDiffer(ReadOptions(), cut(changed, 5), "]"), "") << changed;
                EXPECT_EQ(readersDiffer(ReadOptions::jsonc(), cut(changed, 5), ""), "") << changed;
            }
        }
    }
}

/// Tokens one after the other, of which a few make JSON.
TEST(BothReaders, agree_on_random_tokens) {
    const char* const tokens[] = {
        "{",    "}",  "[",  "]",    ",",     ":",     "\"a\"",        "1",      "-0.5",   "true",
        "null", " ",  "\n", "/**/", "//x\n", "\"\\u", "\"\xC3\xA9\"", "\"k\":", "[[1],{", "1e",
        "/",    "\\n"};
    std::mt19937 random(2);
    for (int round = 0; round < 3000; ++round) {
        std::string text;
        for (auto left = random() % 10; left > 0; --left) {
            text += tokens[random() % std::size(tokens)];
        }
        const ReadOptions options = someOptions()[random() % 4];
        EXPECT_EQ(readersDiffer(options, cut(text, 1 + random() % 6), "]1"), "") << text;
    }
}

/// A stream's buffer is scanned as a whole, but an error is shown as if it were read by 255 bytes.
TEST(BothReaders, agree_on_errors_wherever_they_lie_in_the_buffer_of_a_stream) {
    for (const std::string error :
         {"1x", "tru3", "\"\\x\"", "\"\\u12g4\"", "\"\n\"", "1 2", "}", "/*", "/*c*/ x", "1.", "-",
          "\"\\ud800\", y", "], 1", "\"open"}) {
        for (const std::size_t before : {0U, 200U, 248U, 251U, 252U, 253U, 254U, 255U, 256U, 505U,
                                         508U, 509U, 510U, 511U, 700U}) {
            const std::string spaces = "[" + std::string(before, ' ') + error;
            const std::string letters = "[\"" + std::string(before, 'a') + "\", " + error;
            const std::string longer = "[\"" + std::string(before, 'a') + "\\x\", " + error;
            for (const std::string& begin : {spaces, letters, longer}) {
                const std::string text = begin + std::string(300, ' ') + "] 3";
                for (const std::size_t size : {2000U, 400U, 255U}) {
                    EXPECT_EQ(readersDiffer(ReadOptions(), cut(text, size), "]"), "")
                        << text << "\n by " << size;
                }
            }
        }
    }
}

}  // namespace
