// SPDX-License-Identifier: MIT
//
// The names of the value types.

#include <ko/Orvid/types.h>

#include "core/EnumNames.h"

namespace {

using ko::Orvid::EType;
using ko::Orvid::NamedEnum;

constexpr NamedEnum k_names[] = {ORVID_ENUM_NAME("etEmpty"),   ORVID_ENUM_NAME("etNull"),
                                 ORVID_ENUM_NAME("etBoolean"), ORVID_ENUM_NAME("etNumber"),
                                 ORVID_ENUM_NAME("etString"),  ORVID_ENUM_NAME("etObject"),
                                 ORVID_ENUM_NAME("etArray")};
constexpr NamedEnum k_invalid = ORVID_ENUM_NAME(">>INVALID<<");

template<class Stream>
Stream& print(Stream& out, EType type) {
    const long long position = type - static_cast<long long>(ko::Orvid::etEmpty);
    const NamedEnum* const name = ko::Orvid::nameAt(k_names, position);
    out << (name == nullptr ? k_invalid : *name);
    return out;
}

}  // namespace

std::ostream& operator<<(std::ostream& out, EType type) { return print(out, type); }

std::wostream& operator<<(std::wostream& out, EType type) { return print(out, type); }
