// SPDX-License-Identifier: MIT
//
// What the tests of ko::DecNumber share: messages of errors, exact texts of doubles, random
// doubles.

#pragma once

#include <ko/Exception.h>

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <random>
#include <string>

namespace DecNumberSupport {

/// The message of the RuntimeError that `action` throws, or a text that says it threw none.
template<class Action>
std::string messageOf(Action action) {
    try {
        action();
    } catch (const ko::RuntimeError& error) {
        return error.what();
    }
    return "(nothing thrown)";
}

/// The exact value of a double or long double, as printf writes it.
inline std::string exact(long double value) {
    std::string text(20000, '\0');
    const int length = std::snprintf(text.data(), text.size(), "%.1200Lf", value);
    text.resize(static_cast<std::size_t>(length));
    return text;
}

/// The same numbers in every run, so that a failure can be looked into.
template<class Engine>
Engine repeatable(unsigned seed) {
    return Engine(seed);
}

inline double randomDouble(std::mt19937_64& random) {
    double value = 0;
    do {
        const std::uint64_t bits = random();
        std::memcpy(&value, &bits, sizeof value);
    } while (!std::isfinite(value));
    return value;
}

}  // namespace DecNumberSupport
