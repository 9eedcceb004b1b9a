// SPDX-License-Identifier: MIT
//
// Array, the items of an array element.

#pragma once

#include <ko/IndexList.h>
#include <ko/Orvid/Element.h>

#include <functional>

namespace ko::Orvid {

/// The items of an array element, which it names as their parent. Made for Element only.
///
/// Every item has an empty key, the array's parent, and its position as index, but after a copy:
/// the copies report index 0 until updateVector() or setParent() runs.
template<class T>
class KO_API Array : public IndexList<T>, public InNodeMemory {
public:
    /// An empty array whose items will name `parent`, which may be null.
    explicit Array(T* parent = nullptr);
    /// Deep copies of the other's items. Throws std::bad_alloc.
    Array(const Array& other, T* parent = nullptr);
    /// The same in place of the present items; the parent stays. The copies are complete before the
    /// former items are destroyed. Throws std::bad_alloc, leaving this array unchanged.
    Array& operator=(const Array& other);
    /// Takes the other's items over, in constant time, whose parent is `parent` then; `other` is
    /// empty afterwards.
    Array(Array&& other, T* parent = nullptr) noexcept;
    /// The same in place of the present items; the parent stays. `other` may lie within them.
    Array& operator=(Array&& other) noexcept;
    ~Array() override;

    void push_back(const T& value) override;
    /// Appends a null item and returns it.
    T& appendNull();
    /// Appends `value`, which is null afterwards, in constant time, and returns the item.
    T& emplace_back(T&& value);
    /// Makes positions and places agree with the order of the items. Linear cost.
    void updateVector() override;

    using IndexList<T>::swap;
    /// Exchanges the items; each array keeps its parent. Only the items that this array now holds
    /// learn their new place; for the others call other.setParent(other.parent()).
    virtual void swap(Array& other);

    /// Removes the items that `matches` accepts; the item that directly follows a removed one is
    /// passed over unseen. Linear cost.
    void removeMatches(const std::function<bool(const T&)>& matches);

    T* parent() const noexcept { return m_parent; }
    /// Gives all items that parent, and their positions as index.
    void setParent(T* parent);

private:
    friend struct Place;

    /// The items name that parent from now on; nothing else of their places changes.
    void moveTo(T* parent) noexcept;
    template<class... Arguments>
    T& append(Arguments&&... arguments);
    void tagAll() noexcept;

    T* m_parent;
};

extern template class KO_API Array<Element>;

}  // namespace ko::Orvid
