// SPDX-License-Identifier: MIT
//
// An edit of the excerpt must leave the bytes that an edit of the whole document leaves: for
// documents with comments everywhere, in many layouts, short ones and such of many containers.

#include "edit/ExcerptEdit.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include "edit/Insertion.h"
#include "support/CommentedJson.h"
#include "support/RandomEdits.h"
#include "support/ScatteredJson.h"

namespace orvid_tool {
namespace {

using ko::Orvid::Dom;
using ko::Orvid::Element;
using ko::Orvid::Path;
using ko::Orvid::ReadOptions;
using orvid_test::Choice;
using orvid_test::RandomEdits;

const std::vector<std::string> k_values{"9",
                                        "\"new\"",
                                        "null",
                                        "{}",
                                        "[]",
                                        "[1,2]",
                                        "{\"x\":1,\"y\":[2,{}]}",
                                        "[[1],{\"b\":2}]",
                                        "[1,2,3,4,5,6,7,8,9,10,11,12,13,14,15,16,17,18,19,20,21]"};

/// An edit of a place.
struct Edit {
    PlaceEdit kind;
    std::string path;
    std::string value;

    void operator()(Element& root, const std::string& at) const {
        Element element = *Dom::parse(value);
        if (kind == PlaceEdit::set) {
            root.create(Path(at), element);
        } else if (kind == PlaceEdit::insert) {
            insertAt(root, LastStep(at), std::move(element), {});
        } else {
            RandomEdits::erase(root.get(Path(at)));
        }
    }
};

class Edits {
public:
    explicit Edits(const Choice& choose) : m_choose(choose) {}

    Edit next(Element& root) const {
        std::vector<Element*> all = RandomEdits::allOf(root);
        if (all.size() == 1) {
            return {PlaceEdit::set, newPlace(root), "1"};
        }
        const bool isAny = m_choose(2) == 0;
        if (!isAny) {
            all.erase(
                std::remove_if(all.begin() + 1, all.end(),
                               [](const Element* e) { return !e->isObject() && !e->isArray(); }),
                all.end());
            all.push_back(all.front());
        }
        Element& element = *all[1 + m_choose(static_cast<unsigned>(all.size() - 1))];
        std::string path = element.path();
        auto kind = static_cast<PlaceEdit>(m_choose(3));
        if (kind != PlaceEdit::set && path.empty()) {
            kind = PlaceEdit::insert;
        }
        if (kind == PlaceEdit::insert && (!isAny || path.empty())) {
            path = newPlace(element);
        } else if (kind == PlaceEdit::set && (!isAny || path.empty())) {
            path = newPlace(element) + (m_choose(3) == 0 ? ".deep[*]" : "");
        }
        return {kind, path, k_values[m_choose(static_cast<unsigned>(k_values.size()))]};
    }

private:
    std::string newPlace(const Element& holder) const {
        const std::string path = holder.path();
        if (holder.isArray()) {
            const std::string end = std::to_string(holder.array().size() + m_choose(2));
            return path + (m_choose(2) == 0 ? "[*]" : "[" + end + "]");
        }
        return path + (path.empty() ? "new" : ".new");
    }

    const Choice& m_choose;
};

/// How many edits could be made to an excerpt.
struct Count {
    unsigned made = 0;
    unsigned all = 0;
};

void expectSame(const std::string& text, const Edit& edit, Count& count) {
    Bytes out;
    bool isMade = false;
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
    isMade = editExcerpt(text, stepsOf(edit.path), edit.kind, ReadOptions::jsonc(), edit, out);
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
        const Edits script(random.choose);
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

/// Containers with many children, some of them on lines of their own.
std::string makeWideJson(const Choice& choose) {
    const std::vector<std::string> gaps{"\n", "\n  ",      "\r\n\t",      "\n\n  ",
                                        "  ", " /* c */ ", "\n // c\n  ", ""};
    const unsigned rarity = 1 + choose(80);
    const auto gap = [&] { return choose(rarity) == 0 ? gaps[choose(8)] : " "; };
    const auto item = [&](unsigned i) {
        switch (choose(6)) {
            case 0:
                return "{" + gap() + "\"a\":" + gap() + "[1,2,3,4]" + gap() + "}";
            case 1:
                return std::string("{ }");
            default:
                return std::to_string(i);
        }
    };
    std::string text = "[";
    for (unsigned i = 0, count = choose(100); i <= count; ++i) {
        text += (i == 0 ? "" : ",") + gap() + item(i);
    }
    text += gap() + "]";
    std::string object = "{";
    for (unsigned i = 0, count = choose(200); i <= count; ++i) {
        object += (i == 0 ? "" : ",") + gap() + "\"k" + std::to_string(i) + "\":" + gap() +
                  (i == 70 ? text : "1");
    }
    return object + gap() + "}";
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

/// Children in rows, with comments of one line and of several before and behind some commas.
std::string makeRows(const Choice& choose, bool isObject) {
    const std::vector<std::string> rows{"\n  ", "\n\t", "\r\n    ", "\n"};
    const std::vector<std::string> comments{"//\n", "// c\n  ", "/*\n*/", "/* c */",
                                            "/*/\n *//**/"};
    const auto comment = [&] { return choose(6) == 0 ? comments[choose(5)] : ""; };
    std::string text(1, isObject ? '{' : '[');
    for (unsigned i = 0, count = 3 + choose(isObject ? 150 : 30); i < count; ++i) {
        text += i == 0 ? "" : comment() + "," + comment();
        text += choose(12) == 0 ? rows[choose(4)] : "";
        text += (isObject ? "\"k" + std::to_string(i) + "\":" : "") + std::to_string(i);
    }
    return text + comment() + (isObject ? '}' : ']');
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

TEST(ExcerptEdit, is_short_for_a_long_text) {
    std::string text = "{\"all\": [1";
    for (int i = 0; i < 20000; ++i) {
        text += ",\n  {\"id\": " + std::to_string(i) + ", \"tags\": [1, 2, 3]}";
    }
    text += "\n], \"last\": 1}";
    const auto excerpt =
        excerptOf(text, stepsOf("all[12345].id"), PlaceEdit::set, ReadOptions::jsonc());
    ASSERT_TRUE(excerpt);
    EXPECT_LT(excerpt->text.size(), text.size() / 5);
}

}  // namespace
}  // namespace orvid_tool
