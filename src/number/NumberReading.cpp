// SPDX-License-Identifier: MIT
//
// Reading floating types. std::from_chars() is the fast way for what is a plain number in range;
// but it rounds twice where the processor computes with more bits than the type has (x87). The C
// functions settle all the rest.

#include "number/NumberReading.h"

#include <ko/detail/DecimalParts.h>

#include <cfloat>
#include <clocale>
#include <cmath>
#include <cstdlib>
#include <string>
#include <type_traits>

namespace ko::Orvid {

namespace {

/// In the locale "C", which newlocale() neither allocates nor loads.
template<class Real>
Real readInC(const char* text) {
    const locale_t plain = newlocale(LC_ALL_MASK, "C", nullptr);
    Real value{};
    if constexpr (std::is_same_v<Real, float>) {
        value = strtof_l(text, nullptr, plain);
    } else if constexpr (std::is_same_v<Real, double>) {
        value = strtod_l(text, nullptr, plain);
    } else {
        value = strtold_l(text, nullptr, plain);
    }
    freelocale(plain);
    return value;
}

/// The C functions need a zero byte after the text, which most texts have room for in here.
template<class Real>
Real readBeginning(std::string_view text) {
    constexpr std::size_t shortText = 64;
    if (text.size() >= shortText) {
        return readInC<Real>(std::string(text).c_str());
    }
    char copy[shortText] = {};
    text.copy(copy, text.size());
    return readInC<Real>(copy);
}

}  // namespace

template<class Real>
Real readReal(std::string_view text, bool& isWhole) {
    Real value{};
    constexpr bool isRoundedOnce = FLT_EVAL_METHOD == 0 && !std::is_same_v<Real, long double>;
    if constexpr (isRoundedOnce) {
        if (readWhole(text, value) && std::isfinite(value)) {
            isWhole = true;
            return value;
        }
    }
    DecimalParts parts;
    isWhole = parts.read(text);
    return readBeginning<Real>(text);
}

template float readReal(std::string_view, bool&);
template double readReal(std::string_view, bool&);
template long double readReal(std::string_view, bool&);

}  // namespace ko::Orvid
