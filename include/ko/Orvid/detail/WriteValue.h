// SPDX-License-Identifier: MIT
//
// Writing values of C++ into elements, one function for each kind of type.

#pragma once

#include <ko/export.h>
#include <ko/Orvid/detail/ConvertTraits.h>
#include <ko/Orvid/detail/FieldSource.h>

#include <cstddef>
#include <string_view>
#include <type_traits>
#include <utility>

namespace ko::Orvid::detail {

template<std::size_t>
void get_if();  // so that get_if<0>(...) is read as a call, which then finds that of std::variant

[[noreturn]] KO_API void throwNoEnumerator(const Element& element, long long value);

/// The function gets an element of type etEmpty, which create() makes a container.
template<class T>
void writeFunction(Element& element, const T& value) {
    element = Element::k_emptyElement;
    toElement(element, value);
    if (element.isEmpty()) {
        element.setNull();
    }
}

template<class T, std::size_t... Indexes>
void writeTuple(Element& element, const T& value, std::index_sequence<Indexes...>) {
    using std::get;
    [[maybe_unused]] ItemTarget target(element);
    (target.write(get<Indexes>(value)), ...);
}

/// A pointer may be null, and then the value is.
template<class T>
void writeText(Element& element, const T& value) {
    if constexpr (std::is_pointer<T>::value) {
        if (value == nullptr) {
            element.setNull();
            return;
        }
    }
    element.setString(std::string_view(value));
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

}  // namespace ko::Orvid::detail
