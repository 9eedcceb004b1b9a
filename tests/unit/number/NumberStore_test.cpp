// SPDX-License-Identifier: MIT
//
// What a number holds for how long: the string that toString() returns, through all that happens to
// the number, and values in all forms that they are kept in.

#include <ko/Orvid/detail/NumberStore.h>

#include <gtest/gtest.h>
#include <ko/DecNumber.h>
#include <ko/Orvid/Number.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <new>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "support/NumberErrors.h"
#include "support/NumberProbe.h"

namespace {

using ko::Orvid::Number;
using ko::Orvid::NumberProbe;
using ko::Orvid::NumberStore;
using orvid_test::TextError;

static_assert(sizeof(Number) == 32);

const std::string k_long = "123456789012345678901234567890.5";

/// Texts of all lengths that are kept in different ways.
const std::vector<std::string> k_texts = {"7",
                                          "-1.5",
                                          "12345678.25e-2",
                                          "1234567.1234567",
                                          "65.613616999999977",
                                          "1.234567890123456e+200",
                                          "-1.234567890123456e-99",
                                          "18446744073709551615",
                                          "1234567890123456789",
                                          "-123456789012345678.00",
                                          k_long};

TEST(NumberText, the_string_lives_through_all_that_is_set) {
    for (const std::string& first : k_texts) {
        for (const std::string& second : k_texts) {
            Number number(first);
            const std::string& text = number.toString();
            EXPECT_EQ(text, first);
            number.set(second);
            EXPECT_EQ(text, second);
            number.set(Number(first));
            EXPECT_EQ(text, first);
            number = Number(second);
            EXPECT_EQ(text, second);
            Number source(first);
            EXPECT_EQ(source.toString(), first);
            number = std::move(source);
            EXPECT_EQ(text, first);
            EXPECT_EQ(source.toInt(), 0);  // NOLINT(bugprone-use-after-move): what is left
            EXPECT_EQ(source.toString(), "0");
            EXPECT_EQ(&number.toString(), &text);
        }
    }
}

TEST(NumberText, the_string_shows_binary_values_that_are_set) {
    Number number("text");
    const std::string& text = number.toString();
    number.set(-5);
    EXPECT_EQ(text, "-5");
    number.set(1234567.0);
    EXPECT_EQ(text, "1.23457e+06");
    EXPECT_EQ(number.toDouble(), 1234567.0);
    number.set(std::numeric_limits<unsigned long long>::max());
    EXPECT_EQ(text, "18446744073709551615");
    number = Number(2.5);
    EXPECT_EQ(text, "2.5");
    EXPECT_EQ(&number.toString(), &text);
    EXPECT_EQ(number.type(), Number::ebDouble);
}

// The string that is made first has no room to spare.
TEST(NumberText, the_string_grows_with_what_is_set) {
    for (const std::string& first : {std::string("7"), std::string(16, '1'), k_long}) {
        for (const unsigned long long value :
             {1ULL, 1234567890123456ULL, 18446744073709551615ULL}) {
            const std::string expected = std::to_string(value);
            Number number(first);
            const std::string& text = number.toString();
            number = Number(value);
            EXPECT_EQ(text, expected);
            Number other(first);
            const std::string& otherText = other.toString();
            other.set(value);
            EXPECT_EQ(otherText, expected);
            EXPECT_EQ(&other.toString(), &otherText);
        }
    }
}

TEST(NumberText, derived_never_replaces_the_binary_value) {
    Number number(4294967295.0);
    EXPECT_EQ(number.toString(), "4.29497e+09");
    long long whole = 0;
    EXPECT_TRUE(number.convertTo(whole));
    EXPECT_EQ(whole, 4294967295);
    number.syncToBinary();
    EXPECT_EQ(number.toDouble(), 4294967295.0);
    const Number copy(number);
    EXPECT_EQ(copy.toDouble(), 4294967295.0);
    EXPECT_EQ(copy.toString(), "4.29497e+09");
    const Number negative(-5);
    negative.syncToBinary();
    EXPECT_EQ(negative.toInt(), -5);
}

TEST(NumberText, views_stay_when_the_string_is_made) {
    for (const std::string& text : k_texts) {
        const Number number(text);
        const std::string_view view = number.textView();
        EXPECT_EQ(number.toString(), text);
        number.syncToString();
        EXPECT_EQ(view, text);
    }
}

template<class Read>
void expectSameBeforeAndAfterTheString(const std::string& text, Read read) {
    const Number number(text);
    const auto value = read(number);
    EXPECT_EQ(read(number), value) << text;
    EXPECT_EQ(number.toString(), text);
    EXPECT_EQ(read(number), value) << text;
    const Number fresh(text);
    EXPECT_EQ(fresh.toString(), text);
    EXPECT_EQ(read(fresh), value) << text;
    EXPECT_EQ(read(fresh), value) << text;
    const Number copy(fresh);
    EXPECT_EQ(read(copy), value) << text;
    Number moved(copy);
    const Number taken(std::move(moved));
    EXPECT_EQ(read(taken), value) << text;
}

/// A store of that text, made where `stain` stood in every byte.
class StainedStore {
public:
    StainedStore(const std::string& text, int stain) {
        std::memset(m_memory, stain, sizeof m_memory);
        m_store = new (m_memory) NumberStore(std::string_view(text));
    }
    ~StainedStore() { m_store->~NumberStore(); }
    StainedStore(const StainedStore&) = delete;
    StainedStore& operator=(const StainedStore&) = delete;
    const NumberStore& operator*() const { return *m_store; }

private:
    alignas(NumberStore) unsigned char m_memory[sizeof(NumberStore)];
    NumberStore* m_store;
};

TEST(NumberText, is_the_same_whatever_stood_in_its_memory) {
    const std::string digits = "1234567890123456789012";
    for (std::size_t length = 1; length <= NumberStore::k_capacity; ++length) {
        const std::string text = digits.substr(0, length);
        const StainedStore one(text, 0xFF);
        const StainedStore other(text, 0xA5);
        EXPECT_TRUE((*one).hasSameTextAs(*other)) << text;
        EXPECT_TRUE(NumberStore(*one).hasSameTextAs(*other)) << text;
        for (std::size_t at = 0; at < length; ++at) {
            std::string changed = text;
            changed[at] = '-';
            EXPECT_FALSE((*one).hasSameTextAs(NumberStore(std::string_view(changed)))) << changed;
        }
        EXPECT_FALSE((*one).hasSameTextAs(NumberStore(std::string_view(text + "0")))) << text;
    }
}

TEST(NumberText, is_the_same_beside_a_string) {
    for (const std::string& text : k_texts) {
        const NumberStore plain{std::string_view(text)};
        const NumberStore asked{std::string_view(text)};
        EXPECT_EQ(asked.string(), text);
        EXPECT_EQ(plain.hasSameTextAs(asked), text.size() <= NumberStore::k_capacity) << text;
        EXPECT_EQ(asked.hasSameTextAs(plain), text.size() <= NumberStore::k_capacity) << text;
    }
}

using ko::Orvid::detail::JsonNumber;

TEST(NumberText, that_is_json_is_remembered_as_such) {
    for (const std::string& text : k_texts) {
        const std::string_view known =
            text.size() <= NumberStore::k_capacity ? text : std::string_view();
        NumberStore store(JsonNumber{text});
        EXPECT_EQ(store.givenText(), text);
        EXPECT_EQ(store.jsonText(), known);
        EXPECT_EQ(store.binary().kind, Number::ebNone);
        store.keep({0x4000000000000000, Number::ebDouble, true});
        EXPECT_EQ(store.jsonText(), known);
        EXPECT_EQ(store.binary().kind, Number::ebDouble);
        EXPECT_EQ(NumberStore(store).jsonText(), known);
        EXPECT_EQ(NumberStore(std::move(store)).jsonText(), known);
        EXPECT_EQ(NumberStore(std::string_view(text)).jsonText(), "");
    }
}

TEST(NumberText, that_is_json_is_forgotten_with_the_text) {
    for (const std::string& text : k_texts) {
        for (const std::string& other : k_texts) {
            NumberStore store(JsonNumber{text});
            store.assign(other, {});
            EXPECT_EQ(store.jsonText(), "") << text << ' ' << other;
            NumberStore taken(JsonNumber{text});
            taken.take(store);
            EXPECT_EQ(taken.jsonText(), "") << text << ' ' << other;
        }
        NumberStore set(JsonNumber{text});
        set.assign({1, Number::ebULongLong, true});
        EXPECT_EQ(set.jsonText(), "") << text;
        const NumberStore derived(JsonNumber{text});
        derived.keep({1, Number::ebULongLong, true});
        derived.derive();
        EXPECT_EQ(derived.jsonText(), "") << text;
    }
}

TEST(NumberText, of_a_copy_needs_no_string_of_its_own) {
    for (const std::string& text : k_texts) {
        const NumberStore asked{std::string_view(text)};
        EXPECT_EQ(asked.string(), text);
        const NumberStore copy(asked);
        EXPECT_EQ(copy.givenText(), text);
        EXPECT_EQ(copy.hasHeapText(), text.size() > NumberStore::k_capacity) << text;
    }
}

TEST(NumberText, set_beside_a_string_is_compared_there) {
    NumberStore one{std::string_view("7")};
    NumberStore other{std::string_view("8")};
    EXPECT_EQ(one.string(), "7");
    EXPECT_EQ(other.string(), "8");
    one.assign(std::string_view("12"), {});
    other.assign(std::string_view("13"), {});
    EXPECT_FALSE(one.hasSameTextAs(other));
}

TEST(NumberValue, is_kept_beside_the_string) {
    for (const std::string& text : k_texts) {
        expectSameBeforeAndAfterTheString(text, [](const Number& number) {
            double value = 0;
            EXPECT_TRUE(number.convertTo(value));
            return value;
        });
        expectSameBeforeAndAfterTheString(text, [](const Number& number) {
            try {
                return number.type();
            } catch (const TextError&) {
                return Number::ebNone;
            }
        });
    }
}

/// The bits, so that zeros and NaN are distinguished.
std::uint64_t bitsOf(double value) {
    std::uint64_t bits = 0;
    std::memcpy(&bits, &value, sizeof bits);
    return bits;
}

// Doubles of 15 to 22 characters are packed where their exponents are not too far from zero.
TEST(NumberValue, of_doubles_of_all_sizes_is_kept_exactly) {
    for (const char* const digits :
         {"1.2345678901234567", "-0.8765432109876543", "0.0000000000000"}) {
        for (int power = -310; power <= 308; ++power) {
            const std::string text = digits + ("e" + std::to_string(power));
            const double expected = std::strtod(text.c_str(), nullptr);
            const Number number(text);
            for (int time = 0; time < 2; ++time) {
                EXPECT_EQ(number.compare(Number(expected)), 0) << text;
                EXPECT_EQ(bitsOf(NumberProbe::heldReal(number)), bitsOf(expected)) << text;
            }
        }
    }
}

TEST(NumberValue, of_integers_of_all_sizes_is_kept_exactly) {
    for (unsigned int bit = 0; bit < 64; ++bit) {
        for (const unsigned long long below : {0ULL, 1ULL}) {
            const unsigned long long value = (1ULL << bit) - below;
            const std::string digits = std::to_string(value);
            const std::string zeros(digits.size() < 19 ? 19 - digits.size() : 0, '0');
            const Number number(zeros + digits);
            if (digits.size() == 20) {
                continue;  // refused
            }
            EXPECT_EQ(number.toULongLong(), value);
            EXPECT_EQ(number.toULongLong(), value);
        }
    }
    for (const char* const text : {"-12345678901234567", "-99999999999999999",
                                   "-999999999999999999", "-9223372036854775808"}) {
        const Number number(text);
        EXPECT_EQ(number.toLongLong(), std::strtoll(text, nullptr, 10));
        EXPECT_EQ(number.toLongLong(), std::strtoll(text, nullptr, 10));
    }
}

TEST(RefusedNumberText, leaves_bits_of_all_kinds_from_before) {
    for (const char* const refused : {"99999999999999999999", "-100000000000000000", "1e400",
                                      "1.00000000000000e400", "999999999999999999999999999"}) {
        for (const Number& before : {Number(5), Number(-1), Number(2.5), Number(1e300),
                                     Number(std::numeric_limits<long long>::min())}) {
            Number number(before);
            number.set(refused);
            const Number copy(number);
            EXPECT_THROW(number.type(), TextError);
            EXPECT_THROW(copy.type(), TextError);
            EXPECT_EQ(NumberProbe::heldUnsigned(number), NumberProbe::heldUnsigned(before));
            EXPECT_EQ(NumberProbe::heldUnsigned(copy), NumberProbe::heldUnsigned(before));
            EXPECT_EQ(NumberProbe::heldUnsigned(Number(number)), NumberProbe::heldUnsigned(before));
            EXPECT_EQ(number.toString(), refused);
        }
    }
}

TEST(RefusedNumberText, is_reported_by_a_string_too_only_once) {
    const Number number("99999999999999999999");
    EXPECT_EQ(number.toString(), "99999999999999999999");
    EXPECT_THROW(number.type(), TextError);
    EXPECT_EQ(number.type(), Number::ebULongLong);
    const Number other("99999999999999999999");
    EXPECT_THROW(other.type(), TextError);
    EXPECT_EQ(other.toString(), "99999999999999999999");
    EXPECT_EQ(other.type(), Number::ebULongLong);
}

TEST(NumberExact, has_the_shortest_text_that_reads_back) {
    EXPECT_EQ(Number::exact(52.52000659999).toString(), "52.52000659999");
    EXPECT_EQ(Number::exact(1700000000.125).toString(), "1700000000.125");
    EXPECT_EQ(Number::exact(0.1F).toString(), "0.1");
    EXPECT_EQ(Number::exact(0.1L).toString(), "0.1");
    EXPECT_EQ(Number::exact(1e22).toString(), "1e+22");
    EXPECT_EQ(Number::exact(-0.0).toString(), "-0");
    EXPECT_EQ(Number::exact(std::numeric_limits<float>::max()).toString(), "3.4028235e+38");
    EXPECT_EQ(Number::exact(-std::numeric_limits<double>::max()).toString(),
              "-1.7976931348623157e+308");
}

TEST(NumberExact, keeps_the_binary_value_of_a_double) {
    for (const double value : {0.0, -0.0, 1.0, 0.1, 1e22, 5e-324, 1.7976931348623157e308}) {
        const Number number = Number::exact(value);
        EXPECT_EQ(number.type(), Number::ebDouble);
        EXPECT_EQ(bitsOf(NumberProbe::heldReal(number)), bitsOf(value));
    }
    const double infinity = std::numeric_limits<double>::infinity();
    EXPECT_EQ(Number::exact(infinity).toString(), "inf");
    EXPECT_EQ(Number::exact(-infinity).type(), Number::ebDouble);
    EXPECT_TRUE(std::isnan(NumberProbe::heldReal(Number::exact(std::nan("")))));
}

TEST(NumberExact, keeps_a_long_double_beyond_all_doubles) {
    const long double value = std::numeric_limits<long double>::max();
    const Number number = Number::exact(value);
    long double read = 0;
    EXPECT_TRUE(number.convertTo(read));
    EXPECT_EQ(read, value);
    double real = 0;
    EXPECT_FALSE(number.convertTo(real));
}

TEST(Number, is_made_without_an_exception_for_want_of_memory) {
    const Number* const number = new (std::nothrow) Number;
    ASSERT_NE(number, nullptr);
    EXPECT_EQ(number->toString(), "0");
    delete number;
}

TEST(Number, is_made_of_wide_texts_and_decimals) {
    EXPECT_EQ(Number(L"12").toString(), "12");
    EXPECT_EQ(Number(std::wstring(L"1.5")).toString(), "1.5");
    EXPECT_EQ(Number(L"1234", 2).toString(), "12");
    Number number;
    number = std::wstring(L"3.25");
    EXPECT_EQ(number.toString(), "3.25");
    number = L"4";
    EXPECT_EQ(number.toString(), "4");
    number = ko::DecNumber("5.50");
    EXPECT_EQ(number.toString(), "5.50");
    number = 0;
    EXPECT_EQ(number.type(), Number::ebLongLong);
}

TEST(NumberLimits, a_fresh_one_holds_the_texts) {
    const Number::Limits limits;
    EXPECT_EQ(limits.llMax, "9223372036854775807");
    EXPECT_EQ(limits.llMin, "-9223372036854775808");
    EXPECT_EQ(limits.ullMax, "18446744073709551615");
    EXPECT_EQ(limits.ullMin, "18446744073709551615");
    EXPECT_EQ(limits.dblMin, "2.22507e-308");
    EXPECT_EQ(limits.dblMax, "1.79769e+308");
}

}  // namespace
