// SPDX-License-Identifier: MIT
//
// Keys of objects that are being filled, in small and in larger ones, and of objects in each other.

#include "tree/OpenKeys.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <vector>

#include "tree/Place.h"

namespace {

using ko::Orvid::Element;
using ko::Orvid::OpenKeys;
using ko::Orvid::Place;

/// Of all lengths up to `count`, which share beginnings and ends.
std::vector<std::string> keys(std::size_t count) {
    std::vector<std::string> result;
    for (std::size_t i = 0; i < count; ++i) {
        result.push_back(std::string(i / 2, 'a') + std::to_string(i % 2) + std::string(i / 3, 'z'));
    }
    return result;
}

class OpenKeysTest : public testing::Test {
protected:
    /// Appends the key, which must be new.
    void add(Element::TObject& object, const std::string& key) {
        ASSERT_EQ(m_keys.find(object, key), nullptr) << key;
        Place::append(object, key);
    }
    void fill(Element::TObject& object, const std::vector<std::string>& all) {
        for (const std::string& key : all) {
            add(object, key);
        }
    }
    void expectAll(Element::TObject& object) {
        for (auto& member : object) {
            EXPECT_EQ(m_keys.find(object, member.first), &member) << member.first;
        }
        EXPECT_EQ(m_keys.find(object, "none of them"), nullptr);
    }

    OpenKeys m_keys;
};

TEST_F(OpenKeysTest, finds_every_key_of_an_object_of_any_size) {
    for (std::size_t size = 0; size <= OpenKeys::k_most; ++size) {
        Element::TObject object;
        m_keys.open();
        fill(object, keys(size));
        expectAll(object);
        m_keys.close();
    }
}

TEST_F(OpenKeysTest, keeps_the_outer_object_while_an_inner_one_is_open) {
    Element::TObject outer;
    m_keys.open();
    fill(outer, keys(20));
    Element::TObject inner;
    m_keys.open();
    fill(inner, keys(30));
    expectAll(inner);
    m_keys.close();
    expectAll(outer);
    add(outer, "one more");
    expectAll(outer);
}

TEST_F(OpenKeysTest, looks_again_when_members_were_removed) {
    Element::TObject object;
    m_keys.open();
    fill(object, keys(20));
    object.erase(object.begin());
    m_keys.clear();
    EXPECT_EQ(m_keys.find(object, keys(1)[0]), nullptr);
    expectAll(object);
}

TEST_F(OpenKeysTest, takes_the_keys_of_an_object_that_has_some_already) {
    Element::TObject object;
    for (const std::string& key : keys(40)) {
        object.try_emplace(key);
    }
    expectAll(object);
    add(object, "one more");
    expectAll(object);
}

TEST_F(OpenKeysTest, takes_the_keys_of_an_outer_object_that_it_has_forgotten) {
    Element::TObject outer;
    m_keys.open();
    fill(outer, keys(10));
    m_keys.clear();
    Element::TObject inner;
    m_keys.open();
    fill(inner, keys(10));
    m_keys.close();
    outer.try_emplace("added by somebody else");
    expectAll(outer);
    m_keys.close();
    expectAll(inner);
}

}  // namespace
