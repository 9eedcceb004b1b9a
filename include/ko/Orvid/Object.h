// SPDX-License-Identifier: MIT
//
// Object, the members of an object element.

#pragma once

#include <ko/ListMap.h>
#include <ko/Orvid/Element.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

namespace ko::Orvid {

/// The members of an object element, in insertion order; the values name that element as their
/// parent. Made for std::string and Element only.
///
/// Every value has its member's key, the object's parent and the index k_noIndex. An operation that
/// states no cost is O(1).
template<class Key, class Value, class Compare>
class KO_API Object : public ListMap<Key, Value, Compare>, public InSlabArena {
public:
    using TBase = ListMap<Key, Value, Compare>;
    using typename TBase::iterator;
    using typename TBase::value_type;

    /// An empty object whose values will name `parent`, which may be null. Constant cost.
    explicit Object(Value* parent = nullptr);
    /// Deep copies of the other's members, in its order. Throws std::bad_alloc. Linear cost, and
    /// O(log n) for each member.
    Object(const Object& other, Value* parent = nullptr);
    /// The same in place of the present members; the parent stays. The copies are complete before
    /// the former members are destroyed. Throws std::bad_alloc, leaving this object unchanged.
    /// Linear cost, and O(log n) for each member.
    Object& operator=(const Object& other);
    /// Takes the other's members over, with their addresses, whose parent is `parent` then; `other`
    /// is empty afterwards. Linear in the number of members.
    Object(Object&& other, Value* parent = nullptr) noexcept;
    /// The same in place of the present members; the parent stays. `other` may lie within them.
    /// Where this object lies within a member of `other`, the members are copied, and only then
    /// std::bad_alloc may be thrown, leaving this object unchanged. Linear in the members of both.
    // NOLINTNEXTLINE(performance-noexcept-move-constructor): a cycle is avoided by a copy
    Object& operator=(Object&& other);
    /// Linear cost.
    ~Object() override;

    ///@{
    /// As ListMap::insert(); the new value learns its place.
    std::pair<iterator, bool> insert(const value_type& member) override;
    iterator insert(iterator position, const value_type& member) override;
    ///@}
    /// The member with that key, set to null; appended when it is not there yet. The way to build
    /// an object. O(log n).
    Value& resetMember(std::string_view key);
    /// The member with that key as it is, or a null one that is appended, and whether it is new.
    /// O(log n). Throws std::bad_alloc, leaving the object unchanged.
    std::pair<iterator, bool> try_emplace(std::string_view key);
    ///@{
    /// Sets the member with that key to `value`, which is null afterwards; it is appended when it
    /// is not there yet. Returns the member and whether it is new. O(log n), and a walk up to the
    /// root where `value` has children. Where this object lies within `value`, a copy is set, and
    /// `value` stays as it is. Throws std::bad_alloc, with both as they were.
    std::pair<iterator, bool> insert_or_assign(Key key, Value&& value);
    std::pair<iterator, bool> insert_or_assign(Key key, detail::Converted value) {
        return insert_or_assign(std::move(key), std::move(value.element));
    }
    template<class Text, class = std::enable_if_t<std::is_same_v<Text, std::string_view>>>
    std::pair<iterator, bool> insert_or_assign(Text key, Value&& value) {
        return insert_or_assign(Key(key), std::move(value));
    }
    ///@}
    ///@{
    /// Appends a member with that key and a value made of the arguments, unless the key is there
    /// already. Returns the member and whether it is new. O(log n). As insert_or_assign()
    /// otherwise.
    std::pair<iterator, bool> emplace(Key key, Value&& value);
    std::pair<iterator, bool> emplace(Key key, detail::Converted value) {
        return emplace(std::move(key), std::move(value.element));
    }
    template<class... Arguments,
             class = std::enable_if_t<std::is_constructible_v<Value, Arguments&&...>>>
    std::pair<iterator, bool> emplace(Key key, Arguments&&... arguments) {
        return emplace(std::move(key), Value(std::forward<Arguments>(arguments)...));
    }
    template<class Text, class... Arguments,
             class = std::enable_if_t<std::is_same_v<Text, std::string_view>>>
    std::pair<iterator, bool> emplace(Text key, Arguments&&... arguments) {
        return emplace(Key(key), std::forward<Arguments>(arguments)...);
    }
    ///@}

    ///@{
    /// The value of the member with that key. O(log n). Throws PathNotFound, with the path from the
    /// root and the parent as context, when there is none.
    Value& at(std::string_view key);
    const Value& at(std::string_view key) const;
    ///@}
    /// The value of the member with that key; a null member is appended when there is none. O(log
    /// n).
    Value& operator[](std::string_view key);

    using TBase::swap;
    /// Exchanges the members; each object keeps its parent. Only the members that this object now
    /// holds learn their new place. Those of `other` name the parent of this object, or after
    /// setParent() its former one, until other.setParent(other.parent()); when this object is
    /// destroyed, they name their own. Throws Exception where one object lies within a member of
    /// the other, and std::bad_alloc, with no effect. Linear in the number of members.
    virtual void swap(Object& other);

    Value* parent() const noexcept { return this->m_link.parent(); }
    /// Gives all members that parent, and their key. Linear in the number of members. Throws as
    /// Array::setParent().
    void setParent(Value* parent);

private:
    friend struct Place;

    void tagAll() noexcept;
    template<class Text, class... Arguments>
    std::pair<iterator, bool> findOrAppend(Text&& key, Arguments&&... value);
};

/// Removes the members that `matches` accepts, which is given each key and value as a pair, and
/// returns how many there were. Linear cost, and O(log n) for each member that is removed. Throws
/// what `matches` throws, and std::bad_alloc, leaving the object unchanged.
template<class Key, class Value, class Compare, class Matches>
std::size_t erase_if(Object<Key, Value, Compare>& object, Matches matches) {
    return object.eraseIf(matches);
}

extern template class KO_API Object<std::string, Element, std::less<std::string>>;

}  // namespace ko::Orvid
