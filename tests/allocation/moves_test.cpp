// SPDX-License-Identifier: MIT
//
// Moves, swaps and builders while memory is refused.

#include <ko/Orvid.h>

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "support/EachAllocation.h"

namespace orvid_test {
namespace {

using ko::Orvid::Element;
using ko::Orvid::makeArray;
using ko::Orvid::makeObject;
using namespace ko::Orvid::literals;

const std::string k_new = "new name that is not held in place";

std::string nothing() { return {}; }

const std::vector<Operation> k_elements = {
    {"move_construct", Leaves::everything,
     [](Trees& trees) {
         const Element moved(std::move(trees.root.get("a")));
         return std::string(moved.isObject() ? "an object" : "something else");
     }},
    {"move_into_another_tree", Leaves::everything,
     [](Trees& trees) {
         trees.root.get("a.list[0]") = std::move(trees.other.get("o"));
         return nothing();
     }},
    {"move_a_part_of_itself", Leaves::everything,
     [](Trees& trees) {
         trees.root.get("a") = std::move(trees.root.get("a.list[3]"));
         return nothing();
     }},
    {"move_the_whole_into_a_part", Leaves::everything,
     [](Trees& trees) {
         trees.root.get("a.list[1]") = std::move(trees.root);
         return nothing();
     }},
    {"swap", Leaves::everything,
     [](Trees& trees) {
         swap(trees.root.get("a.list[1]"), trees.other.get("o"));
         return nothing();
     }},
    {"swap_with_a_part_of_itself", Leaves::everything,
     [](Trees& trees) {
         swap(trees.root, trees.root.get("a.list"));
         return nothing();
     }},
    {"swap_a_part_with_the_whole", Leaves::everything,
     [](Trees& trees) {
         swap(trees.root.get("a.list"), trees.root);
         return nothing();
     }},
};

const std::vector<Operation> k_containers = {
    {"move_items", Leaves::everything,
     [](Trees& trees) {
         trees.root.get("a.list").array() = std::move(trees.other.get("o").array());
         return nothing();
     }},
    {"move_members", Leaves::everything,
     [](Trees& trees) {
         trees.root.get("a").object() = std::move(trees.other.object());
         return nothing();
     }},
    {"swap_members", Leaves::everything,
     [](Trees& trees) {
         auto& left = trees.root.get("a").object();
         auto& right = trees.other.object();
         left.swap(right);
         right.setParent(right.parent());
         return nothing();
     }},
    {"name_another_parent_after_a_swap", Leaves::everything,
     [](Trees& trees) {
         Element::TArray left(&trees.root);
         Element::TArray right(&trees.other);
         left.push_back(1);
         right.push_back(2);
         left.swap(right);
         left.setParent(&trees.other);
         return std::string(right[0].parent() == &trees.root ? "the former one" : "another");
     }},
    {"emplace_back", Leaves::everything,
     [](Trees& trees) {
         trees.root.get("a.list").array().emplace_back(std::move(trees.other));
         return nothing();
     }},
    {"insert_or_assign_a_new_member", Leaves::everything,
     [](Trees& trees) {
         trees.root.object().insert_or_assign(k_new, std::move(trees.other));
         return nothing();
     }},
    {"insert_or_assign_over_a_member", Leaves::everything,
     [](Trees& trees) {
         trees.root.object().insert_or_assign("a", std::move(trees.other));
         return nothing();
     }},
};

const std::vector<Operation> k_builders = {
    {"make_array", Leaves::everything,
     [](Trees& trees) {
         return compact(makeArray({1, k_new, nullptr, trees.root, makeArray({2.5, true})}));
     }},
    {"make_object", Leaves::everything,
     [](Trees& trees) {
         return compact(makeObject({{k_new, trees.other},
                                    {"inner", makeObject({{"long name, not held in place", "x"}})},
                                    {k_new, 3}}));
     }},
    {"literals", Leaves::everything,
     [](Trees& trees) {
         return compact(R"({"a name that is not held in place": [1, "x", {}]})"_json) +
                compact(trees.root.get("a.list[0].name"_path));
     }},
    {"set_view", Leaves::everything,
     [](Trees& trees) {
         trees.root.get("a").setString(std::string_view(k_new));
         return nothing();
     }},
    {"to_and_to_or", Leaves::everything,
     [](Trees& trees) {
         return trees.root.get("s").to<std::string>() +
                trees.root.toOr("a.no name that is held in place", k_new) +
                trees.root.toOr("a.list[0].name", k_new);
     }},
};

class MovesWithoutMemory : public testing::TestWithParam<Operation> {};

TEST_P(MovesWithoutMemory, leave_everything_where_it_was) { failEachAllocation(GetParam()); }

std::string nameOf(const testing::TestParamInfo<Operation>& info) { return info.param.name; }

INSTANTIATE_TEST_SUITE_P(Elements, MovesWithoutMemory, testing::ValuesIn(k_elements), nameOf);
INSTANTIATE_TEST_SUITE_P(Containers, MovesWithoutMemory, testing::ValuesIn(k_containers), nameOf);
INSTANTIATE_TEST_SUITE_P(Builders, MovesWithoutMemory, testing::ValuesIn(k_builders), nameOf);

}  // namespace
}  // namespace orvid_test
