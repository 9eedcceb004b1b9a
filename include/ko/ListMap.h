// SPDX-License-Identifier: MIT
//
// ko::ListMap, a map that keeps its members in the order in which they came in: a linked list of
// the members and, beside it once keys were looked up a few times, a sorted index of the list's
// positions by key.

#pragma once

#include <ko/detail/KeyIndex.h>
#include <ko/detail/PlacesOf.h>
#include <ko/detail/SlabArena.h>

#include <cstddef>
#include <functional>
#include <list>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

namespace ko {

/// Members (key, value) with unique keys in insertion order. References and iterators to a member
/// live until it is removed. Callers may change a member's value through an iterator, never its
/// key. An operation that throws while it adds a member leaves the map as it was. An operation that
/// states no cost is O(1).
template<class Key, class Value, class Compare>
class ListMap : public detail::PlacesOf<Value> {
public:
    using key_type = Key;
    using mapped_type = Value;
    using value_type = std::pair<Key, Value>;
    using size_type = std::size_t;
    using difference_type = std::ptrdiff_t;
    using reference = value_type&;
    using const_reference = const value_type&;
    using List = std::list<value_type, NodeAllocator<value_type>>;
    using iterator = typename List::iterator;
    using const_iterator = typename List::const_iterator;

    template<class Like>
    using EnableIfLike = std::enable_if_t<std::is_same_v<Compare, std::less<Key>> &&
                                          !std::is_convertible_v<const Like&, Key>>;

    explicit ListMap(const Compare& compare = Compare()) : m_map(compare) {}

    /// Linear cost.
    ListMap(const ListMap& other) : ItemPlaces(), m_map(other.m_map.compare()) {
        SlabArena nodes(sizeof(value_type) * 2 * other.size());
        const SlabArena::Scope scope(nodes);
        m_list = other.m_list;
    }
    /// The copy is complete before the former members are destroyed, so `other` may lie within
    /// them. Linear cost.
    ListMap& operator=(const ListMap& other) {
        if (this != &other) {
            ListMap copy(other);
            exchange(copy);
            ItemPlaces::renew(*this);
        }
        return *this;
    }

    /// Linear cost.
    virtual ~ListMap() { ItemPlaces::end(); }

    /// Appends a copy of `member`, or, when its key is there already, assigns to the present
    /// member, which keeps its place in the order. Returns the member and whether it is new.
    /// O(log n).
    virtual std::pair<iterator, bool> insert(const value_type& member) {
        const Spot spot = m_map.spotOf(m_list, member.first);
        if (spot.position != m_list.end()) {
            assign(*spot.position, member);
            return {spot.position, false};
        }
        return {add(spot, m_list.end(), member), true};
    }

    /// Inserts a copy of `member` before `position` and returns its position. When its key is there
    /// already, returns that member's position and changes nothing. O(log n).
    virtual iterator insert(iterator position, const value_type& member) {
        const Spot spot = m_map.spotOf(m_list, member.first);
        return spot.position != m_list.end() ? spot.position : add(spot, position, member);
    }

    /// Exchanges the members; each keeps its address. Throws, with no effect, where the members
    /// could not be freed any more, since one of these maps lies within a member of the other.
    /// Constant cost besides finding that out, which takes a walk up to the root.
    virtual void swap(ListMap& other) {
        if (this != &other) {
            ItemPlaces::beginExchange(*this, other);
            exchange(other);
        }
    }

    ///@{
    /// The member with that key, or end(). O(log n), except that in a map of more than a few
    /// members the first times are O(n), and the one after them O(n log n).
    iterator find(const Key& key) { return m_map.find(m_list, key); }
    const_iterator find(const Key& key) const {
        // The index gives positions of a list that may be changed; this one is not.
        return m_map.find(const_cast<List&>(m_list), key);
    }
    ///@}
    ///@{
    /// The same without a Key, such as by a std::string_view where keys are std::string.
    template<class Like, class = EnableIfLike<Like>>
    iterator find(const Like& key) {
        return m_map.find(m_list, key);
    }
    template<class Like, class = EnableIfLike<Like>>
    const_iterator find(const Like& key) const {
        return m_map.find(const_cast<List&>(m_list), key);
    }
    ///@}
    ///@{
    /// Whether there is a member with that key. Costs find().
    bool contains(const Key& key) const { return find(key) != end(); }
    template<class Like, class = EnableIfLike<Like>>
    bool contains(const Like& key) const {
        return find(key) != end();
    }
    ///@}

    /// Removes the member and returns the position after it. O(log n).
    iterator erase(iterator position) {
        m_map.erase(m_list, position);
        return m_list.erase(position);
    }
    ///@{
    /// Removes the member with that key and returns how many there were: 0 or 1. O(log n).
    size_type erase(const Key& key) { return eraseFound(find(key)); }
    template<class Like, class = EnableIfLike<Like>>
    size_type erase(const Like& key) {
        return eraseFound(find(key));
    }
    ///@}

    /// Removes all members. Linear cost.
    void clear() noexcept {
        m_map.clear();
        m_list.clear();
    }

    /// Removes the members that `matches` accepts and returns how many there were. Linear cost, and
    /// O(log n) for each member that is removed. Throws what `matches` throws, and std::bad_alloc.
    template<class Matches>
    size_type eraseIf(Matches&& matches) {
        std::vector<iterator> found;
        for (iterator member = begin(); member != end(); ++member) {
            if (matches(*member)) {
                found.push_back(member);
            }
        }
        for (const iterator member : found) {
            erase(member);
        }
        return found.size();
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
    using ItemPlaces = detail::PlacesOf<Value>;

    /// The member with that key, which is a Key or, where keys are texts, a text, and whether it is
    /// new: then it was appended, and Key and Value were made of what is given here, which
    /// otherwise is left alone.
    template<class Like, class... Arguments>
    std::pair<iterator, bool> findOrAppend(Like&& key, Arguments&&... value) {
        const Spot spot = m_map.spotOf(m_list, key);
        if (spot.position != m_list.end()) {
            return {spot.position, false};
        }
        return {add(spot, m_list.end(), std::piecewise_construct,
                    std::forward_as_tuple(std::forward<Like>(key)),
                    std::forward_as_tuple(std::forward<Arguments>(value)...)),
                true};
    }

    /// Appends a member with a key that is not there yet, and forgets the index: for filling a map
    /// in which nothing is looked up meanwhile. Throws std::bad_alloc, with the members as they
    /// were.
    template<class Like, class... Arguments>
    value_type& appendNew(const Like& key, Arguments&&... value) {
        m_map.clear();
        return m_list.emplace_back(std::piecewise_construct, std::forward_as_tuple(key),
                                   std::forward_as_tuple(std::forward<Arguments>(value)...));
    }

    // For a map that is being emptied, of which nothing is looked up any more.

    value_type& firstMember() noexcept { return m_list.front(); }
    void removeFirstMember() noexcept {
        m_map.clear();
        m_list.pop_front();
    }

    /// Exchanges the members with no further effect, whatever a subclass makes of swap().
    void exchange(ListMap& other) noexcept {
        m_list.swap(other.m_list);
        m_map.swap(other.m_map);
    }

private:
    using Index = KeyIndex<List, Key, Compare>;
    using Spot = typename Index::Spot;

    template<class... Arguments>
    iterator add(const Spot& spot, iterator position, Arguments&&... arguments) {
        const iterator added = m_list.emplace(position, std::forward<Arguments>(arguments)...);
        try {
            m_map.enter(added, spot);
        } catch (...) {
            m_list.erase(added);
            throw;
        }
        return added;
    }

    size_type eraseFound(iterator present) {
        if (present == m_list.end()) {
            return 0;
        }
        erase(present);
        return 1;
    }

    static void assign(value_type& present, const value_type& member) {
        if (&present != &member) {
            present.first = member.first;
            present.second = member.second;
        }
    }

    List m_list;
    Index m_map;
};

}  // namespace ko
