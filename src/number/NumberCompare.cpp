// SPDX-License-Identifier: MIT
//
// Comparing binary values. Each pair of kinds has its comparison, so that no value is squeezed into
// a type that cannot hold it. Two results are this library's own rule and stay: a signed zero is
// below an unsigned one, and a NaN equals every double. The exact order of numbers is in
// NumberOrder.cpp.

#include <ko/Orvid/Number.h>

#include <ko/DecNumber.h>
#include <ko/Exception.h>

#include <limits>
#include <string>
#include <type_traits>

#include "number/NumberBinary.h"
#include "number/NumberRounding.h"

namespace ko::Orvid {

namespace {

static_assert(std::numeric_limits<long double>::digits >= 64,
              "long double must hold every 64-bit integer exactly");

template<class T>
int orderOf(T x, T y) {
    return x > y ? 1 : y > x ? -1 : 0;
}

int sign(int result) { return orderOf(result, 0); }

[[noreturn]] void throwUnknownType() { throw RuntimeError("Unknown type, implementation missing"); }

/// Number::compare() has each pair of two types in one order only.
template<class X, class Y>
int order(X x, Y y) {
    if constexpr (std::is_same_v<X, Y>) {
        return orderOf(x, y);
    } else if constexpr (std::is_same_v<X, double> || std::is_same_v<Y, long long>) {
        return -Number::compare(y, x);
    } else {
        return Number::compare(x, y);
    }
}

template<class T>
int orderTo(const NumberStore& store, const NumberStore::Binary& own, T other) {
    switch (own.kind) {
        case Number::ebLongLong:
            return order(signedOf(own), other);
        case Number::ebULongLong:
            return order(unsignedOf(own), other);
        case Number::ebDouble:
            return order(realOf(own), other);
        case Number::ebBigDecimal:
            return -Number::compare(other, std::string(store.givenText()));
        default:
            throwUnknownType();
    }
}

}  // namespace

int Number::compare(long long x, unsigned long long y) {
    return x <= 0 ? -1 : orderOf(static_cast<unsigned long long>(x), y);
}

int Number::compare(long long x, double y) {
    return orderOf(static_cast<long double>(x), static_cast<long double>(y));
}

int Number::compare(long long x, const std::string& y) {
    return sign(DecNumber(x).compare(DecNumber(y)));
}

int Number::compare(unsigned long long x, double y) {
    return y < 0 ? 1 : orderOf(nearest<double>(x), y);
}

int Number::compare(unsigned long long x, const std::string& y) {
    return sign(DecNumber(x).compare(DecNumber(y)));
}

int Number::compare(double x, const std::string& y) {
    return sign(DecNumber(x).compare(DecNumber(y)));
}

int Number::compare(const Number& other) const {
    const Binary kept = m_store.binary();
    const Binary othersKept = other.m_store.binary();
    if (kept.kind == ebULongLong && othersKept.kind == ebULongLong) {
        return orderOf(unsignedOf(kept), unsignedOf(othersKept));
    }
    return compareConverted(other);
}

int Number::compareConverted(const Number& other) const {
    const Binary right = other.binary();
    switch (right.kind) {
        case ebLongLong:
            return compareTo(binary(), signedOf(right));
        case ebULongLong:
            return compareTo(binary(), unsignedOf(right));
        case ebDouble:
            return compareTo(binary(), realOf(right));
        default:
            throw Exception("Uncomparable type.");
    }
}

int Number::compareTo(const Binary& own, long long other) const {
    return orderTo(m_store, own, other);
}

int Number::compareTo(const Binary& own, unsigned long long other) const {
    return orderTo(m_store, own, other);
}

int Number::compareTo(const Binary& own, double other) const {
    return orderTo(m_store, own, other);
}

}  // namespace ko::Orvid
