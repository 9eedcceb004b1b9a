// SPDX-License-Identifier: MIT
//
// The notes of children that name another parent than that of their container.

#include "tree/Strays.h"

#include <ko/Orvid/Array.h>
#include <ko/Orvid/Object.h>

#include <algorithm>
#include <memory>

#include "tree/Place.h"

namespace ko::Orvid {

namespace detail {

Handovers& ParentLink::needNotes() {
    if (!hasNotes()) {
        auto* const made = new Handovers{parent(), {}, {}};
        m_word = reinterpret_cast<std::uintptr_t>(made) | k_notes;
    }
    return notes();
}

void ParentLink::tidy() noexcept {
    if (hasNotes() && notes().holders.empty() && notes().origins.empty()) {
        const std::unique_ptr<Handovers> former(&notes());
        m_word = reinterpret_cast<std::uintptr_t>(former->parent);
    }
}

Element* ParentLink::notedParent() const noexcept { return notes().parent; }

void ParentLink::noteParent(Element* parent) noexcept { notes().parent = parent; }

}  // namespace detail

namespace {

using detail::Handovers;
using detail::ParentLink;
using Holder = Strays::Holder;

ParentLink& linkOf(const Holder& holder) {
    return std::visit([](auto* container) -> ParentLink& { return container->parentLink(); },
                      holder);
}

bool isElements(const detail::TElementList* list) {
    return dynamic_cast<const Element::TArray*>(list) != nullptr;
}

bool isElements(const detail::TElementMap* map) {
    return dynamic_cast<const Element::TObject*>(map) != nullptr;
}

/// Where the container's own children find their parent; null where it has none to name.
const ParentLink* namedLink(const Holder& holder) {
    return std::visit([](auto* container) { return isElements(container); }, holder)
               ? &linkOf(holder)
               : nullptr;
}

bool isEmpty(const Holder& holder) {
    return std::visit([](const auto* container) { return container->empty(); }, holder);
}

Element& elementOf(Element& item) { return item; }

Element& elementOf(Element::TObject::value_type& member) { return member.second; }

bool holds(const Holder& holder, const Element& element) {
    const auto isThere = [&](auto* container) {
        return std::any_of(container->begin(), container->end(),
                           [&](auto& child) { return &elementOf(child) == &element; });
    };
    return std::visit(isThere, holder);
}

void relinkChildren(const Holder& holder, const ParentLink* from) {
    const ParentLink* const to = namedLink(holder);
    const auto relinkAll = [=](auto* container) {
        for (auto& child : *container) {
            Place::relink(elementOf(child), from, to);
        }
    };
    std::visit(relinkAll, holder);
}

template<class Notes, class Note>
bool contains(const Notes& notes, const Note& note) {
    return std::find(notes.begin(), notes.end(), note) != notes.end();
}

template<class Notes, class Matches>
void removeNotes(Notes& notes, const Matches& matches) {
    notes.erase(std::remove_if(notes.begin(), notes.end(), matches), notes.end());
}

void removeHolder(ParentLink& origin, const ParentLink& holder) {
    removeNotes(origin.notes().holders,
                [&](const Holder& each) { return &linkOf(each) == &holder; });
}

void removeOrigin(ParentLink& holder, const ParentLink& origin) {
    removeNotes(holder.notes().origins, [&](const ParentLink* each) { return each == &origin; });
}

/// Makes room for all that exchange() may add. Throws std::bad_alloc.
void prepare(const Holder& holder, const Holder& other) {
    Handovers& notes = linkOf(holder).needNotes();
    const Handovers& others = linkOf(other).needNotes();
    notes.holders.reserve(notes.holders.size() + 1);
    notes.origins.reserve(notes.origins.size() + others.origins.size() + 1);
}

/// What is noted of the children of the one is true of the other's from now on.
void exchangeOrigins(const Holder& a, const Holder& b) {
    std::vector<ParentLink*>& left = linkOf(a).notes().origins;
    std::vector<ParentLink*>& right = linkOf(b).notes().origins;
    const auto rename = [&](const ParentLink* origin) {
        for (Holder& holder : origin->notes().holders) {
            holder = holder == a ? b : holder == b ? a : holder;
        }
    };
    std::for_each(left.begin(), left.end(), rename);
    std::for_each(right.begin(), right.end(), [&](const ParentLink* origin) {
        if (!contains(left, origin)) {
            rename(origin);
        }
    });
    left.swap(right);
}

/// The children of `from`, which name its parent, go to `to`; those of its own that came back with
/// them are at home.
void noteChildren(const Holder& from, const Holder& to) {
    ParentLink& origin = linkOf(from);
    ParentLink& holder = linkOf(to);
    if (namedLink(from) != nullptr && !isEmpty(from) &&
        !contains(holder.notes().origins, &origin)) {
        holder.notes().origins.push_back(&origin);
        origin.notes().holders.push_back(to);
    }
    removeHolder(origin, origin);
    removeOrigin(origin, origin);
}

}  // namespace

void Strays::exchange(const Holder& a, const Holder& b) {
    try {
        prepare(a, b);
        prepare(b, a);
    } catch (...) {
        linkOf(a).tidy();
        linkOf(b).tidy();
        throw;
    }
    exchangeOrigins(a, b);
    noteChildren(a, b);
    noteChildren(b, a);
    linkOf(a).tidy();
    linkOf(b).tidy();
}

// NOLINTNEXTLINE(bugprone-exception-escape): a holder is always one of the two
const ParentLink* Strays::trueLink(const Element& element, const ParentLink& link) noexcept {
    for (const Holder& holder : link.notes().holders) {
        if (holds(holder, element)) {
            return namedLink(holder);
        }
    }
    return &link;
}

void Strays::forget(ParentLink& holder) noexcept {
    for (ParentLink* const origin : holder.notes().origins) {
        removeHolder(*origin, holder);
        origin->tidy();
    }
    holder.notes().origins.clear();
    holder.tidy();
}

// NOLINTNEXTLINE(bugprone-exception-escape): a holder is always one of the two
void Strays::relink(ParentLink& link) noexcept {
    for (const Holder& holder : link.notes().holders) {
        relinkChildren(holder, &link);
        removeOrigin(linkOf(holder), link);
        linkOf(holder).tidy();
    }
    link.notes().holders.clear();
    link.tidy();
}

}  // namespace ko::Orvid
