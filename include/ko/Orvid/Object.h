// SPDX-License-Identifier: MIT
//
// Object, the members of an object element.

#pragma once

#include <ko/ListMap.h>
#include <ko/Orvid/Element.h>

#include <string_view>
#include <utility>

namespace ko::Orvid {

/// The members of an object element, in insertion order; the values name that element as their
/// parent. Made for std::string and Element only.
///
/// Every value has its member's key, the object's parent and the index k_noIndex.
template<class Key, class Value, class Compare>
class KO_API Object : public ListMap<Key, Value, Compare>, public InNodeMemory {
public:
    using TBase = ListMap<Key, Value, Compare>;
    using typename TBase::iterator;
    using typename TBase::value_type;

    /// An empty object whose values will name `parent`, which may be null.
    explicit Object(Value* parent = nullptr);
    /// Deep copies of the other's members, in its order. Throws std::bad_alloc.
    Object(const Object& other, Value* parent = nullptr);
    /// The same in place of the present members; the parent stays. The copies are complete before
    /// the former members are destroyed. Throws std::bad_alloc, leaving this object unchanged.
    Object& operator=(const Object& other);
    /// Takes the other's members over, in constant time, whose parent is `parent` then; `other` is
    /// empty afterwards.
    Object(Object&& other, Value* parent = nullptr) noexcept;
    /// The same in place of the present members; the parent stays. `other` may lie within them.
    Object& operator=(Object&& other) noexcept;
    ~Object() override;

    std::pair<iterator, bool> insert(const value_type& member) override;
    iterator insert(iterator position, const value_type& member) override;
    /// The member with that key, set to null; appended when it is not there yet.
    Value& resetMember(std::string_view key);
    /// The member with that key as it is, or a null one that is appended, and whether it is new.
    /// O(log n). Throws std::bad_alloc, leaving the object unchanged.
    std::pair<iterator, bool> try_emplace(std::string_view key);
    /// Sets the member with that key to `value`, which is null afterwards; it is appended when it
    /// is not there yet. Answers the member and whether it is new. O(log n).
    std::pair<iterator, bool> insert_or_assign(Key key, Value&& value);

    using TBase::swap;
    /// Exchanges the members; each object keeps its parent. Only the members that this object now
    /// holds learn their new place; for the others call other.setParent(other.parent()).
    virtual void swap(Object& other);

    Value* parent() const noexcept { return m_parent; }
    /// Gives all members that parent, and their key.
    void setParent(Value* parent);

private:
    friend struct Place;

    /// The members name that parent from now on; nothing else of their places changes.
    void moveTo(Value* parent) noexcept;
    void tagAll() noexcept;
    template<class Text, class... Arguments>
    std::pair<iterator, bool> findOrAppend(Text&& key, Arguments&&... value);

    Value* m_parent;
};

extern template class KO_API Object<std::string, Element, std::less<std::string>>;

}  // namespace ko::Orvid
