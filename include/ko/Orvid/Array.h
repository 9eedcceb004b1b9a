// SPDX-License-Identifier: MIT
//
// Array, the items of an array element.

#pragma once

#include <ko/IndexList.h>
#include <ko/Orvid/Element.h>

#include <cstddef>
#include <functional>
#include <utility>

namespace ko::Orvid {

/// The items of an array element, which it names as their parent. Made for Element only.
///
/// Every item has an empty key, the array's parent, and its position as index, except after a copy:
/// the copies report index 0 until updateVector() or setParent() runs. An operation that states no
/// cost is O(1).
template<class T>
class KO_API Array : public IndexList<T>, public InSlabArena {
public:
    using typename IndexList<T>::const_iterator;
    using typename IndexList<T>::iterator;
    using typename IndexList<T>::size_type;

    /// An empty array whose items will name `parent`, which may be null. Constant cost.
    explicit Array(T* parent = nullptr);
    /// Deep copies of the other's items. Throws std::bad_alloc. Linear cost.
    Array(const Array& other, T* parent = nullptr);
    /// The same in place of the present items; the parent stays. The copies are complete before the
    /// former items are destroyed. Calls updateVector(), after which the copies report index 0.
    /// Throws std::bad_alloc, leaving this array unchanged. Linear cost.
    Array& operator=(const Array& other);
    /// Takes the other's items over, with their addresses, whose parent is `parent` then; `other`
    /// is empty afterwards. Linear in the number of items.
    Array(Array&& other, T* parent = nullptr) noexcept;
    /// The same in place of the present items; the parent stays. `other` may lie within them. Where
    /// this array lies within an item of `other`, the items are copied, and only then
    /// std::bad_alloc may be thrown, leaving this array unchanged. Linear in the items of both.
    // A cycle is avoided by a copy.
    // NOLINTNEXTLINE(performance-noexcept-move-constructor,bugprone-exception-escape)
    Array& operator=(Array&& other);
    /// Linear cost.
    ~Array() override;

    ///@{
    /// Appends a copy, at the cost of making it.
    void push_back(const T& value) override;
    void push_back(detail::Converted value) { push_back(value.element); }
    ///@}
    /// Appends a null item and returns it. With push_back(), the way to build an array. Amortised
    /// constant cost.
    T& appendNull();
    ///@{
    /// Appends `value`, which is null afterwards, and returns the item. Constant cost, except for a
    /// walk up to the root where `value` has children. Where this array lies within `value`,
    /// appends a copy and leaves `value` as it is. Throws std::bad_alloc, with both as they were.
    T& emplace_back(T&& value);
    T& emplace_back(detail::Converted value) { return emplace_back(std::move(value.element)); }
    ///@}
    using IndexList<T>::insert;
    ///@{
    /// Inserts `value`, which is treated as by emplace_back(), before the position and returns the
    /// new item's. Linear cost.
    iterator insert(const_iterator position, T&& value);
    iterator insert(const_iterator position, detail::Converted value) {
        return insert(position, std::move(value.element));
    }
    ///@}
    ///@{
    /// The same. Throws std::out_of_range for a position after the end.
    iterator insert(size_type position, T&& value);
    iterator insert(size_type position, detail::Converted value) {
        return insert(position, std::move(value.element));
    }
    ///@}
    /// Makes places agree with the order of the items. Linear cost.
    void updateVector() override;

    using IndexList<T>::swap;
    /// Exchanges the items; each array keeps its parent. Only the items that this array now holds
    /// learn their new place. Those of `other` keep their index and name the parent of this array,
    /// or after setParent() its former one, until other.setParent(other.parent()) or
    /// other.updateVector(); when this array is destroyed, they name their own. Throws Exception
    /// where one array lies within an item of the other, and std::bad_alloc, with no effect. Linear
    /// in the number of items.
    virtual void swap(Array& other);

    /// Removes the items that `matches` accepts; the item that directly follows a removed one is
    /// skipped unseen. Linear cost. Throws as erase_if().
    void removeMatches(const std::function<bool(const T&)>& matches);

    T* parent() const noexcept { return this->m_link.parent(); }
    /// Gives all items that parent, and their positions as index. Linear in the number of items.
    /// Throws std::bad_alloc, with no effect, and only after a swap whose other side still names
    /// the former parent.
    void setParent(T* parent);

private:
    friend struct Place;

    void copyItems(const Array& other);
    template<class... Arguments>
    T& append(Arguments&&... arguments);
    void tagAll() noexcept;
    void withoutPositions() noexcept;
};

/// Removes the items that `matches` accepts and returns how many there were. Linear cost. Throws
/// what `matches` throws, and std::bad_alloc, leaving the array unchanged.
template<class T, class Matches>
std::size_t erase_if(Array<T>& array, Matches matches) {
    return array.eraseIf(matches);
}

extern template class KO_API Array<Element>;

}  // namespace ko::Orvid
