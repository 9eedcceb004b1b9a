// SPDX-License-Identifier: MIT
//
// KeyHashes says whether an object repeats a key, without keeping the keys. It is made for short
// objects, which most are.

#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace ko::Orvid::text {

class KeyHashes {
public:
    /// An object begins, in the one that is open.
    void open();
    /// A key of the object that is open. Returns false where its hash is there already: it is most
    /// likely the same key. Beyond a few keys only close() looks.
    bool add(std::string_view key);
    /// The object ends. Returns whether its keys are all different: true is certain. Linear cost,
    /// except for many keys n log n.
    bool close();
    /// Forgets all objects.
    void clear() noexcept;

private:
    /// An object that is open.
    struct Level {
        std::size_t start = 0;                   ///< of its hashes
        std::array<std::uint64_t, 4> seen = {};  ///< a bit for each hash
    };

    std::vector<std::uint64_t> m_hashes;  ///< of the keys of all open objects
    std::vector<Level> m_outer;
    Level m_level;
};

}  // namespace ko::Orvid::text
