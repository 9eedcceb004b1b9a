// SPDX-License-Identifier: MIT
//
// Strays, the children that still name the parent of a container which has handed them over without
// telling them: Array::swap() and Object::swap() leave the other's children so, and a swap through
// the IndexList or ListMap below leaves both so. That is rare, so it is noted in one list for the
// whole program, which costs a look at a counter wherever there is nothing to do.

#pragma once

#include <ko/Orvid/detail/Places.h>

#include <atomic>
#include <variant>

namespace ko::Orvid {

class Strays {
public:
    using Holder = std::variant<detail::TElementList*, detail::TElementMap*>;

    static bool any() noexcept { return s_count.load(std::memory_order_relaxed) != 0; }

    /// Notes that two containers are about to exchange their children, telling none of them.
    /// Throws std::bad_alloc, having noted nothing.
    static void exchange(Holder a, Holder b);

    /// The link of the container that holds the element, which may name another one's parent.
    // NOLINTNEXTLINE(bugprone-exception-escape): a holder is always one of the two
    static Element* const* trueLink(const Element& element) noexcept;

    /// All children of that container name its own parent now, or there are none.
    static void settle(const void* holder) noexcept {
        if (any()) {
            forget(holder);
        }
    }

    /// A container ends, whose children found their parent at `link`: those that are elsewhere now
    /// learn where that is.
    // NOLINTNEXTLINE(bugprone-exception-escape): a holder is always one of the two
    static void comeHome(Element* const& link) noexcept {
        if (any()) {
            relink(link);
        }
    }

private:
    static void forget(const void* holder) noexcept;
    // NOLINTNEXTLINE(bugprone-exception-escape): a holder is always one of the two
    static void relink(Element* const& link) noexcept;

    static std::atomic<unsigned> s_count;  ///< of notes
};

}  // namespace ko::Orvid
