// SPDX-License-Identifier: MIT
//
// KeySet says whether an object repeats a key. It is made for short objects, which most are.

#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace orvid_tool {

class KeySet {
public:
    using TKeys = std::vector<std::string_view>;

    /// The keys of one object. They stand in a list that the objects in it share, each at the end
    /// while it is read.
    explicit KeySet(TKeys& keys) : m_keys(keys), m_start(keys.size()) {}
    KeySet(const KeySet&) = delete;
    KeySet& operator=(const KeySet&) = delete;
    ~KeySet() { m_keys.resize(m_start); }

    /// Adds a key. False says that it is there already; of many keys only areDifferent() finds.
    bool add(std::string_view key);
    bool isEmpty() const { return m_keys.size() == m_start; }
    /// Whether all are different. Linear, except for many keys n log n.
    bool areDifferent();

private:
    TKeys& m_keys;
    std::size_t m_start;
    std::uint64_t m_seen = 0;  ///< a bit for each hash
};

}  // namespace orvid_tool
