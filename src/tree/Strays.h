// SPDX-License-Identifier: MIT
//
// Strays, the children that still name the parent of a container which has handed them over without
// updating them: Array::swap() and Object::swap() leave the other's children so, and a swap through
// the IndexList or ListMap below leaves both so. That is rare, so it is noted in place of the
// parent's address in the containers concerned, which costs a look at one bit elsewhere.

#pragma once

#include <ko/Orvid/detail/Places.h>

#include <map>
#include <set>
#include <variant>

namespace ko::Orvid {

class Strays {
public:
    using Holder = std::variant<detail::ElementList*, detail::ElementMap*>;

    /// Notes that two containers are about to exchange their children and update none of them.
    /// Throws std::bad_alloc, with no effect.
    static void exchange(const Holder& a, const Holder& b);

    /// All children of that container name its own parent now, or there are none.
    static void settle(detail::ParentLink& holder) noexcept {
        if (holder.hasNotes()) {
            forget(holder);
        }
    }

    /// Those children that find their parent at `link` but are elsewhere now learn where that is,
    /// with all that are there. Linear in the number of these.
    // NOLINTNEXTLINE(bugprone-exception-escape): a holder is always one of the two
    static void comeHome(detail::ParentLink& link) noexcept {
        if (link.hasNotes()) {
            relink(link);
        }
    }

    /// Those children that find their parent at `link` but are elsewhere now keep that parent,
    /// whatever parent `link` is given afterwards. Linear in the number of children of the
    /// containers that hold them. Throws std::bad_alloc, with no effect.
    static void stayBehind(detail::ParentLink& link) {
        if (link.hasNotes()) {
            keepParent(link);
        }
    }

private:
    static void keepParent(detail::ParentLink& link);
    static void forget(detail::ParentLink& holder) noexcept;
    // NOLINTNEXTLINE(bugprone-exception-escape): a holder is always one of the two
    static void relink(detail::ParentLink& link) noexcept;
};

/// The notes of one container. A container is among another's `holders` where that one is among its
/// `origins`.
struct detail::Handovers {
    using HolderMap = std::map<const ParentLink*, Strays::Holder>;
    using Origins = std::set<ParentLink*>;

    Element* parent;
    /// The containers, by their links, in which there may be children that find their parent here.
    HolderMap holders;
    /// Where children of this container may find a parent, other than here.
    Origins origins;
    /// Whether this is no container's link but one that strays alone refer to, which ends with
    /// them.
    bool isLeft = false;
};

}  // namespace ko::Orvid
