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
#include <tuple>
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

    explicit KeyIndex(const Compare& compare) : m_state(compare, nullptr) {}

    const Compare& compare() const noexcept { return std::get<Compare>(m_state); }

    /// `key` is a Key or, where the order is std::less, anything that compares with one. O(log n).
    template<class Like>
    Spot find(List& list, const Like& key) const {
        Spot spot;
        if (!large()) {
            spot.position = scan(list, key);
            return spot;
        }
        spot.m_hash = hashOf(key);
        const Probe<Like> probe{spot.m_hash, key};
        if (large()->tree) {
            spot.m_inTree = large()->tree->lower_bound(probe);
            const bool isThere =
                spot.m_inTree != large()->tree->end() && !order()(probe, *spot.m_inTree);
            spot.position = isThere ? spot.m_inTree->position : list.end();
        } else {
            const TVector& entries = large()->entries;
            const HashOrder byHash{order()};
            const auto entry = std::lower_bound(entries.begin(), entries.end(), probe, byHash);
            spot.m_inVector = entry - entries.begin();
            const bool isThere = entry != entries.end() && !byHash(probe, *entry);
            spot.position = isThere ? entry->position : list.end();
        }
        return spot;
    }

    /// Enters a position that the list has just taken in; its key was sought before, and not found.
    /// Throws std::bad_alloc, with the index as it was. O(log n).
    void enter(List& list, Iterator position, const Spot& spot) {
        const Entry entry{spot.m_hash, position};
        if (!large()) {
            update(list);
        } else if (large()->tree) {
            large()->tree->insert(spot.m_inTree, entry);
        } else if (large()->entries.size() < k_largestVector) {
            large()->entries.insert(large()->entries.begin() + spot.m_inVector, entry);
        } else {
            TTree tree(large()->entries.begin(), large()->entries.end(), order());
            tree.insert(entry);
            large()->tree = std::move(tree);
            large()->entries = {};
        }
    }

    /// Makes an empty index for the list. O(n log n). Throws std::bad_alloc, with the index empty.
    void update(List& list) {
        if (list.size() <= k_largestScan) {
            return;
        }
        auto made = std::make_unique<Large>();
        made->entries.reserve(std::max(list.size(), 2 * k_largestScan));
        for (Iterator position = list.begin(); position != list.end(); ++position) {
            made->entries.push_back({hashOf(position->first), position});
        }
        std::sort(made->entries.begin(), made->entries.end(), HashOrder{order()});
        if (list.size() > k_largestVector) {
            made->tree.emplace(made->entries.begin(), made->entries.end(), order());
            made->entries = {};
        }
        large() = std::move(made);
    }

    /// Removes a position that is still in the list. O(log n).
    void erase(List& list, Iterator position) {
        if (!large()) {
            return;
        }
        const Spot spot = find(list, position->first);
        if (large()->tree) {
            large()->tree->erase(spot.m_inTree);
        } else {
            large()->entries.erase(large()->entries.begin() + spot.m_inVector);
        }
    }

    void clear() noexcept { large().reset(); }

    void swap(KeyIndex& other) noexcept { m_state.swap(other.m_state); }

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

        KeyOrder byKey;
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
                return !compare()(pair.first, key) && !compare()(key, pair.first);
            }
        });
    }

    using TLarge = std::unique_ptr<Large>;

    KeyOrder order() const { return KeyOrder{compare()}; }

    /// Null while there is no index.
    TLarge& large() noexcept { return std::get<TLarge>(m_state); }
    const TLarge& large() const noexcept { return std::get<TLarge>(m_state); }

    std::tuple<Compare, TLarge> m_state;  ///< a tuple, in which an empty Compare takes no room
};

}  // namespace ko
