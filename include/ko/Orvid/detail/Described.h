// SPDX-License-Identifier: MIT
//
// How the macros of convert.h make a type known to the conversions. ORVID_FIELDS makes a class
// beside or within the type, so that it may read private fields, and may itself be private. No
// lookup finds such a class by name. So it describes itself: by deriving from DescribesFields it
// defines the function that FieldsOf declares, whose result type is the class.

#pragma once

#include <cstddef>
#include <string_view>
#include <type_traits>
#include <utility>

namespace ko::Orvid::detail {

#if defined(__GNUC__) && !defined(__clang__)
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-template-friend"  // one function for each T is what is wanted
#endif

template<class T>
struct FieldsOf {
    friend auto orvidFieldsOf(FieldsOf<T>);
};

#if defined(__GNUC__) && !defined(__clang__)
#pragma GCC diagnostic pop
#endif

/// `Fields` describes the fields of T: its read() and write() take them one by one.
template<class T, class Fields>
struct DescribesFields {
    friend auto orvidFieldsOf(FieldsOf<T>) { return static_cast<Fields*>(nullptr); }
};

template<class T, class = void>
constexpr bool k_hasFields = false;
template<class T>
constexpr bool k_hasFields<T, std::void_t<decltype(orvidFieldsOf(FieldsOf<T>()))>> = true;

/// The class that describes the fields of T.
template<class T>
using Fields = std::remove_pointer_t<decltype(orvidFieldsOf(FieldsOf<T>()))>;

/// An enumerator and what stands for it in JSON.
template<class Enum>
struct EnumName {
    Enum value;
    std::string_view name;
};

template<class Enum>
struct EnumNames {
    const EnumName<Enum>* names;
    std::size_t size;

    const EnumName<Enum>* begin() const { return names; }
    const EnumName<Enum>* end() const { return names + size; }
};

template<class Enum, class = void>
constexpr bool k_hasNames = false;
template<class Enum>
constexpr bool k_hasNames<Enum, std::void_t<decltype(orvidNamesOf(std::declval<Enum>()))>> = true;

}  // namespace ko::Orvid::detail
