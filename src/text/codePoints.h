// SPDX-License-Identifier: MIT
//
// UTF-8 text as code points: counted, taken one by one, written.

#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace ko::Orvid::text {

struct CodePoint {
    char32_t value = 0;
    std::size_t length = 0;  ///< in bytes
};

/// The first character of the text, which is not empty; nothing where it is no valid UTF-8.
std::optional<CodePoint> firstCodePoint(std::string_view text);

/// How many characters the text has; a byte that can begin none of them belongs to the one before.
std::size_t countCodePoints(std::string_view text) noexcept;

/// Where the first byte stands that is no valid UTF-8; the length when there is none.
std::size_t validLength(std::string_view text);

/// Appends the character. A surrogate, which is none, becomes three bytes by the same rule.
void appendUtf8(std::string& out, char32_t codePoint);

}  // namespace ko::Orvid::text
