// SPDX-License-Identifier: MIT
//
// ko::DecNumber, an exact decimal number of any size: coefficient times a power of ten. It compares
// and converts; it does no arithmetic.

#pragma once

#include <ko/export.h>

#include <iosfwd>
#include <memory>
#include <string>

namespace ko {

/// An immutable exact decimal. Copies are deep. The implementation stands behind a pointer, so that
/// users need no header of the big-number library.
class KO_API DecNumber {
public:
    explicit DecNumber(long long value);
    explicit DecNumber(unsigned long long value);
    /// Every finite double is an exact decimal and is taken as such. Throws RuntimeError for a NaN
    /// and for the infinities.
    explicit DecNumber(double value);
    /// Reads an optional sign, digits with an optional point, and an optional exponent. Throws
    /// RuntimeError, whose message shows the text, for anything else and for an exponent that does
    /// not fit 64 bits.
    explicit DecNumber(const std::string& text);
    DecNumber(const DecNumber& other);
    DecNumber& operator=(const DecNumber& other);
    ~DecNumber();

    /// Negative, zero or positive as this number is below, equal to or above `other`. Decided by sign
    /// and magnitude where they differ, in constant memory; only numbers of the same magnitude are
    /// brought to one scale.
    int compare(const DecNumber& other) const;

    /// Writes text that reads back to an equal number, in the shortest of plain and exponent form, so
    /// that a large exponent stays an exponent.
    std::ostream& writeTo(std::ostream& out) const;

    /// The number as that type, the fraction cut off toward zero. Throws RuntimeError, which shows the
    /// number, when it does not fit. The floating types round to the nearest value.
    explicit operator char() const;
    explicit operator unsigned char() const;
    explicit operator short() const;
    explicit operator unsigned short() const;
    explicit operator int() const;
    explicit operator unsigned int() const;
    explicit operator long() const;
    explicit operator unsigned long() const;
    explicit operator long long() const;
    explicit operator unsigned long long() const;
    explicit operator float() const;
    explicit operator double() const;

private:
    struct SImpl;
    std::unique_ptr<SImpl> m_impl;
};

}  // namespace ko
