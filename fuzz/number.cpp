// SPDX-License-Identifier: MIT
//
// Numbers from text and from every binary type: the kind and value that a text is given, which
// long texts are refused, all typed reads, and comparison, which is antisymmetric, transitive and
// that of the exact decimals wherever the rules of docs/values.md do not say otherwise.

#include <ko/DecNumber.h>
#include <ko/Orvid.h>

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <string>
#include <vector>

#include "Input.h"
#include "require.h"

namespace {

using ko::DecNumber;
using ko::Orvid::Number;
using ko::Orvid::ValueOutOfRange;
using orvid_fuzz::Input;
using orvid_fuzz::require;
using orvid_fuzz::throws;

using RefusedText = ValueOutOfRange<std::string, std::string>;

int signOf(int order) { return (order > 0) - (order < 0); }

bool isDigits(const std::string& text) {
    return !text.empty() && text.find_first_not_of("0123456789") == std::string::npos;
}

/// Whether the text is an integer as JSON has them, with leading zeros allowed.
bool isInteger(const std::string& text) { return isDigits(text[0] == '-' ? text.substr(1) : text); }

Number::EBinaryType kindOf(const std::string& text) {
    return text.find_first_of(".eE") != std::string::npos ? Number::ebDouble
           : text[0] == '-'                               ? Number::ebLongLong
                                                          : Number::ebULongLong;
}

/// Whether the text is beyond its kind by the comparison of texts.
bool isRefused(const std::string& text) {
    switch (kindOf(text)) {
        case Number::ebDouble:
            return std::isinf(std::strtod(text.c_str(), nullptr));
        case Number::ebULongLong:
            return text.size() >= 20 && text != "18446744073709551615";
        default:
            return text.size() >= 19 && text < "-9223372036854775808";
    }
}

/// The double that an integer number is compared as beside a double.
double roundedOf(const Number& number) {
    return static_cast<double>(static_cast<unsigned long long>(number.toDecNumber()));
}

bool isFinite(const Number& number) {
    return number.type() != Number::ebDouble ||
           !throws<ko::RuntimeError>([&] { (void)number.toDecNumber(); });
}

/// Whether the comparison of the two is that of their exact values.
bool comparesExactly(const Number& a, const Number& b) {
    if (!isFinite(a) || !isFinite(b)) {
        return false;
    }
    const bool mixesSigns =
        a.type() != b.type() && a.type() != Number::ebDouble && b.type() != Number::ebDouble;
    if (mixesSigns) {
        const Number& isSigned = a.type() == Number::ebLongLong ? a : b;
        return isSigned.toDecNumber().compare(DecNumber(0LL)) != 0;
    }
    const auto isRounded = [&](const Number& number) {
        return number.type() == Number::ebULongLong && a.type() != b.type() &&
               number.toDecNumber().compare(DecNumber(roundedOf(number))) != 0;
    };
    return !isRounded(a) && !isRounded(b);
}

void checkPair(const Number& a, const Number& b) {
    const int order = signOf(a.compare(b));
    require(order == -signOf(b.compare(a)), "comparison is antisymmetric");
    if (comparesExactly(a, b)) {
        require(order == signOf(a.toDecNumber().compare(b.toDecNumber())),
                "comparison is that of the exact values");
    }
}

void checkTransitivity(const Number& a, const Number& b, const Number& c) {
    const bool isExact = comparesExactly(a, b) && comparesExactly(b, c) && comparesExactly(a, c);
    if (isExact && a.compare(b) <= 0 && b.compare(c) <= 0) {
        require(a.compare(c) <= 0, "comparison is transitive");
    }
}

/// Reads as T; the value is checked where the exact number says it.
template<class T>
void checkRead(const Number& number) {
    T value = 1;
    const bool isOut = throws<ValueOutOfRange<Number, T>>([&] { number.getValue(value); });
    require(!isOut || value == 1, "a refused read changes nothing");
    const Number low(std::numeric_limits<T>::min());
    const Number high(std::numeric_limits<T>::max());
    if (!comparesExactly(number, low) || !comparesExactly(number, high)) {
        return;
    }
    const DecNumber exact = number.toDecNumber();
    const bool isIn =
        exact.compare(low.toDecNumber()) >= 0 && exact.compare(high.toDecNumber()) <= 0;
    require(isIn != isOut, "what is within the limits is read");
    require(!isIn || value == static_cast<T>(exact), "a read gives the nearest value toward zero");
}

/// Only a double can be rounded twice on its way to a float.
void checkReadFloat(const Number& number) {
    float value = 1;
    const bool isOut = throws<ValueOutOfRange<Number, float>>([&] { number.getValue(value); });
    require(isOut || std::isnan(value) || (value > 0 && !std::isinf(value)),
            "a float is read within its limits");
}

void checkReads(const Number& number) {
    checkRead<char>(number);
    checkRead<unsigned char>(number);
    checkRead<short>(number);
    checkRead<unsigned short>(number);
    checkRead<int>(number);
    checkRead<unsigned int>(number);
    checkRead<long>(number);
    checkRead<unsigned long>(number);
    checkRead<long long>(number);
    checkRead<unsigned long long>(number);
    checkRead<double>(number);
    checkReadFloat(number);
}

/// The first request for the kind throws for a refused text, and no later one does.
void checkText(const Number& number, const std::string& text) {
    require(number.toString() == text, "a text is kept");
    require(isRefused(text) == throws<RefusedText>([&] { (void)number.type(); }),
            "a text is refused by its length and letters");
    require(number.type() == kindOf(text), "the kind is that of the text");
    if (isRefused(text)) {
        return;
    }
    if (kindOf(text) == Number::ebDouble) {
        const double value = std::strtod(text.c_str(), nullptr);
        require(std::isnan(value) || number.compare(Number(value)) == 0,
                "a text with a point or an exponent is the nearest double");
    } else if (isInteger(text)) {
        // strtoll stops at the limits, as the number does.
        const Number expected = text[0] == '-' ? Number(std::strtoll(text.c_str(), nullptr, 10))
                                               : Number(std::strtoull(text.c_str(), nullptr, 10));
        require(number.compare(expected) == 0, "an integer text is its value");
    }
}

Number makeBinary(const Number& number, const std::string& text, Number::EBinaryType kind) {
    require(number.toString() == text, "the text is that of a stream");
    require(number.type() == kind, "the kind is that of the type");
    return number;
}

Number makeInteger(Input& input, bool isSigned) {
    if (isSigned) {
        const auto value = input.value<long long>();
        return makeBinary(value, std::to_string(value), Number::ebLongLong);
    }
    const auto value = input.value<unsigned long long>();
    return makeBinary(value, std::to_string(value), Number::ebULongLong);
}

Number makeReal(double value) {
    if (std::isnan(value)) {
        return {value};
    }
    char text[40];
    (void)std::snprintf(text, sizeof text, "%g", value);
    return makeBinary(value, text, Number::ebDouble);
}

Number makeText(const std::string& text) {
    if (text.empty()) {
        return {};
    }
    Number number(text);
    checkText(number, text);
    return number;
}

Number makeNumber(Input& input) {
    switch (input.below(5)) {
        case 0:
            return makeInteger(input, true);
        case 1:
            return makeInteger(input, false);
        case 2:
            return makeReal(input.value<double>());
        default:
            return makeText(input.textUntil(' '));
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    Input input(bytes, size);
    const std::vector<Number> numbers{makeNumber(input), makeNumber(input), makeNumber(input)};
    for (const Number& a : numbers) {
        checkReads(a);
        for (const Number& b : numbers) {
            checkPair(a, b);
            for (const Number& c : numbers) {
                checkTransitivity(a, b, c);
            }
        }
    }
    return 0;
}
