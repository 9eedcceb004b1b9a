// SPDX-License-Identifier: MIT
//
// What a container keeps and does for the places of its items where these know them, as the
// children of an element do.

#pragma once

#include <type_traits>

namespace ko::detail {

/// T::Places where T names one, or else nothing to do. A base of the containers of T.
template<class T, class = void>
class PlacesOf {
protected:
    /// Before two containers exchange their items, which are not updated.
    template<class Container>
    static void beginExchange(const Container& /*a*/, const Container& /*b*/) noexcept {}
    /// After a container was given other items, which are to learn their place.
    template<class Container>
    static void renew(const Container& /*container*/) noexcept {}
    /// At the end of a container.
    void end() noexcept {}
};

template<class T>
class PlacesOf<T, std::void_t<typename T::Places>> : public T::Places {};

}  // namespace ko::detail
