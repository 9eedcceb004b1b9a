// SPDX-License-Identifier: MIT
//
// ko::DecNumber, an exact decimal number of any size: coefficient times a power of ten. It
// compares, adds, subtracts, multiplies and converts.

#pragma once

#include <ko/export.h>

#include <iosfwd>
#include <memory>
#include <string>
#include <type_traits>

namespace ko {

/// An immutable exact decimal with a coefficient of any length and a decimal exponent of 64 bits.
/// Copies are deep. Memory follows the number of digits written down, never the exponent:
/// 1e1000000000 is one digit. Making one of an integer or a double is O(1), a copy is
/// linear in the digits. All else is linear too, except that texts, products and different scales
/// take multiplications of long coefficients, which cost a little more.
///
/// Where the underlying big-number library gets no memory, it ends the process instead of throwing
/// std::bad_alloc. What it needs is a small multiple of the digits that the caller already holds.
class KO_API DecNumber {
public:
    /// Zero.
    DecNumber();
    explicit DecNumber(long long value);
    explicit DecNumber(unsigned long long value);
    /// Of every other integer type. Characters count as numbers.
    template<class Integer, class = std::enable_if_t<std::is_integral_v<Integer> &&
                                                     !std::is_same_v<Integer, bool>>>
    explicit DecNumber(Integer value) : DecNumber(widened(value)) {}
    /// Every finite double is an exact decimal and is read as such: 0.1 has 55 digits. Both zeros
    /// are the one zero. Throws RuntimeError for a NaN and for the infinities.
    explicit DecNumber(double value);
    /// Reads the whole of `text` as an optional sign '+' or '-', decimal digits with at most one
    /// '.' before, among or after them, and an optional exponent: 'e' or 'E', an optional sign,
    /// digits. That is every number of JSON, and leading zeros ("007"), a leading '+', "5." and
    /// ".5" besides. "-0" is zero. Zero may carry any exponent. Cost grows a little faster than the
    /// length; an exponent costs nothing. Throws RuntimeError, whose message shows the text (a long
    /// one shortened), for anything else, whitespace and embedded NULs included, and where the
    /// power of ten of the last digit written does not fit 64 bits.
    explicit DecNumber(const std::string& text);
    DecNumber(const DecNumber& other);
    DecNumber& operator=(const DecNumber& other);
    ~DecNumber();

    /// Negative, zero or positive as this number is below, equal to or above `other`; how they were
    /// written (1.0, 10e-1) makes no difference. Decided by the signs and the places of the leading
    /// digits where those differ, in constant time and memory. Only numbers of the same magnitude
    /// are brought to one scale, which takes memory for as many digits as the longer of them has.
    int compare(const DecNumber& other) const;

    /// Exact, with as many digits as that takes: 0.5 + 0.50 is 1.00, 1.5 * 2.0 is 3.00. Throw
    /// RuntimeError where the digits between the first and the last of a sum are more than
    /// k_largestSum, and where the power of ten of a product does not fit 64 bits.
    DecNumber operator+(const DecNumber& other) const;
    DecNumber operator-(const DecNumber& other) const;
    DecNumber operator*(const DecNumber& other) const;
    DecNumber operator-() const;

    static constexpr unsigned long k_largestSum = 10'000'000;

    /// What writeTo() writes.
    std::string toString() const;
    /// Writes a JSON number that reads back to an equal one, with every digit of the coefficient:
    /// "1.50" stays "1.50". The form is plain ("100", "-0.00001") where no zeros have to be filled
    /// in, and where the leading digit's power of ten is from -6 to 18. So the digits of an integer
    /// always come back as they are, except for leading zeros. Otherwise the form is d.ddde+NN or
    /// d.ddde-NN. Zero is "0". The formatting flags, width and locale of `out` have no effect.
    std::ostream& writeTo(std::ostream& out) const;

    /// The number as that type, the fraction cut off toward zero: -0.5 is 0 for an unsigned type
    /// too. Takes memory for the digits only, whatever the exponent. Throws RuntimeError, which
    /// shows the number (a long one shortened), when the number without its fraction is out of
    /// range.
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

    /// The nearest value of that type (in the default rounding mode the one with the even last bit
    /// where two are as near), which close to zero may be a denormal or zero. Throws RuntimeError,
    /// which shows the number (a long one shortened), when the nearest would be an infinity.
    explicit operator float() const;
    explicit operator double() const;

private:
    struct SImpl;

    template<class Integer>
    static auto widened(Integer value) {
        if constexpr (std::is_signed_v<Integer>) {
            return static_cast<long long>(value);
        } else {
            return static_cast<unsigned long long>(value);
        }
    }

    std::unique_ptr<SImpl> m_impl;
};

///@{
/// By DecNumber::compare().
inline bool operator==(const DecNumber& a, const DecNumber& b) { return a.compare(b) == 0; }
inline bool operator!=(const DecNumber& a, const DecNumber& b) { return a.compare(b) != 0; }
inline bool operator<(const DecNumber& a, const DecNumber& b) { return a.compare(b) < 0; }
inline bool operator>(const DecNumber& a, const DecNumber& b) { return a.compare(b) > 0; }
inline bool operator<=(const DecNumber& a, const DecNumber& b) { return a.compare(b) <= 0; }
inline bool operator>=(const DecNumber& a, const DecNumber& b) { return a.compare(b) >= 0; }
///@}

/// As DecNumber::writeTo().
inline std::ostream& operator<<(std::ostream& out, const DecNumber& number) {
    return number.writeTo(out);
}

}  // namespace ko
