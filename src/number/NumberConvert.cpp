// SPDX-License-Identifier: MIT
//
// Converting a number to an arithmetic type exactly or not at all. The other way to read a number,
// with the rules of getValue(), is in NumberAccess.cpp.

#include <ko/Orvid/Number.h>

#include <ko/DecNumber.h>
#include <ko/Exception.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>
#include <type_traits>

#include "number/DecimalView.h"
#include "number/NumberBinary.h"
#include "number/NumberReading.h"
#include "number/NumberRounding.h"

namespace ko::Orvid {

namespace {

template<class T>
bool fits(long long value) {
    if constexpr (std::is_unsigned_v<T>) {
        return value >= 0 &&
               static_cast<unsigned long long>(value) <= std::numeric_limits<T>::max();
    } else {
        return value >= static_cast<long long>(std::numeric_limits<T>::min()) &&
               value <= static_cast<long long>(std::numeric_limits<T>::max());
    }
}

template<class T>
bool fits(unsigned long long value) {
    return value <= static_cast<unsigned long long>(std::numeric_limits<T>::max());
}

template<class T, class Integer>
bool fromInteger(Integer value, T& out) {
    if constexpr (std::is_floating_point_v<T>) {
        out = nearest<T>(value);
        return true;
    } else {
        if (fits<T>(value)) {
            out = static_cast<T>(value);
            return true;
        }
        return false;
    }
}

/// From a double that was set.
template<class T>
bool fromReal(double value, T& out) {
    if constexpr (std::is_floating_point_v<T>) {
        const T result = nearest<T>(value);
        if (std::isinf(result)) {
            return false;
        }
        out = result;
        return true;
    } else {
        const double beyond = std::ldexp(1.0, std::numeric_limits<T>::digits);
        const double lowest = std::is_signed_v<T> ? -beyond : 0.0;
        const bool isWhole = std::trunc(value) == value;  // false for a NaN
        if (!isWhole || value < lowest || value >= beyond) {
            return false;
        }
        out = static_cast<T>(value);
        return true;
    }
}

[[noreturn]] void throwNoNumber(std::string_view text) {
    static_cast<void>(DecNumber{std::string(text)});  // its message shows the text
    throw RuntimeError("Not a decimal number.");
}

/// A whole number of few digits at whatever place; returns false where it is none or too large.
template<class T>
bool fromDecimal(const DecimalView& decimal, T& out) {
    constexpr int largestPower = std::numeric_limits<unsigned long long>::digits10;
    if (decimal.isZero()) {
        out = 0;
        return true;
    }
    if (!decimal.isWhole() || !decimal.power().beyond.empty() ||
        decimal.power().value > largestPower) {
        return false;
    }
    char text[largestPower + 2] = "-";
    const auto length = static_cast<std::size_t>(decimal.power().value) + 1;
    std::fill_n(text + 1, length, '0');
    decimal.copyDigits(text + 1);
    return decimal.isNegative() ? readWhole({text, length + 1}, out)
                                : readWhole({text + 1, length}, out);
}

/// Reads every digit, for what no binary value holds for sure.
template<class T>
bool fromText(std::string_view text, T& out) {
    if constexpr (std::is_floating_point_v<T>) {
        bool isWhole = false;
        const T value = readReal<T>(text, isWhole);
        if (!isWhole) {
            throwNoNumber(text);
        }
        if (std::isinf(value)) {
            return false;
        }
        out = value;
        return true;
    } else {
        const DecimalView decimal(text);
        if (!decimal.isNumber()) {
            throwNoNumber(text);
        }
        return fromDecimal(decimal, out);
    }
}

/// Whether the binary value of a text says all that a T has of it. An integer has no negative zero.
template<class T>
bool isExactAs(const NumberStore::Binary& value) {
    if (value.kind == Number::ebDouble) {
        return std::is_same_v<T, double>;
    }
    return !std::is_floating_point_v<T> || value.kind != Number::ebLongLong || value.bits != 0;
}

}  // namespace

template<class T>
bool Number::convertTo(T& out) const {
    Binary value = m_store.binary();
    if (m_store.hasGivenText()) {
        const bool isRead = value.kind != ebNone || convertGivenText(value) == Refusal::none;
        if (!isRead || !value.isWhole || !isExactAs<T>(value)) {
            return fromText(m_store.givenText(), out);
        }
    }
    switch (value.kind) {
        case ebLongLong:
            return fromInteger(signedOf(value), out);
        case ebULongLong:
            return fromInteger(unsignedOf(value), out);
        case ebDouble:
            return fromReal(realOf(value), out);
        default:
            throwNoNumber({});
    }
}

template bool Number::convertTo(char&) const;
template bool Number::convertTo(signed char&) const;
template bool Number::convertTo(unsigned char&) const;
template bool Number::convertTo(short&) const;
template bool Number::convertTo(unsigned short&) const;
template bool Number::convertTo(int&) const;
template bool Number::convertTo(unsigned int&) const;
template bool Number::convertTo(long&) const;
template bool Number::convertTo(unsigned long&) const;
template bool Number::convertTo(long long&) const;
template bool Number::convertTo(unsigned long long&) const;
template bool Number::convertTo(float&) const;
template bool Number::convertTo(double&) const;
template bool Number::convertTo(long double&) const;

}  // namespace ko::Orvid
