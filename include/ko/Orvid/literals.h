// SPDX-License-Identifier: MIT
//
// Literals for JSON values and paths: R"({"a": [1, 2]})"_json and "a[1]"_path. They stand in an
// inline namespace: `using namespace ko::Orvid::literals;` brings them alone.

#pragma once

#include <ko/export.h>
#include <ko/Orvid/Element.h>
#include <ko/Orvid/Path.h>

#include <cstddef>

namespace ko::Orvid {

inline namespace literals {

/// The value of the JSON text, read strictly (see ReadOptions::strict). Throws ParseException with
/// the place of the error. Linear cost.
KO_API Element operator""_json(const char* text, std::size_t length);

/// The path. Throws ParseException with the 0-based column of the error when it is malformed; the
/// constructors of Path do not check that. Linear cost.
KO_API Path operator""_path(const char* text, std::size_t length);

}  // namespace literals

}  // namespace ko::Orvid
