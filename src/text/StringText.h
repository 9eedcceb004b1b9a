// SPDX-License-Identifier: MIT
//
// The inside of a JSON string: where it ends, what is wrong with it, and what it stands for.

#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "text/ByteRuns.h"

namespace ko::Orvid::text {

/// Which strings are refused besides those that are no JSON.
struct StringRules {
    bool validateUtf8 = false;
    bool rejectLoneSurrogates = false;
};

enum class StringEnd {
    quote,
    text,       ///< the text ends before the string
    control,    ///< a control character that is not escaped
    escape,     ///< a byte that begins no escape
    hexDigit,   ///< a byte where a hexadecimal digit must stand
    surrogate,  ///< the escape of half a surrogate pair
    utf8,       ///< bytes that are no UTF-8
};

/// What a string came to.
struct StringScan {
    StringEnd end;
    /// The quote or the first byte of what is wrong. Where the text ends, what lies before this
    /// need not be looked at again.
    const char* at;
    /// How many bytes are wrong.
    std::size_t length = 1;
    bool hasEscape = false;
};

/// Looks at the string from `at`, after its quote, or where an earlier scan of it stopped.
StringScan scanString(const char* at, const char* end, const StringRules& rules) noexcept;

/// What scanUtf8() came to.
struct Utf8Scan {
    const char* at;      ///< the first byte of a sequence that is malformed or cut off, or the end
    std::size_t length;  ///< of a malformed sequence; 0 otherwise
};

/// Looks for the first byte that is no UTF-8.
Utf8Scan scanUtf8(const char* at, const char* end) noexcept;

/// Whether all of the bytes are UTF-8, with no character cut off at their end.
bool isUtf8(std::string_view bytes) noexcept;

/// Appends what the text of a string, in which scanString() found no error, stands for. The escape
/// of half a surrogate pair becomes what YAJL makes of it. Throws std::bad_alloc.
void appendUnescaped(std::string& out, const char* at, const char* end);

}  // namespace ko::Orvid::text
