// SPDX-License-Identifier: MIT
//
// The bytes that are whitespace in JSON text, as sets to search for. ByteRuns.h skips runs of them.

#pragma once

#include <string_view>

namespace ko::Orvid::text {

inline constexpr std::string_view k_whitespace = " \t\n\r";
inline constexpr std::string_view k_whitespaceInLine = " \t\r";

/// Whether a line, given without its newline, holds no record.
inline bool isBlankLine(std::string_view line) noexcept {
    return line.find_first_not_of(k_whitespaceInLine) == std::string_view::npos;
}

}  // namespace ko::Orvid::text
