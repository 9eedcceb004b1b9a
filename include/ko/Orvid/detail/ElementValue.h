// SPDX-License-Identifier: MIT
//
// What Element::to<T>() and Element::set() do for each T. Templates of the element's type too,
// because Element.h, which uses them, has not defined it yet.

#pragma once

#include <ko/DecNumber.h>
#include <ko/Exception.h>
#include <ko/export.h>
#include <ko/Orvid/fwd.h>
#include <ko/Orvid/Number.h>

#include <string>
#include <string_view>
#include <type_traits>

namespace ko::Orvid::detail {

template<class T>
struct Converter;  // defined in convert.h

template<class T>
using IfBool = std::enable_if_t<std::is_same_v<T, bool>, int>;
template<class T>
using IfArithmetic = std::enable_if_t<Number::k_isArithmetic<T>, int>;
template<class T>
using IfView = std::enable_if_t<std::is_same_v<T, std::string_view>, int>;

/// Of what can be an element, but does not become one by itself: it has to be converted.
template<class T>
using IfConverted = std::enable_if_t<!std::is_convertible_v<const T&, Element>, int>;

/// What operations accept besides an Element: a value that is converted to an element where they
/// are called. Defined in Element.h.
struct Converted;

/// Throws ValueOutOfRange<Number, T> for the element's number. For arithmetic types.
template<class T>
[[noreturn]] KO_API void throwOutOfRange(const Element& element);
/// Throws Exception with `error`, which the text of the element's number caused, as its cause.
[[noreturn]] KO_API void throwNoNumber(const Element& element, const RuntimeError& error);

/// The number that has the value, also after it was written and read.
template<class T>
Number numberOf(T value) {
    if constexpr (std::is_floating_point_v<T>) {
        return Number::exact(value);
    } else {
        return Number(value);
    }
}

template<class T, class AnyElement>
T numberAs(const AnyElement& element) {
    try {
        if constexpr (std::is_same_v<T, DecNumber>) {
            return element.number().decimal();
        } else {
            T value{};
            if (element.number().convertTo(value)) {
                return value;
            }
            throwOutOfRange<T>(element);
        }
    } catch (const RuntimeError& error) {
        throwNoNumber(element, error);
    }
}

template<class T, class AnyElement>
std::remove_cv_t<T> valueAs(const AnyElement& element) {
    using Value = std::remove_cv_t<T>;
    if constexpr (std::is_same_v<Value, bool>) {
        return element.boolean();
    } else if constexpr (Number::k_isReadable<Value> || std::is_same_v<Value, DecNumber>) {
        return numberAs<Value>(element);
    } else if constexpr (std::is_same_v<Value, Number>) {
        return element.number();
    } else if constexpr (std::is_same_v<Value, std::string> ||
                         std::is_same_v<Value, std::string_view>) {
        return Value(element.string());
    } else {
        return Converter<Value>::read(element);  // #include <ko/Orvid/convert.h>
    }
}

template<class AnyElement, class T>
AnyElement made(const T& value) {
    AnyElement element;
    Converter<std::decay_t<const T>>::write(element, value);  // #include <ko/Orvid/convert.h>
    return element;
}

template<class AnyElement, class T>
void setValue(AnyElement& element, const T& value) {
    if constexpr (std::is_same_v<T, bool>) {
        element.setBoolean(value);
    } else if constexpr (Number::k_isArithmetic<T> || std::is_same_v<T, Number>) {
        element.setNumber(value);
    } else if constexpr (std::is_same_v<T, std::string> || std::is_same_v<T, std::string_view>) {
        element.setString(std::string_view(value));
    } else if constexpr (std::is_same_v<T, AnyElement>) {
        element = value;
    } else {
        element = made<AnyElement>(value);
    }
}

}  // namespace ko::Orvid::detail
