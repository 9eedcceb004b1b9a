// SPDX-License-Identifier: MIT
//
// A number's two representations: setting either, and computing the other one on demand. Comparison
// is in NumberCompare.cpp, typed reading in NumberAccess.cpp.

#include <ko/Orvid/Number.h>

#include <ko/convert.h>
#include <ko/DecNumber.h>
#include <ko/Exception.h>

#include <cfloat>
#include <charconv>
#include <clocale>
#include <cstdlib>
#include <limits>
#include <sstream>
#include <utility>

#include "core/EnumNames.h"
#include "core/TextStream.h"

namespace ko::Orvid {

namespace {

/// Long enough for any 64-bit integer and for a double with six significant digits.
constexpr int k_textSize = 32;
/// What a stream prints of a double by default.
constexpr int k_significantDigits = 6;

template<class T>
std::string integerText(T value) {
    char text[k_textSize];
    return {text, std::to_chars(text, text + k_textSize, value).ptr};
}

std::string realText(double value) {
    char text[k_textSize];
    const auto end = std::to_chars(text, text + k_textSize, value, std::chars_format::general,
                                   k_significantDigits);
    return {text, end.ptr};
}

Number::Limits makeLimits() {
    using SignedLimits = std::numeric_limits<long long>;
    using UnsignedLimits = std::numeric_limits<unsigned long long>;
    using RealLimits = std::numeric_limits<double>;
    return {integerText(SignedLimits::max()),   integerText(SignedLimits::min()),
            integerText(UnsignedLimits::max()), integerText(UnsignedLimits::max()),
            realText(RealLimits::min()),        realText(RealLimits::max())};
}

/// Reads all of `text` into `value`; answers false, leaving `value` alone, for anything odd: text
/// around the digits, a value out of range.
template<class T>
bool readWhole(std::string_view text, T& value) {
    const char* const end = text.data() + text.size();
    T result{};
    const auto read = std::from_chars(text.data(), end, result);
    if (read.ec != std::errc() || read.ptr != end) {
        return false;
    }
    value = result;
    return true;
}

/// The formatted extraction of a stream decides what becomes of the texts that are no plain
/// integer; the plain ones are read without a stream, which is what makes typed reads cheap.
template<class T>
void readInteger(std::string_view text, T& value) {
    if (!readWhole(text, value)) {
        std::istringstream stream{std::string(text)};
        stream >> value;
    }
}

/// What strtod reads in the locale "C", which newlocale() neither allocates nor loads.
double readInC(const char* text) {
    const locale_t plain = newlocale(LC_ALL_MASK, "C", nullptr);
    const double value = strtod_l(text, nullptr, plain);
    freelocale(plain);
    return value;
}

/// strtod settles what is no plain number and what overflows. For the rest from_chars is faster;
/// but it rounds twice where the processor computes with more bits than a double has (x87). Neither
/// depends on the program's locale. A zero byte follows the text.
double readReal(std::string_view text) {
    double value = 0;
    constexpr bool isExact = FLT_EVAL_METHOD == 0;
    return isExact && readWhole(text, value) ? value : readInC(text.data());
}

}  // namespace

const Number::Limits Number::k_limits = makeLimits();

Number::Number() : m_type(ebLongLong), m_value{0}, m_text("0") {}

Number::Number(const std::string& text) : m_type(ebNone), m_value{0}, m_text(text) {}

Number::Number(const char* text) : m_type(ebNone), m_value{0}, m_text(std::string_view(text)) {}

Number::Number(const char* text, unsigned int length)
    : m_type(ebNone), m_value{0}, m_text(std::string_view(text, length)) {}

Number::Number(std::string_view text) : m_type(ebNone), m_value{0}, m_text(text) {}

Number::Number(Number&& other) noexcept
    : m_type(other.m_type), m_value(other.m_value), m_text(std::move(other.m_text)) {
    other.set(0);
}

Number::Number(const DecNumber& value) : Number() { set(value); }

Number& Number::operator=(const Number& other) {
    set(other);
    return *this;
}

Number& Number::operator=(Number&& other) noexcept {
    if (this != &other) {
        m_text = std::move(other.m_text);
        m_type = other.m_type;
        m_value = other.m_value;
        other.set(0);
    }
    return *this;
}

void Number::set(const std::string& text) { setText(text); }

void Number::set(const char* text) { setText(text); }

void Number::set(const char* text, unsigned int length) { setText({text, length}); }

void Number::setText(std::string_view text) {
    m_text.assign(text);
    m_type = ebNone;
}

void Number::set(const std::wstring& text) { set(convert(text)); }

void Number::set(const wchar_t* text) { set(convert(text)); }

void Number::set(const wchar_t* text, unsigned int length) {
    set(convert(std::wstring(text, length)));
}

void Number::set(char value) { setSigned(value); }

void Number::set(short value) { setSigned(value); }

void Number::set(int value) { setSigned(value); }

void Number::set(long value) { setSigned(value); }

void Number::set(long long value) { setSigned(value); }

void Number::set(unsigned char value) { setUnsigned(value); }

void Number::set(unsigned short value) { setUnsigned(value); }

void Number::set(unsigned int value) { setUnsigned(value); }

void Number::set(unsigned long value) { setUnsigned(value); }

void Number::set(unsigned long long value) { setUnsigned(value); }

void Number::set(float value) { setReal(value); }

void Number::set(double value) { setReal(value); }

void Number::setSigned(long long value) {
    m_value.signedInteger = value;
    m_type = ebLongLong;
    m_text.clear();
}

void Number::setUnsigned(unsigned long long value) {
    m_value.unsignedInteger = value;
    m_type = ebULongLong;
    m_text.clear();
}

void Number::setReal(double value) {
    m_value.real = value;
    m_type = ebDouble;
    m_text.clear();
}

void Number::set(const Number& other) {
    if (this != &other) {
        m_text = other.m_text;  // the only step that can throw
        m_type = other.m_type;
        m_value = other.m_value;
    }
}

void Number::set(const DecNumber& value) {
    TextStream text;
    value.writeTo(text);
    set(text.str());
}

Number::EBinaryType Number::type() const {
    if (m_type == ebNone) {
        syncToBinary();
    }
    return m_type;
}

const std::string& Number::toString() const {
    if (m_text.empty()) {
        syncToString();
    }
    return m_text.string();
}

std::string_view Number::textView() const {
    if (m_text.empty()) {
        syncToString();
    }
    return m_text.view();
}

std::wstring Number::toWString() const { return wconvert(toString()); }

std::ostream& Number::writeAt(std::ostream& out) const { return out << textView(); }

std::wostream& Number::writeAt(std::wostream& out) const { return out << toWString(); }

DecNumber Number::toDecNumber() const {
    switch (type()) {
        case ebLongLong:
            return DecNumber(m_value.signedInteger);
        case ebULongLong:
            return DecNumber(m_value.unsignedInteger);
        case ebDouble:
            return DecNumber(m_value.real);
        case ebBigDecimal:
            return DecNumber(m_text.string());
        default:
            throw RuntimeError("Unknown type, implementation missing");
    }
}

void Number::syncToBinary() const {
    // The kind is set before anything can throw: a text that is out of range is reported once.
    const std::string_view text = m_text.view();
    if (text.find_first_of(".eE") != std::string_view::npos) {
        m_type = ebDouble;
        syncToReal();
    } else if (!text.empty() && text.front() == '-') {
        m_type = ebLongLong;
        syncToSigned();
    } else {
        m_type = ebULongLong;
        syncToUnsigned();
    }
}

void Number::syncToUnsigned() const {
    constexpr std::size_t checkedLength = 20;  // the largest value has twenty digits
    const std::string_view text = m_text.view();
    if (text.length() >= checkedLength &&
        (text.compare(k_limits.ullMax) > 0 || text.compare(k_limits.ullMin) < 0)) {
        throw ValueOutOfRange<std::string, std::string>(m_text.string(), k_limits.llMin,
                                                        k_limits.llMax);
    }
    readInteger(text, m_value.unsignedInteger);
}

void Number::syncToSigned() const {
    constexpr std::size_t checkedLength = 19;  // one less than the smallest value's text
    const std::string_view text = m_text.view();
    if (text.length() >= checkedLength &&
        (text.compare(k_limits.llMax) > 0 || text.compare(k_limits.llMin) < 0)) {
        throw ValueOutOfRange<std::string, std::string>(m_text.string(), k_limits.llMin,
                                                        k_limits.llMax);
    }
    readInteger(text, m_value.signedInteger);
}

void Number::syncToReal() const {
    const double value = readReal(m_text.view());
    constexpr double largest = std::numeric_limits<double>::max();
    if (value > largest || value < -largest) {
        throw ValueOutOfRange<std::string, std::string>(m_text.string(), k_limits.dblMin,
                                                        k_limits.dblMax);
    }
    m_value.real = value;
}

void Number::syncToString() const {
    switch (m_type) {
        case ebLongLong:
            m_text.assign(integerText(m_value.signedInteger));
            break;
        case ebULongLong:
            m_text.assign(integerText(m_value.unsignedInteger));
            break;
        case ebDouble:
            m_text.assign(realText(m_value.real));
            break;
        default:
            m_text.clear();
            break;
    }
}

namespace {

constexpr SEnumName k_names[] = {ORVID_ENUM_NAME("ebNone"), ORVID_ENUM_NAME("ebLongLong"),
                                 ORVID_ENUM_NAME("ebULongLong"), ORVID_ENUM_NAME("ebDouble"),
                                 ORVID_ENUM_NAME("ebBigDecimal")};
constexpr SEnumName k_unknown = ORVID_ENUM_NAME(">>Unknown<<");

template<class Stream>
Stream& print(Stream& out, Number::EBinaryType type) {
    const SEnumName* const name = nameAt(k_names, type);
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
