// SPDX-License-Identifier: MIT
//
// ko::KeyIndex, the index that ListMap keeps beside its list: list positions in the order of the
// keys that stand there. Most objects are small and need none; that of a larger one is made once
// keys were looked up a few times, as a sorted vector, which needs few allocations, and becomes a
// tree when it grows.

#pragma once

#include <ko/detail/sameBytes.h>

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <iterator>
#include <memory>
#include <new>
#include <optional>
#include <set>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

namespace ko {

/// Finds the pairs of a list by their first members, which are unique. Every operation is given the
/// list that the index belongs to. Not copyable. Any number of threads may find at once.
///
/// The invariant: the index holds the positions of all pairs, or there is none.
template<class List, class Key, class Compare>
class KeyIndex {
    struct Entry;
    struct HashOrder;
    struct KeyOrder;
    using Vector = std::vector<Entry>;
    using Tree = std::set<Entry, KeyOrder>;

public:
    using Iterator = typename List::iterator;

    /// Where a key stands, or where it would be entered. Lives until the index changes.
    struct Spot {
        Iterator position;  ///< of the pair with that key, or the list's end

    private:
        friend class KeyIndex;

        std::size_t m_hash = 0;
        std::ptrdiff_t m_inVector = 0;
        typename Tree::const_iterator m_inTree{};
    };

    explicit KeyIndex(const Compare& compare) : m_state(compare, k_untouched) {}
    KeyIndex(const KeyIndex&) = delete;
    KeyIndex& operator=(const KeyIndex&) = delete;
    ~KeyIndex() { clear(); }

    const Compare& compare() const noexcept { return std::get<Compare>(m_state); }

    /// `key` is a Key or, where the order is std::less, anything that compares with one. O(log n),
    /// but O(n) for the first k_scans times, and O(n log n) where the index is made after them;
    /// without memory for that, O(n).
    template<class Like>
    Spot find(List& list, const Like& key) const {
        Spot spot;
        const Large* const index = indexFor(list);
        if (index == nullptr) {
            spot.position = scan(list, key);
            return spot;
        }
        spot.m_hash = hashOf(key);
        const Probe<Like> probe{spot.m_hash, key};
        if (index->tree) {
            spot.m_inTree = index->tree->lower_bound(probe);
            const bool isThere =
                spot.m_inTree != index->tree->end() && !order()(probe, *spot.m_inTree);
            spot.position = isThere ? spot.m_inTree->position : list.end();
        } else {
            const Vector& entries = index->entries;
            const HashOrder byHash{order()};
            const auto entry = std::lower_bound(entries.begin(), entries.end(), probe, byHash);
            spot.m_inVector = entry - entries.begin();
            const bool isThere = entry != entries.end() && !byHash(probe, *entry);
            spot.position = isThere ? entry->position : list.end();
        }
        return spot;
    }

    /// Enters a position that the list has just taken in; its key was looked up before, and not
    /// found. Throws std::bad_alloc, with the index as it was. O(log n).
    void enter(Iterator position, const Spot& spot) {
        Large* const index = large();
        if (index == nullptr) {
            return;
        }
        const Entry entry{spot.m_hash, position};
        if (index->tree) {
            index->tree->insert(spot.m_inTree, entry);
        } else if (index->entries.size() < k_largestVector) {
            index->entries.insert(index->entries.begin() + spot.m_inVector, entry);
        } else {
            Tree tree(index->entries.begin(), index->entries.end(), order());
            tree.insert(entry);
            index->tree = std::move(tree);
            index->entries = {};
        }
    }

    /// Removes a position that is still in the list. O(log n).
    void erase(List& list, Iterator position) {
        Large* const index = large();
        if (index == nullptr) {
            return;
        }
        const Spot spot = find(list, position->first);
        if (index->tree) {
            index->tree->erase(spot.m_inTree);
        } else {
            index->entries.erase(index->entries.begin() + spot.m_inVector);
        }
    }

    void clear() noexcept {
        delete large();
        setWord(k_untouched);
    }

    void swap(KeyIndex& other) noexcept {
        std::swap(std::get<Compare>(m_state), std::get<Compare>(other.m_state));
        const std::uintptr_t own = word();
        setWord(other.word());
        other.setWord(own);
    }

private:
    /// Up to here looking at every key, which mostly compares lengths, beats the binary search.
    static constexpr std::size_t k_largestScan = 8;
    /// How often that is done in a larger map before the index is made, since most documents are
    /// only asked a few times. Sorting 100,000 keys costs as much as 190 looks at all of them.
    static constexpr std::uintptr_t k_scans = 16;
    /// Up to here moving the entries after a new one costs less than the nodes of a tree.
    static constexpr std::size_t k_largestVector = 64;
    static constexpr bool k_isNatural = std::is_same_v<Compare, std::less<Key>>;

    /// A pair, and the hash of its key.
    struct Entry {
        std::size_t hash;
        Iterator position;

        const Key& key() const { return position->first; }
    };

    /// What is looked for among the entries.
    template<class Like>
    struct Probe {
        std::size_t hash;
        const Like& wanted;

        const Like& key() const { return wanted; }
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
        Vector entries;
        std::optional<Tree> tree;
    };

    /// Nothing is known of which keys are equal for another order.
    template<class Like>
    static constexpr bool k_isText =
        k_isNatural&& std::is_convertible_v<const Like&, std::string_view>;

    template<class Like>
    static std::size_t hashOf(const Like& key) {
        if constexpr (k_isText<Like>) {
            return std::hash<std::string_view>()(key);
        } else {
            return 0;
        }
    }

    template<class Like>
    Iterator scan(List& list, const Like& key) const {
        return std::find_if(list.begin(), list.end(), [&](const auto& pair) {
            if constexpr (k_isText<Like> && k_isText<Key>) {
                const std::string_view present = pair.first;
                const std::string_view wanted = key;
                return present.size() == wanted.size() &&
                       detail::sameBytes(present.data(), wanted.data(), wanted.size());
            } else if constexpr (k_isNatural) {
                return pair.first == key;
            } else {
                return !compare()(pair.first, key) && !compare()(key, pair.first);
            }
        });
    }

    KeyOrder order() const { return KeyOrder{compare()}; }

    /// The index, made where it is missed; null for few pairs or lookups, and without memory.
    const Large* indexFor(List& list) const {
        const std::uintptr_t seen = word();
        if (!isCount(seen)) {
            return pointerIn(seen);
        }
        return list.size() <= k_largestScan || isFewMore(seen) ? nullptr : makeIndex(list);
    }

    /// Notes one lookup more, unless these were enough. Where threads look up at once, some are not
    /// noted.
    bool isFewMore(std::uintptr_t seen) const noexcept {
        if (seen >= k_untouched + k_scans * k_oneScan) {
            return false;
        }
        std::get<Word>(m_state).compare_exchange_weak(seen, seen + k_oneScan,
                                                      std::memory_order_relaxed);
        return true;
    }

    [[gnu::noinline]] const Large* makeIndex(List& list) const {
        std::unique_ptr<Large> made;
        try {
            made = indexOf(list);
        } catch (const std::bad_alloc&) {
            return nullptr;
        }
        // Another thread may have come first.
        std::uintptr_t present = word();
        while (isCount(present)) {
            if (std::get<Word>(m_state).compare_exchange_weak(
                    present, reinterpret_cast<std::uintptr_t>(made.get()),
                    std::memory_order_acq_rel)) {
                return made.release();
            }
        }
        return pointerIn(present);
    }

    std::unique_ptr<Large> indexOf(List& list) const {
        auto made = std::make_unique<Large>();
        made->entries.reserve(list.size());
        for (Iterator position = list.begin(); position != list.end(); ++position) {
            made->entries.push_back({hashOf(position->first), position});
        }
        if (list.size() > k_largestVector) {
            // A tree is made of entries in its own order without a search for each.
            std::sort(made->entries.begin(), made->entries.end(), order());
            made->tree.emplace(made->entries.begin(), made->entries.end(), order());
            made->entries = {};
        } else {
            std::sort(made->entries.begin(), made->entries.end(), HashOrder{order()});
        }
        return made;
    }

    // One word: the address of the index or, while there is none, an odd number that counts
    // lookups.

    using Word = std::atomic<std::uintptr_t>;
    static constexpr std::uintptr_t k_untouched = 1;
    static constexpr std::uintptr_t k_oneScan = 2;

    static bool isCount(std::uintptr_t word) noexcept { return (word & k_untouched) != 0; }
    static Large* pointerIn(std::uintptr_t word) noexcept {
        return reinterpret_cast<Large*>(word);  // NOLINT(performance-no-int-to-ptr): it was one
    }
    std::uintptr_t word() const noexcept {
        return std::get<Word>(m_state).load(std::memory_order_acquire);
    }
    void setWord(std::uintptr_t word) noexcept {
        std::get<Word>(m_state).store(word, std::memory_order_release);
    }
    /// Null while there is no index.
    Large* large() const noexcept {
        const std::uintptr_t seen = word();
        return isCount(seen) ? nullptr : pointerIn(seen);
    }

    /// A tuple, in which an empty Compare takes no room.
    mutable std::tuple<Compare, Word> m_state;
};

}  // namespace ko
