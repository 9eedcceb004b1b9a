// SPDX-License-Identifier: MIT
//
// The binary value of a number between its bits and its types. The kind is known to the caller.

#pragma once

#include <ko/Orvid/Number.h>

#include <cstring>

namespace ko::Orvid {

template<class T>
T valueIn(const NumberStore::Binary& binary) noexcept {
    static_assert(sizeof(T) == sizeof binary.bits);
    T value;
    std::memcpy(&value, &binary.bits, sizeof value);
    return value;
}

inline long long signedOf(const NumberStore::Binary& binary) noexcept {
    return valueIn<long long>(binary);
}

inline unsigned long long unsignedOf(const NumberStore::Binary& binary) noexcept {
    return binary.bits;
}

inline double realOf(const NumberStore::Binary& binary) noexcept { return valueIn<double>(binary); }

inline NumberStore::Binary binaryOf(long long value) noexcept {
    return {static_cast<unsigned long long>(value), Number::ebLongLong, false};
}

inline NumberStore::Binary binaryOf(unsigned long long value) noexcept {
    return {value, Number::ebULongLong, false};
}

inline NumberStore::Binary binaryOf(double value) noexcept {
    NumberStore::Binary binary{0, Number::ebDouble, false};
    std::memcpy(&binary.bits, &value, sizeof value);
    return binary;
}

}  // namespace ko::Orvid
