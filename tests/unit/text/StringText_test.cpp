// SPDX-License-Identifier: MIT
//
// The inside of strings: where it ends, what is wrong with it, what it stands for.

#include "text/StringText.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <iterator>
#include <random>
#include <string>
#include <string_view>

#include "text/Utf8Block.h"
#include "text/Utf8Wide.h"

namespace {

namespace text = ko::Orvid::text;
using text::StringEnd;
using text::StringRules;
using text::StringScan;

constexpr StringRules k_lenient{};
constexpr StringRules k_strict{true, true};

/// What the scan of the text that follows a quote came to, with offsets in it.
std::string scanned(const std::string& inside, const StringRules& rules = k_strict) {
    const StringScan scan = text::scanString(inside.data(), inside.data() + inside.size(), rules);
    const char* const names[] = {"quote",    "text",      "control", "escape",
                                 "hexDigit", "surrogate", "utf8"};
    return std::string(names[static_cast<int>(scan.end)]) + ' ' +
           std::to_string(scan.at - inside.data()) + '+' + std::to_string(scan.length) +
           (scan.hasEscape ? " escaped" : "");
}

std::string unescaped(const std::string& inside) {
    std::string out = ">";
    text::appendUnescaped(out, inside.data(), inside.data() + inside.size());
    return out.substr(1);
}

TEST(StringText, ends_at_the_quote) {
    EXPECT_EQ(scanned("\""), "quote 0+1");
    EXPECT_EQ(scanned("abc\", 1"), "quote 3+1");
    EXPECT_EQ(scanned(std::string(100, 'x') + "\""), "quote 100+1");
    EXPECT_EQ(scanned("\xC3\xA9\xE2\x82\xAC\xF0\x9D\x84\x9E\""), "quote 9+1");
    EXPECT_EQ(scanned(R"(a\"b\\")"), "quote 6+1 escaped");
    EXPECT_EQ(scanned(R"(\/\b\f\n\r\t\u00e9")"), "quote 18+1 escaped");
    EXPECT_EQ(scanned(R"(\ud834\udd1e\uD834\uDD1E")"), "quote 24+1 escaped");
    EXPECT_EQ(scanned("\x7F\""), "quote 1+1");
}

TEST(StringText, finds_what_no_reader_takes) {
    for (const StringRules& rules : {k_lenient, k_strict}) {
        EXPECT_EQ(scanned("a\nb\"", rules), "control 1+1");
        EXPECT_EQ(scanned(std::string("a\0b\"", 4), rules), "control 1+1");
        EXPECT_EQ(scanned(R"(a\x")", rules), "escape 2+1 escaped");
        EXPECT_EQ(scanned(std::string("\\\0\"", 3), rules), "escape 1+1 escaped");
        EXPECT_EQ(scanned(R"(\u00g9")", rules), "hexDigit 4+1 escaped");
        EXPECT_EQ(scanned(R"(\u")", rules), "hexDigit 2+1 escaped");
    }
}

TEST(StringText, finds_halves_of_surrogate_pairs_when_asked) {
    EXPECT_EQ(scanned(R"(\ud800")"), "surrogate 0+6 escaped");
    EXPECT_EQ(scanned(R"(a\udfff")"), "surrogate 1+6 escaped");
    EXPECT_EQ(scanned(R"(\ud800\n")"), "surrogate 0+6 escaped");
    EXPECT_EQ(scanned(R"(\ud800\u0041")"), "surrogate 0+6 escaped");
    EXPECT_EQ(scanned(R"(\ud800\ud800\udc00")"), "surrogate 0+6 escaped");
    EXPECT_EQ(scanned(R"(\ud800\udc00\udc00")"), "surrogate 12+6 escaped");
    EXPECT_EQ(scanned(R"(\ud800\uDCg0")"), "hexDigit 10+1 escaped");
    EXPECT_EQ(scanned(R"(\ud800")", k_lenient), "quote 6+1 escaped");
    EXPECT_EQ(scanned(R"(\ud800\u0041")", k_lenient), "quote 12+1 escaped");
}

TEST(StringText, finds_what_is_no_utf8_when_asked) {
    EXPECT_EQ(scanned("\xFF\""), "utf8 0+1");
    EXPECT_EQ(scanned("ab\x80\""), "utf8 2+1");
    EXPECT_EQ(scanned("\xC0\xAF\""), "utf8 0+2");
    EXPECT_EQ(scanned("\xC3\""), "utf8 0+1");
    EXPECT_EQ(scanned("\xE2\x82\""), "utf8 0+2");
    EXPECT_EQ(scanned("\xE2\x82\\n\""), "utf8 0+2");
    EXPECT_EQ(scanned("\xED\xA0\x80\""), "utf8 0+3");
    EXPECT_EQ(scanned("\xF4\x90\x80\x80\""), "utf8 0+4");
    EXPECT_EQ(scanned("\xFF\n\""), "utf8 0+1");
    EXPECT_EQ(scanned("\n\xFF\""), "control 0+1");
    EXPECT_EQ(scanned("\xFF\"", k_lenient), "quote 1+1");
}

TEST(StringText, says_how_far_a_cut_text_needs_no_second_look) {
    EXPECT_EQ(scanned(""), "text 0+1");
    EXPECT_EQ(scanned("abc"), "text 3+1");
    EXPECT_EQ(scanned("abc\\"), "text 3+1 escaped");
    EXPECT_EQ(scanned("abc\\u12"), "text 3+1 escaped");
    EXPECT_EQ(scanned("abc\\ud83d"), "text 3+1 escaped");
    EXPECT_EQ(scanned("abc\\ud83d\\ude0"), "text 3+1 escaped");
    EXPECT_EQ(scanned("abc\xE2\x82"), "text 3+1");
    EXPECT_EQ(scanned("abc\xC0"), "text 3+1");
    EXPECT_EQ(scanned("abc\xE2\x82", k_lenient), "text 5+1");
}

TEST(StringText, comes_to_the_same_when_it_is_cut) {
    for (const std::string inside :
         {R"(plain")", R"(\n\u00e9\ud83d\ude00\"\\ and more text than a block has")",
          R"(bad\u00x")", R"(\ud83d\u0041")", "\xC3\xA9\xE2\x82\xAC\xF0\x9D\x84\x9E\"",
          "\xE2\x82(\"", "control\n\""}) {
        const std::string whole = scanned(inside);
        for (std::size_t cut = 0; cut < inside.size(); ++cut) {
            const StringScan before =
                text::scanString(inside.data(), inside.data() + cut, k_strict);
            if (before.end == StringEnd::text) {
                const StringScan rest =
                    text::scanString(before.at, inside.data() + inside.size(), k_strict);
                const StringScan all =
                    text::scanString(inside.data(), inside.data() + inside.size(), k_strict);
                EXPECT_EQ(rest.end, all.end) << whole << " cut at " << cut;
                EXPECT_EQ(rest.at, all.at) << whole << " cut at " << cut;
                EXPECT_EQ(rest.length, all.length) << whole << " cut at " << cut;
            } else {
                EXPECT_EQ(scanned(inside.substr(0, cut)), whole) << " cut at " << cut;
            }
        }
    }
}

TEST(StringText, escapes_stand_for_characters) {
    EXPECT_EQ(unescaped(R"(a\"\\\/\b\f\n\r\tz)"), "a\"\\/\b\f\n\r\tz");
    EXPECT_EQ(unescaped(R"(\u0041\u00e9\u20AC\uffff)"), "A\xC3\xA9\xE2\x82\xAC\xEF\xBF\xBF");
    EXPECT_EQ(unescaped(R"(\u007f\u0080\u07ff\u0800)"), "\x7F\xC2\x80\xDF\xBF\xE0\xA0\x80");
    EXPECT_EQ(unescaped(R"(\ud800\udc00\ud834\udd1e\udbff\udfff)"),
              "\xF0\x90\x80\x80\xF0\x9D\x84\x9E\xF4\x8F\xBF\xBF");
    EXPECT_EQ(unescaped(R"(\u0000)"), std::string(1, '\0'));
    EXPECT_EQ(unescaped("no escape \xFF"), "no escape \xFF");
    EXPECT_EQ(unescaped(""), "");
}

TEST(StringText, halves_of_pairs_become_what_YAJL_makes_of_them) {
    EXPECT_EQ(unescaped(R"(\ud800)"), "?");
    EXPECT_EQ(unescaped(R"(\ud800A)"), "?A");
    EXPECT_EQ(unescaped(R"(\ud800\n)"), "?\n");
    EXPECT_EQ(unescaped(R"(\udc00)"), "\xED\xB0\x80");
    EXPECT_EQ(unescaped(R"(\ud800\u0041)"), "\xF0\x90\x81\x81");
}

/// Whether the bytes are one character of well-formed UTF-8, by its decoding.
bool isCharacter(const std::string& bytes) {
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(bytes[i]); };
    const std::size_t length = byte(0) < 0x80 ? 1 : byte(0) < 0xE0 ? 2 : byte(0) < 0xF0 ? 3 : 4;
    if (length != bytes.size() || (byte(0) >= 0x80 && byte(0) < 0xC0) || byte(0) > 0xF7) {
        return false;
    }
    unsigned long code = length == 1 ? byte(0) : byte(0) & (0x7FU >> length);
    for (std::size_t i = 1; i < length; ++i) {
        if ((byte(i) & 0xC0U) != 0x80) {
            return false;
        }
        code = code << 6U | (byte(i) & 0x3FU);
    }
    const unsigned long least[] = {0, 0, 0x80, 0x800, 0x10000};
    return code >= least[length] && code <= 0x10FFFF && (code < 0xD800 || code > 0xDFFF);
}

TEST(StringText, knows_every_sequence_of_two_bytes_and_the_edges_of_the_longer_ones) {
    for (int first = 0x80; first < 256; ++first) {
        for (int second = 0; second < 256; ++second) {
            const std::string two{static_cast<char>(first), static_cast<char>(second)};
            const std::string tails[] = {"", "\x80", "\xBF", "\x80\x80", "\xBF\xBF", "\x80\x7F"};
            for (const std::string& tail : tails) {
                const std::string bytes = two + tail;
                const char* const end = bytes.data() + bytes.size();
                const bool isWhole = text::isUtf8(bytes);
                bool expected = isCharacter(bytes);
                for (std::size_t cut = 1; cut < bytes.size(); ++cut) {
                    expected = expected || (isCharacter(bytes.substr(0, cut)) &&
                                            text::scanUtf8(bytes.data() + cut, end).at == end);
                }
                EXPECT_EQ(isWhole, expected) << first << ' ' << second << ' ' << tail.size();
            }
        }
    }
}

/// The offset of the first byte that is no UTF-8, found without blocks: byte by byte.
std::size_t plainEndOf(const std::string& bytes) {
    std::size_t at = 0;
    while (at < bytes.size()) {
        std::size_t length = 1;
        while (length <= 4 && !isCharacter(bytes.substr(at, length))) {
            ++length;
        }
        if (length > 4) {
            break;
        }
        at += length;
    }
    return at;
}

std::size_t endOf(const std::string& bytes) {
    const char* const end = bytes.data() + bytes.size();
    return static_cast<std::size_t>(text::scanUtf8(bytes.data(), end).at - bytes.data());
}

/// Characters of one to four bytes, among which one byte may be wrong.
std::string randomText(std::mt19937& random, std::size_t length) {
    const char* const characters[] = {"a",
                                      " ",
                                      "\xC3\xA9",
                                      "\xDF\xBF",
                                      "\xE4\xBB\x8A",
                                      "\xE0\xA0\x80",
                                      "\xED\x9F\xBF",
                                      "\xEF\xBF\xBD",
                                      "\xF0\x9F\x98\x80",
                                      "\xF4\x8F\xBF\xBF"};
    std::string text;
    while (text.size() < length) {
        text += characters[random() % std::size(characters)];
    }
    if (random() % 3 != 0) {
        const char wrong[] = {'x',    '\x80', '\xA0', '\xBF', '\xC0',
                              '\xE0', '\xED', '\xF0', '\xF4', '\xFF'};
        text[random() % text.size()] = wrong[random() % std::size(wrong)];
    }
    return text.substr(0, text.size() - random() % 4);
}

TEST(StringText, looks_at_utf8_by_blocks_as_it_does_byte_by_byte) {
    std::mt19937 random(7);
    for (int round = 0; round < 20000; ++round) {
        const std::string bytes = randomText(random, 4 + random() % 100);
        ASSERT_EQ(endOf(bytes), plainEndOf(bytes)) << testing::PrintToString(bytes);
    }
}

TEST(StringText, is_utf8_where_all_bytes_are) {
    EXPECT_TRUE(text::isUtf8(""));
    EXPECT_TRUE(text::isUtf8({}));
    EXPECT_TRUE(text::isUtf8("a\"\n\xC3\xA9\xE2\x82\xAC\xF0\x9D\x84\x9E"));
    EXPECT_TRUE(text::isUtf8(std::string(1, '\0')));
    EXPECT_FALSE(text::isUtf8("a\xFF"));
    EXPECT_FALSE(text::isUtf8("\x80z"));
    EXPECT_FALSE(text::isUtf8("a\xE2\x82"));
    EXPECT_FALSE(text::isUtf8(std::string(100, 'x') + "\xC3"));
    EXPECT_TRUE(text::isUtf8(std::string_view("\xC3\xA9\xFF").substr(0, 2)));
}

/// Whether a quick look ended where `plain` bytes are UTF-8 in no character, and not long before.
void expectQuickEnd(const std::string& bytes, std::size_t plain, const char* quickEnd) {
    constexpr std::size_t k_most = 70;
    const auto end = static_cast<std::size_t>(quickEnd - bytes.data());
    ASSERT_LE(end, plain) << testing::PrintToString(bytes);
    EXPECT_LT(plain - end, k_most) << testing::PrintToString(bytes);
    EXPECT_EQ(plainEndOf(bytes.substr(0, end)), end) << testing::PrintToString(bytes);
}

TEST(StringText, quick_looks_at_utf8_end_at_a_character_and_not_long_before_an_error) {
    std::mt19937 random(8);
    for (int round = 0; round < 5000; ++round) {
        const std::string bytes = randomText(random, 64 + random() % 200);
        const char* const end = bytes.data() + bytes.size();
        const std::size_t plain = plainEndOf(bytes);
        if (text::hasWideUtf8()) {
            expectQuickEnd(bytes, plain, text::wideUtf8End(bytes.data(), end));
        }
        if constexpr (text::WideBlock::k_marksAreBits) {
            expectQuickEnd(bytes, plain,
                           text::utf8BlocksEnd<text::WideBlock>(bytes.data(), bytes.data(), end));
        }
    }
}

TEST(StringText, wide_vectors_know_every_sequence_across_their_ends) {
    if (!text::hasWideUtf8()) {
        GTEST_SKIP() << "for processors that have them";
    }
    const char* const tails[] = {"", "\x80", "\xBF", "\x80\x80", "\xBF\xBF", "\x80\x7F"};
    for (unsigned int pair = 0; pair < 0x10000; ++pair) {
        for (const std::string tail : tails) {
            const std::string sequence{static_cast<char>(pair >> 8U), static_cast<char>(pair)};
            const bool isValid = text::isUtf8(sequence + tail + "a");
            for (const std::size_t before : {31U, 62U, 63U}) {
                std::string bytes(256, 'a');
                bytes.replace(before, 2 + tail.size(), sequence + tail);
                const char* const end = bytes.data() + bytes.size();
                ASSERT_EQ(text::wideUtf8End(bytes.data(), end) == end, isValid)
                    << testing::PrintToString(sequence + tail) << " after " << before;
            }
        }
    }
}

}  // namespace
