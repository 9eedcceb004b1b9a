// SPDX-License-Identifier: MIT
//
// Documents come back as they were: read, written, read and written again they give equal trees and
// the same text, and every number of the input stands in the output letter for letter. The
// documents are the JSON files of Debian's iso-codes, those of the folder that the environment
// variable ORVID_CORPUS names, and a few that hold what such files lack.

#include <ko/Orvid.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>
#include <vector>

#include "support/Document.h"
#include "support/NumberTokens.h"

namespace {

using ko::Orvid::Dom;
using ko::Orvid::DomParser;
using ko::Orvid::Element;
using ko::Orvid::Generator;
using orvid_test::compact;
using orvid_test::Document;
using orvid_test::numberTokens;
using Tokens = std::vector<std::string>;

std::string contentsOf(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

/// Reads the text into `root` as one piece; all of it must be one value.
void read(Element& root, const std::string& text) {
    DomParser parser;
    parser.parse(root, text + "\n");
    ASSERT_EQ(parser.state(), 0);
    EXPECT_EQ(text.find_first_not_of(" \t\r\n", static_cast<std::size_t>(parser.position())),
              std::string::npos);
}

std::string write(const Element& root) {
    Generator generator;
    std::string text = generator.encode(root);
    EXPECT_EQ(generator.state(), 0);
    return text;
}

void expectRoundTrip(const std::string& text) {
    Element first;
    ASSERT_NO_FATAL_FAILURE(read(first, text));
    CHECK_LINKS(first);
    const std::string firstText = write(first);
    EXPECT_TRUE(numberTokens(text) == numberTokens(firstText)) << "numbers differ";

    Element second;
    ASSERT_NO_FATAL_FAILURE(read(second, firstText));
    EXPECT_EQ(Element::compare(first.data(), second.data()), 0);
    EXPECT_TRUE(firstText == write(second)) << "texts differ";
    const Element copy(first);
    EXPECT_TRUE(firstText == write(copy)) << "the text of a copy differs";
}

/// The same through streams, where the text comes in pieces.
void expectStreamRoundTrip(const std::filesystem::path& path, const std::string& text) {
    std::ifstream in(path, std::ios::binary);
    Element streamed;
    in >> streamed;
    Element whole;
    ASSERT_NO_FATAL_FAILURE(read(whole, text));
    EXPECT_EQ(Element::compare(whole.data(), streamed.data()), 0);
    std::ostringstream out;
    out << streamed;
    EXPECT_TRUE(out.str() == write(whole)) << "the text of the stream differs";
}

/// All JSON files below the folder, in the order of their names.
std::vector<std::filesystem::path> jsonFilesOf(const std::filesystem::path& folder) {
    std::vector<std::filesystem::path> files;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
        if (entry.is_regular_file() && entry.path().extension() == ".json") {
            files.push_back(entry.path());
        }
    }
    std::sort(files.begin(), files.end());
    return files;
}

void expectFilesRoundTrip(const std::filesystem::path& folder) {
    const auto files = jsonFilesOf(folder);
    EXPECT_FALSE(files.empty()) << "no JSON files in " << folder;
    for (const auto& file : files) {
        SCOPED_TRACE(file);
        const std::string text = contentsOf(file);
        ASSERT_FALSE(text.empty());
        expectRoundTrip(text);
        expectStreamRoundTrip(file, text);
    }
}

TEST(RoundTrip, keeps_the_files_of_iso_codes) {
    const std::filesystem::path folder = "/usr/share/iso-codes/json";
    if (!std::filesystem::is_directory(folder)) {
        GTEST_SKIP() << "NOT TESTED: " << folder << " is missing (package iso-codes)";
    }
    expectFilesRoundTrip(folder);
}

TEST(RoundTrip, keeps_the_files_of_a_corpus) {
    const char* const folder = std::getenv("ORVID_CORPUS");
    if (folder == nullptr) {
        GTEST_SKIP() << "NOT TESTED: set ORVID_CORPUS to a folder of JSON files";
    }
    expectFilesRoundTrip(folder);
}

TEST(RoundTrip, keeps_numbers_of_every_form) {
    expectRoundTrip(
        "[0,-0,1,-1,0.0,-0.0,0.10,1.50,1e0,1E0,1e+0,1E-0,1e10,1E+10,-1.25e-10,9007199254740993,"
        "9223372036854775807,-9223372036854775808,9223372036854775808,18446744073709551615,"
        "0.1234567890123456789012345678901234567890,1.7976931348623157e308]");
}

TEST(RoundTrip, keeps_numbers_that_no_binary_type_holds) {
    const std::string text =
        "[1e400,-1E999,18446744073709551616,-9223372036854775809,"
        "123456789012345678901234567890123456789012345678901234567890]";
    const Document doc(text);
    const std::string written = write(doc.root);
    EXPECT_EQ(numberTokens(written), numberTokens(text));
    EXPECT_EQ(write(Document(written).root), written);
}

TEST(RoundTrip, keeps_top_level_values_of_every_kind) {
    for (const char* const text :
         {"null", "true", "false", "0", "-1.50E+7", "\"\"", "\"x\"", "[]", "{}"}) {
        SCOPED_TRACE(text);
        expectRoundTrip(text);
        Element root;
        read(root, text);
        EXPECT_EQ(compact(root), text);
    }
}

TEST(RoundTrip, keeps_strings_and_keys_of_every_byte) {
    std::string text = "{";
    for (int byte = 0; byte < 256; ++byte) {
        char code[8];
        std::snprintf(code, sizeof code, "\\u%04X", static_cast<unsigned int>(byte));
        const bool isRaw = byte >= 0x20 && byte != '"' && byte != '\\';
        const std::string one = isRaw ? std::string(1, static_cast<char>(byte)) : code;
        text += (byte == 0 ? "\"" : ",\"") + one + "\":\"" + one + one + "\"";
    }
    text += "}";
    expectRoundTrip(text);
    const Document doc(text);
    EXPECT_EQ(doc.root.object().size(), 256u);
    const std::string zero(1, '\0');
    EXPECT_EQ(doc.root.object().find(zero)->second.string(), zero + zero);
}

TEST(RoundTrip, keeps_the_order_of_members) {
    std::string text = "{";
    for (int i = 0; i < 1000; ++i) {
        text +=
            (i == 0 ? "\"" : ",\"") + std::to_string(i * 7919 % 1000) + "\":" + std::to_string(i);
    }
    text += "}";
    expectRoundTrip(text);
    EXPECT_EQ(numberTokens(Generator().encode(Document(text).root)), numberTokens(text));
}

TEST(RoundTrip, drops_comments_and_whitespace_alone) {
    const std::string text = "// first\n{ /* a */ \"a\" : [ 1 , /* 2 */ 3.0 ] }";
    expectRoundTrip(text);
    EXPECT_EQ(compact(Document(text).root), R"({"a": [1,3.0]})");
}

TEST(RoundTrip, is_done_in_place_as_well) {
    const Document doc(R"({"b":[1.50,{"a":null}],"":"x"})");
    std::stringstream through;
    through << doc.root;
    Document again("[\"before\"]");
    through >> again.root;
    EXPECT_EQ(compact(again.root), compact(doc.root));
    CHECK_LINKS(again.root);
}

TEST(RoundTrip, of_a_document_keeps_all_but_its_meta_member) {
    Document doc(R"({"x":1,"meta":{"schema":{}},"y":[2]})");
    Dom dom;
    dom.setRoot(doc.root, false);
    std::stringstream through;
    through << dom;
    Document again("null");
    Dom other;
    other.setRoot(again.root, false);
    through >> other;
    EXPECT_EQ(compact(again.root), R"({"x": 1,"y": [2]})");
}

// The check of numbers stands on this.
TEST(NumberTokens, are_found_outside_of_strings_and_comments) {
    EXPECT_EQ((Tokens{"1", "-2.5e+10", "0", "3"}),
              numberTokens(R"({"7":1,"a\"8\\":[-2.5e+10,0/*9*/,true],"b":"\\",// 5)"
                           "\n\"c\":3}"));
    EXPECT_EQ(numberTokens("42"), (Tokens{"42"}));
    EXPECT_EQ(numberTokens(R"(["1","\"2"])"), Tokens());
}

}  // namespace
