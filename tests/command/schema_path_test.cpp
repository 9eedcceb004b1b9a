// SPDX-License-Identifier: MIT
//
// orvid schema-path and orvid data-path: the two directions between a place in the data and the
// place in the schema that describes it. Neither reads a document.

#include "support/Command.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using orvid_test::failed;
using orvid_test::failsWithOneLine;
using orvid_test::orvid;
using orvid_test::printed;
using orvid_test::shell;

TEST(schema_path, puts_properties_before_keys_and_items_for_indexes) {
    EXPECT_EQ(orvid({"schema-path", "a"}), printed("meta.schema.properties.a\n"));
    EXPECT_EQ(orvid({"schema-path", "a.b[2][0].c"}),
              printed("meta.schema.properties.a.properties.b.items.items.properties.c\n"));
    EXPECT_EQ(orvid({"schema-path", "[*].a"}), printed("meta.schema.items.properties.a\n"));
    EXPECT_EQ(orvid({"schema-path", ""}), printed("meta.schema\n"));
}

TEST(schema_path, keeps_the_escapes_of_keys) {
    EXPECT_EQ(orvid({"schema-path", R"(x\.y\[0\])"}),
              printed("meta.schema.properties.x\\.y\\[0\\]\n"));
}

TEST(schema_path, refuses_a_malformed_path_as_a_usage_error) {
    EXPECT_EQ(orvid({"schema-path", "a["}),
              failed(2,
                     "path \"a[\": it ends where a key or an index is expected\n"
                     "a[\n  ^"));
}

TEST(schema_path, leads_to_the_default_below_the_schema) {
    const std::string settings = ORVID_SAMPLES "/settings.json";
    EXPECT_EQ(shell(R"("$0" get "$("$0" schema-path 'servers[1].port').default" "$1")", {settings}),
              printed("8080\n"));
}

TEST(data_path, is_the_way_back_with_a_star_for_every_index) {
    EXPECT_EQ(
        orvid({"data-path", "meta.schema.properties.a.properties.b.items.items.properties.c"}),
        printed("a.b[*][*].c\n"));
    EXPECT_EQ(orvid({"data-path", "meta.schema.items"}), printed("[*]\n"));
    EXPECT_EQ(orvid({"data-path", R"(meta.schema.properties.x\.y)"}), printed("x\\.y\n"));
    EXPECT_EQ(orvid({"data-path", "meta.schema"}), printed("\n"));
}

TEST(data_path, refuses_what_is_no_schema_path_as_a_usage_error) {
    EXPECT_EQ(orvid({"data-path", "a.b"}),
              failed(2, "path \"a.b\": it does not begin with meta.schema"));
    EXPECT_EQ(orvid({"data-path", "meta.schema.wrong"}),
              failed(2,
                     "path \"meta.schema.wrong\": only \"properties\" with a key, and "
                     "\"items\", lead from meta.schema to data"));
    EXPECT_EQ(orvid({"data-path", "meta.schema[0]"}),
              failed(2,
                     "path \"meta.schema[0]\": an index is not expected: the items of an array "
                     "are \"items\" in a schema"));
}

TEST(data_path, refuses_a_file_after_the_path) {
    EXPECT_TRUE(failsWithOneLine(orvid({"data-path", "meta.schema", "-"}), 2));
    EXPECT_TRUE(failsWithOneLine(orvid({"schema-path", "a", "-"}), 2));
}

}  // namespace
