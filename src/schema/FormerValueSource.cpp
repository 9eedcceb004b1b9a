// SPDX-License-Identifier: MIT
//
// The operators << of ValueSource under the name EValueSource, which it had before. Programs that
// were linked then ask for them by that name when they start. No header declares it, so that new
// programs use the new name.

#include <ko/Orvid/SchemaDefaults.h>

#include <ostream>

namespace ko::Orvid {
enum class EValueSource : int;
}

KO_API std::ostream& operator<<(std::ostream& out, ko::Orvid::EValueSource source);
KO_API std::wostream& operator<<(std::wostream& out, ko::Orvid::EValueSource source);

std::ostream& operator<<(std::ostream& out, ko::Orvid::EValueSource source) {
    return out << static_cast<ko::Orvid::ValueSource>(source);
}

std::wostream& operator<<(std::wostream& out, ko::Orvid::EValueSource source) {
    return out << static_cast<ko::Orvid::ValueSource>(source);
}
