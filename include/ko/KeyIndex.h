// SPDX-License-Identifier: MIT
//
// ko::KeyIndex, the sorted index that ListMap keeps beside its list: list positions ordered by the
// keys that stand there. Most objects are small, so the index is a sorted vector at first, which
// needs few allocations, and becomes a tree when it grows.

#pragma once

#include <algorithm>
#include <cstddef>
#include <functional>
#include <memory>
#include <set>
#include <type_traits>
#include <utility>
#include <vector>

namespace ko {

/// Positions of a list of pairs, unique and in the order of the pairs' first members. Not copyable.
template<class Iterator, class Key, class Compare>
class KeyIndex {
public:
    explicit KeyIndex(const Compare& compare) : m_order{compare} {}

    const Compare& compare() const noexcept { return m_order.compare; }

    /// The position of the pair with that key, or null. O(log n).
    const Iterator* find(const Key& key) const {
        if (m_tree) {
            const auto entry = m_tree->find(key);
            return entry == m_tree->end() ? nullptr : &*entry;
        }
        if constexpr (std::is_same_v<Compare, std::less<Key>>) {
            if (m_sorted.size() <= k_largestScan) {
                return scan(key);
            }
        }
        const auto entry = lowerBound(key);
        return entry == m_sorted.end() || m_order(key, *entry) ? nullptr : &*entry;
    }

    /// Enters a position whose key is not there yet. O(log n). Throws std::bad_alloc, with the
    /// index as it was.
    void insert(Iterator position) {
        if (!m_tree && m_sorted.size() == k_largestVector) {
            m_tree = std::make_unique<TTree>(m_sorted.begin(), m_sorted.end(), m_order);
            m_sorted = {};
        }
        if (m_tree) {
            m_tree->insert(position);
        } else {
            m_sorted.insert(lowerBound(position->first), position);
        }
    }

    /// Removes a position that is there. O(log n).
    void erase(Iterator position) {
        if (m_tree) {
            m_tree->erase(position);
        } else {
            m_sorted.erase(lowerBound(position->first));
        }
    }

    void clear() noexcept {
        m_sorted.clear();
        m_tree.reset();
    }

    void swap(KeyIndex& other) noexcept {
        std::swap(m_order, other.m_order);
        m_sorted.swap(other.m_sorted);
        m_tree.swap(other.m_tree);
    }

private:
    /// Up to here moving the entries behind a new one costs less than the nodes of a tree.
    static constexpr std::size_t k_largestVector = 64;
    /// Up to here looking for an equal key, which mostly compares lengths, beats the binary search.
    static constexpr std::size_t k_largestScan = 8;

    struct Order {
        using is_transparent = void;

        bool operator()(Iterator left, Iterator right) const {
            return compare(left->first, right->first);
        }
        bool operator()(Iterator left, const Key& right) const {
            return compare(left->first, right);
        }
        bool operator()(const Key& left, Iterator right) const {
            return compare(left, right->first);
        }

        Compare compare;
    };
    using TTree = std::set<Iterator, Order>;

    const Iterator* scan(const Key& key) const {
        for (const Iterator& entry : m_sorted) {
            if (entry->first == key) {
                return &entry;
            }
        }
        return nullptr;
    }

    typename std::vector<Iterator>::const_iterator lowerBound(const Key& key) const {
        return std::lower_bound(m_sorted.begin(), m_sorted.end(), key, m_order);
    }

    Order m_order;
    std::vector<Iterator> m_sorted;
    std::unique_ptr<TTree> m_tree;  ///< takes all entries over when there are many
};

}  // namespace ko
