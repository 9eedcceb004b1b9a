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

using Binary = NumberStore::Binary;

/// Reads the usual kinds for a T, within its range, without the detour over compare(). Returns
/// false for all the rest.
template<class T>
bool readUsual(const Binary& own, T& out) {
    using Limits = std::numeric_limits<T>;
    if constexpr (std::is_floating_point_v<T>) {
        const bool isUsual = own.kind == Number::ebDouble &&
                             realOf(own) >= static_cast<double>(Limits::min()) &&
                             realOf(own) <= static_cast<double>(Limits::max());
        if (isUsual) {
            out = nearest<T>(realOf(own));
        }
        return isUsual;
    } else {
        const bool isUsual = own.kind == Number::ebULongLong
                                 ? unsignedOf(own) <= static_cast<unsigned long long>(Limits::max())
                                 : own.kind == Number::ebLongLong && std::is_signed_v<T> &&
                                       signedOf(own) >= static_cast<long long>(Limits::min()) &&
                                       signedOf(own) <= static_cast<long long>(Limits::max());
        if (isUsual) {
            out = static_cast<T>(unsignedOf(own));
        }
        return isUsual;
    }
}

template<class T>
T valueOf(const Number& number) {
    T result{};
    return number.getValue(result);
}

}  // namespace

template<class T>
T& Number::getValue(T& out) const {
    const Binary own = binary();
    return readUsual(own, out) ? out : readUnusual(own, out);
}

/// What is no number of the usual kinds, or is out of range.
template<class T>
T& Number::readUnusual(const Binary& own, T& out) const {
    constexpr T min = std::numeric_limits<T>::min();
    constexpr T max = std::numeric_limits<T>::max();
    if (compareTo(own, asBinary(min)) < 0 || compareTo(own, asBinary(max)) > 0) {
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
