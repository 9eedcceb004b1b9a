// SPDX-License-Identifier: MIT
//
// Tests of AsciiText: every character there is, every way in which bytes are no UTF-8, and what the
// writer makes of both.

#include "text/AsciiText.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <string>

#include "text/Writer.h"

namespace textTests {
namespace {

using ko::Orvid::text::appendAscii;
using ko::Orvid::text::hasBeyondAscii;
using ko::Orvid::text::Layout;
using ko::Orvid::text::Writer;
using ko::Orvid::text::WriteStatus;

char byte(unsigned long value) { return static_cast<char>(static_cast<unsigned char>(value)); }

/// As many bytes as the value is asked to be spread over: for the wrong count too.
std::string encoded(unsigned long value, unsigned int count) {
    static const unsigned long heads[] = {0, 0, 0xC0, 0xE0, 0xF0, 0xF8, 0xFC};
    std::string text(1, byte(heads[count] | value >> 6 * (count - 1)));
    for (unsigned int left = count - 1; left > 0; --left) {
        text += byte(0x80 | (value >> 6 * (left - 1) & 0x3F));
    }
    return text;
}

std::string utf8(unsigned long value) {
    return encoded(value, value < 0x80 ? 1 : value < 0x800 ? 2 : value < 0x10000 ? 3 : 4);
}

std::string escaped(unsigned long value) {
    char text[40];
    if (value < 0x80) {
        return std::string(1, byte(value));
    }
    if (value < 0x10000) {
        std::snprintf(text, sizeof text, "\\u%04lX", value);
    } else {
        std::snprintf(text, sizeof text, "\\u%04lX\\u%04lX", (value - 0x10000) / 0x400 + 0xD800,
                      (value - 0x10000) % 0x400 + 0xDC00);
    }
    return text;
}

bool isCharacter(unsigned long value) {
    return value <= 0x10FFFF && (value < 0xD800 || value > 0xDFFF);
}

TEST(AsciiText, escapes_every_character_beyond_ascii) {
    for (unsigned long value = 0; value <= 0x10FFFF; ++value) {
        if (isCharacter(value)) {
            std::string out = "<";
            const std::string text = utf8(value);
            ASSERT_TRUE(appendAscii(out, text.data(), text.size())) << value;
            ASSERT_EQ(out, "<" + escaped(value));
            ASSERT_EQ(hasBeyondAscii(text.data(), text.size()), value > 0x7F) << value;
        }
    }
}

TEST(AsciiText, escapes_between_other_text) {
    std::string out;
    const std::string text = "a\xC3\xA9z\xE2\x82\xAC\xF0\x9F\x98\x80!";
    EXPECT_TRUE(appendAscii(out, text.data(), text.size()));
    EXPECT_EQ(out, "a\\u00E9z\\u20AC\\uD83D\\uDE00!");
    EXPECT_TRUE(appendAscii(out, "", 0));
    EXPECT_FALSE(hasBeyondAscii("", 0));
}

TEST(AsciiText, replaces_each_incomplete_character_by_one) {
    const struct {
        std::string text;
        const char* ascii;
    } rows[] = {
        {"\x80", "\\uFFFD"},
        {"\xBF\x80", "\\uFFFD\\uFFFD"},
        {"\xC3", "\\uFFFD"},
        {"\xC3z", "\\uFFFDz"},
        {"\xE2\x82", "\\uFFFD"},
        {"\xE2\x82z", "\\uFFFDz"},
        {"\xE2\xE2\x82\xAC", "\\uFFFD\\u20AC"},
        {"\xF0\x9F\x98", "\\uFFFD"},
        {"\xF0\x9F\x98\xC3\xA9", "\\uFFFD\\u00E9"},
        {"\xC0\x80", "\\uFFFD\\uFFFD"},
        {"\xC1\xBF", "\\uFFFD\\uFFFD"},
        {"\xE0\x9F\xBF", "\\uFFFD\\uFFFD\\uFFFD"},
        {"\xED\xA0\x80", "\\uFFFD\\uFFFD\\uFFFD"},
        {"\xF0\x8F\xBF\xBF", "\\uFFFD\\uFFFD\\uFFFD\\uFFFD"},
        {"\xF4\x90\x80\x80", "\\uFFFD\\uFFFD\\uFFFD\\uFFFD"},
        {"\xF5\x80\x80\x80", "\\uFFFD\\uFFFD\\uFFFD\\uFFFD"},
        {"\xFF\xFE", "\\uFFFD\\uFFFD"},
    };
    for (const auto& [text, ascii] : rows) {
        std::string out;
        EXPECT_FALSE(appendAscii(out, text.data(), text.size())) << ascii;
        EXPECT_EQ(out, ascii);
    }
}

TEST(AsciiText, knows_every_value_spread_over_the_wrong_number_of_bytes) {
    for (unsigned int count = 2; count <= 4; ++count) {
        for (unsigned long value = 0; value < 1ul << (count == 4 ? 21 : 5 * count + 1); ++value) {
            std::string out;
            const std::string text = encoded(value, count);
            const bool isValid = isCharacter(value) && text == utf8(value);
            ASSERT_EQ(appendAscii(out, text.data(), text.size()), isValid) << value << " " << count;
        }
    }
}

struct Ascii : Layout {
    explicit Ascii(bool beautify) {
        isIndented = beautify;
        indent = " ";
        hasFinalNewline = beautify;
        isAscii = true;
    }
};

WriteStatus write(Writer& writer, const std::string& text) {
    return writer.string(text.data(), text.size());
}

TEST(AsciiText, stands_in_keys_and_values_of_either_layout) {
    for (const bool beautify : {false, true}) {
        Writer writer{Ascii(beautify)};
        writer.openMap();
        EXPECT_EQ(write(writer, "\xC3\xA9\n\xC3\xA9"), WriteStatus::ok);
        writer.openArray();
        EXPECT_EQ(write(writer, "\xC3\xA9\"\\/\x7F\x01"), WriteStatus::ok);
        EXPECT_EQ(write(writer, "plain"), WriteStatus::ok);
        writer.closeArray();
        writer.closeMap();
        EXPECT_EQ(writer.text(),
                  beautify ? "{\n \"\\u00E9\\n\\u00E9\": [\n  \"\\u00E9\\\"\\\\/\x7F\\u0001\",\n"
                             "  \"plain\"\n ]\n}\n"
                           : "{\"\\u00E9\\n\\u00E9\":[\"\\u00E9\\\"\\\\/\x7F\\u0001\",\"plain\"]}");
        EXPECT_EQ(writer.state(), WriteStatus::ok);
    }
}

TEST(AsciiText, is_reported_when_it_replaced_something) {
    Writer writer{Ascii(false)};
    writer.openArray();
    EXPECT_EQ(write(writer, "\xC3\xA9"), WriteStatus::ok);
    EXPECT_EQ(write(writer, "a\xC3\nb\xC3\xA9"), WriteStatus::replacedText);
    EXPECT_EQ(write(writer, "\xC3\xA9"), WriteStatus::ok);
    EXPECT_EQ(writer.closeArray(), WriteStatus::ok);
    EXPECT_EQ(writer.text(), R"(["\u00E9","a\uFFFD\nb\u00E9","\u00E9"])");
    EXPECT_EQ(writer.state(), WriteStatus::replacedText);
}

TEST(AsciiText, is_all_there_is_even_in_the_text_of_a_number) {
    Writer writer{Ascii(false)};
    EXPECT_EQ(writer.number("1\xC3\xA9", 3), WriteStatus::ok);
    EXPECT_EQ(writer.text(), "1\\u00E9");
}

TEST(AsciiText, is_not_written_unless_asked_for) {
    Writer writer(Layout{false, "", false, false, false});
    EXPECT_EQ(write(writer, "\xC3\xA9\xFF"), WriteStatus::ok);
    EXPECT_EQ(writer.text(), "\"\xC3\xA9\xFF\"");
    EXPECT_EQ(writer.state(), WriteStatus::ok);
}

}  // namespace
}  // namespace textTests
