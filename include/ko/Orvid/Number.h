// SPDX-License-Identifier: MIT
//
// The value of a JSON number. It keeps the text that was read, digit by digit, and works out a
// binary value only when one is asked for. What a user must know of its rules is in
// docs/numbers.md.

#pragma once

#include <ko/detail/NodeMemory.h>
#include <ko/detail/ShortText.h>
#include <ko/Orvid/ValueOutOfRange.h>

#include <cstddef>
#include <functional>
#include <iosfwd>
#include <string>
#include <string_view>
#include <type_traits>

namespace ko::Orvid {

/// A number as text, as binary value, or as both. Either side is computed from the other on demand
/// and then kept, also by const operations: one number is used by one thread at a time, or is read
/// once on both sides (toString(), type()) before it is shared.
class KO_API Number : public InNodeMemory {
public:
    /// The kind of the binary value.
    enum EBinaryType : int {
        ebNone,        ///< none computed yet; the text is authoritative
        ebLongLong,    ///< signed, 64 bits
        ebULongLong,   ///< unsigned, 64 bits
        ebDouble,      ///< IEEE double
        ebBigDecimal,  ///< text only, handled as ko::DecNumber; no operation produces it
    };

    /// The texts of the binary kinds' limits, as a stream prints them by default. They bound the
    /// conversion of text, which compares them with the text byte by byte.
    struct Limits {
        std::string llMax;
        std::string llMin;
        std::string ullMax;
        std::string ullMin;  ///< holds the largest value too, not zero
        std::string dblMin;
        std::string dblMax;
    };
    static const Limits k_limits;

    template<class T>
    static constexpr bool k_isBinary =
        std::is_same_v<T, char> || std::is_same_v<T, unsigned char> || std::is_same_v<T, short> ||
        std::is_same_v<T, unsigned short> || std::is_same_v<T, int> ||
        std::is_same_v<T, unsigned int> || std::is_same_v<T, long> ||
        std::is_same_v<T, unsigned long> || std::is_same_v<T, long long> ||
        std::is_same_v<T, unsigned long long> || std::is_same_v<T, float> ||
        std::is_same_v<T, double>;

    /// What a number can be made of: the types of k_isBinary, and the other character types, which
    /// are promoted as in an expression, and the wider floating types, which are rounded to double.
    template<class T>
    static constexpr bool k_isArithmetic = k_isBinary<T> ||
                                           (std::is_integral_v<T> && !std::is_same_v<T, bool> &&
                                            sizeof(T) <= sizeof(long long)) ||
                                           std::is_floating_point_v<T>;

    /// Zero: signed, with the text "0".
    Number();
    Number(const Number& other) = default;
    /// Takes both sides over, in constant time; `other` is zero afterwards.
    Number(Number&& other) noexcept;
    /// As set(const Number&).
    Number& operator=(const Number& other);
    Number& operator=(Number&& other) noexcept;
    ~Number() = default;
    template<class T, class = std::enable_if_t<k_isArithmetic<T>>>
    Number(T value) : Number() {
        if constexpr (std::is_floating_point_v<T>) {
            set(static_cast<double>(value));
        } else {
            set(value);
        }
    }
    Number(const std::string& text);
    Number(const char* text);
    Number(const char* text, unsigned int length);
    explicit Number(std::string_view text);
    explicit Number(const DecNumber& value);

    // Text. It is stored as it is, without a check, and the binary value is forgotten. Lengths
    // count characters. Strong guarantee.
    void set(const std::string& text);
    void set(const char* text);
    void set(const char* text, unsigned int length);
    template<class Text, class = std::enable_if_t<std::is_same_v<Text, std::string_view>>>
    void set(Text text) {
        setText(text);
    }
    void set(const std::wstring& text);
    void set(const wchar_t* text);
    void set(const wchar_t* text, unsigned int length);

    // Binary values. The text is forgotten.
    void set(char value);
    void set(short value);
    void set(int value);
    void set(long value);
    void set(long long value);
    void set(unsigned char value);
    void set(unsigned short value);
    void set(unsigned int value);
    void set(unsigned long value);
    void set(unsigned long long value);
    void set(float value);
    void set(double value);

    /// Takes over both sides of the other number. Strong guarantee.
    void set(const Number& other);
    /// Takes the decimal's text; the number then is text only.
    void set(const DecNumber& value);

    /// The binary kind, computed from the text where there is none. Throws what syncToBinary()
    /// does.
    EBinaryType type() const;

    /// The text; a double is written with six significant digits. The reference lives until the
    /// next set(). toWString() returns a copy.
    const std::string& toString() const;
    /// The same without a copy on the heap, which the first toString() of a number makes.
    std::string_view textView() const;
    std::wstring toWString() const;
    std::ostream& writeAt(std::ostream& out) const;
    std::wostream& writeAt(std::wostream& out) const;

    /// The exact decimal value of the binary value. Throws what syncToBinary() does, and
    /// ko::RuntimeError for a NaN or an infinity.
    DecNumber toDecNumber() const;

    /// Reads the number as T, one of the twelve types of k_isBinary, into `out` and returns `out`.
    /// The fraction is cut off for the integral types. Throws ValueOutOfRange<Number, T>, with
    /// `out` unchanged, unless the number is within numeric_limits<T>::min() and max() by
    /// compare(): so the floating types refuse zero and all negative numbers, and the unsigned ones
    /// a signed zero. Throws what syncToBinary() does. No heap memory is used unless it throws.
    template<class T>
    T& getValue(T& out) const;

    /// Reads the number as T, one of the types of k_isBinary, if it is one: for an integral type a
    /// whole number from T's smallest to its largest value; for a floating type any number within
    /// lowest() and max(), rounded to the nearest. Zero is any T's. Answers whether it is, with
    /// `out` unchanged where it is not. Goes by the text where that is long, so it is not misled by
    /// a text that syncToBinary() refused. Throws ko::RuntimeError for text that is no number.
    template<class T>
    bool convertTo(T& out) const;

    char toChar() const;
    unsigned char toUChar() const;
    short toShort() const;
    unsigned short toUShort() const;
    int toInt() const;
    unsigned int toUInt() const;
    long toLong() const;
    unsigned long toULong() const;
    long long toLongLong() const;
    unsigned long long toULongLong() const;
    float toFloat() const;
    double toDouble() const;

    /// Negative, zero or positive as this number is below, equal to or above the other. A NaN
    /// equals every double; a signed zero is below an unsigned one. Throws what syncToBinary() does
    /// (the other number is converted first), and Exception("Uncomparable type.") when the other
    /// number is of kind ebBigDecimal.
    int compare(const Number& other) const;

    // -1, 0 or 1 as x is below, equal to or above y. The text forms compare exactly and throw
    // ko::RuntimeError for a text that is no decimal number.
    static int compare(long long x, unsigned long long y);
    static int compare(long long x, double y);
    static int compare(long long x, const std::string& y);
    static int compare(unsigned long long x, double y);
    static int compare(unsigned long long x, const std::string& y);
    static int compare(double x, const std::string& y);

    /// Computes the binary value from the text. A text without any of ".eE" is unsigned, or signed
    /// behind a '-'; any other is a double. Throws ValueOutOfRange<std::string, std::string> when
    /// the text is beyond its kind; the kind is set all the same and the binary value is left as it
    /// was. Text that is no number is converted as far as it goes, without an error.
    void syncToBinary() const;
    /// Computes the text from the binary value.
    void syncToString() const;

private:
    friend struct std::hash<Number>;
    friend struct NumberProbe;  // lets the tests make the kind that no operation produces

    union UValue {
        long long signedInteger;
        unsigned long long unsignedInteger;
        double real;
    };

    void setText(std::string_view text);
    void setSigned(long long value);
    void setUnsigned(unsigned long long value);
    void setReal(double value);
    void syncToSigned() const;
    void syncToUnsigned() const;
    void syncToReal() const;
    int compareTo(long long other) const;
    int compareTo(unsigned long long other) const;
    int compareTo(double other) const;
    template<class T>
    bool isWithin(T min, T max) const;
    template<class T>
    bool convertText(T& out) const;

    mutable EBinaryType m_type;
    mutable UValue m_value;
    mutable ShortText m_text;
};

// The order of Number::compare(), which throws.
inline bool operator==(const Number& a, const Number& b) { return a.compare(b) == 0; }
inline bool operator!=(const Number& a, const Number& b) { return a.compare(b) != 0; }
inline bool operator<(const Number& a, const Number& b) { return a.compare(b) < 0; }
inline bool operator>(const Number& a, const Number& b) { return a.compare(b) > 0; }
inline bool operator<=(const Number& a, const Number& b) { return a.compare(b) <= 0; }
inline bool operator>=(const Number& a, const Number& b) { return a.compare(b) >= 0; }

extern template class KO_API ValueOutOfRange<Number, char>;
extern template class KO_API ValueOutOfRange<Number, unsigned char>;
extern template class KO_API ValueOutOfRange<Number, short>;
extern template class KO_API ValueOutOfRange<Number, unsigned short>;
extern template class KO_API ValueOutOfRange<Number, int>;
extern template class KO_API ValueOutOfRange<Number, unsigned int>;
extern template class KO_API ValueOutOfRange<Number, long>;
extern template class KO_API ValueOutOfRange<Number, unsigned long>;
extern template class KO_API ValueOutOfRange<Number, long long>;
extern template class KO_API ValueOutOfRange<Number, unsigned long long>;
extern template class KO_API ValueOutOfRange<Number, float>;
extern template class KO_API ValueOutOfRange<Number, double>;

}  // namespace ko::Orvid

/// Equal for numbers that are `==`, whatever their kind, but for a NaN, which equals every double.
/// Throws what Number::type() throws.
template<>
struct KO_API std::hash<ko::Orvid::Number> {
    std::size_t operator()(const ko::Orvid::Number& number) const;
};

/// Prints the kind's name, or ">>Unknown<<" for a value that is no kind.
KO_API std::ostream& operator<<(std::ostream& out, const ko::Orvid::Number::EBinaryType& type);
KO_API std::wostream& operator<<(std::wostream& out, const ko::Orvid::Number::EBinaryType& type);

namespace ko {
using ::operator<<;
namespace Orvid {
using ::operator<<;
}
}  // namespace ko
