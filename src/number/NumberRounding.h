// SPDX-License-Identifier: MIT
//
// Conversion to a floating type that is exactly as wide as it says. Where the processor computes
// with more bits than that type has (x87), a value keeps them until it is stored in memory.

#pragma once

#include <cfloat>

namespace ko::Orvid {

/// The value of type Real that is nearest to `value`.
template<class Real, class Value>
Real nearest(const Value& value) {
#if FLT_EVAL_METHOD == 0
    return static_cast<Real>(value);
#else
    const volatile Real stored = static_cast<Real>(value);
    return stored;
#endif
}

}  // namespace ko::Orvid
