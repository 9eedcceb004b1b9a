// SPDX-License-Identifier: MIT
//
// Looking up by a plain path that leads somewhere takes no memory, however long the path and its
// keys are.

#include <ko/Orvid.h>

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <string_view>

#include "support/CountedMemory.h"

namespace orvid_test {
namespace {

using ko::Orvid::DomParser;
using ko::Orvid::Element;
using ko::Orvid::Path;

constexpr std::string_view k_value = "servers_of_this_section[0].the_name_of_the_host";
constexpr std::string_view k_defaulted = "servers_of_this_section[0].the_number_of_the_port";

/// How many requests for memory `call` makes.
template<class Call>
std::size_t requestsOf(const Call& call) {
    const std::size_t before = allocationCount();
    call();
    return allocationCount() - before;
}

class LookupMemory : public testing::Test {
protected:
    LookupMemory() {
        DomParser().parse(root, R"({
            "meta": {"schema": {"properties": {"servers_of_this_section": {"items": {"properties": {
                "the_name_of_the_host": {"default": "none"},
                "the_number_of_the_port": {"default": 8080}
            }}}}}},
            "servers_of_this_section": [{"the_name_of_the_host": "alpha"}]
        })");
    }

    Element root;
    const Element fallback{0};
};

TEST_F(LookupMemory, is_none_for_values) {
    const Element& constRoot = root;
    EXPECT_EQ(requestsOf([&] { EXPECT_EQ(root.get(k_value).string(), "alpha"); }), 0U);
    EXPECT_EQ(requestsOf([&] { EXPECT_EQ(constRoot.get(k_value).string(), "alpha"); }), 0U);
    EXPECT_EQ(requestsOf([&] { EXPECT_EQ(root.tryGet(k_value, fallback).string(), "alpha"); }), 0U);
    EXPECT_EQ(requestsOf([&] { EXPECT_TRUE(root.pathExists(k_value)); }), 0U);
}

TEST_F(LookupMemory, is_none_for_defaults) {
    EXPECT_EQ(requestsOf([&] { EXPECT_EQ(root.getDefault(k_value).string(), "none"); }), 0U);
    EXPECT_EQ(
        requestsOf([&] { EXPECT_EQ(root.tryGetDefault(k_value, fallback).string(), "none"); }), 0U);
    EXPECT_EQ(requestsOf([&] { EXPECT_EQ(root.getUsingDefault(k_value).string(), "alpha"); }), 0U);
    for (const std::string_view path : {k_value, k_defaulted}) {
        EXPECT_EQ(
            requestsOf([&] { EXPECT_NE(&root.tryGetUsingDefault(path, fallback), &fallback); }),
            0U);
    }
}

TEST_F(LookupMemory, is_none_for_a_path_that_is_kept) {
    const Path value{k_value};
    const Path defaulted{k_defaulted};
    EXPECT_EQ(requestsOf([&] { EXPECT_EQ(root.get(value).string(), "alpha"); }), 0U);
    EXPECT_EQ(requestsOf([&] { EXPECT_FALSE(root.pathExists(defaulted)); }), 0U);
    EXPECT_EQ(
        requestsOf([&] { EXPECT_EQ(root.getUsingDefault(defaulted).number().toInt(), 8080); }), 0U);
}

/// As often as an object is asked before it makes an index.
void lookUpAFewTimes(const Element& object) {
    for (int i = 0; i < 8; ++i) {
        EXPECT_NE(object.member("key99"), nullptr);
        EXPECT_EQ(object.member("none"), nullptr);
    }
}

TEST(ObjectMemory, a_lookup_among_many_members_needs_no_memory_to_find) {
    Element root;
    std::string text = "{\"key0\": 0";
    for (int i = 1; i < 100; ++i) {
        text += ", \"key" + std::to_string(i) + "\": " + std::to_string(i);
    }
    DomParser().parse(root, text + '}');
    const Element copy = root;
    EXPECT_EQ(0U, requestsOf([&] { lookUpAFewTimes(copy); }));
    for (int i = 0; i < 100; ++i) {
        const std::string key = "key" + std::to_string(i);
        refuseAllocation(1, Refusal::forGood);
        const Element* const found = copy.member(key);
        const Element* const missing = copy.member("none");
        EXPECT_TRUE(refuseNone());
        ASSERT_NE(found, nullptr);
        EXPECT_EQ(i, found->to<int>());
        EXPECT_EQ(missing, nullptr);
    }
    const std::size_t before = allocationCount();
    EXPECT_NE(copy.member("key7"), nullptr);
    EXPECT_LT(before, allocationCount());
}

}  // namespace
}  // namespace orvid_test
