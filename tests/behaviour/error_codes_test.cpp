// SPDX-License-Identifier: MIT
//
// The code of each error in a text: one row for each code that the library gives.

#include <gtest/gtest.h>
#include <ko/Orvid.h>

#include <functional>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

#include "support/Document.h"

namespace {

using ko::Orvid::DomParser;
using ko::Orvid::Element;
using ko::Orvid::ExpectedToken;
using ko::Orvid::JsonPath;
using ko::Orvid::JsonPointer;
using ko::Orvid::ParseErrorCode;
using ko::Orvid::ParseException;
using ko::Orvid::Path;
using orvid_test::thrownBy;

struct Row {
    const char* why;
    std::function<void()> action;
    ParseErrorCode code;
};

void parseAs(const std::string& text, const ko::Orvid::ReadOptions& options) {
    Element root;
    DomParser(options).parse(root, text);
}

/// Calls an event of the tree builder out of order.
struct OutOfOrder : DomParser {
    void run() {
        Element root;
        parse(root, std::string("1"));
        cb_end_map();
    }
};

const std::vector<Row>& rows() {
    static const std::vector<Row> all{
        {"a value is missing", [] { parseAs("[1, ]", {}); }, ParseErrorCode::syntax},
        {"an object ends where none is open", [] { OutOfOrder().run(); },
         ParseErrorCode::eventOutOfOrder},
        {"a step is empty", [] { Path::toSchemaPath("a..b"); }, ParseErrorCode::pathCharacter},
        {"a bracket stays open", [] { Path::toSchemaPath("a[1"); }, ParseErrorCode::pathTruncated},
        {"an index needs 33 bits", [] { Path::toSchemaPath("a[4294967296]"); },
         ParseErrorCode::pathIndexRange},
        {"a lookup names no item", [] { Element().get("[*]"); }, ParseErrorCode::pathNoIndex},
        {"a data path is given", [] { Path::fromSchemaPath("a"); },
         ParseErrorCode::schemaPathPrefix},
        {"an unknown keyword", [] { Path::fromSchemaPath("meta.schema.a"); },
         ParseErrorCode::schemaPathKeyword},
        {"a schema path has an index", [] { Path::fromSchemaPath("meta.schema[0]"); },
         ParseErrorCode::schemaPathIndex},
        {"a pointer begins with a letter", [] { JsonPointer("a"); }, ParseErrorCode::pointerPrefix},
        {"a tilde is alone", [] { JsonPointer("/a~"); }, ParseErrorCode::pointerEscape},
        {"a bracket of a query stays open", [] { JsonPath query("$["); },
         ParseErrorCode::querySyntax},
        {"an index needs 54 bits", [] { JsonPath query("$[9007199254740992]"); },
         ParseErrorCode::queryInteger},
        {"an unknown function", [] { JsonPath query("$[?size(@) > 1]"); },
         ParseErrorCode::queryFunction},
        {"a comparison with many", [] { JsonPath query("$[?@.* == 1]"); },
         ParseErrorCode::queryType},
        {"a thousand parentheses", [] { JsonPath query("$[?" + std::string(1000, '(')); },
         ParseErrorCode::queryNesting},
        {"a comment stays open", [] { parseAs("[1 /* one", ko::Orvid::ReadOptions::jsonc()); },
         ParseErrorCode::commentNotClosed},
        {"a slash is alone", [] { parseAs("[1 /", ko::Orvid::ReadOptions::jsonc()); },
         ParseErrorCode::textTruncated},
        {"a text ends after a comment",
         [] { parseAs("[1 // one", ko::Orvid::ReadOptions::jsonc()); },
         ParseErrorCode::textTruncated},
        {"a string stays open", [] { parseAs("[\"a", ko::Orvid::ReadOptions::strict()); },
         ParseErrorCode::textTruncated},
        {"a comment is refused", [] { parseAs("[1 /* one */]", ko::Orvid::ReadOptions::strict()); },
         ParseErrorCode::commentNotAllowed},
    };
    return all;
}

TEST(ErrorCodes, name_what_a_parse_error_is_about) {
    for (const Row& row : rows()) {
        EXPECT_EQ(thrownBy<ParseException>(row.action).code(), row.code) << row.why;
    }
}

TEST(ErrorCodes, stay_with_copies_and_assignments) {
    const auto error = thrownBy<ParseException>([] { JsonPointer("a"); });
    ParseException other("mine", -1, -1, -1, -1);
    EXPECT_EQ(other.code(), ParseErrorCode::unspecified);
    other = error;
    EXPECT_EQ(other.code(), ParseErrorCode::pointerPrefix);
    EXPECT_EQ(ParseException(error).code(), ParseErrorCode::pointerPrefix);
}

TEST(ErrorTexts, are_the_path_the_pointer_or_the_query) {
    const auto textOf = [](const std::function<void()>& action) {
        return thrownBy<ParseException>(action).text();
    };
    Element root = ko::Orvid::parse(R"({"a":[1]})");
    EXPECT_EQ(textOf([&] { root.get("a..b"); }), "a..b");
    EXPECT_EQ(textOf([&] { root.create("a[1", 1); }), "a[1");
    EXPECT_EQ(textOf([&] { root.get("a[*]"); }), "a[*]");
    EXPECT_EQ(textOf([] { Path::fromSchemaPath("meta.schema.a"); }), "meta.schema.a");
    EXPECT_EQ(textOf([] { JsonPointer("/a~"); }), "/a~");
    EXPECT_EQ(textOf([] { JsonPath query("$.a["); }), "$.a[");
    EXPECT_EQ(textOf([] { parseAs("[1, ]", {}); }), "");
}

TEST(ErrorTexts, are_set_once_and_stay_with_copies) {
    ParseException error("mine", -1, -1, -1, -1);
    EXPECT_EQ(error.text(), "");
    error.addText("a..b");
    error.addText("other");
    error.init("another", 1, 2, 3, 4);
    EXPECT_EQ(ParseException(error).text(), "a..b");
}

struct FoundRow {
    const char* text;
    std::optional<char> found;
    ExpectedToken expected;
};

const FoundRow k_foundRows[] = {
    {"[x]", 'x', ExpectedToken::value},
    {"[1,x]", 'x', ExpectedToken::value},
    {"[1,]", ']', ExpectedToken::value},
    {"{\"a\":}", '}', ExpectedToken::value},
    {"{x", 'x', ExpectedToken::key},
    {"{\"a\":1,}", '}', ExpectedToken::key},
    {"{\"a\" 1}", '1', ExpectedToken::colon},
    {"[1 2]", '2', ExpectedToken::comma},
    {"{\"a\":1 2}", '2', ExpectedToken::comma},
    {"[nul]", ']', ExpectedToken::word},
    {"[tr\xC3\xBC]", '\xC3', ExpectedToken::word},
    {"[-]", ']', ExpectedToken::number},
    {"[1.e]", 'e', ExpectedToken::number},
    {"[\"\\x\"]", 'x', ExpectedToken::escape},
    {"[\"\\u12\n\"]", '\n', ExpectedToken::hexDigit},
    {"[\"\n\"]", '\n', ExpectedToken::character},
    {"[1] 2", '2', ExpectedToken::nothing},
    {"[1", std::nullopt, ExpectedToken::unknown},
    {"[\"\xFF\"]", std::nullopt, ExpectedToken::unknown},
    {"{\"a\":1,\"a\":2}", std::nullopt, ExpectedToken::unknown},
};

/// The error of strict reading, which is the same in single bytes.
ParseException strictErrorOf(const std::string& text) {
    return thrownBy<ParseException>([&] {
        Element root;
        DomParser parser(ko::Orvid::ReadOptions::strict());
        parser.begin(root);
        for (const char c : text) {
            parser.feed({&c, 1});
        }
        parser.finish();
    });
}

TEST(ErrorFound, is_the_byte_that_strict_reading_did_not_expect) {
    for (const FoundRow& row : k_foundRows) {
        const auto whole =
            thrownBy<ParseException>([&] { parseAs(row.text, ko::Orvid::ReadOptions::strict()); });
        for (const ParseException& error : {whole, strictErrorOf(row.text)}) {
            EXPECT_EQ(error.found(), row.found) << row.text;
            EXPECT_EQ(error.expected(), row.expected) << row.text;
        }
    }
}

TEST(ErrorFound, is_unknown_in_lenient_reading) {
    const auto error = thrownBy<ParseException>([] { parseAs("[x]", {}); });
    EXPECT_EQ(error.found(), std::nullopt);
    EXPECT_EQ(error.expected(), ExpectedToken::unknown);
}

TEST(ErrorFound, is_that_of_the_record_in_a_stream_of_lines) {
    std::istringstream in("[1]\n[x]\n");
    ko::Orvid::JsonLines lines(in);
    const auto error = thrownBy<ParseException>([&] {
        for (const Element& record : lines) {
            static_cast<void>(record);
        }
    });
    EXPECT_EQ(error.firstLine(), 2);
    EXPECT_EQ(error.found(), 'x');
    EXPECT_EQ(error.expected(), ExpectedToken::value);
}

TEST(ErrorCodes, are_set_once) {
    ParseException error("mine", -1, -1, -1, -1);
    error.addCode(ParseErrorCode::syntax);
    error.addCode(ParseErrorCode::repeatedKey);
    EXPECT_EQ(error.code(), ParseErrorCode::syntax);
}

}  // namespace
