// SPDX-License-Identifier: MIT
//
// The conversions themselves, one function for each kind of type and direction.

#pragma once

#include <ko/export.h>
#include <ko/Orvid/Array.h>
#include <ko/Orvid/detail/ConvertTraits.h>
#include <ko/Orvid/detail/FieldSource.h>
#include <ko/Orvid/Object.h>

#include <cstddef>
#include <exception>
#include <limits>
#include <new>
#include <string>
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

template<std::size_t>
void get_if();  // so that get_if<0>(...) is read as a call, which then finds that of std::variant

/// The array's items, as many as T takes. Throws TypeException, and Exception for another number.
KO_API const Element::TArray& itemsOf(const Element& element, std::size_t size);
[[noreturn]] KO_API void throwNoAlternative(const Element& element);
[[noreturn]] KO_API void throwNoName(const Element& element, const std::string& names);
[[noreturn]] KO_API void throwNoEnumerator(const Element& element, long long value);

template<class T>
T readFunction(const Element& element) {
    T value{};
    fromElement(element, value);
    return value;
}

template<class T>
T readFields(const Element& element) {
    FieldSource source(element);
    T value{};
    Fields<T>::read(source, value);
    return value;
}

/// The arithmetic types that Number::convertTo() does not read: they are as wide as one that it
/// does.
template<class T>
T readOtherNumber(const Element& element) {
    using Same = std::conditional_t<sizeof(T) == sizeof(unsigned short), unsigned short,
                                    std::conditional_t<std::is_signed_v<T>, int, unsigned int>>;
    return static_cast<T>(element.to<Same>());
}

template<class T>
T readName(const Element& element) {
    const std::string& text = element.string();
    std::string names;
    for (const EnumName<T>& known : orvidNamesOf(T())) {
        if (text == known.name) {
            return known.value;
        }
        names.append(names.empty() ? "\"" : ", \"").append(known.name) += '"';
    }
    throwNoName(element, names);
}

template<class T>
T readSequence(const Element& element) {
    const Element::TArray& items = element.array();
    T result;
    if constexpr (k_canReserve<T>) {
        result.reserve(items.size());
    }
    for (const Element& item : items) {
        if constexpr (kindOf<T>() == Kind::set) {
            result.insert(item.to<typename T::value_type>());
        } else {
            result.push_back(item.to<typename T::value_type>());
        }
    }
    return result;
}

template<class T>
T readMap(const Element& element) {
    T result;
    for (const auto& member : element.object()) {
        result.emplace(member.first, member.second.template to<typename T::mapped_type>());
    }
    return result;
}

template<class T>
T readArray(const Element& element) {
    const Element::TArray& items = itemsOf(element, std::tuple_size<T>::value);
    T result{};
    auto target = result.begin();
    for (const Element& item : items) {
        *target++ = item.to<typename T::value_type>();
    }
    return result;
}

template<class T, std::size_t... Indexes>
T readTuple(const Element& element, std::index_sequence<Indexes...>) {
    [[maybe_unused]] const Element::TArray& items = itemsOf(element, sizeof...(Indexes));
    return T(items[Indexes].template to<std::remove_cv_t<std::tuple_element_t<Indexes, T>>>()...);
}

/// The type of the elements that a T is read from; etEmpty where several are.
template<class T>
constexpr EType typeOf() {
    switch (kindOf<T>()) {
        case Kind::boolean:
            return etBoolean;
        case Kind::number:
        case Kind::exactNumber:
        case Kind::decimal:
        case Kind::duration:
            return etNumber;
        case Kind::text:
        case Kind::names:
        case Kind::filePath:
            return etString;
        case Kind::fields:
        case Kind::map:
            return etObject;
        case Kind::array:
        case Kind::tuple:
        case Kind::sequence:
        case Kind::set:
            return etArray;
        default:
            return etEmpty;
    }
}

/// An empty type, such as std::monostate, stands for null.
template<class T>
constexpr bool k_isNothing = std::is_empty_v<T>&& kindOf<T>() == Kind::none;

template<class T, class Alternatives>
struct VariantReader;
template<class T, template<class...> class Variant, class... Alternatives>
struct VariantReader<T, Variant<Alternatives...>> {
    static T read(const Element& element) { return readAny<0, Alternatives...>(element); }

private:
    template<std::size_t index, class First, class... Rest>
    static T readAny(const Element& element) {
        if (mayBe<First>(element)) {
            try {
                return readOne<index, First>(element);
            } catch (const std::bad_alloc&) {
                throw;
            } catch (const std::exception&) {
                static_cast<void>(element);  // it may be another alternative
            }
        }
        if constexpr (sizeof...(Rest) == 0) {
            throwNoAlternative(element);
        } else {
            return readAny<index + 1, Rest...>(element);
        }
    }

    template<class First>
    static bool mayBe(const Element& element) {
        constexpr EType type = k_isNothing<First> ? etNull : typeOf<First>();
        return type == etEmpty || type == element.type();
    }

    template<std::size_t index, class First>
    static T readOne([[maybe_unused]] const Element& element) {
        if constexpr (k_isNothing<First>) {
            return T(std::in_place_index<index>);
        } else {
            return T(std::in_place_index<index>, element.to<First>());
        }
    }
};

template<class T, std::size_t... Indexes>
void writeTuple(Element& element, const T& value, std::index_sequence<Indexes...>) {
    using std::get;
    [[maybe_unused]] ItemTarget target(element);
    (target.write(get<Indexes>(value)), ...);
}

template<class T>
void writeName(Element& element, T value) {
    for (const EnumName<T>& known : orvidNamesOf(value)) {
        if (known.value == value) {
            element.setString(known.name);
            return;
        }
    }
    throwNoEnumerator(element, static_cast<long long>(value));
}

template<class T>
void writeItems(Element& element, const T& value) {
    ItemTarget target(element);
    for (const typename T::value_type& item : value) {
        target.write(item);
    }
}

template<class T>
void writeMap(Element& element, const T& value) {
    FieldTarget target(element);
    for (const auto& member : value) {
        target.write(member.first, member.second);
    }
}

template<class T>
struct Converter {
    static T read(const Element& element) {
        static_assert(isReadable<T>(), ORVID_DETAIL_NO_CONVERSION);
        constexpr Kind kind = kindOf<T>();
        if constexpr (!isReadable<T>()) {
            throw std::bad_alloc();  // never reached: only so that there is one error and no other
        } else if constexpr (kind == Kind::function) {
            return readFunction<T>(element);
        } else if constexpr (kind == Kind::fields) {
            return readFields<T>(element);
        } else if constexpr (kind == Kind::element) {
            return T(element);
        } else if constexpr (kind == Kind::null) {
            element.ensureType(etNull);
            return nullptr;
        } else if constexpr (kind == Kind::number) {
            return readOtherNumber<T>(element);
        } else if constexpr (kind == Kind::text || kind == Kind::filePath) {
            return T(element.string());
        } else if constexpr (kind == Kind::names) {
            return readName<T>(element);
        } else if constexpr (kind == Kind::optional) {
            return element.isNull() ? T() : T(element.to<typename T::value_type>());
        } else if constexpr (kind == Kind::duration) {
            return T(element.to<typename T::rep>());
        } else if constexpr (kind == Kind::variant) {
            return VariantReader<T, T>::read(element);
        } else if constexpr (kind == Kind::map) {
            return readMap<T>(element);
        } else if constexpr (kind == Kind::array) {
            return readArray<T>(element);
        } else if constexpr (kind == Kind::tuple) {
            return readTuple<T>(element, std::make_index_sequence<std::tuple_size<T>::value>());
        } else {
            return readSequence<T>(element);
        }
    }

    /// Throws with a part of the value written into the element.
    static void write(Element& element, const T& value) {
        static_assert(isWritable<T>(), ORVID_DETAIL_NO_CONVERSION);
        constexpr Kind kind = kindOf<T>();
        if constexpr (!isWritable<T>()) {
            static_cast<void>(element);
            static_cast<void>(value);
        } else if constexpr (kind == Kind::function) {
            toElement(element, value);
        } else if constexpr (kind == Kind::fields) {
            FieldTarget target(element);
            Fields<T>::write(target, value);
        } else if constexpr (kind == Kind::element) {
            element = value;
        } else if constexpr (kind == Kind::null) {
            element.setNull();
        } else if constexpr (kind == Kind::boolean) {
            element.setBoolean(value);
        } else if constexpr (kind == Kind::number || kind == Kind::exactNumber) {
            element.setNumber(value);
        } else if constexpr (kind == Kind::decimal) {
            element.setNumber(Number(value));
        } else if constexpr (kind == Kind::text) {
            element.setString(std::string_view(value));
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
            if (value.has_value()) {
                writeValue(element, *value);
            } else {
                element.setNull();
            }
        } else if constexpr (kind == Kind::variant) {
            writeAlternative(element, value, static_cast<T*>(nullptr));
        } else {
            writeItems(element, value);
        }
    }

private:
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
    const Place place = find(name);
    if constexpr (kindOf<T>() == Kind::fields) {
        if (!place.isInData && (place.value != nullptr || place.description != nullptr)) {
            FieldSource source(*this, name, place);
            Fields<T>::read(source, field);
            return;
        }
    }
    if (place.value != nullptr) {
        field = place.value->to<T>();
    } else if constexpr (k_isOptional<T>) {
        field = T();
    } else {
        throwMissing(name);
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
