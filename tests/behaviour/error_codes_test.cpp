// SPDX-License-Identifier: MIT
//
// The code of each error in a text: one row for each code that the library gives.

#include <gtest/gtest.h>
#include <ko/Orvid.h>

#include <functional>
#include <string>
#include <vector>

#include "support/Document.h"

namespace {

using ko::Orvid::DomParser;
using ko::Orvid::Element;
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
         ParseErrorCode::strictSyntax},
        {"a text ends after a comment",
         [] { parseAs("[1 // one", ko::Orvid::ReadOptions::jsonc()); },
         ParseErrorCode::strictSyntax},
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

TEST(ErrorCodes, are_set_once) {
    ParseException error("mine", -1, -1, -1, -1);
    error.addCode(ParseErrorCode::syntax);
    error.addCode(ParseErrorCode::repeatedKey);
    EXPECT_EQ(error.code(), ParseErrorCode::syntax);
}

}  // namespace
