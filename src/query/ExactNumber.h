// SPDX-License-Identifier: MIT
//
// The order of numbers by the exact decimal value of their texts, without arithmetic.

#pragma once

#include <optional>
#include <string_view>

namespace ko::Orvid {

/// Negative, zero or positive as `a` is below, equal to or above `b`, each the text of a JSON
/// number. Nothing where one is no number, or its exponent needs more than 18 digits. Linear in the
/// length.
std::optional<int> compareExactly(std::string_view a, std::string_view b);

}  // namespace ko::Orvid
