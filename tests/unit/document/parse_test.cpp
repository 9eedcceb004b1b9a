// SPDX-License-Identifier: MIT
//
// Tests of parse(): whole documents, from text and from streams.

#include <ko/Orvid/parse.h>

#include <sstream>
#include <string>
#include <string_view>

#include "support/Document.h"

namespace {

using ko::Orvid::Element;
using ko::Orvid::Exception;
using ko::Orvid::parse;
using ko::Orvid::ParseException;
using ko::Orvid::ReadOptions;
using orvid_test::compact;
using orvid_test::thrownBy;

TEST(parse, gives_the_value_of_a_text) {
    const Element root = parse(R"({"b":[1.50,{}],"a":"x"})");
    EXPECT_EQ(compact(root), R"({"b": [1.50,{}],"a": "x"})");
    EXPECT_EQ(root.parent(), nullptr);
    CHECK_LINKS(root);
}

TEST(parse, takes_a_number_that_the_end_of_the_text_completes) {
    EXPECT_EQ(parse("42").number().toString(), "42");
    EXPECT_EQ(parse(std::string_view("-0.10 7").substr(0, 5)).number().toString(), "-0.10");
}

TEST(parse, refuses_a_text_that_is_no_whole_document_whatever_the_options_say) {
    for (const ReadOptions& options : {ReadOptions(), ReadOptions::strict()}) {
        for (const char* const text : {"", " ", "[1", "[1] 2", "{\"a\":", "tru"}) {
            SCOPED_TRACE(text);
            EXPECT_THROW(parse(text, options), ParseException);
        }
    }
}

TEST(parse, goes_by_the_options_otherwise) {
    constexpr const char* k_repeated = R"({"a":1,"a":2})";
    EXPECT_THROW(parse(k_repeated), ParseException);
    EXPECT_EQ(compact(parse(k_repeated, ReadOptions())), R"({"a": 2})");
}

TEST(parse, names_the_line_and_the_column_of_an_error) {
    const auto error = thrownBy<ParseException>([] { parse("{\n  \"a\": tru\n}"); });
    EXPECT_EQ(error.firstLine(), 2);
    EXPECT_EQ(error.firstColumn(), 11);
}

TEST(parse, reads_all_of_a_stream) {
    std::istringstream in(" [1,\n2]\n ");
    EXPECT_EQ(compact(parse(in)), "[1,2]");
    EXPECT_TRUE(in.eof());
    EXPECT_FALSE(in.fail());
}

TEST(parse, reads_one_document_of_a_stream_and_no_other) {
    std::istringstream in("[1] [2]");
    EXPECT_THROW(parse(in), ParseException);
}

TEST(parse, refuses_a_stream_that_cannot_be_read) {
    std::istringstream in("[1]");
    in.setstate(std::ios_base::failbit);
    EXPECT_THROW(parse(in), Exception);
}

}  // namespace
