// SPDX-License-Identifier: MIT
//
// orvid csv and uncsv: tables of records, their quotes, and the way back.

#include "support/Command.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using orvid_test::CommandResult;
using orvid_test::failed;
using orvid_test::orvid;
using orvid_test::printed;
using orvid_test::repeated;
using orvid_test::ScratchFile;
using orvid_test::shell;
using orvid_test::withoutExcerpt;

TEST(csv, has_a_column_for_each_key_of_the_first_record) {
    EXPECT_EQ(orvid({"csv"}, "{\"id\":1.50,\"a/b\":\"x\"}\n{\"a/b\":true}\n"),
              printed("id,a/b\n1.50,x\n,true\n"));
    EXPECT_EQ(orvid({"csv"}, R"([{"a":null,"b":[1,{}]},{"a":"","b":{}}])"),
              printed("a,b\n,\"[1,{}]\"\n,{}\n"));
}

TEST(csv, drops_nothing_unasked) {
    const std::string records = "{\"a\":1}\n{\"a\":2,\"z\":0}\n";
    EXPECT_EQ(
        withoutExcerpt(orvid({"csv"}, records)),
        (CommandResult{"a\n1\n",
                       "orvid: (standard input):2:1: at (root): the first record has no \"z\", "
                       "so there is no column for it: name the columns with --field\n",
                       1, 0}));
    EXPECT_EQ(orvid({"csv", "-f", "a"}, records), printed("a\n1\n2\n"));
    EXPECT_EQ(orvid({"csv"}, R"([{"a":1},2])").err,
              "orvid: (standard input):1:10: at [1]: the record is no object: name the columns "
              "with --field\n[{\"a\":1},2]\n         ^\n");
}

TEST(csv, has_the_columns_that_are_named) {
    EXPECT_EQ(
        orvid({"csv", "-f", "n.x", "--field", "l[-1]", "-f", "/no"}, R"({"n":{"x":1},"l":[2,3]})"),
        printed("n.x,l[-1],no\n1,3,\n"));
    EXPECT_EQ(orvid({"csv", "-f", R"(a\.b)", "-f", "/c~1d", "-f", "/e/0", "-f", "[0]"},
                    R"({"a.b":1,"c/d":2,"e":[3]})"),
              printed("a.b,c/d,/e/0,[0]\n1,2,3,\n"));
    EXPECT_EQ(orvid({"csv", "--no-header", "-f", "[1]", "--tsv", "-f", "[0]"}, "[[1,2]] [[3,4]]"),
              printed("2\t1\n4\t3\n"));
}

TEST(csv, has_the_separator_that_is_asked_for) {
    EXPECT_EQ(orvid({"csv", "--separator", ";"}, R"({"a":"x;y","b":"1,5"})"),
              printed("a;b\n\"x;y\";1,5\n"));
    EXPECT_EQ(orvid({"uncsv", "--separator=;"}, "a;b\n\"x;y\";1,5\n"),
              printed("{\"a\":\"x;y\",\"b\":\"1,5\"}\n"));
    EXPECT_EQ(orvid({"uncsv", "--separator=\t", "--tsv"}, "a\tb\n1\t2\n"),
              printed("{\"a\":1,\"b\":2}\n"));
    EXPECT_EQ(orvid({"csv", "--tsv", "--separator", ";"}),
              failed(2, "--tsv and --separator exclude each other; see orvid csv --help"));
    for (const char* const text : {"", ";;", "\"", "\n", "\xC3"}) {
        EXPECT_EQ(orvid({"csv", std::string("--separator=") + text}, "1").status, 2) << text;
    }
}

TEST(uncsv, says_that_a_table_seems_to_have_other_separators) {
    EXPECT_EQ(
        orvid({"uncsv"}, "a;b\n1;2\n"),
        (CommandResult{"{\"a;b\":\"1;2\"}\n",
                       "orvid: (standard input): the only column is \"a;b\"; --separator says "
                       "what stands between columns\n",
                       0, 0}));
    EXPECT_EQ(orvid({"uncsv"}, "a;b,c\n1,2\n"), printed("{\"a;b\":1,\"c\":2}\n"));
}

TEST(csv, puts_quotes_where_they_are_needed) {
    EXPECT_EQ(orvid({"csv", "--no-header", "-f", "[0]", "-f", "[1]"},
                    R"([["a,b","say \"x\""],["line\nbreak","a\tb"],["",""]])"),
              printed("\"a,b\",\"say \"\"x\"\"\"\n\"line\nbreak\",a\tb\n,\n"));
    EXPECT_EQ(orvid({"csv", "--no-header", "-f", ""}, R"([""])"), printed("\"\"\n"));
    EXPECT_EQ(orvid({"csv"}, "{\"\uFEFFid\":\"1\",\"b\":\"null\",\"c\":\"1a\",\"d\":1}"),
              printed("\"\uFEFFid\",b,c,d\n\"1\",\"null\",1a,1\n"));
}

TEST(csv, needs_columns_and_whole_values) {
    EXPECT_EQ(withoutExcerpt(orvid({"csv"}, "[[1]]")),
              failed(1,
                     "(standard input):1:2: at [0]: the first record has no keys: name the "
                     "columns with --field"));
    EXPECT_EQ(orvid({"csv", "-f", "a..b"}, "{}"),
              failed(2,
                     "path \"a..b\": this character may not stand here, except after a "
                     "backslash\na..b\n  ^"));
}

TEST(csv, writes_what_comes_before_an_error) {
    EXPECT_EQ(orvid({"csv"}, "[{\"a\":1}"),
              (CommandResult{"a\n1\n",
                             "orvid: (standard input):1:9: at (root): The text ends before the "
                             "document is complete (the array that begins at 1:1 is not closed)\n"
                             "[{\"a\":1}\n        ^\n",
                             1, 0}));
    EXPECT_EQ(orvid({"csv", "-f", "a"}, "{\"a\":1}\n  {\"b\": tru}"),
              (CommandResult{"a\n1\n",
                             "orvid: (standard input):2:12: at b: Unexpected '}': expected true\n"
                             "  {\"b\": tru}\n           ^\n",
                             1, 0}));
}

TEST(csv, takes_lines_when_the_columns_are_named) {
    EXPECT_EQ(orvid({"csv", "--lines", "-j", "2", "--on-error=skip", "-f", "a", "-f", "b"},
                    "{\"a\":1}\n\n{x\n[{\"b\":2},{}]\n"),
              (CommandResult{"a,b\n1,\n,2\n,\n",
                             "orvid: (standard input):3:2: at (root): Unexpected 'x': expected a "
                             "key or '}' (a key stands in double quotes: \"x\")\n",
                             1, 0}));
    EXPECT_EQ(orvid({"csv", "--lines"}, ""),
              failed(2, "--lines needs the columns: name them with --field; see orvid csv --help"));
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

TEST(uncsv, reads_a_table_wherever_its_pieces_end) {
    for (std::size_t room = 0; room < 8; ++room) {
        const std::string head(room + 1, 'k');
        std::string table = head + "\r\n";
        std::string records;
        for (int row = 0; row < 60000; ++row) {
            table += "\"abc\"\r\n";
            records += "{\"" + head + "\":\"abc\"}\n";
        }
        const ScratchFile file(table);
        const CommandResult result = orvid({"uncsv", file.name()});
        EXPECT_EQ(result.status, 0) << result.err;
        EXPECT_TRUE(result.out == records) << room;
    }
    EXPECT_EQ(shell("(printf '\\357'; sleep .05; printf '\\273\\277id\\r\\n1\\r'; sleep .05; "
                    "printf '\\n2') "
                    "| \"$0\" uncsv"),
              printed("{\"id\":1}\n{\"id\":2}\n"));
}

TEST(uncsv, names_the_line_in_error) {
    EXPECT_EQ(orvid({"uncsv"}, "a,b\n\"x\ny\",1\n1\n"),
              (CommandResult{
                  "{\"a\":\"x\\ny\",\"b\":1}\n",
                  "orvid: (standard input):4:1: the row has 1 field, the header 2\n1\n^\n", 1, 0}));
    EXPECT_EQ(orvid({"uncsv"}, "a\n\"x"),
              failed(1, "(standard input):2:1: a quote is not closed\n\"x\n^"));
    EXPECT_EQ(
        orvid({"uncsv"}, "a\n\"x\"y\n"),
        failed(1, "(standard input):2:4: text follows the quote that ends a field\n\"x\"y\n   ^"));
    EXPECT_EQ(orvid({"uncsv"}, "a,a\n1,2\n"),
              failed(1, "(standard input):1:1: two columns are called \"a\"\na,a\n^"));
    EXPECT_EQ(orvid({"uncsv"}, "a\nx\n\xFF\n").err,
              "orvid: (standard input):3:1: Invalid UTF-8\n?\n^\n");
}

TEST(uncsv, skips_blank_rows_unless_they_may_be_a_field) {
    EXPECT_EQ(orvid({"uncsv"}, "a,b\n1,2\n\n3,4\n"),
              printed("{\"a\":1,\"b\":2}\n{\"a\":3,\"b\":4}\n"));
    EXPECT_EQ(orvid({"uncsv"}, "a\n1\n\n3\n"), printed("{\"a\":1}\n{\"a\":\"\"}\n{\"a\":3}\n"));
    EXPECT_EQ(orvid({"uncsv", "--no-header"}, "1,2\n\n3\n"), printed("[1,2]\n[\"\"]\n[3]\n"));
    EXPECT_EQ(orvid({"uncsv"}, "a,b\n1,2,3\n"),
              failed(1, "(standard input):2:1: the row has 3 fields, the header 2\n1,2,3\n^"));
}

TEST(uncsv, is_the_way_back) {
    const std::string records =
        "[{\"\uFEFFa\":1,\"b\":\"x, \\\"y\\\"\\nz\"},{\"\uFEFFa\":true,\"b\":\"é\"},"
        "{\"\uFEFFa\":\"-1.5\",\"b\":\"true\"}]\n";
    EXPECT_EQ(shell(R"("$0" csv | "$0" uncsv | "$0" join --compact)", {}, records),
              printed(records));
}

TEST(uncsv, reads_rows_longer_than_a_piece) {
    const std::string field = repeated("x\n", 400000);
    EXPECT_TRUE(
        orvid({"uncsv"}, "a,b\n1,\"" + field + "\"\r\n2,y") ==
        printed("{\"a\":1,\"b\":\"" + repeated("x\\n", 400000) + "\"}\n{\"a\":2,\"b\":\"y\"}\n"));
    const std::string rows = repeated("1,\"\"\n", 100000);
    EXPECT_TRUE(orvid({"uncsv"}, "a,b\n" + rows) ==
                printed(repeated("{\"a\":1,\"b\":\"\"}\n", 100000)));
    EXPECT_EQ(orvid({"uncsv"}, "a,b\n" + rows + "1\n").err,
              "orvid: (standard input):100002:1: the row has 1 field, the header 2\n1\n^\n");
}

}  // namespace
