// SPDX-License-Identifier: MIT

#include "text/codePoints.h"

#include <gtest/gtest.h>

#include <string>

namespace ko::Orvid::text {
namespace {

TEST(codePoints, are_written_and_read_back_at_every_limit_of_a_length) {
    for (const char32_t value :
         {0x0U, 0x7FU, 0x80U, 0x7FFU, 0x800U, 0xD7FFU, 0xE000U, 0xFFFFU, 0x10000U, 0x10FFFFU}) {
        std::string text;
        appendUtf8(text, value);
        const auto character = firstCodePoint(text + "z");
        ASSERT_TRUE(character) << std::hex << static_cast<unsigned int>(value);
        EXPECT_EQ(character->value, value);
        EXPECT_EQ(character->length, text.size());
    }
}

TEST(codePoints, are_none_where_the_bytes_are_no_utf8) {
    for (const char* const text : {"\x80", "\xC0\x80", "\xC3", "\xE0\x80\x80", "\xED\xA0\x80",
                                   "\xF4\x90\x80\x80", "\xFF", "\xE2\x82z"}) {
        EXPECT_FALSE(firstCodePoint(text)) << text;
        EXPECT_EQ(validLength(text), 0U) << text;
    }
}

TEST(codePoints, write_a_surrogate_by_the_same_rule) {
    std::string text;
    appendUtf8(text, 0xDC00);
    EXPECT_EQ(text, "\xED\xB0\x80");
}

TEST(codePoints, are_counted_and_not_the_bytes) {
    EXPECT_EQ(countCodePoints(""), 0U);
    EXPECT_EQ(countCodePoints("a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80"), 4U);
    EXPECT_EQ(validLength("a\xC3\xA9\xFFz"), 3U);
}

}  // namespace
}  // namespace ko::Orvid::text
