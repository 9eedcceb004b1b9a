// SPDX-License-Identifier: MIT
//
// How many requests for memory it takes to find out which items of an array changed, while many
// come and go at once.

#include <ko/Orvid.h>

#include <gtest/gtest.h>

#include <cstddef>
#include <string>

#include "support/CountedMemory.h"

namespace orvid_test {
namespace {

using ko::Orvid::Dom;
using ko::Orvid::Element;

Element wideObject(std::size_t size) {
    Element object = ko::Orvid::makeObject({});
    for (std::size_t i = 0; i < size; ++i) {
        object.object().resetMember("k" + std::to_string(i)) = Element(static_cast<int>(i));
    }
    return object;
}

/// For the text of an array in which one object gives way to `count` small ones.
std::size_t requestsFor(std::size_t count) {
    constexpr std::size_t width = 1000;
    const Element wide = ko::Orvid::makeArray({wideObject(width)});
    Element small = ko::Orvid::makeArray({});
    for (std::size_t i = 0; i < count; ++i) {
        small.array().push_back(ko::Orvid::makeObject({{"q", -1 - static_cast<int>(i)}}));
    }
    Dom dom = Dom::parse(serialize(wide));
    *dom = small;
    const std::size_t before = allocationCount();
    const std::string text = dom.text();
    const std::size_t requests = allocationCount() - before;
    EXPECT_EQ(*Dom::parse(text), *dom);
    return requests;
}

TEST(ComparingItems, takes_requests_for_what_they_hold_and_not_for_each_pair_of_them) {
    EXPECT_LE(requestsFor(400), 3 * requestsFor(20));
}

}  // namespace
}  // namespace orvid_test
