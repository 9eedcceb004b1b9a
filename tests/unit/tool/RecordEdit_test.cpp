// SPDX-License-Identifier: MIT
//
// An edit of a record's text must leave the bytes that an edit of its document leaves: for records
// whose tokens have all kinds of whitespace between them, and now and then a comment or a line
// break.

#include "edit/RecordEdit.h"

#include <gtest/gtest.h>

#include <optional>
#include <random>
#include <string>

#include "output/Failure.h"
#include "support/PlaceEdits.h"

namespace orvid_tool {
namespace {

using ko::Orvid::Dom;
using orvid_test::Choice;
using orvid_test::PlaceChange;
using orvid_test::PlaceEdits;

/// Makes records that are mostly laid out by one rule, as programs write them.
class RecordMaker {
public:
    explicit RecordMaker(const Choice& choose) : m_choose(choose) {
        for (std::string* gap : {&m_comma, &m_colon, &m_bracket}) {
            *gap = whitespace();
        }
    }

    std::string record() { return odd("") + container(0) + odd(""); }

private:
    std::string whitespace() {
        const char* const all[] = {"", " ", "", " ", "  ", "\t"};
        return all[m_choose(6)];
    }
    /// The gap, but in one place of many another one.
    std::string odd(const std::string& gap) {
        const char* const others[] = {"\r", "\n", "/*c*/", " /*c*/ ", " // c\n", "\n  "};
        const unsigned turn = m_choose(150);
        return turn < 5 ? whitespace() : turn == 5 ? others[m_choose(6)] : gap;
    }
    std::string value(unsigned depth) {
        const char* const scalars[] = {
            "1",    "-2.50",           "1e3",  "\"x\"", "\"\\u00e9,]\"", "true",
            "null", "\"{\\\"a\\\":\"", "\"\"", "0"};
        return depth < 3 && m_choose(3) == 0 ? container(depth) : scalars[m_choose(10)];
    }
    std::string container(unsigned depth) {
        const bool isObject = m_choose(3) != 0;
        std::string text = (isObject ? "{" : "[") + odd(m_bracket);
        const unsigned count = m_choose(6);
        for (unsigned i = 0; i < count; ++i) {
            text += i > 0 ? odd("") + "," + odd(m_comma) : "";
            text += isObject ? key(i) + odd("") + ":" + odd(m_colon) : "";
            text += value(depth + 1);
        }
        return text + odd(count > 0 ? m_bracket : "") + (isObject ? "}" : "]");
    }
    std::string key(unsigned number) {
        const char* const starts[] = {"k", "\\\"", "\\\\", "a b", "\\u00e4"};
        return '"' + std::string(starts[m_choose(5)]) + std::to_string(number) + '"';
    }

    const Choice& m_choose;
    std::string m_comma;
    std::string m_colon;
    std::string m_bracket;
};

bool editInText(const std::string& text, const PlaceChange& change, Bytes& out) {
    const ValueSteps steps = stepsOf(change.path);
    if (change.kind == PlaceEdit::remove) {
        return removeFromRecord(text, steps, out);
    }
    const ko::Orvid::Element value = ko::Orvid::parse(change.value);
    return change.kind == PlaceEdit::insert ? insertIntoRecord(text, steps, value, out)
                                            : appendToRecord(text, steps, value, out) ||
                                                  replaceInRecord(text, steps, value, out);
}

/// What the library makes of it; nothing where it refuses.
std::optional<std::string> editInTree(const std::string& text, const PlaceChange& change) {
    Dom document = Dom::parse(text, ko::Orvid::ReadOptions::jsonc());
    try {
        change(*document, change.path);
        return document.text();
    } catch (const ko::Exception&) {
        return std::nullopt;
    } catch (const Failure&) {
        return std::nullopt;
    }
}

TEST(RecordEdit, edits_as_the_document_is_edited) {
    unsigned made = 0;
    for (unsigned seed = 0; seed < 500 && !testing::Test::HasFailure(); ++seed) {
        std::mt19937 random(seed);
        const Choice choose = [&](unsigned count) {
            return static_cast<unsigned>(random() % count);
        };
        const std::string text = RecordMaker(choose).record();
        Dom document = Dom::parse(text, ko::Orvid::ReadOptions::jsonc());
        for (unsigned i = 0; i < 12; ++i) {
            const PlaceChange change = PlaceEdits(choose).next(*document);
            Bytes out;
            const bool isMade = editInText(text, change, out);
            const std::optional<std::string> whole = editInTree(text, change);
            made += isMade ? 1 : 0;
            EXPECT_EQ(isMade ? std::string(out.view()) : "",
                      isMade ? whole.value_or("refused") : "")
                << text << '\n'
                << static_cast<int>(change.kind) << ' ' << change.path << ' ' << change.value;
            EXPECT_EQ(isMade, out.length() > 0);
        }
    }
    EXPECT_GE(made, 1700U);
}

std::string removed(const std::string& text, const std::string& path) {
    Bytes out;
    return removeFromRecord(text, stepsOf(path), out) ? std::string(out.view()) : "asks";
}

TEST(RecordEdit, removes_a_child_with_the_blanks_that_part_it_from_the_next) {
    EXPECT_EQ(removed(R"({"a": 1, "b": 2, "c": 3})", "a"), R"({"b": 2, "c": 3})");
    EXPECT_EQ(removed(R"({"a": 1, "b": 2, "c": 3})", "b"), R"({"a": 1, "c": 3})");
    EXPECT_EQ(removed(R"({"a": 1, "b": 2, "c": 3})", "c"), R"({"a": 1, "b": 2})");
    EXPECT_EQ(removed(R"({ "a":[1,  2] })", "a[1]"), R"({ "a":[1] })");
}

TEST(RecordEdit, asks_the_library_where_the_neighbors_do_not_show_what_to_do) {
    EXPECT_EQ(removed(R"({"a": 1})", "a"), "asks");
    EXPECT_EQ(removed(R"({"a": 1})", "b"), "asks");
    EXPECT_EQ(removed(R"({"a": 1, "b": 2,"c": 3})", "b"), "asks");
    EXPECT_EQ(removed(R"({"a": 1 , "b": 2})", "a"), "asks");
    EXPECT_EQ(removed(R"({"a": 1, /* b */ "b": 2})", "a"), "asks");
    EXPECT_EQ(removed("{\"a\": 1,\n\"b\": 2}", "a"), "asks");
    EXPECT_EQ(removed(R"({"a": 1, "b": 2, "a": 3})", "b"), "asks");
    EXPECT_EQ(removed("[1, 2", "[0]"), "asks");
    EXPECT_EQ(removed("[1, 2]", ""), "asks");
}

std::string inserted(const std::string& text, const std::string& path, const std::string& value) {
    Bytes out;
    return insertIntoRecord(text, stepsOf(path), ko::Orvid::parse(value), out)
               ? std::string(out.view())
               : "asks";
}

TEST(RecordEdit, inserts_items_before_others_and_members_after_the_last) {
    EXPECT_EQ(inserted("[1, 2]", "[0]", "7"), "[7, 1, 2]");
    EXPECT_EQ(inserted("[1, 2]", "[1]", "1e5"), "[1, 1e5, 2]");
    EXPECT_EQ(inserted("[1, 2]", "[2]", "7"), "[1, 2, 7]");
    EXPECT_EQ(inserted("[ 1,2 ]", "[*]", "\"x\""), "[ 1,2,\"x\" ]");
    EXPECT_EQ(inserted(R"({"a" : 1,"b" : 2})", "c", "null"), R"({"a" : 1,"b" : 2,"c" : null})");
}

TEST(RecordEdit, lays_out_containers_as_those_that_are_there) {
    const std::string value = R"({"x":1,"y":[2,{}]})";
    EXPECT_EQ(inserted("[1, 2]", "[0]", "[]"), "[[], 1, 2]");
    EXPECT_EQ(inserted(R"({"a": 1, "b": 2})", "c", value),
              R"({"a": 1, "b": 2, "c": {"x": 1, "y": [2, {}]}})");
    EXPECT_EQ(inserted(R"({ "a":1,"b":[ 1,2] })", "c", value),
              R"({ "a":1,"b":[ 1,2],"c":{ "x":1,"y":[ 2,{}] } })");
    EXPECT_EQ(inserted(R"({"a":1,"b":2})", "c", value), R"({"a":1,"b":2,"c":{"x":1,"y":[2,{}]}})");
    EXPECT_EQ(inserted(R"({"a": 1, "b": { "c": 1 }})", "c", value), "asks");
    EXPECT_EQ(inserted(R"({"a": 1, "b": {"c":1}})", "c", value), "asks");
    EXPECT_EQ(inserted(R"({"a": 1, "b": [[1, 2], [1,2]]})", "c", value), "asks");
    EXPECT_EQ(inserted(R"({"a": 1, "b": [1 , 2]})", "c", value), "asks");
    EXPECT_EQ(inserted("[1, 2]", "[0]", std::string(40, '[') + std::string(40, ']')), "asks");
}

std::string replaced(const std::string& text, const std::string& path, const std::string& value) {
    Bytes out;
    return replaceInRecord(text, stepsOf(path), ko::Orvid::parse(value), out)
               ? std::string(out.view())
               : "asks";
}

TEST(RecordEdit, puts_containers_in_the_place_of_scalars) {
    EXPECT_EQ(replaced(R"({"a": "x"})", "a", "[1,2]"), R"({"a": [1, 2]})");
    EXPECT_EQ(replaced(R"({"a":"x"})", "a", "[1,2]"), R"({"a":[1,2]})");
    EXPECT_EQ(replaced("[1]", "[0]", "[1,2]"), "[[1, 2]]");
    EXPECT_EQ(replaced(R"({"a": "x"})", "a", "1"), "asks");
    EXPECT_EQ(replaced(R"({"a": {}})", "a", "[]"), "asks");
    EXPECT_EQ(replaced(R"({"a": "x"})", "b", "[]"), "asks");
    EXPECT_EQ(replaced("1", "", "[]"), "asks");
    EXPECT_EQ(replaced("{\"a\":\n1}", "a", "[]"), "asks");
    EXPECT_EQ(replaced("{\"a\": 1}\r", "a", "[]"), "{\"a\": []}\r");
}

TEST(RecordEdit, inserts_nothing_that_has_too_few_neighbors) {
    EXPECT_EQ(inserted("[1]", "[*]", "2"), "asks");
    EXPECT_EQ(inserted("[]", "[*]", "2"), "asks");
    EXPECT_EQ(inserted("[1, 2]", "[3]", "7"), "asks");
    EXPECT_EQ(inserted("[1, 2]", "a", "7"), "asks");
    EXPECT_EQ(inserted(R"({"a": 1, "b": 2})", "a", "7"), "asks");
    EXPECT_EQ(inserted(R"({"a": 1, "b":2})", "c", "7"), "asks");
}

TEST(RecordEdit, appends_only_what_is_new) {
    Bytes out;
    EXPECT_FALSE(appendToRecord("[1, 2]", stepsOf("[1]"), ko::Orvid::parse("7"), out));
    EXPECT_FALSE(appendToRecord("[1, 2]", stepsOf("[2]"), ko::Orvid::parse("7"), out));
    EXPECT_TRUE(appendToRecord("[1, 2]", stepsOf("[*]"), ko::Orvid::parse("7"), out));
    EXPECT_EQ(out.view(), "[1, 2, 7]");
}

TEST(RecordEdit, makes_all_edits_or_none) {
    Document document;
    document.text = "[1, 2, 3]";
    const RecordEdit removeFirst = [](std::string_view text, std::size_t /*number*/, Bytes& out) {
        return removeFromRecord(text, stepsOf("[0]"), out);
    };
    Bytes out;
    EXPECT_TRUE(editRecord(document, 2, removeFirst, out));
    EXPECT_EQ(out.view(), "[3]\n");
    EXPECT_FALSE(editRecord(document, 3, removeFirst, out));
    EXPECT_EQ(out.view(), "[3]\n");
}

}  // namespace
}  // namespace orvid_tool
