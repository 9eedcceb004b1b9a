// SPDX-License-Identifier: MIT
//
// The order of numbers. Each pair of binary kinds has its comparison, so that no value is squeezed
// into a type that cannot hold it. Two results are this library's own rule and stay: a signed zero
// is below an unsigned one, and a NaN equals every double.

#include <ko/Orvid/Number.h>

#include <ko/DecNumber.h>
#include <ko/Exception.h>

#include <limits>

#include "number/NumberRounding.h"

namespace ko::Orvid {

namespace {

static_assert(std::numeric_limits<long double>::digits >= 64,
              "long double must hold every 64-bit integer exactly");

template<class T>
int order(T x, T y) {
    return x > y ? 1 : y > x ? -1 : 0;
}

int sign(int result) { return order(result, 0); }

[[noreturn]] void throwUnknownType() { throw RuntimeError("Unknown type, implementation missing"); }

}  // namespace

int Number::compare(long long x, unsigned long long y) {
    return x <= 0 ? -1 : order(static_cast<unsigned long long>(x), y);
}

int Number::compare(long long x, double y) {
    return order(static_cast<long double>(x), static_cast<long double>(y));
}

int Number::compare(long long x, const std::string& y) {
    return sign(DecNumber(x).compare(DecNumber(y)));
}

int Number::compare(unsigned long long x, double y) {
    return y < 0 ? 1 : order(nearest<double>(x), y);
}

int Number::compare(unsigned long long x, const std::string& y) {
    return sign(DecNumber(x).compare(DecNumber(y)));
}

int Number::compare(double x, const std::string& y) {
    return sign(DecNumber(x).compare(DecNumber(y)));
}

int Number::compare(const Number& other) const {
    switch (other.type()) {
        case ebLongLong:
            return compareTo(other.m_value.signedInteger);
        case ebULongLong:
            return compareTo(other.m_value.unsignedInteger);
        case ebDouble:
            return compareTo(other.m_value.real);
        default:
            throw Exception("Uncomparable type.");
    }
}

int Number::compareTo(long long other) const {
    switch (type()) {
        case ebLongLong:
            return order(m_value.signedInteger, other);
        case ebULongLong:
            return -compare(other, m_value.unsignedInteger);
        case ebDouble:
            return -compare(other, m_value.real);
        case ebBigDecimal:
            return -compare(other, m_text.string());
        default:
            throwUnknownType();
    }
}

int Number::compareTo(unsigned long long other) const {
    switch (type()) {
        case ebLongLong:
            return compare(m_value.signedInteger, other);
        case ebULongLong:
            return order(m_value.unsignedInteger, other);
        case ebDouble:
            return -compare(other, m_value.real);
        case ebBigDecimal:
            return -compare(other, m_text.string());
        default:
            throwUnknownType();
    }
}

int Number::compareTo(double other) const {
    switch (type()) {
        case ebLongLong:
            return compare(m_value.signedInteger, other);
        case ebULongLong:
            return compare(m_value.unsignedInteger, other);
        case ebDouble:
            return order(m_value.real, other);
        case ebBigDecimal:
            return -compare(other, m_text.string());
        default:
            throwUnknownType();
    }
}

}  // namespace ko::Orvid
