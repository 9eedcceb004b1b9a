// SPDX-License-Identifier: MIT
//
// The buffer's text against a std::string that is appended to in the usual way.

#include "text/yajl/TextBuffer.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace yajlTests {
namespace {

using ko::Orvid::yajl::TextBuffer;

TEST(TextBuffer, holds_the_pieces_in_their_order) {
    TextBuffer text;
    std::string expected;
    for (std::size_t length = 0; length < 300; ++length) {
        const std::string piece(length, static_cast<char>('a' + length % 26));
        text.append(piece);
        expected += piece;
        ASSERT_EQ(text.view(), expected);
    }
    EXPECT_EQ(text.size(), expected.size());
}

TEST(TextBuffer, takes_a_piece_only_where_there_is_room_for_it) {
    TextBuffer text;
    EXPECT_FALSE(text.tryAppend("a", 1));
    EXPECT_EQ(text.view(), "");
    text.append("a");
    EXPECT_TRUE(text.tryAppend("bc", 2));
    const std::string large(10000, 'd');
    EXPECT_FALSE(text.tryAppend(large.data(), large.size()));
    EXPECT_EQ(text.view(), "abc");
    text.append(large);
    EXPECT_EQ(text.view(), "abc" + large);
}

TEST(TextBuffer, goes_on_behind_what_was_not_cut) {
    TextBuffer text;
    text.append("kept, dropped");
    text.cut(4);
    EXPECT_EQ(text.view(), "kept");
    text.append("!");
    EXPECT_EQ(text.view(), "kept!");
}

TEST(TextBuffer, hands_its_text_out_without_a_copy_and_is_empty_then) {
    TextBuffer text;
    text.append(std::string(100, 'x'));
    const char* const before = text.view().data();
    const std::string taken = text.take();
    EXPECT_EQ(taken, std::string(100, 'x'));
    EXPECT_EQ(taken.data(), before);
    EXPECT_EQ(text.view(), "");
    text.append("next");
    EXPECT_EQ(text.view(), "next");
    EXPECT_EQ(text.take(), "next");
}

}  // namespace
}  // namespace yajlTests
