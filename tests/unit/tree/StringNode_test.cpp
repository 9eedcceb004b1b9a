// SPDX-License-Identifier: MIT
//
// The strings of elements, from cells and from the heap.

#include "tree/StringNode.h"

#include <ko/Orvid/Element.h>
#include <ko/Orvid/Number.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using ko::SlabArena;
using ko::Orvid::deleteString;
using ko::Orvid::Element;
using ko::Orvid::k_hasStringCells;
using ko::Orvid::newString;

std::string textOf(std::size_t i) { return std::string(i % 50, 'x') + std::to_string(i); }

std::vector<std::string*> made(SlabArena& nodes, std::size_t count) {
    std::vector<std::string*> result;
    for (std::size_t i = 0; i < count; ++i) {
        result.push_back(newString(&nodes, textOf(i)));
        SlabArena::release(nodes.cut(40), 40);  // so that there are slabs with room for cells
    }
    return result;
}

TEST(StringNode, makes_strings_that_outlive_their_memory) {
    std::vector<std::string*> strings;
    {
        SlabArena nodes(4096);
        strings = made(nodes, 2000);
    }
    std::size_t cells = 0;
    for (std::size_t i = 0; i < strings.size(); ++i) {
        EXPECT_EQ(*strings[i], textOf(i));
        cells += SlabArena::isCell(strings[i]) ? 1U : 0U;
        deleteString(strings[i]);
    }
    EXPECT_EQ(cells > strings.size() / 2, k_hasStringCells);
}

TEST(StringNode, deletes_strings_one_after_the_other_in_any_slab) {
    SlabArena nodes(4096);
    const std::vector<std::string*> strings = made(nodes, 2000);
    SlabArena::Freeing freeing;
    for (std::string* const each : strings) {
        deleteString(each, freeing);
    }
}

TEST(StringNode, deletes_what_new_has_made_and_nothing) {
    deleteString(new std::string("from new"));
    deleteString(nullptr);
    deleteString(newString(nullptr, "without node memory"));
}

TEST(StringNode, an_element_releases_a_string_of_the_caller) {
    Element element;
    element.data().value.string = new std::string("a caller's own");
    element.data().type = ko::Orvid::etString;
    EXPECT_EQ(element.string(), "a caller's own");
    element.setNull();
}

}  // namespace
