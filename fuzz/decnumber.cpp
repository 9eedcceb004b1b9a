// SPDX-License-Identifier: MIT
//
// Exact decimals against an independent reading of the same texts with big integers: what is
// accepted, how two compare, what each reads as every type, and what is written.

#include <gmpxx.h>
#include <ko/DecNumber.h>
#include <ko/Exception.h>

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <optional>
#include <sstream>
#include <string>

#include "Input.h"
#include "require.h"

namespace {

using ko::DecNumber;
using ko::RuntimeError;
using orvid_fuzz::require;
using orvid_fuzz::throws;

/// digits times ten to the exponent; the digits carry the sign.
struct Decimal {
    mpz_class digits;
    mpz_class exponent;

    /// How many digits there are before the point; zero or less for a number below 1.
    mpz_class places() const {
        const mpz_class size = mpz_class(abs(digits)).get_str().size();
        return size + exponent;
    }
};

std::size_t digitsAt(const std::string& text, std::size_t position) {
    const std::size_t end = text.find_first_not_of("0123456789", position);
    return (end == std::string::npos ? text.size() : end) - position;
}

bool isOneOf(const char* characters, const std::string& text, std::size_t position) {
    return position < text.size() && text[position] != '\0' &&
           std::string(characters).find(text[position]) != std::string::npos;
}

/// The exponent of a text whose `e` would stand at `position`; nothing for a malformed one.
std::optional<mpz_class> exponentAt(const std::string& text, std::size_t position) {
    if (position == text.size()) {
        return mpz_class(0);
    }
    if (!isOneOf("eE", text, position++)) {
        return std::nullopt;
    }
    const bool isNegative = isOneOf("-", text, position);
    position += isOneOf("+-", text, position) ? 1U : 0U;
    const std::size_t length = digitsAt(text, position);
    if (length == 0 || position + length != text.size()) {
        return std::nullopt;
    }
    const mpz_class exponent(text.substr(position), 10);
    return isNegative ? mpz_class(-exponent) : exponent;
}

mpz_class limitOf(long long value) { return mpz_class(std::to_string(value), 10); }

std::optional<Decimal> read(const std::string& text) {
    std::size_t position = isOneOf("+-", text, 0) ? 1 : 0;
    const std::size_t whole = digitsAt(text, position);
    std::string digits = text.substr(position, whole);
    position += whole;
    std::size_t fraction = 0;
    if (isOneOf(".", text, position)) {
        fraction = digitsAt(text, ++position);
        digits += text.substr(position, fraction);
        position += fraction;
    }
    const std::optional<mpz_class> exponent = exponentAt(text, position);
    if (digits.empty() || !exponent) {
        return std::nullopt;
    }
    Decimal result{mpz_class(digits, 10), *exponent - mpz_class(fraction)};
    if (text[0] == '-') {
        result.digits = -result.digits;
    }
    const bool fits = result.exponent >= limitOf(std::numeric_limits<long long>::min()) &&
                      result.exponent <= limitOf(std::numeric_limits<long long>::max());
    if (result.digits != 0 && !fits) {
        return std::nullopt;
    }
    return result;
}

mpz_class powerOfTen(const mpz_class& exponent) {
    mpz_class result;
    mpz_ui_pow_ui(result.get_mpz_t(), 10, exponent.get_ui());
    return result;
}

int compare(const Decimal& a, const Decimal& b) {
    if (sgn(a.digits) != sgn(b.digits) || sgn(a.digits) == 0) {
        return sgn(a.digits) - sgn(b.digits);
    }
    const mpz_class magnitude = a.places() - b.places();
    if (magnitude != 0) {
        return sgn(magnitude) * sgn(a.digits);
    }
    const mpz_class shift = a.exponent - b.exponent;
    return shift >= 0 ? cmp(a.digits * powerOfTen(shift), b.digits)
                      : cmp(a.digits, b.digits * powerOfTen(-shift));
}

int signOf(int order) { return (order > 0) - (order < 0); }

/// The number without its fraction; nothing where it is far beyond every type.
std::optional<mpz_class> truncated(const Decimal& number) {
    const mpz_class places = number.places();
    if (number.digits == 0 || places <= 0) {
        return mpz_class(0);
    }
    if (places > 40) {
        return std::nullopt;
    }
    return number.exponent >= 0 ? mpz_class(number.digits * powerOfTen(number.exponent))
                                : mpz_class(number.digits / powerOfTen(-number.exponent));
}

template<class T>
void checkInteger(const DecNumber& number, const std::optional<mpz_class>& expected) {
    const bool fits = expected &&
                      *expected >= mpz_class(std::to_string(std::numeric_limits<T>::min()), 10) &&
                      *expected <= mpz_class(std::to_string(std::numeric_limits<T>::max()), 10);
    T value{};
    const bool isRefused = throws<RuntimeError>([&] { value = static_cast<T>(number); });
    require(fits != isRefused, "an integer is read when it fits");
    require(!fits || mpz_class(std::to_string(value), 10) == *expected,
            "an integer is read with its fraction cut off");
}

template<class T>
void checkReal(const DecNumber& number, T expected) {
    T value{};
    const bool isRefused = throws<RuntimeError>([&] { value = static_cast<T>(number); });
    require(isRefused == std::isinf(expected), "a number beyond the largest real is refused");
    require(isRefused || value == expected, "the nearest real is read");
}

void checkText(const DecNumber& number, const Decimal& expected) {
    std::ostringstream out;
    out.setf(std::ios_base::hex | std::ios_base::showpos);
    out.width(50);
    number.writeTo(out);
    const std::optional<Decimal> written = read(out.str());
    require(written && compare(*written, expected) == 0, "what is written is the number");
    require(DecNumber(out.str()).compare(number) == 0, "what is written reads back");
}

void check(const std::string& text, const DecNumber& number, const Decimal& expected) {
    checkText(number, expected);
    const std::optional<mpz_class> whole = truncated(expected);
    checkInteger<char>(number, whole);
    checkInteger<unsigned char>(number, whole);
    checkInteger<short>(number, whole);
    checkInteger<unsigned short>(number, whole);
    checkInteger<int>(number, whole);
    checkInteger<unsigned int>(number, whole);
    checkInteger<long>(number, whole);
    checkInteger<unsigned long>(number, whole);
    checkInteger<long long>(number, whole);
    checkInteger<unsigned long long>(number, whole);
    checkReal<float>(number, std::strtof(text.c_str(), nullptr));
    checkReal<double>(number, std::strtod(text.c_str(), nullptr));
}

void checkDouble(double value) {
    if (!std::isfinite(value)) {
        require(throws<RuntimeError>([&] { DecNumber number(value); }), "no decimal is infinite");
        return;
    }
    const DecNumber number(value);
    require(static_cast<double>(number) == value, "a double is exact as a decimal");
    std::ostringstream out;
    number.writeTo(out);
    const std::optional<Decimal> written = read(out.str());
    require(written.has_value(), "the decimal of a double is one");
    mpq_class exact(written->digits);
    const mpz_class power = powerOfTen(abs(written->exponent));
    exact = written->exponent >= 0 ? mpq_class(exact * power) : mpq_class(exact / power);
    require(exact == mpq_class(value), "the decimal of a double has all its digits");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    orvid_fuzz::Input input(bytes, size);
    checkDouble(input.value<double>());
    const std::string texts[] = {input.textUntil(' '), input.rest()};
    std::optional<Decimal> expected[2];
    for (int i = 0; i < 2; ++i) {
        expected[i] = read(texts[i]);
        const bool isRefused = throws<RuntimeError>([&] { DecNumber number(texts[i]); });
        require(isRefused != expected[i].has_value(), "a text is read when it is a decimal");
        if (expected[i]) {
            check(texts[i], DecNumber(texts[i]), *expected[i]);
        }
    }
    if (expected[0] && expected[1]) {
        DecNumber a(texts[0]);
        const DecNumber b(texts[1]);
        const int order = compare(*expected[0], *expected[1]);
        require(signOf(a.compare(b)) == signOf(order), "decimals compare as their values");
        require(signOf(b.compare(a)) == -signOf(order), "both ways round");
        a = b;
        require(a.compare(DecNumber(b)) == 0, "copies are equal");
    }
    return 0;
}
