// SPDX-License-Identifier: MIT
//
// What people usually mean where a text is no JSON.

#pragma once

#include <ko/Orvid/fwd.h>

#include <string>

namespace ko::Orvid {

/// A sentence for a syntax error, of either reader: which rule of JSON was probably overlooked.
/// Empty where nothing is to be guessed from it. Linear in the length of the message.
std::string syntaxHint(const ParseException& error);

}  // namespace ko::Orvid
