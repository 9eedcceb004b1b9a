// SPDX-License-Identifier: MIT
//
// An edit of the excerpt must leave the bytes that an edit of the whole document leaves: for
// documents with comments everywhere, in many layouts, short ones and such of many containers.

#include "edit/ExcerptEdit.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "output/Failure.h"
#include "support/CommentedJson.h"
#include "support/PlaceEdits.h"
#include "support/ScatteredJson.h"
#include "support/WideJson.h"

namespace orvid_tool {
namespace {

using ko::Orvid::Dom;
using ko::Orvid::ReadOptions;
using orvid_test::Choice;
using orvid_test::makeRows;
using orvid_test::makeWideJson;
using orvid_test::PlaceChange;
using orvid_test::PlaceEdits;

/// How many edits could be made to an excerpt.
struct Count {
    unsigned made = 0;
    unsigned all = 0;
};

void expectSame(const std::string& text, const PlaceChange& edit, Count& count) {
    Bytes out;
    std::string whole;
    Dom document = Dom::parse(text);
    try {
        edit(*document, edit.path);
        whole = document.text();
    } catch (const ko::Exception&) {
        return;
    } catch (const Failure&) {
        return;
    }
    const auto change = [&](std::string_view before, std::size_t /*number*/) {
        return editExcerpt(before, stepsOf(edit.path), edit.inExcerpt(), ReadOptions::jsonc());
    };
    const bool isMade = editInTurn(text, 1, change, out);
    ++count.all;
    count.made += isMade ? 1 : 0;
    if (isMade) {
        ASSERT_EQ(std::string(out.view()), whole)
            << text << "\n"
            << static_cast<int>(edit.kind) << " " << edit.path << " " << edit.value;
    }
}

class RandomChoices {
public:
    explicit RandomChoices(unsigned seed) : m_random(seed) {}

    const Choice choose = [this](unsigned count) {
        return static_cast<unsigned>(m_random() % count);
    };

private:
    std::mt19937 m_random;
};

template<class Make>
Count compareAll(unsigned documents, unsigned edits, const Make& make) {
    Count count;
    for (unsigned seed = 0; seed < documents; ++seed) {
        const RandomChoices random(seed);
        const std::string text = make(random.choose);
        const PlaceEdits script(random.choose);
        Dom document = Dom::parse(text);
        for (unsigned i = 0; i < edits; ++i) {
            expectSame(text, script.next(*document), count);
            if (testing::Test::HasFatalFailure()) {
                ADD_FAILURE() << "of seed " << seed;
                return count;
            }
        }
    }
    return count;
}

TEST(ExcerptEdit, edits_as_the_whole_is_edited) {
    const Count count = compareAll(
        400, 12, [](const Choice& choose) { return orvid_test::makeCommentedJson(choose).text; });
    EXPECT_GE(count.made * 10, count.all * 9);
}

TEST(ExcerptEdit, edits_as_the_whole_is_edited_whatever_stands_between_tokens) {
    const Count count = compareAll(250, 10, orvid_test::makeScatteredJson);
    EXPECT_GE(count.made * 10, count.all * 9);
}

/// A document in which most brackets of members stand below the keys.
std::string makeBelow(const Choice& choose, unsigned depth) {
    const std::string indent = "\n" + std::string(2 * depth, ' ');
    const unsigned count = choose(depth == 1 ? 150 : 4);
    const bool isArray = depth > 1 && choose(4) == 0;
    std::string text(1, isArray ? '[' : '{');
    for (unsigned i = 0; i <= count; ++i) {
        const bool isContainer = depth < 5 && choose(3) == 0;
        text += (i == 0 ? "" : ",") + indent;
        text += isArray ? "" : "\"k" + std::to_string(i) + (choose(3) == 0 ? "\" :" : "\":");
        text += isContainer && !isArray && choose(9) > 0 ? indent : choose(3) == 0 ? "" : " ";
        text += isContainer ? makeBelow(choose, depth + 1) : choose(9) == 0 ? "{}" : "1";
    }
    return text + indent.substr(0, indent.size() - 2) + (isArray ? "]" : "}");
}

TEST(ExcerptEdit, edits_as_the_whole_is_edited_where_brackets_stand_below_keys) {
    const Count count =
        compareAll(100, 8, [](const Choice& choose) { return makeBelow(choose, 1); });
    EXPECT_GE(count.made * 10, count.all * 9);
}

/// A document in which most lines begin with a comma.
std::string makeLeading(const Choice& choose, unsigned depth) {
    const std::string indent = "\n" + std::string(4 * depth, ' ');
    const bool isArray = depth > 1 && choose(3) == 0;
    std::string text(1, isArray ? '[' : '{');
    for (unsigned i = 0, count = choose(depth == 1 ? 90 : 4); i <= count; ++i) {
        const bool ends = choose(20) == 0;
        const std::string line = i == 0 || ends ? indent : indent.substr(0, indent.size() - 2);
        text += (ends && i > 0 ? "," : "") + line + (i == 0 || ends ? "" : ", ");
        text += isArray ? "" : "\"k" + std::to_string(i) + "\": ";
        text += depth < 5 && choose(3) == 0 ? makeLeading(choose, depth + 1)
                : choose(9) == 0            ? "[]"
                                            : "1";
    }
    return text + indent.substr(0, indent.size() - 4) + (isArray ? "]" : "}");
}

TEST(ExcerptEdit, leaves_a_bracket_below_a_key_to_the_library_where_its_container_gets_empty) {
    Count count;
    const std::string member = "{\n  \"a\":\n  {\n    \"x\": 1\n  }\n}";
    expectSame("{\n  \"b\": " + member + ",\n  \"c\": {\n    \"x\": 1\n  }\n}",
               {PlaceEdit::remove, "b.a.x", "0"}, count);
    expectSame(member, {PlaceEdit::remove, "a.x", "0"}, count);
    EXPECT_EQ(count.all, 2U);
    EXPECT_EQ(count.made, 0U);
}

TEST(ExcerptEdit, edits_as_the_whole_is_edited_where_lines_begin_with_commas) {
    const Count count =
        compareAll(100, 8, [](const Choice& choose) { return makeLeading(choose, 1); });
    EXPECT_GE(count.made * 10, count.all * 9);
}

TEST(ExcerptEdit, looks_as_far_for_a_colon_as_the_library_does) {
    Count count;
    for (const char* const colon : {"/**/:", ": // c\n", ":\n"}) {
        std::string text = "{\"a\": {\"x\": 1}, \"b\" : 1";
        for (int i = 0; i < 70 && !testing::Test::HasFatalFailure(); ++i) {
            text += ", \"k" + std::to_string(i) + "\"" + colon + "{}";
            expectSame(text + "}", {PlaceEdit::set, "c", "1"}, count);
            expectSame(text + ", \"z\": [{}]}", {PlaceEdit::set, "z[0].c", "1"}, count);
        }
    }
    EXPECT_EQ(count.made, count.all);
}

TEST(ExcerptEdit, takes_a_colon_from_elsewhere_where_brackets_stand_below_all_keys) {
    Count count;
    expectSame("{\n\"a\":\n{\n\"x\" : 1\n},\n\"b\":\n{\n\"x\" : 1\n}\n}",
               {PlaceEdit::set, "c", "1"}, count);
    EXPECT_EQ(count.made, 1U);
}

TEST(ExcerptEdit, leaves_children_out_that_do_not_matter) {
    const Count count = compareAll(200, 10, makeWideJson);
    EXPECT_GE(count.made * 10, count.all * 9);
}

TEST(ExcerptEdit, leaves_containers_out_beyond_the_first_few_thousand) {
    const Count count = compareAll(4, 6, [](const Choice& choose) {
        std::string text = "[0";
        for (std::size_t documents = 0; documents < 120; ++documents) {
            text += (choose(2) == 0 ? ",\n" : ", ") + makeWideJson(choose);
        }
        return text + "]";
    });
    EXPECT_GE(count.made * 2, count.all);  // some lines are too long
}

TEST(ExcerptEdit, removes_from_rows_as_the_whole_does) {
    Count count;
    for (unsigned seed = 0; seed < 300 && !testing::Test::HasFatalFailure(); ++seed) {
        const RandomChoices random(seed);
        const bool isObject = random.choose(2) == 0;
        const std::string text = makeRows(random.choose, isObject);
        const auto size = static_cast<unsigned>((*Dom::parse(text)).size());
        for (unsigned i = 0; i < 12 && !testing::Test::HasFatalFailure(); ++i) {
            const std::string child = std::to_string(random.choose(size));
            const PlaceEdit kind = random.choose(4) == 0 ? PlaceEdit::set : PlaceEdit::remove;
            expectSame(text, {kind, isObject ? "k" + child : "[" + child + "]", "[7]"}, count);
        }
    }
    EXPECT_GE(count.made * 10, count.all * 9);
}

TEST(ExcerptEdit, inserts_into_rows_as_the_whole_does) {
    Count count;
    for (unsigned seed = 0; seed < 300 && !testing::Test::HasFatalFailure(); ++seed) {
        const RandomChoices random(seed);
        const std::string text = makeRows(random.choose, false);
        const auto size = static_cast<unsigned>((*Dom::parse(text)).size());
        for (unsigned i = 0; i < 12 && !testing::Test::HasFatalFailure(); ++i) {
            const std::string index = std::to_string(random.choose(size + 1));
            expectSame(text,
                       {PlaceEdit::insert, "[" + index + "]",
                        random.choose(2) == 0 ? "9" : "[[1],{\"b\":2}]"},
                       count);
        }
    }
    EXPECT_GE(count.made * 10, count.all * 9);
}

void expectSameWithout(const std::string& text, const std::string& path) {
    Count count;
    expectSame(text, {PlaceEdit::remove, path, "0"}, count);
    EXPECT_EQ(count.made, 1U) << text;
}

TEST(ExcerptEdit, keeps_the_indent_below_a_comment_before_a_comma) {
    std::string many;
    for (int i = 0; i < 80; ++i) {
        many += ",\"k" + std::to_string(i) + "\":1";
    }
    expectSameWithout("[1,2,\n    3,4//\n,5,6]", "[4]");
    expectSameWithout("{\"z\":0,\"x\":0,\n    \"y\":1" + many + "//\n,\"p\":1,\"q\":2}", "p");
}

TEST(ExcerptEdit, keeps_the_line_that_a_container_closes_on) {
    Count count;
    expectSame("{\n\"x\":1,\n\"m\":[[1,\n   2,3,\n4],[\n    5]]\n}",
               {PlaceEdit::set, "x", "[[1],{\"b\":2}]"}, count);
    EXPECT_EQ(count.made, 1U);
}

TEST(ExcerptEdit, fills_a_container_as_one_that_was_left_out) {
    std::string text = "[0";
    for (int i = 0; i < 4100; ++i) {
        text += ",\n  {\"a\": 1}";
    }
    text += ",\n  {\n    \"a\": 1\n  },\n  5,\n  5,\n  { /* c */ }\n]";
    Count count;
    expectSame(text, {PlaceEdit::set, "[4104].b", "2"}, count);
    expectSame(text, {PlaceEdit::set, "[4104]", R"({"b": 2})"}, count);
    expectSame(text, {PlaceEdit::set, "[4100]", R"({"b": 2})"}, count);
    EXPECT_EQ(count.made, 1U);
}

TEST(ExcerptEdit, puts_a_scalar_in_place_of_a_long_container) {
    std::string text = "{\n  \"a\": 1, // first\n  \"all\": [ // open\n   1";
    for (int i = 0; i < 9000; ++i) {
        text += ",\n    {\"id\": " + std::to_string(i) + ", \"tags\": [1, 2, {\"x\": {}}]}";
    }
    text += " // close\n  ], // after\n  \"last\": {}\n}";
    Count count;
    expectSame(text, {PlaceEdit::set, "all", "1"}, count);
    EXPECT_EQ(count.made, 1U);
    for (const ExcerptRest rest : {ExcerptRest::none, ExcerptRest::habits}) {
        const auto excerpt =
            excerptOf(text, stepsOf("all"), PlaceEdit::replace, rest, ReadOptions::jsonc());
        ASSERT_TRUE(excerpt);
        EXPECT_LT(excerpt->text.size(), text.size() / 2);
    }
}

TEST(ExcerptEdit, is_short_for_a_long_text) {
    std::string text = "{\"all\": [1";
    for (int i = 0; i < 20000; ++i) {
        text += ",\n  {\"id\": " + std::to_string(i) + ", \"tags\": [1, 2, 3]}";
    }
    text += "\n], \"last\": 1}";
    const auto excerpt = excerptOf(text, stepsOf("all[12345].id"), PlaceEdit::set,
                                   ExcerptRest::habits, ReadOptions::jsonc());
    ASSERT_TRUE(excerpt);
    EXPECT_LT(excerpt->text.size(), text.size() / 5);
}

TEST(ExcerptEdit, is_short_for_a_long_text_with_a_comment_or_a_line_at_each_member) {
    for (const char* const gap : {": // member\n  ", ":\n  "}) {
        std::string text = "{\n  \"k\": 0";
        for (int i = 0; i < 20000; ++i) {
            text += ",\n  \"k" + std::to_string(i) + "\"" + gap + "{\"id\": 1}";
        }
        text += "\n}";
        for (const char* const path : {"k12345.id", "new"}) {
            const auto excerpt = excerptOf(text, stepsOf(path), PlaceEdit::set, ExcerptRest::none,
                                           ReadOptions::jsonc());
            ASSERT_TRUE(excerpt);
            EXPECT_LT(excerpt->text.size(), 6000U) << path;
        }
    }
}

TEST(ExcerptEdit, is_short_for_a_long_text_with_a_comment_at_each_item) {
    std::string text = "{\"all\": [1";
    for (int i = 0; i < 20000; ++i) {
        text += ", // item\n  {\"id\": " + std::to_string(i) + "}";
    }
    text += "\n], \"last\": 1}";
    for (const char* const path : {"all[12345].id", "last"}) {
        const auto excerpt =
            excerptOf(text, stepsOf(path), PlaceEdit::set, ExcerptRest::none, ReadOptions::jsonc());
        ASSERT_TRUE(excerpt);
        EXPECT_LT(excerpt->text.size(), 200U) << path;
    }
}

TEST(ExcerptEdit, makes_each_edit_in_what_the_one_before_it_leaves) {
    const std::vector<PlaceChange> edits{{PlaceEdit::set, "a", R"("a much longer value")"},
                                         {PlaceEdit::insert, "b[1]", "22"},
                                         {PlaceEdit::remove, "b[0]", "0"},
                                         {PlaceEdit::set, "a", "2"},
                                         {PlaceEdit::set, "b[0]", "3"}};
    const auto change = [&](std::string_view text, std::size_t number) {
        const PlaceChange& edit = edits[number];
        return editExcerpt(text, stepsOf(edit.path), edit.inExcerpt(), ReadOptions::jsonc());
    };
    Bytes out;
    out.append("before\n");
    ASSERT_TRUE(
        editInTurn("{ \"a\": 1, \"b\": [ 10, 20 ], \"c\": 0 }\n", edits.size(), change, out));
    EXPECT_EQ(out.view(), "before\n{ \"a\": 2, \"b\": [ 3, 20 ], \"c\": 0 }\n");
}

TEST(ExcerptEdit, leaves_the_habits_out_where_a_scalar_has_siblings) {
    std::string text = "{\"all\": [1";
    for (int i = 0; i < 1000; ++i) {
        text += ",\n  {\"id\": " + std::to_string(i) + ", \"tags\": [1, 2, 3]}";
    }
    text += "\n], \"last\": 1}";
    for (const PlaceEdit edit : {PlaceEdit::set, PlaceEdit::remove}) {
        const auto excerpt =
            excerptOf(text, stepsOf("all[700].id"), edit, ExcerptRest::none, ReadOptions::jsonc());
        ASSERT_TRUE(excerpt);
        EXPECT_FALSE(excerpt->needsHabits);
        EXPECT_LT(excerpt->text.size(), 200U);
    }
}

}  // namespace
}  // namespace orvid_tool
