// SPDX-License-Identifier: MIT
//
// Tests of ko::convert and ko::wconvert: every code point there and back, and what becomes of text
// that cannot be converted.

#include <ko/convert.h>

#include <gtest/gtest.h>

#include <limits>
#include <random>
#include <string>
#include <vector>

namespace {

const std::string k_mark = "\xEF\xBF\xBD";  // U+FFFD

std::wstring wide(const std::vector<long>& codes) {
    std::wstring text;
    for (const long code : codes) {
        text += static_cast<wchar_t>(code);
    }
    return text;
}

/// UTF-8 by the table of the standard, for scalar values.
std::string encoded(unsigned long code) {
    const auto byte = [](unsigned long value) { return static_cast<char>(value); };
    const auto tail = [&](unsigned shift) { return byte(0x80 | (code >> shift & 0x3F)); };
    if (code < 0x80) {
        return {byte(code)};
    }
    if (code < 0x800) {
        return {byte(0xC0 | code >> 6), tail(0)};
    }
    if (code < 0x10000) {
        return {byte(0xE0 | code >> 12), tail(6), tail(0)};
    }
    return {byte(0xF0 | code >> 18), tail(12), tail(6), tail(0)};
}

TEST(convert, keeps_empty_text_empty) {
    EXPECT_EQ(ko::convert(L""), "");
    EXPECT_EQ(ko::wconvert(""), L"");
}

TEST(convert, converts_text_of_one_to_four_bytes) {
    const std::string narrow = "a\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80z";
    const std::wstring wideText = wide({'a', 0xE4, 0x20AC, 0x1F600, 'z'});
    EXPECT_EQ(ko::convert(wideText), narrow);
    EXPECT_EQ(ko::wconvert(narrow), wideText);
}

TEST(convert, converts_every_scalar_value_and_replaces_every_surrogate) {
    for (unsigned long code = 0; code <= 0x10FFFF; ++code) {
        const std::wstring one(1, static_cast<wchar_t>(code));
        if (code >= 0xD800 && code <= 0xDFFF) {
            ASSERT_EQ(ko::convert(one), k_mark) << std::hex << code;
        } else {
            ASSERT_EQ(ko::convert(one), encoded(code)) << std::hex << code;
            ASSERT_EQ(ko::wconvert(encoded(code)), one) << std::hex << code;
        }
    }
}

TEST(convert, keeps_embedded_nuls) {
    const std::wstring wideText = wide({0, 'a', 0, 0xE4, 0});
    const std::string narrow("\0a\0\xC3\xA4\0", 6);
    EXPECT_EQ(ko::convert(wideText), narrow);
    EXPECT_EQ(ko::wconvert(narrow), wideText);
}

TEST(convert, replaces_each_unit_that_is_no_scalar_value) {
    EXPECT_EQ(ko::convert(wide({'a', 0x110000, 'b'})), "a" + k_mark + "b");
    EXPECT_EQ(ko::convert(wide({-1})), k_mark);
    EXPECT_EQ(ko::convert(wide({std::numeric_limits<wchar_t>::min()})), k_mark);
    EXPECT_EQ(ko::convert(wide({std::numeric_limits<wchar_t>::max()})), k_mark);
    // A pair of surrogates is a matter of UTF-16 and no code point here.
    EXPECT_EQ(ko::convert(wide({0xD83D, 0xDE00})), k_mark + k_mark);
}

TEST(convert, keeps_the_noncharacters) {
    EXPECT_EQ(ko::convert(wide({0xFFFE, 0x10FFFF})), "\xEF\xBF\xBE\xF4\x8F\xBF\xBF");
    EXPECT_EQ(ko::wconvert("\xEF\xBF\xBE\xF4\x8F\xBF\xBF"), wide({0xFFFE, 0x10FFFF}));
}

struct IllFormed {
    const char* name;
    std::string narrow;
    std::wstring wideText;
};

std::vector<IllFormed> illFormed() {
    const long mark = 0xFFFD;
    return {
        {"two bytes cut at the end", "a\xC3", wide({'a', mark})},
        {"three bytes cut after the first", "a\xE2", wide({'a', mark})},
        {"three bytes cut after the second", "a\xE2\x82", wide({'a', mark})},
        {"four bytes cut after the third", "a\xF0\x9F\x98", wide({'a', mark})},
        {"cut in the middle", "\xE2\x82z", wide({mark, 'z'})},
        {"cut by another sequence", "\xE2\x82\xC3\xA4", wide({mark, 0xE4})},
        {"cut by a NUL", std::string("\xE2\0a", 3), wide({mark, 0, 'a'})},
        {"overlong slash in two bytes", "\xC0\xAF/", wide({mark, '/'})},
        {"overlong NUL", "\xC0\x80", wide({mark})},
        {"overlong in three bytes", "\xE0\x80\xAF", wide({mark})},
        {"overlong in four bytes", "\xF0\x80\x80\xAF", wide({mark})},
        {"leading surrogate", "\xED\xA0\x80z", wide({mark, 'z'})},
        {"trailing surrogate", "\xED\xBF\xBFz", wide({mark, 'z'})},
        {"beyond the last code point", "\xF4\x90\x80\x80z", wide({mark, 'z'})},
        {"continuation bytes alone", "\x80\xBF", wide({mark, mark})},
        {"bytes that begin nothing", "\xFE\xFF\xF8", wide({mark, mark, mark})},
        {"one continuation byte too many", "\xC3\xA4\x80", wide({0xE4, mark})},
    };
}

TEST(wconvert, replaces_each_ill_formed_sequence_once) {
    for (const IllFormed& sample : illFormed()) {
        EXPECT_EQ(ko::wconvert(sample.narrow), sample.wideText) << sample.name;
    }
}

TEST(wconvert, makes_valid_text_of_any_bytes_and_reads_none_past_the_end) {
    std::mt19937 random(20);  // NOLINT(cert-msc32-c,cert-msc51-cpp): repeatable
    for (int round = 0; round < 20000; ++round) {
        // A heap block of exactly this length, so that a sanitizer sees an overrun.
        std::string bytes(random() % 40 + 16, '\0');
        for (char& byte : bytes) {
            byte = static_cast<char>(random() % 3 == 0 ? random() % 128 : 128 + random() % 128);
        }
        bytes.shrink_to_fit();
        const std::wstring text = ko::wconvert(bytes);
        ASSERT_LE(text.length(), bytes.length());
        ASSERT_EQ(ko::wconvert(ko::convert(text)), text);
        for (const wchar_t unit : text) {
            const auto code = static_cast<char32_t>(unit);
            ASSERT_TRUE(code < 0xD800 || (code > 0xDFFF && code <= 0x10FFFF));
        }
    }
}

}  // namespace
