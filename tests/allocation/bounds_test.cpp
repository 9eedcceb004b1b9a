// SPDX-License-Identifier: MIT
//
// How much memory and how many allocations reading takes, in the shapes that take the most. Bytes
// and requests are counted, never time.

#include <ko/Orvid.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <iterator>
#include <string>

#include "support/CountedMemory.h"

namespace orvid_test {
namespace {

using ko::DecNumber;
using ko::Orvid::DomParser;
using ko::Orvid::Element;

std::string repeat(const std::string& text, std::size_t count) {
    std::string result;
    for (std::size_t i = 0; i < count; ++i) {
        result += text;
    }
    return result;
}

struct Cost {
    double bytesPerByte;
    double requestsPerByte;
};

Cost costOf(const std::string& text) {
    const Peak peak;
    const std::size_t requests = allocationCount();
    Element root;
    DomParser().parse(root, text);
    const auto length = static_cast<double>(text.size());
    return {static_cast<double>(peak.bytes()) / length,
            static_cast<double>(allocationCount() - requests) / length};
}

std::string arrayOf(const std::string& item, std::size_t count) {
    return "[" + repeat(item + ",", count - 1) + item + "]";
}

/// n members, whose keys are made by the function.
template<class Key>
std::string objectOf(std::size_t count, const Key& key) {
    std::string text = "{";
    for (std::size_t i = 0; i < count; ++i) {
        text += (i == 0 ? "\"" : ",\"") + key(i) + "\":1";
    }
    return text + "}";
}

const std::string k_prefix(200, 'p');

std::string emptyArrays(std::size_t count) { return arrayOf("[]", count); }
std::string emptyObjects(std::size_t count) { return arrayOf("{}", count); }
/// Cut off: each byte opens a level.
std::string openArrays(std::size_t count) { return std::string(count, '['); }
std::string nestedArrays(std::size_t count) {
    return std::string(count, '[') + std::string(count, ']');
}
std::string nestedObjects(std::size_t count) {
    return repeat("{\"\":", count) + "1" + repeat("}", count);
}
std::string shortNumbers(std::size_t count) { return arrayOf("1", count); }
std::string smallArrays(std::size_t count) { return arrayOf("[1]", count); }
std::string smallObjects(std::size_t count) { return arrayOf("{\"\":1}", count); }
std::string shortKeys(std::size_t count) {
    return objectOf(count, [](std::size_t i) { return std::to_string(i); });
}
std::string longPrefixes(std::size_t count) {
    return objectOf(count, [](std::size_t i) { return k_prefix + std::to_string(i); });
}
std::string repeatedKeys(std::size_t count) {
    return objectOf(count, [](std::size_t) { return std::string("key"); });
}
std::string escapes(std::size_t count) { return "[\"" + repeat("\\u00e4", count) + "\"]"; }
std::string longNumber(std::size_t count) { return "[" + std::string(count, '7') + "]"; }

struct Shape {
    const char* name;
    std::string (*text)(std::size_t);
};

constexpr Shape k_shapes[] = {
    {"empty arrays", emptyArrays},     {"empty objects", emptyObjects},
    {"open arrays", openArrays},       {"nested arrays", nestedArrays},
    {"nested objects", nestedObjects}, {"short numbers", shortNumbers},
    {"small arrays", smallArrays},     {"small objects", smallObjects},
    {"short keys", shortKeys},         {"long prefixes", longPrefixes},
    {"repeated keys", repeatedKeys},   {"long escapes", escapes},
    {"one long number", longNumber},
};

/// docs/reading-and-writing.md states this bound, for 64 bits.
constexpr double k_mostBytesPerByte = 100;

TEST(ReadingBounds, no_shape_takes_more_memory_for_a_byte_than_is_stated) {
    double most = 0;
    for (const Shape& shape : k_shapes) {
        const Cost cost = costOf(shape.text(20000));
        std::printf("%-16s %6.1f bytes, %5.3f requests for a byte of text\n", shape.name,
                    cost.bytesPerByte, cost.requestsPerByte);
        EXPECT_LE(cost.bytesPerByte, k_mostBytesPerByte) << shape.name;
        most = std::max(most, cost.bytesPerByte);
    }
    // A bound that no shape comes near would say nothing.
    EXPECT_GE(most, k_mostBytesPerByte / (sizeof(void*) == 8 ? 2 : 4));
}

TEST(ReadingBounds, memory_and_requests_grow_no_faster_than_the_text) {
    for (const Shape& shape : k_shapes) {
        const Cost small = costOf(shape.text(4000));
        const Cost large = costOf(shape.text(64000));
        EXPECT_LE(large.bytesPerByte, small.bytesPerByte * 1.6 + 1) << shape.name;
        EXPECT_LE(large.requestsPerByte, small.requestsPerByte * 1.1 + 0.01) << shape.name;
    }
}

TEST(ReadingBounds, a_number_of_a_hundred_million_digits_is_kept_once_and_read_as_a_piece) {
    const std::size_t digits = 100000000;
    const Cost cost = costOf(longNumber(digits));
    EXPECT_LE(cost.bytesPerByte, 6.0);
    EXPECT_LE(cost.requestsPerByte * static_cast<double>(digits), 200.0);
}

TEST(ReadingBounds, a_huge_exponent_is_compared_without_its_zeros) {
    const DecNumber huge("1e999999999");
    const DecNumber numbers[] = {DecNumber("1e999999998"),
                                 DecNumber("-1e999999999"),
                                 DecNumber("10e999999998"),
                                 DecNumber("0"),
                                 DecNumber(1e308),
                                 DecNumber("1e-999999999"),
                                 DecNumber("1." + std::string(50, '0'))};
    const int expected[] = {1, 1, 0, 1, 1, 1, 1};
    for (std::size_t i = 0; i < std::size(numbers); ++i) {
        const Peak peak;
        EXPECT_EQ(huge.compare(numbers[i]), expected[i]) << i;
        EXPECT_EQ(-numbers[i].compare(huge), expected[i]) << i;
        EXPECT_LE(peak.bytes(), 1024U) << i;
    }
}

}  // namespace
}  // namespace orvid_test
