// SPDX-License-Identifier: MIT
//
// Tests of ko::StringRef: what it views, and that it never copies.

#include <ko/StringRef.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <string_view>

namespace {

TEST(StringRef, is_empty_by_default) {
    const ko::StringRef<char> ref;
    EXPECT_TRUE(ref.empty());
    EXPECT_EQ(ref.length(), 0U);
    EXPECT_EQ(ref.data(), nullptr);
    EXPECT_EQ(ref.end(), ref.begin());
    EXPECT_EQ(ref.str(), "");
}

TEST(StringRef, takes_a_null_pointer_of_length_zero) {
    const ko::StringRef<wchar_t> ref(nullptr, 0);
    EXPECT_TRUE(ref.empty());
    EXPECT_EQ(ref.str(), L"");
}

TEST(StringRef, views_part_of_a_text) {
    const char text[] = "abcdef";
    const ko::StringRef<char> ref(text + 1, 3);
    EXPECT_EQ(ref.data(), text + 1);
    EXPECT_EQ(ref.length(), 3U);
    EXPECT_FALSE(ref.empty());
    EXPECT_EQ(ref.str(), "bcd");
}

TEST(StringRef, views_a_string_without_a_copy) {
    std::string text = "a text that is too long to be stored inside the string object";
    const ko::StringRef<char> ref = text;
    EXPECT_EQ(ref.data(), text.data());
    EXPECT_EQ(ref.length(), text.length());
    text[0] = 'A';
    EXPECT_EQ(*ref.begin(), 'A');
}

TEST(StringRef, views_a_string_view_without_a_copy) {
    const std::wstring_view text = L"wide";
    const ko::StringRef<wchar_t> ref = text;
    EXPECT_EQ(ref.data(), text.data());
    EXPECT_EQ(ref.length(), text.length());
    EXPECT_EQ(ref.str(), L"wide");
}

TEST(StringRef, keeps_embedded_nuls) {
    const std::string text("a\0b\0", 4);
    const ko::StringRef<char> ref(text);
    EXPECT_EQ(ref.length(), 4U);
    EXPECT_EQ(ref.str(), text);
}

TEST(StringRef, copies_the_view_and_not_the_characters) {
    const std::string text = "text";
    const ko::StringRef<char> ref(text);
    ko::StringRef<char> copy;
    copy = ref;
    EXPECT_EQ(copy.data(), ref.data());
    EXPECT_EQ(copy.length(), ref.length());
}

TEST(StringRef, makes_a_string_that_outlives_the_characters) {
    std::string owned;
    {
        const std::string text = "text";
        owned = ko::StringRef<char>(text).str();
    }
    EXPECT_EQ(owned, "text");
}

TEST(StringRef, iterates_over_its_characters_in_order) {
    const std::string text = "text";
    const ko::StringRef<char> ref(text);
    std::string seen;
    for (const char character : ref) {
        seen += character;
    }
    EXPECT_EQ(seen, "text");
    EXPECT_TRUE(std::equal(ref.begin(), ref.end(), text.begin(), text.end()));
}

TEST(StringRef, is_usable_in_constant_expressions) {
    constexpr ko::StringRef<char> k_ref(std::string_view("abc"));
    static_assert(k_ref.length() == 3 && !k_ref.empty() && *k_ref.begin() == 'a');
    EXPECT_EQ(k_ref.str(), "abc");
}

}  // namespace
