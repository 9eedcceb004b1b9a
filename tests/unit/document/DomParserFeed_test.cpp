// SPDX-License-Identifier: MIT
//
// Tests of DomParser with a document in pieces, from begin() to finish(), of its reuse, and of
// streams that are read strictly. That pieces make no difference is in chunked_reading_test.cpp.

#include <ko/Orvid/DomParser.h>

#include <fstream>
#include <istream>
#include <sstream>
#include <stdexcept>
#include <streambuf>
#include <string>
#include <utility>

#include "support/Reading.h"

namespace {

using ko::Orvid::Dom;
using ko::Orvid::DomParser;
using ko::Orvid::Element;
using ko::Orvid::Exception;
using ko::Orvid::ParseException;
using ko::Orvid::ReadOptions;
using orvid_test::compact;
using orvid_test::Document;
using orvid_test::errorText;
using orvid_test::thrownBy;

/// The text of the Exception that the action must throw.
template<class Action>
std::string messageOf(const Action& action) {
    return thrownBy<Exception>(action).what();
}

constexpr const char* k_notFed = "No document is being fed: begin() must come first!";

TEST(DomParserFeed, builds_a_document_from_pieces) {
    Element root("before");
    DomParser parser;
    parser.begin(root);
    EXPECT_TRUE(root.isNull());
    for (const char* const piece : {"{\"a", "\": [1", "2, tr", "ue], \"b\":", "{}}"}) {
        parser.feed(piece);
    }
    parser.finish();
    EXPECT_EQ(compact(root), R"({"a": [12,true],"b": {}})");
    EXPECT_EQ(parser.state(), 0);
    EXPECT_EQ(parser.openElement(), nullptr);
    CHECK_LINKS(root);
}

/// If each byte made the value be read again from its beginning, this would take hours.
TEST(DomParserFeed, reads_a_long_value_that_comes_byte_by_byte) {
    const std::string value(1000000, 'x');
    for (const ReadOptions& options : {ReadOptions(), ReadOptions::strict()}) {
        Element root;
        DomParser parser(options);
        parser.begin(root);
        parser.feed("[\"");
        for (const char& c : value) {
            parser.feed(std::string_view(&c, 1));
        }
        parser.feed("\"]");
        parser.finish();
        EXPECT_EQ(root.get("[0]").string(), value);
    }
}

TEST(DomParserFeed, shows_what_is_built_so_far) {
    Element root;
    DomParser parser;
    parser.begin(root);
    parser.feed("{\"a\": [1, 2");
    EXPECT_EQ(compact(root), R"({"a": [1]})");
    EXPECT_EQ(parser.state(), 2);
    EXPECT_EQ(parser.position(), 11U);
}

TEST(DomParserFeed, completes_a_number_at_the_end_of_the_text) {
    Element root;
    DomParser parser;
    parser.begin(root);
    parser.feed("4");
    parser.feed("2");
    EXPECT_TRUE(root.isNull());
    parser.finish();
    EXPECT_EQ(compact(root), "42");
    EXPECT_EQ(parser.state(), 0);
    EXPECT_EQ(parser.position(), 2U);
}

TEST(DomParserFeed, leaves_a_text_that_ends_early_to_the_caller_unless_it_must_be_whole) {
    Element root;
    DomParser parser;
    parser.begin(root);
    parser.feed("{\"a\": [-");
    parser.finish();
    EXPECT_EQ(compact(root), R"({"a": []})");
    EXPECT_EQ(parser.state(), 2);
    ASSERT_NE(parser.openElement(), nullptr);
    EXPECT_EQ(parser.openElement()->path(), "a");

    DomParser strict(ReadOptions::strict());
    strict.begin(root);
    strict.feed("{\"a\": [-");
    EXPECT_EQ(errorText(thrownBy<ParseException>([&] { strict.finish(); })),
              "1,9-1,9 @a: The text ends before the document is complete");
    EXPECT_EQ(strict.openElement(), nullptr);
    EXPECT_EQ(strict.position(), 8U);
}

TEST(DomParserFeed, places_errors_also_when_it_is_lenient) {
    Element root;
    DomParser parser;
    parser.begin(root);
    parser.feed("[1,\n");
    EXPECT_EQ(errorText(thrownBy<ParseException>([&] { parser.feed("]"); })),
              "2,1-2,1 @: Unexpected ']' after a comma: trailing commas are not allowed");
    EXPECT_EQ(compact(root), "[1]");
}

TEST(DomParserFeed, is_over_after_an_error) {
    Element root;
    DomParser parser(ReadOptions::strict());
    parser.begin(root);
    EXPECT_THROW(parser.feed("x"), ParseException);
    EXPECT_EQ(messageOf([&] { parser.feed("[]"); }), k_notFed);
    EXPECT_EQ(messageOf([&] { parser.finish(); }), k_notFed);
    EXPECT_TRUE(root.isNull());
}

TEST(DomParserFeed, needs_a_begin) {
    Element root;
    for (const ReadOptions& options : {ReadOptions(), ReadOptions::strict()}) {
        DomParser parser(options);
        EXPECT_EQ(messageOf([&] { parser.feed("1"); }), k_notFed);
        EXPECT_EQ(messageOf([&] { parser.finish(); }), k_notFed);
        parser.begin(root);
        parser.feed("[]");
        parser.finish();
        EXPECT_EQ(messageOf([&] { parser.finish(); }), k_notFed);
        EXPECT_EQ(messageOf([&] { parser.feed(""); }), k_notFed);
    }
}

TEST(DomParserFeed, begins_a_document_of_its_own_each_time) {
    Element first;
    Element second;
    DomParser parser(ReadOptions::strict());
    parser.begin(first);
    parser.feed("[1,\n2,");
    parser.begin(second);
    EXPECT_EQ(errorText(thrownBy<ParseException>([&] { parser.feed("{\"a\":\n x"); })),
              "2,2-2,2 @a: Unexpected 'x': expected a value");
    EXPECT_EQ(parser.position(), 7U);
    EXPECT_EQ(compact(first), "[1,2]");
    parser.begin(first);
    parser.feed("true");
    parser.finish();
    EXPECT_EQ(compact(first), "true");
    EXPECT_EQ(parser.position(), 4U);
}

TEST(DomParserFeed, parse_ends_what_was_begun) {
    Element root;
    Element other;
    for (const ReadOptions& options : {ReadOptions(), ReadOptions::strict()}) {
        DomParser parser(options);
        parser.begin(root);
        parser.parse(other, "[1]");
        EXPECT_EQ(compact(other), "[1]");
        EXPECT_THROW(parser.feed("[]"), Exception);
    }
}

TEST(DomParserFeed, strict_parses_are_documents_of_their_own) {
    Element root;
    DomParser parser(ReadOptions::strict());
    parser.parse(root, "[1]");
    EXPECT_THROW(parser.parse(root, "[1,\n2"), ParseException);
    EXPECT_EQ(errorText(thrownBy<ParseException>([&] { parser.parse(root, "[x"); })),
              "1,2-1,2 @: Unexpected 'x': expected a value or ']'");
    parser.parse(root, "{\"a\": 2}", 8);
    EXPECT_EQ(compact(root), "{\"a\": 2}");
    EXPECT_EQ(parser.position(), 8U);
}

TEST(DomParserFeed, lenient_parses_with_checks_go_on_with_their_text) {
    ReadOptions options;
    options.maxLength = 6;
    Element root;
    DomParser parser(options);
    parser.parse(root, "[1]");
    parser.parse(root, "x");
    EXPECT_TRUE(root.isNull());
    EXPECT_EQ(parser.state(), 0);
    EXPECT_EQ(errorText(thrownBy<ParseException>([&] { parser.parse(root, "yzz"); })),
              "1,7-1,7 @: The text is longer than 6 bytes");
    EXPECT_EQ(messageOf([&] { parser.parse(root, "[]"); }), "An error has ended the document!");
}

TEST(DomParserFeed, strict_text_may_lie_in_the_value_that_it_replaces) {
    Element root(R"({"a": "a text that is too long to be kept in place"})");
    DomParser(ReadOptions::strict()).parse(root, root.string());
    EXPECT_EQ(compact(root), R"({"a": "a text that is too long to be kept in place"})");
}

TEST(DomParserFeed, errors_name_the_element_by_its_whole_path) {
    const Document doc(R"({"x": [0, {"y": 1}]})");
    Element& place = const_cast<Element&>(doc.root.get("x[1].y"));
    DomParser parser(ReadOptions::strict());
    EXPECT_EQ(errorText(thrownBy<ParseException>([&] { parser.parse(place, R"({"a":x)"); })),
              "1,6-1,6 @x[1].y.a: Unexpected 'x': expected a value");
    EXPECT_EQ(errorText(thrownBy<ParseException>([&] { parser.parse(place, "{} x"); })),
              "1,4-1,4 @x[1].y: Unexpected 'x': the document is complete");
    EXPECT_EQ(compact(doc.root), R"({"x": [0,{"y": {}}]})");
    CHECK_LINKS(doc.root);
}

TEST(DomParserFeed, reads_the_root_of_a_document) {
    Element root;
    Dom dom;
    dom.setRoot(root, false);
    DomParser parser(ReadOptions::strict());
    parser.parse(dom, "[1]");
    EXPECT_EQ(compact(root), "[1]");
    std::istringstream in("[2]");
    parser.parse(dom, in);
    EXPECT_EQ(compact(root), "[2]");
    EXPECT_THROW(parser.parse(dom, "[3", 2), ParseException);
}

/// A stream that never knows how much there is to come, like a pipe, and may fail at its end.
class Pipe : public std::streambuf {
public:
    Pipe(std::string text, bool fails) : m_text(std::move(text)), m_fails(fails) {}

protected:
    int_type underflow() override {
        if (m_next < m_text.size()) {
            m_byte = m_text[m_next++];
            setg(&m_byte, &m_byte, &m_byte + 1);
            return traits_type::to_int_type(m_byte);
        }
        if (m_fails) {
            throw std::runtime_error("the disk is gone");
        }
        return traits_type::eof();
    }

private:
    std::string m_text;
    std::size_t m_next = 0;
    char m_byte = 0;
    bool m_fails;
};

TEST(DomParserFeed, a_stream_is_waited_for_when_the_document_must_be_whole) {
    Pipe pipe("{\"a\": [1,\n2]}", false);
    std::istream in(&pipe);
    Element root;
    DomParser(ReadOptions::strict()).parse(root, in);
    EXPECT_EQ(compact(root), R"({"a": [1,2]})");
    EXPECT_EQ(in.rdstate(), std::ios_base::eofbit);
}

TEST(DomParserFeed, a_stream_may_throw_at_its_end_when_asked_to) {
    std::istringstream in("[1]");
    in.exceptions(std::ios_base::failbit | std::ios_base::badbit);
    Element root;
    DomParser(ReadOptions::strict()).parse(root, in);
    EXPECT_EQ(compact(root), "[1]");
}

TEST(DomParserFeed, a_stream_that_fails_is_no_end_of_the_text) {
    Pipe pipe("[1, 2] ", true);
    std::istream in(&pipe);
    Element root;
    DomParser parser(ReadOptions::strict());
    EXPECT_EQ(messageOf([&] { parser.parse(root, in); }), "The stream has failed!");
    EXPECT_TRUE(in.bad());
}

TEST(DomParserFeed, a_stream_that_is_not_good_is_reported) {
    std::ifstream in("/there/is/no/such/file.json");
    Element root("before");
    DomParser parser(ReadOptions::strict());
    EXPECT_EQ(messageOf([&] { parser.parse(root, in); }), "The stream cannot be read!");
    EXPECT_TRUE(root.isNull());
}

TEST(DomParserFeed, a_stream_that_is_not_good_is_empty_unless_the_document_must_be_whole) {
    std::istringstream in("[1]");
    in.setstate(std::ios_base::failbit);
    Element root("before");
    ReadOptions options;
    options.validateUtf8 = true;
    DomParser parser(options);
    parser.parse(root, in);
    EXPECT_TRUE(root.isNull());
    EXPECT_EQ(parser.position(), 0U);
    EXPECT_EQ(in.rdstate(), std::ios_base::failbit);
}

TEST(DomParserFeed, a_stream_ends_early_as_a_text_does) {
    std::istringstream in("");
    Element root;
    DomParser parser(ReadOptions::strict());
    EXPECT_EQ(errorText(thrownBy<ParseException>([&] { parser.parse(root, in); })),
              "1,1-1,1 @: The text ends before the document is complete");
}

}  // namespace
