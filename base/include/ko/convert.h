// SPDX-License-Identifier: MIT
//
// Conversion between narrow text (UTF-8) and wide text (UTF-32 in a wchar_t of four bytes). It
// knows no locale and no other encoding.

#pragma once

#include <ko/export.h>

#include <string>

namespace ko {

/// The wide text as UTF-8. Every unit that is no Unicode scalar value (a surrogate, a value above
/// 0x10FFFF, a negative one) becomes U+FFFD. Embedded NULs are kept. Linear cost; throws only
/// std::bad_alloc and std::length_error.
KO_API std::string convert(const std::wstring& wide);

/// The UTF-8 text as wide text. One U+FFFD stands for each sequence that is cut short, overlong, or
/// encodes no Unicode scalar value, together with the continuation bytes that follow it, and for
/// each byte that can begin no sequence. No byte is read past the end. Embedded NULs are kept.
/// Linear cost; throws only std::bad_alloc and std::length_error.
KO_API std::wstring wconvert(const std::string& narrow);

}  // namespace ko
