// SPDX-License-Identifier: MIT
//
// ko::detail::LooseItems, the items of an IndexList in another order than that in which they lie: a
// vector keeps the order. An item never moves. See ItemRuns.h, which uses this only once items are
// removed from or inserted into the middle.

#pragma once

#include <ko/detail/SlabArena.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <utility>
#include <vector>

namespace ko::detail {

/// Memory for items, which belongs to this as long as nothing has taken it.
template<class T>
class ItemMemory {
public:
    /// Throws std::bad_alloc.
    explicit ItemMemory(std::size_t count) : m_memory(allocate(count)), m_count(count) {}
    ItemMemory(const ItemMemory&) = delete;
    ItemMemory& operator=(const ItemMemory&) = delete;
    ~ItemMemory() { release(m_memory, m_count); }

    T* get() const noexcept { return m_memory; }
    T* take() noexcept { return std::exchange(m_memory, nullptr); }

    static T* allocate(std::size_t count) {
        return static_cast<T*>(SlabArena::allocate(count * sizeof(T)));
    }
    static void release(T* memory, std::size_t count) noexcept {
        SlabArena::release(memory, count * sizeof(T));
    }

private:
    static_assert(alignof(T) <= SlabArena::k_alignment);

    T* m_memory;
    std::size_t m_count;
};

/// Does not destroy the items at its end: ItemRuns removes them first.
template<class T>
class LooseItems {
public:
    std::vector<T*> items;  ///< in their order, each in one of the runs or in memory of its own

    /// Throws std::bad_alloc.
    void reserve(std::size_t count, std::size_t runCount) {
        items.reserve(count);
        m_runs.reserve(runCount);
    }

    /// Takes memory in which `used` items lie. There must be room for it.
    void addRun(T* begin, std::size_t length, std::size_t used) noexcept {
        m_runs.push_back({begin, length, used});
    }

    /// Before the item at the position. Linear cost, except at the end. Throws std::bad_alloc and
    /// what the constructor throws, with no effect.
    template<class... Arguments>
    T& insert(std::size_t position, Arguments&&... arguments) {
        if (items.size() == items.capacity()) {
            items.reserve(2 * items.size() + 1);
        }
        ItemMemory<T> memory(1);
        T* const item = new (memory.get()) T(std::forward<Arguments>(arguments)...);
        items.insert(items.begin() + static_cast<std::ptrdiff_t>(position), memory.take());
        return *item;
    }

    /// Removes the last item.
    void pop() noexcept {
        destroy(items.back());
        items.pop_back();
    }

    /// Removes the items from `first` to before `last`. Linear cost.
    void erase(std::size_t first, std::size_t last) noexcept {
        for (std::size_t position = first; position != last; ++position) {
            destroy(items[position]);
        }
        items.erase(items.begin() + static_cast<std::ptrdiff_t>(first),
                    items.begin() + static_cast<std::ptrdiff_t>(last));
    }

    /// Removes the items at the positions, of which there is one at least and which ascend. Linear
    /// cost.
    void erase(const std::vector<std::uint32_t>& positions) noexcept {
        auto next = positions.begin();
        std::size_t kept = *next;
        for (std::size_t position = kept; position != items.size(); ++position) {
            if (next != positions.end() && *next == position) {
                destroy(items[position]);
                ++next;
            } else {
                items[kept++] = items[position];
            }
        }
        items.resize(kept);
    }

private:
    struct Run {
        T* begin;
        std::size_t length;
        std::size_t used;  ///< how many items still lie in it
    };

    void destroy(T* item) noexcept {
        item->~T();
        release(item);
    }

    /// The memory of an item that is no longer there.
    void release(T* item) noexcept {
        const auto run = std::find_if(m_runs.begin(), m_runs.end(), [=](const Run& each) {
            return !std::less<>()(item, each.begin) &&
                   std::less<>()(item, each.begin + each.length);
        });
        if (run == m_runs.end()) {
            ItemMemory<T>::release(item, 1);
        } else if (--run->used == 0) {
            ItemMemory<T>::release(run->begin, run->length);
            m_runs.erase(run);
        }
    }

    std::vector<Run> m_runs;
};

}  // namespace ko::detail
