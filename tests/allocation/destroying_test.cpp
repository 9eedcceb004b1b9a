// SPDX-License-Identifier: MIT
//
// What a tree held is freed with it, whatever its shape: below the levels that are destroyed by
// recursion and above them, in wide objects, and in arrays whose items have left their runs.

#include <ko/Orvid.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <new>
#include <string>
#include <utility>
#include <vector>

#include "support/CountedMemory.h"

namespace orvid_test {
namespace {

using ko::Orvid::DomParser;
using ko::Orvid::Element;
using ko::Orvid::Number;

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

// A page of numbers that own nothing is freed without a look at them. One that comes to own
// something must be noticed, whatever makes it do so, while all others stay as they were.

const std::string k_longText = "123456789012345678901234567890.5";

struct NumberEdit {
    const char* name;
    std::function<void(Number& number, Number& neighbour)> make;
};

const std::vector<NumberEdit> k_numberEdits = {
    {"ask for the text", [](const Number& number, Number&) { (void)number.toString(); }},
    {"read it and ask for the text",
     [](const Number& number, Number&) {
         (void)number.toDouble();
         (void)number.toString();
     }},
    {"derive the text",
     [](const Number& number, Number&) {
         (void)number.toDouble();
         number.syncToString();
     }},
    {"set a text", [](Number& number, Number&) { number.set(k_longText); }},
    {"set a value and ask",
     [](Number& number, Number&) {
         number.set(0.1);
         (void)number.toString();
     }},
    {"assign",
     [](Number& number, Number&) {
         const Number other(k_longText);
         number = other;
     }},
    {"assign a derived text",
     [](Number& number, Number&) {
         const Number other("0.10000000000000000555");
         (void)other.toDouble();
         other.syncToString();
         number = other;
     }},
    {"move into it", [](Number& number, Number&) { number = Number(k_longText); }},
    {"move out of it and set it",
     [](Number& number, Number&) {
         const Number taken(std::move(number));
         number.set(k_longText);
     }},
    {"move to the neighbour and set both",
     [](Number& number, Number& neighbour) {
         neighbour = std::move(number);
         number.set(k_longText);
         neighbour.set(k_longText);
     }},
    {"swap and ask the neighbour",
     [](Number& number, Number& neighbour) {
         std::swap(number, neighbour);
         (void)neighbour.toString();
     }},
    {"make it anew in its place",
     [](Number& number, Number&) {
         number.~Number();
         new (&number) Number(k_longText);
     }},
};

TEST(Destroying, number_that_came_to_own_a_text_frees_it) {
    for (const std::string text : {"7", "65.613616999999977", "123456789012345"}) {
        std::string document = '[' + text;
        for (int i = 0; i != 2000; ++i) {
            document += ',' + text;
        }
        for (const NumberEdit& edit : k_numberEdits) {
            const auto change = [&](Element& root) {
                edit.make(root.array()[1500].number(), root.array()[1501].number());
            };
            EXPECT_EQ(leftOf(document + ']', change), 0U) << edit.name << ' ' << text;
            EXPECT_EQ(leftOf("[" + document + "]]",
                             [&](Element& root) {
                                 Element copied(root);
                                 change(copied.at(0));
                             }),
                      0U)
                << edit.name << ", copied " << text;
        }
    }
}

TEST(Destroying, number_that_was_taken_out_of_a_tree_marks_no_memory_around_it) {
    constexpr std::size_t k_page = 4096;
    Element read;
    DomParser().parse(read, "[1,65.613616999999977,3]");
    for (const auto& take :
         {+[](void*where, Number&number) { return new (where) Number(std::move(number)); },
          +[](void*where, Number&number) { return new (where) Number(number); }}) {
        for (Element& item : read.array()) {
            std::vector<unsigned char> bytes(2 * k_page + sizeof(Number));
            unsigned char* const begin = bytes.data();
            unsigned char* const page =
                begin + (k_page - reinterpret_cast<std::uintptr_t>(begin) % k_page);
            Number* const taken = take(page + 16, item.number());
            EXPECT_NE(taken->toString(), "");
            taken->~Number();
            EXPECT_TRUE(
                std::all_of(begin, page + 16, [](unsigned char byte) { return byte == 0; }));
        }
    }
}

/// All values arrive as events, and are made by `new`.
class Subclass : public DomParser {};

TEST(Destroying, long_numbers_that_a_subclass_reads_free_all_they_hold) {
    const std::size_t before = liveBlocks();
    {
        std::string text = "[1";
        for (int i = 0; i != 2000; ++i) {
            text += ',' + k_longText;
        }
        Element read;
        Subclass().parse(read, text + ']');
        EXPECT_EQ(read.size(), 2001U);
    }
    EXPECT_EQ(liveBlocks(), before);
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
