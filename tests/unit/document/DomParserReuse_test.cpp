// SPDX-License-Identifier: MIT
//
// A parser with options after an error and for a second document.

#include <ko/Orvid/DomParser.h>

#include <gtest/gtest.h>

#include <string>

#include "support/Document.h"

namespace orvid_test {
namespace {

using ko::Orvid::DomParser;
using ko::Orvid::Element;
using ko::Orvid::Exception;
using ko::Orvid::ParseException;
using ko::Orvid::ReadOptions;

TEST(DomParserReuse, an_error_ends_the_feeding) {
    Element root;
    DomParser parser(ReadOptions::strict());
    parser.begin(root);
    EXPECT_THROW(parser.feed("[1,]"), ParseException);
    const std::string left = compact(root);
    const auto message = [](const auto& action) {
        return std::string(thrownBy<Exception>(action).what());
    };
    const std::string expected = "No document is being fed: begin() must come first!";
    EXPECT_EQ(message([&] { parser.feed("[2]"); }), expected);
    EXPECT_EQ(message([&] { parser.finish(); }), expected);
    EXPECT_EQ(compact(root), left);
}

TEST(DomParserReuse, a_document_can_begin_after_an_error) {
    Element root;
    DomParser parser(ReadOptions::strict());
    parser.begin(root);
    EXPECT_THROW(parser.feed("[1,]"), ParseException);
    parser.begin(root);
    parser.feed("[1,");
    parser.feed("2]");
    parser.finish();
    EXPECT_EQ(compact(root), "[1,2]");
    EXPECT_EQ(parser.state(), 0);
    CHECK_LINKS(root);
}

TEST(DomParserReuse, feeding_needs_a_beginning) {
    Element root;
    DomParser parser(ReadOptions::strict());
    EXPECT_THROW(parser.feed("[1]"), Exception);
    parser.begin(root);
    parser.feed("[1]");
    parser.finish();
    EXPECT_THROW(parser.finish(), Exception);
    EXPECT_EQ(compact(root), "[1]");
}

}  // namespace
}  // namespace orvid_test
