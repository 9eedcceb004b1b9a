// SPDX-License-Identifier: MIT
//
// `==` to `>=` and std::hash of elements: JSON's equality, and the total order that agrees with it.
// The older order of compare() is tested in ElementCompare_test.cpp.

#include <ko/Orvid/Element.h>

#include <gtest/gtest.h>
#include <ko/Orvid/build.h>
#include <ko/Orvid/JsonPatch.h>
#include <ko/Orvid/literals.h>

#include <cstddef>
#include <limits>
#include <set>
#include <string>
#include <vector>

#include "support/Document.h"
#include "support/Order.h"

namespace {

using ko::Orvid::Element;
using ko::Orvid::makeArray;
using ko::Orvid::makeObject;
using ko::Orvid::Number;
using namespace ko::Orvid::literals;
using orvid_test::Document;
using orvid_test::expectOrder;
using orvid_test::orderOfPositions;

Element empty() { return Element::k_emptyElement; }

/// From the smallest to the largest; the elements of a line are equal.
std::vector<std::vector<Element>> values() {
    constexpr double infinity = std::numeric_limits<double>::infinity();
    return {{empty()},
            {"null"_json, Element()},
            {"false"_json, false},
            {"true"_json, true},
            {-infinity},
            {"-900719925474099312346"_json},
            {"-900719925474099312345"_json},
            {"0"_json, "-0"_json, "0.0"_json, "0e5"_json, 0, 0U, 0.0, -0.0, 0.0F, Number()},
            {0.1, 0.1F, "0.1"_json, "1e-1"_json},
            {"1"_json, 1, "1.0"_json, "10e-1"_json},
            {"900719925474099312345"_json},
            {"1e999999999"_json, "10e999999998"_json},
            {infinity},
            {std::numeric_limits<double>::quiet_NaN(), -std::numeric_limits<double>::quiet_NaN()},
            {Number("abc")},
            {""},
            {"a"},
            {std::string("a\0b", 3)},
            {"ab"},
            {"\xC3\xA4"},
            {"{}"_json, makeObject({})},
            {R"({"a":0})"_json, makeObject({{"a", 0}})},
            {R"({"a":0,"b":2})"_json, R"({"b":2.0,"a":-0})"_json},
            {R"({"a":0,"c":[]})"_json, R"({"c":[],"a":0.0})"_json},
            {R"({"a":1,"b":2})"_json, R"({"b":2,"a":1})"_json, makeObject({{"b", 2.0}, {"a", 1U}})},
            {R"({"a":{"x":1,"y":[0]}})"_json, R"({"a":{"y":[0e0],"x":10e-1}})"_json},
            {R"({"b":0})"_json},
            {"[]"_json, makeArray({})},
            {"[0]"_json, makeArray({0}), makeArray({0.0}), "[-0]"_json},
            {"[0,0]"_json},
            {"[1,[2,{}]]"_json},
            {"[1,[2,{}],3]"_json, "[1,[2,{}],3e0]"_json},
            {"[1,[3]]"_json},
            {"[{}]"_json}};
}

TEST(ElementOrder, is_total_and_the_same_each_time) {
    const std::vector<std::vector<Element>> lines = values();
    for (std::size_t i = 0; i < lines.size(); ++i) {
        for (std::size_t j = 0; j < lines.size(); ++j) {
            for (const Element& a : lines[i]) {
                for (const Element& b : lines[j]) {
                    SCOPED_TRACE("lines " + std::to_string(i) + " and " + std::to_string(j));
                    expectOrder(a, b, orderOfPositions(i, j));
                    EXPECT_EQ(a == b, i == j);
                }
            }
        }
    }
}

TEST(ElementOrder, leaves_one_of_three_zeros_in_a_set) {
    EXPECT_EQ((std::set<Element>{"0"_json, "-0.0"_json, 0}.size()), 1U);
}

TEST(ElementOrder, of_members_does_not_count_only_here) {
    const Element a = R"({"a":1,"b":2})"_json;
    const Element b = R"({"b":2,"a":1})"_json;
    EXPECT_TRUE(a == b);
    EXPECT_EQ(Element::compare(a.data(), b.data()), -1);
    EXPECT_NE(Element::compare("[0]"_json.data(), makeArray({0}).data()), 0);
}

TEST(ElementOrder, distinguishes_a_long_number_from_zero_each_time) {
    const Element number = "900719925474099312345"_json;
    for (int time = 0; time < 3; ++time) {
        EXPECT_FALSE(number == 0U);
        EXPECT_TRUE(number > 0U);
    }
}

TEST(ElementOrder, finds_a_member_in_the_way_that_is_missing_in_the_other) {
    EXPECT_FALSE(R"({"a":1,"b":2})"_json == R"({"a":1,"c":2})"_json);
    EXPECT_FALSE(R"({"a":1})"_json == R"({"a":1,"c":2})"_json);
    EXPECT_FALSE(R"({"a":1,"b":2})"_json == R"({"b":1,"a":2})"_json);
}

TEST(ElementOrder, lets_a_patch_test_numbers_by_their_value) {
    Element target = R"({"n":0})"_json;
    const Element patch =
        makeArray({makeObject({{"op", "test"}, {"path", "/n"}, {"value", 0}}),
                   makeObject({{"op", "replace"}, {"path", "/n"}, {"value", 1}})});
    ko::Orvid::applyPatch(target, patch);
    EXPECT_EQ(orvid_test::compact(target), R"({"n": 1})");
}

TEST(ElementHash, distinguishes_null_true_and_false_at_any_depth) {
    std::set<std::size_t> hashes;
    for (const char* const text :
         {"null", "true", "false", "[null]", "[true]", "[false]", "[[null]]", "[[true]]", "[0]",
          "[1]", "[[],[]]", "[[[]]]", "{\"\":null}"}) {
        hashes.insert(std::hash<Element>()(Document(text).root));
    }
    EXPECT_EQ(hashes.size(), 13U);
}

TEST(ElementOrder, needs_no_stack_for_depth) {
    const std::size_t depth = 200000;
    const Document deep(std::string(depth, '[') + std::string(depth, ']'));
    const Document same(std::string(depth, '[') + std::string(depth, ']'));
    std::string members;
    for (std::size_t i = 0; i < depth; ++i) {
        members += "{\"a\":";
    }
    const Document object(members + "0" + std::string(depth, '}'));
    const Document other(members + "1" + std::string(depth, '}'));
    EXPECT_TRUE(deep.root == same.root);
    EXPECT_EQ(deep.root.order(same.root), 0);
    EXPECT_EQ(object.root.order(other.root), -1);
    EXPECT_FALSE(object.root == other.root);
    EXPECT_NE(std::hash<Element>()(object.root), std::hash<Element>()(other.root));
}

TEST(ElementOrder, finds_a_difference_at_any_depth) {
    std::string one = "1";
    std::string two = "2";
    for (int depth = 0; depth < 140; ++depth) {
        SCOPED_TRACE(depth);
        const Document left(one);
        const Document right(two);
        EXPECT_TRUE(left.root == Document(one).root);
        EXPECT_FALSE(left.root == right.root);
        for (std::string* const text : {&one, &two}) {
            *text = depth % 2 == 0 ? "[[0],{}," + *text + ",[5]]" : R"({"a":[],"b":)" + *text + "}";
        }
    }
}

TEST(ElementNumber, set_from_a_floating_value_reads_back_as_the_same_value) {
    Element element;
    element.setNumber(52.52000659999);
    EXPECT_EQ(orvid_test::compact(element), "52.52000659999");
    element.setNumber(1700000000.125);
    EXPECT_EQ(orvid_test::compact(element), "1700000000.125");
    element.setNumber(0.1F);
    EXPECT_EQ(orvid_test::compact(element), "0.1");
    EXPECT_EQ(orvid_test::compact(makeArray({0.3, 1e-7, 0.1F, 100.0})), "[0.3,1e-07,0.1,100]");
    EXPECT_EQ(orvid_test::compact(Element(1.0 / 3)), "0.3333333333333333");
    EXPECT_EQ(Element(1.0 / 3).to<double>(), 1.0 / 3);
    EXPECT_EQ(Element(4294967295.0).to<long long>(), 4294967295);
    EXPECT_EQ(orvid_test::compact(Element(Number(1234567.0))), "1.23457e+06");
}

TEST(ElementNumber, reads_the_same_before_and_after_it_is_written) {
    const Element number(Number(4294967295.0));
    EXPECT_EQ(number.to<long long>(), 4294967295);
    EXPECT_EQ(number.number().toString(), "4.29497e+09");
    EXPECT_EQ(orvid_test::compact(number), "4.29497e+09");
    EXPECT_EQ(number.to<long long>(), 4294967295);
    EXPECT_TRUE(number == 4294967295LL);
}

}  // namespace
