// SPDX-License-Identifier: MIT
//
// A writer that is used again after memory was refused to it.

#include "text/Writer.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <new>
#include <string>

#include "support/CountedMemory.h"

namespace orvid_test {
namespace {

using ko::Orvid::text::Layout;
using ko::Orvid::text::Writer;

void openArrays(Writer& writer, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
        writer.openArray();
    }
}

TEST(WriterWithoutMemory, begins_anew_with_room_for_all_levels) {
    Layout layout;
    layout.isIndented = true;
    layout.indent = " ";
    std::string expected;
    for (std::size_t i = 0; i < 70; ++i) {
        expected += std::string(i, ' ') + "[\n";
    }
    bool isRefused = true;
    for (std::size_t number = 1; isRefused; ++number) {
        Writer writer(layout);
        refuseAllocation(number, Refusal::once);
        try {
            openArrays(writer, 70);
        } catch (const std::bad_alloc&) {
            EXPECT_LT(writer.text().size(), expected.size());
        }
        isRefused = refuseNone();
        writer.restart();
        openArrays(writer, 70);
        const std::string text(writer.text());
        EXPECT_EQ(text, expected);
        ASSERT_LT(number, 100U) << "no end of requests";
    }
}

}  // namespace
}  // namespace orvid_test
