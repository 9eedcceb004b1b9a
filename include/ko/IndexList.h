// SPDX-License-Identifier: MIT
//
// ko::IndexList, a sequence whose items keep their address for life and are reached by position at
// once.

#pragma once

#include <ko/detail/ItemIterator.h>
#include <ko/detail/ItemRuns.h>
#include <ko/detail/PlacesOf.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace ko {

/// A sequence of T. References to an item live until that item is removed; iterators stand for
/// positions, which change when items before them come or go. An operation that throws leaves the
/// sequence as it was. Positions count from 0; there are at most 2^32 - 2. An operation that states
/// no cost is O(1).
template<class T>
class IndexList : public detail::PlacesOf<T> {
public:
    using value_type = T;
    using size_type = std::size_t;
    using difference_type = std::ptrdiff_t;
    using reference = T&;
    using const_reference = const T&;
    using iterator = detail::ItemIterator<T, T>;
    using const_iterator = detail::ItemIterator<T, const T>;
    using reverse_iterator = std::reverse_iterator<iterator>;
    using const_reverse_iterator = std::reverse_iterator<const_iterator>;

    IndexList() = default;
    IndexList(const IndexList&) = delete;
    IndexList& operator=(const IndexList&) = delete;
    /// Linear cost.
    virtual ~IndexList() { ItemPlaces::end(); }

    /// Appends a copy of `value`, which may be an item of this sequence. Amortised constant cost.
    virtual void push_back(const T& value) { emplaceBack(value); }

    /// Removes the last item. The sequence must not be empty. Constant cost.
    virtual void pop_back() { m_items.pop(); }

    /// Exchanges the items; each keeps its address. Throws, with no effect, where the items could
    /// not be freed any more, since one of these sequences lies within an item of the other.
    /// Constant cost besides finding that out, which takes a walk up to the root.
    virtual void swap(IndexList& other) {
        if (this != &other) {
            ItemPlaces::beginExchange(*this, other);
            exchange(other);
        }
    }

    /// Notifies a subclass that positions have changed. Here it has nothing to do.
    virtual void updateVector() {}

    /// Inserts a copy of `value`, which may be an item of this sequence, before the position and
    /// returns the new item's. Linear cost.
    iterator insert(const_iterator position, const T& value) {
        return emplaceAt(position.position(), value);
    }
    /// The same. Throws std::out_of_range for a position after the end.
    iterator insert(size_type position, const T& value) {
        return emplaceAt(checked(position, size() + 1), value);
    }

    /// Removes the item at `position` and returns the position after it. Linear cost. Throws
    /// std::bad_alloc, unless it is the last item.
    iterator erase(const_iterator position) { return erase(position, position + 1); }
    /// Removes the items from `first` to before `last`. Linear cost. Throws std::bad_alloc, unless
    /// `last` is the end.
    iterator erase(const_iterator first, const_iterator last) {
        if (first != last) {
            m_items.erase(first.position(), last.position());
            updateVector();
        }
        return iteratorAt(first.position());
    }

    /// Removes all items. Linear cost.
    void clear() noexcept { m_items.clear(); }

    /// Removes items from the end, or appends items made from nothing, up to that number. Linear in
    /// the number of items that come or go.
    void resize(size_type count) {
        const size_type before = size();
        m_items.erase(std::min(before, count), before);
        try {
            while (size() < count) {
                m_items.append();
            }
        } catch (...) {
            m_items.erase(before, size());
            throw;
        }
        updateVector();
    }

    /// Makes room for so many items side by side. No effect once there was an item. Throws
    /// std::bad_alloc.
    void reserve(size_type count) { m_items.reserve(count); }

    size_type size() const noexcept { return m_items.size(); }
    bool empty() const noexcept { return size() == 0; }

    T& operator[](size_type position) { return m_items.at(position); }
    const T& operator[](size_type position) const { return m_items.at(position); }
    /// Throws std::out_of_range when there is no such position. O(1).
    T& at(size_type position) { return m_items.at(checked(position, size())); }
    const T& at(size_type position) const { return m_items.at(checked(position, size())); }
    T& front() { return m_items.at(0); }
    const T& front() const { return m_items.at(0); }
    T& back() { return m_items.at(size() - 1); }
    const T& back() const { return m_items.at(size() - 1); }

    iterator begin() noexcept { return iteratorAt(0); }
    iterator end() noexcept { return iteratorAt(size()); }
    const_iterator begin() const noexcept { return const_iterator(m_items, 0); }
    const_iterator end() const noexcept { return const_iterator(m_items, size()); }
    const_iterator cbegin() const noexcept { return begin(); }
    const_iterator cend() const noexcept { return end(); }
    reverse_iterator rbegin() noexcept { return reverse_iterator(end()); }
    reverse_iterator rend() noexcept { return reverse_iterator(begin()); }
    const_reverse_iterator rbegin() const noexcept { return const_reverse_iterator(end()); }
    const_reverse_iterator rend() const noexcept { return const_reverse_iterator(begin()); }
    const_reverse_iterator crbegin() const noexcept { return rbegin(); }
    const_reverse_iterator crend() const noexcept { return rend(); }

    /// Removes the items that `matches` accepts and returns how many there were. Linear cost.
    /// Throws what `matches` throws, and std::bad_alloc.
    template<class Matches>
    size_type eraseIf(Matches&& matches) {
        return eraseMatches(matches, false);
    }

protected:
    using ItemPlaces = detail::PlacesOf<T>;

    iterator iteratorAt(size_type position) noexcept { return iterator(m_items, position); }

    size_type checked(size_type position, size_type end) const {
        if (position >= end) {
            throw std::out_of_range("IndexList: there is no item " + std::to_string(position));
        }
        return position;
    }

    /// Exchanges the items with no further effect.
    void exchange(IndexList& other) noexcept { m_items.swap(other.m_items); }

    // See detail::ItemRuns.
    typename detail::ItemRuns<T>::Stretch stretchAt(size_type position) const noexcept {
        return m_items.stretchAt(position);
    }
    bool isLoose() const noexcept { return m_items.isLoose(); }
    void shorten(size_type size) noexcept { m_items.shorten(size); }

    template<class... Arguments>
    T& emplaceBack(Arguments&&... arguments) {
        return m_items.append(std::forward<Arguments>(arguments)...);
    }

    /// As eraseIf(); where `skips`, the item that directly follows a removed one is skipped
    /// unseen.
    template<class Matches>
    size_type eraseMatches(Matches& matches, bool skips) {
        std::vector<std::uint32_t> found;
        bool isSkipped = false;
        for (iterator item = begin(); item != end(); ++item) {
            const bool isFound = !isSkipped && matches(*item);
            if (isFound) {
                found.push_back(static_cast<std::uint32_t>(item.position()));
            }
            isSkipped = isFound && skips;
        }
        m_items.erase(found);
        if (!found.empty()) {
            updateVector();
        }
        return found.size();
    }

    template<class Value>
    iterator emplaceAt(size_type position, Value&& value) {
        m_items.insert(position, std::forward<Value>(value));
        updateVector();
        return iteratorAt(position);
    }

private:
    detail::ItemRuns<T> m_items;
};

}  // namespace ko
