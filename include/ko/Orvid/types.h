// SPDX-License-Identifier: MIT
//
// The kinds of JSON value and the constants that several units share.

#pragma once

#include <ko/export.h>

#include <iosfwd>

namespace ko::Orvid {

/// What an element holds. The numeric order is also the order between elements of different types.
enum EType : int {
    etEmpty = -1,  ///< no value at all, which is not null
    etNull = 0,
    etBoolean,
    etNumber,
    etString,
    etObject,
    etArray,
};

/// The array index that stands for no index, all bits set: the step `[*]` of a path.
constexpr unsigned int k_noIndex = 0xFFFFFFFFU;

}  // namespace ko::Orvid

///@{
/// Prints the type's name, or ">>INVALID<<" for a value that is no type. Constant cost.
KO_API std::ostream& operator<<(std::ostream& out, ko::Orvid::EType type);
KO_API std::wostream& operator<<(std::wostream& out, ko::Orvid::EType type);
///@}

namespace ko {
using ::operator<<;
namespace Orvid {
using ::operator<<;
}
}  // namespace ko
