// SPDX-License-Identifier: MIT
//
// Tests of Writer: the text of every value, compact and indented, and the states: what is refused,
// with which status, and that a refused call writes nothing.

#include "text/Writer.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cmath>
#include <cstdio>
#include <limits>
#include <vector>

namespace textTests {
namespace {

using ko::Orvid::text::Layout;
using ko::Orvid::text::Writer;
using ko::Orvid::text::WriteStatus;

constexpr double k_infinity = std::numeric_limits<double>::infinity();
constexpr double k_nan = std::numeric_limits<double>::quiet_NaN();

/// One of the two layouts of YAJL.
Layout layout(bool isIndented, const std::string& indent) {
    return {isIndented, indent, isIndented, false, false};
}

WriteStatus write(Writer& writer, const std::string& text) {
    return writer.string(text.data(), text.size());
}

WriteStatus writeNumber(Writer& writer, const std::string& text) {
    return writer.number(text.data(), text.size());
}

std::string stringText(const std::string& value) {
    Writer writer(layout(false, ""));
    EXPECT_EQ(write(writer, value), WriteStatus::ok);
    return std::string(writer.text());
}

std::string realText(double value) {
    Writer writer(layout(false, ""));
    EXPECT_EQ(writer.real(value), WriteStatus::ok);
    return std::string(writer.text());
}

// {"a": [null, true, false, -1, 1.5], "b": {}, "c": []}
void writeSample(Writer& writer) {
    writer.openMap();
    write(writer, "a");
    writer.openArray();
    writer.null();
    writer.boolean(true);
    writer.boolean(false);
    writer.integer(-1);
    writer.real(1.5);
    writer.closeArray();
    write(writer, "b");
    writer.openMap();
    writer.closeMap();
    write(writer, "c");
    writer.openArray();
    writer.closeArray();
    writer.closeMap();
}

TEST(Writer, writes_compact_text) {
    Writer writer(layout(false, "  "));
    writeSample(writer);
    EXPECT_EQ(writer.text(), R"({"a":[null,true,false,-1,1.5],"b":{},"c":[]})");
    EXPECT_EQ(writer.state(), WriteStatus::ok);
}

TEST(Writer, writes_indented_text) {
    Writer writer(layout(true, "  "));
    writeSample(writer);
    EXPECT_EQ(writer.text(),
              "{\n"
              "  \"a\": [\n"
              "    null,\n"
              "    true,\n"
              "    false,\n"
              "    -1,\n"
              "    1.5\n"
              "  ],\n"
              "  \"b\": {\n"
              "\n"
              "  },\n"
              "  \"c\": [\n"
              "\n"
              "  ]\n"
              "}\n");
}

TEST(Writer, writes_empty_containers) {
    for (const bool beautify : {false, true}) {
        Writer map(layout(beautify, "  "));
        map.openMap();
        map.closeMap();
        EXPECT_EQ(map.text(), beautify ? "{\n\n}\n" : "{}");
        Writer array(layout(beautify, "  "));
        array.openArray();
        array.closeArray();
        EXPECT_EQ(array.text(), beautify ? "[\n\n]\n" : "[]");
    }
}

TEST(Writer, ends_a_single_value_with_a_newline_only_when_indenting) {
    for (const bool beautify : {false, true}) {
        Writer writer(layout(beautify, "  "));
        writer.integer(7);
        EXPECT_EQ(writer.text(), beautify ? "7\n" : "7");
    }
}

TEST(Writer, indents_with_any_whitespace) {
    for (const std::string indent : {"", " ", "\t", " \t\n\r\v\f", "          "}) {
        Writer writer(layout(true, indent));
        writer.openArray();
        writer.openArray();
        writer.null();
        EXPECT_EQ(writer.text(), "[\n" + indent + "[\n" + indent + indent + "null");
    }
}

TEST(Writer, replaces_another_indent_by_two_spaces) {
    for (const std::string& indent :
         {std::string("--"), std::string(" x"), std::string(" \xC2\xA0"), std::string(" \0", 2),
          std::string("\b")}) {
        Writer writer(layout(true, indent));
        writer.openArray();
        writer.null();
        EXPECT_EQ(writer.text(), "[\n  null");
    }
}

TEST(Writer, escapes_what_must_be_escaped) {
    EXPECT_EQ(stringText("\b\t\n\f\r\"\\"), R"("\b\t\n\f\r\"\\")");
    EXPECT_EQ(stringText(std::string("\x00\x01\x0B\x1F", 4)), R"("\u0000\u0001\u000B\u001F")");
    EXPECT_EQ(stringText("a/b \x7F\x80\xC3\xA4\xFF"), "\"a/b \x7F\x80\xC3\xA4\xFF\"");
    EXPECT_EQ(stringText(""), "\"\"");
}

TEST(Writer, escapes_exactly_the_bytes_below_the_blank_and_two_more) {
    for (unsigned int byte = 0; byte < 256; ++byte) {
        const std::string text(1, static_cast<char>(byte));
        const bool isRaw = byte >= 0x20 && byte != '"' && byte != '\\';
        EXPECT_EQ(stringText(text) == '"' + text + '"', isRaw) << byte;
    }
}

TEST(Writer, finds_what_must_be_escaped_wherever_it_stands) {
    const std::string letters = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMN";
    for (std::size_t length = 1; length <= letters.size(); ++length) {
        for (std::size_t place = 0; place < length; ++place) {
            std::string text = letters.substr(0, length);
            text[place] = '"';
            std::string escaped = text;
            escaped.insert(place, 1, '\\');
            EXPECT_EQ(stringText(text), '"' + escaped + '"');
        }
    }
}

TEST(Writer, writes_the_limits_of_long) {
    Writer writer(layout(false, ""));
    writer.openArray();
    writer.integer(std::numeric_limits<long>::min());
    writer.integer(std::numeric_limits<long>::max());
    writer.integer(0);
    writer.closeArray();
    EXPECT_EQ(writer.text(), sizeof(long) == 8 ? "[-9223372036854775808,9223372036854775807,0]"
                                               : "[-2147483648,2147483647,0]");
}

TEST(Writer, writes_reals_with_twenty_digits) {
    EXPECT_EQ(realText(0.1), "0.10000000000000000555");
    EXPECT_EQ(realText(1.0), "1");
    EXPECT_EQ(realText(-0.0), "-0");
    EXPECT_EQ(realText(-2.5), "-2.5");
    EXPECT_EQ(realText(1e19), "10000000000000000000");
    EXPECT_EQ(realText(1e20), "1e+20");
    EXPECT_EQ(realText(1.0 / 3), "0.33333333333333331483");
    EXPECT_EQ(realText(0.0001), "0.00010000000000000000479");
    EXPECT_EQ(realText(0.00001), "1.0000000000000000818e-05");
    EXPECT_EQ(realText(std::numeric_limits<double>::max()), "1.7976931348623157081e+308");
    EXPECT_EQ(realText(-std::numeric_limits<double>::denorm_min()), "-4.9406564584124654418e-324");
}

TEST(Writer, writes_reals_as_printf_does) {
    for (int exponent = -1080; exponent < 1024; ++exponent) {
        const double value = std::ldexp(exponent % 2 == 0 ? 1.0 / 7 : -9.0 / 7, exponent);
        char expected[64];
        std::snprintf(expected, sizeof expected, "%.20g", value);
        EXPECT_EQ(realText(value), expected);
    }
}

TEST(Writer, writes_a_decimal_point_in_every_locale) {
    if (std::setlocale(LC_NUMERIC, "de_DE.UTF-8") == nullptr) {
        GTEST_SKIP() << "no locale with a decimal comma is installed";
    }
    const std::string text = realText(1.5);
    std::setlocale(LC_NUMERIC, "C");
    EXPECT_EQ(text, "1.5");
}

TEST(Writer, writes_numbers_as_they_are) {
    Writer writer(layout(true, ""));
    writer.openArray();
    EXPECT_EQ(writeNumber(writer, "1.50E+0999"), WriteStatus::ok);
    EXPECT_EQ(writeNumber(writer, std::string(5000, '9')), WriteStatus::ok);
    writer.closeArray();
    EXPECT_EQ(writer.text(), "[\n1.50E+0999,\n" + std::string(5000, '9') + "\n]\n");
}

TEST(Writer, refuses_what_is_no_number) {
    for (const double value : {k_nan, -k_nan, k_infinity, -k_infinity}) {
        Writer writer(layout(true, " "));
        writer.openArray();
        writer.null();
        EXPECT_EQ(writer.real(value), WriteStatus::invalidNumber);
        EXPECT_EQ(writer.text(), "[\n null");
        writer.null();
        EXPECT_EQ(writer.text(), "[\n null,\n null");
        EXPECT_EQ(writer.state(), WriteStatus::invalidNumber);
    }
}

TEST(Writer, refuses_what_is_no_number_after_all_else) {
    for (const double value : {k_nan, k_infinity}) {
        Writer map(layout(false, ""));
        map.openMap();
        EXPECT_EQ(map.real(value), WriteStatus::keysMustBeStrings);
        map.closeMap();
        EXPECT_EQ(map.real(value), WriteStatus::generationComplete);
        EXPECT_EQ(map.text(), "{}");
    }
}

TEST(Writer, refuses_all_but_strings_for_keys) {
    Writer writer(layout(true, "  "));
    writer.openMap();
    for (int round = 0; round < 2; ++round) {
        const std::string before(writer.text());
        EXPECT_EQ(writer.null(), WriteStatus::keysMustBeStrings);
        EXPECT_EQ(writer.boolean(true), WriteStatus::keysMustBeStrings);
        EXPECT_EQ(writer.integer(1), WriteStatus::keysMustBeStrings);
        EXPECT_EQ(writer.real(1), WriteStatus::keysMustBeStrings);
        EXPECT_EQ(writeNumber(writer, "1"), WriteStatus::keysMustBeStrings);
        EXPECT_EQ(writer.openMap(), WriteStatus::keysMustBeStrings);
        EXPECT_EQ(writer.openArray(), WriteStatus::keysMustBeStrings);
        EXPECT_EQ(writer.text(), before);
        write(writer, "key");
        writer.integer(round);
    }
    writer.closeMap();
    EXPECT_EQ(writer.text(), "{\n  \"key\": 0,\n  \"key\": 1\n}\n");
    EXPECT_EQ(writer.state(), WriteStatus::keysMustBeStrings);
}

TEST(Writer, accepts_a_missing_value) {
    Writer writer(layout(false, ""));
    writer.openArray();
    writer.openMap();
    write(writer, "a");
    EXPECT_EQ(writer.closeMap(), WriteStatus::ok);
    writer.openMap();
    write(writer, "a");
    EXPECT_EQ(write(writer, "b"), WriteStatus::ok);
    writer.closeMap();
    writer.closeArray();
    EXPECT_EQ(writer.text(), R"([{"a"},{"a":"b"}])");
    EXPECT_EQ(writer.state(), WriteStatus::ok);
}

TEST(Writer, does_not_check_the_kind_of_bracket_that_closes) {
    Writer writer(layout(false, ""));
    writer.openArray();
    EXPECT_EQ(writer.closeMap(), WriteStatus::ok);
    EXPECT_EQ(writer.text(), "[}");
}

TEST(Writer, refuses_everything_after_the_complete_value) {
    for (const bool isContainer : {false, true}) {
        Writer writer(layout(true, "  "));
        if (isContainer) {
            writer.openMap();
            writer.closeMap();
        } else {
            writer.null();
        }
        const std::string before(writer.text());
        EXPECT_EQ(writer.state(), WriteStatus::ok);
        EXPECT_EQ(writer.null(), WriteStatus::generationComplete);
        EXPECT_EQ(writer.boolean(false), WriteStatus::generationComplete);
        EXPECT_EQ(writer.integer(1), WriteStatus::generationComplete);
        EXPECT_EQ(writer.real(1), WriteStatus::generationComplete);
        EXPECT_EQ(writeNumber(writer, "1"), WriteStatus::generationComplete);
        EXPECT_EQ(write(writer, ""), WriteStatus::generationComplete);
        EXPECT_EQ(writer.openMap(), WriteStatus::generationComplete);
        EXPECT_EQ(writer.closeMap(), WriteStatus::generationComplete);
        EXPECT_EQ(writer.openArray(), WriteStatus::generationComplete);
        EXPECT_EQ(writer.closeArray(), WriteStatus::generationComplete);
        EXPECT_EQ(writer.text(), before);
        EXPECT_EQ(writer.state(), WriteStatus::generationComplete);
    }
}

TEST(Writer, refuses_a_close_without_an_open_and_goes_on) {
    Writer writer(layout(true, "  "));
    EXPECT_EQ(writer.closeMap(), WriteStatus::inErrorState);
    EXPECT_EQ(writer.closeArray(), WriteStatus::inErrorState);
    EXPECT_EQ(writer.text(), "");
    EXPECT_EQ(writer.state(), WriteStatus::inErrorState);
    EXPECT_EQ(writer.openArray(), WriteStatus::ok);
    EXPECT_EQ(writer.closeArray(), WriteStatus::ok);
    EXPECT_EQ(writer.text(), "[\n\n]\n");
}

TEST(Writer, remembers_the_first_refusal) {
    Writer writer(layout(false, ""));
    EXPECT_EQ(writer.state(), WriteStatus::ok);
    writer.openArray();
    writer.real(k_nan);
    EXPECT_EQ(writer.state(), WriteStatus::invalidNumber);
    writer.closeArray();
    EXPECT_EQ(writer.null(), WriteStatus::generationComplete);
    EXPECT_EQ(writer.state(), WriteStatus::invalidNumber);
}

TEST(Writer, clears_the_text_and_keeps_the_nesting) {
    Writer writer(layout(true, "\t"));
    writer.openArray();
    writer.integer(1);
    writer.clear();
    EXPECT_EQ(writer.text(), "");
    writer.integer(2);
    EXPECT_EQ(writer.text(), ",\n\t2");
    writer.clear();
    writer.closeArray();
    EXPECT_EQ(writer.text(), "\n]\n");
    writer.clear();
    EXPECT_EQ(writer.null(), WriteStatus::generationComplete);
    EXPECT_EQ(writer.text(), "");
}

TEST(Writer, writes_plain_strings_like_others_of_every_length) {
    for (const bool isAscii : {false, true}) {
        Writer plain({false, "", false, isAscii, false});
        Writer other({false, "", false, isAscii, false});
        for (Writer* const writer : {&plain, &other}) {
            writer->openArray();
            for (std::size_t length = 0; length < 70; ++length) {
                const std::string text = std::string(length, 'x') + "\xC3\xA4";
                writer == &plain ? writer->plainString(text.data(), text.size())
                                 : write(*writer, text);
            }
            writer->closeArray();
        }
        EXPECT_EQ(plain.text(), other.text());
        EXPECT_EQ(plain.plainString("x", 1), WriteStatus::generationComplete);
    }
}

TEST(Writer, writes_numbers_of_every_length_between_others) {
    std::string digits;
    for (int i = 1; i <= 70; ++i) {
        digits += static_cast<char>('0' + i % 10);
        Writer writer(layout(true, "  "));
        writer.openArray();
        writer.integer(1);
        writeNumber(writer, digits);
        writer.integer(2);
        writer.closeArray();
        EXPECT_EQ(writer.text(), "[\n  1,\n  " + digits + ",\n  2\n]\n");
    }
}

TEST(Writer, begins_anew_after_a_document_and_within_one) {
    for (const bool isWhole : {false, true}) {
        Writer writer(layout(true, "  "));
        writer.openArray();
        writer.openMap();
        write(writer, "key");
        if (isWhole) {
            writer.null();
            writer.closeMap();
            writer.closeArray();
        } else {
            writer.real(k_nan);
        }
        writer.restart();
        EXPECT_EQ(writer.text(), "");
        EXPECT_EQ(writer.state(), WriteStatus::ok);
        writer.openArray();
        writer.null();
        writer.closeArray();
        EXPECT_EQ(writer.text(), "[\n  null\n]\n");
    }
}

TEST(Writer, writes_after_the_text_that_it_is_given) {
    Writer writer(layout(false, ""));
    writer.openArray();
    ko::Orvid::text::Bytes bytes;
    bytes.append("before ");
    writer.swapText(bytes);
    EXPECT_EQ(bytes.view(), "[");
    for (int i = 0; i < 1000; ++i) {
        writer.integer(7);
    }
    writer.closeArray();
    writer.swapText(bytes);
    EXPECT_EQ(writer.text(), "[");
    EXPECT_EQ(bytes.length(), 7U + 2000U);
    EXPECT_EQ(bytes.view().substr(0, 10), "before 7,7");
}

}  // namespace
}  // namespace textTests
