// SPDX-License-Identifier: MIT
//
// Tests of ko::IndexList on its own: order, positions, addresses that stay, and what is left when a
// copy fails. What an array of elements adds is in Array_test.cpp.

#include <ko/IndexList.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <list>
#include <numeric>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <vector>

namespace {

using Numbers = ko::IndexList<int>;

void fill(Numbers& list, const std::vector<int>& values) {
    for (const int value : values) {
        list.push_back(value);
    }
}

/// The items in list order, if each of them is also what its position leads to.
template<class T>
std::vector<T> itemsOf(const ko::IndexList<T>& list) {
    std::size_t position = 0;
    for (const T& item : list) {
        if (position >= list.size() || &list[position] != &item) {
            throw std::logic_error("vector and list disagree");
        }
        ++position;
    }
    EXPECT_EQ(list.size(), position);
    return {list.begin(), list.end()};
}

using Values = std::vector<int>;

TEST(IndexList, is_empty_when_new) {
    const Numbers list;
    EXPECT_TRUE(list.empty());
    EXPECT_EQ(list.size(), 0u);
    EXPECT_TRUE(list.begin() == list.end());
    EXPECT_THROW(list.at(0), std::out_of_range);
}

TEST(IndexList, keeps_the_order_of_push_back) {
    Numbers list;
    fill(list, {3, 1, 2});
    EXPECT_EQ(itemsOf(list), (Values{3, 1, 2}));
    EXPECT_FALSE(list.empty());
}

TEST(IndexList, reaches_each_item_by_position) {
    Numbers list;
    fill(list, {10, 11, 12});
    EXPECT_EQ(list[0], 10);
    EXPECT_EQ(list[2], 12);
    EXPECT_EQ(list.at(1), 11);
    EXPECT_EQ(list.front(), 10);
    EXPECT_EQ(list.back(), 12);
    const Numbers& constant = list;
    EXPECT_EQ(constant[2], 12);
    EXPECT_EQ(constant.at(1), 11);
    EXPECT_EQ(constant.front(), 10);
    EXPECT_EQ(constant.back(), 12);
}

TEST(IndexList, at_throws_for_the_first_position_after_the_end) {
    Numbers list;
    fill(list, {10, 11});
    EXPECT_EQ(list.at(1), 11);
    EXPECT_THROW(list.at(2), std::out_of_range);
    EXPECT_THROW(list.at(static_cast<std::size_t>(-1)), std::out_of_range);
}

TEST(IndexList, items_can_be_changed_through_position_and_iterator) {
    Numbers list;
    fill(list, {1, 2, 3});
    list[0] = 7;
    list.at(1) = 8;
    *std::prev(list.end()) = 9;
    EXPECT_EQ(itemsOf(list), (Values{7, 8, 9}));
}

TEST(IndexList, items_keep_their_addresses_while_others_come_and_go) {
    Numbers list;
    fill(list, {0, 1, 2});
    const int* const middle = &list[1];
    for (int i = 3; i < 1000; ++i) {
        list.push_back(i);
    }
    EXPECT_EQ(&list[1], middle);
    list.erase(list.begin());
    EXPECT_EQ(&list[0], middle);
    while (list.size() > 1) {
        list.pop_back();
    }
    EXPECT_EQ(&list.back(), middle);
    EXPECT_EQ(*middle, 1);
}

// The run that is filled next is not always the last one.
TEST(IndexList, items_are_added_in_order_after_any_number_was_removed_from_the_end) {
    constexpr int k_most = 40;
    for (int first = 0; first <= k_most; ++first) {
        for (int left = 0; left <= first; ++left) {
            Numbers list;
            Values expected;
            for (int i = 0; i < first; ++i) {
                list.push_back(i);
            }
            while (list.size() > static_cast<std::size_t>(left)) {
                list.pop_back();
            }
            for (int i = left; i < k_most; ++i) {
                list.push_back(i);
            }
            for (int i = 0; i < k_most; ++i) {
                expected.push_back(i);
            }
            ASSERT_EQ(itemsOf(list), expected) << first << ' ' << left;
        }
    }
}

TEST(IndexList, push_back_takes_an_item_of_its_own) {
    Numbers list;
    fill(list, {5, 6});
    list.push_back(list[0]);
    list.push_back(list.back());
    EXPECT_EQ(itemsOf(list), (Values{5, 6, 5, 5}));
}

TEST(IndexList, pop_back_removes_the_last_item) {
    Numbers list;
    fill(list, {1, 2, 3});
    list.pop_back();
    EXPECT_EQ(itemsOf(list), (Values{1, 2}));
    list.push_back(4);
    EXPECT_EQ(itemsOf(list), (Values{1, 2, 4}));
}

TEST(IndexList, pop_back_of_the_only_item_leaves_it_empty) {
    Numbers list;
    fill(list, {1});
    list.pop_back();
    EXPECT_TRUE(list.empty());
    EXPECT_EQ(itemsOf(list), Values());
}

TEST(IndexList, erase_returns_the_position_after_the_item) {
    Numbers list;
    fill(list, {1, 2, 3, 4});
    const auto next = list.erase(std::next(list.begin()));
    EXPECT_EQ(itemsOf(list), (Values{1, 3, 4}));
    EXPECT_EQ(*next, 3);
}

TEST(IndexList, erase_of_the_last_item_returns_the_end) {
    Numbers list;
    fill(list, {1, 2});
    EXPECT_TRUE(list.erase(std::prev(list.end())) == list.end());
    EXPECT_EQ(itemsOf(list), (Values{1}));
    EXPECT_TRUE(list.erase(list.cbegin()) == list.end());
    EXPECT_EQ(itemsOf(list), Values());
}

TEST(IndexList, erase_takes_the_iterators_of_a_standard_search) {
    Numbers list;
    fill(list, {4, 5, 6});
    list.erase(std::find(list.begin(), list.end(), 5));
    EXPECT_EQ(itemsOf(list), (Values{4, 6}));
}

TEST(IndexList, swap_exchanges_items_with_their_addresses) {
    Numbers one;
    Numbers two;
    fill(one, {1, 2, 3});
    fill(two, {9});
    const int* const first = &one[0];
    const int* const other = &two[0];
    one.swap(two);
    EXPECT_EQ(itemsOf(one), (Values{9}));
    EXPECT_EQ(itemsOf(two), (Values{1, 2, 3}));
    EXPECT_EQ(&one[0], other);
    EXPECT_EQ(&two[0], first);
}

TEST(IndexList, swap_with_itself_changes_nothing) {
    Numbers list;
    fill(list, {1, 2});
    list.swap(list);
    EXPECT_EQ(itemsOf(list), (Values{1, 2}));
}

TEST(IndexList, swap_with_an_empty_one_moves_all_items) {
    Numbers full;
    Numbers empty;
    fill(full, {1, 2});
    empty.swap(full);
    EXPECT_EQ(itemsOf(full), Values());
    EXPECT_EQ(itemsOf(empty), (Values{1, 2}));
}

TEST(IndexList, updateVector_changes_nothing_when_all_agrees) {
    Numbers list;
    list.updateVector();
    EXPECT_EQ(itemsOf(list), Values());
    fill(list, {1, 2});
    list.updateVector();
    list.updateVector();
    EXPECT_EQ(itemsOf(list), (Values{1, 2}));
}

TEST(IndexList, serves_range_for_and_algorithms) {
    Numbers list;
    fill(list, {1, 2, 3});
    for (int& item : list) {
        item *= 10;
    }
    EXPECT_EQ(std::accumulate(list.cbegin(), list.cend(), 0), 60);
    EXPECT_EQ(std::count_if(list.begin(), list.end(), [](int item) { return item > 10; }), 2);
    EXPECT_EQ(std::distance(list.begin(), list.end()), 3);
}

TEST(IndexList, names_the_types_that_standard_containers_name) {
    EXPECT_TRUE((std::is_same_v<int, Numbers::value_type>));
    EXPECT_TRUE((std::is_same_v<std::size_t, Numbers::size_type>));
    EXPECT_TRUE((std::is_same_v<int&, std::iterator_traits<Numbers::iterator>::reference>));
    EXPECT_TRUE(
        (std::is_same_v<const int&, std::iterator_traits<Numbers::const_iterator>::reference>));
    EXPECT_TRUE(std::has_virtual_destructor_v<Numbers>);
}

/// A text whose copy fails on demand.
struct Fragile {
    explicit Fragile(const char* given) : text(given) {}
    Fragile(const Fragile& other) : text(other.text) {
        if (text == "broken") {
            throw std::runtime_error("copied a broken text");
        }
    }
    Fragile& operator=(const Fragile&) = delete;
    ~Fragile() = default;

    std::string text;
};

TEST(IndexList, push_back_that_throws_leaves_all_as_it_was) {
    ko::IndexList<Fragile> list;
    list.push_back(Fragile("a"));
    list.push_back(Fragile("b"));
    const Fragile* const first = &list[0];
    EXPECT_THROW(list.push_back(Fragile("broken")), std::runtime_error);
    ASSERT_EQ(list.size(), 2u);
    EXPECT_EQ(std::distance(list.begin(), list.end()), 2);
    EXPECT_EQ(&list[0], first);
    EXPECT_EQ(list[1].text, "b");
    EXPECT_THROW(list.at(2), std::out_of_range);
    list.push_back(Fragile("c"));
    EXPECT_EQ(list.at(2).text, "c");
}

/// Counts how often the vector is brought up to date.
class Watched : public Numbers {
public:
    void updateVector() override {
        ++updates;
        Numbers::updateVector();
    }

    template<class Matches>
    void removeMatches(const Matches& matches) {
        eraseMatches(matches, true);
    }

    int updates = 0;
};

TEST(IndexList, erase_notifies_a_subclass_that_positions_have_changed) {
    Watched list;
    fill(list, {1, 2, 3});
    EXPECT_EQ(list.updates, 0);
    list.erase(list.begin());
    EXPECT_EQ(list.updates, 1);
}

TEST(IndexList, eraseMatches_skips_the_item_after_a_removed_one) {
    Watched list;
    fill(list, {1, 1, 2, 1});
    list.removeMatches([](int item) { return item == 1; });
    EXPECT_EQ(itemsOf(list), (Values{1, 2}));
    EXPECT_EQ(list.updates, 1);
}

TEST(IndexList, eraseMatches_without_a_match_updates_nothing) {
    Watched list;
    fill(list, {1, 2});
    list.removeMatches([](int item) { return item == 3; });
    EXPECT_EQ(itemsOf(list), (Values{1, 2}));
    EXPECT_EQ(list.updates, 0);
}

TEST(IndexList, eraseMatches_that_throws_leaves_all_items) {
    Watched list;
    fill(list, {1, 2, 3, 4});
    EXPECT_THROW(list.removeMatches([](int item) {
        if (item == 3) {
            throw std::runtime_error("three");
        }
        return item == 1;
    }),
                 std::runtime_error);
    EXPECT_EQ(itemsOf(list), (Values{1, 2, 3, 4}));
    EXPECT_EQ(list.updates, 0);
}

}  // namespace
