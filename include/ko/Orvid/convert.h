// SPDX-License-Identifier: MIT
//
// Conversions between elements and the types of C++: Element::to<T>(), Element::set() and
// Element::from(), and what makes them know a type of your own. docs/values.md has examples and the
// list of the types.

#pragma once

#include <ko/DecNumber.h>
#include <ko/Orvid/detail/Converter.h>
#include <ko/Orvid/detail/Described.h>
#include <ko/Orvid/detail/FieldSource.h>
#include <ko/Orvid/detail/ForEach.h>
#include <ko/Orvid/Element.h>

// A type of your own converts in one of two ways.
//
// 1. With functions in its namespace, which argument-dependent lookup finds:
//
//        void fromElement(const Element& element, Server& server);
//        void toElement(Element& element, const Server& server);
//
//    The object that fromElement() fills is a new one, Server{}. The element that toElement() sets
//    is of type etEmpty, so that create() makes an object of it; left so, it becomes null. One of
//    the functions is enough for one direction.
//
// 2. With a macro, for the classes whose JSON is an object of their fields and for enumerations
//    whose JSON is a string.

/// Describes a class by its fields, in its namespace or as the last line of its body, where the
/// fields may be private. Each field is the member of the same name; they are written in this
/// order. A member that is missing, or of type etEmpty, takes the default that the document's own
/// schema has for it. Such a default is completed by those of its members, and an object that is
/// missing is made where the schema has a default for one of its members, as fillDefaults() does.
/// Else the field is std::nullopt if it is optional; else PathNotFound is thrown, with the path
/// from the root. Members without a field are skipped.
/// Throws LimitExceeded for defaults within defaults that multiply beyond what fillDefaults()
/// writes. Up to 100 fields; the class must be default constructible, and the fields assignable.
///
///     ORVID_FIELDS(Server, host, port, tags)
#define ORVID_FIELDS(...)                                                     \
    ORVID_DETAIL_JOIN(ORVID_DETAIL_FIELDS_, ORVID_DETAIL_OTHERS(__VA_ARGS__)) \
    (__VA_ARGS__)

// Describes the type even so: this is then the only error, and not its conversions as well.
#define ORVID_DETAIL_FIELDS_0(Type)                                                             \
    static_assert(sizeof(Type*) == 0, "ORVID_FIELDS names no field: ORVID_FIELDS(Type, a, b)"); \
    struct ORVID_DETAIL_NAME(OrvidFields, 0)                                                    \
        : ::ko::Orvid::detail::DescribesFields<Type, ORVID_DETAIL_NAME(OrvidFields, 0)> {       \
        template<class Value>                                                                   \
        static void read(::ko::Orvid::detail::FieldSource& orvidFields, Value& orvidValue);     \
        template<class Value>                                                                   \
        static void write(::ko::Orvid::detail::FieldTarget& orvidFields, const Value& value);   \
    };                                                                                          \
    static_assert(sizeof(ORVID_DETAIL_NAME(OrvidFields, 0)) != 0, "");                          \
    [[maybe_unused]] inline void ORVID_DETAIL_NAME(orvidFieldsEnd, 0)() {}

#define ORVID_DETAIL_FIELDS_1(Type, ...)                                                           \
    struct ORVID_DETAIL_NAME(OrvidFields, __VA_ARGS__)                                             \
        : ::ko::Orvid::detail::DescribesFields<Type,                                               \
                                               ORVID_DETAIL_NAME(OrvidFields, __VA_ARGS__)> {      \
        static void read(::ko::Orvid::detail::FieldSource& orvidFields, Type& orvidValue) {        \
            ORVID_DETAIL_EACH(ORVID_DETAIL_READ_FIELD, __VA_ARGS__)                                \
        }                                                                                          \
        static void write(::ko::Orvid::detail::FieldTarget& orvidFields, const Type& orvidValue) { \
            ORVID_DETAIL_EACH(ORVID_DETAIL_WRITE_FIELD, __VA_ARGS__)                               \
        }                                                                                          \
    };                                                                                             \
    static_assert(sizeof(ORVID_DETAIL_NAME(OrvidFields, __VA_ARGS__)) != 0, "");                   \
    [[maybe_unused]] inline void ORVID_DETAIL_NAME(orvidFieldsEnd, __VA_ARGS__)() {}

#define ORVID_DETAIL_READ_FIELD(field) orvidFields.read(#field, orvidValue.field);
#define ORVID_DETAIL_WRITE_FIELD(field) orvidFields.write(#field, orvidValue.field);
// The line and the first fields distinguish the classes of one namespace, which may come from
// several headers: the name of the type may have colons in it. Their size is asked for because
// nothing else instantiates those of a class template, and the function stands at the end because a
// semicolon may follow it.
#define ORVID_DETAIL_NAME(name, ...) ORVID_DETAIL_NAME_OF(name, __LINE__, __VA_ARGS__, 0, 0, 0, 0)
#define ORVID_DETAIL_NAME_OF(name, line, ...) ORVID_DETAIL_NAME_MADE(name, line, __VA_ARGS__)
#define ORVID_DETAIL_NAME_MADE(name, line, a, b, c, d, ...) name##line##F##a##F##b##F##c##F##d

/// Describes an enumeration by the strings that stand for its enumerators, in its namespace. Of
/// several strings for one enumerator the first is written, and all are read. Reading another
/// string, and writing another value, throws Exception.
///
///     ORVID_NAMES(Level, {{Level::low, "low"}, {Level::high, "high"}})
#define ORVID_NAMES(Type, ...)                                                           \
    inline ::ko::Orvid::detail::EnumNames<Type> orvidNamesOf(Type) {                     \
        static constexpr ::ko::Orvid::detail::EnumName<Type> orvidNames[] = __VA_ARGS__; \
        return {orvidNames, sizeof orvidNames / sizeof orvidNames[0]};                   \
    }
