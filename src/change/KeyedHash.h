// SPDX-License-Identifier: MIT
//
// A hash with a secret key, for tables whose keys come from a document: who does not know the key
// cannot write a document whose keys collide.

#pragma once

#include <cstdint>
#include <string_view>

namespace ko::Orvid {

/// SipHash-1-3 with a key that the system draws for each object.
class KeyedHash {
public:
    KeyedHash();
    /// With a given key, for comparison with known results.
    KeyedHash(std::uint64_t key0, std::uint64_t key1) noexcept : m_key0(key0), m_key1(key1) {}

    std::uint64_t of(std::string_view bytes) const noexcept;

private:
    std::uint64_t m_key0 = 0;
    std::uint64_t m_key1 = 0;
};

}  // namespace ko::Orvid
