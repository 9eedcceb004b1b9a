// SPDX-License-Identifier: MIT
//
// What a container does for the places of its items where these know them, as the children of an
// element do.

#pragma once

#include <type_traits>

namespace ko::detail {

/// T::Places where T names one, or else nothing to do.
template<class T, class = void>
struct PlacesOf {
    /// Before two containers exchange their items without telling these.
    template<class Container>
    static void beginExchange(const Container& /*a*/, const Container& /*b*/) noexcept {}
    /// After a container was given other items, which are to learn their place.
    template<class Container>
    static void renew(const Container& /*container*/) noexcept {}
    /// At the end of a container.
    template<class Container>
    static void end(const Container& /*container*/) noexcept {}
};

template<class T>
struct PlacesOf<T, std::void_t<typename T::Places>> : T::Places {};

}  // namespace ko::detail
