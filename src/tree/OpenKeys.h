// SPDX-License-Identifier: MIT
//
// OpenKeys: which keys the objects have that are being read. An object needs no index while it is
// read, and none afterwards where nobody looks a key up.

#pragma once

#include <ko/Orvid/Object.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <vector>

namespace ko::Orvid {

/// Of the innermost object and those around it which were asked about and not closed.
class OpenKeys {
public:
    using Object = Element::TObject;
    using Member = Object::value_type;

    /// Up to so many members an object should have for this; beyond, its index is the better one.
    static constexpr std::size_t k_most = 64;

    /// The member with that key; null where there is none. `object` must be the one that was asked
    /// about last, or have been opened since.
    Member* find(Object& object, std::string_view key) {
        return object.size() <= k_fewest ? scan(object, key) : look(object, key);
    }
    /// The member was appended with the key that was sought last, and not found.
    void add(const Object& object, Member& member) noexcept {
        if (object.size() > k_fewest + 1) {
            m_levels[m_depth - 1].add(m_slot, m_hash, member);
        }
    }
    /// Nothing more comes into the object.
    void close(const Object& object) noexcept {
        if (m_depth != 0 && m_levels[m_depth - 1].object == &object) {
            --m_depth;
        }
    }
    /// Forgets all, since members may have been removed.
    void clear() noexcept { m_depth = 0; }

private:
    /// Up to here looking at every key, which mostly compares lengths, is fastest.
    static constexpr std::size_t k_fewest = 8;
    static constexpr std::size_t k_slots = 128;
    static_assert(k_slots >= 2 * k_most, "few places are taken");

    struct Entry {
        std::size_t hash;
        Member* member;
    };

    /// A table of the members by their hashes; a taken place is followed by the next one.
    struct Level {
        const Object* object = nullptr;
        std::size_t count = 0;
        std::array<unsigned char, k_slots> slots{};  ///< the number of the entry, from 1; 0: none
        std::array<Entry, k_most + 1> entries{};

        void add(std::size_t slot, std::size_t hash, Member& member) noexcept {
            entries[count] = {hash, &member};
            slots[slot] = static_cast<unsigned char>(++count);
        }
    };

    static bool isSame(std::string_view a, std::string_view b) noexcept {
        return a.size() == b.size() && std::memcmp(a.data(), b.data(), a.size()) == 0;
    }

    static Member* scan(Object& object, std::string_view key) noexcept {
        for (Member& member : object) {
            if (isSame(member.first, key)) {
                return &member;
            }
        }
        return nullptr;
    }

    /// Of the length, the first and the last bytes: at worst k_most keys are looked at.
    static std::size_t hashOf(std::string_view key) noexcept {
        std::uint64_t first = 0;
        std::uint64_t last = 0;
        if (key.size() >= sizeof first) {
            std::memcpy(&first, key.data(), sizeof first);
            std::memcpy(&last, key.data() + key.size() - sizeof last, sizeof last);
        } else {
            for (const char c : key) {
                first = first << 8U | static_cast<unsigned char>(c);
            }
        }
        constexpr std::uint64_t k_factor = 0x9E3779B97F4A7C15;
        const std::uint64_t mixed = (first ^ key.size()) * k_factor ^ last;
        return static_cast<std::size_t>(mixed * k_factor >> 32U);
    }

    Member* look(Object& object, std::string_view key) {
        if (m_depth == 0 || m_levels[m_depth - 1].object != &object ||
            m_levels[m_depth - 1].count != object.size()) {
            open(object);
        }
        return lookIn(m_levels[m_depth - 1], key);
    }

    Member* lookIn(const Level& level, std::string_view key) noexcept {
        m_hash = hashOf(key);
        m_slot = m_hash % k_slots;
        for (; level.slots[m_slot] != 0; m_slot = (m_slot + 1) % k_slots) {
            const Entry& entry = level.entries[level.slots[m_slot] - 1U];
            if (entry.hash == m_hash && isSame(entry.member->first, key)) {
                return entry.member;
            }
        }
        return nullptr;
    }

    void open(Object& object) {
        close(object);
        if (m_depth == m_levels.size()) {
            m_levels.emplace_back();
        }
        Level& level = m_levels[m_depth++];
        level.object = &object;
        level.count = 0;
        level.slots = {};
        for (Member& member : object) {
            lookIn(level, member.first);
            level.add(m_slot, m_hash, member);
        }
    }

    std::vector<Level> m_levels;
    std::size_t m_depth = 0;  ///< how many of them are in use
    // Of the key that was sought last.
    std::size_t m_hash = 0;
    std::size_t m_slot = 0;
};

}  // namespace ko::Orvid
