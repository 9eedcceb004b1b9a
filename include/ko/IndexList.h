// SPDX-License-Identifier: MIT
//
// ko::IndexList, a sequence whose items keep their address for life and are reached by position at
// once: a linked list of the items and, where they are more than a few, a vector of pointers to
// them.

#pragma once

#include <ko/detail/Companion.h>
#include <ko/detail/NodeMemory.h>

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <list>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace ko {

/// A sequence of T. References and iterators to an item live until that item is removed. An
/// operation that throws while it adds an item leaves the sequence as it was. Positions count from
/// 0.
///
/// The invariant: after every public operation the vector holds exactly the addresses of the list's
/// items, in order, or there is none and there are at most k_largestWalk items.
template<class T>
class IndexList {
public:
    using value_type = T;
    using size_type = std::size_t;
    using difference_type = std::ptrdiff_t;
    using reference = T&;
    using const_reference = const T&;
    using TList = std::list<T, NodeAllocator<T>>;
    using iterator = typename TList::iterator;
    using const_iterator = typename TList::const_iterator;

    IndexList() = default;
    IndexList(const IndexList&) = delete;
    IndexList& operator=(const IndexList&) = delete;
    /// Takes the items over, with their addresses, in constant time; `other` is empty afterwards.
    IndexList(IndexList&& other) noexcept { exchange(other); }
    /// The former items are destroyed; `other` may lie within them.
    IndexList& operator=(IndexList&& other) noexcept {
        IndexList taken(std::move(other));
        exchange(taken);
        return *this;
    }
    virtual ~IndexList() = default;

    /// Appends a copy of `value`, which may be an item of this sequence. Amortised constant cost.
    virtual void push_back(const T& value) { emplaceBack(value); }

    /// Removes the last item. The sequence must not be empty.
    virtual void pop_back() {
        if (m_vector) {
            m_vector->pop_back();
        }
        m_list.pop_back();
    }

    /// Exchanges the items; each keeps its address.
    virtual void swap(IndexList& other) { exchange(other); }

    /// Makes the vector agree with the list. Linear cost.
    virtual void updateVector() {
        if (m_list.size() <= k_largestWalk) {
            m_vector.reset();
            return;
        }
        if (!m_vector) {
            m_vector = std::make_unique<std::vector<T*>>();
        }
        m_vector->resize(m_list.size(), nullptr);
        std::transform(m_list.begin(), m_list.end(), m_vector->begin(),
                       [](T& item) { return &item; });
    }

    /// Removes the item at `position` and answers the position behind it. Linear cost.
    iterator erase(const_iterator position) {
        const iterator next = m_list.erase(position);
        updateVector();
        return next;
    }

    /// Puts all items, with their addresses, before those of `list`, and is empty afterwards.
    void giveAll(TList& list) noexcept {
        m_vector.reset();
        list.splice(list.begin(), m_list);
    }

    size_type size() const noexcept { return m_list.size(); }
    bool empty() const noexcept { return m_list.empty(); }

    T& operator[](size_type position) { return itemAt(*this, position); }
    const T& operator[](size_type position) const { return itemAt(*this, position); }
    /// Throws std::out_of_range when there is no such position.
    T& at(size_type position) { return itemAt(*this, checked(position)); }
    const T& at(size_type position) const { return itemAt(*this, checked(position)); }
    T& front() { return m_list.front(); }
    const T& front() const { return m_list.front(); }
    T& back() { return m_list.back(); }
    const T& back() const { return m_list.back(); }

    iterator begin() noexcept { return m_list.begin(); }
    iterator end() noexcept { return m_list.end(); }
    const_iterator begin() const noexcept { return m_list.begin(); }
    const_iterator end() const noexcept { return m_list.end(); }
    const_iterator cbegin() const noexcept { return m_list.cbegin(); }
    const_iterator cend() const noexcept { return m_list.cend(); }

protected:
    using Companion = typename CompanionOf<T>::Type;

    Companion& companion() noexcept { return m_companion; }

    /// Exchanges the items with no further effect, whatever a subclass makes of swap().
    void exchange(IndexList& other) noexcept {
        m_list.swap(other.m_list);
        m_vector.swap(other.m_vector);
        std::swap(m_companion, other.m_companion);
    }

    template<class... Arguments>
    T& emplaceBack(Arguments&&... arguments) {
        // The vector's room comes first, so that nothing can fail once the item is there.
        const bool isIndexed = m_list.size() >= k_largestWalk || m_vector;
        if (isIndexed) {
            prepareVector();
        }
        T& item = m_list.emplace_back(std::forward<Arguments>(arguments)...);
        if (isIndexed) {
            m_vector->push_back(&item);
        }
        return item;
    }

    /// Walks the sequence and removes the items that `matches` accepts; the item that directly
    /// follows a removed one is passed over unseen. Linear cost. What `matches` throws ends the
    /// walk.
    template<class Matches>
    void eraseMatches(const Matches& matches) {
        UpdateAtEnd update{*this};
        iterator item = m_list.begin();
        while (item != m_list.end()) {
            if (!matches(std::as_const(*item))) {
                ++item;
                continue;
            }
            item = m_list.erase(item);
            update.due = true;
            if (item != m_list.end()) {
                ++item;
            }
        }
    }

private:
    /// Also when the walk ends with an exception. The vector shrinks here, so this never throws.
    struct UpdateAtEnd {
        IndexList& list;
        bool due = false;
        ~UpdateAtEnd() {
            if (due) {
                list.updateVector();
            }
        }
    };

    /// Up to here an item is reached by walking to it, which saves many small arrays a vector.
    static constexpr size_type k_largestWalk = 4;

    /// Gives the vector room for one more than the present items, which it holds afterwards. Throws
    /// std::bad_alloc, leaving the sequence as it was.
    void prepareVector() {
        if (!m_vector) {
            auto vector = std::make_unique<std::vector<T*>>();
            vector->reserve(2 * m_list.size());
            for (T& item : m_list) {
                vector->push_back(&item);
            }
            m_vector = std::move(vector);
        } else if (m_vector->size() == m_vector->capacity()) {
            m_vector->reserve(2 * m_list.size());
        }
    }

    template<class List>
    static auto& itemAt(List& self, size_type position) {
        return self.m_vector
                   ? *(*self.m_vector)[position]
                   : *std::next(self.m_list.begin(), static_cast<difference_type>(position));
    }

    size_type checked(size_type position) const {
        if (position >= size()) {
            throw std::out_of_range("IndexList: there is no item " + std::to_string(position));
        }
        return position;
    }

    TList m_list;
    std::unique_ptr<std::vector<T*>> m_vector;
    Companion m_companion;
};

}  // namespace ko
