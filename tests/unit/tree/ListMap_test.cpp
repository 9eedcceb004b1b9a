// SPDX-License-Identifier: MIT
//
// Tests of ko::ListMap on its own: insertion order, lookup by key, the two ways to insert, copies,
// and what is left when a copy fails. What an object of elements adds is in Object_test.cpp.

#include <ko/ListMap.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <iterator>
#include <list>
#include <random>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace {

using Map = ko::ListMap<std::string, int, std::less<std::string>>;
using TransparentMap = ko::ListMap<std::string, int, std::less<>>;
using Member = Map::value_type;
using Members = std::vector<Member>;

/// The members in list order, if each of them is also what its key leads to.
template<class M>
std::vector<typename M::value_type> membersOf(const M& map) {
    for (auto member = map.begin(); member != map.end(); ++member) {
        if (map.find(member->first) != member || !map.contains(member->first)) {
            throw std::logic_error("index and list disagree");
        }
    }
    std::vector<typename M::value_type> members(map.begin(), map.end());
    EXPECT_EQ(map.size(), members.size());
    return members;
}

Map makeMap(const Members& members) {
    Map map;
    for (const Member& member : members) {
        map.insert(member);
    }
    return map;
}

TEST(ListMap, is_empty_when_new) {
    const Map map;
    EXPECT_TRUE(map.empty());
    EXPECT_EQ(map.size(), 0u);
    EXPECT_TRUE(map.find("") == map.end());
    EXPECT_FALSE(map.contains("a"));
}

TEST(ListMap, keeps_the_order_of_insertion_and_not_of_keys) {
    const Map map = makeMap({{"c", 1}, {"a", 2}, {"b", 3}});
    EXPECT_EQ(membersOf(map), (Members{{"c", 1}, {"a", 2}, {"b", 3}}));
}

TEST(ListMap, insert_returns_the_new_member) {
    Map map;
    const auto [position, isNew] = map.insert({"a", 1});
    EXPECT_TRUE(isNew);
    EXPECT_TRUE(position == map.begin());
    EXPECT_EQ(*position, Member("a", 1));
}

TEST(ListMap, insert_of_a_present_key_overwrites_the_value_in_its_place) {
    Map map = makeMap({{"b", 1}, {"a", 2}});
    const int* const value = &map.find("b")->second;
    const auto [position, isNew] = map.insert({"b", 3});
    EXPECT_FALSE(isNew);
    EXPECT_EQ(membersOf(map), (Members{{"b", 3}, {"a", 2}}));
    EXPECT_EQ(&position->second, value);
}

TEST(ListMap, insert_of_its_own_member_changes_nothing) {
    Map map = makeMap({{"a", 1}, {"b", 2}});
    const auto result = map.insert(*map.begin());
    EXPECT_FALSE(result.second);
    EXPECT_EQ(membersOf(map), (Members{{"a", 1}, {"b", 2}}));
}

TEST(ListMap, insert_before_a_position_puts_a_new_member_there) {
    Map map = makeMap({{"a", 1}, {"c", 3}});
    const auto position = map.insert(map.find("c"), {"b", 2});
    EXPECT_EQ(membersOf(map), (Members{{"a", 1}, {"b", 2}, {"c", 3}}));
    EXPECT_EQ(*position, Member("b", 2));
    map.insert(map.begin(), {"z", 0});
    map.insert(map.end(), {"y", 9});
    EXPECT_EQ(membersOf(map), (Members{{"z", 0}, {"a", 1}, {"b", 2}, {"c", 3}, {"y", 9}}));
}

TEST(ListMap, insert_before_a_position_leaves_a_present_key_alone) {
    Map map = makeMap({{"a", 1}, {"b", 2}});
    const auto position = map.insert(map.begin(), {"b", 5});
    EXPECT_EQ(membersOf(map), (Members{{"a", 1}, {"b", 2}}));
    EXPECT_TRUE(position == std::next(map.begin()));
}

TEST(ListMap, find_distinguishes_keys_byte_by_byte) {
    const std::string withNul("a\0b", 3);
    Map map = makeMap({{"a", 1}, {"A", 2}, {"", 3}, {withNul, 4}, {"a\xC3\xA4", 5}});
    EXPECT_EQ(map.size(), 5u);
    EXPECT_EQ(map.find("a")->second, 1);
    EXPECT_EQ(map.find("A")->second, 2);
    EXPECT_EQ(map.find("")->second, 3);
    EXPECT_EQ(map.find(withNul)->second, 4);
    EXPECT_TRUE(map.find("a ") == map.end());
    EXPECT_TRUE(map.find("a\xC3") == map.end());
}

TEST(ListMap, find_gives_access_to_the_value) {
    Map map = makeMap({{"a", 1}});
    map.find("a")->second = 7;
    const Map& constant = map;
    EXPECT_EQ(constant.find("a")->second, 7);
    EXPECT_TRUE(constant.find("b") == constant.end());
}

TEST(ListMap, orders_its_index_with_the_comparator_it_was_given) {
    using Function = bool (*)(int, int);
    using ByLastDigit = ko::ListMap<int, std::string, Function>;
    ByLastDigit map(+[](int a, int b) { return a % 10 < b % 10; });
    map.insert({12, "twelve"});
    map.insert({3, "three"});
    EXPECT_FALSE(map.insert({22, "twenty-two"}).second);
    ASSERT_EQ(map.size(), 2u);
    EXPECT_EQ(map.find(2)->second, "twenty-two");
    EXPECT_EQ(map.begin()->first, 22);
    const ByLastDigit copy(map);
    EXPECT_EQ(copy.find(93)->second, "three");
}

TEST(ListMap, erase_by_position_returns_the_member_after) {
    Map map = makeMap({{"a", 1}, {"b", 2}, {"c", 3}});
    const auto next = map.erase(map.find("b"));
    EXPECT_EQ(membersOf(map), (Members{{"a", 1}, {"c", 3}}));
    EXPECT_EQ(next->first, "c");
    EXPECT_TRUE(map.erase(next) == map.end());
    EXPECT_EQ(membersOf(map), (Members{{"a", 1}}));
    EXPECT_FALSE(map.contains("b"));
}

TEST(ListMap, erase_by_key_returns_how_many_went) {
    Map map = makeMap({{"a", 1}, {"b", 2}});
    EXPECT_EQ(map.erase("a"), 1u);
    EXPECT_EQ(map.erase("a"), 0u);
    EXPECT_EQ(membersOf(map), (Members{{"b", 2}}));
}

TEST(ListMap, erase_takes_a_key_that_lies_in_the_member_itself) {
    Map map = makeMap({{"a", 1}, {"b", 2}});
    EXPECT_EQ(map.erase(map.begin()->first), 1u);
    EXPECT_EQ(membersOf(map), (Members{{"b", 2}}));
}

TEST(ListMap, a_key_that_was_erased_comes_back_at_the_end) {
    Map map = makeMap({{"a", 1}, {"b", 2}});
    map.erase("a");
    EXPECT_TRUE(map.insert({"a", 3}).second);
    EXPECT_EQ(membersOf(map), (Members{{"b", 2}, {"a", 3}}));
}

TEST(ListMap, members_keep_their_addresses_while_others_come_and_go) {
    Map map = makeMap({{"x", 1}, {"keep", 2}, {"y", 3}});
    const Member* const kept = &*map.find("keep");
    for (int i = 0; i < 1000; ++i) {
        map.insert({std::to_string(i), i});
    }
    map.erase("x");
    map.erase("y");
    EXPECT_EQ(&*map.begin(), kept);
    EXPECT_EQ(&*map.find("keep"), kept);
    EXPECT_EQ(membersOf(map).size(), 1001u);
}

TEST(ListMap, swap_exchanges_members_with_their_addresses) {
    Map one = makeMap({{"b", 1}, {"a", 2}});
    Map two = makeMap({{"z", 9}});
    const Member* const first = &*one.begin();
    one.swap(two);
    EXPECT_EQ(membersOf(one), (Members{{"z", 9}}));
    EXPECT_EQ(membersOf(two), (Members{{"b", 1}, {"a", 2}}));
    EXPECT_EQ(&*two.find("b"), first);
}

TEST(ListMap, swap_with_itself_changes_nothing) {
    Map map = makeMap({{"b", 1}, {"a", 2}});
    map.swap(map);
    EXPECT_EQ(membersOf(map), (Members{{"b", 1}, {"a", 2}}));
}

TEST(ListMap, a_copy_has_members_of_its_own) {
    const Map map = makeMap({{"b", 1}, {"a", 2}});
    Map copy(map);
    copy.find("a")->second = 5;
    copy.insert({"c", 3});
    EXPECT_EQ(membersOf(map), (Members{{"b", 1}, {"a", 2}}));
    EXPECT_EQ(membersOf(copy), (Members{{"b", 1}, {"a", 5}, {"c", 3}}));
}

TEST(ListMap, assignment_replaces_all_members) {
    const Map source = makeMap({{"b", 1}, {"a", 2}});
    Map target = makeMap({{"a", 7}, {"x", 8}});
    EXPECT_EQ(&(target = source), &target);
    EXPECT_EQ(membersOf(target), (Members{{"b", 1}, {"a", 2}}));
    EXPECT_EQ(membersOf(source), (Members{{"b", 1}, {"a", 2}}));
}

TEST(ListMap, assignment_to_itself_keeps_the_very_members) {
    Map map = makeMap({{"b", 1}, {"a", 2}});
    const Member* const first = &*map.begin();
    const Map& same = map;
    map = same;
    EXPECT_EQ(membersOf(map), (Members{{"b", 1}, {"a", 2}}));
    EXPECT_EQ(&*map.begin(), first);
}

TEST(ListMap, serves_range_for_and_algorithms) {
    Map map = makeMap({{"b", 1}, {"a", 2}});
    for (Member& member : map) {
        member.second *= 10;
    }
    const auto found = std::find_if(map.cbegin(), map.cend(),
                                    [](const Member& member) { return member.second == 20; });
    ASSERT_TRUE(found != map.cend());
    EXPECT_EQ(found->first, "a");
}

TEST(ListMap, names_the_types_that_standard_containers_name) {
    EXPECT_TRUE((std::is_same_v<std::pair<std::string, int>, Map::value_type>));
    EXPECT_TRUE((std::is_same_v<std::string, Map::key_type>));
    EXPECT_TRUE((std::is_same_v<int, Map::mapped_type>));
    EXPECT_TRUE((std::is_same_v<std::size_t, Map::size_type>));
    EXPECT_TRUE(
        (std::is_same_v<const Member&, std::iterator_traits<Map::const_iterator>::reference>));
    EXPECT_TRUE(std::has_virtual_destructor_v<Map>);
}

/// The same as a ListMap, searched from its beginning each time.
struct Model {
    Members members;

    Members::iterator find(const std::string& key) {
        return std::find_if(members.begin(), members.end(),
                            [&](const Member& member) { return member.first == key; });
    }
};

/// One random edit, drawn from few enough keys that many are there already, of both.
template<class M, class Random>
void edit(M& map, Model& model, Random& random, std::size_t keys) {
    const std::string key = std::to_string(random() % keys);
    const int value = static_cast<int>(random() % 1000);
    const auto present = model.find(key);
    const bool isPresent = present != model.members.end();
    switch (random() % 4) {
        case 0:
            EXPECT_EQ(map.erase(key), isPresent ? 1u : 0u);
            if (isPresent) {
                model.members.erase(present);
            }
            break;
        case 1:
            EXPECT_EQ(map.insert(map.begin(), {key, value})->first, key);
            if (!isPresent) {
                model.members.insert(model.members.begin(), {key, value});
            }
            break;
        default:
            EXPECT_EQ(map.insert({key, value}).second, !isPresent);
            if (isPresent) {
                present->second = value;
            } else {
                model.members.emplace_back(key, value);
            }
            break;
    }
}

template<class M>
void expectToFollowTheModel(std::size_t keys) {
    std::mt19937 random(20240501);
    M map;
    Model model;
    for (int step = 0; step < 1500; ++step) {
        edit(map, model, random, keys);
        if (step % 50 == 0) {
            ASSERT_EQ(membersOf(map), model.members) << keys << " keys, step " << step;
            EXPECT_EQ(membersOf(M(map)), model.members);
        }
    }
}

TEST(ListMap, does_the_same_at_every_size_as_a_plain_sequence) {
    for (const std::size_t keys : {1u, 8u, 12u, 70u, 100u, 400u}) {
        expectToFollowTheModel<Map>(keys);
        expectToFollowTheModel<TransparentMap>(keys);
    }
}

TEST(ListMap, finds_each_key_while_it_grows_and_shrinks) {
    Map map;
    for (int i = 0; i < 200; ++i) {
        const std::string key = std::to_string(i * 37 % 200);
        EXPECT_FALSE(map.contains(key));
        map.insert({key, i});
        ASSERT_EQ(membersOf(map).size(), static_cast<std::size_t>(i) + 1);
    }
    for (int i = 0; i < 200; ++i) {
        const std::string key = std::to_string(i * 73 % 200);
        EXPECT_EQ(map.erase(key), 1u);
        EXPECT_FALSE(map.contains(key));
        ASSERT_EQ(membersOf(map).size(), 199 - static_cast<std::size_t>(i));
    }
    EXPECT_TRUE(map.empty());
    map.insert({"a", 1});
    EXPECT_EQ(membersOf(map), (Members{{"a", 1}}));
}

/// Keys that begin alike, for as long as a word or less, end with NUL, or have bytes over 0x7F.
std::vector<std::string> similarKeys() {
    std::vector<std::string> keys;
    for (std::size_t length = 0; length != 12; ++length) {
        const std::string beginning = std::string("abcdefghijkl").substr(0, length);
        for (const char* const end : {"", "z", "\x7F", "\x80", "\xFF"}) {
            keys.push_back(beginning + end);
        }
        for (std::size_t zeros = 1; zeros != 4; ++zeros) {
            keys.push_back(beginning + std::string(zeros, '\0'));
        }
    }
    return keys;
}

TEST(ListMap, finds_each_of_many_keys_that_begin_alike) {
    const std::vector<std::string> keys = similarKeys();
    Map grown;
    Map looked;
    for (std::size_t i = 0; i != keys.size(); ++i) {
        ASSERT_TRUE(grown.insert({keys[i], static_cast<int>(i)}).second);
        EXPECT_EQ(membersOf(grown).size(), i + 1);
    }
    looked = grown;  // without the index, which is made as a whole then
    EXPECT_EQ(membersOf(looked), membersOf(grown));
    for (const std::string& key : keys) {
        EXPECT_FALSE(looked.contains(key + "\x01"));
        EXPECT_EQ(looked.erase(key), 1u);
        EXPECT_FALSE(looked.contains(key));
    }
}

/// Compares with a key, and is no text.
struct Name {
    std::string text;

    friend bool operator==(const std::string& key, const Name& name) { return key == name.text; }
    friend bool operator<(const std::string& key, const Name& name) { return key < name.text; }
    friend bool operator<(const Name& name, const std::string& key) { return name.text < key; }
};

TEST(ListMap, finds_by_what_only_compares_with_keys_at_every_size) {
    Map map;
    for (int i = 0; i < 100; ++i) {
        const std::string key = std::to_string(i * 37 % 100);
        map.insert({key, i});
        EXPECT_EQ(membersOf(map).size(), static_cast<std::size_t>(i) + 1);
        ASSERT_TRUE(map.contains(Name{key})) << i;
        ASSERT_FALSE(map.contains(Name{key + "."})) << i;
    }
}

TEST(ListMap, swap_exchanges_a_small_and_a_large_one) {
    Map small = makeMap({{"x", 1}});
    Map large;
    for (int i = 0; i < 100; ++i) {
        large.insert({std::to_string(i), i});
    }
    small.swap(large);
    EXPECT_EQ(membersOf(large), (Members{{"x", 1}}));
    EXPECT_EQ(membersOf(small).size(), 100u);
    large = small;
    EXPECT_EQ(membersOf(large), membersOf(small));
    small.clear();
    EXPECT_FALSE(small.contains("7"));
    small.insert({"7", 8});
    EXPECT_EQ(membersOf(small), (Members{{"7", 8}}));
    EXPECT_EQ(large.find("7")->second, 7);
}

/// A value whose copy fails when it is asked to.
struct Fragile {
    explicit Fragile(bool broken = false) : isBroken(broken) {}
    Fragile(const Fragile& other) : isBroken(other.isBroken) { check(); }
    Fragile& operator=(const Fragile& other) {
        other.check();
        isBroken = other.isBroken;
        return *this;
    }
    ~Fragile() = default;

    void check() const {
        if (isBroken) {
            throw std::runtime_error("copied a broken value");
        }
    }

    bool isBroken;
};

using FragileMap = ko::ListMap<std::string, Fragile, std::less<>>;

std::string keysOf(const FragileMap& map) {
    std::string keys;
    for (const auto& member : membersOf(map)) {
        keys += member.first;
    }
    return keys;
}

TEST(ListMap, insert_that_throws_leaves_all_as_it_was) {
    FragileMap map;
    map.insert({"b", Fragile()});
    FragileMap::value_type broken("a", Fragile());
    broken.second.isBroken = true;
    EXPECT_THROW(map.insert(broken), std::runtime_error);
    EXPECT_EQ(keysOf(map), "b");
    EXPECT_THROW(map.insert(map.begin(), broken), std::runtime_error);
    EXPECT_EQ(keysOf(map), "b");
    EXPECT_FALSE(map.contains("a"));
    broken.second.isBroken = false;
    map.insert(broken);
    EXPECT_EQ(keysOf(map), "ba");
}

TEST(ListMap, assignment_that_throws_keeps_the_former_members) {
    FragileMap source;
    source.insert({"x", Fragile()});
    source.insert({"y", Fragile()}).first->second.isBroken = true;
    FragileMap target;
    target.insert({"b", Fragile()});
    target.insert({"a", Fragile()});
    EXPECT_THROW(target = source, std::runtime_error);
    EXPECT_EQ(keysOf(target), "ba");
    EXPECT_THROW(FragileMap copy(source), std::runtime_error);
}

/// Compares keys, and fails for one of them.
struct Picky {
    bool operator()(const std::string& a, const std::string& b) const {
        if (a == "bad" || b == "bad") {
            throw std::runtime_error("cannot compare");
        }
        return a < b;
    }
};

TEST(ListMap, a_comparison_that_throws_leaves_all_as_it_was) {
    ko::ListMap<std::string, int, Picky> map;
    map.insert({"b", 1});
    EXPECT_THROW(map.insert({"bad", 2}), std::runtime_error);
    EXPECT_THROW(map.insert(map.begin(), {"bad", 2}), std::runtime_error);
    EXPECT_THROW(map.erase("bad"), std::runtime_error);
    EXPECT_EQ(membersOf(map), (std::vector<std::pair<std::string, int>>{{"b", 1}}));
}

}  // namespace
