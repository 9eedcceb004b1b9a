// SPDX-License-Identifier: MIT
//
// A look into a number: which of its two sides it holds, without computing the other one; and the
// making of kinds that no operation produces.

#pragma once

#include <ko/Orvid/Number.h>

#include <cstdint>
#include <cstring>
#include <string>

namespace ko::Orvid {

struct NumberProbe {
    /// A number of that kind, which need be no enumerator, with that text.
    static Number make(Number::EBinaryType kind, const std::string& text) {
        Number number;
        number.m_store.assign(text, {0, static_cast<unsigned char>(kind), false});
        return number;
    }

    static Number bigDecimal(const std::string& text) { return make(Number::ebBigDecimal, text); }

    /// A kind that no enumerator names.
    static Number unknown() { return make(static_cast<Number::EBinaryType>(7), std::string()); }

    static Number::EBinaryType heldKind(const Number& number) {
        return static_cast<Number::EBinaryType>(number.m_store.binary().kind);
    }
    /// The text that is there; where it is not on the heap, a copy that lives until the next look.
    static const std::string& heldText(const Number& number) {
        if (number.m_store.hasHeapText()) {
            return number.toString();
        }
        static std::string copy;
        return copy = number.m_store.givenText();
    }
    // The binary value, once its kind is known.
    static long long heldSigned(const Number& number) {
        return static_cast<long long>(heldUnsigned(number));
    }
    static unsigned long long heldUnsigned(const Number& number) { return number.binary().bits; }
    static double heldReal(const Number& number) {
        const std::uint64_t bits = heldUnsigned(number);
        double value = 0;
        std::memcpy(&value, &bits, sizeof value);
        return value;
    }
};

}  // namespace ko::Orvid
