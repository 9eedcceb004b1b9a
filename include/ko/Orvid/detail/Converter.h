// SPDX-License-Identifier: MIT
//
// The conversions themselves: which function of ReadValue.h and WriteValue.h a type takes.

#pragma once

#include <ko/Orvid/detail/ConvertTraits.h>
#include <ko/Orvid/detail/FieldSource.h>
#include <ko/Orvid/detail/ReadValue.h>
#include <ko/Orvid/detail/WriteValue.h>

#include <cstddef>
#include <new>
#include <string_view>
#include <type_traits>
#include <utility>

namespace ko::Orvid::detail {

#define ORVID_DETAIL_NO_CONVERSION                                                                \
    "this type does not convert to or from JSON. What does: bool, the arithmetic types, "         \
    "std::string, std::string_view, ko::Orvid::Number, ko::DecNumber, ko::Orvid::Element; "       \
    "std::optional, pair, tuple, variant, vector, deque, list, array, set, unordered_set, map "   \
    "and "                                                                                        \
    "unordered_map with string keys, filesystem::path, chrono::duration, of types that convert; " \
    "an enumeration with ORVID_NAMES(Type, {{Type::a, \"a\"}}); a class with ORVID_FIELDS(Type, " \
    "field, field), or with fromElement(const Element&, Type&) and toElement(Element&, const "    \
    "Type&) in its namespace"

/// A class, so that each type that does not convert is one error, however often it is met.
template<class T>
struct Converts {
    static_assert(kindOf<T>() != Kind::none, ORVID_DETAIL_NO_CONVERSION);
};

template<class T>
struct Converter {
    static T read(const Element& element) {
        DefaultsUse use;
        return readAt(ReadContext(element, use));
    }

    /// There is a value, except where canBeMade() says that none is needed.
    static T readAt(const ReadContext& context) {
        constexpr Kind kind = kindOf<T>();
        static_assert(isReadable<T>() || kind == Kind::none, ORVID_DETAIL_NO_CONVERSION);
        if constexpr (!isReadable<T>()) {
            static_cast<void>(sizeof(Converts<T>));
            throw std::bad_alloc();  // never reached: only so that there is one error and no other
        } else if constexpr (kind == Kind::function) {
            return readFunction<T>(*context.value());
        } else if constexpr (kind == Kind::fields) {
            return readFields<T>(context);
        } else if constexpr (kind == Kind::element) {
            return T(*context.value());
        } else if constexpr (kind == Kind::null) {
            context.value()->ensureType(etNull);
            return nullptr;
        } else if constexpr (kind == Kind::number) {
            return readOtherNumber<T>(*context.value());
        } else if constexpr (kind == Kind::text || kind == Kind::filePath) {
            return T(context.value()->string());
        } else if constexpr (kind == Kind::names) {
            return readName<T>(*context.value());
        } else if constexpr (kind == Kind::optional) {
            return readOptional<T>(context);
        } else if constexpr (kind == Kind::duration) {
            return T(readValue<typename T::rep>(context));
        } else if constexpr (kind == Kind::variant) {
            return VariantReader<T, T>::read(context);
        } else if constexpr (kind == Kind::map) {
            return readMap<T>(context);
        } else if constexpr (kind == Kind::array) {
            return readArray<T>(context);
        } else if constexpr (kind == Kind::tuple) {
            return readTuple<T>(context, std::make_index_sequence<std::tuple_size<T>::value>());
        } else {
            return readSequence<T>(context);
        }
    }

    /// Throws with a part of the value written into the element.
    static void write(Element& element, const T& value) {
        constexpr Kind kind = kindOf<T>();
        static_assert(isWritable<T>() || kind == Kind::none, ORVID_DETAIL_NO_CONVERSION);
        if constexpr (!isWritable<T>()) {
            static_cast<void>(sizeof(Converts<T>));
            static_cast<void>(element);
            static_cast<void>(value);
        } else if constexpr (kind == Kind::function) {
            writeFunction(element, value);
        } else if constexpr (kind == Kind::fields) {
            FieldTarget target(element);
            Fields<T>::write(target, value);
        } else if constexpr (kind == Kind::element) {
            element = value;
        } else if constexpr (kind == Kind::null) {
            element.setNull();
        } else if constexpr (kind == Kind::boolean) {
            element.setBoolean(value);
        } else if constexpr (kind == Kind::number || kind == Kind::exactNumber ||
                             kind == Kind::decimal) {
            element.setNumber(value);
        } else if constexpr (kind == Kind::text) {
            writeText(element, value);
        } else if constexpr (kind == Kind::filePath) {
            element.setString(std::string_view(value.native()));
        } else if constexpr (kind == Kind::names) {
            writeName(element, value);
        } else if constexpr (kind == Kind::duration) {
            writeValue(element, value.count());
        } else if constexpr (kind == Kind::map) {
            writeMap(element, value);
        } else if constexpr (kind == Kind::tuple) {
            writeTuple(element, value, std::make_index_sequence<std::tuple_size<T>::value>());
        } else if constexpr (kind == Kind::optional) {
            writeOptional(element, value);
        } else if constexpr (kind == Kind::variant) {
            writeAlternative(element, value, static_cast<T*>(nullptr));
        } else {
            writeItems(element, value);
        }
    }

private:
    static void writeOptional(Element& element, const T& value) {
        if (value.has_value()) {
            writeValue(element, *value);
        } else {
            element.setNull();
        }
    }

    template<class Value>
    static void writeValue(Element& element, const Value& value) {
        Converter<std::decay_t<const Value>>::write(element, value);
    }

    template<template<class...> class Variant, class... Alternatives>
    static void writeAlternative(Element& element, const T& value, Variant<Alternatives...>*) {
        element.setNull();
        writeHeld(element, value, std::index_sequence_for<Alternatives...>());
    }

    template<std::size_t... Indexes>
    static void writeHeld(Element& element, const T& value, std::index_sequence<Indexes...>) {
        (writeIfHeld(element, get_if<Indexes>(&value)), ...);
    }

    template<class Value>
    static void writeIfHeld(Element& element, const Value* value) {
        if constexpr (!k_isNothing<Value>) {
            if (value != nullptr) {
                writeValue(element, *value);
            }
        }
    }
};

template<class T>
void FieldSource::read(const char* name, T& field) {
    const ReadContext context = find(name);
    if (context.value() != nullptr || canBeMade<T>(context)) {
        field = readValue<T>(context);
    } else if constexpr (k_isOptional<T>) {
        field = T();
    } else {
        context.throwMissing();
    }
}

template<class T>
void FieldTarget::write(std::string_view name, const T& value) {
    Converter<std::decay_t<const T>>::write(add(name), value);
}

template<class T>
void ItemTarget::write(const T& value) {
    Converter<std::decay_t<const T>>::write(add(), value);
}

}  // namespace ko::Orvid::detail
