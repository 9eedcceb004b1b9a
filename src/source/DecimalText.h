// SPDX-License-Identifier: MIT
//
// The texts of JSON numbers, compared without working out a value.

#pragma once

#include <string_view>

namespace ko::Orvid {

/// Whether both texts, which are JSON numbers, have the same exact decimal value and sign: zero and
/// minus zero differ. Linear cost. Exponents of more than 17 digits are not compared: it returns
/// false then.
bool sameDecimal(std::string_view a, std::string_view b);

/// Whether the text is spelled as no binary value would be: with zeros at the end of the fraction,
/// a capital E, or a plus or leading zeros in the exponent.
bool hasOwnSpelling(std::string_view number);

}  // namespace ko::Orvid
