// SPDX-License-Identifier: MIT
//
// SpanTable, a table with a row of 24 bytes for each value of a text. It grows by blocks, so that
// no row is ever copied: the table of a long text takes no more than its rows, also while it grows.

#pragma once

#include <ko/Orvid/Element.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace ko::Orvid {

/// A value in the text. Offsets have 48 bits, so that it takes 24 bytes.
class ValueSpan {
public:
    /// Sets nothing, so that a block of rows is touched only when they are added.
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init,modernize-use-equals-default)
    ValueSpan() noexcept {}
    ValueSpan(const Element* element, std::uint64_t begin, std::uint64_t end,
              std::uint32_t next) noexcept
        : m_element(element),
          m_begin(static_cast<std::uint32_t>(begin)),
          m_end(static_cast<std::uint32_t>(end)),
          m_beginHigh(static_cast<std::uint16_t>(begin >> k_lowBits)),
          m_endHigh(static_cast<std::uint16_t>(end >> k_lowBits)),
          m_next(next) {}

    /// The offsets of its first byte and of the byte after its last.
    std::size_t begin() const noexcept { return joined(m_beginHigh, m_begin); }
    std::size_t end() const noexcept { return joined(m_endHigh, m_end); }
    /// The number of the first value that neither is this one nor lies in it.
    std::uint32_t next() const noexcept { return m_next; }
    /// The element that was read from here; null for a value that a repeated key has replaced, and
    /// for all that lies in it.
    const Element* element() const noexcept { return m_element; }

    void setElement(const Element* element) noexcept { m_element = element; }
    void close(std::uint64_t end, std::uint32_t next) noexcept {
        m_end = static_cast<std::uint32_t>(end);
        m_endHigh = static_cast<std::uint16_t>(end >> k_lowBits);
        m_next = next;
    }

private:
    static constexpr unsigned int k_lowBits = 32;

    static std::size_t joined(std::uint16_t high, std::uint32_t low) noexcept {
        return static_cast<std::size_t>(std::uint64_t{high} << k_lowBits | low);
    }

    const Element* m_element;
    std::uint32_t m_begin;
    std::uint32_t m_end;
    std::uint16_t m_beginHigh;
    std::uint16_t m_endHigh;
    std::uint32_t m_next;
};

/// The values of a text in its order, each before those that lie in it.
class SpanTable {
public:
    /// The number of no value.
    static constexpr std::uint32_t k_none = 0xFFFFFFFFU;

    std::uint32_t size() const noexcept { return m_size; }
    const ValueSpan& operator[](std::uint32_t value) const noexcept {
        return m_blocks[value / k_blockSize][value % k_blockSize];
    }
    ValueSpan& operator[](std::uint32_t value) noexcept {
        return m_blocks[value / k_blockSize][value % k_blockSize];
    }

    /// Adds a value that stands at those offsets, and returns its number. Constant cost. Throws
    /// Exception beyond 4,294,967,294 values.
    std::uint32_t add(const Element* element, std::uint64_t begin, std::uint64_t end) {
        if (m_row == m_blockEnd) {
            grow();
        }
        *m_row++ = {element, begin, end, m_size + 1};
        return m_size++;
    }
    void clear() noexcept;

private:
    static constexpr std::uint32_t k_blockSize = 1024;
    /// The size of the first block until it is full: most documents are small.
    static constexpr std::uint32_t k_firstSize = 32;

    using Block = std::unique_ptr<ValueSpan[]>;

    void grow();

    std::vector<Block> m_blocks;
    ValueSpan* m_row = nullptr;  ///< the next one
    ValueSpan* m_blockEnd = nullptr;
    std::uint32_t m_size = 0;
};

}  // namespace ko::Orvid
