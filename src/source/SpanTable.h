// SPDX-License-Identifier: MIT
//
// SpanTable, a table with a row of 24 bytes for each value of a text. It grows by blocks, so that
// no row is ever copied: the table of a long text takes no more than its rows, also while it grows.

#pragma once

#include <ko/Orvid/Element.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <new>
#include <vector>

namespace ko::Orvid {

/// A value in the text. Offsets have 48 bits, so that it takes 24 bytes.
class ValueSpan {
public:
    /// Sets nothing, so that a block of rows is touched only when they are added.
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init,modernize-use-equals-default)
    ValueSpan() noexcept {}
    ValueSpan(std::uint64_t begin, std::uint64_t end) noexcept
        : m_beginAndEnd(begin | end << k_beginBits), m_endAndCount(joined(end, 1)) {}

    /// The offsets of its first byte and of the byte after its last.
    std::size_t begin() const noexcept {
        return static_cast<std::size_t>(m_beginAndEnd & k_beginMask);
    }
    std::size_t end() const noexcept {
        const auto high = static_cast<std::uint32_t>(m_endAndCount);
        return static_cast<std::size_t>(m_beginAndEnd >> k_beginBits | std::uint64_t{high}
                                                                           << k_endBits);
    }
    /// How many values it is, together with those that lie in it.
    std::uint32_t count() const noexcept {
        return static_cast<std::uint32_t>(m_endAndCount >> k_countShift);
    }
    /// The element that was read from here; null for a value that a repeated key has replaced, and
    /// for all that lies in it.
    const Element* element() const noexcept { return m_element; }

    void setElement(const Element* element) noexcept { m_element = element; }
    void close(std::uint64_t end, std::uint32_t count) noexcept {
        m_beginAndEnd = (m_beginAndEnd & k_beginMask) | end << k_beginBits;
        m_endAndCount = joined(end, count);
    }

private:
    static constexpr unsigned int k_beginBits = 48;
    static constexpr std::uint64_t k_beginMask = (std::uint64_t{1} << k_beginBits) - 1;
    static constexpr unsigned int k_endBits = 64 - k_beginBits;  ///< beside the begin
    static constexpr unsigned int k_countShift = 32;

    static std::uint64_t joined(std::uint64_t end, std::uint32_t count) noexcept {
        return end >> k_endBits | std::uint64_t{count} << k_countShift;
    }

    // Three whole words, so that a value is noted by three stores.
    const Element* m_element;
    std::uint64_t m_beginAndEnd;  ///< and the low bits of the end
    std::uint64_t m_endAndCount;  ///< the other bits of the end
};

/// The values of a text in its order, each before those that lie in it.
class SpanTable {
public:
    /// The number of no value.
    static constexpr std::uint32_t k_none = 0xFFFFFFFFU;

    std::uint32_t size() const noexcept {
        return m_blockEndNumber - static_cast<std::uint32_t>(m_blockEnd - m_row);
    }
    /// The number of the first value that neither is that one nor lies in it.
    std::uint32_t next(std::uint32_t value) const noexcept {
        return value + (*this)[value].count();
    }
    const ValueSpan& operator[](std::uint32_t value) const noexcept {
        return m_blocks[value / k_blockSize][value % k_blockSize];
    }
    ValueSpan& operator[](std::uint32_t value) noexcept {
        return m_blocks[value / k_blockSize][value % k_blockSize];
    }

    /// Adds a value that stands at those offsets, whose element must be set, and whose number is
    /// size() before. The reference lives until the next one is added. Constant cost. Throws
    /// Exception beyond 4,294,967,294 values.
    ValueSpan& add(std::uint64_t begin, std::uint64_t end) {
        if (m_row == m_blockEnd) {
            grow();
        }
        return *new (m_row++) ValueSpan(begin, end);
    }
    /// The value, a container, ends there, and those added after it lie in it.
    void close(std::uint32_t value, std::uint64_t end) noexcept {
        (*this)[value].close(end, size() - value);
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
    std::uint32_t m_blockEndNumber = 0;  ///< of the value that would stand there
};

}  // namespace ko::Orvid
