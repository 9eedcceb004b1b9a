// SPDX-License-Identifier: MIT
//
// Reading values of C++ from elements, one function for each kind of type.

#pragma once

#include <ko/export.h>
#include <ko/Orvid/Array.h>
#include <ko/Orvid/detail/ConvertTraits.h>
#include <ko/Orvid/detail/FieldSource.h>
#include <ko/Orvid/Object.h>

#include <cstddef>
#include <exception>
#include <new>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

namespace ko::Orvid::detail {

/// The array's items, as many as T takes. Throws TypeException, and Exception for another number.
KO_API const Element::TArray& itemsOf(const Element& element, std::size_t size);
[[noreturn]] KO_API void throwNoAlternative(const ReadContext& context);
[[noreturn]] KO_API void throwNoName(const Element& element, const std::string& names);

template<class T, class Alternatives>
struct VariantReader;

/// Whether Element::to() reads a T itself.
template<class T>
constexpr bool k_isSimple = std::is_same_v<T, bool> || Number::k_isReadable<T> ||
                            std::is_same_v<T, Number> || std::is_same_v<T, DecNumber> ||
                            std::is_same_v<T, std::string> || std::is_same_v<T, std::string_view>;
template<class T>
constexpr bool k_isSimple<const T> = k_isSimple<T>;

/// The value as T, which may be constant, as in std::optional<const int>. There is one, except
/// where canBeMade() says that none is needed.
template<class T>
std::remove_cv_t<T> readValue(const ReadContext& context) {
    if constexpr (k_isSimple<T>) {
        return context.value()->to<T>();
    } else {
        return Converter<std::remove_cv_t<T>>::readAt(context);
    }
}

/// An item or member of the value.
template<class T>
std::remove_cv_t<T> readPart(const ReadContext& whole, const Element& part) {
    if constexpr (k_isSimple<T>) {
        return part.to<T>();
    } else {
        return Converter<std::remove_cv_t<T>>::readAt(ReadContext(whole, part));
    }
}

/// Whether a T can be read although neither the data nor the schema has a value: an object of whose
/// members the schema has a default for one.
template<class T>
bool canBeMade([[maybe_unused]] const ReadContext& context) {
    using Value = std::remove_cv_t<T>;
    constexpr Kind kind = kindOf<Value>();
    if constexpr (kind == Kind::fields) {
        return context.isPromising();
    } else if constexpr (kind == Kind::optional) {
        return canBeMade<typename T::value_type>(context);
    } else if constexpr (kind == Kind::variant) {
        return VariantReader<Value, Value>::canBeMade(context);
    } else {
        return false;
    }
}

template<class T>
T readOptional(const ReadContext& context) {
    const bool isNull = context.value() != nullptr && context.value()->isNull();
    return isNull ? T() : T(readValue<typename T::value_type>(context));
}

template<class T>
T readFunction(const Element& element) {
    T value{};
    fromElement(element, value);
    return value;
}

template<class T>
T readFields(const ReadContext& context) {
    FieldSource source(context);
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
T readSequence(const ReadContext& context) {
    const Element::TArray& items = context.value()->array();
    T result;
    if constexpr (k_canReserve<T>) {
        result.reserve(items.size());
    }
    for (const Element& item : items) {
        if constexpr (kindOf<T>() == Kind::set) {
            result.insert(readPart<typename T::value_type>(context, item));
        } else {
            result.push_back(readPart<typename T::value_type>(context, item));
        }
    }
    return result;
}

template<class T>
T readMap(const ReadContext& context) {
    T result;
    for (const auto& member : context.value()->object()) {
        result.emplace(member.first, readPart<typename T::mapped_type>(context, member.second));
    }
    return result;
}

template<class T>
T readArray(const ReadContext& context) {
    const Element::TArray& items = itemsOf(*context.value(), std::tuple_size<T>::value);
    T result{};
    auto target = result.begin();
    for (const Element& item : items) {
        *target++ = readPart<typename T::value_type>(context, item);
    }
    return result;
}

template<class T, std::size_t... Indexes>
T readTuple(const ReadContext& context, std::index_sequence<Indexes...>) {
    [[maybe_unused]] const Element::TArray& items = itemsOf(*context.value(), sizeof...(Indexes));
    return T(
        readPart<std::remove_cv_t<std::tuple_element_t<Indexes, T>>>(context, items[Indexes])...);
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

template<class T, template<class...> class Variant, class... Alternatives>
struct VariantReader<T, Variant<Alternatives...>> {
    static T read(const ReadContext& context) { return readAny<0, Alternatives...>(context); }

    static bool canBeMade(const ReadContext& context) {
        return (detail::canBeMade<Alternatives>(context) || ...);
    }

private:
    template<std::size_t index, class First, class... Rest>
    static T readAny(const ReadContext& context) {
        if (mayBe<First>(context)) {
            try {
                return readOne<index, First>(context);
            } catch (const std::bad_alloc&) {
                throw;
            } catch (const std::exception&) {
                static_cast<void>(context);  // it may be another alternative
            }
        }
        if constexpr (sizeof...(Rest) == 0) {
            throwNoAlternative(context);
        } else {
            return readAny<index + 1, Rest...>(context);
        }
    }

    template<class First>
    static bool mayBe(const ReadContext& context) {
        constexpr EType type = k_isNothing<First> ? etNull : typeOf<std::remove_cv_t<First>>();
        return context.value() == nullptr ? detail::canBeMade<First>(context)
                                          : type == etEmpty || type == context.value()->type();
    }

    template<std::size_t index, class First>
    static T readOne([[maybe_unused]] const ReadContext& context) {
        if constexpr (k_isNothing<First>) {
            return T(std::in_place_index<index>);
        } else {
            return T(std::in_place_index<index>, readValue<First>(context));
        }
    }
};

}  // namespace ko::Orvid::detail
