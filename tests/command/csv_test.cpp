// SPDX-License-Identifier: MIT
//
// orvid csv and uncsv: tables of records, their quotes, and the way back.

#include "support/Command.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using orvid_test::failed;
using orvid_test::orvid;
using orvid_test::printed;
using orvid_test::ScratchFile;
using orvid_test::shell;

TEST(csv, has_a_column_for_each_key_of_the_first_record) {
    EXPECT_EQ(orvid({"csv"}, "{\"id\":1.50,\"a/b\":\"x\"}\n{\"a/b\":true,\"z\":0}\n"),
              printed("id,a/b\n1.50,x\n,true\n"));
    EXPECT_EQ(orvid({"csv"}, R"([{"a":null,"b":[1,{}]},{"a":"","b":{}}])"),
              printed("a,b\n,\"[1,{}]\"\n,{}\n"));
}

TEST(csv, has_the_columns_that_are_named) {
    EXPECT_EQ(
        orvid({"csv", "-f", "n.x", "--field", "l[-1]", "-f", "/no"}, R"({"n":{"x":1},"l":[2,3]})"),
        printed("n.x,l[-1],/no\n1,3,\n"));
    EXPECT_EQ(orvid({"csv", "--no-header", "-f", "[1]", "--tsv", "-f", "[0]"}, "[[1,2]] [[3,4]]"),
              printed("2\t1\n4\t3\n"));
}

TEST(csv, puts_quotes_where_they_are_needed) {
    EXPECT_EQ(orvid({"csv", "--no-header", "-f", "[0]", "-f", "[1]"},
                    R"([["a,b","say \"x\""],["line\nbreak","a\tb"],["",""]])"),
              printed("\"a,b\",\"say \"\"x\"\"\"\n\"line\nbreak\",a\tb\n,\n"));
    EXPECT_EQ(orvid({"csv", "--no-header", "-f", ""}, R"([""])"), printed("\"\"\n"));
}

TEST(csv, needs_columns_and_whole_values) {
    EXPECT_EQ(orvid({"csv"}, "[[1]]"),
              failed(1,
                     "(standard input): the first record has no keys: name the columns with "
                     "--field"));
    EXPECT_EQ(orvid({"csv"}, "[{\"a\":1}").status, 1);
}

TEST(uncsv, reads_what_a_field_says) {
    EXPECT_EQ(orvid({"uncsv"}, "a,b,c\n1.50,true,x y\r\nnull,\"7\",\n\n007,-,1 2\n"),
              printed("{\"a\":1.50,\"b\":true,\"c\":\"x y\"}\n"
                      "{\"a\":null,\"b\":\"7\",\"c\":\"\"}\n"
                      "{\"a\":\"007\",\"b\":\"-\",\"c\":\"1 2\"}\n"));
    EXPECT_EQ(orvid({"uncsv", "--strings"}, "a\n1\n"), printed("{\"a\":\"1\"}\n"));
    EXPECT_EQ(orvid({"uncsv", "--no-header", "--tsv"}, "1\t\"a\tb\"\n"),
              printed("[1,\"a\\tb\"]\n"));
    EXPECT_EQ(orvid({"uncsv"},
                    "\xEF\xBB\xBF"
                    "a\n\"x\"\"\ny\""),
              printed("{\"a\":\"x\\\"\\ny\"}\n"));
    EXPECT_EQ(orvid({"uncsv"}, ""), printed(""));
}

TEST(uncsv, tells_the_line_at_fault) {
    EXPECT_EQ(orvid({"uncsv"}, "a,b\n\"x\ny\",1\n1\n"),
              (orvid_test::CommandResult{
                  "{\"a\":\"x\\ny\",\"b\":1}\n",
                  "orvid: (standard input):4: the row has 1 fields, the header 2\n", 1, 0}));
    EXPECT_EQ(orvid({"uncsv"}, "a\n\"x"), failed(1, "(standard input):2: a quote is not closed"));
    EXPECT_EQ(orvid({"uncsv"}, "a\n\"x\"y\n"),
              failed(1, "(standard input):2: text follows the quote that ends a field"));
    EXPECT_EQ(orvid({"uncsv"}, "a,a\n1,2\n"),
              failed(1, "(standard input):2: two columns are called \"a\""));
}

TEST(uncsv, is_the_way_back) {
    const std::string records = R"([{"a":1,"b":"x, \"y\"\nz"},{"a":true,"b":"é"}])";
    EXPECT_EQ(shell(R"("$0" csv | "$0" uncsv | "$0" join --compact)", {}, records),
              printed("[{\"a\":1,\"b\":\"x, \\\"y\\\"\\nz\"},{\"a\":true,\"b\":\"é\"}]\n"));
}

}  // namespace
