// SPDX-License-Identifier: MIT
//
// A file stream is read by pieces of its own length. Nobody may see where they end: not in the
// tree, not in an error, and not in where the stream stands, which is where it is for a subclass,
// whose text comes from the stream's buffer.

#include <gtest/gtest.h>

#include <cstddef>
#include <fstream>
#include <string>
#include <string_view>
#include <vector>

#include "support/FileReaders.h"
#include "support/ScratchFolder.h"

namespace {

/// What libstdc++ reads at once into the buffer of a file.
constexpr std::size_t k_buffer = 8191;

/// An array of strings that is so long, and not closed.
std::string filler(std::size_t length) {
    std::string text = "[";
    while (text.size() + 130 < length) {
        text += '"' + std::string(100, 'x') + "\",\n";
    }
    return text + std::string(length - text.size(), ' ');
}

void expectSame(const std::string& text, std::size_t skipped = 0) {
    const orvid_test::ScratchFolder folder;
    const std::string file = folder.makeFile("a.json", std::string(skipped, ' ') + text);
    // Not EXPECT_EQ, which would print all of the tree.
    EXPECT_TRUE(orvid_test::fileReadersDiffer({}, file, skipped).empty())
        << text.size() << " bytes";
}

TEST(FileStream, ends_are_seen_by_nobody_wherever_an_error_lies) {
    const std::vector<std::string> oddities{"nulx,1]", "\"\\u12g4\",1]", "\"\\ud800\",1]", "1.e,2]",
                                            "/x]",     "12 34]",         "]] 12"};
    for (const std::string& oddity : oddities) {
        // The first buffer, the last of the first long piece, and the one after it.
        for (const std::size_t buffers : {1U, 2U, 16U, 17U}) {
            for (const int distance : {-4, -2, -1, 0, 1}) {
                const std::size_t at = buffers * k_buffer + static_cast<std::size_t>(distance);
                const std::string text = filler(at) + oddity;
                expectSame(text + std::string(70000, ' ') + "[3]");
                expectSame(text);
            }
        }
    }
}

TEST(FileStream, what_was_read_from_it_before_does_not_matter) {
    for (const std::size_t skipped : {1U, 255U, 8190U, 8191U, 8192U}) {
        expectSame(filler(150000) + "1]", skipped);
        expectSame(filler(150000) + "tru]" + std::string(40000, ' '), skipped);
    }
}

TEST(FileStream, tokens_and_nesting_of_any_length_go_on_in_the_next_piece) {
    for (const std::size_t length : {200U, 300U, 70000U, 300000U}) {
        const std::string text = filler(130900) + '"' + std::string(length, 'y');
        expectSame(text + "\"]" + std::string(50000, ' '));
        expectSame(text + "\n\"]" + std::string(50000, ' '));
        expectSame(filler(40000) + std::string(length / 100, '[') + std::string(100000, ' ') + "x");
    }
}

TEST(FileStream, the_last_byte_can_be_put_back_though_no_buffer_holds_it) {
    expectSame(filler(16 * k_buffer - 2) + "1]");
}

TEST(FileStream, a_file_that_was_read_to_its_end_can_be_read_again) {
    const orvid_test::ScratchFolder folder;
    const std::string text = filler(200000) + "1]";
    std::ifstream in(folder.makeFile("a.json", text), std::ios_base::binary);
    ko::Orvid::Element root;
    ko::Orvid::DomParser().parse(root, in);
    EXPECT_EQ(in.tellg(), std::streampos(static_cast<std::streamoff>(text.size())));
    in.seekg(0);
    ko::Orvid::Element again;
    ko::Orvid::DomParser().parse(again, in);
    EXPECT_EQ(again.array().size(), root.array().size());
    EXPECT_TRUE(root == again);
}

}  // namespace
