// SPDX-License-Identifier: MIT

#include "text/KeyHashes.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace ko::Orvid::text {
namespace {

/// Whether one object with those keys has none twice, as far as it knows.
bool areDifferent(const std::vector<std::string>& keys) {
    KeyHashes hashes;
    hashes.open();
    bool isEachNew = true;
    for (const std::string& key : keys) {
        isEachNew = hashes.add(key) && isEachNew;
    }
    return hashes.close() && isEachNew;
}

/// So many keys, each longer than the one before it by one byte, which is the only difference.
std::vector<std::string> keysOfLengths(std::size_t count) {
    std::vector<std::string> keys;
    for (std::size_t length = 0; length < count; ++length) {
        keys.emplace_back(length, 'k');
    }
    return keys;
}

TEST(KeyHashes, find_each_key_that_comes_again_among_few_and_among_many) {
    for (const std::size_t count : {1U, 2U, 30U, 64U, 65U, 200U}) {
        const std::vector<std::string> keys = keysOfLengths(count);
        EXPECT_TRUE(areDifferent(keys)) << count;
        for (const std::string& key : keys) {
            std::vector<std::string> repeated = keys;
            repeated.push_back(key);
            EXPECT_FALSE(areDifferent(repeated)) << count << " keys and " << key;
        }
    }
}

TEST(KeyHashes, tell_keys_apart_that_differ_in_one_byte) {
    for (std::size_t length = 1; length <= 40; ++length) {
        std::vector<std::string> keys{std::string(length, 'x')};
        for (std::size_t place = 0; place < length; ++place) {
            keys.push_back(keys.front());
            keys.back()[place] = 'y';
        }
        EXPECT_TRUE(areDifferent(keys)) << length;
    }
}

TEST(KeyHashes, know_the_keys_of_each_object_that_is_open) {
    KeyHashes hashes;
    hashes.open();
    EXPECT_TRUE(hashes.add("a"));
    hashes.open();
    EXPECT_TRUE(hashes.add("a"));
    EXPECT_TRUE(hashes.add("b"));
    EXPECT_FALSE(hashes.add("a"));
    EXPECT_TRUE(hashes.close());
    EXPECT_TRUE(hashes.add("b"));
    EXPECT_FALSE(hashes.add("a"));
    EXPECT_TRUE(hashes.close());
}

TEST(KeyHashes, forget_what_was_open) {
    KeyHashes hashes;
    hashes.open();
    hashes.add("a");
    hashes.clear();
    hashes.open();
    EXPECT_TRUE(hashes.add("a"));
    EXPECT_TRUE(hashes.close());
}

}  // namespace
}  // namespace ko::Orvid::text
