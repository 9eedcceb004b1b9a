// SPDX-License-Identifier: MIT
//
// Tests of Writer at its limit of depth: 127 containers may be open; one more is refused together
// with all that stands in it, and what is written stays balanced.

#include "text/yajl/Writer.h"

#include <gtest/gtest.h>

#include <limits>

namespace yajlTests {
namespace {

using ko::Orvid::yajl::Writer;
using ko::Orvid::yajl::WriteStatus;

// Arrays and maps in turn, a value due in the innermost.
void openAll(Writer& writer, unsigned int count) {
    for (unsigned int i = 0; i < count; ++i) {
        ASSERT_FALSE(writer.isFull()) << i;
        if (i % 2 == 0) {
            ASSERT_EQ(writer.openArray(), WriteStatus::ok) << i;
        } else {
            ASSERT_EQ(writer.openMap(), WriteStatus::ok) << i;
            ASSERT_EQ(writer.string("k", 1), WriteStatus::ok) << i;
        }
    }
}

void closeAll(Writer& writer, unsigned int count) {
    for (unsigned int i = count; i-- > 0;) {
        ASSERT_EQ(i % 2 == 0 ? writer.closeArray() : writer.closeMap(), WriteStatus::ok) << i;
    }
}

std::string opened(unsigned int count) {
    std::string text;
    for (unsigned int i = 0; i < count; ++i) {
        text += i % 2 == 0 ? "[" : "{\"k\":";
    }
    return text;
}

std::string closed(unsigned int count) {
    std::string text;
    for (unsigned int i = count; i-- > 0;) {
        text += i % 2 == 0 ? "]" : "}";
    }
    return text;
}

TEST(WriterDepth, is_at_most_127_containers) {
    EXPECT_EQ(Writer::k_maxDepth, 127U);
    Writer writer(false, "");
    openAll(writer, 127);
    EXPECT_TRUE(writer.isFull());
    EXPECT_EQ(writer.null(), WriteStatus::ok);
    closeAll(writer, 127);
    EXPECT_EQ(writer.text(), opened(127) + "null" + closed(127));
    EXPECT_EQ(writer.state(), WriteStatus::ok);
}

TEST(WriterDepth, refuses_one_container_more_with_all_that_is_in_it) {
    for (const bool isMap : {false, true}) {
        Writer writer(false, "");
        openAll(writer, 127);
        writer.integer(1);
        const std::string before(writer.text());
        const double nan = std::numeric_limits<double>::quiet_NaN();
        EXPECT_EQ(isMap ? writer.openMap() : writer.openArray(), WriteStatus::maxDepthExceeded);
        EXPECT_EQ(writer.null(), WriteStatus::maxDepthExceeded);
        EXPECT_EQ(writer.boolean(true), WriteStatus::maxDepthExceeded);
        EXPECT_EQ(writer.integer(1), WriteStatus::maxDepthExceeded);
        EXPECT_EQ(writer.real(1), WriteStatus::maxDepthExceeded);
        EXPECT_EQ(writer.real(nan), WriteStatus::maxDepthExceeded);
        EXPECT_EQ(writer.number("1", 1), WriteStatus::maxDepthExceeded);
        EXPECT_EQ(writer.string("a", 1), WriteStatus::maxDepthExceeded);
        EXPECT_EQ(isMap ? writer.closeMap() : writer.closeArray(), WriteStatus::maxDepthExceeded);
        EXPECT_EQ(writer.text(), before);
        EXPECT_TRUE(writer.isFull());
        EXPECT_EQ(writer.integer(2), WriteStatus::ok);
        closeAll(writer, 127);
        EXPECT_EQ(writer.text(), opened(127) + "1,2" + closed(127));
        EXPECT_EQ(writer.state(), WriteStatus::maxDepthExceeded);
    }
}

TEST(WriterDepth, refuses_any_number_of_containers_more) {
    constexpr int k_more = 100000;
    Writer writer(false, "");
    openAll(writer, 127);
    for (int i = 0; i < k_more; ++i) {
        ASSERT_EQ(i % 3 == 0 ? writer.openMap() : writer.openArray(),
                  WriteStatus::maxDepthExceeded);
        ASSERT_TRUE(writer.isFull());
    }
    for (int i = 0; i < k_more; ++i) {
        ASSERT_EQ(i % 3 == 0 ? writer.closeMap() : writer.closeArray(),
                  WriteStatus::maxDepthExceeded);
    }
    EXPECT_EQ(writer.null(), WriteStatus::ok);
    closeAll(writer, 127);
    EXPECT_EQ(writer.text(), opened(127) + "null" + closed(127));
}

TEST(WriterDepth, refuses_for_the_key_first) {
    Writer writer(false, "");
    openAll(writer, 126);
    writer.openMap();
    EXPECT_TRUE(writer.isFull());
    EXPECT_EQ(writer.openMap(), WriteStatus::keysMustBeStrings);
    EXPECT_EQ(writer.openArray(), WriteStatus::keysMustBeStrings);
    writer.string("a", 1);
    EXPECT_EQ(writer.openArray(), WriteStatus::maxDepthExceeded);
    EXPECT_EQ(writer.closeArray(), WriteStatus::maxDepthExceeded);
    writer.null();
    writer.closeMap();
    closeAll(writer, 126);
    EXPECT_EQ(writer.text(), opened(126) + "{\"a\":null}" + closed(126));
}

TEST(WriterDepth, opens_again_after_a_close) {
    Writer writer(false, "");
    openAll(writer, 127);
    writer.closeArray();
    EXPECT_FALSE(writer.isFull());
    closeAll(writer, 126);
    EXPECT_FALSE(writer.isFull());
    EXPECT_EQ(writer.openArray(), WriteStatus::generationComplete);
    EXPECT_EQ(writer.text(), opened(127) + closed(127));
}

TEST(WriterDepth, indents_every_level) {
    Writer writer(true, " ");
    std::string expected;
    for (unsigned int i = 0; i < 127; ++i) {
        writer.openArray();
        expected += std::string(i, ' ') + "[\n";
    }
    expected += '\n';
    for (unsigned int i = 127; i-- > 0;) {
        writer.closeArray();
        expected += std::string(i, ' ') + "]\n";
    }
    EXPECT_EQ(writer.text(), expected);
}

}  // namespace
}  // namespace yajlTests
