// SPDX-License-Identifier: MIT
//
// Edits of a tree while memory is refused: what docs/errors.md says stays.

#include <ko/ListMap.h>
#include <ko/Orvid.h>

#include <gtest/gtest.h>

#include <functional>
#include <iterator>
#include <memory>
#include <string>

#include "support/EachAllocation.h"

namespace orvid_test {
namespace {

using ko::Orvid::Element;
using ko::Orvid::Number;
using ko::Orvid::Path;

const std::string k_long = "long name, not held in place";
const std::string k_new = "new name that is not held in place";

const std::vector<Operation> k_values = {
    {"assign_a_tree", Leaves::everything,
     [](Trees& trees) {
         trees.root.get("a.list[0]") = trees.other;
         return std::string();
     }},
    {"assign_a_part_of_itself", Leaves::everything,
     [](Trees& trees) {
         trees.root.get("a") = trees.root.get("a.list[3]");
         return std::string();
     }},
    {"assign_an_object_to_an_object", Leaves::everything,
     [](Trees& trees) {
         trees.root.get("a") = trees.other;
         return std::string();
     }},
    {"assign_the_whole_to_a_part", Leaves::everything,
     [](Trees& trees) {
         trees.root.get("a.list[1]") = trees.root;
         return std::string();
     }},
    {"set_null", Leaves::everything,
     [](Trees& trees) {
         trees.root.get("a").setNull();
         return std::string();
     }},
    {"set_boolean", Leaves::everything,
     [](Trees& trees) {
         trees.root.get("a").setBoolean(true);
         return std::string();
     }},
    {"set_string_over_an_object", Leaves::everything,
     [](Trees& trees) {
         trees.root.get("a").setString(k_long);
         return std::string();
     }},
    {"set_string_over_a_string", Leaves::everything,
     [](Trees& trees) {
         trees.root.get("a.list[1].name").setString(k_long.data(), 20);
         return std::string();
     }},
    {"set_string_from_within", Leaves::everything,
     [](Trees& trees) {
         trees.root.setString(trees.root.get("s").string());
         return std::string();
     }},
    {"set_number_text", Leaves::everything,
     [](Trees& trees) {
         trees.root.get("s").setNumber("12345678901234567890123", 23);
         return std::string();
     }},
    {"set_number_over_a_number", Leaves::everything,
     [](Trees& trees) {
         trees.root.get("a.list[0].id").setNumber(trees.root.get("n").number());
         return std::string();
     }},
    {"set_binary_number", Leaves::everything,
     [](Trees& trees) {
         trees.root.get("s").setNumber(12.5);
         return std::string();
     }},
    {"copy_payload", Leaves::everything,
     [](Trees& trees) {
         Element& target = trees.root.get("s");
         Element::copy(target.data(), trees.other.data(), &target);
         return std::string();
     }},
    {"copy_construct", Leaves::everything,
     [](Trees& trees) { return compact(Element(trees.root)); }},
    {"construct_from_values", Leaves::everything,
     [](Trees&) {
         return compact(Element(k_long)) + compact(Element(k_long.c_str())) + compact(Element(7)) +
                compact(Element(Number("12345678901234567890"))) + compact(Element(true));
     }},
    {"make_new_elements", Leaves::everything,
     [](Trees& trees) {
         const std::unique_ptr<Element> element(trees.root.clone());
         return compact(*element);
     }},
};

const std::vector<Operation> k_byPath = {
    {"create", Leaves::wholeTrees,
     [](Trees& trees) {
         trees.root.create(k_new + "[*].k[*]", trees.other);
         return std::string();
     }},
    {"create_from_within", Leaves::wholeTrees,
     [](Trees& trees) {
         trees.root.create("a." + k_new, trees.root);
         return std::string();
     }},
    {"try_create", Leaves::wholeTrees,
     [](Trees& trees) {
         trees.root.tryCreate("a.list[*]." + k_new, trees.root.get("s"));
         return std::string();
     }},
    {"try_update_of_what_is_missing", Leaves::wholeTrees,
     [](Trees& trees) {
         trees.root.tryUpdate("a." + k_new, trees.other);
         return std::string();
     }},
    {"try_update_of_what_is_there", Leaves::everything,
     [](Trees& trees) {
         trees.root.tryUpdate("a.list[0]", trees.other);
         return std::string();
     }},
    {"update", Leaves::everything,
     [](Trees& trees) {
         trees.root.update("a.list[0]", trees.other);
         return std::string();
     }},
    {"update_from_within", Leaves::everything,
     [](Trees& trees) {
         trees.root.update(k_long, trees.root.get(k_long + ".x"));
         return std::string();
     }},
    {"insert_a_new_member", Leaves::everything,
     [](Trees& trees) {
         trees.root.insert(k_new, trees.other);
         return std::string();
     }},
    {"insert_over_a_member", Leaves::everything,
     [](Trees& trees) {
         trees.root.insert(k_long, trees.root);
         return std::string();
     }},
    {"remove", Leaves::wholeTrees,
     [](Trees& trees) {
         trees.root.remove(Element(Number("2")), "id", "a.list");
         return std::string();
     }},
    {"remove_a_value_of_the_tree", Leaves::wholeTrees,
     [](Trees& trees) {
         trees.root.remove(trees.root.get("a.list[1].name"), "name", "a.list");
         return std::string();
     }},
    {"try_remove", Leaves::wholeTrees,
     [](Trees& trees) {
         trees.root.tryRemove(trees.root.get("a.list[3]"), "", "a.list");
         return std::string();
     }},
};

const std::vector<Operation> k_containers = {
    {"push_back", Leaves::everything,
     [](Trees& trees) {
         trees.root.get("a.list").array().push_back(trees.other);
         return std::string();
     }},
    {"push_back_of_an_item", Leaves::everything,
     [](Trees& trees) {
         auto& items = trees.root.get("a.list").array();
         items.push_back(items.front());
         return std::string();
     }},
    {"append_null", Leaves::everything,
     [](Trees& trees) {
         trees.root.get("a.list").array().appendNull();
         return std::string();
     }},
    {"erase_item", Leaves::everything,
     [](Trees& trees) {
         auto& items = trees.root.get("a.list").array();
         items.erase(items.begin());
         return std::string();
     }},
    {"pop_back", Leaves::everything,
     [](Trees& trees) {
         trees.root.get("a.list").array().pop_back();
         return std::string();
     }},
    {"assign_items", Leaves::everything,
     [](Trees& trees) {
         trees.root.get("a.list").array() = trees.other.get("o").array();
         return std::string();
     }},
    {"assign_items_from_within", Leaves::everything,
     [](Trees& trees) {
         trees.root.get("a.list").array() = trees.root.get("a.list[3]").array();
         return std::string();
     }},
    {"swap_items", Leaves::everything,
     [](Trees& trees) {
         auto& left = trees.root.get("a.list").array();
         auto& right = trees.other.get("o").array();
         left.swap(right);
         right.setParent(right.parent());
         return std::string();
     }},
    {"insert_a_pair", Leaves::everything,
     [](Trees& trees) {
         trees.root.object().insert({k_new, trees.other});
         return std::string();
     }},
    {"insert_a_pair_that_is_there", Leaves::everything,
     [](Trees& trees) {
         trees.root.object().insert({k_long, trees.other});
         return std::string();
     }},
    {"insert_before", Leaves::everything,
     [](Trees& trees) {
         auto& object = trees.root.object();
         object.insert(std::next(object.begin()), {k_new, trees.other});
         return std::string();
     }},
    {"reset_a_new_member", Leaves::everything,
     [](Trees& trees) {
         trees.root.object().resetMember(k_new);
         return std::string();
     }},
    {"reset_a_member", Leaves::everything,
     [](Trees& trees) {
         trees.root.object().resetMember(k_long);
         return std::string();
     }},
    {"assign_members", Leaves::everything,
     [](Trees& trees) {
         trees.root.object() = trees.other.object();
         return std::string();
     }},
    {"assign_members_from_within", Leaves::everything,
     [](Trees& trees) {
         trees.root.object() = trees.root.get("a").object();
         return std::string();
     }},
    {"erase_member", Leaves::everything,
     [](Trees& trees) {
         trees.root.object().erase(k_long);
         return std::string();
     }},
};

class EditsWithoutMemory : public testing::TestWithParam<Operation> {};

TEST_P(EditsWithoutMemory, leave_whole_trees_and_what_they_promise) {
    failEachAllocation(GetParam());
}

std::string nameOf(const testing::TestParamInfo<Operation>& info) { return info.param.name; }

INSTANTIATE_TEST_SUITE_P(Values, EditsWithoutMemory, testing::ValuesIn(k_values), nameOf);
INSTANTIATE_TEST_SUITE_P(ByPath, EditsWithoutMemory, testing::ValuesIn(k_byPath), nameOf);
INSTANTIATE_TEST_SUITE_P(Containers, EditsWithoutMemory, testing::ValuesIn(k_containers), nameOf);

/// An object and an array of so many children.
std::string manyChildren(unsigned int count) {
    std::string members;
    std::string items;
    for (unsigned int i = 0; i < count; ++i) {
        const std::string separator = i == 0 ? "" : ",";
        members += separator + "\"" + std::to_string(i) + "\":" + std::to_string(i);
        items += separator + std::to_string(i);
    }
    return "[{" + members + "},[" + items + "]]";
}

/// An object like that, and how often a key was looked up in it.
struct Asked {
    unsigned int count;
    unsigned int lookups;
};

std::vector<Asked> askedObjects() {
    std::vector<Asked> result;
    for (const unsigned int count : {7U, 8U, 9U, 15U, 16U, 17U, 63U, 64U, 65U, 128U}) {
        for (const unsigned int lookups : {0U, 16U, 17U}) {
            result.push_back({count, lookups});
        }
    }
    return result;
}

/// How children are found depends on their number and on how often that was done, and changes with
/// one more of them.
TEST(EditsWithoutMemory, leave_every_way_of_finding_children_as_it_was) {
    for (const auto [count, lookups] : askedObjects()) {
        const std::string text = manyChildren(count);
        for (std::size_t number = 1; number < 12; ++number) {
            const Document document(text);
            Element root(document.root);
            for (unsigned int i = 0; i < lookups; ++i) {
                ASSERT_FALSE(root.array()[0].object().contains(k_new));
            }
            for (Element& item : root.array()) {
                refuseAllocation(number, Refusal::forGood);
                try {
                    if (item.isObject()) {
                        item.object().resetMember(k_new);
                        item.object().erase(k_new);
                    } else {
                        item.array().appendNull();
                        item.array().pop_back();
                    }
                } catch (const std::bad_alloc&) {
                }
                refuseNone();
            }
            ASSERT_EQ(compact(root), compact(document.root)) << count << ' ' << number;
            CHECK_LINKS_AFTER_COPY(root);
            for (unsigned int i = 0; i < count; ++i) {
                ASSERT_EQ(root.get("[0]").object().find(std::to_string(i))->second.to<unsigned>(),
                          i);
                ASSERT_EQ(root.get("[1]").array()[i].to<unsigned>(), i);
            }
        }
    }
}

TEST(EditsWithoutMemory, make_no_half_copies_of_many_children) {
    const Document document(manyChildren(70));
    bool isRefused = true;
    for (std::size_t number = 1; isRefused; ++number) {
        const std::size_t blocks = liveBlocks();
        bool isCopied = false;
        refuseAllocation(number, Refusal::once);
        try {
            const Element copy(document.root);
            isCopied = true;
        } catch (const std::bad_alloc&) {
        }
        isRefused = refuseNone();
        ASSERT_NE(isRefused, isCopied) << number;
        ASSERT_EQ(liveBlocks(), blocks) << "leaked at request " << number;
        ASSERT_LT(number, 10000U) << "no end of requests";
    }
}

TEST(ListMapWithoutMemory, is_copied_whole_or_not_at_all) {
    using Map = ko::ListMap<int, int, std::less<int>>;
    for (const int count : {8, 9, 64, 65, 100}) {
        Map map;
        for (int i = 0; i < count; ++i) {
            map.insert({i, -i});
        }
        bool isRefused = true;
        for (std::size_t number = 1; isRefused; ++number) {
            const std::size_t blocks = liveBlocks();
            std::size_t copied = 0;
            refuseAllocation(number, Refusal::forGood);
            try {
                const Map copy(map);
                copied = copy.size();
            } catch (const std::bad_alloc&) {
            }
            isRefused = refuseNone();
            ASSERT_EQ(copied, isRefused ? 0U : map.size()) << number;
            ASSERT_EQ(liveBlocks(), blocks) << "leaked at request " << number;
        }
    }
}

/// What create() has made before it fails is new; nothing that was there is changed.
TEST(EditsWithoutMemory, creation_changes_no_value_that_was_there) {
    for (std::size_t number = 1; number < 60; ++number) {
        Trees trees;
        const std::string before = compact(trees.root);
        refuseAllocation(number, Refusal::once);
        try {
            trees.root.create("a.list[*]." + k_new + ".k[*]", trees.other);
        } catch (const std::bad_alloc&) {
            refuseNone();
            auto& items = trees.root.get("a.list").array();
            if (items.size() == 5) {
                items.pop_back();
            }
            EXPECT_EQ(compact(trees.root), before) << number;
        }
        refuseNone();
    }
}

}  // namespace
}  // namespace orvid_test
