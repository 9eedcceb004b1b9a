// SPDX-License-Identifier: MIT
//
// Where the elements in a container find their parent, and what containers do for these links where
// they are used as the IndexList or ListMap below an Array or Object.

#pragma once

#include <ko/export.h>
#include <ko/Orvid/fwd.h>
#include <ko/Orvid/types.h>

#include <cstdint>
#include <functional>
#include <string>

namespace ko {

template<class T>
class IndexList;
template<class Key, class Value, class Compare>
class ListMap;

}  // namespace ko

namespace ko::Orvid::detail {

using ElementList = IndexList<Element>;
using ElementMap = ListMap<std::string, Element, std::less<std::string>>;

struct Handovers;  // defined in tree/Strays.h

/// The parent that the children of a container name, in the container itself, so that it can take
/// another parent without touching them. A container that has exchanged its children but not
/// updated them notes here whose they are.
class KO_API ParentLink {
public:
    ParentLink() = default;
    ParentLink(const ParentLink&) = delete;
    ParentLink& operator=(const ParentLink&) = delete;

    Element* parent() const noexcept {
        // NOLINTNEXTLINE(performance-no-int-to-ptr): the lowest bit distinguishes it from notes
        return hasNotes() ? notedParent() : reinterpret_cast<Element*>(m_word);
    }
    void setParent(Element* parent) noexcept {
        if (hasNotes()) {
            noteParent(parent);
        } else {
            m_word = reinterpret_cast<std::uintptr_t>(parent);
        }
    }

    bool hasNotes() const noexcept { return (m_word & k_notes) != 0; }
    /// Only where there are notes.
    Handovers& notes() const noexcept {
        // NOLINTNEXTLINE(performance-no-int-to-ptr): see parent()
        return *reinterpret_cast<Handovers*>(m_word - k_notes);
    }
    /// Makes notes, where there are none yet. Throws std::bad_alloc.
    Handovers& needNotes();
    /// Drops notes, where there are some, in which nothing is left.
    void tidy() noexcept;

private:
    static constexpr std::uintptr_t k_notes = 1;

    Element* notedParent() const noexcept;
    void noteParent(Element* parent) noexcept;

    std::uintptr_t m_word = 0;  ///< the parent, or the notes, which name it, with the bit k_notes
};

inline Element* parentOf(const ParentLink* link) noexcept {
    return link == nullptr ? nullptr : link->parent();
}

/// An element's step from its parent: the address of the member's key, beside the element; or twice
/// the index and 1; or 0 without a parent.
inline bool isItem(std::uintptr_t step) noexcept { return (step & 1U) != 0; }
/// k_noIndex of a member.
inline unsigned int indexOf(std::uintptr_t step) noexcept {
    return isItem(step) || step == 0 ? static_cast<unsigned int>(step >> 1U) : k_noIndex;
}
/// Null unless of a member.
inline const std::string* keyOf(std::uintptr_t step) noexcept {
    // NOLINTNEXTLINE(performance-no-int-to-ptr): the lowest bit distinguishes it from an index
    return isItem(step) ? nullptr : reinterpret_cast<const std::string*>(step);
}
inline const std::string& keyOr(std::uintptr_t step, const std::string& none) noexcept {
    const std::string* const key = keyOf(step);
    return key == nullptr ? none : *key;
}

/// See ko::detail::PlacesOf. Children that a container has handed over, but not updated, still
/// name its parent. That is noted, and they learn of their own parent when it ends.
class KO_API ElementPlaces {
public:
    ParentLink& parentLink() noexcept { return m_link; }
    const ParentLink& parentLink() const noexcept { return m_link; }

protected:
    ElementPlaces() = default;
    ~ElementPlaces() = default;

    /// Throws Exception where one of them lies within the other, and std::bad_alloc.
    static void beginExchange(ElementList& a, ElementList& b);
    static void beginExchange(ElementMap& a, ElementMap& b);
    static void renew(ElementMap& map) noexcept;
    void end() noexcept {
        if (m_link.hasNotes()) {
            endNotes();
        }
    }

    ParentLink m_link;

private:
    void endNotes() noexcept;
};

}  // namespace ko::Orvid::detail
