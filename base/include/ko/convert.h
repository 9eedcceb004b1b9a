// SPDX-License-Identifier: MIT
//
// Conversion between narrow text (UTF-8) and wide text (wchar_t: UTF-32 where it has four bytes,
// UTF-16 where it has two).

#pragma once

#include <ko/export.h>

#include <string>

namespace ko {

/// The wide text as UTF-8. Every unit that is no Unicode scalar value becomes U+FFFD. Embedded NULs
/// are kept. Linear cost; throws only std::bad_alloc.
KO_API std::string convert(const std::wstring& wide);

/// The UTF-8 text as wide text. Every maximal ill-formed run of bytes becomes U+FFFD, so that no text
/// is read past its end. Embedded NULs are kept. Linear cost; throws only std::bad_alloc.
KO_API std::wstring wconvert(const std::string& narrow);

}  // namespace ko
