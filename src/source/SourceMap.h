// SPDX-License-Identifier: MIT
//
// SourceMap, which bytes of a text each value of a tree has: a table beside the tree, so that
// elements need not grow. It is tied to the elements by their addresses, which may be looked up but
// never followed: an element may be gone, and another may have its address.

#pragma once

#include <ko/Orvid/Element.h>

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <utility>
#include <vector>

#include "source/SpanTable.h"

namespace ko::Orvid {

/// A member or item of a container in the text.
struct ChildSpan {
    std::uint32_t value;   ///< its number in the table
    std::size_t gapBegin;  ///< offset after the value before it, or after the opening bracket
    std::size_t begin;     ///< offset of its first byte: its key's, or its value's
    std::size_t keyEnd;    ///< offset after its key; `begin` where it has none
};

/// All values of a text in its order, each before those that lie in it. The text must stay where it
/// is.
class SourceMap {
public:
    static constexpr std::uint32_t k_none = SpanTable::k_none;

    /// Takes what was noted while `text` was read.
    void set(std::string_view text, SpanTable values) noexcept;
    /// Finds the values of `text`, from the offset `begin` on, in which `root` was read, by a pass
    /// over both. They stay empty when text and tree do not go together, as for a text that ends
    /// early. Linear cost.
    void locate(std::string_view text, std::size_t begin, const Element& root);

    bool empty() const noexcept { return m_values.size() == 0; }
    std::uint32_t size() const noexcept { return m_values.size(); }
    const ValueSpan& operator[](std::uint32_t value) const noexcept { return m_values[value]; }
    std::uint32_t next(std::uint32_t value) const noexcept { return m_values.next(value); }
    std::string_view text() const noexcept { return m_text; }
    std::string_view text(std::uint32_t value) const noexcept {
        return m_text.substr(m_values[value].begin(),
                             m_values[value].end() - m_values[value].begin());
    }
    std::string_view text(std::size_t begin, std::size_t end) const noexcept {
        return m_text.substr(begin, end - begin);
    }

    bool isObject(std::uint32_t value) const noexcept { return firstByte(value) == '{'; }
    bool isContainer(std::uint32_t value) const noexcept {
        return isObject(value) || firstByte(value) == '[';
    }
    /// Whether it holds a value.
    bool hasChildren(std::uint32_t value) const noexcept { return m_values[value].count() > 1; }

    /// The first child of a container, which must have one.
    ChildSpan firstChild(std::uint32_t container) const noexcept;
    /// The child that follows `child`, unless that is the last: see hasNext().
    ChildSpan nextChild(std::uint32_t container, const ChildSpan& child) const noexcept;
    bool hasNext(std::uint32_t container, const ChildSpan& child) const noexcept {
        return m_values.next(child.value) < m_values.next(container);
    }
    /// All children, in the order of the text.
    std::vector<ChildSpan> children(std::uint32_t container) const;
    /// The key of a member, with its quotes.
    std::string_view key(const ChildSpan& child) const noexcept {
        return text(child.begin, child.keyEnd);
    }

    /// The number of the value from which the element was read; k_none when there is none. Fast for
    /// an element whose ancestors are where they were, or else linear.
    std::uint32_t find(const Element& element) const;
    /// The container of a value that is not the root, and the value's span in it.
    std::pair<std::uint32_t, ChildSpan> parentOf(std::uint32_t value) const;

private:
    struct Open;

    char firstByte(std::uint32_t value) const noexcept { return m_text[m_values[value].begin()]; }
    ChildSpan childAt(std::uint32_t container, std::uint32_t value,
                      std::size_t gapBegin) const noexcept;
    bool scan(std::size_t at);
    std::size_t scanValue(std::size_t at, std::vector<Open>& open);
    bool bind(const Element& root);
    bool bindChildren(std::uint32_t container);
    bool bindItems(std::uint32_t array);
    bool bindMembers(std::uint32_t object);
    bool bindRepeated(std::uint32_t object);
    bool bindTo(std::uint32_t value, const Element& element);

    std::string_view m_text;
    SpanTable m_values;
};

}  // namespace ko::Orvid
