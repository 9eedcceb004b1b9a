// SPDX-License-Identifier: MIT
//
// Reading a number as one of the twelve arithmetic types: first the range by comparison, which
// cannot overflow, then the conversion.

#include <ko/Orvid/Number.h>

#include <ko/DecNumber.h>

#include <cmath>
#include <limits>
#include <type_traits>

#include "number/NumberBinary.h"
#include "number/NumberRounding.h"

namespace ko::Orvid {

namespace {

/// Converts a number that lies within T's range.
template<class T, class Value>
T converted(const Value& value) {
    if constexpr (std::is_floating_point_v<T>) {
        return nearest<T>(value);
    } else {
        return static_cast<T>(value);
    }
}

/// Converts a double that lies within T's range, cutting the fraction off. Two values have passed
/// the range check that the language leaves undefined: a NaN becomes 0, and 2^64, which the check
/// cannot distinguish from the largest unsigned value, becomes that value.
template<class T>
T fromReal(double value) {
    if constexpr (std::is_integral_v<T>) {
        if (std::isnan(value)) {
            return 0;
        }
        if (value >= 0x1p64) {
            return std::numeric_limits<T>::max();
        }
    }
    return converted<T>(value);
}

/// The limit of a type as the binary kind that numbers of that type have.
template<class T>
auto asBinary(T limit) {
    if constexpr (std::is_floating_point_v<T>) {
        return static_cast<double>(limit);
    } else if constexpr (std::is_signed_v<T>) {
        return static_cast<long long>(limit);
    } else {
        return static_cast<unsigned long long>(limit);
    }
}

template<class T>
T valueOf(const Number& number) {
    T result{};
    return number.getValue(result);
}

}  // namespace

/// The answer of compare() against both limits; for the usual pairs of kinds without the detour.
template<class T>
bool Number::isWithin(const Binary& own, T min, T max) const {
    if constexpr (std::is_integral_v<T>) {
        if (own.kind == ebULongLong) {
            return unsignedOf(own) <= static_cast<unsigned long long>(max);
        }
        if (own.kind == ebLongLong && std::is_signed_v<T>) {
            return signedOf(own) >= static_cast<long long>(min) &&
                   signedOf(own) <= static_cast<long long>(max);
        }
    }
    return compareTo(own, asBinary(min)) >= 0 && compareTo(own, asBinary(max)) <= 0;
}

template<class T>
T& Number::getValue(T& out) const {
    constexpr T min = std::numeric_limits<T>::min();
    constexpr T max = std::numeric_limits<T>::max();
    const Binary own = binary();
    if (!isWithin(own, min, max)) {
        throw ValueOutOfRange<Number, T>(*this, min, max);
    }
    switch (own.kind) {
        case ebLongLong:
            return out = converted<T>(signedOf(own));
        case ebULongLong:
            return out = converted<T>(unsignedOf(own));
        case ebDouble:
            return out = fromReal<T>(realOf(own));
        case ebBigDecimal:
            return out = converted<T>(DecNumber(std::string(m_store.givenText())));
        default:
            return out;
    }
}

char Number::toChar() const { return valueOf<char>(*this); }

unsigned char Number::toUChar() const { return valueOf<unsigned char>(*this); }

short Number::toShort() const { return valueOf<short>(*this); }

unsigned short Number::toUShort() const { return valueOf<unsigned short>(*this); }

int Number::toInt() const { return valueOf<int>(*this); }

unsigned int Number::toUInt() const { return valueOf<unsigned int>(*this); }

long Number::toLong() const { return valueOf<long>(*this); }

unsigned long Number::toULong() const { return valueOf<unsigned long>(*this); }

long long Number::toLongLong() const { return valueOf<long long>(*this); }

unsigned long long Number::toULongLong() const { return valueOf<unsigned long long>(*this); }

float Number::toFloat() const { return valueOf<float>(*this); }

double Number::toDouble() const { return valueOf<double>(*this); }

template char& Number::getValue(char&) const;
template unsigned char& Number::getValue(unsigned char&) const;
template short& Number::getValue(short&) const;
template unsigned short& Number::getValue(unsigned short&) const;
template int& Number::getValue(int&) const;
template unsigned int& Number::getValue(unsigned int&) const;
template long& Number::getValue(long&) const;
template unsigned long& Number::getValue(unsigned long&) const;
template long long& Number::getValue(long long&) const;
template unsigned long long& Number::getValue(unsigned long long&) const;
template float& Number::getValue(float&) const;
template double& Number::getValue(double&) const;

}  // namespace ko::Orvid
