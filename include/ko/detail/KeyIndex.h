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
    struct Order;
    using Vector = std::vector<Entry>;
    using Tree = std::set<Entry, Order>;

public:
    using Iterator = typename List::iterator;

    /// Where a key stands, or where it would be entered. Lives until the index changes.
    struct Spot {
        Iterator position;  ///< of the pair with that key, or the list's end

    private:
        friend class KeyIndex;

        std::ptrdiff_t m_inVector = 0;
        typename Tree::const_iterator m_inTree{};
    };

    explicit KeyIndex(const Compare& compare) : m_state(compare, k_untouched) {}
    KeyIndex(const KeyIndex&) = delete;
    KeyIndex& operator=(const KeyIndex&) = delete;
    ~KeyIndex() { clear(); }

    const Compare& compare() const noexcept { return std::get<Compare>(m_state); }

    /// Of the pair with that key, or the list's end. `key` is a Key or, where the order is
    /// std::less, anything that compares with one. O(log n), but O(n) for the first k_scans times,
    /// and O(n log n) where the index is made after them; without memory for that, O(n).
    template<class Like>
    Iterator find(List& list, const Like& key) const {
        return search(list, key).position;
    }

    /// The same for a key that may be entered. The place in a vector follows from a key's hash, so
    /// what only compares with texts has none.
    template<class Like>
    Spot spotOf(List& list, const Like& key) const {
        static_assert(k_hasWord<Like>, "What is no text cannot be entered among texts.");
        return search(list, key);
    }

    /// Enters a position that the list has just taken in; spotOf() its key did not find one. Throws
    /// std::bad_alloc, with the index as it was. O(log n).
    void enter(Iterator position, const Spot& spot) {
        Large* const index = large();
        if (index == nullptr) {
            return;
        }
        if (index->tree) {
            index->tree->insert(spot.m_inTree, entryOf(position, true));
        } else if (index->entries.size() < k_largestVector) {
            index->entries.insert(index->entries.begin() + spot.m_inVector,
                                  entryOf(position, false));
        } else {
            Tree tree(order());
            for (const Entry& entry : index->entries) {
                tree.insert(entryOf(entry.position, true));
            }
            tree.insert(entryOf(position, true));
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
        const Spot spot = spotOf(list, position->first);
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
    /// only asked a few times. An index of 100,000 keys costs as much as 73 looks at all of them.
    static constexpr std::uintptr_t k_scans = 16;
    /// Up to here moving the entries after a new one costs less than the nodes of a tree.
    static constexpr std::size_t k_largestVector = 64;
    static constexpr bool k_isNatural = std::is_same_v<Compare, std::less<Key>>;

    /// Nothing is known of which keys are equal for another order.
    template<class Like>
    static constexpr bool k_isText =
        k_isNatural&& std::is_convertible_v<const Like&, std::string_view>;
    /// Not what compares with texts but is none.
    template<class Like>
    static constexpr bool k_hasWord = k_isText<Like> || !k_isText<Key>;

    /// A pair, and a word of its key, which is compared before the key.
    struct Entry {
        static constexpr bool hasWord = true;

        std::size_t word;
        Iterator position;

        const Key& key() const { return position->first; }
    };

    /// What is looked for among the entries.
    template<class Like>
    struct Probe {
        static constexpr bool hasWord = k_hasWord<Like>;

        std::size_t word;
        const Like& wanted;

        const Like& key() const { return wanted; }
    };

    /// By the words first, so that few keys need be fetched from memory.
    struct Order {
        using is_transparent = void;

        template<class Left, class Right>
        bool operator()(const Left& left, const Right& right) const {
            if constexpr (Left::hasWord && Right::hasWord) {
                if (left.word != right.word) {
                    return left.word < right.word;
                }
            }
            if constexpr (k_isNatural) {
                return left.key() < right.key();
            } else {
                return compare(left.key(), right.key());
            }
        }

        Compare compare;
    };

    /// The vector up to k_largestVector entries, in the order of hashes; the tree above, in that of
    /// the keys. What follows in the text often follows in that order too, which spares a large
    /// tree the jumps through memory that hashes would cost it.
    struct Large {
        Vector entries;
        std::optional<Tree> tree;
    };

    /// The hash or, in a tree, the first bytes, whose order is that of the keys.
    template<class Like>
    static std::size_t wordOf(const Like& key, bool isInTree) {
        if constexpr (k_isText<Like>) {
            return isInTree ? firstBytes(key) : std::hash<std::string_view>()(key);
        } else {
            return 0;
        }
    }

    /// As a number; a shorter key ends with zeros.
    static std::size_t firstBytes(std::string_view key) noexcept {
        std::size_t bytes = 0;
        for (std::size_t i = 0; i != sizeof bytes; ++i) {
            bytes = bytes << 8U | (i < key.size() ? static_cast<unsigned char>(key[i]) : 0U);
        }
        return bytes;
    }

    template<class Like>
    Spot search(List& list, const Like& key) const {
        Spot spot;
        const Large* const index = indexFor(list);
        if (index == nullptr || (!index->tree && !k_hasWord<Like>)) {
            spot.position = scan(list, key);
            return spot;
        }
        const Probe<Like> probe{wordOf(key, index->tree.has_value()), key};
        if (index->tree) {
            spot.m_inTree = index->tree->lower_bound(probe);
            const bool isThere =
                spot.m_inTree != index->tree->end() && !order()(probe, *spot.m_inTree);
            spot.position = isThere ? spot.m_inTree->position : list.end();
        } else {
            const Vector& entries = index->entries;
            const auto entry = std::lower_bound(entries.begin(), entries.end(), probe, order());
            spot.m_inVector = entry - entries.begin();
            const bool isThere = entry != entries.end() && !order()(probe, *entry);
            spot.position = isThere ? entry->position : list.end();
        }
        return spot;
    }

    static Entry entryOf(Iterator position, bool isInTree) {
        return {wordOf(position->first, isInTree), position};
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

    Order order() const { return Order{compare()}; }

    /// The index, made where it is missed; null for few pairs or lookups, and without memory.
    const Large* indexFor(List& list) const {
        const std::uintptr_t seen = word();
        if (!isCount(seen)) {
            return pointerIn(seen);
        }
        return list.size() <= k_largestScan || isFewMore(seen) ? nullptr : makeIndex(list);
    }

    /// Notes one lookup more, unless these were enough. Of threads at the same time some note none.
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
        if (list.size() > k_largestVector) {
            fillTree(made->tree.emplace(order()), list);
        } else {
            fillVector(made->entries, list);
        }
        return made;
    }

    /// In the order of the list and not of the keys, in which the nodes of the upper levels would
    /// lie powers of two apart in memory and push each other out of the processor's caches.
    static void fillTree(Tree& tree, List& list) {
        for (Iterator position = list.begin(); position != list.end(); ++position) {
            tree.insert(tree.end(), entryOf(position, true));
        }
    }

    void fillVector(Vector& entries, List& list) const {
        entries.reserve(list.size());
        for (Iterator position = list.begin(); position != list.end(); ++position) {
            entries.push_back(entryOf(position, false));
        }
        std::sort(entries.begin(), entries.end(), order());
    }

    // One word: the address of the index or, without one, an odd number that counts lookups.
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
