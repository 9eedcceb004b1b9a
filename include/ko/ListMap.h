// SPDX-License-Identifier: MIT
//
// ko::ListMap, a map that keeps its members in the order in which they came in: a linked list of
// the members and, beside it, a sorted index of the list's positions by key.

#pragma once

#include <ko/KeyIndex.h>

#include <cstddef>
#include <list>
#include <tuple>
#include <utility>

namespace ko {

/// Members (key, value) with unique keys in insertion order. References and iterators to a member
/// live until it is removed. The index has exactly one entry for each member. Callers may change a
/// member's value through an iterator, never its key. An operation that throws while it adds a
/// member leaves the map as it was.
template<class Key, class Value, class Compare>
class ListMap {
public:
    using key_type = Key;
    using mapped_type = Value;
    using value_type = std::pair<Key, Value>;
    using size_type = std::size_t;
    using difference_type = std::ptrdiff_t;
    using reference = value_type&;
    using const_reference = const value_type&;
    using iterator = typename std::list<value_type>::iterator;
    using const_iterator = typename std::list<value_type>::const_iterator;

    explicit ListMap(const Compare& compare = Compare()) : m_map(compare) {}

    ListMap(const ListMap& other) : m_list(other.m_list), m_map(other.m_map.compare()) {
        for (iterator member = m_list.begin(); member != m_list.end(); ++member) {
            m_map.insert(member);
        }
    }

    /// The copy is complete before the former members are destroyed, so `other` may lie within
    /// them.
    ListMap& operator=(const ListMap& other) {
        if (this != &other) {
            ListMap copy(other);
            exchange(copy);
        }
        return *this;
    }

    virtual ~ListMap() = default;

    /// Appends a copy of `member`, or, when its key is there already, assigns to the present
    /// member, which keeps its place in the order. Answers the member and whether it is new.
    /// O(log n).
    virtual std::pair<iterator, bool> insert(const value_type& member) {
        const iterator present = find(member.first);
        if (present != m_list.end()) {
            assign(*present, member);
            return {present, false};
        }
        return {add(m_list.end(), member), true};
    }

    /// Inserts a copy of `member` before `position` and answers its position. When its key is there
    /// already, answers that member's position and changes nothing. O(log n).
    virtual iterator insert(iterator position, const value_type& member) {
        const iterator present = find(member.first);
        return present != m_list.end() ? present : add(position, member);
    }

    /// Exchanges the members; each keeps its address.
    virtual void swap(ListMap& other) {
        if (this != &other) {
            exchange(other);
        }
    }

    /// The member with that key, or end(). O(log n).
    iterator find(const Key& key) {
        const iterator* const present = m_map.find(key);
        return present == nullptr ? m_list.end() : *present;
    }
    const_iterator find(const Key& key) const {
        const iterator* const present = m_map.find(key);
        return present == nullptr ? m_list.end() : const_iterator(*present);
    }
    bool contains(const Key& key) const { return m_map.find(key) != nullptr; }

    /// Removes the member and answers the position behind it. O(log n).
    iterator erase(iterator position) {
        m_map.erase(position);
        return m_list.erase(position);
    }
    /// Removes the member with that key and answers how many there were: 0 or 1. O(log n).
    size_type erase(const Key& key) {
        const iterator present = find(key);
        if (present == m_list.end()) {
            return 0;
        }
        erase(present);
        return 1;
    }

    /// Hands out all members, with their addresses, and is empty afterwards.
    std::list<value_type> takeAll() noexcept {
        m_map.clear();
        return std::exchange(m_list, std::list<value_type>());
    }

    size_type size() const noexcept { return m_list.size(); }
    bool empty() const noexcept { return m_list.empty(); }
    iterator begin() noexcept { return m_list.begin(); }
    iterator end() noexcept { return m_list.end(); }
    const_iterator begin() const noexcept { return m_list.begin(); }
    const_iterator end() const noexcept { return m_list.end(); }
    const_iterator cbegin() const noexcept { return m_list.cbegin(); }
    const_iterator cend() const noexcept { return m_list.cend(); }

protected:
    /// Appends a member made of `key`, which must not be there yet, and a default value.
    iterator append(Key&& key) {
        return add(m_list.end(), std::piecewise_construct, std::forward_as_tuple(std::move(key)),
                   std::forward_as_tuple());
    }

    /// Exchanges the members with no further effect, whatever a subclass makes of swap().
    void exchange(ListMap& other) noexcept {
        m_list.swap(other.m_list);
        m_map.swap(other.m_map);
    }

private:
    template<class... Arguments>
    iterator add(iterator position, Arguments&&... arguments) {
        const iterator added = m_list.emplace(position, std::forward<Arguments>(arguments)...);
        try {
            m_map.insert(added);
        } catch (...) {
            m_list.erase(added);
            throw;
        }
        return added;
    }

    static void assign(value_type& present, const value_type& member) {
        if (&present != &member) {
            present.first = member.first;
            present.second = member.second;
        }
    }

    std::list<value_type> m_list;
    KeyIndex<iterator, Key, Compare> m_map;
};

}  // namespace ko
