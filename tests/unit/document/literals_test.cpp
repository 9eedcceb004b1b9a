// SPDX-License-Identifier: MIT
//
// The literals for values and paths.

#include <ko/Orvid/literals.h>

#include <gtest/gtest.h>
#include <ko/Orvid/Exception.h>

#include "support/Document.h"

namespace {

using namespace ko::Orvid::literals;
using ko::Orvid::Element;
using ko::Orvid::ParseException;
using orvid_test::compact;
using orvid_test::thrownBy;

TEST(JsonLiteral, is_the_value_of_the_text) {
    const Element value = R"({"a": [1, 2.50], "b": null})"_json;
    EXPECT_EQ(compact(value), R"({"a": [1,2.50],"b": null})");
    CHECK_LINKS(value);
    EXPECT_EQ(compact("12"_json), "12");
}

TEST(JsonLiteral, is_read_strictly) {
    for (const char* text : {"", "[1", "1 2", "{\"a\": 1, \"a\": 2}", "\"\xff\""}) {
        EXPECT_THROW(static_cast<void>(operator""_json(text, std::char_traits<char>::length(text))),
                     ParseException)
            << text;
    }
    const auto error = thrownBy<ParseException>([] { static_cast<void>("[1,\n x]"_json); });
    EXPECT_EQ(error.firstLine(), 2);
    EXPECT_EQ(error.firstColumn(), 2);
}

TEST(PathLiteral, is_the_path) {
    EXPECT_EQ("a.b[3]"_path.str(), "a.b[3]");
    EXPECT_EQ(""_path.str(), "");
    EXPECT_EQ("list[*]"_path.str(), "list[*]");
}

TEST(PathLiteral, must_be_well_formed) {
    const auto error = thrownBy<ParseException>([] { static_cast<void>("a[x]"_path); });
    EXPECT_EQ(error.firstColumn(), 1);
    EXPECT_EQ(error.lastColumn(), 2);
    EXPECT_THROW(static_cast<void>("a."_path), ParseException);
}

}  // namespace
