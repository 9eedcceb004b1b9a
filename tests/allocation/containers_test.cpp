// SPDX-License-Identifier: MIT
//
// What arrays, objects and elements do like the containers of the standard library, while memory is
// refused: every operation is done whole or not at all, unless it says otherwise.

#include <ko/Orvid.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

#include "support/EachAllocation.h"

namespace orvid_test {
namespace {

using ko::Orvid::Element;
using ko::Orvid::erase_if;
using ko::Orvid::PathNotFound;

const std::string k_key = "a new key that is not held in place";
const std::string k_longKey = "long name, not held in place";
const std::string k_text = "a new text that is not held in place";

Element::TArray& listOf(Trees& trees) { return trees.root.get("a.list").array(); }

const std::vector<Operation> k_arrays = {
    {"insert_before_an_item", Leaves::everything,
     [](Trees& trees) {
         Element::TArray& list = listOf(trees);
         list.insert(list.begin() + 1, trees.other);
         return std::string();
     }},
    {"insert_at_a_position", Leaves::everything,
     [](Trees& trees) {
         listOf(trees).insert(std::size_t{2}, Element(k_text));
         return std::string();
     }},
    {"insert_what_converts", Leaves::everything,
     [](Trees& trees) {
         Element::TArray& list = listOf(trees);
         list.insert(list.begin() + 1, std::vector<std::string>{k_text, k_key});
         return std::string();
     }},
    {"push_back_what_converts", Leaves::everything,
     [](Trees& trees) {
         listOf(trees).push_back(std::vector<std::string>{k_text, k_key});
         return std::string();
     }},
    {"emplace_back_what_converts", Leaves::everything,
     [](Trees& trees) {
         listOf(trees).emplace_back(std::vector<std::string>{k_text, k_key});
         return std::string();
     }},
    {"insert_an_item_of_itself", Leaves::everything,
     [](Trees& trees) {
         Element::TArray& list = listOf(trees);
         list.insert(list.begin(), list[3]);
         return std::string();
     }},
    {"erase_a_range", Leaves::everything,
     [](Trees& trees) {
         Element::TArray& list = listOf(trees);
         list.erase(list.begin(), list.begin() + 2);
         return std::string();
     }},
    {"clear_items", Leaves::everything,
     [](Trees& trees) {
         listOf(trees).clear();
         return std::string();
     }},
    {"grow", Leaves::everything,
     [](Trees& trees) {
         listOf(trees).resize(100);
         return std::string();
     }},
    {"shrink", Leaves::everything,
     [](Trees& trees) {
         listOf(trees).resize(1);
         return std::string();
     }},
    {"reserve", Leaves::everything,
     [](Trees& trees) {
         listOf(trees).reserve(100);
         return std::string();
     }},
    {"erase_items_that_match", Leaves::everything,
     [](Trees& trees) {
         const auto isObject = [](const Element& item) { return item.isObject(); };
         return std::to_string(erase_if(listOf(trees), isObject));
     }},
    {"sort", Leaves::wholeTrees,
     [](Trees& trees) {
         Element::TArray& list = listOf(trees);
         std::sort(list.begin(), list.end(),
                   [](const Element& a, const Element& b) { return a.size() < b.size(); });
         return std::string();
     }},
};

const std::vector<Operation> k_objects = {
    {"brackets_for_a_new_member", Leaves::everything,
     [](Trees& trees) {
         trees.root.object()[k_key] = 7;
         return std::string();
     }},
    {"brackets_for_a_member", Leaves::everything,
     [](Trees& trees) {
         trees.root.object()["s"] = k_text;
         return std::string();
     }},
    {"emplace", Leaves::everything,
     [](Trees& trees) {
         trees.root.object().emplace(k_key, k_text);
         return std::string();
     }},
    {"emplace_by_a_view", Leaves::everything,
     [](Trees& trees) {
         trees.root.object().emplace(std::string_view(k_key), 7);
         return std::string();
     }},
    {"emplace_what_converts", Leaves::everything,
     [](Trees& trees) {
         trees.root.object().emplace(k_key, std::vector<std::string>{k_text, k_key});
         return std::string();
     }},
    {"insert_or_assign_what_converts", Leaves::everything,
     [](Trees& trees) {
         trees.root.object().insert_or_assign("s", std::vector<std::string>{k_text, k_key});
         return std::string();
     }},
    {"emplace_what_is_there", Leaves::everything,
     [](Trees& trees) {
         return std::to_string(trees.root.object().emplace(std::string("s"), k_text).second ? 1
                                                                                            : 0);
     }},
    {"try_emplace", Leaves::everything,
     [](Trees& trees) {
         trees.root.object().try_emplace(k_key);
         return std::string();
     }},
    {"insert_or_assign_by_a_view", Leaves::everything,
     [](Trees& trees) {
         Element value = trees.other.get("o");
         trees.root.object().insert_or_assign(std::string_view(k_key), std::move(value));
         return std::string();
     }},
    {"erase_by_a_view", Leaves::everything,
     [](Trees& trees) {
         return std::to_string(trees.root.object().erase(std::string_view(k_longKey)));
     }},
    {"erase_members_that_match", Leaves::everything,
     [](Trees& trees) {
         const auto isShort = [](const auto& member) { return member.first.size() == 1; };
         return std::to_string(erase_if(trees.root.object(), isShort));
     }},
    {"clear_members", Leaves::everything,
     [](Trees& trees) {
         trees.root.object().clear();
         return std::string();
     }},
};

/// The path that the exception names.
template<class Action>
std::string missing(const Action& action) {
    try {
        action();
    } catch (const PathNotFound& error) {
        return error.path() + " " + describe(error);
    }
    return "nothing thrown";
}

const std::vector<Operation> k_elements = {
    {"at", Leaves::everything,
     [](Trees& trees) { return compact(trees.root.at("a").at("list").at(std::size_t{1})); }},
    {"at_nothing", Leaves::everything,
     [](Trees& trees) {
         return missing([&] { trees.root.at(k_key); }) +
                missing([&] { trees.root.at("a").at("list").at(std::size_t{9}); });
     }},
    {"a_member_of_an_object_at_nothing", Leaves::everything,
     [](Trees& trees) {
         const Element::TObject& members = trees.root.object();
         return compact(members.at("s")) + missing([&] { members.at(k_key); });
     }},
    {"get_or", Leaves::everything,
     [](Trees& trees) {
         return compact(trees.root.getOr("a.list", Element(k_text))) +
                compact(trees.root.getOr(k_key, Element(k_text)));
     }},
    {"visit", Leaves::everything,
     [](Trees& trees) {
         return ko::Orvid::visit(
             [](const auto& value) {
                 using Held = std::decay_t<decltype(value)>;
                 if constexpr (std::is_same_v<Held, std::string>) {
                     return std::string(value);
                 } else {
                     return std::string();
                 }
             },
             trees.root.get("s"));
     }},
};

class ContainersWithoutMemory : public testing::TestWithParam<Operation> {};

TEST_P(ContainersWithoutMemory, are_changed_whole_or_not_at_all) { failEachAllocation(GetParam()); }

std::string nameOf(const testing::TestParamInfo<Operation>& test) { return test.param.name; }

INSTANTIATE_TEST_SUITE_P(Arrays, ContainersWithoutMemory, testing::ValuesIn(k_arrays), nameOf);
INSTANTIATE_TEST_SUITE_P(Objects, ContainersWithoutMemory, testing::ValuesIn(k_objects), nameOf);
INSTANTIATE_TEST_SUITE_P(Elements, ContainersWithoutMemory, testing::ValuesIn(k_elements), nameOf);

}  // namespace
}  // namespace orvid_test
