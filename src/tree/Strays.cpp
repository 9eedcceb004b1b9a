// SPDX-License-Identifier: MIT
//
// The list of strays.

#include "tree/Strays.h"

#include <ko/Orvid/Array.h>
#include <ko/Orvid/Object.h>

#include <algorithm>
#include <memory>
#include <mutex>
#include <utility>
#include <vector>

#include "tree/Place.h"

namespace ko::Orvid {

std::atomic<unsigned> Strays::s_count{0};

namespace {

/// Some of the holder's children find their parent at `link`, which is that of another container.
struct Note {
    Element* const* link;
    Strays::Holder holder;
};

using TNotes = std::vector<Note>;

std::mutex s_mutex;
/// Null while there are none. Not a vector itself, which would end before the last elements do.
TNotes* s_notes = nullptr;

const void* addressOf(const Strays::Holder& holder) {
    return std::visit([](const auto* container) -> const void* { return container; }, holder);
}

/// Where the container's own children find their parent; null where it has none to name.
Element* const* linkOf(detail::TElementList& list) {
    auto* const array = dynamic_cast<Element::TArray*>(&list);
    return array == nullptr ? nullptr : &Place::linkOf(*array);
}

Element* const* linkOf(detail::TElementMap& map) {
    auto* const object = dynamic_cast<Element::TObject*>(&map);
    return object == nullptr ? nullptr : &Place::linkOf(*object);
}

Element* const* linkOf(const Strays::Holder& holder) {
    return std::visit([](auto* container) { return linkOf(*container); }, holder);
}

bool isEmpty(const Strays::Holder& holder) {
    return std::visit([](const auto* container) { return container->empty(); }, holder);
}

Element& elementOf(Element& item) { return item; }

Element& elementOf(Element::TObject::value_type& member) { return member.second; }

bool holds(const Strays::Holder& holder, const Element& element) {
    const auto isThere = [&](auto* container) {
        return std::any_of(container->begin(), container->end(),
                           [&](auto& child) { return &elementOf(child) == &element; });
    };
    return std::visit(isThere, holder);
}

void relinkChildren(const Strays::Holder& holder, Element* const* from) {
    Element* const* const to = linkOf(holder);
    const auto relinkAll = [=](auto* container) {
        for (auto& child : *container) {
            Place::relink(elementOf(child), from, to);
        }
    };
    std::visit(relinkAll, holder);
}

/// What the children of `from` bring along to `to`, beyond what they bring already.
void addNote(TNotes& notes, const Strays::Holder& from, const Strays::Holder& to) {
    Element* const* const link = linkOf(from);
    if (link != nullptr && !isEmpty(from)) {
        notes.push_back({link, to});
    }
}

/// All notes with a container in the place of the other.
TNotes exchanged(const Strays::Holder& a, const Strays::Holder& b) {
    TNotes notes = s_notes == nullptr ? TNotes() : *s_notes;
    for (Note& note : notes) {
        if (note.holder == a) {
            note.holder = b;
        } else if (note.holder == b) {
            note.holder = a;
        }
    }
    addNote(notes, a, b);
    addNote(notes, b, a);
    const auto isHome = [](const Note& note) { return linkOf(note.holder) == note.link; };
    notes.erase(std::remove_if(notes.begin(), notes.end(), isHome), notes.end());
    return notes;
}

template<class Matches>
void removeNotes(const Matches& matches) {
    if (s_notes != nullptr) {
        s_notes->erase(std::remove_if(s_notes->begin(), s_notes->end(), matches), s_notes->end());
        if (s_notes->empty()) {
            delete std::exchange(s_notes, nullptr);
        }
    }
}

unsigned countNotes() { return s_notes == nullptr ? 0 : static_cast<unsigned>(s_notes->size()); }

}  // namespace

void Strays::exchange(Holder a, Holder b) {
    const std::lock_guard lock(s_mutex);
    TNotes notes = exchanged(a, b);
    if (notes.empty()) {
        removeNotes([](const Note&) { return true; });
    } else if (s_notes == nullptr) {
        s_notes = new TNotes(std::move(notes));
    } else {
        s_notes->swap(notes);
    }
    s_count = countNotes();
}

// NOLINTNEXTLINE(bugprone-exception-escape): a holder is always one of the two
Element* const* Strays::trueLink(const Element& element) noexcept {
    Element* const* const link = Place::linkOf(element);
    const std::lock_guard lock(s_mutex);
    for (std::size_t i = 0; i < countNotes(); ++i) {
        const Note& note = (*s_notes)[i];
        if (note.link == link && holds(note.holder, element)) {
            return linkOf(note.holder);
        }
    }
    return link;
}

void Strays::forget(const void* holder) noexcept {
    const std::lock_guard lock(s_mutex);
    removeNotes([=](const Note& note) { return addressOf(note.holder) == holder; });
    s_count = countNotes();
}

// NOLINTNEXTLINE(bugprone-exception-escape): a holder is always one of the two
void Strays::relink(Element* const& link) noexcept {
    const std::lock_guard lock(s_mutex);
    if (s_notes != nullptr) {
        for (const Note& note : *s_notes) {
            if (note.link == &link) {
                relinkChildren(note.holder, &link);
            }
        }
    }
    removeNotes([&](const Note& note) { return note.link == &link; });
    s_count = countNotes();
}

}  // namespace ko::Orvid
