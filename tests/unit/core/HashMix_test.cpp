// SPDX-License-Identifier: MIT
//
// Texts of all lengths have hashes of their own.

#include "core/HashMix.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <unordered_set>

namespace {

template<class Word>
void expectAllDifferent() {
    std::unordered_set<Word> hashes;
    std::size_t count = 0;
    for (std::size_t length = 0; length <= 40; ++length) {
        hashes.insert(ko::Orvid::hashOfText<Word>(std::string(length, 'a')));
        ++count;
        for (std::size_t at = 0; at < length; ++at) {
            for (const char other : {'b', '\x01', '\xFF'}) {
                std::string text(length, 'a');
                text[at] = other;
                hashes.insert(ko::Orvid::hashOfText<Word>(text));
                ++count;
            }
        }
    }
    EXPECT_EQ(hashes.size(), count);
}

TEST(HashOfText, differs_in_every_byte_and_length) {
    expectAllDifferent<std::size_t>();
    expectAllDifferent<std::uint64_t>();
}

}  // namespace
