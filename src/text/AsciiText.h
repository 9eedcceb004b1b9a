// SPDX-License-Identifier: MIT
//
// Text as JSON escapes of ASCII, for the writer's layout that holds nothing else. It knows UTF-8
// and no JSON: quotes and control characters are the writer's business.

#pragma once

#include <cstddef>
#include <string>

namespace ko::Orvid::text {

/// Whether one of `length` bytes of text is beyond ASCII.
bool hasBeyondAscii(const char* text, std::size_t length);

/// Appends `length` bytes of text to `out`, each character beyond ASCII as `\uXXXX` with uppercase
/// digits, two of them (a surrogate pair) for one beyond U+FFFF. Bytes that are no UTF-8 become
/// `\uFFFD`, one for each longest run that begins a character and does not complete it. Returns
/// whether there were none. May throw std::bad_alloc, and has then appended a part.
bool appendAscii(std::string& out, const char* text, std::size_t length);

}  // namespace ko::Orvid::text
