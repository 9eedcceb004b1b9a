// SPDX-License-Identifier: MIT
//
// The first lines of the errors of lenient reading, without their newline: YAJL's, and those that
// the reader makes in the same style.

#pragma once

#include <string>

namespace orvid_test::yajl {

inline const std::string k_unallowedToken =
    "parse error: unallowed token at this point in JSON text";
inline const std::string k_afterItem = "parse error: after array element, I expect ',' or ']'";
inline const std::string k_afterMember =
    "parse error: after key and value, inside map, I expect ',' or '}'";
inline const std::string k_invalidKey = "parse error: invalid object key (must be a string)";
inline const std::string k_noColon =
    "parse error: object key and value must be separated by a colon (':')";
inline const std::string k_cancelled =
    "parse error: client cancelled parse via callback return value";
inline const std::string k_integerOverflow = "parse error: integer overflow";
inline const std::string k_floatOverflow = "parse error: numeric (floating point) overflow";
inline const std::string k_outOfMemory = "parse error: out of memory";
inline const std::string k_invalidCharacter = "lexical error: invalid char in json text.";
inline const std::string k_invalidWord = "lexical error: invalid string in json text.";
inline const std::string k_invalidInString = "lexical error: invalid character inside string.";
inline const std::string k_invalidEscape =
    "lexical error: inside a string, '\\' occurs before a character which it may not.";
inline const std::string k_invalidHex =
    "lexical error: invalid (non-hex) character occurs after '\\u' inside string.";
inline const std::string k_noDigitAfterMinus =
    "lexical error: malformed number, a digit is required after the minus sign.";
inline const std::string k_noDigitAfterPoint =
    "lexical error: malformed number, a digit is required after the decimal point.";
inline const std::string k_noDigitAfterExponent =
    "lexical error: malformed number, a digit is required after the exponent.";

}  // namespace orvid_test::yajl
