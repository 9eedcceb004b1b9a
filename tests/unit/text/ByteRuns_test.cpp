// SPDX-License-Identifier: MIT
//
// Every kind of block against the bytes one by one.

#include "text/ByteRuns.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>

namespace {

namespace text = ko::Orvid::text;

template<class AnyBlock>
class ByteRuns : public testing::Test {};

#if defined(__SSE2__)
using Blocks = testing::Types<text::PlainBlock, text::Sse2Block, text::Sse2Pair>;
#elif defined(__ARM_NEON) && defined(__aarch64__)
using Blocks = testing::Types<text::PlainBlock, text::NeonBlock>;
#else
using Blocks = testing::Types<text::PlainBlock>;
#endif
/// Names the kinds of block by their number; without names the macro is pedantically incomplete.
struct BlockNames {
    template<class>
    static std::string GetName(int number) {
        return std::to_string(number);
    }
};
TYPED_TEST_SUITE(ByteRuns, Blocks, BlockNames);

/// All runs that begin in the text and end at its end or before.
template<class AnyBlock>
void compareRuns(const std::string& bytes) {
    const char* const end = bytes.data() + bytes.size();
    for (const char* at = bytes.data(); at != end; ++at) {
        const auto naive = [&](auto isStop) { return std::find_if(at, end, isStop); };
        EXPECT_EQ(text::whitespaceEnd<AnyBlock>(at, end),
                  naive([](char c) { return !text::isWhitespace(c); }));
        EXPECT_EQ(text::digitsEnd<AnyBlock>(at, end),
                  naive([](char c) { return !text::isDigit(c); }));
        EXPECT_EQ(text::asciiEnd<AnyBlock>(at, end), naive(text::isHigh));
        const auto isOther = [](char c) { return c != ' '; };
        EXPECT_EQ(text::runEnd<AnyBlock>(
                      at, end, [](const auto& block) { return block.notEqual(' '); }, isOther),
                  naive(isOther));
        const char* const plain = naive(text::isSpecial);
        bool hasHigh = false;
        EXPECT_EQ(text::plainEnd<AnyBlock>(at, end, hasHigh), plain);
        EXPECT_TRUE(hasHigh || std::find_if(at, plain, text::isHigh) == plain);
        EXPECT_EQ(text::plainEnd<AnyBlock>(at, end), plain);
        EXPECT_EQ(text::countOf<AnyBlock>('\n', at, end),
                  static_cast<std::uint64_t>(std::count(at, end, '\n')));
    }
}

TYPED_TEST(ByteRuns, end_at_every_byte_that_is_of_another_kind) {
    for (const char inside : {' ', '7', 'a', '\xC3'}) {
        for (int byte = 0; byte < 256; ++byte) {
            for (std::size_t at = 0; at < 20; ++at) {
                std::string bytes(20, inside);
                bytes[at] = static_cast<char>(byte);
                const char* const begin = bytes.data();
                const char* const end = begin + bytes.size();
                EXPECT_EQ(text::whitespaceEnd<TypeParam>(begin, end),
                          std::find_if_not(begin, end, text::isWhitespace));
                EXPECT_EQ(text::digitsEnd<TypeParam>(begin, end),
                          std::find_if_not(begin, end, text::isDigit));
                EXPECT_EQ(text::plainEnd<TypeParam>(begin, end),
                          std::find_if(begin, end, text::isSpecial));
            }
        }
    }
}

TYPED_TEST(ByteRuns, end_where_the_bytes_one_by_one_say_so) {
    std::mt19937 random(14);
    const std::string common = "  \n\r\t0123456789abc\"\\\x01\x1F\x20\x7F\x80\xC3\xFF\v";
    for (int round = 0; round < 300; ++round) {
        std::string bytes(random() % 70, ' ');
        // Few kinds at a time make long runs.
        const std::size_t kinds = 1 + random() % common.size();
        const std::size_t first = random() % common.size();
        for (char& byte : bytes) {
            byte = common[(first + random() % kinds) % common.size()];
        }
        compareRuns<TypeParam>(bytes);
    }
}

TEST(ByteRuns, empty_runs_end_where_they_begin) {
    const char byte = ' ';
    EXPECT_EQ(text::whitespaceEnd(&byte, &byte), &byte);
    EXPECT_EQ(text::plainEnd(&byte, &byte), &byte);
    EXPECT_EQ(text::countOf(' ', &byte, &byte), 0U);
}

}  // namespace
