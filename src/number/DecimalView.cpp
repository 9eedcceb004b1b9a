// SPDX-License-Identifier: MIT
//
// Reading, comparing and hashing decimal texts.

#include "number/DecimalView.h"

#include <ko/detail/DecimalParts.h>

#include <algorithm>
#include <charconv>
#include <cstring>
#include <functional>
#include <system_error>

#include "core/HashMix.h"

namespace ko::Orvid {

namespace {

template<class T>
int order(const T& x, const T& y) {
    return int{x > y} - int{y > x};
}

std::string_view withoutLeadingZeros(std::string_view digits) {
    return digits.substr(std::min(digits.find_first_not_of('0'), digits.size()));
}

std::string_view withoutTrailingZeros(std::string_view digits) {
    return digits.substr(0, digits.find_last_not_of('0') + 1);
}

/// `digits` plus `added`, or minus `added`, which is the smaller number.
std::string sum(std::string digits, unsigned long long added, bool isMinus) {
    constexpr int base = 10;
    int carry = 0;
    for (auto digit = digits.rbegin(); digit != digits.rend(); ++digit) {
        const int other = static_cast<int>(added % base) + carry;
        const int value = (*digit - '0') + (isMinus ? -other : other);
        carry = value < 0 || value >= base ? 1 : 0;
        *digit = static_cast<char>('0' + (value + base) % base);
        added /= base;
    }
    return carry == 0 ? digits : "1" + digits;
}

/// `exponent`, digits without zeros before them, plus `shift`, which is less than 2^62.
DecimalPower powerOf(std::string_view exponent, bool isNegative, long long shift) {
    constexpr std::size_t safeDigits = 18;  // their sum with the shift has 63 bits
    DecimalPower power;
    if (exponent.size() <= safeDigits) {
        long long value = 0;
        std::from_chars(exponent.data(), exponent.data() + exponent.size(), value);
        power.value = (isNegative ? -value : value) + shift;
        return power;
    }
    const auto magnitude = static_cast<unsigned long long>(shift < 0 ? -shift : shift);
    const std::string digits = sum(std::string(exponent), magnitude, (shift < 0) != isNegative);
    power.beyond = withoutLeadingZeros(digits);
    power.isNegative = isNegative;
    const std::string text = (isNegative ? "-" : "") + power.beyond;
    if (std::from_chars(text.data(), text.data() + text.size(), power.value).ec == std::errc()) {
        power.beyond.clear();
        power.isNegative = false;
    } else {
        power.value = 0;
    }
    return power;
}

/// Of a value that is no integer of few digits, and whose significant digits, without zeros around
/// them, are a number of 64 bits.
std::size_t hashOfFew(bool isNegative, long long power, unsigned long long digits) {
    const std::size_t sign = isNegative ? 1 : 2;
    return mixedWhole(mixedWhole(sign, static_cast<unsigned long long>(power)), digits);
}

constexpr unsigned long long k_base = 10;

/// The digits appended to those of `value`.
unsigned long long valueOf(std::string_view digits, unsigned long long value) {
    for (const char digit : digits) {
        value = value * k_base + static_cast<unsigned long long>(digit - '0');
    }
    return value;
}

}  // namespace

int DecimalPower::compare(const DecimalPower& other) const noexcept {
    if (beyond.empty() && other.beyond.empty()) {
        return order(value, other.value);
    }
    // A power beyond 64 bits is farther from zero than any that is not.
    const int sign = beyond.empty() ? 0 : isNegative ? -1 : 1;
    const int otherSign = other.beyond.empty() ? 0 : other.isNegative ? -1 : 1;
    if (sign != otherSign) {
        return order(sign, otherSign);
    }
    const int longer = order(beyond.size(), other.beyond.size());
    return sign * (longer != 0 ? longer : order(beyond.compare(other.beyond), 0));
}

DecimalView::DecimalView(std::string_view text) {
    DecimalParts parts;
    if (parts.read(text)) {
        m_rank = Rank::number;
        m_isNegative = parts.isNegative;
        const std::string_view exponent = withoutLeadingZeros(parts.exponent);
        trim(parts.whole, parts.fraction, exponent, parts.isExponentNegative);
    } else if (text == "inf") {
        m_rank = Rank::above;
    } else if (text == "-inf") {
        m_rank = Rank::below;
    } else if (text == "nan" || text == "-nan") {
        m_rank = Rank::notANumber;
    } else {
        m_first = text;
    }
}

void DecimalView::trim(std::string_view whole, std::string_view fraction, std::string_view exponent,
                       bool isExponentNegative) {
    m_first = withoutLeadingZeros(whole);
    m_rest = withoutTrailingZeros(fraction);
    auto shift = static_cast<long long>(m_first.size()) - 1;
    if (m_first.empty()) {
        m_first = withoutLeadingZeros(m_rest);
        shift = static_cast<long long>(m_first.size()) - static_cast<long long>(m_rest.size()) - 1;
        m_rest = {};
    }
    if (m_rest.empty()) {
        m_first = withoutTrailingZeros(m_first);
    }
    if (m_first.empty()) {
        m_isNegative = false;  // there is one zero
    } else {
        m_power = powerOf(exponent, isExponentNegative, shift);
    }
}

bool DecimalView::isWhole() const noexcept {
    const long long afterPoint = static_cast<long long>(digitCount()) - 1;
    return isZero() || (isNumber() && (m_power.beyond.empty() ? m_power.value >= afterPoint
                                                              : !m_power.isNegative));
}

void DecimalView::copyDigits(char* out) const noexcept {
    m_first.copy(out, m_first.size());
    m_rest.copy(out + m_first.size(), m_rest.size());
}

int DecimalView::compareDigits(const DecimalView& other) const noexcept {
    std::string_view a[] = {m_first, m_rest};
    std::string_view b[] = {other.m_first, other.m_rest};
    while (!a[0].empty() && !b[0].empty()) {
        const std::size_t common = std::min(a[0].size(), b[0].size());
        if (const int result = std::memcmp(a[0].data(), b[0].data(), common)) {
            return order(result, 0);
        }
        for (std::string_view* const digits : {a, b}) {
            digits[0].remove_prefix(common);
            if (digits[0].empty()) {
                std::swap(digits[0], digits[1]);
            }
        }
    }
    return int{!a[0].empty()} - int{!b[0].empty()};
}

int DecimalView::compare(const DecimalView& other) const noexcept {
    if (m_rank != other.m_rank) {
        return order(m_rank, other.m_rank);
    }
    if (m_rank != Rank::number) {
        return order(m_first.compare(other.m_first), 0);
    }
    const auto signOf = [](const DecimalView& view) {
        return view.isZero() ? 0 : view.m_isNegative ? -1 : 1;
    };
    const int sign = signOf(*this);
    if (sign != signOf(other)) {
        return order(sign, signOf(other));
    }
    const int byPower = m_power.compare(other.m_power);
    return sign * (byPower != 0 ? byPower : compareDigits(other));
}

std::size_t DecimalView::hash() const {
    const auto count = static_cast<long long>(digitCount());
    if (isNumber() && m_power.beyond.empty() && count <= k_fewDigits) {
        unsigned long long digits = valueOf(m_rest, valueOf(m_first, 0));
        if (m_power.value < count - 1 || m_power.value >= k_fewDigits) {
            return hashOfFew(m_isNegative, m_power.value, digits);
        }
        for (long long zeros = m_power.value + 1 - count; zeros > 0; --zeros) {
            digits *= k_base;
        }
        const auto value = static_cast<long long>(digits);
        return hashOf(m_isNegative ? -value : value);
    }
    const std::size_t signs = (m_isNegative ? 1U : 0U) + (m_power.isNegative ? 2U : 0U);
    std::size_t result = mixed(static_cast<std::size_t>(m_rank) + 1, signs << 3U);
    result = mixedWhole(result, static_cast<unsigned long long>(m_power.value));
    result = mixed(result, std::hash<std::string>()(m_power.beyond));
    if (m_rest.empty()) {
        return mixed(result, std::hash<std::string_view>()(m_first));
    }
    constexpr std::size_t usualCount = 32;
    char few[usualCount];
    std::string many(digitCount() > usualCount ? digitCount() : 0, '\0');
    char* const digits = many.empty() ? few : many.data();
    copyDigits(digits);
    return mixed(result, std::hash<std::string_view>()({digits, digitCount()}));
}

}  // namespace ko::Orvid
