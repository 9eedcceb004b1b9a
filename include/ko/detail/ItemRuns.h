// SPDX-License-Identifier: MIT
//
// ko::detail::ItemRuns, where the items of an IndexList lie: in runs, side by side, each further
// run as long as all before it. So an item never moves, and is reached by its position without a
// list of them. Once items are removed from or inserted into the middle, a vector keeps their order
// instead.

#pragma once

#include <ko/detail/LooseItems.h>
#include <ko/detail/SlabArena.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>
#include <new>
#include <stdexcept>
#include <utility>
#include <vector>

namespace ko::detail {

/// Items at positions from 0, whose addresses stay. An operation that throws leaves all as it was.
/// Positions that are given must be there.
///
/// The invariant: the items fill the runs in order; or, where m_shape.isLoose, they are those of
/// m_more.loose.
template<class T>
class ItemRuns {
public:
    ItemRuns() noexcept = default;
    ItemRuns(const ItemRuns&) = delete;
    ItemRuns& operator=(const ItemRuns&) = delete;
    ~ItemRuns() { clear(); }

    std::size_t size() const noexcept { return m_size; }
    /// Whether the items lie in memory in another order, or apart.
    bool isLoose() const noexcept { return m_shape.isLoose; }

    /// Items that lie side by side, and their positions; those from size() on are not there.
    struct Stretch {
        T* first;
        std::size_t begin;
        std::size_t end;
    };

    T& at(std::size_t position) const noexcept {
        const Stretch stretch = stretchAt(position);
        return stretch.first[position - stretch.begin];
    }

    /// The stretch in which the position is.
    Stretch stretchAt(std::size_t position) const noexcept {
        if (position < m_shape.firstLength) {
            return {m_first, 0, m_shape.firstLength};
        }
        if (m_shape.isLoose) {
            return {m_more.loose->items[position], position, position + 1};
        }
        const Spot spot = spotOf(position);
        return {m_more.runs[spot.run], spot.begin, 2 * spot.begin};
    }

    /// Room for so many items in the first run, unless there was one. Throws std::bad_alloc.
    void reserve(std::size_t count) {
        if (m_first == nullptr && !m_shape.isLoose && count != 0) {
            openFirst(std::min(count, k_longestFirst));
        }
    }

    /// Throws std::length_error where std::uint32_t cannot count the items, std::bad_alloc, and
    /// what the constructor throws.
    template<class... Arguments>
    T& append(Arguments&&... arguments) {
        if (m_size < m_shape.firstLength) {
            T* const item = new (m_first + m_size) T(std::forward<Arguments>(arguments)...);
            ++m_size;
            return *item;
        }
        return appendFurther(std::forward<Arguments>(arguments)...);
    }

    /// Before the item at the position. Linear cost, except at the end. Throws as append().
    template<class... Arguments>
    T& insert(std::size_t position, Arguments&&... arguments) {
        if (position == m_size) {
            return append(std::forward<Arguments>(arguments)...);
        }
        loosen();
        return addApart(position, std::forward<Arguments>(arguments)...);
    }

    /// Removes the last item. Constant cost.
    void pop() noexcept {
        T& item = at(m_size - 1);
        --m_size;
        if (m_shape.isLoose) {
            m_more.loose->pop();
            return;
        }
        item.~T();
        if (m_shape.runs != 0 && m_size <= leastFor(m_shape.runs)) {
            dropRun();
        }
    }

    /// Removes the items from `first` to before `last`. Linear cost. Throws std::bad_alloc, but not
    /// where `last` is the end.
    void erase(std::size_t first, std::size_t last) {
        if (last == m_size) {
            truncate(first);
        } else if (first != last) {
            loosen();
            m_more.loose->erase(first, last);
            m_size -= static_cast<std::uint32_t>(last - first);
        }
    }

    /// Removes the items at the positions, which ascend. Linear cost. Throws std::bad_alloc.
    void erase(const std::vector<std::uint32_t>& positions) {
        if (positions.empty()) {
            return;
        }
        if (positions.front() + positions.size() == m_size) {
            truncate(positions.front());
        } else {
            loosen();
            m_more.loose->erase(positions);
            m_size -= static_cast<std::uint32_t>(positions.size());
        }
    }

    void clear() noexcept { truncate(0); }

    /// Forgets the items from `size` on, whose destructors would have nothing to do. What memory
    /// that sets free goes with the last item. Constant cost where the items lie in runs.
    void shorten(std::size_t size) noexcept {
        if (m_shape.isLoose) {
            truncate(size);
        } else {
            m_size = static_cast<std::uint32_t>(size);
        }
    }

    void swap(ItemRuns& other) noexcept {
        std::swap(m_first, other.m_first);
        std::swap(m_more, other.m_more);
        std::swap(m_size, other.m_size);
        std::swap(m_shape, other.m_shape);
    }

private:
    using Memory = ItemMemory<T>;

    /// Of a first run whose length is not known: most arrays are empty or shorter.
    static constexpr std::size_t k_firstLength = 2;
    static constexpr std::uint32_t k_mostItems = std::numeric_limits<std::uint32_t>::max() - 1;
    static constexpr unsigned k_firstBits = 25;
    static constexpr std::size_t k_longestFirst = (std::size_t{1} << k_firstBits) - 1;
    /// How many addresses of further runs m_more.runs has room for, at first and in the end.
    static constexpr unsigned k_fewRuns = 3;
    static constexpr unsigned k_mostRuns = 31;

    struct Shape {
        std::uint32_t firstLength : k_firstBits;  ///< of the first run, in items; 0 for none
        std::uint32_t runs : 5;                   ///< how many more there are
        std::uint32_t isWide : 1;                 ///< m_more.runs has room for k_mostRuns
        std::uint32_t isLoose : 1;
    };

    union More {
        T** runs;
        LooseItems<T>* loose;
    };

    /// A further run, and the position of its first item, which is also its length.
    struct Spot {
        unsigned run;
        std::size_t begin;
    };

    static unsigned width(std::size_t number) noexcept {
        return 64U - static_cast<unsigned>(__builtin_clzll(number));
    }

    Spot spotOf(std::size_t position) const noexcept {
        const std::size_t first = m_shape.firstLength;
        const unsigned shift = width(position) - width(first);
        const std::size_t begin = first << shift;
        return position < begin ? Spot{shift - 1, begin / 2} : Spot{shift, begin};
    }

    std::size_t lengthOf(unsigned run) const noexcept {
        return std::size_t{m_shape.firstLength} << run;
    }

    /// With no more items than this, the last of so many runs is empty, and the one before it too:
    /// so adding and removing an item by turns costs no run each time.
    std::size_t leastFor(unsigned runs) const noexcept { return runs < 2 ? 0 : lengthOf(runs - 2); }

    /// Where the first run is full, or there is none. Usual is room in the last one.
    template<class... Arguments>
    [[gnu::noinline]] T& appendFurther(Arguments&&... arguments) {
        if (T* const place = m_shape.runs == 0 ? nullptr : placeInLastRun()) {
            T* const item = new (place) T(std::forward<Arguments>(arguments)...);
            ++m_size;
            return *item;
        }
        return addApart(m_size, std::forward<Arguments>(arguments)...);
    }

    /// Null where the run is full, or is not the one to be filled.
    T* placeInLastRun() const noexcept {
        const unsigned last = m_shape.runs - 1U;
        const std::size_t position = m_size - lengthOf(last);
        return position < lengthOf(last) && m_size < k_mostItems ? m_more.runs[last] + position
                                                                 : nullptr;
    }

    /// At the end, or anywhere among loose items.
    template<class... Arguments>
    [[gnu::noinline]] T& addApart(std::size_t position, Arguments&&... arguments) {
        if (m_size >= k_mostItems) {
            throw std::length_error("IndexList: too many items");
        }
        T& item = m_shape.isLoose
                      ? m_more.loose->insert(position, std::forward<Arguments>(arguments)...)
                      : *new (room()) T(std::forward<Arguments>(arguments)...);
        ++m_size;
        return item;
    }

    void openFirst(std::size_t length) {
        m_first = Memory::allocate(length);
        m_shape.firstLength = static_cast<std::uint32_t>(length) & ((1U << k_firstBits) - 1U);
    }

    /// For the item after the last one.
    T* room() {
        if (m_size < m_shape.firstLength) {
            return m_first + m_size;
        }
        if (m_first == nullptr) {
            openFirst(k_firstLength);
            return m_first;
        }
        const Spot spot = spotOf(m_size);
        if (spot.run == m_shape.runs) {
            addRun();
        }
        return m_more.runs[spot.run] + (m_size - spot.begin);
    }

    std::size_t roomForRuns() const noexcept { return m_shape.isWide ? k_mostRuns : k_fewRuns; }

    void addRun() {
        Memory run(lengthOf(m_shape.runs));
        if (m_shape.runs == 0 || (m_shape.runs == k_fewRuns && !m_shape.isWide)) {
            moveRuns(m_shape.runs != 0);
        }
        m_more.runs[m_shape.runs] = run.take();
        m_shape.runs = (m_shape.runs + 1U) & k_mostRuns;
    }

    void moveRuns(bool isWide) {
        const std::size_t room = isWide ? k_mostRuns : k_fewRuns;
        auto** const runs = static_cast<T**>(SlabArena::allocate(room * sizeof(T*)));
        std::copy_n(m_more.runs, m_shape.runs, runs);
        releaseRuns();
        m_more.runs = runs;
        m_shape.isWide = isWide ? 1 : 0;
    }

    /// The array of runs, not these.
    void releaseRuns() noexcept {
        SlabArena::release(m_more.runs, roomForRuns() * sizeof(T*));
        m_more.runs = nullptr;
    }

    void dropRun() noexcept {
        m_shape.runs = (m_shape.runs - 1U) & k_mostRuns;
        Memory::release(m_more.runs[m_shape.runs], lengthOf(m_shape.runs));
        if (m_shape.runs == 0) {
            releaseRuns();
            m_shape.isWide = 0;
        }
    }

    void truncate(std::size_t size) noexcept {
        while (m_size != size) {
            pop();
        }
        if (m_size == 0) {
            forget();
        }
    }

    /// Of no item: frees what is left of its memory.
    void forget() noexcept {
        if (m_shape.isLoose) {
            delete m_more.loose;
        } else {
            while (m_shape.runs != 0) {
                dropRun();
            }
            Memory::release(m_first, m_shape.firstLength);
        }
        m_first = nullptr;
        m_more = {nullptr};
        m_shape = {};
    }

    void loosen() {
        if (m_shape.isLoose) {
            return;
        }
        auto loose = std::make_unique<LooseItems<T>>();
        loose->reserve(m_size + std::size_t{1}, m_shape.runs + std::size_t{1});
        for (std::size_t position = 0; position != m_size; ++position) {
            loose->items.push_back(&at(position));
        }
        addRun(*loose, m_first, 0, m_shape.firstLength);
        for (unsigned run = 0; run != m_shape.runs; ++run) {
            addRun(*loose, m_more.runs[run], lengthOf(run), lengthOf(run));
        }
        releaseRuns();
        m_first = nullptr;
        m_more.loose = loose.release();
        m_shape = {};
        m_shape.isLoose = 1;
    }

    void addRun(LooseItems<T>& loose, T* begin, std::size_t position, std::size_t length) noexcept {
        if (position < m_size) {
            loose.addRun(begin, length, std::min(length, m_size - position));
        } else {
            Memory::release(begin, length);
        }
    }

    T* m_first = nullptr;  ///< the first run
    More m_more{nullptr};
    std::uint32_t m_size = 0;
    Shape m_shape{};
};

}  // namespace ko::detail
