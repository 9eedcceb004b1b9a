// SPDX-License-Identifier: MIT
//
// ko::KeyIndex, the sorted index that ListMap keeps beside its list: list positions ordered by the
// keys that stand there. Most objects are small and need none; the index of a larger one is a
// sorted vector at first, which needs few allocations, and becomes a tree when it grows.

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

/// Finds the pairs of a list by their first members, which are unique. Every operation is given the
/// list that the index belongs to. Not copyable.
///
/// The invariant: the index holds the positions of all pairs, or it is empty and there are at most
/// k_largestScan pairs.
template<class List, class Key, class Compare>
class KeyIndex {
public:
    using Iterator = typename List::iterator;

    explicit KeyIndex(const Compare& compare) : m_order{compare} {}

    const Compare& compare() const noexcept { return m_order.compare; }

    /// The position of the pair with that key, or the list's end. `key` is a Key or, where the
    /// order is std::less, anything that compares with one. O(log n).
    template<class Like>
    Iterator find(List& list, const Like& key) const {
        if (m_tree) {
            const auto entry = m_tree->find(key);
            return entry == m_tree->end() ? list.end() : *entry;
        }
        if (m_sorted.empty()) {
            return scan(list, key);
        }
        const auto entry = lowerBound(key);
        return entry == m_sorted.end() || m_order(key, *entry) ? list.end() : *entry;
    }

    /// Enters a position that the list has just taken in. O(log n). Throws std::bad_alloc, with the
    /// index as it was.
    void enter(List& list, Iterator position) {
        if (m_tree) {
            m_tree->insert(position);
        } else if (m_sorted.empty()) {
            update(list);
        } else if (m_sorted.size() < k_largestVector) {
            m_sorted.insert(lowerBound(position->first), position);
        } else {
            auto tree = std::make_unique<TTree>(m_sorted.begin(), m_sorted.end(), m_order);
            tree->insert(position);
            m_tree = std::move(tree);
            m_sorted = {};
        }
    }

    /// Makes an empty index for the list. O(n log n). Throws std::bad_alloc, with the index empty.
    void update(List& list) {
        if (list.size() <= k_largestScan) {
            return;
        }
        if (list.size() > k_largestVector) {
            m_tree = std::make_unique<TTree>(m_order);
        } else {
            m_sorted.reserve(2 * k_largestScan);
        }
        try {
            enterAll(list);
        } catch (...) {
            clear();
            throw;
        }
    }

    /// Removes a position that is still in the list. O(log n).
    void erase(Iterator position) {
        if (m_tree) {
            m_tree->erase(position);
        } else if (!m_sorted.empty()) {
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
    /// Up to here looking at every key, which mostly compares lengths, beats the binary search.
    static constexpr std::size_t k_largestScan = 8;
    /// Up to here moving the entries behind a new one costs less than the nodes of a tree.
    static constexpr std::size_t k_largestVector = 64;
    static constexpr bool k_isNatural = std::is_same_v<Compare, std::less<Key>>;

    struct Order {
        using is_transparent = void;

        bool operator()(Iterator left, Iterator right) const {
            return compare(left->first, right->first);
        }
        template<class Like>
        bool operator()(Iterator left, const Like& right) const {
            return isLess(left->first, right);
        }
        template<class Like>
        bool operator()(const Like& left, Iterator right) const {
            return isLess(left, right->first);
        }

        template<class Left, class Right>
        bool isLess(const Left& left, const Right& right) const {
            if constexpr (k_isNatural) {
                return left < right;
            } else {
                return compare(left, right);
            }
        }

        Compare compare;
    };
    using TTree = std::set<Iterator, Order>;

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

    void enterAll(List& list) {
        for (Iterator position = list.begin(); position != list.end(); ++position) {
            if (m_tree) {
                m_tree->insert(position);
            } else {
                m_sorted.insert(lowerBound(position->first), position);
            }
        }
    }

    template<class Like>
    typename std::vector<Iterator>::const_iterator lowerBound(const Like& key) const {
        return std::lower_bound(m_sorted.begin(), m_sorted.end(), key, m_order);
    }

    Order m_order;
    std::vector<Iterator> m_sorted;
    std::unique_ptr<TTree> m_tree;  ///< takes all entries over when there are many
};

}  // namespace ko
