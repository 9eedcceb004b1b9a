// SPDX-License-Identifier: MIT
//
// A number's two sides: setting either, and computing the other one on demand. How they are held is
// in NumberStore.cpp, comparison in NumberCompare.cpp, typed reading in NumberAccess.cpp.

#include <ko/Orvid/Number.h>

#include <ko/convert.h>
#include <ko/DecNumber.h>
#include <ko/Exception.h>

#include <algorithm>
#include <cmath>
#include <ostream>
#include <sstream>
#include <utility>

#include "core/EnumNames.h"
#include "core/TextStream.h"
#include "number/NumberBinary.h"
#include "number/NumberReading.h"
#include "number/SmallInteger.h"

namespace ko::Orvid {

namespace {

using Binary = NumberStore::Binary;

/// A text that is no plain integer is converted as a stream extracts it. Plain integers are read
/// without a stream, which is what makes typed reads cheap.
template<class T>
Binary readInteger(std::string_view text, T before) {
    T value = before;
    const bool isWhole = readWhole(text, value);
    if (!isWhole) {
        std::istringstream stream{std::string(text)};
        stream >> value;
    }
    Binary binary = binaryOf(value);
    binary.isWhole = isWhole;
    return binary;
}

/// The byte-wise comparison with both limits that long texts have to pass.
bool isBeyond(std::string_view text, const std::string& min, const std::string& max) {
    return text.compare(max) > 0 || text.compare(min) < 0;
}

bool isRefusedInteger(std::string_view text, Number::EBinaryType kind) {
    constexpr std::size_t checkedUnsigned = 20;  // the largest value has twenty digits
    constexpr std::size_t checkedSigned = 19;    // one less than the smallest value's text
    const Number::Limits& limits = Number::k_limits;
    return kind == Number::ebULongLong
               ? text.length() >= checkedUnsigned && isBeyond(text, limits.ullMin, limits.ullMax)
               : text.length() >= checkedSigned && isBeyond(text, limits.llMin, limits.llMax);
}

Number::EBinaryType kindOf(std::string_view text) {
    static constexpr std::string_view k_marks = ".eE";
    const auto isOfReal = [](char c) {
        return c == k_marks[0] || c == k_marks[1] || c == k_marks[2];
    };
    if (std::any_of(text.begin(), text.end(), isOfReal)) {
        return Number::ebDouble;
    }
    return !text.empty() && text.front() == '-' ? Number::ebLongLong : Number::ebULongLong;
}

}  // namespace

const Number::Limits Number::k_limits = {};

Number::Number() : m_store("0", {0, ebLongLong, true}) {}

Number::Number(const std::string& text) : m_store(text) {}

Number::Number(const char* text) : m_store(std::string_view(text)) {}

Number::Number(const char* text, unsigned int length) : m_store(std::string_view(text, length)) {}

Number::Number(const std::wstring& text) : m_store(convert(text)) {}

Number::Number(const wchar_t* text) : Number(std::wstring(text)) {}

Number::Number(const wchar_t* text, unsigned int length) : Number(std::wstring(text, length)) {}

Number::Number(Number&& other) noexcept : m_store(std::move(other.m_store)) { other.set(0); }

Number::Number(const DecNumber& value) : Number() { set(value); }

template<class Real>
Number Number::exact(Real value) {
    Number number;
    const auto real = static_cast<double>(value);
    if (!std::isfinite(value)) {
        number.set(real);
        return number;
    }
    char text[k_shortestSize];
    const std::string_view view(text, writeShortest(text, value));
    Binary binary = std::isfinite(real) ? binaryOf(real) : Binary();
    binary.isWhole = std::is_same_v<Real, double>;
    number.m_store.assign(view, binary);
    return number;
}

template Number Number::exact(float);
template Number Number::exact(double);
template Number Number::exact(long double);

Number& Number::operator=(const Number& other) {
    set(other);
    return *this;
}

Number& Number::operator=(Number&& other) noexcept {
    if (this != &other) {
        m_store.take(other.m_store);
        other.set(0);
    }
    return *this;
}

void Number::set(const std::string& text) { setText(text); }

void Number::set(const char* text) { setText(text); }

void Number::set(const char* text, unsigned int length) { setText({text, length}); }

void Number::setText(std::string_view text) {
    m_store.assign(text, {m_store.binary().bits, ebNone, false});
}

void Number::set(const std::wstring& text) { set(convert(text)); }

void Number::set(const wchar_t* text) { set(convert(text)); }

void Number::set(const wchar_t* text, unsigned int length) {
    set(convert(std::wstring(text, length)));
}

void Number::set(char value) { set(static_cast<long long>(value)); }

void Number::set(short value) { set(static_cast<long long>(value)); }

void Number::set(int value) { set(static_cast<long long>(value)); }

void Number::set(long value) { set(static_cast<long long>(value)); }

void Number::set(long long value) { m_store.assign(binaryOf(value)); }

void Number::set(unsigned char value) { set(static_cast<unsigned long long>(value)); }

void Number::set(unsigned short value) { set(static_cast<unsigned long long>(value)); }

void Number::set(unsigned int value) { set(static_cast<unsigned long long>(value)); }

void Number::set(unsigned long value) { set(static_cast<unsigned long long>(value)); }

void Number::set(unsigned long long value) { m_store.assign(binaryOf(value)); }

void Number::set(float value) { set(static_cast<double>(value)); }

void Number::set(double value) { m_store.assign(binaryOf(value)); }

void Number::set(const Number& other) {
    if (this == &other) {
        return;
    }
    if (!other.m_store.hasGivenText()) {
        m_store.assign(other.m_store.binary());
    } else if (other.m_store.hasHeapText() && other.toString() != other.m_store.givenText()) {
        m_store.assignDerived(other.m_store.givenText(), other.m_store.binary());
    } else {
        m_store.assign(other.m_store.givenText(), other.m_store.binary());
    }
}

void Number::set(const DecNumber& value) {
    TextStream text;
    value.writeTo(text);
    set(text.str());
}

Number::EBinaryType Number::type() const { return static_cast<EBinaryType>(binary().kind); }

const std::string& Number::toString() const { return m_store.string(); }

std::string_view Number::textView() const {
    NumberBuffer buffer;
    const std::string_view text = textIn(buffer);
    return text.data() == buffer.data() ? std::string_view(toString()) : text;
}

std::wstring Number::toWString() const { return wconvert(toString()); }

std::ostream& Number::writeAt(std::ostream& out) const { return out << textView(); }

std::wostream& Number::writeAt(std::wostream& out) const { return out << toWString(); }

DecNumber Number::toDecNumber() const {
    const Binary value = binary();
    switch (value.kind) {
        case ebLongLong:
            return DecNumber(signedOf(value));
        case ebULongLong:
            return DecNumber(unsignedOf(value));
        case ebDouble:
            return DecNumber(realOf(value));
        case ebBigDecimal:
            return DecNumber(std::string(m_store.givenText()));
        default:
            throw RuntimeError("Unknown type, implementation missing");
    }
}

void Number::syncToBinary() const {
    const Binary held = m_store.binary();
    if (m_store.hasGivenText() || held.kind == ebNone) {
        convertedText(held);
    }
}

void Number::syncToString() const {
    if (m_store.hasGivenText() && m_store.binary().kind == ebNone) {
        // For some long texts there is no room to keep the binary value, so it is not known whether
        // there was one: it counts as converted.
        const Number probe(*this);
        Binary value = probe.m_store.binary();
        const bool isConverted = probe.convertGivenText(value) == Refusal::none;
        if (isConverted && probe.m_store.binary().kind == ebNone) {
            return m_store.derive(value);
        }
    }
    m_store.derive();
}

/// Replaces the former bits in `value`, and keeps the result. A text beyond its kind has only the
/// kind, and that is not kept.
Number::Refusal Number::convertGivenText(Binary& value) const {
    const std::string_view text = m_store.givenText();
    SmallInteger small;
    if (!small.read(text)) {
        return convertOtherText(text, value);
    }
    value = small.isNegative ? binaryOf(small.value()) : binaryOf(small.magnitude);
    value.isWhole = true;
    m_store.keep(value);
    return Refusal::none;
}

Number::Refusal Number::convertOtherText(std::string_view text, Binary& value) const {
    const EBinaryType kind = kindOf(text);
    if (kind == ebDouble) {
        bool isWhole = false;
        const double real = readReal<double>(text, isWhole);
        if (std::isinf(real)) {
            value.kind = ebDouble;
            return Refusal::real;
        }
        value = binaryOf(real);
        value.isWhole = isWhole;
    } else if (isRefusedInteger(text, kind)) {
        value.kind = static_cast<unsigned char>(kind);
        return Refusal::integer;
    } else {
        value = kind == ebLongLong ? readInteger(text, signedOf(value))
                                   : readInteger(text, unsignedOf(value));
    }
    m_store.keep(value);
    return Refusal::none;
}

/// `value` is what the store holds.
Number::Binary Number::convertedText(Binary value) const {
    value.isWhole = false;
    const Refusal refusal = convertGivenText(value);
    if (refusal != Refusal::none) {
        // The kind is kept before the exception: a text that is out of range is reported once.
        m_store.keep(value);
        const bool isReal = refusal == Refusal::real;
        throw ValueOutOfRange<std::string, std::string>(std::string(m_store.givenText()),
                                                        isReal ? k_limits.dblMin : k_limits.llMin,
                                                        isReal ? k_limits.dblMax : k_limits.llMax);
    }
    return value;
}

namespace {

constexpr NamedEnum k_names[] = {ORVID_ENUM_NAME("ebNone"), ORVID_ENUM_NAME("ebLongLong"),
                                 ORVID_ENUM_NAME("ebULongLong"), ORVID_ENUM_NAME("ebDouble"),
                                 ORVID_ENUM_NAME("ebBigDecimal")};
constexpr NamedEnum k_unknown = ORVID_ENUM_NAME(">>Unknown<<");

template<class Stream>
Stream& print(Stream& out, Number::EBinaryType type) {
    const NamedEnum* const name = nameAt(k_names, type);
    out << (name == nullptr ? k_unknown : *name);
    return out;
}

}  // namespace

}  // namespace ko::Orvid

std::ostream& operator<<(std::ostream& out, const ko::Orvid::Number::EBinaryType& type) {
    return ko::Orvid::print(out, type);
}

std::wostream& operator<<(std::wostream& out, const ko::Orvid::Number::EBinaryType& type) {
    return ko::Orvid::print(out, type);
}
