// SPDX-License-Identifier: MIT
//
// ko::KeyIndex, the index that ListMap keeps beside its list: list positions in the order of the
// keys that stand there. Most objects are small and need none; the index of a larger one is a
// sorted vector at first, which needs few allocations, and becomes a tree when it grows.

#pragma once

#include <algorithm>
#include <cstddef>
#include <functional>
#include <iterator>
#include <memory>
#include <optional>
#include <set>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

namespace ko {

/// Finds the pairs of a list by their first members, which are unique. Every operation is given the
/// list that the index belongs to. Not copyable.
///
/// The invariant: the index holds the positions of all pairs, or it is empty and there are at most
/// k_largestScan pairs.
template<class List, class Key, class Compare>
class KeyIndex {
    struct Entry;
    struct HashOrder;
    struct KeyOrder;
    using TVector = std::vector<Entry>;
    using TTree = std::set<Entry, KeyOrder>;

public:
    using Iterator = typename List::iterator;

    /// Where a key stands, or where it would be entered. Lives until the index changes.
    struct Spot {
        Iterator position;  ///< of the pair with that key, or the list's end

    private:
        friend class KeyIndex;

        std::size_t m_hash = 0;
        std::ptrdiff_t m_inVector = 0;
        typename TTree::const_iterator m_inTree{};
    };

    explicit KeyIndex(const Compare& compare) : m_order{compare} {}

    const Compare& compare() const noexcept { return m_order.compare; }

    /// `key` is a Key or, where the order is std::less, anything that compares with one. O(log n).
    template<class Like>
    Spot find(List& list, const Like& key) const {
        Spot spot;
        if (!m_large) {
            spot.position = scan(list, key);
            return spot;
        }
        spot.m_hash = hashOf(key);
        const Probe<Like> probe{spot.m_hash, key};
        if (m_large->tree) {
            spot.m_inTree = m_large->tree->lower_bound(probe);
            const bool isThere =
                spot.m_inTree != m_large->tree->end() && !m_order(probe, *spot.m_inTree);
            spot.position = isThere ? spot.m_inTree->position : list.end();
        } else {
            const TVector& entries = m_large->entries;
            const HashOrder order{m_order};
            const auto entry = std::lower_bound(entries.begin(), entries.end(), probe, order);
            spot.m_inVector = entry - entries.begin();
            const bool isThere = entry != entries.end() && !order(probe, *entry);
            spot.position = isThere ? entry->position : list.end();
        }
        return spot;
    }

    /// Enters a position that the list has just taken in; its key was sought before, and not found.
    /// Throws std::bad_alloc, with the index as it was. O(log n).
    void enter(List& list, Iterator position, const Spot& spot) {
        const Entry entry{spot.m_hash, position};
        if (!m_large) {
            update(list);
        } else if (m_large->tree) {
            m_large->tree->insert(spot.m_inTree, entry);
        } else if (m_large->entries.size() < k_largestVector) {
            m_large->entries.insert(m_large->entries.begin() + spot.m_inVector, entry);
        } else {
            TTree tree(m_large->entries.begin(), m_large->entries.end(), m_order);
            tree.insert(entry);
            m_large->tree = std::move(tree);
            m_large->entries = {};
        }
    }

    /// Makes an empty index for the list. O(n log n). Throws std::bad_alloc, with the index empty.
    void update(List& list) {
        if (list.size() <= k_largestScan) {
            return;
        }
        auto large = std::make_unique<Large>();
        large->entries.reserve(std::max(list.size(), 2 * k_largestScan));
        for (Iterator position = list.begin(); position != list.end(); ++position) {
            large->entries.push_back({hashOf(position->first), position});
        }
        std::sort(large->entries.begin(), large->entries.end(), HashOrder{m_order});
        if (list.size() > k_largestVector) {
            large->tree.emplace(large->entries.begin(), large->entries.end(), m_order);
            large->entries = {};
        }
        m_large = std::move(large);
    }

    /// Removes a position that is still in the list. O(log n).
    void erase(List& list, Iterator position) {
        if (!m_large) {
            return;
        }
        const Spot spot = find(list, position->first);
        if (m_large->tree) {
            m_large->tree->erase(spot.m_inTree);
        } else {
            m_large->entries.erase(m_large->entries.begin() + spot.m_inVector);
        }
    }

    void clear() noexcept { m_large.reset(); }

    void swap(KeyIndex& other) noexcept {
        std::swap(m_order, other.m_order);
        m_large.swap(other.m_large);
    }

private:
    /// Up to here looking at every key, which mostly compares lengths, beats the binary search.
    static constexpr std::size_t k_largestScan = 8;
    /// Up to here moving the entries after a new one costs less than the nodes of a tree.
    static constexpr std::size_t k_largestVector = 64;
    static constexpr bool k_isNatural = std::is_same_v<Compare, std::less<Key>>;

    /// A pair, and the hash of its key.
    struct Entry {
        std::size_t hash;
        Iterator position;

        const Key& key() const { return position->first; }
    };

    /// What is sought among the entries.
    template<class Like>
    struct Probe {
        std::size_t hash;
        const Like& sought;

        const Like& key() const { return sought; }
    };

    /// What follows in the text often follows in this order too, which spares a large tree the
    /// jumps through memory that hashes would cost it.
    struct KeyOrder {
        using is_transparent = void;

        template<class Left, class Right>
        bool operator()(const Left& left, const Right& right) const {
            if constexpr (k_isNatural) {
                return left.key() < right.key();
            } else {
                return compare(left.key(), right.key());
            }
        }

        Compare compare;
    };

    /// By the hash first, so that few keys need be looked at; keys whose hashes agree by
    /// themselves.
    struct HashOrder {
        template<class Left, class Right>
        bool operator()(const Left& left, const Right& right) const {
            return left.hash != right.hash ? left.hash < right.hash : byKey(left, right);
        }

        const KeyOrder& byKey;
    };

    /// The vector up to k_largestVector entries, the tree above.
    struct Large {
        TVector entries;
        std::optional<TTree> tree;
    };

    /// Nothing is known of what another order takes for equal.
    template<class Like>
    static std::size_t hashOf(const Like& key) {
        if constexpr (k_isNatural && std::is_convertible_v<const Like&, std::string_view>) {
            return std::hash<std::string_view>()(key);
        } else {
            return 0;
        }
    }

    template<class Like>
    Iterator scan(List& list, const Like& key) const {
        return std::find_if(list.begin(), list.end(), [&](const auto& pair) {
            if constexpr (k_isNatural) {
                return pair.first == key;
            } else {
                return !m_order.compare(pair.first, key) && !m_order.compare(key, pair.first);
            }
        });
    }

    KeyOrder m_order;
    std::unique_ptr<Large> m_large;  ///< null while there is no index
};

}  // namespace ko
