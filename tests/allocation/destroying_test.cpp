// SPDX-License-Identifier: MIT
//
// What a tree held is freed with it, whatever its shape: below the levels that are destroyed by
// recursion and above them, in wide objects, and in arrays whose items have left their runs.

#include <ko/Orvid.h>

#include <gtest/gtest.h>

#include <cstddef>
#include <functional>
#include <string>
#include <utility>

#include "support/CountedMemory.h"

namespace orvid_test {
namespace {

using ko::Orvid::DomParser;
using ko::Orvid::Element;

/// Scalars of each kind; the number and the string have their text on the heap.
const std::string k_scalars =
    R"(null,true,7,12345678901234567890.1234567890,"short","a text that is too long for a string")";

std::string object(const std::string& inner) {
    return R"({"n":1.25,"a key that is too long for a string":"and a text that is too long as well",)"
           R"("in":)" +
           inner + R"(,"after it a key that is too long too":12345678901234567890.1234567890})";
}

/// Arrays and objects by turns, with scalars before and after the next level.
std::string nested(std::size_t levels) {
    std::string text = "[]";
    for (std::size_t level = 0; level != levels; ++level) {
        text = level % 2 == 0 ? '[' + k_scalars + ',' + text + ',' + k_scalars + ']' : object(text);
    }
    return text;
}

std::string wide(std::size_t members) {
    std::string text = "{";
    for (std::size_t member = 0; member != members; ++member) {
        text += (member == 0 ? "\"" : ",\"") + std::to_string(member) +
                R"( is a key on the heap":)" + (member % 3 == 0 ? '[' + k_scalars + ']' : "\"x\"");
    }
    return text + '}';
}

/// How many blocks are left of a tree that was read, edited and destroyed, and of its copy.
std::size_t leftOf(
    const std::string& text, const std::function<void(Element&)>& edit = [](Element&) {}) {
    const std::size_t before = liveBlocks();
    {
        Element read;
        DomParser().parse(read, text);
        edit(read);
        const Element copied(read);
        EXPECT_GT(liveBlocks(), before + 1);
    }
    return liveBlocks() - before;
}

/// Each array of the tree loses an item from its middle.
void loosen(Element& element) {
    if (element.isArray()) {
        if (element.array().size() > 2) {
            element.array().erase(element.array().begin() + 1);
        }
        for (Element& item : element.array()) {
            loosen(item);
        }
    } else if (element.isObject()) {
        for (auto& [key, value] : element.object()) {
            loosen(value);
        }
    }
}

TEST(Destroying, nested_containers_free_all_they_hold) {
    for (const std::size_t levels : {1U, 2U, 30U, 31U, 32U, 33U, 34U, 35U, 64U, 65U, 100U}) {
        EXPECT_EQ(leftOf(nested(levels)), 0U) << levels << " levels";
    }
}

TEST(Destroying, arrays_with_loose_items_free_all_they_hold) {
    for (const std::size_t levels : {1U, 31U, 32U, 33U, 34U, 65U}) {
        EXPECT_EQ(leftOf(nested(levels), loosen), 0U) << levels << " levels";
    }
}

TEST(Destroying, wide_objects_free_all_they_hold) {
    for (const std::size_t members : {1U, 255U, 256U, 257U, 1000U}) {
        EXPECT_EQ(leftOf(wide(members)), 0U) << members << " members";
    }
}

TEST(Destroying, wide_object_below_many_levels_frees_all_it_holds) {
    std::string text = wide(300);
    for (int level = 0; level != 40; ++level) {
        text = '[' + text + ']';
    }
    EXPECT_EQ(leftOf(text), 0U);
}

TEST(Destroying, element_that_was_moved_out_stays) {
    Element kept;
    const std::string text = nested(41);
    const std::size_t before = liveBlocks();
    {
        Element read;
        DomParser().parse(read, text);
        kept = std::move(read.array().back());
    }
    EXPECT_EQ(kept.string(), "a text that is too long for a string");
    kept.setNull();
    EXPECT_EQ(liveBlocks(), before);
}

}  // namespace
}  // namespace orvid_test
