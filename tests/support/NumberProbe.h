// SPDX-License-Identifier: MIT
//
// A look into a number: which of its two sides it holds, without computing the other one; and the
// making of kinds that no operation produces.

#pragma once

#include <ko/Orvid/Number.h>

#include <string>

namespace ko::Orvid {

struct NumberProbe {
    /// A number of that kind, which need be no enumerator, with that text.
    static Number make(Number::EBinaryType kind, const std::string& text) {
        Number number;
        number.m_type = kind;
        number.m_text.assign(text);
        return number;
    }

    static Number bigDecimal(const std::string& text) { return make(Number::ebBigDecimal, text); }

    /// A kind that no enumerator names.
    static Number unknown() { return make(static_cast<Number::EBinaryType>(7), std::string()); }

    static Number::EBinaryType heldKind(const Number& number) { return number.m_type; }
    static const std::string& heldText(const Number& number) { return number.m_text.string(); }
    static long long heldSigned(const Number& number) { return number.m_value.signedInteger; }
    static unsigned long long heldUnsigned(const Number& number) {
        return number.m_value.unsignedInteger;
    }
    static double heldReal(const Number& number) { return number.m_value.real; }
};

}  // namespace ko::Orvid
