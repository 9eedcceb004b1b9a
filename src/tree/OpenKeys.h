// SPDX-License-Identifier: MIT
//
// OpenKeys: which keys the objects have that are being read. An object needs no index while it is
// read, and none afterwards where nobody looks a key up. A few bits for each object say of nearly
// every key that it is new; where they do not, the members are looked at one by one.

#pragma once

#include <ko/Orvid/Object.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <vector>

#include "core/HashMix.h"

namespace ko::Orvid {

class OpenKeys {
public:
    using Object = Element::TObject;
    using Member = Object::value_type;

    /// Up to so many members an object should have for this; beyond, its index is the better one.
    static constexpr std::size_t k_most = 64;

    /// An object without members was opened in the one that is being filled.
    void open() {
        m_outer.push_back(m_seen);
        m_seen = {};
    }
    /// Nothing more comes into it.
    void close() noexcept {
        if (m_outer.empty()) {
            m_seen = allSeen();
        } else {
            m_seen = m_outer.back();
            m_outer.pop_back();
        }
    }
    /// The member of the object that is being filled which has the key; null where there is none,
    /// and then one is to be added.
    Member* find(Object& object, std::string_view key) noexcept {
        return note(key) ? scan(object, key) : nullptr;
    }
    /// Forgets all, since members may have been added or removed.
    void clear() noexcept {
        m_outer.clear();
        m_seen = allSeen();
    }

private:
    /// A bit for the hash of each key. Of forty keys, three are looked for in vain.
    using Seen = std::array<std::uint64_t, 4>;

    static constexpr Seen allSeen() noexcept {
        constexpr std::uint64_t all = ~std::uint64_t{0};
        return {all, all, all, all};
    }

    /// Returns whether a key of that hash may have come before.
    bool note(std::string_view key) noexcept {
        const std::size_t hash = hashOf(key);
        std::uint64_t& word = m_seen[hash / 64 % m_seen.size()];
        const std::uint64_t bit = std::uint64_t{1} << (hash % 64);
        const bool isSeen = (word & bit) != 0;
        word |= bit;
        return isSeen;
    }

    static Member* scan(Object& object, std::string_view key) noexcept {
        for (Member& member : object) {
            if (member.first.size() == key.size() &&
                std::memcmp(member.first.data(), key.data(), key.size()) == 0) {
                return &member;
            }
        }
        return nullptr;
    }

    /// Of the length, the first and the last bytes.
    static std::size_t hashOf(std::string_view key) noexcept {
        std::uint64_t first = 0;
        std::uint64_t last = 0;
        if (key.size() >= sizeof first) {
            std::memcpy(&first, key.data(), sizeof first);
            std::memcpy(&last, key.data() + key.size() - sizeof last, sizeof last);
        } else if (key.size() >= sizeof first / 2) {
            std::memcpy(&first, key.data(), sizeof first / 2);
            std::memcpy(&last, key.data() + key.size() - sizeof last / 2, sizeof last / 2);
        } else {
            for (const char c : key) {
                first = first << 8U | static_cast<unsigned char>(c);
            }
        }
        const std::uint64_t spread = (first ^ key.size()) * k_multiplier ^ last;
        return static_cast<std::size_t>(spread * k_multiplier >> 56U);
    }

    Seen m_seen = allSeen();    ///< of the object that is being filled
    std::vector<Seen> m_outer;  ///< of those around it that were opened since clear()
};

}  // namespace ko::Orvid
