// SPDX-License-Identifier: MIT
//
// The operators of order and equality and std::hash, for elements and numbers. The order itself is
// tested in ElementCompare_test.cpp and NumberCompare_test.cpp.

#include <ko/Orvid/Element.h>

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <string_view>
#include <type_traits>
#include <unordered_set>
#include <vector>

#include "support/Document.h"

namespace {

using ko::Orvid::Element;
using ko::Orvid::Number;
using orvid_test::Document;

static_assert(!std::is_convertible_v<Element, bool>);
static_assert(!std::is_convertible_v<Element, int>);
static_assert(!std::is_convertible_v<Element, std::string>);
static_assert(!std::is_convertible_v<Element, std::string_view>);

TEST(ElementOperators, agree_with_compare_on_every_pair) {
    const std::vector<std::string> texts = {"null",  "false", "true", "-1", "1",         "1.0",
                                            "\"\"",  "\"a\"", "{}",   "[]", "{\"a\":1}", "[1]",
                                            "[1,2]", "[2]",   "[[]]", "2.5"};
    for (const std::string& left : texts) {
        for (const std::string& right : texts) {
            const Document a(left);
            const Document b(right);
            const int order = Element::compare(a.root.data(), b.root.data());
            EXPECT_EQ(a.root == b.root, order == 0) << left << " " << right;
            EXPECT_EQ(a.root != b.root, order != 0) << left << " " << right;
            EXPECT_EQ(a.root < b.root, order < 0) << left << " " << right;
            EXPECT_EQ(a.root > b.root, order > 0) << left << " " << right;
            EXPECT_EQ(a.root <= b.root, order <= 0) << left << " " << right;
            EXPECT_EQ(a.root >= b.root, order >= 0) << left << " " << right;
            if (order == 0) {
                EXPECT_EQ(std::hash<Element>()(a.root), std::hash<Element>()(b.root))
                    << left << " " << right;
            }
        }
    }
}

TEST(ElementOperators, take_plain_values_on_either_side) {
    const Document document(R"({"n": 3, "s": "x", "b": true})");
    EXPECT_TRUE(document.root.get("n") == 3);
    EXPECT_TRUE(3 == document.root.get("n"));
    EXPECT_TRUE(document.root.get("s") == "x");
    EXPECT_TRUE(document.root.get("b") == true);
    EXPECT_TRUE(document.root.get("n") != "3");
    EXPECT_TRUE(document.root.get("n") < 3.5);
    EXPECT_TRUE(document.root.get("n") == Number("3.0"));
}

TEST(ElementOperators, sort_a_set) {
    const std::set<Element> ordered = {"text", 2, true, 1, Element()};
    std::string text;
    for (const Element& element : ordered) {
        text += orvid_test::compact(element) + " ";
    }
    EXPECT_EQ(text, "null true 1 2 \"text\" ");
}

TEST(NumberOperators, agree_with_compare_on_every_pair) {
    const std::vector<Number> numbers = {Number(-1), Number("-1"),  Number("1"),
                                         Number(1),  Number("1.0"), Number("1e0"),
                                         Number(1U), Number(2.5),   Number("18446744073709551615")};
    for (const Number& a : numbers) {
        for (const Number& b : numbers) {
            const int order = a.compare(b);
            const std::string pair = a.toString() + " " + b.toString();
            EXPECT_EQ(a == b, order == 0) << pair;
            EXPECT_EQ(a != b, order != 0) << pair;
            EXPECT_EQ(a < b, order < 0) << pair;
            EXPECT_EQ(a > b, order > 0) << pair;
            EXPECT_EQ(a <= b, order <= 0) << pair;
            EXPECT_EQ(a >= b, order >= 0) << pair;
            if (order == 0) {
                EXPECT_EQ(std::hash<Number>()(a), std::hash<Number>()(b)) << pair;
            }
        }
    }
}

TEST(NumberOperators, both_zeros_of_a_double_have_one_hash) {
    EXPECT_TRUE(Number(0.0) == Number("-0.0"));
    EXPECT_EQ(std::hash<Number>()(Number(0.0)), std::hash<Number>()(Number("-0.0")));
}

TEST(NumberOperators, tell_integers_apart_that_round_to_one_double) {
    const Number whole("9007199254740993");
    const Number real(9007199254740992.0);
    EXPECT_EQ(whole.compare(real), 0);
    EXPECT_TRUE(whole > real);
    EXPECT_NE(std::hash<Number>()(whole), std::hash<Number>()(real));
}

TEST(ElementHash, distinguishes_values) {
    const std::vector<std::string> texts = {"null",      "false",
                                            "true",      "0.5",
                                            "1",         "2",
                                            "\"\"",      "\"a\"",
                                            "\"b\"",     "{}",
                                            "[]",        "[[]]",
                                            "[[],1]",    "[1,2]",
                                            "[2,1]",     "[{}]",
                                            "[1,[2]]",   "[[1],2]",
                                            "{\"a\":1}", "{\"b\":1}",
                                            "{\"a\":2}", "{\"a\":1,\"b\":2}"};
    std::unordered_set<std::size_t> hashes;
    for (const std::string& text : texts) {
        hashes.insert(std::hash<Element>()(Document(text).root));
    }
    EXPECT_EQ(hashes.size(), texts.size());
}

TEST(ElementHash, keeps_elements_in_an_unordered_set) {
    std::unordered_set<Element> seen;
    EXPECT_TRUE(seen.insert(Document("[1, {\"a\": 1e0}]").root).second);
    EXPECT_FALSE(seen.insert(Document("[1.0, {\"a\": 1}]").root).second);
    EXPECT_TRUE(seen.insert(Document("[1, {\"a\": 2}]").root).second);
}

TEST(ElementHash, needs_no_stack_for_depth) {
    const std::size_t depth = 200000;
    const Document deep(std::string(depth, '[') + std::string(depth, ']'));
    const Document same(std::string(depth, '[') + std::string(depth, ']'));
    EXPECT_EQ(std::hash<Element>()(deep.root), std::hash<Element>()(same.root));
}

}  // namespace
