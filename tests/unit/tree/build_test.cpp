// SPDX-License-Identifier: MIT
//
// Arrays and objects written down in the code.

#include <ko/Orvid/build.h>

#include <gtest/gtest.h>
#include <ko/Orvid/Array.h>
#include <ko/Orvid/Object.h>

#include <string>
#include <utility>

#include "support/Document.h"

namespace {

using ko::Orvid::Element;
using ko::Orvid::makeArray;
using ko::Orvid::makeObject;
using ko::Orvid::Number;
using orvid_test::compact;

TEST(Build, an_array_of_values_of_all_kinds) {
    const std::string text = "s";
    const Element array = makeArray({1, 2.5, "two", text, true, nullptr, Number("1e5"), Element()});
    EXPECT_EQ(compact(array), R"([1,2.5,"two","s",true,null,1e5,null])");
    CHECK_LINKS(array);
}

TEST(Build, an_object_in_the_order_of_the_list) {
    const Element object = makeObject({{"z", 1}, {"a", "x"}, {std::string("m"), makeArray({})}});
    EXPECT_EQ(compact(object), R"({"z": 1,"a": "x","m": []})");
    CHECK_LINKS(object);
}

TEST(Build, nested_ones) {
    const Element object = makeObject({{"a", makeArray({makeObject({{"b", 1}}), 2})}});
    EXPECT_EQ(compact(object), R"({"a": [{"b": 1},2]})");
    CHECK_LINKS(object);
}

TEST(Build, the_last_of_a_repeated_key_counts_in_the_first_place) {
    EXPECT_EQ(compact(makeObject({{"a", 1}, {"b", 2}, {"a", 3}})), R"({"a": 3,"b": 2})");
}

TEST(Build, makes_empty_containers_of_empty_lists) {
    EXPECT_TRUE(makeArray({}).isArray());
    EXPECT_TRUE(makeObject({}).isObject());
}

TEST(Build, copies_what_has_a_name_and_moves_what_was_moved) {
    Element named = makeArray({1});
    const Element* const child = &named.array()[0];
    const Element copied = makeArray({named});
    EXPECT_EQ(compact(named), "[1]");
    EXPECT_NE(&copied.get("[0][0]"), child);
    const Element moved = makeArray({std::move(named)});
    EXPECT_EQ(&moved.get("[0][0]"), child);
    CHECK_LINKS(moved);
}

}  // namespace
