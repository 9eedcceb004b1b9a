// SPDX-License-Identifier: MIT
//
// How long the string that Number::toString() returns lives, and what it shows: a test for each
// sentence of its contract.

#include <ko/Orvid/Number.h>

#include <gtest/gtest.h>
#include <ko/DecNumber.h>

#include <functional>
#include <limits>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace {

using ko::DecNumber;
using ko::Orvid::Number;

const std::string k_long = "123456789012345678901234567890.5";

/// Texts of all lengths that are kept in different ways.
const std::vector<std::string> k_texts = {"",
                                          "7",
                                          "12345678901.25",
                                          "123456789012.25",
                                          "1234567890123.25",
                                          "1234567890123456.78",
                                          "12345678901234567890.5",
                                          k_long};

/// Where the texts of a number differ, that was set and that is derived; of all lengths too.
const std::vector<std::string> k_replaced = {"1e1", "12345678.250", "100000000000e-5",
                                             "1.234567890123456e+20", k_long};

Number replaced(const std::string& text) {
    Number number(text);
    (void)number.toDouble();
    number.syncToString();
    return number;
}

const std::vector<std::function<void(Number&)>> k_settings = {
    [](Number& number) { number.set(std::string("1.50")); },
    [](Number& number) { number.set("1.50"); },
    [](Number& number) { number.set("1.50 and more", 4); },
    [](Number& number) { number.set(std::string_view("1.50")); },
    [](Number& number) { number.set(k_long); },
    [](Number& number) { number.set(std::wstring(L"1.50")); },
    [](Number& number) { number.set(L"1.50"); },
    [](Number& number) { number.set(L"1.50 and more", 4); },
    [](Number& number) { number.set('x'); },
    [](Number& number) { number.set(static_cast<short>(-1)); },
    [](Number& number) { number.set(-1); },
    [](Number& number) { number.set(-1L); },
    [](Number& number) { number.set(std::numeric_limits<long long>::min()); },
    [](Number& number) { number.set(static_cast<unsigned char>(1)); },
    [](Number& number) { number.set(static_cast<unsigned short>(1)); },
    [](Number& number) { number.set(1U); },
    [](Number& number) { number.set(1UL); },
    [](Number& number) { number.set(std::numeric_limits<unsigned long long>::max()); },
    [](Number& number) { number.set(1.5F); },
    [](Number& number) { number.set(-1.234567e-200); },
    [](Number& number) { number.set(DecNumber("-1.5000000000000000000000000")); },
    [](Number& number) { number.set(Number(2.5)); },
    [](Number& number) { number.set(Number("2.50")); },
    [](Number& number) { number = Number(k_long); },
    [](Number& number) { number = Number::exact(52.52000659999); },
    [](Number& number) { number = replaced("1e1"); },
    [](Number& number) { number = std::wstring(L"1.50"); },
    [](Number& number) { number = DecNumber("1.50"); },
    [](Number& number) { number.set(number.toString()); },
    [](Number& number) { number.set(number); }};

/// What the number's text is for one that has handed out no string.
std::string textAfter(const std::string& first, const std::function<void(Number&)>& setting) {
    Number number(first);
    setting(number);
    return number.toString();
}

TEST(NumberString, shows_whatever_is_set_afterwards) {
    for (const std::string& first : k_texts) {
        for (std::size_t i = 0; i < k_settings.size(); ++i) {
            Number number(first);
            const std::string& text = number.toString();
            for (int time = 0; time < 2; ++time) {
                k_settings[i](number);
                EXPECT_EQ(text, textAfter(first, k_settings[i])) << first << ' ' << i;
                EXPECT_EQ(&number.toString(), &text) << first << ' ' << i;
            }
        }
    }
}

TEST(NumberString, shows_the_text_that_took_a_given_ones_place) {
    for (const std::string& given : k_replaced) {
        const Number source = replaced(given);
        ASSERT_NE(source.toString(), given);
        for (const std::string& first : k_texts) {
            Number copied(first);
            const std::string& text = copied.toString();
            copied = source;
            EXPECT_EQ(text, source.toString());
            EXPECT_EQ(&copied.toString(), &text);
            EXPECT_EQ(copied, Number(given));
            Number moved(first);
            const std::string& movedText = moved.toString();
            Number temporary(source);
            const std::string& left = temporary.toString();
            moved = std::move(temporary);
            EXPECT_EQ(movedText, source.toString());
            EXPECT_EQ(&moved.toString(), &movedText);
            EXPECT_EQ(moved, Number(given));
            EXPECT_EQ(left, "0");
            moved.set(5);
            EXPECT_EQ(movedText, "5");
            temporary.set(6);  // NOLINT(bugprone-use-after-move): what is left
            EXPECT_EQ(left, "6");
        }
    }
}

TEST(NumberString, is_another_one_after_the_text_is_replaced_until_the_next_change) {
    for (const std::string& given : k_replaced) {
        Number number(given);
        const std::string& text = number.toString();
        (void)number.toDouble();
        number.syncToString();
        EXPECT_EQ(text, given);
        EXPECT_NE(number.toString(), given);
        EXPECT_NE(&number.toString(), &text);
        number.set("1.50");
        EXPECT_EQ(text, "1.50");
        EXPECT_EQ(&number.toString(), &text);
    }
}

TEST(NumberString, survives_any_number_of_replaced_texts) {
    Number number("1e1");
    const std::string& text = number.toString();
    for (const char* const given : {"1e1", "1e2", "1e3", "123456789012345678e1"}) {
        number.set(given);
        (void)number.toDouble();
        number.syncToString();
        (void)number.toString();
        EXPECT_EQ(text, given);
        Number other("7");
        const std::string& otherText = other.toString();
        other = number;
        EXPECT_EQ(otherText, number.toString());
        other.syncToString();
        EXPECT_EQ(&other.toString(), &otherText);
        number = std::move(other);
        EXPECT_EQ(text, number.toString());
        EXPECT_EQ(&number.toString(), &text);
        EXPECT_EQ(number, Number(given));
        EXPECT_EQ(otherText, "0");
    }
}

TEST(NumberString, is_another_one_once_an_empty_text_was_converted) {
    Number number("");
    const std::string& text = number.toString();
    EXPECT_EQ(text, "");
    EXPECT_EQ(number.type(), Number::ebULongLong);
    EXPECT_EQ(number.toString(), "0");
    EXPECT_EQ(text, "");
    Number target(k_long);
    const std::string& targetText = target.toString();
    target = number;
    EXPECT_EQ(targetText, "0");
    number.set("1.50");
    EXPECT_EQ(text, "1.50");
    EXPECT_EQ(&number.toString(), &text);
}

TEST(NumberString, of_a_converted_empty_text_is_moved) {
    for (const std::string& first : k_texts) {
        Number number("");
        EXPECT_EQ(number.type(), Number::ebULongLong);
        const std::string& text = number.toString();
        Number target(first);
        const std::string& targetText = target.toString();
        target = std::move(number);
        EXPECT_EQ(targetText, "0");
        EXPECT_EQ(target.order(Number("")), 0);
        EXPECT_EQ(text, "0");
        number.set(5);  // NOLINT(bugprone-use-after-move): what is left
        EXPECT_EQ(text, "5");
    }
}

TEST(NumberString, goes_along_to_a_number_that_has_none) {
    for (const std::string& first : k_texts) {
        Number number(first);
        const std::string& text = number.toString();
        Number made(std::move(number));
        EXPECT_EQ(text, first);
        EXPECT_EQ(&made.toString(), &text);
        EXPECT_EQ(number.toString(), "0");  // NOLINT(bugprone-use-after-move): what is left
        Number assigned;
        assigned = std::move(made);
        EXPECT_EQ(&assigned.toString(), &text);
        assigned.set(5);
        EXPECT_EQ(text, "5");
    }
}

TEST(NumberString, stays_where_the_other_number_has_one) {
    for (const std::string& first : k_texts) {
        for (const std::string& second : k_texts) {
            Number number(first);
            const std::string& text = number.toString();
            Number target(second);
            const std::string& targetText = target.toString();
            target = std::move(number);
            EXPECT_EQ(targetText, first);
            EXPECT_EQ(&target.toString(), &targetText);
            EXPECT_EQ(text, "0");
            number.set(5);  // NOLINT(bugprone-use-after-move): what is left
            EXPECT_EQ(text, "5");
        }
    }
}

TEST(NumberString, is_exchanged_by_a_swap) {
    for (const std::string& first : k_texts) {
        Number number(first);
        Number other("-1");
        const std::string& text = number.toString();
        const std::string& otherText = other.toString();
        std::swap(number, other);
        EXPECT_EQ(text, first);
        EXPECT_EQ(otherText, "-1");
        EXPECT_EQ(&other.toString(), &text);
        EXPECT_EQ(&number.toString(), &otherText);
    }
}

TEST(NumberString, shows_what_a_number_whose_text_was_lost_says_for_itself) {
    for (const std::string& given : k_texts) {
        for (const bool isOnHeap : {false, true}) {
            Number number(isOnHeap ? "1" : given);
            if (isOnHeap) {
                (void)number.toString();
                number.set(given);
            }
            number.syncToString();  // there is no binary value, and no text is derived from none
            const Number copy(number);
            Number target;
            const std::string& text = target.toString();
            target = std::move(number);
            EXPECT_EQ(target.toString(), copy.toString()) << given;
            EXPECT_EQ(target, copy) << given;
            EXPECT_EQ(target.textView(), copy.textView()) << given;
            target.set(5);
            EXPECT_EQ(text, "5");
        }
    }
}

}  // namespace
