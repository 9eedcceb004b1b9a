// SPDX-License-Identifier: MIT
//
// Numbers as sign, significant digits and exponent.

#include "source/DecimalText.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string>

namespace ko::Orvid {

namespace {

struct Decimal {
    bool isNegative = false;
    std::string digits;      ///< neither begin nor end with a zero; empty for zero
    long long exponent = 0;  ///< of ten, after the last digit
};

std::string_view exponentOf(std::string_view number) {
    const std::size_t mark = number.find_first_of("eE");
    return mark == std::string_view::npos ? std::string_view() : number.substr(mark + 1);
}

std::optional<long long> exponentValue(std::string_view text) {
    constexpr std::size_t mostDigits = 17;
    const bool isNegative = !text.empty() && text.front() == '-';
    text.remove_prefix(text.find_first_of("0123456789") == 1 ? 1 : 0);
    text.remove_prefix(std::min(text.find_first_not_of('0'), text.size()));
    if (text.size() > mostDigits) {
        return std::nullopt;
    }
    const long long value = text.empty() ? 0 : std::stoll(std::string(text));
    return isNegative ? -value : value;
}

std::optional<Decimal> decimalOf(std::string_view number) {
    Decimal decimal;
    const std::optional<long long> exponent = exponentValue(exponentOf(number));
    if (!exponent) {
        return std::nullopt;
    }
    decimal.exponent = *exponent;
    bool isFraction = false;
    for (const char byte : number.substr(0, number.find_first_of("eE"))) {
        if (byte == '.') {
            isFraction = true;
        } else if (byte != '-') {
            decimal.digits += byte;
            decimal.exponent -= isFraction ? 1 : 0;
        }
    }
    const std::size_t last = decimal.digits.find_last_not_of('0');
    decimal.isNegative = number.front() == '-';
    if (last == std::string::npos) {
        return Decimal{decimal.isNegative, {}, 0};
    }
    decimal.exponent += static_cast<long long>(decimal.digits.size() - last - 1);
    decimal.digits.erase(last + 1);
    decimal.digits.erase(0, decimal.digits.find_first_not_of('0'));
    return decimal;
}

}  // namespace

bool sameDecimal(std::string_view a, std::string_view b) {
    const std::optional<Decimal> x = decimalOf(a);
    const std::optional<Decimal> y = decimalOf(b);
    return x && y && x->isNegative == y->isNegative && x->digits == y->digits &&
           x->exponent == y->exponent;
}

bool hasOwnSpelling(std::string_view number) {
    const std::size_t mark = number.find_first_of("eE");
    const std::string_view mantissa = number.substr(0, mark);
    const std::string_view exponent = exponentOf(number);
    const std::size_t firstDigit = exponent.find_first_of("0123456789");
    const bool hasZeros = mantissa.find('.') != std::string_view::npos && mantissa.back() == '0';
    return hasZeros || number.find('E') != std::string_view::npos ||
           exponent.find('+') != std::string_view::npos ||
           (firstDigit != std::string_view::npos && exponent[firstDigit] == '0');
}

}  // namespace ko::Orvid
