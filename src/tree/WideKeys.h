// SPDX-License-Identifier: MIT
//
// WideKeys: the keys of wide objects while they are read. A few bits for each of them say of nearly
// every key that it is new. For the others their hashes are searched, in the order of the members
// at first; where that is often needed, in a table. It takes less than a tenth of the time of an
// index in the order of the keys, and all is gone when the object ends.

#pragma once

#include <ko/detail/sameBytes.h>
#include <ko/Orvid/Object.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <new>
#include <string_view>
#include <vector>

#include "core/HashMix.h"

namespace ko::Orvid {

/// Without a secret: of keys that were made to have one hash, WideKeys takes only so many.
struct WideKeyHash {
    std::size_t operator()(std::string_view key) const noexcept {
        return mixed(std::size_t{1}, hashOfText(key));
    }
};

/// The keys of one object, each of whose members was added. Gives up for good where many keys have
/// similar hashes, which may be an attack, or where memory runs out: so each operation has constant
/// cost (amortised), and none throws.
template<class Hash = WideKeyHash>
class WideKeys {
public:
    using Member = Element::TObject::value_type;

    bool hasGivenUp() const noexcept { return m_hasGivenUp; }
    std::size_t size() const noexcept { return m_members.size(); }

    /// The member with that key; null where there is none, or where this has given up.
    Member* find(std::string_view key) noexcept {
        m_hash = static_cast<std::uint32_t>(Hash()(key));
        m_bits = bitsOf(m_hash);
        const bool isNew = m_seen.empty() || (m_seen[wordOf(m_hash)] & m_bits) != m_bits;
        return isNew ? nullptr : seek(key);
    }

    /// Its key was looked up last, and not found.
    void add(Member& member) noexcept {
        if (m_hashes.size() == m_room && !widen()) {
            return;
        }
        m_hashes.push_back(m_hash);
        m_members.push_back(&member);
        m_seen[wordOf(m_hash)] |= m_bits;
    }

private:
    /// Half of the table is free, so that nearly all runs of taken slots are shorter.
    static constexpr std::size_t k_mostSteps = 128;
    static constexpr std::size_t k_fewestSlots = 512;
    /// So of ten thousand new keys, a few are searched for in vain.
    static constexpr std::size_t k_keysOfWord = 2;
    static constexpr std::size_t k_fewestWords = 64;
    static constexpr std::size_t k_widening = 4;
    /// How many hashes, for each member, are compared one by one before there is a table.
    static constexpr std::size_t k_mostCompared = 32;
    static constexpr std::size_t k_block = 256;  ///< of hashes that are compared together

    struct Slot {
        std::uint32_t hash;
        std::uint32_t number;  ///< of the member, from 1; 0 for none
    };

    std::size_t wordOf(std::uint32_t hash) const noexcept { return hash & m_mask; }
    static std::uint64_t bitsOf(std::uint32_t hash) noexcept {
        const std::uint64_t spread = hash * k_multiplier;
        const auto bit = [=](unsigned shift) {
            return std::uint64_t{1} << (spread >> shift & 63U);
        };
        return bit(58) | bit(52) | bit(46) | bit(40);
    }

    /// Makes room for further members. Returns whether there is any.
    [[gnu::noinline]] bool widen() noexcept {
        try {
            if (!m_hasGivenUp) {
                widenTo(std::max(k_fewestWords, k_widening * m_seen.size()));
            }
        } catch (const std::bad_alloc&) {
            giveUp();
        }
        return !m_hasGivenUp;
    }
    void widenTo(std::size_t words) {
        m_hashes.reserve(k_keysOfWord * words);
        m_members.reserve(k_keysOfWord * words);
        m_seen = std::vector<std::uint64_t>(words);
        m_mask = words - 1;
        m_room = k_keysOfWord * words;
        for (const std::uint32_t hash : m_hashes) {
            m_seen[wordOf(hash)] |= bitsOf(hash);
        }
    }

    /// The member with that key and m_hash, which may be there.
    [[gnu::noinline]] Member* seek(std::string_view key) noexcept {
        if (m_compared / k_mostCompared >= m_hashes.size()) {
            return seekInTable(key);
        }
        m_compared += m_hashes.size();
        return seekInOrder(key);
    }

    Member* seekInOrder(std::string_view key) const noexcept {
        for (std::size_t begin = 0; begin < m_hashes.size(); begin += k_block) {
            const std::size_t end = std::min(begin + k_block, m_hashes.size());
            if (isAmong(begin, end)) {
                if (Member* const member = memberAmong(begin, end, key)) {
                    return member;
                }
            }
        }
        return nullptr;
    }
    Member* memberAmong(std::size_t begin, std::size_t end, std::string_view key) const noexcept {
        for (std::size_t at = begin; at != end; ++at) {
            if (m_hashes[at] == m_hash && isKeyOf(*m_members[at], key)) {
                return m_members[at];
            }
        }
        return nullptr;
    }
    /// Without a branch for each of them, so that it is compiled to vectors.
    bool isAmong(std::size_t begin, std::size_t end) const noexcept {
        std::uint32_t found = 0;
        for (std::size_t at = begin; at != end; ++at) {
            found |= m_hashes[at] == m_hash ? 1U : 0U;
        }
        return found != 0;
    }

    Member* seekInTable(std::string_view key) noexcept {
        try {
            enterAll();
        } catch (const std::bad_alloc&) {
            giveUp();
        }
        const std::uint32_t number =
            walk(m_hash, [&](const Slot& slot) {
                return slot.hash == m_hash && isKeyOf(*m_members[slot.number - 1], key);
            }).number;
        return number == 0 ? nullptr : m_members[number - 1];
    }

    static bool isKeyOf(const Member& member, std::string_view key) noexcept {
        return member.first.size() == key.size() &&
               ko::detail::sameBytes(member.first.data(), key.data(), key.size());
    }

    /// Enters the members that were added since the last time.
    void enterAll() {
        makeRoom();
        for (; m_entered != m_hashes.size(); ++m_entered) {
            const std::uint32_t hash = m_hashes[m_entered];
            Slot& slot = walk(hash, [](const Slot& /*slot*/) { return false; });
            if (m_hasGivenUp) {
                return;
            }
            slot = {hash, static_cast<std::uint32_t>(m_entered + 1)};
        }
    }

    /// Makes the table large enough for all members, which are to be entered again then.
    void makeRoom() {
        if (m_members.size() > std::numeric_limits<std::uint32_t>::max() / 4) {
            throw std::bad_alloc();
        }
        std::size_t slots = std::max(k_fewestSlots, m_slots.size());
        while (slots < 2 * (m_members.size() + 1)) {
            slots *= 2;
        }
        if (slots != m_slots.size()) {
            m_slots = std::vector<Slot>(slots);
            m_entered = 0;
        }
    }

    /// The slot of that hash that `isMeant`, or the free one for it. Gives up where there is
    /// neither, and returns one of no member then.
    template<class IsMeant>
    Slot& walk(std::uint32_t hash, const IsMeant& isMeant) noexcept {
        for (std::size_t step = 0; step < k_mostSteps && !m_slots.empty(); ++step) {
            Slot& slot = m_slots[(hash + step) & (m_slots.size() - 1)];
            if (slot.number == 0 || isMeant(slot)) {
                return slot;
            }
        }
        giveUp();
        return m_none;
    }

    void giveUp() noexcept {
        m_hasGivenUp = true;
        m_members = {};
        m_hashes = {};
        m_seen = {};
        m_slots = {};
        m_room = 0;
    }

    std::vector<Member*> m_members;
    std::vector<std::uint32_t> m_hashes;  ///< of their keys
    /// Some bits of one word for each hash. Small enough for a fast cache, where the table is not.
    std::vector<std::uint64_t> m_seen;
    std::size_t m_mask = 0;      ///< the number of these words, a power of two, less one
    std::size_t m_room = 0;      ///< how many members these words are for
    std::size_t m_compared = 0;  ///< hashes, one by one
    std::vector<Slot> m_slots;   ///< their number is a power of two
    std::size_t m_entered = 0;   ///< how many members the table knows
    bool m_hasGivenUp = false;
    Slot m_none{0, 0};
    // Of the key that was looked up last.
    std::uint32_t m_hash = 0;
    std::uint64_t m_bits = 0;
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
