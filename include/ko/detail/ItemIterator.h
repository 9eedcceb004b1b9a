// SPDX-License-Identifier: MIT
//
// ko::detail::ItemIterator, the random access iterator of an IndexList.

#pragma once

#include <ko/detail/ItemRuns.h>

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <type_traits>

namespace ko::detail {

/// A position among the items, and the item there, or none at the end: all iterators that stand at
/// the end are equal, also those that stood there when there were more items or fewer. Value is T
/// or const T.
template<class T, class Value>
class ItemIterator {
public:
    using iterator_category = std::random_access_iterator_tag;
    using value_type = T;
    using difference_type = std::ptrdiff_t;
    using pointer = Value*;
    using reference = Value&;

    ItemIterator() noexcept = default;
    ItemIterator(const ItemRuns<T>& items, std::size_t position) noexcept
        : m_items(&items), m_position(position) {
        seek();
    }
    /// From the iterator that may change the items.
    template<class Other, class = std::enable_if_t<std::is_same_v<Value, const Other>>>
    ItemIterator(const ItemIterator<T, Other>& other) noexcept
        : m_items(other.m_items),
          m_position(other.m_position),
          m_end(other.m_end),
          m_item(other.m_item) {}

    /// From 0.
    std::size_t position() const noexcept { return m_position; }

    reference operator*() const noexcept { return *m_item; }
    pointer operator->() const noexcept { return m_item; }
    reference operator[](difference_type distance) const noexcept { return *(*this + distance); }

    ItemIterator& operator++() noexcept {
        ++m_position;
        if (m_position < m_end) {
            ++m_item;
        } else {
            seek();
        }
        return *this;
    }
    // NOLINTNEXTLINE(cert-dcl21-cpp): as the iterators of the standard library
    ItemIterator operator++(int) noexcept {
        const ItemIterator before = *this;
        ++*this;
        return before;
    }
    ItemIterator& operator--() noexcept { return *this += -1; }
    // NOLINTNEXTLINE(cert-dcl21-cpp): as above
    ItemIterator operator--(int) noexcept {
        const ItemIterator before = *this;
        --*this;
        return before;
    }
    ItemIterator& operator+=(difference_type distance) noexcept {
        m_position += static_cast<std::size_t>(distance);
        seek();
        return *this;
    }
    ItemIterator& operator-=(difference_type distance) noexcept { return *this += -distance; }

    friend ItemIterator operator+(ItemIterator from, difference_type distance) noexcept {
        return from += distance;
    }
    friend ItemIterator operator+(difference_type distance, ItemIterator from) noexcept {
        return from += distance;
    }
    friend ItemIterator operator-(ItemIterator from, difference_type distance) noexcept {
        return from -= distance;
    }

private:
    template<class, class>
    friend class ItemIterator;

    void seek() noexcept {
        m_end = 0;
        m_item = nullptr;
        if (m_position < m_items->size()) {
            const auto stretch = m_items->stretchAt(m_position);
            m_item = stretch.first + (m_position - stretch.begin);
            m_end = std::min(stretch.end, m_items->size());
        }
    }

    const ItemRuns<T>* m_items = nullptr;
    std::size_t m_position = 0;
    std::size_t m_end = 0;  ///< up to here the items lie side by side
    Value* m_item = nullptr;
};

// Between both kinds of iterator.

template<class T, class A, class B>
bool operator==(const ItemIterator<T, A>& a, const ItemIterator<T, B>& b) noexcept {
    return a.operator->() == b.operator->();
}
template<class T, class A, class B>
bool operator!=(const ItemIterator<T, A>& a, const ItemIterator<T, B>& b) noexcept {
    return a.operator->() != b.operator->();
}
template<class T, class A, class B>
bool operator<(const ItemIterator<T, A>& a, const ItemIterator<T, B>& b) noexcept {
    return a.position() < b.position();
}
template<class T, class A, class B>
bool operator>(const ItemIterator<T, A>& a, const ItemIterator<T, B>& b) noexcept {
    return a.position() > b.position();
}
template<class T, class A, class B>
bool operator<=(const ItemIterator<T, A>& a, const ItemIterator<T, B>& b) noexcept {
    return a.position() <= b.position();
}
template<class T, class A, class B>
bool operator>=(const ItemIterator<T, A>& a, const ItemIterator<T, B>& b) noexcept {
    return a.position() >= b.position();
}
template<class T, class A, class B>
std::ptrdiff_t operator-(const ItemIterator<T, A>& a, const ItemIterator<T, B>& b) noexcept {
    return static_cast<std::ptrdiff_t>(a.position()) - static_cast<std::ptrdiff_t>(b.position());
}

}  // namespace ko::detail
