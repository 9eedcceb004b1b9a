// SPDX-License-Identifier: MIT
//
// What a container keeps for its items besides the items, and hands on together with them when two
// containers exchange what they hold. ko::Orvid::Element keeps its parent link there.

#pragma once

#include <type_traits>

namespace ko {

/// `Type` is T::Companion where T names one, which must be default constructible and movable, or
/// else an empty type.
template<class T, class = void>
struct CompanionOf {
    struct Type {};
};

template<class T>
struct CompanionOf<T, std::void_t<typename T::Companion>> {
    using Type = typename T::Companion;
};

}  // namespace ko
