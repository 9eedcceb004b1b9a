// SPDX-License-Identifier: MIT
//
// Schema steps turned back into data steps: the words that are expected in each state, and the
// errors.

#include <ko/Orvid/FromSchemaPathConverter.h>

#include <gtest/gtest.h>
#include <ko/Orvid/Exception.h>
#include <ko/Orvid/Path.h>

#include <sstream>
#include <string>
#include <vector>

#include "support/Document.h"

namespace orvid_test {
namespace {

using ko::Orvid::FromSchemaPathConverter;
using ko::Orvid::ParseException;
using ko::Orvid::Path;
using ko::Orvid::PathGenerator;
using ko::Orvid::PathParser;

struct Row {
    std::string schema;
    std::string result;  ///< the data path, or the message of the error
};

/// The error of a path that is well-formed but no schema path.
std::string errorOf(const std::string& schema) {
    const auto error = thrownBy<ParseException>([&] { Path::fromSchemaPath(schema); });
    EXPECT_EQ(error.firstLine(), -1);
    EXPECT_EQ(error.firstColumn(), -1);
    EXPECT_EQ(error.lastLine(), -1);
    EXPECT_EQ(error.lastColumn(), -1);
    EXPECT_EQ(error.elementPath(), nullptr);
    EXPECT_EQ(error.what(), error.message());
    return error.message();
}

TEST(FromSchemaPathConverter, writes_nothing_before_the_first_member_or_item) {
    std::ostringstream out;
    PathGenerator generator(out);
    FromSchemaPathConverter converter(generator);
    EXPECT_TRUE(converter.cbObjectProperty("meta"));
    EXPECT_TRUE(converter.cbObjectProperty("schema"));
    EXPECT_TRUE(converter.cbObjectProperty("properties"));
    EXPECT_EQ(out.str(), "");
    EXPECT_TRUE(converter.cbObjectProperty("a.b"));
    EXPECT_EQ(out.str(), R"(a\.b)");
    EXPECT_TRUE(converter.cbObjectProperty("items"));
    EXPECT_EQ(out.str(), R"(a\.b[*])");
}

TEST(FromSchemaPathConverter, converts_whole_paths) {
    const std::vector<Row> rows = {
        {"meta.schema.properties.a", "a"},
        {".meta.schema.properties.a", "a"},
        {"meta.schema.items", "[*]"},
        {"meta.schema.items.items", "[*][*]"},
        {"meta.schema.properties.a.items.properties.b", "a[*].b"},
        {R"(meta.schema.properties.a\.b)", R"(a\.b)"},
        {R"(m\eta.\schema.properties.\[0\])", R"(\[0\])"},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(Path::fromSchemaPath(row.schema).str(), row.result) << row.schema;
        std::ostringstream out;
        PathGenerator generator(out);
        FromSchemaPathConverter converter(generator);
        PathParser(&converter).parse(row.schema);
        EXPECT_EQ(out.str(), row.result) << row.schema;
    }
}

TEST(FromSchemaPathConverter, takes_the_schema_words_as_names_after_properties) {
    const std::vector<Row> rows = {
        {"meta.schema.properties.properties", "properties"},
        {"meta.schema.properties.items", "items"},
        {"meta.schema.properties.items.items", "items[*]"},
        {"meta.schema.properties.properties.properties.items.items", "properties.items[*]"},
        {"meta.schema.properties.default", "default"},
        {"meta.schema.properties.meta.properties.schema", "meta.schema"},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(Path::fromSchemaPath(row.schema).str(), row.result) << row.schema;
    }
}

TEST(FromSchemaPathConverter, converts_a_path_that_ends_early_as_far_as_it_goes) {
    const std::vector<Row> rows = {
        {"", ""},
        {"meta", ""},
        {"meta.schema", ""},
        {"meta.schema.properties", ""},
        {"meta.schema.properties.a.properties", "a"},
        {"meta.schema.items.properties", "[*]"},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(Path::fromSchemaPath(row.schema).str(), row.result) << row.schema;
    }
}

TEST(FromSchemaPathConverter, requires_the_way_to_the_schema) {
    for (const std::string schema :
         {"a.b", "a", "schema", "Meta.schema", "meta.schemas", "meta.meta", "meta.properties.a",
          "properties.a", R"(meta\.schema)"}) {
        EXPECT_EQ(errorOf(schema), "Schema path must begin with meta.schema!") << schema;
    }
}

TEST(FromSchemaPathConverter, requires_properties_or_items_before_each_step) {
    for (const std::string schema :
         {"meta.schema.default", "meta.schema.a", "meta.schema.meta",
          "meta.schema.properties.a.default", "meta.schema.properties.a.b",
          "meta.schema.items.default", "meta.schema.items.0", "meta.schema.Properties.a"}) {
        EXPECT_EQ(errorOf(schema), "\"properties\" or \"items\" expeced!") << schema;
    }
}

TEST(FromSchemaPathConverter, accepts_no_array_step_in_any_state) {
    for (const std::string schema :
         {"[0]", "[*]", "meta[1]", "meta.schema[0]", "meta.schema.properties[0]",
          "meta.schema.properties.a[0]", "meta.schema.items[*]"}) {
        EXPECT_EQ(errorOf(schema), "Schema path may not contain arrays!") << schema;
    }
}

TEST(FromSchemaPathConverter, reports_the_first_error_of_several) {
    EXPECT_EQ(errorOf("meta.schema.default[0]"), "\"properties\" or \"items\" expeced!");
    EXPECT_EQ(errorOf("a[0]..b"), "Schema path must begin with meta.schema!");
}

TEST(FromSchemaPathConverter, passes_on_the_error_of_a_malformed_path) {
    const auto error =
        thrownBy<ParseException>([] { Path::fromSchemaPath("meta.schema.items.."); });
    EXPECT_EQ(error.message(),
              "Unexpected character '.' in path at \"\" 17,18 parser state esObjectInit");
    EXPECT_EQ(error.firstColumn(), 17);
    EXPECT_EQ(error.lastColumn(), 18);
}

TEST(FromSchemaPathConverter, undoes_the_other_direction_except_for_positions) {
    const std::vector<Row> rows = {
        {"a.b.c", "a.b.c"},
        {R"(a\.b)", R"(a\.b)"},
        {"a[2].b[0][1]", "a[*].b[*][*]"},
        {"a[1]b", "a[*].b"},
        {".a", "a"},
        {"*", R"(\*)"},
        {"items[0]", "items[*]"},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(Path::fromSchemaPath(Path::toSchemaPath(row.schema)).str(), row.result);
    }
}

}  // namespace
}  // namespace orvid_test
