// SPDX-License-Identifier: MIT
//
// Numbers while memory is refused, and which of their operations need none.

#include <ko/Orvid.h>

#include <gtest/gtest.h>

#include <functional>
#include <limits>
#include <string>
#include <utility>
#include <vector>

#include "support/CountedMemory.h"
#include "support/EachAllocation.h"

namespace orvid_test {
namespace {

using ko::DecNumber;
using ko::Orvid::Element;
using ko::Orvid::Number;
using ko::Orvid::NumberBuffer;

const std::string k_huge = "12.5e99999999999999999999999999999999999999";

const std::vector<Operation> k_operations = {
    {"texts_of_numbers", Leaves::everything,
     [](Trees& trees) {
         const Number& number = trees.root.get("n").number();
         const Number copy(number);
         (void)copy.type();
         copy.syncToString();
         return number.toString() + Number(2.5).toString() + copy.toString();
     }},
    {"set_a_number", Leaves::wholeTrees,
     [](Trees& trees) {
         Number& number = trees.root.get("n").number();
         const std::string& text = number.toString();
         number.set("a text that is longer than what is held in place");
         number.set(5);
         number = Number("another text that is longer than what is held in place");
         number.set(trees.root.get("a.list[0].id").number());
         return text;
     }},
    {"set_a_longer_binary_value", Leaves::everything,
     [](Trees& trees) {
         Number& number = trees.root.get("a.list[0].id").number();
         (void)number.toString();
         number.set(std::numeric_limits<long long>::min());
         return std::string();
     }},
    {"copy_a_text_computed_by_hand", Leaves::everything,
     [](Trees& trees) {
         const Number number("-237320580168e-57");
         (void)number.type();
         number.syncToString();
         const Number copy(number);
         Number& target = trees.root.get("n").number();
         target.set(copy);
         return target.toString();
     }},
    {"set_an_exact_number", Leaves::wholeTrees,
     [](Trees& trees) {
         trees.root.get("n").setNumber(0.1);
         trees.root.get("s").setNumber(std::numeric_limits<long double>::max());
         trees.root.get("z") = 1.5F;
         return std::string();
     }},
    {"exact_and_whole", Leaves::everything,
     [](Trees&) {
         const Number number = Number::exact(-1.2345678901234567e-123);
         return number.toString() + std::to_string(number.isWhole()) +
                std::to_string(Number(k_huge).isWhole());
     }},
    {"order_and_hash_numbers", Leaves::everything,
     [](Trees& trees) {
         const Number huge(k_huge);
         const Number& number = trees.root.get("n").number();
         return std::to_string(huge.order(number)) + std::to_string(huge == Number(k_huge)) +
                std::to_string(std::hash<Number>()(huge) - std::hash<Number>()(Number(k_huge))) +
                number.decimal().toString();
     }},
    {"order_and_hash_elements", Leaves::everything,
     [](Trees& trees) {
         return std::to_string(trees.root.order(trees.other)) +
                std::to_string(trees.root.order(Element(trees.root))) +
                std::to_string(trees.root == Element(trees.root)) +
                std::to_string(std::hash<Element>()(trees.root));
     }},
    {"decimals", Leaves::everything,
     [](Trees&) {
         const DecNumber value(std::string("1234567890123456789012345.5"));
         const DecNumber sum = value + value * value - -value;
         return sum.toString() + Element(sum).to<DecNumber>().toString();
     }},
};

class Numbers : public testing::TestWithParam<Operation> {};

TEST_P(Numbers, hold_when_memory_is_refused) { failEachAllocation(GetParam()); }

INSTANTIATE_TEST_SUITE_P(All, Numbers, testing::ValuesIn(k_operations),
                         [](const auto& operation) { return operation.param.name; });

/// What is moved onto a number that has handed out its short text.
const std::vector<Number> k_longer = {Number("1234567890123456"), Number("-1.234567890123456789e9"),
                                      Number(std::numeric_limits<long long>::min()),
                                      Number(std::numeric_limits<unsigned long long>::max()),
                                      Number("a text that is longer than what is held in place")};

TEST(NumbersWithoutMemory, take_over_what_is_moved) {
    for (const Number& longer : k_longer) {
        Number number(7);
        EXPECT_EQ(number.toString(), "7");
        Number source(longer);
        refuseAllocation(1, Refusal::forGood);
        number = std::move(source);
        const bool isSame = number == longer;
        NumberBuffer buffer;
        const bool hasText = !number.textIn(buffer).empty();
        refuseNone();
        EXPECT_TRUE(isSame) << longer.toString();
        EXPECT_TRUE(hasText) << longer.toString();
        EXPECT_EQ(source, Number(0));  // NOLINT(bugprone-use-after-move): what is left
        EXPECT_EQ(Number(number).toString(), longer.toString());
        EXPECT_EQ(number.toString(), longer.toString());
        Number target;
        target = std::move(number);
        EXPECT_EQ(target, longer);
    }
}

TEST(NumbersWithoutMemory, are_set_and_moved_again_afterwards) {
    for (const Number& longer : k_longer) {
        Number number(7);
        const std::string& text = number.toString();
        Number source(longer);
        refuseAllocation(1, Refusal::forGood);
        number = std::move(source);
        refuseNone();
        number.set(5);
        EXPECT_EQ(text, "5");
        EXPECT_EQ(&number.toString(), &text);
    }
}

TEST(NumbersInPlace, are_read_written_and_compared_without_memory) {
    const Number numbers[] = {Number("1"), Number("65.613616999999977"), Number(0.1), Number(-5),
                              Number("1234567890123456789012")};
    const Number other("65.6");
    const std::size_t before = allocationCount();
    for (const Number& number : numbers) {
        NumberBuffer buffer;
        double value = 0;
        long long whole = 0;
        EXPECT_TRUE(number.convertTo(value));
        (void)number.convertTo(whole);
        EXPECT_FALSE(number.textIn(buffer).empty());
        EXPECT_NE(number.order(other), 0);
        EXPECT_NE(std::hash<Number>()(number), 0U);
        EXPECT_EQ(Number(number).order(number), 0);
    }
    EXPECT_EQ(allocationCount(), before);
}

TEST(NumbersInPlace, that_were_set_in_code_are_written_without_blocks_of_their_own) {
    Element array = ko::Orvid::makeArray({});
    for (int i = 0; i < 100; ++i) {
        array.array().emplace_back(i);
    }
    const std::size_t before = liveBlocks();
    EXPECT_EQ(ko::Orvid::Generator().encode(array).substr(0, 1), "[");
    EXPECT_EQ(liveBlocks(), before);
}

}  // namespace
}  // namespace orvid_test
