// SPDX-License-Identifier: MIT
//
// The keys of a wide object, and what becomes of keys whose hashes are alike.

#include "tree/WideKeys.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <string_view>

#include "tree/Place.h"

namespace {

using ko::Orvid::Element;
using ko::Orvid::OpenWideKeys;
using ko::Orvid::Place;
using ko::Orvid::WideKeys;

/// Of the length only.
struct PoorHash {
    std::size_t operator()(std::string_view key) const { return key.size(); }
};

/// Adds keys up to so many.
template<class Hash>
void fill(WideKeys<Hash>& keys, Element::TObject& object, std::size_t count) {
    for (std::size_t i = object.size(); i < count; ++i) {
        const std::string key = std::to_string(i);
        ASSERT_EQ(keys.find(key), nullptr) << key;
        keys.add(Place::append(object, key));
    }
}

TEST(WideKeys, finds_each_of_many_keys_and_no_other) {
    Element::TObject object;
    WideKeys<> keys;
    fill(keys, object, 20000);
    ASSERT_FALSE(keys.hasGivenUp());
    EXPECT_EQ(keys.size(), 20000U);
    for (auto& member : object) {
        ASSERT_EQ(keys.find(member.first), &member) << member.first;
    }
    EXPECT_EQ(keys.find("20000"), nullptr);
    EXPECT_EQ(keys.find(""), nullptr);
}

TEST(WideKeys, finds_what_was_added_between_many_lookups) {
    Element::TObject object;
    WideKeys<> keys;
    for (const std::size_t count : {100U, 1000U, 1001U, 5000U}) {
        fill(keys, object, count);
        for (auto& member : object) {
            ASSERT_EQ(keys.find(member.first), &member) << member.first << " of " << count;
        }
        EXPECT_EQ(keys.find(std::to_string(count)), nullptr);
    }
    EXPECT_FALSE(keys.hasGivenUp());
}

TEST(WideKeys, finds_a_key_of_each_length_among_keys_that_differ_in_one_byte) {
    for (std::size_t length = 1; length != 40; ++length) {
        Element::TObject object;
        WideKeys<> keys;
        for (std::size_t at = 0; at != length; ++at) {
            for (const char byte : {'\0', '\x80', 'z'}) {
                std::string key(length, 'a');
                key[at] = byte;
                ASSERT_EQ(keys.find(key), nullptr) << key;
                keys.add(Place::append(object, key));
            }
        }
        for (auto& member : object) {
            ASSERT_EQ(keys.find(member.first), &member) << member.first;
        }
        EXPECT_EQ(keys.find(std::string(length, 'a')), nullptr);
    }
}

TEST(WideKeys, distinguishes_keys_of_one_hash) {
    Element::TObject object;
    WideKeys<PoorHash> keys;
    fill(keys, object, 100);
    ASSERT_FALSE(keys.hasGivenUp());
    for (auto& member : object) {
        ASSERT_EQ(keys.find(member.first), &member) << member.first;
    }
}

TEST(WideKeys, gives_up_where_too_many_keys_have_one_hash) {
    Element::TObject object;
    WideKeys<PoorHash> keys;
    fill(keys, object, 1000);
    EXPECT_TRUE(keys.hasGivenUp());
    EXPECT_EQ(keys.size(), 0U);
    EXPECT_EQ(keys.find("1"), nullptr);
    keys.add(*object.begin());
    EXPECT_EQ(keys.size(), 0U);
}

/// Appends as many keys as make the object so wide, through the tables once there are some.
void widen(OpenWideKeys& open, Element::TObject& object, std::size_t size) {
    while (object.size() != size) {
        const std::string key = std::to_string(object.size());
        WideKeys<>* const keys = object.size() < OpenWideKeys::k_least ? nullptr : open.of(object);
        ASSERT_EQ(keys != nullptr, object.size() >= OpenWideKeys::k_least) << key;
        if (keys != nullptr) {
            ASSERT_EQ(keys->find(key), nullptr) << key;
        }
        auto& member = Place::append(object, key);
        if (keys != nullptr) {
            keys->add(member);
        }
    }
}

void expectAll(WideKeys<>* keys, Element::TObject& object) {
    ASSERT_NE(keys, nullptr);
    for (auto& member : object) {
        EXPECT_EQ(keys->find(member.first), &member) << member.first;
    }
}

TEST(OpenWideKeys, keep_the_outer_object_while_an_inner_one_is_open) {
    OpenWideKeys open;
    Element::TObject outer;
    widen(open, outer, 300);
    Element::TObject inner;
    widen(open, inner, 100);
    expectAll(open.of(inner), inner);
    open.close(inner);
    expectAll(open.of(outer), outer);
    open.close(Element::TObject());
    widen(open, outer, 400);
    expectAll(open.of(outer), outer);
}

TEST(OpenWideKeys, leave_an_object_to_its_index_that_they_have_forgotten_or_not_seen_grow) {
    OpenWideKeys open;
    Element::TObject object;
    widen(open, object, 100);
    object.try_emplace("added by somebody else");
    EXPECT_EQ(open.of(object), nullptr);
    Element::TObject another;
    widen(open, another, 100);
    open.clear();
    EXPECT_EQ(open.of(another), nullptr);
}

}  // namespace
