// SPDX-License-Identifier: MIT
//
// What people usually mean where a text is no JSON.

#pragma once

#include <string>

namespace ko::Orvid {

/// A sentence for the message of a syntax error, of either reader: which rule of JSON was probably
/// overlooked. Empty where nothing is to be guessed from it. Linear.
std::string syntaxHint(const std::string& message);

}  // namespace ko::Orvid
