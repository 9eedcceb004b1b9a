// SPDX-License-Identifier: MIT
//
// The value of a JSON number. It keeps the text that was read, digit by digit, and works out a
// binary value only when one is asked for. What a user must know of its rules is in
// docs/values.md.

#pragma once

#include <ko/detail/SlabArena.h>
#include <ko/Orvid/detail/NumberStore.h>
#include <ko/Orvid/ValueOutOfRange.h>

#include <cstddef>
#include <functional>
#include <iosfwd>
#include <string>
#include <string_view>
#include <type_traits>

namespace ko::Orvid {

namespace detail {

/// Whether T is an integer type, except those wider than long long. T may be incomplete.
template<class T, bool isIntegral = std::is_integral_v<T>>
inline constexpr bool k_isNarrowInteger = false;
template<class T>
inline constexpr bool k_isNarrowInteger<T, true> = sizeof(T) <= sizeof(long long);

}  // namespace detail

/// A number as text, as binary value, or as both. Either side is computed from the other on demand
/// and then kept. Const operations may run in any number of threads at once. None of them changes
/// what another one returns, except for the first that reports a refused text (see syncToBinary())
/// and for syncToString().
///
/// The value of a number, which convertTo(), decimal(), `==` to `>=` and std::hash go by, is that
/// of its text, exactly. A number that was set from a binary value has the value of the shortest
/// decimal number that reads back as that one. type(), compare(), getValue() and the reads named
/// after types go by the binary value.
///
/// An operation that states no cost is at most linear in the length of a text that was given, and
/// O(1) for a number that was set from a binary value. The binary value of a text is computed once.
class KO_API Number : public InSlabArena {
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
        std::string llMax = "9223372036854775807";
        std::string llMin = "-9223372036854775808";
        std::string ullMax = "18446744073709551615";
        std::string ullMin = ullMax;  ///< the largest value too, not zero
        std::string dblMin = "2.22507e-308";
        std::string dblMax = "1.79769e+308";
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

    /// What convertTo() reads.
    template<class T>
    static constexpr bool k_isReadable =
        k_isBinary<T> || std::is_same_v<T, signed char> || std::is_same_v<T, long double>;

    /// What a number can be made of: the types of k_isBinary, and the other character types, which
    /// are promoted as in an expression, and the wider floating types, which are rounded to double.
    template<class T>
    static constexpr bool k_isArithmetic =
        k_isBinary<T> ||
        (detail::k_isNarrowInteger<T> && !std::is_same_v<T, bool>) || std::is_floating_point_v<T>;

    /// Zero: signed, with the text "0". Constant cost.
    Number();
    Number(const Number& other, detail::NumberPlace place = {}) : m_store(other.m_store, place) {}
    /// Takes both sides over, in constant time; `other` is zero afterwards.
    Number(Number&& other) noexcept;
    /// As set(const Number&).
    Number& operator=(const Number& other);
    /// Takes both sides over; `other` is zero afterwards. Where memory is refused it still does,
    /// but the string that toString() returned for this number before is empty until the next
    /// change; toString() then returns another one. Linear in the length of the text.
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
    /// The number whose text is the shortest that reads back as the same `value` of its type, one
    /// of the floating types. A value that is not finite is set as it is. Throws std::bad_alloc.
    template<class Real>
    static Number exact(Real value);
    Number(const std::string& text);
    Number(const char* text);
    Number(const char* text, unsigned int length);
    explicit Number(std::string_view text) : m_store(text) {}
    explicit Number(detail::JsonNumber number, detail::NumberPlace place = {})
        : m_store(number, place) {}
    explicit Number(const std::wstring& text);
    explicit Number(const wchar_t* text);
    Number(const wchar_t* text, unsigned int length);
    explicit Number(const DecNumber& value);
    /// As set() of a wide text or of a decimal.
    template<class T, class = std::enable_if_t<std::is_same_v<T, DecNumber> ||
                                               std::is_convertible_v<const T&, std::wstring>>>
    Number& operator=(const T& value) {
        set(value);
        return *this;
    }

    ///@{
    /// Text. It is stored as it is, without a check, and the binary value is forgotten. Lengths
    /// count characters. Strong guarantee.
    /// Linear in the length.
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
    ///@}

    ///@{
    /// Binary values. The text is forgotten. Need no memory, except once toString() was called and
    /// for a text of more digits than there was room for. Strong guarantee.
    /// Constant cost.
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
    ///@}

    /// Takes over both sides of the other number. Strong guarantee. Linear in the length of the
    /// text.
    void set(const Number& other);
    /// Takes the decimal's text; the number then is text only. Linear in the number of digits.
    void set(const DecNumber& value);

    /// The binary kind, computed from the text where there is none. Throws what syncToBinary()
    /// does. Linear in the length of the text the first time, then O(1).
    EBinaryType type() const;

    /// The text; a double that was set has six significant digits. The first call makes a copy on
    /// the heap, and the reference to it is valid as long as the number lives: the string shows
    /// whatever is set afterwards. In three cases another string is returned, which is valid until
    /// the next change; then the first one shows the text again. They are: after a syncToString()
    /// that made another text, after a move to this number for which memory was refused, and after
    /// the conversion of an empty text. A number that is moved from may give its strings to the one
    /// that it is moved to, and numbers that are swapped exchange theirs: there a reference is
    /// valid as long as both live. Throws std::bad_alloc.
    const std::string& toString() const;
    /// The same, until the next change, without a copy on the heap where a text was given.
    std::string_view textView() const;
    /// The same, written into `buffer` where no text was given. Needs no memory.
    std::string_view textIn(NumberBuffer& buffer) const noexcept { return m_store.textIn(buffer); }
    /// The text that stands for the value: the one that was given or, written into `buffer`, the
    /// shortest one. Needs no memory.
    std::string_view exactTextIn(NumberBuffer& buffer) const noexcept;
    /// A copy of the text. Throws std::bad_alloc.
    std::wstring toWString() const;
    std::ostream& writeAt(std::ostream& out) const;
    std::wostream& writeAt(std::wostream& out) const;

    /// The exact decimal value of the binary value. Throws what syncToBinary() does, and
    /// ko::RuntimeError for a NaN or an infinity. Linear in the number of digits.
    DecNumber toDecNumber() const;
    /// The value. Throws ko::RuntimeError where it is none, and for an exponent beyond 64 bits. A
    /// little more than linear in the number of digits.
    DecNumber decimal() const;

    /// Reads the number as T, one of the twelve types of k_isBinary, into `out` and returns `out`.
    /// The fraction is cut off for the integral types. Throws ValueOutOfRange<Number, T>, with
    /// `out` unchanged, unless the number is within numeric_limits<T>::min() and max() by
    /// compare(): so the floating types refuse zero and all negative numbers, and the unsigned ones
    /// a signed zero. Throws what syncToBinary() does. No heap memory is used unless it throws.
    template<class T>
    T& getValue(T& out) const;

    /// Reads the value as T, one of the types of k_isReadable, into `out`. Returns false, with
    /// `out` unchanged, unless it fits: an integral T holds the whole numbers from its smallest to
    /// its largest value; a floating T holds any number whose nearest T is finite, which is the
    /// result, the zeros `-0` and `-0.0` with their sign, and a NaN that was set. Throws
    /// ko::RuntimeError for text that is no number. No heap memory is used unless it throws or the
    /// text is longer than NumberStore::k_capacity.
    template<class T>
    bool convertTo(T& out) const;
    /// Whether this is a number, and one without a fraction, as `1`, `1.0` and `10e-1` are.
    bool isWhole() const;

    ///@{
    /// What getValue() reads for that type.
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
    ///@}

    /// Negative, zero or positive as this number is below, equal to or above the other. A NaN
    /// equals every double; a signed zero is below an unsigned one. Throws what syncToBinary() does
    /// (the other number is converted first), and Exception("Uncomparable type.") when the other
    /// number is of kind ebBigDecimal. Constant cost, after the first time that a text is
    /// converted.
    int compare(const Number& other) const;

    ///@{
    /// -1, 0 or 1 as x is below, equal to or above y. The text forms compare exactly and throw
    /// ko::RuntimeError for a text that is no decimal number.
    /// Constant cost, and for a text linear in its length.
    static int compare(long long x, unsigned long long y);
    static int compare(long long x, double y);
    static int compare(long long x, const std::string& y);
    static int compare(unsigned long long x, double y);
    static int compare(unsigned long long x, const std::string& y);
    static int compare(double x, const std::string& y);
    ///@}

    /// -1, 0 or 1 as the value is below, equal to or above the other's: the order of `==` to `>=`.
    /// It is total: the negative infinity, the numbers, the positive infinity, NaN (all NaNs are
    /// equal), and the texts that are no number, by their bytes. Throws nothing but std::bad_alloc,
    /// and that only for exponents beyond 64 bits. Linear in the length of the texts, whatever
    /// their exponents.
    int order(const Number& other) const;

    /// Computes the binary value from a text that was given. A text without any of ".eE" is
    /// unsigned, or signed after a '-'; any other is a double. Throws
    /// ValueOutOfRange<std::string, std::string> when the text is beyond its kind; the kind is set
    /// even then, and the binary value is left as it was. Text that is no number is converted as
    /// far as it goes, without an error.
    void syncToBinary() const;
    /// Makes the text that is computed from the binary value the number's text; there is none while
    /// the binary value has no kind. The value stays that of the text before.
    void syncToString() const;

private:
    friend bool operator==(const Number& a, const Number& b);
    friend struct std::hash<Number>;
    friend class TreeWriter;
    friend struct NumberProbe;  // lets the tests make the kind that no operation produces

    using Binary = NumberStore::Binary;

    void setText(std::string_view text);
    /// Computed where there is none.
    Binary binary() const {
        const Binary held = m_store.binary();
        return held.kind != ebNone ? held : convertedText(held);
    }
    enum class Refusal { none, integer, real };
    Refusal convertGivenText(Binary& value) const;
    Refusal convertOtherText(std::string_view text, Binary& value) const;
    Binary convertedText(Binary value) const;
    int compareConverted(const Number& other) const;
    /// Compare `own`, the binary value.
    int compareTo(const Binary& own, long long other) const;
    int compareTo(const Binary& own, unsigned long long other) const;
    int compareTo(const Binary& own, double other) const;
    template<class T>
    T& readUnusual(const Binary& own, T& out) const;

    NumberStore m_store;
};

///@{
/// By Number::order().
inline bool operator==(const Number& a, const Number& b) {
    return a.m_store.hasSameTextAs(b.m_store) || a.order(b) == 0;
}
inline bool operator!=(const Number& a, const Number& b) { return !(a == b); }
inline bool operator<(const Number& a, const Number& b) { return a.order(b) < 0; }
inline bool operator>(const Number& a, const Number& b) { return a.order(b) > 0; }
inline bool operator<=(const Number& a, const Number& b) { return a.order(b) <= 0; }
inline bool operator>=(const Number& a, const Number& b) { return a.order(b) >= 0; }
///@}

extern template class KO_API ValueOutOfRange<Number, char>;
extern template class KO_API ValueOutOfRange<Number, signed char>;
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
extern template class KO_API ValueOutOfRange<Number, long double>;

}  // namespace ko::Orvid

/// Equal for numbers that are `==`. Throws as Number::order(), and costs no more.
template<>
struct KO_API std::hash<ko::Orvid::Number> {
    std::size_t operator()(const ko::Orvid::Number& number) const;
};

///@{
/// Prints the kind's name, or ">>Unknown<<" for a value that is no kind. Constant cost.
KO_API std::ostream& operator<<(std::ostream& out, const ko::Orvid::Number::EBinaryType& type);
KO_API std::wostream& operator<<(std::wostream& out, const ko::Orvid::Number::EBinaryType& type);
///@}

namespace ko {
using ::operator<<;
namespace Orvid {
using ::operator<<;
}
}  // namespace ko
