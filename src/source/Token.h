// SPDX-License-Identifier: MIT
//
// Scalars as tokens of JSON text: what a token of valid text says, whether an element still says
// the same, and the token for an element.

#pragma once

#include <ko/Orvid/Element.h>

#include <string>
#include <string_view>

namespace ko::Orvid {

/// The type of the value that begins with that byte.
EType typeOfToken(char first) noexcept;

/// The bytes that a string token, with its quotes, stands for.
std::string stringOfToken(std::string_view token);

/// Whether the string token, with its quotes, stands for those bytes.
bool tokenSays(std::string_view token, std::string_view bytes);

/// Whether a scalar may be written as that token. A number is the same when its text is, or when
/// its exact value is and its own text says nothing of how it should be spelled: a number set to 1
/// may stay `1.0`, one set to `1.00` is written so.
bool tokenSays(std::string_view token, const Element& scalar);

/// Appends the text between quotes, with the escapes that it needs.
void appendQuoted(std::string& out, std::string_view text);

/// Appends a null, boolean, number or string, which JSON must be able to express.
void appendScalar(std::string& out, const Element& scalar);

}  // namespace ko::Orvid
