// SPDX-License-Identifier: MIT
//
// Arrays and objects written down as values: makeArray({1, "two", nullptr}) and
// makeObject({{"name", "x"}, {"size", 3}}).

#pragma once

#include <ko/export.h>
#include <ko/Orvid/Element.h>

#include <cstddef>
#include <initializer_list>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

namespace ko::Orvid {

/// A value in the list of makeArray() or makeObject(): whatever an Element can be made of, and
/// every other value that converts. It exists until the call is over and is moved from there. Costs
/// what making the Element does; take() is O(1).
class BuildValue {
public:
    template<class T, class = std::enable_if_t<std::is_constructible_v<Element, T&&>>>
    BuildValue(T&& value) : m_element(std::forward<T>(value)) {}
    template<class T, class = std::enable_if_t<!std::is_constructible_v<Element, const T&>>,
             detail::IfConverted<T> = 0>
    BuildValue(const T& value) : m_element(Element::from(value)) {}

    /// Although the items of a std::initializer_list are constant, this one may be moved from.
    Element&& take() const noexcept { return std::move(m_element); }

private:
    mutable Element m_element;
};

/// A member in the list of makeObject(), which copies the key.
struct BuildMember {
    std::string_view key;
    BuildValue value;
};

/// An array of these items, moved where they are temporary. Throws std::bad_alloc. Constant cost
/// for each item that is moved.
KO_API Element makeArray(std::initializer_list<BuildValue> items);
/// An object of these members, in this order; of a repeated key the last value counts, in the first
/// place. Throws std::bad_alloc. O(log n) for each member that is moved.
KO_API Element makeObject(std::initializer_list<BuildMember> members);

}  // namespace ko::Orvid
