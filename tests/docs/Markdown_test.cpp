// SPDX-License-Identifier: MIT
//
// That the checks of the documentation can fail.

#include "docs/Markdown.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using orvid_test::codeSpans;
using orvid_test::containsLines;
using orvid_test::fencedBlocks;
using orvid_test::headingAnchors;
using orvid_test::Lines;
using orvid_test::linesOf;
using orvid_test::linkTargets;
using orvid_test::tableRows;
using testing::ElementsAre;

TEST(Markdown, a_block_knows_its_language_its_line_and_the_line_before_it) {
    const auto blocks = fencedBlocks(linesOf("text\n<!-- marker -->\n```cpp\na\n\nb\n```\nc\n"));
    ASSERT_EQ(blocks.size(), 1U);
    EXPECT_EQ(blocks[0].line, 3U);
    EXPECT_EQ(blocks[0].language, "cpp");
    EXPECT_EQ(blocks[0].marker, "<!-- marker -->");
    EXPECT_THAT(blocks[0].lines, ElementsAre("a", "", "b"));
}

TEST(Markdown, blocks_are_distinguished_from_what_stands_between_them) {
    const auto blocks = fencedBlocks(linesOf("```\na\n```\nb\n```sh\nc\n```\n"));
    ASSERT_EQ(blocks.size(), 2U);
    EXPECT_EQ(blocks[0].marker, "");
    EXPECT_EQ(blocks[1].marker, "b");
    EXPECT_THAT(blocks[1].lines, ElementsAre("c"));
}

TEST(Markdown, lines_are_found_at_the_beginning_in_the_middle_and_at_the_end) {
    const Lines text = linesOf("a\nb\nc\nd\n");
    EXPECT_TRUE(containsLines(text, {"a", "b"}));
    EXPECT_TRUE(containsLines(text, {"b", "c"}));
    EXPECT_TRUE(containsLines(text, {"c", "d"}));
}

TEST(Markdown, lines_that_differ_in_a_character_a_gap_or_their_order_are_not_found) {
    const Lines text = linesOf("a\nb\nc\nd\n");
    EXPECT_FALSE(containsLines(text, {"a", "B"}));
    EXPECT_FALSE(containsLines(text, {"a", "c"}));
    EXPECT_FALSE(containsLines(text, {"b", "a"}));
    EXPECT_FALSE(containsLines(text, {"a", ""}));
    EXPECT_FALSE(containsLines(text, {"a", "b", "c", "d", "e"}));
}

TEST(Markdown, no_lines_are_not_found) { EXPECT_FALSE(containsLines({"a"}, {})); }

TEST(Markdown, only_the_indentation_that_all_lines_share_is_taken_away) {
    const Lines text = linesOf("    if (a) {\n\n        b();\n    }\n");
    EXPECT_TRUE(containsLines(text, {"if (a) {", "", "    b();", "}"}));
    EXPECT_FALSE(containsLines(text, {"if (a) {", "", "b();", "}"}));
}

TEST(Markdown, links_are_found_but_not_in_code) {
    const Lines document =
        linesOf("see [a](a.md) and [b](b/c.md#d), `[c](c)`\n```\n[d](d)\n```\n[e](e)");
    EXPECT_THAT(linkTargets(document), ElementsAre("a.md", "b/c.md#d", "e"));
}

TEST(Markdown, the_rows_of_a_table_are_found_below_its_ruler_and_not_in_blocks) {
    const Lines document =
        linesOf("| a | b |\n|---|---|\n| `c \\| d` | e |\n\n| f |\n```\n|---|\n| g |\n```\n");
    EXPECT_THAT(tableRows(document), ElementsAre(Lines{" `c | d` ", " e "}));
}

TEST(Markdown, code_spans_are_what_stands_between_backticks) {
    EXPECT_THAT(codeSpans("a `b` c, `d e`"), ElementsAre("b", "d e"));
    EXPECT_THAT(codeSpans("none"), ElementsAre());
}

TEST(Markdown, an_anchor_is_a_heading_in_small_letters_without_punctuation) {
    const Lines document = linesOf("# One\ntext # no\n## `[*]`, or two-B\n```sh\n# no\n```\n#no\n");
    EXPECT_THAT(headingAnchors(document), ElementsAre("one", "-or-two-b"));
}

}  // namespace
