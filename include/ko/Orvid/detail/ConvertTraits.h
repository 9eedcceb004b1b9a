// SPDX-License-Identifier: MIT
//
// What kind of type a conversion has before it. Types of the standard library are known by what
// they can do and not by their names, so that none of their headers is included for programs that
// do not use them; types of other libraries that can do the same convert as well.

#pragma once

#include <ko/Orvid/detail/Described.h>
#include <ko/Orvid/Element.h>

#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

namespace ko::Orvid::detail {

template<class T, class = void>
constexpr bool k_hasFromElement = false;
template<class T>
constexpr bool k_hasFromElement<
    T, std::void_t<decltype(fromElement(std::declval<const Element&>(), std::declval<T&>()))>> =
    true;

template<class T, class = void>
constexpr bool k_hasToElement = false;
template<class T>
constexpr bool k_hasToElement<
    T, std::void_t<decltype(toElement(std::declval<Element&>(), std::declval<const T&>()))>> = true;

template<class T>
constexpr bool k_isText =
    std::is_convertible_v<const T&, std::string_view> && !std::is_null_pointer_v<T>;

template<class T, class = void>
constexpr bool k_isOptional = false;
template<class T>
constexpr bool k_isOptional<
    T, std::void_t<typename T::value_type, decltype(std::declval<const T&>().has_value()),
                   decltype(*std::declval<const T&>()), decltype(std::declval<T&>().reset())>> =
    true;

template<class T, class = void>
constexpr bool k_isFilePath = false;
template<class T>
constexpr bool k_isFilePath<
    T, std::void_t<typename T::string_type, decltype(std::declval<const T&>().native()),
                   decltype(std::declval<const T&>().lexically_normal())>> = true;

template<class T, class = void>
constexpr bool k_isDuration = false;
template<class T>
constexpr bool k_isDuration<T, std::void_t<typename T::rep, typename T::period,
                                           decltype(std::declval<const T&>().count())>> = true;

template<class T, class = void>
constexpr bool k_isVariant = false;
template<class T>
constexpr bool
    k_isVariant<T, std::void_t<decltype(std::declval<const T&>().valueless_by_exception()),
                               decltype(std::declval<const T&>().index())>> = true;

template<class T, class = void>
constexpr bool k_isTuple = false;
template<class T>
constexpr bool k_isTuple<T, std::void_t<decltype(std::tuple_size<T>::value)>> = true;

template<class T, class = void>
constexpr bool k_isRange = false;
template<class T>
constexpr bool
    k_isRange<T, std::void_t<typename T::value_type, decltype(std::declval<const T&>().begin()),
                             decltype(std::declval<const T&>().end())>> = true;

template<class T, class = void>
constexpr bool k_isSequence = false;
template<class T>
constexpr bool k_isSequence<T, std::void_t<decltype(std::declval<T&>().push_back(
                                   std::declval<typename T::value_type>()))>> = k_isRange<T>;

template<class T, class = void>
constexpr bool k_isMap = false;
template<class T>
constexpr bool k_isMap<T, std::void_t<typename T::mapped_type>> =
    k_isRange<T>&& std::is_convertible_v<const std::string&, typename T::key_type>&&
        k_isText<typename T::key_type>;

template<class T, class = void>
constexpr bool k_isSet = false;
template<class T>
constexpr bool
    k_isSet<T, std::void_t<typename T::key_type, decltype(std::declval<T&>().insert(
                                                     std::declval<typename T::value_type>()))>> =
        k_isRange<T>&& std::is_same_v<typename T::key_type, typename T::value_type>;

template<class T, class = void>
constexpr bool k_canReserve = false;
template<class T>
constexpr bool k_canReserve<T, std::void_t<decltype(std::declval<T&>().reserve(0))>> = true;

/// How a type converts.
enum class Kind {
    none,
    function,  ///< fromElement() or toElement()
    fields,    ///< ORVID_FIELDS
    element,
    null,  ///< std::nullptr_t
    boolean,
    number,
    exactNumber,  ///< Number
    decimal,      ///< DecNumber
    text,
    names,  ///< ORVID_NAMES
    optional,
    filePath,
    duration,
    variant,
    map,
    set,
    sequence,
    array,  ///< std::array
    tuple,  ///< std::tuple and std::pair
};

template<class T>
constexpr Kind kindOfClass() {
    if constexpr (k_hasFromElement<T> || k_hasToElement<T>) {
        return Kind::function;
    } else if constexpr (k_hasFields<T>) {
        return Kind::fields;
    } else if constexpr (std::is_base_of_v<Element, T>) {
        return Kind::element;
    } else if constexpr (std::is_same_v<T, Number>) {
        return Kind::exactNumber;
    } else if constexpr (std::is_same_v<T, DecNumber>) {
        return Kind::decimal;
    } else if constexpr (k_isText<T>) {
        return Kind::text;
    } else if constexpr (k_isOptional<T>) {
        return Kind::optional;
    } else if constexpr (k_isFilePath<T>) {
        return Kind::filePath;
    } else if constexpr (k_isDuration<T>) {
        return Kind::duration;
    } else if constexpr (k_isVariant<T>) {
        return Kind::variant;
    } else if constexpr (k_isTuple<T> && k_isRange<T>) {
        return Kind::array;
    } else if constexpr (k_isTuple<T>) {
        return Kind::tuple;
    } else if constexpr (k_isMap<T>) {
        return Kind::map;
    } else if constexpr (k_isSet<T>) {
        return Kind::set;
    } else if constexpr (k_isSequence<T>) {
        return Kind::sequence;
    } else {
        return Kind::none;
    }
}

template<class T>
constexpr Kind kindOf() {
    if constexpr (std::is_class_v<T>) {
        return kindOfClass<T>();
    } else if constexpr (std::is_enum_v<T>) {
        return k_hasFromElement<T> || k_hasToElement<T> ? Kind::function
               : k_hasNames<T>                          ? Kind::names
                                                        : Kind::none;
    } else if constexpr (std::is_same_v<T, bool>) {
        return Kind::boolean;
    } else if constexpr (std::is_null_pointer_v<T>) {
        return Kind::null;
    } else if constexpr (Number::k_isArithmetic<T>) {
        return Kind::number;
    } else {
        return k_isText<T> ? Kind::text : Kind::none;
    }
}

/// Whether T can be read from elements: text, for one, cannot be read as const char*.
template<class T>
constexpr bool isReadable() {
    constexpr Kind kind = kindOf<T>();
    if constexpr (kind == Kind::function) {
        return k_hasFromElement<T>;
    } else if constexpr (kind == Kind::text) {
        return std::is_constructible_v<T, const std::string&>;
    } else {
        return kind != Kind::none;
    }
}

template<class T>
constexpr bool isWritable() {
    constexpr Kind kind = kindOf<T>();
    return kind == Kind::function ? k_hasToElement<T> : kind != Kind::none;
}

}  // namespace ko::Orvid::detail
