// SPDX-License-Identifier: MIT
//
// Data steps turned into schema steps, one by one and for whole paths.

#include <ko/Orvid/ToSchemaPathConverter.h>

#include <gtest/gtest.h>
#include <ko/Orvid/Exception.h>
#include <ko/Orvid/Path.h>

#include <sstream>
#include <string>
#include <vector>

#include "support/Document.h"

namespace orvid_test {
namespace {

using ko::Orvid::ParseException;
using ko::Orvid::Path;
using ko::Orvid::PathGenerator;
using ko::Orvid::PathParser;
using ko::Orvid::ToSchemaPathConverter;

TEST(ToSchemaPathConverter, writes_the_way_to_the_schema_at_once) {
    std::ostringstream out;
    PathGenerator generator(out);
    const ToSchemaPathConverter converter(generator);
    EXPECT_EQ(out.str(), "meta.schema");
}

TEST(ToSchemaPathConverter, goes_on_after_what_its_generator_wrote_before) {
    std::ostringstream out;
    PathGenerator generator(out);
    generator.genObjectProperty(std::string("x"));
    const ToSchemaPathConverter converter(generator);
    EXPECT_EQ(out.str(), "x.meta.schema");
}

TEST(ToSchemaPathConverter, accepts_every_step_and_drops_indexes) {
    std::ostringstream out;
    PathGenerator generator(out);
    ToSchemaPathConverter converter(generator);
    EXPECT_TRUE(converter.cbObjectProperty("a.b"));
    EXPECT_EQ(out.str(), R"(meta.schema.properties.a\.b)");
    EXPECT_TRUE(converter.cbArrayItem(2));
    EXPECT_EQ(out.str(), R"(meta.schema.properties.a\.b.items)");
    EXPECT_TRUE(converter.cbArrayItem(Path::k_noIndex));
    EXPECT_TRUE(converter.cbObjectProperty(""));
    EXPECT_EQ(out.str(), R"(meta.schema.properties.a\.b.items.items.properties.)");
}

TEST(ToSchemaPathConverter, keeps_the_parse_error_of_its_base) {
    std::ostringstream out;
    PathGenerator generator(out);
    ToSchemaPathConverter converter(generator);
    const auto error =
        thrownBy<ParseException>([&] { converter.cbParseError("fault", "token", 2, 5); });
    EXPECT_STREQ(error.what(), "Parse error at 1,2-1,5fault");
}

struct Row {
    std::string data;
    std::string schema;
};

TEST(ToSchemaPathConverter, converts_whole_paths) {
    const std::vector<Row> rows = {
        {"", "meta.schema"},
        {"a", "meta.schema.properties.a"},
        {".a", "meta.schema.properties.a"},
        {"[0]", "meta.schema.items"},
        {"[*]", "meta.schema.items"},
        {"[1][2]", "meta.schema.items.items"},
        {"a.b[2].c", "meta.schema.properties.a.properties.b.items.properties.c"},
        {"a[1]b", "meta.schema.properties.a.items.properties.b"},
        {R"(a\.b)", R"(meta.schema.properties.a\.b)"},
        {R"(\[0\])", R"(meta.schema.properties.\[0\])"},
        {R"(\a*)", R"(meta.schema.properties.a\*)"},
        {"properties.items", "meta.schema.properties.properties.properties.items"},
        {"meta.schema", "meta.schema.properties.meta.properties.schema"},
        {"a\xFF.b", "meta.schema.properties.a"},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(Path::toSchemaPath(row.data).str(), row.schema) << row.data;
        std::ostringstream out;
        PathGenerator generator(out);
        ToSchemaPathConverter converter(generator);
        PathParser(&converter).parse(row.data);
        EXPECT_EQ(out.str(), row.schema) << row.data;
    }
}

TEST(ToSchemaPathConverter, passes_on_the_error_of_a_malformed_path) {
    const auto error = thrownBy<ParseException>([] { Path::toSchemaPath("a..b"); });
    EXPECT_EQ(error.message(),
              "Unexpected character '.' in path at \"\" 1,2 parser state esObjectInit");
}

}  // namespace
}  // namespace orvid_test
