// SPDX-License-Identifier: MIT
//
// The text that is kept within its object while it is short.

#include <ko/detail/ShortText.h>

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <utility>

namespace {

using ko::ShortText;

const std::string k_short(ShortText::k_capacity, 's');
const std::string k_long(ShortText::k_capacity + 1, 'l');

TEST(ShortText, keeps_texts_on_both_sides_of_its_capacity) {
    for (const std::string& text : {std::string(), std::string("a"), k_short, k_long}) {
        const ShortText kept(text);
        EXPECT_EQ(kept.view(), text);
        EXPECT_EQ(kept.string(), text);
        EXPECT_EQ(kept.view(), text);  // also once there is a string
        EXPECT_EQ(*(kept.view().data() + text.size()), '\0');
        EXPECT_EQ(kept.empty(), text.empty());
    }
}

TEST(ShortText, keeps_zero_bytes) {
    const std::string text("a\0b", 3);
    EXPECT_EQ(ShortText(text).view(), text);
    EXPECT_EQ(ShortText(text).string(), text);
}

TEST(ShortText, assigns_from_any_length_to_any_other) {
    for (const std::string& before : {std::string(), std::string("b"), k_short, k_long}) {
        for (const std::string& after : {std::string(), std::string("c"), k_short, k_long}) {
            ShortText text(before);
            EXPECT_EQ(text.string(), before);
            text.assign(after);
            EXPECT_EQ(text.view(), after);
            EXPECT_EQ(text.string(), after);
            ShortText copied(before);
            copied = text;
            EXPECT_EQ(copied.string(), after);
            ShortText moved(before);
            moved = std::move(copied);
            EXPECT_EQ(moved.string(), after);
            EXPECT_TRUE(
                copied.empty());  // NOLINT(bugprone-use-after-move): what is left is the test
        }
    }
}

TEST(ShortText, may_be_assigned_a_part_of_itself) {
    ShortText text("abcdef");
    text.assign(text.view().substr(2, 3));
    EXPECT_EQ(text.view(), "cde");
    ShortText big(k_long + "tail");
    big.assign(big.view().substr(k_long.size()));
    EXPECT_EQ(big.view(), "tail");
    ShortText same(k_long);
    ShortText& alias = same;
    same = alias;
    EXPECT_EQ(same.view(), k_long);
    same = std::move(alias);
    EXPECT_EQ(same.view(), k_long);
}

TEST(ShortText, copies_and_moves) {
    for (const std::string& text : {std::string("a"), k_short, k_long}) {
        ShortText source(text);
        const ShortText copy(source);
        EXPECT_EQ(copy.view(), text);
        EXPECT_EQ(source.view(), text);
        const ShortText moved(std::move(source));
        EXPECT_EQ(moved.view(), text);
        EXPECT_TRUE(source.empty());  // NOLINT(bugprone-use-after-move): what is left is the test
    }
}

TEST(ShortText, forgets_its_text) {
    ShortText text(k_long);
    text.clear();
    EXPECT_TRUE(text.empty());
    EXPECT_EQ(text.string(), "");
}

}  // namespace
