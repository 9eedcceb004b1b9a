// SPDX-License-Identifier: MIT
//
// Numbers as digits and the place of their decimal point.

#include "query/ExactNumber.h"

#include <algorithm>
#include <cstddef>

#include "path/PathCharacters.h"

namespace ko::Orvid {

namespace {

constexpr std::size_t k_mostDigits = 18;  // of an integer of 64 bits, whatever they are

/// The digits at the start of `text`, taken away from it.
std::string_view takeDigits(std::string_view& text) {
    const auto* const end = std::find_if_not(text.begin(), text.end(), isDigit);
    const std::string_view digits = text.substr(0, static_cast<std::size_t>(end - text.begin()));
    text.remove_prefix(digits.size());
    return digits;
}

bool take(std::string_view& text, char mark) {
    const bool isThere = !text.empty() && text.front() == mark;
    text.remove_prefix(isThere ? 1 : 0);
    return isThere;
}

/// At most k_mostDigits.
long long integerOf(std::string_view digits) {
    constexpr int base = 10;
    long long value = 0;
    for (const char digit : digits) {
        value = value * base + (digit - '0');
    }
    return value;
}

/// What follows the digits; nothing where it is no exponent or too long a one.
std::optional<long long> exponentOf(std::string_view text) {
    if (text.empty()) {
        return 0;
    }
    if (!take(text, 'e') && !take(text, 'E')) {
        return std::nullopt;
    }
    const bool isNegative = take(text, '-');
    if (!isNegative) {
        take(text, '+');
    }
    std::string_view digits = takeDigits(text);
    const bool isSound = text.empty() && !digits.empty();
    digits.remove_prefix(std::min(digits.find_first_not_of('0'), digits.size()));
    if (!isSound || digits.size() > k_mostDigits) {
        return std::nullopt;
    }
    return isNegative ? -integerOf(digits) : integerOf(digits);
}

/// 0.d1d2d3... times a power of ten, without zeros at the beginning and the end.
struct Decimal {
    bool isNegative = false;
    std::string_view whole;     ///< the digits before the point
    std::string_view fraction;  ///< the digits behind it
    long long exponent = 0;

    static std::optional<Decimal> of(std::string_view text) {
        Decimal result;
        result.isNegative = take(text, '-');
        result.whole = takeDigits(text);
        if (take(text, '.')) {
            result.fraction = takeDigits(text);
        }
        const std::optional<long long> power = exponentOf(text);
        if (!power || (result.whole.empty() && result.fraction.empty())) {
            return std::nullopt;
        }
        result.exponent = *power;
        result.normalize();
        return result;
    }

    bool isZero() const { return size() == 0; }
    std::size_t size() const { return whole.size() + fraction.size(); }
    char digit(std::size_t position) const {
        return position < whole.size() ? whole[position]
               : position < size()     ? fraction[position - whole.size()]
                                       : '0';
    }

private:
    void normalize() {
        exponent += static_cast<long long>(whole.size());
        const std::size_t leading = std::min(whole.find_first_not_of('0'), whole.size());
        whole.remove_prefix(leading);
        exponent -= static_cast<long long>(leading);
        if (whole.empty()) {
            const std::size_t zeros = std::min(fraction.find_first_not_of('0'), fraction.size());
            fraction.remove_prefix(zeros);
            exponent -= static_cast<long long>(zeros);
        }
    }
};

int order(long long a, long long b) { return a < b ? -1 : a > b ? 1 : 0; }

/// Of two decimals without sign that are not zero.
int compareSizes(const Decimal& a, const Decimal& b) {
    if (a.exponent != b.exponent) {
        return order(a.exponent, b.exponent);
    }
    const std::size_t digits = std::max(a.size(), b.size());
    for (std::size_t i = 0; i < digits; ++i) {
        if (a.digit(i) != b.digit(i)) {
            return order(a.digit(i), b.digit(i));
        }
    }
    return 0;
}

int compareDecimals(const Decimal& a, const Decimal& b) {
    const int signA = a.isZero() ? 0 : a.isNegative ? -1 : 1;
    const int signB = b.isZero() ? 0 : b.isNegative ? -1 : 1;
    if (signA != signB || signA == 0) {
        return order(signA, signB);
    }
    return signA * compareSizes(a, b);
}

/// Nothing for what is more than an integer of a few digits.
std::optional<long long> shortInteger(std::string_view text) {
    const bool isNegative = take(text, '-');
    if (text.empty() || text.size() > k_mostDigits ||
        !std::all_of(text.begin(), text.end(), isDigit)) {
        return std::nullopt;
    }
    return isNegative ? -integerOf(text) : integerOf(text);
}

}  // namespace

std::optional<int> compareExactly(std::string_view a, std::string_view b) {
    const std::optional<long long> left = shortInteger(a);
    const std::optional<long long> right = shortInteger(b);
    if (left && right) {
        return order(*left, *right);
    }
    const std::optional<Decimal> first = Decimal::of(a);
    const std::optional<Decimal> second = Decimal::of(b);
    if (!first || !second) {
        return std::nullopt;
    }
    return compareDecimals(*first, *second);
}

}  // namespace ko::Orvid
