// SPDX-License-Identifier: MIT
//
// ko::DecNumber on a GMP integer and a 64-bit exponent. The coefficient keeps the digits as they
// were written, trailing zeros included; no canonical form is needed, because compare() brings two
// numbers of the same magnitude to one scale.

#include <ko/DecNumber.h>

#include <ko/detail/DecimalParts.h>
#include <ko/Exception.h>

#include <gmp.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <ostream>
#include <string_view>
#include <utility>

namespace ko {

namespace {

/// A GMP integer that frees itself.
class BigInteger {
public:
    BigInteger() { mpz_init(m_value); }
    BigInteger(const BigInteger& other) { mpz_init_set(m_value, other.m_value); }
    BigInteger& operator=(const BigInteger&) = delete;
    ~BigInteger() { mpz_clear(m_value); }

    operator mpz_ptr() { return m_value; }
    operator mpz_srcptr() const { return m_value; }

private:
    mpz_t m_value;
};

/// Callers pass only powers that are bounded by a count of digits in memory, so that they fit the
/// 32-bit unsigned long of a 32-bit system.
void setPower(BigInteger& out, unsigned base, std::uint64_t power) {
    mpz_ui_pow_ui(out, base, static_cast<unsigned long>(power));
}

/// Not mpz_set_ui(): its unsigned long has 32 bits on a 32-bit system.
void setMagnitude(BigInteger& out, std::uint64_t value) {
    mpz_import(out, 1, -1, sizeof value, 0, 0, &value);
}

std::uint64_t magnitudeOf(std::int64_t value) {
    const auto bits = static_cast<std::uint64_t>(value);
    return value < 0 ? 0 - bits : bits;
}

/// mpz_sizeinbase() may return one digit too many.
std::size_t countDigits(const BigInteger& value) {
    const std::size_t digits = mpz_sizeinbase(value, 10);
    BigInteger least;
    setPower(least, 10, digits - 1);
    return digits > 1 && mpz_cmpabs(value, least) < 0 ? digits - 1 : digits;
}

std::string printable(std::string_view bytes) {
    constexpr char k_hex[] = "0123456789ABCDEF";
    std::string shown;
    for (const char byte : bytes) {
        const auto code = static_cast<unsigned char>(byte);
        if (code < 0x20 || code == 0x7F) {
            shown += {'\\', 'x', k_hex[code / 16], k_hex[code % 16]};
        } else {
            shown += byte;
        }
    }
    return shown;
}

std::string shortened(std::string_view text) {
    constexpr std::size_t k_maxShown = 60;
    if (text.length() <= k_maxShown) {
        return printable(text);
    }
    std::size_t end = k_maxShown;
    while (end > 0 && (static_cast<unsigned char>(text[end]) & 0xC0) == 0x80) {
        --end;  // between two UTF-8 characters, not inside one
    }
    return printable(text.substr(0, end)) + "... (" + std::to_string(text.length()) + " bytes)";
}

/// The digits without leading zeros; empty for zero.
std::string significantDigits(const DecimalParts& parts) {
    std::string digits;
    digits.reserve(parts.whole.length() + parts.fraction.length());
    digits.append(parts.whole).append(parts.fraction);
    digits.erase(0, std::min(digits.find_first_not_of('0'), digits.length()));
    return digits;
}

/// The largest value stands for everything above it: no fraction is long enough to bring that back
/// into the range of an exponent.
std::uint64_t saturatedValue(std::string_view digits) {
    constexpr std::uint64_t k_max = std::numeric_limits<std::uint64_t>::max();
    std::uint64_t value = 0;
    for (const char digit : digits) {
        if (value > (k_max - 9) / 10) {
            return k_max;
        }
        value = value * 10 + static_cast<std::uint64_t>(digit - '0');
    }
    return value;
}

/// The power of ten of the last digit: the exponent written, less the digits of the fraction. False
/// when it does not fit. Worked out on magnitudes, since the exponent alone may exceed 64 bits.
bool lastPower(const DecimalParts& parts, std::int64_t& out) {
    constexpr std::uint64_t k_max = std::numeric_limits<std::int64_t>::max();
    const std::uint64_t written = saturatedValue(parts.exponent);
    const std::uint64_t fraction = parts.fraction.length();
    if (!parts.isExponentNegative && written >= fraction) {
        out = static_cast<std::int64_t>(written - fraction);
        return written - fraction <= k_max;
    }
    if (parts.isExponentNegative && written > k_max + 1 - fraction) {
        return false;
    }
    const std::uint64_t below = parts.isExponentNegative ? written + fraction : fraction - written;
    out = static_cast<std::int64_t>(0 - below);
    return true;
}

/// A power of ten that may exceed 64 bits: the leading digit's is the last digit's and the length.
struct Power {
    bool isNegative;
    std::uint64_t magnitude;
};

/// coefficient * 10^exponent. `digits` is the exact length of the coefficient, kept because it is
/// expensive to find out afterwards. Zero has exponent 0.
struct Decimal {
    BigInteger coefficient;
    std::int64_t exponent = 0;
    std::uint64_t digits = 1;

    int sign() const { return mpz_sgn(static_cast<mpz_srcptr>(coefficient)); }
    Power leadingPower() const;
};

Power Decimal::leadingPower() const {
    const std::uint64_t above = digits - 1;
    const std::uint64_t last = magnitudeOf(exponent);
    if (exponent >= 0) {
        return {false, above + last};
    }
    return above >= last ? Power{false, above - last} : Power{true, last - above};
}

int compareMagnitudes(const Decimal& left, const Decimal& right) {
    if (left.exponent < right.exponent) {
        return -compareMagnitudes(right, left);
    }
    // The leading digits are compared by differences, which fit unsigned 64 bits where sums may
    // not.
    const std::uint64_t shift =
        static_cast<std::uint64_t>(left.exponent) - static_cast<std::uint64_t>(right.exponent);
    if (left.digits > right.digits) {
        return 1;
    }
    const std::uint64_t missing = right.digits - left.digits;
    if (shift != missing) {
        return shift < missing ? -1 : 1;
    }
    BigInteger scaled;
    setPower(scaled, 10, shift);
    mpz_mul(scaled, scaled, left.coefficient);
    return mpz_cmpabs(scaled, right.coefficient);
}

std::string digitsOf(const Decimal& number) {
    // Two characters more than the digits: mpz_get_str() writes a sign and a NUL.
    std::string text(static_cast<std::size_t>(number.digits) + 2, '\0');
    mpz_get_str(text.data(), 10, number.coefficient);
    text.resize(text.find('\0'));
    return text;
}

/// `digits` without a sign; filled up with zeros in front of or after them.
std::string plainForm(std::string digits, std::int64_t exponent) {
    const auto places = static_cast<std::size_t>(magnitudeOf(exponent));
    if (exponent >= 0) {
        return digits.append(places, '0');
    }
    if (places >= digits.length()) {
        digits.insert(0, places - digits.length() + 1, '0');
    }
    return digits.insert(digits.length() - places, 1, '.');
}

std::string exponentForm(std::string digits, const Power& leading) {
    if (digits.length() > 1) {
        digits.insert(1, 1, '.');
    }
    digits += leading.isNegative ? "e-" : "e+";
    return digits += std::to_string(leading.magnitude);
}

bool isPlain(std::int64_t exponent, const Power& leading) {
    constexpr std::uint64_t k_maxPlain = 18;
    constexpr std::uint64_t k_minPlain = 6;
    if (leading.isNegative) {
        return leading.magnitude <= k_minPlain;
    }
    return exponent <= 0 || leading.magnitude <= k_maxPlain;
}

std::string textOf(const Decimal& number) {
    std::string digits = digitsOf(number);
    std::string sign;
    if (number.sign() < 0) {
        sign = "-";
        digits.erase(0, 1);
    }
    const Power leading = number.leadingPower();
    return sign + (isPlain(number.exponent, leading) ? plainForm(std::move(digits), number.exponent)
                                                     : exponentForm(std::move(digits), leading));
}

/// What was computed: the digits of a coefficient are counted, zero gets its one form.
void settle(Decimal& number) {
    if (number.sign() == 0) {
        number.exponent = 0;
    }
    number.digits = countDigits(number.coefficient);
}

void add(const Decimal& left, const Decimal& right, Decimal& sum) {
    if (left.exponent < right.exponent) {
        add(right, left, sum);
        return;
    }
    // Zero has no digits that would have to be kept apart from the other's.
    if (left.sign() == 0 || right.sign() == 0) {
        const Decimal& other = left.sign() == 0 ? right : left;
        mpz_set(sum.coefficient, other.coefficient);
        sum.exponent = other.exponent;
        sum.digits = other.digits;
        return;
    }
    const std::uint64_t shift =
        static_cast<std::uint64_t>(left.exponent) - static_cast<std::uint64_t>(right.exponent);
    if (shift > DecNumber::k_largestSum) {
        throw RuntimeError("The sum of " + shortened(textOf(left)) + " and " +
                           shortened(textOf(right)) + " has too many digits.");
    }
    setPower(sum.coefficient, 10, shift);
    mpz_mul(sum.coefficient, sum.coefficient, left.coefficient);
    mpz_add(sum.coefficient, sum.coefficient, right.coefficient);
    sum.exponent = right.exponent;
    settle(sum);
}

void multiply(const Decimal& left, const Decimal& right, Decimal& product) {
    mpz_mul(product.coefficient, left.coefficient, right.coefficient);
    const bool isZero = product.sign() == 0;
    if (!isZero && __builtin_add_overflow(left.exponent, right.exponent, &product.exponent)) {
        throw RuntimeError("The product of " + shortened(textOf(left)) + " and " +
                           shortened(textOf(right)) + " has an exponent beyond 64 bits.");
    }
    settle(product);
}

[[noreturn]] void throwOutOfRange(const Decimal& number, const char* typeName) {
    throw RuntimeError("The number " + shortened(textOf(number)) + " is out of the range of " +
                       typeName + ".");
}

/// The magnitude without its fraction. False when it does not fit.
bool truncatedMagnitude(const Decimal& number, std::uint64_t& out) {
    constexpr int k_maxPower = std::numeric_limits<std::uint64_t>::digits10;
    const Power leading = number.leadingPower();
    out = 0;
    if (leading.isNegative) {
        return true;
    }
    if (leading.magnitude > k_maxPower) {
        return false;
    }
    BigInteger whole;
    setPower(whole, 10, magnitudeOf(number.exponent));
    if (number.exponent >= 0) {
        mpz_mul(whole, number.coefficient, whole);
    } else {
        mpz_tdiv_q(whole, number.coefficient, whole);
    }
    if (mpz_sizeinbase(whole, 2) > std::numeric_limits<std::uint64_t>::digits) {
        return false;
    }
    mpz_export(&out, nullptr, -1, sizeof out, 0, 0, whole);
    return true;
}

template<class Integer>
Integer toInteger(const Decimal& number, const char* typeName) {
    constexpr std::uint64_t k_max = std::numeric_limits<Integer>::max();
    constexpr std::uint64_t k_below = std::numeric_limits<Integer>::is_signed ? k_max + 1 : 0;
    const bool isNegative = number.sign() < 0;
    std::uint64_t magnitude = 0;
    if (!truncatedMagnitude(number, magnitude) || magnitude > (isNegative ? k_below : k_max)) {
        throwOutOfRange(number, typeName);
    }
    return static_cast<Integer>(isNegative ? 0 - magnitude : magnitude);
}

/// Not std::from_chars(): it may round twice where the floating unit calculates with more bits. The
/// C functions round once, and without a decimal point in the text the locale has no say.
template<class Float>
Float toFloat(const Decimal& number, Float (*read)(const char*, char**), const char* typeName) {
    const std::string text = digitsOf(number) + 'e' + std::to_string(number.exponent);
    const Float value = read(text.c_str(), nullptr);
    if (std::isinf(value)) {
        throwOutOfRange(number, typeName);
    }
    return value;
}

}  // namespace

struct DecNumber::SImpl : Decimal {};

DecNumber::DecNumber(long long value) : m_impl(std::make_unique<SImpl>()) {
    setMagnitude(m_impl->coefficient, magnitudeOf(value));
    m_impl->digits = countDigits(m_impl->coefficient);
    if (value < 0) {
        mpz_neg(m_impl->coefficient, m_impl->coefficient);
    }
}

DecNumber::DecNumber(unsigned long long value) : m_impl(std::make_unique<SImpl>()) {
    setMagnitude(m_impl->coefficient, value);
    m_impl->digits = countDigits(m_impl->coefficient);
}

DecNumber::DecNumber(double value) : m_impl(std::make_unique<SImpl>()) {
    if (!std::isfinite(value)) {
        throw RuntimeError("Not a finite number: " + std::to_string(value));
    }
    if (value == 0) {
        return;
    }
    // value = coefficient * 2^power, with an odd coefficient where there is a fraction to write:
    // then coefficient * 5^k * 10^-k has no trailing zeros.
    int power = 0;
    BigInteger& coefficient = m_impl->coefficient;
    mpz_set_d(coefficient, std::ldexp(std::frexp(value, &power), 53));
    power -= 53;
    const auto zeros = static_cast<int>(mpz_scan1(coefficient, 0));
    mpz_tdiv_q_2exp(coefficient, coefficient, static_cast<mp_bitcnt_t>(zeros));
    power += zeros;
    if (power >= 0) {
        mpz_mul_2exp(coefficient, coefficient, static_cast<mp_bitcnt_t>(power));
    } else {
        BigInteger factor;
        setPower(factor, 5, static_cast<std::uint64_t>(-power));
        mpz_mul(coefficient, coefficient, factor);
        m_impl->exponent = power;
    }
    m_impl->digits = countDigits(coefficient);
}

DecNumber::DecNumber(const std::string& text) : m_impl(std::make_unique<SImpl>()) {
    DecimalParts parts;
    if (!parts.read(text)) {
        throw RuntimeError("Not a decimal number: \"" + shortened(text) + "\"");
    }
    const std::string digits = significantDigits(parts);
    if (digits.empty()) {
        return;
    }
    if (!lastPower(parts, m_impl->exponent)) {
        throw RuntimeError("The exponent does not fit 64 bits: \"" + shortened(text) + "\"");
    }
    mpz_set_str(m_impl->coefficient, digits.c_str(), 10);
    if (parts.isNegative) {
        mpz_neg(m_impl->coefficient, m_impl->coefficient);
    }
    m_impl->digits = digits.length();
}

DecNumber::DecNumber(const DecNumber& other) : m_impl(std::make_unique<SImpl>(*other.m_impl)) {}

DecNumber& DecNumber::operator=(const DecNumber& other) {
    m_impl = std::make_unique<SImpl>(*other.m_impl);
    return *this;
}

DecNumber::~DecNumber() = default;

int DecNumber::compare(const DecNumber& other) const {
    const int sign = m_impl->sign();
    if (sign != other.m_impl->sign()) {
        return sign < other.m_impl->sign() ? -1 : 1;
    }
    return sign == 0 ? 0 : sign * compareMagnitudes(*m_impl, *other.m_impl);
}

DecNumber::DecNumber() : m_impl(std::make_unique<SImpl>()) {}

DecNumber DecNumber::operator+(const DecNumber& other) const {
    DecNumber sum;
    add(*m_impl, *other.m_impl, *sum.m_impl);
    return sum;
}

DecNumber DecNumber::operator-(const DecNumber& other) const { return *this + -other; }

DecNumber DecNumber::operator*(const DecNumber& other) const {
    DecNumber product;
    multiply(*m_impl, *other.m_impl, *product.m_impl);
    return product;
}

DecNumber DecNumber::operator-() const {
    DecNumber negated(*this);
    BigInteger& coefficient = negated.m_impl->coefficient;
    mpz_neg(coefficient, coefficient);
    return negated;
}

std::string DecNumber::toString() const { return textOf(*m_impl); }

std::ostream& DecNumber::writeTo(std::ostream& out) const {
    const std::string text = textOf(*m_impl);
    return out.write(text.data(), static_cast<std::streamsize>(text.length()));
}

DecNumber::operator char() const { return toInteger<char>(*m_impl, "char"); }

DecNumber::operator unsigned char() const {
    return toInteger<unsigned char>(*m_impl, "unsigned char");
}

DecNumber::operator short() const { return toInteger<short>(*m_impl, "short"); }

DecNumber::operator unsigned short() const {
    return toInteger<unsigned short>(*m_impl, "unsigned short");
}

DecNumber::operator int() const { return toInteger<int>(*m_impl, "int"); }

DecNumber::operator unsigned int() const {
    return toInteger<unsigned int>(*m_impl, "unsigned int");
}

DecNumber::operator long() const { return toInteger<long>(*m_impl, "long"); }

DecNumber::operator unsigned long() const {
    return toInteger<unsigned long>(*m_impl, "unsigned long");
}

DecNumber::operator long long() const { return toInteger<long long>(*m_impl, "long long"); }

DecNumber::operator unsigned long long() const {
    return toInteger<unsigned long long>(*m_impl, "unsigned long long");
}

DecNumber::operator float() const { return toFloat<float>(*m_impl, std::strtof, "float"); }

DecNumber::operator double() const { return toFloat<double>(*m_impl, std::strtod, "double"); }

}  // namespace ko
