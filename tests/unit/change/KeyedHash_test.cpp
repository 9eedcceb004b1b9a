// SPDX-License-Identifier: MIT
//
// Tests of KeyedHash: known results of SipHash-1-3, and that each object has a key of its own.

#include "change/KeyedHash.h"

#include <gtest/gtest.h>

#include <string>

namespace orvid_test {
namespace {

using ko::Orvid::KeyedHash;

TEST(KeyedHash, agrees_with_known_results_for_every_length_of_the_last_word) {
    const KeyedHash hash(0, 0);
    EXPECT_EQ(hash.of("a"), 0x407448D2B89B1813U);
    EXPECT_EQ(hash.of("abcdefg"), 0x6DB12AAE9070F506U);
    EXPECT_EQ(hash.of("abcdefgh"), 0x3F7B849C0B8E35EAU);
    EXPECT_EQ(hash.of("abcdefghi"), 0xF89B34A3D11EB6E5U);
    std::string bytes;
    for (int byte = 0x80; byte <= 0xA0; ++byte) {
        bytes += static_cast<char>(byte);
    }
    EXPECT_EQ(hash.of(bytes), 0x9421256227950F53U);
}

TEST(KeyedHash, depends_on_both_halves_of_the_key) {
    EXPECT_NE(KeyedHash(0, 0).of("a"), KeyedHash(1, 0).of("a"));
    EXPECT_NE(KeyedHash(0, 0).of("a"), KeyedHash(0, 1).of("a"));
}

TEST(KeyedHash, draws_a_key_for_each_object) {
    EXPECT_NE(KeyedHash().of("a"), KeyedHash().of("a"));
}

}  // namespace
}  // namespace orvid_test
