// SPDX-License-Identifier: MIT
//
// visit(), which calls a function with what an element holds.

#pragma once

#include <ko/Orvid/Array.h>
#include <ko/Orvid/Element.h>
#include <ko/Orvid/Object.h>

#include <cstddef>
#include <type_traits>
#include <utility>
#include <variant>

namespace ko::Orvid {

namespace detail {

template<class Visitor, class Held>
decltype(auto) visitHeld(Visitor&& visitor, Held& element) {
    using Result = std::invoke_result_t<Visitor, const std::nullptr_t&>;
    static constexpr std::nullptr_t null = nullptr;
    switch (element.type()) {
        case etBoolean:
            return static_cast<Result>(std::forward<Visitor>(visitor)(element.boolean()));
        case etNumber:
            return static_cast<Result>(std::forward<Visitor>(visitor)(element.number()));
        case etString:
            return static_cast<Result>(std::forward<Visitor>(visitor)(element.string()));
        case etObject:
            return static_cast<Result>(std::forward<Visitor>(visitor)(element.object()));
        case etArray:
            return static_cast<Result>(std::forward<Visitor>(visitor)(element.array()));
        case etEmpty:
            if constexpr (std::is_invocable_v<Visitor, const std::monostate&>) {
                static constexpr std::monostate nothing;
                return static_cast<Result>(std::forward<Visitor>(visitor)(nothing));
            }
            [[fallthrough]];
        default:
            return static_cast<Result>(std::forward<Visitor>(visitor)(null));
    }
}

}  // namespace detail

///@{
/// Calls the visitor with what the element holds: std::nullptr_t, bool, Number, std::string,
/// Element::TObject or Element::TArray, by a reference to the payload (const for a const element).
/// An element of type etEmpty is a std::monostate for a visitor that accepts one, and else a
/// nullptr. Returns what the visitor returns; what it returns for nullptr decides the type. Costs
/// the visitor's call.
template<class Visitor>
decltype(auto) visit(Visitor&& visitor, const Element& element) {
    return detail::visitHeld(std::forward<Visitor>(visitor), element);
}
template<class Visitor>
decltype(auto) visit(Visitor&& visitor, Element& element) {
    return detail::visitHeld(std::forward<Visitor>(visitor), element);
}
///@}

}  // namespace ko::Orvid
