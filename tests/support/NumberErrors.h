// SPDX-License-Identifier: MIT
//
// Short names of the exceptions that numbers throw.

#pragma once

#include <ko/Orvid/ValueOutOfRange.h>

#include <string>

namespace orvid_test {

/// Of a refused text.
using TextError = ko::Orvid::ValueOutOfRange<std::string, std::string>;
/// Of reading a number as a T.
template<class T>
using ReadError = ko::Orvid::ValueOutOfRange<ko::Orvid::Number, T>;

}  // namespace orvid_test
