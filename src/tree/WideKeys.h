// SPDX-License-Identifier: MIT
//
// WideKeys: the keys of wide objects while they are read. A table of their hashes takes a
// tenth of the time of an index in the order of the keys, and is gone when the object ends.

#pragma once

#include <ko/detail/sameBytes.h>
#include <ko/Orvid/Object.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <limits>
#include <new>
#include <string_view>
#include <vector>

namespace ko::Orvid {

/// The keys of one object, each of whose members was added. Gives up for good where many keys have
/// similar hashes, which may be an attack, or where memory runs out: so each operation has constant
/// cost (amortised), and none throws.
template<class Hash = std::hash<std::string_view>>
class WideKeys {
public:
    using Member = Element::TObject::value_type;

    bool hasGivenUp() const noexcept { return m_hasGivenUp; }
    std::size_t size() const noexcept { return m_members.size(); }

    /// The member with that key; null where there is none, or where this has given up.
    Member* find(std::string_view key) noexcept {
        m_hash = static_cast<std::uint32_t>(Hash()(key));
        const bool isKnown = seek([&](std::uint32_t number) {
            const std::string_view present = m_members[number - 1]->first;
            return present.size() == key.size() &&
                   ko::detail::sameBytes(present.data(), key.data(), key.size());
        });
        return isKnown ? m_members[m_slots[m_slot].number - 1] : nullptr;
    }

    /// Its key was looked up last, and not found.
    void add(Member& member) noexcept {
        try {
            if (!m_hasGivenUp && 2 * (m_members.size() + 1) > m_slots.size()) {
                grow();
            }
            if (!m_hasGivenUp) {
                m_members.push_back(&member);
                m_slots[m_slot] = {m_hash, static_cast<std::uint32_t>(m_members.size())};
            }
        } catch (const std::bad_alloc&) {
            giveUp();
        }
    }

private:
    /// Half of the table is free, so that nearly all runs of taken slots are shorter.
    static constexpr std::size_t k_mostSteps = 128;
    static constexpr std::size_t k_fewestSlots = 512;

    struct Slot {
        std::uint32_t hash;
        std::uint32_t number;  ///< of the member, from 1; 0 for none
    };

    /// Goes to the slot of the member with m_hash that `isMeant`, or to the free one for it.
    /// Returns whether there is such a member.
    template<class IsMeant>
    bool seek(const IsMeant& isMeant) noexcept {
        for (std::size_t step = 0; step < k_mostSteps && !m_slots.empty(); ++step) {
            m_slot = (m_hash + step) & (m_slots.size() - 1);
            const Slot slot = m_slots[m_slot];
            if (slot.number == 0) {
                return false;
            }
            if (slot.hash == m_hash && isMeant(slot.number)) {
                return true;
            }
        }
        if (!m_slots.empty()) {
            giveUp();
        }
        return false;
    }

    /// Makes the table twice as large, and goes to the slot for m_hash in it.
    void grow() {
        if (m_members.size() > std::numeric_limits<std::uint32_t>::max() / 4) {
            throw std::bad_alloc();
        }
        std::vector<Slot> former(std::max(k_fewestSlots, 2 * m_slots.size()));
        former.swap(m_slots);
        const auto none = [](std::uint32_t /*number*/) { return false; };
        const std::uint32_t wanted = m_hash;
        for (const Slot& slot : former) {
            if (slot.number != 0) {
                m_hash = slot.hash;
                static_cast<void>(seek(none));
                if (m_hasGivenUp) {
                    return;
                }
                m_slots[m_slot] = slot;
            }
        }
        m_hash = wanted;
        static_cast<void>(seek(none));
    }

    void giveUp() noexcept {
        m_hasGivenUp = true;
        m_members = {};
        m_slots = {};
    }

    std::vector<Member*> m_members;
    std::vector<Slot> m_slots;  ///< their number is a power of two
    bool m_hasGivenUp = false;
    // Of the key that was looked up last.
    std::uint32_t m_hash = 0;
    std::size_t m_slot = 0;
};

/// The tables of the objects that are open in each other.
class OpenWideKeys {
public:
    using Object = Element::TObject;

    /// The table of the object, to which members are about to be added; null where the object's own
    /// index is to be used. It is made when the object has `k_least` members: a table that is made
    /// later, such as with each piece of a text, would cost more than it saves.
    WideKeys<>* of(Object& object) {
        if (object.size() == k_least && !isLast(object)) {
            open(object);
        }
        return isLast(object) && m_open.back().keys.size() == object.size() ? &m_open.back().keys
                                                                            : nullptr;
    }
    /// No further member will be added to the object.
    void close(const Object& object) noexcept {
        if (isLast(object)) {
            m_open.pop_back();
        }
    }
    /// Forgets all, since members may have been removed.
    void clear() noexcept { m_open.clear(); }

    static constexpr std::size_t k_least = 64;

private:
    struct Open {
        const Object* object;
        WideKeys<> keys;
    };

    bool isLast(const Object& object) const noexcept {
        return !m_open.empty() && m_open.back().object == &object;
    }
    void open(Object& object) {
        WideKeys<>& keys = m_open.emplace_back(Open{&object, {}}).keys;
        for (Object::value_type& member : object) {
            static_cast<void>(keys.find(member.first));
            keys.add(member);
        }
    }

    std::vector<Open> m_open;
};

}  // namespace ko::Orvid
