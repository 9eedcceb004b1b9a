// SPDX-License-Identifier: MIT
//
// Converting a number to an arithmetic type exactly or not at all, and hashing one. The other way
// to read a number, with the rules of getValue(), is in NumberAccess.cpp.

#include <ko/Orvid/Number.h>

#include <ko/DecNumber.h>

#include <cmath>
#include <limits>
#include <type_traits>

#include "number/NumberRounding.h"

namespace ko::Orvid {

namespace {

/// Whether syncToBinary() computes the value of the text without a chance to overflow.
bool isInRangeForSure(std::string_view text) {
    constexpr std::size_t safeDigits = 18;    // any such integer has less than 64 bits
    constexpr std::size_t safeDecimal = 300;  // the largest double has 309 digits
    if (text.find_first_of("eE") != std::string_view::npos) {
        return false;
    }
    return text.size() <= safeDigits ||
           (text.size() <= safeDecimal && text.find('.') != std::string_view::npos);
}

/// Beyond it a double does not tell all integers apart.
constexpr double k_largestExact = 0x1p53;

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

template<class T>
bool fromReal(double value, T& out) {
    if constexpr (std::is_floating_point_v<T>) {
        if (std::abs(value) > static_cast<double>(std::numeric_limits<T>::max())) {
            return false;
        }
        out = nearest<T>(value);
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

template<class T>
DecNumber decimal(T limit) {
    if constexpr (std::is_floating_point_v<T>) {
        return DecNumber(static_cast<double>(limit));
    } else if constexpr (std::is_signed_v<T>) {
        return DecNumber(static_cast<long long>(limit));
    } else {
        return DecNumber(static_cast<unsigned long long>(limit));
    }
}

}  // namespace

/// The exact way, for texts that no binary kind holds for sure.
template<class T>
bool Number::convertText(T& out) const {
    using TypeLimits = std::numeric_limits<T>;
    const DecNumber value(m_text.string());
    if (value.compare(decimal(TypeLimits::lowest())) < 0 ||
        value.compare(decimal(TypeLimits::max())) > 0) {
        return false;
    }
    const T result = nearest<T>(value);
    if (std::is_integral_v<T> && value.compare(decimal(result)) != 0) {
        return false;
    }
    out = result;
    return true;
}

template<class T>
bool Number::convertTo(T& out) const {
    const std::string_view text = m_text.view();
    if (!text.empty() && !isInRangeForSure(text)) {
        return convertText(out);
    }
    switch (type()) {
        case ebLongLong:
            return fromInteger(m_value.signedInteger, out);
        case ebULongLong:
            return fromInteger(m_value.unsignedInteger, out);
        case ebDouble:
            return std::is_integral_v<T> && !text.empty() &&
                           std::abs(m_value.real) >= k_largestExact
                       ? convertText(out)
                       : fromReal(m_value.real, out);
        default:
            return convertText(out);
    }
}

template bool Number::convertTo(char&) const;
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

}  // namespace ko::Orvid

/// Numbers of different kinds are compared as doubles at the coarsest, so equal ones agree there.
std::size_t std::hash<ko::Orvid::Number>::operator()(const ko::Orvid::Number& number) const {
    using ko::Orvid::nearest;
    using ko::Orvid::Number;
    const auto hashed = [](double value) {
        return std::hash<double>()(value == 0 ? 0.0 : value);  // one hash for both zeros
    };
    switch (number.type()) {
        case Number::ebLongLong:
            return hashed(nearest<double>(number.m_value.signedInteger));
        case Number::ebULongLong:
            return hashed(nearest<double>(number.m_value.unsignedInteger));
        case Number::ebDouble:
            return hashed(number.m_value.real);
        default:
            return hashed(nearest<double>(number.toDecNumber()));
    }
}
