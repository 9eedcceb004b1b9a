// SPDX-License-Identifier: MIT
//
// Editing an array in its middle: inserting, erasing, resizing, sorting, and what its iterators do.

#include <ko/Orvid/Array.h>

#include <algorithm>
#include <iterator>
#include <numeric>
#include <random>
#include <stdexcept>
#include <utility>
#include <vector>

#include "support/Document.h"

namespace {

using ko::Orvid::Element;
using orvid_test::compact;
using orvid_test::Document;
using TArray = Element::TArray;

int valueOf(const Element& item) { return item.to<int>(); }

/// An array of the numbers from 0 on.
void fill(TArray& array, int count) {
    for (int i = 0; i < count; ++i) {
        array.push_back(i);
    }
}

TEST(ArrayEdit, insert_puts_the_value_before_the_position) {
    Document doc("[1,2,3]");
    TArray& array = doc.root.array();
    const Element* const third = &array[2];
    const auto inserted = array.insert(array.begin() + 1, Element("x"));
    EXPECT_EQ(inserted - array.begin(), 1);
    EXPECT_EQ(inserted->path(), "[1]");
    EXPECT_EQ(compact(doc.root), R"([1,"x",2,3])");
    EXPECT_EQ(&array[3], third);
    CHECK_LINKS(doc.root);
}

TEST(ArrayEdit, insert_takes_a_number_as_position) {
    Document doc("[1,2]");
    TArray& array = doc.root.array();
    array.insert(0, 0);
    array.insert(array.size(), 9);
    EXPECT_EQ(compact(doc.root), "[0,1,2,9]");
    EXPECT_THROW(array.insert(5, 1), std::out_of_range);
    EXPECT_THROW(array.insert(5, array[0]), std::out_of_range);
    EXPECT_EQ(compact(doc.root), "[0,1,2,9]");
    CHECK_LINKS(doc.root);
}

TEST(ArrayEdit, insert_copies_an_item_of_its_own) {
    Document doc("[[1],2]");
    TArray& array = doc.root.array();
    array.insert(array.begin(), array[1]);
    array.insert(1, array[1]);
    EXPECT_EQ(compact(doc.root), "[2,[1],[1],2]");
    CHECK_LINKS_AFTER_COPY(doc.root);
}

TEST(ArrayEdit, insert_takes_a_moved_value_over) {
    Document doc("[1,2]");
    Document other("[[3]]");
    const Element* const three = &other.root.array()[0].array()[0];
    doc.root.array().insert(1, std::move(other.root.array()[0]));
    EXPECT_EQ(compact(doc.root), "[1,[3],2]");
    EXPECT_EQ(compact(other.root), "[null]");
    EXPECT_EQ(&doc.root.array()[1].array()[0], three);
    EXPECT_EQ(three->path(), "[1][0]");
    CHECK_LINKS(doc.root);
    CHECK_LINKS(other.root);
}

TEST(ArrayEdit, erase_removes_a_range) {
    Document doc("[0,1,2,3,4,5]");
    TArray& array = doc.root.array();
    const Element* const four = &array[4];
    const auto next = array.erase(array.begin() + 1, array.begin() + 4);
    EXPECT_EQ(valueOf(*next), 4);
    EXPECT_EQ(compact(doc.root), "[0,4,5]");
    EXPECT_EQ(&array[1], four);
    CHECK_LINKS(doc.root);
    EXPECT_TRUE(array.erase(array.begin() + 1, array.end()) == array.end());
    EXPECT_EQ(compact(doc.root), "[0]");
    CHECK_LINKS(doc.root);
    EXPECT_TRUE(array.erase(array.begin(), array.begin()) == array.begin());
    EXPECT_TRUE(array.erase(array.begin(), array.end()) == array.end());
    EXPECT_EQ(compact(doc.root), "[]");
    CHECK_LINKS(doc.root);
}

TEST(ArrayEdit, clear_leaves_an_array_that_takes_new_items) {
    Document doc("[0,[1,[2]],3]");
    doc.root.array().clear();
    EXPECT_EQ(compact(doc.root), "[]");
    CHECK_LINKS(doc.root);
    fill(doc.root.array(), 3);
    EXPECT_EQ(compact(doc.root), "[0,1,2]");
    CHECK_LINKS(doc.root);
}

TEST(ArrayEdit, resize_appends_nulls_or_removes_from_the_end) {
    Document doc("[0,1]");
    TArray& array = doc.root.array();
    array.resize(4);
    EXPECT_EQ(compact(doc.root), "[0,1,null,null]");
    CHECK_LINKS(doc.root);
    array.resize(1);
    EXPECT_EQ(compact(doc.root), "[0]");
    CHECK_LINKS(doc.root);
    array.resize(1);
    array.resize(0);
    EXPECT_EQ(compact(doc.root), "[]");
    CHECK_LINKS(doc.root);
}

TEST(ArrayEdit, erase_if_removes_all_matches) {
    Document doc("[1,1,2,1,3,1,1]");
    EXPECT_EQ(erase_if(doc.root.array(), [](const Element& item) { return valueOf(item) == 1; }),
              5U);
    EXPECT_EQ(compact(doc.root), "[2,3]");
    CHECK_LINKS(doc.root);
    EXPECT_EQ(erase_if(doc.root.array(), [](const auto& item) { return item.isNull(); }), 0U);
    EXPECT_EQ(erase_if(doc.root.array(), [](Element&) { return true; }), 2U);
    EXPECT_EQ(compact(doc.root), "[]");
    CHECK_LINKS(doc.root);
}

TEST(ArrayEdit, erase_if_that_throws_removes_nothing) {
    Document doc(R"([1,"x",1])");
    EXPECT_THROW(erase_if(doc.root.array(), [](const Element& item) { return valueOf(item) == 1; }),
                 ko::Orvid::Exception);
    EXPECT_EQ(compact(doc.root), R"([1,"x",1])");
    CHECK_LINKS(doc.root);
}

TEST(ArrayEdit, erase_if_is_linear) {
    Document doc("[]");
    fill(doc.root.array(), 200000);
    erase_if(doc.root.array(), [](const Element& item) { return valueOf(item) % 2 == 0; });
    EXPECT_EQ(doc.root.array().size(), 100000U);
    EXPECT_EQ(doc.root.array()[99999].path(), "[99999]");
    CHECK_LINKS(doc.root);
}

TEST(ArrayEdit, iterators_reach_any_item_at_once) {
    Document doc("[]");
    TArray& array = doc.root.array();
    fill(array, 100);
    const TArray::iterator begin = array.begin();
    const TArray::const_iterator middle = begin + 50;
    EXPECT_EQ(valueOf(*middle), 50);
    EXPECT_EQ(valueOf(begin[99]), 99);
    EXPECT_EQ(valueOf(*(array.end() - 1)), 99);
    EXPECT_EQ(middle - begin, 50);
    EXPECT_TRUE(begin < middle && middle > begin && begin <= begin && begin >= begin);
    EXPECT_TRUE(begin + 100 == array.end());
    EXPECT_TRUE((std::is_same_v<std::iterator_traits<TArray::iterator>::iterator_category,
                                std::random_access_iterator_tag>));
    EXPECT_EQ(std::accumulate(array.begin(), array.end(), 0,
                              [](int sum, const Element& item) { return sum + valueOf(item); }),
              4950);
}

TEST(ArrayEdit, iterators_go_backwards) {
    Document doc("[1,2,3]");
    std::vector<int> seen;
    const TArray& array = doc.root.array();
    std::transform(array.rbegin(), array.rend(), std::back_inserter(seen), valueOf);
    EXPECT_EQ((std::vector<int>{3, 2, 1}), seen);
    for (auto item = doc.root.array().rbegin(); item != doc.root.array().rend(); ++item) {
        *item = valueOf(*item) * 2;
    }
    EXPECT_EQ(compact(doc.root), "[2,4,6]");
    CHECK_LINKS(doc.root);
}

TEST(ArrayEdit, sorting_leaves_places_true) {
    Document doc(R"({"rows": []})");
    Element& rows = doc.root.get("rows");
    std::mt19937 random(7);
    for (int i = 0; i < 500; ++i) {
        Element& row = rows.array().emplace_back(Element(Element::k_emptyElement));
        row.create("id", static_cast<int>(random() % 1000));
        row.create("tags[*].name", i);
    }
    const auto byId = [](const Element& a, const Element& b) {
        return a.get("id").to<int>() < b.get("id").to<int>();
    };
    std::sort(rows.array().begin(), rows.array().end(), byId);
    EXPECT_TRUE(std::is_sorted(rows.array().begin(), rows.array().end(), byId));
    CHECK_LINKS(doc.root);
    EXPECT_EQ(rows.array()[321].get("tags[0].name").path(), "rows[321].tags[0].name");
    std::stable_sort(rows.array().rbegin(), rows.array().rend(), byId);
    CHECK_LINKS(doc.root);
    EXPECT_EQ(&rows.array()[0], rows.array()[0].get("tags").parent());
}

TEST(ArrayEdit, algorithms_that_move_items_leave_places_true) {
    Document doc(R"([[0],{"a":1},[2],"three",[4,[5]]])");
    TArray& array = doc.root.array();
    std::rotate(array.begin(), array.begin() + 2, array.end());
    EXPECT_EQ(compact(doc.root), R"([[2],"three",[4,[5]],[0],{"a": 1}])");
    CHECK_LINKS(doc.root);
    std::reverse(array.begin(), array.end());
    EXPECT_EQ(compact(doc.root), R"([{"a": 1},[0],[4,[5]],"three",[2]])");
    CHECK_LINKS(doc.root);
    array.erase(std::remove_if(array.begin(), array.end(),
                               [](const Element& item) { return item.isArray(); }),
                array.end());
    EXPECT_EQ(compact(doc.root), R"([{"a": 1},"three"])");
    CHECK_LINKS(doc.root);
}

/// Random edits of an array and of a vector beside it.
TEST(ArrayEdit, holds_what_a_vector_holds_after_any_edits) {
    std::mt19937 random(1);
    for (int round = 0; round < 40; ++round) {
        Document doc("[]");
        TArray& array = doc.root.array();
        std::vector<int> expected;
        for (int step = 0; step < 200; ++step) {
            const std::size_t at = random() % (expected.size() + 1);
            const auto offset = static_cast<std::ptrdiff_t>(at);
            const int value = static_cast<int>(random() % 5);
            switch (random() % 8) {
                case 0:
                case 1:
                case 2:
                    array.push_back(value);
                    expected.push_back(value);
                    break;
                case 3:
                    array.insert(at, value);
                    expected.insert(expected.begin() + offset, value);
                    break;
                case 4:
                    array.erase(array.begin() + offset,
                                array.end() - (array.end() - array.begin() - offset) / 2);
                    expected.erase(
                        expected.begin() + offset,
                        expected.end() - (expected.end() - expected.begin() - offset) / 2);
                    break;
                case 5:
                    if (!expected.empty()) {
                        array.pop_back();
                        expected.pop_back();
                    }
                    break;
                case 6:
                    erase_if(array, [=](const Element& item) { return valueOf(item) == value; });
                    expected.erase(std::remove(expected.begin(), expected.end(), value),
                                   expected.end());
                    break;
                default:
                    array.resize(expected.size() + 3);
                    for (std::size_t i = expected.size(); i < array.size(); ++i) {
                        array[i] = value;
                        expected.push_back(value);
                    }
                    break;
            }
            CHECK_LINKS(doc.root);
            ASSERT_TRUE(
                std::equal(array.begin(), array.end(), expected.begin(), expected.end(),
                           [](const Element& item, int each) { return valueOf(item) == each; }));
        }
    }
}

}  // namespace
