// SPDX-License-Identifier: MIT
//
// What reading asks of the heap does not depend on how the text comes: repeated keys of a wide
// object are found without its index, which would be a block for each member, wherever the text is
// cut.

#include <ko/Orvid.h>

#include <gtest/gtest.h>

#include <cstddef>
#include <fstream>
#include <sstream>
#include <string>
#include <string_view>

#include "support/CountedMemory.h"
#include "support/ScratchFolder.h"

namespace orvid_test {
namespace {

using ko::Orvid::DomParser;
using ko::Orvid::Element;

constexpr std::size_t k_members = 20000;

/// Keys that are kept without a block of their own, and the last of them twice.
std::string wideObject() {
    std::string text;
    for (std::size_t i = 0; i < k_members; ++i) {
        text += (i == 0 ? "{\"" : ",\"") + std::to_string(i) + "\":null";
    }
    return text + ",\"" + std::to_string(k_members - 1) + "\":true}";
}

/// Reads, and returns how many blocks that took.
template<class Read>
std::size_t requestsOf(const Read& read) {
    Element root;
    const std::size_t before = allocationCount();
    read(root);
    const std::size_t requests = allocationCount() - before;
    EXPECT_EQ(root.object().size(), k_members);
    EXPECT_TRUE(root.object()[std::to_string(k_members - 1)].boolean());
    return requests;
}

constexpr std::size_t k_few = k_members / 20;

TEST(ReadingInPieces, makes_no_index_of_a_wide_object_that_comes_whole) {
    const std::string text = wideObject();
    EXPECT_LT(requestsOf([&](Element& root) { DomParser().parse(root, text); }), k_few);
}

TEST(ReadingInPieces, makes_no_index_of_a_wide_object_that_is_fed) {
    const std::string text = wideObject();
    const std::size_t requests = requestsOf([&](Element& root) {
        DomParser parser;
        parser.begin(root);
        for (std::size_t at = 0; at < text.size(); at += 4096) {
            parser.feed(std::string_view(text).substr(at, 4096));
        }
        parser.finish();
    });
    EXPECT_LT(requests, k_few);
}

TEST(ReadingInPieces, makes_no_index_of_a_wide_object_in_a_stream) {
    const ScratchFolder folder;
    const std::string file = folder.makeFile("a.json", wideObject());
    const auto readLenient = [&](Element& root) {
        std::ifstream in(file, std::ios_base::binary);
        in >> root;
    };
    const auto readToEnd = [&](Element& root) {
        std::ifstream in(file, std::ios_base::binary);
        ko::Orvid::ReadOptions options;
        options.requireWholeDocument = true;
        DomParser(options).parse(root, in);
    };
    EXPECT_LT(requestsOf(readLenient), k_few);
    EXPECT_LT(requestsOf(readToEnd), k_few);
}

/// The first slab fits the piece that comes first, so that it is not many small ones.
TEST(ReadingInPieces, takes_a_small_document_from_a_stream_with_as_few_slabs_as_from_a_text) {
    std::string text = "[";
    for (int i = 0; i < 500; ++i) {
        text += std::to_string(i) + ",";
    }
    text += "0]";
    const auto read = [&](const ko::Orvid::ReadOptions& options, bool isStream) {
        Element root;
        std::istringstream in(text);
        DomParser parser(options);
        const std::size_t before = allocationCount();
        if (isStream) {
            parser.parse(root, in);
        } else {
            parser.parse(root, text);
        }
        EXPECT_EQ(root.array().size(), 501U);
        return allocationCount() - before;
    };
    ko::Orvid::ReadOptions whole;
    whole.requireWholeDocument = true;
    for (const ko::Orvid::ReadOptions& options : {ko::Orvid::ReadOptions(), whole}) {
        EXPECT_LE(read(options, true), read(options, false) + 1) << "one for pieces";
    }
}

}  // namespace
}  // namespace orvid_test
