// SPDX-License-Identifier: MIT
//
// Queries that remove and change what they select.

#include <ko/Orvid/JsonPath.h>

#include <gtest/gtest.h>
#include <ko/Orvid.h>

#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "Selection.h"

namespace orvid_test {
namespace {

using ko::Orvid::Element;
using ko::Orvid::Exception;
using ko::Orvid::JsonPath;
using ko::Orvid::QueryOptions;

struct Edit {
    const char* query;
    const char* before;
    const char* after;
    std::size_t matches;
};

constexpr Edit k_removals[] = {
    {"$.a", R"({"a":1,"b":2})", R"({"b":2})", 1},
    {"$.x", R"({"a":1})", R"({"a":1})", 0},
    {"$[*]", "[1,2,3,4,5,6,7]", "[]", 7},
    {"$[1:3]", "[0,1,2,3]", "[0,3]", 2},
    {"$[0,0]", "[1,2]", "[2]", 1},
    {"$[::2]", "[0,1,2,3,4]", "[1,3]", 3},
    {"$..a", R"({"a":{"a":1},"b":[{"a":2,"c":3}]})", R"({"b":[{"c":3}]})", 3},
    {"$..[0]", "[[1,2],[3,4],5]", "[[4],5]", 3},
    {"$[?@.a]", R"([{"a":1},{"b":1},{"a":2}])", R"([{"b":1}])", 2},
    {"$.*", R"({"a":1,"b":[2]})", "{}", 2},
    {"$['b','a'][*]", R"({"a":[1],"b":[2,3]})", R"({"a":[],"b":[]})", 3},
};

TEST(JsonPathEdit, remove_takes_away_all_matches) {
    for (const Edit& row : k_removals) {
        SCOPED_TRACE(row.query);
        Document doc(row.before);
        EXPECT_EQ(JsonPath(row.query).remove(doc.root), row.matches);
        EXPECT_EQ(dense(doc.root), row.after);
        CHECK_LINKS(doc.root);
    }
}

TEST(JsonPathEdit, remove_leaves_the_others_where_they_are) {
    Document doc("[1,2,3,4,5,6]");
    const Element* const third = &doc.root.get("[2]");
    JsonPath("$[?@ != 3 && @ != 6]").remove(doc.root);
    EXPECT_EQ(dense(doc.root), "[3,6]");
    EXPECT_EQ(&doc.root.get("[0]"), third);
    CHECK_LINKS(doc.root);
}

TEST(JsonPathEdit, removes_many_members_of_a_large_object) {
    std::string text = "{";
    for (int i = 0; i < 500; ++i) {
        text += "\"" + std::to_string(i) + "\":" + std::to_string(i) + ",";
    }
    Document doc(text + R"("x":0})");
    EXPECT_EQ(JsonPath("$[?@ > 2]").remove(doc.root), 497u);
    EXPECT_EQ(dense(doc.root), R"({"0":0,"1":1,"2":2,"x":0})");
    CHECK_LINKS(doc.root);
}

TEST(JsonPathEdit, the_root_is_not_removed) {
    Document doc(R"({"a":[1]})");
    EXPECT_THROW(JsonPath("$").remove(doc.root), Exception);
    EXPECT_THROW(JsonPath("$").remove(doc.root.get("a")), Exception);
    EXPECT_EQ(dense(doc.root), R"({"a":[1]})");
}

constexpr Edit k_updates[] = {
    {"$.a", R"({"a":1,"b":2})", R"({"a":[0],"b":2})", 1},
    {"$", R"({"a":1})", "[0]", 1},
    {"$[0,0]", "[1,2]", "[[0],2]", 1},
    {"$..a", R"({"a":{"a":1},"b":{"a":2}})", R"({"a":[0],"b":{"a":[0]}})", 3},
    {"$..[*]", "[[1],2]", "[[0],[0]]", 3},
    {"$.x", R"({"a":1})", R"({"a":1})", 0},
};

TEST(JsonPathEdit, update_gives_each_match_the_value) {
    for (const Edit& row : k_updates) {
        SCOPED_TRACE(row.query);
        Document doc(row.before);
        const Document value("[0]");
        EXPECT_EQ(JsonPath(row.query).update(doc.root, value.root), row.matches);
        EXPECT_EQ(dense(doc.root), row.after);
        CHECK_LINKS_AFTER_COPY(doc.root);
    }
}

TEST(JsonPathEdit, update_takes_a_part_of_the_same_tree) {
    Document doc(R"({"a":{"b":1},"c":2})");
    EXPECT_EQ(JsonPath("$.*").update(doc.root, doc.root.get("a")), 2u);
    EXPECT_EQ(dense(doc.root), R"({"a":{"b":1},"c":{"b":1}})");
    EXPECT_EQ(JsonPath("$.a").update(doc.root, doc.root), 1u);
    EXPECT_EQ(dense(doc.root), R"({"a":{"a":{"b":1},"c":{"b":1}},"c":{"b":1}})");
    EXPECT_EQ(JsonPath("$.a").update(doc.root, doc.root.get("a.a.b")), 1u);
    EXPECT_EQ(dense(doc.root), R"({"a":1,"c":{"b":1}})");
    CHECK_LINKS(doc.root);
}

TEST(JsonPathEdit, update_each_calls_with_the_deeper_ones_first) {
    Document doc(R"([{"n":1},{"n":2,"in":{"n":3}},{"n":4}])");
    std::vector<int> order;
    const std::size_t count = JsonPath("$..n").updateEach(doc.root, [&order](Element& element) {
        order.push_back(element.number().toInt());
        element.setNumber(10 * element.number().toInt());
    });
    EXPECT_EQ(count, 4u);
    EXPECT_EQ(order, (std::vector<int>{3, 1, 2, 4}));
    EXPECT_EQ(dense(doc.root), R"([{"n":10},{"n":20,"in":{"n":30}},{"n":40}])");
}

TEST(JsonPathEdit, update_each_may_replace_what_holds_another_match) {
    Document doc("[[1,[2]],3]");
    const std::size_t count = JsonPath("$..*").updateEach(
        doc.root, [](Element& element) { element.setString(dense(element)); });
    EXPECT_EQ(count, 5u);
    EXPECT_EQ(dense(doc.root), R"(["[\"1\",\"[\\\"2\\\"]\"]","3"])");
    CHECK_LINKS(doc.root);
}

TEST(JsonPathEdit, update_each_ends_with_what_is_thrown) {
    Document doc("[1,2,3]");
    const auto change = [](Element& element) {
        if (element.number().toInt() == 2) {
            throw std::runtime_error("two");
        }
        element.setNull();
    };
    EXPECT_THROW(JsonPath("$[*]").updateEach(doc.root, change), std::runtime_error);
    EXPECT_EQ(dense(doc.root), "[null,2,3]");
}

TEST(JsonPathEdit, nothing_changes_beyond_the_bounds) {
    Document doc("[1,2,3]");
    QueryOptions options;
    options.maxResults = 2;
    const JsonPath query("$[*]", options);
    EXPECT_THROW(query.remove(doc.root), Exception);
    EXPECT_THROW(query.update(doc.root, Element("x")), Exception);
    EXPECT_THROW(query.updateEach(doc.root, [](Element& element) { element.setNull(); }),
                 Exception);
    EXPECT_EQ(dense(doc.root), "[1,2,3]");
}

/// A member "top" of so many objects in each other, with a member "x" in each.
std::string nest(int depth) {
    std::string text = "1";
    for (int i = 0; i < depth; ++i) {
        text = R"({"x":0,"k":)" + text + "}";
    }
    return R"({"top":)" + text + "}";
}

TEST(JsonPathEdit, looks_a_few_times_at_each_element_above_the_matches) {
    constexpr std::size_t depth = 3000;
    QueryOptions options;
    options.maxVisits = 8 * depth;
    const auto setNull = [](Element& element) { element.setNull(); };
    for (const auto& [text, count] : {std::pair("$..x", depth), {"$..['top','x']", depth + 1}}) {
        SCOPED_TRACE(text);
        const JsonPath query(text, options);
        Document doc(nest(depth));
        EXPECT_EQ(query.updateEach(doc.root, setNull), count);
        Document second(nest(depth));
        EXPECT_EQ(query.update(second.root, 1), count);
        Document third(nest(depth));
        EXPECT_EQ(query.remove(third.root), count);
    }
}

TEST(JsonPathEdit, the_ways_up_count_as_visits) {
    QueryOptions options;
    options.maxVisits = 12;
    const JsonPath query("$.a.b[*]", options);
    Document doc(R"({"a":{"b":[1,2,3,4,5]}})");
    EXPECT_EQ(query.select(doc.root).size(), 5U);
    EXPECT_THROW(query.updateEach(doc.root, [](Element& element) { element.setNull(); }),
                 Exception);
    EXPECT_EQ(dense(doc.root), R"({"a":{"b":[1,2,3,4,5]}})");
}

TEST(JsonPathEdit, finds_children_whose_place_they_were_not_reported) {
    Document doc(R"({"a":{"x":[1]},"b":{"y":2,"z":[3,4]}})");
    doc.root.get("a").object().swap(doc.root.get("b").object());
    doc.root.get("a.z").array().swap(doc.root.get("b.x").array());
    EXPECT_EQ(JsonPath("$.b.x[1]").remove(doc.root), 1U);
    EXPECT_EQ(JsonPath("$.b.x").remove(doc.root), 1U);
    EXPECT_EQ(dense(doc.root), R"({"a":{"y":2,"z":[1]},"b":{}})");
    CHECK_LINKS(doc.root);
}

}  // namespace
}  // namespace orvid_test
