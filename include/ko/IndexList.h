// SPDX-License-Identifier: MIT
//
// ko::IndexList, a sequence whose items keep their address for life and are reached by position at
// once: a linked list of the items and a vector of pointers to them.

#pragma once

#include <algorithm>
#include <cstddef>
#include <list>
#include <stdexcept>
#include <utility>
#include <vector>

namespace ko {

/// A sequence of T. References and iterators to an item live until that item is removed. After
/// every public operation the vector holds exactly the addresses of the list's items, in order. An
/// operation that throws while it adds an item leaves the sequence as it was. Positions count from
/// 0.
template<class T>
class IndexList {
public:
    using value_type = T;
    using size_type = std::size_t;
    using difference_type = std::ptrdiff_t;
    using reference = T&;
    using const_reference = const T&;
    using iterator = typename std::list<T>::iterator;
    using const_iterator = typename std::list<T>::const_iterator;

    IndexList() = default;
    IndexList(const IndexList&) = delete;
    IndexList& operator=(const IndexList&) = delete;
    virtual ~IndexList() = default;

    /// Appends a copy of `value`, which may be an item of this sequence. Amortised constant cost.
    virtual void push_back(const T& value) { emplaceBack(value); }

    /// Removes the last item. The sequence must not be empty.
    virtual void pop_back() {
        m_vector.pop_back();
        m_list.pop_back();
    }

    /// Exchanges the items; each keeps its address.
    virtual void swap(IndexList& other) {
        m_list.swap(other.m_list);
        m_vector.swap(other.m_vector);
    }

    /// Makes the vector agree with the list. Linear cost.
    virtual void updateVector() {
        m_vector.resize(m_list.size(), nullptr);
        size_type position = 0;
        for (T& item : m_list) {
            m_vector[position++] = &item;
        }
    }

    /// Removes the item at `position` and answers the position behind it. Linear cost.
    iterator erase(const_iterator position) {
        const iterator next = m_list.erase(position);
        updateVector();
        return next;
    }

    /// Hands out all items, with their addresses, and is empty afterwards.
    std::list<T> takeAll() noexcept {
        m_vector.clear();
        return std::exchange(m_list, std::list<T>());
    }

    size_type size() const noexcept { return m_list.size(); }
    bool empty() const noexcept { return m_list.empty(); }

    T& operator[](size_type position) { return *m_vector[position]; }
    const T& operator[](size_type position) const { return *m_vector[position]; }
    /// Throws std::out_of_range when there is no such position.
    T& at(size_type position) { return *m_vector.at(position); }
    const T& at(size_type position) const { return *m_vector.at(position); }
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
    template<class... Arguments>
    T& emplaceBack(Arguments&&... arguments) {
        // The vector's room comes first, so that nothing can fail once the item is there.
        constexpr size_type firstRoom = 4;
        if (m_vector.size() == m_vector.capacity()) {
            m_vector.reserve(std::max(firstRoom, m_vector.size() * 2));
        }
        m_list.emplace_back(std::forward<Arguments>(arguments)...);
        m_vector.push_back(&m_list.back());
        return m_list.back();
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

    std::list<T> m_list;
    std::vector<T*> m_vector;
};

}  // namespace ko
