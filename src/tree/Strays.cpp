// SPDX-License-Identifier: MIT
//
// The notes of children that name another parent than that of their container.

#include "tree/Strays.h"

#include <ko/Orvid/Array.h>
#include <ko/Orvid/Object.h>

#include <memory>
#include <utility>

#include "tree/Place.h"

namespace ko::Orvid {

namespace detail {

Handovers& ParentLink::needNotes() {
    if (!hasNotes()) {
        auto* const made = new Handovers{parent(), {}, {}, false};
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

bool isElements(const detail::ElementList* list) {
    return dynamic_cast<const Element::TArray*>(list) != nullptr;
}

bool isElements(const detail::ElementMap* map) {
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

/// All children of the container find their parent there from now on.
void relinkChildren(const Holder& holder) {
    const ParentLink* const link = namedLink(holder);
    const auto relinkAll = [link](auto* container) {
        for (auto& child : *container) {
            Place::relink(elementOf(child), link);
        }
    };
    std::visit(relinkAll, holder);
}

/// Those children of the container that find their parent at `from` find it at `to` from now on.
void relinkStrays(const Holder& holder, const ParentLink& from, const ParentLink& to) {
    const auto relinkEach = [&](auto* container) {
        for (auto& child : *container) {
            Element& element = elementOf(child);
            if (Place::linkOf(element) == &from) {
                Place::relink(element, &to);
            }
        }
    };
    std::visit(relinkEach, holder);
}

/// Drops notes in which nothing is left, and a link that only they needed.
void tidy(ParentLink* origin) noexcept {
    const bool isLeft = origin->notes().isLeft;
    origin->tidy();
    if (isLeft && !origin->hasNotes()) {
        delete origin;
    }
}

/// A note that is ready to be made, for which no memory will be needed then.
class Note {
public:
    Note(const Holder& from, const Holder& to)
        : m_origin(linkOf(from)), m_holder(linkOf(to)), m_isNeeded(canBeNamed(from)) {
        if (m_isNeeded) {
            m_holders.emplace(&m_holder, to);
            m_origins.insert(&m_origin);
        }
        m_origin.needNotes();
    }
    ~Note() { m_origin.tidy(); }
    Note(const Note&) = delete;
    Note& operator=(const Note&) = delete;

    /// Children of the origin go to the holder; those that come back from there are at home.
    void make() noexcept {
        m_origin.notes().holders.merge(m_holders);
        m_holder.notes().origins.merge(m_origins);
        m_origin.notes().holders.erase(&m_origin);
        m_origin.notes().origins.erase(&m_origin);
    }

private:
    static bool canBeNamed(const Holder& from) {
        return namedLink(from) != nullptr && !isEmpty(from);
    }

    ParentLink& m_origin;
    ParentLink& m_holder;
    bool m_isNeeded;
    Handovers::HolderMap m_holders;
    Handovers::Origins m_origins;
};

/// Renames a holder wherever it is noted, except where the other one is noted as well.
void renameHolder(const Holder& from, const Holder& to) {
    const Handovers::Origins& others = linkOf(to).notes().origins;
    for (ParentLink* const origin : linkOf(from).notes().origins) {
        if (others.count(origin) == 0) {
            Handovers::HolderMap& holders = origin->notes().holders;
            auto note = holders.extract(&linkOf(from));
            note.key() = &linkOf(to);
            note.mapped() = to;
            holders.insert(std::move(note));
        }
    }
}

/// What is noted for the children of the one is noted for those of the other from now on.
void exchangeOrigins(const Holder& a, const Holder& b) {
    renameHolder(a, b);
    renameHolder(b, a);
    linkOf(a).notes().origins.swap(linkOf(b).notes().origins);
}

}  // namespace

void Strays::exchange(const Holder& a, const Holder& b) {
    Note there(a, b);
    Note back(b, a);
    exchangeOrigins(a, b);
    there.make();
    back.make();
}

void Strays::keepParent(ParentLink& link) {
    if (link.notes().holders.empty()) {
        return;
    }
    auto left = std::make_unique<ParentLink>();
    left->setParent(link.parent());
    left->needNotes().isLeft = true;
    left->notes().holders.swap(link.notes().holders);
    for (const auto& [holderLink, holder] : left->notes().holders) {
        relinkStrays(holder, link, *left);
        Handovers::Origins& origins = linkOf(holder).notes().origins;
        auto origin = origins.extract(&link);
        origin.value() = left.get();
        origins.insert(std::move(origin));
    }
    link.tidy();
    static_cast<void>(left.release());  // tidy() deletes it with the last note of it
    // NOLINTNEXTLINE(clang-analyzer-cplusplus.NewDeleteLeaks): there is a holder, which notes it
}

void Strays::forget(ParentLink& holder) noexcept {
    for (ParentLink* const origin : holder.notes().origins) {
        origin->notes().holders.erase(&holder);
        tidy(origin);
    }
    holder.notes().origins.clear();
    holder.tidy();
}

// NOLINTNEXTLINE(bugprone-exception-escape): a holder is always one of the two
void Strays::relink(ParentLink& link) noexcept {
    while (link.hasNotes() && !link.notes().holders.empty()) {
        const Holder holder = link.notes().holders.begin()->second;
        relinkChildren(holder);
        forget(linkOf(holder));
    }
}

}  // namespace ko::Orvid
