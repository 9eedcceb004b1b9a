// SPDX-License-Identifier: MIT
//
// What an error of YAJL's is about, read from its text: it reports errors in no other way.

#pragma once

#include <string_view>

namespace ko::Orvid::yajl {

enum class Complaint {
    other,
    character,  ///< no token begins with the character
    word,       ///< true, false or null is begun and does not go on
    comma,      ///< a comma or the end of a container is missing after a value
};

/// What Reader::error() is about.
Complaint complaintOf(std::string_view error) noexcept;
/// The character before the marker of the verbose text, which stands at Reader::position(); NUL
/// where it shows none.
char markedCharacter(std::string_view error) noexcept;

}  // namespace ko::Orvid::yajl
