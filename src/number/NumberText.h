// SPDX-License-Identifier: MIT
//
// The texts of binary values: as a stream prints them by default, with six significant digits, and
// the shortest that reads back as the same value.

#pragma once

#include <ko/Orvid/detail/NumberStore.h>

#include <string_view>

namespace ko::Orvid {

/// Six digits; empty for a kind without a binary value. Lives in `buffer`.
std::string_view derivedText(const NumberStore::Binary& binary, NumberBuffer& buffer) noexcept;

/// As many digits as the value needs; empty for a kind without a binary value. Lives in `buffer`.
std::string_view exactText(const NumberStore::Binary& binary, NumberBuffer& buffer) noexcept;

}  // namespace ko::Orvid
